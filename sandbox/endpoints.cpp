#include "endpoints.h"

#include <QStringList>

#include "catalogue.h"

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

struct CategoryProduct {
  const char* category;
  Product product;
};

// What a model of the catalogue makes when its id says nothing narrower.
constexpr CategoryProduct categories[] = {{"text-to-image", Product::Picture},
                                          {"image-to-image", Product::PictureEdit},
                                          {"text-to-video", Product::Clip},
                                          {"image-to-video", Product::Clip},
                                          {"video-to-video", Product::ClipEdit},
                                          {"audio-to-video", Product::Clip},
                                          {"text-to-audio", Product::Effect},
                                          {"text-to-speech", Product::Speech},
                                          {"audio-to-audio", Product::CleanSound},
                                          {"video-to-audio", Product::SoundForClip},
                                          {"text-to-3d", Product::Solid},
                                          {"image-to-3d", Product::Solid},
                                          {"training", Product::Words},
                                          {"llm", Product::Words},
                                          {"vision", Product::Words},
                                          {"speech-to-text", Product::Words}};

std::optional<Product> productByRule(const QString& endpoint) {
  for (const Rule& rule : rules)
    if (endpoint.contains(QString::fromUtf16(rule.part))) return rule.product;
  return std::nullopt;
}

std::optional<Product> productOfCategory(const std::string& category) {
  for (const CategoryProduct& each : categories)
    if (category == each.category) return each.product;
  return std::nullopt;
}

// Categories of which every model makes the same.
bool saysEnough(const std::string& category) {
  return category == "text-to-image" || category == "text-to-video" || category == "image-to-video" ||
         category == "text-to-speech" || category.ends_with("3d") || category == "training" || category == "llm" ||
         category == "vision" || category == "speech-to-text";
}

}  // namespace

std::optional<Product> productOf(const QString& endpoint) {
  if (endpoint.count(QLatin1Char('/')) < 1) return std::nullopt;
  const Entry* entry = entryOf(endpoint);
  if (entry && saysEnough(entry->category)) return productOfCategory(entry->category);
  const auto byRule = productByRule(endpoint);
  return byRule || !entry ? byRule : productOfCategory(entry->category);
}

Price usualPriceOf(Product product) {
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
    case Product::Solid:
    case Product::Words:
      return {0.02, QStringLiteral("generations")};
    default:
      return {0.002, QStringLiteral("seconds")};
  }
}

std::optional<Price> priceOf(const QString& endpoint) {
  const Entry* entry = entryOf(endpoint);
  if (entry && entry->price) return entry->price;
  const auto product = productOf(endpoint);
  if (!product) return std::nullopt;
  return usualPriceOf(*product);
}

QString applicationOf(const QString& endpoint) {
  const QStringList parts = endpoint.split(QLatin1Char('/'));
  const bool longer = parts.first() == QStringLiteral("workflows") || parts.first() == QStringLiteral("comfy");
  return parts.mid(0, longer ? 3 : 2).join(QLatin1Char('/'));
}

}  // namespace sandbox
