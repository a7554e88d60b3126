// Every text of the windows that no presenter gives: names of controls, headings, hints. Kept together so that the
// wording can change in one place.
#pragma once

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

// Open Recent.
inline QString openRecent() { return QStringLiteral("Open Recent"); }
inline QString noOtherWorkspaces() { return QStringLiteral("No other workspaces yet"); }
inline QString clearMenu() { return QStringLiteral("Clear Menu"); }

// Menu strip.
inline QString openHistory() { return QStringLiteral("Open History"); }
inline QString accountSettings() { return QStringLiteral("Settings"); }

// Toolbar.
inline QString thumbnailSize() { return QStringLiteral("Thumbnail Size"); }
inline QString inspectorToggle() { return QStringLiteral("Inspector"); }

// Gallery.
inline QString galleryName() { return QStringLiteral("Gallery"); }
inline QString placeOf(int place, int count) { return QStringLiteral("%1 of %2").arg(place).arg(count); }
inline QString failed() { return QStringLiteral("Failed"); }
inline QString showDetails() { return QStringLiteral("Show Details"); }
inline QString originalMissing() { return QStringLiteral("Original missing"); }

// Asset detail.
inline QString previousItem() { return QStringLiteral("Previous"); }
inline QString nextItem() { return QStringLiteral("Next"); }
inline QString filmstrip() { return QStringLiteral("Filmstrip"); }
inline QString openPreview() { return QStringLiteral("Open Large View"); }

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
inline QString seed() { return QStringLiteral("Seed"); }
inline QString rollSeed() { return QStringLiteral("Random Seed"); }
inline QString clearComposer() { return QStringLiteral("Clear the Composer"); }
inline QString collapse() { return QStringLiteral("Collapse"); }
inline QString saveTo() { return QStringLiteral("Save to"); }
inline QString searchModels() { return QStringLiteral("Search models"); }
inline QString noModelMatches() { return QStringLiteral("No model matches."); }
inline QString modelsChosen(int count) {
  return count == 1 ? QStringLiteral("1 chosen") : QStringLiteral("%1 chosen").arg(count);
}

// History.
inline QString historyTitle() { return QStringLiteral("History"); }
inline QString historyFilter() { return QStringLiteral("Show"); }
inline QString generationColumn() { return QStringLiteral("Generation"); }
inline QString modelColumn() { return QStringLiteral("Model, saved to"); }
inline QString startedColumn() { return QStringLiteral("Started"); }
inline QString costColumn() { return QStringLiteral("Cost"); }

// Settings.
inline QString settingsTitle() { return QStringLiteral("Settings"); }
inline QString appearanceTitle() { return QStringLiteral("Appearance"); }
inline QString appearanceSystem() { return QStringLiteral("System"); }
inline QString appearanceLight() { return QStringLiteral("Light"); }
inline QString appearanceDark() { return QStringLiteral("Dark"); }
inline QString save() { return QStringLiteral("Save"); }
inline QString removeKey() { return QStringLiteral("Remove Key"); }

}  // namespace sorvan::views::texts
