// Small steps that the durable writers share.
#pragma once

#include "base/durable_file.h"

namespace sorvan::base::steps {

inline const QString temporarySuffix = QStringLiteral(".sorvan-temporary");

// "{file name} could not be {verb}: {reason}".
FileError failure(const QString& path, const QString& verb, int negativeErrno);
QString folderOf(const QString& path);
// Zero, or the negative errno. A file system that cannot sync folders counts as synced.
int syncFolder(FileLayer& layer, const QString& folder);
// Zero, or the negative errno; NoReplace also where the file system does not know it.
int rename(FileLayer& layer, const QByteArray& from, const QByteArray& to, Replacing replacing);

}  // namespace sorvan::base::steps
