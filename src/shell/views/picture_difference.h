// What differs between two pictures.
#pragma once

#include <QImage>

#include "shell/views/room.h"

namespace sorvan::views {

struct PictureDifference {
  QImage picture;         // RGB32: for each channel the distance of the two, times the gain; of the first one's size
  double differing = 0;   // the share of pixels that are not the same, 0 to 1
};

// The second picture is scaled to the size of the first where they differ. Transparency counts as what lies on black.
// Pure; takes its time, so call it on the pool. An empty difference when one of them is null.
PictureDifference differenceOf(const QImage& first, const QImage& second, int gain);

}  // namespace sorvan::views
