#include "generation/media_kind.h"

#include <gtest/gtest.h>

#include "generation/test_media.h"

namespace sorvan::generation {
namespace {

QString kindOf(const QByteArray& bytes) { return extensionOfBytes(bytes).value_or(QStringLiteral("nothing")); }

TEST(MediaKinds, AreToldByTheFirstBytes) {
  EXPECT_EQ(kindOf(test::pictureBytes(Qt::red, "PNG")), QStringLiteral("png"));
  EXPECT_EQ(kindOf(test::pictureBytes(Qt::red, "JPG")), QStringLiteral("jpg"));
  EXPECT_EQ(kindOf(test::wavBytes(0.1)), QStringLiteral("wav"));
  EXPECT_EQ(kindOf(QByteArray("RIFF\0\0\0\0WEBPVP8 ", 16)), QStringLiteral("webp"));
  EXPECT_EQ(kindOf(QByteArray("\0\0\0\x20"
                              "ftypisom",
                              12)),
            QStringLiteral("mp4"));
  EXPECT_EQ(kindOf(QByteArray("\0\0\0\x14"
                              "ftypqt  ",
                              12)),
            QStringLiteral("mov"));
  EXPECT_EQ(kindOf(QByteArray("\0\0\0\x20"
                              "ftypM4A ",
                              12)),
            QStringLiteral("m4a"));
  EXPECT_EQ(kindOf(QByteArray("\0\0\0\x20"
                              "ftypavif",
                              12)),
            QStringLiteral("avif"));
  EXPECT_EQ(kindOf("\x1a\x45\xdf\xa3 webm"), QStringLiteral("webm"));
  EXPECT_EQ(kindOf("ID3\x04 mp3"), QStringLiteral("mp3"));
  EXPECT_EQ(kindOf("\xff\xfb\x90\x44"), QStringLiteral("mp3"));
  EXPECT_EQ(kindOf("\xff\xf1\x50\x80"), QStringLiteral("aac"));
  EXPECT_EQ(kindOf("fLaC"), QStringLiteral("flac"));
  EXPECT_EQ(kindOf("OggS"), QStringLiteral("ogg"));
}

TEST(MediaKinds, OfEveryBrandOfHeifIsAPicture) {
  for (const char* brand : {"heic", "heix", "heim", "heis", "hevc", "hevx", "hevm", "hevs", "mif1", "msf1"})
    EXPECT_EQ(kindOf(QByteArray("\0\0\0\x18"
                                "ftyp",
                                8) +
                     brand),
              QStringLiteral("heic"))
        << brand;
}

TEST(MediaKinds, OfALargeTiffAndOfChunksAreNotMistakenForClips) {
  EXPECT_EQ(kindOf(QByteArray("II+\0ftypisom", 12)), QStringLiteral("tif"));
  EXPECT_EQ(kindOf(QByteArray("MM\0+\0\x08", 6)), QStringLiteral("tif"));
  EXPECT_EQ(kindOf("RIFFftypWEBP"), QStringLiteral("webp"));
}

TEST(MediaKinds, OfDrawingsModelsAndShortBytesAreUnknown) {
  EXPECT_EQ(kindOf("<svg xmlns="), QStringLiteral("nothing"));
  EXPECT_EQ(kindOf("glTF\2\0\0\0"), QStringLiteral("nothing"));
  EXPECT_EQ(kindOf(QByteArray("PK\3\4")), QStringLiteral("nothing"));
  EXPECT_EQ(kindOf(QByteArray()), QStringLiteral("nothing"));
  EXPECT_EQ(kindOf("\xff"), QStringLiteral("nothing"));
  EXPECT_EQ(kindOf("{\"error\":1}"), QStringLiteral("nothing"));
}

TEST(FittingExtensions, KeepTheAnnouncedSpellingOfTheSameKind) {
  EXPECT_EQ(fittingExtension(QStringLiteral("JPEG"), QStringLiteral("jpg")), QStringLiteral("jpeg"));
  EXPECT_EQ(fittingExtension(QStringLiteral("mov"), QStringLiteral("mp4")), QStringLiteral("mov"));
  EXPECT_EQ(fittingExtension(QStringLiteral("png"), QStringLiteral("webp")), QStringLiteral("webp"));
  EXPECT_EQ(fittingExtension(QString(), QStringLiteral("png")), QStringLiteral("png"));
  EXPECT_EQ(fittingExtension(QStringLiteral("svg"), std::nullopt), QStringLiteral("svg"));
}

}  // namespace
}  // namespace sorvan::generation
