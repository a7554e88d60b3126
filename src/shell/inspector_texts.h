// What the inspector says about items beyond the words that other views share.
#pragma once

#include "shell/room.h"

#include <QString>

namespace sorvan::shell::texts {

inline const QString promptRewritten = QStringLiteral("Prompt rewritten");
inline const QString negativePromptLabel = QStringLiteral("Leave out");
inline const QString qualityLabel = QStringLiteral("Quality");
inline const QString shotLabel = QStringLiteral("Shot");
inline const QString varianceLabel = QStringLiteral("Variance");
inline const QString modelIdLabel = QStringLiteral("Model ID");
inline const QString referencesSection = QStringLiteral("References");
inline const QString lineageSection = QStringLiteral("Lineage");
inline const QString madeFromItSection = QStringLiteral("Made from this");
inline const QString notesSection = QStringLiteral("Notes");
inline const QString nameLabel = QStringLiteral("Original name");
inline const QString kindLabel = QStringLiteral("Kind");
inline const QString typeLabel = QStringLiteral("Type");
inline const QString addedLabel = QStringLiteral("Added");
inline const QString importedLabel = QStringLiteral("Imported");
inline const QString cameFromLabel = QStringLiteral("Came from");
inline const QString checksumLabel = QStringLiteral("Checksum");
inline const QString itemLabel = QStringLiteral("Item");
inline const QString trashedLabel = QStringLiteral("In Trash since");
inline const QString linkInTrash = QStringLiteral("In Trash");
inline const QString deletedForGood = QStringLiteral("Deleted");
inline const QString reuse = QStringLiteral("Reuse");
inline const QString selectionSection = QStringLiteral("Selection");
inline const QString ratingLabel = QStringLiteral("Rating");
inline const QString statusLabel = QStringLiteral("Status");
inline const QString projectLabel = QStringLiteral("Project");
inline const QString sizeLabel = QStringLiteral("Size");
inline const QString favoritesLabel = QStringLiteral("Favorites");
// With several selected
inline QString severalGenerations(const QString& count) { return QStringLiteral("%1 generations selected").arg(count); }

// With nothing selected
inline const QString contentsSection = QStringLiteral("Contents");
inline const QString newestLabel = QStringLiteral("Newest");
inline const QString oldestLabel = QStringLiteral("Oldest");
inline const QString monthSection = QStringLiteral("This month");
inline const QString spentLabel = QStringLiteral("Spent");
inline const QString nothingSpent = QStringLiteral("Nothing");
inline const QString spentNote =
    QStringLiteral("In all places of this workspace. What a provider bills for your own key is an estimate.");
// A job
inline const QString settingsSection = QStringLiteral("Settings");
inline const QString resultsSection = QStringLiteral("Results");
inline const QString imagesLabel = QStringLiteral("Outputs");
inline const QString startedLabel = QStringLiteral("Started");
inline const QString endedLabel = QStringLiteral("Ended");
inline const QString openGeneration = QStringLiteral("Open Generation");
inline const QString noResults = QStringLiteral("No results here");
inline const QString resultsElsewhere = QStringLiteral("They are in Trash, or were deleted for good.");
inline const QString requestZone = QStringLiteral("Request");
inline const QString resultsZone = QStringLiteral("Results");
// Buttons whose place is narrow
inline const QString referenceTile = QStringLiteral("Reference");
inline const QString moreTile = QStringLiteral("More");
inline QString compareItems(qsizetype count) { return QStringLiteral("Compare %1").arg(count); }
inline const QString projectSection = QStringLiteral("Project");
inline const QString moveToProjectButton = QStringLiteral("Move to Project");

inline const QString mixed = QStringLiteral("Mixed");
inline const QString noRating = QStringLiteral("None");
inline const QString imported = QStringLiteral("Imported");
inline const QString pasted = QStringLiteral("Pasted");
inline const QString generated = QStringLiteral("Generated");

inline QString starsText(int stars) { return stars == 1 ? QStringLiteral("1 star") : QStringLiteral("%1 stars").arg(stars); }
inline QString shareOf(qsizetype part, qsizetype whole) { return QStringLiteral("%1 of %2").arg(part).arg(whole); }

}  // namespace sorvan::shell::texts
