#include "endpoints.h"

#include <QStringList>

namespace sandbox {

namespace {

struct Rule {
  const char16_t* part;  // what the id holds
  Product product;
};

// The first rule that fits decides, so the narrow ones stand before the wide ones.
constexpr Rule rules[] = {
    // Sounds made from, or out of, something
    {u"/video-to-audio", Product::SoundForClip},
    {u"video-foley", Product::SoundForClip},
    {u"/video-to-sound-effects", Product::SoundForClip},
    {u"/video-to-music", Product::SoundForClip},
    {u"/demucs", Product::Stems},
    {u"sam-audio/separate", Product::PulledSound},
    {u"/clean-audio", Product::CleanSound},
    {u"/audio-outpainting", Product::LongerSound},
    {u"/extend-audio", Product::LongerSound},
    // Sounds from words
    {u"sound-effects", Product::Effect},
    {u"sfx", Product::Effect},
    {u"mmaudio-v2/text-to-audio", Product::Effect},
    {u"/mmaudio", Product::SoundForClip},
    {u"/music", Product::Music},
    {u"/lyria", Product::Music},
    {u"mureka/", Product::Music},
    {u"stable-audio", Product::Music},
    {u"/tts", Product::Speech},
    {u"-tts", Product::Speech},
    {u"/speech", Product::Speech},
    {u"text-to-dialogue", Product::Speech},
    {u"fish-audio/", Product::Speech},
    {u"/bulbul", Product::Speech},
    {u"/kokoro", Product::Speech},
    // Clips
    {u"upscale/video", Product::ClipUpscale},
    {u"/video-to-video", Product::ClipEdit},
    {u"/edit-video", Product::ClipEdit},
    {u"-to-video", Product::Clip},
    {u"/veo", Product::Clip},
    {u"-video/", Product::Clip},
    // Pictures
    {u"/upscale", Product::Upscale},
    {u"-upscaler", Product::Upscale},
    {u"/birefnet", Product::CutOut},
    {u"background/remove", Product::CutOut},
    {u"sam-3/image", Product::CutOut},
    {u"/edit", Product::PictureEdit},
    {u"image-edit", Product::PictureEdit},
    {u"image-to-image", Product::PictureEdit},
    {u"text-to-image", Product::Picture},
    {u"/flux", Product::Picture},
    {u"nano-banana", Product::Picture},
    {u"gpt-image", Product::Picture},
    {u"grok-imagine-image", Product::Picture},
    {u"seedream", Product::Picture},
    {u"ideogram/", Product::Picture},
    {u"recraft/", Product::Picture},
    {u"/imagen", Product::Picture},
    {u"qwen-image", Product::Picture},
};

}  // namespace

std::optional<Product> productOf(const QString& endpoint) {
  if (endpoint.count(QLatin1Char('/')) < 1) return std::nullopt;
  for (const Rule& rule : rules)
    if (endpoint.contains(QString::fromUtf16(rule.part))) return rule.product;
  return std::nullopt;
}

Price priceOf(Product product) {
  switch (product) {
    case Product::Picture:
    case Product::PictureEdit:
      return {0.04, QStringLiteral("images")};
    case Product::Upscale:
    case Product::CutOut:
      return {0.01, QStringLiteral("images")};
    case Product::Clip:
    case Product::ClipEdit:
    case Product::ClipUpscale:
      return {0.1, QStringLiteral("seconds")};
    case Product::Speech:
    case Product::Music:
    case Product::Effect:
    case Product::Stems:
    case Product::PulledSound:
    case Product::CleanSound:
    case Product::LongerSound:
    case Product::SoundForClip:
      return {0.002, QStringLiteral("seconds")};
  }
  return {0, {}};
}

QString applicationOf(const QString& endpoint) {
  const QStringList parts = endpoint.split(QLatin1Char('/'));
  const bool longer = parts.first() == QStringLiteral("workflows") || parts.first() == QStringLiteral("comfy");
  return parts.mid(0, longer ? 3 : 2).join(QLatin1Char('/'));
}

const std::vector<ListedEndpoint>& listedEndpoints() {
  const auto row = [](const char16_t* id, const char16_t* name, const char16_t* category) {
    return ListedEndpoint{QString::fromUtf16(id), QString::fromUtf16(name), QString::fromUtf16(category)};
  };
  static const std::vector<ListedEndpoint> all{
      row(u"fal-ai/flux/schnell", u"FLUX.1 [schnell]", u"text-to-image"),
      row(u"fal-ai/nano-banana-2", u"Nano Banana 2", u"text-to-image"),
      row(u"fal-ai/bytedance/seedream/v4.5/text-to-image", u"Seedream 4.5", u"text-to-image"),
      row(u"fal-ai/nano-banana-2/edit", u"Nano Banana 2", u"image-to-image"),
      row(u"fal-ai/seedvr/upscale/image", u"SeedVR2", u"image-to-image"),
      row(u"fal-ai/birefnet/v2", u"Birefnet Background Removal", u"image-to-image"),
      row(u"fal-ai/bria/background/remove", u"Bria RMBG 2.0", u"image-to-image"),
      row(u"fal-ai/veo3.1", u"Veo 3.1", u"text-to-video"),
      row(u"xai/grok-imagine-video/text-to-video", u"Grok Imagine Video", u"text-to-video"),
      row(u"fal-ai/kling-video/v3/pro/image-to-video", u"Kling Video v3 Pro", u"image-to-video"),
      row(u"fal-ai/minimax/hailuo-02/standard/image-to-video", u"MiniMax Hailuo 02", u"image-to-video"),
      row(u"bytedance/seedance-2.0/reference-to-video", u"Seedance 2.0", u"image-to-video"),
      row(u"fal-ai/topaz/upscale/video", u"Topaz Video Upscale", u"video-to-video"),
      row(u"fal-ai/elevenlabs/sound-effects/v2", u"ElevenLabs Sound Effects V2", u"text-to-audio"),
      row(u"fal-ai/stable-audio-25/text-to-audio", u"Stable Audio 2.5", u"text-to-audio"),
      row(u"fal-ai/minimax/speech-2.8-hd", u"MiniMax Speech 2.8 HD", u"text-to-speech"),
      row(u"fal-ai/demucs", u"Demucs", u"audio-to-audio")};
  return all;
}

}  // namespace sandbox
