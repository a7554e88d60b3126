#include "catalogue/fal_pricing.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

const QString address = u"/v1/models/pricing"_s;

QJsonObject priceRow(const QString& id, double price, const QJsonValue& currency = u"USD"_s) {
  QJsonObject row{{u"endpoint_id"_s, id}, {u"unit_price"_s, price}, {u"unit"_s, u"images"_s}};
  if (!currency.isUndefined()) row.insert(u"currency"_s, currency);
  return row;
}

QJsonObject priceList(const QJsonArray& prices, const QJsonValue& next = QJsonValue::Null) {
  return {{u"prices"_s, prices}, {u"next_cursor"_s, next}, {u"has_more"_s, next.isString()}};
}

class ListPrices : public testing::Test {
 protected:
  FalPricing fresh() { return FalPricing({transport, catalog, clock, settings}); }
  void refresh(FalPricing& pricing, const QStringList& ids) { runTask(pricing.refresh(ids, u"secret"_s, {})); }
  QStringList askedIDs(std::size_t call) const {
    return QUrlQuery(transport->recorded.at(call).request.url).allQueryItemValues(u"endpoint_id"_s, QUrl::FullyDecoded);
  }

  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<FalCatalog> catalog = std::make_shared<FalCatalog>(settings);
};

TEST_F(ListPrices, AreAskedForWithTheKeyAndKept) {
  transport->on("GET", address)
      .answersJson(priceList({priceRow(u"a/b"_s, 0.25), priceRow(u"c/d"_s, 2, QJsonValue::Undefined)}));
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s, u"c/d"_s, u"a/b"_s});
  EXPECT_EQ(askedIDs(0), (QStringList{u"a/b"_s, u"c/d"_s}));
  const HttpRequest& request = transport->recorded.at(0).request;
  EXPECT_EQ(request.url.host(), u"api.fal.ai"_s);
  EXPECT_EQ(request.headers.at(0), HttpHeader("Authorization", "Key secret"));
  ASSERT_TRUE(pricing.price(u"a/b"_s));
  EXPECT_EQ(pricing.price(u"a/b"_s)->unitPrice, 0.25);
  EXPECT_EQ(pricing.price(u"c/d"_s)->unitPrice, 2);
  EXPECT_EQ(fresh().price(u"a/b"_s), pricing.price(u"a/b"_s)) << "the list is stored";
  EXPECT_EQ(fresh().price(u"a/b"_s)->date, isoText(clock->now()).left(10));
}

TEST_F(ListPrices, AreAskedForOncePerDayAndOncePerStart) {
  transport->on("GET", address).answersJson(priceList({priceRow(u"a/b"_s, 1)})).repeating();
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s, u"un/priced"_s});
  refresh(pricing, {u"a/b"_s, u"un/priced"_s});
  clock->advance(std::chrono::seconds(86400));
  refresh(pricing, {u"a/b"_s});
  EXPECT_EQ(transport->recorded.size(), 1u);
  clock->advance(std::chrono::seconds(1));
  refresh(pricing, {u"a/b"_s});
  EXPECT_EQ(transport->recorded.size(), 2u);
  FalPricing restarted = fresh();
  refresh(restarted, {u"a/b"_s});
  EXPECT_EQ(transport->recorded.size(), 3u);
}

TEST_F(ListPrices, StayAsTheyWereWhenTheServiceFails) {
  auto& route = transport->on("GET", address);
  route.answersJson(priceList({priceRow(u"a/b"_s, 1)}))
      .answers(500)
      .answers(200, "<html>")
      .answers(200, R"({"prices":{}})");
  route.fails(HttpProblem::TimedOut).answersJson(priceList({priceRow(u"a/b"_s, 3)}));
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s});
  clock->advance(std::chrono::hours(25));
  for (int failure = 0; failure < 4; ++failure) {
    refresh(pricing, {u"a/b"_s});
    EXPECT_EQ(pricing.price(u"a/b"_s)->unitPrice, 1);
  }
  refresh(pricing, {u"a/b"_s});
  EXPECT_EQ(pricing.price(u"a/b"_s)->unitPrice, 3);
}

TEST_F(ListPrices, InAnotherCurrencyAreNone) {
  transport->on("GET", address)
      .answersJson(priceList({priceRow(u"a/b"_s, 1), priceRow(u"c/d"_s, 9, u"EUR"_s)}))
      .answersJson(priceList({priceRow(u"a/b"_s, 1, u"EUR"_s)}));
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s, u"c/d"_s});
  EXPECT_TRUE(pricing.price(u"a/b"_s));
  EXPECT_FALSE(pricing.price(u"c/d"_s));
  clock->advance(std::chrono::hours(25));
  refresh(pricing, {u"a/b"_s});
  EXPECT_FALSE(pricing.price(u"a/b"_s)) << "the price in dollars does not hold any more";
}

TEST_F(ListPrices, SkipElementsThatLackSomething) {
  const QJsonObject noUnit{{u"endpoint_id"_s, u"a/b"_s}, {u"unit_price"_s, 1}};
  const QJsonObject textPrice{{u"endpoint_id"_s, u"a/b"_s}, {u"unit_price"_s, u"1"_s}, {u"unit"_s, u"images"_s}};
  transport->on("GET", address)
      .answersJson(priceList({noUnit, textPrice, QJsonValue(4), priceRow(u"a/b"_s, -1), priceRow(u"c/d"_s, 5)}));
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s, u"c/d"_s});
  EXPECT_FALSE(pricing.price(u"a/b"_s));
  EXPECT_EQ(pricing.price(u"c/d"_s)->unitPrice, 5);
}

TEST_F(ListPrices, AreAskedForInFiftiesAndFollowPages) {
  QStringList ids;
  for (int index = 0; index < 60; ++index) ids << u"a/%1"_s.arg(index);
  transport->on("GET", address)
      .answersJson(priceList({priceRow(u"a/0"_s, 1)}, u"Mg=="_s))
      .answersJson(priceList({priceRow(u"a/1"_s, 2)}))
      .answersJson(priceList({priceRow(u"a/55"_s, 3)}));
  FalPricing pricing = fresh();
  refresh(pricing, ids);
  ASSERT_EQ(transport->recorded.size(), 3u);
  EXPECT_EQ(askedIDs(0).size(), 50);
  EXPECT_EQ(QUrlQuery(transport->recorded[1].request.url).queryItemValue(u"cursor"_s, QUrl::FullyDecoded), u"Mg=="_s);
  EXPECT_EQ(askedIDs(2).size(), 10);
  for (const QString& id : {u"a/0"_s, u"a/1"_s, u"a/55"_s}) EXPECT_TRUE(pricing.price(id)) << id.toStdString();
}

TEST_F(ListPrices, TakeAMinuteAtMostHoweverManyPagesThereAre) {
  const auto pageAfter = [this](std::chrono::seconds wait, const QString& next) {
    return [this, wait, next](const HttpRequest&) {
      clock->advance(wait);
      HttpReply reply;
      reply.status = 200;
      reply.body = QJsonDocument(priceList({}, next)).toJson();
      return reply;
    };
  };
  transport->on("GET", address)
      .answersBy(pageAfter(std::chrono::seconds(20), u"Mg=="_s))
      .answersBy(pageAfter(std::chrono::seconds(40), u"Mw=="_s));
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s});
  ASSERT_EQ(transport->recorded.size(), 2u);
  EXPECT_EQ(transport->recorded[0].request.totalLimit, std::chrono::seconds(60));
  EXPECT_EQ(transport->recorded[1].request.totalLimit, std::chrono::seconds(40));
  EXPECT_FALSE(pricing.price(u"a/b"_s));
}

TEST_F(ListPrices, AreAskedForOneByOneWhenOneModelIsUnknown) {
  transport->on("GET", address)
      .answers(404)
      .answersJson(priceList({priceRow(u"a/b"_s, 1)}))
      .answers(404)
      .answersJson(priceList({priceRow(u"e/f"_s, 2)}));
  FalPricing pricing = fresh();
  refresh(pricing, {u"a/b"_s, u"c/d"_s, u"e/f"_s});
  EXPECT_EQ(transport->recorded.size(), 4u);
  EXPECT_TRUE(pricing.price(u"a/b"_s));
  EXPECT_TRUE(pricing.price(u"e/f"_s));
}

TEST_F(ListPrices, AreNoneWhenTheStoredTextDoesNotRead) {
  settings->set(u"falPrices"_s, u"{\"a/b\":5}"_s);
  EXPECT_FALSE(fresh().price(u"a/b"_s));
  settings->set(u"falPrices"_s, u"{\"a/b\":{\"unitPrice\":5,\"unit\":\"images\"}}"_s);
  EXPECT_EQ(fresh().price(u"a/b"_s)->unitPrice, 5);
}

TEST_F(ListPrices, TellWhatARequestCosts) {
  transport->on("GET", address).answersJson(priceList({priceRow(u"fal-ai/nano-banana-2"_s, 0.08)}));
  FalPricing pricing = fresh();
  GenerationRequest request;
  request.model = u"fal-ai/nano-banana-2"_s;
  request.count = 2;
  EXPECT_FALSE(pricing.estimate(request, nanoBanana2()));
  const auto listed = runTask(pricing.listedPrice(request, u"secret"_s, {}));
  ASSERT_TRUE(listed);
  EXPECT_DOUBLE_EQ(listed->total, 0.16);
  EXPECT_EQ(listed->unitPrice, 0.08);
  EXPECT_EQ(listed->unit, u"images"_s);
  EXPECT_EQ(pricing.estimate(request, nanoBanana2()), listed->total);
  request.model = u"gone/model"_s;
  EXPECT_FALSE(runTask(pricing.listedPrice(request, u"secret"_s, {})));
  EXPECT_EQ(transport->recorded.size(), 1u);
}

}  // namespace
}  // namespace sorvan::catalogue
