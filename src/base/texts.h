// The sentences of this room that a user may meet.
#pragma once

#include <QString>

namespace sorvan::base::texts {

inline QString somethingWentWrong() { return QStringLiteral("Something went wrong."); }
inline QString outOfMemory() { return QStringLiteral("There is not enough memory for this."); }
inline QString fileStepFailed(const QString& what, const QString& verb, const QString& reason) {
  return QStringLiteral("%1 could not be %2: %3").arg(what, verb, reason);
}
inline QString notJson(const QString& reason) { return QStringLiteral("This is not readable JSON: %1.").arg(reason); }
inline QString jsonTooLarge() { return QStringLiteral("This JSON is too large to be read."); }
inline QString jsonMissing(const QString& path) { return QStringLiteral("“%1” is missing.").arg(path); }
inline QString jsonUnexpected(const QString& path, const QString& expected) {
  return QStringLiteral("“%1” is not %2.").arg(path, expected);
}
inline QString jsonNotFinite() { return QStringLiteral("A number that is not finite cannot be written as JSON."); }
inline QString settingsUnreadable(const QString& keptAs) {
  return QStringLiteral("Your settings could not be read. They were kept as “%1”.").arg(keptAs);
}
inline QString settingsLocked() { return QStringLiteral("Your settings are in use by another program."); }

}  // namespace sorvan::base::texts
