// How large the picture is shown: less, the size in percent, more, fit.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class IconButton;
class Label;
class PictureCanvas;

// Follows one canvas, which outlives it.
class ZoomBar final : public QWidget {
  Q_OBJECT

 public:
  explicit ZoomBar(PictureCanvas& canvas, QWidget* parent = nullptr);
  QString text() const;

 private:
  void refresh();

  PictureCanvas& canvas_;
  IconButton* less_;
  Label* size_;
  IconButton* more_;
  Button* fit_;
};

}  // namespace sorvan::views
