// How an amount of money is told. Every amount in the interface goes through here, so that a user who only has credits
// never reads of dollars.
#pragma once

#include <QString>

#include "account/room.h"

namespace sorvan::account {

/// Credits worth one US dollar.
inline constexpr double creditsPerDollar = 100;

/// Plain values in, text out; any thread.
struct Spend {
  /// Whether the own-key way may be shown at all.
  bool ownKeyAllowed = true;

  /// An amount in US dollars: “$0.050” below ten cents and “$0.12” from there on, or “5 credits”.
  QString text(double usd) const;
  /// The dollars behind a credit figure, “ ($0.12)” with its leading blank, or nothing.
  QString aside(double usd) const;
  /// What something on the user's own key is thought to cost: “≈ $0.060”.
  static QString estimate(double usd);
};

/// “1 credit”, “12 credits”, “1.50 credits”: a whole number without a fraction, any other with two digits.
QString creditsText(double credits);

}  // namespace sorvan::account
