#include "core/library_store.h"

#include <QSignalSpy>
#include <random>

#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

const char* const backingUp =
    "Sorvan is backing up this workspace. Please wait until the backup finishes before making changes.";

struct LibraryStoreTest : test::LibraryFixture {
  LibraryStoreTest() { open(); }

  static GenerationRequest request(std::optional<QUuid> comparison = {}, int order = 0) {
    GenerationRequest value;
    value.prompt = QStringLiteral("a fox");
    value.comparisonID = comparison;
    if (comparison) value.comparisonOrder = order;
    return value;
  }
  GenerationRef addGeneration(const QUuid& asset, const QUuid& job, std::optional<QUuid> copiedFrom = {}) {
    Generation generation;
    generation.id = newUuid();
    generation.assetID = asset;
    generation.jobID = job;
    generation.provider = QStringLiteral("fal.ai");
    generation.model = QStringLiteral("m");
    generation.copiedFromAssetID = copiedFrom;
    generation.createdAt = clock->now();
    return store.context().insert(generation);
  }
  void expectSorted() const {
    ASSERT_EQ(store.assets().size(), store.assetRows().size());
    for (std::size_t index = 0; index < store.assets().size(); ++index) {
      EXPECT_EQ(store.assets()[index]->id, store.assetRows()[index].id);
      if (index > 0) EXPECT_GE(store.assets()[index - 1]->createdAt, store.assets()[index]->createdAt);
      EXPECT_EQ(store.position(*store.assets()[index]), index);
    }
  }
};

// ---- Saving

TEST_F(LibraryStoreTest, SavingOneChangedFavoriteReplacesOneRowAndMovesTheRevisionByOne) {
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  addAsset(QStringLiteral("hare-001.png"), 10);
  const auto before = store.assetRows();
  const auto revision = store.revision();
  QSignalSpy moved(&store, &LibraryStore::revisionChanged);
  store.context().edit(fox).favorite = true;
  store.save(LibraryTables::none);
  EXPECT_EQ(store.revision(), revision + 1);
  EXPECT_EQ(moved.count(), 1);
  EXPECT_TRUE(store.assetRows()[0].favorite);
  EXPECT_EQ(store.assetRows()[1], before[1]);
}

TEST_F(LibraryStoreTest, SavingAndReloadingMovesTheRevisionByOne) {
  const auto revision = store.revision();
  store.save(LibraryTables::all);
  EXPECT_EQ(store.revision(), revision + 1);
  store.reload(LibraryTables::jobs);
  EXPECT_EQ(store.revision(), revision + 2);
}

TEST_F(LibraryStoreTest, ASaveDuringABackupFailsBeforeTouchingAnything) {
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  const auto revision = store.revision();
  store.context().edit(fox).favorite = true;
  store.setBackingUp(true);
  EXPECT_EQ(messageOf([&] { store.save(LibraryTables::none); }), backingUp);
  EXPECT_EQ(store.revision(), revision);
  EXPECT_TRUE(store.context().hasChanges());
  EXPECT_FALSE(store.assetRows()[0].favorite);
  store.setBackingUp(false);
  store.save(LibraryTables::none);
  EXPECT_TRUE(store.assetRows()[0].favorite);
}

TEST_F(LibraryStoreTest, AFailedOperationIsRolledBackShownAndLeavesMemoryAsTheDiskHasIt) {
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  failWrites("UPDATE", "Asset");
  store.context().edit(fox).favorite = true;
  try {
    store.save(LibraryTables::none);
    FAIL() << "the save should have failed";
  } catch (...) {
    store.failOperation(std::current_exception());
  }
  EXPECT_FALSE(fox->favorite);
  EXPECT_NE(text(store.error().value_or(QString())).find("disk is full"), std::string::npos);
  EXPECT_EQ(store.assets()[0], fox) << "one object for one item, also after a reload";
  reopen();
  EXPECT_FALSE(store.assets()[0]->favorite);
}

TEST_F(LibraryStoreTest, TheSameErrorTwiceNotifiesOnce) {
  QSignalSpy changed(&store, &LibraryStore::errorChanged);
  store.setError(QStringLiteral("x"));
  store.setError(QStringLiteral("x"));
  EXPECT_EQ(changed.count(), 1);
}

// ---- Registration and order

TEST_F(LibraryStoreTest, RegisteringKeepsItemsSortedWhenAnImportedOneIsOlderThanTheNewest) {
  addAsset(QStringLiteral("new.png"));
  addAsset(QStringLiteral("oldest.png"), 100);
  const AssetRef between = addAsset(QStringLiteral("between.png"), 50);
  EXPECT_EQ(store.assets()[1], between);
  expectSorted();
}

TEST_F(LibraryStoreTest, ItemsOfOneDateStandInTheSameOrderWhenRegisteredAndWhenRead) {
  for (int index = 0; index < 5; ++index) addAsset(QStringLiteral("batch-%1.png").arg(index));
  expectSorted();
  QStringList registered;
  for (const AssetRef& asset : store.assets()) registered += asset->filename();
  EXPECT_EQ(registered.first(), QStringLiteral("batch-4.png"));
  reopen();
  QStringList read;
  for (const AssetRef& asset : store.assets()) read += asset->filename();
  EXPECT_EQ(read, registered);
}

TEST_F(LibraryStoreTest, RandomRegistrationsGiveWhatAReloadGives) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int index = 0; index < 200; ++index)
    addAsset(QStringLiteral("item-%1.png").arg(index), static_cast<double>(random() % 20));
  expectSorted();
  const auto assets = store.assets();
  const auto rows = store.assetRows();
  store.reload(LibraryTables::all);
  EXPECT_EQ(store.assets(), assets);
  EXPECT_EQ(store.assetRows(), rows);
}

TEST_F(LibraryStoreTest, RegisteredRecordsAreJoinedLikeReadOnes) {
  const QUuid jobID = newUuid();
  const AssetRef parent = addAsset(QStringLiteral("parent.png"));
  const AssetRef child = store.context().insert(newAsset(QStringLiteral("Inbox/generated/child.png")));
  const GenerationRef generation = addGeneration(child->id, jobID);
  const RelationshipRef edge =
      store.context().insert(AssetRelationship(parent->id, child->id, RelationshipType::editedFrom));
  const ReferenceRef reference = store.context().insert(ReferenceAsset(generation->id, parent->id, 0));
  store.save(LibraryTables::none);
  store.registerRecords({{child}, {generation}, {edge}, {reference}});

  for (const bool fromDisk : {false, true}) {
    SCOPED_TRACE(fromDisk);
    if (fromDisk) store.reload(LibraryTables::all);
    EXPECT_EQ(store.generationOf(child->id), generation);
    EXPECT_EQ(store.generationsOf(jobID), std::vector{generation});
    EXPECT_EQ(store.outputs(jobID), std::vector{child});
    EXPECT_EQ(store.parentEdges(child->id), std::vector{edge});
    EXPECT_EQ(store.childEdges(parent->id), std::vector{edge});
    EXPECT_EQ(store.referencesOf(generation->id), std::vector{reference});
    EXPECT_EQ(store.assetRows()[*store.position(*child)].provider, QStringLiteral("fal.ai"));
  }
}

// ---- Joins over what is missing or damaged

TEST_F(LibraryStoreTest, AJobWhoseRequestDoesNotDecodeIsListedAndInNoComparison) {
  const QUuid comparison = newUuid();
  addJob(request(comparison, 0));
  GenerationJob damaged({}, request(comparison, 1), clock->now());
  damaged.requestData.chop(1);
  store.context().insert(damaged);
  store.save(LibraryTables::jobs);
  reopen();
  EXPECT_EQ(store.jobs().size(), 2u);
  EXPECT_EQ(store.comparisonJobs(comparison).size(), 1u);
  EXPECT_TRUE(store.error() == std::nullopt);
}

TEST_F(LibraryStoreTest, ComparisonJobsStandInTheOrderOfTheirRequests) {
  const QUuid comparison = newUuid();
  const JobRef second = addJob(request(comparison, 1));
  const JobRef first = addJob(request(comparison, 0));
  addJob(request());
  EXPECT_EQ(store.comparisonJobs(comparison), (std::vector{first, second}));
}

TEST_F(LibraryStoreTest, ACopyIsFoundByItsItemAndIsNoOutputOfItsJob) {
  const QUuid jobID = newUuid();
  const AssetRef fox = addAsset(QStringLiteral("fox.png"));
  const GenerationRef copy = addGeneration(fox->id, jobID, newUuid());
  store.save(LibraryTables::generations);
  EXPECT_EQ(store.generationOf(fox->id), copy);
  EXPECT_TRUE(store.generationsOf(jobID).empty());
}

TEST_F(LibraryStoreTest, JoinsPutUpWithMissingPartners) {
  const QUuid jobID = newUuid();
  const AssetRef fox = addAsset(QStringLiteral("fox.png"));
  const GenerationRef there = addGeneration(fox->id, jobID);
  const GenerationRef lost = addGeneration(newUuid(), jobID);
  store.context().insert(AssetRelationship(newUuid(), fox->id, RelationshipType::editedFrom));
  store.context().insert(ReferenceAsset(there->id, newUuid(), 0));
  store.context().insert(ReferenceAsset(newUuid(), fox->id, 0));
  store.save(LibraryTables::all);
  EXPECT_EQ(store.generationsOf(jobID), (std::vector{there, lost}));
  EXPECT_EQ(store.outputs(jobID), std::vector{fox});
  EXPECT_EQ(store.parentEdges(fox->id).size(), 1u);
  EXPECT_EQ(store.generationOf(newUuid()), nullptr);
  EXPECT_EQ(store.project(newUuid()), nullptr);
  EXPECT_FALSE(store.position(newAsset(QStringLiteral("x"))));
}

TEST_F(LibraryStoreTest, TheFirstGenerationOfAnItemStands) {
  const AssetRef fox = addAsset(QStringLiteral("fox.png"));
  const GenerationRef first = addGeneration(fox->id, newUuid());
  addGeneration(fox->id, newUuid());
  store.save(LibraryTables::generations);
  EXPECT_EQ(store.generationOf(fox->id), first);
}

TEST_F(LibraryStoreTest, ActiveJobsLeaveSalvagesOut) {
  const JobRef waiting = addJob(request(), jobStatus::queued);
  const JobRef salvaged = addJob(request(), jobStatus::generating);
  addJob(request(), jobStatus::complete);
  store.salvaging.insert(salvaged->id);
  EXPECT_EQ(store.activeJobs(), std::vector{waiting});
}

TEST_F(LibraryStoreTest, KnownChecksumsFollowEveryChange) {
  const AssetRef fox = addAsset(QStringLiteral("fox.png"));
  EXPECT_TRUE(store.knownChecksums().isEmpty());
  store.context().edit(fox).checksum = QStringLiteral("ab");
  store.save(LibraryTables::none);
  EXPECT_TRUE(store.knownChecksums().contains(QStringLiteral("ab")));
  Asset second = newAsset(QStringLiteral("Inbox/b.png"));
  second.checksum = QStringLiteral("cd");
  const AssetRef registered = store.context().insert(second);
  store.save(LibraryTables::none);
  store.registerRecords({{registered}, {}, {}, {}});
  EXPECT_EQ(store.knownChecksums().size(), 2);
}

// ---- Rows

TEST_F(LibraryStoreTest, ARowTellsWhatFiltersReadOfAnItem) {
  Asset imported = newAsset(QStringLiteral("Inbox/imported/old.png"), 1000);
  imported.importedAt = clock->now();
  imported.mediaType = QStringLiteral("hologram");
  imported.rating = 4;
  const AssetRef asset = store.context().insert(imported);
  Generation recovered;
  recovered.id = newUuid();
  recovered.assetID = asset->id;
  recovered.status = QStringLiteral("imported");
  recovered.estimatedCost = 0.05;
  store.context().insert(recovered);
  store.save(LibraryTables::all);
  const AssetRow& row = store.assetRows()[0];
  EXPECT_EQ(row.mediaType, QStringLiteral("image"));
  EXPECT_EQ(row.recentDate, clock->now());
  EXPECT_EQ(row.createdAt, clock->now() - 1000.0);
  EXPECT_EQ(row.generatedAt, std::nullopt);
  EXPECT_EQ(row.credits, 5);
  EXPECT_EQ(row.rating, 4);
  EXPECT_EQ(row.name, QStringLiteral("old.png"));
}

// ---- Jobs whose fields could not be saved

TEST_F(LibraryStoreTest, UnsavedJobFieldsOutliveTheRollbackOfAnotherOperation) {
  const JobRef job = addJob(request());
  const AssetRef fox = addAsset(QStringLiteral("fox.png"));
  failWrites("UPDATE", "GenerationJob");
  GenerationJob& running = store.context().edit(job);
  running.status = jobStatus::failed;
  running.remoteHandleData = QByteArrayLiteral("{\"requestID\":\"r\"}");
  EXPECT_THROW(store.save(LibraryTables::none), SorvanError);
  store.keepUnsaved(job);
  EXPECT_TRUE(store.hasUnsavedMetadata());

  failWrites("UPDATE", "Asset");
  store.context().edit(fox).favorite = true;
  EXPECT_THROW(store.save(LibraryTables::none), SorvanError);
  store.failOperation(std::make_exception_ptr(SorvanError(QStringLiteral("no"))));
  EXPECT_FALSE(fox->favorite);
  EXPECT_EQ(job->status, jobStatus::failed);
  EXPECT_EQ(job->remoteHandleData, QByteArrayLiteral("{\"requestID\":\"r\"}"));
  EXPECT_TRUE(store.hasUnsavedMetadata());

  allowWrites("UPDATE", "GenerationJob");
  allowWrites("UPDATE", "Asset");
  ASSERT_TRUE(store.canRetryMetadataSave());
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
  store.close();
  openWorkspace(store, root(), Remember::no);
  EXPECT_EQ(store.jobs()[0]->status, jobStatus::failed);
  EXPECT_TRUE(store.jobs()[0]->remoteHandleData.has_value());
}

TEST_F(LibraryStoreTest, TryingAgainWhileTheDiskIsStillFullSaysSoAndKeepsTheJob) {
  const JobRef job = addJob(request());
  failWrites("UPDATE", "GenerationJob");
  store.context().edit(job).detail = QStringLiteral("paid");
  EXPECT_THROW(store.save(LibraryTables::none), SorvanError);
  store.keepUnsaved(job);
  store.retryMetadataSave();
  EXPECT_TRUE(store.hasUnsavedMetadata());
  EXPECT_TRUE(store.error().has_value());
  EXPECT_EQ(job->detail, QStringLiteral("paid"));
}

TEST_F(LibraryStoreTest, TryingAgainDuringABackupDoesNothing) {
  const JobRef job = addJob(request());
  store.keepUnsaved(job);
  store.setBackingUp(true);
  store.retryMetadataSave();
  EXPECT_EQ(store.unsavedJobs().size(), 1);
  EXPECT_EQ(store.error(), std::nullopt);
}

// ---- Sidecars and long operations

TEST_F(LibraryStoreTest, ARecordedChargeMovesTheRevisionAndAFailedOneIsUnsaved) {
  const auto revision = store.revision();
  ExtraCharge charge;
  charge.id = newUuid();
  store.record(charge);
  EXPECT_EQ(store.revision(), revision + 1);
  EXPECT_FALSE(store.hasUnsavedMetadata());

  ASSERT_EQ(::unlink(QFile::encodeName(files().lockFile())), 0);
  charge.id = newUuid();
  store.record(charge);
  EXPECT_TRUE(store.hasUnsavedMetadata()) << "the folder is gone, so nothing was written";
  EXPECT_TRUE(store.error().has_value());
}

TEST_F(LibraryStoreTest, AFolderThatWasTakenAwayIsNotWrittenTo) {
  EXPECT_NO_THROW(store.requireRoomForResult());
  ASSERT_EQ(::unlink(QFile::encodeName(files().lockFile())), 0);
  EXPECT_EQ(messageOf([&] { store.requireWorkspaceInPlace(); }), "The workspace folder isn’t available.");
  EXPECT_EQ(messageOf([&] { store.requireRoomForResult(); }), "The workspace folder isn’t available.");
}

TEST_F(LibraryStoreTest, ALocalOperationIsCountedForAsLongAsItsGuardLives) {
  EXPECT_FALSE(store.isBusy());
  {
    LocalOperation first = store.beginLocalOperation();
    const LocalOperation moved = std::move(first);
    const LocalOperation second = store.beginLocalOperation();
    EXPECT_EQ(store.localOperations(), 2);
    EXPECT_TRUE(store.isBusy());
  }
  EXPECT_EQ(store.localOperations(), 0);
}

TEST_F(LibraryStoreTest, ALocalOperationMayOutliveTheStore) {
  std::optional<LocalOperation> guard;
  {
    const auto other = makeStore();
    guard.emplace(other->beginLocalOperation());
  }
  guard.reset();
  EXPECT_FALSE(guard.has_value());
}

TEST_F(LibraryStoreTest, WithoutAWorkspaceOperationsSayThatThereIsNone) {
  store.close();
  EXPECT_FALSE(store.hasWorkspace());
  EXPECT_TRUE(store.assets().empty());
  EXPECT_EQ(messageOf([&] { store.save(LibraryTables::none); }), "Workspace or project unavailable.");
  EXPECT_EQ(messageOf([&] { store.files(); }), "Workspace or project unavailable.");
  EXPECT_NO_THROW(store.reload(LibraryTables::all));
  EXPECT_EQ(store.asset(newUuid()), nullptr);
}

TEST(NewestFirstTest, ReadsFromTheNewestAndInsertsByThatCount) {
  NewestFirst<int> numbers(std::vector{1, 2, 4});
  numbers.insert(1, 3);
  numbers.insert(0, 5);
  numbers.insert(5, 0);
  EXPECT_EQ(std::vector<int>(numbers.begin(), numbers.end()), (std::vector{5, 4, 3, 2, 1, 0}));
  EXPECT_EQ(numbers[0], 5);
  EXPECT_EQ(numbers.front(), 5);
  EXPECT_EQ(numbers.back(), 0);
}

}  // namespace
}  // namespace sorvan::core
