#include "shell/views/reference_chip.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

#include "base/ids.h"
#include "composer/notice_texts.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/reference_texts.h"
#include "shell/views/texts.h"
#include "shell/views/theme.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/typography.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kInset = 3;
constexpr int kGap = 8;
constexpr int kMostText = 180;
constexpr int kThumb = stripHeight - 2 * kInset;

QFont roleFont() { return fontFor(Type::caption, Weight::regular); }

int nameWidth(const AttachedReference& reference) {
  const int name = textWidth(reference.name, fontFor(Type::small, Weight::medium));
  return std::min(kMostText, std::max(name, textWidth(reference.role, roleFont())));
}
}  // namespace

ReferenceChip::ReferenceChip(const AttachedReference& reference, ThumbnailStore& thumbnails, QWidget* parent)
    : QAbstractButton(parent), reference_(reference), thumbnails_(thumbnails) {
  setAccessibleName(reference.name);
  setAccessibleDescription(reference.role);
  setToolTip(reference.name + u" · "_s + reference.role);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  cross_ = new IconButton(u"x"_s, texts::detachReference(reference.name), {}, this);
  cross_->setControlSize(ControlSize::compact);
  cross_->setIconSide(13);
  connect(cross_, &IconButton::clicked, this, &ReferenceChip::removed, Qt::QueuedConnection);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
  setFixedHeight(stripHeight);
}

QSize ReferenceChip::sizeHint() const {
  return {kInset + kThumb + kGap + nameWidth(reference_) + kGap + cross_->sizeHint().width() + kInset, stripHeight};
}

void ReferenceChip::resizeEvent(QResizeEvent*) {
  const QSize side = cross_->sizeHint();
  cross_->setGeometry(width() - side.width() - kInset, (height() - side.height()) / 2, side.width(), side.height());
}

void ReferenceChip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  paintPanel(painter, rect(), metrics().radiusCard, underMouse() ? colors().statePressed : colors().stateHover);
  const QRect thumb(kInset, (height() - kThumb) / 2, kThumb, kThumb);
  const auto answer = thumbnails_.picture(reference_.thumbnailPath, reference_.filePath, 256);
  if (answer.state == ThumbnailStore::State::ready)
    paintCover(painter, thumb, metrics().radiusControl - 1, answer.picture);
  else
    paintPanel(painter, thumb, metrics().radiusControl - 1, colors().surfacePlaceholder);
  if (answer.state == ThumbnailStore::State::missing)
    paintIcon(painter, u"triangle-alert"_s, thumb, 16, {colors().textTertiary});
  const int left = thumb.right() + 1 + kGap;
  const int room = cross_->x() - kGap / 2 - left;
  const int line = lineHeight(Type::small);
  const int top = (height() - line - lineHeight(Type::caption)) / 2;
  paintText(painter, QRect(left, top, room, line),
            {reference_.name, fontFor(Type::small, Weight::medium), colors().accentText});
  paintText(painter, QRect(left, top + line, room, lineHeight(Type::caption)),
            {reference_.role, roleFont(), underMouse() ? colors().textTertiaryOnSelected : colors().textTertiary});
}

void ReferenceChip::mousePressEvent(QMouseEvent* event) {
  pressedAt_ = event->pos();
  QAbstractButton::mousePressEvent(event);
}

void ReferenceChip::mouseMoveEvent(QMouseEvent* event) {
  const bool far = (event->pos() - pressedAt_).manhattanLength() >= QApplication::startDragDistance();
  if (isDown() && far) return drag();
  QAbstractButton::mouseMoveEvent(event);
}

void ReferenceChip::drag() {
  setDown(false);
  auto* drag = new QDrag(this);
  auto* data = new QMimeData;
  data->setData(referenceMimeType, base::uuidText(reference_.id).toLatin1());
  drag->setMimeData(data);
  drag->setPixmap(grab());
  drag->setHotSpot(pressedAt_);
  drag->exec(Qt::MoveAction);
}

void ReferenceChip::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  click();
}

void ReferenceChip::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) return click();
  const bool moves = event->modifiers() == Qt::ControlModifier && (key == Qt::Key_Left || key == Qt::Key_Right);
  if (moves || key == Qt::Key_Delete || key == Qt::Key_Backspace || key == Qt::Key_F2) {
    Q_EMIT keyPressed(key, event->modifiers());
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

// ---- The button

ReferenceButton::ReferenceButton(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setAccessibleName(texts::referenceButton());
  setFixedHeight(stripHeight);
}

void ReferenceButton::setWords(const QString& count, const QString& inert) {
  count_ = count;
  inert_ = !inert.isEmpty();
  setEnabled(!inert_);
  setToolTip(inert_ ? inert : composer::texts::attachTooltip());
  setAccessibleDescription(inert_ ? inert : count);
  updateGeometry();
  update();
}

QSize ReferenceButton::sizeHint() const {
  const int words = textWidth(texts::referenceButton(), fontFor(Type::small, Weight::medium)) + 8 +
                    textWidth(count_, fontFor(Type::small));
  return {14 + metrics().iconSmall + kGap + words + 14, stripHeight};
}

void ReferenceButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool lit = underMouse() && isEnabled();
  paintPanel(painter, rect(), metrics().radiusCard, lit ? colors().statePressed : colors().stateHover);
  if (inert_) painter.setOpacity(0.45);
  const QRect icon(14, 0, metrics().iconSmall, height());
  paintIcon(painter, u"image-plus"_s, icon, metrics().iconSmall, {colors().textSecondary});
  const int left = icon.right() + 1 + kGap;
  const int used = paintText(painter, QRect(left, 0, width() - left - 14, height()),
                             {texts::referenceButton(), fontFor(Type::small, Weight::medium), colors().textSecondary});
  paintText(painter, QRect(left + used + 8, 0, std::max(0, width() - left - used - 8), height()),
            {count_, fontFor(Type::small), lit ? colors().textTertiaryOnSelected : colors().textTertiary});
}

}  // namespace sorvan::views
