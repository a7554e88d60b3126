#include "core/recent_workspaces.h"

#include <QJsonArray>

#include "base/settings.h"
#include "core/texts.h"
#include "core/workspace_opening.h"

namespace sorvan::core {
namespace {

QString recentsKey() { return QStringLiteral("recentWorkspaces"); }

QString standardized(const QString& path) { return QDir::cleanPath(path); }

void keepRecents(LibraryStore& store, const std::vector<RecentWorkspace>& recents) {
  store.settings().set(recentsKey(), recents);
}

}  // namespace

std::vector<RecentWorkspace> recentWorkspaces(const LibraryStore& store) {
  const auto stored = store.settings().get<QJsonArray>(recentsKey());
  std::vector<RecentWorkspace> recents;
  QSet<QString> paths;
  for (RecentWorkspace& recent : fromJsonDroppingBad<RecentWorkspace>(stored.value_or(QJsonArray()))) {
    recent.path = standardized(recent.path);
    if (recents.size() == mostRecentWorkspaces) break;
    if (!QDir::isAbsolutePath(recent.path) || paths.contains(recent.path)) continue;
    paths.insert(recent.path);
    recents.push_back(std::move(recent));
  }
  return recents;
}

std::vector<RecentWorkspace> otherRecentWorkspaces(const LibraryStore& store) {
  std::vector<RecentWorkspace> others = recentWorkspaces(store);
  std::erase_if(others, [&](const RecentWorkspace& recent) { return recent.path == store.workspaceRoot(); });
  return others;
}

bool isAvailable(const RecentWorkspace& recent) {
  return QFileInfo(WorkspaceFiles(QString::fromUtf8(recent.bookmark)).hiddenFolder()).isDir();
}

void noteRecent(LibraryStore& store, const QString& folder) {
  const QString path = standardized(folder);
  std::vector<RecentWorkspace> recents = recentWorkspaces(store);
  std::erase_if(recents, [&](const RecentWorkspace& recent) { return recent.path == path; });
  recents.insert(recents.begin(), RecentWorkspace{path, path.toUtf8()});
  if (recents.size() > mostRecentWorkspaces) recents.resize(mostRecentWorkspaces);
  keepRecents(store, recents);
}

void openRecent(LibraryStore& store, const RecentWorkspace& recent) {
  try {
    // A new library in an empty mount point would look as if everything were lost.
    if (!isAvailable(recent)) throw SorvanError(texts::workspaceFolderGone());
    openWorkspace(store, QString::fromUtf8(recent.bookmark), Remember::yes);
  } catch (const std::exception& failure) {
    store.setError(describe(failure));
  }
}

void clearRecentWorkspaces(LibraryStore& store) {
  try {
    keepRecents(store, {});
  } catch (const std::exception& failure) {
    store.setError(describe(failure));
  }
}

}  // namespace sorvan::core
