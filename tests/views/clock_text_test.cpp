#include <gtest/gtest.h>

#include "shell/views/painting.h"

namespace sorvan::views {
namespace {

using namespace Qt::Literals::StringLiterals;

// A cell tells how long its clip is, and the clip that plays in it tells it again.
TEST(ClockText, IsCutOffAsOnTheCell) {
  EXPECT_EQ(clockText(8.7), u"0:08"_s);
  EXPECT_EQ(clockText(3599.9), u"59:59"_s);
  EXPECT_EQ(clockText(-1), u"0:00"_s);
}

}  // namespace
}  // namespace sorvan::views
