#include "document_types.h"

#include <algorithm>
#include <functional>
#include <map>

#include "field.h"

namespace sandbox {

namespace {

using Fields = std::vector<Field>;

Field typed(const char* name, const char* type) {
  json::object schema;
  schema["type"] = type;
  return {name, std::move(schema)};
}

Field size(const char* name) {
  return typed(name, "integer").startingWith(512).with("exclusiveMinimum", 0).with("maximum", 14142);
}

Field whole(const char* name) { return typed(name, "integer"); }
Field number(const char* name) { return typed(name, "number"); }

Fields fileFields() {
  return {text("url").about("The URL where the file can be downloaded from.").required(),
          text("content_type").orNull().with("examples", json::array{"image/png"}),
          text("file_name").orNull().about("The name of the file."),
          whole("file_size").orNull().about("The size of the file in bytes.")};
}

Fields fileWith(Fields more) {
  Fields fields = fileFields();
  fields.insert(fields.end(), more.begin(), more.end());
  return fields;
}

Fields imageFields() {
  return {text("url").required(), whole("width").required(), whole("height").required(),
          text("content_type").orNull().startingWith("image/jpeg")};
}

Fields videoFields() {
  return fileWith({whole("width").orNull(), whole("height").orNull(), number("fps").orNull(),
                   number("duration").orNull(), whole("num_frames").orNull()});
}

Fields audioFields() {
  return fileWith({number("duration").orNull(), whole("sample_rate").orNull(), whole("channels").orNull(),
                   text("bitrate").orNull()});
}

Fields colourFields() {
  return {sandbox::whole("r", 0, 255, 0), sandbox::whole("g", 0, 255, 0), sandbox::whole("b", 0, 255, 0)};
}

Fields loraFields() {
  return {text("path").about("URL or the path to the LoRA weights.").required(), real("scale", 0, 4, 1)};
}

Fields pointFields() {
  return {whole("x").orNull(), whole("y").orNull(), typed("label", "integer").with("enum", json::array{0, 1}).orNull()};
}

Fields boxFields() {
  return {whole("x_min").orNull(), whole("y_min").orNull(), whole("x_max").orNull(), whole("y_max").orNull()};
}

Fields shotFields() {
  return {text("prompt").required(), oneOf("duration", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}, "5")};
}

Fields elementFields() {
  return {text("frontal_image_url").orNull(), listOfTexts("reference_image_urls").orNull(), text("video_url").orNull(),
          text("voice_id").orNull()};
}

Fields voiceFields() {
  return {text("voice_id").startingWith("Wise_Woman"),
          real("speed", 0.5, 2, 1),
          real("vol", 0.01, 10, 1),
          sandbox::whole("pitch", -12, 12, 0),
          oneOf("emotion", {"happy", "sad", "angry", "fearful", "disgusted", "surprised", "neutral"}, nullptr).orNull(),
          flag("english_normalization", false)};
}

Fields soundFormatFields() {
  return {oneOf("codec", {"mp3", "wav", "pcm", "mulaw", "alaw"}, "mp3"),
          oneOf("sample_rate", json::array{8000, 16000, 22050, 24000, 44100, 48000}, 24000),
          oneOf("bit_rate", json::array{32000, 64000, 96000, 128000, 192000}, json::value()).orNull()};
}

Fields lineFields() {
  return {text("text").about("What is spoken.").required(), text("voice").about("Who speaks.").required()};
}

Fields paletteFields() {
  return {objects("members", "ColorPaletteMember").orNull(),
          oneOf("name", {"EMBER", "FRESH", "JUNGLE", "MAGIC", "MELON", "MOSAIC", "PASTEL", "ULTRAMARINE"}, nullptr)
              .orNull()};
}

Fields paletteMemberFields() {
  return {object("rgb", "RGBColor").required(), real("color_weight", 0.05, 1, 0.5).orNull()};
}

using Maker = std::function<Fields()>;

const std::map<std::string, Maker, std::less<>>& makers() {
  static const std::map<std::string, Maker, std::less<>> all{
      {"File", fileFields},
      {"Image", imageFields},
      {"ImageFile",
       [] {
         return fileWith({whole("width").orNull(), whole("height").orNull()});
       }},
      {"VideoFile", videoFields},
      {"AudioFile", audioFields},
      {"ImageSize",
       [] {
         return Fields{size("width"), size("height")};
       }},
      {"RGBColor", colourFields},
      {"LoraWeight", loraFields},
      {"PointPrompt", pointFields},
      {"BoxPrompt", boxFields},
      {"MultiPromptElement", shotFields},
      {"ComboElementInput", elementFields},
      {"VoiceSetting", voiceFields},
      {"SoundFormat", soundFormatFields},
      {"DialogueBlock", lineFields},
      {"ColorPalette", paletteFields},
      {"ColorPaletteMember", paletteMemberFields}};
  return all;
}

}  // namespace

json::object objectOfFields(std::string_view title, const std::vector<Field>& fields, bool saysOrder) {
  json::array order;
  json::array required;
  std::vector<const Field*> properties;
  for (const Field& field : fields) {
    order.emplace_back(field.name());
    if (field.isRequired()) required.emplace_back(field.name());
    properties.push_back(&field);
  }
  // Published documents keep no order of properties, except those that do not say which one to show.
  if (saysOrder)
    std::sort(properties.begin(), properties.end(), [](const Field* a, const Field* b) {
      return std::hash<std::string>()(a->name()) < std::hash<std::string>()(b->name());
    });
  json::object schema;
  schema["title"] = title;
  schema["type"] = "object";
  if (saysOrder) schema["x-fal-order-properties"] = std::move(order);
  json::object& described = schema["properties"].emplace_object();
  for (const Field* field : properties) described[field->name()] = field->schema();
  if (!required.empty()) schema["required"] = std::move(required);
  return schema;
}

std::optional<json::object> sharedType(std::string_view name) {
  const auto maker = makers().find(name);
  if (maker == makers().end()) return std::nullopt;
  return objectOfFields(name, maker->second());
}

}  // namespace sandbox
