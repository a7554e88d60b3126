// Many more models, made by rule: each form that published documents take, in each of the four main categories.
#include <array>

#include "entry.h"

namespace sandbox {

namespace {

enum class Base { Pictures, Edits, Clips, Motion };

Field* fieldNamed(Sheet& sheet, std::string_view name) {
  for (Field& field : sheet.input)
    if (field.name() == name) return &field;
  return nullptr;
}

void replace(Sheet& sheet, const Field& with) {
  if (Field* field = fieldNamed(sheet, with.name()))
    *field = with;
  else
    sheet.input.push_back(with);
}

template <class Change>
void change(Sheet& sheet, std::string_view name, Change how) {
  if (Field* field = fieldNamed(sheet, name)) *field = how(*field);
}

Field ratios() { return oneOf("aspect_ratio", {"auto", "16:9", "4:3", "3:2", "1:1", "2:3", "3:4", "9:16"}, "auto"); }
Field lengths() { return oneOf("duration", {"5", "10"}, "5"); }
const Words presets{"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3", "landscape_16_9"};

Sheet pictures() {
  return {.input = {prompt(), imageSize(presets, "landscape_4_3"), pictureCount(4), seed(), safetyChecker(),
                    oneOf("output_format", {"jpeg", "png"}, "jpeg")},
          .output = seededPicturesOut("Image")};
}

Sheet edits() {
  return {.input = {prompt(), listOfTexts("image_urls").required(), ratios(), oneOf("resolution", {"1K", "2K"}, "1K"),
                    pictureCount(4), seed(), oneOf("output_format", {"jpeg", "png", "webp"}, "png")},
          .output = picturesOut()};
}

Sheet clips() {
  return {.input = {prompt(), ratios(), lengths(), oneOf("resolution", {"240p", "480p", "720p", "1080p"}, "720p"),
                    flag("generate_audio", true), seed()},
          .output = seededClipOut("VideoFile")};
}

Sheet motion() {
  Sheet sheet = clips();
  sheet.input.insert(sheet.input.begin() + 1, text("image_url").required());
  sheet.input.push_back(text("end_image_url").orNull());
  return sheet;
}

Sheet sheetOf(Base base) {
  switch (base) {
    case Base::Pictures:
      return pictures();
    case Base::Edits:
      return edits();
    case Base::Clips:
      return clips();
    case Base::Motion:
      return motion();
  }
  return {};
}

using Form = void (*)(Sheet&);

json::object square() { return json::object{{"height", 1024}, {"width", 1024}}; }

// 1. Forms of the size.
constexpr std::array<Form, 12> sizeForms{
    [](Sheet& sheet) { replace(sheet, imageSize(presets, square())); },
    [](Sheet& sheet) { replace(sheet, object("image_size", "ImageSize").startingWith(square())); },
    [](Sheet& sheet) { replace(sheet, imageSize(presets, square()).orNull()); },
    [](Sheet& sheet) { replace(sheet, oneOf("image_size", presets, "square_hd")); },
    [](Sheet& sheet) {
      replace(sheet, oneOf("image_size", {"1024x1024", "1536x1024", "1024x1536", "auto"}, "auto"));
    },
    [](Sheet& sheet) {
      replace(sheet, oneOf("image_size", {"1024x1024", "1536x1024"}, "1024x1024").orNullByOneOf());
    },
    [](Sheet& sheet) { replace(sheet, ratios().without("enum")); },
    [](Sheet& sheet) { replace(sheet, only("aspect_ratio", "16:9")); },
    [](Sheet& sheet) { replace(sheet, ratios().orNull()); },
    [](Sheet& sheet) { replace(sheet, ratios().behindReference("AspectRatio")); },
    [](Sheet& sheet) { replace(sheet, ratios().required()); },
    [](Sheet& sheet) {
      replace(sheet, oneOf("aspect_ratio", {"adaptive", "1:1", "16:9", "9:16"}, "adaptive").behindAllOf("Shape"));
    }};

// 2. Forms of numbers and choices.
constexpr std::array<Form, 14> valueForms{
    [](Sheet& sheet) {
      replace(sheet, oneOf("duration", json::array{3, 4, 5}, 5));
    },
    [](Sheet& sheet) {
      replace(sheet, oneOf("duration", {"4s", "6s", "8s"}, "8s"));
    },
    [](Sheet& sheet) { replace(sheet, whole("duration", 1, 15, 5)); },
    [](Sheet& sheet) { replace(sheet, real("duration", 0.5, 20, 5)); },
    [](Sheet& sheet) { replace(sheet, whole("duration", 2, 12, 4).orNullFirst()); },
    [](Sheet& sheet) { replace(sheet, only("duration", "8s")); },
    [](Sheet& sheet) {
      replace(sheet, oneOf("duration", json::array{"auto", 5, 10}, "auto").without("type"));
    },
    [](Sheet& sheet) { replace(sheet, lengths().nullAmongValues()); },
    [](Sheet& sheet) { replace(sheet, whole("duration", 4, 16, 4).with("multipleOf", 4)); },
    [](Sheet& sheet) { replace(sheet, lengths().behindTwoReferences("Length").required()); },
    [](Sheet& sheet) {
      change(sheet, "resolution", [](const Field& field) { return field.behindNullableReference("Sharpness"); });
    },
    [](Sheet& sheet) {
      replace(sheet, oneOf("quality", {"low", "medium", "high"}, "medium").required());
    },
    [](Sheet& sheet) { change(sheet, "seed", [](const Field& field) { return field.required(); }); },
    [](Sheet& sheet) { change(sheet, "num_images", [](const Field& field) { return field.without("maximum"); }); }};

// 3. Forms of the words and of the pictures that go in.
constexpr std::array<Form, 12> inputForms{
    [](Sheet& sheet) { replace(sheet, prompt().with("minLength", 1).with("maxLength", 500)); },
    [](Sheet& sheet) { replace(sheet, text("prompt").orNull()); },
    [](Sheet& sheet) { replace(sheet, prompt().markedNullable()); },
    [](Sheet& sheet) {
      change(sheet, "image_urls", [](const Field& field) { return field.with("maxItems", 4).with("minItems", 1); });
    },
    [](Sheet& sheet) { change(sheet, "image_urls", [](const Field& field) { return field.orNull(); }); },
    [](Sheet& sheet) {
      change(sheet, "image_url",
             [](const Field& field) { return field.with("format", "uri").with("max_file_size", 5242880); });
    },
    [](Sheet& sheet) {
      change(sheet, "image_url", [](const Field& field) { return field.behindReference("Picture"); });
    },
    [](Sheet& sheet) { change(sheet, "end_image_url", [](const Field&) { return text("end_image_url").required(); }); },
    [](Sheet& sheet) {
      change(sheet, "image_url",
             [](const Field&) { return text("style_image_url").with("_fal_ui_field", "image").required(); });
    },
    [](Sheet& sheet) { sheet.input.push_back(objects("loras", "LoraWeight").startingWith(json::array())); },
    [](Sheet& sheet) { sheet.input.push_back(text("mask_url").orNull()); },
    [](Sheet& sheet) {
      sheet.input.push_back(text("user_id").with("format", "uuid4").orNull().with("deprecated", true));
    }};

// 4. Forms of the document as a whole.
constexpr std::array<Form, 8> documentForms{
    [](Sheet& sheet) { sheet.saysOrder = false; },
    [](Sheet& sheet) { sheet.inputInParts = true; },
    [](Sheet& sheet) { sheet.inputByTwoSteps = true; },
    [](Sheet& sheet) { sheet.closed = true; },
    [](Sheet& sheet) { sheet.aboutInput = "What the model takes."; },
    [](Sheet& sheet) { sheet.input.push_back(text("webhook_secret").required()); },
    [](Sheet& sheet) { sheet.input.push_back(objects("keyframes", "Keyframe").required()); },
    [](Sheet& sheet) { sheet.undescribed = "project_id"; }};

std::vector<Form> allForms() {
  std::vector<Form> forms;
  forms.insert(forms.end(), sizeForms.begin(), sizeForms.end());
  forms.insert(forms.end(), valueForms.begin(), valueForms.end());
  forms.insert(forms.end(), inputForms.begin(), inputForms.end());
  forms.insert(forms.end(), documentForms.begin(), documentForms.end());
  return forms;
}

struct Maker {
  const char* owner;
  const char* family;
  const char* name;
};
constexpr std::array makers{Maker{"northlight", "aurora", "Aurora"}, Maker{"tessera", "mosaic", "Mosaic"},
                            Maker{"halcyon-labs", "tide", "Tide"},   Maker{"fal-ai", "lumen", "Lumen"},
                            Maker{"inkwell", "nib", "Nib"},          Maker{"fal-ai", "sparrow", "Sparrow"},
                            Maker{"meridian", "compass", "Compass"}, Maker{"kiln", "ember", "Ember"}};

constexpr std::array units{u"images", u"seconds", u"units", u"megapixels", u"generations", u"video", u"1000 tokens"};
constexpr std::array currencies{u"USD", u"USD", u"USD", u"EUR", u"USD", u"JPY"};

Standing standingOf(std::size_t number) {
  if (number % 11 == 5) return Standing::Research;
  if (number % 17 == 3) return Standing::Deprecated;
  if (number % 29 == 7) return Standing::Unlisted;
  return number % 23 == 9 ? Standing::Private : Standing::Usual;
}

// Each form has a maker and a version of its own, with one endpoint in each category.
Entry entryOf(std::size_t number, Base base, const std::string& category, Form form) {
  const std::size_t family = number / 4;
  const Maker& maker = makers[family % makers.size()];
  const std::string version = std::to_string(1 + family / makers.size());
  Entry entry;
  entry.id = std::string(maker.owner) + '/' + maker.family + "-v" + version + '/' + category;
  entry.name = std::string(maker.name) + ' ' + version;
  entry.category = category;
  entry.about = entry.name + " of " + maker.owner + ", for " + category + ".";
  entry.sheet = [base, form] {
    Sheet sheet = sheetOf(base);
    form(sheet);
    return sheet;
  };
  entry.price = Price{0.01 * double(1 + number % 20), QString::fromUtf16(units[number % units.size()]),
                      QString::fromUtf16(currencies[number % currencies.size()])};
  entry.standing = standingOf(number);
  return entry;
}

}  // namespace

Entries furtherEntries() {
  const std::array<std::pair<Base, std::string>, 4> bases{{{Base::Pictures, "text-to-image"},
                                                           {Base::Edits, "image-to-image"},
                                                           {Base::Clips, "text-to-video"},
                                                           {Base::Motion, "image-to-video"}}};
  Entries all;
  for (const Form form : allForms())
    for (const auto& [base, category] : bases) all.push_back(entryOf(all.size(), base, category, form));
  return all;
}

}  // namespace sandbox
