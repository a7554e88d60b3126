#include "core/history.h"

#include <QSignalSpy>

#include "core/small_edits.h"
#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

constexpr auto undo = HistoryDirection::undo;
constexpr auto redo = HistoryDirection::redo;

struct HistoryTest : test::LibraryFixture {
  AssetRef fox;
  AssetRef hare;
  ProjectRef project;

  HistoryTest() {
    open();
    fox = addAsset(QStringLiteral("red-fox-001.png"));
    hare = addAsset(QStringLiteral("hare-001.png"), 10);
    project = addProject(QStringLiteral("Sea"));
    store.history().clear();
  }
  ProjectRef addProject(const QString& name) {
    const QString folderName = store.files().createProjectFolder(name);
    const ProjectRef added = store.context().insert(Project(name, folderName, clock->now()));
    store.save(LibraryTables::projects);
    return added;
  }
  std::size_t steps() const { return store.history().undo().size(); }
  QString nextName(HistoryDirection direction) const {
    const auto edit = store.history().next(direction);
    return edit ? edit->name : QString();
  }
  QByteArray contentOf(const Asset& asset) const { return folder.read(QStringLiteral("work/") + asset.localFilePath); }
  QStringList media() const { return folder.files().filter(QStringLiteral(".png")); }
  std::string error() const { return text(store.error().value_or(QString())); }
  void rate(int stars) { setRating(store, fox, stars); }
};

TEST_F(HistoryTest, UndoTakesAnEditBackOnDiskAndRedoDoesItAgain) {
  rate(4);
  EXPECT_EQ(nextName(undo), QStringLiteral("Change Rating"));
  applyHistory(store, undo);
  EXPECT_EQ(fox->rating, std::nullopt);
  EXPECT_EQ(store.assetRows()[0].rating, 0);
  EXPECT_EQ(nextName(redo), QStringLiteral("Change Rating"));
  EXPECT_EQ(steps(), 0u);
  applyHistory(store, redo);
  EXPECT_EQ(fox->rating, 4);
  EXPECT_EQ(store.assetRows()[0].rating, 4);
  applyHistory(store, undo);
  const QUuid id = fox->id;
  reopen();
  EXPECT_EQ(store.asset(id)->rating, std::nullopt);
}

TEST_F(HistoryTest, StepsAreTakenBackLastFirst) {
  rate(1);
  setFavorite(store, {fox, hare}, true);
  setNotes(store, fox, QStringLiteral("nice"));
  applyHistory(store, undo);
  EXPECT_EQ(fox->notes, std::nullopt);
  EXPECT_TRUE(fox->favorite && hare->favorite);
  applyHistory(store, undo);
  EXPECT_FALSE(fox->favorite || hare->favorite);
  EXPECT_EQ(fox->rating, 1);
}

TEST_F(HistoryTest, EachEditCapturesOnlyTheItemsItTouches) {
  for (int index = 0; index < 20; ++index) addAsset(QStringLiteral("other-%1.png").arg(index));
  const auto compared = [&] { return store.history().undo().back()->compared; };
  toggleFavorite(store, fox);
  EXPECT_EQ(compared(), 1);
  setRating(store, {fox, hare}, 3);
  EXPECT_EQ(compared(), 2);
  setNotes(store, fox, QStringLiteral("nice"));
  EXPECT_EQ(compared(), 1);
  setStatus(store, fox, AssetStatus::shortlist);
  EXPECT_EQ(compared(), 1);
  rename(store, fox, QStringLiteral("Blue Fox"));
  EXPECT_EQ(compared(), 1);
  move(store, {fox, hare}, project->id);
  EXPECT_EQ(compared(), 2);
  EXPECT_EQ(steps(), 6u);
}

TEST_F(HistoryTest, AnEditThatChangesNothingIsNoStepAndLeavesRedo) {
  rate(4);
  applyHistory(store, undo);
  setRating(store, fox, 0);
  EXPECT_EQ(steps(), 0u);
  EXPECT_EQ(nextName(redo), QStringLiteral("Change Rating"));
}

TEST_F(HistoryTest, ANewEditDropsWhatCouldBeRedone) {
  rate(4);
  applyHistory(store, undo);
  toggleFavorite(store, fox);
  EXPECT_FALSE(canTake(store, redo));
}

TEST_F(HistoryTest, NestedEditsAreOneStep) {
  undoable(store, QStringLiteral("Outer"), {{fox, hare}, {}}, [&] {
    toggleFavorite(store, fox);
    setRating(store, hare, 2);
  });
  ASSERT_EQ(steps(), 1u);
  EXPECT_EQ(nextName(undo), QStringLiteral("Outer"));
  EXPECT_EQ(store.history().depth(), 0);
  applyHistory(store, undo);
  EXPECT_FALSE(fox->favorite);
  EXPECT_EQ(hare->rating, std::nullopt);
}

TEST_F(HistoryTest, WhatAnInnerEditSavedBeforeItsOuterOneFailedIsNoStep) {
  EXPECT_EQ(messageOf([&] {
              undoable(store, QStringLiteral("Outer"), {{fox}, {}}, [&] { throw SorvanError(QStringLiteral("no")); });
            }),
            "no");
  EXPECT_EQ(steps(), 0u);
  EXPECT_EQ(store.history().depth(), 0);
}

TEST_F(HistoryTest, AnInnerFailureThatTheOuterEditCatchesLeavesTheRestAsOneStep) {
  undoable(store, QStringLiteral("Outer"), {{fox}, {}}, [&] {
    toggleFavorite(store, fox);
    EXPECT_EQ(messageOf([&] {
                undoable(store, QStringLiteral("Inner"), {{fox}, {}}, [&] {
                  store.context().edit(fox).rating = 5;
                  throw SorvanError(QStringLiteral("no"));
                });
              }),
              "no");
  });
  ASSERT_EQ(steps(), 1u);
  EXPECT_TRUE(fox->favorite);
  EXPECT_EQ(fox->rating, std::nullopt);
}

TEST_F(HistoryTest, AFailedEditIsNoStep) {
  failWrites("UPDATE", "Asset");
  rate(3);
  EXPECT_EQ(steps(), 0u);
}

TEST_F(HistoryTest, TheHundredAndFirstStepDropsTheFirst) {
  setNotes(store, fox, QStringLiteral("the first"));
  for (int index = 0; index < 100; ++index) rate(1 + index % 2);
  ASSERT_EQ(steps(), 100u);
  EXPECT_EQ(store.history().undo().front()->name, QStringLiteral("Change Rating"));
}

TEST_F(HistoryTest, AStepOverTheLimitLeavesNothingToTakeBack) {
  rate(1);
  setNotes(store, fox, QString(20'000'000, u'x'));
  EXPECT_EQ(steps(), 0u);
  EXPECT_EQ(fox->notes->size(), 20'000'000);
}

TEST_F(HistoryTest, TheOldestStepsGoWhenTheSumPassesTheLimit) {
  rate(1);
  for (int index = 0; index < 3; ++index) setNotes(store, fox, QString(3'000'000, QChar(u'a' + index)));
  ASSERT_EQ(steps(), 4u);
  rate(2);
  ASSERT_EQ(steps(), 5u);
  setNotes(store, fox, QStringLiteral("short"));
  // 3 + 3+3 + 3+3 + 3 million bytes are over the limit, so that the oldest note went with the rating before it.
  EXPECT_EQ(steps(), 4u);
  for (int index = 0; index < 4; ++index) applyHistory(store, undo);
  EXPECT_EQ(fox->notes, QString(3'000'000, u'a'));
}

TEST_F(HistoryTest, UndoOfAMoveTakesFileAndThumbnailBack) {
  const QString thumbnail = QStringLiteral("Inbox/thumbnails/%1.jpg").arg(uuidText(fox->id));
  folder.write(QStringLiteral("work/") + thumbnail, "thumb");
  store.context().edit(fox).thumbnailFilePath = thumbnail;
  store.save(LibraryTables::none);
  move(store, {fox}, project->id);
  applyHistory(store, undo);
  EXPECT_EQ(store.error(), std::nullopt);
  EXPECT_EQ(fox->projectID, std::nullopt);
  EXPECT_EQ(fox->localFilePath, QStringLiteral("Inbox/generated/red-fox-001.png"));
  EXPECT_EQ(fox->thumbnailFilePath, thumbnail);
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  EXPECT_EQ(folder.read(QStringLiteral("work/") + thumbnail), "thumb");
  EXPECT_EQ(media().size(), 2);
  applyHistory(store, redo);
  EXPECT_EQ(fox->projectID, project->id);
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  EXPECT_EQ(media().size(), 2);
}

TEST_F(HistoryTest, UndoOfARenameGivesTheOldNameBack) {
  rename(store, fox, QStringLiteral("Blue Fox"));
  applyHistory(store, undo);
  EXPECT_EQ(fox->filename(), QStringLiteral("red-fox-001.png"));
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  EXPECT_EQ(media().size(), 2);
}

TEST_F(HistoryTest, AStepWhoseDestinationIsOccupiedIsRefusedAndNothingMoves) {
  move(store, {fox, hare}, project->id);
  folder.write(QStringLiteral("work/Inbox/generated/hare-001.png"), "another");
  applyHistory(store, undo);
  EXPECT_EQ(error(), "A file needed for Undo or Redo is missing, or its destination is occupied.");
  EXPECT_EQ(fox->projectID, project->id);
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  EXPECT_EQ(contentOf(*hare), "hare-001.png");
  EXPECT_EQ(folder.read(QStringLiteral("work/Inbox/generated/hare-001.png")), "another");
  EXPECT_EQ(steps(), 1u);
  EXPECT_FALSE(canTake(store, redo));
}

TEST_F(HistoryTest, AStepWhoseFileIsGoneIsRefused) {
  rename(store, fox, QStringLiteral("Blue Fox"));
  ASSERT_TRUE(QFile::remove(store.fileOf(*fox)));
  applyHistory(store, undo);
  EXPECT_EQ(error(), "A file needed for Undo or Redo is missing, or its destination is occupied.");
  EXPECT_EQ(fox->filename(), QStringLiteral("Blue-Fox-001.png"));
}

TEST_F(HistoryTest, AMissingThumbnailStopsNoStepAndIsDrawnAgain) {
  const QString thumbnail = QStringLiteral("Inbox/thumbnails/%1.jpg").arg(uuidText(fox->id));
  folder.write(QStringLiteral("work/") + thumbnail, "thumb");
  store.context().edit(fox).thumbnailFilePath = thumbnail;
  store.save(LibraryTables::none);
  move(store, {fox}, project->id);
  ASSERT_TRUE(QFile::remove(files().absolute(*fox->thumbnailFilePath)));
  applyHistory(store, undo);
  EXPECT_EQ(store.error(), std::nullopt);
  EXPECT_EQ(fox->projectID, std::nullopt);
  EXPECT_EQ(fox->thumbnailFilePath, std::nullopt);
}

TEST_F(HistoryTest, AnUndoThatFailsAtAnyStepOfTheDiskLeavesFilesRecordsAndHistory) {
  move(store, {fox, hare}, project->id);
  const QString moved = fox->localFilePath;
  int diskSteps = 0;
  {
    test::FailingLayer counting(test::noFailingStep);
    const FileLayerOverride override(counting);
    applyHistory(store, undo);
    diskSteps = counting.steps();
  }
  applyHistory(store, redo);
  ASSERT_GE(diskSteps, 2);
  for (int step = 1; step <= diskSteps; ++step) {
    SCOPED_TRACE(step);
    store.setError(std::nullopt);
    {
      test::FailingLayer full(step);
      const FileLayerOverride override(full);
      applyHistory(store, undo);
    }
    for (const AssetRef& asset : {fox, hare}) EXPECT_FALSE(contentOf(*asset).isEmpty());
    if (store.error()) {
      EXPECT_EQ(fox->localFilePath, moved);
      EXPECT_TRUE(canTake(store, undo));
    } else {
      applyHistory(store, redo);
    }
  }
}

TEST_F(HistoryTest, AnUndoWhoseSaveFailsTakesTheNewNamesAwayAgain) {
  move(store, {fox}, project->id);
  const QStringList before = media();
  failWrites("UPDATE", "Asset");
  applyHistory(store, undo);
  EXPECT_NE(error().find("disk is full"), std::string::npos);
  EXPECT_EQ(fox->projectID, project->id);
  EXPECT_EQ(media(), before);
  EXPECT_EQ(steps(), 1u);
  allowWrites("UPDATE", "Asset");
  applyHistory(store, undo);
  EXPECT_EQ(fox->projectID, std::nullopt);
}

TEST_F(HistoryTest, AddedItemsGoToTrashOnUndoAndTheirFilesStay) {
  rememberAddedAssets(store, {fox, hare}, QStringLiteral("Import Media"));
  clock->advance(std::chrono::seconds(5));
  applyHistory(store, undo);
  EXPECT_TRUE(fox->isTrashed() && hare->isTrashed());
  EXPECT_TRUE(store.assetRows()[0].trashed);
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  applyHistory(store, redo);
  EXPECT_FALSE(fox->isTrashed() || hare->isTrashed());
}

TEST_F(HistoryTest, AddingNoItemsIsNoStep) {
  rememberAddedAssets(store, {}, QStringLiteral("Import Media"));
  EXPECT_EQ(steps(), 0u);
}

TEST_F(HistoryTest, UndoKeepsWhatSomethingElseWroteMeanwhile) {
  rate(4);
  store.context().edit(fox).checksum = QStringLiteral("abc");
  store.save(LibraryTables::none);
  applyHistory(store, undo);
  EXPECT_EQ(fox->rating, std::nullopt);
  EXPECT_EQ(fox->checksum, QStringLiteral("abc"));
}

TEST_F(HistoryTest, CreatingAProjectIsTakenBackAndItsFolderStays) {
  ProjectRef made;
  undoable(store, QStringLiteral("New Project"), {{}, LibraryTables::projects},
           [&] { made = addProject(QStringLiteral("Hills")); });
  applyHistory(store, undo);
  EXPECT_EQ(store.project(made->id), nullptr);
  EXPECT_EQ(store.projects().size(), 1u);
  EXPECT_TRUE(QFileInfo(files().absolute(made->rootFolder)).isDir());
  applyHistory(store, redo);
  ASSERT_NE(store.project(made->id), nullptr);
  EXPECT_EQ(store.project(made->id)->name, QStringLiteral("Hills"));
  EXPECT_EQ(store.project(made->id)->rootFolder, made->rootFolder);
}

TEST_F(HistoryTest, AProjectThatHoldsResultsByNowIsNotTakenBack) {
  ProjectRef made;
  undoable(store, QStringLiteral("New Project"), {{}, LibraryTables::projects},
           [&] { made = addProject(QStringLiteral("Hills")); });
  store.context().edit(fox).projectID = made->id;
  store.save(LibraryTables::none);
  applyHistory(store, undo);
  EXPECT_NE(store.project(made->id), nullptr);
  EXPECT_TRUE(store.error().has_value());
}

TEST_F(HistoryTest, ARemovedSavedReferenceComesBackWithItsOldId) {
  SavedReference reference;
  reference.id = newUuid();
  reference.name = QStringLiteral("Mira");
  reference.assetIDs = {fox->id, hare->id};
  reference.createdAt = reference.updatedAt = Instant{700'000'000.123456};
  const SavedReferenceRef saved = store.context().insert(reference);
  store.save(LibraryTables::savedReferences);
  undoable(store, QStringLiteral("Delete Reference"), {{}, LibraryTables::savedReferences}, [&] {
    store.context().remove(saved);
    store.save(LibraryTables::savedReferences);
  });
  EXPECT_TRUE(store.savedReferences().empty());
  applyHistory(store, undo);
  ASSERT_EQ(store.savedReferences().size(), 1u);
  EXPECT_TRUE(sameFields(*store.savedReferences().front(), reference));
}

TEST_F(HistoryTest, SheetsAndSequencesComeBackWholeToTheLastBit) {
  ContactSheet sheet(project->id, QStringLiteral("Foxes"), newUuid(), {hare->id, fox->id}, Instant{1.0 / 3});
  sheet.excludedAssetIDs = {newUuid()};
  ClipSequence sequence({}, QStringLiteral("Cut"), QByteArrayLiteral("[1,\"\\u00e9\"]"), Instant{1e9 / 7});
  sequence.clipVolume = 0.1;
  sequence.storyboardData = QByteArray("\0\xff{}", 4);
  const ContactSheetRef sheetRef = store.context().insert(sheet);
  const SequenceRef sequenceRef = store.context().insert(sequence);
  const LibraryTables both = LibraryTables::contactSheets | LibraryTables::sequences;
  store.save(both);
  undoable(store, QStringLiteral("Delete"), {{}, both}, [&] {
    store.context().remove(sheetRef);
    store.context().remove(sequenceRef);
    store.save(both);
  });
  applyHistory(store, undo);
  ASSERT_EQ(store.contactSheets().size(), 1u);
  ASSERT_EQ(store.sequences().size(), 1u);
  EXPECT_TRUE(sameFields(*store.contactSheets().front(), sheet));
  EXPECT_TRUE(sameFields(*store.sequences().front(), sequence));
}

TEST_F(HistoryTest, PatchesStandInTheOrderOfKindAndId) {
  undoable(store, QStringLiteral("Edit"), {{fox, hare}, LibraryTables::projects}, [&] {
    store.context().edit(project).name = QStringLiteral("Shore");
    for (const AssetRef& asset : {fox, hare}) store.context().edit(asset).favorite = true;
    store.save(LibraryTables::projects);
  });
  const auto& patches = store.history().undo().back()->patches;
  ASSERT_EQ(patches.size(), 3u);
  EXPECT_EQ(patches[0].before->kind, QStringLiteral("Asset"));
  EXPECT_LT(patches[0].before->id, patches[1].before->id);
  EXPECT_EQ(patches[2].before->kind, QStringLiteral("Project"));
  EXPECT_EQ(patches[2].before->value("name", QString()), QStringLiteral("Sea"));
  EXPECT_EQ(patches[2].after->value("name", QString()), QStringLiteral("Shore"));
  EXPECT_EQ(patches[2].after->value("notes", QStringLiteral("absent")), QStringLiteral("absent"));
}

TEST_F(HistoryTest, WaitsForJobsImportsExportsBackupsAndLocalOperations) {
  rate(4);
  EXPECT_TRUE(canTake(store, undo));
  const JobRef job = addJob({});
  EXPECT_FALSE(canTake(store, undo));
  applyHistory(store, undo);
  EXPECT_EQ(fox->rating, 4);
  store.context().edit(job).status = jobStatus::complete;
  store.save(LibraryTables::jobs);
  EXPECT_TRUE(canTake(store, undo));
  store.salvaging.insert(job->id);
  EXPECT_FALSE(canTake(store, undo));
  store.salvaging.clear();
  store.setImporting(true);
  EXPECT_FALSE(canTake(store, undo));
  store.setImporting(false);
  store.setExporting(true);
  EXPECT_FALSE(canTake(store, undo));
  store.setExporting(false);
  store.setBackingUp(true);
  EXPECT_FALSE(canTake(store, undo));
  store.setBackingUp(false);
  {
    const LocalOperation operation = store.beginLocalOperation();
    EXPECT_FALSE(canTake(store, undo));
  }
  EXPECT_TRUE(canTake(store, undo));
}

TEST_F(HistoryTest, IsEmptyAfterAnotherWorkspaceOpened) {
  rate(4);
  QSignalSpy changes(&store.history(), &LibraryHistory::changed);
  reopen();
  EXPECT_FALSE(canTake(store, undo));
  EXPECT_EQ(changes.count(), 1);
}

struct ListedFolders final : WatchedProjects {
  ProjectsByID projects;
  ProjectsByID snapshot() const override { return projects; }
  void setProject(const QUuid& folder, const std::optional<QUuid>& id) override { projects[folder] = id; }
};

TEST_F(HistoryTest, WatchedFoldersAndChargesGoBackToTheirProject) {
  const auto watched = std::make_shared<ListedFolders>();
  store.watchedProjects = watched;
  const QUuid watchedFolder = newUuid();
  const QUuid otherFolder = newUuid();
  watched->projects = {{watchedFolder, project->id}, {otherFolder, std::nullopt}};
  ExtraCharge charge;
  charge.id = newUuid();
  charge.projectID = project->id;
  store.extraCharges().add({charge});
  undoable(store, QStringLiteral("Delete Project"), {{}, LibraryTables::projects}, [&] {
    store.context().remove(project);
    store.save(LibraryTables::projects);
    watched->setProject(watchedFolder, std::nullopt);
    store.extraCharges().removeProject(project->id);
  });
  EXPECT_EQ(store.history().undo().back()->watchedBefore.size(), 1);
  applyHistory(store, undo);
  EXPECT_EQ(watched->projects[watchedFolder], project->id);
  EXPECT_EQ(store.extraCharges().entries().front().projectID, project->id);
  applyHistory(store, redo);
  EXPECT_EQ(watched->projects[watchedFolder], std::nullopt);
  EXPECT_EQ(store.extraCharges().entries().front().projectID, std::nullopt);
}

TEST_F(HistoryTest, ARecordOfWhichOnlyAPartIsKnownMustBeThere) {
  EXPECT_EQ(messageOf([&] {
              applyRecord(store.context(), {QStringLiteral("Asset"), newUuid(), {{"rating", QByteArrayLiteral("3")}}});
            }),
            "The history item is no longer available.");
  EXPECT_EQ(messageOf([&] {
              applyRecord(store.context(), {QStringLiteral("Generation"), newUuid(), {}});
            }),
            "Unknown undo record.");
  EXPECT_EQ(messageOf([&] {
              removeRecord(store.context(), {QStringLiteral("Other"), newUuid(), {}});
            }),
            "Unknown undo record.");
  EXPECT_FALSE(store.context().hasChanges());
}

TEST_F(HistoryTest, TheEstimatesOfAnEditAreNeverUnderWhatItAdds) {
  std::vector<AssetRef> assets{fox, hare};
  const auto added = [&] { return store.history().undo().back()->bytes(); };
  setRating(store, assets, 5);
  EXPECT_LE(added(), historyBytesOfMarks(2));
  setFavorite(store, assets, true);
  EXPECT_LE(added(), historyBytesOfMarks(2));
  setStatus(store, fox, AssetStatus::shortlist);
  EXPECT_LE(added(), historyBytesOfMarks(1));
  const qint64 estimate = historyBytesOfMoves(assets);
  move(store, assets, project->id);
  EXPECT_LE(added(), estimate);
}

}  // namespace
}  // namespace sorvan::core
