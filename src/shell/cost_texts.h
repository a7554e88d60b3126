// What the page of costs says beyond the sentences of the account.
#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell::texts {

inline const QString costPeriod = QStringLiteral("Period");
inline const QString costScope = QStringLiteral("Projects");
inline const QString costSpending = QStringLiteral("Spending");
inline const QString costTotal = QStringLiteral("Total");
inline const QString costOutputs = QStringLiteral("Outputs");
inline const QString costAssistance = QStringLiteral("AI assistance");
inline const QString costUnpriced = QStringLiteral("Not recorded");
inline const QString costUnpricedDetail = QStringLiteral("outputs made without a price");
inline const QString costNoOutputs = QStringLiteral("none in this period");
inline const QString costModels = QStringLiteral("Models");
inline const QString costProjects = QStringLiteral("Projects");
inline const QString costPayment = QStringLiteral("Paid with");
inline const QString costBreakdown = QStringLiteral("Breakdown");
inline const QString costCharges = QStringLiteral("Charges");
inline const QString costDate = QStringLiteral("Date");
inline const QString costCharge = QStringLiteral("Charge");
inline const QString costModel = QStringLiteral("Model");
inline const QString costAmount = QStringLiteral("Cost");
inline const QString costAssistant = QStringLiteral("Assistant");
inline const QString costShowTable = QStringLiteral("Show as Table");
inline const QString costShowChart = QStringLiteral("Show as Chart");
inline const QString costExport = QStringLiteral("Export CSV…");
inline const QString costSave = QStringLiteral("Save");
inline const QString costReading = QStringLiteral("Adding up what was spent…");
inline const QString costFailed = QStringLiteral("The report couldn’t be made");
inline const QString costTryAgain = QStringLiteral("Try Again");
inline const QString costNothingHere = QStringLiteral("What you generate from now on is listed here with its cost.");
inline const QString costNothingThen = QStringLiteral("Other periods and projects may have something to show.");
inline const QString costShowAll = QStringLiteral("Show All Time");

inline QString costCount(int count, const QString& one, const QString& many) {
  return QStringLiteral("%1 %2").arg(QString::number(count), count == 1 ? one : many);
}
inline QString costImages(int count) { return costCount(count, QStringLiteral("image"), QStringLiteral("images")); }
inline QString costVideos(int count) { return costCount(count, QStringLiteral("video"), QStringLiteral("videos")); }
inline QString costSounds(int count) { return costCount(count, QStringLiteral("sound"), QStringLiteral("sounds")); }
inline QString costRequests(int count) {
  return costCount(count, QStringLiteral("request"), QStringLiteral("requests"));
}
inline QString costRewrites(int count) {
  return costCount(count, QStringLiteral("rewrite"), QStringLiteral("rewrites"));
}
inline QString costReviews(int count) { return costCount(count, QStringLiteral("review"), QStringLiteral("reviews")); }
inline QString costCommands(int count) {
  return costCount(count, QStringLiteral("command"), QStringLiteral("commands"));
}
inline QString costSince(const QString& day) { return QStringLiteral("Since %1").arg(day); }
inline QString costUntil(const QString& month) { return QStringLiteral("Until %1").arg(month); }
// “Total $21.99, 1–21 November. Most on 11 November: $2.15.”
inline QString costSummary(const QString& total, const QString& when, const QString& most, const QString& amount) {
  return QStringLiteral("Total %1, %2. Most: %3, %4.").arg(total, when, most, amount);
}
inline QString costExported(int rows) {
  return QStringLiteral("Exported %1").arg(costCount(rows, QStringLiteral("row"), QStringLiteral("rows")));
}

}  // namespace sorvan::shell::texts
