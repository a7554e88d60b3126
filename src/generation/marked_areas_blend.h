// Lays a model's picture over the original inside the marks. Outside them the original stays as it is, to the bit.
#pragma once

#include <QColorSpace>
#include <QImage>
#include <QRect>

#include <optional>
#include <vector>

#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// Whether a picture has the shape of the rectangle that it is to fill, to three percent.
bool fitsShape(QSize result, QSize target);

/// The original with `result`, scaled to the rectangle `target` and converted into the original's colour space, laid
/// over it inside the boxes, which are fractions of `target`; the original's size and depth. Pixels whose mask is 0
/// keep the original's values, also under full transparency; 16-bit originals stay in 16 bits, grey ones and those with
/// a palette become RGB with the same values. None when there are no boxes, the target is not in the original, or the
/// shapes differ. Any thread; holds one copy of the original's pixels and one of the result's.
std::optional<QImage> laidInside(const std::vector<MarkupBox>& boxes, const QImage& original, const QImage& result,
                                 const QRect& target);

/// The colour space in which the picture's values stand once they are RGB: its own, and for a grey profile the RGB
/// space with the same tones. Invalid for a picture that names none, which is taken for sRGB.
QColorSpace rgbSpaceOf(const QImage& image);

/// The picture's colours in `space`, as a picture of straight RGB with 8 or 16 bits.
QImage inSpace(const QImage& image, const QColorSpace& space, QImage::Format format);

}  // namespace sorvan::generation
