#include "account/account_store.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "catalogue/gateway_address.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;

class AccountStoreTest : public testing::Test {
 protected:
  AccountStoreTest() { clock->passSleeps(); }
  ~AccountStoreTest() override {
    if (store) runTask(store->drain());
  }

  AccountStore& account() {
    if (!store) {
      AccountStore::Services services;
      services.transport = transport;
      services.clock = clock;
      services.settings = settings;
      services.keys = keys;
      services.deviceName = u"studio-box"_s;
      store = std::make_unique<AccountStore>(services);
    }
    return *store;
  }

  static QJsonObject me(qint64 purchased = 0, const QString& email = u"ada@example.org"_s) {
    return {{u"email"_s, email},
            {u"plan"_s, u"free"_s},
            {u"plan_status"_s, u"active"_s},
            {u"renews"_s, false},
            {u"features"_s, QJsonArray{u"byok"_s}},
            {u"credits"_s, QJsonObject{{u"included"_s, 0},
                                       {u"purchased"_s, purchased},
                                       {u"reserved"_s, 0},
                                       {u"available"_s, purchased}}},
            {u"plans"_s, QJsonArray()},
            {u"devices"_s, QJsonArray()}};
  }
  void answerMe(qint64 purchased = 0) { transport->on("GET", u"v1/me"_s).answersJson(me(purchased)).repeating(); }
  void answerPacks() {
    transport->on("GET", u"v1/credit-packs"_s)
        .answersJson(QJsonObject{{u"packs"_s, QJsonArray{QJsonObject{{u"id"_s, u"p500"_s},
                                                                     {u"title"_s, u"500 credits"_s},
                                                                     {u"microcredits"_s, 500'000'000},
                                                                     {u"price_minor"_s, 500},
                                                                     {u"currency"_s, u"USD"_s}}}},
                                 {u"test_mode"_s, true}})
        .repeating();
  }
  void signedIn() {
    backend->entries[u"Sorvan Credits"_s] = u"token-1"_s;
    answerMe();
    answerPacks();
    account().refresh();
    idle();
  }
  void idle() { runTask(account().whenIdle()); }
  QString message() { return account().message().value_or(QString()); }
  QByteArray keyOf(const HttpRequest& request) const {
    for (const auto& [name, value] : request.headers)
      if (name == "Idempotency-Key") return value;
    return {};
  }

  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeyCache> keys = std::make_shared<KeyCache>(std::make_shared<KeychainStore>(backend));
  std::unique_ptr<AccountStore> store;
};

TEST_F(AccountStoreTest, AsksForALinkAndSaysWhereItWent) {
  transport->on("POST", u"v1/auth/start"_s).answersJson(QJsonObject{{u"sent"_s, true}});
  account().start(u"  ada@example.org \n"_s);
  EXPECT_TRUE(account().busy());
  idle();
  EXPECT_FALSE(account().busy());
  EXPECT_EQ(account().awaitingLink(), u"ada@example.org"_s);
  EXPECT_EQ(message(), u"Check ada@example.org and open the link on this Mac."_s);
  EXPECT_EQ(transport->recorded[0].request.body, R"({"email":"ada@example.org"})");
}

TEST_F(AccountStoreTest, SignsInWithALinkThatWasOpenedOrPasted) {
  transport->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  answerMe(2'000'000'000);
  answerPacks();
  account().complete(u"\n sorvan://auth?code=abc%2F1&x=2 "_s);
  idle();
  EXPECT_EQ(message(), u"Signed in as ada@example.org"_s);
  EXPECT_TRUE(account().signedIn());
  EXPECT_EQ(account().tokenChanges(), 1);
  EXPECT_EQ(backend->entries[u"Sorvan Credits"_s], u"token-1"_s);
  EXPECT_EQ(account().info()->credits.purchased, 2'000'000'000);
  EXPECT_EQ(settings->get<AccountInfo>(u"accountInfo"_s), account().info());
  EXPECT_EQ(account().packs().size(), 1u);
  EXPECT_TRUE(account().packsTestMode());
  const auto& exchange = transport->recorded[0];
  EXPECT_EQ(exchange.kind, test::ScriptedCall::PostOnce);
  EXPECT_EQ(exchange.request.body, R"({"code":"abc/1","device":"studio-box"})");
  EXPECT_EQ(keyOf(exchange.request).size(), 36);
}

TEST_F(AccountStoreTest, RefusesWhatIsNoSignInLink) {
  for (const auto& text : {u""_s, u"  "_s, u"https://sorvan.example?code=1"_s, u"sorvan://auth"_s, u"sorvan://auth?code="_s,
                           u"sorvan://auth?Code=1"_s, u"sorvan://auth?code=%20"_s, u"abc"_s, u"javascript:alert(1)?code=1"_s,
                           u"sorvan://auth?code="_s + QString(5000, u'x')}) {
    account().complete(text);
    idle();
    EXPECT_EQ(message(), u"This is not a Sorvan sign-in link."_s) << text.left(60).toStdString();
    EXPECT_TRUE(account().messageIsError());
  }
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(AccountStoreTest, APurchaseIsNotToldToTheNextOneWhoSignsIn) {
  signedIn();
  transport->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}});
  account().buyPack(u"p500"_s);
  answerMe(500'000'000);
  idle();
  ASSERT_EQ(account().arrived(), u"500 credits added"_s);
  transport->on("POST", u"v1/auth/sign-out"_s).answersJson(QJsonObject{{u"signed_out"_s, true}});
  account().signOut();
  idle();
  EXPECT_EQ(account().arrived(), std::nullopt);
  EXPECT_EQ(account().arrivedCredits(), 0);
}

TEST_F(AccountStoreTest, TellsOfALinkThatWasUsedAndStaysSignedIn) {
  signedIn();
  transport->on("POST", u"v1/auth/exchange"_s).answers(410, R"({"error":"This link was used already."})");
  account().complete(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_EQ(message(), u"This link was used already."_s);
  EXPECT_TRUE(account().signedIn());
}

TEST_F(AccountStoreTest, ExchangesALinkThatIsPastedTwiceAtOnceOnlyOnce) {
  transport->on("POST", u"v1/auth/exchange"_s)
      .answersJson(QJsonObject{{u"token"_s, u"token-1"_s}})
      .answers(410, R"({"error":"This link was used already."})");
  answerMe();
  answerPacks();
  account().complete(u"sorvan://auth?code=1"_s);
  account().complete(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_EQ(transport->posts(u"v1/auth/exchange"_s), 1);
  EXPECT_EQ(message(), u"Signed in as ada@example.org"_s);
  account().complete(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_EQ(message(), u"This link was used already."_s);
  EXPECT_EQ(account().presentToken(), u"token-1"_s);
  EXPECT_EQ(account().tokenChanges(), 1);
}

TEST_F(AccountStoreTest, AsksOnceMoreUnderTheSameKeyWhenTheAnswerToALinkIsLost) {
  transport->on("POST", u"v1/auth/exchange"_s)
      .answers(502, "<html>")
      .answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  answerMe();
  answerPacks();
  account().complete(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_TRUE(account().signedIn());
  const auto asked = transport->requests(u"v1/auth/exchange"_s);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(keyOf(asked[0]), keyOf(asked[1]));
}

TEST_F(AccountStoreTest, KeepsATokenThatCannotBeSavedUntilTheProgramEnds) {
  backend->failingNumber = 7;
  transport->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  answerMe();
  answerPacks();
  account().complete(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_EQ(message(), u"Keychain save failed (7)."_s);
  EXPECT_TRUE(account().signedIn());
  EXPECT_TRUE(account().info());
  account().refresh();
  idle();
  EXPECT_TRUE(account().signedIn());
}

TEST_F(AccountStoreTest, TakesNoTokenThatCouldEndAHeader) {
  transport->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"a\r\nX: b"_s}});
  account().complete(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_FALSE(account().signedIn());
  EXPECT_TRUE(account().messageIsError());
}

TEST_F(AccountStoreTest, ReadsTheAccountAndWhatIsOnSale) {
  signedIn();
  EXPECT_TRUE(account().signedIn());
  EXPECT_EQ(account().accountName(), u"ada@example.org"_s);
  EXPECT_EQ(account().packs().front().id, u"p500"_s);
}

TEST_F(AccountStoreTest, NamesNoAccountThatWasToldForAnotherTokenOrGateway) {
  AccountInfo earlier;
  earlier.email = u"bob@example.org"_s;
  settings->set(u"accountInfo"_s, earlier);
  EXPECT_FALSE(account().accountName());
  signedIn();
  EXPECT_EQ(account().accountName(), u"ada@example.org"_s);
  account().setGateway(u"https://other.example"_s);
  EXPECT_FALSE(account().accountName());
}

TEST_F(AccountStoreTest, KeepsWhatItKnowsWhileTheGatewayIsAway) {
  signedIn();
  transport->on("GET", u"v1/me"_s).answers(503);
  account().refresh();
  idle();
  EXPECT_TRUE(account().info());
  EXPECT_EQ(account().packs().size(), 1u);
  EXPECT_FALSE(account().message());
}

TEST_F(AccountStoreTest, KeepsTheOldPacksWhenNewOnesCannotBeHad) {
  signedIn();
  transport->on("GET", u"v1/credit-packs"_s).answers(500);
  account().refresh();
  idle();
  EXPECT_EQ(account().packs().size(), 1u);
}

TEST_F(AccountStoreTest, ForgetsTheAccountWhenNobodyIsSignedIn) {
  settings->set(u"accountInfo"_s, AccountInfo());
  EXPECT_TRUE(account().info());
  account().refresh();
  idle();
  EXPECT_FALSE(account().info());
  EXPECT_FALSE(settings->contains(u"accountInfo"_s));
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(AccountStoreTest, StaysSignedInWhenTheKeyStoreCannotBeRead) {
  signedIn();
  backend->failingNumber = 7;
  account().refresh();
  idle();
  EXPECT_TRUE(account().signedIn());
  EXPECT_TRUE(account().info());
}

TEST_F(AccountStoreTest, SignsOutWithoutANetwork) {
  signedIn();
  transport->on("POST", u"v1/auth/sign-out"_s).fails(HttpProblem::CannotConnect);
  account().signOut();
  idle();
  EXPECT_FALSE(account().signedIn());
  EXPECT_FALSE(account().info());
  EXPECT_FALSE(settings->contains(u"accountInfo"_s));
  EXPECT_FALSE(backend->entries.contains(u"Sorvan Credits"_s));
  EXPECT_EQ(account().tokenChanges(), 2);
  EXPECT_FALSE(account().message());
}

TEST_F(AccountStoreTest, KeepsTheLastAccountWhenThisDeviceIsRevoked) {
  signedIn();
  transport->on("POST", u"v1/devices/dev%201/revoke"_s).answersJson(QJsonObject{{u"revoked"_s, true}});
  transport->on("GET", u"v1/me"_s).answers(401, R"({"error":"Signed out."})");
  account().revoke(u"dev 1"_s);
  idle();
  EXPECT_TRUE(account().info());
  EXPECT_TRUE(account().signedIn());
  EXPECT_EQ(transport->requests(u"/revoke"_s).size(), 1u);
}

TEST_F(AccountStoreTest, OpensTheSamePageForTheSameClickAndWatchesForThePurchase) {
  signedIn();
  QList<QUrl> pages;
  QObject::connect(&account(), &AccountStore::checkoutReady, [&](const QUrl& page) { pages << page; });
  transport->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}})
      .repeating();
  const QString key = account().purchaseKey();
  transport->on("GET", u"v1/me"_s).answers(500).answersJson(me(0)).answersJson(me(500'000'000));
  account().buyPack(u"p500"_s);
  test::runUntil([&] { return pages.size() == 1; });
  EXPECT_EQ(message().isEmpty() ? QString() : message(), message());
  idle();
  EXPECT_EQ(account().arrived(), u"500 credits added"_s);
  EXPECT_EQ(account().arrivedCredits(), 500'000'000);
  EXPECT_FALSE(account().message());
  EXPECT_FALSE(account().watchesPurchase());
  EXPECT_NE(account().purchaseKey(), key);
  EXPECT_EQ(keyOf(transport->requests(u"v1/checkout"_s).at(0)), (key + u":p500"_s).toUtf8());
}

TEST_F(AccountStoreTest, WaitingIsGivenUpByHandAndWhatIsPaidForLandsAllTheSame) {
  signedIn();
  clock->passSleeps(false);
  transport->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}});
  account().stopWatching();
  EXPECT_FALSE(account().watchesPurchase()) << "there was none";
  account().buyPack(u"p500"_s);
  test::runUntil([&] { return !account().busy(); });
  const QString key = account().purchaseKey();
  account().stopWatching();
  EXPECT_FALSE(account().watchesPurchase());
  EXPECT_FALSE(account().message());
  EXPECT_EQ(account().purchaseKey(), key) << "the purchase is what it was";
  const auto asked = transport->requests(u"v1/me"_s).size();
  clock->advance(std::chrono::seconds(4));
  idle();
  EXPECT_EQ(transport->requests(u"v1/me"_s).size(), asked);
  transport->on("GET", u"v1/me"_s).answersJson(me(500'000'000)).repeating();
  account().refresh();
  idle();
  EXPECT_EQ(account().arrived(), u"500 credits added"_s);
  EXPECT_NE(account().purchaseKey(), key);
}

TEST_F(AccountStoreTest, UsesOneKeyForEachPackUntilThePaymentLands) {
  signedIn();
  clock->passSleeps(false);
  transport->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}})
      .repeating();
  for (int click = 0; click < 2; ++click) {
    account().buyPack(u"p500"_s);
    test::runUntil([&] { return !account().busy(); });
    EXPECT_EQ(message(),
              u"Checkout opened in your browser. Your credits appear here once the payment is confirmed."_s);
    EXPECT_TRUE(account().watchesPurchase());
  }
  account().forgetCheckout();
  account().buyPack(u"p500"_s);
  test::runUntil([&] { return !account().busy(); });
  const auto asked = transport->requests(u"v1/checkout"_s);
  ASSERT_EQ(asked.size(), 3u);
  EXPECT_EQ(keyOf(asked[0]), keyOf(asked[1]));
  EXPECT_NE(keyOf(asked[1]), keyOf(asked[2]));
}

TEST_F(AccountStoreTest, AsksForANewPageWhenTheOldOneHasExpired) {
  signedIn();
  clock->passSleeps(false);
  transport->on("POST", u"v1/checkout"_s)
      .answers(410, R"({"error":"This checkout has expired."})")
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/2"_s}});
  QUrl page;
  QObject::connect(&account(), &AccountStore::checkoutReady, [&](const QUrl& opened) { page = opened; });
  account().buyPack(u"p500"_s);
  test::runUntil([&] { return !account().busy(); });
  EXPECT_EQ(page, QUrl(u"https://checkout.sorvan.app/c/2"_s));
  const auto asked = transport->requests(u"v1/checkout"_s);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_NE(keyOf(asked[0]), keyOf(asked[1]));
}

TEST_F(AccountStoreTest, OpensNoPageOfAnybodyElse) {
  signedIn();
  bool opened = false;
  QObject::connect(&account(), &AccountStore::checkoutReady, [&] { opened = true; });
  for (const auto& address : {u"http://checkout.sorvan.app/c"_s, u"https://evil.example/c"_s, u""_s, u"file:///etc/passwd"_s,
                              u"https://checkout.sorvan.app@evil.example/"_s}) {
    transport->on("POST", u"v1/checkout"_s).answersJson(QJsonObject{{u"checkout_url"_s, address}});
    account().buyPack(u"p500"_s);
    idle();
    EXPECT_EQ(message(), u"Invalid checkout address."_s) << address.toStdString();
  }
  EXPECT_FALSE(opened);
  EXPECT_FALSE(account().watchesPurchase());
}

TEST_F(AccountStoreTest, SubscribesToAPlanTheSameWay) {
  signedIn();
  clock->passSleeps(false);
  transport->on("POST", u"v1/subscribe"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/s/1"_s}});
  account().subscribe(u"studio"_s);
  test::runUntil([&] { return !account().busy(); });
  const auto asked = transport->requests(u"v1/subscribe"_s);
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0].body, R"({"plan_id":"studio"})");
  EXPECT_TRUE(keyOf(asked[0]).endsWith(":studio"));
}

TEST_F(AccountStoreTest, StopsWatchingAfterNinetyRounds) {
  signedIn();
  transport->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}});
  const std::size_t before = transport->requests(u"v1/me"_s).size();
  account().buyPack(u"p500"_s);
  idle();
  EXPECT_EQ(transport->requests(u"v1/me"_s).size() - before, 90u);
  EXPECT_FALSE(account().watchesPurchase());
  EXPECT_FALSE(account().arrived());
}

TEST_F(AccountStoreTest, FollowsManyChangesOfCreditsWithOneReading) {
  signedIn();
  const std::size_t before = transport->requests(u"v1/me"_s).size();
  for (int change = 0; change < 5; ++change) account().creditsChanged();
  idle();
  EXPECT_EQ(transport->requests(u"v1/me"_s).size() - before, 1u);
}

TEST_F(AccountStoreTest, NeedsATokenAndAGoodAddressForAClient) {
  EXPECT_THROW(account().client(AccountStore::Needs::token), SorvanError);
  EXPECT_NO_THROW(account().client(AccountStore::Needs::nothing));
  settings->set(gatewaySetting(), u"http://192.168.0.4"_s);
  EXPECT_THROW(account().client(AccountStore::Needs::nothing), SorvanError);
}

TEST_F(AccountStoreTest, KeepsNoBadGatewayAddress) {
  account().setGateway(u"http://192.168.0.4"_s);
  EXPECT_EQ(message(), u"Use an HTTPS gateway URL, or HTTP on localhost for development."_s);
  EXPECT_FALSE(settings->contains(gatewaySetting()));
  account().setGateway(u" http://localhost:9000 "_s);
  EXPECT_EQ(settings->get<QString>(gatewaySetting()), u"http://localhost:9000"_s);
  EXPECT_FALSE(account().message());
  account().setGateway(QString());
  EXPECT_FALSE(settings->contains(gatewaySetting()));
}

TEST_F(AccountStoreTest, ClearsBusyAfterEveryFailure) {
  transport->on("POST", u"v1/auth/start"_s).fails(HttpProblem::CannotConnect, u"no route"_s);
  account().start(u"ada@example.org"_s);
  idle();
  EXPECT_EQ(message(), u"no route"_s);
  EXPECT_FALSE(account().busy());
  EXPECT_FALSE(account().awaitingLink());
}

TEST(ArrivalTextTest, CountsWholeCredits) {
  EXPECT_EQ(arrivalText(1'000'000), u"1 credit added"_s);
  EXPECT_EQ(arrivalText(1'500'000), u"1 credits added"_s);
  EXPECT_EQ(arrivalText(500'000'000), u"500 credits added"_s);
  EXPECT_FALSE(arrivalText(999'999));
}

}  // namespace
}  // namespace sorvan::account
