#include "core/asset_row.h"

namespace sorvan::core {
namespace {

std::optional<double> creditsOf(const Generation& generation) {
  constexpr double creditsPerDollar = 100;
  if (const auto cost = generation.costRecord(); cost && cost->credits) return cost->credits;
  if (generation.estimatedCost) return *generation.estimatedCost * creditsPerDollar;
  return std::nullopt;
}

}  // namespace

AssetRow makeAssetRow(const Asset& asset, const Generation* generation) {
  AssetRow row;
  row.id = asset.id;
  row.projectID = asset.projectID;
  row.trashed = asset.deletedAt.has_value();
  row.favorite = asset.favorite;
  row.status = asset.statusRaw;
  // Text that names no known type counts as a picture; a known one is shared instead of copied.
  row.mediaType = fromRawValue<MediaType>(asset.mediaType) ? asset.mediaType : rawValue(asset.type());
  row.rating = asset.rating.value_or(0);
  row.width = asset.width;
  row.height = asset.height;
  row.createdAt = asset.createdAt;
  row.recentDate = asset.importedAt.value_or(asset.createdAt);
  row.name = asset.filename();
  if (!generation) return row;
  if (generation->status != QStringLiteral("imported")) row.generatedAt = generation->createdAt;
  row.provider = generation->provider;
  row.model = generation->model;
  row.credits = creditsOf(*generation);
  return row;
}

}  // namespace sorvan::core
