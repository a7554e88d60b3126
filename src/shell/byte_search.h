#pragma once

#include "shell/room.h"

#include <cstddef>

namespace sorvan::shell {

// The first place at which `needle` stands in `text`, or null. Reads sixteen bytes at a time where the machine can.
const char* findBytes(const char* text, std::size_t textSize, const char* needle, std::size_t needleSize);

}  // namespace sorvan::shell
