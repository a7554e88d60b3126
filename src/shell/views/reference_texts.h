// The words on the controls of references.
#pragma once

#include <QString>

namespace sorvan::views::texts {

inline QString mentionList() { return QStringLiteral("References to mention"); }
inline QString enterKey() { return QStringLiteral("Enter"); }

// ---- The strip
inline QString referenceButton() { return QStringLiteral("Reference"); }
inline QString referenceMenu(const QString& name) { return QStringLiteral("%1, options").arg(name); }
inline QString renameReference() { return QStringLiteral("Rename…"); }
inline QString renameReferenceTitle() { return QStringLiteral("Rename Reference"); }
inline QString referenceName() { return QStringLiteral("Name of the reference"); }
inline QString role() { return QStringLiteral("Role"); }
inline QString moveEarlier() { return QStringLiteral("Move Earlier"); }
inline QString moveLater() { return QStringLiteral("Move Later"); }
inline QString removeReference() { return QStringLiteral("Remove"); }

// ---- The attach panel
inline QString attachPanel() { return QStringLiteral("Attach references"); }
inline QString referenceSources() { return QStringLiteral("Where to look"); }
inline QString searchPictures() { return QStringLiteral("Search pictures and references"); }
inline QString chooseFiles() { return QStringLiteral("Choose Files…"); }
inline QString pastePicture() { return QStringLiteral("Paste Picture"); }
inline QString attachTitle() { return QStringLiteral("Attach"); }
inline QString pictures() { return QStringLiteral("Pictures"); }
inline QString attachedState() { return QStringLiteral("attached"); }
inline QString cancelImport() { return QStringLiteral("Stop Importing"); }

inline QString choosePictures() { return QStringLiteral("Choose Pictures to Attach"); }

// ---- The pages
inline QString savedReferenceList() { return QStringLiteral("Saved references"); }
inline QString kindsOfReferences() { return QStringLiteral("Kind of reference"); }
inline QString searchReferences() { return QStringLiteral("Search references"); }
inline QString newReference() { return QStringLiteral("New Reference…"); }
inline QString editReference() { return QStringLiteral("Edit…"); }
inline QString moveReference() { return QStringLiteral("Move To"); }
inline QString deleteReference() { return QStringLiteral("Delete Reference"); }

// ---- The editor
inline QString saveReferenceTitle() { return QStringLiteral("Save reference"); }
inline QString editReferenceTitle() { return QStringLiteral("Edit reference"); }
inline QString nameField() { return QStringLiteral("Name"); }
inline QString nameHint() { return QStringLiteral("A name that starts with a letter."); }
inline QString typeName(const QString& handle) {
  return QStringLiteral("Type @%1 in a prompt to use it.").arg(handle);
}
inline QString kindField() { return QStringLiteral("Kind"); }
inline QString scopeField() { return QStringLiteral("Scope"); }
inline QString thisProject() { return QStringLiteral("This project"); }
inline QString global() { return QStringLiteral("Global"); }
inline QString subjectField() { return QStringLiteral("What it shows"); }
inline QString imagesField() { return QStringLiteral("Images"); }
inline QString imagePlace(int place, int count) { return QStringLiteral("Image %1 of %2").arg(place).arg(count); }
inline QString addPictures() { return QStringLiteral("Add Pictures"); }
inline QString notesField() { return QStringLiteral("Notes"); }
inline QString saveReference() { return QStringLiteral("Save"); }

}  // namespace sorvan::views::texts
