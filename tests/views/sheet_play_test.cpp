#include "media/player.h"
#include "shell/sheet_texts.h"
#include "shell/views/controls.h"
#include "shell/views/sheet_tools.h"
#include "support/made_clips.h"
#include "views/comparison_desk.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class SheetPlayTest : public ComparisonDesk {
 protected:
  QUuid clip(const QString& name, int frames) {
    core::MediaMetadata metadata;
    metadata.width = 160;
    metadata.height = 90;
    metadata.duration = frames / 20.0;
    return placed(name, core::MediaType::video, metadata, [frames](const QString& path) {
      test::makeClip(path, {.size = {160, 90}, .frames = frames, .framesPerSecond = 20});
    });
  }
  Button* button(const QString& name) { return named<Button>(*window, name); }
  const media::Player* player(int place) { return places().at(place)->picture().player(); }
};

TEST_F(SheetPlayTest, PlayAllPlaysEveryVideoAtOnceMutedAndLoopingAndPauseStopsThem) {
  std::vector<QUuid> ids{clip(u"one.mp4"_s, 40), clip(u"two.mp4"_s, 30), clip(u"three.mp4"_s, 12)};
  ids.push_back(made(u"a boat"_s));
  desk.state.setLocation(allMediaLocation);
  test::runPosted();
  openSheet(ids);
  ASSERT_EQ(places().count(), 4);
  auto* play = button(shell::texts::playAll);
  ASSERT_NE(play, nullptr);
  ASSERT_TRUE(play->isVisible());
  EXPECT_EQ(play->toolTip(), u"Play every video here at once, muted and looping"_s);
  QTest::mouseClick(play, Qt::LeftButton);
  int clips = 0;
  for (int place = 0; place < 4; ++place) {
    if (!player(place)) continue;
    ++clips;
    EXPECT_TRUE(player(place)->isPlaying());
    EXPECT_TRUE(player(place)->isMuted());
    EXPECT_TRUE(player(place)->isLooping());
  }
  EXPECT_EQ(clips, 3) << "the picture has nothing to play";
  const bool advanced = QTest::qWaitFor(
      [&] {
        for (int place = 0; place < 4; ++place)
          if (player(place) && (player(place)->position() < 0.1 || player(place)->frame().isNull())) return false;
        return true;
      },
      20'000);
  EXPECT_TRUE(advanced) << "every clip moves on";
  EXPECT_EQ(play->toolTip(), u"Pause every video"_s);
  QTest::mouseClick(play, Qt::LeftButton);
  for (int place = 0; place < 4; ++place) EXPECT_EQ(player(place), nullptr);
  EXPECT_EQ(play->toolTip(), u"Play every video here at once, muted and looping"_s);
}

TEST_F(SheetPlayTest, ASheetWithoutVideosOffersNoPlayAll) {
  openSheet(several(2));
  EXPECT_FALSE(button(shell::texts::playAll)->isVisible());
}

TEST_F(SheetPlayTest, AClipThatIsGoneLeavesTheOthersPlaying) {
  const std::vector<QUuid> ids{clip(u"one.mp4"_s, 40), clip(u"two.mp4"_s, 40)};
  desk.state.setLocation(allMediaLocation);
  test::runPosted();
  ASSERT_TRUE(QFile::remove(desk.store.fileOf(*desk.store.asset(ids[0]))));
  openSheet(ids);
  QTest::mouseClick(button(shell::texts::playAll), Qt::LeftButton);
  const auto playing = [&] {
    for (int place = 0; place < 2; ++place)
      if (places().at(place)->place().asset == ids[1]) return player(place) && player(place)->position() > 0.1;
    return false;
  };
  EXPECT_TRUE(QTest::qWaitFor(playing, 20'000));
}

}  // namespace
}  // namespace sorvan::views
