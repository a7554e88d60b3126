// The room `generation`: generation request, mentions, markup, queue, runner, registration, recovery.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {}
namespace sorvan::core {}
namespace sorvan::generation {
using namespace sorvan::base;
using namespace sorvan::platform;
using namespace sorvan::core;
}  // namespace sorvan::generation
