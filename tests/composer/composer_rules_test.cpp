#include "composer/composer_rules.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "composer/composer_models.h"
#include "composer/notice_texts.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using test::imageModel;
using test::referenceModel;
using test::selectable;

const SorvanIntent promptIntent = GenerationInstruction{u"a fox"_s};
const SorvanIntent unknownIntent = Unknown{u"?"_s};

TEST(ComposerRules, OnlyAnUnplacedCommandGoesToTheInterpreter) {
  EXPECT_TRUE(needsInterpretation(ComposerMode::command, true, false, unknownIntent));
  EXPECT_TRUE(needsInterpretation(ComposerMode::command, true, false, promptIntent));
  EXPECT_FALSE(needsInterpretation(ComposerMode::generation, true, false, promptIntent));
  EXPECT_FALSE(needsInterpretation(ComposerMode::command, false, false, unknownIntent));
  EXPECT_FALSE(needsInterpretation(ComposerMode::command, true, true, unknownIntent));
  EXPECT_FALSE(needsInterpretation(ComposerMode::command, true, false, SearchAssets{u"x"_s}));
  EXPECT_FALSE(needsInterpretation(ComposerMode::command, true, false, Unsupported{u"x"_s}));
}

TEST(ComposerRules, TheButtonSaysWhatItDoes) {
  EXPECT_EQ(submitTitle({ComposerMode::command, true, true, 2}), u"Interpreting…"_s);
  EXPECT_EQ(submitTitle({ComposerMode::command, false, true, 2}), u"Interpret"_s);
  EXPECT_EQ(submitTitle({ComposerMode::command, false, false, 2}), u"Run"_s);
  EXPECT_EQ(submitTitle({ComposerMode::generation, false, false, 0}), u"Generate"_s);
  EXPECT_EQ(submitTitle({ComposerMode::generation, false, false, 1}), u"Generate"_s);
  EXPECT_EQ(submitTitle({ComposerMode::generation, false, false, 2}), u"Generate & Compare"_s);
  EXPECT_TRUE(submitIsEnabled(false, false));
  EXPECT_FALSE(submitIsEnabled(true, false));
  EXPECT_FALSE(submitIsEnabled(false, true));
}

TEST(ComposerRules, TheModelsAreNamedOrCounted) {
  EXPECT_EQ(modelLabel({}), u"Select Model"_s);
  EXPECT_EQ(modelLabel(selectable({imageModel(u"one"_s)})), u"one"_s);
  EXPECT_EQ(modelLabel(selectable({imageModel(u"one"_s), imageModel(u"two"_s)})), u"2 models"_s);
}

TEST(ComposerRules, PicturesNeedEveryChosenModel) {
  EXPECT_FALSE(referencesSupported({}));
  EXPECT_TRUE(referencesSupported(selectable({referenceModel(u"a"_s)})));
  EXPECT_FALSE(referencesSupported(selectable({imageModel(u"a"_s)})));
  EXPECT_TRUE(referencesSupported(selectable({referenceModel(u"a"_s), referenceModel(u"b"_s)})));
  EXPECT_FALSE(referencesSupported(selectable({referenceModel(u"a"_s), imageModel(u"b"_s)})));
}

TEST(ComposerRules, TheMostModestModelLimitsTheCount) {
  EXPECT_EQ(mostOutputs({}), 4);
  EXPECT_EQ(mostOutputs(selectable({imageModel(u"a"_s, 6)})), 6);
  EXPECT_EQ(mostOutputs(selectable({imageModel(u"a"_s, 6), imageModel(u"b"_s, 2)})), 2);
  EXPECT_EQ(mostOutputs(selectable({imageModel(u"a"_s, 0)})), 1);
}

// ---- A press of the button

PressedSubmit press(const QString& draft, ComposerMode mode = ComposerMode::generation) {
  PressedSubmit pressed;
  pressed.draft = draft;
  pressed.mode = mode;
  return pressed;
}

TEST(SubmitStep, NothingHappensWithoutAPromptOrWhileSomethingRuns) {
  EXPECT_TRUE(submitStep(press(u" \n"_s)) == SubmitStep(DoNothing{}));
  PressedSubmit busy = press(u"a"_s);
  busy.isInterpreting = true;
  EXPECT_TRUE(submitStep(busy) == SubmitStep(DoNothing{}));
  busy.isInterpreting = false;
  busy.importsReferences = true;
  EXPECT_TRUE(submitStep(busy) == SubmitStep(DoNothing{}));
}

TEST(SubmitStep, FiveHundredCreditsAreSpentWithoutAQuestionAndMoreAsk) {
  PressedSubmit pressed = press(u"a fox"_s);
  pressed.credits = CreditEstimate{500, {}};
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(Execute{promptIntent}));
  pressed.credits = CreditEstimate{501, {}};
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(ConfirmCredits{501}));
  pressed.isConfirmed = true;
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(Execute{promptIntent}));
}

TEST(SubmitStep, AnUnpricedModelOrACommandIsNeverAskedAbout) {
  PressedSubmit pressed = press(u"a fox"_s);
  pressed.credits = CreditEstimate{9000, {u"New"_s}};
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(Execute{promptIntent}));
  PressedSubmit command = press(u"compare"_s, ComposerMode::command);
  command.credits = CreditEstimate{9000, {}};
  EXPECT_TRUE(submitStep(command) == SubmitStep(Execute{CompareAssets{}}));
}

TEST(SubmitStep, AReviewedActionRunsOnTheSelectionItWasAskedFor) {
  PressedSubmit pressed = press(u"put these into Sea"_s, ComposerMode::command);
  pressed.interpretWithAI = true;
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(Interpret{}));
  pressed.reviewed = MoveAssets{u"Sea"_s};
  pressed.selection = pressed.reviewedSelection = {newUuid()};
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(Execute{MoveAssets{u"Sea"_s}}));
  pressed.selection = {newUuid()};
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(RefuseSelection{}));
}

TEST(SubmitStep, AReviewedAnswerThatWasNotUnderstoodIsNotSentAgain) {
  PressedSubmit pressed = press(u"what"_s, ComposerMode::command);
  pressed.interpretWithAI = true;
  pressed.reviewed = unknownIntent;
  EXPECT_TRUE(submitStep(pressed) == SubmitStep(Execute{unknownIntent}));
}

TEST(SubmitStep, WithoutTheInterpreterAnUnplacedCommandIsTold) {
  const SubmitStep step = submitStep(press(u"a red bicycle"_s, ComposerMode::command));
  ASSERT_TRUE(std::holds_alternative<Execute>(step));
  EXPECT_TRUE(std::holds_alternative<Unknown>(std::get<Execute>(step).intent));
}

// ---- Attaching files

TEST(AttachRefusal, AllFilesAreRefusedWhereNotAllFit) {
  EXPECT_EQ(attachRefusal(false, 6, 3), texts::eightReferencesAtMost());
  EXPECT_EQ(attachRefusal(false, 5, 3), std::nullopt);
  EXPECT_EQ(attachRefusal(false, 8, 0), std::nullopt);
  EXPECT_EQ(attachRefusal(true, 0, 1), texts::waitForImport());
}

}  // namespace
}  // namespace sorvan::composer
