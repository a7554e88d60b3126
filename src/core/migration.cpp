#include "core/migration.h"

#include <sqlite3.h>

#include <QDir>
#include <QRegularExpression>
#include <algorithm>
#include <chrono>
#include <limits>

#include "base/durable_file.h"
#include "base/file_reading.h"
#include "base/ids.h"
#include "core/record_context.h"
#include "core/texts.h"
#include "platform/sqlite.h"

namespace sorvan::core {
namespace {

/// No marker of ours is longer; a large file in its place is not read.
constexpr qint64 longestMarkerBytes = 4096;

/// How long another connection may keep the database from being read. Nothing is retried after that: the user is told.
constexpr std::chrono::milliseconds patience{1000};

/// The low byte is the failure, the rest tells its circumstances.
bool isBusy(const DatabaseError& failure) {
  const int primary = failure.code() & 0xff;
  return primary == SQLITE_BUSY || primary == SQLITE_LOCKED;
}

std::optional<QString> markerText(const WorkspaceFiles& files) {
  try {
    const auto bytes = readIfPresent(files.schemaMarker(), longestMarkerBytes);
    return bytes ? std::optional(QString::fromUtf8(*bytes).trimmed()) : std::nullopt;
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

/// The whole number that the text is, with or without a sign.
std::optional<int> wholeNumber(const QString& text) {
  static const QRegularExpression form(QStringLiteral("\\A[+-]?[0-9]+\\z"));
  if (!form.match(text).hasMatch()) return std::nullopt;
  bool fits = false;
  const int number = text.toInt(&fits);
  if (fits) return number;
  return text.startsWith(u'-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

QString uncheckedName(const QString& target) { return target + QStringLiteral(".part"); }

/// Whether the folder of a snapshot holds nothing, or nothing but a copy that was never finished.
bool isHalf(const QDir& folder) {
  const QString copy = uncheckedName(QStringLiteral("library.store"));
  const QStringList parts{copy, copy + QStringLiteral("-journal"), copy + QStringLiteral("-wal"),
                          copy + QStringLiteral("-shm")};
  const QStringList held = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  return std::all_of(held.begin(), held.end(), [&](const QString& name) { return parts.contains(name); });
}

/// Removes what a crash left of earlier snapshots; what cannot be removed is left to the next one.
void removeHalves(const WorkspaceFiles& files) {
  const QDir backups(files.backupsFolder());
  const auto kinds = QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot;
  for (const QString& name : backups.entryList({QStringLiteral("pre-v*-*")}, kinds)) {
    if (!isHalf(QDir(backups.filePath(name)))) continue;
    try {
      removeFolderDurably(backups.filePath(name));
    } catch (const SorvanError&) {
      // It holds nothing that anybody needs.
    }
  }
}

/// Copies the database to `target`, a new file, and throws unless what lies on the disk then is whole.
void copyChecked(const WorkspaceFiles& files, const QString& target) {
  // 1. Until it is checked the copy has another name: a crash leaves nothing that looks like a snapshot.
  const QString unchecked = uncheckedName(target);
  {
    Database source(files.database(), DatabaseOpening::ReadOnly);
    source.setPatience(patience);
    source.backUpTo(unchecked);
  }
  // 2. Damage would otherwise be found on the day when the snapshot is needed.
  {
    Database copy(unchecked, DatabaseOpening::ReadOnly);
    if (!copy.quickProblems().isEmpty()) throw SorvanError(texts::couldNotSnapshot());
  }
  // 3. Reading it left an empty write-ahead log, which belongs to no snapshot.
  for (const auto& suffix : {QStringLiteral("-wal"), QStringLiteral("-shm")}) removeDurably(unchecked + suffix);
  renameDurably(unchecked, target, Replacing::NoReplace);
}

void takeSnapshot(const WorkspaceFiles& files) {
  const QString folder = files.backupsFolder() + QStringLiteral("/pre-v%1-").arg(schemaVersion) + uuidText(newUuid());
  const auto abandon = [&](const QString& sentence) {
    try {
      removeFolderDurably(folder);
    } catch (const SorvanError&) {
      // What is left has no snapshot's name.
    }
    throw SorvanError(sentence);
  };
  try {
    ensureFolderDurably(folder);
    copyChecked(files, folder + QStringLiteral("/library.store"));
  } catch (const DatabaseError& failure) {
    abandon(isBusy(failure) ? texts::workspaceBusy() : texts::couldNotSnapshot());
  } catch (const SorvanError&) {
    abandon(texts::couldNotSnapshot());
  }
}

}  // namespace

SchemaMarker readSchemaMarker(const WorkspaceFiles& files) {
  const std::optional<QString> text = markerText(files);
  if (!text) return {};
  return {wholeNumber(*text), *text == QString::number(schemaVersion)};
}

void writeSchemaMarker(const WorkspaceFiles& files) {
  if (readSchemaMarker(files).isCurrent) return;
  writeDurably(files.schemaMarker(), QByteArray::number(schemaVersion), DurableMode::Sidecar);
}

std::optional<int> databaseVersion(const WorkspaceFiles& files) {
  try {
    Database database(files.database(), DatabaseOpening::ReadOnly);
    database.setPatience(patience);
    return database.userVersion();
  } catch (const DatabaseError& failure) {
    if (isBusy(failure)) throw SorvanError(texts::workspaceBusy());
    if ((failure.code() & 0xff) == SQLITE_NOTADB) throw;
    return std::nullopt;
  }
}

void prepareMigration(const WorkspaceFiles& files) {
  // 1. and 2. What the marker says; a newer workspace is not touched.
  const SchemaMarker marker = readSchemaMarker(files);
  if (marker.version.value_or(0) > schemaVersion) throw SorvanError(texts::newerVersion());
  // 3. A new workspace has nothing to keep.
  const QFileInfo database(files.database());
  if (!database.exists() || database.size() == 0) return;
  // 4. A crash of an upgrade may have left half a transaction. One that cannot be undone here is told by what follows.
  try {
    undoCutOffTransaction(files.database(), patience);
  } catch (const DatabaseError& failure) {
    if (isBusy(failure)) throw SorvanError(texts::workspaceBusy());
  }
  // 5. The database itself has the last word: a marker may stand beside a database that was put back from a backup. Of
  // one that cannot be read, the marker decides.
  const std::optional<int> version = databaseVersion(files);
  if (version && *version > schemaVersion) throw SorvanError(texts::newerVersion());
  if (marker.isCurrent && version.value_or(schemaVersion) == schemaVersion) return;
  // 6. Older, or of unknown age.
  takeSnapshot(files);
  removeHalves(files);
}

}  // namespace sorvan::core
