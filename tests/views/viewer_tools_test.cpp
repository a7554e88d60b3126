#include "shell/views/viewer_tools.h"

#include <gtest/gtest.h>

#include "shell/views/inspector_parts.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ViewerToolsTest : public WholeWindow {};

TEST_F(ViewerToolsTest, TheHeartOverALargeItemIsThatOfTheItem) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_Return);
  test::runPosted();
  ViewerTools& tools = window->library().viewerTools();
  ASSERT_TRUE(tools.isVisible());
  auto* heart = tools.findChild<HeartButton*>();
  EXPECT_FALSE(heart->isChecked());
  QTest::mouseClick(heart, Qt::LeftButton);
  test::runPosted();
  EXPECT_TRUE(desk.store.assets().front()->favorite);
  EXPECT_TRUE(heart->isChecked());
  desk.inspector.toggleFavorite();
  test::runPosted();
  EXPECT_FALSE(desk.store.assets().front()->favorite);
  EXPECT_FALSE(heart->isChecked());
}

TEST_F(ViewerToolsTest, AreShownOverALargeItemOnly) {
  type(u"a boat"_s);
  desk.settle();
  EXPECT_FALSE(window->library().viewerTools().isVisible());
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_Return);
  test::runPosted();
  ASSERT_TRUE(window->library().viewerTools().isVisible());
  actions->trigger(ActionId::showGallery);
  test::runPosted();
  EXPECT_FALSE(window->library().viewerTools().isVisible());
}

}  // namespace
}  // namespace sorvan::views
