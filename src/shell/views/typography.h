// The type scale: one role a kind of text, one font a role.
#pragma once

#include <QFont>

#include "shell/views/room.h"

namespace sorvan::views {

enum class Type { micro, caption, small, body, prompt, title, large, display, mono };
enum class Weight { regular = 400, medium = 500, semibold = 600 };

// The font of a role in the weight that the scale gives it, or in the one named.
QFont fontFor(Type role);
QFont fontFor(Type role, Weight weight);

// Distance of two base lines of running text in the role, in pixels.
int lineHeight(Type role);

}  // namespace sorvan::views
