// Which pixels a result may replace, and how strongly: nothing outside the boxes, with soft edges inside them.
#pragma once

#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// The levels of all pixels of a canvas, from 0 (the original stays) to 255. A box's outermost pixels stay at 0, also
/// where the box ends at the canvas's edge; each pixel further in is lighter by one step until the level is full. Where
/// boxes overlap, the lighter one counts. A value: any thread, and rows may be read by several at once.
class FeatherMask {
 public:
  FeatherMask(const std::vector<MarkupBox>& boxes, QSize canvas);

  /// How many pixels a soft edge is wide.
  int feather() const { return static_cast<int>(levels_.size()) - 1; }
  /// Holds every pixel whose level is not 0; empty when there is none.
  const QRect& bounds() const { return bounds_; }
  /// Writes the levels of row `y` (from the top), as many as the canvas is wide.
  void readRow(int y, std::uint8_t* levels) const;

 private:
  QSize canvas_;
  std::vector<QRect> boxes_;          ///< by their left edges
  std::vector<std::uint8_t> levels_;  ///< of a pixel so many steps from its box's edge
  QRect bounds_;
};

}  // namespace sorvan::generation
