#include "shell/views/reference_editor.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>

#include "composer/composer_rules.h"
#include "composer/notice_texts.h"
#include "composer/reference_texts.h"
#include "shell/views/attach_panel.h"
#include "shell/views/choice_field.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "shell/views/picture_button.h"
#include "shell/views/reference_texts.h"
#include "shell/views/segmented_control.h"
#include "shell/views/text_area.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 560;
constexpr int kGridHeight = 190;
constexpr int kNotesHeight = 60;

namespace composerTexts = composer::texts;

QWidget* column(std::initializer_list<QWidget*> parts) {
  auto* widget = new QWidget;
  auto* layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(5);
  for (QWidget* part : parts) layout->addWidget(part);
  return widget;
}

Label* rowLabel(const QString& text) {
  auto* label = new Label(text, Type::body, &Colors::textSecondary);
  label->setFixedHeight(metrics().field);  // beside the middle of a field of one line
  return label;
}

}  // namespace

ReferenceEditor::ReferenceEditor(SavedReferencesPresenter& references, const SavedReferenceDraft& draft,
                                 ThumbnailStore& thumbnails, QWidget* parent)
    : QDialog(parent),
      references_(references),
      draft_(draft),
      thumbnails_(thumbnails),
      name_(new TextField(texts::nameField(), composerTexts::namePlaceholder())),
      nameHint_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      kind_(new ChoiceField(texts::kindField())),
      scopeProblem_(new Paragraph({}, Type::small, &Colors::dangerText)),
      subject_(new TextField(texts::subjectField(), composerTexts::subjectPlaceholder())),
      subjectHint_(new Paragraph(composerTexts::subjectDetail(), Type::small, &Colors::textTertiary)),
      images_(new PictureRow(thumbnails)),
      imagesProblem_(new Paragraph({}, Type::small, &Colors::dangerText)),
      picker_(new QWidget),
      search_(new TextField(texts::searchPictures(), texts::searchPictures())),
      grid_(new AttachGrid(thumbnails)),
      notes_(new TextArea(texts::notesField(), composerTexts::notesPlaceholder())),
      problem_(new Paragraph({}, Type::small, &Colors::dangerText)),
      save_(new Button(texts::saveReference(), ButtonVariant::primary)) {
  setModal(true);
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedWidth(kWidth);
  const QString title = draft.referenceID ? texts::editReferenceTitle() : texts::saveReferenceTitle();
  setWindowTitle(title);
  setAccessibleName(title);
  build();
  fill();
  new FocusRing(this);
  name_->setFocus();
}

void ReferenceEditor::build() {
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(24, 20, 24, 20);
  all->setSpacing(14);
  all->addWidget(new Paragraph(windowTitle(), Type::title));
  auto* form = new QFormLayout;
  form->setHorizontalSpacing(16);
  form->setVerticalSpacing(12);
  form->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
  form->addRow(rowLabel(texts::nameField()), column({name_, nameHint_}));
  kind_->addItems(composer::referenceKinds());
  kind_->setMaximumWidth(200);
  form->addRow(rowLabel(texts::kindField()), kind_);
  buildScope(*form);
  form->addRow(rowLabel(texts::subjectField()), column({subject_, subjectHint_}));
  buildImages(*form);
  notes_->setFixedHeight(kNotesHeight);
  form->addRow(rowLabel(texts::notesField()), notes_);
  all->addLayout(form);
  all->addWidget(problem_);
  auto* cancel = new Button(texts::cancel());
  save_->setDefault(true);
  auto* foot = new QHBoxLayout;
  foot->setSpacing(8);
  foot->addStretch(1);
  foot->addWidget(cancel);
  foot->addWidget(save_);
  all->addLayout(foot);
  connect(cancel, &Button::clicked, this, &QDialog::reject);
  connect(save_, &Button::clicked, this, &ReferenceEditor::save);
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, save_, &Button::click);
  connect(name_, &QLineEdit::textChanged, this, &ReferenceEditor::refreshHandle);
}

// A project is offered where there is one; else everything is global.
void ReferenceEditor::buildScope(QFormLayout& form) {
  const auto place = references_.projectFor(draft_);
  if (place) {
    project_ = place->project;
    const bool open = !draft_.projectID || draft_.projectID == place->project;
    scope_ = new SegmentedControl(texts::scopeField(),
                                  {{open ? texts::thisProject() : place->name, {}, place->name}, {texts::global(), {}, {}}},
                                  ControlSize::compact);
    scope_->setToolTip(place->name);
    scope_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    form.addRow(rowLabel(texts::scopeField()), column({scope_, scopeProblem_}));
  } else {
    form.addRow(rowLabel(texts::scopeField()), column({new Label(texts::global()), scopeProblem_}));
  }
}

void ReferenceEditor::buildImages(QFormLayout& form) {
  auto* layout = new QVBoxLayout(picker_);
  layout->setContentsMargins(0, 4, 0, 0);
  layout->setSpacing(6);
  search_->setIconName(u"search"_s);
  layout->addWidget(search_);
  grid_->setFixedHeight(kGridHeight);
  layout->addWidget(grid_);
  picker_->hide();
  form.addRow(rowLabel(texts::imagesField()), column({images_, imagesProblem_, picker_}));
  typing_.setSingleShot(true);
  typing_.setInterval(120);
  connect(&typing_, &QTimer::timeout, this, &ReferenceEditor::refreshImages);
  connect(search_, &QLineEdit::textChanged, this, [this] { typing_.start(); });
  connect(search_, &TextField::escapePressed, this, [this] { openPicker(false); });
  connect(images_, &PictureRow::addPressed, this, [this] { openPicker(!picker_->isVisible()); });
  connect(images_, &PictureRow::pressed, this, &ReferenceEditor::openImageMenu);
  connect(images_, &PictureRow::removed, this, [this](int place) {
    draft_.assetIDs.erase(draft_.assetIDs.begin() + place);
    refreshImages();
  });
  connect(images_, &PictureRow::moved, this, [this](int place, int step) {
    const int to = place + step;
    if (to < 0 || to >= static_cast<int>(draft_.assetIDs.size())) return;
    std::swap(draft_.assetIDs[static_cast<std::size_t>(place)], draft_.assetIDs[static_cast<std::size_t>(to)]);
    refreshImages();
  });
  connect(grid_, &TileGrid::activated, this, [this](QUuid id) {
    const auto found = std::find(draft_.assetIDs.begin(), draft_.assetIDs.end(), id);
    if (found != draft_.assetIDs.end()) draft_.assetIDs.erase(found);
    else if (draft_.assetIDs.size() < composer::mostReferences) draft_.assetIDs.push_back(id);
    else return showProblem({ReferenceField::images, composerTexts::chooseImages()});
    refreshImages();
  });
}

void ReferenceEditor::fill() {
  name_->setText(draft_.name);
  kind_->setCurrentText(draft_.kind);
  if (scope_) scope_->setCurrent(draft_.projectID ? 0 : 1);
  subject_->setText(draft_.subject);
  notes_->setPlainText(draft_.notes);
  scopeProblem_->hide();
  problem_->hide();
  refreshHandle();
  refreshImages();
}

SavedReferenceDraft ReferenceEditor::draft() const {
  SavedReferenceDraft draft = draft_;
  draft.name = name_->text();
  draft.kind = kind_->currentText();
  draft.projectID = scope_ && scope_->current() == 0 ? project_ : std::nullopt;
  draft.subject = subject_->text();
  draft.notes = notes_->toPlainText();
  return draft;
}

void ReferenceEditor::refreshHandle() {
  const QString handle = references_.handleOf(name_->text());
  name_->setInvalid(false);
  nameHint_->setColorRole(&Colors::textTertiary);
  nameHint_->setParagraph(handle.isEmpty() ? texts::nameHint() : texts::typeName(handle));
}

void ReferenceEditor::refreshImages() {
  std::vector<ReferenceTile> chosen;
  for (const QUuid& id : draft_.assetIDs) chosen.push_back(references_.tileOf(id));
  images_->show(chosen);
  imagesProblem_->hide();
  if (!picker_->isVisible()) return;
  std::vector<ReferenceTile> tiles = references_.pictures(search_->text());
  for (ReferenceTile& tile : tiles)
    tile.attached = std::find(draft_.assetIDs.begin(), draft_.assetIDs.end(), tile.id) != draft_.assetIDs.end();
  grid_->show(tiles);
}

void ReferenceEditor::openPicker(bool open) {
  picker_->setVisible(open);
  refreshImages();
  adjustSize();
  if (open) search_->setFocus(Qt::OtherFocusReason);
}

void ReferenceEditor::openImageMenu(int place) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const int last = static_cast<int>(draft_.assetIDs.size()) - 1;
  menu->addAction(texts::moveEarlier(), this, [this, place] { Q_EMIT images_->moved(place, -1); })->setEnabled(place > 0);
  menu->addAction(texts::moveLater(), this, [this, place] { Q_EMIT images_->moved(place, +1); })
      ->setEnabled(place < last);
  menu->addSeparator();
  menu->addAction(texts::removeReference(), this, [this, place] { Q_EMIT images_->removed(place); });
  menu->popup(QCursor::pos());
}

// Under the field that it concerns, with the keyboard there.
void ReferenceEditor::showProblem(const ReferenceProblem& problem) {
  const auto say = [&problem](Paragraph* paragraph) {
    paragraph->setColorRole(&Colors::dangerText);
    paragraph->setParagraph(problem.text);
    paragraph->show();
  };
  name_->setInvalid(problem.field == ReferenceField::name);
  subject_->setInvalid(problem.field == ReferenceField::subject);
  switch (problem.field) {
    case ReferenceField::name:
      say(nameHint_);
      return name_->setFocus();
    case ReferenceField::subject:
      say(subjectHint_);
      return subject_->setFocus();
    case ReferenceField::images:
      return say(imagesProblem_);
    case ReferenceField::scope:
      return say(scopeProblem_);
    case ReferenceField::none:
      return say(problem_);
  }
}

void ReferenceEditor::save() {
  refreshHandle();
  problem_->hide();
  scopeProblem_->hide();
  imagesProblem_->hide();
  subject_->setInvalid(false);
  subjectHint_->setColorRole(&Colors::textTertiary);
  subjectHint_->setParagraph(composerTexts::subjectDetail());
  if (const auto problem = references_.save(draft())) return showProblem(*problem);
  accept();
}

// ---- The pictures

PictureRow::PictureRow(ThumbnailStore& thumbnails, QWidget* parent) : QWidget(parent), thumbnails_(thumbnails) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(6);
  row->addStretch(1);
}

void PictureRow::show(const std::vector<ReferenceTile>& tiles) {
  for (QWidget* button : buttons_) button->hide(), button->deleteLater();
  buttons_.clear();
  auto* row = static_cast<QHBoxLayout*>(layout());
  const int count = static_cast<int>(tiles.size());
  for (int place = 0; place < count; ++place) {
    const ReferenceTile& tile = tiles[static_cast<std::size_t>(place)];
    auto* button = new PictureButton(thumbnails_, tile, texts::imagePlace(place + 1, count));
    connect(button, &QAbstractButton::clicked, this, [this, place] { Q_EMIT pressed(place); }, Qt::QueuedConnection);
    connect(button, &PictureButton::moved, this, [this, place](int step) { Q_EMIT moved(place, step); },
            Qt::QueuedConnection);
    connect(button, &PictureButton::removed, this, [this, place] { Q_EMIT removed(place); }, Qt::QueuedConnection);
    row->insertWidget(place, button);
    buttons_.push_back(button);
  }
  if (tiles.size() >= composer::mostReferences) return;
  auto* add = new AddPictureButton(texts::addPictures());
  connect(add, &QAbstractButton::clicked, this, &PictureRow::addPressed, Qt::QueuedConnection);
  row->insertWidget(count, add);
  buttons_.push_back(add);
}

}  // namespace sorvan::views
