#include "core/thumbnail_maintenance.h"

#include <algorithm>

#include "base/durable_file.h"
#include "base/ids.h"
#include "core/thumbnails.h"
#include "platform/pictures.h"

namespace sorvan::core {

/// One thumbnail to draw, in plain values for the pool; with an empty destination there is nothing to draw.
struct ThumbnailMaintenance::Drawing {
  QUuid asset;
  QString source;       ///< absolute
  QString thumbnail;    ///< relative to the workspace
  QString destination;  ///< absolute
};

namespace {

/// How many pictures the pool looks at before the main thread hears of it.
constexpr std::size_t picturesAtOnce = 64;

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
  // A drive that went away gets no folders in its place.
  if (!QFileInfo(source).isFile()) return false;
  try {
    ensureFolderDurably(QFileInfo(destination).path());
    drawThumbnail(source, type, destination);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

/// On the pool. How many of the pictures at the front are not see-through and stay as they are.
template <class Drawing>
std::size_t opaqueAtFront(const std::vector<Drawing>& pictures, const std::stop_token& stop) {
  const auto first = std::ranges::find_if(pictures, [&](const Drawing& picture) {
    throwIfStopped(stop);
    return !picture.destination.isEmpty() && hasTransparency(picture.source);
  });
  return static_cast<std::size_t>(first - pictures.begin());
}

}  // namespace

ThumbnailMaintenance::Drawing ThumbnailMaintenance::redrawing(const LibraryStore& store, const QUuid& picture) {
  const AssetRef asset = store.asset(picture);
  if (!asset || !asset->thumbnailFilePath || asset->deletedAt) return {};
  const QString destination = store.files().absolute(*asset->thumbnailFilePath);
  if (!liesInside(store.files(), destination)) return {};
  return {picture, store.fileOf(*asset), *asset->thumbnailFilePath, destination};
}

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
  if (QFileInfo::exists(squaresMarker(store_.files()))) return;
  std::vector<QUuid> pictures;
  for (const AssetRef& asset : store_.assets())
    if (asset->type() == MediaType::image && asset->thumbnailFilePath && !asset->deletedAt)
      pictures.push_back(asset->id);
  tasks_.spawn(redraw(&store_, std::move(pictures), stopping_.get_token()));
}

Task<> ThumbnailMaintenance::redraw(LibraryStore* store, std::vector<QUuid> pictures, std::stop_token stop) {
  bool redrawn = false;
  for (std::size_t next = 0; next < pictures.size();) {
    if (!mayDraw(*store)) co_return;
    // 1. Records stay on this thread; the pool gets paths, and looks at many before it comes back.
    std::vector<Drawing> some;
    for (std::size_t index = next; index < std::min(next + picturesAtOnce, pictures.size()); ++index)
      some.push_back(redrawing(*store, pictures[index]));
    const auto look = [some, stop] { return opaqueAtFront(some, stop); };
    // A stop throws here, so that what follows never meets another workspace.
    const std::size_t opaque = co_await onPool(look, stop);
    next += opaque;
    if (opaque == some.size()) continue;
    // 2. The one that is see-through is drawn, if that is still allowed.
    if (!mayDraw(*store)) co_return;
    const auto draw = [drawing = some[opaque]] {
      return tryToDraw(drawing.source, MediaType::image, drawing.destination);
    };
    const bool drawn = co_await onPool(draw, stop);
    redrawn = redrawn || drawn;
    ++next;
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
