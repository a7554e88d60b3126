#include "shell/views/menu_strip.h"
#include "shell/views/transport_bar.h"
#include "support/made_clips.h"
#include "views/comparison_desk.h"

#include <QSlider>

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ImmersionTest : public ComparisonDesk {
 protected:
  ImmersionTest() {
    core::MediaMetadata metadata;
    metadata.width = 160;
    metadata.height = 90;
    metadata.duration = 2;
    clip = placed(u"clip.mp4"_s, core::MediaType::video, metadata, [](const QString& path) {
      test::makeClip(path, {.size = {160, 90}, .frames = 40, .framesPerSecond = 20, .sound = true});
    });
    desk.state.setLocation(allMediaLocation);
    test::runPosted();
  }
  void openClip() {
    desk.state.openAsset(clip, {clip});
    test::runPosted();
    ASSERT_TRUE(QTest::qWaitFor([this] { return player().state() == media::PlayerState::ready; }, 10'000));
  }
  AssetView& asset() { return window->library().asset(); }
  media::Player& player() { return asset().playerView().player(); }
  QAbstractButton* screenButton() {
    for (const QString& name : {u"Full Screen"_s, u"Leave Full Screen"_s})
      if (auto* button = named<QAbstractButton>(asset().playerView().transport(), name)) return button;
    return nullptr;
  }
  bool isAlone() {
    return asset().playerView().mapTo(window.get(), QPoint()) == QPoint() &&
           asset().playerView().size() == window->size() && !window->library().toolbar().isVisible() &&
           !window->library().sidebar().isVisible() && !window->library().inspector().isVisible();
  }

  QUuid clip;
};

TEST_F(ImmersionTest, TheButtonGivesTheScreenToTheClipAndEscapeTakesItBack) {
  openClip();
  ASSERT_TRUE(screenButton());
  EXPECT_EQ(screenButton()->toolTip(), u"Full Screen  F11"_s);
  QTest::mouseClick(screenButton(), Qt::LeftButton);
  test::runPosted();
  EXPECT_TRUE(window->isFullScreen());
  EXPECT_TRUE(isAlone());
  player().play();
  key(Qt::Key_Escape);
  EXPECT_FALSE(window->isFullScreen());
  EXPECT_FALSE(isAlone());
  EXPECT_TRUE(window->library().toolbar().isVisible());
  EXPECT_TRUE(window->library().sidebar().isVisible());
  EXPECT_TRUE(window->library().inspector().isVisible());
  EXPECT_EQ(window->library().page(), ModeKind::asset) << "one press, one step";
  EXPECT_TRUE(player().isPlaying()) << "the clip goes on";
  key(Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
}

TEST_F(ImmersionTest, TheKeyDoesTheSameAndPlayersKeysGoOn) {
  openClip();
  asset().setFocus();
  key(Qt::Key_F11);
  EXPECT_TRUE(isAlone());
  EXPECT_EQ(screenButton()->accessibleName(), u"Leave Full Screen"_s);
  key(Qt::Key_Space);
  EXPECT_TRUE(player().isPlaying());
  key(Qt::Key_F11);
  EXPECT_FALSE(isAlone());
  EXPECT_FALSE(window->isFullScreen());
}

TEST_F(ImmersionTest, GoingBackOrTheDesktopEndsIt) {
  openClip();
  actions->trigger(ActionId::fullScreen);
  test::runPosted();
  ASSERT_TRUE(isAlone());
  desk.state.setMode({ModeKind::gallery});
  test::runPosted();
  EXPECT_FALSE(window->isFullScreen());
  EXPECT_TRUE(window->library().toolbar().isVisible());
  openClip();
  actions->trigger(ActionId::fullScreen);
  test::runPosted();
  ASSERT_TRUE(isAlone());
  window->setWindowState(window->windowState() & ~Qt::WindowFullScreen);
  test::runPosted();
  EXPECT_FALSE(isAlone());
}

TEST_F(ImmersionTest, WithoutAClipTheWholeWindowTakesTheScreen) {
  actions->trigger(ActionId::fullScreen);
  EXPECT_TRUE(window->isFullScreen());
  EXPECT_TRUE(window->library().toolbar().isVisible());
  actions->trigger(ActionId::fullScreen);
  EXPECT_FALSE(window->isFullScreen());
}

TEST_F(ImmersionTest, AWindowThatHadTheScreenKeepsItWhenTheClipGivesItBack) {
  actions->trigger(ActionId::fullScreen);
  openClip();
  actions->trigger(ActionId::fullScreen);
  test::runPosted();
  EXPECT_TRUE(isAlone());
  key(Qt::Key_Escape);
  EXPECT_FALSE(isAlone());
  EXPECT_TRUE(window->isFullScreen());
}

TEST_F(ImmersionTest, TheVolumeIsRememberedForTheNextWindow) {
  openClip();
  player().setMuted(false);
  named<QSlider>(asset(), u"Volume"_s)->setValue(35);
  ASSERT_TRUE(QTest::qWaitFor([this] { return std::abs(settings.playerVolume() - 0.35) < 1e-9; }, 5'000));
  EXPECT_FALSE(settings.playerMuted());
  window.reset();
  window = std::make_unique<MainWindow>(presenters());
  EXPECT_NEAR(player().volume(), 0.35, 1e-9);
  EXPECT_FALSE(player().isMuted());
  player().setMuted(true);
  ASSERT_TRUE(QTest::qWaitFor([this] { return settings.playerMuted(); }, 5'000));
  window.reset();
  window = std::make_unique<MainWindow>(presenters());
  EXPECT_TRUE(player().isMuted());
  EXPECT_NEAR(player().volume(), 0.35, 1e-9) << "what is muted keeps its loudness";
}

}  // namespace
}  // namespace sorvan::views
