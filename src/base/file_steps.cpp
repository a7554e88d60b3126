#include "base/file_steps.h"

#include <cerrno>

#include <QFile>
#include <QFileInfo>

#include "base/planted_bug.h"

namespace sorvan::base::steps {

FileError failure(const QString& path, const QString& verb, int negativeErrno) {
  const QString name = QFileInfo(path).fileName();
  return FileError(name.isEmpty() ? path : name, verb, -negativeErrno);
}

QString folderOf(const QString& path) { return QFileInfo(path).path(); }

int syncFolder(FileLayer& layer, const QString& folder) {
  if (planted("no-folder-sync")) return 0;
  const int descriptor = layer.openFolder(QFile::encodeName(folder));
  if (descriptor < 0) return descriptor;
  const int synced = layer.sync(descriptor);
  const int closed = layer.close(descriptor);
  if (synced == -EINVAL || synced == -ENOTSUP) return closed;
  return synced < 0 ? synced : closed;
}

int rename(FileLayer& layer, const QByteArray& from, const QByteArray& to, Replacing replacing) {
  if (replacing == Replacing::Replace) return layer.rename(from, to);
  const int result = layer.renameNoReplace(from, to);
  if (result != -EINVAL && result != -ENOSYS && result != -ENOTSUP) return result;
  // A file system without the flag: reserve the name with a file of our own, then rename over it.
  const int reserved = layer.createFile(to, 0600);
  if (reserved < 0) return reserved;
  layer.close(reserved);
  const int renamed = layer.rename(from, to);
  if (renamed < 0) layer.remove(to);
  return renamed;
}

}  // namespace sorvan::base::steps
