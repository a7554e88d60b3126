// The steps that touch the disk, one function each, so that a test can fail any of them.
#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>

namespace sorvan::base {

// Each function is one system call; a negative result is the negative errno. The defaults are the real calls, every
// descriptor with O_CLOEXEC. Thread: any.
class FileLayer {
 public:
  virtual ~FileLayer() = default;

  // O_CREAT|O_EXCL|O_NOFOLLOW for writing; the mode is narrowed by the umask.
  virtual int createFile(const QByteArray& path, mode_t mode);
  virtual int openForReading(const QByteArray& path);
  virtual int openFolder(const QByteArray& path);
  virtual qint64 write(int descriptor, const char* bytes, qint64 count);
  virtual qint64 read(int descriptor, char* bytes, qint64 count);
  virtual int sync(int descriptor);
  virtual int close(int descriptor);
  virtual int rename(const QByteArray& from, const QByteArray& to);
  // Fails with EEXIST when the target exists.
  virtual int renameNoReplace(const QByteArray& from, const QByteArray& to);
  // A second name for one file; fails with EEXIST when the name is taken.
  virtual int link(const QByteArray& from, const QByteArray& to);
  virtual int remove(const QByteArray& path);
  virtual int makeFolder(const QByteArray& path, mode_t mode);
  virtual int removeFolder(const QByteArray& path);
  // An exclusive flock, without waiting: EWOULDBLOCK while somebody else holds it, and another failure where the file
  // system knows no locks. It ends with the last descriptor of that opening.
  virtual int lock(int descriptor);

  // The layer that everything in the process writes through: the real one unless a test put another in its place.
  static FileLayer& current();
};

// Puts a layer in place of the real one for as long as it lives. For tests.
class FileLayerOverride {
 public:
  explicit FileLayerOverride(FileLayer& layer);
  ~FileLayerOverride();
  FileLayerOverride(const FileLayerOverride&) = delete;
  FileLayerOverride& operator=(const FileLayerOverride&) = delete;

 private:
  FileLayer* previous;
};

}  // namespace sorvan::base
