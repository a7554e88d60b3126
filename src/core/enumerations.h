// The string-valued enumerations of the library. Each is persisted by its raw value.
#pragma once

#include <QString>
#include <array>
#include <optional>

#include "core/room.h"

namespace sorvan::core {

enum class MediaType { image, video, audio };
enum class AssetStatus { draft, shortlist, approved, final, rejected };
enum class AssetSourceType { generated, imported, clipboard };
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
QString rawValue(MediaType type);
QString rawValue(AssetStatus status);
QString rawValue(AssetSourceType source);
QString rawValue(RelationshipType type);
QString rawValue(ProviderID provider);

/// The label of an edge as the inspector shows it, such as "Variation of".
QString label(RelationshipType type);

/// The case that a raw value names; nothing for unknown text. Callers choose their own fallback.
template <class Enumeration>
std::optional<Enumeration> fromRawValue(QStringView raw);
template <>
std::optional<MediaType> fromRawValue<MediaType>(QStringView raw);
template <>
std::optional<AssetStatus> fromRawValue<AssetStatus>(QStringView raw);
template <>
std::optional<AssetSourceType> fromRawValue<AssetSourceType>(QStringView raw);
template <>
std::optional<RelationshipType> fromRawValue<RelationshipType>(QStringView raw);
template <>
std::optional<ProviderID> fromRawValue<ProviderID>(QStringView raw);

}  // namespace sorvan::core
