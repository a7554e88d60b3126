// The window on unusual screens, with one item and with none. `ctest` gives each suite its screen.
#include <QImage>
#include <QScreen>

#include "views/comparison_desk.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class OnAScreen : public ComparisonDesk {
 protected:
  // As the program opens it: with the size and place that the window gives itself.
  OnAScreen() {
    window.reset();
    window = std::make_unique<MainWindow>(presenters());
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    QApplication::setActiveWindow(window.get());
    QCoreApplication::processEvents();
  }
  QRect screen() const { return window->screen()->availableGeometry(); }
  void expectReachable() {
    EXPECT_TRUE(screen().contains(window->frameGeometry().topLeft())) << "the title cannot be seen";
    EXPECT_TRUE(screen().contains(window->geometry().topLeft())) << "the menus cannot be seen";
  }
  void expectOneItemInItsShape() {
    type(u"a boat"_s);
    desk.settle();
    ASSERT_EQ(wall().rowCount(), 1);
    const QRect cell = wall().cellRect(0);
    EXPECT_TRUE(wall().viewport()->rect().contains(cell));
    EXPECT_NEAR(static_cast<double>(cell.width()) / cell.height(), 48.0 / 27.0, 0.05) << "one item is not stretched";
    wall().setFocus(Qt::TabFocusReason);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Home}) {
      QTest::keyClick(&wall(), key);
      EXPECT_EQ(wall().currentRow(), wall().rowId(0));
    }
  }
  void expectDrawnWhole() {
    EXPECT_EQ(window->grab().size(), window->size() * window->devicePixelRatioF());
  }
  void expectSheetTreeAndLargeView() {
    const std::vector<QUuid> ids = several(2);
    openSheet(ids);
    ASSERT_EQ(places().count(), 2);
    for (int place = 0; place < 2; ++place) {
      const PlacePicture& picture = places().at(place)->picture();
      EXPECT_GE(picture.height(), 110);
      EXPECT_LE(picture.mapTo(&sheet(), picture.rect().bottomRight()).x(), sheet().width());
    }
    expectDrawnWhole();
    desk.state.openLineage(ids[0]);
    test::runPosted();
    LineageTree& tree = the<LineageView>()->tree();
    ASSERT_EQ(tree.rowCount(), 1);
    EXPECT_GT(tree.cellRect(0).width(), 240);
    EXPECT_TRUE(tree.viewport()->rect().contains(tree.cellRect(0)));
    expectDrawnWhole();
    desk.state.openAsset(ids[0], ids);
    test::runPosted();
    PictureCanvas& canvas = window->library().asset().canvas();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !canvas.pixels().isEmpty(); }, 10'000));
    EXPECT_TRUE(canvas.rect().contains(canvas.picturePlace().toAlignedRect()));
    EXPECT_GT(canvas.height(), 200);
    expectDrawnWhole();
  }
  void expectInvitation() {
    ASSERT_EQ(wall().rowCount(), 0);
    EXPECT_FALSE(desk.gallery.emptyTitle().isEmpty());
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Right, Qt::Key_Return, Qt::Key_Delete, Qt::Key_Space, Qt::Key_F})
      QTest::keyClick(&wall(), key);
    EXPECT_TRUE(desk.state.selection().empty());
    EXPECT_EQ(window->library().page(), ModeKind::gallery);
  }
};

using SmallScreen = OnAScreen;

TEST_F(SmallScreen, TheScreenIsTheOneThatIsMeant) { ASSERT_EQ(screen().size(), QSize(800, 500)); }

TEST_F(SmallScreen, TheWindowKeepsItsMinimumAndStaysReachable) {
  EXPECT_EQ(window->size(), window->minimumSize());
  EXPECT_GT(window->width(), screen().width());
  expectReachable();
}

TEST_F(SmallScreen, ThePromptHasItsPlaceInTheWindow) {
  ASSERT_NE(prompt(), nullptr);
  window->library().dock().focusPrompt();
  test::runPosted();
  const QRect place(prompt()->mapTo(window.get(), QPoint()), prompt()->size());
  EXPECT_TRUE(window->rect().contains(place));
}

TEST_F(SmallScreen, AWorkspaceWithNoItemInvitesToMakeOne) { expectInvitation(); }

TEST_F(SmallScreen, AWorkspaceWithOneItemShowsItInItsShape) { expectOneItemInItsShape(); }

TEST_F(SmallScreen, SheetTreeAndLargeViewHaveTheirRoom) { expectSheetTreeAndLargeView(); }

using SharpScreen = OnAScreen;

TEST_F(SharpScreen, TheScreenIsTheOneThatIsMeant) {
  ASSERT_EQ(screen().size() * window->devicePixelRatioF(), QSize(3840, 2160));
}

TEST_F(SharpScreen, TheWindowOpensAtItsFirstSizeAndStaysReachable) {
  EXPECT_EQ(window->size(), QSize(1440, 900));
  expectReachable();
}

// A picture that was drawn at half the size and doubled consists of squares of four equal pixels.
TEST_F(SharpScreen, EverythingIsDrawnInThePixelsOfTheScreen) {
  type(u"a boat"_s);
  desk.settle();
  const QImage drawn = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(drawn.size(), window->size() * 2);
  int uneven = 0;
  for (int y = 0; y + 1 < drawn.height(); y += 2)
    for (int x = 0; x + 1 < drawn.width(); x += 2) {
      const QRgb first = drawn.pixel(x, y);
      const bool even =
          drawn.pixel(x + 1, y) == first && drawn.pixel(x, y + 1) == first && drawn.pixel(x + 1, y + 1) == first;
      uneven += even ? 0 : 1;
    }
  EXPECT_GT(uneven, 3000);
}

TEST_F(SharpScreen, AWorkspaceWithNoItemInvitesToMakeOne) { expectInvitation(); }

TEST_F(SharpScreen, AWorkspaceWithOneItemShowsItInItsShape) { expectOneItemInItsShape(); }

TEST_F(SharpScreen, SheetTreeAndLargeViewHaveTheirRoom) { expectSheetTreeAndLargeView(); }

}  // namespace
}  // namespace sorvan::views
