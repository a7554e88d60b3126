#include "core/history.h"

#include <QFileInfo>
#include <algorithm>

#include "base/durable_file.h"
#include "core/file_relocation.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

/// What an item's file or thumbnail was called and is to be called.
struct PathChange {
  QString from;
  QString to;
};

/// A change of one path field of an item, or nothing when the patch leaves it or either side has none.
std::optional<PathChange> pathChange(const LibraryRecord& source, const LibraryRecord& target, const char* field) {
  PathChange change{source.value(field, QString()), target.value(field, QString())};
  if (change.from == change.to || change.from.isEmpty() || change.to.isEmpty()) return std::nullopt;
  return change;
}

bool stands(const WorkspaceFiles& files, const QString& relative) {
  const QFileInfo file(files.absolute(relative));
  return file.exists() || file.isSymLink();
}

const std::optional<LibraryRecord>& sourceOf(const Patch& patch, HistoryDirection direction) {
  return direction == HistoryDirection::undo ? patch.after : patch.before;
}
const std::optional<LibraryRecord>& targetOf(const Patch& patch, HistoryDirection direction) {
  return direction == HistoryDirection::undo ? patch.before : patch.after;
}

/// One step in one direction.
class HistoryStep {
 public:
  HistoryStep(LibraryStore& store, const LibraryEdit& edit, HistoryDirection direction)
      : store_(store), edit_(edit), direction_(direction), relocation_(store.files()) {}

  void take() {
    store_.requireWorkspaceInPlace();
    // 1. What cannot be done is refused before anything is touched.
    for (const Patch& patch : edit_.patches) check(patch);
    // 2. Files stand under both names.
    for (const Patch& patch : edit_.patches) relocate(patch);
    // 3. The records, in one save.
    for (const Patch& patch : edit_.patches) apply(patch);
    for (const AssetRef& asset : withoutThumbnail_) store_.context().edit(asset).thumbnailFilePath = std::nullopt;
    store_.save(reloading_);
    // 4. The old names go.
    relocation_.settle();
  }

 private:
  bool isAssetChange(const Patch& patch) const {
    return patch.before && patch.after && patch.before->kind == QLatin1StringView(historyKind<Asset>);
  }

  void check(const Patch& patch) const {
    if (!isAssetChange(patch)) return refuseProjectInUse(patch);
    const LibraryRecord& source = *sourceOf(patch, direction_);
    const auto change = pathChange(source, *targetOf(patch, direction_), "localFilePath");
    if (!change) return;
    const AssetRef asset = store_.asset(source.id);
    if (!asset) throw SorvanError(texts::historyItemGone());
    if (asset->localFilePath != change->from || !stands(store_.files(), change->from) ||
        stands(store_.files(), change->to))
      throw SorvanError(texts::historyFileMissing());
  }

  /// A job may have landed results in a project since it was made.
  void refuseProjectInUse(const Patch& patch) const {
    const auto& source = sourceOf(patch, direction_);
    if (targetOf(patch, direction_) || !source || source->kind != QLatin1StringView(historyKind<Project>)) return;
    const auto isInside = [&](const auto& record) { return record.projectID == source->id; };
    const auto isInsideRef = [&](const auto& record) { return record->projectID == source->id; };
    if (std::ranges::any_of(store_.assetRows(), isInside) || std::ranges::any_of(store_.jobs(), isInsideRef))
      throw SorvanError(texts::projectInUse());
  }

  void relocate(const Patch& patch) {
    if (!isAssetChange(patch)) return;
    const LibraryRecord& source = *sourceOf(patch, direction_);
    const LibraryRecord& target = *targetOf(patch, direction_);
    if (const auto change = pathChange(source, target, "localFilePath")) add(*change);
    if (const auto change = pathChange(source, target, "thumbnailFilePath")) relocateThumbnail(source.id, *change);
  }

  void relocateThumbnail(const QUuid& id, const PathChange& change) {
    // One that stands there already was drawn for this item: its name is the item's id.
    if (stands(store_.files(), change.to)) return;
    try {
      add(change);
    } catch (const FileError&) {
      // A thumbnail stops no step: it is drawn again.
      if (const AssetRef asset = store_.asset(id)) withoutThumbnail_.push_back(asset);
    }
  }

  void add(const PathChange& change) {
    ensureFolderDurably(store_.files().absolute(folderOf(change.to)));
    relocation_.add(change.from, change.to);
  }

  void apply(const Patch& patch) {
    const auto& target = targetOf(patch, direction_);
    const LibraryRecord& known = target ? *target : *sourceOf(patch, direction_);
    if (target)
      applyRecord(store_.context(), *target);
    else
      removeRecord(store_.context(), known);
    reloading_ = reloading_ | tablesToReload(known, isAssetChange(patch));
  }

  /// Changed items need no reload: the save brings their rows up to date.
  static LibraryTables tablesToReload(const LibraryRecord& record, bool assetChange) {
    if (assetChange && !record.json("createdAt")) return LibraryTables::none;
    if (record.kind == QLatin1StringView(historyKind<Asset>)) return LibraryTables::assets;
    if (record.kind == QLatin1StringView(historyKind<Project>)) return LibraryTables::projects;
    if (record.kind == QLatin1StringView(historyKind<SavedReference>)) return LibraryTables::savedReferences;
    if (record.kind == QLatin1StringView(historyKind<ContactSheet>)) return LibraryTables::contactSheets;
    return LibraryTables::sequences;
  }

  LibraryStore& store_;
  const LibraryEdit& edit_;
  HistoryDirection direction_;
  FileRelocation relocation_;
  std::vector<AssetRef> withoutThumbnail_;
  LibraryTables reloading_ = LibraryTables::none;
};

void restoreProjects(LibraryStore& store, const LibraryEdit& edit, HistoryDirection direction) {
  const bool undoing = direction == HistoryDirection::undo;
  const ProjectsByID& watched = undoing ? edit.watchedBefore : edit.watchedAfter;
  for (auto entry = watched.begin(); entry != watched.end(); ++entry)
    store.watchedProjects->setProject(entry.key(), entry.value());
  const ProjectsByID& charges = undoing ? edit.chargesBefore : edit.chargesAfter;
  if (!charges.isEmpty()) store.extraCharges().restoreProjects(charges);
}

}  // namespace

UndoableEdit::UndoableEdit(LibraryStore& store, const QString& name, const UndoScope& scope)
    : store_(store), name_(name), nesting_(store.history()) {
  store.refuseDuringBackup();
  if (store.history().depth() == 1) before_ = std::make_unique<const LibrarySnapshot>(store, scope);
}

void UndoableEdit::remember() {
  if (!before_) return;
  LibraryEdit edit;
  try {
    edit = before_->edit(name_);
  } catch (const SorvanError&) {
    // The edit is saved but has no way back, and steps before it would go back over it.
    store_.history().clear();
    return;
  }
  store_.history().remember(std::move(edit));
}

void rememberAddedAssets(LibraryStore& store, const std::vector<AssetRef>& assets, const QString& name) {
  LibraryEdit edit;
  edit.name = name;
  edit.compared = static_cast<qsizetype>(assets.size());
  for (const AssetRef& asset : assets) edit.patches.push_back(addedAssetPatch(*asset, store.now()));
  store.history().remember(std::move(edit));
}

bool canTake(const LibraryStore& store, HistoryDirection direction) {
  return store.hasWorkspace() && store.history().next(direction) && !store.isBusy() && store.salvaging.isEmpty();
}

void applyHistory(LibraryStore& store, HistoryDirection direction) {
  if (!canTake(store, direction) || store.history().depth() > 0) return;
  const std::shared_ptr<const LibraryEdit> edit = store.history().next(direction);
  try {
    HistoryStep(store, *edit, direction).take();
  } catch (...) {
    store.failOperation(std::current_exception());
    return;
  }
  restoreProjects(store, *edit, direction);
  store.history().take(direction);
  store.noteChange();
}

qint64 historyBytesOfMarks(qsizetype items) {
  // A date and "null", or two words of a status.
  constexpr qint64 mostOfOneMark = 40;
  return items * mostOfOneMark;
}

qint64 historyBytesOfMoves(const std::vector<AssetRef>& assets) {
  // Two projects, the new folder and the quotes come to at most this much.
  constexpr qint64 besideThePaths = 2 * 40 + 2 * 220;
  qint64 sum = 0;
  for (const AssetRef& asset : assets)
    sum += besideThePaths + 2 * asset->localFilePath.toUtf8().size() +
           2 * asset->thumbnailFilePath.value_or(QString()).toUtf8().size();
  return sum;
}

}  // namespace sorvan::core
