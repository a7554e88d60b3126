#include "catalogue/schema_lines.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "catalogue/made_schema.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::MadeSchema;

std::vector<QJsonObject> linesOf(const QByteArray& bytes) {
  std::vector<QJsonObject> lines;
  for (const QByteArray& line : schemaLines(u"a.json"_s, bytes)) {
    EXPECT_EQ(line.count('\n'), 1);
    lines.push_back(QJsonDocument::fromJson(line).object());
  }
  return lines;
}

MadeSchema accepted() { return {R"({"prompt":{"type":"string"}})", R"(["prompt"])"}; }
MadeSchema refused() { return {R"({"mask_url":{"type":"string"}})", R"(["mask_url"])"}; }

TEST(SchemaLines, TellAModelOrARefusal) {
  const auto lines = linesOf(accepted().text());
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].keys(), (QStringList{u"file"_s, u"id"_s, u"model"_s}));
  EXPECT_EQ(lines[0].value(u"id"_s), QJsonValue(u"acme/paint"_s));
  EXPECT_EQ(lines[0].value(u"model"_s)[u"hasPrompt"_s], QJsonValue(true));
  const auto no = linesOf(refused().text());
  ASSERT_EQ(no.size(), 1u);
  EXPECT_EQ(no[0], (QJsonObject{{u"file"_s, u"a.json"_s},
                                {u"id"_s, u"acme/paint"_s},
                                {u"refused"_s, u"acme/paint needs inputs Sorvan cannot supply yet: mask_url."_s},
                                {u"missing"_s, QJsonArray{u"mask_url"_s}}}));
}

TEST(SchemaLines, TellEachRowOfACataloguePage) {
  const QByteArray page = R"({"models":[{"endpoint_id":"acme/paint","metadata":{"display_name":"Paint"},"openapi":)" +
                          refused().text() + R"(},{"endpoint_id":"a/gone","openapi":{"error":{}}},)" +
                          R"({"endpoint_id":"a/none"},5]})";
  const auto lines = linesOf(page);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0].value(u"refused"_s), QJsonValue(u"Paint needs inputs Sorvan cannot supply yet: mask_url."_s));
  EXPECT_EQ(lines[1].value(u"id"_s), QJsonValue(u"a/gone"_s));
  EXPECT_EQ(lines[1].value(u"refused"_s),
            QJsonValue(u"The model provider has not published usable settings for a/gone."_s));
  EXPECT_EQ(lines[2].value(u"refused"_s), QJsonValue(u"Invalid provider response."_s));
}

TEST(SchemaLines, ReadADocumentOfAPageAsDeepAsOneByItself) {
  MadeSchema deep = accepted();
  deep.properties = R"({"prompt":{"type":"string"},"x":)" + QByteArray(194, '[') + QByteArray(194, ']') + "}";
  EXPECT_TRUE(linesOf(deep.text()).at(0).contains(u"model"_s));
  const auto lines = linesOf(R"({"models":[{"endpoint_id":"acme/paint","openapi":)" + deep.text() + "}]}");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].contains(u"model"_s));
}

TEST(SchemaLines, TellWhatIsNoDocument) {
  const auto lines = linesOf("half a d");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].value(u"refused"_s), QJsonValue(u"Invalid provider response."_s));
}

}  // namespace
}  // namespace sorvan::catalogue
