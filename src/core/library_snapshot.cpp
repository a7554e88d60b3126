#include "core/library_snapshot.h"

#include <QSet>
#include <algorithm>

namespace sorvan::core {
namespace {

/// Which table holds the records of a kind that is noted whole.
template <class R>
constexpr LibraryTables tableOf = LibraryTables::none;
template <>
constexpr LibraryTables tableOf<Project> = LibraryTables::projects;
template <>
constexpr LibraryTables tableOf<SavedReference> = LibraryTables::savedReferences;
template <>
constexpr LibraryTables tableOf<ContactSheet> = LibraryTables::contactSheets;
template <>
constexpr LibraryTables tableOf<ClipSequence> = LibraryTables::sequences;

template <class R>
void captureAll(const LibraryStore& store, LibraryTables tables, std::vector<R>& into) {
  if (!tables.has(tableOf<R>)) return;
  for (const Ref<R>& record : store.context().fetch<R>()) into.push_back(*record);
}

ProjectsByID projectsOfCharges(const LibraryStore& store) {
  ProjectsByID projects;
  for (const ExtraCharge& charge : store.extraCharges().entries()) projects.insert(charge.id, charge.projectID);
  return projects;
}

/// The entries of `here` that are missing or different in `there`.
ProjectsByID differing(const ProjectsByID& here, const ProjectsByID& there) {
  ProjectsByID difference;
  for (auto entry = here.begin(); entry != here.end(); ++entry)
    if (there.contains(entry.key()) && there.value(entry.key()) != entry.value())
      difference.insert(entry.key(), entry.value());
  return difference;
}

const LibraryRecord& anySide(const Patch& patch) { return patch.before ? *patch.before : *patch.after; }

}  // namespace

LibrarySnapshot::LibrarySnapshot(const LibraryStore& store, const UndoScope& scope)
    : store_(store),
      tables_(scope.tables),
      watched_(store.watchedProjects->snapshot()),
      charges_(projectsOfCharges(store)) {
  auto& assets = std::get<std::vector<Asset>>(records_);
  assets.reserve(scope.assets.size());
  for (const AssetRef& asset : scope.assets) assets.push_back(*asset);
  if (!store.hasWorkspace()) return;
  captureAll(store, tables_, std::get<std::vector<Project>>(records_));
  captureAll(store, tables_, std::get<std::vector<SavedReference>>(records_));
  captureAll(store, tables_, std::get<std::vector<ContactSheet>>(records_));
  captureAll(store, tables_, std::get<std::vector<ClipSequence>>(records_));
}

qsizetype LibrarySnapshot::size() const {
  return std::apply([](const auto&... kinds) { return static_cast<qsizetype>((kinds.size() + ...)); }, records_);
}

template <class R>
void LibrarySnapshot::compare(std::vector<Patch>& patches) const {
  const std::vector<R>& before = std::get<std::vector<R>>(records_);
  // 1. What was there: changed or gone.
  for (const R& then : before) {
    const Ref<R> now = store_.context().find<R>(then.id);
    if (!now)
      patches.push_back({wholeRecord(then), std::nullopt});
    else if (!sameFields(then, *now))
      patches.push_back({differingPart(then, *now), differingPart(*now, then)});
  }
  // 2. What is new.
  if (!tables_.has(tableOf<R>)) return;
  QSet<QUuid> known;
  for (const R& then : before) known.insert(then.id);
  for (const Ref<R>& now : store_.context().fetch<R>())
    if (!known.contains(now->id)) patches.push_back({std::nullopt, wholeRecord(*now)});
}

LibraryEdit LibrarySnapshot::edit(const QString& name) const {
  LibraryEdit edit;
  edit.name = name;
  edit.compared = size();
  if (!store_.hasWorkspace()) return edit;
  compare<Project>(edit.patches);
  compare<Asset>(edit.patches);
  compare<SavedReference>(edit.patches);
  compare<ContactSheet>(edit.patches);
  compare<ClipSequence>(edit.patches);
  std::ranges::sort(edit.patches, [](const Patch& left, const Patch& right) {
    const LibraryRecord& one = anySide(left);
    const LibraryRecord& other = anySide(right);
    return one.kind != other.kind ? one.kind < other.kind : one.id < other.id;
  });
  const ProjectsByID watched = store_.watchedProjects->snapshot();
  const ProjectsByID charges = projectsOfCharges(store_);
  edit.watchedBefore = differing(watched_, watched);
  edit.watchedAfter = differing(watched, watched_);
  edit.chargesBefore = differing(charges_, charges);
  edit.chargesAfter = differing(charges, charges_);
  return edit;
}

Patch addedAssetPatch(const Asset& asset, Instant now) {
  Asset inTrash = asset;
  inTrash.deletedAt = now;
  return {differingPart(inTrash, asset), differingPart(asset, inTrash)};
}

}  // namespace sorvan::core
