#include "core/ledgers.h"

#include "base/json.h"
#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

ExtraCharge charge(const QString& title, const QUuid& id = newUuid()) {
  ExtraCharge value;
  value.id = id;
  value.title = title;
  value.date = {800000000.25};
  value.usd = 0.04;
  return value;
}

struct LedgerTest : testing::Test {
  test::TemporaryFolder folder;
  ChargeLedger charges;
  PromptLibrary prompts;
  AnalysisLedger analyses;
  QStringList reported;

  LedgerTest() {
    QDir(folder.path()).mkpath(QStringLiteral(".sorvan"));
    for (Ledger* ledger :
         {static_cast<Ledger*>(&charges), static_cast<Ledger*>(&prompts), static_cast<Ledger*>(&analyses)}) {
      ledger->onError = [this](const QString& message) { reported += message; };
      ledger->load(folder.path());
    }
  }
  static QString chargesFile() { return QStringLiteral(".sorvan/charges.json"); }
  static QString chargesPrevious() { return QStringLiteral(".sorvan/charges.json.previous"); }
  QStringList titlesIn(const QString& file) const {
    QStringList titles;
    for (const ExtraCharge& one : decodeJson<std::vector<ExtraCharge>>(folder.read(file))) titles += one.title;
    return titles;
  }
  QStringList titles() const {
    QStringList all;
    for (const ExtraCharge& one : charges.entries()) all += one.title;
    return all;
  }
};

const char* const spendingEarlier =
    "Sorvan couldn’t open your latest spending history, so it loaded an earlier saved version. Some recent changes may "
    "be missing. Review what was recovered, then open Workspace Health and choose Try Saving Again to keep the "
    "recovered version.";
const char* const spendingUnreadable =
    "Sorvan couldn’t open your spending history. Nothing has been replaced. To recover this information, open a "
    "workspace backup that contains it.";
const char* const spendingNotSaved =
    "Your spending history couldn’t be saved. Keep Sorvan open so you don’t lose your latest changes. Check that your "
    "workspace folder is available and your disk has free space, then open Workspace Health and choose Try Saving "
    "Again.";

TEST_F(LedgerTest, WithoutAFileIsEmptyAndHealthy) {
  EXPECT_TRUE(charges.entries().empty());
  EXPECT_FALSE(charges.issue());
  EXPECT_FALSE(charges.isPending());
  EXPECT_FALSE(charges.isUnreadable());
  EXPECT_TRUE(reported.isEmpty());
}

TEST_F(LedgerTest, ReadsBackWhatItWroteAndKeepsTheVersionBefore) {
  charges.add({charge(QStringLiteral("one"))});
  charges.add({charge(QStringLiteral("two"))});
  EXPECT_EQ(titlesIn(chargesPrevious()), QStringList{QStringLiteral("one")});
  ChargeLedger again;
  again.load(folder.path());
  EXPECT_EQ(again.entries(), charges.entries());
  EXPECT_FALSE(charges.isPending());
}

TEST_F(LedgerTest, WritesItsFilesForTheUserAlone) {
  charges.add({charge(QStringLiteral("one"))});
  const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  EXPECT_FALSE(QFile::permissions(folder / chargesFile()) & others);
}

TEST_F(LedgerTest, AddingOneIdTwiceLeavesOneEntry) {
  const ExtraCharge once = charge(QStringLiteral("one"));
  charges.add({once});
  charges.add({once, charge(QStringLiteral("two"))});
  EXPECT_EQ(titles(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(LedgerTest, RemovesByIdAndPutsProjectsBack) {
  const QUuid project = newUuid();
  ExtraCharge kept = charge(QStringLiteral("kept"));
  kept.projectID = project;
  const ExtraCharge gone = charge(QStringLiteral("gone"));
  charges.add({kept, gone});
  charges.remove({gone.id});
  EXPECT_EQ(titles(), QStringList{QStringLiteral("kept")});
  charges.removeProject(project);
  EXPECT_EQ(charges.entries()[0].projectID, std::nullopt);
  charges.restoreProjects({{kept.id, project}});
  EXPECT_EQ(charges.entries()[0].projectID, project);
  ChargeLedger again;
  again.load(folder.path());
  EXPECT_EQ(again.entries(), charges.entries());
}

TEST_F(LedgerTest, ADamagedFileWithAGoodPreviousLoadsTheOlderEntriesAndTryingAgainWritesThemBack) {
  charges.add({charge(QStringLiteral("one"))});
  charges.add({charge(QStringLiteral("two"))});
  folder.write(chargesFile(), "garbage");
  charges.load(folder.path());
  EXPECT_EQ(titles(), QStringList{QStringLiteral("one")});
  EXPECT_EQ(text(charges.issue().value_or(QString())), spendingEarlier);
  EXPECT_EQ(reported, QStringList{*charges.issue()});
  EXPECT_TRUE(charges.isPending());
  EXPECT_EQ(folder.read(chargesFile()), "garbage");

  ASSERT_TRUE(charges.canRetrySave());
  charges.persist();
  EXPECT_EQ(titlesIn(chargesFile()), QStringList{QStringLiteral("one")});
  EXPECT_EQ(titlesIn(chargesPrevious()), QStringList{QStringLiteral("one")}) << "garbage never becomes the good copy";
  EXPECT_FALSE(charges.issue());
  EXPECT_FALSE(charges.isPending());
}

TEST_F(LedgerTest, GarbageInBothFilesIsUnreadableAndNeitherFileIsEverTouched) {
  folder.write(chargesFile(), "garbage");
  folder.write(chargesPrevious(), "rubbish");
  charges.load(folder.path());
  EXPECT_TRUE(charges.isUnreadable());
  EXPECT_EQ(text(charges.issue().value_or(QString())), spendingUnreadable);
  charges.add({charge(QStringLiteral("one"))});
  EXPECT_EQ(reported.size(), 2);
  EXPECT_EQ(text(reported.last()), spendingUnreadable);
  EXPECT_TRUE(charges.isPending());
  EXPECT_FALSE(charges.canRetrySave());
  EXPECT_EQ(folder.read(chargesFile()), "garbage");
  EXPECT_EQ(folder.read(chargesPrevious()), "rubbish");
}

TEST_F(LedgerTest, ADamagedFileWithoutAPreviousIsUnreadableAndStaysAsItIs) {
  folder.write(chargesFile(), "[{\"id\":");
  charges.load(folder.path());
  EXPECT_TRUE(charges.isUnreadable());
  charges.add({charge(QStringLiteral("one"))});
  EXPECT_EQ(folder.read(chargesFile()), "[{\"id\":");
  EXPECT_EQ(folder.files().filter(QStringLiteral("charges")), QStringList{chargesFile()});
}

TEST_F(LedgerTest, AFileThatCannotBeReadIsNotTakenForAbsent) {
  // A folder in the file's place stands for whatever the system refuses to read, also to an administrator.
  QDir(folder.path()).mkpath(chargesFile());
  charges.load(folder.path());
  EXPECT_TRUE(charges.isUnreadable());
  charges.add({charge(QStringLiteral("one"))});
  EXPECT_TRUE(QFileInfo(folder / chargesFile()).isDir());
  EXPECT_TRUE(charges.isPending());
}

TEST_F(LedgerTest, AMissingFileNeverCostsThePreviousVersionThatStandsAlone) {
  charges.add({charge(QStringLiteral("one"))});
  charges.add({charge(QStringLiteral("two"))});
  QFile::remove(folder / chargesFile());
  charges.load(folder.path());
  EXPECT_TRUE(charges.entries().empty());
  charges.add({charge(QStringLiteral("new"))});
  charges.add({charge(QStringLiteral("newer"))});
  EXPECT_EQ(titlesIn(chargesPrevious() + QStringLiteral(".kept")), QStringList{QStringLiteral("one")});
}

TEST_F(LedgerTest, DuringABackupAChangeIsOnlyPendingAndEndingTheBackupWritesIt) {
  charges.setPaused(true);
  charges.add({charge(QStringLiteral("one"))});
  EXPECT_TRUE(charges.isPending());
  EXPECT_FALSE(charges.canRetrySave());
  EXPECT_FALSE(QFileInfo::exists(folder / chargesFile()));
  EXPECT_TRUE(reported.isEmpty());
  charges.setPaused(false);
  EXPECT_FALSE(charges.isPending());
  EXPECT_EQ(titlesIn(chargesFile()), QStringList{QStringLiteral("one")});
}

TEST_F(LedgerTest, AWriteThatFailsAtAnyStepKeepsTheEntriesInMemoryAndAGoodVersionOnDisk) {
  charges.add({charge(QStringLiteral("one"))});
  charges.add({charge(QStringLiteral("two"))});
  const QStringList before = folder.files();
  const QByteArray bytes = folder.read(chargesFile());
  int steps = 0;
  {
    test::FailingLayer counting(test::noFailingStep);
    const FileLayerOverride override(counting);
    charges.persist();
    steps = counting.steps();
  }
  ASSERT_GT(steps, 5);
  for (int step = 1; step <= steps; ++step) {
    SCOPED_TRACE(step);
    folder.write(chargesFile(), bytes);
    charges.load(folder.path());
    {
      test::FailingLayer full(step);
      const FileLayerOverride override(full);
      charges.add({charge(QStringLiteral("three"))});
    }
    EXPECT_EQ(titles().size(), 3);
    EXPECT_TRUE(charges.isPending());
    EXPECT_EQ(text(charges.issue().value_or(QString())), spendingNotSaved);
    EXPECT_TRUE(charges.canRetrySave());
    EXPECT_EQ(folder.files(), before) << "no temporary file stays";
    EXPECT_GE(titlesIn(chargesFile()).size(), 2);
    EXPECT_GE(titlesIn(chargesPrevious()).size(), 1);

    charges.persist();
    EXPECT_FALSE(charges.isPending());
    EXPECT_EQ(titlesIn(chargesFile()).size(), 3);
  }
}

TEST_F(LedgerTest, WithoutAWorkspaceSaysThatOneIsNeeded) {
  charges.load(std::nullopt);
  analyses.load(std::nullopt);
  prompts.load(std::nullopt);
  charges.add({charge(QStringLiteral("one"))});
  EXPECT_EQ(text(reported.last()), "Choose a workspace before saving your spending history.");
  analyses.keep({}, newUuid());
  EXPECT_EQ(text(reported.last()), "Choose a workspace before saving your saved image reviews.");
  EXPECT_EQ(messageOf([&] { prompts.save({}, QStringLiteral("a fox"), {}); }),
            "Choose a workspace before saving a prompt.");
}

TEST_F(LedgerTest, WritesNothingIntoAFolderThatIsNoLongerTheWorkspace) {
  charges.requireWorkspace = [] { throw SorvanError(QStringLiteral("away")); };
  charges.add({charge(QStringLiteral("one"))});
  EXPECT_TRUE(charges.isPending());
  EXPECT_FALSE(QFileInfo::exists(folder / chargesFile()));
}

// ---- Prompts

TEST_F(LedgerTest, APromptIsTitledByItsFirstSevenWords) {
  EXPECT_EQ(prompts.save({}, QStringLiteral("  a fox in the snow  "), {}).title, QStringLiteral("a fox in the snow"));
  EXPECT_EQ(prompts.save({}, QStringLiteral("one two three four five six seven eight"), {}).title,
            QStringLiteral("one two three four five six seven…"));
  EXPECT_EQ(prompts.save({}, QStringLiteral("a  b"), {}).title, QStringLiteral("a b…"));
}

TEST_F(LedgerTest, ABlankPromptIsRefused) {
  EXPECT_EQ(messageOf([&] { prompts.save({}, QStringLiteral(" \n "), {}); }), "Write a prompt first.");
  EXPECT_TRUE(prompts.entries().empty());
}

TEST_F(LedgerTest, ASavedPromptMovesToTheFrontInsteadOfDoubling) {
  const PromptEntry fox = prompts.save({}, QStringLiteral("a fox"), Instant{1});
  prompts.save({}, QStringLiteral("a hare"), Instant{2});
  const PromptEntry again = prompts.save({}, QStringLiteral("a fox"), Instant{3});
  ASSERT_EQ(prompts.entries().size(), 2u);
  EXPECT_EQ(again.id, fox.id);
  EXPECT_EQ(prompts.entries()[0].savedAt, Instant{3});
}

TEST_F(LedgerTest, AGivenPromptIsReplacedInItsPlace) {
  const PromptEntry fox = prompts.save({}, QStringLiteral("a fox"), Instant{1});
  prompts.save({}, QStringLiteral("a hare"), Instant{2});
  prompts.save(fox, QStringLiteral("a red fox"), Instant{3});
  ASSERT_EQ(prompts.entries().size(), 2u);
  EXPECT_EQ(prompts.entries()[1].text, QStringLiteral("a red fox"));
  EXPECT_EQ(prompts.entries()[1].id, fox.id);
  prompts.remove(fox.id);
  EXPECT_EQ(prompts.entries().size(), 1u);
}

TEST_F(LedgerTest, APromptThatCannotBeWrittenIsThrownAndStaysInMemory) {
  test::FailingLayer full(1);
  const FileLayerOverride override(full);
  EXPECT_NE(
      messageOf([&] { prompts.save({}, QStringLiteral("a fox"), {}); }).find("Your saved prompts couldn’t be saved."),
      std::string::npos);
  EXPECT_EQ(prompts.entries().size(), 1u);
  EXPECT_TRUE(prompts.isPending());
  EXPECT_TRUE(prompts.canRetrySave());
}

TEST_F(LedgerTest, AnUnreadablePromptFileRefusesNewPromptsBeforeAnythingChanges) {
  folder.write(QStringLiteral(".sorvan/prompts.json"), "garbage");
  prompts.load(folder.path());
  EXPECT_NE(messageOf([&] { prompts.save({}, QStringLiteral("a fox"), {}); }).find("Nothing has been replaced."),
            std::string::npos);
  EXPECT_TRUE(prompts.entries().empty());
  EXPECT_EQ(folder.read(QStringLiteral(".sorvan/prompts.json")), "garbage");
}

TEST_F(LedgerTest, ReviewsAreKeptByAssetAndReadBackInBothForms) {
  const QUuid asset = newUuid();
  SavedAnalysis analysis;
  analysis.date = {800000001.5};
  analysis.critique.verdict = QStringLiteral("sharp");
  analysis.critique.issues = {QStringLiteral("six fingers")};
  analyses.keep(analysis, asset);
  AnalysisLedger again;
  again.load(folder.path());
  EXPECT_EQ(again.entries().value(asset), analysis);

  QJsonArray pairs{uuidText(asset), toJson(analysis)};
  folder.write(QStringLiteral(".sorvan/analyses.json"), QJsonDocument(pairs).toJson());
  again.load(folder.path());
  EXPECT_EQ(again.entries().value(asset), analysis);
}

}  // namespace
}  // namespace sorvan::core
