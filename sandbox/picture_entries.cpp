// Models that make pictures out of words.
#include "entry.h"

namespace sandbox {

namespace {

const char* const kind = "text-to-image";
const Words presets{"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3", "landscape_16_9"};

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

json::object pixels(int width, int height) {
  json::object size;
  size["height"] = height;
  size["width"] = width;
  return size;
}

Field pictureFormat(Words words, const char* start) { return oneOf("output_format", words, start); }

Field wideRatios(const char* start) {
  return oneOf(
      "aspect_ratio",
      {"auto", "21:9", "16:9", "3:2", "4:3", "5:4", "1:1", "4:5", "3:4", "2:3", "9:16", "4:1", "1:4", "8:1", "1:8"},
      start);
}

Sheet gptSunburst() {
  return {.input = {prompt().with("minLength", 2).with("maxLength", 32000),
                    imageSize({"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3",
                               "landscape_16_9", "auto"},
                              "landscape_4_3"),
                    oneOf("quality", {"auto", "low", "medium", "high"}, "high"), pictureCount(4),
                    pictureFormat({"jpeg", "png", "webp"}, "png"), syncMode()},
          .output = picturesOut()};
}

Sheet gptFlare() {
  return {.input = {prompt().with("minLength", 2).with("maxLength", 32000),
                    object("image_size", "ImageSize").about("The size of the image.").startingWith(pixels(1024, 1024)),
                    oneOf("quality", {"auto", "low", "medium", "high"}, "medium").behindReference("ImageQuality"),
                    pictureCount(4), pictureFormat({"jpeg", "png", "webp"}, "png"), syncMode()},
          .output = picturesOut()};
}

std::vector<Field> bananaFields() {
  return {prompt().with("minLength", 3).with("maxLength", 50000),
          pictureCount(4),
          seed(),
          pictureFormat({"jpeg", "png", "webp"}, "png"),
          oneOf("safety_tolerance", {"1", "2", "3", "4", "5", "6"}, "4"),
          syncMode(),
          text("system_prompt").with("maxLength", 50000).startingWith(""),
          flag("limit_generations", true),
          flag("enable_web_search", false)};
}

Sheet banana2() {
  Sheet sheet{.input = bananaFields(), .output = picturesOut()};
  sheet.input.push_back(wideRatios("auto").orNull());
  sheet.input.push_back(oneOf("resolution", {"0.5K", "1K", "2K", "4K"}, "1K"));
  sheet.input.push_back(oneOf("thinking_level", {"minimal", "high"}, nullptr).orNull());
  return sheet;
}

Sheet bananaPro() {
  Sheet sheet{.input = bananaFields(), .output = picturesOut()};
  sheet.input.push_back(
      oneOf("aspect_ratio", {"21:9", "16:9", "3:2", "4:3", "5:4", "1:1", "4:5", "3:4", "2:3", "9:16"}, "1:1"));
  sheet.input.push_back(oneOf("resolution", {"1K", "2K", "4K"}, "1K").behindTwoReferences("Resolution"));
  return sheet;
}

Sheet grok() {
  return {.input = {prompt().with("maxLength", 8000),
                    oneOf("aspect_ratio",
                          {"2:1", "20:9", "19.5:9", "16:9", "4:3", "3:2", "1:1", "2:3", "3:4", "9:16", "9:19.5", "9:20",
                           "1:2"},
                          "1:1"),
                    oneOf("resolution", {"1k", "2k"}, "1k").orNullByOneOf(), pictureCount(4),
                    pictureFormat({"jpeg", "png", "webp"}, "jpeg"), syncMode()},
          .output = picturesOut("Image")};
}

Sheet seedreamPro() {
  return {.input = {prompt(),
                    imageSize({"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3",
                               "landscape_16_9", "auto_2K", "auto_4K"},
                              pixels(2048, 2048))
                        .with("examples", json::array{"auto_2K"}),
                    pictureCount(6), whole("max_images", 1, 6, 1), seed(), syncMode(),
                    safetyChecker().with("examples", json::array{true})},
          .output = seededPicturesOut()};
}

Sheet seedreamFlash() {
  json::object size = pixels(0, 0);
  for (const char* side : {"width", "height"})
    size[side] = json::object{{"type", "integer"}, {"minimum", 1024}, {"maximum", 4096}};
  return {.input = {prompt(),
                    text("image_size").with("type", "object").with("properties", size).startingWith(pixels(2048, 2048)),
                    pictureCount(6), seed().without("anyOf").with("type", "integer").markedNullable(), syncMode(),
                    safetyChecker()},
          .output = seededPicturesOut()};
}

Sheet flux3() {
  return {
      .input =
          {prompt(),
           imageSize(presets, pixels(1024, 768)).without("anyOf").with("allOf", json::array{referenceTo("ImageSize")}),
           seed(), real("guidance_scale", 0, 20, 3.5).without("minimum").with("exclusiveMinimum", 0), pictureCount(4),
           objects("loras", "LoraWeight").startingWith(json::array()), safetyChecker(),
           pictureFormat({"jpeg", "png"}, "jpeg"), oneOf("acceleration", {"none", "regular", "high"}, "none")},
      .output = fluxPicturesOut()};
}

Sheet ideogram() {
  return {.input = {prompt(), imageSize(presets, "square_hd").orNull(),
                    oneOf("rendering_speed", {"TURBO", "BALANCED", "QUALITY"}, "BALANCED"),
                    object("color_palette", "ColorPalette").orNull(),
                    listOfTexts("style_codes").orNull().about("A list of 8 character hexadecimal codes."),
                    oneOf("style", {"AUTO", "GENERAL", "REALISTIC", "DESIGN"}, nullptr).nullAmongValues(),
                    flag("expand_prompt", true), pictureCount(8), seed(), syncMode(),
                    text("negative_prompt").startingWith("")},
          .output = seededPicturesOut("File")};
}

Sheet recraft() {
  return {.input = {prompt().with("minLength", 1).with("maxLength", 1000), imageSize(presets, "square_hd"),
                    oneOf("style", {"any", "realistic_image", "digital_illustration", "vector_illustration"},
                          "realistic_image"),
                    objects("colors", "RGBColor").startingWith(json::array()),
                    text("style_id").with("format", "uuid4").orNull(), safetyChecker().with("deprecated", true)},
          .output = {object("image", "File").required(), objects("images", "File").required()}};
}

Sheet gptImage15() {
  return {.input = {prompt().with("minLength", 2),
                    oneOf("image_size", {"1024x1024", "1536x1024", "1024x1536"}, "1024x1024"),
                    oneOf("background", {"auto", "transparent", "opaque"}, "auto"),
                    oneOf("quality", {"low", "medium", "high"}, "high"), pictureCount(4),
                    pictureFormat({"jpeg", "png", "webp"}, "png"), syncMode()},
          .output = picturesOut()};
}

Sheet gptImageMini() {
  return {.input = {prompt().with("minLength", 2),
                    oneOf("image_size", {"auto", "1024x1024", "1536x1024", "1024x1536"}, "auto").orNullFirst(),
                    oneOf("quality", {"auto", "low", "medium", "high"}, "auto"), pictureCount(4),
                    pictureFormat({"jpeg", "png", "webp"}, "png"), syncMode()},
          .output = picturesOut(),
          .saysOrder = false};
}

Sheet schnell() {
  return {.input = {whole("num_inference_steps", 1, 12, 4), prompt(), imageSize(presets, "landscape_4_3"), seed(),
                    real("guidance_scale", 1, 20, 3.5).with("title", "Guidance scale (CFG)"), syncMode(),
                    pictureCount(4), safetyChecker(), pictureFormat({"jpeg", "png"}, "jpeg"),
                    oneOf("acceleration", {"none", "regular", "high"}, "none")},
          .output = fluxPicturesOut()};
}

}  // namespace

Entries pictureEntries() {
  return {{"openai/gpt-image-2.5/sunburst/text-to-image", "GPT Image 2.5 Sunburst", kind,
           "Precise pictures for premium work.", gptSunburst, price(1, u"units")},
          {"openai/gpt-image-2.5/flare/text-to-image", "GPT Image 2.5 Flare", kind, "Fast pictures, near the top.",
           gptFlare, price(1, u"units")},
          {"fal-ai/nano-banana-2", "Nano Banana 2", kind, "A strong, fast all-rounder.", banana2, {}, {}, {"fast"}},
          {"fal-ai/nano-banana-pro", "Nano Banana Pro", kind, "Careful work with text and detail.", bananaPro,
           price(0.15, u"images")},
          {"xai/grok-imagine-image/v2.0/text-to-image", "Grok Imagine Image 2.0", kind, "Vivid pictures, made quickly.",
           grok, price(0.02, u"image")},
          {"bytedance/seedream/v5/pro/text-to-image", "Seedream 5 Pro", kind, "Large, detailed pictures.", seedreamPro,
           price(0.04, u"images")},
          {"blackforestlabs/flux-3/text-to-image",
           "FLUX 3",
           kind,
           "The newest FLUX.",
           flux3,
           price(0.03, u"megapixels"),
           Standing::Usual,
           {"new", ""}},
          {"ideogram/v4.5", "Ideogram 4.5", kind, "Lettering, posters and logos.", ideogram, price(0.06, u"images")},
          {"bytedance/seedream/v5/flash/text-to-image", "Seedream 5 Flash", kind, "Quick pictures at low cost.",
           seedreamFlash, price(0.02, u"images")},
          {"recraft/v4.1/flash/text-to-image", "Recraft 4.1 Flash", kind, "Design and illustration.", recraft,
           price(0.01, u"images")},
          {"fal-ai/gpt-image-1.5", "GPT Image 1.5", kind, "Follows long prompts.", gptImage15, price(1, u"units")},
          {"fal-ai/gpt-image-1-mini", "GPT Image 1 Mini", kind, "Simple pictures at low cost.", gptImageMini,
           price(0.01, u"1m tokens")},
          {"fal-ai/flux/schnell", "FLUX.1 [schnell]", kind, "Fast text-to-image drafts.", schnell, {}, {}, {"fast"}},
          {"fal-ai/bytedance/seedream/v4.5/text-to-image", "Seedream 4.5", kind, "Pictures in one model for all sizes.",
           seedreamPro, price(0.04, u"images")}};
}

}  // namespace sandbox
