// Every text of contact sheets, of comparing and of lineage.
#pragma once

#include "shell/viewer_texts.h"

#include <QString>

namespace sorvan::shell::texts {

// The list of sheets
inline const QString noSheetsYet = QStringLiteral("No contact sheets here yet");
inline const QString noSheetsInTrash = QStringLiteral("No contact sheets in Trash");
inline const QString noSheetMatches = QStringLiteral("No contact sheet matches");
inline const QString noSheetsYetText =
    QStringLiteral("Select 2–8 items and choose New Contact Sheet, or generate with several models at once.");
inline const QString noSheetsInTrashText = QStringLiteral("Contact sheets that you move to Trash wait here.");
inline const QString noSheetMatchesText = QStringLiteral("Nothing here has this in its title, project or models.");
inline QString sheetItems(qsizetype count) {
  return count == 1 ? QStringLiteral("1 item") : QStringLiteral("%1 items").arg(count);
}
inline QString sheetCount(const QString& shown, qsizetype count) {
  return count == 1 ? QStringLiteral("1 contact sheet") : QStringLiteral("%1 contact sheets").arg(shown);
}
inline const QString comparisonRunning = QStringLiteral("Generating…");
inline const QString sheetInTrash = QStringLiteral("in Trash");
inline const QString openSheet = QStringLiteral("Open");
inline const QString renameSheet = QStringLiteral("Rename…");
inline const QString sheetToTrash = QStringLiteral("Move to Trash");
inline const QString sheetFromTrash = QStringLiteral("Restore");
inline const QString renameContactSheet = QStringLiteral("Rename Contact Sheet");
inline const QString sheetTitleField = QStringLiteral("Title");
inline const QString searchSheets = QStringLiteral("Search contact sheets");
inline const QString contactSheetList = QStringLiteral("Contact sheets");

// One sheet
inline QString places(qsizetype count) {
  return count == 1 ? QStringLiteral("1 place") : QStringLiteral("%1 places").arg(count);
}
inline QString doneOf(qsizetype done, qsizetype count) {
  return QStringLiteral("%1 of %2 done").arg(done).arg(count);
}
inline QString comparedModels(qsizetype count) {
  return count == 1 ? QStringLiteral("1 model") : QStringLiteral("%1 models").arg(count);
}
inline QString outputsPerModel(int count) {
  return count == 1 ? QStringLiteral("1 output per model") : QStringLiteral("%1 outputs per model").arg(count);
}
inline QString seedIs(std::int64_t seed) { return QStringLiteral("seed %1").arg(seed); }
inline QString tookSeconds(qint64 seconds) { return QStringLiteral("%1 s").arg(seconds); }
inline QString tookMinutes(qint64 minutes, qint64 seconds) {
  return QStringLiteral("%1 min %2 s").arg(minutes).arg(seconds);
}
inline const QString noCostRecorded = QStringLiteral("No cost information was recorded.");
inline const QString emptySheet = QStringLiteral("Add media to compare prompts, models, and results side by side.");
inline const QString emptySheetTitle = QStringLiteral("This contact sheet is empty");
inline const QString addMedia = QStringLiteral("Add Media");
inline const QString addMediaHint = QStringLiteral("Choose items in the gallery and add them to this sheet");
inline const QString addAfterComparison = QStringLiteral("Add media after the comparison finishes");
inline QString addedToSheet(qsizetype count) {
  return count == 1 ? QStringLiteral("1 item added to the contact sheet")
                    : QStringLiteral("%1 items added to the contact sheet").arg(count);
}
inline const QString trashedSheetStays = QStringLiteral("This contact sheet is in Trash. Restore it to add media.");
inline QString alreadyOnSheet(qsizetype count) {
  return count == 1 ? QStringLiteral("This item is on the contact sheet already")
                    : QStringLiteral("These items are on the contact sheet already");
}
inline const QString playAll = QStringLiteral("Play All");
inline const QString pauseAll = QStringLiteral("Pause");
inline const QString playAllHint = QStringLiteral("Play every video here at once, muted and looping");
inline const QString pauseAllHint = QStringLiteral("Pause every video");
inline const QString removeFromSheet = QStringLiteral("Remove from contact sheet; keep in library");
inline const QString moveEarlier = QStringLiteral("Move Earlier");
inline const QString moveLater = QStringLiteral("Move Later");
inline const QString reviewed = QStringLiteral("Reviewed");
inline const QString reviewMark = QStringLiteral("Review mark");
inline const QString moreActions = QStringLiteral("More");
inline const QString sheetPlaces = QStringLiteral("Places");
inline const QString saveAsSheet = QStringLiteral("Save as Contact Sheet");
inline const QString addToSheet = QStringLiteral("Add to Sheet");
inline const QString addToSheetTitle = QStringLiteral("Add Media");
inline const QString addToSheetNote = QStringLiteral("Choose the items to add. They stay in the library.");
inline const QString adding = QStringLiteral("Items to add");

// Comparing
inline const QString compare = QStringLiteral("Compare");
inline QString compareCount(qsizetype count) { return QStringLiteral("Compare %1").arg(count); }
inline const QString compareLayouts = QStringLiteral("How to compare");
inline const QString sideBySide = QStringLiteral("Side by Side");
inline const QString oneAtATime = QStringLiteral("One at a Time");
inline const QString divider = QStringLiteral("Divider");
inline const QString difference = QStringLiteral("Difference");
inline const QString fitPictures = QStringLiteral("Fit");
inline const QString fullSize = QStringLiteral("100 %");
inline const QString closeCompare = QStringLiteral("Close");
inline const QString amplify = QStringLiteral("Amplify");
inline const QString amplifyHint = QStringLiteral("Make small differences eight times as bright");
inline const QString computingDifference = QStringLiteral("Working out the difference…");
inline const QString samePictures = QStringLiteral("These pictures are the same");
inline QString differsBy(const QString& percent) { return QStringLiteral("%1 % of the pixels differ").arg(percent); }
inline QString comparedPair(int first, int second) {
  return QStringLiteral("Pictures %1 and %2").arg(first).arg(second);
}
inline const QString unreadablePicture = QStringLiteral("Original missing");
inline QString compareHint(qsizetype count) {
  return QStringLiteral("Keys 1–%1 choose a picture, Z fits or shows 100 %, drag or Shift and the arrows move all")
      .arg(count);
}

// Lineage
inline const QString showLineage = QStringLiteral("Show Lineage");
inline const QString lineageTitle = QStringLiteral("Generation History");
inline const QString lineageHelp = QStringLiteral("Click an image to inspect it. Double-click to open it.");
inline const QString lineageOpenedFrom = QStringLiteral("OPENED FROM");
inline const QString lineageOpenedFromHelp = QStringLiteral("The image this lineage was opened from");
inline const QString lineageInspected = QStringLiteral("Inspected");
inline const QString lineageInTrash = QStringLiteral("IN TRASH");
inline const QString lineageDeletedText = QStringLiteral(
    "This item was deleted for good. Its place is kept so the items made from it stay connected.");
inline const QString lineageExplanation =
    QStringLiteral("Assets with multiple parents appear once. All direct relationships are listed in the inspector.");
inline const QString lineageKeys = QStringLiteral("Return · Escape");
inline const QString lineageGoesBack = QStringLiteral("Return · Escape goes back");
inline QString lineageCount(qsizetype count) {
  return count == 1 ? QStringLiteral("1 item") : QStringLiteral("%1 items").arg(count);
}
inline QString lineageLevel(int level) { return QStringLiteral("level %1").arg(level); }
inline const QString lineageOpenedFromName = QStringLiteral("opened from");

}  // namespace sorvan::shell::texts
