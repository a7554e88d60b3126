#pragma once

#include "shell/room.h"

#include <QString>

#include <vector>

namespace sorvan::shell {

// Everything that a person can ask of the window. The table lists what menus and keys offer, and only what works.
enum class ActionId {
  newProject,
  openAnotherWorkspace,
  newAudio,
  workspaceHealth,
  openSettings,
  quit,
  undo,
  redo,
  aboutUndo,
  cut,
  copy,
  paste,
  selectAll,
  moveToTrash,
  showGallery,
  showContactSheets,
  showReferences,
  showHistory,
  showCosts,
  focusComposer,
  toggleSidebar,
  toggleInspector,
  searchMedia,
  toggleFilters,
  largerThumbnails,
  smallerThumbnails,
  fullScreen,
  zoomIn,
  zoomOut,
  toggleFit,
  playPause,
  previousFrame,
  nextFrame,
  secondBack,
  secondForward,
  playerStart,
  playerEnd,
  toggleMute,
  toggleLoop,
  openItem,
  quickLook,
  goBack,
  toggleFavorite,
  rateNone,
  rateOne,
  rateTwo,
  rateThree,
  rateFour,
  rateFive,
  statusDraft,
  statusShortlist,
  statusApproved,
  statusFinal,
  statusRejected,
  stepOnAfterMark,
  renameItem,
  editNotes,
  moveToProject,
  restoreItems,
  retryJob,
  saveResult,
  saveRawResult,  // in the inspector only
  submitAgain,    // in the inspector, cell and row only
  cancelJob,      // a button, never a key or a menu row
  copyJobDetails,
  reusePrompt,  // the whole recipe: prompt, model, settings and references, without the seed
  useSeed,
  copyPrompt,
  useAsReference,
  saveAsReference,
  markAreas,
  showInFiles,
  compareItems,
  newContactSheet,
  showLineage,
  generate,
  chooseModels,
  commandMode,
  promptHistory,
  clearComposer,
  keyboardShortcuts,
  checkForUpdates,
  about,
};

enum class MenuId { file, edit, view, item, generate, help };

// What must hold for the action to be offered; `ActionsPresenter` answers it.
enum class EnabledWhen {
  always,
  workspaceOpen,
  textFocused,  // a text field has the keyboard focus
  textFocusedOrItemsShown,
  textFocusedOrUndo,  // or there is a step that can be taken back now
  textFocusedOrRedo,
  textFocusedOrCellSelected,
  itemsShown,           // the gallery is in front and holds at least one cell
  itemSelected,         // at least one item (no job) is selected
  liveItemSelected,     // at least one item outside Trash is selected
  trashedItemSelected,  // at least one item in Trash is selected
  oneLiveItemSelected,
  picturesSelected,  // at least one selected item is a picture that is not in Trash
  pictureSelected,  // exactly one item is selected, a picture that is not in Trash
  jobSelected,      // at least one job is selected
  jobCanRetry,
  jobHasResult,
  jobCanSubmitAgain,
  jobActive,
  promptKnown,  // the selected item or job has a prompt
  seedKnown,    // the selected item or job has a seed
  sheetsHere,      // the location has contact sheets
  referencesHere,  // the location has references of its own
  galleryItemSelected,  // at least one item is selected in the gallery, on a sheet or in the lineage tree
  cellSelected,         // at least one item or job is selected in a view whose cells open something
  pictureOpen,          // a picture fills the large view
  playerOpen,           // a clip or a sound fills the large view
  clipOpen,             // a clip fills the large view
  itemsComparable,  // two to eight items outside Trash are selected
  oneItemSelected,  // exactly one item is selected, in Trash or not
  subView,      // a view that was opened from another one is in front
};

// Where a key works. A single letter would otherwise be stolen from the fields in which people write.
enum class KeyScope { window, mediaView };

struct ActionRow {
  ActionId id;
  MenuId menu;
  int group;         // rows of one menu whose group differs are parted by a separator
  QString title;     // as the menu shows it, with its ellipsis; no mnemonic
  QString shortcut;  // QKeySequence portable text; empty when there is none
  KeyScope scope;
  EnabledWhen enabledWhen;
  bool checkable;  // the menu shows a tick while `ActionsPresenter::isChecked`
};

// The one table from which menus, shortcuts and the list of keys come, in menu order.
const std::vector<ActionRow>& actionTable();
const ActionRow& actionRow(ActionId id);
// The menu's title in the menu bar, without a mnemonic.
QString menuTitle(MenuId menu);

}  // namespace sorvan::shell
