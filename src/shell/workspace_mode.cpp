#include "shell/workspace_mode.h"

#include "shell/texts.h"

namespace sorvan::shell {

bool isSubView(ModeKind kind) {
  switch (kind) {
    case ModeKind::contactSheet:
    case ModeKind::sequence:
    case ModeKind::asset:
    case ModeKind::generation:
    case ModeKind::lineage:
      return true;
    default:
      return false;
  }
}

QString titleOf(ModeKind kind) {
  switch (kind) {
    case ModeKind::contactSheet:
      return texts::contactSheetMode;
    case ModeKind::sequence:
      return texts::sequenceMode;
    case ModeKind::asset:
      return texts::assetMode;
    case ModeKind::generation:
      return texts::generationMode;
    case ModeKind::lineage:
      return texts::lineageMode;
    case ModeKind::projectReferences:
      return texts::referencesMode;
    case ModeKind::savedReferences:
      return texts::globalReferencesMode;
    case ModeKind::gallery:
      return texts::gallery;
    case ModeKind::contactSheets:
      return texts::contactSheetsMode;
    case ModeKind::sequences:
      return texts::sequencesMode;
    case ModeKind::searchResults:
      return texts::searchResultsMode;
    case ModeKind::activity:
      return texts::history;
    case ModeKind::costs:
      return texts::costReportMode;
  }
  return {};
}

}  // namespace sorvan::shell
