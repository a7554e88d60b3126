// The sentences of pictures, clips and sounds that a user may meet.
#pragma once

#include <QString>

namespace sorvan::platform::texts {

inline QString imageUnreadable() { return QStringLiteral("This image could not be read."); }
inline QString imageNotWritten() { return QStringLiteral("This image could not be written."); }
inline QString clipUnreadable() { return QStringLiteral("This clip could not be read."); }
inline QString clipNotWritten() { return QStringLiteral("This clip could not be written."); }
inline QString clipWithoutSound() { return QStringLiteral("This clip has no sound."); }
inline QString soundUnreadable() { return QStringLiteral("This sound could not be read."); }
inline QString soundNotWritten() { return QStringLiteral("This sound could not be written."); }

}  // namespace sorvan::platform::texts
