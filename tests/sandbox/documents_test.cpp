// The published documents: their form, and the forms that their fields take.
#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>
#include <QSet>
#include <functional>

#include "sandbox/client.h"
#include "sandbox/published.h"

namespace sorvan::test {
namespace {

using Property = QJsonObject;

QJsonArray listIn(const QJsonObject& object, const char16_t* key) {
  return object.value(QString::fromUtf16(key)).toArray();
}

bool says(const Property& property, const char16_t* keyword) { return property.contains(QString::fromUtf16(keyword)); }

QString textIn(const QJsonObject& object, const char16_t* key) {
  return object.value(QString::fromUtf16(key)).toString();
}

bool isNull(const QJsonValue& variant) { return variant[QStringLiteral("type")] == QStringLiteral("null"); }

// The first variant that is not null.
QJsonObject variantOf(const Property& property, const char16_t* keyword = u"anyOf") {
  for (const QJsonValue& each : listIn(property, keyword))
    if (!isNull(each)) return each.toObject();
  return {};
}

bool hasNull(const Property& property, const char16_t* keyword = u"anyOf") {
  const QJsonArray all = listIn(property, keyword);
  return std::any_of(all.begin(), all.end(), isNull);
}

bool offers(const Property& property, const char16_t* value) {
  QJsonArray values = listIn(property, u"enum");
  for (const QJsonValue& variant : listIn(property, u"anyOf"))
    for (const QJsonValue& each : listIn(variant.toObject(), u"enum")) values.append(each);
  return values.contains(QString::fromUtf16(value));
}

bool refersTo(const QJsonObject& schema, const char16_t* type) {
  return textIn(schema, u"$ref") == QStringLiteral("#/components/schemas/") + QString::fromUtf16(type);
}

struct Form {
  const char* name;
  const char16_t* id;
  const char16_t* field;
  std::function<bool(const Property&)> stands;
};

std::vector<Form> sizeForms() {
  return {{"preset words with auto", u"openai/gpt-image-2.5/sunburst/text-to-image", u"image_size",
           [](const Property& p) { return offers(p, u"auto") && p[QStringLiteral("anyOf")].toArray().size() == 2; }},
          {"a reference with what stands beside it", u"openai/gpt-image-2.5/flare/text-to-image", u"image_size",
           [](const Property& p) { return refersTo(p, u"ImageSize") && says(p, u"default"); }},
          {"a size in pixels as default", u"bytedance/seedream/v5/pro/text-to-image", u"image_size",
           [](const Property& p) { return p[QStringLiteral("default")].isObject() && offers(p, u"auto_4K"); }},
          {"an object of width and height", u"bytedance/seedream/v5/flash/text-to-image", u"image_size",
           [](const Property& p) { return p[QStringLiteral("properties")].toObject().size() == 2; }},
          {"allOf of one reference", u"blackforestlabs/flux-3/text-to-image", u"image_size",
           [](const Property& p) { return listIn(p, u"allOf").size() == 1 && !says(p, u"anyOf"); }},
          {"three variants, one of them null", u"ideogram/v4.5", u"image_size",
           [](const Property& p) { return listIn(p, u"anyOf").size() == 3 && hasNull(p); }},
          {"sizes as texts", u"fal-ai/gpt-image-1.5", u"image_size",
           [](const Property& p) { return offers(p, u"1536x1024") && !says(p, u"anyOf"); }},
          {"null before the sizes", u"fal-ai/gpt-image-1-mini", u"image_size",
           [](const Property& p) { return isNull(listIn(p, u"anyOf").first()); }},
          {"preset words with a word as default", u"fal-ai/flux/schnell", u"image_size",
           [](const Property& p) { return textIn(p, u"default") == QStringLiteral("landscape_4_3"); }},
          {"square_uhd, and no default", u"blackforestlabs/flux-3/edit-image", u"image_size",
           [](const Property& p) { return offers(p, u"square_uhd") && !says(p, u"default"); }},
          {"ratios or null", u"fal-ai/nano-banana-2", u"aspect_ratio",
           [](const Property& p) { return hasNull(p) && offers(p, u"8:1"); }},
          {"ratios alone", u"fal-ai/nano-banana-pro", u"aspect_ratio",
           [](const Property& p) { return offers(p, u"1:1") && !says(p, u"anyOf"); }},
          {"a ratio as any text", u"blackforestlabs/flux-3/text-to-video", u"aspect_ratio",
           [](const Property& p) { return textIn(p, u"type") == QStringLiteral("string") && !says(p, u"enum"); }},
          {"a ratio that is one constant", u"xai/grok-imagine-video/v1.5/lite/text-to-video", u"aspect_ratio",
           [](const Property& p) { return says(p, u"const") && !says(p, u"type"); }}};
}

std::vector<Form> lengthForms() {
  return {
      {"whole numbers to choose from", u"alibaba/wan-3.0/text-to-video", u"duration",
       [](const Property& p) { return listIn(p, u"enum").contains(QJsonValue(10)); }},
      {"lengths with auto", u"bytedance/seedance-2.5/text-to-video", u"duration",
       [](const Property& p) { return offers(p, u"auto") && offers(p, u"15"); }},
      {"lengths as texts", u"minimax/h3-max/text-to-video", u"duration",
       [](const Property& p) { return listIn(p, u"enum").size() == 2; }},
      {"a reference or null", u"minimax/h3-max-turbo/text-to-video", u"duration",
       [](const Property& p) { return refersTo(variantOf(p), u"ClipLength") && hasNull(p); }},
      {"a range or null", u"blackforestlabs/flux-3/image-to-video", u"duration",
       [](const Property& p) { return says(variantOf(p), u"maximum") && hasNull(p); }},
      {"texts and numbers in one list", u"google/gemini-omni-flash/v1.1/text-to-video", u"duration",
       [](const Property& p) { return listIn(p, u"enum").first().isString() && listIn(p, u"enum").last().isDouble(); }},
      {"lengths with their unit", u"fal-ai/veo3.1", u"duration", [](const Property& p) { return offers(p, u"8s"); }},
      {"a length that is one constant", u"fal-ai/veo3.1/fast", u"duration",
       [](const Property& p) { return textIn(p, u"const") == QStringLiteral("8s"); }},
      {"a range of whole numbers", u"xai/grok-imagine-video/v1.5/text-to-video", u"duration",
       [](const Property& p) { return textIn(p, u"type") == QStringLiteral("integer") && says(p, u"minimum"); }},
      {"a range of numbers", u"xai/grok-imagine-video/v1.5/lite/image-to-video", u"duration",
       [](const Property& p) { return textIn(p, u"type") == QStringLiteral("number") && says(p, u"minimum"); }},
      {"half seconds, or null", u"fal-ai/elevenlabs/sound-effects/v2", u"duration_seconds",
       [](const Property& p) { return variantOf(p)[QStringLiteral("minimum")].toDouble() == 0.5; }}};
}

std::vector<Form> inputForms() {
  return {
      {"a list of texts", u"fal-ai/gpt-image-1.5/edit", u"image_urls",
       [](const Property& p) { return p[QStringLiteral("items")].toObject().size() == 1; }},
      {"a list of marked texts", u"openai/gpt-image-2.5/flare/edit", u"image_urls",
       [](const Property& p) { return says(p[QStringLiteral("items")].toObject(), u"_fal_ui_field"); }},
      {"a list with a most and a fewest", u"bytedance/seedream/v5/pro/edit", u"image_urls",
       [](const Property& p) { return says(p, u"minItems") && says(p, u"maxItems"); }},
      {"a list or null", u"bytedance/seedream/v5/flash/edit", u"image_urls",
       [](const Property& p) { return hasNull(p) && says(variantOf(p), u"items"); }},
      {"a list with a most and a size of file", u"xai/grok-imagine-image/v2.0/edit", u"image_urls",
       [](const Property& p) { return says(p, u"max_file_size") && !says(p, u"minItems"); }},
      {"a picture with limits", u"fal-ai/kling-video/v3/pro/image-to-video", u"start_image_url",
       [](const Property& p) { return p[QStringLiteral("x-fal")].toObject().contains(QStringLiteral("min_width")); }},
      {"a mark in one variant", u"minimax/h3-max/image-to-video", u"first_frame_url",
       [](const Property& p) { return says(variantOf(p), u"ui"); }},
      {"a picture behind a reference", u"fal-ai/veo3.1/fast/image-to-video", u"image_url",
       [](const Property& p) { return refersTo(p, u"InputImage"); }},
      {"a picture with a format", u"bytedance/seedance-2.5/image-to-video", u"image_url",
       [](const Property& p) { return textIn(p, u"format") == QStringLiteral("uri"); }},
      {"a picture with pixels to fit", u"fal-ai/topaz/upscale/image", u"image_url",
       [](const Property& p) { return says(p, u"max_pixels"); }},
      {"a mask that may be left out", u"openai/gpt-image-2.5/sunburst/edit", u"mask_url",
       [](const Property& p) { return hasNull(p); }},
      {"an unusual name", u"google/gemini-omni-flash/v1.1/image-to-video", u"input_image_url",
       [](const Property& p) { return textIn(p, u"type") == QStringLiteral("string"); }},
      {"lists of other media", u"bytedance/seedance-2.5/reference-to-video", u"video_urls", [](const Property& p) {
         return textIn(p[QStringLiteral("items")].toObject(), u"_fal_ui_field") == QStringLiteral("video");
       }}};
}

std::vector<Form> valueForms() {
  return {{"a text between lengths", u"recraft/v4.1/flash/text-to-image", u"prompt",
           [](const Property& p) { return says(p, u"minLength") && says(p, u"maxLength"); }},
          {"oneOf", u"xai/grok-imagine-image/v2.0/text-to-image", u"resolution",
           [](const Property& p) { return hasNull(p, u"oneOf") && !variantOf(p, u"oneOf").isEmpty(); }},
          {"null, first of all, beside a text", u"minimax/h3-max-turbo/image-to-video", u"last_frame_url",
           [](const Property& p) { return isNull(listIn(p, u"anyOf").first()); }},
          {"a truth value or null", u"google/gemini-omni-flash/v1.1/image-to-video", u"generate_audio",
           [](const Property& p) { return hasNull(p) && textIn(variantOf(p), u"type") == QStringLiteral("boolean"); }},
          {"a constant word", u"fal-ai/kling-video/v3/pro/text-to-video", u"shot_type",
           [](const Property& p) { return says(p, u"const") && says(p, u"default"); }},
          {"an open lower bound", u"blackforestlabs/flux-3/text-to-image", u"guidance_scale",
           [](const Property& p) { return says(p, u"exclusiveMinimum"); }},
          {"a step", u"fal-ai/topaz/upscale/video", u"grain",
           [](const Property& p) { return says(variantOf(p), u"multipleOf"); }},
          {"a count without a most", u"bytedance/seedream/v5/flash/edit", u"num_images",
           [](const Property& p) { return says(p, u"minimum") && !says(p, u"maximum"); }},
          {"a list of objects", u"blackforestlabs/flux-3/text-to-image", u"loras",
           [](const Property& p) { return refersTo(p[QStringLiteral("items")].toObject(), u"LoraWeight"); }},
          {"an identity in a variant", u"recraft/v4.1/flash/text-to-image", u"style_id",
           [](const Property& p) { return textIn(variantOf(p), u"format") == QStringLiteral("uuid4"); }},
          {"a field that is going away", u"blackforestlabs/flux-3/image-to-video", u"image_url",
           [](const Property& p) { return says(p, u"deprecated"); }},
          {"nullable", u"bytedance/seedream/v5/flash/text-to-image", u"seed",
           [](const Property& p) { return p[QStringLiteral("nullable")].toBool(); }},
          {"null among the values", u"ideogram/v4.5", u"style",
           [](const Property& p) { return listIn(p, u"enum").contains(QJsonValue()); }},
          {"an object or null", u"ideogram/v4.5", u"color_palette",
           [](const Property& p) { return hasNull(p) && refersTo(variantOf(p), u"ColorPalette"); }}};
}

std::vector<Form> allForms() {
  std::vector<Form> all;
  for (const auto& part : {sizeForms(), lengthForms(), inputForms(), valueForms()})
    all.insert(all.end(), part.begin(), part.end());
  return all;
}

TEST(SandboxDocuments, HaveThePublishedFormAndDangleOnlyWhereTheyAreMeantTo) {
  QStringList breaches = formBreaches();
  breaches.removeIf([](const QString& sentence) {
    return sentence.startsWith(QStringLiteral("openrouter__router__openai")) ||
           sentence.contains(QStringLiteral("/Keyframe"));
  });
  EXPECT_TRUE(breaches.isEmpty()) << breaches.join(QLatin1Char('\n')).toStdString();
}

TEST(SandboxDocuments, AreHundreds) { EXPECT_GT(QDir(documentsFolder()).entryList(QDir::Files).size(), 250); }

TEST(SandboxDocuments, CarryMoreThanFortyFormsOfFields) {
  const std::vector<Form> forms = allForms();
  EXPECT_GE(forms.size(), 40U);
  for (const Form& form : forms) {
    const Property property = publishedProperty(QString::fromUtf16(form.id), QString::fromUtf16(form.field));
    EXPECT_TRUE(form.stands(property)) << form.name << ": " << QJsonDocument(property).toJson().toStdString();
  }
}

TEST(SandboxDocuments, CarryFortyFormsInModelsOfTheirOwn) {
  QSet<QString> ids;
  for (const Form& form : allForms()) ids.insert(QString::fromUtf16(form.id));
  EXPECT_GE(ids.size(), 40);
}

TEST(SandboxDocuments, DifferInMoreThanTheirFields) {
  EXPECT_FALSE(
      publishedInput(QStringLiteral("fal-ai/gpt-image-1-mini")).contains(QStringLiteral("x-fal-order-properties")));
  EXPECT_TRUE(publishedInput(QStringLiteral("fal-ai/nano-banana-pro/edit")).contains(QStringLiteral("allOf")));
  EXPECT_TRUE(publishedInput(QStringLiteral("fal-ai/gpt-image-1-mini/edit")).contains(QStringLiteral("$ref")));
  EXPECT_TRUE(publishedInput(QStringLiteral("fal-ai/gpt-image-1.5/edit")).contains(QStringLiteral("description")));
  const QJsonObject sharpness = publishedType(QStringLiteral("fal-ai/nano-banana-pro"), QStringLiteral("Resolution"));
  EXPECT_TRUE(sharpness.contains(QStringLiteral("$ref")));
}

TEST(SandboxDocuments, AreServedWithoutAKeyAsTheyAreWritten) {
  const SandboxProcess sandbox;
  const Client client(sandbox);
  const QString address = QStringLiteral("https://fal.ai/api/openapi/queue/openapi.json?endpoint_id=");
  const QString id = QStringLiteral("fal-ai/nano-banana-2/edit");
  const WireAnswer answer = client.get(QUrl(address + id), Client::Key::None);
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body.trimmed(), documentBytes(id).trimmed());
  EXPECT_EQ(client.get(QUrl(address + QStringLiteral("acme/none")), Client::Key::None).status, 404);
  EXPECT_EQ(client.get(QUrl(address + QStringLiteral("fal-ai/unread/text-to-image")), Client::Key::None).status, 404);
  EXPECT_EQ(sandbox.callCount(QStringLiteral("document")), 3);
}

}  // namespace
}  // namespace sorvan::test
