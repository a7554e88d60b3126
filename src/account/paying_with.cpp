#include "account/paying_with.h"

#include <cmath>

#include "account/account_texts.h"
#include "catalogue/credits_operation.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

bool ownKeyPays(const BillingState& billing) { return !billing.creditsChosen(); }

QString creditsLine(const PayingWithLine& line, const BillingState& billing) {
  const QString& model = *line.model;
  if (line.request && line.record) {
    if (const auto credits = billing.estimate(*line.request, *line.record))
      return texts::paidWithCreditsOf(texts::creditCount(*credits));
  }
  const CreditPrice* price = billing.price(model);
  if (price && price->per != u"second"_s)
    return texts::paidWithCreditsOf(texts::creditCount(price->credits * line.count));
  const auto label = billing.label(model);
  return label ? texts::paidWithCreditsOf(*label) : texts::paidWithCredits();
}

/// The note of a cost without a word of dollars.
QString noteInCredits(double credits) {
  const QString number = QString::number(credits, 'f', credits == std::floor(credits) ? 0 : 2);
  return number == u"1"_s ? texts::withOneCredit() : texts::withCredits(number);
}

}  // namespace

QString PayingWithLine::text(const BillingState& billing) const {
  if (ownKeyPays(billing)) {
    if (!usd) return texts::paidByKey();
    return texts::paidByKeyAbout(QString::number(*usd, 'f', *usd < 0.1 ? 3 : 2));
  }
  if (!model) return texts::paidWithCredits();
  if (billing.accepts(*model)) return creditsLine(*this, billing);
  return billing.ownKeyAllowed() ? texts::notSoldButKey() : texts::notSold();
}

QString PayingWithLine::help(const BillingState& billing) {
  return ownKeyPays(billing) ? texts::keyLineHelp() : texts::creditsLineHelp();
}

QString PayWithMenu::label(PayWith payer) {
  return payer == PayWith::credits ? texts::payWithCredits() : texts::payWithKey();
}

QString PayWithMenu::help(PayWith payer) {
  return payer == PayWith::credits ? texts::payWithCreditsHelp() : texts::payWithKeyHelp();
}

std::optional<QString> PayWithMenu::whyKeyDoesNotCount(bool keySaved, bool signedIn, bool ownKeyAllowed) {
  if (!keySaved || ownKeyAllowed) return std::nullopt;
  return signedIn ? texts::keyNeedsFeature() : texts::keyNeedsAccount();
}

QString balanceHelp(std::int64_t microcredits) { return texts::balanceHelp(creditsDisplay(microcredits)); }

double shownMicrocredits(double microcredits) {
  constexpr auto credit = static_cast<double>(microcreditsOfCredit);
  if (microcredits == std::floor(microcredits)) return microcredits;
  return std::floor(microcredits / credit) * credit;
}

QJsonObject spendDetails(QJsonObject parameters, MediaType type, const Spend& spend) {
  if (spend.ownKeyAllowed) return parameters;
  for (const QString& key : {u"quality"_s, u"output_format"_s, u"upstreamProvider"_s}) parameters.remove(key);
  if (type != MediaType::image) parameters.remove(u"size"_s);
  const QJsonValue stored = parameters.value(u"cost"_s);
  if (!stored.isObject()) return parameters;
  const QJsonObject cost = stored.toObject();
  const double credits =
      cost.value(u"credits"_s).toDouble(cost.value(u"perImageUSD"_s).toDouble() * creditsPerDollar);
  parameters.insert(u"cost"_s, QJsonObject{{u"credits"_s, credits}, {u"note"_s, noteInCredits(credits)}});
  return parameters;
}

QString spendNote(const Charge& charge, const Spend& spend) {
  if (spend.ownKeyAllowed) return charge.note.value_or(QString());
  if (!charge.credits && !charge.cost) return {};
  return noteInCredits(charge.credits.value_or(charge.cost.value_or(0) * creditsPerDollar));
}

}  // namespace sorvan::account
