#include "core/migration.h"

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/record_context.h"
#include "failing_layer.h"
#include "old_workspace.h"

namespace sorvan::core {
namespace {

using platform::Database;
using platform::DatabaseOpening;
using test::messageOf;
using test::text;

const char* const couldNotSnapshot = "Could not back up the workspace before upgrading it.";
const char* const busy = "Workspace is busy. Close other Sorvan windows and try again; no migration was started.";
const char* const newerVersion = "This workspace was created by a newer version of Sorvan.";
const char* const cannotLock = "Cannot lock this workspace. Check its folder permissions.";

QUuid id(const char* text) { return uuidFromText(QLatin1StringView(text)); }

/// Name, type, nullability and default of each column of each table, sorted: what a database must have.
QStringList columnsOf(const QString& file) {
  Database database(file, DatabaseOpening::ReadOnly);
  QStringList found;
  for (const QString& table : database.tables())
    database
        .statement(
            "SELECT name || ' ' || type || ' ' || \"notnull\" || ' ' || ifnull(dflt_value, '-') "
            "FROM pragma_table_info(?1)")
        .bind(1, table)
        .forEach([&](const platform::Row& row) { found += table + u'.' + row.text(0); });
  found.sort();
  return found;
}

struct MigrationTest : test::OldWorkspaceFixture {};

// ---- Each earlier form

class EveryEarlierForm : public test::OldWorkspaceFixture, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Schemas, EveryEarlierForm, testing::Range(1, 7));

TEST_P(EveryEarlierForm, IsSnapshotAndThenHasEveryColumnOfTheNewestForm) {
  makeOld(GetParam());
  ASSERT_EQ(opening(), "");
  store.close();
  EXPECT_EQ(version(), 7);
  EXPECT_EQ(sidecar(QStringLiteral("schema-version")), "7");

  openWorkspace(store, folder / QStringLiteral("new"), Remember::no);
  store.close();
  EXPECT_EQ(columnsOf(files().database()), columnsOf(WorkspaceFiles(folder / QStringLiteral("new")).database()));

  ASSERT_EQ(snapshotFolders().size(), 1);
  EXPECT_TRUE(snapshotFolders()[0].startsWith(QStringLiteral("pre-v7-")));
  EXPECT_FALSE(uuidFromText(snapshotFolders()[0].mid(7)).isNull());
  EXPECT_EQ(QDir(QFileInfo(snapshot()).path()).entryList(QDir::Files), QStringList{QStringLiteral("library.store")});
}

TEST_P(EveryEarlierForm, SnapshotIsTheOldLibraryAndOpensByItself) {
  makeOld(GetParam());
  const QStringList before = columnsOf(files().database());
  ASSERT_EQ(opening(), "");
  EXPECT_EQ(versionOf(snapshot()), GetParam());
  EXPECT_EQ(columnsOf(snapshot()), before);
  Database copy(snapshot(), DatabaseOpening::ReadOnly);
  EXPECT_TRUE(copy.integrityProblems().isEmpty());
  EXPECT_EQ(copy.number("SELECT count(*) FROM Asset"), 3);
  EXPECT_EQ(copy.text("SELECT status FROM GenerationJob WHERE id LIKE '%3'"), QStringLiteral("generating"));
}

TEST_P(EveryEarlierForm, KeepsItsValuesAndReadsWithTheDefaultsOfANewRecord) {
  const int from = GetParam();
  makeOld(from);
  ASSERT_EQ(opening(), "");
  ASSERT_EQ(store.projects().size(), 1u);
  const ProjectRef project = store.projects()[0];
  EXPECT_EQ(project->name, QStringLiteral("Harbour’s edge"));
  EXPECT_EQ(project->createdAt, Instant{600000000.25});
  EXPECT_EQ(project->notes, QStringLiteral("It's windy"));
  EXPECT_EQ(project->archived, from >= 2);

  const AssetRef fox = store.asset(id("00000002-0000-4000-8000-000000000001"));
  ASSERT_TRUE(fox);
  EXPECT_EQ(fox->fileSize, 5'000'000'000);
  EXPECT_EQ(fox->rating, 5);
  EXPECT_TRUE(fox->favorite);
  EXPECT_EQ(fox->status(), from >= 2 ? AssetStatus::final : AssetStatus::draft);
  EXPECT_EQ(fox->checksum.has_value(), from >= 2);
  EXPECT_EQ(fox->sourceType(), AssetSourceType::generated);
  const AssetRef photo = store.asset(id("00000002-0000-4000-8000-000000000002"));
  EXPECT_EQ(photo->sourceType(), AssetSourceType::imported) << "told by its import date when no source is stored";

  EXPECT_EQ(store.savedReferences().size(), from >= 4 ? 1u : 0u);
  if (from >= 4) EXPECT_EQ(store.savedReferences()[0]->subject, from >= 5 ? QStringLiteral("a red fox") : QString());
  EXPECT_EQ(store.contactSheets().size(), from >= 3 ? 1u : 0u);
  EXPECT_TRUE(store.sequences().empty());
}

TEST_P(EveryEarlierForm, GetsTheRecipesOfItsJobsAndItsCutOffJobIsMarked) {
  makeOld(GetParam());
  ASSERT_EQ(opening(), "");
  const GenerationRef marked = store.generationOf(id("00000002-0000-4000-8000-000000000001"));
  ASSERT_TRUE(marked && marked->recipe());
  EXPECT_EQ(marked->recipe()->markup->at(0).note, QStringLiteral("a red lantern"));
  EXPECT_EQ(marked->seed, 9'007'199'254'740'993);
  const GenerationRef retired = store.generationOf(id("00000002-0000-4000-8000-000000000003"));
  ASSERT_TRUE(retired && retired->recipe());
  EXPECT_EQ(retired->recipe()->provider, ProviderID::openAI);

  const JobRef cut = store.job(id("00000006-0000-4000-8000-000000000003"));
  EXPECT_EQ(cut->status, jobStatus::failed);
  EXPECT_EQ(cut->detail, QStringLiteral("Interrupted"));
  EXPECT_EQ(cut->providerRequestID, QStringLiteral("r-7"));
  ASSERT_TRUE(cut->remoteHandleData);
  EXPECT_EQ(decodeHandle(*cut->remoteHandleData)->requestID, QStringLiteral("r-7"));
  EXPECT_EQ(store.job(id("00000006-0000-4000-8000-000000000001"))->saveOriginal, GetParam() >= 6);
}

TEST_P(EveryEarlierForm, IsUpgradedOnce) {
  makeOld(GetParam());
  open();
  reopen();
  EXPECT_EQ(snapshotFolders().size(), 1);
  EXPECT_EQ(store.assets().size(), 3u);
}

TEST_P(EveryEarlierForm, SurvivesADiskThatBecomesFullAnywhereOnTheWay) {
  makeOld(GetParam());
  ASSERT_NE(std::signal(SIGXFSZ, SIG_IGN), SIG_ERR);
  rlimit unlimited{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  int failures = 0;
  std::string failure;
  for (rlim_t limit = 0;; limit += 4096) {
    ASSERT_LT(limit, 4u << 20) << "it must succeed with enough room: " << failure;
    const rlimit narrow{limit, unlimited.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &narrow), 0);
    failure = opening();
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    if (failure.empty()) break;
    ++failures;
    ASSERT_FALSE(store.hasWorkspace());
    Database old(files().database(), DatabaseOpening::ReadOnly);
    ASSERT_TRUE(old.integrityProblems().isEmpty()) << limit;
    ASSERT_EQ(old.number("SELECT count(*) FROM Asset"), 3) << limit;
    const int form = old.userVersion();
    ASSERT_TRUE(form == GetParam() || form == 7) << limit;
    for (const QString& kept : snapshotFolders())
      ASSERT_TRUE(QFileInfo::exists(files().backupsFolder() + u'/' + kept + QStringLiteral("/library.store"))) << limit;
  }
  EXPECT_GT(failures, 3);
  store.close();
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(store.assets().size(), 3u);
}

// ---- The newest form

TEST_F(MigrationTest, TheFrozenScriptOfTheNewestFormIsWhatANewWorkspaceHas) {
  makeOld(7);
  openWorkspace(store, folder / QStringLiteral("new"), Remember::no);
  store.close();
  EXPECT_EQ(columnsOf(files().database()), columnsOf(WorkspaceFiles(folder / QStringLiteral("new")).database()));
}

TEST_F(MigrationTest, ACurrentWorkspaceAndANewOneGetNoSnapshot) {
  makeOld(7);
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(store.sequences().size(), 1u);
  EXPECT_EQ(store.sequences()[0]->clipVolume, 0.5);
  EXPECT_TRUE(snapshotFolders().isEmpty());
  openWorkspace(store, folder / QStringLiteral("new"), Remember::no);
  EXPECT_FALSE(QFileInfo::exists(store.files().backupsFolder()));
}

// ---- The marker

struct MarkerCase {
  const char* text;
  bool snapshot;
};
class MarkerBesideACurrentDatabase : public test::OldWorkspaceFixture,
                                     public testing::WithParamInterface<MarkerCase> {};
INSTANTIATE_TEST_SUITE_P(Texts, MarkerBesideACurrentDatabase,
                         testing::Values(MarkerCase{"7", false}, MarkerCase{"7\n", false}, MarkerCase{" 7 \r\n", false},
                                         MarkerCase{"+7", true}, MarkerCase{"07", true}, MarkerCase{"-1", true},
                                         MarkerCase{"6", true}, MarkerCase{"", true}, MarkerCase{"seven", true},
                                         MarkerCase{"7.0", true}, MarkerCase{"0x7", true}, MarkerCase{"7 7", true},
                                         MarkerCase{"\xff\xfe", true}, MarkerCase{"-99999999999999999999", true}));

TEST_P(MarkerBesideACurrentDatabase, DecidesOnASnapshotAndIsExactlySevenAfterwards) {
  makeOld(7, GetParam().text);
  ASSERT_EQ(opening(), "");
  EXPECT_EQ(snapshotFolders().size(), GetParam().snapshot ? 1 : 0);
  EXPECT_EQ(sidecar(QStringLiteral("schema-version")).trimmed(), "7");
  EXPECT_EQ(store.assets().size(), 3u);
}

class MarkerOfANewerVersion : public test::OldWorkspaceFixture, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Texts, MarkerOfANewerVersion,
                         testing::Values("8", "+8", "08", " 8\n", "2147483648", "99999999999999999999999"));

TEST_P(MarkerOfANewerVersion, RefusesTheFolderWithAndWithoutADatabaseAndChangesNothing) {
  writeSidecar(QStringLiteral("schema-version"), GetParam());
  QStringList before = folder.files();
  EXPECT_EQ(opening(), newerVersion);
  EXPECT_EQ(folder.files(), before);
  makeOld(3, GetParam());
  before = folder.files();
  EXPECT_EQ(opening(), newerVersion);
  EXPECT_EQ(version(), 3);
  EXPECT_TRUE(snapshotFolders().isEmpty());
}

TEST_F(MigrationTest, AMissingMarkerBesideADatabaseCountsAsOld) {
  makeOld(7);
  ASSERT_TRUE(QFile::remove(files().schemaMarker()));
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(snapshotFolders().size(), 1);
}

TEST_F(MigrationTest, ADatabaseThatWasPutBackFromABackupIsSnapshotThoughTheMarkerIsCurrent) {
  makeOld(2, "7");
  EXPECT_EQ(opening(), "");
  ASSERT_EQ(snapshotFolders().size(), 1);
  EXPECT_EQ(versionOf(snapshot()), 2);
}

TEST_F(MigrationTest, AMarkerThatIsAFolderCountsAsNoneAndTheLibraryIsSnapshotFirst) {
  makeOld(4);
  ASSERT_TRUE(QFile::remove(files().schemaMarker()));
  ASSERT_TRUE(QDir().mkdir(files().schemaMarker()));
  EXPECT_NE(opening(), "") << "the new marker has no place";
  EXPECT_EQ(snapshotFolders().size(), 1);
  EXPECT_FALSE(store.hasWorkspace());
}

// ---- Snapshots that fail

TEST_F(MigrationTest, AFailingSnapshotLeavesTheDatabaseAsItWasAndThePreviousWorkspaceOpen) {
  makeOld(3);
  openWorkspace(store, folder / QStringLiteral("other"), Remember::no);
  writeSidecar(QStringLiteral("backups"), "a file in the folder's place");
  EXPECT_EQ(opening(), couldNotSnapshot);
  EXPECT_EQ(version(), 3);
  EXPECT_EQ(sidecar(QStringLiteral("schema-version")), "3");
  EXPECT_EQ(store.workspaceRoot(), QFileInfo(folder / QStringLiteral("other")).canonicalFilePath());
}

TEST_F(MigrationTest, AFailureAtAnyStepOfTheSnapshotRemovesItsFolderAndNoOther) {
  makeOld(5);
  writeSidecar(QStringLiteral("backups/pre-v7-KEPT/library.store"), "an earlier snapshot");
  writeSidecar(QStringLiteral("workspace.lock"), {});
  int step = 1;
  for (;; ++step) {
    ASSERT_LT(step, 100);
    test::FailingLayer full(step);
    {
      const FileLayerOverride override(full);
      const std::string failure = messageOf([&] { prepareMigration(files()); });
      if (failure.empty()) break;
      EXPECT_EQ(failure, couldNotSnapshot);
    }
    for (const QString& name : snapshotFolders())
      EXPECT_TRUE(name == QStringLiteral("pre-v7-KEPT") ||
                  !QFileInfo::exists(files().backupsFolder() + u'/' + name + QStringLiteral("/library.store")))
          << step << " left " << text(name);
    EXPECT_EQ(version(), 5);
  }
  EXPECT_GT(step, 4);
  EXPECT_EQ(sidecar(QStringLiteral("backups/pre-v7-KEPT/library.store")), "an earlier snapshot");
}

TEST_F(MigrationTest, WhatACrashLeftOfASnapshotGoesOnceAWholeOneStands) {
  makeOld(4);
  writeSidecar(QStringLiteral("backups/pre-v7-CUT/library.store.part"), "half of a copy");
  writeSidecar(QStringLiteral("backups/pre-v7-CUT/library.store.part-wal"), {});
  writeSidecar(QStringLiteral("backups/pre-v7-KEPT/library.store"), "an earlier snapshot");
  writeSidecar(QStringLiteral("backups/pre-v7-NOTED/library.store.part"), "half of a copy");
  writeSidecar(QStringLiteral("backups/pre-v7-NOTED/notes.txt"), "the user's own words");
  writeSidecar(QStringLiteral("backups/mine/library.store.part"), "somebody's own copy");
  QDir().mkpath(files().backupsFolder() + QStringLiteral("/pre-v7-EMPTY"));

  ASSERT_EQ(opening(), "");
  const QStringList left = snapshotFolders();
  EXPECT_FALSE(left.contains(QStringLiteral("pre-v7-CUT")));
  EXPECT_FALSE(left.contains(QStringLiteral("pre-v7-EMPTY")));
  EXPECT_EQ(left.size(), 4) << "three that hold more, and the new one";
  EXPECT_EQ(sidecar(QStringLiteral("backups/pre-v7-KEPT/library.store")), "an earlier snapshot");
  EXPECT_EQ(sidecar(QStringLiteral("backups/pre-v7-NOTED/notes.txt")), "the user's own words");
  EXPECT_EQ(sidecar(QStringLiteral("backups/mine/library.store.part")), "somebody's own copy");
}

/// Leaves the library as a crash in the middle of a transaction does that emptied the table of items.
void cutOffTransaction(const QString& database) {
  const QString journal = database + QStringLiteral("-journal");
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(QFile::encodeName(database).constData(), &connection), SQLITE_OK);
  sqlite3_exec(connection, "PRAGMA journal_mode=DELETE; BEGIN IMMEDIATE; DELETE FROM Asset", nullptr, nullptr, nullptr);
  ASSERT_EQ(sqlite3_db_cacheflush(connection), SQLITE_OK);
  ASSERT_TRUE(QFile::copy(database, database + QStringLiteral(".cut")));
  ASSERT_TRUE(QFile::copy(journal, journal + QStringLiteral(".cut")));
  sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(connection);
  QFile::remove(database);
  QFile::remove(journal);
  ASSERT_TRUE(QFile::rename(database + QStringLiteral(".cut"), database));
  ASSERT_TRUE(QFile::rename(journal + QStringLiteral(".cut"), journal));
}

TEST_F(MigrationTest, ATransactionThatACrashCutOffIsUndoneBeforeTheSnapshot) {
  makeOld(4);
  const QString file = WorkspaceFiles(root()).database();
  const qint64 items = Database(file, DatabaseOpening::ReadOnly).number("SELECT count(*) FROM Asset");
  ASSERT_GT(items, 0);
  ASSERT_NO_FATAL_FAILURE(cutOffTransaction(file));

  ASSERT_EQ(opening(), "");
  EXPECT_EQ(static_cast<qint64>(store.assets().size()), items);
  ASSERT_EQ(snapshotFolders().size(), 1);
  EXPECT_EQ(Database(snapshot(), DatabaseOpening::ReadOnly).number("SELECT count(*) FROM Asset"), items);
}

TEST_F(MigrationTest, ADamagedDatabaseIsNeitherSnapshotNorMigrated) {
  makeOld(6);
  runScript(
      QStringLiteral("CREATE INDEX byName ON Asset (originalFilename); "
                     "PRAGMA writable_schema=ON; "
                     "UPDATE sqlite_master SET rootpage = (SELECT rootpage FROM sqlite_master WHERE name='Asset') "
                     "WHERE name='byName'; PRAGMA writable_schema=OFF"));
  EXPECT_EQ(opening(), couldNotSnapshot);
  EXPECT_TRUE(snapshotFolders().isEmpty());
  EXPECT_EQ(version(), 6);
}

TEST_F(MigrationTest, AnOlderDatabaseThatIsBusyIsNotMigrated) {
  makeOld(6);
  const QString path = files().database();
  {
    Database other(path, DatabaseOpening::ReadWrite);
    EXPECT_EQ(other.text("PRAGMA journal_mode=DELETE"), QStringLiteral("delete"));
    other.execute(QStringLiteral("BEGIN EXCLUSIVE"));
    EXPECT_EQ(opening(), busy);
    EXPECT_EQ(messageOf([&] { prepareMigration(files()); }), busy);
    EXPECT_TRUE(snapshotFolders().isEmpty());
  }
  EXPECT_EQ(version(), 6);
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(version(), 7);
}

TEST_F(MigrationTest, ADatabaseThatCannotBeWrittenStaysInItsForm) {
  makeOld(6);
  // Without the index of its log a database can be read but not written, as on a medium that allows only reading.
  ASSERT_TRUE(QDir().mkdir(files().database() + QStringLiteral("-shm")));
  EXPECT_NE(opening(), "");
  ASSERT_TRUE(QDir().rmdir(files().database() + QStringLiteral("-shm")));
  EXPECT_EQ(version(), 6);
  EXPECT_EQ(sidecar(QStringLiteral("schema-version")), "6");
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(version(), 7);
}

TEST_F(MigrationTest, AFailingUpgradeLeavesTheOldFormWholeAndTheNextOpeningTakesAnotherSnapshot) {
  makeOld(6);
  // The last table of the upgrade finds its name taken.
  runScript(QStringLiteral("CREATE VIEW ClipSequence AS SELECT 1 AS one"));
  EXPECT_NE(opening(), "");
  EXPECT_EQ(version(), 6);
  EXPECT_EQ(sidecar(QStringLiteral("schema-version")), "6");
  EXPECT_EQ(snapshotFolders().size(), 1);
  runScript(QStringLiteral("DROP VIEW ClipSequence"));
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(snapshotFolders().size(), 2);
}

// ---- The lock comes before the upgrade

TEST_F(MigrationTest, ALockFileThatIsALinkStopsTheUpgradeBeforeItsSnapshot) {
  makeOld(3);
  const QString elsewhere = folder.write(QStringLiteral("somebody's"), "text");
  ASSERT_EQ(::symlink(QFile::encodeName(elsewhere), QFile::encodeName(files().lockFile())), 0);
  EXPECT_EQ(opening(), cannotLock);
  EXPECT_EQ(version(), 3);
  EXPECT_TRUE(snapshotFolders().isEmpty());
  EXPECT_EQ(folder.read(QStringLiteral("somebody's")), "text");
}

/// A second program that opens the folder when told, says how it went, and holds it until the end.
class Opener {
 public:
  explicit Opener(const QString& root) {
    EXPECT_EQ(::pipe(start_), 0);
    EXPECT_EQ(::pipe(answer_), 0);
    child_ = ::fork();
    if (child_ == 0) run(root);
  }
  ~Opener() {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    for (const int end : {start_[0], start_[1], answer_[0], answer_[1]}) ::close(end);
  }
  void start() const { EXPECT_EQ(::write(start_[1], "x", 1), 1); }
  /// 'o' for opened, 'l' for the lock of another, 'f' for any other failure.
  char answer() const {
    char state = 0;
    EXPECT_EQ(::read(answer_[0], &state, 1), 1);
    return state;
  }

 private:
  [[noreturn]] void run(const QString& root) {
    char state = 0;
    if (::read(start_[0], &state, 1) != 1) ::_exit(1);
    const WorkspaceFiles files(root);
    try {
      const WorkspaceLease lease(root);
      prepareMigration(files);
      const RecordContext context(files.database());
      writeSchemaMarker(files);
      if (::write(answer_[1], "o", 1) == 1)
        for (;;) ::pause();
    } catch (const SorvanError& failure) {
      const bool locked = failure.message().contains(QStringLiteral("another Sorvan process"));
      if (::write(answer_[1], locked ? "l" : "f", 1) != 1) ::_exit(1);
    }
    ::_exit(0);
  }

  pid_t child_ = 0;
  int start_[2] = {};
  int answer_[2] = {};
};

TEST_F(MigrationTest, OfTwoProgramsStartedTogetherOneUpgradesAndTheOtherIsRefused) {
  makeOld(1);
  const Opener first(files().root());
  const Opener second(files().root());
  first.start();
  second.start();
  const std::string answers{first.answer(), second.answer()};
  EXPECT_TRUE(answers == "ol" || answers == "lo") << answers;
  EXPECT_EQ(snapshotFolders().size(), 1);
  EXPECT_NE(opening().find("another Sorvan process"), std::string::npos) << "and so is a third";
  EXPECT_EQ(version(), 7);
}

}  // namespace
}  // namespace sorvan::core
