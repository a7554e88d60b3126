// Which endpoints the service knows, what they make and what they cost.
#pragma once
#include <QString>
#include <optional>
#include <vector>

namespace sandbox {

enum class Product {
  Picture,
  PictureEdit,
  Upscale,
  CutOut,
  Clip,
  ClipEdit,  // a clip made from a clip, with its pictures changed
  ClipUpscale,
  Speech,
  Music,
  Effect,
  Stems,        // several named sounds
  PulledSound,  // the sound that was asked for, and the rest
  CleanSound,
  LongerSound,
  SoundForClip,
};

// What the endpoint makes, judged by its id, or nothing when the service has no such endpoint.
std::optional<Product> productOf(const QString& endpoint);

struct Price {
  double dollars;
  QString unit;  // "images", "megapixels", "seconds"
};
Price priceOf(Product product);

// "owner/app" of an id, and "owner/app/rest" of ids that begin with workflows/ or comfy/.
QString applicationOf(const QString& endpoint);

struct ListedEndpoint {
  QString id;
  QString name;
  QString category;
};
// Those that the platform lists; many more are known to productOf.
const std::vector<ListedEndpoint>& listedEndpoints();

}  // namespace sandbox
