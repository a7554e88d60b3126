// The string-valued enumerations of the library. Each is persisted by its raw value.
#pragma once

#include <QString>
#include <array>
#include <boost/describe.hpp>
#include <optional>

#include "base/enum_text.h"
#include "core/room.h"

namespace sorvan::core {

enum class MediaType { image, video, audio };
BOOST_DESCRIBE_ENUM(MediaType, image, video, audio)

enum class AssetStatus { draft, shortlist, approved, final, rejected };
BOOST_DESCRIBE_ENUM(AssetStatus, draft, shortlist, approved, final, rejected)

enum class AssetSourceType { generated, imported, clipboard };
BOOST_DESCRIBE_ENUM(AssetSourceType, generated, imported, clipboard)

enum class RelationshipType {
  generatedFrom,
  variationOf,
  editedFrom,
  imageToVideo,
  upscaledFrom,
  referenceFor,
  frameOf,
  copiedFrom,
  joinedFrom,
  trimmedFrom,
  soundFrom
};
BOOST_DESCRIBE_ENUM(RelationshipType, generatedFrom, variationOf, editedFrom, imageToVideo, upscaledFrom, referenceFor,
                    frameOf, copiedFrom, joinedFrom, trimmedFrom, soundFrom)

/// Who runs a request. The raw value is also the display name.
enum class ProviderID {
  openAI,  ///< retired: stored rows keep decoding, no new request may use it
  fal,
  credits
};

inline constexpr std::array allMediaTypes{MediaType::image, MediaType::video, MediaType::audio};
inline constexpr std::array allAssetStatuses{AssetStatus::draft, AssetStatus::shortlist, AssetStatus::approved,
                                             AssetStatus::final, AssetStatus::rejected};

/// The text that stands for a case in the database and in JSON.
template <class Enumeration>
QString rawValue(Enumeration value) {
  return enumText(value);
}

/// The case that a raw value names; nothing for unknown text. Callers choose their own fallback.
template <class Enumeration>
std::optional<Enumeration> fromRawValue(const QString& raw) {
  const auto found = enumFromText<Enumeration>(raw);
  return found && enumText(*found) == raw ? found : std::nullopt;
}

/// The label of an edge as the inspector shows it, such as "Variation of".
QString label(RelationshipType type);

}  // namespace sorvan::core

namespace sorvan::base {

template <>
struct EnumText<core::ProviderID> {
  static constexpr std::array<std::pair<core::ProviderID, const char*>, 3> rows{
      {{core::ProviderID::openAI, "OpenAI"},
       {core::ProviderID::fal, "fal.ai"},
       {core::ProviderID::credits, "Sorvan Credits"}}};
};

/// A request whose relationship a later version has named still decodes.
template <>
struct EnumText<core::RelationshipType> {
  static constexpr core::RelationshipType fallback = core::RelationshipType::referenceFor;
};

}  // namespace sorvan::base
