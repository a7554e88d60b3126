// Models that make clips.
#include "entry.h"

namespace sandbox {

namespace {

const char* const fromWords = "text-to-video";
const char* const fromPictures = "image-to-video";
const char* const fromClips = "video-to-video";

Price price(double amount, const char16_t* unit) { return {amount, QString::fromUtf16(unit)}; }

Field picture(std::string name) { return text(std::move(name)).about("The URL of the image to start from."); }

Field ratios(Words words, const char* start) { return oneOf("aspect_ratio", words, start); }

// Limits of a picture, as some documents list them.
json::object pictureLimits() {
  return json::object{{"max_file_size", 10485760}, {"min_width", 300},        {"min_height", 300},
                      {"min_aspect_ratio", 0.4},   {"max_aspect_ratio", 2.5}, {"timeout", 20}};
}

Field limitedPicture(std::string name) {
  return picture(std::move(name)).with("x-fal", pictureLimits()).with("limit_description", "Max file size: 10.0MB");
}

Field markedPicture(std::string name) {
  return picture(std::move(name)).with("ui", json::object{{"field", "image"}}).orNull();
}

// A document for words and its sister for pictures differ in the picture alone.
Sheet fromPicture(Sheet sheet, Field field) {
  sheet.input.insert(sheet.input.begin() + 1, std::move(field));
  return sheet;
}

Sheet wan() {
  return {.input = {prompt().with("maxLength", 5000), ratios({"16:9", "9:16", "1:1", "4:3", "3:4"}, "16:9"),
                    oneOf("resolution", {"720p", "1080p"}, "1080p"),
                    oneOf("duration", json::array{5, 10, 15}, 5).with("title", "Duration"),
                    text("audio_url").with("_fal_ui_field", "audio").orNull(), text("negative_prompt").startingWith(""),
                    flag("enable_prompt_expansion", true), seed(), safetyChecker()},
          .output = {object("video", "VideoFile").required(), whole("seed", 0, 2147483647, 0).required(),
                     text("actual_prompt").orNull()}};
}

Sheet seedance() {
  return {
      .input = {prompt(), ratios({"auto", "21:9", "16:9", "4:3", "1:1", "3:4", "9:16"}, "auto"),
                oneOf("resolution", {"480p", "720p", "1080p"}, "720p"),
                oneOf("duration", {"auto", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15"}, "auto"),
                flag("generate_audio", true), seed(), text("end_user_id").orNull()},
      .output = seededClipOut()};
}

Sheet seedanceReferences() {
  Sheet sheet = seedance();
  const auto marked = [](const char* mark) { return json::object{{"_fal_ui_field", mark}, {"type", "string"}}; };
  sheet.input.push_back(listOfTexts("image_urls").with("maxItems", 9));
  sheet.input.push_back(listOfTexts("video_urls").with("items", marked("video")));
  sheet.input.push_back(listOfTexts("audio_urls").with("items", marked("audio")));
  return sheet;
}

Sheet minimax() {
  return {.input = {prompt().with("maxLength", 2000), oneOf("duration", {"6", "10"}, "6"),
                    oneOf("resolution", {"768P", "1080P"}, "768P"), flag("prompt_optimizer", true)},
          .output = clipOut()};
}

Sheet minimaxTurbo() {
  Sheet sheet = minimax();
  sheet.input[1] = oneOf("duration", {"6", "10"}, "6").behindNullableReference("ClipLength");
  sheet.input[2] = only("resolution", "512P");
  return sheet;
}

Sheet flux3() {
  return {.input = {prompt(), text("aspect_ratio").startingWith("16:9").about("Such as 16:9, or any other."),
                    whole("duration", 2, 12, 5).orNull(), oneOf("resolution", {"480p", "720p", "1080p"}, "720p"),
                    flag("draft", false), flag("audio", true), seed(), safetyChecker()},
          .output = seededClipOut("VideoFile")};
}

Sheet omni() {
  return {.input = {prompt().with("maxLength", 20000), ratios({"16:9", "9:16"}, "16:9"),
                    oneOf("duration", json::array{"auto", 4, 6, 8}, "auto").without("type"),
                    oneOf("resolution", {"720p", "1080p"}, "720p"), flag("generate_audio", true).orNull(), seed()},
          .output = clipOut("VideoFile")};
}

Sheet kling() {
  return {
      .input = {prompt().with("maxLength", 2500).required(), objects("multi_prompt", "MultiPromptElement").orNull(),
                oneOf("duration", {"3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15"}, "5"),
                flag("generate_audio", true), only("shot_type", "customize"), ratios({"16:9", "9:16", "1:1"}, "16:9"),
                text("negative_prompt").with("maxLength", 2500).startingWith("blur, distort, and low quality"),
                real("cfg_scale", 0, 1, 0.5)},
      .output = clipOut()};
}

Sheet klingFromPicture() {
  Sheet sheet = fromPicture(kling(), limitedPicture("start_image_url").required());
  sheet.input.erase(sheet.input.begin() + 6);  // the picture gives the shape
  sheet.input.push_back(markedPicture("end_image_url"));
  sheet.input.push_back(objects("elements", "ComboElementInput").orNull());
  // The prompt may be left out here: a list of prompts stands in for it.
  sheet.input[0] = text("prompt").with("maxLength", 2500).orNull();
  sheet.input[5] = oneOf("shot_type", {"customize", "intelligent"}, "customize");
  return sheet;
}

Sheet veo() {
  return {.input = {prompt().with("maxLength", 20000), ratios({"16:9", "9:16"}, "16:9"),
                    oneOf("duration", {"4s", "6s", "8s"}, "8s"), text("negative_prompt").orNull(),
                    oneOf("resolution", {"720p", "1080p", "4k"}, "720p"), flag("generate_audio", true), seed(),
                    flag("auto_fix", true), oneOf("safety_tolerance", {"1", "2", "3", "4", "5", "6"}, "4")},
          .output = clipOut()};
}

Sheet veoFast() {
  Sheet sheet = veo();
  sheet.input[2] = only("duration", "8s");
  return sheet;
}

Sheet veoFastFromPicture() {
  Sheet sheet = fromPicture(veo(), text("image_url").behindReference("InputImage").required());
  sheet.input[2] = ratios({"auto", "16:9", "9:16"}, "auto");
  return sheet;
}

Sheet grok() {
  return {.input = {prompt().with("maxLength", 4096), whole("duration", 1, 15, 6),
                    ratios({"16:9", "4:3", "3:2", "1:1", "2:3", "3:4", "9:16"}, "16:9"),
                    oneOf("resolution", {"480p", "720p"}, "720p")},
          .output = clipOut("VideoFile")};
}

Sheet grokLite() {
  Sheet sheet = grok();
  sheet.input[1] = real("duration", 1, 10, 4);
  sheet.input[2] = only("aspect_ratio", "16:9").without("type");
  sheet.input[3] = oneOf("resolution", {"480p", "360p"}, "480p").required();
  return sheet;
}

Sheet hailuo() {
  return {.input = {prompt().with("maxLength", 2000), picture("image_url").required(),
                    oneOf("duration", {"6", "10"}, "6"), flag("prompt_optimizer", true),
                    oneOf("resolution", {"512P", "768P"}, "768P"), markedPicture("end_image_url")},
          .output = clipOut()};
}

Field share(const char* name) { return real(name, 0, 1, 0).without("default").orNull(); }

Sheet topazClip() {
  return {.input = {text("video_url").required(),
                    oneOf("model", {"Proteus", "Artemis HQ", "Nyx", "Gaia HQ", "Starlight HQ"}, "Proteus"),
                    real("upscale_factor", 1, 4, 2), whole("target_fps", 16, 60, 24).without("default").orNull(),
                    share("compression"), share("noise"), share("halo"),
                    real("grain", 0, 0.1, 0).without("default").with("multipleOf", 0.01).orNull(),
                    share("recover_detail"), flag("H264_output", false)},
          .output = clipOut()};
}

Entries wordEntries() {
  return {{"alibaba/wan-3.0/text-to-video", "Wan 3.0", fromWords, "Top rated clips.", wan, price(0.1, u"seconds")},
          {"bytedance/seedance-2.5/text-to-video", "Seedance 2.5", fromWords, "Several shots in one clip.", seedance,
           price(0.014, u"1000 tokens")},
          {"minimax/h3-max/text-to-video", "MiniMax H3 Max", fromWords, "Natural movement.", minimax,
           price(0.28, u"video")},
          {"blackforestlabs/flux-3/text-to-video",
           "FLUX 3 Video",
           fromWords,
           "Clips with the look of FLUX.",
           flux3,
           price(0.4, u"5 seconds"),
           Standing::Usual,
           {"new"}},
          {"google/gemini-omni-flash/v1.1/text-to-video", "Gemini Omni Flash 1.1", fromWords, "Fast clips with sound.",
           omni, price(0.05, u"seconds")},
          {"fal-ai/kling-video/v3/pro/text-to-video", "Kling Video v3 Pro", fromWords, "Long clips with sound.", kling,
           price(0.14, u"seconds")},
          {"fal-ai/veo3.1/fast", "Veo 3.1 Fast", fromWords, "Veo with sound, for less.", veoFast, {}},
          {"fal-ai/veo3.1", "Veo 3.1", fromWords, "Cinematic clips with sound.", veo, {}},
          {"xai/grok-imagine-video/v1.5/text-to-video", "Grok Imagine Video 1.5", fromWords, "Lively clips.", grok,
           price(0.05, u"second")},
          {"minimax/h3-max-turbo/text-to-video", "MiniMax H3 Max Turbo", fromWords, "Fast and low cost.", minimaxTurbo,
           price(0.19, u"videos")},
          {"xai/grok-imagine-video/v1.5/lite/text-to-video", "Grok Imagine Video 1.5 Lite", fromWords, "Drafts.",
           grokLite, price(0.02, u"seconds")},
          {"xai/grok-imagine-video/text-to-video",
           "Grok Imagine Video",
           fromWords,
           "Clips of an earlier version.",
           grok,
           {}}};
}

Entries pictureEntriesOfClips() {
  return {{"minimax/h3-max/image-to-video", "MiniMax H3 Max", fromPictures, "Top rated image-to-video.",
           [] { return fromPicture(minimax(), markedPicture("first_frame_url").required()); }, price(0.28, u"video")},
          {"google/gemini-omni-flash/v1.1/image-to-video", "Gemini Omni Flash 1.1", fromPictures, "Fast clips.",
           [] { return fromPicture(omni(), picture("input_image_url").required()); }, price(0.05, u"seconds")},
          {"bytedance/seedance-2.5/image-to-video", "Seedance 2.5", fromPictures, "Steady motion.",
           [] {
             Sheet sheet = fromPicture(seedance(), picture("image_url").with("format", "uri").required());
             sheet.input.push_back(markedPicture("end_image_url"));
             return sheet;
           },
           price(0.014, u"1000 tokens")},
          {"alibaba/wan-3.0/image-to-video", "Wan 3.0", fromPictures, "Detailed motion.",
           [] { return fromPicture(wan(), picture("image_url").with("max_file_size", 10485760).required()); },
           price(0.1, u"seconds")},
          {"fal-ai/kling-video/v3/pro/image-to-video",
           "Kling Video v3 Pro",
           fromPictures,
           "Long clips from a first and a last frame.",
           klingFromPicture,
           {}},
          {"fal-ai/veo3.1/fast/image-to-video", "Veo 3.1 Fast", fromPictures, "Veo from a picture.", veoFastFromPicture,
           price(0.1, u"seconds")},
          {"bytedance/seedance-2.5/reference-to-video", "Seedance 2.5 References", fromPictures,
           "Video from several reference images.", seedanceReferences, price(0.014, u"1000 tokens")},
          {"blackforestlabs/flux-3/image-to-video", "FLUX 3 Video", fromPictures, "Keeps the look of the picture.",
           [] { return fromPicture(flux3(), picture("image_url").with("deprecated", true).required()); },
           price(0.4, u"5 seconds")},
          {"xai/grok-imagine-video/v1.5/image-to-video", "Grok Imagine Video 1.5", fromPictures, "Lively clips.",
           [] { return fromPicture(grok(), picture("image_url").required()); }, price(0.05, u"second")},
          {"minimax/h3-max-turbo/image-to-video", "MiniMax H3 Max Turbo", fromPictures, "Fast clips at low cost.",
           [] {
             Sheet sheet = fromPicture(minimaxTurbo(), picture("first_frame_url").required());
             sheet.input.push_back(picture("last_frame_url").orNullFirst());
             return sheet;
           },
           price(0.19, u"videos")},
          {"xai/grok-imagine-video/v1.5/lite/image-to-video", "Grok Imagine Video 1.5 Lite", fromPictures, "Drafts.",
           [] {
             return fromPicture(grokLite(),
                                listOfTexts("reference_image_urls").with("minItems", 1).with("maxItems", 2).required());
           },
           price(0.02, u"seconds")},
          {"fal-ai/minimax/hailuo-02/standard/image-to-video",
           "MiniMax Hailuo 02",
           fromPictures,
           "Physics and motion.",
           hailuo,
           {}},
          {"bytedance/seedance-2.0/reference-to-video",
           "Seedance 2.0",
           fromPictures,
           "Video from references.",
           seedanceReferences,
           {}}};
}

}  // namespace

Entries clipEntries() {
  Entries all = wordEntries();
  for (Entry& entry : pictureEntriesOfClips()) all.push_back(std::move(entry));
  all.push_back({"fal-ai/topaz/upscale/video", "Topaz Video Upscale", fromClips, "Enlarges clips.", topazClip, {}});
  return all;
}

}  // namespace sandbox
