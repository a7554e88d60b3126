#pragma once

#include "shell/room.h"

#include <QString>
#include <QUuid>

namespace sorvan::shell {

// Where a window is.
enum class ModeKind {
  contactSheet,
  sequence,
  asset,
  generation,
  lineage,
  projectReferences,
  savedReferences,
  gallery,
  contactSheets,
  sequences,
  searchResults,
  activity,
  costs,
};

// A mode with what it shows: the item, sheet, sequence or job, and for a generation which of its outputs.
struct WorkspaceMode {
  ModeKind kind = ModeKind::gallery;
  QUuid subject = {};
  int index = 0;

  // The window's accessible name for the mode, such as “Gallery” or “History”.
  QString title() const;
  bool operator==(const WorkspaceMode&) const = default;
};

}  // namespace sorvan::shell
