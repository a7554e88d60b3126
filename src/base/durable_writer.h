// A durable file written in pieces.
#pragma once

#include "base/durable_file.h"

namespace sorvan::base {

// Makes a temporary file beside `path` at once; `commit` puts it in place. Without a commit it is removed again.
// Thread: one at a time. Every function throws FileError.
class DurableWriter {
 public:
  DurableWriter(QString path, DurableMode mode);
  ~DurableWriter();
  DurableWriter(const DurableWriter&) = delete;
  DurableWriter& operator=(const DurableWriter&) = delete;

  void append(const char* bytes, qint64 count);
  void append(const QByteArray& bytes) { append(bytes.constData(), bytes.size()); }
  qint64 size() const { return written; }
  // After it returns the file is on the disk under its name.
  void commit(Replacing replacing);

 private:
  void fail(int negativeErrno);
  void closeQuietly();
  void discard();
  void install(Replacing replacing);

  QString path;
  QByteArray temporary;
  FileLayer& layer;
  int descriptor = -1;
  qint64 written = 0;
  bool committed = false;
};

}  // namespace sorvan::base
