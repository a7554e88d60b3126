#include "exchange/unfinished_imports.h"

#include <QDir>
#include <QFileInfo>

#include "base/checksum.h"
#include "base/durable_file.h"
#include "base/file_reading.h"
#include "base/ids.h"
#include "base/json.h"
#include "core/file_relocation.h"
#include "core/media_inspection.h"
#include "core/thumbnails.h"
#include "exchange/import_one.h"
#include "exchange/texts.h"

namespace sorvan::exchange {

using namespace Qt::StringLiterals;

namespace {

/// Far more than ever runs at once; a folder that somebody filled stops nothing.
constexpr qsizetype mostNotes = 4096;
constexpr qint64 largestNote = 64 * 1024;

QString notesFolder(const WorkspaceFiles& files) { return files.sidecar(u"imports"_s); }
QString notePath(const WorkspaceFiles& files, const QUuid& asset) {
  return notesFolder(files) + u'/' + uuidText(asset) + u".json"_s;
}

/// A note is a file like any other: what it names must be a place where imports go.
bool isPlaceOfImports(const QString& relative) {
  const QStringList parts = relative.split(u'/');
  if (parts.size() < 3 || parts.contains(u".."_s) || parts.contains(u"."_s) || parts.contains(QString())) return false;
  if (relative.contains(QChar::Null) || parts.front().startsWith(u'.')) return false;
  const QString& folder = parts[parts.size() - 2];
  return folder == u"references"_s || folder == u"imported"_s;
}

/// A folder on the way may be a link to elsewhere.
bool liesInWorkspace(const WorkspaceFiles& files, const QString& relative) {
  const QString place = QFileInfo(QFileInfo(files.absolute(relative)).path()).canonicalFilePath();
  return place.startsWith(files.root() + u'/');
}

std::optional<ImportNote> readNote(const WorkspaceFiles& files, const QString& file) {
  try {
    const QUuid asset = uuidFromText(QFileInfo(file).completeBaseName());
    ImportNote note = decodeImportNote(readFile(file, largestNote), asset);
    if (notePath(files, asset) != file || !liesInWorkspace(files, note.path)) return std::nullopt;
    return note;
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

/// Whether the copy stands there, whole. Blocks.
bool copyIsWhole(const WorkspaceFiles& files, const ImportNote& note, const std::stop_token& stop) {
  try {
    return sha256OfFile(files.absolute(note.path), stop) == note.checksum;
  } catch (const FileError&) {
    return false;
  }
}

/// Beside the folder of the copy.
QString thumbnailPath(const QString& copy, const QUuid& asset) {
  return folderOf(folderOf(copy)) + u"/thumbnails/"_s + uuidText(asset) + u".jpg"_s;
}

void removeQuietly(const QString& path) {
  try {
    removeDurably(path);
  } catch (const SorvanError&) {
    // The note is still there, so the next opening knows of the file.
  }
}

bool isKnown(const LibraryStore& store, const ImportNote& note) {
  if (store.asset(note.asset)) return true;
  return std::any_of(store.assets().begin(), store.assets().end(),
                     [&](const AssetRef& asset) { return asset->localFilePath == note.path; });
}

}  // namespace

void writeImportNote(const WorkspaceFiles& files, const ImportNote& note) {
  ensureFolderDurably(notesFolder(files));
  writeDurably(notePath(files, note.asset), encodeJson(note), DurableMode::Sidecar, Replacing::NoReplace);
}

ImportNote decodeImportNote(const QByteArray& json, const QUuid& asset) {
  ImportNote note = decodeJson<ImportNote>(json);
  if (asset.isNull() || note.asset != asset || !isPlaceOfImports(note.path)) throw SorvanError(texts::strangeImportNote());
  return note;
}

QString importedThumbnailPath(const ImportNote& note) { return thumbnailPath(note.path, note.asset); }

void dropImportNote(const WorkspaceFiles& files, const QUuid& asset) {
  try {
    removeDurably(notePath(files, asset));
  } catch (const SorvanError&) {
    // It stands for an import that is over either way; the next opening looks again.
  }
}

void dropImportedThumbnail(const WorkspaceFiles& files, const ImportNote& note) {
  removeQuietly(files.absolute(thumbnailPath(note.path, note.asset)));
}

void withdrawImport(const WorkspaceFiles& files, const ImportNote& note) {
  const QString copy = files.absolute(note.path);
  const QString thumbnail = files.absolute(thumbnailPath(note.path, note.asset));
  dropImportedThumbnail(files, note);
  removeQuietly(copy);
  if (QFileInfo::exists(copy) || QFileInfo::exists(thumbnail)) return withdrawImportLater(files, note);
  dropImportNote(files, note.asset);
}

void withdrawImportLater(const WorkspaceFiles& files, ImportNote note) {
  note.withdrawn = true;
  try {
    writeDurably(notePath(files, note.asset), encodeJson(note), DurableMode::Sidecar);
  } catch (const SorvanError&) {
    // Without that word the next opening completes the import.
  }
}

std::vector<ImportNote> importNotes(const WorkspaceFiles& files) {
  std::vector<ImportNote> notes;
  const QDir folder(notesFolder(files));
  const QStringList names = folder.entryList({u"*.json"_s}, QDir::Files, QDir::Name).mid(0, mostNotes);
  for (const QString& name : names)
    if (auto note = readNote(files, folder.filePath(name))) notes.push_back(std::move(*note));
  return notes;
}

Asset importedAsset(const WorkspaceFiles& files, const ImportNote& note, Instant now) {
  const MediaMetadata metadata = inspectMedia(files.absolute(note.path));
  Asset asset(note.project, metadata.type, note.path, note.originalFilename, metadata, note.createdAt.value_or(now));
  asset.id = note.asset;
  asset.importedAt = now;
  asset.sourceTypeRaw = note.source;
  asset.checksum = note.checksum;
  return asset;
}

std::optional<QString> drawImportedThumbnail(const WorkspaceFiles& files, const Asset& asset) {
  const QString relative = thumbnailPath(asset.localFilePath, asset.id);
  try {
    ensureFolderDurably(files.absolute(folderOf(relative)));
    drawThumbnail(files.absolute(asset.localFilePath), asset.type(), files.absolute(relative));
    return relative;
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

AssetRef landImport(LibraryStore& store, Asset asset, const std::vector<Generation>& history) {
  store.requireWorkspaceInPlace();
  NewRecords records;
  try {
    for (const Generation& generation : history) records.generations.push_back(store.context().insert(generation));
    if (asset.projectID) store.context().edit(store.project(*asset.projectID)).updatedAt = store.now();
    records.assets.push_back(store.context().insert(std::move(asset)));
    store.save(LibraryTables::none);
  } catch (...) {
    store.rollBack();
    throw;
  }
  store.registerRecords(records);
  return records.assets.front();
}

UnfinishedImports::UnfinishedImports(LibraryStore& store) : store_(store) {
  store.afterOpen.push_back([this](LibraryStore&) {
    const std::vector<ImportNote> notes = importNotes(store_.files());
    if (!notes.empty()) tasks_.spawn(complete(&store_, notes, tasks_.token()));
  });
}

Task<> UnfinishedImports::complete(LibraryStore* store, std::vector<ImportNote> notes, std::stop_token stop) {
  const LocalOperation operation = store->beginLocalOperation();
  for (const ImportNote& note : notes) {
    try {
      co_await completeOne(store, note, stop);
    } catch (const SorvanError& failure) {
      // The note stays, and with it the file: the next opening tries again.
      qWarning("An import that was cut off could not be completed: %s", qUtf8Printable(failure.message()));
    }
  }
}

Task<> UnfinishedImports::completeOne(LibraryStore* store, ImportNote note, std::stop_token stop) {
  const WorkspaceFiles files = store->files();
  const std::uint64_t opening = store->opening();
  // 1. What has its record is done.
  if (isKnown(*store, note)) co_return dropImportNote(files, note.asset);
  // 2. What was given up, or has come in by another road meanwhile, goes, and so does what never came in whole.
  const bool wanted = !note.withdrawn.value_or(false) && !liveItemOf(*store, note.checksum);
  const bool whole = wanted && co_await onPool([files, note, stop] { return copyIsWhole(files, note, stop); }, stop);
  if (!whole) co_return co_await onPool([files, note] { withdrawImport(files, note); });
  // 3. The item, as the import would have made it. A project that went meanwhile leaves it to the Inbox.
  if (note.project && !store->project(*note.project)) note.project.reset();
  const Instant now = store->now();
  Asset asset = co_await onPool(
      [files, note, now] {
        Asset made = importedAsset(files, note, now);
        made.thumbnailFilePath = drawImportedThumbnail(files, made);
        return made;
      },
      stop);
  if (store->opening() != opening || isKnown(*store, note)) co_return;
  if (asset.projectID && !store->project(*asset.projectID)) asset.projectID.reset();
  landImport(*store, std::move(asset), {});
  dropImportNote(files, note.asset);
}

Task<> UnfinishedImports::drain() { co_await tasks_.drain(); }

}  // namespace sorvan::exchange
