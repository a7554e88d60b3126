// The sentences of commands, their interpretation and their execution.
#pragma once

#include <QString>

#include "composer/room.h"

namespace sorvan::composer::texts {

// ---- What a text was not understood as
inline QString describeOrCommand() { return QStringLiteral("Describe an image or enter a library command."); }
inline QString enterCommand() {
  return QStringLiteral("Enter an app command, or switch to Generate to create an image.");
}
inline QString tryLastWeek() {
  return QStringLiteral("Try “find images I generated last week” or search by a keyword.");
}
inline QString noVideoOrAudio() {
  return QStringLiteral("Video and audio generation aren’t available yet. You can import and play existing media.");
}
inline QString useMoveToTrash() {
  return QStringLiteral(
      "Removing library items isn’t supported through the composer. Use the library’s Move to Trash action.");
}
inline QString commandNotSupported() {
  return QStringLiteral(
      "That command isn’t supported. Try “find temple images”, “compare selected images”, or “create a project called "
      "Campaign”.");
}

// ---- What an interpreter's answer lacks
inline QString incompleteAction() { return QStringLiteral("The interpreter returned an incomplete action."); }
inline QString unsupportedAction() {
  return QStringLiteral("The interpreter returned an unsupported action. Nothing was executed.");
}
inline QString missingFavorite() { return QStringLiteral("Missing favorite value."); }
inline QString unsupportedStatus() { return QStringLiteral("Unsupported status."); }
inline QString unsupportedStatusFilter() { return QStringLiteral("Unsupported status filter."); }
inline QString unsupportedMediaFilter() { return QStringLiteral("Unsupported media filter."); }
inline QString unsupportedOrientation() { return QStringLiteral("Unsupported orientation."); }
inline QString invalidDateRange() { return QStringLiteral("Invalid date range."); }
inline QString chooseOutputs() { return QStringLiteral("Choose 1–4 outputs."); }
inline QString pleaseClarify() { return QStringLiteral("Please clarify the action you want Sorvan to perform."); }

// ---- An interpretation
inline QString contextChanged() {
  return QStringLiteral("Context changed during interpretation. No action was executed. Re-enter your instruction.");
}
inline QString noAction() { return QStringLiteral("No action returned by interpreter."); }
inline QString describesGeneration() {
  return QStringLiteral("This describes media generation. Switch to Generate to submit it to your selected models.");
}
inline QString interpreted(const QString& credits) {
  return QStringLiteral("Interpreted · %1 credits. Review the action, then press Run or Generate.").arg(credits);
}
inline QString selectionChanged() {
  return QStringLiteral("The selection changed. Re-enter the instruction to review it for this selection.");
}
inline QString review(const QString& summary) { return QStringLiteral("Review: %1").arg(summary); }
inline QString interpretationTitle() { return QStringLiteral("Interpret Command"); }
inline QString paidWithCredits() { return QStringLiteral("Paid with Sorvan Credits."); }

// ---- Execution
inline QString searching(const QString& query) {
  return QStringLiteral("Searching your workspace for “%1”.").arg(query);
}
inline QString filterApplied() { return QStringLiteral("Library filter applied."); }
inline QString filtersApplied() { return QStringLiteral("Library filters applied."); }
inline QString noLastWeek() { return QStringLiteral("Could not resolve last week."); }
inline QString selectToMove() { return QStringLiteral("Select the media you want to move first."); }
inline QString noProjectNamed(const QString& name) { return QStringLiteral("No project named “%1”.").arg(name); }
inline QString severalProjects() {
  return QStringLiteral("Several projects have that name. Use Move to Project in the inspector.");
}
inline QString movedTo(const QString& name) { return QStringLiteral("Moved selected media to %1.").arg(name); }
inline QString selectToFavorite() { return QStringLiteral("Select the media you want to favorite first."); }
inline QString addedToFavorites() { return QStringLiteral("Selected media added to Favorites."); }
inline QString removedFromFavorites() { return QStringLiteral("Selected media removed from Favorites."); }
inline QString selectToSetStatus() { return QStringLiteral("Select media to change its status."); }
inline QString markedAs(const QString& status) { return QStringLiteral("Marked selected media as %1.").arg(status); }
inline QString created(const QString& name) { return QStringLiteral("Created %1.").arg(name); }
inline QString selectToCompare() { return QStringLiteral("Select 2–8 assets to open a contact sheet."); }
inline QString comparing(int count) { return QStringLiteral("Comparing %1 assets.").arg(count); }
inline QString selectOneForLineage() { return QStringLiteral("Select a single asset to view its lineage."); }
inline QString showingHistory() { return QStringLiteral("Showing generation history."); }
inline QString backToGallery() { return QStringLiteral("Back to the gallery."); }

// ---- Submission
inline QString destinationGone() { return QStringLiteral("Destination project is unavailable."); }
inline QString selectAvailableModel() { return QStringLiteral("Select at least one available model."); }
inline QString selectImages() { return QStringLiteral("Select one or more image assets to use for this generation."); }
inline QString badSeed() { return QStringLiteral("The seed must be a non-negative whole number."); }
inline QString queued(const QString& destination) {
  return QStringLiteral("Queued · outputs will be saved in %1.").arg(destination);
}
inline QString inbox() { return QStringLiteral("Inbox"); }

}  // namespace sorvan::composer::texts
