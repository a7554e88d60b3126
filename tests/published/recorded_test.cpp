// Reads every recorded document, and holds the bodies of those that are accepted against them.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "catalogue/schema_reader.h"
#include "published/trial_bodies.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::failureOf;

QString folder() { return QStringLiteral(SORVAN_TEST_DATA) + u"/openapi/"_s; }

QByteArray documentNamed(const QString& name) {
  QFile file(folder() + name);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no document " + name.toStdString());
  return file.readAll();
}

QStringList allDocuments() { return QDir(folder()).entryList({u"*.json"_s}, QDir::Files, QDir::Name); }

FalModel read(const QString& name) {
  const QByteArray text = documentNamed(name);
  const SchemaIdentity identity = schemaIdentity(text);
  return modelFromSchema({identity.id, u"It"_s, identity.category, {}, {}}, text);
}

TEST(RecordedDocuments, GiveAModelOrTheRightRefusal) {
  const QString noMedia = u"It does not return an image or a video."_s;
  const std::map<QString, QString> refusals{
      {u"fal-ai__demucs.json"_s, noMedia},
      {u"fal-ai__elevenlabs__sound-effects__v2.json"_s, noMedia},
      {u"openrouter__router.json"_s, noMedia},
      {u"openrouter__router__vision.json"_s, noMedia},
      {u"openrouter__router__openai__v1__chat__completions.json"_s,
       u"The model provider has not published usable settings for It."_s},
      {u"fal-ai__topaz__upscale__video.json"_s, u"It needs inputs Sorvan cannot supply yet: video_url."_s}};
  ASSERT_EQ(allDocuments().size(), 15);
  for (const QString& name : allDocuments()) {
    const auto expected = refusals.find(name);
    const QString told = failureOf([&] { read(name); });
    EXPECT_EQ(told, expected == refusals.end() ? u"(nothing was thrown)"_s : expected->second) << name.toStdString();
  }
}

TEST(RecordedDocuments, GiveBodiesThatTheyAllow) {
  QJsonArray trials;
  for (const QString& name : allDocuments()) {
    try {
      trials.append(test::trial(folder() + name, test::trialBodies(read(name))));
    } catch (const SchemaRefusal&) {
      continue;
    }
  }
  ASSERT_EQ(trials.size(), 9);
  EXPECT_EQ(test::breaches(trials), "[]");
}

TEST(RecordedDocuments, AreBrokenByABodyThatDoesNotHold) {
  const QJsonArray bodies{QJsonObject{{u"prompt"_s, 5}}, QJsonObject{{u"prompt"_s, u"x"_s}, {u"colour"_s, 1}},
                          QJsonObject()};
  const std::string told = test::breaches({test::trial(folder() + u"fal-ai__veo3.1.json"_s, bodies)});
  EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(told)).array().size(), 3) << told;
}

TEST(RecordedDocuments, TellNanoBanana) {
  const FalModel model = read(u"fal-ai__nano-banana-2__edit.TRANSCRIBED.json"_s);
  EXPECT_EQ(model.output, MediaType::image);
  EXPECT_EQ(model.promptRequired, true);
  EXPECT_EQ(model.maxCount, 4);
  EXPECT_TRUE(model.hasSeed);
  EXPECT_TRUE(model.pngOutput);
  EXPECT_EQ(model.imageInput, ImageInput(ListInput{u"image_urls"_s, true}));
  ASSERT_TRUE(model.setting(u"resolution"_s));
  EXPECT_EQ(model.setting(u"resolution"_s)->values, (QStringList{u"0.5K"_s, u"1K"_s, u"2K"_s, u"4K"_s}));
  EXPECT_EQ(std::get<SizeByAspect>(model.sizing).values.size(), 15);
}

TEST(RecordedDocuments, TellAClipBetweenTwoPictures) {
  const FalModel model = read(u"fal-ai__kling-video__v3__pro__image-to-video.json"_s);
  EXPECT_EQ(model.output, MediaType::video);
  EXPECT_EQ(model.promptRequired, false);
  EXPECT_EQ(model.imageInput, ImageInput(SingleInput{u"start_image_url"_s, true}));
  EXPECT_EQ(model.endImageField, u"end_image_url"_s);
  EXPECT_EQ(model.inputByteLimit, 10485760);
  EXPECT_EQ(model.setting(u"duration"_s)->values.size(), 13);
  EXPECT_EQ(model.setting(u"generate_audio"_s)->defaultValue, u"true"_s);
}

TEST(RecordedDocuments, TellARangeOfSeconds) {
  const FalModel model = read(u"xai__grok-imagine-video__text-to-video.json"_s);
  EXPECT_EQ(model.setting(u"duration"_s)->accepts, (ClosedRange<qint64>{1, 15}));
  EXPECT_EQ(model.setting(u"resolution"_s)->values, (QStringList{u"480p"_s, u"720p"_s}));
  EXPECT_FALSE(model.hasSeed);
}

}  // namespace
}  // namespace sorvan::catalogue
