#include <gtest/gtest.h>

#include "base/json.h"
#include "desk.h"
#include "shell/expected_price.h"
#include "shell/prompt_names.h"

namespace sorvan::shell {
namespace {

// What the places and the head of a sheet say.
struct SheetWordsTest : testing::Test {
  test::Desk desk;
  ContactSheetWorkspace sheet{{desk.store, desk.state, desk.displays, desk.jobs, desk.alerts,
                               [](const core::GenerationRequest& request) {
                                 return QStringLiteral("≈ %1").arg(request.comparisonOrder.value_or(0));
                               }}};

  void compare() { sheet.open(ComparisonBatch{desk.compare(2)}); }
  // A picture that was made with a reference.
  QUuid madeWith(const QString& prompt, const QString& name) {
    core::GenerationRequest recipe;
    recipe.prompt = prompt;
    core::ReferenceBinding binding;
    binding.assetID = base::newUuid();
    binding.label = name;
    recipe.referenceBindings = {binding};
    const QString file = QStringLiteral("%1.png").arg(desk.store.assets().size());
    const core::AssetRef asset = desk.store.context().insert(
        core::Asset({}, core::MediaType::image, QStringLiteral("Inbox/") + file, file, {}, desk.store.now()));
    core::Generation made;
    made.id = base::newUuid();
    made.assetID = asset->id;
    made.jobID = base::newUuid();
    made.prompt = prompt;
    made.recipeData = base::encodeJson(recipe);
    const core::GenerationRef generation = desk.store.context().insert(made);
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{asset}, {generation}, {}, {}});
    return asset->id;
  }
};

TEST(PromptNames, AreThoseOfAttachedPicturesAlone) {
  core::ReferenceBinding tin;
  tin.assetID = base::newUuid();
  tin.label = QStringLiteral("Tin");
  EXPECT_EQ(namesIn(QStringLiteral("@Tin and @Other and @tin"), {tin}), (std::vector<PromptName>{{0, 4}, {20, 4}}));
  EXPECT_TRUE(namesIn(QStringLiteral("@Tin"), {}).empty());
}

TEST_F(SheetWordsTest, APlaceAtWorkTellsWhatItIsExpectedToCostUntilItsResultTellsWhatItDid) {
  desk.provider->gate.emplace();
  compare();
  ASSERT_EQ(sheet.display().places.size(), 2u);
  EXPECT_EQ(sheet.display().places[1].costText, QStringLiteral("≈ 1"));
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_NE(sheet.display().places[1].costText, QStringLiteral("≈ 1"));
}

TEST_F(SheetWordsTest, AFailedPlaceExpectsNothing) {
  desk.provider->failure = std::make_exception_ptr(SorvanError(QStringLiteral("The model is busy.")));
  compare();
  desk.settle();
  EXPECT_TRUE(sheet.display().places[0].costText.isEmpty());
}

TEST_F(SheetWordsTest, TheReviewMarkReadsReviewedAndOtherStatusesTheirWord) {
  compare();
  desk.settle();
  const QUuid item = sheet.display().places[0].asset;
  ASSERT_FALSE(item.isNull());
  EXPECT_TRUE(sheet.display().places[0].markText.isEmpty());
  sheet.toggleReview(item);
  test::runPosted();
  EXPECT_EQ(sheet.display().places[0].markText, QStringLiteral("Reviewed"));
  EXPECT_TRUE(sheet.display().places[0].accessibleName.contains(QStringLiteral("Reviewed, Shortlist")));
  sheet.setStatus(item, core::AssetStatus::rejected);
  test::runPosted();
  EXPECT_EQ(sheet.display().places[0].markText, QStringLiteral("Rejected"));
}

TEST_F(SheetWordsTest, ResultsThatDropIntoTheSheetInFrontAreNotAnnouncedAndOthersAre) {
  desk.provider->gate.emplace();
  compare();
  desk.state.openContactSheet(sheet.source());
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_TRUE(desk.alerts.toasts().empty());
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("a fox"));
  desk.state.openContactSheet(sheet.source());
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.alerts.toasts().size(), 1u);
}

TEST_F(SheetWordsTest, TheNamesOfReferencesAreMarkedInThePromptThatAllShare) {
  const QString prompt = QStringLiteral("a boat like @Tin at dusk");
  const QUuid first = madeWith(prompt, QStringLiteral("Tin"));
  const QUuid second = madeWith(prompt, QStringLiteral("Tin"));
  sheet.open(PassingSelection{{first, second}});
  EXPECT_EQ(sheet.display().prompt, prompt);
  EXPECT_EQ(sheet.display().names, (std::vector<PromptName>{{12, 4}}));
  const QUuid other = madeWith(QStringLiteral("a fox"), QStringLiteral("Tin"));
  sheet.open(PassingSelection{{first, other}});
  EXPECT_TRUE(sheet.display().prompt.isEmpty());
  EXPECT_TRUE(sheet.display().names.empty());
}

TEST(ExpectedPrice, SaysNothingWhileNoPriceIsKnown) {
  test::Desk desk;
  core::GenerationRequest request;
  request.model = QStringLiteral("fal-ai/flux/schnell");
  const auto model = desk.catalog->model(request.model);
  ASSERT_TRUE(model);
  EXPECT_TRUE(expectedPrice(request, *model, desk.prices, desk.ownKey).isEmpty());
}

TEST(ExpectedPrice, TellsCreditsOfARequestThatCreditsPayFor) {
  test::Desk desk;
  struct Priced final : PaymentDesk {
    std::optional<std::int64_t> credits(const core::GenerationRequest& request, const catalogue::FalModel&) const override {
      return 6 * request.count;
    }
    bool isCeiling(const QString&) const override { return ceiling; }
    bool ceiling = false;
  } payment;
  core::GenerationRequest request;
  request.model = QStringLiteral("fal-ai/flux/schnell");
  request.count = 4;
  request.creditRequestID = base::newUuid();
  const auto model = desk.catalog->model(request.model);
  EXPECT_EQ(expectedPrice(request, *model, desk.prices, payment), QStringLiteral("6 credits"));
  payment.ceiling = true;
  EXPECT_EQ(expectedPrice(request, *model, desk.prices, payment), QStringLiteral("up to 6 credits"));
}

}  // namespace
}  // namespace sorvan::shell
