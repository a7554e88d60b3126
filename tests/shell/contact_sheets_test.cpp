#include "shell/contact_sheets.h"

#include <gtest/gtest.h>

#include "core/history.h"
#include "core/library_fixture.h"

namespace sorvan::shell {
namespace {

using test::messageOf;
using namespace std::chrono_literals;

struct ContactSheetsTest : test::LibraryFixture {
  std::vector<core::AssetRef> items;
  QUuid comparison = base::newUuid();

  ContactSheetsTest() { open(); }
  core::AssetRef add(const QString& prompt = {}) {
    const QString name = QStringLiteral("item-%1.png").arg(items.size());
    const core::AssetRef asset =
        store.context().insert(newAsset(QStringLiteral("Inbox/generated/") + name, -static_cast<double>(items.size())));
    core::NewRecords records{{asset}, {}, {}, {}};
    if (!prompt.isEmpty()) records.generations.push_back(generation(asset, base::newUuid(), prompt));
    store.save(core::LibraryTables::none);
    store.registerRecords(records);
    items.push_back(asset);
    return asset;
  }
  core::GenerationRef generation(const core::AssetRef& asset, const QUuid& job, const QString& prompt) {
    core::Generation made;
    made.id = base::newUuid();
    made.assetID = asset->id;
    made.jobID = job;
    made.prompt = prompt;
    made.model = QStringLiteral("fal/flux");
    return store.context().insert(made);
  }
  core::JobRef addComparisonJob(int order, const QString& status, int count = 1) {
    core::GenerationRequest request;
    request.comparisonID = comparison;
    request.comparisonOrder = order;
    request.count = count;
    request.prompt = QStringLiteral("a  red\nboat");
    request.model = QStringLiteral("fal/kling");
    clock->advance(1s);
    return addJob(request, status);
  }
  core::AssetRef land(const core::JobRef& job) {
    const core::AssetRef asset = add();
    const core::GenerationRef made = generation(asset, job->id, QStringLiteral("a red boat"));
    store.save(core::LibraryTables::none);
    store.registerRecords({{}, {made}, {}, {}});
    return asset;
  }
  void setStatus(const core::JobRef& job, const QString& status) {
    store.context().edit(job).status = status;
    store.save(core::LibraryTables::jobs);
  }
  core::ContactSheetRef make(std::size_t count) {
    while (items.size() < count) add();
    return createContactSheet(store, {items.begin(), items.begin() + static_cast<std::ptrdiff_t>(count)}, {});
  }
  core::ContactSheetRef comparisonSheet() {
    backfillContactSheets(store);
    store.save(core::LibraryTables::contactSheets);
    return sheetFor(store, ComparisonBatch{comparison});
  }
  std::vector<QUuid> ids(std::initializer_list<std::size_t> places) const {
    std::vector<QUuid> list;
    for (const std::size_t place : places) list.push_back(items[place]->id);
    return list;
  }
  void trash(const core::AssetRef& asset) {
    store.context().edit(asset).deletedAt = clock->now();
    store.save(core::LibraryTables::none);
  }
  void undo() { core::applyHistory(store, core::HistoryDirection::undo); }
};

TEST_F(ContactSheetsTest, TwoToEightItemsMakeASheetAndOneAndNineDoNot) {
  for (const std::size_t count : {2u, 8u}) EXPECT_EQ(make(count)->assetIDs.size(), count);
  for (const std::size_t count : {1u, 9u})
    EXPECT_EQ(messageOf([&] { make(count); }), "Select 2–8 assets to compare.") << count;
  EXPECT_EQ(store.contactSheets().size(), 2u);
  undo();
  EXPECT_EQ(store.contactSheets().size(), 1u);
  store.close();
  EXPECT_EQ(messageOf([&] { createContactSheet(store, items, {}); }), "Choose a workspace first.");
}

TEST_F(ContactSheetsTest, TheTitleIsTheSharedPromptOrTheNumberOfItems) {
  add(QStringLiteral("  a red\n boat "));
  add(QStringLiteral("  a red\n boat "));
  EXPECT_EQ(make(2)->title, QStringLiteral("a red boat"));
  add(QStringLiteral("another"));
  EXPECT_EQ(make(3)->title, QStringLiteral("Comparison of 3 assets"));
  items.clear();
  add();
  add();
  EXPECT_EQ(make(2)->title, QStringLiteral("Comparison of 2 assets"));
}

TEST_F(ContactSheetsTest, WhatIsInTrashOrLostIsNotShownAndComesBackAtItsPlace) {
  const core::ContactSheetRef sheet = make(3);
  trash(items[1]);
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({0, 2}));
  store.context().edit(items[1]).deletedAt = std::nullopt;
  store.save(core::LibraryTables::none);
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({0, 1, 2}));
  store.context().edit(sheet).assetIDs.push_back(base::newUuid());
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({0, 1, 2}));
}

TEST_F(ContactSheetsTest, ItemsAreReorderedTakenOutAndPutBackInStepsOfUndo) {
  const core::ContactSheetRef sheet = make(3);
  setContactSheetAssets(store, sheet, ids({2, 0}));
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({2, 0}));
  EXPECT_EQ(sheet->excludedAssetIDs, ids({1}));
  setContactSheetAssets(store, sheet, ids({1, 2, 0}));
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({1, 2, 0}));
  EXPECT_TRUE(sheet->excludedAssetIDs.empty());
  undo();
  undo();
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({0, 1, 2}));
}

TEST_F(ContactSheetsTest, ChangingASheetKeepsItsItemsThatAreInTrash) {
  const core::ContactSheetRef sheet = make(3);
  trash(items[1]);
  setContactSheetAssets(store, sheet, ids({2, 0}));
  EXPECT_TRUE(sheet->excludedAssetIDs.empty());
  EXPECT_EQ(sheet->assetIDs, ids({2, 0, 1}));
}

TEST_F(ContactSheetsTest, WhatIsExcludedFromAComparisonStaysOut) {
  const core::JobRef job = addComparisonJob(0, jobStatus::complete, 2);
  land(job);
  land(job);
  const core::ContactSheetRef sheet = comparisonSheet();
  ASSERT_NE(sheet, nullptr);
  setContactSheetAssets(store, sheet, ids({1}));
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({1}));
  land(job);
  EXPECT_EQ(sheetAssetIDs(store, *sheet), ids({1, 2}));
}

TEST_F(ContactSheetsTest, OpeningGivesEachComparisonASheetOnce) {
  addComparisonJob(0, jobStatus::complete);
  addComparisonJob(1, jobStatus::failed);
  addJob({});
  backfillContactSheets(store);
  store.save(core::LibraryTables::contactSheets);
  backfillContactSheets(store);
  EXPECT_FALSE(store.context().hasChanges());
  ASSERT_EQ(store.contactSheets().size(), 1u);
  EXPECT_EQ(store.contactSheets().front()->title, QStringLiteral("a red boat"));
  EXPECT_EQ(store.contactSheets().front()->comparisonID, comparison);
}

TEST_F(ContactSheetsTest, AComparisonWithoutAPromptIsUntitled) {
  core::GenerationRequest request;
  request.comparisonID = comparison;
  addJob(request, jobStatus::complete);
  backfillContactSheets(store);
  store.save(core::LibraryTables::contactSheets);
  EXPECT_EQ(store.contactSheets().front()->title, QStringLiteral("Untitled comparison"));
}

TEST_F(ContactSheetsTest, ResultsTakeTheirPlacesAsTheyArrive) {
  const core::JobRef second = addComparisonJob(1, jobStatus::queued);
  const core::JobRef first = addComparisonJob(0, jobStatus::generating, 2);
  const ContactSheetSource source = ComparisonBatch{comparison};
  ContactSheetPlaces places = placesOf(store, source);
  ASSERT_EQ(places.slots.size(), 3u);
  EXPECT_TRUE(places.running);
  EXPECT_EQ(places.jobs, (std::vector<core::JobRef>{first, second}));
  EXPECT_EQ(places.slots[1].id, uuidText(first->id) + QStringLiteral("-1"));
  EXPECT_EQ(places.slots[1].asset, nullptr);
  std::vector<QString> before;
  for (const ComparisonSlot& slot : places.slots) before.push_back(slot.id);
  land(first);
  land(first);
  setStatus(first, jobStatus::complete);
  land(second);
  setStatus(second, jobStatus::complete);
  places = placesOf(store, source);
  std::vector<QString> after;
  for (const ComparisonSlot& slot : places.slots) after.push_back(slot.id);
  EXPECT_EQ(after, before);
  EXPECT_EQ(assetsOf(places), items);
  EXPECT_FALSE(places.running);
}

TEST_F(ContactSheetsTest, ACompleteJobHasOnlyTheItemsItMadeAndAFailedOneAPlaceForRetry) {
  const core::JobRef complete = addComparisonJob(0, jobStatus::complete, 4);
  land(complete);
  const core::JobRef failed = addComparisonJob(1, jobStatus::failed, 4);
  const core::JobRef cancelled = addComparisonJob(2, jobStatus::cancelled, 4);
  const ContactSheetPlaces places = placesOf(store, ComparisonBatch{comparison});
  ASSERT_EQ(places.slots.size(), 3u);
  EXPECT_EQ(places.slots[0].asset, items[0]);
  EXPECT_EQ(places.slots[1].job, failed);
  EXPECT_EQ(places.slots[1].asset, nullptr);
  EXPECT_EQ(places.slots[2].job, cancelled);
  EXPECT_EQ(assetsOf(places).size(), 1u);
}

TEST_F(ContactSheetsTest, ItemsAddedByHandFollowTheComparisonsOwn) {
  const core::JobRef job = addComparisonJob(0, jobStatus::complete);
  land(job);
  const core::AssetRef added = add();
  const core::ContactSheetRef sheet = comparisonSheet();
  setContactSheetAssets(store, sheet, ids({0, 1}));
  EXPECT_EQ(sheet->assetIDs, ids({1}));
  const ContactSheetPlaces places = placesOf(store, StoredSheet{sheet->id});
  ASSERT_EQ(places.slots.size(), 2u);
  EXPECT_EQ(places.slots[1].asset, added);
  EXPECT_EQ(places.slots[1].job, nullptr);
  EXPECT_EQ(sheetFor(store, StoredSheet{sheet->id}), sheet);
}

TEST_F(ContactSheetsTest, APassingSelectionShowsEachItemOnceAndNothingFromTrash) {
  add();
  add();
  trash(items[1]);
  const QUuid first = items[0]->id;
  const ContactSheetPlaces places = placesOf(store, PassingSelection{{first, items[1]->id, first, base::newUuid()}});
  ASSERT_EQ(places.slots.size(), 1u);
  EXPECT_EQ(places.slots[0].id, uuidText(first));
  EXPECT_EQ(sheetFor(store, PassingSelection{}), nullptr);
}

TEST_F(ContactSheetsTest, SheetsStandAtTheirLocationLastChangedFirst) {
  const core::ContactSheetRef old = make(2);
  clock->advance(5s);
  const core::ContactSheetRef fresh = make(3);
  const core::ProjectRef project =
      store.context().insert(core::Project(QStringLiteral("Sea"), QStringLiteral("sea"), clock->now()));
  store.save(core::LibraryTables::projects);
  const core::ContactSheetRef inProject = createContactSheet(store, {items[0], items[1]}, project->id);
  using Sheets = std::vector<core::ContactSheetRef>;
  EXPECT_EQ(sheetsAt(store, QStringLiteral("inbox")), (Sheets{fresh, old}));
  EXPECT_EQ(sheetsAt(store, uuidText(project->id)), (Sheets{inProject}));
  EXPECT_EQ(sheetsAt(store, QStringLiteral("library")).size(), 3u);
  clock->advance(5s);
  setContactSheetAssets(store, old, ids({1, 0}));
  EXPECT_EQ(sheetsAt(store, QStringLiteral("inbox")), (Sheets{old, fresh}));
  EXPECT_EQ(sheetsAt(store, QStringLiteral("library"), QStringLiteral("SEA")), (Sheets{inProject}));
  deleteContactSheet(store, old);
  EXPECT_EQ(sheetsAt(store, QStringLiteral("inbox")), (Sheets{fresh}));
  EXPECT_EQ(sheetsAt(store, QStringLiteral("trash")), (Sheets{old}));
  EXPECT_FALSE(items[0]->isTrashed());
  restoreContactSheet(store, old);
  EXPECT_EQ(sheetAssetIDs(store, *old), ids({1, 0}));
}

TEST_F(ContactSheetsTest, ATitleIsChangedInOneStepAndABlankOneIsIgnored) {
  const core::ContactSheetRef sheet = make(2);
  renameContactSheet(store, sheet, QStringLiteral("  Boats  "));
  EXPECT_EQ(sheet->title, QStringLiteral("Boats"));
  renameContactSheet(store, sheet, QStringLiteral("   "));
  EXPECT_EQ(sheet->title, QStringLiteral("Boats"));
  undo();
  EXPECT_EQ(sheet->title, QStringLiteral("Comparison of 2 assets"));
}

TEST_F(ContactSheetsTest, SheetsAreFoundByTitleAndByTheModelsOfTheirJobs) {
  addComparisonJob(0, jobStatus::complete);
  const core::ContactSheetRef sheet = comparisonSheet();
  const auto named = [](const QString& model) {
    return model == QStringLiteral("fal/kling") ? QStringLiteral("Clip Maker") : model;
  };
  for (const char* query : {"Red BOAT", "clip maker", "kling"})
    EXPECT_EQ(sheetsAt(store, QStringLiteral("all"), QString::fromLatin1(query), named).size(), 1u) << query;
  EXPECT_TRUE(sheetsAt(store, QStringLiteral("all"), QStringLiteral("flux"), named).empty());
}

}  // namespace
}  // namespace sorvan::shell
