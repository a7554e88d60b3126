#include "core/composer_sidecar.h"

#include "base/json.h"
#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::text;

const char* const notSaved =
    "Your unfinished prompt and its settings couldn’t be saved. Keep Sorvan open so you don’t lose your latest "
    "changes. Check that your workspace folder is available and your disk has free space, then open Workspace Health "
    "and choose Try Saving Again.";

struct ComposerSidecarTest : test::LibraryFixture {
  ComposerSidecarTest() { open(); }
  static ComposerDraft draft(const QString& words) {
    ComposerDraft value;
    value.text = words;
    value.request = encodeRequest(GenerationRequest());
    value.selectedModels = {QStringLiteral("fal-ai/flux/schnell")};
    return value;
  }
};

TEST_F(ComposerSidecarTest, KeepsTheDraftOverClosingTheWorkspace) {
  store.keepComposer(draft(QStringLiteral("a fox 🦊")));
  EXPECT_FALSE(store.hasUnsavedMetadata());
  reopen();
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("a fox 🦊")));
}

TEST_F(ComposerSidecarTest, WithADamagedFileHasNoDraftAndDoesNotDisturbTheFile) {
  writeSidecar(QStringLiteral("composer.json"), "garbage");
  EXPECT_EQ(store.keptComposer(), std::nullopt);
  EXPECT_EQ(sidecar(QStringLiteral("composer.json")), "garbage");
}

TEST_F(ComposerSidecarTest, PutsEachDamagedFileAsideBeforeItWritesANewDraft) {
  writeSidecar(QStringLiteral("composer.json"), "garbage");
  store.keepComposer(draft(QStringLiteral("one")));
  writeSidecar(QStringLiteral("composer.json"), "rubbish");
  store.keepComposer(draft(QStringLiteral("two")));
  EXPECT_EQ(sidecar(QStringLiteral("composer.json.unreadable")), "garbage");
  EXPECT_EQ(sidecar(QStringLiteral("composer.json.unreadable-2")), "rubbish");
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("two")));
}

TEST_F(ComposerSidecarTest, DuringABackupTheDraftIsPendingAndEndingTheBackupWritesIt) {
  store.setBackingUp(true);
  store.keepComposer(draft(QStringLiteral("a fox")));
  EXPECT_TRUE(store.hasUnsavedMetadata());
  EXPECT_FALSE(hasSidecar(QStringLiteral("composer.json")));
  store.setBackingUp(false);
  EXPECT_FALSE(store.hasUnsavedMetadata());
  EXPECT_EQ(store.keptComposer(), draft(QStringLiteral("a fox")));
}

TEST_F(ComposerSidecarTest, AFailedWriteIsShownAndASuccessfulOneTakesItsMessageBack) {
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.keepComposer(draft(QStringLiteral("a fox")));
  }
  EXPECT_EQ(text(store.error().value_or(QString())), notSaved);
  EXPECT_TRUE(store.hasUnsavedMetadata());
  ASSERT_TRUE(store.canRetryMetadataSave());
  store.retryMetadataSave();
  EXPECT_EQ(store.error(), std::nullopt);
  EXPECT_FALSE(store.hasUnsavedMetadata());
}

TEST_F(ComposerSidecarTest, ASuccessfulWriteLeavesTheMessageOfAnotherFailureAlone) {
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    store.keepComposer(draft(QStringLiteral("a fox")));
  }
  store.setError(QStringLiteral("something else"));
  store.retryMetadataSave();
  EXPECT_EQ(store.error(), QStringLiteral("something else"));
}

TEST_F(ComposerSidecarTest, ADraftThatTheFileAlreadyHoldsIsNotUnsaved) {
  store.keepComposer(draft(QStringLiteral("a fox")));
  store.setBackingUp(true);
  store.keepComposer(draft(QStringLiteral("a fox")));
  EXPECT_FALSE(store.hasUnsavedMetadata());
  store.keepComposer(draft(QStringLiteral("a hare")));
  EXPECT_TRUE(store.hasUnsavedMetadata());
}

TEST_F(ComposerSidecarTest, WithoutAWorkspaceKeepsTheDraftInMemoryAndHoldsNobodyUp) {
  store.close();
  store.keepComposer(draft(QStringLiteral("a fox")));
  EXPECT_EQ(store.composer().pending(), draft(QStringLiteral("a fox")));
  EXPECT_FALSE(store.hasUnsavedMetadata());
  EXPECT_EQ(store.error(), std::nullopt);
}

TEST_F(ComposerSidecarTest, APromptOfAHundredThousandCharactersIsKept) {
  const QString longText = QStringLiteral("שלום 🦊 ").repeated(12500);
  store.keepComposer(draft(longText));
  reopen();
  ASSERT_TRUE(store.keptComposer());
  EXPECT_EQ(store.keptComposer()->text, longText);
}

}  // namespace
}  // namespace sorvan::core
