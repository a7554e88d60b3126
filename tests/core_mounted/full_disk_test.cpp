// A disk that is really full: making, opening, upgrading and saving either work wholly or change nothing.
#include "core/small_edits.h"
#include "mounted_disk.h"
#include "old_workspace.h"

namespace sorvan::core {
namespace {

using platform::Database;
using platform::DatabaseOpening;
using test::messageOf;

constexpr qint64 page = 4096;
constexpr qint64 plenty = 8 << 20;
/// More pages than any of the operations needs; one that has not succeeded by then never will.
constexpr int mostPages = 1000;

struct OnAFullDisk : test::LibraryFixture {
  QString place(const test::MountedDisk& disk) const { return disk.path() + QStringLiteral("/work"); }
  std::string opening(const test::MountedDisk& disk) {
    return messageOf([&] { openWorkspace(store, place(disk), Remember::no); });
  }
  void makeOld(const test::MountedDisk& disk, int version) const {
    const WorkspaceFiles old(place(disk));
    old.prepare();
    Database database(old.database(), DatabaseOpening::ReadWrite);
    database.execute(test::schemaScript(version));
  }
};

TEST_F(OnAFullDisk, AFolderBecomesAWorkspaceOrNoneIsOpenAndLaterItDoes) {
  openWorkspace(store, root(), Remember::no);
  int failures = 0;
  for (int pages = 0;; ++pages) {
    SCOPED_TRACE(pages);
    ASSERT_LT(pages, mostPages);
    const test::MountedDisk disk(plenty);
    disk.leaveFree(pages * page);
    if (opening(disk).empty()) break;
    ++failures;
    ASSERT_EQ(store.workspaceRoot(), files().root()) << "the previous one stays open";
    disk.leaveFree(plenty);
    ASSERT_EQ(opening(disk), "");
    ASSERT_TRUE(store.assets().empty());
    openWorkspace(store, root(), Remember::no);
  }
  EXPECT_GT(failures, 10) << "the disk was never full";
  store.close();
}

TEST_F(OnAFullDisk, AnOldLibraryIsUpgradedWhollyOrKeepsItsFormAndEverySnapshotIsWhole) {
  for (const int form : {1, 6}) {
    const test::MountedDisk disk(plenty);
    makeOld(disk, form);
    const WorkspaceFiles old(place(disk));
    int failures = 0;
    for (int pages = 0;; ++pages) {
      SCOPED_TRACE(pages);
      ASSERT_LT(pages, mostPages);
      disk.leaveFree(pages * page);
      if (opening(disk).empty()) break;
      ++failures;
      ASSERT_FALSE(store.hasWorkspace());
      disk.leaveFree(plenty);
      Database database(old.database(), DatabaseOpening::ReadOnly);
      ASSERT_TRUE(database.integrityProblems().isEmpty());
      ASSERT_EQ(database.number("SELECT count(*) FROM Asset"), 3);
      ASSERT_TRUE(database.userVersion() == form || database.userVersion() == 7);
      for (const QString& name : QDir(old.backupsFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        Database copy(old.backupsFolder() + u'/' + name + QStringLiteral("/library.store"), DatabaseOpening::ReadOnly);
        ASSERT_EQ(copy.number("SELECT count(*) FROM Asset"), 3);
        ASSERT_TRUE(copy.quickProblems().isEmpty());
      }
    }
    EXPECT_GT(failures, 5) << "the disk was never full";
    EXPECT_EQ(store.assets().size(), 3u);
    store.close();
  }
}

TEST_F(OnAFullDisk, AWorkspaceWithCutOffJobsOpensAndKeepsThemInterruptedUntilTheyAreSaved) {
  const test::MountedDisk disk(plenty);
  openWorkspace(store, place(disk), Remember::no);
  for (int job = 0; job < 200; ++job) store.context().insert(GenerationJob({}, {}, clock->now()));
  store.save(LibraryTables::jobs);
  store.close();
  // Enough for the log to be made, and not for what it has to hold.
  disk.leaveFree(24 * page);
  ASSERT_EQ(opening(disk), "");
  EXPECT_TRUE(store.error().has_value());
  EXPECT_TRUE(store.hasUnsavedMetadata());
  EXPECT_TRUE(store.canRetryMetadataSave());
  EXPECT_TRUE(store.activeJobs().empty()) << "nothing waits to be started again";
  disk.leaveFree(plenty);
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
  store.close();
  Database database(WorkspaceFiles(place(disk)).database(), DatabaseOpening::ReadOnly);
  EXPECT_EQ(database.number("SELECT count(*) FROM GenerationJob WHERE status='failed' AND detail='Interrupted'"), 200);
}

TEST_F(OnAFullDisk, AnEditIsTakenBackAndANoteOfAChargeIsKeptUntilThereIsRoom) {
  const test::MountedDisk disk(plenty);
  openWorkspace(store, place(disk), Remember::no);
  const AssetRef fox = store.context().insert(newAsset(QStringLiteral("Inbox/generated/fox-001.png")));
  store.save(LibraryTables::all);
  disk.leaveFree(0);
  store.context().edit(fox).notes = QString(200'000, u'n');
  EXPECT_NE(messageOf([&] { store.save(LibraryTables::none); }), "");
  store.rollBack();
  EXPECT_EQ(fox->notes, std::nullopt);
  ExtraCharge note;
  note.id = newUuid();
  store.record(note);
  EXPECT_TRUE(store.extraCharges().contains(note.id));
  EXPECT_TRUE(store.hasUnsavedMetadata());
  EXPECT_NE(messageOf([&] { store.requireRoomForResult(); }).find("enough free space"), std::string::npos)
      << "nothing is bought that could not be kept";

  disk.leaveFree(plenty);
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
  toggleFavorite(store, fox);
  store.close();
  ASSERT_EQ(opening(disk), "");
  EXPECT_TRUE(store.extraCharges().contains(note.id));
  EXPECT_TRUE(store.assets()[0]->favorite);
}

}  // namespace
}  // namespace sorvan::core
