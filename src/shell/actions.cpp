#include "shell/actions.h"

#include "shell/composer_texts.h"
#include "shell/project_texts.h"
#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/updates_texts.h"
#include "shell/viewer_texts.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

ActionRow row(ActionId id, MenuId menu, int group, QString title, const char* keys, EnabledWhen when,
              KeyScope scope = KeyScope::window, bool checkable = false) {
  return {id, menu, group, std::move(title), QString::fromLatin1(keys), scope, when, checkable};
}

void addFileRows(std::vector<ActionRow>& rows) {
  const MenuId menu = MenuId::file;
  rows.push_back(row(ActionId::newProject, menu, 0, texts::newProject, "Ctrl+Shift+N", EnabledWhen::workspaceOpen));
  rows.push_back(row(ActionId::newAudio, menu, 0, texts::newAudio, "Ctrl+Shift+A", EnabledWhen::workspaceOpen));
  rows.push_back(
      row(ActionId::openAnotherWorkspace, menu, 1, texts::openAnotherWorkspace, "Ctrl+O", EnabledWhen::always));
  rows.push_back(row(ActionId::workspaceHealth, menu, 2, texts::workspaceHealthItem, "", EnabledWhen::workspaceOpen));
  rows.push_back(row(ActionId::openSettings, menu, 2, texts::settingsItem, "Ctrl+,", EnabledWhen::always));
  rows.push_back(row(ActionId::quit, menu, 3, texts::quit, "Ctrl+Q", EnabledWhen::always));
}

void addEditRows(std::vector<ActionRow>& rows) {
  const MenuId menu = MenuId::edit;
  rows.push_back(row(ActionId::undo, menu, 0, texts::undo, "Ctrl+Z", EnabledWhen::textFocusedOrUndo));
  rows.push_back(row(ActionId::redo, menu, 0, texts::redo, "Ctrl+Shift+Z", EnabledWhen::textFocusedOrRedo));
  rows.push_back(row(ActionId::aboutUndo, menu, 0, texts::aboutUndoItem, "", EnabledWhen::always));
  rows.push_back(row(ActionId::cut, menu, 1, texts::cut, "Ctrl+X", EnabledWhen::textFocused));
  rows.push_back(row(ActionId::copy, menu, 1, texts::copy, "Ctrl+C", EnabledWhen::textFocusedOrCellSelected));
  rows.push_back(row(ActionId::paste, menu, 1, texts::paste, "Ctrl+V", EnabledWhen::textFocused));
  rows.push_back(row(ActionId::selectAll, menu, 2, texts::selectAll, "Ctrl+A", EnabledWhen::textFocusedOrItemsShown));
  rows.push_back(row(ActionId::moveToTrash, menu, 3, texts::moveToTrash, "Del", EnabledWhen::liveItemSelected,
                     KeyScope::mediaView));
}

// The large view: looking closer, and playing.
void addViewerRows(std::vector<ActionRow>& rows) {
  const auto add = [&](ActionId id, int group, const QString& title, const char* keys, EnabledWhen when) {
    rows.push_back(row(id, MenuId::view, group, title, keys, when, KeyScope::mediaView));
  };
  add(ActionId::zoomIn, 5, texts::zoomIn, "+", EnabledWhen::pictureOpen);
  add(ActionId::zoomOut, 5, texts::zoomOut, "-", EnabledWhen::pictureOpen);
  add(ActionId::toggleFit, 5, texts::fitOrActualSize, "Z", EnabledWhen::pictureOpen);
  add(ActionId::playPause, 6, texts::playPause, "Space", EnabledWhen::playerOpen);
  add(ActionId::previousFrame, 6, texts::previousFrame, ",", EnabledWhen::clipOpen);
  add(ActionId::nextFrame, 6, texts::nextFrame, ".", EnabledWhen::clipOpen);
  add(ActionId::secondBack, 6, texts::secondBack, "Shift+Left", EnabledWhen::playerOpen);
  add(ActionId::secondForward, 6, texts::secondForward, "Shift+Right", EnabledWhen::playerOpen);
  add(ActionId::playerStart, 6, texts::playerStart, "Home", EnabledWhen::playerOpen);
  add(ActionId::playerEnd, 6, texts::playerEnd, "End", EnabledWhen::playerOpen);
  add(ActionId::toggleMute, 6, texts::mute, "M", EnabledWhen::playerOpen);
  add(ActionId::toggleLoop, 6, texts::loop, "", EnabledWhen::playerOpen);
}

void addViewRows(std::vector<ActionRow>& rows) {
  const MenuId menu = MenuId::view;
  const EnabledWhen open = EnabledWhen::workspaceOpen;
  rows.push_back(row(ActionId::showGallery, menu, 0, texts::gallery, "Ctrl+1", open));
  rows.push_back(
      row(ActionId::showContactSheets, menu, 0, texts::contactSheetsMode, "Ctrl+2", EnabledWhen::sheetsHere));
  rows.push_back(
      row(ActionId::showReferences, menu, 0, texts::referencesMode, "Ctrl+4", EnabledWhen::referencesHere));
  rows.push_back(row(ActionId::showHistory, menu, 0, texts::history, "Ctrl+H", open));
  rows.push_back(row(ActionId::showCosts, menu, 0, texts::costReportMode, "", open));
  rows.push_back(row(ActionId::goBack, menu, 0, texts::back, "Alt+Left", EnabledWhen::subView));
  rows.push_back(row(ActionId::searchMedia, menu, 1, texts::searchMedia, "Ctrl+F", open));
  rows.push_back(row(ActionId::focusComposer, menu, 1, texts::focusGenerationInput, "Ctrl+L", open));
  rows.push_back(row(ActionId::toggleFilters, menu, 2, texts::filters, "Ctrl+Shift+F", open, KeyScope::window, true));
  rows.push_back(row(ActionId::toggleSidebar, menu, 2, texts::sidebar, "F9", open, KeyScope::window, true));
  rows.push_back(row(ActionId::toggleInspector, menu, 2, texts::inspector, "F8", open, KeyScope::window, true));
  rows.push_back(row(ActionId::largerThumbnails, menu, 3, texts::larger, "Ctrl++", open));
  rows.push_back(row(ActionId::smallerThumbnails, menu, 3, texts::smaller, "Ctrl+-", open));
  rows.push_back(
      row(ActionId::fullScreen, menu, 4, texts::fullScreen, "F11", EnabledWhen::always, KeyScope::window, true));
  addViewerRows(rows);
}

void addRatingRows(std::vector<ActionRow>& rows) {
  const ActionId ids[] = {ActionId::rateNone,  ActionId::rateOne,  ActionId::rateTwo,
                          ActionId::rateThree, ActionId::rateFour, ActionId::rateFive};
  for (int stars = 0; stars <= 5; ++stars) {
    const char key[] = {static_cast<char>('0' + stars), '\0'};
    rows.push_back(row(ids[stars], MenuId::item, 0, texts::rating(stars), key, EnabledWhen::liveItemSelected,
                       KeyScope::mediaView));
  }
}

void addStatusRows(std::vector<ActionRow>& rows) {
  const auto add = [&](ActionId id, const QString& name, const char* key) {
    rows.push_back(
        row(id, MenuId::item, 0, texts::status(name), key, EnabledWhen::liveItemSelected, KeyScope::mediaView));
  };
  add(ActionId::statusDraft, texts::statusDraft, "Shift+1");
  add(ActionId::statusShortlist, texts::statusShortlist, "P");
  add(ActionId::statusApproved, texts::statusApproved, "Shift+3");
  add(ActionId::statusFinal, texts::statusFinal, "Shift+4");
  add(ActionId::statusRejected, texts::statusRejected, "D");
  rows.push_back(row(ActionId::stepOnAfterMark, MenuId::item, 0, texts::stepOnAfterMark, "",
                     EnabledWhen::liveItemSelected, KeyScope::window, true));
}

void addPlaceRows(std::vector<ActionRow>& rows) {
  const MenuId menu = MenuId::item;
  rows.push_back(row(ActionId::moveToProject, menu, 0, texts::moveToProject, "", EnabledWhen::liveItemSelected));
  rows.push_back(row(ActionId::restoreItems, menu, 0, texts::restore, "", EnabledWhen::trashedItemSelected));
  rows.push_back(row(ActionId::renameItem, menu, 1, texts::renameItem, "F2", EnabledWhen::oneLiveItemSelected,
                     KeyScope::mediaView));
  rows.push_back(row(ActionId::editNotes, menu, 1, texts::editNotes, "", EnabledWhen::oneLiveItemSelected));
}

void addItemRows(std::vector<ActionRow>& rows) {
  const MenuId menu = MenuId::item;
  const EnabledWhen shown = EnabledWhen::galleryItemSelected;
  // The wall takes Enter itself: as a shortcut it would be taken from the dialogs that open over the wall.
  rows.push_back(row(ActionId::openItem, menu, -1, texts::openItem, "", EnabledWhen::cellSelected, KeyScope::mediaView));
  rows.push_back(row(ActionId::quickLook, menu, -1, texts::quickLook, "Space", shown, KeyScope::mediaView));
  rows.push_back(
      row(ActionId::toggleFavorite, menu, 0, texts::favorite, "F", EnabledWhen::liveItemSelected, KeyScope::mediaView));
  addRatingRows(rows);
  addStatusRows(rows);
  addPlaceRows(rows);
  rows.push_back(
      row(ActionId::reusePrompt, menu, 5, texts::reusePrompt, "R", EnabledWhen::promptKnown, KeyScope::mediaView));
  rows.push_back(row(ActionId::useSeed, menu, 5, texts::useSeed, "", EnabledWhen::seedKnown));
  rows.push_back(row(ActionId::copyPrompt, menu, 5, texts::copyPrompt, "", EnabledWhen::promptKnown));
  rows.push_back(row(ActionId::useAsReference, menu, 5, texts::useAsReference, "Shift+R", EnabledWhen::picturesSelected,
                     KeyScope::mediaView));
  rows.push_back(row(ActionId::saveAsReference, menu, 5, texts::saveAsReference, "", EnabledWhen::picturesSelected));
  rows.push_back(
      row(ActionId::markAreas, menu, 5, texts::markAreas, "M", EnabledWhen::pictureSelected, KeyScope::mediaView));
  rows.push_back(row(ActionId::compareItems, menu, 5, texts::compare, "C", EnabledWhen::itemsComparable,
                     KeyScope::mediaView));
  rows.push_back(row(ActionId::newContactSheet, menu, 5, texts::newContactSheet, "", EnabledWhen::itemsComparable));
  rows.push_back(row(ActionId::showLineage, menu, 5, texts::showLineage, "L", EnabledWhen::oneItemSelected,
                     KeyScope::mediaView));
  rows.push_back(row(ActionId::showInFiles, menu, 5, texts::showInFiles, "", EnabledWhen::itemSelected));
  rows.push_back(row(ActionId::retryJob, menu, 6, texts::retry, "", EnabledWhen::jobCanRetry));
  rows.push_back(row(ActionId::saveResult, menu, 6, texts::saveResult, "", EnabledWhen::jobHasResult));
  rows.push_back(row(ActionId::copyJobDetails, menu, 6, texts::copyDetails, "", EnabledWhen::jobSelected));
}

void addGenerateRows(std::vector<ActionRow>& rows) {
  const MenuId menu = MenuId::generate;
  const EnabledWhen open = EnabledWhen::workspaceOpen;
  rows.push_back(row(ActionId::generate, menu, 0, texts::generate, "Ctrl+Return", open));
  rows.push_back(row(ActionId::chooseModels, menu, 1, texts::chooseModels, "Ctrl+M", open));
  rows.push_back(row(ActionId::commandMode, menu, 1, texts::commandMode, "Ctrl+K", open));
  rows.push_back(row(ActionId::promptHistory, menu, 1, texts::promptHistory, "Ctrl+Shift+H", open));
  rows.push_back(row(ActionId::clearComposer, menu, 2, texts::clearTheComposer, "", open));
}

void addHelpRows(std::vector<ActionRow>& rows) {
  rows.push_back(
      row(ActionId::keyboardShortcuts, MenuId::help, 0, texts::keyboardShortcuts, "F1", EnabledWhen::always));
  rows.push_back(
      row(ActionId::checkForUpdates, MenuId::help, 0, texts::updatesCheckMenu, "", EnabledWhen::always));
  rows.push_back(row(ActionId::about, MenuId::help, 1, texts::about, "", EnabledWhen::always));
}

std::vector<ActionRow> makeTable() {
  std::vector<ActionRow> rows;
  addFileRows(rows);
  addEditRows(rows);
  addViewRows(rows);
  addItemRows(rows);
  addGenerateRows(rows);
  addHelpRows(rows);
  return rows;
}

}  // namespace

const std::vector<ActionRow>& actionTable() {
  static const std::vector<ActionRow> table = makeTable();
  return table;
}

const ActionRow& actionRow(ActionId id) {
  const auto& table = actionTable();
  const auto found = std::find_if(table.begin(), table.end(), [id](const ActionRow& row) { return row.id == id; });
  Q_ASSERT_X(found != table.end(), "actionRow", "every action stands in the table");
  return *found;
}

QString menuTitle(MenuId menu) {
  switch (menu) {
    case MenuId::file:
      return texts::fileMenu;
    case MenuId::edit:
      return texts::editMenu;
    case MenuId::view:
      return texts::viewMenu;
    case MenuId::item:
      return texts::itemMenu;
    case MenuId::generate:
      return texts::generateMenu;
    case MenuId::help:
      return texts::helpMenu;
  }
  return {};
}

}  // namespace sorvan::shell
