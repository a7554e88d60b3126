// The common writer of the JSON files in `.sorvan`.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "core/room.h"

namespace sorvan::core {

/// How a sidecar is written: whole, durably, its last good version kept as `{file}.previous`.
class WorkspaceJSON {
 public:
  /// Says whether bytes are a whole document of the sidecar's own form.
  using Decodes = std::function<bool(const QByteArray&)>;

  /// Puts `json` at `path`. When the file exists and decodes, its bytes are first written to `{path}.previous`, as a
  /// file of their own and never by moving the main file away; a file that does not decode is not copied, so
  /// `.previous` keeps the last good version. Throws the file system's failure; then the file at `path` is the old one,
  /// whole. Returns once everything is synced.
  static void write(const QByteArray& json, const QString& path, const Decodes& decodes);

  static QString previousPath(const QString& path);
};

}  // namespace sorvan::core
