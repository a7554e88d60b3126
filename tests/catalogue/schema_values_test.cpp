// What a model read from its document may send is what the document takes: no value besides those that it lists.
#include <gtest/gtest.h>

#include "catalogue/made_schema.h"
#include "catalogue/request_body.h"
#include "catalogue/schema_reader.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::MadeSchema;

MadeSchema with(const QByteArray& properties, const QByteArray& required = "[]") {
  MadeSchema made;
  made.properties = properties;
  made.required = required;
  return made;
}

TEST(SchemaValues, OfferOnlyListedFactors) {
  const FalModel model =
      with(R"({"upscale_factor":{"type":"integer","enum":[1,2,4],"minimum":1,"maximum":4,"default":2}})").model();
  ASSERT_TRUE(model.setting(u"upscale_factor"_s));
  EXPECT_EQ(model.setting(u"upscale_factor"_s)->values, (QStringList{u"2"_s, u"4"_s}));
}

TEST(SchemaValues, OfferNoRangeAroundOneListedValue) {
  EXPECT_FALSE(with(R"({"duration":{"type":"integer","enum":[5],"minimum":5,"maximum":10}})").model().settings);
  EXPECT_FALSE(with(R"({"duration":{"const":5,"minimum":5,"maximum":10}})").model().settings);
}

TEST(SchemaValues, OfferNoSwitchWhereOneStateIsTaken) {
  const FalModel model = with(R"({"generate_audio":{"type":"boolean","const":true}})", R"(["generate_audio"])").model();
  EXPECT_FALSE(model.settings);
  EXPECT_EQ(model.defaultsJSON, u"{\"generate_audio\":true}"_s);
}

TEST(SchemaValues, DoNotCarryADefaultThatTheFieldItselfRefuses) {
  EXPECT_EQ(with(R"({"duration":{"type":"integer","minimum":3,"maximum":9,"default":0}})", R"(["duration"])")
                .model()
                .defaultsJSON,
            u"{\"duration\":3}"_s);
  EXPECT_EQ(with(R"({"duration":{"type":"integer","minimum":3,"maximum":9,"default":"soon"}})", R"(["duration"])")
                .model()
                .defaultsJSON,
            u"{\"duration\":3}"_s);
  EXPECT_EQ(with(R"({"quality":{"type":"string","default":7}})", R"(["quality"])").missing(),
            QStringList{u"quality"_s});
}

TEST(SchemaValues, DoNotCarryALowerBoundThatTheFieldItselfRefuses) {
  EXPECT_EQ(with(R"({"duration":{"type":"integer","minimum":3,"multipleOf":5}})", R"(["duration"])").missing(),
            QStringList{u"duration"_s});
  EXPECT_EQ(with(R"({"quality":{"type":"string","minimum":3}})", R"(["quality"])").missing(),
            QStringList{u"quality"_s});
}

TEST(SchemaValues, TakeNoListedWordsForAPromptOrAPicture) {
  EXPECT_EQ(with(R"({"prompt":{"type":"string","enum":["cat","dog"]}})", R"(["prompt"])").missing(),
            QStringList{u"prompt"_s});
  EXPECT_EQ(with(R"({"image_url":{"type":"string","enum":["cat","dog"]}})", R"(["image_url"])").missing(),
            QStringList{u"image_url"_s});
}

TEST(SchemaValues, RefuseAListOfMorePicturesThanCanBeSent) {
  const QByteArray many = R"({"image_urls":{"type":"array","items":{"type":"string"},"minItems":9,"maxItems":20}})";
  EXPECT_EQ(with(many, R"(["image_urls"])").missing(), QStringList{u"image_urls"_s});
  EXPECT_EQ(with(many).model().imageInput, ImageInput(NoInput{}));
}

QJsonObject sizeSent(const FalModel& model, const QString& size) {
  BodyParts parts;
  parts.size = size;
  return requestBody(model, parts).value(u"image_size"_s).toObject();
}

QByteArray sidesOf(const QByteArray& bounds) {
  return R"({"image_size":{"type":"object","properties":{"width":{"type":"integer",)" + bounds +
         R"(},"height":{"type":"integer",)" + bounds + "}}}}";
}

TEST(SchemaValues, KeepTheShapeWhereTheServiceTakesLargerOrSmallerSizes) {
  const FalModel larger = with(sidesOf(R"("minimum":1024,"maximum":4096)")).model();
  EXPECT_EQ(sizeSent(larger, u"1024x1024"_s), (QJsonObject{{u"width"_s, 1024}, {u"height"_s, 1024}}));
  EXPECT_EQ(sizeSent(larger, u"1536x864"_s), (QJsonObject{{u"width"_s, 1820}, {u"height"_s, 1024}}));
  const FalModel smaller = with(sidesOf(R"("exclusiveMinimum":0,"maximum":1024,"multipleOf":64)")).model();
  EXPECT_EQ(sizeSent(smaller, u"864x1536"_s), (QJsonObject{{u"width"_s, 576}, {u"height"_s, 1024}}));
}

TEST(SchemaValues, RefuseASizeOfWhichTheShapeCannotBeKept) {
  const FalModel square = with(sidesOf(R"("minimum":1024,"maximum":1024)")).model();
  EXPECT_EQ(test::failureOf([&] { sizeSent(square, u"1536x864"_s); }), u"Unsupported image size."_s);
  EXPECT_FALSE(sizeSent(square, u"1024x1024"_s).isEmpty());
}

TEST(SchemaValues, KeepNoBoundsThatEverySizeFits) {
  EXPECT_FALSE(with(sidesOf(R"("exclusiveMinimum":0,"maximum":14142)")).model().sides);
}

TEST(SchemaValues, TakeNoListedTextsForAFieldThatTakesNone) {
  EXPECT_EQ(with(R"({"aspect_ratio":{"type":"null","enum":["16:9","1:1"]}})").model().sizing, Sizing(NoSizing{}));
  EXPECT_FALSE(with(R"({"duration":{"type":"integer","enum":["5","10"]}})").model().settings);
}

TEST(SchemaValues, LimitThePromptWhereTheServiceDoes) {
  EXPECT_EQ(with(R"({"prompt":{"type":"string","maxLength":2500}})").model().promptLimit, 2500);
  EXPECT_EQ(with(R"({"prompt":{"anyOf":[{"type":"string","maxLength":80},{"type":"null"}]}})").model().promptLimit, 80);
  EXPECT_FALSE(with(R"({"prompt":{"type":"string"}})").model().promptLimit);
}

TEST(SchemaValues, FollowManyReferencesBesideEachOther) {
  MadeSchema made = with(R"({"prompt":{"type":"string"}})");
  QByteArray parts;
  for (int part = 0; part < 40; ++part) {
    const QByteArray name = "P" + QByteArray::number(part);
    made.schemas += "\"" + name + "\":{\"properties\":{\"p" + QByteArray::number(part) + "\":{}},\"required\":[]},";
    parts += "{\"$ref\":\"#/components/schemas/" + name + "\"},";
  }
  made.schemas += R"("Last":{"properties":{"seed":{"type":"integer"}}})";
  QByteArray text = made.text();
  text.replace("{\"schema\":{\"$ref\":\"#/components/schemas/PaintInput\"}}",
               "{\"schema\":{\"allOf\":[{\"$ref\":\"#/components/schemas/PaintInput\"}," + parts +
                   "{\"$ref\":\"#/components/schemas/Last\"}]}}");
  EXPECT_TRUE(modelFromSchema(test::paintListing(), text).hasSeed);
}

TEST(SchemaValues, FollowReferencesWhoseNamesAreWrittenForAddresses) {
  MadeSchema made = with(R"({"prompt":{"$ref":"#/components/schemas/a~1b%20c"}})", R"(["prompt"])");
  made.schemas = R"("a/b c":{"type":"string"})";
  EXPECT_TRUE(made.model().hasPrompt);
}

TEST(SchemaValues, AreReadBehindAByteOrderMark) {
  EXPECT_TRUE(
      modelFromSchema(test::paintListing(), "\xef\xbb\xbf" + with(R"({"prompt":{"type":"string"}})").text()).hasPrompt);
}

}  // namespace
}  // namespace sorvan::catalogue
