// Pictures: painted, edited, enlarged, cut out.
#pragma once
#include <QImage>

#include "maker.h"

namespace sandbox {

// `count` pictures, the first with the order's seed, each further one with the next.
Made makePictures(const WorkOrder& order);
// The first input picture, visibly changed in the way that words and seed say: a tint and a frame of painted shapes.
Made editPicture(const WorkOrder& order, const MediaShelf& shelf);
// The input picture, larger by "upscale_factor" or "scale" (2 where none is given), at most 8192 a side.
Made upscalePicture(const WorkOrder& order, const MediaShelf& shelf);
// The input picture with everything but the middle made transparent, as PNG.
Made cutOutPicture(const WorkOrder& order, const MediaShelf& shelf);

// The picture that the input names under the first of the usual fields. Throws ModelRefusal.
QImage inputPicture(const WorkOrder& order, const MediaShelf& shelf);
std::optional<QImage> inputPictureIfAny(const WorkOrder& order, const MediaShelf& shelf);

}  // namespace sandbox
