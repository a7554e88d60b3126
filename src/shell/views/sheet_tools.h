// What can be done with an open sheet, in the window's toolbar.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class IconButton;

class SheetTools final : public QWidget {
  Q_OBJECT

 public:
  explicit SheetTools(QWidget* parent = nullptr);

  // How many pictures Compare would show; fewer than two hide it.
  void setCompare(int pictures, bool comparing);
  // Whether there are clips, and whether they play.
  void setClips(bool any, bool playing);
  void setAdding(bool possible, const QString& hint);
  void setSaving(bool possible);
  void setMore(bool possible);

 Q_SIGNALS:
  void compareToggled();
  void playToggled();
  void addRequested();
  void saveRequested();
  void moreRequested(QPoint globalPosition);

 private:
  Button* compare_;
  Button* play_;
  Button* save_;
  Button* add_;
  IconButton* more_;
};

}  // namespace sorvan::views
