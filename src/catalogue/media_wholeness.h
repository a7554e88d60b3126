// Whether a downloaded file is what it claims to be, and all of it.
#pragma once

#include <QIODevice>
#include <QString>

#include <optional>

#include "catalogue/room.h"

namespace sorvan::catalogue {

enum class Wholeness {
  whole,    ///< it opens, and its structure reaches to its end
  cut,      ///< it is empty, ends too early, or is not the media that was announced
  unknown,  ///< it opens, but its form does not tell where it ends
};

/// Looks at the file as `ext`, an extension without a point; blocks, so it belongs on the pool. A file that is neither
/// picture, clip nor sound and is not announced as one is unknown: it is for the user to open.
Wholeness wholenessOf(const QString& file, const QString& ext);

/// Whether the boxes of an MP4 or MOV file, one after the other, end where the file ends. Nothing for bytes that are no
/// such file.
std::optional<bool> boxesReachTheEnd(const QString& file);
std::optional<bool> boxesReachTheEnd(QIODevice& file);

/// Whether a RIFF file is as long as its header says. Nothing when it is none or its header leaves the length open.
std::optional<bool> riffReachesTheEnd(const QString& file);
std::optional<bool> riffReachesTheEnd(QIODevice& file);

}  // namespace sorvan::catalogue
