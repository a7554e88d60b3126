// A real file system of a test's own, in memory: it fills, becomes read-only and goes away as a disk does.
#pragma once

#include <QByteArray>
#include <QString>

#include "support/temporary_folder.h"

namespace sorvan::test {

/// Gives this process mounts that nobody else sees. False where the machine does not allow it. To be called before any
/// thread is started.
bool becomeMounter();

/// Mounted at `path` until it goes. Every failure to mount throws std::runtime_error.
class MountedDisk {
 public:
  explicit MountedDisk(qint64 bytes = 64 << 20);
  ~MountedDisk();
  MountedDisk(const MountedDisk&) = delete;
  MountedDisk& operator=(const MountedDisk&) = delete;

  /// Where it is mounted; an empty folder stands there while it is not.
  QString path() const;
  void setReadOnly(bool readOnly) const;
  /// Leaves at most this much free; what is there stays.
  void leaveFree(qint64 bytes) const;
  /// Takes the drive away, whoever still has files of it open.
  void vanish();
  void comeBack();

 private:
  TemporaryFolder places_;
  QByteArray drive_;
  QByteArray mountPoint_;
  bool there_ = false;
};

}  // namespace sorvan::test
