#include "shell/contact_sheet_workspace.h"

#include <gtest/gtest.h>

#include <QImage>

#include "core/history.h"
#include "desk.h"
#include "shell/sheet_texts.h"

namespace sorvan::shell {
namespace {

struct ContactSheetWorkspaceTest : testing::Test {
  test::Desk desk;
  ContactSheetWorkspace sheet{{desk.store, desk.state, desk.displays, desk.jobs, desk.alerts}};

  core::AssetRef made(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    return desk.store.generationsOf(desk.newestJob()->id).empty()
               ? nullptr
               : desk.store.asset(desk.store.generationsOf(desk.newestJob()->id).front()->assetID);
  }
  std::vector<QUuid> several(int count) {
    std::vector<QUuid> ids;
    for (int number = 0; number < count; ++number) ids.push_back(made(QStringLiteral("a boat"))->id);
    return ids;
  }
  std::vector<QUuid> shownIds() const { return sheet.ids(); }
};

TEST_F(ContactSheetWorkspaceTest, PlacesOfARunningComparisonShowTheirWorkAndResultsDropIntoThem) {
  desk.provider->gate.emplace();
  const QUuid comparison = desk.compare(3);
  sheet.open(ComparisonBatch{comparison});
  ASSERT_EQ(sheet.display().places.size(), 3u);
  EXPECT_TRUE(sheet.display().running);
  EXPECT_EQ(sheet.display().progressText, QStringLiteral("0 of 3 done"));
  EXPECT_EQ(sheet.display().places[0].job.state, JobState::running);
  EXPECT_EQ(sheet.display().places[2].job.state, JobState::queued);
  EXPECT_EQ(sheet.display().places[2].number, 3);
  const QString first = sheet.display().places[0].id;
  desk.provider->gate->finish();
  desk.settle();
  ASSERT_EQ(sheet.display().places.size(), 3u);
  EXPECT_FALSE(sheet.display().running);
  EXPECT_TRUE(sheet.display().progressText.isEmpty());
  EXPECT_EQ(sheet.display().places[0].id, first);
  for (const PlaceDisplay& place : sheet.display().places) {
    EXPECT_FALSE(place.asset.isNull());
    EXPECT_EQ(place.costText, texts::noCostRecorded);
  }
  EXPECT_EQ(sheet.display().prompt, QStringLiteral("a boat at dusk"));
  EXPECT_EQ(sheet.display().factsText, QStringLiteral("1 model · 1:1 · 1 output per model"));
}

TEST_F(ContactSheetWorkspaceTest, NothingIsAddedWhileAComparisonRuns) {
  const QUuid other = made(QStringLiteral("another"))->id;
  desk.provider->gate.emplace();
  sheet.open(ComparisonBatch{desk.compare(2)});
  EXPECT_FALSE(sheet.canAdd());
  sheet.add({other});
  EXPECT_TRUE(sheet.ids().empty());
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_TRUE(sheet.canAdd());
  sheet.add({other});
  EXPECT_EQ(sheet.ids().size(), 3u);
  EXPECT_EQ(sheet.ids().back(), other);
}

TEST_F(ContactSheetWorkspaceTest, AFailedPlaceOffersRetryWhichFillsIt) {
  desk.provider->failure = std::make_exception_ptr(SorvanError(QStringLiteral("The model is busy.")));
  sheet.open(ComparisonBatch{desk.compare(2)});
  desk.settle();
  ASSERT_EQ(sheet.display().places.size(), 2u);
  const PlaceDisplay failed = sheet.display().places[0];
  EXPECT_EQ(failed.job.state, JobState::failed);
  EXPECT_EQ(failed.job.message, QStringLiteral("The model is busy."));
  EXPECT_EQ(failed.job.action, JobAction::retry);
  desk.provider->failure = nullptr;
  sheet.perform(failed.job.id, failed.job.action);
  desk.settle();
  EXPECT_FALSE(sheet.display().places[0].asset.isNull());
  EXPECT_EQ(sheet.display().places[1].job.state, JobState::failed);
}

TEST_F(ContactSheetWorkspaceTest, AWaitingPlaceIsCancelledWithoutTheOthers) {
  desk.provider->gate.emplace();
  sheet.open(ComparisonBatch{desk.compare(3)});
  const PlaceDisplay waiting = sheet.display().places[2];
  EXPECT_EQ(waiting.job.action, JobAction::cancel);
  sheet.perform(waiting.job.id, waiting.job.action);
  test::runPosted();
  EXPECT_EQ(sheet.display().places[2].job.state, JobState::cancelled);
  EXPECT_EQ(sheet.display().places[0].job.state, JobState::running);
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(ContactSheetWorkspaceTest, ItemsOfAStoredSheetMoveAndLeaveInStepsThatUndoTakesBack) {
  const std::vector<QUuid> ids = several(3);
  sheet.open(PassingSelection{ids});
  ASSERT_NE(sheet.save(), nullptr);
  EXPECT_TRUE(sheet.display().stored);
  sheet.moveBy(ids[2], -1);
  EXPECT_EQ(shownIds(), (std::vector<QUuid>{ids[0], ids[2], ids[1]}));
  sheet.move(ids[0], {});
  EXPECT_EQ(shownIds(), (std::vector<QUuid>{ids[2], ids[1], ids[0]}));
  sheet.remove(ids[1]);
  EXPECT_EQ(shownIds(), (std::vector<QUuid>{ids[2], ids[0]}));
  EXPECT_FALSE(desk.store.asset(ids[1])->isTrashed());
  for (int step = 0; step < 3; ++step) core::applyHistory(desk.store, core::HistoryDirection::undo);
  test::runPosted();
  EXPECT_EQ(shownIds(), ids);
}

TEST_F(ContactSheetWorkspaceTest, APassingSelectionChangesOnlyHereAndBecomesASheetWhenSaved) {
  const std::vector<QUuid> ids = several(3);
  sheet.open(PassingSelection{{ids[0], ids[1]}});
  EXPECT_TRUE(sheet.display().canSave);
  sheet.add({ids[2], ids[0]});
  sheet.remove(ids[0]);
  EXPECT_EQ(shownIds(), (std::vector<QUuid>{ids[1], ids[2]}));
  EXPECT_EQ(sheet.baseIDs(), (std::vector<QUuid>{ids[0], ids[1]}));
  EXPECT_TRUE(desk.store.contactSheets().empty());
  const core::ContactSheetRef made = sheet.save();
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->assetIDs, (std::vector<QUuid>{ids[1], ids[2]}));
  EXPECT_EQ(made->title, QStringLiteral("a boat"));
}

TEST_F(ContactSheetWorkspaceTest, AnItemWithoutARecordedCostSaysSo) {
  const QUuid id = several(1).front();
  core::Generation& made = desk.store.context().edit(desk.store.generationOf(id));
  made.parametersJSON = QByteArrayLiteral("{}");
  desk.store.save(core::LibraryTables::none);
  sheet.open(PassingSelection{{id}});
  ASSERT_EQ(sheet.display().places.size(), 1u);
  EXPECT_EQ(sheet.display().places[0].costText, QStringLiteral("No cost information was recorded."));
}

TEST_F(ContactSheetWorkspaceTest, MarksOfAPlaceAreTheItems) {
  const std::vector<QUuid> ids = several(2);
  sheet.open(PassingSelection{ids});
  sheet.setRating(ids[0], 4);
  sheet.toggleFavorite(ids[0]);
  sheet.toggleReview(ids[0]);
  test::runPosted();
  EXPECT_EQ(sheet.display().places[0].rating, 4);
  EXPECT_TRUE(sheet.display().places[0].favorite);
  EXPECT_EQ(sheet.display().places[0].statusText, QStringLiteral("Shortlist"));
  sheet.setStatus(ids[0], core::AssetStatus::rejected);
  test::runPosted();
  EXPECT_EQ(sheet.display().places[0].statusText, QStringLiteral("Rejected"));
  sheet.toggleReview(ids[0]);
  test::runPosted();
  EXPECT_TRUE(sheet.display().places[0].statusText.isEmpty());
}

TEST_F(ContactSheetWorkspaceTest, ASheetThatIsInTrashTakesNothingAndComesBack) {
  sheet.open(PassingSelection{several(2)});
  ASSERT_NE(sheet.save(), nullptr);
  sheet.rename(QStringLiteral("Boats"));
  sheet.moveToTrash();
  test::runPosted();
  EXPECT_TRUE(sheet.display().trashed);
  EXPECT_EQ(sheet.display().title, QStringLiteral("Boats"));
  EXPECT_FALSE(sheet.canAdd());
  sheet.restore();
  test::runPosted();
  EXPECT_FALSE(sheet.display().trashed);
}

TEST_F(ContactSheetWorkspaceTest, TimesAreToldInSecondsAndMinutes) {
  EXPECT_EQ(tookText(21.4), QStringLiteral("21 s"));
  EXPECT_EQ(tookText(-3), QStringLiteral("0 s"));
  EXPECT_EQ(tookText(125), QStringLiteral("2 min 5 s"));
}

}  // namespace
}  // namespace sorvan::shell
