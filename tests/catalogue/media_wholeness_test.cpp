#include "catalogue/media_wholeness.h"

#include <gtest/gtest.h>

#include "catalogue/sample_media.h"
#include "support/temporary_folder.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::TemporaryFolder;

TEST(MediaWholeness, TakesAWholePictureAndRefusesACutOne) {
  const TemporaryFolder folder;
  const QByteArray png = test::samplePng({200, 100});
  EXPECT_EQ(wholenessOf(folder.write(u"whole"_s, png), u"png"_s), Wholeness::whole);
  EXPECT_EQ(wholenessOf(folder.write(u"cut"_s, png.left(png.size() / 2)), u"png"_s), Wholeness::cut);
  const QByteArray jpeg = test::sampleJpeg({400, 300});
  EXPECT_EQ(wholenessOf(folder.write(u"whole2"_s, jpeg), u"jpg"_s), Wholeness::whole);
  EXPECT_EQ(wholenessOf(folder.write(u"cut2"_s, jpeg.left(jpeg.size() / 2)), u"jpg"_s), Wholeness::cut);
}

TEST(MediaWholeness, RefusesWhatIsNotTheMediaThatWasAnnounced) {
  const TemporaryFolder folder;
  const QString page = folder.write(u"page"_s, "<!doctype html><html>We are sorry</html>");
  for (const auto& ext : {u"png"_s, u"mp4"_s, u"mp3"_s}) EXPECT_EQ(wholenessOf(page, ext), Wholeness::cut);
  EXPECT_EQ(wholenessOf(folder.write(u"empty"_s, {}), u"glb"_s), Wholeness::cut);
}

TEST(MediaWholeness, LeavesOtherFilesToTheUser) {
  const TemporaryFolder folder;
  EXPECT_EQ(wholenessOf(folder.write(u"x"_s, "glTF...."), u"glb"_s), Wholeness::unknown);
}

TEST(MediaWholeness, TakesAWholeSoundAndRefusesACutOne) {
  const TemporaryFolder folder;
  const QByteArray wav = test::sampleWav();
  EXPECT_EQ(wholenessOf(folder.write(u"whole"_s, wav), u"wav"_s), Wholeness::whole);
  EXPECT_EQ(wholenessOf(folder.write(u"cut"_s, wav.left(wav.size() - 200)), u"wav"_s), Wholeness::cut);
}

TEST(MediaWholeness, FollowsTheBoxesOfAClipToItsEnd) {
  const TemporaryFolder folder;
  const QByteArray whole = test::boxes({{"ftyp", 24}, {"moov", 40}, {"mdat", 500}});
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"a"_s, whole)), true);
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"b"_s, whole.left(300))), false);
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"c"_s, whole + "xy")), false);
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"d"_s, "no boxes at all here")), std::nullopt);
  EXPECT_EQ(boxesReachTheEnd(folder / u"absent"_s), std::nullopt);
}

TEST(MediaWholeness, UnderstandsLongAndOpenBoxes) {
  const TemporaryFolder folder;
  const QByteArray start = test::boxes({{"ftyp", 24}});
  const QByteArray longBox = QByteArray("\0\0\0\1mdat\0\0\0\0\0\0\0\x20", 16) + QByteArray(16, 'x');
  const QByteArray openBox = QByteArray("\0\0\0\0mdat", 8) + QByteArray(99, 'x');
  const QByteArray absurdBox = QByteArray("\0\0\0\1mdat\xff\xff\xff\xff\xff\xff\xff\xff", 16);
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"a"_s, start + longBox)), true);
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"b"_s, start + openBox)), true);
  EXPECT_EQ(boxesReachTheEnd(folder.write(u"c"_s, start + absurdBox)), false);
}

TEST(MediaWholeness, LeavesAStreamedRiffOpen) {
  const TemporaryFolder folder;
  QByteArray wav = test::sampleWav();
  EXPECT_EQ(riffReachesTheEnd(folder.write(u"a"_s, wav)), true);
  wav.replace(4, 4, QByteArray(4, '\xff'));
  EXPECT_EQ(riffReachesTheEnd(folder.write(u"b"_s, wav)), std::nullopt);
  EXPECT_EQ(riffReachesTheEnd(folder.write(u"c"_s, "PNG")), std::nullopt);
}

}  // namespace
}  // namespace sorvan::catalogue
