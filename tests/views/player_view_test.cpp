#include "shell/views/player_view.h"

#include "shell/views/controls.h"
#include "shell/views/hover_play.h"
#include "shell/views/media_wall.h"
#include "shell/views/quick_look.h"
#include "shell/views/sound_play.h"
#include "shell/views/transport_bar.h"
#include "shell/views/wave_strip.h"
#include "support/made_clips.h"
#include "support/temporary_folder.h"
#include "views/dressed.h"
#include "views/samples.h"
#include "views/spoken_sample.h"

#include <QAbstractButton>
#include <QSignalSpy>
#include <QSlider>

#include <cmath>

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using media::PlayerState;

class PlayerViewTest : public Dressed {
 protected:
  PlayerViewTest() {
    test::makeClip(folder / u"clip.mp4"_s, {.size = {160, 90}, .frames = 40, .framesPerSecond = 20});
    test::makeWav(folder / u"tone.wav"_s, 48'000, 96'000, [](int index) { return 0.5 * std::sin(index / 20.0); });
  }
  PlayerView::Subject clip() const { return {folder / u"clip.mp4"_s, {}, u"clip.mp4"_s, false}; }
  PlayerView::Subject tone() const { return {folder / u"tone.wav"_s, {}, u"tone.wav"_s, true}; }
  void open(const PlayerView::Subject& subject) {
    show(view, {800, 600});
    view.player().setMuted(true);
    view.open(subject, Begin::paused);
    ASSERT_TRUE(QTest::qWaitFor([this] { return view.player().state() == PlayerState::ready; }, 10'000));
  }
  GalleryCell clipCell() const {
    GalleryCell cell = pictureCell(u"clip.mp4"_s, 16.0 / 9);
    cell.kind = CellKind::video;
    cell.filePath = folder / u"clip.mp4"_s;
    cell.durationText = u"0:02"_s;
    return cell;
  }

  test::TemporaryFolder folder;
  ThumbnailStore thumbnails;
  PlayerView view{thumbnails};
};

TEST_F(PlayerViewTest, AClipOpensWithItsFirstFrameAndItsLength) {
  open(clip());
  EXPECT_EQ(view.transport().timeText(), u"0:00.0 / 0:02.0"_s);
  EXPECT_FALSE(view.player().isPlaying());
  EXPECT_FALSE(view.player().frame().isNull());
}

TEST_F(PlayerViewTest, TheButtonsPlayPauseAndStepFrames) {
  open(clip());
  auto* play = named<QAbstractButton>(view, u"Play"_s);
  ASSERT_TRUE(play);
  QTest::mouseClick(play, Qt::LeftButton);
  EXPECT_TRUE(view.player().isPlaying());
  EXPECT_EQ(play->accessibleName(), u"Pause"_s);
  QTest::mouseClick(play, Qt::LeftButton);
  EXPECT_FALSE(view.player().isPlaying());
  view.player().seek(1);
  QTest::mouseClick(named<QAbstractButton>(view, u"Next Frame"_s), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([this] { return std::abs(view.player().position() - 1.05) < 0.01; }, 5000))
      << view.player().position();
  QTest::mouseClick(named<QAbstractButton>(view, u"Previous Frame"_s), Qt::LeftButton);
  EXPECT_TRUE(QTest::qWaitFor([this] { return std::abs(view.player().position() - 1.0) < 0.01; }, 5000));
}

TEST_F(PlayerViewTest, ASoundShowsItsWaveAndASeekByPressingIt) {
  open(tone());
  ASSERT_TRUE(view.wave().isVisible());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !view.wave().levels().empty(); }, 5000));
  QTest::mouseClick(&view.wave(), Qt::LeftButton, {}, view.wave().rect().center());
  EXPECT_NEAR(view.player().position(), 1.0, 0.02);
  EXPECT_FALSE(named<QAbstractButton>(view, u"Next Frame"_s)->isVisible());
}

TEST_F(PlayerViewTest, WhatCannotBePlayedSaysSoInItsPlace) {
  show(view, {800, 600});
  view.open({folder / u"none.mp4"_s, {}, u"none.mp4"_s, false}, Begin::playing);
  ASSERT_TRUE(QTest::qWaitFor([this] { return view.player().state() == PlayerState::failed; }, 5000));
  EXPECT_EQ(view.player().problem(), u"The original file is missing."_s);
  EXPECT_FALSE(named<QAbstractButton>(view, u"Play"_s)->isEnabled());
}

TEST_F(PlayerViewTest, VolumeAndMuteFollowTheirControls) {
  open(clip());
  view.player().setMuted(false);
  auto* volume = named<QSlider>(view, u"Volume"_s);
  ASSERT_TRUE(volume);
  volume->setValue(40);
  EXPECT_NEAR(view.player().volume(), 0.4, 1e-9);
  volume->setValue(0);
  EXPECT_TRUE(view.player().isMuted());
  EXPECT_NEAR(view.player().volume(), 0.4, 1e-9);
  view.player().setMuted(false);
  EXPECT_EQ(volume->value(), 40);
}

TEST_F(PlayerViewTest, TenthsAreTold) {
  EXPECT_EQ(tenthsText(0), u"0:00.0"_s);
  EXPECT_EQ(tenthsText(8.46), u"0:08.4"_s);
  EXPECT_EQ(tenthsText(3725.3), u"1:02:05.3"_s);
}

// Hover play

TEST_F(PlayerViewTest, AClipUnderThePointerPlaysMutedUntilThePointerLeaves) {
  SampleWall wallSource;
  wallSource.set({clipCell(), pictureCell(u"still.png"_s, 1.5)});
  MediaWall wall(wallSource, thumbnails);
  HoverPlay hover(wall, wallSource);
  show(wall, {700, 400});
  const QUuid clipId = wallSource.idAt(0);
  Q_EMIT wall.cellHovered(clipId, wall.cellRect(0));
  EXPECT_TRUE(hover.cell().isNull());
  ASSERT_TRUE(QTest::qWaitFor([&] { return hover.cell() == clipId; }, 10'000));
  EXPECT_TRUE(hover.player().isPlaying());
  EXPECT_TRUE(hover.player().isMuted());
  Q_EMIT wall.cellHovered(QUuid(), {});
  EXPECT_TRUE(hover.cell().isNull());
  EXPECT_EQ(hover.player().state(), PlayerState::empty);
}

// Sounds in their cells

class SoundPlayTest : public PlayerViewTest {
 protected:
  SoundPlayTest() {
    GalleryCell one = soundCell(), other = soundCell();
    source.set({one, other, pictureCell(u"still.png"_s, 1.5)});
    show(wall, {900, 400});
  }
  GalleryCell soundCell() const {
    GalleryCell cell = pictureCell(u"spoken.wav"_s, 1.6);
    cell.kind = CellKind::audio;
    cell.durationText = u"0:04"_s;
    cell.filePath = spokenSample();
    return cell;
  }
  bool becomesReady() {
    return QTest::qWaitFor([this] { return play.player().state() == PlayerState::ready; }, 10'000);
  }
  SampleWall source;
  MediaWall wall{source, thumbnails};
  SoundPlay play{wall, source};
};

TEST_F(SoundPlayTest, PlaysWithItsSoundUntilItsBadgeIsPressedAgain) {
  Q_EMIT wall.playPressed(source.idAt(0));
  EXPECT_EQ(play.cell(), source.idAt(0));
  ASSERT_TRUE(becomesReady());
  EXPECT_TRUE(play.player().isPlaying());
  EXPECT_FALSE(play.player().isMuted());
  Q_EMIT wall.playPressed(source.idAt(0));
  EXPECT_TRUE(play.cell().isNull());
  EXPECT_EQ(play.player().state(), PlayerState::empty);
}

TEST_F(SoundPlayTest, AnotherSoundTakesItsPlaceAndAPointerElsewhereDoesNotStopIt) {
  Q_EMIT wall.playPressed(source.idAt(0));
  Q_EMIT wall.cellHovered(source.idAt(2), wall.cellRect(2));
  EXPECT_EQ(play.cell(), source.idAt(0));
  Q_EMIT wall.playPressed(source.idAt(1));
  EXPECT_EQ(play.cell(), source.idAt(1));
  ASSERT_TRUE(becomesReady());
}

TEST_F(SoundPlayTest, APlayheadStandsWhereItIsHeardAndEndsWithIt) {
  Q_EMIT wall.playPressed(source.idAt(0));
  ASSERT_TRUE(becomesReady());
  play.player().pause();
  play.player().seek(2);
  ASSERT_TRUE(QTest::qWaitFor([this] { return std::abs(play.player().position() - 2) < 0.01; }, 10'000));
  const QRect area = wall.cellRect(0);
  const QImage shown = wall.viewport()->grab(area).toImage();
  int brightest = 0;
  for (int x = 1; x < area.width() - 1; ++x)
    if (shown.pixelColor(x, 30).lightness() > shown.pixelColor(brightest, 30).lightness()) brightest = x;
  EXPECT_NEAR(brightest, area.width() / 2, 2);
  Q_EMIT play.player().ended();
  ASSERT_TRUE(QTest::qWaitFor([this] { return play.cell().isNull(); }, 10'000));
}

TEST_F(SoundPlayTest, ASoundThatIsGoneOrCannotBeReadStopsIt) {
  Q_EMIT wall.playPressed(source.idAt(0));
  source.set({pictureCell(u"still.png"_s, 1.5)});
  EXPECT_TRUE(play.cell().isNull());
  GalleryCell lost = soundCell();
  lost.filePath = folder / u"gone.wav"_s;
  source.set({lost});
  Q_EMIT wall.playPressed(lost.id);
  ASSERT_TRUE(QTest::qWaitFor([this] { return play.cell().isNull(); }, 10'000));
}

// Quick look

class QuickLookTest : public PlayerViewTest {
 protected:
  QuickLookTest() {
    std::vector<GalleryCell> cells;
    for (int index = 0; index < 10; ++index)
      cells.push_back(pictureCell(QStringLiteral("picture %1.png").arg(index), index % 2 == 0 ? 1.5 : 0.7));
    cells[2] = clipCell();
    source.set(cells);
    show(window, {1000, 700});
  }
  QSet<QUuid> first(int count) const {
    QSet<QUuid> ids;
    for (int index = 0; index < count; ++index) ids.insert(source.idAt(index));
    return ids;
  }
  SampleWall source;
  QWidget window;
  QuickLook look{thumbnails, &window};
};

TEST_F(QuickLookTest, OneItemStepsThroughTheWall) {
  QSignalSpy stepped(&look, &QuickLook::stepped);
  look.open({source.idAt(0)}, source);
  ASSERT_TRUE(look.isOpen());
  EXPECT_EQ(look.size(), window.size());
  QTest::keyClick(&look, Qt::Key_Right);
  EXPECT_EQ(look.current(), source.idAt(1));
  QTest::keyClick(&look, Qt::Key_Left);
  QTest::keyClick(&look, Qt::Key_Left);
  EXPECT_EQ(look.current(), source.idAt(0));
  EXPECT_EQ(stepped.count(), 2);
}

TEST_F(QuickLookTest, SeveralStandSideBySideAtOneHeight) {
  look.open(first(5), source);
  ASSERT_EQ(look.panes().size(), 5u);
  const int tall = look.panes()[0]->height();
  for (const QuickLookPane* pane : look.panes()) {
    EXPECT_NEAR(pane->height(), tall, 1);
    EXPECT_TRUE(look.rect().contains(pane->geometry()));
  }
  QTest::keyClick(&look, Qt::Key_Right);
  EXPECT_EQ(look.current(), source.idAt(1));
  EXPECT_EQ(look.panes().size(), 5u);
}

TEST_F(QuickLookTest, NoMoreThanEightAreShown) {
  look.open(first(10), source);
  EXPECT_EQ(look.panes().size(), 8u);
}

TEST_F(QuickLookTest, AClipPlaysMutedAndMTurnsItsSoundOn) {
  look.open({source.idAt(2)}, source);
  media::Player* player = look.panes()[0]->player();
  ASSERT_TRUE(player);
  EXPECT_TRUE(player->isPlaying());
  EXPECT_TRUE(player->isMuted());
  QTest::keyClick(&look, Qt::Key_M);
  EXPECT_FALSE(player->isMuted());
}

TEST_F(QuickLookTest, SpaceAndEscapeCloseAndEnterOpens) {
  QSignalSpy opened(&look, &QuickLook::itemOpened);
  look.open({source.idAt(0)}, source);
  QTest::keyClick(&look, Qt::Key_Space);
  EXPECT_FALSE(look.isOpen());
  EXPECT_FALSE(look.isVisible());
  look.open({source.idAt(3)}, source);
  QTest::keyClick(&look, Qt::Key_Return);
  ASSERT_EQ(opened.count(), 1);
  EXPECT_EQ(opened.at(0).at(0).toUuid(), source.idAt(3));
  QTest::keyClick(&look, Qt::Key_Escape);
  EXPECT_FALSE(look.isOpen());
}

TEST_F(QuickLookTest, ItsCrossIsSeenOnTheDarkGroundInTheLightToo) {
  Theme::instance().setAppearance(Appearance::light);
  look.open({source.idAt(0)}, source);
  const QImage cross = look.findChild<IconButton*>()->grab().toImage();
  int lightest = 0;
  for (int y = 0; y < cross.height(); ++y)
    for (int x = 0; x < cross.width(); ++x) lightest = std::max(lightest, cross.pixelColor(x, y).lightness());
  EXPECT_GT(lightest, 200);
  EXPECT_LT(cross.pixelColor(6, 6).lightness(), 60);
}

TEST_F(QuickLookTest, NothingOpensForNothing) {
  look.open({}, source);
  EXPECT_FALSE(look.isOpen());
}

}  // namespace
}  // namespace sorvan::views
