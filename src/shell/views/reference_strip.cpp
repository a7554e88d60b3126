#include "shell/views/reference_strip.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

#include "base/ids.h"
#include "shell/references_presenter.h"
#include "shell/views/controls.h"
#include "shell/views/painting.h"
#include "shell/views/reference_chip.h"
#include "shell/views/reference_texts.h"
#include "shell/views/text_dialog.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kGap = 8;
constexpr int kRowGap = 6;

// The marks of a picture, on a chip's ground.
class MarksChip final : public QWidget {
 public:
  MarksChip(const AttachedReference& reference, QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 3, 6, 3);
    row->setSpacing(2);
    open = new Button(reference.marksLabel, ButtonVariant::quiet);
    open->setIconName(u"square-dashed-mouse-pointer"_s);
    open->setControlSize(ControlSize::compact);
    open->setToolTip(texts::openMarks());
    remove = new IconButton(u"x"_s, texts::removeMarks());
    remove->setControlSize(ControlSize::compact);
    remove->setIconSide(13);
    row->addWidget(open);
    row->addWidget(remove);
    setFixedHeight(stripHeight);
  }
  Button* open;
  IconButton* remove;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), metrics().radiusCard, colors().stateHover);
  }
};

}  // namespace

ReferenceStrip::ReferenceStrip(ComposerPresenter& composer, ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), composer_(composer), thumbnails_(thumbnails) {
  setAccessibleName(texts::references());
  setAcceptDrops(true);
  ReferencesPresenter* references = composer_.references();
  if (!references) return;
  button_ = new ReferenceButton(this);
  connect(button_, &QAbstractButton::clicked, this, &ReferenceStrip::attachRequested);
  connect(references, &ReferencesPresenter::changed, this, &ReferenceStrip::refreshButton);
  refreshButton();
}

void ReferenceStrip::refreshButton() {
  if (!button_) return;
  button_->setWords(composer_.references()->countText(), composer_.references()->inertText());
  arrange(width(), true);
}

void ReferenceStrip::show(const std::vector<AttachedReference>& references) {
  if (references == shown_) return;
  shown_ = references;
  rebuild();
}

// A chip that had the keyboard has it afterwards, wherever it went.
void ReferenceStrip::rebuild() {
  QUuid focused;
  for (ReferenceChip* chip : referenceChips_)
    if (chip->hasFocus() || chip->isAncestorOf(QApplication::focusWidget())) focused = chip->id();
  for (QWidget* chip : chips_) chip->hide(), chip->deleteLater();
  chips_.clear();
  referenceChips_.clear();
  int place = 0;
  for (const AttachedReference& reference : shown_) {
    addChip(reference, place++);
    if (reference.marks > 0) addMarks(reference);
  }
  for (QWidget* chip : chips_) chip->show();
  QWidget* before = this;
  for (QWidget* chip : chips_) setTabOrder(before, chip), before = chip;
  if (button_) setTabOrder(before, button_);
  arrange(width(), true);
  if (focused.isNull()) return;
  const int at = placeOf(focused);
  if (at >= 0) referenceChips_[static_cast<std::size_t>(at)]->setFocus(Qt::OtherFocusReason);
  else if (button_) button_->setFocus(Qt::OtherFocusReason);
}

void ReferenceStrip::addChip(const AttachedReference& reference, int) {
  auto* chip = new ReferenceChip(reference, thumbnails_, this);
  const QUuid id = reference.id;
  connect(chip, &ReferenceChip::removed, &composer_, [this, id] { composer_.detachReference(id); });
  // Queued: what is chosen may take the chip away.
  connect(chip, &QAbstractButton::clicked, this, [this, id] { openMenu(id); }, Qt::QueuedConnection);
  connect(chip, &ReferenceChip::keyPressed, this,
          [this, id](int key, Qt::KeyboardModifiers modifiers) { takeKey(id, key, modifiers); }, Qt::QueuedConnection);
  chips_.push_back(chip);
  referenceChips_.push_back(chip);
}

void ReferenceStrip::addMarks(const AttachedReference& reference) {
  auto* marks = new MarksChip(reference, this);
  connect(marks->open, &Button::clicked, &composer_, [this, id = reference.id] { composer_.openMarks(id); },
          Qt::QueuedConnection);
  connect(marks->remove, &IconButton::clicked, &composer_, [this] { composer_.removeMarks(); }, Qt::QueuedConnection);
  chips_.push_back(marks);
}

int ReferenceStrip::placeOf(QUuid item) const {
  for (std::size_t place = 0; place < shown_.size(); ++place)
    if (shown_[place].id == item) return static_cast<int>(place);
  return -1;
}

void ReferenceStrip::openMenu(QUuid item) {
  const int place = placeOf(item);
  if (place < 0 || !composer_.references()) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fillMenu(*menu, shown_[static_cast<std::size_t>(place)], place);
  menu->setAccessibleName(texts::referenceMenu(shown_[static_cast<std::size_t>(place)].name));
  const QWidget* chip = referenceChips_[static_cast<std::size_t>(place)];
  menu->popup(chip->mapToGlobal(QPoint(0, -menu->sizeHint().height() - 4)));
}

void ReferenceStrip::fillMenu(QMenu& menu, const AttachedReference& reference, int place) {
  ReferencesPresenter& references = *composer_.references();
  const QUuid id = reference.id;
  menu.addAction(texts::renameReference(), this, [this, id] { rename(id); });
  QMenu* roles = menu.addMenu(texts::role());
  const QString now = references.roleOf(id);
  for (const QString& role : references.roles()) {
    QAction* action = roles->addAction(role, this, [this, id, role] { composer_.references()->setRole(id, role); });
    action->setCheckable(true);
    action->setChecked(role == now);
  }
  menu.addSeparator();
  const auto move = [this, id](int to) { composer_.references()->move(id, to); };
  menu.addAction(texts::moveEarlier(), this, [move, place] { move(place - 1); })->setEnabled(place > 0);
  menu.addAction(texts::moveLater(), this, [move, place] { move(place + 1); })
      ->setEnabled(place + 1 < static_cast<int>(shown_.size()));
  menu.addSeparator();
  menu.addAction(texts::removeReference(), this, [this, id] { composer_.detachReference(id); });
}

void ReferenceStrip::rename(QUuid item) {
  const int place = placeOf(item);
  if (place < 0) return;
  auto* dialog = new TextDialog(texts::renameReferenceTitle(), texts::referenceName(), texts::rename(), window());
  dialog->setText(shown_[static_cast<std::size_t>(place)].name.mid(1));
  connect(dialog, &TextDialog::written, this,
          [this, item](const QString& label) { composer_.references()->rename(item, label); });
  dialog->open();
}

void ReferenceStrip::takeKey(QUuid item, int key, Qt::KeyboardModifiers) {
  const int place = placeOf(item);
  if (place < 0 || !composer_.references()) return;
  if (key == Qt::Key_Left || key == Qt::Key_Right)
    composer_.references()->move(item, key == Qt::Key_Left ? place - 1 : place + 1);
  else if (key == Qt::Key_F2)
    rename(item);
  else
    composer_.detachReference(item);
}

// ---- Another place for a chip

void ReferenceStrip::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasFormat(referenceMimeType)) event->acceptProposedAction();
}

int ReferenceStrip::placeAt(QPoint point) const {
  int place = 0;
  for (const ReferenceChip* chip : referenceChips_) {
    const QRect area = chip->geometry();
    if (point.y() > area.bottom() || (point.y() >= area.top() && point.x() > area.center().x())) ++place;
  }
  return place;
}

void ReferenceStrip::dropEvent(QDropEvent* event) {
  const QUuid item = base::uuidFromText(QString::fromLatin1(event->mimeData()->data(referenceMimeType)));
  const int from = placeOf(item);
  if (from < 0 || !composer_.references()) return;
  event->acceptProposedAction();
  const int to = placeAt(event->position().toPoint());
  composer_.references()->move(item, to > from ? to - 1 : to);
}

int ReferenceStrip::arrange(int width, bool place) const {
  int x = 0;
  int y = 0;
  std::vector<QWidget*> all = chips_;
  if (button_) all.push_back(button_);
  for (QWidget* chip : all) {
    const int wished = std::min(chip->sizeHint().width(), width);
    if (x > 0 && x + wished > width) {
      x = 0;
      y += stripHeight + kRowGap;
    }
    if (place) chip->setGeometry(x, y, wished, stripHeight);
    x += wished + kGap;
  }
  return all.empty() ? 0 : y + stripHeight;
}

int ReferenceStrip::heightForWidth(int width) const { return arrange(width, false); }
void ReferenceStrip::resizeEvent(QResizeEvent*) { arrange(width(), true); }

}  // namespace sorvan::views
