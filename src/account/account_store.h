// Who is signed in at the gateway, and what that account holds. Nothing in the library depends on it.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QObject>
#include <QString>
#include <QUrl>

#include "account/account_info.h"
#include "account/key_storage.h"
#include "base/clock.h"
#include "base/settings.h"
#include "base/task_scope.h"
#include "catalogue/credits_client.h"

namespace sorvan::account {

/// Thread: the main one. Its tasks refer to it: await `drain` before it is destroyed.
///
/// On disk: the last known account under the settings key "accountInfo", the token in the key store and nowhere else.
/// What fails is told in `message`; nothing is thrown but where a function says so.
class AccountStore : public QObject {
  Q_OBJECT

 public:
  struct Services {
    std::shared_ptr<HttpTransport> transport = {};
    std::shared_ptr<const Clock> clock = {};
    std::shared_ptr<Settings> settings = {};
    std::shared_ptr<KeyCache> keys = {};
    QString deviceName = {};  ///< empty for the computer's own
  };
  explicit AccountStore(Services with, QObject* parent = nullptr);
  ~AccountStore() override;

  // ---- What is known
  const std::optional<AccountInfo>& info() const { return account; }
  const std::vector<CreditPack>& packs() const { return offered; }
  bool packsTestMode() const { return testMode; }
  /// The text of a purchase that has landed, and its microcredits.
  const std::optional<QString>& arrived() const { return arrival; }
  std::int64_t arrivedCredits() const { return arrivedAmount; }
  bool busy() const { return acting; }
  const std::optional<QString>& message() const { return line; }
  bool messageIsError() const { return lineIsError; }
  /// The address that a link went to.
  const std::optional<QString>& awaitingLink() const { return linkAddress; }
  /// Whether there is a token; false while the key store has not answered.
  bool signedIn() const { return token.has_value(); }
  /// It serves until the program ends also where the key store refused it.
  const std::optional<QString>& presentToken() const { return token; }
  /// Counts sign-ins and sign-outs.
  int tokenChanges() const { return changesOfToken; }
  bool watchesPurchase() const { return watching; }
  /// Part of the idempotency key of a checkout; renewed when a purchase has landed. Memory only.
  const QString& purchaseKey() const { return keyOfPurchase; }

  /// A client of the present gateway. Throws SorvanError for a bad gateway address and, where a token is needed, when
  /// nobody is signed in.
  enum class Needs { token, nothing };
  CreditsClient client(Needs what) const;
  /// The name of the account that is signed in, lower case; nothing while it is not known.
  std::optional<QString> accountName() const;

  // ---- What the user does. Each begins at once and is ignored while another is under way.
  void start(const QString& email);
  /// Finishes signing in from a link that was opened or pasted.
  void complete(const QString& link);
  void signOut();
  void revoke(const QString& device);
  /// Asks for the page to pay on; `checkoutReady` brings it. The same click again brings the same page.
  void buyPack(const QString& pack);
  void subscribe(const QString& plan);
  /// Lets the next purchase open a page of its own: for one that has expired.
  void forgetCheckout();
  /// Ends the watch of a purchase and nothing else: the purchase goes on under its key, and one that is paid for lands
  /// when the account is read the next time.
  void stopWatching();
  void forgetArrival();
  /// An empty text goes back to the compiled-in gateway; a bad one is told and not kept.
  void setGateway(const QString& text);

  /// Reads the account again. One that is asked for while another runs follows it.
  void refresh();
  /// A hold was made or ended somewhere: reads the account again once no action is under way.
  void creditsChanged();

  /// Resumes when nothing is under way; a watch of a purchase counts.
  Task<> whenIdle() { return tasks.whenIdle(); }
  Task<> drain() { return tasks.drain(); }

 Q_SIGNALS:
  void changed();
  /// A page at the payment provider that is to be opened in the browser.
  void checkoutReady(const QUrl& page);
  /// A purchase has landed.
  void purchaseLanded();

 private:
  using Action = Task<> (AccountStore::*)(QString argument, std::stop_token stop);
  struct Purchase {
    QString path;
    QString field;
    QString id;
  };

  void act(Action action, const QString& argument);
  Task<> acted(Action action, QString argument, std::stop_token stop);
  Task<> sendLink(QString email, std::stop_token stop);
  Task<> exchange(QString link, std::stop_token stop);
  Task<QString> tokenFor(QString code, std::stop_token stop);
  Task<> keepToken(QString fresh, std::stop_token stop);
  Task<> leave(QString, std::stop_token stop);
  Task<> revokeDevice(QString device, std::stop_token stop);
  Task<> openPack(QString pack, std::stop_token stop);
  Task<> openPlan(QString plan, std::stop_token stop);
  Task<> openCheckout(Purchase purchase, std::stop_token stop);
  Task<QUrl> checkoutPage(Purchase purchase, std::stop_token stop);
  Task<> refreshed(std::stop_token stop);
  Task<> refreshOnce(std::stop_token stop);
  Task<> updateSignIn(std::stop_token stop);
  Task<> follow(std::stop_token stop);
  Task<> watch(int number, std::stop_token stop);

  void store(const AccountInfo& told);
  bool landed(const AccountInfo& told);
  void forgetAccount();
  void adoptToken(const std::optional<QString>& fresh);
  void say(const QString& text, bool isError);

  Services services;
  std::optional<AccountInfo> account;
  bool accountIsOfToken = false;  ///< it was told for the present token by the present gateway
  std::vector<CreditPack> offered;
  bool testMode = false;
  std::optional<QString> arrival;
  std::int64_t arrivedAmount = 0;
  QString keyOfPurchase;
  std::optional<std::int64_t> awaiting;  ///< the purchased credits when a checkout was opened
  std::optional<QString> line;
  bool lineIsError = false;
  std::optional<QString> linkAddress;
  std::optional<QString> token;
  bool tokenIsUnsaved = false;  ///< the key store refused it: it serves until the program ends
  int changesOfToken = 0;
  bool acting = false;
  bool refreshing = false;
  bool refreshAgain = false;
  bool following = false;
  bool watching = false;
  int watchNumber = 0;
  TaskScope tasks;
};

}  // namespace sorvan::account
