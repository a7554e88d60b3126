#pragma once

#include "shell/room.h"

#include <QUuid>

#include <variant>
#include <vector>

namespace sorvan::shell {

// What a view of a sheet shows: a passing selection, the jobs of a comparison, or a stored sheet.
struct PassingSelection {
  std::vector<QUuid> assets;
  bool operator==(const PassingSelection&) const = default;
};
struct ComparisonBatch {
  QUuid comparison;
  bool operator==(const ComparisonBatch&) const = default;
};
struct StoredSheet {
  QUuid sheet;
  bool operator==(const StoredSheet&) const = default;
};
using ContactSheetSource = std::variant<PassingSelection, ComparisonBatch, StoredSheet>;

}  // namespace sorvan::shell
