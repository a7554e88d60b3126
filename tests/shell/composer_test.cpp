#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>

#include "core/projects.h"
#include "core/workspace_opening.h"
#include "desk.h"
#include "two_clips.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

const QString schnell = QStringLiteral("fal.ai:fal-ai/flux/schnell");
const QString soundEffect = QStringLiteral("fal.ai:fal-ai/elevenlabs/sound-effects/v2");

struct ComposerTest : testing::Test {
  test::Desk desk;
  void holdJobs() { desk.provider->gate.emplace(); }
  void releaseJobs() {
    desk.provider->gate->finish();
    desk.settle();
  }
};

TEST_F(ComposerTest, GenerateQueuesTheTrimmedPromptAndEmptiesTheField) {
  holdJobs();
  desk.generate(QStringLiteral("  a red boat \n"));
  ASSERT_EQ(desk.store.jobs().size(), 1u);
  EXPECT_EQ(desk.newestJob()->request()->prompt, QStringLiteral("a red boat"));
  EXPECT_EQ(desk.composer.draft(), QString());
  EXPECT_EQ(desk.composer.message().text, QStringLiteral("Queued · outputs will be saved in Inbox."));
  EXPECT_EQ(desk.state.location(), inboxLocation);
  releaseJobs();
  EXPECT_EQ(desk.newestJob()->status, core::jobStatus::complete);
}

TEST_F(ComposerTest, ASecondPressBeforeATurnOfTheLoopQueuesNothing) {
  holdJobs();
  desk.composer.editDraft(QStringLiteral("a red boat"));
  desk.composer.submit();
  desk.composer.submit();
  test::runPosted();
  EXPECT_EQ(desk.store.jobs().size(), 1u);
  releaseJobs();
}

TEST_F(ComposerTest, TheSamePromptTypedAgainLaterIsANewRequest) {
  holdJobs();
  desk.generate(QStringLiteral("a red boat"));
  desk.generate(QStringLiteral("a red boat"));
  EXPECT_EQ(desk.store.jobs().size(), 2u);
  releaseJobs();
}

TEST_F(ComposerTest, GenerateWaitsForTheFirstAnswerOfTheKeyStore) {
  holdJobs();
  desk.keyGate.emplace();
  desk.generate(QStringLiteral("a red boat"));
  desk.composer.submit();
  test::runPosted();
  EXPECT_TRUE(desk.store.jobs().empty());
  EXPECT_TRUE(desk.composer.display().submitBusy);
  desk.keyGate->finish();
  test::runPosted();
  EXPECT_EQ(desk.store.jobs().size(), 1u);
  EXPECT_FALSE(desk.composer.display().submitBusy);
  releaseJobs();
}

TEST_F(ComposerTest, WhatIsTypedWhileTheKeyIsAwaitedStays) {
  holdJobs();
  desk.keyGate.emplace();
  desk.generate(QStringLiteral("a red boat"));
  desk.composer.editDraft(QStringLiteral("a blue boat"));
  desk.keyGate->finish();
  test::runPosted();
  ASSERT_EQ(desk.store.jobs().size(), 1u);
  EXPECT_EQ(desk.newestJob()->request()->prompt, QStringLiteral("a red boat"));
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a blue boat"));
  releaseJobs();
}

TEST_F(ComposerTest, AMissingKeyIsSaidAndThePromptStays) {
  desk.key.reset();
  desk.generate(QStringLiteral("a red boat"));
  EXPECT_TRUE(desk.store.jobs().empty());
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red boat"));
  EXPECT_TRUE(desk.composer.message().isError);
  EXPECT_TRUE(
      desk.composer.message().text.startsWith(QStringLiteral("Add your fal.ai key under Settings → fal.ai Key")));
}

TEST_F(ComposerTest, ABlankPromptDoesNothingAndSaysNothing) {
  desk.generate(QStringLiteral("  \n "));
  EXPECT_TRUE(desk.store.jobs().empty());
  EXPECT_EQ(desk.composer.message().text, QString());
  EXPECT_FALSE(desk.composer.display().submitEmphasised);
}

TEST_F(ComposerTest, ASeedMustBeAWholeNumber) {
  desk.composer.editSeed(QStringLiteral("12x"));
  desk.generate(QStringLiteral("a red boat"));
  EXPECT_TRUE(desk.store.jobs().empty());
  EXPECT_EQ(desk.composer.message().text, QStringLiteral("The seed must be a non-negative whole number."));
  holdJobs();
  desk.composer.editSeed(QStringLiteral("+12"));
  desk.composer.submit();
  test::runPosted();
  ASSERT_EQ(desk.store.jobs().size(), 1u);
  EXPECT_EQ(desk.newestJob()->request()->seed, 12);
  releaseJobs();
}

TEST_F(ComposerTest, TwoModelsMakeAComparison) {
  holdJobs();
  desk.composer.setModelChosen(schnell, true);
  EXPECT_EQ(desk.composer.display().submitTitle, QStringLiteral("Generate & Compare"));
  EXPECT_EQ(desk.composer.display().modelLabel, QStringLiteral("2 models"));
  desk.generate(QStringLiteral("a red boat"));
  ASSERT_EQ(desk.store.jobs().size(), 2u);
  EXPECT_TRUE(desk.newestJob()->request()->comparisonID);
  releaseJobs();
}

TEST_F(ComposerTest, ASoundModelStandsAloneAndHasNoShape) {
  desk.composer.setModelChosen(schnell, true);
  desk.composer.setModelChosen(soundEffect, true);
  const ComposerDisplay display = desk.composer.display();
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{soundEffect});
  EXPECT_FALSE(display.ratioShown);
  EXPECT_FALSE(display.countShown);
  EXPECT_TRUE(display.lengthShown);
  desk.composer.setModelChosen(schnell, true);
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{schnell});
}

TEST_F(ComposerTest, ASoundIsQueuedWithItsLength) {
  holdJobs();
  desk.composer.chooseOnlyModel(soundEffect);
  desk.composer.chooseLength(QStringLiteral("10"));
  desk.generate(QStringLiteral("rain on a roof"));
  ASSERT_EQ(desk.store.jobs().size(), 1u);
  const auto request = desk.newestJob()->request();
  EXPECT_EQ(request->model, QStringLiteral("fal-ai/elevenlabs/sound-effects/v2"));
  EXPECT_EQ(request->options->value(QStringLiteral("duration_seconds")), QStringLiteral("10"));
  EXPECT_TRUE(desk.composer.message().text.startsWith(QStringLiteral("Making the sound effect with ")));
  releaseJobs();
}

TEST_F(ComposerTest, TheDraftIsKeptShortlyAfterTypingAndComesBack) {
  desk.composer.editDraft(QStringLiteral("half a thought"));
  test::runPosted();
  desk.clock->advance(500ms);
  test::runPosted();
  test::runTask(desk.store.composer().whenWritten());
  ASSERT_TRUE(desk.store.keptComposer());
  EXPECT_EQ(desk.store.keptComposer()->text, QStringLiteral("half a thought"));

  const QString root = *desk.store.workspaceRoot();
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  test::runPosted();
  EXPECT_EQ(desk.composer.draft(), QString());
  core::openWorkspace(desk.store, root, core::Remember::no);
  test::runPosted();
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("half a thought"));
}

TEST_F(ComposerTest, WhatWasTypedJustBeforeASwitchIsKeptInTheWorkspaceThatIsLeft) {
  const QString root = *desk.store.workspaceRoot();
  desk.composer.editDraft(QStringLiteral("half a thought"));
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  test::runPosted();
  EXPECT_FALSE(desk.store.keptComposer());
  core::openWorkspace(desk.store, root, core::Remember::no);
  test::runPosted();
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("half a thought"));
}

TEST_F(ComposerTest, AnUntouchedComposerLeavesNoFile) {
  desk.composer.keepNow();
  EXPECT_FALSE(desk.store.keptComposer());
}

TEST_F(ComposerTest, NothingIsWrittenAgainWithoutAChange) {
  desk.composer.editDraft(QStringLiteral("half a thought"));
  desk.composer.keepNow();
  QSignalSpy metadata(&desk.store, &core::LibraryStore::metadataChanged);
  desk.composer.keepNow();
  EXPECT_EQ(metadata.count(), 0);
}

TEST_F(ComposerTest, TheMessageOfASuccessLeavesAfterFiveSeconds) {
  holdJobs();
  desk.generate(QStringLiteral("a red boat"));
  ASSERT_FALSE(desk.composer.message().text.isEmpty());
  desk.clock->advance(5100ms);
  test::runPosted();
  EXPECT_EQ(desk.composer.message().text, QString());
  releaseJobs();
}

TEST_F(ComposerTest, NewAudioChoosesTheFirstSoundModelOnce) {
  desk.composer.startAudio();
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{QStringLiteral("fal.ai:elevenlabs/tts/eleven-v4-turbo")});
  desk.composer.chooseOnlyModel(soundEffect);
  desk.composer.startAudio();
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{soundEffect});
}

TEST_F(ComposerTest, ReusingTakesThePromptOver) {
  desk.generate(QStringLiteral("a red boat"));
  desk.settle();
  ASSERT_EQ(desk.store.assets().size(), 1u);
  QSignalSpy replaced(&desk.composer, &ComposerPresenter::draftReplaced);
  desk.composer.reusePrompt(desk.store.assets().front()->id);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red boat"));
  EXPECT_EQ(replaced.count(), 1);
}

// ---- Bad input

TEST_F(ComposerTest, AReferenceThatWentToTrashMeanwhileIsSaidAndNothingIsQueued) {
  desk.generate(QStringLiteral("a red boat"));
  desk.settle();
  const core::AssetRef item = desk.store.assets().front();
  desk.composer.useAsReference(item->id);
  desk.store.context().edit(item).deletedAt = desk.store.now();
  desk.store.context().save();
  const std::size_t jobs = desk.store.jobs().size();
  desk.generate(QStringLiteral("a boat like this"));
  EXPECT_EQ(desk.store.jobs().size(), jobs);
  EXPECT_TRUE(desk.composer.message().isError);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a boat like this"));
}

TEST_F(ComposerTest, AMegabyteOfTextIsKeptWholeAndGivenBack) {
  const QString pasted = QStringLiteral("wörter 🦊 ").repeated(1'000'000 / 10);
  desk.composer.editDraft(pasted);
  test::runPosted();
  EXPECT_FALSE(desk.composer.display().submitTitle.isEmpty());
  desk.composer.keepNow();
  const QString root = *desk.store.workspaceRoot();
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  core::openWorkspace(desk.store, root, core::Remember::no);
  test::runPosted();
  EXPECT_EQ(desk.composer.draft(), pasted);
}

TEST_F(ComposerTest, ATextThatIsNotTakenInIsSaidWithItsLength) {
  desk.composer.editDraft(QStringLiteral("a red boat"));
  desk.composer.refusePaste(1'048'586);
  EXPECT_TRUE(desk.composer.message().isError);
  EXPECT_EQ(desk.composer.message().text,
            QStringLiteral("That text was not added: the prompt would have 1,048,586 characters, and it takes up to "
                           "32,000. It is still where you copied it."));
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red boat"));
}

TEST_F(ComposerTest, TheSettingsThatTheModelsHaveInCommonAreOffered) {
  const auto chosen = [this] {
    QStringList labels;
    for (const SettingChoices& setting : desk.composer.display().settings)
      for (const LengthChoice& value : setting.values)
        if (value.chosen) labels << setting.label + QStringLiteral(": ") + value.label;
    return labels;
  };
  EXPECT_EQ(chosen(), QStringList{QStringLiteral("Resolution: 1K")});
  desk.composer.chooseSetting(QStringLiteral("resolution"), QStringLiteral("4K"));
  EXPECT_EQ(chosen(), QStringList{QStringLiteral("Resolution: 4K")});
  EXPECT_EQ(desk.composing.request().options->value(QStringLiteral("resolution")), QStringLiteral("4K"));
  // The other model knows no resolution.
  desk.composer.setModelChosen(QStringLiteral("fal.ai:fal-ai/flux/schnell"), true);
  EXPECT_EQ(chosen(), QStringList());
  EXPECT_FALSE(desk.composing.request().options);
}

TEST_F(ComposerTest, TheSettingsStripStaysOpenWhenTheComposerIsCleared) {
  EXPECT_FALSE(desk.composer.display().settingsShown);
  desk.composer.setSettingsShown(true);
  EXPECT_TRUE(desk.composer.display().settingsShown);
  desk.composer.clear();
  EXPECT_TRUE(desk.composer.display().settingsShown);
}

TEST_F(ComposerTest, SettingsEditedByHandNeverStopTheComposer) {
  desk.settings->set(QStringLiteral("interpretWithAI"), QStringLiteral("perhaps"));
  desk.settings->set(QStringLiteral("pendingInterpretations"), QStringLiteral("none"));
  desk.composer.setCommandMode(true);
  desk.composer.editDraft(QStringLiteral("a red bicycle"));
  EXPECT_EQ(desk.composer.display().submitTitle, QStringLiteral("Run"));
  desk.composer.setCommandMode(false);
  holdJobs();
  desk.generate(QStringLiteral("a red boat"));
  EXPECT_EQ(desk.store.jobs().size(), 1u);
  releaseJobs();
}

TEST_F(ComposerTest, ADraftWhoseRequestDoesNotDecodeIsPutAsideBeforeItIsReplaced) {
  const QString root = *desk.store.workspaceRoot();
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  core::ComposerDraft lost;
  lost.text = QStringLiteral("words that matter");
  lost.request = "no request";
  desk.store.composer().open(root);
  desk.store.keepComposer(lost);
  core::openWorkspace(desk.store, root, core::Remember::no);
  test::runPosted();
  EXPECT_EQ(desk.composer.draft(), QString());
  desk.composer.editDraft(QStringLiteral("a new thought"));
  desk.composer.keepNow();
  EXPECT_EQ(desk.store.keptComposer()->text, QStringLiteral("a new thought"));
  QFile aside(root + QStringLiteral("/.sorvan/composer.json.unreadable"));
  ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
  EXPECT_TRUE(aside.readAll().contains("words that matter"));
}

TEST_F(ComposerTest, TwoClipsOfDifferentLengthsOfferTheirLengths) {
  desk.composing.setModels(test::twoClips());
  desk.composer.chooseOnlyModel(QStringLiteral("fal.ai:one"));
  desk.composer.setModelChosen(QStringLiteral("fal.ai:two"), true);
  const ComposerDisplay differing = desk.composer.display();
  ASSERT_EQ(differing.lengthRows.size(), 2u);
  EXPECT_EQ(differing.sharedLength, QStringLiteral("Different lengths"));
  EXPECT_EQ(differing.lengthValue, QStringLiteral("5 s, 6 s"));
  ASSERT_FALSE(differing.notices.empty());
  EXPECT_EQ(differing.notices.front(),
            ComposerNotice(QStringLiteral("Clips will differ in length: one 5 s · two 6 s."),
                           {QStringLiteral("Choose Lengths…")}, AlertTone::information));
  QSignalSpy asked(&desk.composer, &ComposerPresenter::lengthsRequested);
  desk.composer.performNotice(differing.notices.front().text, 0);
  EXPECT_EQ(asked.count(), 1);
  desk.composer.chooseLengthOf(QStringLiteral("one"), QStringLiteral("10"));
  EXPECT_EQ(desk.composer.display().lengthValue, QStringLiteral("10 s, 6 s"));
  desk.composer.chooseLength(QStringLiteral("10"));
  EXPECT_EQ(desk.composer.display().notices.front().text, QStringLiteral("Every model will make a 10 s clip."));
  EXPECT_EQ(desk.composer.display().lengthLabel, QStringLiteral("10 s"));
}

TEST_F(ComposerTest, WhereToSaveIsChosenInTheDock) {
  const core::ProjectRef project = core::createProject(desk.store, QStringLiteral("Campaign"));
  ASSERT_EQ(desk.composer.destinations().size(), 2u);
  EXPECT_TRUE(desk.composer.destinations()[0].chosen);
  desk.composer.chooseDestination(project->id);
  EXPECT_EQ(desk.composer.display().destination, QStringLiteral("Campaign"));
  EXPECT_TRUE(desk.composer.destinations()[1].chosen);
}

}  // namespace
}  // namespace sorvan::shell
