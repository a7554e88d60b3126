#include "composer/saved_references.h"

#include <QFileInfo>

#include "base/ids.h"
#include "base/sorvan_error.h"
#include "base/text.h"
#include "composer/composer_rules.h"
#include "composer/reference_names.h"
#include "composer/reference_texts.h"
#include "composer/saved_reference_names.h"
#include "core/history.h"
#include "generation/mentions.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSubject = 120;

void require(bool holds, const QString& message) {
  if (!holds) throw SorvanError(message);
}

bool isUsable(const LibraryStore& store, const QUuid& id) {
  const AssetRef asset = store.asset(id);
  return asset && !asset->isTrashed() && asset->type() == MediaType::image && QFileInfo::exists(store.fileOf(*asset));
}

bool needsSubject(const QString& kind) {
  static const QStringList kinds{u"Character"_s, u"Product"_s, u"Brand"_s, u"Location"_s};
  return kinds.contains(kind);
}

/// What two spellings of a saved reference's name have in common.
QString scopeKey(const QString& name) { return name.trimmed().toCaseFolded(); }

/// The scope is there, and nobody else in it has the name.
void checkScope(const LibraryStore& store, const QString& name, const std::optional<QUuid>& project,
                const std::optional<QUuid>& self) {
  require(!project || store.project(*project), texts::projectUnavailable());
  for (const SavedReferenceRef& other : store.savedReferences())
    if (other->id != self && other->projectID == project)
      require(scopeKey(other->name) != scopeKey(name), texts::nameTaken());
}

void check(const LibraryStore& store, const SavedReferenceDraft& draft) {
  require(store.hasWorkspace(), texts::chooseWorkspace());
  // The name, as attaching all the pictures would use it.
  ReferenceMentions::resolve(QString(), bindingsOf(handleOfLabel(draft.name), draft.kind, {}, draft.assetIDs));
  const QString subject = draft.subject.trimmed();
  require(chars(subject) <= longestSubject, texts::subjectTooLong());
  require(!subject.isEmpty() || !needsSubject(draft.kind), texts::subjectMissing());
  require(!draft.assetIDs.empty() && draft.assetIDs.size() <= mostReferences, texts::chooseImages());
  for (const QUuid& id : draft.assetIDs) require(isUsable(store, id), texts::imagesUnavailable());
  checkScope(store, draft.name, draft.projectID, draft.referenceID);
  require(!draft.referenceID || savedReference(store, *draft.referenceID), texts::referenceUnavailable());
}

/// A picture that was chosen twice is meant once.
SavedReferenceDraft withoutDoubles(SavedReferenceDraft draft) {
  std::vector<QUuid> once;
  for (const QUuid& id : draft.assetIDs)
    if (std::find(once.begin(), once.end(), id) == once.end()) once.push_back(id);
  draft.assetIDs = std::move(once);
  return draft;
}

void fill(SavedReference& record, const SavedReferenceDraft& draft, Instant now) {
  record.name = draft.name.trimmed();
  record.kind = draft.kind;
  record.projectID = draft.projectID;
  record.assetIDs = draft.assetIDs;
  record.notes = draft.notes;
  record.subject = draft.subject.trimmed();
  record.updatedAt = now;
}

template <class Body>
void edit(LibraryStore& store, const QString& name, Body&& body) {
  undoable(store, name, {std::vector<AssetRef>(), LibraryTables::savedReferences}, [&] {
    body();
    store.save(LibraryTables::savedReferences);
  });
}

bool areAllAttached(const std::vector<AssetRef>& images, const std::vector<QUuid>& attached) {
  return std::all_of(images.begin(), images.end(), [&](const AssetRef& image) {
    return std::find(attached.begin(), attached.end(), image->id) != attached.end();
  });
}

SavedReferenceSuggestion suggestionOf(const LibraryStore& store, const SavedReference& reference,
                                      const std::vector<AssetRef>& images) {
  SavedReferenceSuggestion suggestion{reference.id,   handleOfLabel(reference.name),
                                      reference.kind, static_cast<int>(images.size()),
                                      std::nullopt,   std::nullopt};
  const ProjectRef project = reference.projectID ? store.project(*reference.projectID) : nullptr;
  if (project) suggestion.project = project->name;
  suggestion.thumbnail = store.thumbnailOf(*images.front());
  return suggestion;
}

std::vector<QUuid> idsOf(const std::vector<AssetRef>& assets) {
  std::vector<QUuid> ids;
  for (const AssetRef& asset : assets) ids.push_back(asset->id);
  return ids;
}

/// How many of the items are there now, and how many once some of them are in Trash.
struct Remaining {
  qsizetype before = 0;
  qsizetype after = 0;
};
Remaining remaining(const LibraryStore& store, const std::vector<QUuid>& members, const QSet<QUuid>& leaving) {
  Remaining counts;
  for (const QUuid& id : members) {
    const AssetRef asset = store.asset(id);
    if (!asset || asset->isTrashed()) continue;
    ++counts.before;
    if (!leaving.contains(id)) ++counts.after;
  }
  return counts;
}

qsizetype sheetsThatHide(const LibraryStore& store, const QSet<QUuid>& leaving) {
  constexpr qsizetype fewest = 2;
  return std::count_if(store.contactSheets().begin(), store.contactSheets().end(), [&](const ContactSheetRef& sheet) {
    const Remaining counts = remaining(store, sheet->assetIDs, leaving);
    return !sheet->deletedAt && counts.before >= fewest && counts.after < fewest;
  });
}

QString usedBy(const std::vector<SavedReferenceRef>& holders, bool several) {
  constexpr std::size_t mostNames = 3;
  QStringList names;
  for (const SavedReferenceRef& holder : holders)
    if (static_cast<std::size_t>(names.size()) < mostNames) names << holder->name;
  return texts::itemsUsedBy(several, names, static_cast<qsizetype>(holders.size()) - names.size());
}

/// Attaches the pictures; answers the first of the new names.
ReferenceBinding attach(const LibraryStore& store, const SavedReference& reference, ComposerState& state) {
  const std::vector<QUuid> live = idsOf(liveImages(store, reference));
  std::vector<QUuid> ids = state.request().referenceIDs;
  const auto present = synchronizedNames(state.request().referenceBindings.value_or(std::vector<ReferenceBinding>()),
                                         ids, state.draft());
  const auto bindings = attachedBindings(reference, live, ids, present);
  const ReferenceBinding first = bindings[bindings.size() - live.size()];
  ids.insert(ids.end(), live.begin(), live.end());
  state.setReferences(std::move(ids), bindings);
  state.setExpanded(true);
  state.report(texts::attachedReference(first.group.value_or(first.label), static_cast<qint64>(live.size())), false);
  return first;
}

}  // namespace

QStringList referenceKinds() {
  return {u"Generic"_s, u"Character"_s, u"Product"_s, u"Brand"_s, u"Location"_s, u"Style"_s};
}

std::vector<AssetRef> liveImages(const LibraryStore& store, const SavedReference& reference) {
  std::vector<AssetRef> images;
  for (const QUuid& id : reference.assetIDs)
    if (isUsable(store, id)) images.push_back(store.asset(id));
  return images;
}

QUuid saveReference(LibraryStore& store, const SavedReferenceDraft& held) {
  const SavedReferenceDraft draft = withoutDoubles(held);
  check(store, draft);
  const QUuid id = draft.referenceID.value_or(newUuid());
  edit(store, u"Save Reference"_s, [&] {
    if (draft.referenceID) {
      fill(store.context().edit(savedReference(store, id)), draft, store.now());
      return;
    }
    SavedReference record;
    record.id = id;
    record.createdAt = store.now();
    fill(record, draft, store.now());
    store.context().insert(std::move(record));
  });
  return id;
}

void moveReference(LibraryStore& store, const QUuid& reference, const std::optional<QUuid>& project) {
  require(store.hasWorkspace(), texts::chooseWorkspace());
  const SavedReferenceRef record = savedReference(store, reference);
  require(record != nullptr, texts::referenceUnavailable());
  checkScope(store, record->name, project, reference);
  edit(store, u"Save Reference"_s, [&] {
    SavedReference& changed = store.context().edit(record);
    changed.projectID = project;
    changed.updatedAt = store.now();
  });
}

void deleteReference(LibraryStore& store, const QUuid& reference) {
  const SavedReferenceRef record = savedReference(store, reference);
  require(record != nullptr, texts::referenceUnavailable());
  edit(store, u"Delete Reference"_s, [&] { store.context().remove(record); });
}

SavedReferenceRef savedReference(const LibraryStore& store, const QUuid& id) {
  for (const SavedReferenceRef& reference : store.savedReferences())
    if (reference->id == id) return reference;
  return nullptr;
}

std::vector<SavedReferenceRef> savedReferencesIn(const LibraryStore& store, const std::optional<QUuid>& openProject) {
  std::vector<SavedReferenceRef> shown;
  for (const SavedReferenceRef& reference : store.savedReferences())
    if (!reference->projectID || reference->projectID == openProject) shown.push_back(reference);
  return shown;
}

std::vector<SavedReferenceRef> savedReferencesHolding(const LibraryStore& store, const QSet<QUuid>& assets) {
  std::vector<SavedReferenceRef> holders;
  for (const SavedReferenceRef& reference : store.savedReferences())
    if (std::any_of(reference->assetIDs.begin(), reference->assetIDs.end(),
                    [&](const QUuid& id) { return assets.contains(id); }))
      holders.push_back(reference);
  return holders;
}

std::optional<QString> trashWarning(const LibraryStore& store, const QSet<QUuid>& assets) {
  const auto holders = savedReferencesHolding(store, assets);
  const auto emptied = std::count_if(holders.begin(), holders.end(), [&](const SavedReferenceRef& holder) {
    const Remaining counts = remaining(store, holder->assetIDs, assets);
    return counts.before > 0 && counts.after == 0;
  });
  const qsizetype hidden = sheetsThatHide(store, assets);
  QStringList sentences;
  if (!holders.empty()) sentences << usedBy(holders, assets.size() > 1);
  if (emptied > 0) sentences << texts::referencesWithoutImages(emptied);
  if (hidden > 0) sentences << texts::sheetsHidden(hidden);
  if (sentences.isEmpty()) return std::nullopt;
  return sentences.join(u' ');
}

std::vector<SavedReferenceSuggestion> referenceSuggestions(const LibraryStore& store, const ComposerState& state) {
  auto references = savedReferencesIn(store, state.projectId());
  // What is equal otherwise keeps its order, newest first.
  std::stable_sort(references.begin(), references.end(), [](const auto& left, const auto& right) {
    const auto key = [](const SavedReferenceRef& reference) {
      return std::pair(!reference->projectID.has_value(), scopeKey(reference->name));
    };
    return key(left) < key(right);
  });
  std::vector<SavedReferenceSuggestion> suggestions;
  for (const SavedReferenceRef& reference : references) {
    const auto images = liveImages(store, *reference);
    if (!images.empty() && !areAllAttached(images, state.request().referenceIDs))
      suggestions.push_back(suggestionOf(store, *reference, images));
  }
  return suggestions;
}

void attachReference(const LibraryStore& store, const SavedReference& reference, ComposerState& state) {
  attach(store, reference, state);
}

std::optional<QString> attachMentioned(const LibraryStore& store, const QUuid& reference, ComposerState& state) {
  const SavedReferenceRef record = savedReference(store, reference);
  if (!record) return std::nullopt;
  try {
    return attach(store, *record, state).label;
  } catch (const std::exception& failure) {
    state.report(describe(failure), true);
    return std::nullopt;
  }
}

}  // namespace sorvan::composer
