#include "mounted_disk.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace sorvan::test {
namespace {

void require(int result, const char* what) {
  if (result != 0) throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

void writeLine(const char* path, const QByteArray& line) {
  QFile file(QString::fromLatin1(path));
  if (file.open(QIODevice::WriteOnly)) file.write(line);
}

/// As an ordinary user: in a namespace in which this user is root.
bool becomeRootOfNothing() {
  const QByteArray user = QByteArray::number(::getuid());
  const QByteArray group = QByteArray::number(::getgid());
  if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  writeLine("/proc/self/setgroups", "deny");
  writeLine("/proc/self/uid_map", "0 " + user + " 1");
  writeLine("/proc/self/gid_map", "0 " + group + " 1");
  return true;
}

}  // namespace

bool becomeMounter() {
  if (::unshare(CLONE_NEWNS) != 0 && !becomeRootOfNothing()) return false;
  if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
  const TemporaryFolder place;
  const QByteArray path = QFile::encodeName(place.path());
  if (::mount("sorvan-test", path.constData(), "tmpfs", 0, "size=64k") != 0) return false;
  return ::umount(path.constData()) == 0;
}

MountedDisk::MountedDisk(qint64 bytes)
    : drive_(QFile::encodeName(places_ / QStringLiteral("drive"))),
      mountPoint_(QFile::encodeName(places_ / QStringLiteral("mounted"))) {
  for (const QByteArray& place : {drive_, mountPoint_}) QDir().mkpath(QFile::decodeName(place));
  const QByteArray size = "mode=0755,size=" + QByteArray::number(bytes);
  require(::mount("sorvan-test", drive_.constData(), "tmpfs", 0, size.constData()), "mount");
  comeBack();
}

MountedDisk::~MountedDisk() {
  if (there_) vanish();
  ::umount2(drive_.constData(), MNT_DETACH);
}

QString MountedDisk::path() const { return QFile::decodeName(mountPoint_); }

void MountedDisk::setReadOnly(bool readOnly) const {
  const unsigned long flags = MS_REMOUNT | MS_BIND | (readOnly ? MS_RDONLY : 0UL);
  require(::mount(nullptr, mountPoint_.constData(), nullptr, flags, nullptr), "remount");
}

void MountedDisk::leaveFree(qint64 bytes) const {
  const QByteArray filler = drive_ + "/filler";
  ::unlink(filler.constData());
  struct statvfs disk {};
  require(::statvfs(drive_.constData(), &disk), "statvfs");
  const qint64 taken = static_cast<qint64>(disk.f_bavail * disk.f_frsize) - bytes;
  if (taken <= 0) return;
  const int file = ::open(filler.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  const int result = ::posix_fallocate(file, 0, taken);
  ::close(file);
  if (result != 0) throw std::runtime_error("the disk could not be filled");
}

void MountedDisk::vanish() {
  require(::umount2(mountPoint_.constData(), MNT_DETACH), "umount");
  there_ = false;
}

void MountedDisk::comeBack() {
  require(::mount(drive_.constData(), mountPoint_.constData(), nullptr, MS_BIND, nullptr), "bind");
  there_ = true;
}

}  // namespace sorvan::test
