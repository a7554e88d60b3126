// The room `platform`: what the machine offers: sqlite, http, pictures, clips and sounds, key store.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {
using namespace sorvan::base;
}  // namespace sorvan::platform
