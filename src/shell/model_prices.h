#pragma once

#include "base/task_scope.h"
#include "catalogue/fal_pricing.h"
#include "shell/room.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>

namespace sorvan::shell {

// What a list says of a model's price.
struct PriceText {
  QString amount;  // “$0.039 / image”, “Price unavailable”; empty while the service has not been asked
  QString date;    // “as of 21 Nov 2026”, or empty
  bool operator==(const PriceText&) const = default;
};

// “$0.04 / megapixel”: the unit price as the list has it, with the service's own word for the unit in the singular.
QString unitPriceText(double dollars, const QString& unit);

class PaymentDesk;

// What models cost, asked for in the background: the service's list prices under the user's own key, or credits while
// they pay. Main thread.
class ModelPrices : public QObject {
  Q_OBJECT

 public:
  // The user's key once its store has answered; nothing when there is none. What it throws counts as no key.
  using KeyReader = std::function<Task<std::optional<QString>>(std::stop_token)>;

  // Without `payment` the own key pays. It outlives the prices.
  ModelPrices(std::shared_ptr<FalPricing> prices, KeyReader key, PaymentDesk* payment = nullptr,
              QObject* parent = nullptr);

  // Asks for those prices that are not known for today. `changed` follows when there was anything to ask.
  void refresh(const QStringList& ids);
  PriceText text(const QString& id) const;
  // US dollars for the whole request by the price that is known now.
  std::optional<double> estimate(const GenerationRequest& request, const FalModel& model) const;

 Q_SIGNALS:
  void changed();

 private:
  bool paysInCredits() const;
  void payerMayHaveChanged();
  Task<> ask(QStringList ids, std::stop_token stop);
  Task<std::optional<QString>> readKey(std::stop_token stop) const;

  std::shared_ptr<FalPricing> prices_;
  KeyReader key_;
  PaymentDesk* payment_;  // null: the own key pays
  // Who paid, and whether anybody was signed in, when prices were asked for last.
  std::pair<bool, bool> asksFor_;
  QStringList wanted_;
  QSet<QString> underWay_;
  QSet<QString> asked_;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
