#include "catalogue/listings.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

struct Row {
  const char16_t* id;
  const char16_t* name;
  const char16_t* summary;
  const char16_t* badge;
};

constexpr std::array textToImageRows{
    Row{u"openai/gpt-image-2.5/sunburst/text-to-image", u"GPT Image 2.5 Sunburst",
        u"OpenAI · top rated, precise premium work", u"Top rated"},
    Row{u"openai/gpt-image-2.5/flare/text-to-image", u"GPT Image 2.5 Flare", u"OpenAI · fast default, near the top",
        u""},
    Row{u"fal-ai/nano-banana-2", u"Nano Banana 2", u"Google · fast, strong all-rounder", u""},
    Row{u"fal-ai/nano-banana-pro", u"Nano Banana Pro", u"Google · careful work with text and detail", u""},
    Row{u"xai/grok-imagine-image/v2.0/text-to-image", u"Grok Imagine Image 2.0", u"xAI · vivid pictures, made quickly",
        u""},
    Row{u"bytedance/seedream/v5/pro/text-to-image", u"Seedream 5 Pro", u"ByteDance · large, detailed pictures", u""},
    Row{u"blackforestlabs/flux-3/text-to-image", u"FLUX 3", u"Black Forest Labs · newest FLUX", u"New"},
    Row{u"ideogram/v4.5", u"Ideogram 4.5", u"Ideogram · lettering, posters and logos", u""},
    Row{u"bytedance/seedream/v5/flash/text-to-image", u"Seedream 5 Flash", u"ByteDance · quick pictures at low cost",
        u""},
    Row{u"recraft/v4.1/flash/text-to-image", u"Recraft 4.1 Flash", u"Recraft · design and illustration, very low cost",
        u"Low cost"},
    Row{u"fal-ai/gpt-image-1.5", u"GPT Image 1.5", u"OpenAI · dependable, follows long prompts", u""},
    Row{u"fal-ai/gpt-image-1-mini", u"GPT Image 1 Mini", u"OpenAI · simple pictures at low cost", u""},
    Row{u"fal-ai/flux/schnell", u"FLUX.1 Schnell", u"Fastest, cheapest drafts", u"Drafts"}};

constexpr std::array imageToImageRows{
    Row{u"openai/gpt-image-2.5/sunburst/edit", u"GPT Image 2.5 Sunburst Edit",
        u"OpenAI · top rated, tightly scoped edits", u"Top rated"},
    Row{u"openai/gpt-image-2.5/flare/edit", u"GPT Image 2.5 Flare Edit", u"OpenAI · fast edits for everyday work", u""},
    Row{u"fal-ai/nano-banana-2/edit", u"Nano Banana 2 Edit", u"Google · fast edits with several references", u""},
    Row{u"fal-ai/nano-banana-pro/edit", u"Nano Banana Pro Edit", u"Google · careful edits that keep text and faces",
        u""},
    Row{u"xai/grok-imagine-image/v2.0/edit", u"Grok Imagine Image 2.0 Edit", u"xAI · bold edits, made quickly", u""},
    Row{u"bytedance/seedream/v5/pro/edit", u"Seedream 5 Pro Edit", u"ByteDance · large, detailed edits", u""},
    Row{u"blackforestlabs/flux-3/edit-image", u"FLUX 3 Edit Image", u"Black Forest Labs · edits by instruction", u""},
    Row{u"bytedance/seedream/v5/flash/edit", u"Seedream 5 Flash Edit", u"ByteDance · quick edits at low cost", u""},
    Row{u"fal-ai/gpt-image-1.5/edit", u"GPT Image 1.5 Edit", u"OpenAI · dependable edits by instruction", u""},
    Row{u"fal-ai/gpt-image-1-mini/edit", u"GPT Image 1 Mini Edit", u"OpenAI · simple edits at low cost", u""},
    Row{u"fal-ai/seedvr/upscale/image", u"Upscale (SeedVR2)", u"Enlarges one image · no prompt needed", u"Tool"},
    Row{u"fal-ai/birefnet/v2", u"Remove Background (BiRefNet)", u"Cuts out the subject · no prompt needed", u"Tool"}};

constexpr std::array textToVideoRows{
    Row{u"alibaba/wan-3.0/text-to-video", u"Wan 3.0", u"Alibaba · top rated text-to-video", u"Top rated"},
    Row{u"bytedance/seedance-2.5/text-to-video", u"Seedance 2.5", u"ByteDance · several shots in one clip", u""},
    Row{u"minimax/h3-max/text-to-video", u"MiniMax H3 Max", u"MiniMax · natural movement and physics", u""},
    Row{u"blackforestlabs/flux-3/text-to-video", u"FLUX 3 Video", u"Black Forest Labs · clips with the look of FLUX",
        u""},
    Row{u"google/gemini-omni-flash/v1.1/text-to-video", u"Gemini Omni Flash 1.1", u"Google · fast clips with sound",
        u""},
    Row{u"fal-ai/kling-video/v3/pro/text-to-video", u"Kling 3 Pro", u"Kling · long clips with sound", u""},
    Row{u"fal-ai/veo3.1/fast", u"Veo 3.1 Fast", u"Google · Veo with sound, for less", u""},
    Row{u"fal-ai/veo3.1", u"Veo 3.1", u"Google · cinematic clips with sound", u""},
    Row{u"xai/grok-imagine-video/v1.5/text-to-video", u"Grok Imagine Video 1.5", u"xAI · lively clips with sound", u""},
    Row{u"minimax/h3-max-turbo/text-to-video", u"MiniMax H3 Max Turbo", u"MiniMax · fast and low cost", u"Low cost"},
    Row{u"xai/grok-imagine-video/v1.5/lite/text-to-video", u"Grok Imagine Video 1.5 Lite", u"xAI · lowest cost drafts",
        u"Drafts"}};

constexpr std::array imageToVideoRows{
    Row{u"minimax/h3-max/image-to-video", u"MiniMax H3 Max", u"MiniMax · top rated image-to-video", u"Top rated"},
    Row{u"google/gemini-omni-flash/v1.1/image-to-video", u"Gemini Omni Flash 1.1",
        u"Google · fast clips from a picture, with sound", u""},
    Row{u"bytedance/seedance-2.5/image-to-video", u"Seedance 2.5", u"ByteDance · steady motion from a first frame",
        u""},
    Row{u"alibaba/wan-3.0/image-to-video", u"Wan 3.0", u"Alibaba · detailed motion from a picture", u""},
    Row{u"fal-ai/kling-video/v3/pro/image-to-video", u"Kling 3 Pro",
        u"Kling · long clips from a first and a last frame", u""},
    Row{u"fal-ai/veo3.1/fast/image-to-video", u"Veo 3.1 Fast", u"Google · Veo from a picture, for less", u""},
    Row{u"bytedance/seedance-2.5/reference-to-video", u"Seedance 2.5 References",
        u"ByteDance · video from several reference images", u""},
    Row{u"blackforestlabs/flux-3/image-to-video", u"FLUX 3 Video", u"Black Forest Labs · keeps the look of the picture",
        u""},
    Row{u"xai/grok-imagine-video/v1.5/image-to-video", u"Grok Imagine Video 1.5",
        u"xAI · lively clips from a picture, with sound", u""},
    Row{u"minimax/h3-max-turbo/image-to-video", u"MiniMax H3 Max Turbo",
        u"MiniMax · fast clips from a picture at low cost", u""},
    Row{u"xai/grok-imagine-video/v1.5/lite/image-to-video", u"Grok Imagine Video 1.5 Lite",
        u"xAI · low cost drafts from a picture", u""}};

template <class Rows>
std::vector<FalListing> listings(const Rows& rows, const QString& category) {
  std::vector<FalListing> list;
  for (const Row& row : rows) {
    list.push_back({QString::fromUtf16(row.id), QString::fromUtf16(row.name), category, QString::fromUtf16(row.summary),
                    QString::fromUtf16(row.badge)});
  }
  return list;
}

/// The row of `recommendedModels` with this id, under the name and summary of a tool's panel.
FalListing tool(const FalListing& row, const QString& name, const QString& summary) {
  FalListing listing = row;
  listing.name = name;
  listing.summary = summary;
  return listing;
}

FalListing tool(const QString& id, const QString& name, const QString& summary) {
  return {id, name, u"image-to-image"_s, summary, u"Tool"_s};
}

const FalListing& editingRow(const QString& id) {
  const auto& rows = recommendedModels().at(u"image-to-image"_s);
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const FalListing& row) { return row.id == id; });
  if (found == rows.end()) qFatal("A tool's row is missing from the recommended models.");
  return *found;
}

}  // namespace

const std::map<QString, std::vector<FalListing>>& recommendedModels() {
  static const std::map<QString, std::vector<FalListing>> recommended{
      {u"text-to-image"_s, listings(textToImageRows, u"text-to-image"_s)},
      {u"image-to-image"_s, listings(imageToImageRows, u"image-to-image"_s)},
      {u"text-to-video"_s, listings(textToVideoRows, u"text-to-video"_s)},
      {u"image-to-video"_s, listings(imageToVideoRows, u"image-to-video"_s)}};
  return recommended;
}

const FalListing& upscalerRow() { return editingRow(u"fal-ai/seedvr/upscale/image"_s); }
const FalListing& backgroundRemoverRow() { return editingRow(u"fal-ai/birefnet/v2"_s); }

const std::vector<FalListing>& upscaleTools() {
  static const std::vector<FalListing> tools{
      tool(upscalerRow(), u"SeedVR2"_s, u"Faithful · keeps the image as it is, only larger"_s),
      tool(u"fal-ai/topaz/upscale/image"_s, u"Topaz"_s, u"Photo-grade sharpening with face recovery"_s),
      tool(u"fal-ai/clarity-upscaler"_s, u"Clarity Upscaler"_s,
           u"Creative · invents fine detail, so small things may change"_s)};
  return tools;
}

const std::vector<FalListing>& cutOutTools() {
  static const std::vector<FalListing> tools{
      tool(backgroundRemoverRow(), u"BiRefNet v2"_s, u"Automatic · keeps whatever stands out most"_s),
      tool(u"fal-ai/bria/background/remove"_s, u"Bria RMBG 2.0"_s,
           u"Automatic · a second opinion when the first misses"_s),
      tool(u"fal-ai/sam-3/image"_s, u"SAM 3"_s, u"Keeps what you describe, such as “the dog on the left”"_s)};
  return tools;
}

const std::vector<FalListing>& cutOutPanelTools() {
  static const std::vector<FalListing> tools{cutOutTools()[1], cutOutTools()[2], cutOutTools()[0]};
  return tools;
}

const std::vector<FalListing>& shotAngleTools() {
  static const std::vector<FalListing> tools{tool(u"fal-ai/qwen-image-edit-2511-multiple-angles"_s,
                                                  u"Qwen Multiple Angles"_s, u"Moves the camera by exact angles"_s)};
  return tools;
}

bool contains(const std::vector<FalListing>& listings, const QString& id) {
  return std::any_of(listings.begin(), listings.end(), [&](const FalListing& row) { return row.id == id; });
}

std::optional<QString> listedName(const QString& id) {
  const auto nameIn = [&](const std::vector<FalListing>& rows) -> std::optional<QString> {
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const FalListing& row) { return row.id == id; });
    if (found == rows.end()) return std::nullopt;
    return found->name;
  };
  for (const auto& [category, rows] : recommendedModels()) {
    if (const auto name = nameIn(rows)) return name;
  }
  for (const auto* rows : {&cutOutTools(), &upscaleTools(), &shotAngleTools()}) {
    if (const auto name = nameIn(*rows)) return name;
  }
  return std::nullopt;
}

}  // namespace sorvan::catalogue
