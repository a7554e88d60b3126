#pragma once

#include "shell/room.h"

#include "shell/contact_sheet_source.h"

#include <QString>
#include <QUuid>

#include <optional>

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

// Whether a mode is opened from another one, to which Back returns: a sheet, a sequence, an item, a generation, a family.
bool isSubView(ModeKind kind);
// The mode's title, such as “Gallery” or “History”.
QString titleOf(ModeKind kind);

// A mode with what it shows: the item, sequence or job, for a generation which of its outputs, for a contact sheet its
// source.
struct WorkspaceMode {
  ModeKind kind = ModeKind::gallery;
  QUuid subject = {};
  int index = 0;
  std::optional<ContactSheetSource> sheet = {};

  // The window's accessible name for the mode.
  QString title() const { return titleOf(kind); }
  bool operator==(const WorkspaceMode&) const = default;
};

}  // namespace sorvan::shell
