#include "core/thumbnail_maintenance.h"

#include "base/durable_file.h"
#include "base/ids.h"
#include "core/thumbnails.h"
#include "platform/pictures.h"

namespace sorvan::core {

/// One thumbnail to draw, in plain values for the pool.
struct ThumbnailMaintenance::Drawing {
  QUuid asset;
  QString source;       ///< absolute
  QString thumbnail;    ///< relative to the workspace
  QString destination;  ///< absolute
};

namespace {

QString squaresMarker(const WorkspaceFiles& files) { return files.sidecar(QStringLiteral("thumbnails-squares")); }

/// A row that names a place outside the workspace must not make us write there.
bool liesInside(const WorkspaceFiles& files, const QString& path) {
  return QDir::cleanPath(path).startsWith(files.root() + u'/');
}

/// Whether the drawing goes on: the folder is still the one that was opened, and no backup copies it.
bool mayDraw(const LibraryStore& store) {
  if (store.isBackingUp()) return false;
  try {
    store.requireWorkspaceInPlace();
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

/// On the pool. A thumbnail is a convenience: whatever fails leaves things as they were.
bool tryToDraw(const QString& source, MediaType type, const QString& destination) {
  try {
    ensureFolderDurably(QFileInfo(destination).path());
    drawThumbnail(source, type, destination);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

}  // namespace

ThumbnailMaintenance::ThumbnailMaintenance(LibraryStore& store) : store_(store) {
  store.afterOpen.push_back([this](LibraryStore&) {
    stopping_ = std::stop_source();
    redrawSeeThroughThumbnails();
    drawMissingWaveforms();
  });
  store.beforeClose.push_back([this](LibraryStore&) { stop(); });
}

void ThumbnailMaintenance::stop() { stopping_.request_stop(); }

Task<> ThumbnailMaintenance::drain() {
  stop();
  return tasks_.drain();
}

void ThumbnailMaintenance::redrawSeeThroughThumbnails() {
  const WorkspaceFiles& files = store_.files();
  if (QFileInfo::exists(squaresMarker(files))) return;
  // 1. Records stay on this thread; the task gets paths.
  std::vector<Drawing> list;
  for (const AssetRef& asset : store_.assets()) {
    if (asset->type() != MediaType::image || !asset->thumbnailFilePath || asset->deletedAt) continue;
    const QString destination = files.absolute(*asset->thumbnailFilePath);
    if (liesInside(files, destination))
      list.push_back({asset->id, store_.fileOf(*asset), *asset->thumbnailFilePath, destination});
  }
  // 2. The rest happens in the background.
  tasks_.spawn(redraw(&store_, std::move(list), stopping_.get_token()));
}

Task<> ThumbnailMaintenance::redraw(LibraryStore* store, std::vector<Drawing> list, std::stop_token stop) {
  bool redrawn = false;
  for (const Drawing& drawing : list) {
    if (!mayDraw(*store)) co_return;
    const auto work = [source = drawing.source, destination = drawing.destination] {
      return hasTransparency(source) && tryToDraw(source, MediaType::image, destination);
    };
    // A stop throws here, so that what follows never meets another workspace.
    const bool drawn = co_await onPool(work, stop);
    redrawn = redrawn || drawn;
  }
  throwIfStopped(stop);
  if (!mayDraw(*store)) co_return;
  try {
    writeDurably(squaresMarker(store->files()), {}, DurableMode::Sidecar);
  } catch (const SorvanError&) {
    // The pass runs once more at the next opening.
  }
  if (redrawn) store->noteChange();
}

void ThumbnailMaintenance::drawMissingWaveforms() {
  const WorkspaceFiles& files = store_.files();
  std::vector<Drawing> list;
  for (const AssetRef& asset : store_.assets()) {
    const bool drawn = asset->thumbnailFilePath && !asset->thumbnailFilePath->isEmpty();
    if (asset->type() != MediaType::audio || drawn || asset->deletedAt) continue;
    const ProjectRef project = asset->projectID ? store_.project(*asset->projectID) : nullptr;
    const QString thumbnail = WorkspaceFiles::mediaFolder(project.get()) + QStringLiteral("/thumbnails/") +
                              uuidText(asset->id) + QStringLiteral(".jpg");
    if (liesInside(files, files.absolute(thumbnail)))
      list.push_back({asset->id, store_.fileOf(*asset), thumbnail, files.absolute(thumbnail)});
  }
  if (!list.empty()) tasks_.spawn(drawWaveforms(&store_, std::move(list), stopping_.get_token()));
}

Task<> ThumbnailMaintenance::drawWaveforms(LibraryStore* store, std::vector<Drawing> list, std::stop_token stop) {
  std::vector<Drawing> drawn;
  for (const Drawing& drawing : list) {
    if (!mayDraw(*store)) break;
    const auto work = [source = drawing.source, destination = drawing.destination] {
      return tryToDraw(source, MediaType::audio, destination);
    };
    const bool succeeded = co_await onPool(work, stop);
    if (succeeded) drawn.push_back(drawing);
  }
  throwIfStopped(stop);
  if (store->isBackingUp()) co_return;
  // One block without a pause from the first change to the save. An item may have gone meanwhile.
  bool changed = false;
  for (const Drawing& drawing : drawn) {
    const AssetRef asset = store->asset(drawing.asset);
    if (!asset) continue;
    store->context().edit(asset).thumbnailFilePath = drawing.thumbnail;
    changed = true;
  }
  if (!changed) co_return;
  try {
    store->save(LibraryTables::none);
  } catch (const std::exception&) {
    store->failOperation(std::current_exception());
  }
}

}  // namespace sorvan::core
