// The room `catalogue`: models, audio model tables, fal provider.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {}
namespace sorvan::core {}
namespace sorvan::generation {}
namespace sorvan::catalogue {
using namespace sorvan::base;
using namespace sorvan::platform;
using namespace sorvan::core;
using namespace sorvan::generation;
}  // namespace sorvan::catalogue
