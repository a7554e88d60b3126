#include "shell/views/picture_button.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/theme.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kSide = 48;
}

PictureButton::PictureButton(ThumbnailStore& thumbnails, const ReferenceTile& tile, const QString& place,
                             QWidget* parent)
    : QAbstractButton(parent), thumbnails_(thumbnails), tile_(tile) {
  setFixedSize(kSide, kSide);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tile.title);
  setAccessibleDescription(tile.problem.isEmpty() ? place : place + u", "_s + tile.problem);
  setToolTip(tile.problem.isEmpty() ? tile.title : tile.title + u" · "_s + tile.problem);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
}

void PictureButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!tile_.problem.isEmpty()) painter.setOpacity(0.4);
  const auto answer = thumbnails_.picture(tile_.thumbnailPath, tile_.filePath, 256);
  if (answer.state == ThumbnailStore::State::ready)
    paintCover(painter, rect(), metrics().radiusControl, answer.picture);
  else
    paintPanel(painter, rect(), metrics().radiusControl, colors().surfacePlaceholder);
  if (underMouse() || isDown())
    paintRing(painter, rect(), metrics().radiusControl, isDown() ? 2 : 1, colors().textPrimary);
  if (answer.state == ThumbnailStore::State::missing || !tile_.problem.isEmpty())
    paintIcon(painter, u"triangle-alert"_s, rect(), 16, {colors().warningText});
}

void PictureButton::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Delete || key == Qt::Key_Backspace) return Q_EMIT removed();
  if (event->modifiers() == Qt::ControlModifier && (key == Qt::Key_Left || key == Qt::Key_Right))
    return Q_EMIT moved(key == Qt::Key_Left ? -1 : 1);
  QAbstractButton::keyPressEvent(event);
}

void PictureButton::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  click();
}

AddPictureButton::AddPictureButton(const QString& name, QWidget* parent) : QAbstractButton(parent) {
  setFixedSize(kSide, kSide);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(name);
  setToolTip(name);
}

void AddPictureButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool touched = underMouse() || isDown();
  if (touched)
    paintPanel(painter, rect(), metrics().radiusControl, isDown() ? colors().statePressed : colors().stateHover);
  QPen pen(touched ? colors().textSecondary : colors().controlFieldBorder, 1, Qt::DashLine);
  painter.setPen(pen);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), metrics().radiusControl,
                          metrics().radiusControl);
  paintIcon(painter, u"plus"_s, rect(), 18, {touched ? colors().textPrimary : colors().textTertiary});
}

}  // namespace sorvan::views
