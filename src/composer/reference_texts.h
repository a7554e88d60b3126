// The sentences of references: attaching them, naming them, saving them.
#pragma once

#include <QString>
#include <QStringList>

#include "composer/notice_texts.h"

namespace sorvan::composer::texts {

// ---- Attaching a saved reference
inline QString imagesMissing() {
  return QStringLiteral(
      "This reference's images are missing or in Trash. Restore one, or edit the reference and choose others.");
}
inline QString groupAttached() {
  return QStringLiteral("An image from this group is already attached. Remove it before attaching the saved group.");
}
inline QString eightImagesPerPrompt() { return QStringLiteral("Use up to 8 reference images per prompt."); }
inline QString shortenName() { return QStringLiteral("Shorten the saved reference name before attaching it."); }
inline QString attachedReference(const QString& name, qint64 count) {
  return QStringLiteral("Attached @%1 · %2.").arg(name, images(count));
}

// ---- The list of names
inline QString noReferences() {
  return QStringLiteral("No references yet. Attach an image with the Reference button, or save one to reuse it here.");
}
inline QString projectHeading() { return QStringLiteral("Project References"); }
inline QString globalHeading() { return QStringLiteral("Global references"); }

// ---- Saving
inline QString chooseWorkspace() { return QStringLiteral("Choose a workspace first."); }
inline QString subjectTooLong() { return QStringLiteral("Say what it shows in 120 characters or fewer."); }
inline QString subjectMissing() {
  return QStringLiteral(
      "Say what the reference shows, in a few words, such as “a round coffee tin”. The model is told this.");
}
inline QString chooseImages() { return QStringLiteral("Choose 1–8 reference images."); }
inline QString imagesUnavailable() {
  return QStringLiteral("Restore or replace unavailable reference images before saving.");
}
inline QString projectUnavailable() { return QStringLiteral("Project is unavailable."); }
inline QString nameTaken() { return QStringLiteral("A reference with this name already exists in this scope."); }
inline QString referenceUnavailable() { return QStringLiteral("Reference is unavailable."); }

// ---- Before items go to Trash
inline QString itemsUsedBy(bool several, const QStringList& names, qsizetype more) {
  QString list = names.join(QStringLiteral(", "));
  if (more > 0) list += QStringLiteral(" and %1 more").arg(more);
  return (several ? QStringLiteral("These items are used by ") : QStringLiteral("This item is used by ")) + list + u'.';
}
inline QString referencesWithoutImages(qsizetype count) {
  return (count == 1 ? QStringLiteral("One reference") : QStringLiteral("%1 references").arg(count)) +
         QStringLiteral(" will have no images left and cannot be attached.");
}
inline QString sheetsHidden(qsizetype count) {
  return (count == 1 ? QStringLiteral("One contact sheet") : QStringLiteral("%1 contact sheets").arg(count)) +
         QStringLiteral(" will have fewer than two items left and will be hidden.");
}

// ---- The editor
inline QString saveAttached() { return QStringLiteral("Save Attached as Reference…"); }
inline QString saveAttachedDetail() {
  return QStringLiteral("Keep the attached images together under a name, to attach again in one click");
}
inline QString namePlaceholder() { return QStringLiteral("Name, e.g. Rose Bottle"); }
inline QString subjectPlaceholder() { return QStringLiteral("What it shows, e.g. a round coffee tin"); }
inline QString subjectDetail() {
  return QStringLiteral(
      "Sent to the model with every prompt that uses this reference, so it knows what the picture is of.");
}
inline QString notesPlaceholder() { return QStringLiteral("Notes (not sent to models)"); }

}  // namespace sorvan::composer::texts
