// Models that change pictures by instruction.
#include "entry.h"

namespace sandbox {

namespace {

const char* const kind = "image-to-image";

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

json::object pictureText() {
  json::object element;
  element["type"] = "string";
  return element;
}

json::object markedPictureText() {
  json::object element = pictureText();
  element["_fal_ui_field"] = "image";
  return element;
}

Field pictures() {
  return listOfTexts("image_urls").with("title", "Image URLs").about("The URLs of the images to edit.").required();
}

Field pictureFormat(const char* start) { return oneOf("output_format", {"jpeg", "png", "webp"}, start); }

json::object pixels(int width, int height) {
  json::object size;
  size["height"] = height;
  size["width"] = width;
  return size;
}

Sheet gptSunburstEdit() {
  const Words sizes{"auto", "square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3", "landscape_16_9"};
  return {.input = {prompt().with("minLength", 2), pictures().with("maxItems", 16),
                    text("mask_url").with("_fal_ui_field", "image_mask").orNull(), imageSize(sizes, "auto"),
                    oneOf("quality", {"auto", "low", "medium", "high"}, "high"), pictureCount(4), pictureFormat("png"),
                    syncMode()},
          .output = picturesOut()};
}

Sheet gptFlareEdit() {
  return {
      .input = {prompt().with("minLength", 2), pictures().with("items", markedPictureText()),
                oneOf("image_size", {"auto", "1024x1024", "1536x1024", "1024x1536"}, "auto"),
                oneOf("quality", {"auto", "low", "medium", "high"}, "medium"),
                oneOf("input_fidelity", {"low", "high"}, "high"), pictureCount(4), pictureFormat("png"), syncMode()},
      .output = picturesOut()};
}

std::vector<Field> bananaFields() {
  return {prompt().with("minLength", 3).with("maxLength", 50000),
          pictureCount(4),
          seed(),
          pictureFormat("png"),
          oneOf("safety_tolerance", {"1", "2", "3", "4", "5", "6"}, "4"),
          syncMode(),
          pictures().with("examples",
                          json::array{json::value(json::array{"https://v3.fal.media/files/rabbit/edit-input.png"})}),
          text("system_prompt").with("maxLength", 50000).startingWith(""),
          flag("limit_generations", true),
          flag("enable_web_search", false)};
}

Field ratios(Words words) { return oneOf("aspect_ratio", words, "auto"); }

Sheet banana2Edit() {
  Sheet sheet{.input = bananaFields(), .output = picturesOut()};
  sheet.input.push_back(ratios({"auto", "21:9", "16:9", "3:2", "4:3", "5:4", "1:1", "4:5", "3:4", "2:3", "9:16", "4:1",
                                "1:4", "8:1", "1:8"})
                            .orNull());
  sheet.input.push_back(oneOf("resolution", {"0.5K", "1K", "2K", "4K"}, "1K"));
  sheet.input.push_back(oneOf("thinking_level", {"minimal", "high"}, nullptr).orNull());
  return sheet;
}

Sheet bananaProEdit() {
  Sheet sheet{.input = bananaFields(), .output = picturesOut(), .inputInParts = true};
  sheet.input.push_back(ratios({"auto", "21:9", "16:9", "3:2", "4:3", "5:4", "1:1", "4:5", "3:4", "2:3", "9:16"}));
  sheet.input.push_back(oneOf("resolution", {"1K", "2K", "4K"}, "1K"));
  return sheet;
}

Sheet grokEdit() {
  return {
      .input = {prompt().with("maxLength", 8000), pictures().with("maxItems", 3).with("max_file_size", 10485760),
                oneOf("aspect_ratio", {"auto", "16:9", "4:3", "3:2", "1:1", "2:3", "3:4", "9:16"}, nullptr).orNull(),
                oneOf("resolution", {"1k", "2k"}, "1k"), pictureCount(4), pictureFormat("jpeg"), syncMode()},
      .output = picturesOut("Image")};
}

Sheet seedreamProEdit() {
  return {.input = {prompt(), pictures().with("maxItems", 10).with("minItems", 1),
                    imageSize({"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3",
                               "landscape_16_9", "auto_2K", "auto_4K"},
                              pixels(2048, 2048)),
                    pictureCount(6), whole("max_images", 1, 6, 1), seed(), syncMode(), safetyChecker()},
          .output = seededPicturesOut("Image")};
}

Sheet flux3Edit() {
  return {.input = {prompt().behindAllOf("Instruction"), pictures().behindReference("ImageList"),
                    imageSize({"square_hd", "square", "square_uhd", "portrait_4_3", "portrait_16_9", "landscape_4_3",
                               "landscape_16_9"},
                              json::value())
                        .without("default")
                        .orNull(),
                    seed(), real("guidance_scale", 1, 20, 2.5), pictureCount(4), safetyChecker(),
                    oneOf("output_format", {"jpeg", "png"}, "jpeg")},
          .output = fluxPicturesOut()};
}

Sheet seedreamFlashEdit() {
  return {
      .input = {prompt(), pictures().orNull(),
                imageSize({"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3", "landscape_16_9",
                           "auto_2K"},
                          "auto_2K"),
                pictureCount(6).without("maximum"), seed().with("maximum", 2147483647), syncMode(), safetyChecker()},
      .output = seededPicturesOut("Image")};
}

Sheet gptImage15Edit() {
  return {.input = {prompt().with("minLength", 2), pictures(),
                    oneOf("image_size", {"auto", "1024x1024", "1536x1024", "1024x1536"}, "auto"),
                    oneOf("background", {"auto", "transparent", "opaque"}, "auto"),
                    oneOf("quality", {"low", "medium", "high"}, "high"), text("mask_image_url").orNull(),
                    pictureCount(4), pictureFormat("png"), syncMode()},
          .output = picturesOut(),
          .aboutInput = "The request of an edit."};
}

Sheet gptImageMiniEdit() {
  return {.input = {prompt().with("minLength", 2), pictures(),
                    oneOf("image_size", {"auto", "1024x1024", "1536x1024", "1024x1536"}, "auto"),
                    oneOf("quality", {"auto", "low", "medium", "high"}, nullptr).required(), pictureCount(4),
                    pictureFormat("png").required(), syncMode()},
          .output = picturesOut(),
          .inputByTwoSteps = true};
}

}  // namespace

Entries editEntries() {
  return {{"openai/gpt-image-2.5/sunburst/edit", "GPT Image 2.5 Sunburst Edit", kind, "Tightly scoped edits.",
           gptSunburstEdit, price(1, u"units")},
          {"openai/gpt-image-2.5/flare/edit", "GPT Image 2.5 Flare Edit", kind, "Fast edits for everyday work.",
           gptFlareEdit, price(1, u"units")},
          {"fal-ai/nano-banana-2/edit",
           "Nano Banana 2",
           kind,
           "Fast edits with several references.",
           banana2Edit,
           {},
           {},
           {"fast"}},
          {"fal-ai/nano-banana-pro/edit", "Nano Banana Pro Edit", kind, "Careful edits that keep text and faces.",
           bananaProEdit, price(0.15, u"images")},
          {"xai/grok-imagine-image/v2.0/edit", "Grok Imagine Image 2.0 Edit", kind, "Bold edits, made quickly.",
           grokEdit, price(0.022, u"image")},
          {"bytedance/seedream/v5/pro/edit", "Seedream 5 Pro Edit", kind, "Large, detailed edits.", seedreamProEdit,
           price(0.04, u"images")},
          {"blackforestlabs/flux-3/edit-image", "FLUX 3 Edit Image", kind, "Edits by instruction.", flux3Edit,
           price(0.03, u"processed megapixels")},
          {"bytedance/seedream/v5/flash/edit", "Seedream 5 Flash Edit", kind, "Quick edits at low cost.",
           seedreamFlashEdit, price(0.02, u"images")},
          {"fal-ai/gpt-image-1.5/edit", "GPT Image 1.5 Edit", kind, "Dependable edits by instruction.", gptImage15Edit,
           price(1, u"units")},
          {"fal-ai/gpt-image-1-mini/edit", "GPT Image 1 Mini Edit", kind, "Simple edits at low cost.", gptImageMiniEdit,
           price(0.01, u"1m tokens")}};
}

}  // namespace sandbox
