#pragma once

#include "account/account_store.h"
#include "account/billing_state.h"
#include "account/provider_settings.h"
#include "shell/account_displays.h"
#include "shell/pay_with_display.h"
#include "shell/room.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace sorvan::shell {

// The card that signs in.
struct SignInDisplay {
  QString introduction;
  QString title;
  QString noPassword;
  QString emailField;
  QString sendLink;
  bool awaitsLink = false;  // a link went out
  QString checkInbox;       // what to do with it; empty before
  QString linkField;
  QString signIn;
};

// What a purchase has come to.
struct PurchaseDisplay {
  QString waiting;  // “Waiting for the payment…”; empty when none is awaited
  QString openAgain;
  QString newCheckout;
  QString newCheckoutHint;
  QString stop;  // “Stop Waiting”
  QString stopHelp;
  QString arrived;  // “500 credits added”; empty when nothing has landed
};

struct AccountPageDisplay {
  QString title;  // “Account”
  bool signedIn = false;
  bool busy = false;  // something is under way: no button begins another
  QString message;
  bool messageIsError = false;
  SignInDisplay signIn;
  // From here on only for somebody who is signed in.
  QString signedInAs;
  QString signOut;
  std::optional<BalanceDisplay> balance;  // none: `unreachable` says so
  QString unreachable;
  QString reviewBefore, supportAddress, reviewAfter;  // all empty while nothing is held for a check
  QString spendLimit;
  PurchaseDisplay purchase;
  std::vector<OfferDisplay> packs;
  QString noPacks;  // in their place
  QString offersNote;
  std::vector<OfferDisplay> plans;
  std::vector<DeviceDisplay> devices;
};

// The address of the service, for those who run one of their own.
struct GatewayDisplay {
  QString title;
  QString field;
  QString address;   // what the user has set; may be empty
  QString standard;  // what is used without
};

struct BadgeDisplay {
  bool shown = false;
  std::int64_t microcredits = 0;
  QString help;
};

// Everything of the account and its credits that a window shows. Main thread.
class AccountPresenter : public QObject {
  Q_OBJECT

 public:
  struct Ports {
    account::AccountStore& account;
    account::BillingState& billing;
    account::ProviderSettings& keys;
    base::Settings& settings;
    std::shared_ptr<const base::Clock> clock;
    // Opens a page in the user's browser, a mail address in their mail program. False: that could not be done.
    std::function<bool(const QUrl&)> openPage;
  };
  // What the ports refer to outlives the presenter.
  explicit AccountPresenter(Ports ports, QObject* parent = nullptr);

  AccountPageDisplay page() const;
  GatewayDisplay gateway() const;
  BadgeDisplay badge() const;
  PayChoicesDisplay payChoices() const;
  // “1,240”: a balance on its way from one number to another shows whole credits.
  static QString balanceText(double microcredits);
  // “1,240 credits”
  static QString creditsText(double microcredits);

  void sendLink(const QString& email);
  // A link that was pasted.
  void signIn(const QString& link);
  // A link of the program's own scheme that the desktop handed over. Shows the page of the account, which tells what
  // becomes of it. One that comes while something is under way waits for its turn.
  void openLink(const QString& link);
  void signOut();
  void signOutDevice(const QString& device);
  void buy(OfferKind kind, const QString& offer);
  // The page of the purchase that is awaited, once more.
  void openCheckoutAgain();
  // Another page for the same purchase, for one that has expired.
  void startNewCheckout();
  // Ends the waiting for a payment, never the payment.
  void stopWaiting();
  void forgetArrival();
  void writeToSupport();
  void openKeyPage();
  void setGateway(const QString& address);
  void payWithOwnKey(bool ownKey);
  // Reads the account again: the page is opened, or the window comes to the front.
  void refresh();
  // Asks for the page of the account.
  void showAccount() { Q_EMIT accountRequested(); }

 Q_SIGNALS:
  void changed();
  void accountRequested();

 private:
  struct Purchase {
    OfferKind kind;
    QString offer;
  };

  void beginAction();
  void takeWaitingLink();
  void openCheckout(const QUrl& page);
  void open(const QUrl& page);
  bool planHasBegun() const;
  SignInDisplay signInCard() const;
  PurchaseDisplay purchase() const;
  void fillCredits(AccountPageDisplay& page) const;
  void fillOffers(AccountPageDisplay& page) const;

  Ports on;
  QString problem_;  // of this machine, not of the service
  std::optional<QString> linkUnderWay_;
  std::optional<QString> waitingLink_;
  std::optional<Purchase> purchase_;
  QUrl checkout_;
};

}  // namespace sorvan::shell
