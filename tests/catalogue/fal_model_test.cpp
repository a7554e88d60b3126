#include "catalogue/fal_model.h"

#include <gtest/gtest.h>

#include "catalogue/fal_model_json.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

FalModel clipModel(const QStringList& ratios) {
  FalModel model;
  model.output = MediaType::video;
  model.sizing = SizeByAspect{u"aspect_ratio"_s, ratios};
  return model;
}

Setting choice(const QString& field, const QStringList& values, std::optional<QString> start = std::nullopt) {
  Setting setting;
  setting.field = field;
  setting.values = values;
  setting.defaultValue = std::move(start);
  return setting;
}

TEST(FalModel, NeedsNoPromptWhenAnOptionalOneComesWithARequiredPicture) {
  FalModel model;
  model.promptRequired = false;
  model.imageInput = SingleInput{u"image_url"_s, true};
  EXPECT_FALSE(model.option().needsPrompt);
  model.imageInput = SingleInput{u"image_url"_s, false};
  EXPECT_TRUE(model.option().needsPrompt);
  model.promptRequired = std::nullopt;
  model.imageInput = SingleInput{u"image_url"_s, true};
  EXPECT_TRUE(model.option().needsPrompt);
  model.hasPrompt = false;
  EXPECT_FALSE(model.option().needsPrompt);
}

TEST(FalModel, TellsHowManyReferencesItsInputTakes) {
  FalModel model;
  EXPECT_FALSE(model.option().supportsReferences);
  EXPECT_EQ(model.option().maxReferences, 0);
  model.imageInput = SingleInput{u"image_url"_s, true};
  EXPECT_EQ(model.option().maxReferences, 1);
  EXPECT_TRUE(model.option().requiresReference);
  model.imageInput = ListInput{u"image_urls"_s, false};
  EXPECT_EQ(model.option().maxReferences, 8);
  EXPECT_FALSE(model.option().requiresReference);
  model.endImageField = u"end_image_url"_s;
  EXPECT_TRUE(model.option().supportsEndFrame);
}

TEST(FalModel, TellsTheRatiosOfItsSizes) {
  FalModel model;
  model.sizing = SizeByName{u"image_size"_s, {u"1024x1024"_s, u"1536x864"_s, u"333x777"_s}};
  EXPECT_EQ(model.option().ratios, (QStringList{u"1:1"_s, u"16:9"_s}));
  model.sizing = SizeByName{u"image_size"_s, {u"333x777"_s}};
  EXPECT_EQ(model.option().ratios, std::nullopt);
  model.sizing = SizeByName{u"image_size"_s, {u"1024x1024"_s, u"auto"_s}};
  EXPECT_EQ(model.option().ratios, std::nullopt);
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"7:3"_s, u"1:1"_s}};
  EXPECT_EQ(model.option().ratios, (QStringList{u"7:3"_s, u"1:1"_s}));
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"1:1"_s, u"adaptive"_s}};
  EXPECT_EQ(model.option().ratios, std::nullopt);
  model.sizing = SizeByDimensions{u"image_size"_s};
  EXPECT_EQ(model.option().ratios, std::nullopt);
}

TEST(FalModel, ReshapesAPictureThatFitsNoneOfItsRatios) {
  EXPECT_FALSE(clipModel({u"16:9"_s}).reshapes(1920, 1080));
  EXPECT_FALSE(clipModel({u"16:9"_s}).reshapes(1900, 1080));
  EXPECT_TRUE(clipModel({u"16:9"_s}).reshapes(1000, 1000));
  EXPECT_FALSE(clipModel({u"16:9"_s, u"auto"_s}).reshapes(1000, 1000));
  EXPECT_FALSE(clipModel({u"16:9"_s}).reshapes(0, 1000));
  EXPECT_TRUE(clipModel({u"wide"_s, u"1:0"_s}).reshapes(1000, 1000));
  FalModel picture = clipModel({u"16:9"_s});
  picture.output = MediaType::image;
  EXPECT_FALSE(picture.reshapes(1000, 1000));
  FalModel free = clipModel({});
  free.sizing = NoSizing{};
  EXPECT_FALSE(free.reshapes(1000, 1000));
}

TEST(FalModel, FourPercentOfDifferenceIsAlreadyAnotherShape) {
  EXPECT_TRUE(clipModel({u"104:100"_s}).reshapes(100, 100));
  EXPECT_FALSE(clipModel({u"103.9:100"_s}).reshapes(100, 100));
}

TEST(Setting, AllowsWholeNumbersBetweenItsBoundsAlthoughNotListed) {
  Setting setting = choice(u"seconds"_s, {u"1"_s, u"10"_s});
  setting.kind = Setting::Kind::number;
  setting.accepts = ClosedRange<qint64>{1, 10};
  EXPECT_TRUE(setting.allows(u"7"_s));
  EXPECT_TRUE(setting.allows(u"+7"_s));
  EXPECT_FALSE(setting.allows(u"7.5"_s));
  EXPECT_FALSE(setting.allows(QString()));
  EXPECT_FALSE(setting.allows(u" 7"_s));
  EXPECT_FALSE(setting.allows(u"11"_s));
  EXPECT_FALSE(setting.allows(u"-7"_s));
  EXPECT_FALSE(setting.allows(u"99999999999999999999"_s));
  EXPECT_TRUE(setting.isValid(u"10"_s));
}

TEST(SharedSettings, KeepWhatEveryModelHas) {
  FalModel first;
  first.settings = {choice(u"duration"_s, {u"5"_s, u"8"_s, u"10"_s}, u"5"_s), choice(u"resolution"_s, {u"1K"_s}),
                    choice(u"quality"_s, {u"low"_s})};
  FalModel second;
  second.settings = {choice(u"duration"_s, {u"10"_s, u"5"_s}, u"10"_s), choice(u"resolution"_s, {u"2K"_s})};
  EXPECT_TRUE(sharedSettings({}).empty());
  EXPECT_EQ(sharedSettings({first}).size(), 3u);
  const auto shared = sharedSettings({first, second});
  ASSERT_EQ(shared.size(), 1u);
  EXPECT_EQ(shared[0].values, (QStringList{u"5"_s, u"10"_s}));
  EXPECT_EQ(shared[0].defaultValue, std::nullopt);
}

TEST(FalModelJson, WritesTheDocumentedForm) {
  FalModel model;
  model.id = u"acme/clip"_s;
  model.name = u"Clip"_s;
  model.category = u"text-to-video"_s;
  model.summary = u"Acme · clips"_s;
  model.output = MediaType::video;
  model.sizing = SizeByAspect{u"aspect_ratio"_s, {u"1:1"_s}};
  model.imageInput = ListInput{u"image_urls"_s, true};
  Setting length = choice(u"duration"_s, {});
  length.kind = Setting::Kind::number;
  length.accepts = ClosedRange<qint64>{1, 10};
  model.settings = {length};
  const QJsonObject json = toJson(model).toObject();
  EXPECT_EQ(json.value(u"sizing"_s),
            QJsonValue(QJsonObject{
                {u"aspect"_s, QJsonObject{{u"field"_s, u"aspect_ratio"_s}, {u"values"_s, QJsonArray{u"1:1"_s}}}}}));
  EXPECT_EQ(json.value(u"imageInput"_s),
            QJsonValue(QJsonObject{{u"list"_s, QJsonObject{{u"field"_s, u"image_urls"_s}, {u"required"_s, true}}}}));
  const QJsonObject setting = json.value(u"settings"_s).toArray().at(0).toObject();
  EXPECT_EQ(setting.value(u"accepts"_s), QJsonValue((QJsonArray{1, 10})));
  EXPECT_TRUE(setting.value(u"values"_s).isArray());
  EXPECT_FALSE(setting.contains(u"onlyWith"_s));
  EXPECT_EQ(json.value(u"output"_s).toString(), u"video"_s);
  EXPECT_FALSE(json.contains(u"camera"_s));
  EXPECT_EQ(fromJson<FalModel>(json), model);
}

TEST(FalModelJson, WritesACaseWithoutValuesAsAnEmptyObject) {
  FalModel model;
  const QJsonObject json = toJson(model).toObject();
  EXPECT_EQ(json.value(u"sizing"_s), QJsonValue((QJsonObject{{u"none"_s, QJsonObject{}}})));
  EXPECT_EQ(json.value(u"imageInput"_s), QJsonValue((QJsonObject{{u"none"_s, QJsonObject{}}})));
}

TEST(FalModelJson, LoadsARecordWithoutTheOptionalFields) {
  const QByteArray text =
      R"([{"id":"a","name":"A","category":"text-to-image","summary":"","output":"image","hasPrompt":true,"maxCount":4,
          "sizing":{"dimensions":{"field":"image_size"}},"hasSeed":true,"pngOutput":false,
          "imageInput":{"single":{"field":"image_url","required":true}},"later":1,"camera":null}])";
  const StoredModels stored = modelsFromText(text);
  ASSERT_EQ(stored.models.size(), 1u);
  EXPECT_TRUE(stored.complete);
  EXPECT_EQ(stored.models[0].sizing, Sizing(SizeByDimensions{u"image_size"_s}));
  EXPECT_EQ(stored.models[0].camera, std::nullopt);
}

TEST(FalModelJson, SkipsOnlyTheElementsThatDoNotRead) {
  FalModel good;
  good.id = u"good"_s;
  const QJsonObject json = toJson(good).toObject();
  for (const auto& [key, value] :
       std::vector<std::pair<QString, QJsonValue>>{{u"output"_s, u"hologram"_s},
                                                   {u"sizing"_s, QJsonObject{{u"spiral"_s, QJsonObject{}}}},
                                                   {u"imageInput"_s, QJsonObject{}},
                                                   {u"maxCount"_s, u"4"_s},
                                                   {u"hasSeed"_s, QJsonValue(QJsonValue::Undefined)},
                                                   {u"camera"_s, 3}}) {
    QJsonObject bad = json;
    bad.insert(key, value);
    const StoredModels stored = modelsFromText(QJsonDocument(QJsonArray{bad, json}).toJson());
    ASSERT_EQ(stored.models.size(), 1u) << key.toStdString();
    EXPECT_EQ(stored.models[0].id, u"good"_s);
    EXPECT_FALSE(stored.complete);
  }
}

}  // namespace
}  // namespace sorvan::catalogue
