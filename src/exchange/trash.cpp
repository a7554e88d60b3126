#include "exchange/trash.h"

#include <QSet>
#include <algorithm>

#include "core/history.h"
#include "core/sheet_listing.h"
#include "core/small_edits.h"

namespace sorvan::exchange {
namespace {

QSet<QUuid> idsOf(const std::vector<AssetRef>& assets) {
  QSet<QUuid> ids;
  for (const AssetRef& asset : assets) ids.insert(asset->id);
  return ids;
}

bool holdsAny(const std::vector<QUuid>& listed, const QSet<QUuid>& ids) {
  return std::ranges::any_of(listed, [&](const QUuid& id) { return ids.contains(id); });
}

void takeOut(std::vector<QUuid>& list, const QSet<QUuid>& ids) {
  std::erase_if(list, [&](const QUuid& id) { return ids.contains(id); });
}

void leaveReferences(LibraryStore& store, const QSet<QUuid>& ids) {
  for (const SavedReferenceRef& reference : store.savedReferences()) {
    if (!holdsAny(reference->assetIDs, ids)) continue;
    SavedReference& changed = store.context().edit(reference);
    takeOut(changed.assetIDs, ids);
    changed.updatedAt = store.now();
    if (changed.assetIDs.empty()) store.context().remove(reference);
  }
}

void leaveSheets(LibraryStore& store, const QSet<QUuid>& ids) {
  for (const ContactSheetRef& sheet : store.contactSheets()) {
    const std::vector<QUuid> listed = listedOn(store, *sheet);
    if (!holdsAny(listed, ids)) continue;
    ContactSheet& changed = store.context().edit(sheet);
    takeOut(changed.assetIDs, ids);
    // What a comparison's jobs made is listed by the jobs, so that taking it off the list alone would not last.
    if (changed.comparisonID)
      for (const QUuid& id : listed)
        if (ids.contains(id)) changed.excludedAssetIDs.push_back(id);
  }
}

}  // namespace

bool trash(LibraryStore& store, const std::vector<AssetRef>& assets) {
  if (assets.empty()) return true;
  return performUndoable(store, QStringLiteral("Move to Trash"), {assets, LibraryTables::none}, [&] {
    // 1. A job that needs one of them is asked before anything changes.
    refuseReferencesOfActiveJobs(store, assets);
    // 2. They are in Trash from now on; one that is there keeps its date.
    for (const AssetRef& asset : assets)
      if (!asset->isTrashed()) store.context().edit(asset).deletedAt = store.now();
    store.save(LibraryTables::none);
  });
}

std::optional<Holders> holdersOf(const LibraryStore& store, const std::vector<AssetRef>& assets) {
  const QSet<QUuid> ids = idsOf(assets);
  Holders holders;
  for (const SavedReferenceRef& reference : store.savedReferences())
    if (holdsAny(reference->assetIDs, ids)) ++holders.references;
  for (const ContactSheetRef& sheet : store.contactSheets())
    if (holdsAny(listedOn(store, *sheet), ids)) ++holders.sheets;
  if (holders.references == 0 && holders.sheets == 0) return std::nullopt;
  return holders;
}

bool restore(LibraryStore& store, const std::vector<AssetRef>& assets, Rejoin rejoin) {
  if (assets.empty()) return true;
  const LibraryTables lists = rejoin == Rejoin::galleryOnly
                                  ? LibraryTables::savedReferences | LibraryTables::contactSheets
                                  : LibraryTables::none;
  return performUndoable(store, QStringLiteral("Restore Items"), {assets, lists}, [&] {
    for (const AssetRef& asset : assets) store.context().edit(asset).deletedAt = std::nullopt;
    if (rejoin == Rejoin::galleryOnly) {
      leaveReferences(store, idsOf(assets));
      leaveSheets(store, idsOf(assets));
    }
    store.save(lists);
  });
}

}  // namespace sorvan::exchange
