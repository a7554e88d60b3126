// The result of a model of every kind, held against the output that its document publishes.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

#include "sandbox/client.h"
#include "sandbox/published.h"

namespace sorvan::test {
namespace {

QString text(const char16_t* words) { return QString::fromUtf16(words); }

QByteArray pngOf(const QColor& color) {
  QImage image(96, 64, QImage::Format_RGB32);
  image.fill(color);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

class SandboxResults : public testing::Test {
 protected:
  QJsonObject resultOf(const char16_t* endpoint, const QJsonObject& input) {
    const WireAnswer answer = client.run(text(endpoint), input);
    EXPECT_EQ(answer.status, 200) << QString(text(endpoint)).toStdString() << answer.body.toStdString();
    judged.append({text(endpoint), QStringLiteral("output"), answer.json()});
    return answer.json();
  }

  SandboxProcess sandbox;
  Client client{sandbox};
  QList<Judged> judged;
};

TEST_F(SandboxResults, HaveThePublishedFormInEveryKind) {
  const QString picture = client.upload(pngOf(Qt::red), "image/png", text(u"a.png"));
  const QJsonArray pictures{picture};
  const QJsonObject words{{text(u"prompt"), text(u"a sea")}};
  const QJsonObject small{{text(u"prompt"), text(u"a sea")}, {text(u"image_size"), text(u"square")}};
  const QJsonObject edit{{text(u"prompt"), text(u"red")}, {text(u"image_urls"), pictures}};
  const QJsonObject tool{{text(u"image_url"), picture}};
  resultOf(u"fal-ai/flux/schnell", small);
  resultOf(u"fal-ai/nano-banana-2", words);
  resultOf(u"recraft/v4.1/flash/text-to-image", small);
  resultOf(u"fal-ai/nano-banana-2/edit", edit);
  resultOf(u"fal-ai/seedvr/upscale/image", tool);
  resultOf(u"fal-ai/birefnet/v2", tool);
  resultOf(u"fal-ai/sam-3/image", tool);
  resultOf(u"fal-ai/clarity-upscaler", tool);
  resultOf(u"fal-ai/meshwork/text-to-3d", words);
  resultOf(u"openrouter/router", {{text(u"prompt"), text(u"say it")}, {text(u"model"), text(u"x")}});
  const QJsonObject clip =
      resultOf(u"kiln/ember-v2/text-to-video", {{text(u"prompt"), text(u"sea")}, {text(u"duration"), 1}});
  const QString clipAddress = clip[QStringLiteral("video")][QStringLiteral("url")].toString();
  resultOf(u"mirelo-ai/sfx2.0/video-to-audio", {{text(u"video_url"), clipAddress}});
  const QJsonObject sound =
      resultOf(u"cassetteai/sound-effects-generator", {{text(u"prompt"), text(u"rain")}, {text(u"duration"), 2}});
  const QString soundAddress = sound[QStringLiteral("audio_file")][QStringLiteral("url")].toString();
  resultOf(u"fal-ai/demucs", {{text(u"audio_url"), soundAddress}});
  resultOf(u"fal-ai/sam-audio/separate", {{text(u"audio_url"), soundAddress}, {text(u"prompt"), text(u"rain")}});
  resultOf(u"fal-ai/minimax/speech-2.8-hd", words);
  const QStringList breaches = valueBreaches(judged);
  EXPECT_TRUE(breaches.isEmpty()) << breaches.join(QLatin1Char('\n')).toStdString();
}

TEST_F(SandboxResults, AreOfTheKindThatThePublishedDefaultsSay) {
  const QJsonObject result = resultOf(u"fal-ai/flux/schnell", {{text(u"prompt"), text(u"a sea")}});
  const QJsonValue picture = result.value(QStringLiteral("images")).toArray().first();
  EXPECT_EQ(picture[QStringLiteral("width")].toInt(), 1024);
  EXPECT_EQ(picture[QStringLiteral("height")].toInt(), 768);
  EXPECT_EQ(picture[QStringLiteral("content_type")].toString(), QStringLiteral("image/jpeg"));
}

class SandboxMediaFaults : public SandboxResults {
 protected:
  WireAnswer downloadUnder(const QString& fault) {
    const QJsonObject result = resultOf(u"fal-ai/flux/schnell", {{text(u"prompt"), text(u"a sea")},
                                                                 {text(u"image_size"), text(u"square")},
                                                                 {text(u"output_format"), text(u"png")}});
    sandbox.addFault(QStringLiteral("download"), fault);
    return client.get(QUrl(result.value(QStringLiteral("images")).toArray().first()[QStringLiteral("url")].toString()));
  }
};

TEST_F(SandboxMediaFaults, OtherMediaIsAClipInsteadOfAPicture) {
  const WireAnswer answer = downloadUnder(QStringLiteral("other-media"));
  EXPECT_EQ(answer.header("Content-Type"), "video/mp4");
  EXPECT_TRUE(answer.body.mid(4, 4) == "ftyp");
}

TEST_F(SandboxMediaFaults, DamagedMediaIsSpoiltFromItsMiddleOn) {
  const WireAnswer answer = downloadUnder(QStringLiteral("damaged-media"));
  EXPECT_EQ(answer.header("Content-Type"), "image/png");
  EXPECT_TRUE(answer.body.startsWith("\x89PNG"));
  EXPECT_FALSE(answer.body.endsWith("IEND\xae\x42\x60\x82"));
}

TEST_F(SandboxMediaFaults, VectorMediaIsADrawing) {
  const WireAnswer answer = downloadUnder(QStringLiteral("vector-media"));
  EXPECT_EQ(answer.header("Content-Type"), "image/svg+xml");
  EXPECT_TRUE(answer.body.startsWith("<svg"));
}

TEST_F(SandboxMediaFaults, APartnersErrorStandsInPlaceOfAResult) {
  const QJsonObject handle = client.submit(text(u"fal-ai/flux/schnell"), inputWith(text(u"a sea"), 1)).json();
  sandbox.addFault(QStringLiteral("result"), QStringLiteral("partner-error"));
  const WireAnswer answer = client.getJson(handle, u"response_url");
  EXPECT_EQ(answer.json()[QStringLiteral("error")][QStringLiteral("code")].toInt(), 429);
}

}  // namespace
}  // namespace sorvan::test
