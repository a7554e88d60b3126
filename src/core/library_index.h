// The arrays of the library and the joins over them.
#pragma once

#include <QHash>
#include <QSet>
#include <QUuid>
#include <optional>
#include <vector>

#include "core/asset_row.h"
#include "core/library_tables.h"
#include "core/newest_first.h"
#include "core/record_context.h"

namespace sorvan::core {

/// All records of a workspace in the orders that readers want. Equal dates are ordered by insertion.
struct LibraryArrays {
  std::vector<ProjectRef> projects;
  NewestFirst<AssetRef> assets;
  std::vector<GenerationRef> generations;
  std::vector<RelationshipRef> relationships;
  std::vector<ReferenceRef> references;
  NewestFirst<JobRef> jobs;
  NewestFirst<SavedReferenceRef> savedReferences;
  NewestFirst<ContactSheetRef> contactSheets;
  NewestFirst<SequenceRef> sequences;
  NewestFirst<AssetRow> assetRows;

  /// Reads the named tables again; throws SorvanError, and then this holds what it held. The rows are left alone.
  void fetch(RecordContext& context, LibraryTables tables);

  /// Where an item of this date and id stands in `assets`, or nothing.
  std::optional<std::size_t> positionOf(const Asset& asset) const;
  /// Where an item of this date belongs: before every item that is as old or older.
  std::size_t insertionPosition(Instant createdAt) const;
};

/// The joins. Each answers with nothing for an unknown id, since a partner may be missing.
class LibraryIndex {
 public:
  /// Builds the joins of the named tables again.
  void rebuild(const LibraryArrays& arrays, LibraryTables tables);
  void add(const GenerationRef& generation);
  void add(const RelationshipRef& edge);
  void add(const ReferenceRef& reference);
  void forgetChecksums() { checksums_.reset(); }

  GenerationRef generationOf(const QUuid& asset) const { return generationOfAsset_.value(asset); }
  const std::vector<GenerationRef>& generationsOf(const QUuid& job) const;
  const std::vector<RelationshipRef>& parentEdges(const QUuid& child) const;
  const std::vector<RelationshipRef>& childEdges(const QUuid& parent) const;
  const std::vector<ReferenceRef>& referencesOf(const QUuid& generation) const;
  const std::vector<JobRef>& comparison(const QUuid& comparison) const;
  const QSet<QString>& checksums(const LibraryArrays& arrays) const;

 private:
  void rebuildGenerations(const LibraryArrays& arrays);
  void rebuildEdges(const LibraryArrays& arrays);
  void rebuildReferences(const LibraryArrays& arrays);
  void rebuildComparisons(const LibraryArrays& arrays);

  QHash<QUuid, GenerationRef> generationOfAsset_;
  QHash<QUuid, std::vector<GenerationRef>> generationsOfJob_;
  QHash<QUuid, std::vector<RelationshipRef>> parentEdges_;
  QHash<QUuid, std::vector<RelationshipRef>> childEdges_;
  QHash<QUuid, std::vector<ReferenceRef>> references_;
  QHash<QUuid, std::vector<JobRef>> comparisons_;
  mutable std::optional<QSet<QString>> checksums_;
};

}  // namespace sorvan::core
