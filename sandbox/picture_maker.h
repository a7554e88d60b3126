// Pictures: painted, edited, enlarged, cut out.
#pragma once
#include <QImage>

#include "maker.h"

namespace sandbox {

// `count` pictures, the first with the order's seed, each further one with the next.
Made makePictures(const WorkOrder& order);
// The first input picture in the size that is asked for (its own where none is), visibly changed in the way that words
// and seed say: a tint and a frame of painted shapes. Further input pictures stand along its lower edge.
Made editPicture(const WorkOrder& order, const MediaShelf& shelf);
// The input picture, larger by "upscale_factor" or "scale" (2 where none is given) or to a "target_resolution", at most
// 8192 a side.
Made upscalePicture(const WorkOrder& order, const MediaShelf& shelf);
// The input picture with everything but the middle made transparent, as PNG.
Made cutOutPicture(const WorkOrder& order, const MediaShelf& shelf);

// The first picture that the input names. Throws ModelRefusal.
QImage inputPicture(const WorkOrder& order, const MediaShelf& shelf);
// All that it names, in order. Throws ModelRefusal when one cannot be had.
QList<QImage> inputPictures(const WorkOrder& order, const MediaShelf& shelf);

}  // namespace sandbox
