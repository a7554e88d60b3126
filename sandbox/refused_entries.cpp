// Models of the public list that make something else, or need what a studio of pictures, clips and sounds has not got.
#include "entry.h"

namespace sandbox {

namespace {

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Field picture() { return text("image_url").required(); }
Field file(const char* name) { return object(name, "File").required(); }

Sheet inpainting() {
  return {.input = {prompt(), picture(), text("mask_url").with("_fal_ui_field", "image_mask").required(), seed()},
          .output = seededPicturesOut("Image")};
}

Sheet restyling() {
  return {.input = {prompt(), text("video_url").with("_fal_ui_field", "video").required(), seed()},
          .output = clipOut()};
}

Sheet talking() {
  return {.input = {picture(), text("audio_url").with("_fal_ui_field", "audio").required(),
                    oneOf("resolution", {"480p", "720p"}, "480p")},
          .output = clipOut("VideoFile")};
}

Sheet training() {
  return {.input = {text("images_data_url").with("_fal_ui_field", "archive").required(),
                    text("trigger_word").startingWith(""), whole("steps", 1, 10000, 1000)},
          .output = {file("diffusers_lora_file"), file("config_file")}};
}

Sheet shape() {
  return {
      .input = {picture(), seed(), flag("textured_mesh", true)},
      .output = {file("model_glb"), object("thumbnail", "File").orNull(), whole("seed", 0, 2147483647, 0).required()}};
}

Sheet shapeOfWords() {
  Sheet sheet = shape();
  sheet.input[0] = prompt();
  return sheet;
}

Sheet answering() {
  return {.input = {prompt(), text("system_prompt").orNull(), text("model").required(), flag("reasoning", false),
                    real("temperature", 0, 2, 1), whole("max_tokens", 1, 200000, 1).without("default").orNull()},
          .output = {text("output").required()}};
}

Sheet seeing() {
  Sheet sheet = answering();
  sheet.input.insert(sheet.input.begin(), listOfTexts("image_urls").required());
  return sheet;
}

Sheet writingDown() {
  return {.input = {text("audio_url").required(), oneOf("task", {"transcribe", "translate"}, "transcribe")},
          .output = {text("text").required()}};
}

Sheet nowhere() { return {.input = {}, .output = {}, .dangling = true}; }
Sheet inCircles() { return {.input = {prompt()}, .output = picturesOut(), .circular = true}; }
Sheet bare() { return {.input = {prompt()}, .output = picturesOut(), .withoutProperties = true}; }

Sheet shots() {
  return {.input = {prompt(), objects("multi_prompt", "MultiPromptElement").required()}, .output = clipOut()};
}

Sheet styled() {
  return {
      .input = {prompt(), text("style_reference_id").required(), oneOf("preset", {"film", "ink"}, "film").required()},
      .output = pictureOut()};
}

Sheet unsaid() {
  return {.input = {prompt(), imageSize({"square", "square_hd"}, "square")},
          .output = picturesOut(),
          .undescribed = "workflow"};
}

Sheet moving() {
  return {.input = {prompt(), listOfTexts("motion_video_urls").required(), listOfTexts("image_urls")},
          .output = clipOut()};
}

}  // namespace

Entries refusedEntries() {
  return {{"fal-ai/brushwork/inpainting", "Brushwork Inpainting", "image-to-image", "Fills a masked area.", inpainting,
           price(0.03, u"images")},
          {"fal-ai/restyle/video-to-video", "Restyle", "video-to-video", "A clip in another style.", restyling,
           price(0.1, u"seconds")},
          {"fal-ai/speakingface/image-to-video", "Speaking Face", "image-to-video", "A face that speaks a sound.",
           talking, price(0.2, u"seconds")},
          {"fal-ai/speakingface/audio-to-video", "Speaking Face Audio", "audio-to-video", "A sound with a face.",
           talking, price(0.2, u"seconds")},
          {"fal-ai/brushwork/trainer", "Brushwork Trainer", "training", "Learns a style.", training,
           price(0.002, u"steps")},
          {"fal-ai/meshwork/image-to-3d", "Meshwork", "image-to-3d", "A solid out of a picture.", shape,
           price(0.2, u"generations")},
          {"fal-ai/meshwork/text-to-3d", "Meshwork Words", "text-to-3d", "A solid out of words.", shapeOfWords,
           price(0.2, u"generations")},
          {"openrouter/router", "Router", "llm", "Answers of many models.", answering, price(1, u"units")},
          {"openrouter/router/vision", "Router Vision", "vision", "Answers on pictures.", seeing, price(1, u"units")},
          {"openrouter/router/openai/v1/chat/completions", "Router Completions", "llm", "In another form.", nowhere,
           price(1, u"1m tokens")},
          {"fal-ai/listener/speech-to-text", "Listener", "speech-to-text", "Writes down what is said.", writingDown,
           price(0.0005, u"input seconds")},
          {"fal-ai/roundabout/text-to-image", "Roundabout", "text-to-image", "Its document leads in a circle.",
           inCircles, price(0.01, u"images")},
          {"fal-ai/silent/text-to-image", "Silent", "text-to-image", "Its document says nothing of its input.", bare,
           price(0.01, u"images")},
          {"fal-ai/storyline/text-to-video", "Storyline", "text-to-video", "Needs a list of shots.", shots,
           price(0.1, u"seconds")},
          {"fal-ai/presets/text-to-image", "Presets", "text-to-image", "Needs a style of its own.", styled,
           price(0.01, u"images")},
          {"fal-ai/unsaid/text-to-image", "Unsaid", "text-to-image", "Needs what nothing describes.", unsaid,
           price(0.01, u"images")},
          {"fal-ai/puppeteer/image-to-video", "Puppeteer", "image-to-video", "Needs clips of a movement.", moving,
           price(0.1, u"seconds")},
          {"fal-ai/unread/text-to-image",
           "Unread",
           "text-to-image",
           "Its document cannot be had.",
           {},
           price(0.01, u"images"),
           Standing::Undocumented}};
}

}  // namespace sandbox
