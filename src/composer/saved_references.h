// Named sets of pictures that are attached with one name: saving, moving, deleting, suggesting and attaching them.
#pragma once

#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

#include "composer/composer_state.h"
#include "composer/mention_completion.h"
#include "core/library_store.h"

namespace sorvan::composer {

/// The kinds, in the order of the menu.
QStringList referenceKinds();

/// What an editor of saved references holds.
struct SavedReferenceDraft {
  QUuid id;
  std::optional<QUuid> referenceID;  ///< the reference that is edited; none for a new one
  QString name;
  QString kind = QStringLiteral("Generic");
  std::optional<QUuid> projectID;  ///< none is global
  std::vector<QUuid> assetIDs;
  QString notes;    ///< never sent to models
  QString subject;  ///< what the pictures show, sent to models; at most 120 characters
  bool operator==(const SavedReferenceDraft&) const = default;
};

/// The pictures of the reference that can be sent now: known, not in Trash, their files on disk. In its order.
std::vector<AssetRef> liveImages(const LibraryStore& store, const SavedReference& reference);

// ---- Changes. Each is one step to undo and one save. They throw SorvanError with the first thing that is wrong, and
// then nothing has changed, in memory or on disk.

/// Saves a new reference or the edited one; its id.
QUuid saveReference(LibraryStore& store, const SavedReferenceDraft& draft);
void moveReference(LibraryStore& store, const QUuid& reference, const std::optional<QUuid>& project);
void deleteReference(LibraryStore& store, const QUuid& reference);

// ---- Lookups

SavedReferenceRef savedReference(const LibraryStore& store, const QUuid& id);
/// All global references and those of the open project, newest first.
std::vector<SavedReferenceRef> savedReferencesIn(const LibraryStore& store, const std::optional<QUuid>& openProject);
/// The references that hold any of the items.
std::vector<SavedReferenceRef> savedReferencesHolding(const LibraryStore& store, const QSet<QUuid>& assets);
/// What the user should know before these items go to Trash; nothing when no reference holds them and no contact sheet
/// would fall below two items.
std::optional<QString> trashWarning(const LibraryStore& store, const QSet<QUuid>& assets);
/// What the composer can attach by name: of its project and global ones, with pictures that are there and not all
/// attached yet. Its project's first, then by name.
std::vector<SavedReferenceSuggestion> referenceSuggestions(const LibraryStore& store, const ComposerState& state);

// ---- Attaching

/// Attaches all live pictures of the reference under its name and says so in the message line. Throws SorvanError with
/// what is in the way; then nothing is attached.
void attachReference(const LibraryStore& store, const SavedReference& reference, ComposerState& state);
/// The same by id, for a name that is being typed: answers the name of the first picture that is new. A
/// failure is told in the message line and answered by nothing.
std::optional<QString> attachMentioned(const LibraryStore& store, const QUuid& reference, ComposerState& state);

}  // namespace sorvan::composer
