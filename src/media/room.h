// The room `media`: clip tools, sequences, frames.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {}
namespace sorvan::core {}
namespace sorvan::generation {}
namespace sorvan::catalogue {}
namespace sorvan::account {}
namespace sorvan::composer {}
namespace sorvan::audio {}
namespace sorvan::media {
using namespace sorvan::base;
using namespace sorvan::platform;
using namespace sorvan::core;
using namespace sorvan::generation;
using namespace sorvan::catalogue;
using namespace sorvan::account;
using namespace sorvan::composer;
using namespace sorvan::audio;
}  // namespace sorvan::media
