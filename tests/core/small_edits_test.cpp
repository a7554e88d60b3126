#include "core/small_edits.h"

#include "core/history.h"
#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

struct SmallEditsTest : test::LibraryFixture {
  AssetRef fox;
  ProjectRef project;

  SmallEditsTest() {
    open();
    fox = addAsset(QStringLiteral("red-fox-001.png"));
    const QString folderName = store.files().createProjectFolder(QStringLiteral("Sea"));
    project = store.context().insert(Project(QStringLiteral("Sea"), folderName, clock->now()));
    store.save(LibraryTables::projects);
  }
  QByteArray contentOf(const Asset& asset) const { return folder.read(QStringLiteral("work/") + asset.localFilePath); }
  QStringList media() const { return folder.files().filter(QStringLiteral(".png")); }
  AssetRef readAgain() {
    reopen();
    return store.asset(fox->id);
  }
};

TEST_F(SmallEditsTest, ChangeTheRecordTheRowAndTheFile) {
  toggleFavorite(store, fox);
  setRating(store, fox, 5);
  setNotes(store, fox, QStringLiteral("nice"));
  setStatus(store, fox, AssetStatus::approved);
  EXPECT_TRUE(store.assetRows()[0].favorite);
  EXPECT_EQ(store.assetRows()[0].rating, 5);
  const AssetRef read = readAgain();
  EXPECT_TRUE(read->favorite);
  EXPECT_EQ(read->rating, 5);
  EXPECT_EQ(read->notes, QStringLiteral("nice"));
  EXPECT_EQ(read->status(), AssetStatus::approved);
}

TEST_F(SmallEditsTest, ARatingOfNoneOrZeroClearsAndOtherNumbersAreIgnored) {
  setRating(store, fox, 3);
  setRating(store, fox, 6);
  setRating(store, fox, -1);
  EXPECT_EQ(fox->rating, 3);
  setRating(store, fox, 0);
  EXPECT_EQ(fox->rating, std::nullopt);
}

TEST_F(SmallEditsTest, AFailedSaveIsRolledBackAndShown) {
  failWrites("UPDATE", "Asset");
  toggleFavorite(store, fox);
  EXPECT_FALSE(fox->favorite);
  EXPECT_FALSE(store.assetRows()[0].favorite);
  EXPECT_NE(text(store.error().value_or(QString())).find("disk is full"), std::string::npos);
}

TEST_F(SmallEditsTest, AreRefusedDuringABackup) {
  store.setBackingUp(true);
  toggleFavorite(store, fox);
  EXPECT_FALSE(fox->favorite);
  EXPECT_EQ(text(store.error().value_or(QString())),
            "Sorvan is backing up this workspace. Please wait until the backup finishes before making changes.");
}

TEST_F(SmallEditsTest, RenamingGivesTheFileANewNameInItsFolder) {
  rename(store, fox, QStringLiteral("Blue: Fox"));
  EXPECT_EQ(fox->localFilePath, QStringLiteral("Inbox/generated/Blue-Fox-001.png"));
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  EXPECT_EQ(media(), QStringList{QStringLiteral("work/Inbox/generated/Blue-Fox-001.png")});
  EXPECT_EQ(readAgain()->filename(), QStringLiteral("Blue-Fox-001.png"));
  EXPECT_EQ(store.assetRows()[0].name, QStringLiteral("Blue-Fox-001.png"));
}

TEST_F(SmallEditsTest, RenamingToTheNameThatTheFileHasIsNoStep) {
  rename(store, fox, QStringLiteral("red-fox-001"));
  rename(store, fox, QStringLiteral("red-fox"));
  EXPECT_EQ(fox->filename(), QStringLiteral("red-fox-001.png"));
  EXPECT_TRUE(store.history().undo().empty());
  EXPECT_FALSE(store.error().has_value());
}

TEST_F(SmallEditsTest, RenamingCountsAnewAndKeepsNumbersOfTheUsersOwn) {
  rename(store, fox, QStringLiteral("blue-fox-001"));
  EXPECT_EQ(fox->filename(), QStringLiteral("blue-fox-001.png"));
  rename(store, fox, QStringLiteral("shot-100"));
  EXPECT_EQ(fox->filename(), QStringLiteral("shot-100-001.png"));
}

TEST_F(SmallEditsTest, ABlankNameIsRefused) {
  rename(store, fox, QStringLiteral("  "));
  EXPECT_EQ(fox->filename(), QStringLiteral("red-fox-001.png"));
  EXPECT_TRUE(store.error().has_value());
}

TEST_F(SmallEditsTest, ARenameWhoseSaveFailsLeavesTheOldNameAndNoOther) {
  failWrites("UPDATE", "Asset");
  rename(store, fox, QStringLiteral("Blue Fox"));
  EXPECT_EQ(fox->filename(), QStringLiteral("red-fox-001.png"));
  EXPECT_EQ(media(), QStringList{QStringLiteral("work/Inbox/generated/red-fox-001.png")});
}

TEST_F(SmallEditsTest, MovingTakesFileAndThumbnailIntoTheProject) {
  const QString thumbnail = QStringLiteral("Inbox/thumbnails/x.jpg");
  folder.write(QStringLiteral("work/") + thumbnail, "thumb");
  store.context().edit(fox).thumbnailFilePath = thumbnail;
  store.save(LibraryTables::none);

  move(store, {fox}, project->id);
  EXPECT_EQ(store.error(), std::nullopt);
  const AssetRef read = readAgain();
  EXPECT_EQ(read->projectID, project->id);
  EXPECT_EQ(read->localFilePath, project->rootFolder + QStringLiteral("/generated/red-fox-001.png"));
  EXPECT_EQ(contentOf(*read), "red-fox-001.png");
  EXPECT_EQ(read->thumbnailFilePath,
            project->rootFolder + QStringLiteral("/thumbnails/") + uuidText(fox->id) + QStringLiteral(".jpg"));
  EXPECT_EQ(folder.read(QStringLiteral("work/") + *read->thumbnailFilePath), "thumb");
  EXPECT_FALSE(QFileInfo::exists(files().absolute(thumbnail)));
  EXPECT_EQ(media().size(), 1);
}

TEST_F(SmallEditsTest, MovingCountsAnewWhereTheNameIsTaken) {
  folder.write(QStringLiteral("work/%1/generated/red-fox-001.png").arg(project->rootFolder), "other");
  move(store, {fox}, project->id);
  EXPECT_EQ(fox->filename(), QStringLiteral("red-fox-002.png"));
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
  move(store, {fox}, std::nullopt);
  EXPECT_EQ(fox->localFilePath, QStringLiteral("Inbox/generated/red-fox-001.png"));
}

TEST_F(SmallEditsTest, AMissingThumbnailIsDrawnAgainLaterAndStopsNoMove) {
  store.context().edit(fox).thumbnailFilePath = QStringLiteral("Inbox/thumbnails/none.jpg");
  store.save(LibraryTables::none);
  move(store, {fox}, project->id);
  EXPECT_EQ(fox->projectID, project->id);
  EXPECT_EQ(fox->thumbnailFilePath, std::nullopt);
}

TEST_F(SmallEditsTest, AReferenceOfAnActiveJobIsNotMoved) {
  GenerationRequest request;
  request.referenceIDs = {fox->id};
  addJob(request);
  move(store, {fox}, project->id);
  EXPECT_EQ(text(store.error().value_or(QString())),
            "One of these assets is a reference in an active generation. Wait for it to finish.");
  EXPECT_EQ(fox->projectID, std::nullopt);
}

TEST_F(SmallEditsTest, AMoveThatFailsAtAnyStepLeavesEveryItemWhereItWas) {
  const AssetRef hare = addAsset(QStringLiteral("hare-001.png"));
  int steps = 0;
  {
    test::FailingLayer counting(test::noFailingStep);
    const FileLayerOverride override(counting);
    move(store, {fox, hare}, project->id);
    steps = counting.steps();
    move(store, {fox, hare}, std::nullopt);
  }
  ASSERT_GE(steps, 4);
  for (int step = 1; step <= steps; ++step) {
    SCOPED_TRACE(step);
    store.setError(std::nullopt);
    {
      test::FailingLayer full(step);
      const FileLayerOverride override(full);
      move(store, {fox, hare}, project->id);
    }
    for (const AssetRef& asset : {fox, hare}) EXPECT_FALSE(contentOf(*asset).isEmpty());
    if (store.error()) {
      EXPECT_EQ(fox->projectID, std::nullopt);
      EXPECT_EQ(hare->projectID, std::nullopt);
    }
    move(store, {fox, hare}, std::nullopt);
    for (const AssetRef& asset : {fox, hare}) EXPECT_FALSE(contentOf(*asset).isEmpty());
  }
}

TEST_F(SmallEditsTest, AMoveWhoseSaveFailsTakesTheNewNamesAwayAgain) {
  failWrites("UPDATE", "Asset");
  move(store, {fox}, project->id);
  EXPECT_EQ(fox->projectID, std::nullopt);
  EXPECT_EQ(media(), QStringList{QStringLiteral("work/Inbox/generated/red-fox-001.png")});
  EXPECT_EQ(contentOf(*fox), "red-fox-001.png");
}

TEST_F(SmallEditsTest, AMoveToAProjectThatIsGoneIsRefused) {
  move(store, {fox}, newUuid());
  EXPECT_TRUE(store.error().has_value());
  EXPECT_EQ(media().size(), 1);
}

TEST_F(SmallEditsTest, AnUndoableEditThatThrowsIsRolledBackAndTheFailureGoesOn) {
  EXPECT_EQ(messageOf([&] {
              undoable(store, QStringLiteral("Edit"), {{}, LibraryTables::assets}, [&] {
                store.context().edit(fox).favorite = true;
                throw SorvanError(QStringLiteral("no"));
              });
            }),
            "no");
  EXPECT_FALSE(fox->favorite);
  EXPECT_EQ(undoable(store, QStringLiteral("Edit"), {}, [] { return 7; }), 7);
}

}  // namespace
}  // namespace sorvan::core
