// The sizes in pixels that a published field takes.
#pragma once

#include <QSize>

#include "catalogue/fal_model.h"
#include "catalogue/schema_field.h"

namespace sorvan::catalogue {

/// The bounds of the field's sides; nothing where every size of the composer's table fits them.
std::optional<SideBounds> sideBoundsOf(const SchemaField& field);

/// The size of the same shape nearest to the asked one whose sides fit. Throws SorvanError "Unsupported image size."
/// where no size of this shape does.
QSize fittedSize(QSize asked, const SideBounds& sides);

}  // namespace sorvan::catalogue
