#pragma once

#include "shell/room.h"

#include "core/library_store.h"
#include "shell/contact_sheet_source.h"

#include <QString>
#include <QUuid>

#include <functional>
#include <optional>
#include <vector>

namespace sorvan::shell {

// Makes and saves a sheet of two to eight items, in this order, as one step of Undo. Its title is the prompt that all
// of them share, else “Comparison of {n} assets”. Throws SorvanError.
core::ContactSheetRef createContactSheet(core::LibraryStore& store, const std::vector<core::AssetRef>& assets,
                                         const std::optional<QUuid>& project);

// The ids that a sheet shows, in its order: what it lists, without what is in Trash or lost.
std::vector<QUuid> sheetAssetIDs(const core::LibraryStore& store, const core::ContactSheet& sheet);

// Makes the sheet show these items in this order. What it showed and does not any more is taken out of it; what is in
// Trash keeps its place in the list; the outputs of a comparison stay in the order of its requests. One step of Undo,
// whose failure becomes the store's `error`.
void setContactSheetAssets(core::LibraryStore& store, const core::ContactSheetRef& sheet,
                           const std::vector<QUuid>& ids);

// The sheets of a sidebar location, last changed first: in Trash, in the Inbox, in a project, or all that are not in
// Trash. `query` narrows them by title, project and model; `modelName` gives a model's name as people read it.
std::vector<core::ContactSheetRef> sheetsAt(const core::LibraryStore& store, const QString& location,
                                            const QString& query = {},
                                            const std::function<QString(const QString&)>& modelName = {});

// Gives the sheet another title, trimmed; a blank one is ignored. One step of Undo, as the one above.
void renameContactSheet(core::LibraryStore& store, const core::ContactSheetRef& sheet, const QString& title);

// Into Trash and out of it; the media stay as they are. One step of Undo each; a failure becomes the store's `error`.
void deleteContactSheet(core::LibraryStore& store, const core::ContactSheetRef& sheet);
void restoreContactSheet(core::LibraryStore& store, const core::ContactSheetRef& sheet);

// Gives each comparison that has jobs and no sheet a sheet of its own. A step of opening: changes and does not save.
void backfillContactSheets(core::LibraryStore& store);

// The record of a source: the stored sheet, or the comparison's; null for a selection and for one that is gone.
core::ContactSheetRef sheetFor(const core::LibraryStore& store, const ContactSheetSource& source);

// One place on a sheet: an item, an output that is still to come, or a job that ended without one.
struct ComparisonSlot {
  QString id;  // stays the same while results arrive
  core::JobRef job;
  int outputIndex = 0;
  core::AssetRef asset;
};

// The places of a sheet, live: results take theirs as they arrive.
struct ContactSheetPlaces {
  std::vector<core::JobRef> jobs;  // of the comparison, in the order of its requests
  std::vector<ComparisonSlot> slots;
  bool running = false;  // a job of the comparison waits or runs: nothing can be added meanwhile
};
ContactSheetPlaces placesOf(const core::LibraryStore& store, const ContactSheetSource& source);
// The items of the places that have one.
std::vector<core::AssetRef> assetsOf(const ContactSheetPlaces& places);

}  // namespace sorvan::shell
