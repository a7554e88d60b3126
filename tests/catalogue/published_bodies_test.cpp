// Holds the bodies of compiled-in models, and of models written by hand from their documents, against those documents.
#include <gtest/gtest.h>

#include <QJsonArray>

#include "catalogue/audio_models.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/published_document.h"
#include "catalogue/request_body.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::PublishedDocument;

FalModel builtIn(const QString& id) {
  for (const FalModel& model : builtInModels()) {
    if (model.id == id) return model;
  }
  throw std::runtime_error("no such model");
}

Setting choice(const QString& field, const QStringList& values) {
  Setting setting;
  setting.field = field;
  setting.values = values;
  return setting;
}

BodyParts full(const QString& size, int count) {
  BodyParts parts;
  parts.prompt = u"a red fox in the snow"_s;
  parts.size = size;
  parts.count = count;
  parts.seed = 12;
  return parts;
}

std::string told(const QStringList& breaches) { return breaches.join(u"; "_s).toStdString(); }

TEST(PublishedBodies, HoldForNanoBanana) {
  const PublishedDocument document(u"fal-ai__nano-banana-2"_s);
  for (const auto& size : {u"1024x1024"_s, u"1536x864"_s, u"1024x1280"_s}) {
    BodyParts parts = full(size, 4);
    parts.options = {{u"resolution"_s, u"4K"_s}};
    const QStringList breaches = document.breaches(requestBody(nanoBanana2(), parts));
    EXPECT_TRUE(breaches.isEmpty()) << told(breaches);
  }
}

TEST(PublishedBodies, HoldForFluxSchnell) {
  const PublishedDocument document(u"fal-ai__flux__schnell"_s);
  const QStringList breaches =
      document.breaches(requestBody(builtIn(u"fal-ai/flux/schnell"_s), full(u"864x1536"_s, 3)));
  EXPECT_TRUE(breaches.isEmpty()) << told(breaches);
}

TEST(PublishedBodies, HoldForSoundEffects) {
  const PublishedDocument document(u"fal-ai__elevenlabs__sound-effects__v2"_s);
  const FalModel model = builtIn(u"fal-ai/elevenlabs/sound-effects/v2"_s);
  for (const auto& seconds : {u"1"_s, u"22"_s}) {
    BodyParts parts = full(u"1024x1024"_s, 1);
    parts.options = {{u"duration_seconds"_s, seconds}, {u"loop"_s, u"true"_s}};
    const QJsonObject body = requestBody(model, parts);
    EXPECT_TRUE(body.contains(u"duration_seconds"_s));
    EXPECT_TRUE(document.breaches(body).isEmpty()) << told(document.breaches(body));
  }
}

TEST(PublishedBodies, HoldForSplittingASound) {
  const PublishedDocument document(u"fal-ai__demucs"_s);
  BodyParts parts = full(u"1024x1024"_s, 1);
  parts.inputs = QStringList{u"https://v3.fal.media/files/a.mp3"_s};
  const QStringList breaches = document.breaches(requestBody(builtIn(u"fal-ai/demucs"_s), parts));
  EXPECT_TRUE(breaches.isEmpty()) << told(breaches);
}

TEST(PublishedBodies, HoldForAClipFromText) {
  FalModel model;
  model.id = u"fal-ai/veo3.1"_s;
  model.output = MediaType::video;
  model.hasSeed = true;
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"16:9"_s, u"9:16"_s}};
  Setting withSound = choice(u"generate_audio"_s, {});
  withSound.kind = Setting::Kind::toggle;
  model.settings = {choice(u"duration"_s, {u"4s"_s, u"6s"_s, u"8s"_s}), withSound};
  BodyParts parts = full(u"1536x864"_s, 1);
  parts.options = {{u"duration"_s, u"6s"_s}, {u"generate_audio"_s, u"false"_s}};
  const QJsonObject body = requestBody(model, parts);
  const QStringList breaches = PublishedDocument(u"fal-ai__veo3.1"_s).breaches(body);
  EXPECT_TRUE(breaches.isEmpty()) << told(breaches);
  EXPECT_EQ(body.value(u"generate_audio"_s), QJsonValue(false));
}

TEST(PublishedBodies, HoldForAClipBetweenTwoPictures) {
  FalModel model;
  model.id = u"fal-ai/kling-video/v3/pro/image-to-video"_s;
  model.output = MediaType::video;
  model.promptRequired = false;
  model.imageInput = SingleInput{u"start_image_url"_s, true};
  model.endImageField = u"end_image_url"_s;
  model.settings = {choice(u"duration"_s, {u"5"_s, u"10"_s})};
  BodyParts parts = full(u"1024x1024"_s, 1);
  parts.inputs = QStringList{u"https://v3.fal.media/files/a.png"_s};
  parts.endImage = u"https://v3.fal.media/files/b.png"_s;
  parts.options = {{u"duration"_s, u"10"_s}};
  const QStringList breaches =
      PublishedDocument(u"fal-ai__kling-video__v3__pro__image-to-video"_s).breaches(requestBody(model, parts));
  EXPECT_TRUE(breaches.isEmpty()) << told(breaches);
}

TEST(PublishedBodies, HoldForAnEditOfSeveralPictures) {
  FalModel model = nanoBanana2();
  model.id = u"fal-ai/nano-banana-2/edit"_s;
  model.imageInput = ListInput{u"image_urls"_s, true};
  BodyParts parts = full(u"1024x1024"_s, 1);
  parts.inputs = QStringList{u"https://v3.fal.media/files/a.png"_s, u"https://v3.fal.media/files/b.png"_s};
  const QStringList breaches =
      PublishedDocument(u"fal-ai__nano-banana-2__edit.TRANSCRIBED"_s).breaches(requestBody(model, parts));
  EXPECT_TRUE(breaches.isEmpty()) << told(breaches);
}

TEST(PublishedBodies, BreakTheDocumentWhenAValueIsWrong) {
  const PublishedDocument document(u"fal-ai__nano-banana-2"_s);
  EXPECT_EQ(document.breaches({{u"prompt"_s, u"x"_s}, {u"num_images"_s, 9}}).size(), 1);
  EXPECT_EQ(document.breaches({{u"prompt"_s, u"x"_s}, {u"resolution"_s, u"8K"_s}}).size(), 1);
  EXPECT_EQ(document.breaches({{u"prompt"_s, u"x"_s}, {u"colour"_s, u"red"_s}}).size(), 1);
  EXPECT_EQ(document.breaches({}).size(), 1);
}

}  // namespace
}  // namespace sorvan::catalogue
