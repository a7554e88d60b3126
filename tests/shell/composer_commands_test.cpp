#include <gtest/gtest.h>

#include "core/ledgers.h"
#include "core/small_edits.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

// The library with three pictures, and the composer in command mode.
struct ComposerCommandsTest : testing::Test {
  test::Desk desk;
  std::vector<QUuid> items;

  void makeThree() {
    for (const QString& prompt : {QStringLiteral("a red boat"), QStringLiteral("a temple"), QStringLiteral("a fox")}) {
      desk.generate(prompt);
      desk.settle();
    }
    for (const core::AssetRef& asset : desk.store.assets()) items.push_back(asset->id);
  }
  void type(const QString& text) {
    desk.composer.editDraft(text);
    desk.clock->advance(200ms);
    test::runPosted();
  }
  void command(const QString& text) {
    desk.composer.setCommandMode(true);
    type(text);
    desk.composer.submit();
    test::runPosted();
  }
};

TEST_F(ComposerCommandsTest, CommandModeSaysWhatTheTextIsUnderstoodAs) {
  desk.composer.setCommandMode(true);
  EXPECT_EQ(desk.composer.display().commandLabel, QString());
  EXPECT_EQ(desk.composer.display().submitTitle, QStringLiteral("Run"));
  type(QStringLiteral("find temple images"));
  EXPECT_EQ(desk.composer.display().commandLabel, QStringLiteral("Find media"));
  type(QStringLiteral("show approved images"));
  EXPECT_EQ(desk.composer.display().commandLabel, QStringLiteral("Filter library"));
  EXPECT_EQ(desk.composer.display().estimate, QString()) << "a command costs nothing";
}

TEST_F(ComposerCommandsTest, ACommandIsNeverGeneratedAndAPromptIsNeverRun) {
  makeThree();
  const std::size_t jobs = desk.store.jobs().size();
  command(QStringLiteral("a red bicycle"));
  EXPECT_EQ(desk.store.jobs().size(), jobs);
  EXPECT_EQ(desk.composer.message().text,
            QStringLiteral("Enter an app command, or switch to Generate to create an image."));
  EXPECT_TRUE(desk.composer.message().isError);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a red bicycle")) << "the text stays to be corrected";
  desk.composer.setCommandMode(false);
  desk.generate(QStringLiteral("find cats"));
  desk.settle();
  EXPECT_EQ(desk.newestJob()->request()->prompt, QStringLiteral("find cats"));
}

TEST_F(ComposerCommandsTest, ThePromptWaitsWhileCommandsAreTypedAndIsBackAfterOne) {
  makeThree();
  desk.composer.editDraft(QStringLiteral("half a thought"));
  desk.composer.setCommandMode(true);
  EXPECT_EQ(desk.composer.draft(), QString());
  EXPECT_EQ(desk.composing.saved().text, QStringLiteral("half a thought")) << "what a crash would leave";
  command(QStringLiteral("find temple images"));
  EXPECT_FALSE(desk.composer.display().command);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("half a thought"));
  EXPECT_EQ(desk.composer.message().text, QStringLiteral("Searching your workspace for “temple”."));
}

TEST_F(ComposerCommandsTest, FindSearchesTheWholeWorkspace) {
  makeThree();
  desk.state.setLocation(favoritesLocation);
  command(QStringLiteral("find temple images"));
  EXPECT_EQ(desk.state.location(), allMediaLocation);
  EXPECT_EQ(desk.state.filter().search, QStringLiteral("temple"));
  EXPECT_EQ(desk.state.mode().kind, ModeKind::searchResults);
}

TEST_F(ComposerCommandsTest, AFilterTakesThePlaceOfTheOneBefore) {
  command(QStringLiteral("show flux images"));
  EXPECT_EQ(desk.state.filter().model, QStringLiteral("flux"));
  command(QStringLiteral("show favorites"));
  EXPECT_EQ(desk.state.filter().model, QStringLiteral("all"));
  EXPECT_TRUE(desk.state.filter().favoritesOnly);
}

TEST_F(ComposerCommandsTest, CreateAProjectOpensItAndSavesThere) {
  command(QStringLiteral("create a project called Campaign"));
  ASSERT_EQ(desk.store.projects().size(), 1u);
  EXPECT_EQ(desk.store.projects().front()->name, QStringLiteral("Campaign"));
  EXPECT_EQ(desk.composing.projectId(), desk.store.projects().front()->id);
  EXPECT_EQ(desk.composer.display().destination, QStringLiteral("Campaign"));
}

TEST_F(ComposerCommandsTest, MoveTakesTheSelectionToTheProject) {
  makeThree();
  command(QStringLiteral("create a project called Campaign"));
  desk.state.setLocation(allMediaLocation);
  command(QStringLiteral("move selected images to campaign"));
  EXPECT_EQ(desk.composer.message().text, QStringLiteral("Select the media you want to move first."));
  desk.composer.setCommandMode(false);
  desk.state.select({items[0], items[1]});
  command(QStringLiteral("move selected images to campaign"));
  const QUuid project = desk.store.projects().front()->id;
  EXPECT_EQ(desk.store.asset(items[0])->projectID, project);
  EXPECT_EQ(desk.store.asset(items[1])->projectID, project);
  EXPECT_NE(desk.store.asset(items[2])->projectID, project);
}

TEST_F(ComposerCommandsTest, CompareMakesASheetOfTheSelectionInItsOrder) {
  makeThree();
  test::runPosted();
  desk.state.select({items[0], items[1], items[2]});
  command(QStringLiteral("compare these"));
  ASSERT_EQ(desk.store.contactSheets().size(), 1u);
  EXPECT_EQ(desk.store.contactSheets().front()->assetIDs, items) << "as the gallery shows them";
  EXPECT_EQ(desk.state.mode().kind, ModeKind::contactSheet);
}

TEST_F(ComposerCommandsTest, FavoriteAndStatusAreGivenToTheSelection) {
  makeThree();
  desk.state.select({items[0]});
  command(QStringLiteral("favorite selected"));
  command(QStringLiteral("mark selected as approved"));
  EXPECT_TRUE(desk.store.asset(items[0])->favorite);
  EXPECT_EQ(desk.store.asset(items[0])->status(), core::AssetStatus::approved);
}

TEST_F(ComposerCommandsTest, RemovingItemsIsLeftToTheTrash) {
  makeThree();
  desk.state.select({items[0]});
  command(QStringLiteral("remove selected photos"));
  EXPECT_TRUE(desk.composer.message().text.contains(QStringLiteral("Move to Trash")));
  EXPECT_FALSE(desk.store.asset(items[0])->isTrashed());
}

TEST_F(ComposerCommandsTest, WithoutAnInterpreterNothingOffersIt) {
  desk.settings->set(QStringLiteral("interpretWithAI"), true);
  desk.composer.setCommandMode(true);
  type(QStringLiteral("a red bicycle"));
  EXPECT_EQ(desk.composer.display().submitTitle, QStringLiteral("Run"));
  EXPECT_FALSE(desk.composer.display().interpretOffered);
  EXPECT_TRUE(desk.composer.display().notices.empty());
}

TEST_F(ComposerCommandsTest, PastPromptsAreTheSavedOnesBeforeTheUsedOnesEachOnce) {
  makeThree();
  desk.composer.editDraft(QStringLiteral("a temple"));
  desk.composer.savePrompt();
  EXPECT_EQ(desk.composer.message().text,
            QStringLiteral("Prompt saved. Find it under Prompt History in the composer."));
  const auto prompts = desk.composer.pastPrompts();
  ASSERT_EQ(prompts.size(), 3u);
  EXPECT_EQ(prompts[0].text, QStringLiteral("a temple"));
  EXPECT_FALSE(prompts[0].saved.isNull());
  EXPECT_EQ(prompts[1].text, QStringLiteral("a fox"));
  EXPECT_TRUE(prompts[1].saved.isNull());
}

TEST_F(ComposerCommandsTest, ABlankPromptIsNotSaved) {
  desk.composer.savePrompt();
  EXPECT_EQ(desk.composer.message().text, QStringLiteral("Write a prompt first."));
  EXPECT_TRUE(desk.store.prompts().entries().empty());
}

TEST_F(ComposerCommandsTest, APastPromptReplacesTheDraftAndUndoBringsItBack) {
  desk.composer.editDraft(QStringLiteral("mine"));
  desk.composer.usePastPrompt(QStringLiteral("an older one"));
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("an older one"));
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("mine"));
}

TEST_F(ComposerCommandsTest, ASavedPromptThatWasRemovedComesBackWithUndo) {
  desk.composer.editDraft(QStringLiteral("mine"));
  desk.composer.savePrompt();
  desk.composer.forgetSavedPrompt(desk.store.prompts().entries().front().id);
  EXPECT_TRUE(desk.store.prompts().entries().empty());
  desk.alerts.performToastAction(desk.alerts.toasts().back().id);
  ASSERT_EQ(desk.store.prompts().entries().size(), 1u);
  EXPECT_EQ(desk.store.prompts().entries().front().text, QStringLiteral("mine"));
}

}  // namespace
}  // namespace sorvan::shell
