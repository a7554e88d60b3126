// Every text of the windows that no presenter gives: names of controls, headings, hints. Kept together so that the
// wording can change in one place.
#pragma once

#include <QRectF>
#include <QString>

#include "shell/views/room.h"

namespace sorvan::views::texts {

inline QString dismiss() { return QStringLiteral("Dismiss"); }
inline QString messages() { return QStringLiteral("Messages"); }
inline QString close() { return QStringLiteral("Close"); }
inline QString done() { return QStringLiteral("Done"); }
inline QString workspace(const QString& name) { return QStringLiteral("Workspace %1").arg(name); }
inline QString backTo(const QString& view) { return QStringLiteral("Back to %1").arg(view); }
inline QString back() { return QStringLiteral("Back"); }

// Zones of the window.
inline QString sidebarZone() { return QStringLiteral("Sidebar"); }
inline QString toolbarZone() { return QStringLiteral("Toolbar"); }
inline QString contentZone() { return QStringLiteral("Content"); }
inline QString inspectorZone() { return QStringLiteral("Inspector"); }
inline QString composerZone() { return QStringLiteral("Generation input"); }

// What is written about an item.
inline QString renameTitle() { return QStringLiteral("Rename"); }
inline QString newName() { return QStringLiteral("New name"); }
inline QString rename() { return QStringLiteral("Rename"); }
inline QString notesTitle() { return QStringLiteral("Notes"); }
inline QString notes() { return QStringLiteral("Notes"); }
inline QString cancel() { return QStringLiteral("Cancel"); }
inline QString noOtherProject() { return QStringLiteral("No other project yet"); }

// Open Recent.
inline QString openRecent() { return QStringLiteral("Open Recent"); }
inline QString noOtherWorkspaces() { return QStringLiteral("No other workspaces yet"); }
inline QString clearMenu() { return QStringLiteral("Clear Menu"); }

// Menu strip.
inline QString openHistory() { return QStringLiteral("Open History"); }

// Toolbar.
inline QString thumbnailSize() { return QStringLiteral("Thumbnail Size"); }
inline QString searchMedia() { return QStringLiteral("Search media"); }
inline QString filters() { return QStringLiteral("Filters"); }
inline QString filterZone() { return QStringLiteral("Filters"); }
inline QString mediaTypes() { return QStringLiteral("Kind of media"); }
inline QString clearFilters() { return QStringLiteral("Clear Filters"); }
inline QString filterIs(const QString& filter, const QString& value) {
  return QStringLiteral("%1: %2").arg(filter, value);
}
inline QString newest() { return QStringLiteral("Newest"); }
inline QString sortMenu() { return QStringLiteral("Order"); }
inline QString sortedBy(const QString& name) { return QStringLiteral("Order: %1").arg(name); }
inline QString renameEllipsis() { return QStringLiteral("Rename…"); }
inline QString archive() { return QStringLiteral("Archive"); }
inline QString unarchive() { return QStringLiteral("Unarchive"); }
inline QString projectName() { return QStringLiteral("Project name"); }
inline QString newProjectTitle() { return QStringLiteral("New Project"); }
inline QString create() { return QStringLiteral("Create"); }
inline QString renameProjectTitle() { return QStringLiteral("Rename Project"); }
inline QString viewsOfLocation() { return QStringLiteral("Views of this place"); }
inline QString inspectorToggle() { return QStringLiteral("Inspector"); }

// Gallery.
inline QString galleryName() { return QStringLiteral("Gallery"); }
inline QString placeOf(int place, int count) { return QStringLiteral("%1 of %2").arg(place).arg(count); }
inline QString failed() { return QStringLiteral("Failed"); }
inline QString showDetails() { return QStringLiteral("Show Details"); }
inline QString pictureUnreadable() { return QStringLiteral("No preview"); }
inline QString inTrash() { return QStringLiteral("In Trash"); }
inline QString originalMissing() { return QStringLiteral("Original missing"); }

// Asset detail.
inline QString previousItem() { return QStringLiteral("Previous"); }
inline QString nextItem() { return QStringLiteral("Next"); }
inline QString filmstrip() { return QStringLiteral("Filmstrip"); }
inline QString openPreview() { return QStringLiteral("Open Large View"); }

// Marks.
inline QString markAreas() { return QStringLiteral("Mark areas"); }
inline QString markHint() {
  return QStringLiteral("Drag on the picture to mark an area. Click a box to move it; Delete removes it.");
}
inline QString clearMarks() { return QStringLiteral("Clear marks"); }
inline QString leaveMarking() { return QStringLiteral("Leave without Using the Marks"); }
inline QString markedAreas() { return QStringLiteral("Marked areas"); }
inline QString boxNamed(int number, const QString& note) {
  return note.isEmpty() ? QStringLiteral("Box %1").arg(number) : QStringLiteral("Box %1, %2").arg(number).arg(note);
}
inline QString boxPosition(const QRectF& area) {
  const auto percent = [](double part) { return QString::number(qRound(part * 100)); };
  return QStringLiteral("%1 percent from the left, %2 from the top, %3 wide, %4 high")
      .arg(percent(area.x()), percent(area.y()), percent(area.width()), percent(area.height()));
}
inline QString boxNote(int number) { return QStringLiteral("Note of box %1").arg(number); }
inline QString boxPlaceholder() { return QStringLiteral("Say what should change here"); }
inline QString removeBox(int number) { return QStringLiteral("Remove box %1").arg(number); }
inline QString addBox() { return QStringLiteral("Add Box"); }
inline QString changeOnePart() { return QStringLiteral("Change one part only?"); }
inline QString changeOnlyMarked() { return QStringLiteral("Change only the marked areas"); }
inline QString outsideIsCopied() {
  return QStringLiteral("Everything outside the boxes is copied from your original, pixel for pixel.");
}
inline QString outsideMayChange() {
  return QStringLiteral("The model is asked to stay inside the boxes, but may alter other parts.");
}
inline QString pixelSize(int width, int height) { return QStringLiteral("%1 × %2").arg(width).arg(height); }

// Attached references.
inline QString references() { return QStringLiteral("References"); }
inline QString detachReference(const QString& name) { return QStringLiteral("Remove %1").arg(name); }
inline QString removeMarks() { return QStringLiteral("Remove Marks"); }
inline QString openMarks() { return QStringLiteral("Show or change the marks"); }

// Inspector.
inline QString rating() { return QStringLiteral("Rating"); }
inline QString stars(int count) {
  return count == 1 ? QStringLiteral("1 star") : QStringLiteral("%1 stars").arg(count);
}
inline QString favorite() { return QStringLiteral("Favorite"); }
inline QString nothingSelected() { return QStringLiteral("Nothing selected"); }
inline QString nothingSelectedHint() { return QStringLiteral("Select an item to see how it was made."); }

// Composer.
inline QString prompt() { return QStringLiteral("Prompt"); }
inline QString kind() { return QStringLiteral("Kind"); }
inline QString imagesAndVideo() { return QStringLiteral("Images and video"); }
inline QString audio() { return QStringLiteral("Audio"); }
inline QString model() { return QStringLiteral("Model"); }
inline QString ratio() { return QStringLiteral("Ratio"); }
inline QString count() { return QStringLiteral("Count"); }
inline QString length() { return QStringLiteral("Length"); }
inline QString estimate() { return QStringLiteral("Estimate"); }
inline QString seed() { return QStringLiteral("Seed"); }
inline QString rollSeed() { return QStringLiteral("Random Seed"); }
inline QString clearComposer() { return QStringLiteral("Clear the Composer"); }
inline QString collapse() { return QStringLiteral("Collapse"); }
inline QString saveTo() { return QStringLiteral("Save to"); }
inline QString searchModels() { return QStringLiteral("Search models"); }
inline QString noModelMatches() { return QStringLiteral("No model matches."); }
inline QString modelsChosen(int count) {
  if (count > 1) return QStringLiteral("%1 chosen · one contact sheet holds up to 8 outputs").arg(count);
  return QStringLiteral("%1 chosen").arg(count);
}
inline QString modelTabs() { return QStringLiteral("Models"); }
inline QString browse() { return QStringLiteral("Browse"); }
inline QString browseModels() { return QStringLiteral("Browse Models"); }
inline QString removeModel() { return QStringLiteral("Remove Model"); }
inline QString listPrice(const QString& date) { return QStringLiteral("List price %1").arg(date); }

// The browser of models.
inline QString searchCatalogue() { return QStringLiteral("Search the catalog"); }
inline QString catalogueList() { return QStringLiteral("Catalog"); }
inline QString category() { return QStringLiteral("Category"); }
inline QString addModel() { return QStringLiteral("Add"); }
inline QString addNamed(const QString& model) { return QStringLiteral("Add %1").arg(model); }
inline QString cancelAdding(const QString& model) { return QStringLiteral("Stop Adding %1").arg(model); }
inline QString removeNamed(const QString& model) { return QStringLiteral("Remove %1").arg(model); }
inline QString deleteKey() { return QStringLiteral("Del"); }
inline QString tryAgain() { return QStringLiteral("Try Again"); }
inline QString loadingMore() { return QStringLiteral("Loading more…"); }

// History.
inline QString historyTitle() { return QStringLiteral("History"); }
inline QString historyFilter() { return QStringLiteral("Show"); }
inline QString generationColumn() { return QStringLiteral("Generation"); }
inline QString modelColumn() { return QStringLiteral("Model, saved to"); }
inline QString startedColumn() { return QStringLiteral("Started"); }
inline QString costColumn() { return QStringLiteral("Cost"); }

inline QString alertMessage() { return QStringLiteral("Message"); }

// Settings.
inline QString settingsTitle() { return QStringLiteral("Settings"); }
inline QString appearanceTitle() { return QStringLiteral("Appearance"); }
inline QString appearanceSystem() { return QStringLiteral("System"); }
inline QString appearanceLight() { return QStringLiteral("Light"); }
inline QString appearanceDark() { return QStringLiteral("Dark"); }
inline QString save() { return QStringLiteral("Save"); }
inline QString removeKey() { return QStringLiteral("Remove Key"); }

}  // namespace sorvan::views::texts
