// What the settings say about usage counts and newer builds.
#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell::texts {

inline const QString usageAndUpdates = QStringLiteral("Usage and Updates");
inline const QString usageTitle = QStringLiteral("Usage counts");
inline const QString usageShare = QStringLiteral("Share how often features are used");
inline const QString usageExplanation = QStringLiteral(
    "Once a day, how often each kind of generation was used. Never prompts, pictures, file names, or who you are. "
    "Nothing is counted while this is off.");
inline const QString usageNextReport = QStringLiteral("What the next report says");
inline const QString usageWaitingReport = QStringLiteral("This report has not arrived yet and goes again as it is");
inline const QString usageNothing = QStringLiteral("Nothing is counted and nothing is sent.");
inline const QString updatesTitle = QStringLiteral("Updates");
inline const QString updatesCheck = QStringLiteral("Check for Updates");
inline const QString updatesCheckMenu = QStringLiteral("Check for Updates…");
inline const QString updatesChecking = QStringLiteral("Asking for the newest version…");
inline const QString updatesNewest = QStringLiteral("You have the newest version.");
inline const QString updatesUnanswered =
    QStringLiteral("The newest version isn’t known: the Sorvan service could not be reached.");
inline const QString updatesDevelopment = QStringLiteral("A development build is not compared with published ones.");
inline QString updatesVersion(const QString& version) { return QStringLiteral("This is Sorvan %1").arg(version); }

}  // namespace sorvan::shell::texts
