#include "core/leftover_files.h"

#include <filesystem>

#include "base/durable_file.h"

namespace sorvan::core {
namespace {

namespace fs = std::filesystem;

void removeIfLeftOver(const fs::path& path) {
  if (!isDurableTemporary(QFile::decodeName(path.filename().c_str()))) return;
  try {
    removeDurably(QFile::decodeName(path.c_str()));
  } catch (const SorvanError&) {
    // It holds nothing that anybody needs; the next opening tries again.
  }
}

/// Looks at names only: a media folder may hold a hundred thousand of them. A folder that cannot be read is left out.
template <class Walk>
void removeFrom(const QString& folder) {
  std::error_code problem;
  std::vector<fs::path> found;
  for (Walk entry(fs::path(QFile::encodeName(folder).toStdString()), problem), end; !problem && entry != end;
       entry.increment(problem))
    if (entry->path().filename().native().starts_with('.')) found.push_back(entry->path());
  for (const fs::path& path : found) removeIfLeftOver(path);
}

/// A row or a link may name a folder of somebody else.
bool liesInside(const WorkspaceFiles& files, const QString& folder) {
  return QFileInfo(folder).canonicalFilePath().startsWith(files.root() + u'/');
}

}  // namespace

bool wasCutOff(const WorkspaceFiles& files) { return QFileInfo::exists(files.database() + QStringLiteral("-wal")); }

void removeLeftovers(const LibraryStore& store) {
  const WorkspaceFiles& files = store.files();
  removeFrom<fs::recursive_directory_iterator>(files.hiddenFolder());
  std::vector<QString> folders{WorkspaceFiles::mediaFolder(nullptr)};
  for (const ProjectRef& project : store.projects()) folders.push_back(WorkspaceFiles::mediaFolder(project.get()));
  for (const QString& folder : folders)
    for (const QString& kind : {QStringLiteral("generated"), QStringLiteral("imported"), QStringLiteral("references"),
                                QStringLiteral("thumbnails")}) {
      const QString place = files.absolute(folder) + u'/' + kind;
      if (liesInside(files, place)) removeFrom<fs::directory_iterator>(place);
    }
}

}  // namespace sorvan::core
