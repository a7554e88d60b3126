// How a request is paid, and the gateway's prices as far as they are known.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include "account/account_info.h"
#include "account/credit_price.h"
#include "account/spend.h"
#include "base/clock.h"
#include "base/completion.h"
#include "base/settings.h"
#include "catalogue/credits_client.h"
#include "core/billing.h"

namespace sorvan::account {

/// Thread: the main one. Prices live in memory only; the choice under the settings key "payWith".
class BillingState : public QObject {
  Q_OBJECT

 public:
  struct Services {
    std::shared_ptr<Settings> settings = {};
    std::shared_ptr<const Clock> clock = {};
    /// A client of the present gateway; throws SorvanError when there is none, and then no price is asked for.
    std::function<CreditsClient()> makeClient = {};
    /// Stands in for what the account allows; for tests, and where there is no account yet.
    std::optional<bool> ownKeyAllowed = {};
  };
  explicit BillingState(Services with, QObject* parent = nullptr);

  /// Whether the signed-in account may pay with a key of its own.
  bool ownKeyAllowed() const;
  /// What the user picked; the own key when nothing is stored.
  PayWith picked() const { return choice; }
  void pick(PayWith payer);
  /// Whether credits pay for the next request.
  bool creditsChosen() const { return !ownKeyAllowed() || choice == PayWith::credits; }
  /// The choice as the lower rooms see it.
  Billing billing() const;
  Spend spend() const { return Spend{ownKeyAllowed()}; }

  /// Null when the price is not known or the gateway does not sell the model.
  const CreditPrice* price(const QString& model) const;
  /// False only for a model that the gateway was asked about and does not sell.
  bool accepts(const QString& model) const;
  bool isPricedPerSecond(const QString& model) const;
  /// The price in a list of models; nothing when there is none.
  std::optional<QString> label(const QString& model) const;
  std::optional<std::int64_t> estimate(const GenerationRequest& request, const FalModel& model) const;

  /// Asks for the prices that are not known or have grown old; what is being asked for is waited for. A price that
  /// cannot be had is asked for again the next time; nothing is told. Throws Cancelled.
  Task<> refresh(QStringList models, std::stop_token stop);

 Q_SIGNALS:
  void choiceChanged();
  void pricesChanged();

 private:
  bool isFresh(const QString& model) const;
  Task<> fetch(QStringList models, std::stop_token stop);
  void take(const QStringList& models, const QJsonObject& listed);
  void readAccount();

  Services services;
  PayWith choice = PayWith::ownKey;
  bool accountAllows = false;
  /// An empty value: asked for, and not sold.
  QHash<QString, std::optional<CreditPrice>> prices;
  QHash<QString, Instant> asked;
  std::unordered_map<QString, Completion> inFlight;
};

}  // namespace sorvan::account
