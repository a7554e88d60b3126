// The pictures that the sandbox makes, decoded by Qt.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include "sandbox/client.h"

namespace sorvan::test {
namespace {

const QString painter = QStringLiteral("fal-ai/flux/schnell");

QJsonObject smallPng(const QJsonObject& more = {}) {
  QJsonObject input = more;
  input.insert(QStringLiteral("image_size"),
               QJsonObject{{QStringLiteral("width"), 320}, {QStringLiteral("height"), 200}});
  if (!input.contains(QStringLiteral("output_format")))
    input.insert(QStringLiteral("output_format"), QStringLiteral("png"));
  return input;
}

QJsonArray imagesOf(const WireAnswer& answer) { return answer.json().value(QStringLiteral("images")).toArray(); }

QImage decoded(const QByteArray& bytes, const char* format) { return QImage::fromData(bytes, format); }

// The share of pixels that differ clearly.
double differenceOf(const QImage& a, const QImage& b) {
  int differing = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 8) ++differing;
  return double(differing) / (a.width() * a.height());
}

QByteArray samplePng() {
  QImage image(96, 64, QImage::Format_RGB32);
  image.fill(QColor(40, 90, 160));
  QPainter brush(&image);
  brush.fillRect(20, 10, 40, 40, QColor(230, 180, 60));
  brush.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

TEST(SandboxPictures, APictureComesThroughSubmitStatusResultAndDownload) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result = client.run(painter, inputWith(QStringLiteral("a sea at dusk"), 7, smallPng()));
  ASSERT_EQ(result.status, 200);
  const QJsonObject file = imagesOf(result).first().toObject();
  const QImage image = decoded(client.download(file), "PNG");
  EXPECT_EQ(image.size(), QSize(320, 200));
  EXPECT_EQ(file.value(QStringLiteral("width")).toInt(), 320);
  EXPECT_EQ(file.value(QStringLiteral("content_type")).toString(), QStringLiteral("image/png"));
  EXPECT_EQ(result.json().value(QStringLiteral("seed")).toInt(), 7);
  EXPECT_EQ(result.header("x-fal-billable-units"), "1");
  EXPECT_EQ(sandbox.ledger().size(), 1);
  EXPECT_EQ(sandbox.postsTo(painter), 1);
}

TEST(SandboxPictures, APictureKeepsItsShapeWithinTheLongestSideThatIsAllowed) {
  SandboxProcess::Options options;
  options.more = {QStringLiteral("--longest-side"), QStringLiteral("80")};
  const SandboxProcess sandbox(options);
  const Client client(sandbox);
  const WireAnswer result = client.run(painter, inputWith(QStringLiteral("a sea at dusk"), 7, smallPng()));
  const QImage image = decoded(client.download(imagesOf(result).first().toObject()), "PNG");
  EXPECT_EQ(image.size(), QSize(80, 50));
}

TEST(SandboxPictures, TwoSeedsDifferAndOneRepeatsByteForByte) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  QList<QByteArray> made;
  for (const int seed : {1, 2, 1})
    made.append(client.download(
        imagesOf(client.run(painter, inputWith(QStringLiteral("a city at night"), seed, smallPng()))).first()));
  EXPECT_EQ(made[0], made[2]);
  EXPECT_GT(differenceOf(decoded(made[0], "PNG"), decoded(made[1], "PNG")), 0.05);
}

TEST(SandboxPictures, TwoPromptsDiffer) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  QList<QImage> made;
  for (const QString& prompt : {QStringLiteral("a forest"), QStringLiteral("a desert")})
    made.append(
        decoded(client.download(imagesOf(client.run(painter, inputWith(prompt, 1, smallPng()))).first()), "PNG"));
  EXPECT_GT(differenceOf(made[0], made[1]), 0.1);
}

TEST(SandboxPictures, SeveralPicturesOfOneJobDiffer) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QJsonArray images = imagesOf(
      client.run(painter, inputWith(QStringLiteral("a mountain"), 5, smallPng({{QStringLiteral("num_images"), 3}}))));
  ASSERT_EQ(images.size(), 3);
  const QByteArray first = client.download(images[0]);
  EXPECT_NE(first, client.download(images[1]));
  EXPECT_NE(first, client.download(images[2]));
  EXPECT_DOUBLE_EQ(sandbox.ledger().first().value(QStringLiteral("amount")).toDouble(), 0.12);
}

TEST(SandboxPictures, JpegAndWebPAreWhatTheyClaim) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  for (const char* format : {"jpeg", "webp"}) {
    const QJsonObject input{{QStringLiteral("output_format"), QString::fromLatin1(format)},
                            {QStringLiteral("aspect_ratio"), QStringLiteral("1:1")},
                            {QStringLiteral("resolution"), QStringLiteral("0.5K")}};
    const WireAnswer result =
        client.run(QStringLiteral("fal-ai/nano-banana-2"), inputWith(QStringLiteral("dunes"), 3, input));
    const QJsonObject file = imagesOf(result).first().toObject();
    EXPECT_EQ(file.value(QStringLiteral("content_type")).toString(),
              QStringLiteral("image/%1").arg(QLatin1StringView(format)));
    EXPECT_EQ(decoded(client.download(file), format).size(), QSize(512, 512)) << format;
  }
}

TEST(SandboxPictures, SizesFollowPresetRatioAndResolution) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const auto sizeOf = [&](const QString& endpoint, const QJsonObject& more) {
    const QJsonObject file =
        imagesOf(client.run(endpoint, inputWith(QStringLiteral("shapes"), 1, more))).first().toObject();
    return QSize(file.value(QStringLiteral("width")).toInt(), file.value(QStringLiteral("height")).toInt());
  };
  EXPECT_EQ(sizeOf(painter, {{QStringLiteral("image_size"), QStringLiteral("landscape_16_9")}}), QSize(1024, 576));
  const QSize tall =
      sizeOf(QStringLiteral("fal-ai/nano-banana-2"), {{QStringLiteral("aspect_ratio"), QStringLiteral("9:16")},
                                                      {QStringLiteral("resolution"), QStringLiteral("0.5K")}});
  EXPECT_NEAR(double(tall.width()) / tall.height(), 9.0 / 16, 0.01);
  EXPECT_EQ(
      sizeOf(QStringLiteral("fal-ai/gpt-image-1.5"), {{QStringLiteral("image_size"), QStringLiteral("1536x1024")}}),
      QSize(1536, 1024));
}

TEST(SandboxPictures, AnEditVisiblyChangesItsUploadedInput) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload(samplePng(), "image/png", QStringLiteral("reference.png"));
  const WireAnswer result =
      client.run(QStringLiteral("fal-ai/nano-banana-2/edit"),
                 inputWith(QStringLiteral("make it autumn"), 4, {{QStringLiteral("image_urls"), QJsonArray{address}}}));
  const QImage before = decoded(samplePng(), "PNG");
  const QImage after = decoded(client.download(imagesOf(result).first()), "PNG");
  ASSERT_EQ(after.size(), before.size());
  EXPECT_GT(differenceOf(before, after), 0.2);
}

QImage edited(const Client& client, const QJsonArray& addresses, const QJsonObject& more) {
  QJsonObject input = inputWith(QStringLiteral("make it autumn"), 4, more);
  input.insert(QStringLiteral("image_urls"), addresses);
  const WireAnswer result = client.run(QStringLiteral("fal-ai/nano-banana-2/edit"), input);
  EXPECT_EQ(result.status, 200) << result.body.toStdString();
  return decoded(client.download(imagesOf(result).first()), "PNG");
}

TEST(SandboxPictures, AnEditHasTheRatioAndTheResolutionThatAreAskedFor) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QJsonArray addresses{client.upload(samplePng(), "image/png", QStringLiteral("reference.png"))};
  const QString half = QStringLiteral("0.5K");
  const QImage square =
      edited(client, addresses,
             {{QStringLiteral("aspect_ratio"), QStringLiteral("1:1")}, {QStringLiteral("resolution"), half}});
  EXPECT_EQ(square.size(), QSize(512, 512));
  const QImage likeItsInput = edited(client, addresses, {{QStringLiteral("resolution"), half}});
  EXPECT_NEAR(double(likeItsInput.width()) / likeItsInput.height(), 96.0 / 64, 0.01);
  EXPECT_NEAR(likeItsInput.width() * likeItsInput.height(), 512 * 512, 2000);
}

TEST(SandboxPictures, EveryReferenceOfAnEditCanBeSeenInIt) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString first = client.upload(samplePng(), "image/png", QStringLiteral("first.png"));
  QImage red(64, 64, QImage::Format_RGB32);
  red.fill(QColor(250, 0, 0));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  red.save(&buffer, "PNG");
  const QString second = client.upload(bytes, "image/png", QStringLiteral("second.png"));
  const QImage alone = edited(client, {first}, {});
  const QImage both = edited(client, {first, second}, {});
  ASSERT_EQ(alone.size(), both.size());
  int ofTheSecond = 0;
  for (int y = 0; y < both.height(); ++y)
    for (int x = 0; x < both.width(); ++x)
      if (both.pixelColor(x, y) == QColor(250, 0, 0)) ++ofTheSecond;
  EXPECT_GT(ofTheSecond, 50);
  EXPECT_GT(differenceOf(alone, both), 0.005);
}

TEST(SandboxPictures, TheAnglesOfTheCameraTurnThePicture) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload(samplePng(), "image/png", QStringLiteral("reference.png"));
  QList<QImage> seen;
  for (const int angle : {0, 45}) {
    const WireAnswer result = client.run(QStringLiteral("fal-ai/qwen-image-edit-2511-multiple-angles"),
                                         {{QStringLiteral("image_urls"), QJsonArray{address}},
                                          {QStringLiteral("seed"), 1},
                                          {QStringLiteral("horizontal_angle"), angle}});
    ASSERT_EQ(result.status, 200) << result.body.toStdString();
    seen.append(decoded(client.download(imagesOf(result).first()), "PNG"));
  }
  EXPECT_GT(differenceOf(seen[0], seen[1]), 0.05);
}

TEST(SandboxPictures, AnUpscaleToATargetHasItsHeight) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload(samplePng(), "image/png", QStringLiteral("reference.png"));
  const WireAnswer result = client.run(QStringLiteral("fal-ai/seedvr/upscale/image"),
                                       {{QStringLiteral("image_url"), address},
                                        {QStringLiteral("upscale_mode"), QStringLiteral("target")},
                                        {QStringLiteral("target_resolution"), QStringLiteral("720p")},
                                        {QStringLiteral("output_format"), QStringLiteral("png")}});
  // Eight times is the most.
  EXPECT_EQ(decoded(client.download(result.json().value(QStringLiteral("image"))), "PNG").size(), QSize(768, 512));
}

TEST(SandboxPictures, AnUpscaleEnlargesItsInput) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload(samplePng(), "image/png", QStringLiteral("reference.png"));
  const WireAnswer result = client.run(QStringLiteral("fal-ai/seedvr/upscale/image"),
                                       {{QStringLiteral("image_url"), address},
                                        {QStringLiteral("upscale_factor"), 3},
                                        {QStringLiteral("output_format"), QStringLiteral("png")}});
  const QJsonValue file = result.json().value(QStringLiteral("image"));
  EXPECT_EQ(decoded(client.download(file), "PNG").size(), QSize(288, 192));
}

TEST(SandboxPictures, ACutOutIsTransparentAroundItsSubject) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = client.upload(samplePng(), "image/png", QStringLiteral("reference.png"));
  const WireAnswer result = client.run(QStringLiteral("fal-ai/birefnet/v2"), {{QStringLiteral("image_url"), address}});
  const QImage image = decoded(client.download(result.json().value(QStringLiteral("image"))), "PNG");
  ASSERT_TRUE(image.hasAlphaChannel());
  EXPECT_EQ(qAlpha(image.pixel(1, 1)), 0);
  EXPECT_EQ(qAlpha(image.pixel(image.rect().center())), 255);
}

TEST(SandboxPictures, AnInputMayBeADataAddress) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = QStringLiteral("data:image/png;base64,") + QString::fromLatin1(samplePng().toBase64());
  const WireAnswer result = client.run(QStringLiteral("fal-ai/birefnet/v2"), {{QStringLiteral("image_url"), address}});
  EXPECT_EQ(result.status, 200);
}

TEST(SandboxPictures, AnInputThatIsNowhereFailsTheResultNotTheSubmit) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result =
      client.run(QStringLiteral("fal-ai/birefnet/v2"),
                 {{QStringLiteral("image_url"), QStringLiteral("https://v3.fal.media/files/b/0/none.png")}});
  EXPECT_EQ(result.status, 422);
  const QJsonObject detail = result.json().value(QStringLiteral("detail")).toArray().first().toObject();
  EXPECT_EQ(detail.value(QStringLiteral("type")).toString(), QStringLiteral("file_download_error"));
  EXPECT_EQ(sandbox.ledger().size(), 1);
}

TEST(SandboxPictures, AMissingPromptFailsTheResultWithAListOfDetails) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const WireAnswer result = client.run(painter, {{QStringLiteral("seed"), 1}});
  EXPECT_EQ(result.status, 422);
  EXPECT_TRUE(result.json().value(QStringLiteral("detail")).isArray());
}

}  // namespace
}  // namespace sorvan::test
