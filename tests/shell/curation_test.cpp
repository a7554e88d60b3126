#include "shell/curation_presenter.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "core/history.h"
#include "core/small_edits.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

struct CurationTest : testing::Test {
  test::Desk desk;
  QUuid make(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(1s);
    return desk.store.assets().front()->id;
  }
  core::AssetRef item(const QUuid& id) const { return desk.store.asset(id); }
  QString lastStep() const {
    const auto edit = desk.store.history().next(core::HistoryDirection::undo);
    return edit ? edit->name : QString();
  }
  std::size_t steps() const { return desk.store.history().undo().size(); }
  QUuid addProject(const QString& name, bool archived = false) {
    core::Project project(name, desk.store.files().createProjectFolder(name), desk.store.now());
    project.archived = archived;
    const QUuid id = project.id;
    desk.store.context().insert(std::move(project));
    desk.store.save(core::LibraryTables::projects);
    return id;
  }
  // Trashes what is selected, and says yes where a question comes first.
  void trashAll() {
    desk.curation.moveToTrash();
    if (desk.alerts.current()) desk.alerts.answer(desk.alerts.current()->id, 0);
  }
  void hold(const QUuid& id) {
    core::SavedReference reference;
    reference.id = base::newUuid();
    reference.name = QStringLiteral("Mira");
    reference.assetIDs = {id};
    desk.store.context().insert(reference);
    desk.store.save(core::LibraryTables::savedReferences);
  }
};

TEST_F(CurationTest, MarksAllSelectedItemsInOneStep) {
  const QUuid first = make(QStringLiteral("one"));
  const QUuid second = make(QStringLiteral("two"));
  const std::size_t before = steps();
  desk.state.select({first, second});
  desk.curation.setStatus(core::AssetStatus::shortlist);
  EXPECT_EQ(item(first)->status(), core::AssetStatus::shortlist);
  EXPECT_EQ(item(second)->status(), core::AssetStatus::shortlist);
  EXPECT_EQ(steps(), before + 1);
  EXPECT_EQ(lastStep(), QStringLiteral("Change Status"));
  EXPECT_EQ(desk.store.history().undo().back()->compared, 2);
}

TEST_F(CurationTest, LeavesAloneWhatTheGalleryDoesNotShow) {
  const QUuid first = make(QStringLiteral("one"));
  const QUuid second = make(QStringLiteral("two"));
  desk.state.select({second});
  desk.curation.toggleFavorite();
  test::runPosted();
  desk.state.setLocation(favoritesLocation);
  desk.state.select({first, second});
  desk.curation.setRating(5);
  EXPECT_EQ(item(first)->rating, std::nullopt);
  EXPECT_EQ(item(second)->rating, 5);
}

TEST_F(CurationTest, CountsTheSelectedItemsThatTheGalleryShowsAndNoJobs) {
  const QUuid first = make(QStringLiteral("one"));
  const QUuid second = make(QStringLiteral("two"));
  const QUuid third = make(QStringLiteral("three"));
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
  desk.generate(QStringLiteral("four"));
  desk.settle();
  const QUuid job = desk.newestJob()->id;
  ASSERT_GE(desk.gallery.indexOf(job), 0);
  desk.state.select({first, second, job});
  EXPECT_EQ(desk.curation.selectedItems(), 2);
  core::setFavorite(desk.store, {item(first), item(third)}, true);
  desk.state.setLocation(favoritesLocation);
  desk.state.select({first, second, third});
  EXPECT_EQ(desk.curation.selectedItems(), 2);
  desk.state.select({second});
  EXPECT_EQ(desk.curation.selectedItems(), 1);
}

TEST_F(CurationTest, StepsOnToTheNextItemOnlyWhenAsked) {
  const QUuid last = make(QStringLiteral("one"));
  const QUuid first = make(QStringLiteral("two"));
  desk.state.select({first});
  desk.curation.setRating(3);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{first});
  desk.curation.setStepsOn(true);
  desk.curation.setRating(4);
  EXPECT_EQ(item(first)->rating, 4);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{last});
  desk.state.setMode({ModeKind::asset, last, 0});
  desk.curation.setStatus(core::AssetStatus::rejected);
  EXPECT_EQ(desk.state.mode().subject, first);
}

TEST_F(CurationTest, TrashSelectsTheNextItemAndItsCardBringsTheItemBack) {
  const QUuid last = make(QStringLiteral("one"));
  const QUuid middle = make(QStringLiteral("two"));
  make(QStringLiteral("three"));
  desk.state.select({middle});
  desk.curation.moveToTrash();
  test::runPosted();
  EXPECT_TRUE(item(middle)->isTrashed());
  EXPECT_EQ(desk.gallery.indexOf(middle), -1);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{last});
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts().front().actionTitle, QStringLiteral("Restore"));
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_FALSE(item(middle)->isTrashed());
}

TEST_F(CurationTest, AnItemThatIsOpenAmongOthersGivesWayToTheNextOfThose) {
  const QUuid oldest = make(QStringLiteral("one"));
  const QUuid middle = make(QStringLiteral("two"));
  const QUuid newest = make(QStringLiteral("three"));
  desk.curation.setStepsOn(true);
  desk.state.openAsset(oldest, {oldest, newest});
  desk.curation.setRating(2);
  EXPECT_EQ(desk.state.mode().subject, newest) << "not the neighbour on the wall";
  desk.state.openAsset(oldest, {middle, oldest, newest});
  desk.curation.moveToTrash();
  test::runPosted();
  EXPECT_EQ(desk.state.mode().subject, newest);
  desk.curation.moveToTrash();
  test::runPosted();
  EXPECT_EQ(desk.state.mode().subject, middle) << "what is in Trash is stepped over";
}

TEST_F(CurationTest, OnASheetOrInAFamilyTrashGoesToNoItemOfTheWall) {
  const QUuid first = make(QStringLiteral("one"));
  make(QStringLiteral("two"));
  desk.state.openLineage(first);
  desk.curation.moveToTrash();
  test::runPosted();
  EXPECT_TRUE(item(first)->isTrashed());
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{first}) << "it keeps its row in the tree";
}

TEST_F(CurationTest, TheCardBringsItemsBackWhileAJobRunsAndUndoWaits) {
  const QUuid id = make(QStringLiteral("one"));
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("two"));
  desk.state.select({id});
  desk.curation.moveToTrash();
  EXPECT_FALSE(core::canTake(desk.store, core::HistoryDirection::undo));
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_FALSE(item(id)->isTrashed());
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_TRUE(core::canTake(desk.store, core::HistoryDirection::undo));
}

TEST_F(CurationTest, TrashingAllLeavesNothingSelected) {
  const QUuid only = make(QStringLiteral("one"));
  desk.state.select({only});
  desk.state.setMode({ModeKind::asset, only, 0});
  desk.curation.moveToTrash();
  EXPECT_TRUE(desk.state.selection().isEmpty());
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
}

TEST_F(CurationTest, WhatNothingHoldsIsRestoredWithoutAQuestion) {
  const QUuid id = make(QStringLiteral("one"));
  desk.state.select({id});
  desk.curation.moveToTrash();
  desk.state.setLocation(trashLocation);
  desk.state.select({id});
  EXPECT_TRUE(desk.curation.hasTrashedItems());
  EXPECT_FALSE(desk.curation.hasLiveItems());
  desk.curation.restoreSelected();
  EXPECT_FALSE(item(id)->isTrashed());
  EXPECT_FALSE(desk.alerts.current());
  EXPECT_EQ(lastStep(), QStringLiteral("Restore Items"));
}

TEST_F(CurationTest, WhatAReferenceHoldsIsAskedAboutFirst) {
  const QUuid id = make(QStringLiteral("one"));
  hold(id);
  desk.state.select({id});
  trashAll();
  desk.state.setLocation(trashLocation);
  desk.state.select({id});
  desk.curation.restoreSelected();
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_TRUE(item(id)->isTrashed());
  EXPECT_EQ(desk.alerts.current()->text,
            QStringLiteral("Before going to Trash, this item was in 1 saved reference. Restore Everywhere puts it back "
                           "there too. Gallery Only takes it out of those, and removes a reference left with no "
                           "images."));
  EXPECT_EQ(desk.alerts.current()->buttons[0].title, QStringLiteral("Restore Everywhere"));
  EXPECT_EQ(desk.alerts.current()->buttons[1].title, QStringLiteral("Restore to Gallery Only"));
  desk.alerts.answer(desk.alerts.current()->id, 1);
  EXPECT_FALSE(item(id)->isTrashed());
  EXPECT_TRUE(desk.store.savedReferences().empty());
}

TEST_F(CurationTest, CancellingTheQuestionLeavesTheItemInTrash) {
  const QUuid id = make(QStringLiteral("one"));
  hold(id);
  desk.state.select({id});
  trashAll();
  desk.state.setLocation(trashLocation);
  desk.state.select({id});
  desk.curation.restoreSelected();
  desk.alerts.answer(desk.alerts.current()->id, 2);
  EXPECT_TRUE(item(id)->isTrashed());
}

TEST_F(CurationTest, TheQuestionNamesSeveralItemsAndBothKindsOfHolders) {
  EXPECT_EQ(restoreQuestionText(3, {2, 1}),
            QStringLiteral("Before going to Trash, these 3 items were in 2 saved references and 1 contact sheet. "
                           "Restore Everywhere puts them back there too. Gallery Only takes them out of those, and "
                           "removes a reference left with no images."));
}

TEST_F(CurationTest, WhatAReferenceHoldsGoesToTrashOnlyAfterAYes) {
  const QUuid id = make(QStringLiteral("one"));
  hold(id);
  desk.state.select({id});
  desk.curation.moveToTrash();
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->title, QStringLiteral("Move this item to Trash?"));
  EXPECT_EQ(desk.alerts.current()->text,
            QStringLiteral("This item is used by Mira. One reference will have no images left and cannot be attached."));
  EXPECT_FALSE(item(id)->isTrashed());
  desk.alerts.answer(desk.alerts.current()->id, 1);
  EXPECT_FALSE(item(id)->isTrashed());
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{id});
  desk.curation.moveToTrash();
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_TRUE(item(id)->isTrashed());
  EXPECT_FALSE(desk.alerts.current());
}

TEST_F(CurationTest, AnItemThatLeftWhileTheQuestionWasOpenIsLeftOut) {
  const QUuid held = make(QStringLiteral("one"));
  const QUuid other = make(QStringLiteral("two"));
  hold(held);
  desk.state.select({held, other});
  desk.curation.moveToTrash();
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->title, QStringLiteral("Move these 2 items to Trash?"));
  exchange::trash(desk.store, {item(other)});
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_TRUE(item(held)->isTrashed());
  EXPECT_EQ(desk.alerts.toasts().back().text, QStringLiteral("Moved to Trash"));
}

TEST_F(CurationTest, AFailedTrashOffersNoCardAndKeepsTheSelection) {
  const QUuid id = make(QStringLiteral("one"));
  desk.state.select({id});
  desk.store.setBackingUp(true);
  desk.curation.moveToTrash();
  EXPECT_TRUE(desk.alerts.toasts().empty());
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{id});
  EXPECT_TRUE(desk.store.error().has_value());
}

TEST_F(CurationTest, OffersEveryPlaceButTheOneWhereTheItemsAre) {
  const QUuid id = make(QStringLiteral("one"));
  const QUuid sea = addProject(QStringLiteral("Sea"));
  addProject(QStringLiteral("Old"), true);
  desk.state.select({id});
  ASSERT_EQ(desk.curation.destinations().size(), 1u);
  EXPECT_EQ(desk.curation.destinations()[0].name, QStringLiteral("Sea"));
  desk.curation.moveTo(sea);
  EXPECT_EQ(item(id)->projectID, sea);
  ASSERT_EQ(desk.curation.destinations().size(), 1u);
  EXPECT_EQ(desk.curation.destinations()[0].project, std::nullopt);
  EXPECT_EQ(desk.alerts.toasts().back().text, QStringLiteral("Moved to Sea"));
}

TEST_F(CurationTest, RenamesAndWritesNotes) {
  const QUuid id = make(QStringLiteral("one"));
  desk.curation.rename(id, QStringLiteral("Blue Boat"));
  EXPECT_EQ(item(id)->filename(), QStringLiteral("Blue-Boat-001.png"));
  desk.curation.setNotes(id, QStringLiteral("for the cover"));
  EXPECT_EQ(item(id)->notes, QStringLiteral("for the cover"));
  desk.curation.setNotes(id, QStringLiteral("  "));
  EXPECT_EQ(item(id)->notes, std::nullopt);
  EXPECT_EQ(lastStep(), QStringLiteral("Edit Notes"));
}

TEST_F(CurationTest, AChangeThatTheHistoryCannotKeepIsToldOfBeforeItIsMade) {
  const QUuid id = make(QStringLiteral("one"));
  const QUuid sea = addProject(QStringLiteral("Sea"));
  // A path that long exists on no disk, but its length is all that counts here.
  desk.store.context().edit(item(id)).thumbnailFilePath = QString(9'000'000, u'x');
  desk.store.save(core::LibraryTables::none);
  desk.state.select({id});
  desk.curation.moveTo(sea);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(item(id)->projectID, std::nullopt);
  desk.alerts.answer(desk.alerts.current()->id, 1);
  EXPECT_EQ(item(id)->projectID, std::nullopt);
  desk.curation.moveTo(sea);
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_EQ(item(id)->projectID, sea);
}

TEST_F(CurationTest, NotesThatTheHistoryCannotKeepAreToldOfBeforeTheyAreWritten) {
  const QUuid id = make(QStringLiteral("one"));
  const QString notes(3'000'000, u'x');
  desk.curation.setNotes(id, notes);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(item(id)->notes, std::nullopt);
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_EQ(item(id)->notes, notes);
}

TEST_F(CurationTest, WhatIsDroppedOnAProjectIsToldOfToWhenTheHistoryCannotKeepIt) {
  const QUuid id = make(QStringLiteral("one"));
  const QUuid sea = addProject(QStringLiteral("Sea"));
  desk.store.context().edit(item(id)).thumbnailFilePath = QString(9'000'000, u'x');
  desk.store.save(core::LibraryTables::none);
  desk.curation.drop({id}, base::uuidText(sea));
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(item(id)->projectID, std::nullopt);
}

TEST_F(CurationTest, TheCardOfTrashGoesOnceTheItemIsBack) {
  const QUuid id = make(QStringLiteral("one"));
  desk.state.select({id});
  desk.curation.moveToTrash();
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_TRUE(desk.alerts.toasts().front().leavesByItself());
  core::applyHistory(desk.store, core::HistoryDirection::undo);
  EXPECT_FALSE(item(id)->isTrashed());
  EXPECT_TRUE(desk.alerts.toasts().empty());
}

TEST_F(CurationTest, GoingToTrashIsCounted) {
  desk.state.select({make(QStringLiteral("one"))});
  desk.curation.moveToTrash();
  EXPECT_EQ(desk.used, QStringList{QStringLiteral("trash")});
}

TEST_F(CurationTest, TheCardOfAMoveTakesItBack) {
  const QUuid id = make(QStringLiteral("one"));
  const QUuid sea = addProject(QStringLiteral("Sea"));
  desk.state.select({id});
  desk.curation.moveTo(sea);
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts().front().text, QStringLiteral("Moved to Sea"));
  EXPECT_EQ(desk.alerts.toasts().front().actionTitle, QStringLiteral("Undo"));
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_EQ(item(id)->projectID, std::nullopt);
  EXPECT_TRUE(desk.alerts.toasts().empty());
}

TEST_F(CurationTest, TheCardOfAMoveNeverTakesBackALaterStep) {
  const QUuid id = make(QStringLiteral("one"));
  desk.state.select({id});
  desk.curation.moveTo(addProject(QStringLiteral("Sea")));
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  desk.curation.toggleFavorite();
  EXPECT_TRUE(desk.alerts.toasts().empty());
}

TEST_F(CurationTest, TheCardOfAMoveOffersNoUndoWhileAJobRuns) {
  const QUuid id = make(QStringLiteral("one"));
  const QUuid sea = addProject(QStringLiteral("Sea"));
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("two"));
  desk.state.select({id});
  desk.curation.moveTo(sea);
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_TRUE(desk.alerts.toasts().front().actionTitle.isEmpty());
  desk.provider->gate->finish();
  desk.settle();
}

}  // namespace
}  // namespace sorvan::shell
