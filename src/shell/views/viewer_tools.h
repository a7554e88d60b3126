// What the toolbar offers while an item is shown large: its size, the heart and the menu of the item.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

class HeartButton;
class PictureCanvas;

// Follows one canvas, which outlives it.
class ViewerTools final : public QWidget {
  Q_OBJECT

 public:
  explicit ViewerTools(PictureCanvas& canvas, QWidget* parent = nullptr);

  void setFavorite(bool favorite);

 Q_SIGNALS:
  void favoriteToggled();
  // At a point of the screen.
  void moreRequested(QPoint at);

 private:
  HeartButton* heart_;
};

}  // namespace sorvan::views
