// A file layer that fails one of its steps, so that a test can go through all of them.
#pragma once

#include <cerrno>

#include "base/file_layer.h"

namespace sorvan::test {

/// Counts the steps that change the disk and fails the one of this number, counted from 1, and every later one.
class FailingLayer final : public base::FileLayer {
 public:
  explicit FailingLayer(int failingStep, int error = ENOSPC) : failing_(failingStep), error_(error) {}
  int steps() const { return steps_; }

  int createFile(const QByteArray& path, mode_t mode) override {
    return fails() ? -error_ : FileLayer::createFile(path, mode);
  }
  qint64 write(int descriptor, const char* bytes, qint64 count) override {
    return fails() ? -error_ : FileLayer::write(descriptor, bytes, count);
  }
  int sync(int descriptor) override { return fails() ? -error_ : FileLayer::sync(descriptor); }
  int rename(const QByteArray& from, const QByteArray& to) override {
    return fails() ? -error_ : FileLayer::rename(from, to);
  }
  int renameNoReplace(const QByteArray& from, const QByteArray& to) override {
    return fails() ? -error_ : FileLayer::renameNoReplace(from, to);
  }
  int link(const QByteArray& from, const QByteArray& to) override {
    return fails() ? -error_ : FileLayer::link(from, to);
  }
  int makeFolder(const QByteArray& path, mode_t mode) override {
    return fails() ? -error_ : FileLayer::makeFolder(path, mode);
  }

 private:
  bool fails() { return ++steps_ >= failing_; }
  int failing_;
  int error_;
  int steps_ = 0;
};

/// A file system whose locks fail with one error.
class LocklessLayer final : public base::FileLayer {
 public:
  explicit LocklessLayer(int error) : error_(error) {}
  int lock(int) override { return -error_; }

 private:
  int error_;
};

/// Fails no step, and counts them.
inline constexpr int noFailingStep = 1 << 30;

}  // namespace sorvan::test
