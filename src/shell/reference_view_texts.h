// The texts of attaching pictures and of the saved references' pages, beside those that the composer's rules know.
#pragma once

#include <QString>

#include "shell/room.h"

namespace sorvan::shell::texts {

// Between the parts of one line.
inline const QString separator = QStringLiteral(" · ");

// ---- The attach panel
inline const QString noPicturesYet =
    QStringLiteral("No pictures in this workspace yet. Choose files, paste a picture, or drop one on the prompt.");
inline const QString noPictureMatches = QStringLiteral("No picture matches this search.");
inline const QString inboxHasNoReferences =
    QStringLiteral("The prompt goes to the Inbox. Choose a project to see its references.");
inline const QString noSavedReferences =
    QStringLiteral("No references here yet. Attach pictures and keep them under a name.");
inline const QString noReferenceMatches = QStringLiteral("No reference matches this search.");
inline const QString originalMissing = QStringLiteral("Original missing");

// ---- The pages
inline const QString allKinds = QStringLiteral("All");
inline const QString typeToAttach = QStringLiteral("Type @ and a name in any prompt to attach a reference.");
inline const QString noReferencesTitle = QStringLiteral("No references yet");
inline const QString noReferencesText =
    QStringLiteral("Keep one to eight pictures of a character, a product or a place under a name, and attach them to "
                   "any prompt with it.");
inline const QString oneReference = QStringLiteral("1 reference");
inline QString manyReferences(qsizetype count) { return QStringLiteral("%1 references").arg(count); }
inline QString referenceDeleted(const QString& handle) { return QStringLiteral("%1 was deleted").arg(handle); }
inline const QString picturesStay = QStringLiteral("Its pictures stay in the library.");

// A failure of one of several files.
inline QString about(const QString& file, const QString& problem) { return file + QStringLiteral(": ") + problem; }

// “Product · 3 images”; the kind that means nothing is left out.
inline QString kindAndImages(const QString& kind, qsizetype images) {
  const QString count = images == 1 ? QStringLiteral("1 image") : QStringLiteral("%1 images").arg(images);
  return kind.isEmpty() || kind == QStringLiteral("Generic") ? count : kind + separator + count;
}

}  // namespace sorvan::shell::texts
