// Whatever the bytes are, the reader answers with a model or a sentence.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDir>
#include <QFile>

#include "catalogue/made_schema.h"
#include "catalogue/request_body.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::MadeSchema;

const QString unreadable = u"Invalid provider response."_s;

QString refusalOf(const QByteArray& text) {
  return test::failureOf([&] { modelFromSchema(test::paintListing(), text); });
}

QByteArray around(const QByteArray& inner) {
  MadeSchema made;
  made.properties = "{\"prompt\":{\"type\":\"string\"},\"x\":" + inner + "}";
  return made.text();
}

TEST(HostileSchema, IsRefusedWhenItIsNoObject) {
  for (const QByteArray& text : {"", "null", "[]", "\"x\"", "{", "{\"a\":1", "{}{}", "\xff\xfe", "{\"a\":NaN}"}) {
    EXPECT_EQ(refusalOf(text), unreadable) << text.toStdString();
  }
}

TEST(HostileSchema, IsRefusedAboveTenMegabytes) {
  const QByteArray small = around("{}");
  EXPECT_EQ(refusalOf(small + QByteArray((10 << 20) - small.size(), ' ')), u"(nothing was thrown)"_s);
  EXPECT_EQ(refusalOf(small + QByteArray((10 << 20) - small.size() + 1, ' ')), unreadable);
}

TEST(HostileSchema, IsRefusedBelowADepthOfTwoHundred) {
  const auto nested = [](int depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); };
  EXPECT_EQ(refusalOf(around(nested(150))), u"(nothing was thrown)"_s);
  EXPECT_EQ(refusalOf(around(nested(200))), unreadable);
  EXPECT_EQ(refusalOf(around(nested(1000))), unreadable);
  EXPECT_EQ(refusalOf(around(nested(1000000))), unreadable);
}

// Each level has twice as many as the one before: followed to the end, they would never end.
TEST(HostileSchema, ComesToAnEndWhenReferencesMultiply) {
  MadeSchema made;
  made.properties = R"({"prompt":{"$ref":"#/components/schemas/L0"}})";
  for (int level = 0; level < 60; ++level) {
    const QByteArray next = "{\"$ref\":\"#/components/schemas/L" + QByteArray::number(level + 1) + "\"}";
    made.schemas += "\"L" + QByteArray::number(level) + "\":{\"allOf\":[" + next + "," + next + "],\"anyOf\":[" + next +
                    "," + next + "]},";
  }
  made.schemas += R"("L60":{"type":"string"})";
  EXPECT_EQ(made.refusal(), u"Paint does not return an image or a video."_s) << "the rest was not looked at";
}

TEST(HostileSchema, ComesToAnEndWhenManyFieldsCopyALargeOne) {
  MadeSchema made;
  QByteArray large = "{\"type\":\"array\",\"enum\":[";
  for (int index = 0; index < 20000; ++index) large += QByteArray::number(index) + ",";
  made.schemas = "\"Large\":" + large + "0]}";
  made.properties = "{";
  for (int index = 0; index < 5000; ++index) {
    made.properties += "\"a" + QByteArray::number(index) +
                       "_image_urls\":{\"$ref\":\"#/components/schemas/Large\",\"type\":\"array\"},";
  }
  made.properties += "\"prompt\":{\"type\":\"string\"}}";
  EXPECT_EQ(made.refusal(), u"Paint does not return an image or a video."_s) << "the rest was not looked at";
}

TEST(HostileSchema, SurvivesWrongTypesInEveryPlace) {
  MadeSchema made;
  made.properties = R"({"prompt":{"type":"string"},"image_size":{"anyOf":[{"$ref":"#/components/schemas/ImageSize"}]},
      "duration":{"enum":["5","10"],"default":"5"},"image_urls":{"type":"array","items":{"type":"string"}}})";
  made.required = R"(["prompt"])";
  made.order = R"(["prompt"])";
  const QByteArray text = made.text();
  // Each value of the document in turn is taken for each of these.
  int tried = 0;
  for (qsizetype colon = text.indexOf(':'); colon >= 0; colon = text.indexOf(':', colon + 1)) {
    for (const QByteArray& other : {"0", "null", "[]", "{}", "\"\"", "[[{}]]", "-1e308"}) {
      QByteArray changed = text;
      changed.insert(colon + 1, other + ",\"q" + QByteArray::number(tried) + "\":");
      const QString told = refusalOf(changed);
      EXPECT_FALSE(told.isEmpty());
      ++tried;
    }
  }
  EXPECT_GT(tried, 200);
}

QByteArrayList recordedTexts() {
  const QDir folder(QStringLiteral(SORVAN_TEST_DATA) + u"/openapi"_s);
  QByteArrayList texts;
  for (const QString& name : folder.entryList({u"*.json"_s}, QDir::Files, QDir::Name)) {
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::ReadOnly)) texts << file.readAll();
  }
  return texts;
}

/// A recorded document with some bytes cut, doubled or changed.
QByteArray damaged(const QByteArrayList& texts) {
  QByteArray text = texts.at(*rc::gen::inRange<qsizetype>(0, texts.size()));
  static const QByteArrayList pieces{"null", "[]", "{}", "\"$ref\":",       "-1",     "1e999",
                                     "\"",   "}",  "],", "\"anyOf\":[{}],", "\\u0000"};
  const int changes = *rc::gen::inRange(1, 6);
  for (int change = 0; change < changes; ++change) {
    const auto place = *rc::gen::inRange<qsizetype>(0, text.size());
    const auto length = *rc::gen::inRange<qsizetype>(0, 12);
    text.replace(place, length, pieces.at(*rc::gen::inRange<qsizetype>(0, pieces.size())));
  }
  return text;
}

RC_GTEST_PROP(HostileSchema, NeverBreaksTheReader, ()) {
  static const QByteArrayList texts = recordedTexts();
  const QByteArray text = damaged(texts);
  try {
    const SchemaIdentity identity = schemaIdentity(text);
    const FalModel model = modelFromSchema({identity.id, u"It"_s, {}, {}, {}}, text);
    RC_ASSERT(model.maxCount >= 1);
    model.option();
  } catch (const SorvanError& refusal) {
    RC_ASSERT(!refusal.message().isEmpty());
  }
}

}  // namespace
}  // namespace sorvan::catalogue
