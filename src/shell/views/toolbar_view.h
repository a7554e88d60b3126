// The bar over the content: where one is, and how it is shown.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

class QSlider;

namespace sorvan::views {

class Button;
class ElidedLabel;
class IconButton;
class IconView;
class Label;

class ToolbarView final : public QWidget {
  Q_OBJECT

 public:
  explicit ToolbarView(QWidget* parent = nullptr);

  void setTitle(const QString& title, const QString& countText);
  // The view that Back returns to; empty hides the button.
  void setBack(const QString& title);
  void setSizeSliderShown(bool shown);
  void setRowHeight(int pixels);
  void setInspectorShown(bool shown);
  // Stepping through the items of a large view.
  void setSteps(bool shown, bool previous, bool next);

 Q_SIGNALS:
  void backPressed();
  void rowHeightChosen(int pixels);
  void inspectorToggled();
  void stepped(int direction);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void placeSlider();

  Button* back_;
  ElidedLabel* title_;
  Label* count_;
  IconButton* previous_;
  IconButton* next_;
  QWidget* sizes_;
  QSlider* slider_;
  IconButton* inspector_;
  bool sizesWanted_ = true;
};

}  // namespace sorvan::views
