#include "shell/shortcut_list.h"

#include "shell/actions.h"
#include "shell/actions_presenter.h"

#include <QKeySequence>

namespace sorvan::shell {

namespace {

QString native(const QString& keys) {
  return QKeySequence(keys, QKeySequence::PortableText).toString(QKeySequence::NativeText);
}

// The keys of the large view would make the longest list longer still.
QString groupOf(const ActionRow& row) {
  return row.menu == MenuId::view && row.scope == KeyScope::mediaView ? texts::viewerKeys : menuTitle(row.menu);
}

// Keys that belong to no action.
ShortcutGroup keysOfTheWindow() {
  return {texts::everywhereKeys,
          {{texts::nextArea, native(QStringLiteral("F6"))},
           {texts::previousArea, native(QStringLiteral("Shift+F6"))},
           {texts::contextMenu, native(QStringLiteral("Shift+F10"))},
           {texts::stepBack, native(QStringLiteral("Esc"))}}};
}

}  // namespace

QString shownKeys(const ActionRow& row) {
  if (row.id == ActionId::openItem) return native(QStringLiteral("Return"));
  return native(row.shortcut);
}

std::vector<ShortcutGroup> ActionsPresenter::shortcuts() const {
  std::vector<ShortcutGroup> groups;
  for (const ActionRow& row : actionTable()) {
    const QString keys = shownKeys(row);
    if (keys.isEmpty() || !isOffered(row.id)) continue;
    const QString title = groupOf(row);
    if (groups.empty() || groups.back().title != title) groups.push_back({title, {}});
    groups.back().rows.push_back({row.title, keys});
  }
  groups.push_back(keysOfTheWindow());
  return groups;
}

}  // namespace sorvan::shell
