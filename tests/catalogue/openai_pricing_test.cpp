#include "catalogue/openai_pricing.h"

#include <gtest/gtest.h>

#include "core/library_fixture.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

TEST(RecordedPrices, DependOnModelShapeAndQuality) {
  const auto dollars = [](const QString& model, const QString& size, const QString& quality) {
    const auto cost = openAIOutputEstimate(model, size, quality);
    return cost ? cost->perImageUSD : -1;
  };
  EXPECT_EQ(dollars(u"gpt-image-1"_s, u"1024x1024"_s, u"medium"_s), 0.042);
  EXPECT_EQ(dollars(u"gpt-image-1"_s, u"1536x1024"_s, u"high"_s), 0.25);
  EXPECT_EQ(dollars(u"gpt-image-1-mini"_s, u"1024x1024"_s, u"low"_s), 0.005);
  EXPECT_EQ(dollars(u"gpt-image-1.5"_s, u"1024x1536"_s, u"medium"_s), 0.05);
  EXPECT_EQ(dollars(u"gpt-image-1"_s, u"1024x1024"_s, u"auto"_s), -1);
  EXPECT_EQ(dollars(u"dall-e-3"_s, u"1024x1024"_s, u"low"_s), -1);
}

TEST(RecordedPrices, SayThatTheyCountTheOutputOnly) {
  const auto cost = openAIOutputEstimate(u"gpt-image-1"_s, u"1024x1024"_s, u"low"_s);
  ASSERT_TRUE(cost);
  EXPECT_EQ(cost->basis, u"outputOnly"_s);
  EXPECT_EQ(cost->note,
            u"Output-only estimate at recorded list prices. Input text and reference-image charges are "
            u"excluded; original usage is unavailable."_s);
  EXPECT_EQ(cost->pricingDate, u"2026-10-06"_s);
  EXPECT_FALSE(cost->source.isEmpty());
  EXPECT_FALSE(cost->responseUsageJSON);
}

class OldCosts : public test::LibraryFixture {
 protected:
  OldCosts() { open(); }

  QUuid add(const QByteArray& parameters, const QString& provider = u"OpenAI"_s, std::optional<double> cost = {}) {
    Generation generation;
    generation.id = QUuid::createUuid();
    generation.assetID = addAsset(QString::number(++count) + u".png"_s)->id;
    generation.provider = provider;
    generation.model = u"gpt-image-1"_s;
    generation.parametersJSON = parameters;
    generation.estimatedCost = cost;
    store.context().insert(generation);
    store.save(LibraryTables::generations);
    return generation.id;
  }
  GenerationRef find(const QUuid& id) const {
    for (const GenerationRef& each : store.generations()) {
      if (each->id == id) return each;
    }
    return {};
  }

  int count = 0;
};

TEST_F(OldCosts, AreFilledInWhereThereIsNone) {
  const QByteArray usual = R"({"size":"1024x1024","quality":"low"})";
  const QUuid old = add(usual);
  const QUuid paid = add(usual, u"OpenAI"_s, 3.5);
  const QUuid other = add(usual, u"fal.ai"_s);
  const QUuid broken = add("[1]");
  const QUuid numbers = add(R"({"size":5,"quality":"low"})");
  reopen();
  backfillOutputCostEstimates(store);
  reopen();
  EXPECT_EQ(find(old)->estimatedCost, 0.011);
  ASSERT_TRUE(find(old)->costRecord());
  EXPECT_EQ(find(old)->costRecord()->basis, u"outputOnly"_s);
  EXPECT_EQ(find(paid)->estimatedCost, 3.5);
  EXPECT_FALSE(find(other)->estimatedCost);
  EXPECT_FALSE(find(broken)->estimatedCost);
  EXPECT_EQ(find(broken)->parametersJSON, "[1]");
  EXPECT_FALSE(find(numbers)->estimatedCost);
}

TEST_F(OldCosts, StayAwayWhenTheDiskRefuses) {
  const QUuid old = add(R"({"size":"1024x1024","quality":"low"})");
  reopen();
  failWrites("UPDATE", "Generation");
  EXPECT_THROW(backfillOutputCostEstimates(store), SorvanError);
  EXPECT_FALSE(find(old)->estimatedCost);
  EXPECT_FALSE(store.context().hasChanges());
}

}  // namespace
}  // namespace sorvan::catalogue
