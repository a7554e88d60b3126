#include "core/workspace_checks.h"

#include "base/durable_file.h"
#include "base/file_reading.h"
#include "core/record_context.h"
#include "core/texts.h"
#include "platform/sqlite.h"

namespace sorvan::core {
namespace {

/// The number in the marker; nothing for a missing marker and for text that is no number.
std::optional<int> markedVersion(const WorkspaceFiles& files) {
  try {
    const auto text = readIfPresent(files.schemaMarker());
    bool isNumber = false;
    const int version = text ? QString::fromUtf8(*text).trimmed().toInt(&isNumber) : 0;
    return isNumber ? std::optional(version) : std::nullopt;
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

bool hasDatabase(const WorkspaceFiles& files) {
  const QFileInfo database(files.database());
  return database.exists() && database.size() > 0;
}

/// Whether anything says that a library was here.
bool heldLibrary(const WorkspaceFiles& files) {
  for (const auto& name : {QStringLiteral("schema-version"), QStringLiteral("charges.json"),
                           QStringLiteral("prompts.json"), QStringLiteral("analyses.json")})
    if (QFileInfo::exists(files.sidecar(name))) return true;
  return false;
}

/// The newest database under `.sorvan/backups`, relative to the workspace; empty when there is none.
QString newestSnapshot(const WorkspaceFiles& files) {
  const QFileInfoList folders = QDir(files.backupsFolder()).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
  QFileInfo newest;
  for (const QFileInfo& folder : folders) {
    const QFileInfo database(folder.filePath() + QStringLiteral("/library.store"));
    if (database.exists() && (newest.filePath().isEmpty() || database.lastModified() > newest.lastModified()))
      newest = database;
  }
  return newest.filePath().isEmpty() ? QString() : QDir(files.root()).relativeFilePath(newest.filePath());
}

}  // namespace

void refuseUnsafeWorkspace(const WorkspaceFiles& files) {
  if (markedVersion(files).value_or(0) > schemaVersion) throw SorvanError(texts::newerVersion());
  if (!hasDatabase(files)) {
    if (heldLibrary(files)) throw SorvanError(texts::libraryMissing(newestSnapshot(files)));
    return;
  }
  Database database(files.database(), DatabaseOpening::ReadOnly);
  if (database.userVersion() > schemaVersion) throw SorvanError(texts::newerVersion());
}

void writeSchemaMarker(const WorkspaceFiles& files) {
  if (markedVersion(files) == schemaVersion) return;
  writeDurably(files.schemaMarker(), QByteArray::number(schemaVersion), DurableMode::Sidecar);
}

}  // namespace sorvan::core
