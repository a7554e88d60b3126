#include "shell/model_prices.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "desk.h"
#include "service_pages.h"
#include "support/text_printers.h"

namespace sorvan::shell {
namespace {

using namespace Qt::StringLiterals;

const QString nano = u"fal-ai/nano-banana-2"_s;
const QString schnell = u"fal-ai/flux/schnell"_s;
const QString schnellKey = u"fal.ai:fal-ai/flux/schnell"_s;
const QString pricing = u"/v1/models/pricing"_s;

struct ModelPricesTest : testing::Test {
  // What the composer asked for when it was made was not answered: it asks again.
  void list(const std::vector<test::ListedModelPrice>& prices) {
    desk.web->on("GET", pricing).answersJson(test::priceList(prices)).repeating();
    desk.composer.refreshPrices();
    test::runPosted();
  }
  void choose(const QString& key) {
    desk.composer.chooseOnlyModel(key);
    test::runPosted();
  }
  ModelChoice choice(const QString& id) const {
    for (const ModelSection& section : desk.composer.modelSections())
      for (const ModelChoice& model : section.models)
        if (model.id == id) return model;
    return {};
  }
  test::Desk desk;
};

TEST(UnitPrices, AreToldExactlyInTheServicesOwnWords) {
  EXPECT_EQ(unitPriceText(0.039, u"images"_s), u"$0.039 / image"_s);
  EXPECT_EQ(unitPriceText(0.25, u"image"_s), u"$0.25 / image"_s);
  EXPECT_EQ(unitPriceText(0.1, u"compute seconds"_s), u"$0.10 / compute second"_s);
  EXPECT_EQ(unitPriceText(0.000575, u"megapixels"_s), u"$0.000575 / megapixel"_s);
  EXPECT_EQ(unitPriceText(0.04, u"1000 characters "_s), u"$0.04 / 1000 characters"_s);
  EXPECT_EQ(unitPriceText(1, u"5 seconds"_s), u"$1.00 / 5 seconds"_s);
  EXPECT_EQ(unitPriceText(2, QString()), u"$2.00"_s);
}

TEST_F(ModelPricesTest, ChoosingAModelAsksForItsPriceInTheBackground) {
  list({{schnell, 0.003, u"megapixels"_s}, {nano, 0.04}});
  const std::size_t before = desk.web->requests(pricing).size();
  QSignalSpy changed(&desk.composer, &ComposerPresenter::changed);
  desk.composer.chooseOnlyModel(schnellKey);
  EXPECT_EQ(desk.web->requests(pricing).size(), before);
  test::runPosted();
  EXPECT_EQ(desk.web->requests(pricing).size(), before + 1);
  EXPECT_EQ(choice(schnell).price, u"$0.003 / megapixel"_s);
  EXPECT_EQ(choice(schnell).priceDate, u"as of 9 May 2026"_s);
  EXPECT_GE(changed.count(), 2);
  choose(schnellKey);
  EXPECT_EQ(desk.web->requests(pricing).size(), before + 1) << "what is known for today is not asked for again";
}

TEST_F(ModelPricesTest, TheFigureBesideGenerateCountsOutputsAndModels) {
  list({{schnell, 0.003, u"megapixels"_s}, {nano, 0.04}});
  EXPECT_EQ(desk.composer.display().estimate, QString()) << "no prompt, no figure";
  desk.composer.editDraft(u"a red boat"_s);
  EXPECT_EQ(desk.composer.display().estimate, u"≈ $0.040"_s);
  EXPECT_EQ(desk.composer.display().estimateTooltip,
            u"Paid by your own fal.ai key. Estimated from fal.ai's list prices; your actual charge may differ."_s);
  desk.composer.chooseCount(3);
  EXPECT_EQ(desk.composer.display().estimate, u"≈ $0.12"_s);
  desk.composer.setModelChosen(schnellKey, true);
  test::runPosted();
  // 1536 × 864 are 1.3 megapixels, which counts as two: 3 × 2 × 0.003 more.
  EXPECT_EQ(desk.composer.display().estimate, u"≈ $0.14"_s);
}

TEST_F(ModelPricesTest, OneModelWithoutAFigureTakesTheWholeFigureAway) {
  list({{schnell, 1, u"units"_s}, {nano, 0.04}});
  desk.composer.editDraft(u"a red boat"_s);
  test::runPosted();
  EXPECT_EQ(desk.composer.display().estimate, u"≈ $0.040"_s);
  desk.composer.setModelChosen(schnellKey, true);
  test::runPosted();
  EXPECT_EQ(desk.composer.display().estimate, QString());
  EXPECT_EQ(desk.composer.display().estimateTooltip, QString());
  EXPECT_EQ(choice(schnell).price, u"$1.00 / unit"_s) << "the list price itself is no false figure";
}

TEST_F(ModelPricesTest, WithoutAKeyThereIsNoPriceUntilOneIsSaved) {
  desk.key.reset();
  const std::size_t before = desk.web->requests(pricing).size();
  list({{nano, 0.04}});
  desk.composer.showModels();
  test::runPosted();
  EXPECT_EQ(desk.web->requests(pricing).size(), before);
  EXPECT_EQ(choice(nano).price, u"Price unavailable"_s);
  desk.key = u"secret"_s;
  desk.composer.refreshPrices();
  test::runPosted();
  EXPECT_EQ(choice(nano).price, u"$0.04 / image"_s);
}

TEST_F(ModelPricesTest, APriceInAnotherCurrencyIsNone) {
  QJsonObject answer = test::priceList({{nano, 0.04}});
  QJsonArray rows = answer[u"prices"_s].toArray();
  QJsonObject row = rows[0].toObject();
  row[u"currency"_s] = u"EUR"_s;
  rows[0] = row;
  answer[u"prices"_s] = rows;
  desk.web->on("GET", pricing).answersJson(answer).repeating();
  desk.composer.editDraft(u"a red boat"_s);
  desk.composer.showModels();
  test::runPosted();
  EXPECT_EQ(choice(nano).price, u"Price unavailable"_s);
  EXPECT_EQ(desk.composer.display().estimate, QString());
}

TEST_F(ModelPricesTest, ARecordedCostStandsInTheInspectorTheHistoryAndTheGallery) {
  core::GenerationCost cost;
  cost.perImageUSD = 0.039;
  cost.basis = u"falUnitPrice"_s;
  cost.note = u"Estimated from fal.ai's listed price of $0.039 per image. Your account's actual charge may differ."_s;
  cost.pricingDate = u"2026-05-09"_s;
  desk.provider->cost = cost;
  desk.generate(u"a red boat"_s);
  desk.settle();
  ASSERT_EQ(desk.store.assets().size(), 1u);
  EXPECT_EQ(desk.jobs.job(desk.newestJob()->id).costText, u"≈ $0.039"_s);
  EXPECT_EQ(desk.gallery.cellAt(0).costText, u"≈ $0.039"_s);
  desk.state.inspect(desk.store.assets().front()->id);
  InspectorRow shown;
  for (const InspectorSection& section : desk.inspector.display().sections)
    for (const InspectorRow& row : section.rows)
      if (row.label == u"Cost"_s) shown = row;
  EXPECT_EQ(shown.value, u"≈ $0.039"_s);
  EXPECT_EQ(shown.note, cost.note);
}

}  // namespace
}  // namespace sorvan::shell
