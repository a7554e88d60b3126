// What inspecting a media file tells.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "core/enumerations.h"

namespace sorvan::core {

struct MediaMetadata {
  MediaType type = MediaType::image;
  int width = 0;                   ///< pixels as shown, that is after rotation; 0 for sound
  int height = 0;                  ///< pixels as shown; 0 for sound
  std::optional<double> duration;  ///< seconds
  std::int64_t fileSize = 0;       ///< bytes
  QString mimeType;

  bool operator==(const MediaMetadata&) const = default;
};

}  // namespace sorvan::core
