// The layout of a workspace folder and the rules for naming files in it.
#pragma once

#include <QString>
#include <QUuid>
#include <memory>

#include "core/room.h"

namespace sorvan::core {

struct Project;

/// A name that is promised to one writer until the promise is dropped, so that two operations that pause between naming
/// and writing never pick the same one. Copies share the promise. Main thread.
class ReservedPath {
 public:
  ReservedPath() = default;
  /// Relative to the workspace.
  const QString& relative() const;
  /// Absolute path of the same file.
  QString absolute() const;
  /// Gives the name free again; it is also given free with the last copy.
  void release();

 private:
  friend class WorkspaceFiles;
  struct Promise;
  explicit ReservedPath(std::shared_ptr<const Promise> promise);
  std::shared_ptr<const Promise> promise_;
};

/// A small value that holds one absolute folder and keeps no state. What only names paths may be called on any thread;
/// `uniquePath` and what makes folders belong to the main thread.
class WorkspaceFiles {
 public:
  explicit WorkspaceFiles(QString root);

  const QString& root() const { return root_; }
  QString absolute(const QString& relative) const;

  // Places under the root, absolute.
  QString hiddenFolder() const;                      ///< `.sorvan`
  QString database() const;                          ///< `.sorvan/library.store`
  QString schemaMarker() const;                      ///< `.sorvan/schema-version`
  QString lockFile() const;                          ///< `.sorvan/workspace.lock`
  QString sidecar(const QString& name) const;        ///< `.sorvan/<name>`
  QString recoveryFolder(const QUuid& job) const;    ///< `.sorvan/recovery/<JOB-UUID>`, made or not
  QString submissionMarker(const QUuid& job) const;  ///< `submitting` in the recovery folder
  QString backupsFolder() const;                     ///< `.sorvan/backups`

  /// Makes the root and `.sorvan`, durably; succeeds when they exist. Throws the file system's failure.
  void prepare() const;
  /// Makes the four folders under `Inbox`, durably.
  void prepareInbox() const;
  /// Makes the folder of a new project with its four sub-folders and answers its name: the safe name, a hyphen and
  /// eight characters of a new UUID, so that two projects of one name never share a folder.
  QString createProjectFolder(const QString& name) const;

  /// A path `<folder>/<safe stem>-<nnn>.<ext in lowercase>`, relative to the root, at which nothing exists, not even a
  /// dangling link, and that nobody else holds. The counter starts at 001. A non-plain `ext` is left out.
  ReservedPath uniquePath(const QString& folder, const QString& stem, const QString& ext) const;

  /// The folder of a project's media, or the Inbox for null: "Inbox" or the project's `rootFolder`.
  static QString mediaFolder(const Project* project);
  /// Letters, digits, hyphens and underscores joined by hyphens: at most 80 characters and at most 200 bytes of UTF-8,
  /// so that counter and extension fit into a file name; "Untitled" when nothing is left.
  static QString safeName(const QString& text);
  /// The MIME type of an extension of the workspace's own table, else "application/octet-stream".
  static QString mimeType(const QString& ext);

  bool operator==(const WorkspaceFiles&) const = default;

 private:
  QString root_;
};

}  // namespace sorvan::core
