// The clips that the sandbox makes, decoded by FFmpeg.
#include <gtest/gtest.h>

#include <QBuffer>

#include "sandbox/client.h"
#include "sandbox/media_probe.h"

namespace sorvan::test {
namespace {

// Two that take any length from half a second on.
const QString painter = QStringLiteral("kiln/ember-v2/text-to-video");
const QString mover = QStringLiteral("kiln/ember-v2/image-to-video");

// Small and short, so that a sanitized test is quick.
QJsonObject shortClip(double seconds, const QJsonObject& more = {}) {
  QJsonObject input = more;
  input.insert(QStringLiteral("duration"), seconds);
  input.insert(QStringLiteral("resolution"), QStringLiteral("240p"));
  return input;
}

QByteArray videoOf(const Client& client, const WireAnswer& result) {
  EXPECT_EQ(result.status, 200) << result.body.toStdString();
  return client.download(result.json().value(QStringLiteral("video")));
}

QByteArray pngOf(const QColor& color) {
  QImage image(160, 90, QImage::Format_RGB32);
  image.fill(color);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

TEST(SandboxClips, AClipLastsAsLongAsAskedMovesAndSounds) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  for (const double seconds : {1.0, 2.5}) {
    const QByteArray bytes =
        videoOf(client, client.run(painter, inputWith(QStringLiteral("a sea"), 1, shortClip(seconds))));
    const auto clip = decodeClip(bytes);
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->codec, QStringLiteral("h264"));
    EXPECT_NEAR(clip->seconds, seconds, 0.1);
    EXPECT_NEAR(double(clip->pictures.size()) / 24, seconds, 0.1);
    EXPECT_GT(meanDifference(clip->pictures.front(), clip->pictures.back()), 0.5);
    const auto sound = decodeSound(bytes);
    ASSERT_TRUE(sound);
    EXPECT_NEAR(sound->seconds, seconds, 0.1);
    EXPECT_GT(sound->loudness, 0.01);
  }
}

TEST(SandboxClips, EachSceneMovesFromPictureToPicture) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  for (const char16_t* words : {u"mountain", u"sea", u"city", u"forest", u"desert", u"abstract shapes"}) {
    const auto clip =
        decodeClip(videoOf(client, client.run(painter, inputWith(QString::fromUtf16(words), 2, shortClip(1)))));
    ASSERT_TRUE(clip);
    EXPECT_GT(meanDifference(clip->pictures.front(), clip->pictures[12]), 0.15)
        << QString::fromUtf16(words).toStdString();
  }
}

TEST(SandboxClips, TwoSeedsDifferAndOneRepeatsByteForByte) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  QList<QByteArray> made;
  for (const int seed : {1, 2, 1})
    made.append(videoOf(client, client.run(painter, inputWith(QStringLiteral("a city"), seed, shortClip(1)))));
  EXPECT_EQ(made[0], made[2]);
  EXPECT_NE(made[0], made[1]);
  EXPECT_GT(meanDifference(decodeClip(made[0])->pictures[5], decodeClip(made[1])->pictures[5]), 3);
}

TEST(SandboxClips, AClipWithoutSoundHasNoSoundTrack) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QJsonObject silent = shortClip(1, {{QStringLiteral("generate_audio"), false}});
  const QByteArray bytes = videoOf(client, client.run(painter, inputWith(QStringLiteral("a sea"), 1, silent)));
  EXPECT_TRUE(decodeClip(bytes));
  EXPECT_FALSE(decodeSound(bytes));
}

TEST(SandboxClips, ResolutionAndRatioGiveTheSize) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const auto sizeOf = [&](const QJsonObject& more) {
    return decodeClip(videoOf(client, client.run(painter, inputWith(QStringLiteral("hills"), 1, more))))->size;
  };
  EXPECT_EQ(sizeOf({{QStringLiteral("duration"), 0.5}}), QSize(640, 360));
  EXPECT_EQ(sizeOf(shortClip(0.5, {{QStringLiteral("aspect_ratio"), QStringLiteral("9:16")}})), QSize(240, 426));
  EXPECT_EQ(sizeOf({{QStringLiteral("duration"), 0.5}, {QStringLiteral("resolution"), QStringLiteral("720p")}}),
            QSize(1280, 720));
}

TEST(SandboxClips, AClipFromAPictureShowsThatPictureAndMoves) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload(pngOf(QColor(200, 30, 30)), "image/png", QStringLiteral("start.png"));
  const auto clip = decodeClip(videoOf(
      client,
      client.run(mover, inputWith(QStringLiteral("go"), 1, shortClip(1, {{QStringLiteral("image_url"), address}})))));
  ASSERT_TRUE(clip);
  const QColor middle = clip->pictures.front().pixelColor(clip->pictures.front().rect().center());
  EXPECT_GT(middle.red(), 150);
  EXPECT_LT(middle.green(), 90);
  EXPECT_GT(meanDifference(clip->pictures.front(), clip->pictures.back()), 0.15);
}

TEST(SandboxClips, AClipWithAnEndPictureEndsInIt) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString start = client.upload(pngOf(QColor(200, 30, 30)), "image/png", QStringLiteral("start.png"));
  const QString end = client.upload(pngOf(QColor(30, 30, 200)), "image/png", QStringLiteral("end.png"));
  const auto clip =
      decodeClip(videoOf(client, client.run(mover, inputWith(QStringLiteral("go"), 1,
                                                             shortClip(1, {{QStringLiteral("image_url"), start},
                                                                           {QStringLiteral("end_image_url"), end}})))));
  ASSERT_TRUE(clip);
  const QColor last = clip->pictures.back().pixelColor(clip->pictures.back().rect().center());
  EXPECT_GT(last.blue(), 140);
  EXPECT_LT(last.red(), 100);
}

TEST(SandboxClips, AClipFromSeveralReferencesShowsOneAfterTheOther) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString red = client.upload(pngOf(QColor(200, 30, 30)), "image/png", QStringLiteral("red.png"));
  const QString blue = client.upload(pngOf(QColor(30, 30, 200)), "image/png", QStringLiteral("blue.png"));
  const auto clip =
      decodeClip(videoOf(client, client.run(QStringLiteral("bytedance/seedance-2.5/reference-to-video"),
                                            inputWith(QStringLiteral("both"), 1,
                                                      {{QStringLiteral("image_urls"), QJsonArray{red, blue}},
                                                       {QStringLiteral("duration"), QStringLiteral("4")}}))));
  ASSERT_TRUE(clip);
  const QPoint middle = clip->pictures.front().rect().center();
  EXPECT_GT(clip->pictures.front().pixelColor(middle).red(), 150);
  EXPECT_GT(clip->pictures.back().pixelColor(middle).blue(), 140);
}

TEST(SandboxClips, AClipsUpscaleEnlargesItAndKeepsLengthAndSound) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QByteArray small = videoOf(client, client.run(painter, inputWith(QStringLiteral("a sea"), 1, shortClip(1))));
  const QString address = client.upload(small, "video/mp4", QStringLiteral("clip.mp4"));
  const QByteArray large = videoOf(
      client, client.run(QStringLiteral("fal-ai/topaz/upscale/video"), {{QStringLiteral("video_url"), address}}));
  EXPECT_EQ(decodeClip(large)->size, decodeClip(small)->size * 2);
  EXPECT_NEAR(decodeClip(large)->seconds, 1, 0.1);
  EXPECT_GT(decodeSound(large)->loudness, 0.01);
}

TEST(SandboxClips, AClipsEditVisiblyChangesIt) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QByteArray before = videoOf(client, client.run(painter, inputWith(QStringLiteral("a sea"), 1, shortClip(1))));
  const QString address = client.upload(before, "video/mp4", QStringLiteral("clip.mp4"));
  const QByteArray after =
      videoOf(client, client.run(QStringLiteral("acme/video-model/video-to-video"),
                                 inputWith(QStringLiteral("red"), 1, {{QStringLiteral("video_url"), address}})));
  EXPECT_GT(meanDifference(decodeClip(before)->pictures[5], decodeClip(after)->pictures[5]), 8);
  EXPECT_EQ(decodeClip(before)->pictures.size(), decodeClip(after)->pictures.size());
}

TEST(SandboxClips, AnInputThatIsNoClipIsRefusedInTheResult) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload("not a clip at all", "video/mp4", QStringLiteral("clip.mp4"));
  const WireAnswer result =
      client.run(QStringLiteral("fal-ai/topaz/upscale/video"), {{QStringLiteral("video_url"), address}});
  EXPECT_EQ(result.status, 422);
}

}  // namespace
}  // namespace sorvan::test
