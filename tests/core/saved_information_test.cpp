#include "core/saved_information.h"

#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::text;

const char* const unreadable = "This saved information couldn’t be opened. Open a workspace backup to recover it.";
const char* const copyUnreadable =
    "The saved copy couldn’t be opened. Keep Sorvan open and choose Try Saving Again to save the information that is "
    "still available.";
const char* const copyMissing =
    "The saved copy is missing from this workspace. Keep Sorvan open and choose Try Saving Again to save the "
    "information that is still available.";
const char* const missing = "This information is missing from the workspace. Open a workspace backup to recover it.";

struct SavedInformationTest : test::LibraryFixture {
  SavedInformationTest() { open(); }
  std::vector<SavedInformation> rows() { return inspectSavedInformation(store.files(), savedInformation(store)); }
  std::string issue(const char* id) {
    for (const SavedInformation& row : rows())
      if (row.id == QLatin1StringView(id)) return text(row.issue.value_or(QString()));
    return "there is no such row";
  }
  std::size_t count(int row) { return rows().at(static_cast<std::size_t>(row)).count; }
};

TEST_F(SavedInformationTest, StandsInItsOrderAndOfANewWorkspaceNothingIsWrong) {
  const std::vector<SavedInformation> expected{
      {QStringLiteral("prompts"), QStringLiteral("Saved prompts"), 0, {}},
      {QStringLiteral("reviews"), QStringLiteral("Image reviews"), 0, {}},
      {QStringLiteral("spending"), QStringLiteral("Additional spending records"), 0, {}},
      {QStringLiteral("draft"), QStringLiteral("Unfinished prompt"), 0, {}}};
  EXPECT_EQ(rows(), expected);
}

TEST_F(SavedInformationTest, CountsWhatIsSavedAndFindsItWell) {
  store.prompts().save({}, QStringLiteral("a fox"), clock->now());
  store.analyses().keep({}, newUuid());
  store.record({});
  store.keepComposer({});
  for (int row = 0; row < 4; ++row) EXPECT_EQ(count(row), 1u);
  for (const SavedInformation& row : rows()) EXPECT_EQ(row.issue, std::nullopt) << text(row.title);
}

TEST_F(SavedInformationTest, AFileThatWasDamagedSinceItWasLoadedCanBeSavedAgainFromMemory) {
  store.prompts().save({}, QStringLiteral("a fox"), clock->now());
  writeSidecar(QStringLiteral("prompts.json"), "garbage");
  EXPECT_EQ(issue("prompts"), copyUnreadable);
  writeSidecar(QStringLiteral("analyses.json"), "[1]");
  EXPECT_EQ(issue("reviews"), unreadable) << "nothing of it is in memory";
}

TEST_F(SavedInformationTest, AFileThatWentCanBeSavedAgainFromMemory) {
  store.record({});
  ASSERT_TRUE(QFile::remove(files().sidecar(QStringLiteral("charges.json"))));
  EXPECT_EQ(issue("spending"), copyMissing);
}

TEST_F(SavedInformationTest, SavingAgainWritesWhatMemoryStillHasAndNothingElse) {
  store.prompts().save({}, QStringLiteral("a fox"), clock->now());
  const QByteArray good = sidecar(QStringLiteral("prompts.json"));
  writeSidecar(QStringLiteral("prompts.json"), "garbage");
  writeSidecar(QStringLiteral("analyses.json"), "garbage");
  saveInformationAgain(store, rows());
  EXPECT_EQ(sidecar(QStringLiteral("prompts.json")), good);
  EXPECT_EQ(sidecar(QStringLiteral("analyses.json")), "garbage") << "only a backup can help there";
  EXPECT_EQ(issue("prompts"), "");
}

TEST_F(SavedInformationTest, SavingAgainDoesNothingDuringABackup) {
  store.prompts().save({}, QStringLiteral("a fox"), clock->now());
  writeSidecar(QStringLiteral("prompts.json"), "garbage");
  store.setBackingUp(true);
  saveInformationAgain(store, rows());
  EXPECT_EQ(sidecar(QStringLiteral("prompts.json")), "garbage");
}

TEST_F(SavedInformationTest, APreviousVersionWithoutItsFileIsMissingAndIsNotOfferedForSaving) {
  writeSidecar(QStringLiteral("composer.json.previous"), "{}");
  EXPECT_EQ(issue("draft"), missing);
  EXPECT_FALSE(store.canRetryMetadataSave());
}

TEST_F(SavedInformationTest, AnUnreadableDraftNeedsABackupWhateverItsCount) {
  writeSidecar(QStringLiteral("composer.json"), "garbage");
  EXPECT_EQ(issue("draft"), unreadable);
  auto draft = savedInformation(store).back();
  draft.count = 1;
  EXPECT_EQ(inspectSavedInformation(store.files(), {draft})[0].issue, QString::fromUtf8(unreadable));
}

TEST_F(SavedInformationTest, ADraftThatWaitsSaysSoUntilItIsSaved) {
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.keepComposer({});
  }
  EXPECT_EQ(issue("draft"), "Your unfinished prompt and its settings haven’t been saved yet.");
  store.retryMetadataSave();
  EXPECT_EQ(issue("draft"), "");
}

TEST_F(SavedInformationTest, NothingCanBeSavedAgainDuringABackupAndAfterItWhatWaitedIsWritten) {
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.record({});
    store.keepComposer({});
  }
  EXPECT_TRUE(store.canRetryMetadataSave());
  store.setBackingUp(true);
  EXPECT_FALSE(store.canRetryMetadataSave());
  store.retryMetadataSave();
  EXPECT_FALSE(hasSidecar(QStringLiteral("charges.json")));
  EXPECT_FALSE(hasSidecar(QStringLiteral("composer.json")));
  store.setBackingUp(false);
  EXPECT_TRUE(hasSidecar(QStringLiteral("charges.json")));
  EXPECT_TRUE(hasSidecar(QStringLiteral("composer.json")));
  EXPECT_FALSE(store.canRetryMetadataSave());
}

TEST_F(SavedInformationTest, AJobThatCouldNotBeSavedIsOfferedAndSavedAgain) {
  const JobRef job = addJob({}, jobStatus::generating);
  const QUuid id = job->id;
  failWrites("UPDATE", "GenerationJob");
  store.context().edit(job).remoteHandleData = QByteArrayLiteral("{}");
  EXPECT_THROW(store.save(LibraryTables::none), SorvanError);
  store.keepUnsaved(job);
  store.rollBack();
  EXPECT_TRUE(store.canRetryMetadataSave());
  store.retryMetadataSave();
  EXPECT_TRUE(store.canRetryMetadataSave()) << "it fails again and stays";
  allowWrites("UPDATE", "GenerationJob");
  store.retryMetadataSave();
  EXPECT_FALSE(store.canRetryMetadataSave());
  RecordContext reader(store.files().database());
  ASSERT_EQ(reader.fetch<GenerationJob>().size(), 1u);
  EXPECT_EQ(reader.fetch<GenerationJob>().front()->id, id);
  EXPECT_EQ(reader.fetch<GenerationJob>().front()->remoteHandleData, QByteArrayLiteral("{}"));
}

TEST_F(SavedInformationTest, AStandingIssueOfALedgerIsKept) {
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.record({});
  }
  EXPECT_NE(issue("spending").find("Your spending history couldn’t be saved."), std::string::npos);
}

}  // namespace
}  // namespace sorvan::core
