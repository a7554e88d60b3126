#include <gtest/gtest.h>

#include <QFile>

#include "base/ids.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

// Two pictures: the second was made with the first as its reference.
struct InspectorTest : testing::Test {
  test::Desk desk;
  QUuid first;
  QUuid second;

  InspectorTest() {
    desk.generate(QStringLiteral("a tin on a table"));
    desk.settle();
    first = desk.store.assets().front()->id;
    desk.generate(QStringLiteral("the tin again"));
    desk.settle();
    for (const core::AssetRef& asset : desk.store.assets())
      if (asset->id != first) second = asset->id;
    const core::GenerationRef generation = desk.store.generationOf(second);
    core::GenerationRequest recipe = *generation->recipe();
    recipe.prompt = QStringLiteral("the @Tin, seen by @nobody");
    recipe.referenceBindings = std::vector<core::ReferenceBinding>{
        {first, QStringLiteral("Tin"), QStringLiteral("Product"), {}, {}}};
    recipe.referenceIDs = {first};
    recipe.improvements = std::vector<core::PromptImprovement>{{QStringLiteral("the tin"), {}, {}}};
    recipe.seed = 41;
    core::Generation& record = desk.store.context().edit(generation);
    record.recipeData = core::encodeRequest(recipe);
    record.prompt = recipe.prompt;
    record.seed = 418207;
    const core::RelationshipRef edge =
        desk.store.context().insert(core::AssetRelationship(first, second, core::RelationshipType::editedFrom));
    desk.store.context().save();
    core::NewRecords added;
    added.relationships = {edge};
    desk.store.registerRecords(added);
  }

  const InspectorSection* section(const QString& title) {
    shown = desk.inspector.display();
    for (const InspectorSection& each : shown.sections)
      if (each.title == title) return &each;
    return nullptr;
  }
  static QString value(const InspectorSection& section, const QString& label) {
    for (const InspectorRow& row : section.rows)
      if (row.label == label) return row.value;
    return {};
  }
  InspectorDisplay shown;
};

TEST_F(InspectorTest, ThePromptMarksTheNamesOfItsReferencesAndNoOthers) {
  desk.state.select({second});
  const InspectorSection* prompt = section(QStringLiteral("Prompt"));
  ASSERT_TRUE(prompt);
  ASSERT_EQ(prompt->mentions.size(), 1u);
  EXPECT_EQ(prompt->text.mid(prompt->mentions[0].start, prompt->mentions[0].length), QStringLiteral("@Tin"));
}

TEST_F(InspectorTest, CopyReuseAndUseSeedAreActsOfTheirOwn) {
  desk.state.select({second});
  const InspectorSection* prompt = section(QStringLiteral("Prompt"));
  ASSERT_EQ(prompt->headActions.size(), 2u);
  EXPECT_EQ(prompt->headActions[0].action, ActionId::reusePrompt);
  EXPECT_EQ(prompt->headActions[1].action, ActionId::copyPrompt);
  const InspectorSection* made = section(QStringLiteral("Made with"));
  ASSERT_EQ(made->headActions.size(), 1u);
  EXPECT_EQ(made->headActions[0].action, ActionId::useSeed);
  EXPECT_EQ(value(*made, QStringLiteral("Seed")), QStringLiteral("418207"));
}

TEST_F(InspectorTest, LookingAtAnItemLeavesWhatIsBeingComposedAlone) {
  desk.composer.editDraft(QStringLiteral("my own words"));
  desk.state.select({second});
  ASSERT_TRUE(section(QStringLiteral("Prompt")));
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("my own words"));
}

TEST_F(InspectorTest, WhatThePromptWasBeforeItsRewriteIsKept) {
  desk.state.select({second});
  const InspectorSection* before = section(QStringLiteral("Prompt rewritten"));
  ASSERT_TRUE(before);
  EXPECT_EQ(before->text, QStringLiteral("the tin"));
}

TEST_F(InspectorTest, ReferencesOpenTheirPictures) {
  desk.state.select({second});
  const InspectorSection* references = section(QStringLiteral("References"));
  ASSERT_TRUE(references);
  ASSERT_EQ(references->links.size(), 1u);
  EXPECT_EQ(references->links[0].item, first);
  EXPECT_EQ(references->links[0].title, QStringLiteral("@Tin"));
  EXPECT_EQ(references->links[0].subtitle, QStringLiteral("Product"));
  EXPECT_TRUE(references->links[0].canOpen);
}

TEST_F(InspectorTest, ParentsAndChildrenAreNamedWithTheirRelation) {
  desk.state.select({second});
  const InspectorSection* parents = section(QStringLiteral("Lineage"));
  ASSERT_TRUE(parents);
  ASSERT_EQ(parents->links.size(), 1u);
  EXPECT_EQ(parents->links[0].item, first);
  EXPECT_EQ(parents->links[0].subtitle, QStringLiteral("Edited from"));
  EXPECT_FALSE(section(QStringLiteral("Made from this")));
  desk.state.select({first});
  const InspectorSection* children = section(QStringLiteral("Made from this"));
  ASSERT_TRUE(children);
  EXPECT_EQ(children->links[0].item, second);
  EXPECT_FALSE(section(QStringLiteral("Lineage")));
}

TEST_F(InspectorTest, TheProjectIsToldBesideTheWayToAnotherOne) {
  desk.state.select({second});
  const InspectorSection* project = section(QStringLiteral("Project"));
  ASSERT_TRUE(project);
  EXPECT_EQ(value(*project, QStringLiteral("Saved to")), QStringLiteral("Inbox"));
  ASSERT_EQ(project->headActions.size(), 1u);
  EXPECT_EQ(project->headActions[0].action, ActionId::moveToProject);
  EXPECT_EQ(project->headActions[0].title, QStringLiteral("Move to Project"));
}

TEST_F(InspectorTest, AJobTellsItsSettingsReferencesAndResults) {
  const QUuid job = desk.newestJob()->id;
  core::GenerationRequest request = *desk.store.job(job)->request();
  request.seed = 7;
  request.referenceIDs = {first};
  request.options = core::TextByKey{{QStringLiteral("safety_tolerance"), QStringLiteral("2")}};
  desk.store.context().edit(desk.store.job(job)).requestData = core::encodeRequest(request);
  desk.store.context().save();
  desk.state.select({job});
  const InspectorSection* settings = section(QStringLiteral("Settings"));
  ASSERT_TRUE(settings);
  EXPECT_EQ(value(*settings, QStringLiteral("Seed")), QStringLiteral("7"));
  EXPECT_EQ(value(*settings, QStringLiteral("Safety tolerance")), QStringLiteral("2"));
  EXPECT_EQ(value(*settings, QStringLiteral("Outputs")), QStringLiteral("1"));
  const InspectorSection* references = section(QStringLiteral("References"));
  ASSERT_TRUE(references);
  EXPECT_EQ(references->links.at(0).item, first);
  const InspectorSection* results = section(QStringLiteral("Results"));
  ASSERT_TRUE(results);
  EXPECT_EQ(results->links.at(0).item, second);
}

TEST_F(InspectorTest, TheFileTellsEverythingOfItsRecord) {
  const core::AssetRef asset = desk.store.asset(second);
  desk.store.context().edit(asset).checksum = QString(64, QLatin1Char('a'));
  desk.store.context().save();
  desk.state.select({second});
  const InspectorSection* file = section(QStringLiteral("File"));
  ASSERT_TRUE(file);
  ASSERT_EQ(file->headActions.size(), 1u);
  EXPECT_EQ(file->headActions[0].action, ActionId::showInFiles);
  EXPECT_EQ(value(*file, QStringLiteral("Came from")), QStringLiteral("Generated"));
  EXPECT_EQ(value(*file, QStringLiteral("Path")), asset->localFilePath);
  EXPECT_EQ(value(*file, QStringLiteral("Checksum")), QString(64, QLatin1Char('a')));
  EXPECT_EQ(value(*file, QStringLiteral("Item")), base::uuidText(second));
}

TEST_F(InspectorTest, SeveralItemsShowWhatTheyShare) {
  desk.store.context().edit(desk.store.asset(first)).rating = 4;
  desk.store.context().edit(desk.store.asset(first)).favorite = true;
  desk.store.context().save();
  desk.state.select({first, second});
  const InspectorSection* shared = section(QStringLiteral("Selection"));
  ASSERT_TRUE(shared);
  EXPECT_EQ(shown.title, QStringLiteral("2 items selected"));
  EXPECT_EQ(value(*shared, QStringLiteral("Kind")), QStringLiteral("Image"));
  EXPECT_EQ(value(*shared, QStringLiteral("Rating")), QStringLiteral("Mixed"));
  EXPECT_EQ(value(*shared, QStringLiteral("Favorites")), QStringLiteral("1 of 2"));
}

TEST_F(InspectorTest, APictureWhoseFileIsGoneIsShownByItsThumbnail) {
  const core::AssetRef asset = desk.store.asset(second);
  desk.state.select({second});
  EXPECT_EQ(desk.inspector.display().previewPath, desk.store.fileOf(*asset));
  ASSERT_TRUE(QFile::remove(desk.store.fileOf(*asset)));
  ASSERT_TRUE(desk.store.thumbnailOf(*asset));
  EXPECT_EQ(desk.inspector.display().previewPath, *desk.store.thumbnailOf(*asset));
}

TEST_F(InspectorTest, SeveralJobsAreNoItems) {
  desk.state.select({desk.store.jobs().front()->id, desk.store.jobs().back()->id});
  ASSERT_EQ(desk.state.selection().size(), 2);
  EXPECT_EQ(desk.inspector.display().title, QStringLiteral("2 generations selected"));
}

TEST_F(InspectorTest, SeveralItemsOfTwoPlacesAndTwoMarksAreMixed) {
  desk.store.context().edit(desk.store.asset(first)).projectID = base::newUuid();
  desk.store.context().edit(desk.store.asset(second)).statusRaw = core::rawValue(core::AssetStatus::final);
  desk.store.context().save();
  desk.state.select({first, second});
  const InspectorSection* shared = section(QStringLiteral("Selection"));
  ASSERT_TRUE(shared);
  EXPECT_EQ(value(*shared, QStringLiteral("Project")), QStringLiteral("Mixed"));
  EXPECT_EQ(value(*shared, QStringLiteral("Status")), QStringLiteral("Mixed"));
  EXPECT_EQ(value(*shared, QStringLiteral("Rating")), QStringLiteral("None"));
  EXPECT_TRUE(shown.canChangeStatus);
}

TEST_F(InspectorTest, AmongSeveralItemsOneInTrashForbidsTheirMarks) {
  desk.store.context().edit(desk.store.asset(first)).deletedAt = desk.store.now();
  desk.store.context().save();
  desk.state.select({first, second});
  ASSERT_TRUE(section(QStringLiteral("Selection")));
  EXPECT_FALSE(shown.canChangeStatus);
  EXPECT_FALSE(shown.hasRating);
  EXPECT_TRUE(shown.buttons.empty());
}

}  // namespace
}  // namespace sorvan::shell
