// Every sentence about keys and money that a user may read.
#pragma once

#include <QString>

namespace sorvan::account::texts {

inline QString accessFailed(int status) { return QStringLiteral("Keychain access failed (%1).").arg(status); }
inline QString removalFailed(int status) { return QStringLiteral("Keychain removal failed (%1).").arg(status); }
inline QString saveFailed(int status) { return QStringLiteral("Keychain save failed (%1).").arg(status); }
inline QString stillReading() {
  return QStringLiteral("Your key is still being read from the Keychain. Try again in a moment.");
}

inline QString savedMessage() { return QStringLiteral("Saved securely in Keychain."); }
inline QString removedMessage() { return QStringLiteral("Key removed."); }
inline QString savedStatus() { return QStringLiteral("fal.ai key saved in Keychain"); }
inline QString noKeyStatus() { return QStringLiteral("No key saved"); }
inline QString keyPrompt() { return QStringLiteral("Enter your fal.ai key"); }
inline QString replacementPrompt() { return QStringLiteral("Enter a replacement fal.ai key"); }
inline QString explanation() {
  return QStringLiteral(
      "Optional. Bring your own key (BYOK) and fal.ai bills your account directly at its own prices, with no Sorvan "
      "Credits involved.");
}

/// “1 credit”, “12 credits”; the number comes as it is to be read.
inline QString credits(const QString& number) {
  return number == QLatin1Char('1') ? QStringLiteral("1 credit") : QStringLiteral("%1 credits").arg(number);
}
inline QString notRecorded() { return QStringLiteral("Not recorded"); }
inline QString paidWithOwnKey() { return QStringLiteral("My fal.ai key"); }
inline QString paidWithRetiredKey() { return QStringLiteral("OpenAI key (retired)"); }

}  // namespace sorvan::account::texts
