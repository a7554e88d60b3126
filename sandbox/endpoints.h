// Which endpoints the service knows, what they make and what they cost.
#pragma once
#include <QString>
#include <optional>

#include "entry.h"

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
  Solid,  // a body in space
  Words,
};

// What the endpoint makes, judged by its id, or nothing when the service has no such endpoint.
std::optional<Product> productOf(const QString& endpoint);

// What one unit of the endpoint costs, as the list says it, or nothing when the service has no such endpoint.
std::optional<Price> priceOf(const QString& endpoint);

// "owner/app" of an id, and "owner/app/rest" of ids that begin with workflows/ or comfy/.
QString applicationOf(const QString& endpoint);

}  // namespace sandbox
