// The room `views`: the widgets; layout, painting, events forwarded to presenters.
#pragma once

namespace sorvan::base {}
namespace sorvan::platform {}
namespace sorvan::core {}
namespace sorvan::generation {}
namespace sorvan::catalogue {}
namespace sorvan::account {}
namespace sorvan::composer {}
namespace sorvan::audio {}
namespace sorvan::media {}
namespace sorvan::exchange {}
namespace sorvan::shell {}
namespace sorvan::views {
using namespace sorvan::base;
using namespace sorvan::platform;
using namespace sorvan::core;
using namespace sorvan::generation;
using namespace sorvan::catalogue;
using namespace sorvan::account;
using namespace sorvan::composer;
using namespace sorvan::audio;
using namespace sorvan::media;
using namespace sorvan::exchange;
using namespace sorvan::shell;
}  // namespace sorvan::views
