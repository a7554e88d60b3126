// What the pages of account and credits say beside the sentences of the account itself.
#pragma once

#include <QString>

#include "shell/room.h"

namespace sorvan::shell::texts {

inline QString accountTitle() { return QStringLiteral("Account"); }
inline QString emailField() { return QStringLiteral("Email address"); }
inline QString signIn() { return QStringLiteral("Sign In"); }
inline QString signOut() { return QStringLiteral("Sign Out"); }
inline QString credits() { return QStringLiteral("credits"); }
inline QString planLine(const QString& plan) { return QStringLiteral("%1 plan").arg(plan); }
inline QString renewsOn(const QString& plan, const QString& day) { return QStringLiteral("%1 · renews %2").arg(plan, day); }
inline QString endsOn(const QString& plan, const QString& day) { return QStringLiteral("%1 · ends %2").arg(plan, day); }
inline QString includedResets(const QString& day) { return QStringLiteral("The credits of your plan reset on %1.").arg(day); }

inline QString buyCreditsTitle() { return QStringLiteral("Buy credits"); }
inline QString buy() { return QStringLiteral("Buy"); }
inline QString buyOffer(const QString& what, const QString& price) {
  return price.isEmpty() ? QStringLiteral("Buy %1").arg(what) : QStringLiteral("Buy %1 for %2").arg(what, price);
}
inline QString plansTitle() { return QStringLiteral("Plans"); }
inline QString subscribe() { return QStringLiteral("Subscribe"); }
inline QString subscribeTo(const QString& plan, const QString& price) {
  return price.isEmpty() ? QStringLiteral("Subscribe to %1").arg(plan)
                         : QStringLiteral("Subscribe to %1 for %2").arg(plan, price);
}
inline QString currentPlan() { return QStringLiteral("Your plan"); }
inline QString eachPeriod(const QString& credits) { return QStringLiteral("%1 credits each period").arg(credits); }
inline QString waitingForPayment() { return QStringLiteral("Waiting for the payment…"); }
inline QString openCheckoutAgain() { return QStringLiteral("Open Checkout Again"); }
inline QString newCheckout() { return QStringLiteral("Start a New Checkout"); }
inline QString newCheckoutHint() { return QStringLiteral("Start a new checkout if the page has expired."); }
inline QString stopWaiting() { return QStringLiteral("Stop Waiting"); }
inline QString stopWaitingHelp() {
  return QStringLiteral("Only the waiting ends. What is paid for is added to your credits all the same.");
}
inline QString browserFailed(const QString& address) {
  return QStringLiteral("Your browser could not be opened. Open this address in it: %1").arg(address);
}

inline QString devicesTitle() { return QStringLiteral("Devices"); }
inline QString signOutDevice() { return QStringLiteral("Sign Out Device"); }
inline QString signOutNamedDevice(const QString& name) { return QStringLiteral("Sign Out %1").arg(name); }
inline QString activeNow() { return QStringLiteral("active now"); }
inline QString unnamedDevice() { return QStringLiteral("Unnamed device"); }

inline QString advancedTitle() { return QStringLiteral("Service address and other advanced settings"); }
inline QString gatewayField() { return QStringLiteral("Service address"); }
inline QString shown() { return QStringLiteral("Shown"); }
inline QString hidden() { return QStringLiteral("Hidden"); }
inline QString useAddress() { return QStringLiteral("Use Address"); }

inline QString payWithTitle() { return QStringLiteral("Pay with"); }
inline QString keyNotUsed() { return QStringLiteral("fal.ai Key Not Used"); }
inline QString getKey() { return QStringLiteral("Get a key at fal.ai"); }

// “in 9 hours”, “2 days ago”.
inline QString counted(qint64 count, const QString& unit) {
  return QStringLiteral("%1 %2%3").arg(QString::number(count), unit, count == 1 ? QString() : QStringLiteral("s"));
}
inline QString minuteUnit() { return QStringLiteral("minute"); }
inline QString hourUnit() { return QStringLiteral("hour"); }
inline QString dayUnit() { return QStringLiteral("day"); }
inline QString inTime(const QString& time) { return QStringLiteral("in %1").arg(time); }
inline QString timeAgo(const QString& time) { return QStringLiteral("%1 ago").arg(time); }
inline QString inAMoment() { return QStringLiteral("in a moment"); }
inline QString justNow() { return QStringLiteral("just now"); }

}  // namespace sorvan::shell::texts
