// The pictures of a marked edit: what is sent to a model, and what is made of its answer. PNG data in and out of files.
//
// All on the upright picture, and nothing that comes out carries an orientation. Any thread; heavy, so on the pool.
#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>

#include <optional>
#include <vector>

#include "generation/marked_areas_plan.h"

namespace sorvan::generation {

/// The rectangle cut out of a picture, in sRGB, since a model looks at numbers and not at profiles. Throws SorvanError
/// "Cannot read the image to mark up." also for a rectangle that is not in the picture.
QByteArray croppedPicture(const QString& path, const QRect& rectangle);

/// The picture with red numbered boxes drawn on it, in sRGB and at most 4,096 pixels long. Throws SorvanError "Cannot
/// read the image to mark up." or "Cannot draw the marks.".
QByteArray annotatedPicture(const QString& path, const std::vector<MarkupBox>& boxes);

/// The original with the model's picture laid over it inside the boxes, which are fractions of the whole original.
/// With a route the picture replaces what was sent. None when that is not possible: a picture that cannot be read, of
/// another shape, or an original that is no longer the one that was sent. Never throws.
std::optional<QByteArray> confinedPicture(const QString& result, const QString& original,
                                          const std::vector<MarkupBox>& boxes, const std::optional<MarkedRoute>& route);

}  // namespace sorvan::generation
