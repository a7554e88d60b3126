// A lock that two processes share, for the length of one short operation.
#pragma once

#include <chrono>

#include <QString>

namespace sorvan::base {

// flock on a file of its own, made with mode 0600 if absent and never removed. Released at the end of the scope, and by
// the system when the process dies; child processes do not inherit it.
class FileLock {
 public:
  // Waits at most that long; `isHeld` tells whether it worked. Throws FileError when the lock file cannot be made.
  FileLock(const QString& path, std::chrono::milliseconds patience);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  bool isHeld() const { return held; }

 private:
  int descriptor = -1;
  bool held = false;
};

}  // namespace sorvan::base
