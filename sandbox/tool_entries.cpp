// Tools for pictures: larger, cut out, seen from elsewhere.
#include "entry.h"

namespace sandbox {

namespace {

const char* const kind = "image-to-image";

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Field picture() { return text("image_url").about("The URL of the image.").required(); }

Sheet seedvr() {
  return {.input = {oneOf("upscale_mode", {"target", "factor"}, "factor"), real("upscale_factor", 1, 10, 2),
                    oneOf("target_resolution", {"720p", "1080p", "1440p", "2160p"}, "1080p"), seed(),
                    real("noise_scale", 0, 1, 0.1), oneOf("output_format", {"png", "jpg", "webp"}, "jpg"), syncMode(),
                    picture().with("format", "uri")},
          .output = {object("image", "ImageFile").required(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet birefnet() {
  return {.input = {oneOf("model",
                          {"General Use (Light)", "General Use (Light 2K)", "General Use (Heavy)", "Matting",
                           "Portrait", "General Use (Dynamic)"},
                          "General Use (Light)"),
                    oneOf("operating_resolution", {"1024x1024", "2048x2048", "2304x2304"}, "1024x1024"),
                    flag("output_mask", false), flag("refine_foreground", true), syncMode(), picture(),
                    oneOf("output_format", {"webp", "png", "gif"}, "png")},
          .output = {object("image", "ImageFile").required(), object("mask_image", "ImageFile").orNull()}};
}

Sheet topaz() {
  return {.input = {oneOf("model",
                          {"Low Resolution V2", "Standard V2", "CGI", "High Fidelity V2", "Text Refine", "Recovery",
                           "Redefine", "Recovery V2"},
                          "Standard V2"),
                    real("upscale_factor", 1, 4, 2), flag("crop_to_fill", false),
                    picture().with("max_file_size", 20971520).with("max_pixels", 178956970),
                    oneOf("output_format", {"jpeg", "png"}, "jpeg"),
                    oneOf("subject_detection", {"All", "Foreground", "Background"}, "All"),
                    flag("face_enhancement", true), real("face_enhancement_strength", 0, 1, 0.8)},
          .output = pictureOut("File")};
}

Sheet clarity() {
  return {.input = {picture(), text("prompt").startingWith("masterpiece, best quality, highres"),
                    real("upscale_factor", 1, 4, 2).orNull(), text("negative_prompt").startingWith("(worst quality)"),
                    real("creativity", 0, 1, 0.35), real("resemblance", 0, 1, 0.6), real("guidance_scale", 0, 20, 4),
                    whole("num_inference_steps", 4, 50, 18), seed(), safetyChecker()},
          .output = {object("image", "Image").required(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet bria() {
  return {.input = {picture()
                        .with("limit_description", "Max file size: 12.0MB")
                        .with("x-fal", json::object{{"max_file_size", 12582912}, {"timeout", 20}}),
                    syncMode()},
          .output = pictureOut()};
}

Sheet sam3() {
  return {.input = {picture(), text("prompt").startingWith("wheel"),
                    objects("point_prompts", "PointPrompt").startingWith(json::array()),
                    objects("box_prompts", "BoxPrompt").startingWith(json::array()), flag("apply_mask", true),
                    syncMode(), oneOf("output_format", {"jpeg", "png", "webp"}, "png"),
                    flag("return_multiple_masks", false), whole("max_masks", 1, 32, 3), flag("include_scores", false)},
          .output = {object("image", "Image").orNull(), objects("masks", "Image").required()}};
}

Sheet angles() {
  return {
      .input = {listOfTexts("image_urls").required(), real("horizontal_angle", 0, 360, 0),
                real("vertical_angle", -30, 90, 0), real("zoom", 0, 10, 5), text("additional_prompt").orNull(),
                real("lora_scale", 0, 4, 1),
                imageSize({"square_hd", "square", "portrait_4_3", "portrait_16_9", "landscape_4_3", "landscape_16_9"},
                          json::value())
                    .without("default")
                    .orNull(),
                real("guidance_scale", 1, 20, 4.5), whole("num_inference_steps", 1, 50, 28),
                oneOf("acceleration", {"none", "regular"}, "regular"), text("negative_prompt").startingWith(""), seed(),
                syncMode(), safetyChecker(), oneOf("output_format", {"png", "jpeg", "webp"}, "png"), pictureCount(4)},
      .output = {objects("images", "Image").required(), whole("seed", 0, 2147483647, 0).required(),
                 text("prompt").required()}};
}

}  // namespace

Entries toolEntries() {
  return {
      {"fal-ai/seedvr/upscale/image", "SeedVR2", kind, "Faithful upscaling.", seedvr, price(0.001, u"megapixels")},
      {"fal-ai/birefnet/v2", "Birefnet Background Removal", kind, "Cuts out what stands out most.", birefnet,
       price(0.00111, u"compute seconds")},
      {"fal-ai/topaz/upscale/image", "Topaz", kind, "Sharpening with face recovery.", topaz, price(0.08, u"images")},
      {"fal-ai/clarity-upscaler", "Clarity Upscaler", kind, "Creative upscaling.", clarity, price(0.03, u"megapixels")},
      {"fal-ai/bria/background/remove", "Bria RMBG 2.0", kind, "Removes backgrounds.", bria,
       price(0.018, u"generations")},
      {"fal-ai/sam-3/image", "SAM 3", kind, "Keeps what is described.", sam3, price(0.005, u"requests")},
      {"fal-ai/qwen-image-edit-2511-multiple-angles", "Qwen Multiple Angles", kind, "Moves the camera by exact angles.",
       angles, price(0.035, u"megapixels")}};
}

}  // namespace sandbox
