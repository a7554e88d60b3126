#include "shell/account_presenter.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QSignalSpy>

#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::shell {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::runTask;

constexpr qint64 kCredit = 1'000'000;

class AccountPresenterTest : public testing::Test {
 protected:
  ~AccountPresenterTest() override { runTask(store.drain()); }

  double unixNow() const { return static_cast<double>(clock->now().toDateTime().toSecsSinceEpoch()); }

  QJsonObject me(qint64 purchased = 440) const {
    const QJsonObject credits{{u"included"_s, 800 * kCredit},
                              {u"purchased"_s, purchased * kCredit},
                              {u"reserved"_s, 36 * kCredit},
                              {u"available"_s, (800 + purchased) * kCredit}};
    const QJsonObject here{{u"id"_s, u"d1"_s}, {u"name"_s, u"workstation"_s}, {u"created"_s, 0},
                           {u"last_seen"_s, unixNow()}, {u"current"_s, true}};
    const QJsonObject laptop{{u"id"_s, u"d2"_s}, {u"name"_s, u"studio-laptop"_s}, {u"created"_s, 0},
                             {u"last_seen"_s, unixNow() - 50 * 3600}, {u"current"_s, false}};
    return {{u"email"_s, u"mira@northlight.studio"_s},
            {u"plan"_s, u"studio"_s},
            {u"plan_status"_s, u"active"_s},
            {u"renews"_s, true},
            {u"features"_s, features},
            {u"credits"_s, credits},
            {u"plans"_s, QJsonArray()},
            {u"devices"_s, QJsonArray{laptop, here}}};
  }
  void answerPacks() {
    const QJsonObject pack{{u"id"_s, u"p500"_s},
                           {u"title"_s, u"500 credits"_s},
                           {u"microcredits"_s, 500 * kCredit},
                           {u"price_minor"_s, 500},
                           {u"currency"_s, u"USD"_s}};
    transport->on("GET", u"v1/credit-packs"_s)
        .answersJson(QJsonObject{{u"packs"_s, QJsonArray{pack}}, {u"test_mode"_s, true}})
        .repeating();
  }
  void signIn(const QJsonObject& account) {
    backend->entries[u"Sorvan Credits"_s] = u"token-1"_s;
    transport->on("GET", u"v1/me"_s).answersJson(account).repeating();
    answerPacks();
    presenter.refresh();
    idle();
  }
  void idle() { runTask(store.whenIdle()); }
  void buyPack() {
    transport->on("POST", u"v1/checkout"_s)
        .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}})
        .repeating();
    presenter.buy(OfferKind::pack, u"p500"_s);
    test::runUntil([this] { return !store.busy(); });
  }
  QByteArray keyOf(const HttpRequest& request) const {
    for (const auto& [name, value] : request.headers)
      if (name == "Idempotency-Key") return value;
    return {};
  }

  QJsonArray features{u"byok"_s};
  bool browserWorks = true;
  std::vector<QUrl> opened;
  std::shared_ptr<test::ScriptedTransport> transport = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<base::Settings> settings = std::make_shared<base::Settings>();
  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeyCache> keys = std::make_shared<KeyCache>(std::make_shared<KeychainStore>(backend));
  account::AccountStore store{{transport, clock, settings, keys, u"workstation"_s}};
  account::BillingState billing{{settings, clock, {}, {}}};
  account::ProviderSettings provider{keys};
  AccountPresenter presenter{{store, billing, provider, *settings, clock, [this](const QUrl& page) {
                                opened.push_back(page);
                                return browserWorks;
                              }}};
};

TEST_F(AccountPresenterTest, OffersToSignInAndSaysWhatAnAccountIsFor) {
  const AccountPageDisplay page = presenter.page();
  EXPECT_FALSE(page.signedIn);
  EXPECT_EQ(page.signIn.introduction,
            u"An account gives you Sorvan Credits to generate with. Your library works without one, and your media never "
            "leaves this Mac."_s);
  EXPECT_EQ(page.signIn.title, u"Sign in to Sorvan"_s);
  EXPECT_EQ(page.signIn.noPassword, u"No password: we email you a link."_s);
  EXPECT_EQ(page.signIn.sendLink, u"Email Me a Sign-In Link"_s);
  EXPECT_EQ(page.signIn.linkField, u"Paste the sign-in link"_s);
  EXPECT_TRUE(page.signIn.checkInbox.isEmpty());
  EXPECT_FALSE(presenter.badge().shown);
}

TEST_F(AccountPresenterTest, TellsWhereALinkWentAndWhatToDoWithIt) {
  transport->on("POST", u"v1/auth/start"_s).answersJson(QJsonObject{{u"sent"_s, true}});
  presenter.sendLink(u"   "_s);
  EXPECT_FALSE(presenter.page().busy);
  presenter.sendLink(u"mira@northlight.studio"_s);
  EXPECT_TRUE(presenter.page().busy);
  idle();
  const AccountPageDisplay page = presenter.page();
  EXPECT_EQ(page.message, u"Check mira@northlight.studio and open the link on this Mac."_s);
  EXPECT_FALSE(page.messageIsError);
  EXPECT_TRUE(page.signIn.awaitsLink);
  EXPECT_TRUE(page.signIn.checkInbox.startsWith(u"Check your inbox."_s));
}

TEST_F(AccountPresenterTest, SignsInWithALinkThatTheDesktopHandsOver) {
  QSignalSpy asked(&presenter, &AccountPresenter::accountRequested);
  transport->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  transport->on("GET", u"v1/me"_s).answersJson(me()).repeating();
  answerPacks();
  presenter.openLink(u"sorvan://auth?code=abc"_s);
  EXPECT_EQ(asked.count(), 1);
  idle();
  const AccountPageDisplay page = presenter.page();
  EXPECT_TRUE(page.signedIn);
  EXPECT_EQ(page.signedInAs, u"Signed in as mira@northlight.studio"_s);
  EXPECT_EQ(page.message, QString());  // it stands under the title
}

TEST_F(AccountPresenterTest, ALinkThatIsOpenedTwiceIsSentOnce) {
  base::Completion gate;
  transport->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}}).after(gate);
  transport->on("GET", u"v1/me"_s).answersJson(me()).repeating();
  answerPacks();
  presenter.openLink(u"sorvan://auth?code=abc"_s);
  presenter.openLink(u"sorvan://auth?code=abc"_s);
  test::runPosted();
  gate.finish();
  idle();
  EXPECT_EQ(transport->posts(u"v1/auth/exchange"_s), 1);
  EXPECT_FALSE(presenter.page().messageIsError);
}

TEST_F(AccountPresenterTest, ALinkThatComesWhileSomethingIsUnderWayWaitsForItsTurn) {
  base::Completion gate;
  transport->on("POST", u"v1/auth/start"_s).answersJson(QJsonObject{{u"sent"_s, true}}).after(gate);
  transport->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  transport->on("GET", u"v1/me"_s).answersJson(me()).repeating();
  answerPacks();
  presenter.sendLink(u"mira@northlight.studio"_s);
  presenter.openLink(u"sorvan://auth?code=abc"_s);
  EXPECT_EQ(transport->posts(u"v1/auth/exchange"_s), 0);
  gate.finish();
  idle();
  EXPECT_TRUE(store.signedIn());
}

TEST_F(AccountPresenterTest, TellsPlainlyWhatIsWrongWithALink) {
  transport->on("POST", u"v1/auth/exchange"_s).answers(410, R"({"error":"This link has expired."})");
  presenter.signIn(u"https://example.org/?code=1"_s);
  idle();
  EXPECT_EQ(presenter.page().message, u"This is not a Sorvan sign-in link."_s);
  presenter.openLink(u"sorvan://elsewhere?code=1"_s);
  EXPECT_EQ(presenter.page().message, u"This is not a Sorvan sign-in link."_s);
  EXPECT_TRUE(presenter.page().messageIsError);
  EXPECT_TRUE(transport->recorded.empty());
  presenter.signIn(u"sorvan://auth?code=1"_s);
  idle();
  EXPECT_EQ(presenter.page().message, u"This link has expired."_s);
  EXPECT_FALSE(presenter.page().signedIn);
}

TEST_F(AccountPresenterTest, ShowsTheBalanceInItsParts) {
  signIn(me());
  const AccountPageDisplay page = presenter.page();
  ASSERT_TRUE(page.balance);
  EXPECT_EQ(page.balance->microcredits, 1240 * kCredit);
  EXPECT_EQ(AccountPresenter::balanceText(1240.0 * kCredit), u"1,240"_s);
  const std::vector<BalanceRow> rows{{u"From your plan"_s, u"800"_s, 800 * kCredit, false},
                                     {u"From top-ups"_s, u"440"_s, 440 * kCredit, false},
                                     {u"Held for jobs in progress"_s, u"36"_s, 36 * kCredit, true}};
  EXPECT_EQ(page.balance->rows, rows);
  EXPECT_EQ(page.balance->foot, u"Plan credits are used first and reset each period; top-ups do not expire."_s);
  EXPECT_TRUE(presenter.badge().shown);
  EXPECT_EQ(presenter.badge().help, u"Your Sorvan Credits balance: 1,240 credits. Click for account and credit settings."_s);
}

TEST_F(AccountPresenterTest, TellsWhatIsHeldForACheckAndWhomToWriteTo) {
  QJsonObject account = me();
  QJsonObject credits = account[u"credits"_s].toObject();
  credits[u"review"_s] = 4 * kCredit;
  account[u"credits"_s] = credits;
  signIn(account);
  const AccountPageDisplay page = presenter.page();
  EXPECT_EQ(page.balance->rows.back().name, u"Held while a request is checked"_s);
  EXPECT_TRUE(page.reviewBefore.endsWith(u"Write to "_s));
  EXPECT_EQ(page.reviewAfter, u" if this stays."_s);
  presenter.writeToSupport();
  EXPECT_EQ(opened.at(0).scheme(), u"mailto"_s);
}

TEST_F(AccountPresenterTest, TellsOfASpendLimitWhileItLasts) {
  QJsonObject account = me();
  account[u"spend_limit"_s] =
      QJsonObject{{u"microcredits"_s, 1000 * kCredit}, {u"spent"_s, 212 * kCredit}, {u"until"_s, unixNow() + 9.5 * 3600}};
  signIn(account);
  EXPECT_EQ(presenter.page().spendLimit,
            u"Fraud prevention: a new account can spend up to 1,000 credits in the 24 hours after its first purchase "
            "(212 used). Your credits are safe; the limit lifts in 9 hours."_s);
  clock->advance(std::chrono::hours(10));
  EXPECT_EQ(presenter.page().spendLimit, QString());
}

TEST_F(AccountPresenterTest, SaysThatCreditsWillAppearWhereTheServiceCannotBeReached) {
  backend->entries[u"Sorvan Credits"_s] = u"token-1"_s;
  transport->on("GET", u"v1/me"_s).fails(platform::HttpProblem::CannotConnect).repeating();
  presenter.refresh();
  idle();
  EXPECT_FALSE(presenter.page().balance);
  EXPECT_EQ(presenter.page().unreachable,
            u"Your credits will appear once the Sorvan service can be reached."_s);
  EXPECT_EQ(presenter.page().noPacks, u"Credit purchases are not available yet."_s);
}

TEST_F(AccountPresenterTest, OpensThePageToPayOnInTheBrowserAndWaits) {
  signIn(me());
  AccountPageDisplay page = presenter.page();
  ASSERT_EQ(page.packs.size(), 1u);
  EXPECT_EQ(page.packs[0].price, u"$5"_s);
  EXPECT_EQ(page.packs[0].buttonName, u"Buy 500 credits for $5"_s);
  EXPECT_TRUE(page.offersNote.startsWith(u"Test mode: no real payment. Prices are before tax."_s));
  buyPack();
  EXPECT_EQ(opened, std::vector<QUrl>{QUrl(u"https://checkout.sorvan.app/c/1"_s)});
  page = presenter.page();
  EXPECT_EQ(page.message,
            u"Checkout opened in your browser. Your credits appear here once the payment is confirmed."_s);
  EXPECT_FALSE(page.purchase.waiting.isEmpty());
  presenter.openCheckoutAgain();
  EXPECT_EQ(opened.size(), 2u);
  EXPECT_EQ(transport->posts(u"v1/checkout"_s), 1);
}

TEST_F(AccountPresenterTest, WaitingEndsByHandAndTheSameClickOpensTheSamePage) {
  signIn(me());
  buyPack();
  EXPECT_EQ(presenter.page().purchase.stop, u"Stop Waiting"_s);
  presenter.stopWaiting();
  EXPECT_TRUE(presenter.page().purchase.waiting.isEmpty());
  EXPECT_TRUE(presenter.page().purchase.stop.isEmpty());
  EXPECT_TRUE(presenter.page().message.isEmpty());
  buyPack();
  EXPECT_FALSE(presenter.page().purchase.waiting.isEmpty());
  const auto asked = transport->requests(u"v1/checkout"_s);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(keyOf(asked[0]), keyOf(asked[1])) << "it is one purchase";
}

TEST_F(AccountPresenterTest, APlanIsWaitedForUntilTheAccountHasIt) {
  QJsonObject account = me();
  account[u"plan"_s] = u"free"_s;
  const QJsonObject studio{{u"id"_s, u"plan-1"_s},           {u"plan"_s, u"studio"_s}, {u"title"_s, u"Studio"_s},
                           {u"currency"_s, u"USD"_s},        {u"microcredits"_s, 1000 * kCredit},
                           {u"price_minor"_s, 900}};
  account[u"plans"_s] = QJsonArray{studio};
  signIn(account);
  ASSERT_EQ(presenter.page().plans.size(), 1u);
  EXPECT_EQ(presenter.page().plans[0].buttonName, u"Subscribe to Studio for $9"_s);
  transport->on("POST", u"v1/subscribe"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/2"_s}});
  presenter.buy(OfferKind::plan, u"plan-1"_s);
  test::runUntil([this] { return !store.busy(); });
  EXPECT_FALSE(presenter.page().purchase.waiting.isEmpty());
  account[u"plan"_s] = u"studio"_s;
  transport->on("GET", u"v1/me"_s).answersJson(account).repeating();
  clock->advance(std::chrono::seconds(4));
  test::runUntil([this] { return presenter.page().purchase.waiting.isEmpty(); });
  EXPECT_TRUE(presenter.page().message.isEmpty());
  EXPECT_TRUE(presenter.page().plans[0].button.isEmpty());
  EXPECT_TRUE(presenter.page().plans[0].note.startsWith(u"Your plan"_s));
}

TEST_F(AccountPresenterTest, AnExpiredPageIsOpenedAgainUnderANewKey) {
  signIn(me());
  buyPack();
  presenter.startNewCheckout();
  test::runUntil([this] { return !store.busy(); });
  const auto asked = transport->requests(u"v1/checkout"_s);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0].body, asked[1].body);
  EXPECT_NE(keyOf(asked[0]), keyOf(asked[1]));
  EXPECT_EQ(opened.size(), 2u);
}

TEST_F(AccountPresenterTest, APageOnAnotherHostIsNotOpened) {
  signIn(me());
  transport->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app.evil.example/c/1"_s}});
  presenter.buy(OfferKind::pack, u"p500"_s);
  idle();
  EXPECT_TRUE(opened.empty());
  EXPECT_EQ(presenter.page().message, u"Invalid checkout address."_s);
  EXPECT_TRUE(presenter.page().messageIsError);
  EXPECT_TRUE(presenter.page().purchase.waiting.isEmpty());
}

TEST_F(AccountPresenterTest, ShowsTheAddressWhereNoBrowserCanBeOpened) {
  signIn(me());
  browserWorks = false;
  buyPack();
  EXPECT_TRUE(presenter.page().messageIsError);
  EXPECT_TRUE(presenter.page().message.contains(u"https://checkout.sorvan.app/c/1"_s));
  browserWorks = true;
  presenter.openCheckoutAgain();
  EXPECT_FALSE(presenter.page().messageIsError);
}

TEST_F(AccountPresenterTest, TellsOfAPurchaseThatHasLanded) {
  signIn(me());
  buyPack();
  transport->on("GET", u"v1/me"_s).answersJson(me(940)).repeating();
  clock->advance(std::chrono::seconds(4));
  idle();
  const AccountPageDisplay page = presenter.page();
  EXPECT_EQ(page.purchase.arrived, u"500 credits added"_s);
  EXPECT_TRUE(page.purchase.waiting.isEmpty());
  EXPECT_EQ(page.balance->microcredits, 1740 * kCredit);
  presenter.forgetArrival();
  EXPECT_TRUE(presenter.page().purchase.arrived.isEmpty());
}

TEST_F(AccountPresenterTest, ListsTheDevicesAndSignsAnotherOneOut) {
  signIn(me());
  const std::vector<DeviceDisplay> devices = presenter.page().devices;
  ASSERT_EQ(devices.size(), 2u);
  EXPECT_EQ(devices[0].name, u"workstation (this Mac)"_s);
  EXPECT_EQ(devices[0].lastSeen, u"active now"_s);
  EXPECT_TRUE(devices[0].buttonName.isEmpty());
  EXPECT_EQ(devices[1].name, u"studio-laptop"_s);
  EXPECT_EQ(devices[1].lastSeen, u"2 days ago"_s);
  EXPECT_EQ(devices[1].buttonName, u"Sign Out studio-laptop"_s);
  transport->on("POST", u"v1/devices/d2/revoke"_s).answersJson(QJsonObject{{u"revoked"_s, true}});
  presenter.signOutDevice(devices[1].id);
  idle();
  EXPECT_EQ(transport->requests(u"v1/devices/d2/revoke"_s).size(), 1u);
}

TEST_F(AccountPresenterTest, SignsOutWithoutANetworkToo) {
  signIn(me());
  transport->on("POST", u"v1/auth/sign-out"_s).fails(platform::HttpProblem::CannotConnect);
  presenter.signOut();
  idle();
  EXPECT_FALSE(presenter.page().signedIn);
  EXPECT_FALSE(presenter.badge().shown);
  EXPECT_FALSE(backend->entries.contains(u"Sorvan Credits"_s));
}

TEST_F(AccountPresenterTest, OffersTheChoiceOfWhoPaysOnlyWhereTheAccountAllowsIt) {
  EXPECT_FALSE(presenter.payChoices().offered);
  signIn(me());
  const PayChoicesDisplay choices = presenter.payChoices();
  EXPECT_TRUE(choices.offered);
  EXPECT_TRUE(choices.ownKeyPays);
  EXPECT_EQ(choices.creditsBalance, u"1,240 credits"_s);
  presenter.payWithOwnKey(false);
  EXPECT_FALSE(presenter.payChoices().ownKeyPays);
  EXPECT_EQ(settings->get(u"payWith"_s, QString()), u"credits"_s);
}

TEST_F(AccountPresenterTest, SaysWhyASavedKeyDoesNotCount) {
  EXPECT_EQ(presenter.payChoices().keyProblem, QString());
  provider.save(u"abc"_s);
  runTask(provider.whenIdle());
  EXPECT_TRUE(presenter.payChoices().keyProblem.contains(u"Sign in under Settings → Account"_s));
  features = {};
  signIn(me());
  EXPECT_TRUE(presenter.payChoices().keyProblem.contains(u"Sorvan Credits only"_s));
  features = {u"byok"_s};
  transport->on("GET", u"v1/me"_s).answersJson(me()).repeating();
  presenter.refresh();
  idle();
  EXPECT_EQ(presenter.payChoices().keyProblem, QString());
}

TEST_F(AccountPresenterTest, RefusesABadServiceAddressAndKeepsTheOldOne) {
  presenter.setGateway(u"http://192.168.0.9"_s);
  EXPECT_EQ(presenter.page().message, u"Use an HTTPS gateway URL, or HTTP on localhost for development."_s);
  EXPECT_EQ(presenter.gateway().address, QString());
  presenter.setGateway(u"http://localhost:8000"_s);
  EXPECT_EQ(presenter.gateway().address, u"http://localhost:8000"_s);
  idle();
}

TEST(AccountDisplays, WritePricesAsTheirCurrencyDoes) {
  EXPECT_EQ(priceText(500, u"USD"_s), u"$5"_s);
  EXPECT_EQ(priceText(450, u"usd"_s), u"$4.50"_s);
  EXPECT_EQ(priceText(2000, u"EUR"_s), u"€20"_s);
  EXPECT_EQ(priceText(500, u"JPY"_s), u"¥500"_s);
  EXPECT_EQ(priceText(450, u"CHF"_s), u"4.50 CHF"_s);
  EXPECT_EQ(priceText(0, QString()), u"0.00"_s);
}

TEST(AccountDisplays, TellTimesFromNowOn) {
  const Instant now{1000000};
  EXPECT_EQ(relativeText(now + 30, now), u"in a moment"_s);
  EXPECT_EQ(relativeText(now, now), u"just now"_s);
  EXPECT_EQ(relativeText(now + 60, now), u"in 1 minute"_s);
  EXPECT_EQ(relativeText(now + 3600 * 9 + 100, now), u"in 9 hours"_s);
  EXPECT_EQ(relativeText(now - 86400 * 2, now), u"2 days ago"_s);
}

}  // namespace
}  // namespace sorvan::shell
