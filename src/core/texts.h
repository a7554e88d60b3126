// The sentences of this room that a user may meet.
#pragma once

#include <QString>

namespace sorvan::core::texts {

// Saving
inline QString backingUp() {
  return QStringLiteral(
      "Sorvan is backing up this workspace. Please wait until the backup finishes before making changes.");
}
inline QString workspaceUnavailable() { return QStringLiteral("Workspace or project unavailable."); }

// The folder itself
inline QString workspaceFolderGone() { return QStringLiteral("The workspace folder isn’t available."); }
inline QString noRoomForResult() {
  return QStringLiteral(
      "There isn’t enough free space in your workspace folder to keep a result. Free at least 256 MB and try again.");
}
inline QString cannotLock() { return QStringLiteral("Cannot lock this workspace. Check its folder permissions."); }
inline QString lockedByAnother() {
  return QStringLiteral(
      "This workspace is open in another Sorvan process. Close it there before opening, copying or backing it up. "
      "Simultaneous access through cloud sync is not supported.");
}

// Opening
inline QString couldNotOpen(const QString& reason) {
  return QStringLiteral("Could not open your workspace: %1").arg(reason);
}
inline QString temporaryFolder() {
  return QStringLiteral(
      "macOS clears that folder on its own, so a library kept there would be lost. Choose a folder such as Pictures "
      "or Documents.");
}
inline QString unsavedBeforeSwitch() {
  return QStringLiteral(
      "Some changes haven’t been saved. Open Workspace Health and choose Try Saving Again before switching "
      "workspaces.");
}
inline QString busyBeforeSwitch() {
  return QStringLiteral("Wait for exports, imports and generation jobs to finish before switching workspaces.");
}
inline QString newerVersion() { return QStringLiteral("This workspace was created by a newer version of Sorvan."); }
inline QString couldNotSnapshot() { return QStringLiteral("Could not back up the workspace before upgrading it."); }
inline QString workspaceBusy() {
  return QStringLiteral("Workspace is busy. Close other Sorvan windows and try again; no migration was started.");
}
inline QString libraryMissing(const QString& newestSnapshot) {
  const QString what = QStringLiteral(
      "The library of this workspace is missing or empty, so Sorvan didn’t open it and changed nothing. ");
  if (newestSnapshot.isEmpty())
    return what + QStringLiteral("Restore “.sorvan/library.store” from a workspace backup and open it again.");
  return what + QStringLiteral(
                    "Its newest snapshot is “%1”. Put it back as “.sorvan/library.store” and open the "
                    "workspace again.")
                    .arg(newestSnapshot);
}

// Jobs that the last exit cut off
inline QString interrupted() { return QStringLiteral("Interrupted"); }
inline QString closedBeforeFinish() {
  return QStringLiteral(
      "Sorvan closed before this request finished. Retry reconnects to the saved job; it is not submitted or charged a "
      "second time.");
}
inline QString submissionAnswerLost() {
  return QStringLiteral(
      "The answer to this request was lost. fal.ai may have accepted it and may charge for it. Check your fal.ai "
      "history before generating again.");
}
inline QString waitingToStart() { return QStringLiteral("Waiting to start"); }

// Ledgers
inline QString promptsNoun() { return QStringLiteral("saved prompts"); }
inline QString chargesNoun() { return QStringLiteral("spending history"); }
inline QString analysesNoun() { return QStringLiteral("saved image reviews"); }
inline QString loadedEarlierVersion(const QString& noun) {
  return QStringLiteral(
             "Sorvan couldn’t open your latest %1, so it loaded an earlier saved version. Some recent changes may be "
             "missing. Review what was recovered, then open Workspace Health and choose Try Saving Again to keep the "
             "recovered version.")
      .arg(noun);
}
inline QString ledgerUnreadable(const QString& noun) {
  return QStringLiteral(
             "Sorvan couldn’t open your %1. Nothing has been replaced. To recover this information, open a workspace "
             "backup that contains it.")
      .arg(noun);
}
inline QString ledgerNotSaved(const QString& noun) {
  return QStringLiteral(
             "Your %1 couldn’t be saved. Keep Sorvan open so you don’t lose your latest changes. Check that your "
             "workspace folder is available and your disk has free space, then open Workspace Health and choose Try "
             "Saving Again.")
      .arg(noun);
}
inline QString workspaceBeforePrompt() { return QStringLiteral("Choose a workspace before saving a prompt."); }
inline QString workspaceBeforeCharges() {
  return QStringLiteral("Choose a workspace before saving your spending history.");
}
inline QString workspaceBeforeAnalyses() {
  return QStringLiteral("Choose a workspace before saving your saved image reviews.");
}
inline QString promptBlank() { return QStringLiteral("Write a prompt first."); }
inline QString draftNotSaved() {
  return QStringLiteral(
      "Your unfinished prompt and its settings couldn’t be saved. Keep Sorvan open so you don’t lose your latest "
      "changes. Check that your workspace folder is available and your disk has free space, then open Workspace Health "
      "and choose Try Saving Again.");
}

// Saved information
inline QString savedPromptsTitle() { return QStringLiteral("Saved prompts"); }
inline QString imageReviewsTitle() { return QStringLiteral("Image reviews"); }
inline QString spendingTitle() { return QStringLiteral("Additional spending records"); }
inline QString unfinishedPromptTitle() { return QStringLiteral("Unfinished prompt"); }
inline QString draftWaits() {
  return QStringLiteral("Your unfinished prompt and its settings haven’t been saved yet.");
}
inline QString savedCopyUnreadable() {
  return QStringLiteral(
      "The saved copy couldn’t be opened. Keep Sorvan open and choose Try Saving Again to save the information that is "
      "still available.");
}
inline QString savedInformationUnreadable() {
  return QStringLiteral("This saved information couldn’t be opened. Open a workspace backup to recover it.");
}
inline QString savedCopyMissing() {
  return QStringLiteral(
      "The saved copy is missing from this workspace. Keep Sorvan open and choose Try Saving Again to save the "
      "information that is still available.");
}
inline QString savedInformationMissing() {
  return QStringLiteral("This information is missing from the workspace. Open a workspace backup to recover it.");
}

// Small edits
inline QString createProject() { return QStringLiteral("Create Project"); }
inline QString renameProject() { return QStringLiteral("Rename Project"); }
inline QString archiveProject() { return QStringLiteral("Archive Project"); }
inline QString unarchiveProject() { return QStringLiteral("Unarchive Project"); }
inline QString nameBlank() { return QStringLiteral("Enter a name first."); }
inline QString usedByActiveJob() {
  return QStringLiteral("One of these assets is a reference in an active generation. Wait for it to finish.");
}

// Undo and redo
inline QString unknownUndoRecord() { return QStringLiteral("Unknown undo record."); }
inline QString historyItemGone() { return QStringLiteral("The history item is no longer available."); }
inline QString historyFileMissing() {
  return QStringLiteral("A file needed for Undo or Redo is missing, or its destination is occupied.");
}
inline QString projectInUse() {
  return QStringLiteral("This project is in use by now. Move its items elsewhere before taking back its creation.");
}

}  // namespace sorvan::core::texts
