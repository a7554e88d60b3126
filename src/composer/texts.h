#pragma once

#include <QString>

#include "composer/room.h"

// Every text of the composer's state that a person reads.
namespace sorvan::composer::texts {

inline QString tooManyReferences() {
  return QStringLiteral("Use up to 8 reference images. Remove an attachment before adding more.");
}

}  // namespace sorvan::composer::texts
