// The style's part that draws the toolkit's own fields, ticks and sliders.
#pragma once

#include <QPainter>
#include <QStyleOption>

#include "shell/views/room.h"

namespace sorvan::views {

// The ground and the border of a field of text.
void paintField(QPainter& painter, const QStyleOption& option, const QWidget* widget);
void paintTick(QPainter& painter, const QStyleOption& option);
void paintRadio(QPainter& painter, const QStyleOption& option);
void paintSlider(QPainter& painter, const QStyleOptionSlider& option);
QRect sliderKnob(const QStyleOptionSlider& option);

}  // namespace sorvan::views
