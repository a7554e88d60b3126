#include "composer/notices.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "composer/composer_models.h"
#include "composer/notice_texts.h"
#include "composer/shape_control.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using test::clipModel;
using test::imageModel;
using test::referenceModel;
using test::selectable;

const Billing credits{PayWith::credits, true};
const Billing creditsOnly{PayWith::ownKey, false};
const Billing ownKey{PayWith::ownKey, true};

/// Two cents or three credits for each output; "new" has no price, and "vague" costs up to that.
KnownPrices plainPrices() {
  KnownPrices prices;
  prices.dollars = [](const GenerationRequest& request, const FalModel& model) -> std::optional<double> {
    if (model.id == u"new"_s) return std::nullopt;
    return 0.02 * request.count;
  };
  prices.credits = [](const GenerationRequest& request, const FalModel& model) -> std::optional<std::int64_t> {
    if (model.id == u"new"_s) return std::nullopt;
    return 3 * std::int64_t(request.count);
  };
  prices.isCeiling = [](const QString& model) { return model == u"vague"_s; };
  prices.isSold = [](const QString& model) { return model != u"new"_s; };
  prices.forModel = [](const GenerationRequest& request, const ComparisonModel& target) {
    GenerationRequest copy = request;
    copy.model = target.model.id;
    return copy;
  };
  return prices;
}

EstimateInput of(const std::vector<FalModel>& models, const Billing& billing = credits) {
  EstimateInput input;
  input.request.size = u"1024x1024"_s;
  input.models = selectable(models);
  input.billing = billing;
  return input;
}

NoticeInput around(EstimateInput estimate) {
  NoticeInput input;
  input.draft = u"a fox"_s;
  input.intent = GenerationInstruction{u"a fox"_s};
  input.estimate = std::move(estimate);
  input.isSignedIn = true;
  return input;
}

QStringList textsOf(const NoticeInput& input) {
  QStringList result;
  for (const Notice& notice : notices(input, plainPrices())) result << notice.text;
  return result;
}

// ---- Estimates

TEST(Estimates, DollarsAreSummedWhenTheOwnKeyPaysForKnownPrices) {
  EstimateInput input = of({imageModel(u"a"_s), imageModel(u"b"_s)}, ownKey);
  input.request.count = 2;
  EXPECT_DOUBLE_EQ(estimatedCost(input, plainPrices()).value(), 0.08);
  input.intentCount = 4;
  EXPECT_DOUBLE_EQ(estimatedCost(input, plainPrices()).value(), 0.16);
  EXPECT_EQ(creditEstimate(input, plainPrices()), std::nullopt);
  EXPECT_EQ(estimatedCost(of({imageModel(u"a"_s), imageModel(u"new"_s)}, ownKey), plainPrices()), std::nullopt);
  EXPECT_EQ(estimatedCost(of({}, ownKey), plainPrices()), std::nullopt);
  EXPECT_EQ(estimatedCost(of({imageModel(u"a"_s)}), plainPrices()), std::nullopt);
  EXPECT_EQ(estimatedCost(of({imageModel(u"a"_s)}, creditsOnly), plainPrices()), std::nullopt);
}

TEST(Estimates, CreditsAreSummedAndModelsWithoutAPriceAreNamed) {
  EstimateInput input = of({imageModel(u"a"_s), imageModel(u"new"_s), imageModel(u"b"_s)}, creditsOnly);
  input.request.count = 2;
  EXPECT_EQ(creditEstimate(input, plainPrices()), (CreditEstimate{12, {u"new"_s}}));
  EXPECT_EQ(creditEstimate(of({}), plainPrices()), std::nullopt);
  EXPECT_TRUE(heldEstimate(of({imageModel(u"a"_s), imageModel(u"vague"_s)}), plainPrices()));
  EXPECT_FALSE(heldEstimate(of({imageModel(u"a"_s)}), plainPrices()));
  EXPECT_FALSE(heldEstimate(of({imageModel(u"vague"_s)}, ownKey), plainPrices()));
}

TEST(Estimates, ACountBeyondAllNumbersStaysWithinThem) {
  EstimateInput input = of({imageModel(u"a"_s), imageModel(u"b"_s)});
  input.intentCount = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(creditEstimate(input, plainPrices())->credits, 2 * 3 * std::int64_t(std::numeric_limits<int>::max()));
}

TEST(Estimates, WhatIsHeldForRunningJobsCountsAsThere) {
  const CreditEstimate needed{10, {}};
  EXPECT_EQ(shortfall(needed, AccountBalance{10'000'000, 0}), std::nullopt);
  EXPECT_EQ(shortfall(needed, AccountBalance{9'999'999, 0}), (Shortfall{10, u"10"_s}));
  EXPECT_EQ(shortfall(needed, AccountBalance{4'000'000, 6'000'000}), std::nullopt);
  EXPECT_EQ(shortfall(needed, AccountBalance{4'000'000, -1}), (Shortfall{10, u"4"_s}));
  EXPECT_EQ(shortfall(needed, std::nullopt), std::nullopt);
  EXPECT_EQ(shortfall(std::nullopt, AccountBalance{0, 0}), std::nullopt);
  EXPECT_EQ(shortfall(CreditEstimate{10, {u"new"_s}}, AccountBalance{0, 0}), std::nullopt);
  EXPECT_EQ(shortfall(needed, AccountBalance{-500'000, 0})->needed, 10);
}

TEST(PriceLine, ShowsWhatIsKnownInItsForm) {
  const auto line = [](const EstimateInput& input) { return priceLine(input, plainPrices()).value_or(PriceLine{}); };
  EXPECT_EQ(line(of({imageModel(u"a"_s)}, ownKey)).text, u"≈ $0.020"_s);
  EstimateInput many = of({imageModel(u"a"_s)}, ownKey);
  many.intentCount = 6;
  EXPECT_EQ(line(many).text, u"≈ $0.12"_s);
  EXPECT_EQ(line(of({imageModel(u"a"_s)})).text, u"3 credits"_s);
  EXPECT_EQ(line(of({imageModel(u"vague"_s)})).text, u"up to 3 credits"_s);
  const PriceLine partly = line(of({imageModel(u"a"_s), imageModel(u"new"_s)}));
  EXPECT_EQ(partly.text, u"3+ credits"_s);
  EXPECT_EQ(partly.spoken, u"3 or more credits"_s);
  EXPECT_TRUE(partly.tooltip.startsWith(u"At least this many credits. No estimate for new: "_s));
  EXPECT_EQ(priceLine(of({imageModel(u"new"_s)}), plainPrices()), std::nullopt);
  EXPECT_EQ(priceLine(of({imageModel(u"new"_s)}, ownKey), plainPrices()), std::nullopt);
  KnownPrices cheap = plainPrices();
  cheap.credits = [](const GenerationRequest&, const FalModel&) { return std::optional<std::int64_t>(1); };
  EXPECT_EQ(priceLine(of({imageModel(u"a"_s)}), cheap)->text, u"1 credit"_s);
}

TEST(PriceLine, IsShownOnlyForAPromptThatWouldBeGenerated) {
  NoticeInput input = around(of({imageModel(u"a"_s)}));
  EXPECT_EQ(shownPrice(input, plainPrices())->text, u"3 credits"_s);
  input.draft = u" "_s;
  EXPECT_EQ(shownPrice(input, plainPrices()), std::nullopt);
  input.draft = u"compare"_s;
  input.mode = ComposerMode::command;
  EXPECT_EQ(shownPrice(input, plainPrices()), std::nullopt);
}

TEST(Confirmation, NamesTheBalanceWhereItIsKnown) {
  EXPECT_EQ(
      texts::confirmCredits(balanceText(AccountBalance{612'500'000, 0})),
      u"This request costs more than 500 credits. You have 612.5 credits. A generation that fails costs nothing."_s);
  EXPECT_EQ(balanceText(std::nullopt), u"an unknown number of"_s);
}

// ---- Notices

TEST(Notices, NothingIsSaidWhenAllIsWell) { EXPECT_EQ(textsOf(around(of({imageModel(u"a"_s)}))), QStringList()); }

TEST(Notices, LengthsOfSeveralModelsAreTold) {
  EXPECT_EQ(textsOf(around(of({clipModel(u"a"_s, {u"5"_s, u"10"_s}), clipModel(u"b"_s, {u"5"_s})}))),
            QStringList{u"Every model will make a 5 s clip."_s});
  const NoticeInput differ = around(of({clipModel(u"a"_s, {u"5"_s}), clipModel(u"b"_s, {u"8s"_s})}));
  const auto present = notices(differ, plainPrices());
  ASSERT_EQ(present.size(), 1U);
  EXPECT_EQ(present[0].text, u"Clips will differ in length: a 5 s · b 8s."_s);
  EXPECT_EQ(present[0].buttons, (std::vector<NoticeButton>{{NoticeAction::chooseLengths, u"Choose Lengths…"_s, {}}}));
  EXPECT_EQ(textsOf(around(of({clipModel(u"a"_s, {u"5"_s}), imageModel(u"b"_s)}))), QStringList());
}

TEST(Notices, ALengthInThePromptIsOfferedAsTheClosest) {
  const auto hint = [](const QStringList& lengths, const QString& length, int mentioned) {
    GenerationRequest request;
    if (!length.isEmpty()) request.options = TextByKey{{u"duration"_s, length}};
    return lengthHint(request, selectable({clipModel(u"a"_s, lengths)}), mentioned);
  };
  EXPECT_EQ(hint({u"5"_s, u"6"_s}, u"6"_s, 5),
            (LengthHint{u"Your prompt mentions 5 seconds, but Length is 6 s."_s, u"5"_s}));
  EXPECT_EQ(hint({u"5"_s, u"6"_s, u"10"_s}, u""_s, 7),
            (LengthHint{u"Your prompt mentions 7 seconds, but Length is 5 s. This model's closest length is 6 s."_s,
                        u"6"_s}));
  EXPECT_EQ(hint({u"4"_s, u"6"_s}, u"6"_s, 5)->value, u"4"_s);
  EXPECT_EQ(hint({u"5"_s, u"10"_s}, u""_s, 5), std::nullopt);
  EXPECT_EQ(hint({u"auto"_s}, u""_s, 5), std::nullopt);
  EXPECT_EQ(lengthHint({}, selectable({imageModel(u"a"_s)}), 5), std::nullopt);
  EXPECT_EQ(lengthHint({}, selectable({clipModel(u"a"_s, {u"5"_s})}), std::nullopt), std::nullopt);
}

TEST(Notices, TheHintCarriesItsValue) {
  NoticeInput input = around(of({clipModel(u"a"_s, {u"5"_s, u"10"_s})}));
  input.mentionedSeconds = 10;
  const auto present = notices(input, plainPrices());
  ASSERT_EQ(present.size(), 1U);
  EXPECT_EQ(present[0].buttons,
            (std::vector<NoticeButton>{{NoticeAction::setLength, u"Set Length to 10 s"_s, u"10"_s}}));
}

TEST(Notices, ARatioThatNotEveryModelMakesIsNamed) {
  NoticeInput input = around(of({imageModel(u"a"_s), imageModel(u"b"_s, 4, {u"1:1"_s})}));
  input.estimate.request.size = u"1536x864"_s;
  ASSERT_EQ(textsOf(input).size(), 1);
  EXPECT_TRUE(textsOf(input)[0].endsWith(
      u" · 16:9 isn’t supported by every selected model. Choose a compatible ratio below."_s))
      << textsOf(input)[0].toStdString();
  input.mode = ComposerMode::command;
  EXPECT_EQ(textsOf(input), QStringList());
}

TEST(Notices, PicturesBesideATextOnlyModelAreTold) {
  NoticeInput input = around(of({referenceModel(u"a"_s), imageModel(u"b"_s)}));
  input.estimate.request.referenceIDs = {newUuid()};
  EXPECT_EQ(textsOf(input), QStringList{u"References require models that accept images. Deselect text-only models in "
                                        "the model picker."_s});
  input.estimate.models.pop_back();
  EXPECT_EQ(textsOf(input), QStringList());
}

TEST(Notices, PayingWithCreditsNeedsAnAccountAndModelsThatAreSold) {
  NoticeInput input = around(of({imageModel(u"new"_s), imageModel(u"a"_s)}));
  EXPECT_EQ(textsOf(input), QStringList{u"Credits cannot pay for new yet. Choose another model, or switch Pay With to "
                                        "your own fal.ai key."_s});
  input.isSignedIn = false;
  EXPECT_EQ(textsOf(input), QStringList{u"Paying with Sorvan Credits needs an account. Sign in under Settings → "
                                        "Account, or switch Pay With to your own fal.ai key."_s});
  input.estimate.billing = creditsOnly;
  EXPECT_EQ(textsOf(input), QStringList{u"Paying with Sorvan Credits needs an account. Sign in under Settings → "
                                        "Account."_s});
  input.estimate.billing = ownKey;
  EXPECT_EQ(textsOf(input), QStringList());
}

TEST(Notices, AnEmptyPurseOffersTheWaysOut) {
  NoticeInput input = around(of({imageModel(u"a"_s)}));
  input.account = AccountBalance{1'500'000, 0};
  const auto present = notices(input, plainPrices());
  ASSERT_EQ(present.size(), 1U);
  EXPECT_EQ(present[0].text, u"This needs 3 credits and you have 1.5."_s);
  EXPECT_EQ(present[0].buttons.size(), 2U);
  input.estimate.billing = creditsOnly;
  EXPECT_EQ(notices(input, plainPrices())[0].buttons,
            (std::vector<NoticeButton>{{NoticeAction::buyCredits, u"Buy Credits"_s, {}}}));
  input.draft = u" "_s;
  EXPECT_EQ(textsOf(input), QStringList());
}

TEST(Notices, ANumberInTheTextIsRepeated) {
  NoticeInput input = around(of({imageModel(u"a"_s)}));
  input.intent = GenerationInstruction{u"cats"_s, 1};
  EXPECT_EQ(textsOf(input), QStringList{u"Interpreted: 1 image"_s});
  input.intent = GenerationInstruction{u"cats"_s, 3};
  input.estimate.models = selectable({imageModel(u"a"_s), imageModel(u"b"_s)});
  EXPECT_EQ(textsOf(input), QStringList{u"Interpreted: 3 images per model"_s});
}

TEST(Notices, StandInTheirOrder) {
  NoticeInput input = around(of({clipModel(u"a"_s, {u"5"_s, u"10"_s}), clipModel(u"b"_s, {u"5"_s, u"10"_s})}));
  input.estimate.models[1].comparison.model.ratios = QStringList{u"9:16"_s};
  input.estimate.request.referenceIDs = {newUuid()};
  input.mentionedSeconds = 10;
  input.importsReferences = true;
  input.needsInterpretation = true;
  input.account = AccountBalance{0, 0};
  input.intent = GenerationInstruction{u"cats"_s, 3};
  std::vector<NoticeKind> kinds;
  for (const Notice& notice : notices(input, plainPrices())) kinds.push_back(notice.kind);
  EXPECT_EQ(kinds, (std::vector<NoticeKind>{NoticeKind::lengths, NoticeKind::lengthHint, NoticeKind::ratio,
                                            NoticeKind::importing, NoticeKind::references, NoticeKind::interpretation,
                                            NoticeKind::shortfall, NoticeKind::interpretedCount}));
}

// ---- Controls

TEST(ShapeControl, AModelWithoutAShapeSaysWhoChooses) {
  FalModel bare = imageModel(u"a"_s);
  bare.sizing = NoSizing{};
  EXPECT_EQ(shapeControl({}, selectable({bare})),
            (ShapeControl{true, u"set by model"_s, u"This model chooses the shape itself."_s, {}}));
  bare.imageInput = SingleInput{u"image_url"_s, true};
  EXPECT_EQ(shapeControl({}, selectable({bare})).text, u"from image"_s);
  EXPECT_FALSE(shapeControl({}, selectable({bare, imageModel(u"b"_s)})).isFixed);
}

TEST(ShapeControl, AClipFollowsItsPictureUntilAShapeIsPicked) {
  FalModel clip = clipModel(u"a"_s, {u"5"_s});
  clip.imageInput = SingleInput{u"image_url"_s, false};
  clip.sizing = SizeByAspect{u"aspect_ratio"_s, {u"auto"_s, u"16:9"_s, u"1:1"_s}};
  GenerationRequest request;
  request.size = u"1536x864"_s;
  EXPECT_EQ(shapeControl(request, selectable({clip})).text, u"16:9"_s);
  request.referenceIDs = {newUuid()};
  EXPECT_EQ(shapeControl(request, selectable({clip})).text, u"Image"_s);
  request.shapeChosen = true;
  EXPECT_EQ(shapeControl(request, selectable({clip})).text, u"16:9"_s);
}

TEST(ShapeControl, OnlyWhatEveryModelMakesIsOffered) {
  EXPECT_EQ(shapeControl({}, selectable({imageModel(u"a"_s)})).sizes.size(), 8);
  EXPECT_EQ(shapeControl({}, selectable({imageModel(u"a"_s), imageModel(u"b"_s, 4, {u"1:1"_s})})).sizes,
            QStringList{u"1024x1024"_s});
}

TEST(LengthPanel, OffersOneRowForAllWhereTheModelsShareALength) {
  const auto models = selectable({clipModel(u"a"_s, {u"5"_s, u"10"_s}), clipModel(u"b"_s, {u"10"_s, u"5"_s})});
  const LengthPanel differing = lengthPanel({}, models);
  EXPECT_EQ(differing.shared, (QStringList{u"5"_s, u"10"_s}));
  EXPECT_EQ(differing.sharedValue, u"Different lengths"_s);
  GenerationRequest request;
  request.options = TextByKey{{u"duration"_s, u"10"_s}};
  EXPECT_EQ(lengthPanel(request, models).sharedValue, u"10 s"_s);
  EXPECT_TRUE(lengthPanel({}, selectable({clipModel(u"a"_s, {u"5"_s}), clipModel(u"b"_s, {u"8"_s})})).shared.isEmpty());
}

TEST(SettingText, IsReadable) {
  Setting duration;
  duration.field = u"duration"_s;
  EXPECT_EQ(settingText(u""_s, duration), u"Model default"_s);
  EXPECT_EQ(settingText(u"AUTO"_s, duration), u"Auto"_s);
  EXPECT_EQ(settingText(u"5"_s, duration), u"5 s"_s);
  EXPECT_EQ(settingText(u"5s"_s, duration), u"5s"_s);
  Setting other;
  other.field = u"steps"_s;
  EXPECT_EQ(settingText(u"5"_s, other), u"5"_s);
}

}  // namespace
}  // namespace sorvan::composer
