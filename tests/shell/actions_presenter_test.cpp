#include "shell/actions_presenter.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <array>

#include "desk.h"
#include "exchange/trash.h"
#include "shell/settings_presenter.h"
#include "shell/sidebar_presenter.h"
#include "shell/welcome_presenter.h"
#include "shell/window_presenter.h"

namespace sorvan::shell {
namespace {

struct ActionsTest : testing::Test {
  test::Desk desk;
  WindowPresenter window{desk.store, desk.state, desk.alerts, QStringLiteral("Sorvan Studio")};
  WelcomePresenter welcome{desk.store, desk.folder / QStringLiteral("Default")};
  SidebarPresenter sidebar{desk.store, desk.state};
  int quits = 0;
  QString shownFile;
  ActionsPresenter actions{{desk.store, presenters(), [this] { ++quits; },
                            [this](const QString& file) { shownFile = file; }, QStringLiteral("9.9")}};
  QSignalSpy forView{&actions, &ActionsPresenter::viewActionRequested};

  Presenters presenters() {
    Presenters all = desk.presenters();
    all.window = &window;
    all.welcome = &welcome;
    all.sidebar = &sidebar;
    return all;
  }
  QUuid makeItem() {
    desk.generate(QStringLiteral("a red boat"));
    desk.settle();
    return desk.store.assets().front()->id;
  }
  QUuid failJob() {
    desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
    desk.generate(QStringLiteral("a red boat"));
    desk.settle();
    desk.provider->failure = nullptr;
    return desk.newestJob()->id;
  }
};

TEST_F(ActionsTest, WithoutAWorkspaceOnlyTheWayToOneIsOffered) {
  desk.store.close();
  for (const ActionId id : {ActionId::generate, ActionId::showHistory, ActionId::focusComposer, ActionId::selectAll})
    EXPECT_FALSE(actions.isEnabled(id));
  for (const ActionId id : {ActionId::openAnotherWorkspace, ActionId::openSettings, ActionId::quit, ActionId::about})
    EXPECT_TRUE(actions.isEnabled(id));
}

TEST_F(ActionsTest, WhatNeedsAnItemIsOfferedWithAnItem) {
  const QUuid item = makeItem();
  EXPECT_FALSE(actions.isEnabled(ActionId::toggleFavorite));
  QSignalSpy changed(&actions, &ActionsPresenter::changed);
  desk.state.select({item});
  EXPECT_GE(changed.count(), 1);
  for (const ActionId id :
       {ActionId::toggleFavorite, ActionId::rateThree, ActionId::showInFiles, ActionId::reusePrompt})
    EXPECT_TRUE(actions.isEnabled(id));
  EXPECT_FALSE(actions.isEnabled(ActionId::retryJob));
}

TEST_F(ActionsTest, ItemActionsReachTheItem) {
  const QUuid item = makeItem();
  desk.state.select({item});
  actions.trigger(ActionId::toggleFavorite);
  actions.trigger(ActionId::rateFour);
  EXPECT_TRUE(desk.store.asset(item)->favorite);
  EXPECT_EQ(desk.store.asset(item)->rating, 4);
  actions.trigger(ActionId::rateNone);
  EXPECT_FALSE(desk.store.asset(item)->rating);
  actions.trigger(ActionId::showInFiles);
  EXPECT_EQ(shownFile, desk.store.fileOf(*desk.store.asset(item)));
  actions.trigger(ActionId::reusePrompt);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red boat"));
}

TEST_F(ActionsTest, JobActionsReachTheJob) {
  const QUuid job = failJob();
  desk.state.select({job});
  EXPECT_TRUE(actions.isEnabled(ActionId::retryJob));
  EXPECT_FALSE(actions.isEnabled(ActionId::saveResult));
  EXPECT_FALSE(actions.isEnabled(ActionId::submitAgain));
  EXPECT_FALSE(actions.isEnabled(ActionId::cancelJob));
  EXPECT_FALSE(actions.isEnabled(ActionId::toggleFavorite));
  actions.trigger(ActionId::copy);
  EXPECT_TRUE(desk.copied.contains(QStringLiteral("State: failed")));
  actions.trigger(ActionId::retryJob);
  desk.settle();
  EXPECT_EQ(desk.jobs.job(job).state, JobState::complete);
}

TEST_F(ActionsTest, AnActionThatIsNotOfferedDoesNothing) {
  const QUuid item = makeItem();
  actions.trigger(ActionId::toggleFavorite);
  EXPECT_FALSE(desk.store.asset(item)->favorite);
  actions.trigger(ActionId::paste);
  EXPECT_EQ(forView.count(), 0);
}

TEST_F(ActionsTest, EditCommandsGoToTheFieldThatHasTheFocus) {
  const QUuid item = makeItem();
  actions.setTextFocused(true);
  for (const ActionId id : {ActionId::cut, ActionId::copy, ActionId::paste, ActionId::selectAll}) actions.trigger(id);
  EXPECT_EQ(forView.count(), 4);
  EXPECT_TRUE(desk.state.selection().isEmpty());
  actions.setTextFocused(false);
  actions.trigger(ActionId::selectAll);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{item});
  EXPECT_EQ(forView.count(), 4);
}

TEST_F(ActionsTest, SelectAllTakesItemsAndLeavesJobs) {
  failJob();
  const QUuid item = makeItem();
  ASSERT_EQ(desk.gallery.jobCount(), 1);
  actions.trigger(ActionId::selectAll);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{item});
}

TEST_F(ActionsTest, WindowActionsMoveTheWindow) {
  actions.trigger(ActionId::showHistory);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::activity);
  EXPECT_TRUE(actions.isEnabled(ActionId::goBack));
  actions.trigger(ActionId::goBack);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
  EXPECT_FALSE(actions.isEnabled(ActionId::goBack));
  EXPECT_TRUE(actions.isChecked(ActionId::toggleSidebar));
  actions.trigger(ActionId::toggleSidebar);
  EXPECT_FALSE(actions.isChecked(ActionId::toggleSidebar));
  const int before = desk.state.rowHeight();
  actions.trigger(ActionId::largerThumbnails);
  EXPECT_GT(desk.state.rowHeight(), before);
  actions.trigger(ActionId::quit);
  EXPECT_EQ(quits, 1);
}

TEST_F(ActionsTest, WhatOnlyAWindowCanDoGoesToTheWindow) {
  for (const ActionId id : {ActionId::fullScreen, ActionId::chooseModels, ActionId::openSettings}) actions.trigger(id);
  EXPECT_EQ(forView.count(), 3);
}

TEST_F(ActionsTest, UndoCarriesTheNameOfTheEditAndTakesItBack) {
  const QUuid item = makeItem();
  EXPECT_EQ(actions.title(ActionId::undo), QStringLiteral("Undo"));
  EXPECT_FALSE(actions.isEnabled(ActionId::undo));
  desk.state.select({item});
  QSignalSpy changed(&actions, &ActionsPresenter::changed);
  actions.trigger(ActionId::rateFour);
  EXPECT_GE(changed.count(), 1);
  EXPECT_EQ(actions.title(ActionId::undo), QStringLiteral("Undo Change Rating"));
  EXPECT_EQ(actions.title(ActionId::redo), QStringLiteral("Redo"));
  actions.trigger(ActionId::undo);
  EXPECT_FALSE(desk.store.asset(item)->rating);
  EXPECT_FALSE(actions.isEnabled(ActionId::undo));
  EXPECT_EQ(actions.title(ActionId::redo), QStringLiteral("Redo Change Rating"));
  actions.trigger(ActionId::redo);
  EXPECT_EQ(desk.store.asset(item)->rating, 4);
}

TEST_F(ActionsTest, UndoGoesToTheFieldThatHasTheFocus) {
  const QUuid item = makeItem();
  desk.state.select({item});
  actions.trigger(ActionId::rateFour);
  actions.setTextFocused(true);
  EXPECT_EQ(actions.title(ActionId::undo), QStringLiteral("Undo"));
  actions.trigger(ActionId::undo);
  actions.trigger(ActionId::redo);
  EXPECT_EQ(forView.count(), 2);
  EXPECT_EQ(desk.store.asset(item)->rating, 4);
}

TEST_F(ActionsTest, UndoIsOffWhileAJobRuns) {
  const QUuid item = makeItem();
  desk.state.select({item});
  actions.trigger(ActionId::rateFour);
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("another"));
  EXPECT_FALSE(actions.isEnabled(ActionId::undo));
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_TRUE(actions.isEnabled(ActionId::undo));
}

TEST_F(ActionsTest, TellsWhatUndoCovers) {
  actions.trigger(ActionId::aboutUndo);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_TRUE(desk.alerts.current()->text.contains(QStringLiteral("up to 100 actions and 16 MB")));
}

TEST_F(ActionsTest, KeysOfMarksReachTheItem) {
  const QUuid item = makeItem();
  desk.state.select({item});
  actions.trigger(ActionId::statusShortlist);
  EXPECT_EQ(desk.store.asset(item)->status(), core::AssetStatus::shortlist);
  actions.trigger(ActionId::statusRejected);
  EXPECT_EQ(desk.store.asset(item)->status(), core::AssetStatus::rejected);
  EXPECT_FALSE(actions.isChecked(ActionId::stepOnAfterMark));
  actions.trigger(ActionId::stepOnAfterMark);
  EXPECT_TRUE(actions.isChecked(ActionId::stepOnAfterMark));
  for (const ActionId id : {ActionId::renameItem, ActionId::editNotes, ActionId::moveToProject}) actions.trigger(id);
  EXPECT_EQ(forView.count(), 3);
}

TEST_F(ActionsTest, InTrashAnItemIsRestoredAndNotMarked) {
  const QUuid item = makeItem();
  desk.state.select({item});
  EXPECT_FALSE(actions.isEnabled(ActionId::restoreItems));
  actions.trigger(ActionId::moveToTrash);
  desk.state.setLocation(trashLocation);
  desk.state.select({item});
  for (const ActionId id : {ActionId::moveToTrash, ActionId::rateFour, ActionId::toggleFavorite,
                            ActionId::statusShortlist, ActionId::renameItem, ActionId::moveToProject})
    EXPECT_FALSE(actions.isEnabled(id));
  EXPECT_TRUE(actions.isEnabled(ActionId::showInFiles));
  actions.trigger(ActionId::restoreItems);
  EXPECT_FALSE(desk.store.asset(item)->isTrashed());
}

TEST_F(ActionsTest, AnItemThatGoesToTrashWhileItIsSelectedCanBeRestored) {
  const QUuid item = makeItem();
  desk.state.select({item});
  ASSERT_FALSE(actions.isEnabled(ActionId::restoreItems));
  ASSERT_TRUE(exchange::trash(desk.store, {desk.store.asset(item)}));
  EXPECT_TRUE(actions.isEnabled(ActionId::restoreItems));
  EXPECT_FALSE(actions.isEnabled(ActionId::moveToTrash));
}

TEST_F(ActionsTest, AJobIsNeitherAnItemNorAPicture) {
  desk.state.select({failJob()});
  EXPECT_TRUE(actions.isEnabled(ActionId::copyJobDetails));
  EXPECT_FALSE(actions.isEnabled(ActionId::useAsReference));
  EXPECT_FALSE(actions.isEnabled(ActionId::moveToTrash));
}

TEST_F(ActionsTest, GenerateReachesTheComposer) {
  desk.composer.editDraft(QStringLiteral("a red boat"));
  actions.trigger(ActionId::generate);
  desk.settle();
  EXPECT_EQ(desk.store.jobs().size(), 1u);
  desk.composer.editDraft(QStringLiteral("another"));
  actions.trigger(ActionId::clearComposer);
  EXPECT_EQ(desk.composer.draft(), QString());
}

TEST_F(ActionsTest, ListsEveryKeyForThePersonWhoAsks) {
  QStringList listed;
  for (const ShortcutGroup& group : actions.shortcuts())
    for (const ShortcutRow& row : group.rows) listed << group.title + u'|' + row.title + u'|' + row.keys;
  for (const ActionRow& row : actionTable()) {
    if (row.shortcut.isEmpty()) continue;
    const QString end = u'|' + row.title + u'|' + shownKeys(row);
    EXPECT_TRUE(std::ranges::any_of(listed, [&](const QString& line) { return line.endsWith(end); }))
        << row.title.toStdString();
  }
  EXPECT_TRUE(listed.contains(QStringLiteral("View|History|Ctrl+H")));
  EXPECT_TRUE(listed.contains(QStringLiteral("Viewer and Player|Play or Pause|Space")));
  EXPECT_TRUE(listed.contains(QStringLiteral("Item|Open|Return")));
  EXPECT_TRUE(listed.contains(QStringLiteral("Getting Around|Next Area of the Window|F6")));
  EXPECT_EQ(listed.removeDuplicates(), 0);
}

TEST_F(ActionsTest, AboutTellsTheVersion) {
  actions.trigger(ActionId::about);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_TRUE(desk.alerts.current()->text.contains(QStringLiteral("9.9")));
}

TEST_F(ActionsTest, OnlyOnePictureCanBeMarkedAndOnlyPicturesAreUsedAsReferences) {
  const QUuid item = makeItem();
  const QUuid job = failJob();
  const std::array both{ActionId::markAreas, ActionId::useAsReference};
  for (const ActionId id : both) {
    desk.state.select({item});
    EXPECT_TRUE(actions.isEnabled(id));
    desk.state.select({job});
    EXPECT_FALSE(actions.isEnabled(id));
    desk.state.select({item, job});
    EXPECT_EQ(actions.isEnabled(id), id == ActionId::useAsReference);
    desk.state.select({});
    EXPECT_FALSE(actions.isEnabled(id));
  }
}

TEST_F(ActionsTest, UseAsReferenceTakesSeveralPicturesInTheOrderOfTheGallery) {
  const QUuid first = makeItem();
  const QUuid second = makeItem();
  desk.state.select({first, second});
  actions.trigger(ActionId::useAsReference);
  std::vector<QUuid> inOrder;
  for (const core::AssetRef& asset : desk.store.assets()) inOrder.push_back(asset->id);
  EXPECT_EQ(inOrder.size(), 2u);
  EXPECT_EQ(desk.composing.request().referenceIDs, inOrder);
}

TEST_F(ActionsTest, UseAsReferenceAttachesTheSelectedPicture) {
  const QUuid item = makeItem();
  desk.state.select({item});
  actions.trigger(ActionId::useAsReference);
  EXPECT_EQ(desk.composing.request().referenceIDs, std::vector<QUuid>{item});
}

TEST_F(ActionsTest, MarkAreasBeginsAndLeaves) {
  const QUuid item = makeItem();
  desk.state.select({item});
  actions.trigger(ActionId::markAreas);
  EXPECT_EQ(desk.marking.subject(), item);
  actions.trigger(ActionId::markAreas);
  EXPECT_FALSE(desk.marking.isMarking());
}

}  // namespace
}  // namespace sorvan::shell
