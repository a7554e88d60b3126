// The icons: drawings of one grid, tinted with a colour of the theme.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QRectF>

#include "shell/views/room.h"

class QPainter;

namespace sorvan::views {

enum class IconFill { outline, filled };

struct IconLook {
  QColor color;
  IconFill fill = IconFill::outline;
};

// Paints the icon of that name, without ".svg", as a square of `size` logical pixels centred in `area`.
void paintIcon(QPainter& painter, const QString& name, const QRectF& area, int size, const IconLook& look);

// The same as a picture. Pictures are kept per name, size, colour and pixel ratio.
QPixmap iconPixmap(const QString& name, int size, const IconLook& look, double pixelRatio);

// The program's own mark, which keeps its colours.
QPixmap markPixmap(int size, double pixelRatio);
QIcon windowIcon();

// The spinner: a faint ring and a quarter of it that stands at `degrees`, `size` logical pixels across.
void paintSpinner(QPainter& painter, const QRectF& area, int size, const QColor& color, double degrees);

}  // namespace sorvan::views
