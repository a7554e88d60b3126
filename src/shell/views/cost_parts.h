// Tiles and bars of the page of costs, and the card on which its parts stand.
#pragma once

#include <QScrollArea>

#include "shell/cost_display.h"
#include "shell/views/card.h"

namespace sorvan::views {

// A card as this page has them.
class CostCard : public Card {
  Q_OBJECT

 public:
  CostCard() : Card(&Colors::surfaceRaised, &Colors::lineSubtle, &Metrics::radiusCard) {}
};

// One figure with its title over it and a line under it.
class CostTileCard final : public CostCard {
  Q_OBJECT

 public:
  CostTileCard();
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
