#include "account/credit_price.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;

CreditPrice listed(const char* json) {
  const auto price = priceFrom(QJsonDocument::fromJson(json).object());
  EXPECT_TRUE(price) << json;
  return price.value_or(CreditPrice());
}

FalModel modelOf(MediaType type) {
  FalModel model;
  model.id = u"acme/model"_s;
  model.output = type;
  return model;
}

Setting setting(const QString& field, const std::optional<QString>& value, QStringList values = {}) {
  Setting made;
  made.field = field;
  made.defaultValue = value;
  made.values = std::move(values);
  return made;
}

struct Asked {
  FalModel model = modelOf(MediaType::image);
  GenerationRequest request;
  std::optional<std::int64_t> cost(const CreditPrice& price) const { return estimatedCredits(price, request, model); }
  Asked& with(const QString& option, const QString& value) {
    TextByKey options = request.options.value_or(TextByKey());
    options.insert(option, value);
    request.options = options;
    return *this;
  }
};

TEST(CreditPriceTest, FillsInWhatTheListLeavesOut) {
  const CreditPrice price = listed(R"({"credits":3.2})");
  EXPECT_EQ(price.credits, 4);
  EXPECT_EQ(price.per, u"image"_s);
  EXPECT_DOUBLE_EQ(price.rate, 3.2);
  EXPECT_FALSE(price.upTo);
  EXPECT_TRUE(price.extras.empty());
  EXPECT_EQ(listed(R"({"credits":7.000000000000001})").credits, 7);
}

TEST(CreditPriceTest, TakesNothingForAPriceThatIsNone) {
  for (const char* json :
       {"{}", R"({"credits":"4"})", R"({"credits":-1})", R"({"credits":1e300})", R"({"credits":4,"rate":-2})",
        R"({"credits":4,"options":{"field":"a","rates":{"b":-1}}})", R"({"credits":4,"options":{"field":"a","rates":{"b":"x"}}})",
        R"({"credits":4,"extras":[{"field":"a","rate":-3,"on_by_default":true}]})", R"({"credits":4,"extras":[7]})",
        R"({"credits":4,"per_image":{"rate":-1}})", R"({"credits":4,"per":7})", R"({"credits":4,"large":-2})",
        R"({"credits":null})"})
    EXPECT_FALSE(priceFrom(QJsonDocument::fromJson(json).object())) << json;
  EXPECT_FALSE(priceFrom(QJsonValue()));
  EXPECT_FALSE(priceFrom(QJsonValue(4)));
}

TEST(CreditPriceTest, TakesNothingForAPriceThatIsNoNumber) {
  for (const char* json : {R"({"credits":NaN})", R"({"credits":Infinity})", R"({"credits":1e999})", R"({"credits":true})",
                           R"({"credits":[4]})", R"({"credits":4,"rate":"NaN"})", R"({"credits":4,"rate":1e999})"})
    EXPECT_FALSE(priceFrom(QJsonDocument::fromJson(json).object())) << json;
  EXPECT_FALSE(priceFrom(QJsonObject{{u"credits"_s, std::numeric_limits<double>::quiet_NaN()}}));
}

TEST(CreditPriceTest, CountsOutputsOfAFlatPriceAndNeverGivesOneForNothing) {
  Asked asked;
  EXPECT_EQ(asked.cost(listed(R"({"credits":4})")), 4);
  asked.request.count = 3;
  EXPECT_EQ(asked.cost(listed(R"({"credits":4})")), 12);
  asked.request.count = 0;
  EXPECT_EQ(asked.cost(listed(R"({"credits":4})")), 4);
  EXPECT_EQ(asked.cost(listed(R"({"credits":0})")), 1);
}

TEST(CreditPriceTest, CountsCharactersInStepsAndBytes) {
  Asked asked;
  const CreditPrice byCharacter = listed(R"({"credits":1,"per":"character","rate":0.01})");
  EXPECT_FALSE(asked.cost(byCharacter));
  asked.request.prompt = QString(150, u'a');
  asked.request.count = 4;
  EXPECT_EQ(asked.cost(byCharacter), 2);
  asked.model.billedEvery = 1000;
  EXPECT_EQ(asked.cost(byCharacter), 10);
  const CreditPrice byByte = listed(R"({"credits":1,"per":"byte","rate":0.5})");
  asked.request.prompt = u"é"_s;
  EXPECT_EQ(asked.cost(byByte), 1);
  asked.request.prompt = u"ééé"_s;
  EXPECT_EQ(asked.cost(byByte), 3);
}

TEST(CreditPriceTest, CountsSecondsOfASoundByMinuteStepAndSample) {
  Asked asked;
  asked.model = modelOf(MediaType::audio);
  const CreditPrice price = listed(R"({"credits":1,"per":"second","rate":1})");
  EXPECT_FALSE(asked.cost(price));
  for (const auto& none : {u" 5"_s, u"5s"_s, u"0"_s, u"-5"_s, u"auto"_s, u"inf"_s, u"nan"_s, u""_s})
    EXPECT_FALSE(Asked(asked).with(u"duration"_s, none).cost(price)) << none.toStdString();
  EXPECT_EQ(Asked(asked).with(u"duration_seconds"_s, u"7.2"_s).cost(price), 8);
  EXPECT_EQ(Asked(asked).with(u"music_length_ms"_s, u"61000"_s).cost(price), 61);
  asked.model.billedPerMinute = true;
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"61"_s).cost(price), 120);
  asked.model.billedPerMinute = false;
  asked.model.billedEvery = 30;
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"61"_s).cost(price), 90);
  asked.model.defaultsJSON = u"{\"num_samples\":2}"_s;
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"61"_s).cost(price), 180);
  asked.model.defaultsJSON = u"{\"num_samples\":\"2\"}"_s;
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"61"_s).cost(price), 90);
}

TEST(CreditPriceTest, CountsSecondsOfAClipThatWillRun) {
  Asked asked;
  asked.model = modelOf(MediaType::video);
  const CreditPrice price = listed(R"({"credits":10,"per":"second","rate":10,"per_image":{"rate":3}})");
  EXPECT_FALSE(asked.cost(price));
  asked.model.settings = std::vector<Setting>{setting(u"duration"_s, std::nullopt, {u"auto"_s, u"4"_s, u"8"_s})};
  EXPECT_EQ(asked.cost(price), 40);
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"8s"_s).cost(price), 80);
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"auto"_s).cost(price), 40);
  asked.model.settings->front().defaultValue = u"8"_s;
  EXPECT_EQ(Asked(asked).with(u"duration"_s, u"auto"_s).cost(price), 80);
  asked.request.count = 4;
  asked.request.referenceIDs = {QUuid::createUuid(), QUuid::createUuid()};
  EXPECT_EQ(asked.cost(price), 86);
}

TEST(CreditPriceTest, CountsStartedMegapixels) {
  Asked asked;
  const CreditPrice price = listed(R"({"credits":3,"per":"megapixel","rate":3,"per_image":{"rate":1.5}})");
  asked.request.size = u"1024x1024"_s;
  EXPECT_EQ(asked.cost(price), 3);
  asked.request.size = u"1025x1024"_s;
  asked.request.count = 2;
  EXPECT_EQ(asked.cost(price), 12);
  asked.request.size = u"auto"_s;
  asked.request.referenceIDs = {QUuid::createUuid()};
  EXPECT_EQ(asked.cost(price), 10);
}

TEST(CreditPriceTest, PicksARateByAnOptionAndAddsWhatIsSwitchedOn) {
  Asked asked;
  const CreditPrice price = listed(
      R"({"credits":20,"rate":9,"options":{"field":"quality","rates":{"Low":4,"high":16}},
          "extras":[{"field":"sound","rate":2,"on_by_default":true},{"field":"hd","rate":5}],"per_image":{"rate":1}})");
  EXPECT_EQ(asked.cost(price), 9);
  EXPECT_EQ(Asked(asked).with(u"quality"_s, u"LOW"_s).cost(price), 4);
  asked.model.settings = std::vector<Setting>{setting(u"quality"_s, u"high"_s), setting(u"sound"_s, u"false"_s)};
  EXPECT_EQ(asked.cost(price), 14);
  EXPECT_EQ(Asked(asked).with(u"sound"_s, u"True"_s).cost(price), 16);
  EXPECT_EQ(Asked(asked).with(u"hd"_s, u"true"_s).cost(price), 19);
  asked.request.referenceIDs = {QUuid::createUuid()};
  asked.request.count = 2;
  EXPECT_EQ(asked.cost(price), 30);
}

TEST(CreditPriceTest, TellsLargeSizes) {
  const CreditPrice byArea = listed(R"({"credits":4,"large":2,"options":{"field":"q","rates":{}}})");
  EXPECT_FALSE(isLarge(byArea, u"1024x1024"_s));
  EXPECT_TRUE(isLarge(byArea, u"2048x2048"_s));
  EXPECT_FALSE(isLarge(byArea, u"auto"_s));
  const CreditPrice bySide = listed(R"({"credits":4,"large":2,"large_when":"not_square"})");
  EXPECT_FALSE(isLarge(bySide, u"2048x2048"_s));
  EXPECT_TRUE(isLarge(bySide, u"1024x512"_s));
  EXPECT_TRUE(isLarge(bySide, u"auto"_s));
  EXPECT_FALSE(isLarge(listed(R"({"credits":4})"), u"4096x4096"_s));
  Asked asked;
  asked.request.size = u"2048x2048"_s;
  EXPECT_EQ(asked.cost(byArea), 8);
}

TEST(CreditPriceTest, LabelsPricesForAList) {
  EXPECT_EQ(priceLabel(listed(R"({"credits":1})")), u"1 credit"_s);
  EXPECT_EQ(priceLabel(listed(R"({"credits":4,"per":"second"})")), u"4 credits / s"_s);
  EXPECT_EQ(priceLabel(listed(R"({"credits":20,"up_to":true})")), u"up to 20 credits"_s);
  EXPECT_EQ(priceLabel(listed(R"({"credits":20,"options":{"field":"q","rates":{"a":3.5,"b":16}}})")),
            u"from 4 credits"_s);
  EXPECT_EQ(priceLabel(listed(R"({"credits":2,"options":{"field":"q","rates":{"a":3.5}}})")), u"2 credits"_s);
}

}  // namespace
}  // namespace sorvan::account
