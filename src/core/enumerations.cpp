#include "core/enumerations.h"

namespace sorvan::core {
namespace {

template <class Enumeration>
struct Named {
  Enumeration value;
  QLatin1StringView raw;
};

template <class Enumeration, std::size_t Count>
QString rawIn(const std::array<Named<Enumeration>, Count>& names, Enumeration value) {
  for (const auto& name : names)
    if (name.value == value) return QString(name.raw);
  Q_UNREACHABLE();
}

template <class Enumeration, std::size_t Count>
std::optional<Enumeration> valueIn(const std::array<Named<Enumeration>, Count>& names, QStringView raw) {
  for (const auto& name : names)
    if (raw == name.raw) return name.value;
  return std::nullopt;
}

constexpr QLatin1StringView text(const char* literal) { return QLatin1StringView(literal); }

constexpr std::array<Named<MediaType>, 3> mediaTypes{
    {{MediaType::image, text("image")}, {MediaType::video, text("video")}, {MediaType::audio, text("audio")}}};

constexpr std::array<Named<AssetStatus>, 5> assetStatuses{{{AssetStatus::draft, text("draft")},
                                                           {AssetStatus::shortlist, text("shortlist")},
                                                           {AssetStatus::approved, text("approved")},
                                                           {AssetStatus::final, text("final")},
                                                           {AssetStatus::rejected, text("rejected")}}};

constexpr std::array<Named<AssetSourceType>, 3> sourceTypes{{{AssetSourceType::generated, text("generated")},
                                                             {AssetSourceType::imported, text("imported")},
                                                             {AssetSourceType::clipboard, text("clipboard")}}};

constexpr std::array<Named<RelationshipType>, 11> relationshipTypes{
    {{RelationshipType::generatedFrom, text("generatedFrom")},
     {RelationshipType::variationOf, text("variationOf")},
     {RelationshipType::editedFrom, text("editedFrom")},
     {RelationshipType::imageToVideo, text("imageToVideo")},
     {RelationshipType::upscaledFrom, text("upscaledFrom")},
     {RelationshipType::referenceFor, text("referenceFor")},
     {RelationshipType::frameOf, text("frameOf")},
     {RelationshipType::copiedFrom, text("copiedFrom")},
     {RelationshipType::joinedFrom, text("joinedFrom")},
     {RelationshipType::trimmedFrom, text("trimmedFrom")},
     {RelationshipType::soundFrom, text("soundFrom")}}};

constexpr std::array<Named<RelationshipType>, 11> relationshipLabels{
    {{RelationshipType::generatedFrom, text("Generated from")},
     {RelationshipType::variationOf, text("Variation of")},
     {RelationshipType::editedFrom, text("Edited from")},
     {RelationshipType::imageToVideo, text("Image to video")},
     {RelationshipType::upscaledFrom, text("Upscaled from")},
     {RelationshipType::referenceFor, text("Reference for")},
     {RelationshipType::frameOf, text("Frame of")},
     {RelationshipType::copiedFrom, text("Copied from")},
     {RelationshipType::joinedFrom, text("Joined from")},
     {RelationshipType::trimmedFrom, text("Trimmed from")},
     {RelationshipType::soundFrom, text("Sound from")}}};

constexpr std::array<Named<ProviderID>, 3> providers{{{ProviderID::openAI, text("OpenAI")},
                                                      {ProviderID::fal, text("fal.ai")},
                                                      {ProviderID::credits, text("Sorvan Credits")}}};

}  // namespace

QString rawValue(MediaType type) { return rawIn(mediaTypes, type); }
QString rawValue(AssetStatus status) { return rawIn(assetStatuses, status); }
QString rawValue(AssetSourceType source) { return rawIn(sourceTypes, source); }
QString rawValue(RelationshipType type) { return rawIn(relationshipTypes, type); }
QString rawValue(ProviderID provider) { return rawIn(providers, provider); }
QString label(RelationshipType type) { return rawIn(relationshipLabels, type); }

template <>
std::optional<MediaType> fromRawValue<MediaType>(QStringView raw) {
  return valueIn(mediaTypes, raw);
}
template <>
std::optional<AssetStatus> fromRawValue<AssetStatus>(QStringView raw) {
  return valueIn(assetStatuses, raw);
}
template <>
std::optional<AssetSourceType> fromRawValue<AssetSourceType>(QStringView raw) {
  return valueIn(sourceTypes, raw);
}
template <>
std::optional<RelationshipType> fromRawValue<RelationshipType>(QStringView raw) {
  return valueIn(relationshipTypes, raw);
}
template <>
std::optional<ProviderID> fromRawValue<ProviderID>(QStringView raw) {
  return valueIn(providers, raw);
}

}  // namespace sorvan::core
