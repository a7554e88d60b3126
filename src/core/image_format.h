// The composer's vocabulary of sizes: one fixed table.
#pragma once

#include <QString>
#include <span>

#include "core/room.h"

namespace sorvan::core {

struct ImageFormat {
  QLatin1StringView size;   ///< "WxH" in pixels; the text used as a request's size
  QLatin1StringView name;   ///< such as "Landscape"
  QLatin1StringView ratio;  ///< such as "3:2"
  int width = 0;            ///< pixels
  int height = 0;           ///< pixels
  bool supportsOpenAI = false;

  /// Every known format, in the order of the menus. The table lives as long as the process.
  static std::span<const ImageFormat> all();
  /// The format of a size text, or null when the text names none.
  static const ImageFormat* find(QStringView size);
  /// The first format of a ratio such as "16:9", or null.
  static const ImageFormat* withRatio(QStringView ratio);
};

}  // namespace sorvan::core
