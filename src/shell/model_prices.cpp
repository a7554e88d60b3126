#include "shell/model_prices.h"

#include "composer/estimates.h"
#include "shell/payment_desk.h"
#include "shell/texts.h"

#include <QDate>
#include <QLocale>

#include <array>

namespace sorvan::shell {

namespace {

constexpr int mostDecimals = 6;
constexpr qsizetype fewestDecimals = 2;

// Exact: a price that is rounded to cents would be wrong by half for many models.
QString exactDollars(double dollars) {
  QString number = QString::number(dollars, 'f', mostDecimals);
  const qsizetype point = number.indexOf(QLatin1Char('.'));
  while (number.endsWith(QLatin1Char('0')) && number.size() - point - 1 > fewestDecimals) number.chop(1);
  return QLatin1Char('$') + number;
}

QString singular(const QString& unit) {
  static const std::array plurals{QStringLiteral("images"),      QStringLiteral("videos"),   QStringLiteral("seconds"),
                                  QStringLiteral("megapixels"),  QStringLiteral("requests"), QStringLiteral("units"),
                                  QStringLiteral("generations"), QStringLiteral("calls"),    QStringLiteral("minutes"),
                                  QStringLiteral("audios"),      QStringLiteral("steps"),    QStringLiteral("credits")};
  QString word = unit.trimmed();
  // “compute seconds” is one word more; “1000 characters” counts as it stands.
  const QString last = word.section(QLatin1Char(' '), -1);
  const bool counts = !word.isEmpty() && word.front().isDigit();
  if (!counts && std::find(plurals.begin(), plurals.end(), last) != plurals.end()) word.chop(1);
  return word;
}

// “as of 21 Nov 2026”, or empty for a price that was kept without its day.
QString dayOf(const ModelPrice& price) {
  const QDate date = QDate::fromString(price.date.value_or(QString()), Qt::ISODate);
  if (!date.isValid()) return {};
  return texts::priceAsOf(QLocale(QLocale::English).toString(date, QStringLiteral("d MMM yyyy")));
}

}  // namespace

QString unitPriceText(double dollars, const QString& unit) {
  const QString word = singular(unit);
  return word.isEmpty() ? exactDollars(dollars) : texts::pricePerUnit(exactDollars(dollars), word);
}

ModelPrices::ModelPrices(std::shared_ptr<FalPricing> prices, KeyReader key, PaymentDesk* payment, QObject* parent)
    : QObject(parent), prices_(std::move(prices)), key_(std::move(key)), payment_(payment) {
  if (!payment_) return;
  asksFor_ = {paysInCredits(), payment_->isSignedIn()};
  connect(payment_, &PaymentDesk::changed, this, &ModelPrices::payerMayHaveChanged);
}

bool ModelPrices::paysInCredits() const { return payment_ && !paysWithOwnKey(payment_->billing()); }

// What was asked for last is asked for again where somebody else pays now, or where a price can be asked for at last.
void ModelPrices::payerMayHaveChanged() {
  const std::pair present{paysInCredits(), payment_->isSignedIn()};
  if (present != asksFor_) {
    asksFor_ = present;
    refresh(wanted_);
  }
  if (present.first) Q_EMIT changed();
}

void ModelPrices::refresh(const QStringList& ids) {
  wanted_ = ids;
  if (paysInCredits()) return payment_->learnPrices(ids);
  QStringList wanted;
  for (const QString& id : ids)
    if (!underWay_.contains(id) && !wanted.contains(id)) wanted << id;
  if (wanted.isEmpty()) return;
  for (const QString& id : wanted) underWay_.insert(id);
  tasks_.spawnLater([this, wanted, stop = tasks_.token()] { return ask(wanted, stop); });
}

Task<std::optional<QString>> ModelPrices::readKey(std::stop_token stop) const {
  try {
    co_return co_await key_(stop);
  } catch (const SorvanError&) {
    // A key store that fails says so where the key is needed; here it costs a price.
    co_return std::nullopt;
  }
}

Task<> ModelPrices::ask(QStringList ids, std::stop_token stop) {
  const auto prices = prices_;
  const auto key = co_await readKey(stop);
  throwIfStopped(stop);
  if (key && !key->isEmpty()) co_await prices->refresh(ids, *key, stop);
  throwIfStopped(stop);
  for (const QString& id : ids) {
    underWay_.remove(id);
    asked_.insert(id);
  }
  Q_EMIT changed();
}

PriceText ModelPrices::text(const QString& id) const {
  if (paysInCredits()) {
    if (!payment_->isSold(id)) return {texts::priceUnavailable, {}};
    return {payment_->priceLabel(id).value_or(QString()), {}};
  }
  if (const auto price = prices_->price(id)) {
    return {unitPriceText(price->unitPrice, price->unit), dayOf(*price)};
  }
  return {asked_.contains(id) ? texts::priceUnavailable : QString(), {}};
}

std::optional<double> ModelPrices::estimate(const GenerationRequest& request, const FalModel& model) const {
  return prices_->estimate(request, model);
}

}  // namespace sorvan::shell
