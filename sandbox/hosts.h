// The names under which the simulated service is reached. One certificate names them all.
#pragma once
#include <QStringList>

namespace sandbox::hosts {

inline const QString queue = QStringLiteral("queue.fal.run");
inline const QString synchronous = QStringLiteral("fal.run");
inline const QString storage = QStringLiteral("rest.fal.ai");
inline const QString platform = QStringLiteral("api.fal.ai");
inline const QString documents = QStringLiteral("fal.ai");
// Where made media are offered, and where uploads go.
inline const QString media = QStringLiteral("v3.fal.media");
inline const QString uploads = QStringLiteral("v3b.fal.media");
inline const QString oldMedia = QStringLiteral("fal.media");
// The gateway, and the payment provider's pages.
inline const QString gateway = QStringLiteral("gateway.sorvan.app");
inline const QString checkout = QStringLiteral("checkout.sorvan.app");
// A host that belongs to nobody: scripted faults send results, handles and redirects there, and every request that
// arrives is noted, so that a test can say that no key ever reached it.
inline const QString elsewhere = QStringLiteral("elsewhere.example");

inline QStringList all() {
  return {queue, synchronous, storage, platform, documents, media, uploads, oldMedia, gateway, checkout, elsewhere};
}

inline bool servesMedia(const QString& host) {
  return host == media || host == uploads || host == oldMedia || host == elsewhere;
}

}  // namespace sandbox::hosts
