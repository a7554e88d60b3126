#include "account/spend.h"

#include <cmath>

#include <QLocale>

#include "account/texts.h"

namespace sorvan::account {

namespace {

/// Shares of a credit that come from dividing a charge among outputs stay below this.
constexpr double wholeCreditHair = 0.005;

QString dollars(double usd, int digits) { return QLatin1Char('$') + QString::number(usd, 'f', digits); }

QString grouped(double whole) {
  return QLocale(QLocale::English, QLocale::UnitedStates).toString(whole == 0 ? 0.0 : whole, 'f', 0);
}

}  // namespace

QString Spend::text(double usd) const {
  if (ownKeyAllowed) return dollars(usd, usd < 0.1 && usd != 0 ? 3 : 2);
  const double credits = usd * creditsPerDollar;
  const double whole = std::round(credits);
  return texts::credits(std::abs(credits - whole) <= wholeCreditHair ? grouped(whole)
                                                                     : QString::number(credits, 'f', 1));
}

QString Spend::aside(double usd) const {
  return ownKeyAllowed ? QStringLiteral(" (%1)").arg(dollars(usd, 2)) : QString();
}

QString Spend::estimate(double usd) { return QStringLiteral("≈ ") + dollars(usd, usd < 0.1 ? 3 : 2); }

QString creditsText(double credits) {
  return texts::credits(QString::number(credits, 'f', credits == std::floor(credits) ? 0 : 2));
}

}  // namespace sorvan::account
