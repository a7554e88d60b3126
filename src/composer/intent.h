// What a text in the composer asks for: a generation, or one of the library's commands.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <variant>

#include "composer/room.h"
#include "core/enumerations.h"

namespace sorvan::composer {

/// How the composer's text is read: as a prompt, or as a command to the library.
enum class ComposerMode { generation, command };

struct GenerationInstruction {
  QString prompt;
  std::optional<std::int64_t> count = {};  ///< outputs, where the text names a number
  bool usesSelection = false;              ///< the selected pictures are its references
  RelationshipType relationship = RelationshipType::referenceFor;
  bool operator==(const GenerationInstruction&) const = default;
};

struct SearchAssets {
  QString query;
  bool operator==(const SearchAssets&) const = default;
};

/// Part of a model's id or name.
struct ModelFilter {
  QString model;
  bool operator==(const ModelFilter&) const = default;
};
struct FavoritesFilter {
  bool operator==(const FavoritesFilter&) const = default;
};
struct GeneratedLastWeek {
  bool operator==(const GeneratedLastWeek&) const = default;
};
using AssetFilterIntent = std::variant<ModelFilter, MediaType, AssetStatus, FavoritesFilter, GeneratedLastWeek>;
struct FilterAssets {
  AssetFilterIntent filter;
  bool operator==(const FilterAssets&) const = default;
};

/// Several conditions at once; absent ones ask for nothing.
struct CompoundAssetFilter {
  std::optional<QString> query;
  std::optional<QString> model;
  std::optional<AssetStatus> status;
  std::optional<MediaType> media;
  std::optional<QString> orientation;  ///< "portrait", "landscape" or "square"
  std::optional<bool> favorites;
  std::optional<int> days;  ///< only the last so many
  bool operator==(const CompoundAssetFilter&) const = default;
};

struct MoveAssets {
  QString project;  ///< by name
  bool operator==(const MoveAssets&) const = default;
};
struct FavoriteAssets {
  bool favorite = true;
  bool operator==(const FavoriteAssets&) const = default;
};
struct SetAssetStatus {
  AssetStatus status = AssetStatus::draft;
  bool operator==(const SetAssetStatus&) const = default;
};
struct CreateProject {
  QString name;
  bool operator==(const CreateProject&) const = default;
};
/// Understood, and not on offer.
struct Unsupported {
  QString message;
  bool operator==(const Unsupported&) const = default;
};
/// Not understood.
struct Unknown {
  QString message;
  bool operator==(const Unknown&) const = default;
};
struct CompareAssets {
  bool operator==(const CompareAssets&) const = default;
};
struct ShowLineage {
  bool operator==(const ShowLineage&) const = default;
};
struct ShowGallery {
  bool operator==(const ShowGallery&) const = default;
};

using SorvanIntent =
    std::variant<GenerationInstruction, SearchAssets, FilterAssets, CompoundAssetFilter, MoveAssets, FavoriteAssets,
                 SetAssetStatus, CreateProject, Unsupported, Unknown, CompareAssets, ShowLineage, ShowGallery>;

/// What the intent is called, such as "Filter library".
QString label(const SorvanIntent& intent);

/// Equal for intents that look alike in the composer, so that typing inside a prompt redraws nothing.
QString presentationKey(const SorvanIntent& intent);

/// The status as a word of a sentence: "Approved".
QString capitalized(AssetStatus status);

}  // namespace sorvan::composer
