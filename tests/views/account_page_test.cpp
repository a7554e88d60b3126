#include "shell/views/account_page.h"

#include <QJsonArray>
#include <QLabel>
#include <QRadioButton>

#include "shell/views/balance_badge.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/settings_dialog.h"
#include "shell/views/usage_page.h"
#include "views/access_walk.h"
#include "views/text_contrast.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {

using namespace Qt::Literals::StringLiterals;

class AccountPageTest : public WholeWindow {
 protected:
  static QJsonObject me(qint64 purchased) {
    const QJsonObject here{{u"id"_s, u"d1"_s}, {u"name"_s, u"studio-box"_s}, {u"created"_s, 0}, {u"last_seen"_s, 0},
                           {u"current"_s, true}};
    const QJsonObject other{{u"id"_s, u"d2"_s}, {u"name"_s, u"laptop"_s}, {u"created"_s, 0}, {u"last_seen"_s, 0},
                            {u"current"_s, false}};
    return {{u"email"_s, u"ada@example.org"_s},
            {u"plan"_s, u"free"_s},
            {u"plan_status"_s, u"active"_s},
            {u"renews"_s, false},
            {u"features"_s, QJsonArray{u"byok"_s}},
            {u"credits"_s, QJsonObject{{u"included"_s, 0},
                                       {u"purchased"_s, purchased * 1'000'000},
                                       {u"reserved"_s, 0},
                                       {u"available"_s, purchased * 1'000'000}}},
            {u"plans"_s, QJsonArray()},
            {u"devices"_s, QJsonArray{here, other}}};
  }
  void answerAccount(qint64 purchased) {
    gateway->on("GET", u"v1/me"_s).answersJson(me(purchased)).repeating();
    gateway->on("GET", u"v1/credit-packs"_s)
        .answersJson(QJsonObject{{u"packs"_s, QJsonArray{QJsonObject{{u"id"_s, u"p500"_s},
                                                                     {u"title"_s, u"500 credits"_s},
                                                                     {u"microcredits"_s, 500'000'000},
                                                                     {u"price_minor"_s, 500},
                                                                     {u"currency"_s, u"USD"_s}}}},
                                 {u"test_mode"_s, true}})
        .repeating();
  }
  void signIn(qint64 purchased = 1240) {
    gateway->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
    answerAccount(purchased);
    account.openLink(u"sorvan://auth?code=1"_s);
    test::runTask(accountStore.whenIdle());
  }
  SettingsDialog& settingsWindow() { return *shown<SettingsDialog>(); }
  template <class Kind>
  Kind* visible(const QString& name) {
    for (Kind* child : settingsWindow().findChildren<Kind*>())
      if (child->isVisible() && (child->accessibleName() == name || child->property("text").toString() == name)) return child;
    return nullptr;
  }
  bool says(const QString& text) {
    for (const QWidget* child : settingsWindow().findChildren<QWidget*>())
      if (child->isVisible() && child->accessibleName() == text) return true;
    return visible<QLabel>(text);
  }
  void press(const QString& name) {
    auto* button = visible<QAbstractButton>(name);
    ASSERT_NE(button, nullptr) << name.toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
  }
};

TEST_F(AccountPageTest, TheAccountButtonOpensTheAccountInTheSettings) {
  QTest::mouseClick(named<QAbstractButton>(*window, u"Account"_s), Qt::LeftButton);
  EXPECT_TRUE(says(u"Sign in to Sorvan"_s));
  EXPECT_FALSE(visible<Button>(u"Email Me a Sign-In Link"_s)->isEnabled());
  EXPECT_EQ(visible<Button>(u"Sign Out"_s), nullptr);
}

TEST_F(AccountPageTest, AnAddressIsAskedForALinkAndTheLinkIsPasted) {
  gateway->on("POST", u"v1/auth/start"_s).answersJson(QJsonObject{{u"sent"_s, true}});
  gateway->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  answerAccount(1240);
  account.showAccount();
  QTest::keyClicks(visible<TextField>(u"Email address"_s), u"ada@example.org"_s);
  press(u"Email Me a Sign-In Link"_s);
  test::runTask(accountStore.whenIdle());
  EXPECT_TRUE(says(u"Check ada@example.org and open the link on this Mac."_s));
  auto* link = visible<TextField>(u"Paste the sign-in link"_s);
  QTest::keyClicks(link, u"sorvan://auth?code=1"_s);
  QTest::keyClick(link, Qt::Key_Return);
  EXPECT_EQ(link->text(), u"sorvan://auth?code=1"_s);
  test::runTask(accountStore.whenIdle());
  EXPECT_TRUE(link->text().isEmpty());
  EXPECT_TRUE(says(u"Signed in as ada@example.org"_s));
  EXPECT_NE(visible<Button>(u"Sign Out"_s), nullptr);
  EXPECT_EQ(visible<TextField>(u"Email address"_s), nullptr);
}

TEST_F(AccountPageTest, TheSettingsHoldUsageAndUpdatesToo) {
  account.showAccount();
  press(u"Usage and Updates"_s);
  EXPECT_NE(settingsWindow().findChild<UsagePage*>(), nullptr);
  EXPECT_TRUE(settingsWindow().findChild<UsagePage*>()->isVisible());
}

TEST_F(AccountPageTest, AForeignLinkIsToldPlainly) {
  account.openLink(u"sorvan://elsewhere"_s);
  EXPECT_TRUE(says(u"This is not a Sorvan sign-in link."_s));
}

TEST_F(AccountPageTest, TheBalanceStandsInTheMenuStripAndOpensTheAccount) {
  auto* badge = window->findChild<BalanceBadge*>();
  ASSERT_NE(badge, nullptr);
  EXPECT_TRUE(badge->isHidden());
  signIn();
  settingsWindow().close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(badge->isVisible());
  EXPECT_EQ(badge->text(), u"1,240 credits"_s);
  EXPECT_EQ(badge->accessibleName(),
            u"Your Sorvan Credits balance: 1,240 credits. Click for account and credit settings."_s);
  QTest::mouseClick(badge, Qt::LeftButton);
  EXPECT_TRUE(says(u"From top-ups, 1,240"_s));
}

TEST_F(AccountPageTest, TheBalanceIsReadAgainWhenTheWindowComesToTheFront) {
  signIn();
  answerAccount(900);
  Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
  test::runTask(accountStore.whenIdle());
  EXPECT_EQ(window->findChild<BalanceBadge*>()->text(), u"900 credits"_s);
}

TEST_F(AccountPageTest, ABuyButtonOpensThePageToPayOn) {
  signIn();
  gateway->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}});
  press(u"Buy 500 credits for $5"_s);
  test::runUntil([this] { return !accountStore.busy(); });
  EXPECT_EQ(openedPages, std::vector<QUrl>{QUrl(u"https://checkout.sorvan.app/c/1"_s)});
  EXPECT_TRUE(says(u"Waiting for the payment…"_s));
  EXPECT_NE(visible<Button>(u"Open Checkout Again"_s), nullptr);
  EXPECT_NE(visible<Button>(u"Start a New Checkout"_s), nullptr);
}

TEST_F(AccountPageTest, StopWaitingTakesTheWaitingAway) {
  signIn();
  gateway->on("POST", u"v1/checkout"_s)
      .answersJson(QJsonObject{{u"checkout_url"_s, u"https://checkout.sorvan.app/c/1"_s}});
  press(u"Buy 500 credits for $5"_s);
  test::runUntil([this] { return !accountStore.busy(); });
  QApplication::setActiveWindow(&settingsWindow());
  test::runPosted();
  EXPECT_EQ(test::keyboardFaults(settingsWindow()).join(u'\n').toStdString(), "");
  press(u"Stop Waiting"_s);
  EXPECT_FALSE(says(u"Waiting for the payment…"_s));
  EXPECT_EQ(visible<Button>(u"Stop Waiting"_s), nullptr);
  EXPECT_NE(visible<Button>(u"Buy 500 credits for $5"_s), nullptr);
}

TEST_F(AccountPageTest, EveryControlHasANameAndIsReachedByKeysAndEveryTextIsReadable) {
  for (const bool isSignedIn : {false, true}) {
    if (isSignedIn) signIn();
    account.showAccount();
    for (const SettingsPage page : {SettingsPage::account, SettingsPage::key}) {
      settingsWindow().showPage(page);
      QApplication::setActiveWindow(&settingsWindow());
      test::runPosted();
      EXPECT_EQ(test::namelessElements(settingsWindow()).join(u'\n').toStdString(), "");
      for (const Appearance look : {Appearance::light, Appearance::dark}) {
        Theme::instance().setAppearance(look);
        QCoreApplication::processEvents();
        EXPECT_EQ(test::faintTexts(settingsWindow()).toStdString(), "");
      }
      EXPECT_EQ(test::keyboardFaults(settingsWindow()).join(u'\n').toStdString(), "");
    }
  }
}

TEST_F(AccountPageTest, AnotherDeviceIsSignedOutAndThisOneHasNoButtonForIt) {
  signIn();
  gateway->on("POST", u"v1/devices/d2/revoke"_s).answersJson(QJsonObject{{u"revoked"_s, true}});
  EXPECT_EQ(visible<Button>(u"Sign Out studio-box"_s), nullptr);
  press(u"Sign Out laptop"_s);
  test::runTask(accountStore.whenIdle());
  EXPECT_EQ(gateway->requests(u"v1/devices/d2/revoke"_s).size(), 1u);
}

TEST_F(AccountPageTest, SigningOutLeavesNothingOfTheAccount) {
  signIn();
  gateway->on("POST", u"v1/auth/sign-out"_s).answersJson(QJsonObject{{u"signed_out"_s, true}});
  press(u"Sign Out"_s);
  test::runTask(accountStore.whenIdle());
  EXPECT_TRUE(says(u"Sign in to Sorvan"_s));
  EXPECT_TRUE(window->findChild<BalanceBadge*>()->isHidden());
}

TEST_F(AccountPageTest, WhoPaysIsChosenOnThePageOfTheKey) {
  signIn();
  settingsWindow().showPage(SettingsPage::key);
  auto* credits = visible<QRadioButton>(u"Sorvan Credits"_s);
  ASSERT_NE(credits, nullptr);
  EXPECT_FALSE(credits->isChecked());
  QTest::mouseClick(credits, Qt::LeftButton, {}, QPoint(8, credits->height() / 2));
  EXPECT_TRUE(billing.creditsChosen());
}

TEST_F(AccountPageTest, ASavedKeyThatDoesNotCountSaysWhy) {
  providerSettings.save(u"abc"_s);
  test::runTask(providerSettings.whenIdle());
  account.showAccount();
  settingsWindow().showPage(SettingsPage::key);
  EXPECT_TRUE(says(
      u"Your fal.ai key is saved, but it pays only while you are signed in. Sign in under Settings → Account to use it."_s));
  EXPECT_EQ(visible<QRadioButton>(u"Sorvan Credits"_s), nullptr);
}

}  // namespace
}  // namespace sorvan::views
