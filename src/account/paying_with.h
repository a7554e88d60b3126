// What stands beside a button about who pays, and what the details of an item tell to somebody who only has credits.
#pragma once

#include <optional>

#include <QJsonObject>
#include <QString>

#include "account/billing_state.h"
#include "account/charges.h"

namespace sorvan::account {

/// What is about to be paid for.
struct PayingWithLine {
  std::optional<QString> model;
  std::optional<double> usd;  ///< what the own key is thought to pay
  int count = 1;
  const GenerationRequest* request = nullptr;  ///< for an exact figure; may be null
  const FalModel* record = nullptr;            ///< of the model; may be null

  QString text(const BillingState& billing) const;
  static QString help(const BillingState& billing);
};

/// The menu that the payer is chosen in; shown only where the own key is allowed.
struct PayWithMenu {
  static QString label(PayWith payer);
  static QString help(PayWith payer);
  /// Why a key that is saved does not count as things stand; nothing when it counts.
  static std::optional<QString> whyKeyDoesNotCount(bool keySaved, bool signedIn, bool ownKeyAllowed);
};

/// The balance as a badge reads it out.
QString balanceHelp(std::int64_t microcredits);

/// A balance on its way from one number to another: a whole one as it is, any other down to a whole credit.
double shownMicrocredits(double microcredits);

/// The settings of a generation as they are shown. Where the own key is not allowed nothing of dollars and of the
/// service behind is left.
QJsonObject spendDetails(QJsonObject parameters, MediaType type, const Spend& spend);

/// What is told of a charge beside its amount: the note as it was written or, where the own key is not allowed, one in
/// credits. Empty when nothing is known.
QString spendNote(const Charge& charge, const Spend& spend);

}  // namespace sorvan::account
