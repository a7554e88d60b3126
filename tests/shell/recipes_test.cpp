#include <gtest/gtest.h>

#include "desk.h"

namespace sorvan::shell {
namespace {

const QString schnell = QStringLiteral("fal.ai:fal-ai/flux/schnell");

// One picture made with a model, a shape and a seed of its own, and the composer back at its start.
struct RecipesTest : testing::Test {
  test::Desk desk;
  QUuid item;

  void make(const QString& prompt) {
    desk.composer.chooseOnlyModel(schnell);
    desk.composer.chooseSize(QStringLiteral("1024x1024"));
    desk.composer.chooseCount(2);
    desk.composer.editSeed(QStringLiteral("77"));
    desk.generate(prompt);
    desk.settle();
    item = desk.store.assets().front()->id;
    desk.composer.clear();
    desk.alerts.dismissToast(desk.alerts.toasts().back().id);
  }
  void remake(const std::function<void(core::GenerationRequest&)>& change) {
    const core::GenerationRef generation = desk.store.generationOf(item);
    core::GenerationRequest recipe = *generation->recipe();
    change(recipe);
    desk.store.context().edit(generation).recipeData = core::encodeRequest(recipe);
    desk.store.context().save();
  }
  const core::GenerationRequest& request() const { return desk.composing.request(); }
};

TEST_F(RecipesTest, ReuseTakesTheWholeRecipeButNotItsSeed) {
  make(QStringLiteral("a red boat"));
  desk.composer.reusePrompt(item);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red boat"));
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{schnell});
  EXPECT_EQ(request().size, QStringLiteral("1024x1024"));
  EXPECT_EQ(request().count, 2);
  EXPECT_EQ(desk.composing.seedText(), QString());
  EXPECT_EQ(request().seed, std::nullopt);
  EXPECT_TRUE(desk.composing.isExpanded());
}

TEST_F(RecipesTest, UseSeedTakesTheSeedAndNothingElse) {
  make(QStringLiteral("a red boat"));
  desk.composer.editDraft(QStringLiteral("a blue boat"));
  desk.composer.useSeed(item);
  EXPECT_EQ(desk.composing.seedText(), QStringLiteral("77"));
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a blue boat"));
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{ComposerState::defaultModel});
}

TEST_F(RecipesTest, ARecipeThatCreditsPaidForGoesBackToTheServiceItself) {
  make(QStringLiteral("a red boat"));
  remake([](core::GenerationRequest& recipe) {
    recipe.provider = core::ProviderID::credits;
    recipe.creditRequestID = QUuid::createUuid();
  });
  desk.composer.reusePrompt(item);
  EXPECT_EQ(request().provider, core::ProviderID::fal);
  EXPECT_EQ(request().creditRequestID, std::nullopt);
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{schnell});
}

TEST_F(RecipesTest, ARecipeWhoseModelIsGoneSaysSoAndKeepsItsText) {
  make(QStringLiteral("a red boat"));
  remake([](core::GenerationRequest& recipe) { recipe.model = QStringLiteral("gone/model"); });
  desk.composer.reusePrompt(item);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red boat"));
  EXPECT_TRUE(desk.composer.message().isError);
  EXPECT_TRUE(desk.composer.message().text.startsWith(QStringLiteral("gone/model is not among your models any more.")));
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{ComposerState::defaultModel});
  EXPECT_EQ(request().model, QStringLiteral("fal-ai/nano-banana-2"));
}

TEST_F(RecipesTest, AReusedRecipeLeavesOutReferencesThatAreGone) {
  make(QStringLiteral("a red boat"));
  const QUuid lost = QUuid::createUuid();
  remake([&](core::GenerationRequest& recipe) {
    recipe.model = QStringLiteral("fal-ai/nano-banana-2");
    recipe.prompt = QStringLiteral("with @Tin and @Lost");
    recipe.referenceIDs = {lost, item};
    recipe.referenceBindings = {{{lost, QStringLiteral("Lost"), {}, {}, {}}, {item, QStringLiteral("Tin"), {}, {}, {}}}};
    recipe.markup = {{{0.1, 0.1, 0.2, 0.2, QStringLiteral("note")}}};
  });
  desk.composer.reusePrompt(item);
  EXPECT_EQ(request().referenceIDs, std::vector<QUuid>{item});
  ASSERT_EQ(request().referenceBindings->size(), 1u);
  EXPECT_EQ(request().referenceBindings->front().label, QStringLiteral("Tin"));
  EXPECT_EQ(request().markup, std::nullopt) << "the marks were on the picture that is gone";
}

TEST_F(RecipesTest, TheMarksOfAnEditComeWithItsPicture) {
  make(QStringLiteral("a red boat"));
  remake([&](core::GenerationRequest& recipe) {
    recipe.model = QStringLiteral("fal-ai/nano-banana-2");
    recipe.referenceIDs = {item};
    recipe.markup = {{{0.1, 0.1, 0.2, 0.2, QStringLiteral("note")}}};
  });
  desk.composer.reusePrompt(item);
  ASSERT_TRUE(request().markup);
  EXPECT_EQ(desk.composing.markupAssetId(), item);
}

TEST_F(RecipesTest, WhatReuseReplacedComesBackWithUndo) {
  make(QStringLiteral("a red boat"));
  desk.composer.editDraft(QStringLiteral("a long thought of mine"));
  desk.composer.editSeed(QStringLiteral("5"));
  desk.composer.reusePrompt(item);
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a long thought of mine"));
  EXPECT_EQ(desk.composing.seedText(), QStringLiteral("5"));
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{ComposerState::defaultModel});
}

TEST_F(RecipesTest, ClearTheComposerCanBeUndone) {
  make(QStringLiteral("a red boat"));
  desk.composer.reusePrompt(item);
  const core::ComposerDraft before = desk.composing.saved();
  desk.composer.clear();
  EXPECT_EQ(desk.composer.draft(), QString());
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts().front().text, QStringLiteral("Composer cleared"));
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_EQ(desk.composing.saved(), before);
}

TEST_F(RecipesTest, UndoAfterTypingAnewLosesNeitherPrompt) {
  desk.composer.editDraft(QStringLiteral("the first"));
  desk.composer.clear();
  desk.composer.editDraft(QStringLiteral("the second"));
  desk.alerts.performToastAction(desk.alerts.toasts().back().id);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("the first"));
  ASSERT_FALSE(desk.alerts.toasts().empty());
  desk.alerts.performToastAction(desk.alerts.toasts().back().id);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("the second"));
}

TEST_F(RecipesTest, ClearingAnUntouchedComposerOffersNothing) {
  desk.composer.clear();
  EXPECT_TRUE(desk.alerts.toasts().empty());
}

TEST_F(RecipesTest, CopyPromptPutsItOnTheClipboard) {
  make(QStringLiteral("a red boat"));
  desk.composer.copyPrompt(item);
  EXPECT_EQ(desk.copied, QStringLiteral("a red boat"));
}

}  // namespace
}  // namespace sorvan::shell
