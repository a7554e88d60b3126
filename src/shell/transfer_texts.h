// The words about what is dragged, copied and dropped.
#pragma once

#include <QString>

namespace sorvan::shell::texts {

inline QString itemsCopied(qsizetype count) {
  return count == 1 ? QStringLiteral("Copied") : QStringLiteral("%1 items copied").arg(count);
}
inline QString originalsMissing(qsizetype count) {
  return count == 1 ? QStringLiteral("Its original is missing, so there is nothing to copy.")
                    : QStringLiteral("Their originals are missing, so there is nothing to copy.");
}
inline QString nothingToDrag(qsizetype count) {
  return count == 1 ? QStringLiteral("Its original is missing, so there is nothing to drag.")
                    : QStringLiteral("Their originals are missing, so there is nothing to drag.");
}
inline QString leftOut(qsizetype count) {
  return count == 1 ? QStringLiteral("1 item is left out: its original is missing.")
                    : QStringLiteral("%1 items are left out: their originals are missing.").arg(count);
}
inline const QString importLater = QStringLiteral("Files cannot be imported yet");
inline QString nothingTouched(qsizetype count) {
  return count == 1 ? QStringLiteral("Import comes with a later version. The file was left where it is.")
                    : QStringLiteral("Import comes with a later version. All %1 files were left where they are.")
                          .arg(count);
}

}  // namespace sorvan::shell::texts
