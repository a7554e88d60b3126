#include "core/image_format.h"

#include <array>

namespace sorvan::core {
namespace {

constexpr QLatin1StringView text(const char* literal) { return QLatin1StringView(literal); }

constexpr std::array<ImageFormat, 8> formats{
    {{text("1024x1024"), text("Square"), text("1:1"), 1024, 1024, true},
     {text("1536x1024"), text("Landscape"), text("3:2"), 1536, 1024, true},
     {text("1024x1536"), text("Portrait"), text("2:3"), 1024, 1536, true},
     {text("1408x1056"), text("Landscape"), text("4:3"), 1408, 1056, false},
     {text("1056x1408"), text("Portrait"), text("3:4"), 1056, 1408, false},
     {text("1536x864"), text("Widescreen"), text("16:9"), 1536, 864, false},
     {text("864x1536"), text("Vertical"), text("9:16"), 864, 1536, false},
     {text("1024x1280"), text("Social Portrait"), text("4:5"), 1024, 1280, false}}};

}  // namespace

std::span<const ImageFormat> ImageFormat::all() { return formats; }

const ImageFormat* ImageFormat::find(QStringView size) {
  for (const ImageFormat& format : formats)
    if (size == format.size) return &format;
  return nullptr;
}

const ImageFormat* ImageFormat::withRatio(QStringView ratio) {
  for (const ImageFormat& format : formats)
    if (ratio == format.ratio) return &format;
  return nullptr;
}

}  // namespace sorvan::core
