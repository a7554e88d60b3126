// Where the cells of the wall lie: rows of one height, filled edge to edge, nothing cropped.
#pragma once

#include <QRectF>

#include "shell/views/room.h"

namespace sorvan::views {

struct WallRow {
  double top = 0;
  double height = 0;
  int first = 0;
  int count = 0;
};

// The heading over a part of the wall.
struct WallHead {
  double top = 0;
  double height = 0;
};

struct WallMeasures {
  double width = 0;      // of the whole wall, padding included
  double rowHeight = 0;  // wished; a row is as high as its cells fill its width
  double gap = 0;
  double padding = 0;
  double headHeight = 0;  // of a heading, the air above its row included
};

// Rows over the aspect ratios (width by height) of the cells, built in one pass. All numbers are logical pixels.
class WallLayout {
 public:
  // Each number in `sections`, in rising order, is the first cell of a part that has a heading and a row of its own.
  void build(const std::vector<float>& aspectRatios, const WallMeasures& measures,
             const std::vector<int>& sections = {});

  double height() const { return height_; }
  int count() const { return static_cast<int>(aspects_.size()); }
  const std::vector<WallRow>& rows() const { return rows_; }
  // One for each section.
  const std::vector<WallHead>& heads() const { return heads_; }
  // The cell of the row at that height whose middle is nearest; -1 without cells.
  int nearest(QPointF point) const;
  // First and one past the last heading that touches the band from `top` to `bottom`.
  std::pair<int, int> headRange(double top, double bottom) const;
  // The row that covers y, the nearest one outside; -1 without rows.
  int rowAt(double y) const;
  int rowOf(int index) const;
  QRectF rectOf(int index) const;
  // -1 between the cells.
  int indexAt(QPointF point) const;
  // First and one past the last cell that touches the band from `top` to `bottom`.
  std::pair<int, int> range(double top, double bottom) const;
  // The cell of the row above (-1) or below (+1) whose centre is nearest.
  int verticalNeighbour(int index, int direction) const;

 private:
  int nearestInRow(int row, double x) const;
  void buildPart(int first, int end);
  void closeRow(int first, int count, double aspectSum, bool last);

  WallMeasures measures_;
  std::vector<float> aspects_;
  std::vector<WallRow> rows_;
  std::vector<WallHead> heads_;
  double height_ = 0;
};

}  // namespace sorvan::views
