// The room `composer`: composer state and rules.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {}
namespace sorvan::core {}
namespace sorvan::generation {}
namespace sorvan::catalogue {}
namespace sorvan::account {}
namespace sorvan::composer {
using namespace sorvan::base;
using namespace sorvan::platform;
using namespace sorvan::core;
using namespace sorvan::generation;
using namespace sorvan::catalogue;
using namespace sorvan::account;
}  // namespace sorvan::composer
