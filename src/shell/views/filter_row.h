// The row under the toolbar that narrows the gallery.
#pragma once

#include <QWidget>

#include "shell/filter_presenter.h"
#include "shell/views/room.h"

class QHBoxLayout;
class QMenu;

namespace sorvan::views {

class Button;
class Chip;
class IconButton;
class SegmentedControl;

class FilterRow final : public QWidget {
  Q_OBJECT

 public:
  // The presenter outlives the row.
  explicit FilterRow(FilterPresenter& filters, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void refresh();
  void fit();
  void openChoices(int chip);
  void openHidden();
  void fillChoices(QMenu& menu, const FilterChip& state);

  FilterPresenter& filters_;
  SegmentedControl* types_;
  std::vector<Chip*> chips_;
  IconButton* more_;  // the filters that find no room in the row
  Button* clear_;
};

}  // namespace sorvan::views
