#include "account/billing_state.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "account/paying_with.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

class BillingStateTest : public testing::Test {
 protected:
  BillingState& billing() {
    if (!state) {
      BillingState::Services services;
      services.settings = settings;
      services.clock = clock;
      services.ownKeyAllowed = allowed;
      services.makeClient = [this]() -> CreditsClient {
        if (away) throw SorvanError(u"no gateway"_s);
        CreditsClient::Access access;
        access.transport = transport;
        access.clock = clock;
        access.gateway = QUrl(u"https://gateway.example"_s);
        return CreditsClient(access);
      };
      state = std::make_unique<BillingState>(services);
    }
    return *state;
  }
  void sells(const QJsonObject& prices) {
    transport->on("POST", u"v1/prices"_s).answersJson(QJsonObject{{u"prices"_s, prices}});
  }
  void refresh(const QStringList& models) { runTask(billing().refresh(models, {})); }
  std::size_t questions() const { return transport->requests(u"v1/prices"_s).size(); }
  void allowByAccount(const QString& feature) {
    AccountInfo info;
    info.features = {feature};
    settings->set(u"accountInfo"_s, info);
  }

  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::optional<bool> allowed;
  bool away = false;
  std::unique_ptr<BillingState> state;
};

const QJsonObject four{{u"credits"_s, 4}};
const QJsonObject bySecond{{u"credits"_s, 4}, {u"per"_s, u"second"_s}};

TEST_F(BillingStateTest, AllowsTheOwnKeyOnlyForAnAccountThatMayUseIt) {
  EXPECT_FALSE(billing().ownKeyAllowed());
  EXPECT_TRUE(billing().creditsChosen());
  int changes = 0;
  QObject::connect(&billing(), &BillingState::choiceChanged, [&] { ++changes; });
  allowByAccount(u"other"_s);
  EXPECT_FALSE(billing().ownKeyAllowed());
  allowByAccount(u"byok"_s);
  EXPECT_TRUE(billing().ownKeyAllowed());
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(billing().creditsChosen());
  settings->remove(u"accountInfo"_s);
  EXPECT_FALSE(billing().ownKeyAllowed());
  settings->set(u"accountInfo"_s, u"garbage"_s);
  EXPECT_FALSE(billing().ownKeyAllowed());
}

TEST_F(BillingStateTest, RemembersTheChoiceByItsName) {
  allowed = true;
  EXPECT_EQ(billing().picked(), PayWith::ownKey);
  billing().pick(PayWith::credits);
  EXPECT_EQ(settings->get<QString>(u"payWith"_s), u"credits"_s);
  EXPECT_EQ(billing().billing(), (Billing{PayWith::credits, true}));
  state.reset();
  EXPECT_EQ(billing().picked(), PayWith::credits);
  billing().pick(PayWith::ownKey);
  EXPECT_EQ(settings->get<QString>(u"payWith"_s), u"ownKey"_s);
}

TEST_F(BillingStateTest, PaysWithCreditsWhereTheOwnKeyIsNotAllowed) {
  allowed = false;
  billing().pick(PayWith::ownKey);
  EXPECT_EQ(billing().billing(), (Billing{PayWith::credits, false}));
}

TEST_F(BillingStateTest, RefusesNothingBeforeTheGatewayHasAnswered) {
  EXPECT_TRUE(billing().accepts(u"a"_s));
  sells({{u"a"_s, four}});
  refresh({u"a"_s, u"b"_s});
  EXPECT_TRUE(billing().accepts(u"a"_s));
  EXPECT_FALSE(billing().accepts(u"b"_s));
  EXPECT_TRUE(billing().accepts(u"c"_s));
  EXPECT_EQ(billing().label(u"a"_s), u"4 credits"_s);
  EXPECT_FALSE(billing().label(u"b"_s));
}

TEST_F(BillingStateTest, AsksForSortedIdsOnceAndAgainWhenTheyAreOld) {
  sells({{u"a"_s, four}});
  refresh({u"b"_s, u"a"_s, u"b"_s});
  EXPECT_EQ(transport->requests(u"v1/prices"_s)[0].body, R"({"models":["a","b"]})");
  refresh({u"a"_s, u"b"_s});
  EXPECT_EQ(questions(), 1u);
  clock->advance(std::chrono::seconds(301));
  sells({{u"b"_s, four}});
  refresh({u"a"_s, u"b"_s});
  EXPECT_EQ(transport->requests(u"v1/prices"_s)[1].body, R"({"models":["b"]})");
  EXPECT_TRUE(billing().accepts(u"b"_s));
  clock->advance(std::chrono::seconds(3301));
  sells({});
  refresh({u"a"_s});
  EXPECT_FALSE(billing().accepts(u"a"_s));
}

TEST_F(BillingStateTest, AsksAgainAfterAFailureAndSaysNothing) {
  transport->on("POST", u"v1/prices"_s).answers(500).answers(200, "garbage").answers(200, R"({"prices":[]})");
  for (std::size_t asked = 1; asked <= 3; ++asked) {
    refresh({u"a"_s});
    EXPECT_EQ(questions(), asked);
    EXPECT_TRUE(billing().accepts(u"a"_s));
  }
  away = true;
  refresh({u"a"_s});
  EXPECT_EQ(questions(), 3u);
}

TEST_F(BillingStateTest, WaitsForAQuestionThatIsOnItsWay) {
  Completion gate;
  transport->on("POST", u"v1/prices"_s).answersJson(QJsonObject{{u"prices"_s, QJsonObject{{u"a"_s, four}}}}).after(gate);
  const auto first = billing().refresh({u"a"_s}, {});
  const auto second = billing().refresh({u"a"_s}, {});
  test::runPosted();
  EXPECT_FALSE(second.isReady());
  gate.finish();
  test::runUntil([&] { return first.isReady() && second.isReady(); });
  EXPECT_EQ(questions(), 1u);
  EXPECT_TRUE(billing().price(u"a"_s));
}

TEST_F(BillingStateTest, TakesAPriceThatDoesNotReadForNone) {
  sells({{u"a"_s, QJsonObject{{u"credits"_s, -4}}}, {u"b"_s, u"4"_s}, {u"c"_s, four}});
  refresh({u"a"_s, u"b"_s, u"c"_s});
  EXPECT_FALSE(billing().accepts(u"a"_s));
  EXPECT_FALSE(billing().accepts(u"b"_s));
  EXPECT_TRUE(billing().accepts(u"c"_s));
}

TEST_F(BillingStateTest, EstimatesARequestOnceThePriceIsKnown) {
  FalModel model;
  model.id = u"a"_s;
  GenerationRequest request;
  request.count = 2;
  EXPECT_FALSE(billing().estimate(request, model));
  sells({{u"a"_s, four}, {u"s"_s, bySecond}});
  refresh({u"a"_s, u"s"_s});
  EXPECT_EQ(billing().estimate(request, model), 8);
  EXPECT_TRUE(billing().isPricedPerSecond(u"s"_s));
  EXPECT_FALSE(billing().isPricedPerSecond(u"a"_s));
}

TEST_F(BillingStateTest, TellsWhoPaysBesideAButton) {
  allowed = true;
  PayingWithLine line;
  EXPECT_EQ(line.text(billing()), u"Paid by your fal.ai key"_s);
  line.usd = 0.05;
  EXPECT_EQ(line.text(billing()), u"Paid by your fal.ai key · ≈ $0.050"_s);
  line.usd = 1.5;
  EXPECT_EQ(line.text(billing()), u"Paid by your fal.ai key · ≈ $1.50"_s);
  EXPECT_EQ(PayingWithLine::help(billing()),
            u"Bring your own key (BYOK): fal.ai bills you directly. Estimated from list prices. Change this under Pay "
            u"With in the composer."_s);
  billing().pick(PayWith::credits);
  EXPECT_EQ(line.text(billing()), u"Paid with Sorvan Credits"_s);
  EXPECT_EQ(PayingWithLine::help(billing()),
            u"Change this under Pay With in the composer. A failed generation costs nothing."_s);
  sells({{u"a"_s, four}, {u"s"_s, bySecond}, {u"one"_s, QJsonObject{{u"credits"_s, 1}}}});
  refresh({u"a"_s, u"s"_s, u"none"_s, u"one"_s});
  line.model = u"a"_s;
  line.count = 3;
  EXPECT_EQ(line.text(billing()), u"Paid with Sorvan Credits · 12 credits"_s);
  line.model = u"s"_s;
  EXPECT_EQ(line.text(billing()), u"Paid with Sorvan Credits · 4 credits / s"_s);
  line.model = u"unasked"_s;
  EXPECT_EQ(line.text(billing()), u"Paid with Sorvan Credits"_s);
  line.model = u"none"_s;
  EXPECT_EQ(line.text(billing()),
            u"Credits cannot pay for this model yet. Switch Pay With to your fal.ai key in the composer."_s);
  line.model = u"one"_s;
  FalModel model;
  model.id = u"one"_s;
  GenerationRequest request;
  line.record = &model;
  line.request = &request;
  EXPECT_EQ(line.text(billing()), u"Paid with Sorvan Credits · 1 credit"_s);
}

TEST_F(BillingStateTest, OffersNoKeyToSomebodyWhoMayNotUseOne) {
  sells({});
  refresh({u"none"_s});
  PayingWithLine line;
  line.model = u"none"_s;
  EXPECT_EQ(line.text(billing()), u"Credits cannot pay for this model yet. Choose another."_s);
}

TEST(PayWithMenuTest, SaysWhyASavedKeyDoesNotCount) {
  EXPECT_FALSE(PayWithMenu::whyKeyDoesNotCount(false, false, false));
  EXPECT_FALSE(PayWithMenu::whyKeyDoesNotCount(true, true, true));
  EXPECT_TRUE(PayWithMenu::whyKeyDoesNotCount(true, false, false)->contains(u"Sign in"_s));
  EXPECT_TRUE(PayWithMenu::whyKeyDoesNotCount(true, true, false)->contains(u"this account"_s));
}

TEST(PayWithMenuTest, NamesThePayerAndWhatAClickDoes) {
  EXPECT_EQ(PayWithMenu::label(PayWith::credits), u"Pay with Credits"_s);
  EXPECT_EQ(PayWithMenu::label(PayWith::ownKey), u"Pay with fal.ai Key"_s);
  EXPECT_EQ(PayWithMenu::help(PayWith::ownKey),
            u"Payment method: your own fal.ai key (BYOK). Click to pay with Sorvan Credits instead."_s);
}

TEST(RollingCreditsTest, ShowsWholeCreditsOnTheWay) {
  EXPECT_EQ(shownMicrocredits(2'500'000), 2'500'000);
  EXPECT_EQ(shownMicrocredits(2'500'000.4), 2'000'000);
  EXPECT_EQ(shownMicrocredits(0), 0);
}

TEST(SpendNoteTest, TellsNothingOfDollarsWhereOnlyCreditsPay) {
  Charge charge;
  EXPECT_EQ(spendNote(charge, Spend{false}), QString());
  charge.note = u"Estimated from list prices: $0.12."_s;
  charge.cost = 0.12;
  EXPECT_EQ(spendNote(charge, Spend{true}), u"Estimated from list prices: $0.12."_s);
  EXPECT_EQ(spendNote(charge, Spend{false}), u"Paid with 12 Sorvan Credits."_s);
  charge.credits = 1;
  EXPECT_EQ(spendNote(charge, Spend{false}), u"Paid with 1 Sorvan Credit."_s);
}

TEST(SpendDetailsTest, LeavesNothingOfDollarsToSomebodyWithCreditsOnly) {
  const QJsonObject parameters{
      {u"quality"_s, u"high"_s},
      {u"output_format"_s, u"png"_s},
      {u"size"_s, u"1024x1024"_s},
      {u"upstreamProvider"_s, u"x"_s},
      {u"seed"_s, 4},
      {u"cost"_s, QJsonObject{{u"perImageUSD"_s, 0.02}, {u"credits"_s, 1}, {u"note"_s, u"at $0.02"_s}, {u"source"_s, u"y"_s}}}};
  EXPECT_EQ(spendDetails(parameters, MediaType::image, Spend{true}), parameters);
  const QJsonObject kept = spendDetails(parameters, MediaType::image, Spend{false});
  EXPECT_EQ(kept.keys(), (QStringList{u"cost"_s, u"seed"_s, u"size"_s}));
  EXPECT_EQ(kept.value(u"cost"_s).toObject().value(u"note"_s), u"Paid with 1 Sorvan Credit."_s);
  EXPECT_FALSE(spendDetails(parameters, MediaType::audio, Spend{false}).contains(u"size"_s));
  EXPECT_FALSE(QString::fromUtf8(QJsonDocument(kept).toJson()).contains(u'$'));
}

}  // namespace
}  // namespace sorvan::account
