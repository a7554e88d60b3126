#include "core/sheet_listing.h"

#include <QSet>

namespace sorvan::core {

std::vector<QUuid> listedOn(const LibraryStore& store, const ContactSheet& sheet) {
  QSet<QUuid> seen;
  for (const QUuid& excluded : sheet.excludedAssetIDs) seen.insert(excluded);
  std::vector<QUuid> listed;
  const auto add = [&](const QUuid& id) {
    if (seen.contains(id)) return;
    seen.insert(id);
    listed.push_back(id);
  };
  if (sheet.comparisonID)
    for (const JobRef& job : store.comparisonJobs(*sheet.comparisonID))
      for (const GenerationRef& generation : store.generationsOf(job->id)) add(generation->assetID);
  for (const QUuid& id : sheet.assetIDs) add(id);
  return listed;
}

}  // namespace sorvan::core
