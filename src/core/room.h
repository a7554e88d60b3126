// The room `core`: records, workspace files, record context, library store, opening and lease, ledgers.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {}
namespace sorvan::core {
using namespace sorvan::base;
using namespace sorvan::platform;
}  // namespace sorvan::core
