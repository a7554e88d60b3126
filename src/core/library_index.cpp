#include "core/library_index.h"

#include <algorithm>

namespace sorvan::core {
namespace {

/// Puts records that came in order of insertion into the order of a date, oldest first. They mostly are in it already.
template <class R, class Date>
std::vector<Ref<R>> byDate(std::vector<Ref<R>> records, Date R::*date) {
  const auto older = [date](const Ref<R>& left, const Ref<R>& right) { return (*left).*date < (*right).*date; };
  if (!std::ranges::is_sorted(records, older)) std::ranges::stable_sort(records, older);
  return records;
}

template <class Value>
const Value& valueOrEmpty(const QHash<QUuid, Value>& values, const QUuid& id) {
  static const Value empty;
  const auto found = values.constFind(id);
  return found == values.constEnd() ? empty : *found;
}

}  // namespace

void LibraryArrays::fetch(RecordContext& context, LibraryTables tables) {
  // 1. Read what is asked for into arrays of its own, so that a failure leaves all of them as they were.
  LibraryArrays fresh;
  if (tables.has(LibraryTables::projects)) fresh.projects = byDate(context.fetch<Project>(), &Project::createdAt);
  if (tables.has(LibraryTables::assets)) fresh.assets = NewestFirst(byDate(context.fetch<Asset>(), &Asset::createdAt));
  if (tables.has(LibraryTables::relationships)) fresh.relationships = context.fetch<AssetRelationship>();
  if (tables.has(LibraryTables::references)) fresh.references = context.fetch<ReferenceAsset>();
  if (tables.has(LibraryTables::jobs))
    fresh.jobs = NewestFirst(byDate(context.fetch<GenerationJob>(), &GenerationJob::createdAt));
  if (tables.has(LibraryTables::savedReferences))
    fresh.savedReferences = NewestFirst(byDate(context.fetch<SavedReference>(), &SavedReference::updatedAt));
  if (tables.has(LibraryTables::contactSheets))
    fresh.contactSheets = NewestFirst(byDate(context.fetch<ContactSheet>(), &ContactSheet::createdAt));
  if (tables.has(LibraryTables::sequences))
    fresh.sequences = NewestFirst(byDate(context.fetch<ClipSequence>(), &ClipSequence::updatedAt));
  // They may be read by a thread of their own since the items were asked for.
  if (tables.has(LibraryTables::generations)) fresh.generations = context.fetch<Generation>();
  // 2. Take over exactly those.
  if (tables.has(LibraryTables::projects)) projects = std::move(fresh.projects);
  if (tables.has(LibraryTables::assets)) assets = std::move(fresh.assets);
  if (tables.has(LibraryTables::generations)) generations = std::move(fresh.generations);
  if (tables.has(LibraryTables::relationships)) relationships = std::move(fresh.relationships);
  if (tables.has(LibraryTables::references)) references = std::move(fresh.references);
  if (tables.has(LibraryTables::jobs)) jobs = std::move(fresh.jobs);
  if (tables.has(LibraryTables::savedReferences)) savedReferences = std::move(fresh.savedReferences);
  if (tables.has(LibraryTables::contactSheets)) contactSheets = std::move(fresh.contactSheets);
  if (tables.has(LibraryTables::sequences)) sequences = std::move(fresh.sequences);
}

std::size_t LibraryArrays::insertionPosition(Instant createdAt) const {
  const auto place = std::lower_bound(assets.begin(), assets.end(), createdAt,
                                      [](const AssetRef& asset, Instant moment) { return asset->createdAt > moment; });
  return static_cast<std::size_t>(place - assets.begin());
}

std::optional<std::size_t> LibraryArrays::positionOf(const Asset& asset) const {
  // Items of one batch share a date, so the search ends with a walk over the equal ones.
  for (std::size_t index = insertionPosition(asset.createdAt);
       index < assets.size() && assets[index]->createdAt == asset.createdAt; ++index)
    if (assets[index]->id == asset.id) return index;
  return std::nullopt;
}

void LibraryIndex::rebuild(const LibraryArrays& arrays, LibraryTables tables) {
  if (tables.has(LibraryTables::assets)) forgetChecksums();
  if (tables.has(LibraryTables::generations)) rebuildGenerations(arrays);
  if (tables.has(LibraryTables::relationships)) rebuildEdges(arrays);
  if (tables.has(LibraryTables::references)) rebuildReferences(arrays);
  if (tables.has(LibraryTables::jobs)) rebuildComparisons(arrays);
}

void LibraryIndex::add(const GenerationRef& generation) {
  // On a clash the first one stays.
  if (!generationOfAsset_.contains(generation->assetID)) generationOfAsset_.insert(generation->assetID, generation);
  if (!generation->isCopy()) generationsOfJob_[generation->jobID].push_back(generation);
}

void LibraryIndex::add(const RelationshipRef& edge) {
  parentEdges_[edge->childAssetID].push_back(edge);
  childEdges_[edge->parentAssetID].push_back(edge);
}

void LibraryIndex::add(const ReferenceRef& reference) { references_[reference->generationID].push_back(reference); }

void LibraryIndex::rebuildGenerations(const LibraryArrays& arrays) {
  generationOfAsset_.clear();
  generationsOfJob_.clear();
  generationOfAsset_.reserve(static_cast<qsizetype>(arrays.generations.size()));
  for (const GenerationRef& generation : arrays.generations) add(generation);
}

void LibraryIndex::rebuildEdges(const LibraryArrays& arrays) {
  parentEdges_.clear();
  childEdges_.clear();
  for (const RelationshipRef& edge : arrays.relationships) add(edge);
}

void LibraryIndex::rebuildReferences(const LibraryArrays& arrays) {
  references_.clear();
  for (const ReferenceRef& reference : arrays.references) add(reference);
}

void LibraryIndex::rebuildComparisons(const LibraryArrays& arrays) {
  comparisons_.clear();
  for (const JobRef& job : arrays.jobs) {
    // Most jobs belong to none: their requests are not decoded before somebody looks at them.
    if (!job->requestData.contains("\"comparisonID\"")) continue;
    const auto request = job->request();
    if (request && request->comparisonID) comparisons_[*request->comparisonID].push_back(job);
  }
}

const std::vector<GenerationRef>& LibraryIndex::generationsOf(const QUuid& job) const {
  return valueOrEmpty(generationsOfJob_, job);
}
const std::vector<RelationshipRef>& LibraryIndex::parentEdges(const QUuid& child) const {
  return valueOrEmpty(parentEdges_, child);
}
const std::vector<RelationshipRef>& LibraryIndex::childEdges(const QUuid& parent) const {
  return valueOrEmpty(childEdges_, parent);
}
const std::vector<ReferenceRef>& LibraryIndex::referencesOf(const QUuid& generation) const {
  return valueOrEmpty(references_, generation);
}
const std::vector<JobRef>& LibraryIndex::comparison(const QUuid& comparison) const {
  return valueOrEmpty(comparisons_, comparison);
}

const QSet<QString>& LibraryIndex::checksums(const LibraryArrays& arrays) const {
  if (!checksums_) {
    checksums_.emplace();
    for (const AssetRef& asset : arrays.assets)
      if (asset->checksum) checksums_->insert(*asset->checksum);
  }
  return *checksums_;
}

}  // namespace sorvan::core
