// A file layer that counts the steps on the disk and fails the one that a test names.
#pragma once

#include "base/file_layer.h"

namespace sorvan::test {

enum class Failing { ThisStep, ThisAndAllAfter };

class FailingFileLayer final : public sorvan::base::FileLayer {
 public:
  // Steps count from 1; reads count too. Without a step nothing fails and the steps are only counted.
  FailingFileLayer() = default;
  FailingFileLayer(int step, int errorNumber, Failing failing = Failing::ThisStep)
      : failingStep(step), number(errorNumber), extent(failing) {}

  int steps() const { return count; }
  // A write that fails writes half of its bytes before, as a disk that becomes full does.
  bool hasFailed() const { return failed; }
  // The largest piece that one write takes; zero is no limit.
  qint64 shortWrites = 0;

  int createFile(const QByteArray& path, mode_t mode) override;
  int openForReading(const QByteArray& path) override;
  int openFolder(const QByteArray& path) override;
  qint64 write(int descriptor, const char* bytes, qint64 bytesCount) override;
  qint64 read(int descriptor, char* bytes, qint64 bytesCount) override;
  int sync(int descriptor) override;
  int close(int descriptor) override;
  int rename(const QByteArray& from, const QByteArray& to) override;
  int renameNoReplace(const QByteArray& from, const QByteArray& to) override;
  int remove(const QByteArray& path) override;
  int makeFolder(const QByteArray& path, mode_t mode) override;
  int removeFolder(const QByteArray& path) override;

 private:
  bool failsNow();

  int failingStep = 0;
  int number = 0;
  Failing extent = Failing::ThisStep;
  int count = 0;
  bool failed = false;
};

}  // namespace sorvan::test
