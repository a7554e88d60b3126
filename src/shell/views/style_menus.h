// The menus' part of the style.
#pragma once

#include <QPainter>
#include <QStyleOptionMenuItem>

#include "shell/views/room.h"

namespace sorvan::views {

void paintMenuPanel(QPainter& painter, const QRect& area);
void paintMenuItem(QPainter& painter, const QStyleOptionMenuItem& item, const QWidget* menu);
void paintMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& item);
// The keys of a shortcut as a row shows them, side by side: "Ctrl C", "Delete".
QString shownKeys(const QString& shortcut);
QSize menuItemSize(const QStyleOptionMenuItem& item);
QSize menuBarItemSize(const QStyleOptionMenuItem& item);

// Keeps the popup's shape rounded without asking the desktop for a compositor.
void roundMenuCorners(QWidget& menu);

}  // namespace sorvan::views
