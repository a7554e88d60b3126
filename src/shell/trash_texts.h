// What is said before items go to Trash.
#pragma once

#include <QString>

namespace sorvan::shell::texts {

inline const QString showTrash = QStringLiteral("Show Trash");
inline QString trashQuestionTitle(qsizetype count) {
  return count == 1 ? QStringLiteral("Move this item to Trash?")
                    : QStringLiteral("Move these %1 items to Trash?").arg(count);
}

inline const QString notesTooLongToUndo = QStringLiteral(
    "These notes are longer than the history can keep. Neither this change nor the steps before it can be undone "
    "afterwards.");

}  // namespace sorvan::shell::texts
