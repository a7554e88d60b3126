// Temporary files outside any workspace.
#pragma once

#include <QString>

#include "base/instant.h"

namespace sorvan::base {

// "$XDG_CACHE_HOME/sorvan-studio/tmp", made with mode 0700 when it is missing: the shared temporary folder can be read
// by everybody, and a runtime folder is a small file system in memory. Throws FileError.
QString scratchFolder();

// A path that no file has yet: "{scratch folder}/{prefix}{UUID}.{extension}". The prefix is one of those that are
// swept. The file is for the caller to make and to remove. Throws FileError.
QString scratchPath(const QString& prefix, const QString& extension);

// Removes the files of ours in there that a crash left more than a day before `now`. Never throws.
void sweepScratchFiles(Instant now);

}  // namespace sorvan::base
