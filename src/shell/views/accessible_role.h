// What a widget of our own is to assistive technology, where the toolkit would call it nothing in particular.
#pragma once

#include <QAccessible>

#include "shell/views/room.h"

namespace sorvan::views {

// Its name stays the widget's accessible name. Called in the widget's constructor.
void giveRole(QWidget& widget, QAccessible::Role role);

}  // namespace sorvan::views
