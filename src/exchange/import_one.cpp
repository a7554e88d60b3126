#include "exchange/import_one.h"

#include <QFileInfo>

#include "base/checksum.h"
#include "base/durable_file.h"
#include "base/ids.h"
#include "core/media_inspection.h"
#include "exchange/texts.h"
#include "exchange/unfinished_imports.h"
#include "platform/pictures.h"
#include "platform/temporary_files.h"

namespace sorvan::exchange {

using namespace Qt::StringLiterals;

namespace {

/// What the file itself says, before anything is copied.
struct SourceFacts {
  MediaMetadata metadata;
  QString checksum;
  HistoryWriter history;
};

SourceFacts readSource(const ImportPorts& ports, const ImportOrder& order, const std::stop_token& stop) {
  SourceFacts facts;
  facts.metadata = inspectMedia(order.path);
  facts.checksum = order.checksum ? *order.checksum : sha256OfFile(order.path, stop);
  if (ports.provenance) facts.history = ports.provenance(order.path, facts.checksum);
  if (!facts.history && ports.recoveredPrompt && facts.metadata.type == MediaType::image)
    facts.history = ports.recoveredPrompt(order.path);
  return facts;
}

/// Where the file goes and what the record will say.
struct Plan {
  WorkspaceFiles files;
  ReservedPath path;
  ImportNote note;
};

Plan planned(LibraryStore& store, const ImportOrder& order, const QString& checksum) {
  const ProjectRef project = order.project ? store.project(*order.project) : nullptr;
  if (order.project && !project) throw SorvanError(texts::projectGone());
  Plan plan{store.files(), {}, {}};
  const QFileInfo name(order.name.value_or(QFileInfo(order.path).fileName()));
  const QString folder = WorkspaceFiles::mediaFolder(project.get()) + u'/' + order.folder;
  plan.path = plan.files.uniquePath(folder, name.completeBaseName(), name.suffix());
  plan.note = {newUuid(),     plan.path.relative(),   checksum, order.project,
               name.fileName(), rawValue(order.source), {},       {}};
  const QDateTime born = QFileInfo(order.path).birthTime();
  if (born.isValid()) plan.note.createdAt = Instant::fromDateTime(born);
  return plan;
}

/// On the pool: the note, the copy, and the item measured from the copy.
Asset copied(const WorkspaceFiles& files, const ImportNote& note, const QString& source, Instant now,
             const std::stop_token& stop) {
  const QString target = files.absolute(note.path);
  writeImportNote(files, note);
  try {
    ensureFolderDurably(QFileInfo(target).path());
    copyDurably(source, target, DurableMode::Media, Replacing::NoReplace, stop);
    if (sha256OfFile(target, stop) != note.checksum) throw SorvanError(texts::fileChanged(note.originalFilename));
    Asset asset = importedAsset(files, note, now);
    asset.thumbnailFilePath = drawImportedThumbnail(files, asset);
    throwIfStopped(stop);
    return asset;
  } catch (...) {
    withdrawImport(files, note);
    throw;
  }
}

/// The block without a pause, after all the waiting. What was true before is asked again.
/// `written` says afterwards whether the database was asked to keep the record.
AssetRef landed(LibraryStore& store, std::uint64_t opening, const ImportOrder& order, Asset asset,
                const HistoryWriter& history, bool& written) {
  if (store.opening() != opening) throw Cancelled();
  // An item that had lost its file may be it: the copy then stands where that file stood.
  if (order.reuses)
    if (const AssetRef twin = liveItemOf(store, asset.checksum.value_or(QString()))) return twin;
  if (asset.projectID && !store.project(*asset.projectID)) throw SorvanError(texts::projectGone());
  const std::vector<Generation> generations = history ? history(asset) : std::vector<Generation>();
  written = true;
  return landImport(store, std::move(asset), generations);
}

void requireWorkspace(const LibraryStore& store) {
  store.refuseDuringBackup();
  if (!store.hasWorkspace()) throw SorvanError(texts::workspaceUnavailable());
}

Task<ImportedReference> importOrReuse(LibraryStore* store, ImportPorts ports, ImportOrder order,
                                      std::stop_token stop) {
  // 1. to 3. Not during a backup, and not without a workspace.
  requireWorkspace(*store);
  store->requireWorkspaceInPlace();
  const LocalOperation operation = store->beginLocalOperation();
  const std::uint64_t opening = store->opening();
  // 4. to 6. The file, its bytes, its history.
  SourceFacts facts = co_await onPool([ports, order, stop] { return readSource(ports, order, stop); }, stop);
  throwIfStopped(stop);
  if (store->opening() != opening) throw Cancelled();
  requireWorkspace(*store);
  // 7. A name that nobody else takes meanwhile.
  const Plan plan = planned(*store, order, facts.checksum);
  // 8. to 10. The copy and its thumbnail. The outcome must be known, so the wait is not cut short.
  const Instant now = store->now();
  const auto copy = [files = plan.files, note = plan.note, source = order.path, now, stop] {
    return copied(files, note, source, now, stop);
  };
  Asset asset = co_await onPool(copy);
  // 11. to 17. The records, all at once.
  AssetRef item;
  std::exception_ptr failure;
  bool written = false;
  try {
    throwIfStopped(stop);
    item = landed(*store, opening, order, std::move(asset), facts.history, written);
  } catch (...) {
    failure = std::current_exception();
  }
  // What a failed write may have kept all the same is judged at the next opening.
  const bool doubtful = failure && written;
  const bool restored = item && item->id != plan.note.asset;
  const bool kept = item && item->localFilePath == plan.note.path;
  const auto settle = [files = plan.files, note = plan.note, kept, restored, doubtful] {
    if (restored) dropImportedThumbnail(files, note);
    if (kept) return dropImportNote(files, note.asset);
    doubtful ? withdrawImportLater(files, note) : withdrawImport(files, note);
  };
  co_await onPool(settle);
  if (failure) std::rethrow_exception(failure);
  co_return ImportedReference{item, item->id == plan.note.asset};
}

/// On the pool. A picture that goes to a model must be all there.
void requireWholePicture(const QString& path) {
  const QFileInfo file(path);
  if (inspectMedia(path).type != MediaType::image) throw SorvanError(texts::notAnImage(file.fileName()));
  if (!pictureIsWhole(path)) throw SorvanError(texts::imageNotRead());
}

Task<ImportedReference> importAsReference(LibraryStore* store, ImportPorts ports, ImportOrder order,
                                          std::stop_token stop) {
  requireWorkspace(*store);
  const LocalOperation operation = store->beginLocalOperation();
  const std::uint64_t opening = store->opening();
  // 1. The bytes first: what is here already is never copied.
  const QString path = order.path;
  const QString checksum = co_await onPool(
      [path, stop] {
        requireWholePicture(path);
        return sha256OfFile(path, stop);
      },
      stop);
  throwIfStopped(stop);
  if (store->opening() != opening) throw Cancelled();
  if (const AssetRef known = liveItemOf(*store, checksum)) co_return ImportedReference{known, false};
  // 2. A new item.
  order.checksum = checksum;
  order.folder = u"references"_s;
  order.reuses = true;
  co_return co_await importOrReuse(store, std::move(ports), std::move(order), stop);
}

}  // namespace

AssetRef liveItemOf(const LibraryStore& store, const QString& checksum) {
  for (const AssetRef& asset : store.assets())
    if (asset->checksum == checksum && !asset->isTrashed() && QFileInfo(store.fileOf(*asset)).isFile()) return asset;
  return nullptr;
}

Task<AssetRef> importOne(LibraryStore* store, ImportPorts ports, ImportOrder order, std::stop_token stop) {
  co_return (co_await importOrReuse(store, std::move(ports), std::move(order), stop)).item;
}

Task<ImportedReference> importReference(LibraryStore* store, ImportPorts ports, QString path,
                                        std::optional<QUuid> project, std::stop_token stop) {
  ImportOrder order{path, project, {}};
  co_return co_await importAsReference(store, std::move(ports), std::move(order), stop);
}

Task<ImportedReference> importPastedReference(LibraryStore* store, ImportPorts ports, QImage picture,
                                              std::optional<QUuid> project, std::stop_token stop) {
  if (picture.isNull()) throw SorvanError(texts::imageNotRead());
  // The file has a name of its own, which the copy keeps; it goes when the import is over.
  const TemporaryFile file(u"pasted"_s, u"png"_s);
  co_await onPool([path = file.path(), picture] {
    writeDurably(path, encodePng(picture), DurableMode::Sidecar, Replacing::NoReplace);
  });
  throwIfStopped(stop);
  ImportOrder order{file.path(), project, {}, AssetSourceType::clipboard};
  order.name = u"Pasted-"_s + uuidText(newUuid()) + u".png"_s;
  co_return co_await importAsReference(store, std::move(ports), std::move(order), stop);
}

}  // namespace sorvan::exchange
