#include "composer/command_router.h"

#include <gtest/gtest.h>

#include "composer/command_texts.h"
#include "composer/composer_models.h"
#include "core/library_fixture.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using namespace sorvan::core;
using composer::test::imageModel;
using composer::test::keyOf;
using composer::test::selectable;
using composer::test::startingModelId;
using sorvan::test::failureOf;

class ScriptedDesk final : public LibraryDesk {
 public:
  std::vector<QUuid> selection() const override { return selected; }
  void showResults(const LibraryFilter& filter) override { results = filter; }
  void showGallery(const std::optional<QString>& location) override { galleries.push_back(location.value_or(u"-"_s)); }
  void openContactSheet(const QUuid& sheet) override { opened = sheet; }
  void openComparison(const QUuid& comparison) override { opened = comparison; }
  void openLineage(const QUuid& asset) override { opened = asset; }
  QUuid createProject(const QString& name) override {
    if (!refusal.isEmpty()) throw SorvanError(refusal);
    created = name;
    return made;
  }
  QUuid createContactSheet(const std::vector<AssetRef>& assets, const std::optional<QUuid>&) override {
    compared = assets.size();
    return made;
  }
  std::optional<QUuid> enqueue(const Submission& submission) override {
    if (!refusal.isEmpty()) throw SorvanError(refusal);
    submissions.push_back(submission);
    return submission.isComparison() ? std::optional(made) : std::nullopt;
  }
  // A Saturday.
  QDateTime localNow() const override { return {QDate(2026, 11, 21), QTime(15, 0), Qt::UTC}; }
  Qt::DayOfWeek firstDayOfWeek() const override { return Qt::Monday; }

  std::vector<QUuid> selected;
  std::optional<LibraryFilter> results;
  QStringList galleries;
  QUuid opened;
  QUuid made = newUuid();
  QString created;
  std::size_t compared = 0;
  QString refusal;
  std::vector<Submission> submissions;
};

struct CommandRouterTest : sorvan::test::LibraryFixture {
  ScriptedDesk desk;
  ComposerState state{selectable({imageModel(startingModelId), imageModel(u"other"_s)}), clock};
  SorvanCommandRouter router{store, state, desk};

  CommandRouterTest() {
    open();
    state.setText(u"something"_s);
  }
  AssetRef select(const QString& name) {
    const AssetRef asset = addAsset(name);
    desk.selected.push_back(asset->id);
    return asset;
  }
  ProjectRef addProject(const QString& name) {
    const ProjectRef project =
        store.context().insert(Project(name, store.files().createProjectFolder(name), clock->now()));
    store.save(LibraryTables::projects);
    return project;
  }
  void expectDone(const SorvanIntent& intent, const QString& note) {
    EXPECT_TRUE(router.route(intent));
    EXPECT_EQ(state.message(), note);
    EXPECT_FALSE(state.messageIsError());
    EXPECT_TRUE(state.draft().isEmpty());
    EXPECT_FALSE(state.isExpanded());
  }
  void expectRefused(const SorvanIntent& intent, const QString& message) {
    const QString draft = state.draft();
    EXPECT_FALSE(router.route(intent));
    EXPECT_EQ(state.message(), message);
    EXPECT_TRUE(state.messageIsError());
    EXPECT_EQ(state.draft(), draft);
  }
};

TEST_F(CommandRouterTest, ASearchLooksThroughTheWholeLibrary) {
  expectDone(SearchAssets{u"cats"_s}, u"Searching your workspace for “cats”."_s);
  LibraryFilter expected;
  expected.search = u"cats"_s;
  EXPECT_TRUE(desk.results == expected);
}

TEST_F(CommandRouterTest, AFilterSetsItsOneCondition) {
  expectDone(FilterAssets{MediaType::audio}, u"Library filter applied."_s);
  EXPECT_EQ(desk.results->type, u"audio"_s);
  expectDone(FilterAssets{AssetStatus::approved}, u"Library filter applied."_s);
  EXPECT_EQ(desk.results->status, u"approved"_s);
  EXPECT_EQ(desk.results->type, u"all"_s);
  expectDone(FilterAssets{FavoritesFilter{}}, u"Library filter applied."_s);
  EXPECT_TRUE(desk.results->favoritesOnly);
  expectDone(FilterAssets{ModelFilter{u"flux"_s}}, u"Library filter applied."_s);
  EXPECT_EQ(desk.results->model, u"flux"_s);
}

TEST_F(CommandRouterTest, LastWeekIsTheCalendarWeekBeforeThisOne) {
  router.route(FilterAssets{GeneratedLastWeek{}});
  const auto at = [](int day) {
    return Instant::fromUnixSeconds(double(QDateTime(QDate(2026, 11, day), QTime(0, 0), Qt::UTC).toSecsSinceEpoch()));
  };
  ASSERT_TRUE(desk.results->generatedInterval);
  EXPECT_EQ(desk.results->generatedInterval->lower, at(9));
  EXPECT_EQ(desk.results->generatedInterval->upper, at(16));
  const auto sundays = libraryFilter(GeneratedLastWeek{}, desk.localNow(), Qt::Sunday);
  EXPECT_EQ(sundays.generatedInterval->lower, at(8));
  EXPECT_EQ(failureOf([] { libraryFilter(GeneratedLastWeek{}, QDateTime(), Qt::Monday); }), texts::noLastWeek());
}

TEST_F(CommandRouterTest, SeveralConditionsHoldTogether) {
  expectDone(CompoundAssetFilter{u"sea"_s, {}, AssetStatus::draft, MediaType::video, u"square"_s, true, 30},
             u"Library filters applied."_s);
  const LibraryFilter expected{u"sea"_s, u"all"_s, u"video"_s, u"draft"_s, u"square"_s, true, 30, {}};
  EXPECT_TRUE(desk.results == expected);
}

TEST_F(CommandRouterTest, ItemsMoveToTheProjectOfTheNameCaseAside) {
  expectRefused(MoveAssets{u"Sea"_s}, texts::selectToMove());
  const AssetRef fox = select(u"fox-001.png"_s);
  expectRefused(MoveAssets{u"Sea"_s}, u"No project named “Sea”."_s);
  const ProjectRef sea = addProject(u"Sea"_s);
  addProject(u"Séa"_s);
  expectDone(MoveAssets{u"SEA"_s}, u"Moved selected media to Sea."_s);
  EXPECT_EQ(fox->projectID, sea->id);
  EXPECT_EQ(state.projectId(), sea->id);
  EXPECT_EQ(desk.galleries, QStringList{uuidText(sea->id)});
}

TEST_F(CommandRouterTest, ANameOfSeveralProjectsMovesNothing) {
  const AssetRef fox = select(u"fox-001.png"_s);
  addProject(u"Sea"_s);
  addProject(u"sea"_s);
  expectRefused(MoveAssets{u"Sea"_s}, texts::severalProjects());
  EXPECT_EQ(fox->projectID, std::nullopt);
}

TEST_F(CommandRouterTest, FavoritesAndStatusesAreSetForTheWholeSelection) {
  expectRefused(FavoriteAssets{true}, texts::selectToFavorite());
  expectRefused(SetAssetStatus{AssetStatus::final}, texts::selectToSetStatus());
  const AssetRef fox = select(u"fox-001.png"_s);
  const AssetRef hare = select(u"hare-001.png"_s);
  expectDone(FavoriteAssets{true}, texts::addedToFavorites());
  EXPECT_TRUE(fox->favorite && hare->favorite);
  expectDone(FavoriteAssets{false}, texts::removedFromFavorites());
  EXPECT_FALSE(fox->favorite || hare->favorite);
  expectDone(SetAssetStatus{AssetStatus::final}, u"Marked selected media as Final."_s);
  EXPECT_EQ(fox->status(), AssetStatus::final);
  EXPECT_EQ(hare->status(), AssetStatus::final);
}

TEST_F(CommandRouterTest, AFailedSaveIsToldAndChangesNothing) {
  const AssetRef fox = select(u"fox-001.png"_s);
  failWrites("UPDATE", "Asset");
  EXPECT_FALSE(router.route(FavoriteAssets{true}));
  EXPECT_TRUE(state.message().contains(u"disk is full"_s)) << state.message().toStdString();
  EXPECT_FALSE(fox->favorite);
  EXPECT_EQ(state.draft(), u"something"_s);
}

TEST_F(CommandRouterTest, ItemsInTrashOrGoneAreNotSelected) {
  const AssetRef fox = select(u"fox-001.png"_s);
  desk.selected.push_back(newUuid());
  EXPECT_EQ(router.selected().size(), 1U);
  store.context().edit(fox).deletedAt = clock->now();
  store.save(LibraryTables::none);
  EXPECT_TRUE(router.selected().empty());
}

TEST_F(CommandRouterTest, AProjectIsMadeOpenedAndMadeTheDestination) {
  expectDone(CreateProject{u"Autumn"_s}, u"Created Autumn."_s);
  EXPECT_EQ(desk.created, u"Autumn"_s);
  EXPECT_EQ(state.projectId(), desk.made);
  EXPECT_EQ(desk.galleries, QStringList{uuidText(desk.made)});
  state.setText(u"again"_s);
  desk.refusal = u"No room."_s;
  expectRefused(CreateProject{u"Winter"_s}, u"No room."_s);
}

TEST_F(CommandRouterTest, TwoToEightItemsAreCompared) {
  select(u"one-001.png"_s);
  expectRefused(CompareAssets{}, texts::selectToCompare());
  select(u"two-001.png"_s);
  expectDone(CompareAssets{}, u"Comparing 2 assets."_s);
  EXPECT_EQ(desk.compared, 2U);
  EXPECT_EQ(desk.opened, desk.made);
  for (int index = 0; index < 7; ++index) select(u"more%1-001.png"_s.arg(index));
  expectRefused(CompareAssets{}, texts::selectToCompare());
}

TEST_F(CommandRouterTest, LineageNeedsOneItem) {
  expectRefused(ShowLineage{}, texts::selectOneForLineage());
  const AssetRef fox = select(u"fox-001.png"_s);
  expectDone(ShowLineage{}, texts::showingHistory());
  EXPECT_EQ(desk.opened, fox->id);
  expectDone(ShowGallery{}, texts::backToGallery());
  EXPECT_EQ(desk.galleries, QStringList{u"-"_s});
}

TEST_F(CommandRouterTest, WhatWasNotUnderstoodIsTold) {
  expectRefused(Unknown{u"What?"_s}, u"What?"_s);
  expectRefused(Unsupported{u"Not here."_s}, u"Not here."_s);
}

// ---- Generations

TEST_F(CommandRouterTest, APromptIsQueuedForItsModelAndDestination) {
  state.setSeedText(u"+7"_s);
  expectDone(GenerationInstruction{u"a fox"_s, 3}, u"Queued · outputs will be saved in Inbox."_s);
  ASSERT_EQ(desk.submissions.size(), 1U);
  const GenerationRequest& request = desk.submissions[0].request;
  EXPECT_EQ(request.prompt, u"a fox"_s);
  EXPECT_EQ(request.count, 3);
  EXPECT_EQ(request.seed, 7);
  EXPECT_EQ(request.model, startingModelId);
  EXPECT_EQ(desk.galleries, QStringList{u"inbox"_s});
}

TEST_F(CommandRouterTest, SeveralModelsAreComparedInAProject) {
  state.setProject(addProject(u"Sea"_s)->id);
  state.selectModel(keyOf(u"other"_s), true);
  expectDone(GenerationInstruction{u"a fox"_s}, u"Queued · outputs will be saved in Sea."_s);
  EXPECT_EQ(desk.submissions.at(0).models.size(), 2U);
  EXPECT_EQ(desk.opened, desk.made);
  EXPECT_EQ(desk.galleries, QStringList{uuidText(*state.projectId())});
}

TEST_F(CommandRouterTest, AGoneDestinationOrABadSeedKeepsThePrompt) {
  state.setSeedText(u"7.0"_s);
  expectRefused(GenerationInstruction{u"a"_s}, texts::badSeed());
  state.setProject(newUuid());
  expectRefused(GenerationInstruction{u"a"_s}, texts::destinationGone());
  EXPECT_TRUE(desk.submissions.empty());
}

TEST_F(CommandRouterTest, NoChosenModelIsLeftOutSilently) {
  state.selectModel(keyOf(u"gone"_s), true);
  expectRefused(GenerationInstruction{u"a"_s}, texts::selectAvailableModel());
  state.selectModel(keyOf(u"gone"_s), false);
  state.selectModel(keyOf(startingModelId), false);
  expectRefused(GenerationInstruction{u"a"_s}, texts::selectAvailableModel());
}

TEST_F(CommandRouterTest, SelectedPicturesBecomeTheReferences) {
  const GenerationInstruction instruction{u"darker"_s, {}, true, RelationshipType::editedFrom};
  expectRefused(instruction, texts::selectImages());
  const AssetRef fox = select(u"fox-001.png"_s);
  const AssetRef clip = select(u"clip-001.mp4"_s);
  store.context().edit(clip).mediaType = u"video"_s;
  store.save(LibraryTables::none);
  expectRefused(instruction, texts::selectImages());
  desk.selected.pop_back();
  expectDone(instruction, u"Queued · outputs will be saved in Inbox."_s);
  EXPECT_EQ(desk.submissions.at(0).request.referenceIDs, std::vector<QUuid>{fox->id});
  EXPECT_EQ(desk.submissions.at(0).request.relationship, RelationshipType::editedFrom);
}

TEST_F(CommandRouterTest, AQueueThatRefusesKeepsThePrompt) {
  desk.refusal = u"@Tin is not attached."_s;
  expectRefused(GenerationInstruction{u"@Tin"_s}, u"@Tin is not attached."_s);
}

TEST(Seed, IsAWholeNumberFromZeroOn) {
  EXPECT_EQ(readSeed(u""_s), std::nullopt);
  EXPECT_EQ(readSeed(u"0"_s), 0);
  EXPECT_EQ(readSeed(u"+7"_s), 7);
  EXPECT_EQ(readSeed(u"-0"_s), 0);
  EXPECT_EQ(readSeed(u"9223372036854775807"_s), std::numeric_limits<std::int64_t>::max());
  for (const QString& text : {u"7.0"_s, u" 7"_s, u"7 "_s, u"-1"_s, u"+"_s, u"0x7"_s, u"seven"_s, u"7\n"_s, u"٧"_s,
                              u"9223372036854775808"_s, u" "_s})
    EXPECT_EQ(failureOf([&] { readSeed(text); }), texts::badSeed()) << text.toStdString();
}

}  // namespace
}  // namespace sorvan::composer
