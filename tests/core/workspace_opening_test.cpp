#include "core/workspace_opening.h"

#include <sys/stat.h>
#include <unistd.h>

#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using platform::Database;
using platform::DatabaseOpening;
using test::messageOf;
using test::text;

const char* const newerVersion = "This workspace was created by a newer version of Sorvan.";
const char* const closedBeforeFinish =
    "Sorvan closed before this request finished. Retry reconnects to the saved job; it is not submitted or charged a "
    "second time.";
const char* const answerLost =
    "The answer to this request was lost. fal.ai may have accepted it and may charge for it. Check your fal.ai history "
    "before generating again.";

struct WorkspaceOpeningTest : test::LibraryFixture {
  QString bookmark() const {
    return QString::fromUtf8(settings->get<QByteArray>(QStringLiteral("workspaceBookmark")).value_or(QByteArray()));
  }
  std::string opening(const QString& folderPath) {
    return messageOf([&] { openWorkspace(store, folderPath, Remember::no); });
  }
  std::string error() const { return text(store.error().value_or(QString())); }
  QString canonical(const QString& path) const { return QFileInfo(path).canonicalFilePath(); }
};

// ---- A new workspace

TEST_F(WorkspaceOpeningTest, AnEmptyFolderBecomesAWorkspaceOfThePresentForm) {
  open();
  EXPECT_EQ(store.workspaceRoot(), canonical(root()));
  EXPECT_EQ(sidecar(QStringLiteral("schema-version")).trimmed(), "7");
  EXPECT_TRUE(hasSidecar(QStringLiteral("library.store")));
  EXPECT_TRUE(QFileInfo(root() + QStringLiteral("/Inbox/thumbnails")).isDir());
  store.close();
  Database database(files().database(), DatabaseOpening::ReadOnly);
  EXPECT_EQ(database.userVersion(), 7);
}

TEST_F(WorkspaceOpeningTest, WhatWasSavedIsThereAfterReopening) {
  open();
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  reopen();
  ASSERT_EQ(store.assets().size(), 1u);
  EXPECT_TRUE(sameFields(*store.assets()[0], *fox));
  EXPECT_NE(store.assets()[0], fox) << "a new opening has objects of its own";
  EXPECT_EQ(fox->filename(), QStringLiteral("fox-001.png")) << "the old object outlives its workspace";
}

TEST_F(WorkspaceOpeningTest, AFolderThatCannotBeWrittenLeavesThePreviousWorkspaceOpen) {
  open();
  addAsset(QStringLiteral("fox-001.png"));
  test::FailingLayer readOnly(1, EROFS);
  const FileLayerOverride override(readOnly);
  EXPECT_NE(opening(folder / QStringLiteral("other")).find("Read-only file system"), std::string::npos);
  EXPECT_EQ(store.workspaceRoot(), canonical(root()));
  EXPECT_EQ(store.assets().size(), 1u);
}

TEST_F(WorkspaceOpeningTest, AFailureAtAnyStepOfMakingAWorkspaceLeavesNoneOpenAndTheNextAttemptSucceeds) {
  int steps = 0;
  {
    test::FailingLayer counting(test::noFailingStep);
    const FileLayerOverride override(counting);
    openWorkspace(store, folder / QStringLiteral("counted"), Remember::no);
    store.close();
    steps = counting.steps();
  }
  ASSERT_GT(steps, 10);
  for (int step = 1; step <= steps; ++step) {
    SCOPED_TRACE(step);
    const QString place = folder / QStringLiteral("step-%1").arg(step);
    {
      test::FailingLayer full(step);
      const FileLayerOverride override(full);
      EXPECT_NE(opening(place), "");
    }
    EXPECT_FALSE(store.hasWorkspace());
    EXPECT_EQ(opening(place), "");
    EXPECT_TRUE(store.hasWorkspace());
    store.close();
  }
}

// ---- What is refused before anything is made

TEST_F(WorkspaceOpeningTest, AMarkerOfANewerVersionOpensNothingAndChangesNothing) {
  writeSidecar(QStringLiteral("schema-version"), "8\n");
  const QStringList before = folder.files();
  EXPECT_EQ(opening(root()), newerVersion);
  EXPECT_EQ(folder.files(), before);
  EXPECT_FALSE(store.hasWorkspace());
}

TEST_F(WorkspaceOpeningTest, ADatabaseOfANewerVersionOpensNothingWhateverTheMarkerSays) {
  open();
  store.close();
  {
    Database database(files().database(), DatabaseOpening::ReadWrite);
    database.setUserVersion(9);
  }
  EXPECT_EQ(opening(root()), newerVersion);
  Database database(files().database(), DatabaseOpening::ReadOnly);
  EXPECT_EQ(database.userVersion(), 9);
}

TEST_F(WorkspaceOpeningTest, AMarkerWithALineEndIsCurrent) {
  open();
  store.close();
  writeSidecar(QStringLiteral("schema-version"), "7\n");
  EXPECT_EQ(opening(root()), "");
}

TEST_F(WorkspaceOpeningTest, AMarkedFolderWithoutItsDatabaseIsRefusedAndNothingIsMade) {
  open();
  store.close();
  for (const bool empty : {false, true}) {
    SCOPED_TRACE(empty);
    for (const auto& name : {"library.store", "library.store-wal", "library.store-shm"})
      QFile::remove(files().sidecar(QLatin1StringView(name)));
    if (empty) writeSidecar(QStringLiteral("library.store"), {});
    const QStringList before = folder.files();
    EXPECT_NE(opening(root()).find("missing or empty"), std::string::npos);
    EXPECT_EQ(folder.files(), before);
  }
}

TEST_F(WorkspaceOpeningTest, AFolderWithALedgerButNoDatabaseIsRefusedAndItsNewestSnapshotNamed) {
  writeSidecar(QStringLiteral("charges.json"), "[]");
  writeSidecar(QStringLiteral("backups/pre-v7-OLD/library.store"), "x");
  writeSidecar(QStringLiteral("backups/pre-v7-NEW/library.store"), "x");
  QFile old(files().backupsFolder() + QStringLiteral("/pre-v7-OLD/library.store"));
  ASSERT_TRUE(old.open(QIODevice::ReadWrite));
  old.setFileTime(QDateTime::currentDateTime().addDays(-9), QFileDevice::FileModificationTime);
  old.close();
  EXPECT_NE(opening(root()).find(".sorvan/backups/pre-v7-NEW/library.store"), std::string::npos);
  EXPECT_FALSE(hasSidecar(QStringLiteral("workspace.lock")));
}

TEST_F(WorkspaceOpeningTest, AFileInThePlaceOfTheDatabaseThatIsNoneIsNotReplaced) {
  writeSidecar(QStringLiteral("library.store"), "this is no database at all, but somebody's text");
  EXPECT_NE(opening(root()), "");
  EXPECT_EQ(sidecar(QStringLiteral("library.store")), "this is no database at all, but somebody's text");
}

TEST_F(WorkspaceOpeningTest, AFolderOnAFileSystemWithoutLocksIsRefusedBeforeItsLibraryIsTouched) {
  openWorkspace(store, folder / QStringLiteral("other"), Remember::no);
  test::LocklessLayer lockless(ENOLCK);
  const FileLayerOverride override(lockless);
  EXPECT_EQ(opening(root()), "Cannot lock this workspace. Check its folder permissions.");
  EXPECT_FALSE(hasSidecar(QStringLiteral("library.store")));
  EXPECT_FALSE(hasSidecar(QStringLiteral("schema-version")));
  EXPECT_EQ(store.workspaceRoot(), canonical(folder / QStringLiteral("other")));
}

// ---- Switching

TEST_F(WorkspaceOpeningTest, ASwitchIsRefusedWhileAnythingIsInFlight) {
  open();
  const std::string busy = "Wait for exports, imports and generation jobs to finish before switching workspaces.";
  const QString other = folder / QStringLiteral("other");
  store.setImporting(true);
  EXPECT_EQ(opening(other), busy);
  store.setImporting(false);
  store.setExporting(true);
  EXPECT_EQ(opening(other), busy);
  store.setExporting(false);
  {
    const LocalOperation operation = store.beginLocalOperation();
    EXPECT_EQ(opening(other), busy);
  }
  bool settling = true;
  store.busyChecks.push_back([&] { return settling; });
  EXPECT_EQ(opening(other), busy);
  settling = false;
  const JobRef job = addJob({});
  EXPECT_EQ(opening(other), busy);
  store.context().edit(job).status = jobStatus::complete;
  store.save(LibraryTables::none);
  EXPECT_FALSE(QFileInfo::exists(other));
  EXPECT_EQ(opening(other), "");
}

TEST_F(WorkspaceOpeningTest, ASwitchIsRefusedWhileSomethingIsUnsaved) {
  open();
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.record({});
  }
  EXPECT_EQ(opening(folder / QStringLiteral("other")),
            "Some changes haven’t been saved. Open Workspace Health and choose Try Saving Again before switching "
            "workspaces.");
}

TEST_F(WorkspaceOpeningTest, ASwitchEndsWhatDependedOnTheOldWorkspaceAndReleasesItsLock) {
  open();
  addAsset(QStringLiteral("fox-001.png"));
  QStringList closed;
  store.beforeClose.push_back([&](LibraryStore& closing) { closed += closing.workspaceRoot().value_or(QString()); });
  const QString lock = files().lockFile();
  const auto opening = store.opening();
  openWorkspace(store, folder / QStringLiteral("other"), Remember::no);
  EXPECT_EQ(closed, QStringList{canonical(root())});
  EXPECT_TRUE(store.assets().empty());
  EXPECT_GT(store.opening(), opening);
  EXPECT_NO_THROW(WorkspaceLease{root()});
}

TEST_F(WorkspaceOpeningTest, OpeningTheOpenFolderAgainOnlyRemembersIt) {
  open();
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  const auto opening = store.opening();
  openWorkspace(store, root() + QStringLiteral("/Inbox/../"), Remember::yes);
  EXPECT_EQ(store.opening(), opening);
  EXPECT_EQ(store.assets()[0], fox);
  EXPECT_EQ(bookmark(), canonical(root()));
}

TEST_F(WorkspaceOpeningTest, ASecondStoreOfThisProcessMayOpenTheSameFolder) {
  open();
  addAsset(QStringLiteral("fox-001.png"));
  const auto second = makeStore();
  openWorkspace(*second, root(), Remember::no);
  EXPECT_EQ(second->assets().size(), 1u);
}

TEST_F(WorkspaceOpeningTest, TheStepsOfOtherRoomsRunInOrderAndAFailureIsShown) {
  QStringList steps;
  store.openingBackfills.push_back([&](LibraryStore&) { steps += QStringLiteral("fill"); });
  store.openingBackfills.push_back([&](LibraryStore&) { throw SorvanError(QStringLiteral("could not fill")); });
  store.afterOpen.push_back([&](LibraryStore& opened) {
    steps += opened.hasWorkspace() ? QStringLiteral("start") : QStringLiteral("too early");
  });
  open();
  EXPECT_EQ(steps, (QStringList{QStringLiteral("fill"), QStringLiteral("start")}));
  EXPECT_EQ(error(), "could not fill");
}

// ---- Jobs that the last exit cut off

TEST_F(WorkspaceOpeningTest, JobsThatWereCutOffAreInterruptedAndKeepTheirHandles) {
  open();
  const JobRef running = addJob({}, jobStatus::generating);
  store.context().edit(running).remoteHandleData = QByteArrayLiteral("{}");
  const JobRef waiting = addJob({}, jobStatus::queued);
  const JobRef done = addJob({}, jobStatus::complete);
  store.save(LibraryTables::jobs);
  reopen();
  for (const QUuid& id : {running->id, waiting->id}) {
    EXPECT_EQ(store.job(id)->status, jobStatus::failed);
    EXPECT_EQ(store.job(id)->detail, QStringLiteral("Interrupted"));
    EXPECT_EQ(text(store.job(id)->errorMessage.value_or(QString())), closedBeforeFinish);
  }
  EXPECT_EQ(store.job(running->id)->remoteHandleData, QByteArrayLiteral("{}"));
  EXPECT_EQ(store.job(done->id)->status, jobStatus::complete);
  EXPECT_TRUE(store.activeJobs().empty());
  const auto second = makeStore();
  openWorkspace(*second, root(), Remember::no);
  EXPECT_EQ(second->job(running->id)->status, jobStatus::failed) << "the honest state is on disk";
}

TEST_F(WorkspaceOpeningTest, AJobWhosePaidSubmissionWasNeverAnsweredSaysSo) {
  open();
  const JobRef lost = addJob({}, jobStatus::generating);
  const JobRef known = addJob({}, jobStatus::generating);
  const JobRef retained = addJob({}, jobStatus::generating);
  const RemoteHandle handle{QStringLiteral("r"), QUrl(QStringLiteral("https://a/s")),
                            QUrl(QStringLiteral("https://a/r")), QUrl(QStringLiteral("https://a/c"))};
  store.context().edit(known).remoteHandleData = encodeHandle(handle);
  store.save(LibraryTables::jobs);
  for (const JobRef& job : {lost, known, retained})
    writeSidecar(QStringLiteral("recovery/%1/submitting").arg(uuidText(job->id)), {});
  writeSidecar(QStringLiteral("recovery/%1/results.json").arg(uuidText(retained->id)), "[]");
  reopen();
  EXPECT_EQ(text(*store.job(lost->id)->errorMessage), answerLost);
  EXPECT_EQ(store.job(lost->id)->detail, QStringLiteral("Interrupted"));
  EXPECT_EQ(text(*store.job(known->id)->errorMessage), closedBeforeFinish);
  EXPECT_EQ(text(*store.job(retained->id)->errorMessage), closedBeforeFinish);
  EXPECT_TRUE(QFileInfo::exists(files().submissionMarker(lost->id))) << "opening removes no marker";
}

TEST_F(WorkspaceOpeningTest, AFailedSaveOfTheSweepKeepsTheJobsInterruptedOverEveryRollback) {
  open();
  const JobRef job = addJob({}, jobStatus::generating);
  const QUuid id = job->id;
  failWrites("UPDATE", "GenerationJob");
  store.close();
  openWorkspace(store, root(), Remember::no);
  EXPECT_TRUE(store.hasWorkspace());
  EXPECT_NE(error().find("disk is full"), std::string::npos);
  EXPECT_EQ(store.job(id)->status, jobStatus::failed);
  EXPECT_TRUE(store.hasUnsavedMetadata());
  store.failOperation(std::make_exception_ptr(SorvanError(QStringLiteral("another failure"))));
  EXPECT_EQ(store.job(id)->status, jobStatus::failed);
  EXPECT_TRUE(store.activeJobs().empty());
  allowWrites("UPDATE", "GenerationJob");
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
}

TEST_F(WorkspaceOpeningTest, AJobWhoseRequestDoesNotDecodeIsSweptLikeAnyOther) {
  open();
  GenerationJob damaged({}, {}, clock->now());
  damaged.requestData = QByteArrayLiteral("no request");
  store.context().insert(damaged);
  store.save(LibraryTables::jobs);
  reopen();
  EXPECT_EQ(store.jobs()[0]->status, jobStatus::failed);
  EXPECT_EQ(store.jobs()[0]->requestData, QByteArrayLiteral("no request"));
}

TEST_F(WorkspaceOpeningTest, ALandedJobsChargeNoteAndRecoveryFolderGoAndThoseOfOthersStay) {
  open();
  const JobRef landed = addJob({}, jobStatus::complete);
  const JobRef failed = addJob({}, jobStatus::failed);
  const JobRef empty = addJob({}, jobStatus::complete);
  Generation generation;
  generation.id = newUuid();
  generation.assetID = newUuid();
  generation.jobID = landed->id;
  store.context().insert(generation);
  store.save(LibraryTables::generations);
  for (const JobRef& job : {landed, failed, empty}) {
    ExtraCharge note;
    note.id = job->id;
    store.record(note);
    writeSidecar(QStringLiteral("recovery/%1/0.media").arg(uuidText(job->id)), "paid");
  }
  writeSidecar(QStringLiteral("recovery/notes/readme"), "not a job's");
  reopen();
  EXPECT_FALSE(store.extraCharges().contains(landed->id));
  EXPECT_FALSE(QFileInfo::exists(files().recoveryFolder(landed->id)));
  for (const JobRef& job : {failed, empty}) {
    EXPECT_TRUE(store.extraCharges().contains(job->id));
    EXPECT_TRUE(QFileInfo::exists(files().recoveryFolder(job->id)));
  }
  EXPECT_EQ(sidecar(QStringLiteral("recovery/notes/readme")), "not a job's");
}

TEST_F(WorkspaceOpeningTest, OldGenerationsGetTheRecipeOfTheirJobWhereItDecodes) {
  open();
  GenerationRequest request;
  request.prompt = QStringLiteral("a fox");
  const JobRef job = addJob(request, jobStatus::complete);
  Generation old;
  old.id = newUuid();
  old.jobID = job->id;
  Generation orphan;
  orphan.id = newUuid();
  orphan.jobID = newUuid();
  store.context().insert(old);
  store.context().insert(orphan);
  store.save(LibraryTables::generations);
  reopen();
  EXPECT_EQ(store.generations()[0]->recipe()->prompt, QStringLiteral("a fox"));
  EXPECT_EQ(store.generations()[1]->recipe(), nullptr);
  EXPECT_FALSE(store.context().hasChanges()) << "it was saved";
}

TEST_F(WorkspaceOpeningTest, LoadsTheSidecarsOfTheWorkspace) {
  open();
  store.prompts().save({}, QStringLiteral("a fox"), clock->now());
  openWorkspace(store, folder / QStringLiteral("other"), Remember::no);
  EXPECT_TRUE(store.prompts().entries().empty());
  openWorkspace(store, root(), Remember::no);
  EXPECT_EQ(store.prompts().entries().size(), 1u);
}

TEST_F(WorkspaceOpeningTest, ADamagedSidecarIsShownAndTheWorkspaceOpensAllTheSame) {
  open();
  store.close();
  writeSidecar(QStringLiteral("charges.json"), "garbage");
  open();
  EXPECT_TRUE(store.hasWorkspace());
  EXPECT_NE(error().find("Nothing has been replaced."), std::string::npos);
}

// ---- At start and by choice

TEST_F(WorkspaceOpeningTest, StartingOpensTheRememberedFolder) {
  EXPECT_FALSE(hasWorkspaceToRestore(store));
  openWorkspace(store, root(), Remember::yes);
  EXPECT_EQ(bookmark(), canonical(root()));
  const auto next = makeStore();
  EXPECT_TRUE(hasWorkspaceToRestore(*next));
  restoreLastWorkspace(*next);
  EXPECT_EQ(next->workspaceRoot(), canonical(root()));
}

TEST_F(WorkspaceOpeningTest, StartingWithNothingRememberedOpensNothingAndSaysNothing) {
  restoreLastWorkspace(store);
  EXPECT_FALSE(store.hasWorkspace());
  EXPECT_EQ(store.error(), std::nullopt);
}

TEST_F(WorkspaceOpeningTest, AForcedFolderIsOpenedAndNotRemembered) {
  const auto forced = makeStore(folder / QStringLiteral("forced"));
  EXPECT_TRUE(hasWorkspaceToRestore(*forced));
  restoreLastWorkspace(*forced);
  EXPECT_EQ(forced->workspaceRoot(), canonical(folder / QStringLiteral("forced")));
  EXPECT_EQ(bookmark(), QString());
  EXPECT_FALSE(workspaceIsTemporary(*forced)) << "whoever forces a folder knows what it is";
}

TEST_F(WorkspaceOpeningTest, ARememberedFolderThatIsAwayIsToldAndNothingIsMadeInItsPlace) {
  settings->set(QStringLiteral("workspaceBookmark"), (folder / QStringLiteral("gone")).toUtf8());
  restoreLastWorkspace(store);
  EXPECT_EQ(error(), "Could not open your workspace: The workspace folder isn’t available.");
  EXPECT_FALSE(QFileInfo::exists(folder / QStringLiteral("gone")));

  const QString mountPoint = folder / QStringLiteral("drive");
  QDir().mkpath(mountPoint);
  settings->set(QStringLiteral("workspaceBookmark"), mountPoint.toUtf8());
  restoreLastWorkspace(store);
  EXPECT_FALSE(store.hasWorkspace());
  EXPECT_TRUE(QDir(mountPoint).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(WorkspaceOpeningTest, AChosenTemporaryFolderIsRefused) {
  chooseWorkspace(store, QStringLiteral("/tmp/anywhere"));
  EXPECT_EQ(error(),
            "macOS clears that folder on its own, so a library kept there would be lost. Choose a folder such as "
            "Pictures or Documents.");
  EXPECT_FALSE(store.hasWorkspace());
  EXPECT_EQ(bookmark(), QString());
}

TEST_F(WorkspaceOpeningTest, AChosenFolderInsideTheTrashIsRefusedAndNothingIsMadeInIt) {
  for (const QString& trash : {QStringLiteral("/.local/share/Trash/files"), QStringLiteral("/.Trash"),
                               QStringLiteral("/.Trash-%1/files").arg(::getuid())}) {
    SCOPED_TRACE(text(trash));
    const QString home = QDir::homePath() + QStringLiteral("/sorvan-trash-test-") + uuidText(newUuid());
    const QString chosen = home + trash + QStringLiteral("/Work");
    ASSERT_TRUE(QDir().mkpath(chosen));
    store.setError(std::nullopt);
    chooseWorkspace(store, chosen);
    EXPECT_NE(error().find("a library kept there would be lost"), std::string::npos);
    EXPECT_FALSE(store.hasWorkspace());
    EXPECT_TRUE(QDir(chosen).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    EXPECT_TRUE(QDir(home).removeRecursively());
  }
}

TEST(IsTemporary, KnowsTheFoldersThatTheSystemClearsAndTheTrash) {
  const QString user = QString::number(::getuid());
  for (const QString& folder :
       {QStringLiteral("/tmp"), QStringLiteral("/tmp/a/b"), QStringLiteral("/var/tmp/x"), QStringLiteral("/dev/shm/x"),
        QStringLiteral("/run/user/1000/x"), QStringLiteral("/private/var/folders/x"), QDir::tempPath(),
        QStringLiteral("/home/u/.Trash/x"), QStringLiteral("/home/u/.local/share/Trash/files/x"),
        QStringLiteral("/media/drive/.Trash-%1/files/x").arg(user),
        QStringLiteral("/media/drive/.Trash/%1/x").arg(user)})
    EXPECT_TRUE(isTemporary(folder)) << text(folder);
  for (const QString& folder :
       {QStringLiteral("/home/u/Pictures"), QStringLiteral("/home/u/tmp/x"), QStringLiteral("/run/media/u/drive"),
        QStringLiteral("/tmpfiles"), QStringLiteral("/home/u/.Trashed")})
    EXPECT_FALSE(isTemporary(folder)) << text(folder);
}

TEST_F(WorkspaceOpeningTest, ALinkIntoATemporaryFolderIsTemporary) {
  const QString link = QDir::homePath() + QStringLiteral("/sorvan-link-test-") + uuidText(newUuid());
  ASSERT_EQ(::symlink(QFile::encodeName(folder.path()), QFile::encodeName(link)), 0);
  EXPECT_TRUE(isTemporary(link));
  ::unlink(QFile::encodeName(link));
}

TEST_F(WorkspaceOpeningTest, TheChooserStartsBesideTheOpenWorkspace) {
  EXPECT_EQ(chooserFolder(store), QFileInfo(defaultWorkspacePath()).path());
  open();
  EXPECT_EQ(chooserFolder(store), canonical(folder.path()));
}

}  // namespace
}  // namespace sorvan::core
