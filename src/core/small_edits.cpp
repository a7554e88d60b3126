#include "core/small_edits.h"

#include <QRegularExpression>

#include "base/durable_file.h"
#include "base/ids.h"
#include "core/file_relocation.h"
#include "core/history.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

/// One step and one save, however many items.
template <class Change>
void editAll(LibraryStore& store, const QString& name, const std::vector<AssetRef>& assets, Change&& change) {
  if (assets.empty()) return;
  performUndoable(store, name, {assets, LibraryTables::none}, [&] {
    for (const AssetRef& asset : assets) change(store.context().edit(asset));
    store.save(LibraryTables::none);
  });
}

template <class Change>
void editOne(LibraryStore& store, const QString& name, const AssetRef& asset, Change&& change) {
  editAll(store, name, std::vector{asset}, change);
}

/// The sub-folder of a project's media that an item lies in, which it keeps when it moves.
QString subfolderOf(const Asset& asset) {
  const QString name = folderOf(asset.localFilePath).section(u'/', -1);
  for (const auto& known : {QStringLiteral("generated"), QStringLiteral("imported"), QStringLiteral("references")})
    if (name == known) return known;
  return asset.sourceType() == AssetSourceType::generated ? QStringLiteral("generated") : QStringLiteral("imported");
}

/// The stem of a file name without its counter, which the new place counts anew.
QString stemOf(const Asset& asset) {
  static const QRegularExpression counter(QStringLiteral("-\\d{3,}$"));
  return QFileInfo(asset.filename()).completeBaseName().remove(counter);
}

/// What was typed as a new name, without the counter that the file has now: the new name has one of its own.
QString typedStem(const Asset& asset, const QString& name) {
  const QString typed = name.trimmed();
  const QString counter = QFileInfo(asset.filename()).completeBaseName().sliced(stemOf(asset).size());
  return counter.isEmpty() || !typed.endsWith(counter) ? typed : typed.chopped(counter.size());
}

QString extensionOf(const Asset& asset) { return QFileInfo(asset.filename()).suffix(); }

/// Moves the thumbnail along. One that cannot be moved is drawn again later.
std::optional<QString> relocateThumbnail(const LibraryStore& store, FileRelocation& relocation, const Asset& asset,
                                         const QString& folder) {
  if (!asset.thumbnailFilePath) return std::nullopt;
  const QString target = folder + QStringLiteral("/thumbnails/") + uuidText(asset.id) + QStringLiteral(".jpg");
  if (target == *asset.thumbnailFilePath) return target;
  try {
    ensureFolderDurably(store.files().absolute(folder + QStringLiteral("/thumbnails")));
    relocation.add(*asset.thumbnailFilePath, target);
    return target;
  } catch (const FileError&) {
    return std::nullopt;
  }
}

void moveOne(LibraryStore& store, FileRelocation& relocation, const AssetRef& asset, const Project* project) {
  const WorkspaceFiles& files = store.files();
  const QString folder = WorkspaceFiles::mediaFolder(project);
  const QString target = folder + u'/' + subfolderOf(*asset);
  ensureFolderDurably(files.absolute(target));
  const ReservedPath path = files.uniquePath(target, stemOf(*asset), extensionOf(*asset));
  relocation.add(asset->localFilePath, path.relative());
  const std::optional<QString> thumbnail = relocateThumbnail(store, relocation, *asset, folder);

  Asset& changed = store.context().edit(asset);
  changed.projectID = project ? std::optional(project->id) : std::nullopt;
  changed.localFilePath = path.relative();
  changed.thumbnailFilePath = thumbnail;
}

}  // namespace

void refuseReferencesOfActiveJobs(const LibraryStore& store, const std::vector<AssetRef>& assets) {
  QSet<QUuid> used;
  for (const JobRef& job : store.jobs()) {
    if (!job->isActive()) continue;
    if (const auto request = job->request())
      for (const QUuid& reference : request->referenceIDs) used.insert(reference);
  }
  for (const AssetRef& asset : assets)
    if (used.contains(asset->id)) throw SorvanError(texts::usedByActiveJob());
}

void toggleFavorite(LibraryStore& store, const AssetRef& asset) { setFavorite(store, {asset}, !asset->favorite); }

void setFavorite(LibraryStore& store, const std::vector<AssetRef>& assets, bool favorite) {
  editAll(store, QStringLiteral("Change Favorite"), assets, [&](Asset& changed) { changed.favorite = favorite; });
}

void setRating(LibraryStore& store, const AssetRef& asset, std::optional<int> rating) {
  setRating(store, std::vector{asset}, rating);
}

void setRating(LibraryStore& store, const std::vector<AssetRef>& assets, std::optional<int> rating) {
  constexpr int highest = 5;
  const int wanted = rating.value_or(0);
  if (wanted < 0 || wanted > highest) return;
  editAll(store, QStringLiteral("Change Rating"), assets,
          [&](Asset& changed) { changed.rating = wanted == 0 ? std::nullopt : std::optional(wanted); });
}

void setNotes(LibraryStore& store, const AssetRef& asset, std::optional<QString> notes) {
  editOne(store, QStringLiteral("Edit Notes"), asset, [&](Asset& changed) { changed.notes = std::move(notes); });
}

void setStatus(LibraryStore& store, const AssetRef& asset, AssetStatus status) {
  setStatus(store, std::vector{asset}, status);
}

void setStatus(LibraryStore& store, const std::vector<AssetRef>& assets, AssetStatus status) {
  editAll(store, QStringLiteral("Change Status"), assets,
          [&](Asset& changed) { changed.statusRaw = rawValue(status); });
}

void rename(LibraryStore& store, const AssetRef& asset, const QString& name) {
  performUndoable(store, QStringLiteral("Rename"), {std::vector{asset}, LibraryTables::none}, [&] {
    if (name.trimmed().isEmpty()) throw SorvanError(texts::nameBlank());
    const QString stem = typedStem(*asset, name);
    if (WorkspaceFiles::safeName(stem) == stemOf(*asset)) return;
    store.requireWorkspaceInPlace();
    const ReservedPath path = store.files().uniquePath(folderOf(asset->localFilePath), stem, extensionOf(*asset));
    FileRelocation relocation(store.files());
    // 1. The file under both names, 2. the record, 3. the old name goes.
    relocation.add(asset->localFilePath, path.relative());
    store.context().edit(asset).localFilePath = path.relative();
    store.save(LibraryTables::none);
    relocation.settle();
  });
}

void move(LibraryStore& store, const std::vector<AssetRef>& assets, std::optional<QUuid> destination) {
  performUndoable(store, QStringLiteral("Move Items"), {assets, LibraryTables::none}, [&] {
    refuseReferencesOfActiveJobs(store, assets);
    store.requireWorkspaceInPlace();
    const ProjectRef project = destination ? store.project(*destination) : nullptr;
    if (destination && !project) throw SorvanError(texts::workspaceUnavailable());
    FileRelocation relocation(store.files());
    for (const AssetRef& asset : assets)
      if (asset->projectID != destination) moveOne(store, relocation, asset, project.get());
    store.save(LibraryTables::none);
    relocation.settle();
  });
}

}  // namespace sorvan::core
