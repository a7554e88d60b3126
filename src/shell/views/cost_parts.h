// Tiles and bars of the page of costs, and the card on which its parts stand.
#pragma once

#include <QScrollArea>
#include <QWidget>

#include "shell/cost_display.h"
#include "shell/views/room.h"

namespace sorvan::views {

// A raised surface with a hairline round it.
class CostCard : public QWidget {
  Q_OBJECT

 public:
  explicit CostCard(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// One figure with its title over it and a line under it.
class CostTileCard final : public CostCard {
  Q_OBJECT

 public:
  explicit CostTileCard(QWidget* parent = nullptr);
  void setTile(const CostTile& tile);
  QSize sizeHint() const override { return {200, 96}; }
  QSize minimumSizeHint() const override { return {120, 96}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  CostTile tile_;
};

// Names with their amounts over bars, the longest first. The keyboard scrolls it.
class CostBars final : public QScrollArea {
  Q_OBJECT

 public:
  explicit CostBars(QWidget* parent = nullptr);
  // `name` is what assistive technology calls the list.
  void setBars(const QString& name, const std::vector<CostBar>& bars);

 private:
  std::vector<QWidget*> rows_;
};

}  // namespace sorvan::views
