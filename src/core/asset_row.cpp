#include "core/asset_row.h"

namespace sorvan::core {
namespace {

std::optional<double> creditsOf(const Generation& generation) {
  constexpr double creditsPerDollar = 100;
  if (const auto cost = generation.costRecord(); cost && cost->credits) return cost->credits;
  if (generation.estimatedCost) return *generation.estimatedCost * creditsPerDollar;
  return std::nullopt;
}

/// Text that names no known type counts as a picture; a known one is shared with the record.
QString countedType(const Asset& asset) {
  static const QSet<QString> known{rawValue(MediaType::image), rawValue(MediaType::video), rawValue(MediaType::audio)};
  return known.contains(asset.mediaType) ? asset.mediaType : rawValue(asset.type());
}

/// The file name; where the item never had another one, the record's own text is shared.
QString countedName(const Asset& asset) {
  const QString& original = asset.originalFilename;
  const QStringView name = QStringView(asset.localFilePath).mid(asset.localFilePath.lastIndexOf(u'/') + 1);
  return name == original ? original : name.toString();
}

}  // namespace

AssetRow makeAssetRow(const Asset& asset, const Generation* generation) {
  AssetRow row;
  row.id = asset.id;
  row.projectID = asset.projectID;
  row.trashed = asset.deletedAt.has_value();
  row.favorite = asset.favorite;
  row.status = asset.statusRaw;
  row.mediaType = countedType(asset);
  row.rating = asset.rating.value_or(0);
  row.width = asset.width;
  row.height = asset.height;
  row.createdAt = asset.createdAt;
  row.recentDate = asset.importedAt.value_or(asset.createdAt);
  row.name = countedName(asset);
  if (!generation) return row;
  if (generation->status != QStringLiteral("imported")) row.generatedAt = generation->createdAt;
  row.provider = generation->provider;
  row.model = generation->model;
  row.credits = creditsOf(*generation);
  return row;
}

}  // namespace sorvan::core
