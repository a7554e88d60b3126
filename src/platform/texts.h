// The sentences of this room that a user may meet.
#pragma once

#include <QString>

namespace sorvan::platform::texts {

inline QString noAnswer() { return QStringLiteral("The server did not answer."); }
inline QString answerTimedOut() { return QStringLiteral("The server did not answer in time."); }
inline QString answerTooLarge() { return QStringLiteral("The answer is larger than expected."); }
inline QString answerCutShort() { return QStringLiteral("The answer was cut short."); }
inline QString insecureAddress() { return QStringLiteral("This address is not secure."); }
inline QString requestCannotBeSent() { return QStringLiteral("This request cannot be sent as it stands."); }
inline QString badServiceConfiguration(const QString& reason) {
  return QStringLiteral("The service configuration cannot be used: %1").arg(reason);
}
inline QString badProxy() { return QStringLiteral("its proxy is not written as host:port."); }
inline QString badAuthority() { return QStringLiteral("its authority holds no certificate."); }
inline QString keyStoreTimedOut() { return QStringLiteral("The key store did not answer in time."); }
inline QString databaseFailed(const QString& file, const QString& verb, const QString& reason) {
  return QStringLiteral("%1 could not be %2: %3").arg(file, verb, reason);
}
inline QString databaseNotDurable() { return QStringLiteral("its journal could not be made safe"); }

}  // namespace sorvan::platform::texts
