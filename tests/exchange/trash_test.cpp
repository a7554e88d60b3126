#include "exchange/trash.h"

#include "core/history.h"
#include "core/library_fixture.h"

namespace sorvan::exchange {
namespace {

using test::text;

struct TrashTest : test::LibraryFixture {
  AssetRef fox;
  AssetRef hare;

  TrashTest() {
    open();
    fox = addAsset(QStringLiteral("fox-001.png"));
    hare = addAsset(QStringLiteral("hare-001.png"), 10);
  }
  SavedReferenceRef addReference(std::vector<QUuid> ids) {
    SavedReference reference;
    reference.id = newUuid();
    reference.name = QStringLiteral("Mira");
    reference.assetIDs = std::move(ids);
    const SavedReferenceRef added = store.context().insert(reference);
    store.save(LibraryTables::savedReferences);
    return added;
  }
  ContactSheetRef addSheet(std::vector<QUuid> ids, std::optional<QUuid> comparison = {}) {
    const ContactSheetRef added =
        store.context().insert(ContactSheet({}, QStringLiteral("Sheet"), comparison, std::move(ids), clock->now()));
    store.save(LibraryTables::contactSheets);
    return added;
  }
  /// A comparison whose one complete job made the item.
  QUuid compare(const AssetRef& output) {
    GenerationRequest request;
    request.comparisonID = newUuid();
    const JobRef job = addJob(request, jobStatus::complete);
    Generation made;
    made.id = newUuid();
    made.assetID = output->id;
    made.jobID = job->id;
    store.context().insert(made);
    store.save(LibraryTables::generations);
    return *request.comparisonID;
  }
  void undo() { applyHistory(store, HistoryDirection::undo); }
  std::string error() const { return text(store.error().value_or(QString())); }
  QByteArray fileOf(const AssetRef& asset) const { return folder.read(QStringLiteral("work/") + asset->localFilePath); }
};

TEST_F(TrashTest, KeepsTheFileAndTheRecordAndCanBeTakenBack) {
  EXPECT_TRUE(trash(store, {fox}));
  EXPECT_EQ(fox->deletedAt, clock->now());
  EXPECT_TRUE(store.assetRows()[0].trashed);
  EXPECT_FALSE(store.assetRows()[1].trashed);
  EXPECT_EQ(fileOf(fox), "fox-001.png");
  ASSERT_EQ(store.history().undo().size(), 1u);
  EXPECT_EQ(store.history().undo().back()->name, QStringLiteral("Move to Trash"));
  EXPECT_EQ(store.history().undo().back()->compared, 1);
  undo();
  EXPECT_FALSE(fox->isTrashed());
  EXPECT_FALSE(store.assetRows()[0].trashed);
  const QUuid id = fox->id;
  reopen();
  EXPECT_FALSE(store.asset(id)->isTrashed());
}

TEST_F(TrashTest, RefusesAReferenceOfAnActiveJobAndTouchesNothing) {
  GenerationRequest request;
  request.referenceIDs = {hare->id};
  addJob(request);
  EXPECT_FALSE(trash(store, {fox, hare}));
  EXPECT_EQ(error(), "One of these assets is a reference in an active generation. Wait for it to finish.");
  EXPECT_FALSE(fox->isTrashed() || hare->isTrashed());
  EXPECT_TRUE(store.history().undo().empty());
}

TEST_F(TrashTest, LetsAReferenceOfAFinishedJobGo) {
  GenerationRequest request;
  request.referenceIDs = {hare->id};
  addJob(request, jobStatus::complete);
  EXPECT_TRUE(trash(store, {hare}));
}

TEST_F(TrashTest, IsRefusedDuringABackup) {
  store.setBackingUp(true);
  EXPECT_FALSE(trash(store, {fox}));
  EXPECT_FALSE(fox->isTrashed());
}

TEST_F(TrashTest, ASaveThatFailsLeavesTheItemsOutOfTrash) {
  failWrites("UPDATE", "Asset");
  EXPECT_FALSE(trash(store, {fox}));
  EXPECT_FALSE(fox->isTrashed());
  EXPECT_FALSE(store.assetRows()[0].trashed);
}

TEST_F(TrashTest, WhatIsInTrashAlreadyKeepsItsDate) {
  trash(store, {fox});
  const std::optional<Instant> first = fox->deletedAt;
  clock->advance(std::chrono::seconds(60));
  trash(store, {fox, hare});
  EXPECT_EQ(fox->deletedAt, first);
  EXPECT_EQ(hare->deletedAt, clock->now());
}

TEST_F(TrashTest, CountsTheReferencesAndSheetsThatHoldItems) {
  EXPECT_FALSE(holdersOf(store, {fox, hare}).has_value());
  addReference({fox->id});
  addReference({hare->id, fox->id});
  addReference({newUuid()});
  addSheet({hare->id});
  addSheet({}, compare(fox));
  trash(store, {fox, hare});
  const auto holders = holdersOf(store, {fox, hare});
  ASSERT_TRUE(holders.has_value());
  EXPECT_EQ(holders->references, 2);
  EXPECT_EQ(holders->sheets, 2);
  EXPECT_EQ(holdersOf(store, {hare})->references, 1);
}

TEST_F(TrashTest, RestoringEverywhereLeavesListsAsTheyAre) {
  const SavedReferenceRef reference = addReference({fox->id});
  const ContactSheetRef sheet = addSheet({hare->id, fox->id});
  trash(store, {fox});
  EXPECT_TRUE(restore(store, {fox}, Rejoin::everywhere));
  EXPECT_FALSE(fox->isTrashed());
  EXPECT_EQ(reference->assetIDs, std::vector<QUuid>{fox->id});
  EXPECT_EQ(sheet->assetIDs, (std::vector<QUuid>{hare->id, fox->id}));
}

TEST_F(TrashTest, RestoringToTheGalleryOnlyTakesItemsOutOfTheirListsAndOneUndoPutsThemBack) {
  const SavedReferenceRef shared = addReference({hare->id, fox->id});
  const QUuid alone = addReference({fox->id})->id;
  const ContactSheetRef sheet = addSheet({hare->id, fox->id});
  trash(store, {fox});
  EXPECT_TRUE(restore(store, {fox}, Rejoin::galleryOnly));
  EXPECT_FALSE(fox->isTrashed());
  EXPECT_EQ(shared->assetIDs, std::vector<QUuid>{hare->id});
  EXPECT_EQ(sheet->assetIDs, std::vector<QUuid>{hare->id});
  ASSERT_EQ(store.savedReferences().size(), 1u);
  undo();
  EXPECT_TRUE(fox->isTrashed());
  EXPECT_EQ(shared->assetIDs, (std::vector<QUuid>{hare->id, fox->id}));
  EXPECT_EQ(sheet->assetIDs, (std::vector<QUuid>{hare->id, fox->id}));
  ASSERT_EQ(store.savedReferences().size(), 2u);
  EXPECT_NE(store.context().find<SavedReference>(alone), nullptr);
}

TEST_F(TrashTest, RestoringToTheGalleryOnlyExcludesAnOutputOfAComparison) {
  const ContactSheetRef sheet = addSheet({}, compare(fox));
  trash(store, {fox});
  restore(store, {fox}, Rejoin::galleryOnly);
  EXPECT_EQ(sheet->excludedAssetIDs, std::vector<QUuid>{fox->id});
  EXPECT_FALSE(holdersOf(store, {fox}).has_value());
}

TEST_F(TrashTest, ARestoreWhoseSaveFailsLeavesItemsAndListsAsTheyWere) {
  const SavedReferenceRef reference = addReference({fox->id});
  trash(store, {fox});
  failWrites("UPDATE", "Asset");
  EXPECT_FALSE(restore(store, {fox}, Rejoin::galleryOnly));
  EXPECT_TRUE(fox->isTrashed());
  ASSERT_EQ(store.savedReferences().size(), 1u);
  EXPECT_EQ(reference->assetIDs, std::vector<QUuid>{fox->id});
}

}  // namespace
}  // namespace sorvan::exchange
