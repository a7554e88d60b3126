#include "shell/views/inspector_view.h"

#include <QGridLayout>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/plain_scroll_area.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kTileColumns = 4;

QVBoxLayout* block(QVBoxLayout& column, const QMargins& margins, int spacing) {
  auto* layout = new QVBoxLayout;
  layout->setContentsMargins(margins);
  layout->setSpacing(spacing);
  column.addLayout(layout);
  return layout;
}

QString iconOfAction(ActionId action) {
  switch (action) {
    case ActionId::saveResult:
      return u"download"_s;
    case ActionId::saveRawResult:
      return u"file-down"_s;
    case ActionId::submitAgain:
    case ActionId::retryJob:
      return u"refresh-cw"_s;
    case ActionId::copyJobDetails:
      return u"copy"_s;
    case ActionId::reusePrompt:
      return u"corner-down-left"_s;
    case ActionId::useAsReference:
      return u"image-plus"_s;
    case ActionId::markAreas:
      return u"square-dashed-mouse-pointer"_s;
    case ActionId::showInFiles:
      return u"folder"_s;
    case ActionId::compareItems:
      return u"grid-2x2"_s;
    case ActionId::showLineage:
      return u"git-fork"_s;
    case ActionId::openItem:
      return u"maximize"_s;
    case ActionId::cancelJob:
      return u"x"_s;
    default:
      return {};
  }
}

bool isQuiet(ActionId action) { return action == ActionId::copyJobDetails || action == ActionId::openItem; }

// Which items a section names; other items are other widgets.
QString linksOf(const InspectorSection& section) {
  QStringList links;
  for (const InspectorLink& link : section.links) links.append(link.item.toString() + link.title + link.subtitle);
  return links.join(u',');
}

AlertTone toneOf(JobState state) {
  if (state == JobState::failed) return AlertTone::error;
  return state == JobState::complete ? AlertTone::success : AlertTone::information;
}

}  // namespace

InspectorView::InspectorView(ThumbnailStore& thumbnails, QWidget* parent) : QWidget(parent), thumbnails_(thumbnails) {
  setAccessibleName(texts::inspectorZone());
  body_ = new QWidget;
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(1, 0, 0, 0);
  whole->addWidget(plainScrollArea(body_));
  auto* column = new QVBoxLayout(body_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  rebuild();
}

void InspectorView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, 0, 1, height()), colors().lineSubtle);
}

QString InspectorView::shapeOf(const InspectorDisplay& display) const {
  QStringList parts{QString::number(static_cast<int>(display.subject)),
                    display.id.toString(),
                    display.statusText,
                    QString::number(display.canChangeStatus),
                    QString::number(display.previews.size()),
                    display.message.isEmpty() ? u"-"_s : u"m"_s,
                    display.detail.isEmpty() ? u"-"_s : u"d"_s,
                    QString::number(static_cast<int>(display.jobState)),
                    QString::number(display.hasRating),
                    display.previewPath.isEmpty() ? u"-"_s : u"p"_s};
  for (const InspectorButton& button : display.buttons) parts.append(button.title);
  parts.append(display.moreTitle);
  parts.append(QString::number(display.marks.areas.empty()));
  for (const InspectorSection& section : display.sections)
    parts.append(section.title + (section.text.isEmpty() ? u"-"_s : u"t"_s) + QString::number(section.rows.size()) +
                 linksOf(section));
  return parts.join(u'|');
}

void InspectorView::show(const InspectorDisplay& display) {
  const QString shape = shapeOf(display);
  display_ = display;
  if (shape != shape_) {
    shape_ = shape;
    rebuild();
  }
  refreshWords();
}

void InspectorView::rebuild() {
  auto* column = static_cast<QVBoxLayout*>(body_->layout());
  for (QWidget* child : body_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) child->hide(), child->deleteLater();
  while (QLayoutItem* item = column->takeAt(0)) {
    if (QLayout* inner = item->layout()) {
      while (QLayoutItem* leaf = inner->takeAt(0)) delete leaf;
    }
    delete item;
  }
  preview_ = nullptr;
  title_ = nullptr;
  facts_ = message_ = detail_ = nullptr;
  stars_ = nullptr;
  heart_ = nullptr;
  marks_ = nullptr;
  sections_.clear();
  if (display_.subject == InspectorSubject::nothing)
    buildNothing(*column);
  else if (display_.subject == InspectorSubject::job)
    buildJobHead(*column);
  else
    buildItemHead(*column);
  if (display_.subject == InspectorSubject::item)
    buildTiles(*column);
  else
    buildButtons(*column);
  buildMarks(*column);
  buildSections(*column);
  column->addStretch(1);
}

void InspectorView::buildNothing(QVBoxLayout& column) {
  QVBoxLayout* words = block(column, {16, 18, 16, 12}, 4);
  title_ = new ElidedLabel(Type::title, &Colors::textPrimary, Qt::ElideRight);
  title_->setText(display_.title.isEmpty() ? texts::nothingSelected() : display_.title);
  facts_ = new Paragraph(display_.facts.isEmpty() ? texts::nothingSelectedHint() : display_.facts, Type::small,
                         &Colors::textTertiary);
  words->addWidget(title_);
  words->addWidget(facts_);
}

void InspectorView::buildItemHead(QVBoxLayout& column) {
  if (!display_.previewPath.isEmpty()) {
    QVBoxLayout* picture = block(column, {16, 14, 16, 0}, 0);
    preview_ = new PreviewPicture(thumbnails_);
    connect(preview_, &PreviewPicture::clicked, this, [this] { Q_EMIT previewOpened(display_.id); });
    picture->addWidget(preview_);
  }
  if (!display_.previews.empty())
    block(column, {16, 14, 16, 0}, 0)->addWidget(new PreviewMosaic(thumbnails_, display_.previews));
  QVBoxLayout* words = block(column, {16, 10, 16, 12}, 2);
  const bool several = !display_.previews.empty();
  title_ = new ElidedLabel(several ? Type::title : Type::body, &Colors::textPrimary, Qt::ElideMiddle);
  title_->setWeight(Weight::semibold);
  facts_ = new Paragraph({}, Type::small, &Colors::textTertiary);
  words->addWidget(title_);
  words->addWidget(facts_);
  if (!display_.hasRating) return;
  words->addSpacing(6);
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  stars_ = new StarRow;
  auto* heart = new HeartButton;
  heart_ = heart;
  connect(stars_, &StarRow::chosen, this, &InspectorView::ratingChosen);
  connect(heart, &HeartButton::clicked, this, &InspectorView::favoriteToggled);
  row->addWidget(stars_);
  row->addStretch(1);
  row->addWidget(heart);
  if (!display_.statusText.isEmpty()) row->addWidget(buildStatus());
  words->addLayout(row);
}

QWidget* InspectorView::buildStatus() {
  auto* status = new StatusButton(display_.statusText, display_.statusToken);
  status->setEnabled(display_.canChangeStatus);
  connect(status, &StatusButton::clicked, this,
          [this, status] { Q_EMIT statusMenuRequested(status->mapToGlobal(QPoint(0, status->height() + 4))); });
  return status;
}

void InspectorView::buildJobHead(QVBoxLayout& column) {
  QVBoxLayout* words = block(column, {16, 14, 16, 12}, 3);
  auto* row = new QHBoxLayout;
  row->setSpacing(7);
  if (display_.jobState == JobState::running || display_.jobState == JobState::salvaging)
    row->addWidget(new Spinner(16));
  else
    row->addWidget(new IconView(iconOf(toneOf(display_.jobState)), 16, colorOf(toneOf(display_.jobState))));
  title_ = new ElidedLabel(Type::title, &Colors::textPrimary, Qt::ElideRight);
  row->addWidget(title_, 1);
  facts_ = new Paragraph({}, Type::small, &Colors::textTertiary);
  words->addLayout(row);
  words->addWidget(facts_);
  column.addWidget(new Hairline);
  if (display_.message.isEmpty() && display_.detail.isEmpty()) return;
  QVBoxLayout* body = block(column, {16, 12, 16, 4}, 12);
  if (!display_.message.isEmpty()) {
    message_ = new Paragraph;
    message_->setLineDistance(19);
    message_->setSelectable(true);
    body->addWidget(message_);
  }
  if (!display_.detail.isEmpty()) {
    auto* notice = new NoticeBar(AlertTone::information, display_.detail);
    if (display_.jobState == JobState::failed) notice->setIcon(u"shield-check"_s);
    detail_ = notice->findChild<Paragraph*>();
    body->addWidget(notice);
  }
}

void InspectorView::buildButtons(QVBoxLayout& column) {
  if (display_.buttons.empty()) return;
  QVBoxLayout* stack = block(column, {16, 8, 16, 14}, 6);
  for (const InspectorButton& spec : display_.buttons) {
    auto* button =
        new Button(spec.title, spec.primary ? ButtonVariant::primary
                                            : (isQuiet(spec.action) ? ButtonVariant::quiet : ButtonVariant::secondary));
    button->setIconName(iconOfAction(spec.action));
    connect(button, &Button::clicked, this, [this, action = spec.action] { Q_EMIT actionRequested(action); });
    stack->addWidget(button);
  }
}

// What can be done with an item, as tiles in four columns; the last one opens the menu with the rest.
void InspectorView::buildTiles(QVBoxLayout& column) {
  if (display_.buttons.empty() && display_.moreTitle.isEmpty()) return;
  auto* holder = new QWidget;
  auto* grid = new QGridLayout(holder);
  grid->setContentsMargins(16, 0, 16, 14);
  grid->setSpacing(4);
  int place = 0;
  const auto add = [&](TileButton* tile) {
    tile->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    grid->addWidget(tile, place / kTileColumns, place % kTileColumns);
    grid->setColumnStretch(place % kTileColumns, 1);
    ++place;
  };
  for (const InspectorButton& spec : display_.buttons) {
    auto* tile = new TileButton(iconOfAction(spec.action), spec.shortTitle.isEmpty() ? spec.title : spec.shortTitle);
    tile->setAccessibleName(spec.title);
    tile->setToolTip(spec.title);
    connect(tile, &TileButton::clicked, this, [this, action = spec.action] { Q_EMIT actionRequested(action); });
    add(tile);
  }
  if (!display_.moreTitle.isEmpty()) {
    auto* more = new TileButton(u"ellipsis"_s, display_.moreTitle);
    connect(more, &TileButton::clicked, this,
            [this, more] { Q_EMIT moreRequested(more->mapToGlobal(QPoint(0, more->height() + 4))); });
    add(more);
  }
  for (int empty = place; empty < kTileColumns; ++empty) grid->setColumnStretch(empty, 1);
  column.addWidget(holder);
}

void InspectorView::buildMarks(QVBoxLayout& column) {
  if (display_.marks.areas.empty()) return;
  column.addWidget(new Hairline);
  QVBoxLayout* words = block(column, {16, 12, 16, 14}, 8);
  auto* head = new QHBoxLayout;
  auto* title = new Label(display_.marks.title, Type::small, &Colors::textSecondary);
  title->setWeight(Weight::semibold);
  head->addWidget(title, 1);
  head->addWidget(new Label(display_.marks.countText, Type::small, &Colors::textTertiary));
  words->addLayout(head);
  marks_ = new MarkedPicture(thumbnails_, display_.marks);
  words->addWidget(marks_);
}

void InspectorView::buildSections(QVBoxLayout& column) {
  for (const InspectorSection& section : display_.sections) {
    column.addWidget(new Hairline);
    auto* view = new InspectorSectionView(section, thumbnails_);
    connect(view, &InspectorSectionView::actionRequested, this, &InspectorView::actionRequested);
    connect(view, &InspectorSectionView::itemOpened, this, &InspectorView::previewOpened);
    column.addWidget(view);
    sections_.push_back(view);
  }
}

void InspectorView::refreshWords() {
  if (display_.subject == InspectorSubject::nothing && display_.title.isEmpty()) return;
  if (title_) title_->setText(display_.title);
  if (facts_) facts_->setParagraph(display_.facts), facts_->setVisible(!display_.facts.isEmpty());
  if (message_ && message_->paragraph() != display_.message) message_->setParagraph(display_.message);
  if (detail_ && detail_->paragraph() != display_.detail) detail_->setParagraph(display_.detail);
  if (preview_) preview_->setPath(display_.previewPath);
  if (marks_) marks_->setMarks(display_.marks);
  if (stars_) stars_->setStars(display_.rating);
  if (heart_) static_cast<HeartButton*>(heart_)->setChecked(display_.favorite);
  for (size_t index = 0; index < sections_.size(); ++index) sections_[index]->setWords(display_.sections[index]);
}

}  // namespace sorvan::views
