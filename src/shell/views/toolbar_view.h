// The bar over the content: where one is, and how it is shown.
#pragma once

#include <QTimer>
#include <QWidget>

#include "shell/views/room.h"
#include "shell/workspace_mode.h"

class QHBoxLayout;
class QSlider;

namespace sorvan::views {

class Button;
class ElidedLabel;
class IconButton;
class IconView;
class Label;
class SegmentedControl;
class TextField;

class ToolbarView final : public QWidget {
  Q_OBJECT

 public:
  explicit ToolbarView(QWidget* parent = nullptr);

  void setTitle(const QString& title, const QString& countText);
  // The view that Back returns to; empty hides the button.
  // `keys` are those that lead back from this page beside the usual one.
  void setBack(const QString& title, const QString& keys = {});
  // The views of this location with the one in front; fewer than two show no tabs.
  void setTabs(const std::vector<ModeKind>& tabs, ModeKind current);
  // Whether the keyboard stands on the tab of the view in front: who walks along the tabs stays on them.
  bool isWalkedThrough() const;
  // Controls of a page, made known once by `addTools`; null shows none.
  void addTools(QWidget* tools);
  void setTools(QWidget* tools);
  void setSizeSliderShown(bool shown);
  // Search, order and filters belong to the gallery alone.
  void setGalleryToolsShown(bool shown);
  // What is searched for, without telling of it.
  void setSearch(const QString& text);
  void setSort(const QString& name);
  void setFiltersShown(bool shown);
  void focusSearch();
  void setRowHeight(int pixels);
  void setInspectorShown(bool shown);
  // Whether the page in front has an inspector at all.
  void setInspectorOffered(bool offered);
  // Stepping through the items of a large view.
  void setSteps(bool shown, bool previous, bool next);

 Q_SIGNALS:
  void backPressed();
  void tabChosen(sorvan::shell::ModeKind tab);
  void rowHeightChosen(int pixels);
  void inspectorToggled();
  // The person has stopped typing for a moment.
  void searchChosen(const QString& text);
  void searchLeft();
  // The orders are to be offered at this place on the screen.
  void sortPressed(QPoint globalPosition);
  void filtersToggled();
  void stepped(int direction);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void placeSlider();
  void placeTabs(ModeKind current);

  QHBoxLayout* row_ = nullptr;
  Button* back_;
  ElidedLabel* title_;
  Label* count_;
  SegmentedControl* tabs_ = nullptr;
  std::vector<ModeKind> tabKinds_;
  std::vector<QWidget*> tools_;
  IconButton* previous_;
  IconButton* next_;
  Button* sort_;
  TextField* search_;
  IconButton* filters_;
  QWidget* sizes_;
  QSlider* slider_;
  IconButton* inspector_;
  bool sizesWanted_ = true;
  QTimer typing_;
};

}  // namespace sorvan::views
