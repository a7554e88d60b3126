#include "shell/account_payment_desk.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QSignalSpy>

#include "catalogue/fal_catalog.h"
#include "shell/model_prices.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"
#include "support/text_printers.h"

namespace sorvan::shell {
namespace {

using namespace Qt::StringLiterals;

const QString nano = u"fal-ai/nano-banana-2"_s;

struct AccountPaymentDeskTest : testing::Test {
  AccountPaymentDeskTest() { clock->passSleeps(); }
  ~AccountPaymentDeskTest() override {
    test::runTask(desk.drain());
    test::runTask(account.drain());
  }

  account::AccountStore::Services accountServices() {
    account::AccountStore::Services services;
    services.transport = web;
    services.clock = clock;
    services.settings = settings;
    services.keys = keys;
    return services;
  }
  account::BillingState::Services billingServices() {
    account::BillingState::Services services;
    services.settings = settings;
    services.clock = clock;
    services.makeClient = [this] { return account.client(account::AccountStore::Needs::token); };
    return services;
  }
  void signIn(const QStringList& features, qint64 available = 2'000'000'000) {
    const QJsonObject credits{{u"included"_s, 0},
                              {u"purchased"_s, available},
                              {u"reserved"_s, 7'000'000},
                              {u"available"_s, available}};
    web->on("GET", u"v1/me"_s)
        .answersJson(QJsonObject{{u"email"_s, u"ada@example.org"_s},
                                 {u"features"_s, QJsonArray::fromStringList(features)},
                                 {u"credits"_s, credits}})
        .repeating();
    web->on("GET", u"v1/credit-packs"_s).answersJson(QJsonObject{{u"packs"_s, QJsonArray()}}).repeating();
    backend->entries[u"Sorvan Credits"_s] = u"token-1"_s;
    account.refresh();
    settle();
  }
  void sells(const QJsonObject& prices) {
    web->on("POST", u"v1/prices"_s).answersJson(QJsonObject{{u"prices"_s, prices}}).repeating();
  }
  void saveKey() {
    provider.save(u"my-key"_s);
    test::runTask(provider.whenIdle());
  }
  void settle() {
    test::runPosted();
    test::runTask(account.whenIdle());
    test::runPosted();
  }
  QString keyProblem() const { return payChoicesOf(account, billing, provider).keyProblem; }
  std::size_t questions() const { return web->requests(u"v1/prices"_s).size(); }

  std::shared_ptr<test::ScriptedTransport> web = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<base::Settings> settings = std::make_shared<base::Settings>();
  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeyCache> keys = std::make_shared<KeyCache>(std::make_shared<KeychainStore>(backend));
  std::shared_ptr<catalogue::FalCatalog> catalog = std::make_shared<catalogue::FalCatalog>(settings);
  account::ProviderSettings provider{keys};
  account::AccountStore account{accountServices()};
  account::BillingState billing{billingServices()};
  AccountPaymentDesk desk{account, billing, provider};
};

TEST_F(AccountPaymentDeskTest, WithoutAnAccountCreditsPayAndNothingIsOffered) {
  saveKey();
  EXPECT_EQ(desk.billing(), (core::Billing{core::PayWith::credits, false}));
  EXPECT_FALSE(desk.offersChoice());
  EXPECT_FALSE(desk.isSignedIn());
  EXPECT_FALSE(desk.account());
  EXPECT_TRUE(desk.isSold(nano)) << "what is not known blocks nothing";
}

TEST_F(AccountPaymentDeskTest, SaysWhoPaysAndWhatThatMeans) {
  saveKey();
  core::GenerationRequest request;
  PayWithDisplay display = desk.payWithDisplay(request, nullptr, std::nullopt);
  EXPECT_FALSE(display.offered);
  EXPECT_EQ(display.label, u"fal.ai Key Not Used"_s);
  EXPECT_TRUE(display.keyProblem.contains(u"Sign in under Settings → Account"_s));
  EXPECT_EQ(display.help, display.keyProblem);
  signIn({u"byok"_s});
  display = desk.payWithDisplay(request, nullptr, 0.06);
  EXPECT_TRUE(display.offered);
  EXPECT_TRUE(display.keyProblem.isEmpty());
  EXPECT_EQ(display.label, u"Pay with fal.ai Key"_s);
  EXPECT_EQ(display.help,
            u"Payment method: your own fal.ai key (BYOK). Click to pay with Sorvan Credits instead."_s);
  EXPECT_EQ(display.creditsBalance, u"2,000 credits"_s);
  EXPECT_EQ(display.line, u"Paid by your fal.ai key · ≈ $0.060"_s);
  desk.payWith(core::PayWith::credits);
  display = desk.payWithDisplay(request, nullptr, 0.06);
  EXPECT_EQ(display.label, u"Pay with Credits"_s);
  EXPECT_EQ(display.line, u"Paid with Sorvan Credits"_s);
  EXPECT_TRUE(display.lineHelp.endsWith(u"A failed generation costs nothing."_s));
}

TEST_F(AccountPaymentDeskTest, WithoutAKeyAndAnAccountNothingIsSaidOfWhoPays) {
  EXPECT_EQ(desk.payWithDisplay({}, nullptr, std::nullopt).label, QString());
}

TEST_F(AccountPaymentDeskTest, TheOwnKeyPaysOnlyForAnAccountThatMayUseIt) {
  saveKey();
  QSignalSpy changed(&desk, &PaymentDesk::changed);
  signIn({u"byok"_s});
  EXPECT_GT(changed.count(), 0);
  EXPECT_EQ(desk.billing(), (core::Billing{core::PayWith::ownKey, true}));
  EXPECT_TRUE(desk.offersChoice());
  ASSERT_TRUE(desk.account());
  EXPECT_EQ(desk.account()->available, 2'000'000'000);
  EXPECT_EQ(desk.account()->reserved, 7'000'000);
  desk.payWith(core::PayWith::credits);
  EXPECT_EQ(desk.billing(), (core::Billing{core::PayWith::credits, true}));
  EXPECT_EQ(settings->get<QString>(u"payWith"_s), u"credits"_s);
  desk.payWith(core::PayWith::ownKey);
  web->on("POST", u"v1/auth/sign-out"_s).answersJson(QJsonObject{{u"signed_out"_s, true}});
  account.signOut();
  settle();
  EXPECT_EQ(desk.billing(), (core::Billing{core::PayWith::credits, false}));
}

TEST_F(AccountPaymentDeskTest, SaysWhyASavedKeyPaysForNothing) {
  EXPECT_EQ(keyProblem(), QString()) << "there is no key";
  saveKey();
  EXPECT_EQ(keyProblem(),
            u"Your fal.ai key is saved, but it pays only while you are signed in. Sign in under Settings → Account to "
            u"use it."_s);
  signIn({});
  EXPECT_EQ(keyProblem(),
            u"Your fal.ai key is saved, but this account pays with Sorvan Credits only, so the key is not used."_s);
  signIn({u"byok"_s});
  EXPECT_EQ(keyProblem(), QString());
}

TEST_F(AccountPaymentDeskTest, LearnsPricesOnceSomebodyIsSignedIn) {
  desk.learnPrices({nano});
  test::runPosted();
  EXPECT_EQ(questions(), 0u) << "without a token nothing is asked";
  signIn({});
  sells({{nano, QJsonObject{{u"credits"_s, 8}, {u"up_to"_s, true}}}});
  desk.learnPrices({nano, u"acme/unsold"_s});
  test::runPosted();
  EXPECT_EQ(questions(), 1u);
  core::GenerationRequest request;
  request.count = 2;
  EXPECT_EQ(desk.credits(request, *catalog->model(nano)), 16);
  EXPECT_TRUE(desk.isCeiling(nano));
  EXPECT_TRUE(desk.isSold(nano));
  EXPECT_FALSE(desk.isSold(u"acme/unsold"_s));
  EXPECT_FALSE(desk.isCeiling(u"acme/unsold"_s));
}

TEST_F(AccountPaymentDeskTest, ModelsArePricedInCreditsWhileTheyPay) {
  int keyReads = 0;
  const auto pricing = std::make_shared<catalogue::FalPricing>(
      catalogue::FalPricing::Services{web, catalog, clock, settings});
  ModelPrices prices(
      pricing,
      [&keyReads](std::stop_token) -> Task<std::optional<QString>> {
        ++keyReads;
        co_return std::nullopt;
      },
      &desk);
  prices.refresh({nano, u"acme/unsold"_s});
  test::runPosted();
  sells({{nano, QJsonObject{{u"credits"_s, 8}}}});
  signIn({u"byok"_s});
  EXPECT_EQ(keyReads, 1) << "the own key pays from now on, so its prices are asked for";
  desk.payWith(core::PayWith::credits);
  test::runPosted();
  EXPECT_EQ(questions(), 1u) << "what is shown is asked for again under the new payer";
  EXPECT_EQ(prices.text(nano), (PriceText{u"8 credits"_s, {}}));
  EXPECT_EQ(prices.text(u"acme/unsold"_s).amount, u"Price unavailable"_s);
  EXPECT_EQ(keyReads, 1);
}

TEST_F(AccountPaymentDeskTest, AsksForThePageWhereCreditsAreBought) {
  QSignalSpy asked(&desk, &AccountPaymentDesk::buyCreditsRequested);
  desk.buyCredits();
  EXPECT_EQ(asked.count(), 1);
}

}  // namespace
}  // namespace sorvan::shell
