// The keys of the window, as the list of them shows them.
#pragma once

#include "shell/room.h"

#include <QString>

#include <vector>

namespace sorvan::shell {

struct ActionRow;

struct ShortcutRow {
  QString title;  // “History”
  QString keys;   // “Ctrl+H”, as the desktop writes them
};

struct ShortcutGroup {
  QString title;  // “View”
  std::vector<ShortcutRow> rows;
};

// The key that a menu shows for a row; empty when there is none. Some keys are taken by the views themselves.
QString shownKeys(const ActionRow& row);

namespace texts {
inline const QString viewerKeys = QStringLiteral("Viewer and Player");
inline const QString everywhereKeys = QStringLiteral("Getting Around");
inline const QString nextArea = QStringLiteral("Next Area of the Window");
inline const QString previousArea = QStringLiteral("Previous Area of the Window");
inline const QString contextMenu = QStringLiteral("Menu of the Selection");
inline const QString stepBack = QStringLiteral("One Step Back");
}  // namespace texts

}  // namespace sorvan::shell
