// The row under the toolbar that narrows the gallery.
#pragma once

#include <QWidget>

#include "shell/filter_presenter.h"
#include "shell/views/room.h"

class QHBoxLayout;

namespace sorvan::views {

class Button;
class Chip;
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

  FilterPresenter& filters_;
  SegmentedControl* types_;
  std::vector<Chip*> chips_;
  Button* clear_;
};

}  // namespace sorvan::views
