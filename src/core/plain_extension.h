// Which text from outside may end a file's name.
#pragma once

#include <QString>

#include "core/room.h"

namespace sorvan::core {

/// Whether it is 1 to 16 letters and digits, at most 32 bytes of UTF-8: with a safe stem and a counter before it, such
/// an extension fits into the 255 bytes of a file's name, and it holds no step of a path.
bool isPlainExtension(const QString& ext);

}  // namespace sorvan::core
