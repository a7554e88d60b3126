#include "shell/views/mention_popup.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include "shell/views/painting.h"
#include "shell/views/reference_texts.h"
#include "shell/views/theme.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/typography.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kWidth = 344;
constexpr int kRow = 40;
constexpr int kHeading = 28;
constexpr int kPad = 6;
constexpr int kThumb = 28;
constexpr int kMostHeight = 340;
constexpr int kShadowRoom = 26;
constexpr int kWindowEdge = 8;
}  // namespace

MentionList::MentionList(ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractScrollArea(parent), thumbnails_(thumbnails) {
  setAccessibleName(texts::mentionList());
  setFocusPolicy(Qt::NoFocus);
  viewport()->setFocusPolicy(Qt::NoFocus);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  viewport()->setMouseTracking(true);
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
  describePaintedList(*this);
}

void MentionList::setOffer(const MentionOffer& offer) {
  choices_.clear();
  lines_.clear();
  int y = kPad;
  const auto add = [&](int height, int choice, const QString& text, bool ruled) {
    lines_.push_back({y, height, choice, text, ruled});
    y += height;
  };
  for (const MentionGroup& group : offer.groups) {
    if (!group.heading.isEmpty()) add(kHeading, -1, group.heading, !lines_.empty());
    for (const MentionChoice& choice : group.choices) {
      add(kRow, static_cast<int>(choices_.size()), {}, false);
      choices_.push_back(choice);
    }
  }
  if (choices_.empty()) add(2 * kRow, -1, offer.hint, false);
  height_ = y + kPad;
  current_ = 0;
  verticalScrollBar()->setValue(0);
  viewport()->update();
}

void MentionList::resizeEvent(QResizeEvent*) {
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(kRow);
  verticalScrollBar()->setRange(0, std::max(0, height_ - viewport()->height()));
}

void MentionList::setCurrent(int choice) {
  if (choices_.empty()) return;
  const int count = static_cast<int>(choices_.size());
  current_ = (choice % count + count) % count;
  for (const Line& line : lines_) {
    if (line.choice != current_) continue;
    QScrollBar* bar = verticalScrollBar();
    if (line.top < bar->value()) bar->setValue(line.top - kPad);
    if (line.top + line.height > bar->value() + viewport()->height())
      bar->setValue(line.top + line.height + kPad - viewport()->height());
  }
  viewport()->update();
  announceCurrentRow(*this, current_);
}

QUuid MentionList::rowId(int index) const { return QUuid(static_cast<uint>(index + 1), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0); }
int MentionList::rowIndex(QUuid id) const {
  const int index = static_cast<int>(id.data1) - 1;
  return index >= 0 && index < rowCount() ? index : -1;
}

QRect MentionList::cellRect(int index) const {
  for (const Line& line : lines_)
    if (line.choice == index)
      return {kPad, line.top - verticalScrollBar()->value(), viewport()->width() - 2 * kPad, line.height};
  return {};
}

QString MentionList::rowName(int index) const {
  const MentionChoice& choice = choices_.at(static_cast<std::size_t>(index));
  return choice.detail.isEmpty() ? u'@' + choice.handle : u'@' + choice.handle + u", "_s + choice.detail;
}

void MentionList::performRowAction(int index, const QString&) { Q_EMIT chosen(index); }

int MentionList::choiceAt(QPoint point) const {
  for (const Line& line : lines_)
    if (line.choice >= 0 && cellRect(line.choice).contains(point)) return line.choice;
  return -1;
}

void MentionList::mouseMoveEvent(QMouseEvent* event) {
  const int choice = choiceAt(event->pos());
  if (choice < 0 || choice == current_) return;
  current_ = choice;
  viewport()->update();
}

void MentionList::mousePressEvent(QMouseEvent* event) {
  const int choice = choiceAt(event->pos());
  if (choice >= 0 && event->button() == Qt::LeftButton) Q_EMIT chosen(choice);
}

void MentionList::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Line& line : lines_) {
    const QRect area(kPad, line.top - verticalScrollBar()->value(), viewport()->width() - 2 * kPad, line.height);
    if (area.intersects(viewport()->rect())) paintLine(painter, line, area);
  }
}

void MentionList::paintLine(QPainter& painter, const Line& line, const QRect& area) const {
  if (line.choice < 0) {
    if (line.ruled) painter.fillRect(QRect(0, area.y(), viewport()->width(), 1), colors().lineSubtle);
    if (choices_.empty())
      return paintParagraph(painter, area.adjusted(8, 8, -8, -8),
                            {line.text, fontFor(Type::small), colors().textSecondary}, lineHeight(Type::small));
    paintText(painter, area.adjusted(8, 2, -8, 0), {line.text, fontFor(Type::caption), colors().textTertiary});
    return;
  }
  const bool current = line.choice == current_;
  if (current) paintPanel(painter, area, metrics().radiusControl, colors().accentSoft);
  const MentionChoice& choice = choices_[static_cast<std::size_t>(line.choice)];
  const QRect thumb(area.x() + 8, area.center().y() - kThumb / 2 + 1, kThumb, kThumb);
  const auto answer = thumbnails_.picture(choice.thumbnailPath, choice.filePath, 256);
  if (answer.state == ThumbnailStore::State::ready)
    paintCover(painter, thumb, metrics().radiusControl - 2, answer.picture);
  else
    paintPanel(painter, thumb, metrics().radiusControl - 2, colors().surfacePlaceholder);
  int right = area.right() - 8;
  if (current) {
    const QFont font = fontFor(Type::caption);
    right -= paintText(painter, QRect(right - 60, area.y(), 60, area.height()),
                       {texts::enterKey(), font, colors().textSecondary, Qt::AlignRight | Qt::AlignVCenter}) + 8;
  }
  const int left = thumb.right() + 11;
  const QFont strong = fontFor(Type::body, Weight::medium);
  const int used = paintText(painter, QRect(left, area.y(), right - left, area.height()),
                             {u'@' + choice.handle, strong, colors().textPrimary});
  paintText(painter, QRect(left + used + 8, area.y(), std::max(0, right - left - used - 8), area.height()),
            {choice.detail, fontFor(Type::small), current ? colors().textTertiaryOnSelected : colors().textTertiary});
}

MentionPopup::MentionPopup(ThumbnailStore& thumbnails, QWidget* window)
    : QWidget(window), list_(new MentionList(thumbnails, this)) {
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void MentionPopup::showAt(const MentionOffer& offer, const QRect& place) {
  list_->setOffer(offer);
  const int height = std::min(list_->contentHeight(), kMostHeight);
  const QRect window = parentWidget()->rect();
  int x = std::min(place.left() - 16, window.width() - kWidth - kWindowEdge);
  int y = place.top() - height - 6;
  if (y < kWindowEdge) y = std::min(place.bottom() + 6, window.height() - height - kWindowEdge);
  x = std::max(x, kWindowEdge);
  setGeometry(x - kShadowRoom, y - kShadowRoom, kWidth + 2 * kShadowRoom, height + 2 * kShadowRoom);
  list_->setGeometry(kShadowRoom, kShadowRoom, kWidth, height);
  show();
  raise();
}

void MentionPopup::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintShadow(painter, list_->geometry(), metrics().radiusPanel, colors().popoverShadow);
  paintPanel(painter, list_->geometry(), metrics().radiusPanel, colors().surfaceOverlay,
             Theme::instance().isDark() ? colors().controlBorder : colors().lineDefault);
}

}  // namespace sorvan::views
