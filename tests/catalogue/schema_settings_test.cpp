#include "catalogue/schema_settings.h"

#include <gtest/gtest.h>

#include "catalogue/made_schema.h"
#include "catalogue/request_body.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::MadeSchema;

FalModel modelWith(const QByteArray& properties) {
  MadeSchema made;
  made.properties = properties;
  made.output = "video";
  return made.model();
}

/// The one setting, or an empty one when there are none or several.
Setting only(const QByteArray& properties) {
  const auto settings = modelWith(properties).allSettings();
  return settings.size() == 1 ? settings.front() : Setting();
}

QJsonValue sent(const QByteArray& properties, const QString& field, const QString& value) {
  BodyParts parts;
  parts.size = u"1024x1024"_s;
  parts.options = {{field, value}};
  return requestBody(modelWith(properties), parts).value(field);
}

TEST(SchemaSettings, MakeAChoiceOfTexts) {
  const Setting setting = only(R"({"duration":{"type":"string","enum":["5","10"],"default":"5"}})");
  EXPECT_EQ(setting.field, u"duration"_s);
  EXPECT_EQ(setting.label, u"Duration"_s);
  EXPECT_EQ(setting.kind, Setting::Kind::choice);
  EXPECT_EQ(setting.values, (QStringList{u"5"_s, u"10"_s}));
  EXPECT_EQ(setting.defaultValue, u"5"_s);
  EXPECT_FALSE(setting.numbers);
}

TEST(SchemaSettings, KeepNumbersNumbers) {
  const QByteArray whole = R"({"duration":{"type":"integer","enum":[5,10],"default":5}})";
  EXPECT_EQ(only(whole).values, (QStringList{u"5"_s, u"10"_s}));
  EXPECT_EQ(only(whole).defaultValue, u"5"_s);
  EXPECT_EQ(sent(whole, u"duration"_s, u"10"_s), QJsonValue(10));
  const QByteArray mixed = R"({"duration":{"enum":["auto",5,7.5,true,null]}})";
  EXPECT_EQ(only(mixed).values, (QStringList{u"auto"_s, u"5"_s, u"7.5"_s}));
  EXPECT_EQ(sent(mixed, u"duration"_s, u"auto"_s), QJsonValue(u"auto"_s));
  EXPECT_EQ(sent(mixed, u"duration"_s, u"7.5"_s), QJsonValue(7.5));
  EXPECT_EQ(sent(R"({"duration":{"enum":["5","10"]}})", u"duration"_s, u"10"_s), QJsonValue(u"10"_s));
}

TEST(SchemaSettings, DoNotOfferAChoiceOfOne) {
  EXPECT_TRUE(modelWith(R"({"duration":{"const":"8s","type":"string"}})").allSettings().empty());
  EXPECT_TRUE(modelWith(R"({"resolution":{"enum":["1K"]}})").allSettings().empty());
}

TEST(SchemaSettings, MakeANumberOfARange) {
  const Setting setting = only(R"({"duration":{"type":"integer","minimum":1,"maximum":15,"default":6}})");
  EXPECT_EQ(setting.kind, Setting::Kind::number);
  EXPECT_EQ(setting.values, (QStringList{u"1"_s, u"15"_s}));
  EXPECT_EQ(setting.accepts, (ClosedRange<qint64>{1, 15}));
  EXPECT_EQ(setting.defaultValue, u"6"_s);
  EXPECT_EQ(only(R"({"duration":{"anyOf":[{"enum":["auto"]},{"type":"integer","minimum":2,"maximum":9}]}})").accepts,
            (ClosedRange<qint64>{2, 9}));
}

TEST(SchemaSettings, MakeNothingOfARangeThatDoesNotHold) {
  for (const QByteArray& form :
       {R"("minimum":5,"maximum":5)", R"("minimum":0.5,"maximum":9)", R"("minimum":9,"maximum":2)", R"("minimum":1)",
        R"("minimum":"1","maximum":"9")", R"("minimum":-1e300,"maximum":1e300)"}) {
    EXPECT_TRUE(modelWith("{\"duration\":{" + form + "}}").allSettings().empty()) << form.toStdString();
  }
}

TEST(SchemaSettings, LeaveOutExcludedBounds) {
  EXPECT_EQ(only(R"({"duration":{"type":"integer","exclusiveMinimum":0,"exclusiveMaximum":11}})").accepts,
            (ClosedRange<qint64>{1, 10}));
  EXPECT_EQ(only(R"({"duration":{"type":"integer","minimum":0,"exclusiveMinimum":true,"maximum":10}})").accepts,
            (ClosedRange<qint64>{1, 10}));
}

TEST(SchemaSettings, OfferOnlyTheMultiplesThatTheServiceTakes) {
  const QByteArray fives = R"({"duration":{"type":"integer","minimum":5,"maximum":20,"multipleOf":5}})";
  EXPECT_EQ(only(fives).values, (QStringList{u"5"_s, u"10"_s, u"15"_s, u"20"_s}));
  EXPECT_EQ(sent(fives, u"duration"_s, u"15"_s), QJsonValue(15));
}

TEST(SchemaSettings, OfferTheFactorsThatFit) {
  const QByteArray wide = R"({"upscale_factor":{"type":"number","minimum":1,"maximum":4,"default":2}})";
  EXPECT_EQ(only(wide).label, u"Upscale by"_s);
  EXPECT_EQ(only(wide).values, (QStringList{u"2"_s, u"3"_s, u"4"_s}));
  EXPECT_EQ(only(wide).defaultValue, u"2"_s);
  EXPECT_EQ(sent(wide, u"upscale_factor"_s, u"3"_s), QJsonValue(3));
  EXPECT_EQ(only(R"({"scale":{"type":"integer","minimum":1,"maximum":2,"default":1}})").values, QStringList{u"2"_s});
  EXPECT_FALSE(only(R"({"scale":{"type":"integer","minimum":1,"maximum":2,"default":1}})").defaultValue);
  EXPECT_TRUE(modelWith(R"({"scale":{"type":"number","minimum":0,"maximum":1}})").allSettings().empty());
}

TEST(SchemaSettings, MakeTogglesOfTruthValuesOnly) {
  const auto settings = modelWith(R"({"draft":{"type":"boolean"},"audio":{"type":"boolean","default":true},
                                      "generate_audio":{"anyOf":[{"type":"boolean"},{"type":"null"}],"default":false}})")
                            .allSettings();
  ASSERT_EQ(settings.size(), 3u);
  EXPECT_EQ(settings[0].field, u"generate_audio"_s);
  EXPECT_EQ(settings[0].label, u"Sound"_s);
  EXPECT_EQ(settings[0].defaultValue, u"false"_s);
  EXPECT_EQ(settings[1].field, u"audio"_s);
  EXPECT_EQ(settings[1].defaultValue, u"true"_s);
  EXPECT_EQ(settings[2].label, u"Draft preview"_s);
  EXPECT_FALSE(settings[2].defaultValue);
  EXPECT_TRUE(modelWith(R"({"audio":{"type":"string"}})").allSettings().empty());
}

}  // namespace
}  // namespace sorvan::catalogue
