// A field that is one of several values.
#pragma once

#include <QComboBox>

#include "shell/views/room.h"

namespace sorvan::views {

// Looks like a field of text, with a double chevron; its values open in one of the program's menus. Main thread.
class ChoiceField final : public QComboBox {
  Q_OBJECT

 public:
  explicit ChoiceField(const QString& name, QWidget* parent = nullptr);
  void showPopup() override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace sorvan::views
