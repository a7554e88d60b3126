// Every sentence about the account, credits and what things cost that a user may read.
#pragma once

#include <QLocale>
#include <QString>

namespace sorvan::account::texts {

// ---- Signing in
inline QString notASignInLink() { return QStringLiteral("This is not a Sorvan sign-in link."); }
inline QString linkSent(const QString& address) {
  return QStringLiteral("Check %1 and open the link on this Mac.").arg(address);
}
inline QString signedInAs(const QString& email) {
  return email.isEmpty() ? QStringLiteral("Signed in") : QStringLiteral("Signed in as %1").arg(email);
}
inline QString accountIntroduction() {
  return QStringLiteral(
      "An account gives you Sorvan Credits to generate with. Your library works without one, and your media never "
      "leaves this Mac.");
}
inline QString signInTitle() { return QStringLiteral("Sign in to Sorvan"); }
inline QString sendLink() { return QStringLiteral("Email Me a Sign-In Link"); }
inline QString pasteLink() { return QStringLiteral("Paste the sign-in link"); }
inline QString noPassword() { return QStringLiteral("No password: we email you a link."); }
inline QString checkInbox() {
  return QStringLiteral(
      "Check your inbox. The link opens Sorvan and finishes signing in; it works once. If it opened on another device, "
      "paste it here.");
}

// ---- Credits
inline QString creditAdded(const QString& count) { return QStringLiteral("%1 credit added").arg(count); }
inline QString creditsAdded(const QString& count) { return QStringLiteral("%1 credits added").arg(count); }
inline QString invalidCheckout() { return QStringLiteral("Invalid checkout address."); }
inline QString checkoutOpened() {
  return QStringLiteral(
      "Checkout opened in your browser. Your credits appear here once the payment is confirmed.");
}
inline QString planCreditsFirst() {
  return QStringLiteral(" Plan credits are used first and reset each period; top-ups do not expire.");
}
inline QString failedCostsNothing() {
  return QStringLiteral(
      "Each model's price is shown before you generate, and a generation that fails costs nothing.");
}
inline QString testMode() { return QStringLiteral("Test mode: no real payment. "); }
inline QString beforeTax() {
  return QStringLiteral(
      "Prices are before tax. Credit packs are not refundable. Checkout opens in your browser.");
}
inline QString noPacks() { return QStringLiteral("Credit purchases are not available yet."); }
inline QString creditsUnreachable() {
  return QStringLiteral("Your credits will appear once the Sorvan service can be reached.");
}
inline QString underReviewBefore() {
  return QStringLiteral(
      "A request could not be confirmed as finished or failed, so its credits are held, not spent. They are returned "
      "if it did not run. Write to ");
}
inline QString supportAddress() { return QStringLiteral("studio@sorvan.app"); }
inline QString underReviewAfter() { return QStringLiteral(" if this stays."); }
inline QString spendLimit(const QString& limit, const QString& spent, const QString& when) {
  return QStringLiteral(
             "Fraud prevention: a new account can spend up to %1 credits in the 24 hours after its first purchase (%2 "
             "used). Your credits are safe; the limit lifts %3.")
      .arg(limit, spent, when);
}
inline QString thisDevice() { return QStringLiteral(" (this Mac)"); }
inline QString fromPlan() { return QStringLiteral("From your plan"); }
inline QString fromTopUps() { return QStringLiteral("From top-ups"); }
inline QString heldForJobs() { return QStringLiteral("Held for jobs in progress"); }
inline QString heldForReview() { return QStringLiteral("Held while a request is checked"); }
inline QString balanceHelp(const QString& count) {
  return QStringLiteral("Your Sorvan Credits balance: %1 credits. Click for account and credit settings.").arg(count);
}

// ---- Prices and who pays
inline QString creditCount(qint64 count) {
  return QStringLiteral("%1 credit%2").arg(QString::number(count), count == 1 ? QString() : QStringLiteral("s"));
}
inline QString upTo(const QString& amount) { return QStringLiteral("up to ") + amount; }
inline QString from(const QString& amount) { return QStringLiteral("from ") + amount; }
inline QString perSecond(const QString& amount) { return amount + QStringLiteral(" / s"); }
inline QString paidByKey() { return QStringLiteral("Paid by your fal.ai key"); }
inline QString paidByKeyAbout(const QString& dollars) { return paidByKey() + QStringLiteral(" · ≈ $") + dollars; }
inline QString paidWithCredits() { return QStringLiteral("Paid with Sorvan Credits"); }
inline QString paidWithCreditsOf(const QString& amount) { return paidWithCredits() + QStringLiteral(" · ") + amount; }
inline QString notSold() { return QStringLiteral("Credits cannot pay for this model yet. Choose another."); }
inline QString notSoldButKey() {
  return QStringLiteral(
      "Credits cannot pay for this model yet. Switch Pay With to your fal.ai key in the composer.");
}
inline QString keyLineHelp() {
  return QStringLiteral(
      "Bring your own key (BYOK): fal.ai bills you directly. Estimated from list prices. Change this under Pay With in "
      "the composer.");
}
inline QString creditsLineHelp() {
  return QStringLiteral("Change this under Pay With in the composer. ") +
         QStringLiteral("A failed generation costs nothing.");
}
inline QString payWithCredits() { return QStringLiteral("Pay with Credits"); }
inline QString payWithKey() { return QStringLiteral("Pay with fal.ai Key"); }
inline QString payWithCreditsHelp() {
  return QStringLiteral("Payment method: Sorvan Credits. Click to pay with your own fal.ai key instead.");
}
inline QString payWithKeyHelp() {
  return QStringLiteral("Payment method: your own fal.ai key (BYOK). Click to pay with Sorvan Credits instead.");
}
inline QString creditsEntry() { return QStringLiteral("Sorvan Credits"); }
inline QString creditsEntryHelp() {
  return QStringLiteral("Pay per image from your Sorvan balance. No key to set up.");
}
inline QString keyEntry() { return QStringLiteral("My fal.ai Key (BYOK)"); }
inline QString keyEntryHelp() {
  return QStringLiteral("Bring your own key (BYOK). fal.ai bills your account directly.");
}
inline QString accountEntry() { return QStringLiteral("Account and Credits…"); }
inline QString keyNeedsAccount() {
  return QStringLiteral("Your fal.ai key is saved, but it pays only while you are signed in. Sign in under Settings → "
                        "Account to use it.");
}
inline QString keyNeedsFeature() {
  return QStringLiteral(
      "Your fal.ai key is saved, but this account pays with Sorvan Credits only, so the key is not used.");
}
inline QString withOneCredit() { return QStringLiteral("Paid with 1 Sorvan Credit."); }
inline QString withCredits(const QString& count) { return QStringLiteral("Paid with %1 Sorvan Credits.").arg(count); }

// ---- Reports
inline QString inbox() { return QStringLiteral("Inbox"); }
inline QString allProjects() { return QStringLiteral("All Projects"); }
inline QString seriesImages() { return QStringLiteral("Images"); }
inline QString seriesVideo() { return QStringLiteral("Video"); }
inline QString seriesAudio() { return QStringLiteral("Audio"); }
inline QString seriesAssistant() { return QStringLiteral("Assistant"); }
inline QString costsWithOwnKey() {
  return QStringLiteral(
      "What your generations and AI assistance cost. Credits spending is exact; spending on your own key is an "
      "estimate.");
}
inline QString costsInCredits() {
  return QStringLiteral("The credits your generations and AI assistance have used.");
}
inline QString nothingSpent() { return QStringLiteral("Nothing spent in this period"); }
inline QString byMonth() { return QStringLiteral("By month"); }
inline QString byDay() { return QStringLiteral("By day"); }
inline QString exactCredits() {
  return QStringLiteral("The exact number of credits each one took. A generation that failed took none.");
}
inline QString exportHelp() { return QStringLiteral("One row per output, for a spreadsheet or an invoice"); }
inline QString periodMonth() { return QStringLiteral("This month"); }
inline QString periodLast() { return QStringLiteral("Last month"); }
inline QString periodQuarter() { return QStringLiteral("90 days"); }
inline QString periodAll() { return QStringLiteral("All time"); }

// ---- News of a newer build
inline QString updateAvailable(const QString& version) {
  return QStringLiteral("Sorvan %1 is available").arg(version);
}
inline QString download() { return QStringLiteral("Download"); }
inline QString later() { return QStringLiteral("Later"); }

}  // namespace sorvan::account::texts
