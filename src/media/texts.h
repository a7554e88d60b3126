// What the rooms of moving pictures and sounds say to people.
#pragma once

#include <QString>

#include "media/room.h"

namespace sorvan::media::texts {

inline QString originalMissing() { return QStringLiteral("The original file is missing."); }
inline QString noPictureDecodes() { return QStringLiteral("This clip could not be read."); }

}  // namespace sorvan::media::texts
