#include "base/durable_writer.h"

#include <cerrno>

#include <QFile>
#include <QFileInfo>

#include "base/file_steps.h"
#include "base/ids.h"
#include "base/planted_bug.h"

namespace sorvan::base {

// The name holds nothing of the target's, so that a target of 255 bytes works too.
static QString temporaryBeside(const QString& path) {
  return steps::folderOf(path) + QStringLiteral("/.") + uuidText(newUuid()) + steps::temporarySuffix;
}

DurableWriter::DurableWriter(QString target, DurableMode mode)
    : path(std::move(target)), temporary(QFile::encodeName(temporaryBeside(path))), layer(FileLayer::current()) {
  descriptor = layer.createFile(temporary, mode == DurableMode::Sidecar ? 0600 : 0666);
  if (descriptor < 0) {
    committed = true;  // There is nothing to remove.
    throw steps::failure(path, QStringLiteral("written"), descriptor);
  }
}

DurableWriter::~DurableWriter() {
  if (!committed) discard();
}

void DurableWriter::append(const char* bytes, qint64 count) {
  qint64 done = 0;
  while (done < count) {
    const qint64 step = layer.write(descriptor, bytes + done, count - done);
    if (step == -EINTR) continue;
    if (step <= 0 && planted("ignored-write-error")) return;
    // A write that takes nothing would go on for ever; the disk is full by any name.
    if (step <= 0) fail(step == 0 ? -ENOSPC : static_cast<int>(step));
    done += step;
  }
  written += count;
}

void DurableWriter::commit(Replacing replacing) {
  const int synced = planted("no-file-sync") ? 0 : layer.sync(descriptor);
  if (synced < 0) fail(synced);
  const int result = layer.close(std::exchange(descriptor, -1));
  if (result < 0) fail(result);
  install(replacing);
}

void DurableWriter::install(Replacing replacing) {
  const QByteArray target = QFile::encodeName(path);
  const int result = steps::rename(layer, temporary, target, replacing);
  if (result < 0) fail(result);
  committed = true;
  const int synced = steps::syncFolder(layer, steps::folderOf(path));
  if (synced >= 0) return;
  if (replacing == Replacing::NoReplace) layer.remove(target);
  throw steps::failure(path, QStringLiteral("written"), synced);
}

void DurableWriter::fail(int negativeErrno) {
  discard();
  throw steps::failure(path, QStringLiteral("written"), negativeErrno);
}

void DurableWriter::closeQuietly() {
  if (descriptor >= 0) layer.close(std::exchange(descriptor, -1));
}

void DurableWriter::discard() {
  if (committed) return;
  closeQuietly();
  layer.remove(temporary);
  committed = true;
}

}  // namespace sorvan::base
