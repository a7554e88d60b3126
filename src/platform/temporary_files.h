// Files that only live for one piece of work: what is sent, what is rendered before it moves to its place.
#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

#include "platform/room.h"

namespace sorvan::platform {

/// The private folder for them, `$XDG_CACHE_HOME/sorvan-studio/tmp`, made with mode 0700 if it is not there. On disk
/// and not in memory, because clips are large. Throws FileError.
QString temporaryFolder();

/// A name of our own in that folder, "sorvan-<kind>-<UUID>.<ext>". Nothing is made; what is there when the object goes
/// is removed. Any thread.
class TemporaryFile {
 public:
  /// `kind` is one word such as "clip"; an empty `ext` leaves the point out. The name has a UUID of its own, or that of
  /// the one piece of work that uses files of this kind.
  TemporaryFile(const QString& kind, const QString& ext);
  TemporaryFile(const QString& kind, const QString& ext, const QUuid& owner);
  ~TemporaryFile();
  TemporaryFile(TemporaryFile&& other) noexcept;
  TemporaryFile& operator=(TemporaryFile&& other) noexcept;

  const QString& path() const { return path_; }

 private:
  void remove();
  QString path_;
};

/// Removes what a crash has left: files of ours in the folder that were last written a day before `now`. At start;
/// never throws.
void sweepTemporaryFiles(const QDateTime& now);

}  // namespace sorvan::platform
