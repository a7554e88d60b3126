// Every input is held against the published document of its endpoint; what it forbids is answered as a 422.
#include <gtest/gtest.h>

#include <QFile>

#include "sandbox/client.h"
#include "sandbox/published.h"

namespace sorvan::test {
namespace {

using Input = QJsonObject;

QString text(const char16_t* words) { return QString::fromUtf16(words); }

class SandboxValidation : public testing::Test {
 protected:
  QJsonArray detailsOf(const char16_t* endpoint, const Input& input) {
    const WireAnswer result = client.run(text(endpoint), input);
    EXPECT_EQ(result.status, 422) << result.body.toStdString();
    EXPECT_EQ(result.header("x-fal-billable-units"), "0");
    return result.json().value(QStringLiteral("detail")).toArray();
  }
  // The only detail, of which place and type are told as "prompt string_too_short".
  QString onlyDetail(const char16_t* endpoint, const Input& input) {
    const QJsonArray details = detailsOf(endpoint, input);
    if (details.size() != 1) return QStringLiteral("%1 details").arg(details.size());
    detail = details.first().toObject();
    const QJsonArray place = detail.value(QStringLiteral("loc")).toArray();
    EXPECT_EQ(place.first().toString(), QStringLiteral("body"));
    return place.last().toVariant().toString() + QLatin1Char(' ') + detail.value(QStringLiteral("type")).toString();
  }
  QString message() const { return detail.value(QStringLiteral("msg")).toString(); }

  SandboxProcess sandbox;
  Client client{sandbox};
  QJsonObject detail;
};

TEST_F(SandboxValidation, AMissingFieldIsNamedWithTheWholeInput) {
  EXPECT_EQ(onlyDetail(u"fal-ai/flux/schnell", {{text(u"seed"), 1}}), QStringLiteral("prompt missing"));
  EXPECT_EQ(message(), QStringLiteral("Field required"));
  EXPECT_EQ(detail.value(QStringLiteral("input")).toObject(), (QJsonObject{{text(u"seed"), 1}}));
}

TEST_F(SandboxValidation, WhatIsRefusedIsNotedButNotCharged) {
  detailsOf(u"fal-ai/flux/schnell", {});
  ASSERT_EQ(sandbox.ledger().size(), 1);
  EXPECT_DOUBLE_EQ(sandbox.ledger().first().value(QStringLiteral("amount")).toDouble(-1), 0);
}

TEST_F(SandboxValidation, AWordOutsideOfTheListIsToldTheListOfWords) {
  const Input input = inputWith(text(u"a sea"), 1, {{text(u"resolution"), text(u"8K")}});
  EXPECT_EQ(onlyDetail(u"fal-ai/nano-banana-2", input), QStringLiteral("resolution literal_error"));
  EXPECT_EQ(message(), QStringLiteral("Input should be '0.5K', '1K', '2K' or '4K'"));
  EXPECT_EQ(detail[QStringLiteral("ctx")][QStringLiteral("expected")].toString(),
            QStringLiteral("'0.5K', '1K', '2K' or '4K'"));
}

TEST_F(SandboxValidation, NumbersAreHeldAgainstTheirBounds) {
  EXPECT_EQ(onlyDetail(u"fal-ai/flux/schnell", inputWith(text(u"a sea"), 1, {{text(u"num_images"), 9}})),
            QStringLiteral("num_images less_than_equal"));
  EXPECT_EQ(message(), QStringLiteral("Input should be less than or equal to 4"));
  EXPECT_EQ(detail[QStringLiteral("ctx")][QStringLiteral("le")].toInt(), 4);
  EXPECT_EQ(
      onlyDetail(u"blackforestlabs/flux-3/text-to-image", inputWith(text(u"a sea"), 1, {{text(u"guidance_scale"), 0}})),
      QStringLiteral("guidance_scale greater_than"));
}

TEST_F(SandboxValidation, ANumberWrittenAsTextIsNoNumber) {
  EXPECT_EQ(
      onlyDetail(u"alibaba/wan-3.0/text-to-video", inputWith(text(u"a sea"), 1, {{text(u"duration"), text(u"5")}})),
      QStringLiteral("duration int_type"));
  EXPECT_EQ(onlyDetail(u"minimax/h3-max/text-to-video", {{text(u"prompt"), text(u"a sea")}, {text(u"duration"), 6}}),
            QStringLiteral("duration string_type"));
  EXPECT_EQ(onlyDetail(u"fal-ai/flux/schnell", inputWith(text(u"a sea"), 1, {{text(u"num_images"), 1.5}})),
            QStringLiteral("num_images int_type"));
}

TEST_F(SandboxValidation, ListsAreHeldAgainstTheirLengthAndTheirElements) {
  QJsonArray many;
  for (int i = 0; i < 4; ++i) many.append(text(u"https://v3.fal.media/files/a.png"));
  EXPECT_EQ(
      onlyDetail(u"xai/grok-imagine-image/v2.0/edit", {{text(u"prompt"), text(u"red")}, {text(u"image_urls"), many}}),
      QStringLiteral("image_urls too_long"));
  EXPECT_EQ(
      onlyDetail(u"fal-ai/gpt-image-1.5/edit", {{text(u"prompt"), text(u"red")}, {text(u"image_urls"), QJsonArray{7}}}),
      QStringLiteral("0 string_type"));
}

TEST_F(SandboxValidation, EveryVariantSaysWhyItDoesNotFit) {
  const QJsonArray details =
      detailsOf(u"fal-ai/flux/schnell", inputWith(text(u"a sea"), 1, {{text(u"image_size"), text(u"enormous")}}));
  ASSERT_EQ(details.size(), 2);
  EXPECT_EQ(details[0][QStringLiteral("loc")].toArray().last().toString(), QStringLiteral("ImageSize"));
  EXPECT_TRUE(details[1][QStringLiteral("loc")].toArray().last().toString().startsWith(QStringLiteral("literal[")));
  EXPECT_EQ(details[1][QStringLiteral("type")].toString(), QStringLiteral("literal_error"));
}

TEST_F(SandboxValidation, AFieldInAnObjectIsNamedByItsPlace) {
  const QJsonObject size{{text(u"width"), 20000}, {text(u"height"), 100}};
  const QJsonArray details =
      detailsOf(u"fal-ai/flux/schnell", inputWith(text(u"a sea"), 1, {{text(u"image_size"), size}}));
  EXPECT_EQ(details[0][QStringLiteral("loc")].toArray(),
            (QJsonArray{text(u"body"), text(u"image_size"), text(u"ImageSize"), text(u"width")}));
}

TEST_F(SandboxValidation, NullPassesOnlyWhereItMay) {
  EXPECT_EQ(
      onlyDetail(u"fal-ai/flux/schnell", {{text(u"prompt"), text(u"a sea")}, {text(u"num_images"), QJsonValue()}}),
      QStringLiteral("num_images int_type"));
  const Input small{
      {text(u"prompt"), text(u"a sea")}, {text(u"seed"), QJsonValue()}, {text(u"image_size"), text(u"square")}};
  EXPECT_EQ(client.run(text(u"fal-ai/flux/schnell"), small).status, 200);
}

TEST_F(SandboxValidation, UnknownFieldsPassUnlessTheDocumentForbidsThem) {
  const Input input = inputWith(text(u"a sea"), 1, {{text(u"surprise"), 1}, {text(u"image_size"), text(u"square")}});
  EXPECT_EQ(client.run(text(u"fal-ai/flux/schnell"), input).status, 200);
  QString closed;
  for (const QJsonValue& row : client.get(QUrl(text(u"https://api.fal.ai/v1/models?category=text-to-image&limit=100")))
                                   .json()
                                   .value(QStringLiteral("models"))
                                   .toArray()) {
    const QString id = row[QStringLiteral("endpoint_id")].toString();
    if (QFile::exists(documentPath(id)) && publishedInput(id).contains(QStringLiteral("additionalProperties")))
      closed = id;
  }
  ASSERT_FALSE(closed.isEmpty());
  EXPECT_EQ(onlyDetail(closed.toStdU16String().c_str(), input), QStringLiteral("surprise extra_forbidden"));
}

TEST_F(SandboxValidation, LengthsOfTextsCountCharacters) {
  const Input input{{text(u"prompt"), text(u"x")}};
  EXPECT_EQ(onlyDetail(u"openai/gpt-image-2.5/sunburst/text-to-image", input),
            QStringLiteral("prompt string_too_short"));
  EXPECT_EQ(message(), QStringLiteral("String should have at least 2 characters"));
}

TEST_F(SandboxValidation, AgreesWithAnotherValidator) {
  const QString id = text(u"fal-ai/nano-banana-2/edit");
  const QJsonArray pictures{text(u"https://v3.fal.media/files/a.png")};
  const Input good{
      {text(u"prompt"), text(u"make it red")}, {text(u"image_urls"), pictures}, {text(u"seed"), QJsonValue()}};
  Input bad = good;
  bad.insert(text(u"aspect_ratio"), text(u"17:3"));
  EXPECT_TRUE(valueBreaches({{id, QStringLiteral("input"), good}}).isEmpty());
  EXPECT_EQ(valueBreaches({{id, QStringLiteral("input"), bad}}).size(), 1);
  EXPECT_EQ(onlyDetail(u"fal-ai/nano-banana-2/edit", bad), QStringLiteral("aspect_ratio literal_error"));
}

}  // namespace
}  // namespace sorvan::test
