// The sentences of this room that a user may meet.
#pragma once

#include <QString>

namespace sorvan::exchange::texts {

inline QString workspaceUnavailable() { return QStringLiteral("Workspace unavailable."); }
inline QString imageNotRead() { return QStringLiteral("This image could not be read."); }
inline QString notAnImage(const QString& fileName) {
  return QStringLiteral("“%1” is no image. Only images can be attached.").arg(fileName);
}
inline QString fileChanged(const QString& fileName) {
  return QStringLiteral("“%1” changed while it was being copied. Try again.").arg(fileName);
}
inline QString projectGone() {
  return QStringLiteral("The project was removed while the file was being copied. Nothing was added.");
}
inline QString strangeImportNote() {
  return QStringLiteral("The note of an import speaks of something that no import leaves.");
}
inline QString importStep() { return QStringLiteral("Import Media"); }

}  // namespace sorvan::exchange::texts
