// A field that is one of several values.
#pragma once

#include <QComboBox>

#include "shell/views/room.h"

namespace sorvan::views {

// Opens its values in one of the program's menus instead of the toolkit's list. Main thread.
class ChoiceField final : public QComboBox {
  Q_OBJECT

 public:
  explicit ChoiceField(const QString& name, QWidget* parent = nullptr);
  void showPopup() override;
};

}  // namespace sorvan::views
