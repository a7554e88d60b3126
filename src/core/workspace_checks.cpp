#include "core/workspace_checks.h"

#include "base/sorvan_error.h"
#include "core/migration.h"
#include "core/record_context.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

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
  if (readSchemaMarker(files).version.value_or(0) > schemaVersion) throw SorvanError(texts::newerVersion());
  if (!hasDatabase(files)) {
    if (heldLibrary(files)) throw SorvanError(texts::libraryMissing(newestSnapshot(files)));
    return;
  }
  // A database that cannot be read now is told of by the steps that need it.
  if (databaseVersion(files).value_or(0) > schemaVersion) throw SorvanError(texts::newerVersion());
}

}  // namespace sorvan::core
