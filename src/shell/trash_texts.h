// What is said before items go to Trash.
#pragma once

#include <QString>

namespace sorvan::shell::texts {

inline QString trashQuestionTitle(qsizetype count) {
  return count == 1 ? QStringLiteral("Move this item to Trash?")
                    : QStringLiteral("Move these %1 items to Trash?").arg(count);
}

}  // namespace sorvan::shell::texts
