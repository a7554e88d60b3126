// Marks on their way from the view in which they were drawn to the composer.
#pragma once

#include "core/request_values.h"

namespace sorvan::core {

struct PendingMarks {
  QUuid assetID;  ///< the picture on which they were drawn
  std::vector<MarkupBox> boxes;
  bool confine = true;  ///< whether only the marked areas may change

  bool operator==(const PendingMarks&) const = default;
};

}  // namespace sorvan::core
