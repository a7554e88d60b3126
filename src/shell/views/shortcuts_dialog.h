// The list of all keys.
#pragma once

#include <QDialog>

#include "shell/shortcut_list.h"
#include "shell/views/room.h"

class QScrollArea;

namespace sorvan::views {

// Every group under its title, in columns. Arrows scroll where it is longer than the window; Escape or Done closes it,
// and it deletes itself then.
class ShortcutsDialog final : public QDialog {
  Q_OBJECT

 public:
  ShortcutsDialog(const std::vector<ShortcutGroup>& groups, QWidget* parent);

 private:
  QScrollArea* list_;
};

}  // namespace sorvan::views
