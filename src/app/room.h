// The room `app`: main and the composition root. It sees every other room.
#pragma once

#include "shell/room.h"

namespace sorvan::views {}
namespace sorvan::app {
using namespace sorvan::base;
using namespace sorvan::platform;
using namespace sorvan::core;
using namespace sorvan::generation;
using namespace sorvan::catalogue;
using namespace sorvan::account;
using namespace sorvan::composer;
using namespace sorvan::shell;
}  // namespace sorvan::app
