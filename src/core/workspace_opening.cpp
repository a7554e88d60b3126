#include "core/workspace_opening.h"

#include <unistd.h>

#include <QRegularExpression>
#include <QStandardPaths>

#include "base/settings.h"
#include "core/interrupted_jobs.h"
#include "core/leftover_files.h"
#include "core/migration.h"
#include "core/recent_workspaces.h"
#include "core/texts.h"
#include "core/workspace_checks.h"

namespace sorvan::core {
namespace {

QString bookmarkKey() { return QStringLiteral("workspaceBookmark"); }

/// The path without links. Of a folder that does not exist yet, the part that does is resolved.
QString resolved(const QString& path) {
  const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
  const QString canonical = QFileInfo(absolute).canonicalFilePath();
  if (!canonical.isEmpty()) return canonical;
  const QFileInfo information(absolute);
  const QString parent = information.path();
  if (parent == absolute) return absolute;
  return QDir::cleanPath(resolved(parent) + u'/' + information.fileName());
}

/// Settings that cannot be written are told, and keep no workspace from being open.
void remember(LibraryStore& store, const QString& folder) {
  try {
    // A bookmark is the path's bytes.
    store.settings().set(bookmarkKey(), folder.toUtf8());
    noteRecent(store, folder);
  } catch (const std::exception& failure) {
    store.setError(describe(failure));
  }
}

void refuseSwitchWhileBusy(const LibraryStore& store) {
  if (store.hasUnsavedMetadata()) throw SorvanError(texts::unsavedBeforeSwitch());
  if (store.isBusy()) throw SorvanError(texts::busyBeforeSwitch());
}

/// Takes the lock and opens the library, making what a new workspace lacks and upgrading an old one once a snapshot of
/// it is on the disk. Throws with the store untouched.
OpenedWorkspace openLibrary(const WorkspaceFiles& files) {
  files.prepare();
  WorkspaceLease lease(files.root());
  prepareMigration(files);
  auto context = std::make_unique<RecordContext>(files.database());
  files.prepareInbox();
  writeSchemaMarker(files);
  return {files, std::move(lease), std::move(context)};
}

/// Runs a step of another room. What it throws is shown, and the steps after it still run: the workspace is open.
void runStep(LibraryStore& store, const std::function<void(LibraryStore&)>& step) {
  try {
    step(store);
  } catch (const std::exception& failure) {
    store.setError(describe(failure));
  }
}

/// Fills old rows and marks cut-off jobs, in one save. When it fails nothing is rolled back: memory keeps the honest
/// state of the jobs, and no later rollback makes them wait to be started again.
void settleOldState(LibraryStore& store) {
  backfillRecipes(store);
  for (const auto& backfill : store.openingBackfills) runStep(store, backfill);
  const std::vector<JobRef> interrupted = markInterruptedJobs(store);
  if (!store.context().hasChanges()) return;

  // The jobs need no reading: what was marked is what the arrays hold, and no job came or went.
  LibraryTables changed = LibraryTables::contactSheets;
  if (!store.context().edited<Generation>().empty()) changed = changed | LibraryTables::generations;
  if (!store.context().edited<Asset>().empty()) changed = changed | LibraryTables::assets;
  try {
    store.save(changed);
  } catch (const std::exception& failure) {
    for (const JobRef& job : interrupted) store.keepUnsaved(job);
    store.setError(describe(failure));
    store.noteChange();
  }
}

}  // namespace

void openWorkspace(LibraryStore& store, const QString& folder, Remember remembering) {
  const QString root = resolved(folder);
  // 1. and 2. Nothing may be unsaved or in flight.
  refuseSwitchWhileBusy(store);
  // A second context on the open file would make two truths of one library.
  if (store.workspaceRoot() == root) {
    if (remembering == Remember::yes) remember(store, root);
    return;
  }
  // 4. to 9. Look before anything is made, then lock, open and mark the folder.
  const WorkspaceFiles files(root);
  // How the last program ended is asked first: looking into the database leaves a log beside it too.
  const bool cutOff = wasCutOff(files);
  refuseUnsafeWorkspace(files);
  OpenedWorkspace opened = openLibrary(files);
  // 11. From here on the new workspace is the open one.
  store.install(std::move(opened));
  // 10. It is remembered once it could be read.
  if (remembering == Remember::yes) remember(store, root);
  if (cutOff) removeLeftovers(store);
  // 12. to 14. What an earlier version or an earlier run left.
  settleOldState(store);
  // 15. The sidecars, and what is no longer true in them.
  store.loadSidecars();
  cleanUpAfterLandedJobs(store);
  // 16. to 18. What follows from an open workspace.
  for (const auto& step : store.afterOpen) runStep(store, step);
}

void restoreLastWorkspace(LibraryStore& store) {
  try {
    if (store.services().forcedWorkspace) return openWorkspace(store, *store.services().forcedWorkspace, Remember::no);
    const auto bookmark = store.settings().get<QByteArray>(bookmarkKey());
    if (!bookmark) return;
    const QString folder = QString::fromUtf8(*bookmark);
    // A folder that was open once has its hidden folder. An empty mount point of a drive that is away has not, and a
    // new library there would look as if everything were lost.
    if (!QFileInfo(WorkspaceFiles(folder).hiddenFolder()).isDir()) throw SorvanError(texts::workspaceFolderGone());
    openWorkspace(store, folder, Remember::yes);
  } catch (const std::exception& failure) {
    store.setError(texts::couldNotOpen(describe(failure)));
  }
}

bool hasWorkspaceToRestore(const LibraryStore& store) {
  return store.services().forcedWorkspace || store.settings().get<QByteArray>(bookmarkKey());
}

void chooseWorkspace(LibraryStore& store, const QString& folder) {
  try {
    if (isTemporary(folder)) throw SorvanError(texts::temporaryFolder());
    openWorkspace(store, folder, Remember::yes);
  } catch (const std::exception& failure) {
    store.setError(describe(failure));
  }
}

bool isTemporary(const QString& folder) {
  const QString path = resolved(folder) + u'/';
  // Media that are mounted under /run/media are no temporary folders, unlike the user's runtime folder.
  QStringList beginnings{QStringLiteral("/tmp/"),         QStringLiteral("/private/tmp/"),
                         QStringLiteral("/var/tmp/"),     QStringLiteral("/private/var/tmp/"),
                         QStringLiteral("/var/folders/"), QStringLiteral("/private/var/folders/"),
                         QStringLiteral("/dev/shm/"),     QStringLiteral("/run/user/")};
  beginnings += resolved(QDir::tempPath()) + u'/';
  if (std::ranges::any_of(beginnings, [&](const QString& beginning) { return path.startsWith(beginning); }))
    return true;

  const QString user = QString::number(::getuid());
  const QStringList trashes{QStringLiteral("/.Trash/"), QStringLiteral("/.local/share/Trash/"),
                            QStringLiteral("/.Trash-%1/").arg(user), QStringLiteral("/.Trash/%1/").arg(user)};
  return std::ranges::any_of(trashes, [&](const QString& trash) { return path.contains(trash); });
}

bool workspaceIsTemporary(const LibraryStore& store) {
  return store.workspaceRoot() && !store.services().forcedWorkspace && isTemporary(*store.workspaceRoot());
}

QString chooserFolder(const LibraryStore& store) {
  const QString& suggested = store.services().defaultWorkspace;
  return QFileInfo(store.workspaceRoot().value_or(suggested.isEmpty() ? defaultWorkspacePath() : suggested)).path();
}

QString defaultWorkspacePath() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
  if (folder.isEmpty()) folder = QDir::homePath();
  return folder + QStringLiteral("/Sorvan");
}

}  // namespace sorvan::core
