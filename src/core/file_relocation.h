// Files that change their names together with the records that point at them.
#pragma once

#include <vector>

#include "core/workspace_files.h"

namespace sorvan::core {

/// Files that stand under their new names while the records still say the old ones. Until the records are saved the new
/// names can be taken away again, which the destructor does; after `settle` it takes the old ones. A crash in between
/// leaves a second name and loses nothing.
class FileRelocation {
 public:
  explicit FileRelocation(const WorkspaceFiles& files) : files_(files) {}
  FileRelocation(const FileRelocation&) = delete;
  FileRelocation& operator=(const FileRelocation&) = delete;
  ~FileRelocation();

  /// Both relative to the workspace; the folder of the new name exists and the new name is free. Throws FileError.
  void add(const QString& from, const QString& to);
  void settle() { settled_ = true; }

 private:
  struct Step {
    QString from;
    QString to;
  };

  WorkspaceFiles files_;
  std::vector<Step> steps_;
  bool settled_ = false;
};

/// The folder of a path relative to the workspace; empty for the root.
QString folderOf(const QString& relativePath);

}  // namespace sorvan::core
