#include "shell/library_saved_references.h"

#include "base/ids.h"
#include "base/sorvan_error.h"
#include "base/text.h"
#include "composer/attach_items.h"
#include "composer/composer_rules.h"
#include "composer/notice_texts.h"
#include "composer/reference_texts.h"
#include "core/library_store.h"
#include "generation/mentions.h"
#include "generation/texts.h"
#include "shell/alerts_presenter.h"
#include "shell/locations.h"
#include "shell/reference_view_texts.h"
#include "shell/step_card.h"
#include "shell/workspace_state.h"

namespace sorvan::shell {

namespace {

constexpr std::size_t mosaicPictures = 4;
constexpr std::size_t mostPictures = 60;

namespace composerTexts = composer::texts;

ReferenceField fieldOf(const QString& failure) {
  if (failure == composerTexts::subjectTooLong() || failure == composerTexts::subjectMissing())
    return ReferenceField::subject;
  if (failure == composerTexts::chooseImages() || failure == composerTexts::imagesUnavailable())
    return ReferenceField::images;
  if (failure == composerTexts::projectUnavailable()) return ReferenceField::scope;
  const bool ofName = failure == composerTexts::nameTaken() || failure == generation::texts::referenceNames() ||
                      failure == generation::texts::groupNames();
  return ofName ? ReferenceField::name : ReferenceField::none;
}

QString countText(std::size_t count) {
  return count == 1 ? texts::oneReference : texts::manyReferences(static_cast<qsizetype>(count));
}

bool matches(const core::SavedReference& reference, const QString& kind, const QString& wanted) {
  if (!kind.isEmpty() && kind != texts::allKinds && reference.kind != kind) return false;
  const QString text = reference.name + u' ' + reference.subject + u' ' + reference.notes;
  return wanted.isEmpty() || foldForSearch(text).contains(wanted);
}

}  // namespace

LibrarySavedReferences::LibrarySavedReferences(Ports ports, QObject* parent)
    : SavedReferencesPresenter(parent), ports_(std::move(ports)) {
  connect(&ports_.store, &core::LibraryStore::revisionChanged, this, &SavedReferencesPresenter::changed);
  connect(&ports_.store, &core::LibraryStore::workspaceChanged, this, &SavedReferencesPresenter::changed);
  connect(&ports_.window, &WorkspaceState::locationChanged, this, &SavedReferencesPresenter::changed);
  connect(&ports_.references, &ReferencesPresenter::saveRequested, this, [this](const std::vector<QUuid>& items) {
    Q_EMIT editorRequested(newDraft(ports_.state.projectId() ? ReferenceScope::project : ReferenceScope::global, items));
  });
}

std::optional<QUuid> LibrarySavedReferences::openProject() const {
  return locationProject(ports_.store, ports_.window.location());
}

ReferenceCard LibrarySavedReferences::cardOf(const core::SavedReference& reference) const {
  const auto images = liveImages(ports_.store, reference);
  ReferenceCard card;
  card.id = reference.id;
  card.handle = u'@' + generation::handleOfLabel(reference.name);
  if (reference.kind != composer::genericKind) card.kind = reference.kind;
  const QString count = composerTexts::images(static_cast<qint64>(images.size()));
  card.line = reference.subject.isEmpty() ? count : reference.subject + texts::separator + count;
  if (images.empty()) card.problem = composerTexts::imagesMissing();
  for (const core::AssetRef& image : images)
    if (card.pictures.size() < mosaicPictures)
      card.pictures.emplace_back(ports_.store.thumbnailOf(*image).value_or(QString()), ports_.store.fileOf(*image));
  QStringList about{card.handle};
  for (const QString& part : {card.kind, card.line, card.problem})
    if (!part.isEmpty()) about << part;
  card.accessibleName = about.join(QStringLiteral(", "));
  return card;
}

ReferencePage LibrarySavedReferences::page(ReferenceScope scope, const QString& kind, const QString& search) const {
  ReferencePage page;
  const std::optional<QUuid> project = scope == ReferenceScope::project ? openProject() : std::nullopt;
  page.title = scope == ReferenceScope::global ? composerTexts::globalReferences()
                                               : locationTitle(ports_.store, ports_.window.location());
  page.hint = texts::typeToAttach;
  page.kinds = referenceKinds();
  page.kinds.removeOne(composer::genericKind.toString());
  page.kinds.prepend(texts::allKinds);
  page.emptyTitle = texts::noReferencesTitle;
  page.emptyText = texts::noReferencesText;
  const QString wanted = foldForSearch(search.trimmed());
  std::size_t all = 0;
  for (const core::SavedReferenceRef& reference : ports_.store.savedReferences()) {
    const bool here = scope == ReferenceScope::global ? !reference->projectID
                                                      : project.has_value() && reference->projectID == project;
    if (!here) continue;
    ++all;
    if (matches(*reference, kind, wanted)) page.cards.push_back(cardOf(*reference));
  }
  page.countText = countText(all);
  if (all > 0 && page.cards.empty()) {
    page.emptyTitle = texts::noReferenceMatches;
    page.emptyText.clear();
  }
  return page;
}

void LibrarySavedReferences::attach(QUuid reference) {
  ports_.references.attachSaved(reference);
  ports_.state.focus();
}

void LibrarySavedReferences::remove(QUuid reference) {
  const core::SavedReferenceRef record = savedReference(ports_.store, reference);
  if (!record) return;
  const QString handle = u'@' + generation::handleOfLabel(record->name);
  try {
    deleteReference(ports_.store, reference);
  } catch (...) {
    return ports_.store.failOperation(std::current_exception());
  }
  Toast toast;
  toast.text = texts::referenceDeleted(handle);
  toast.secondLine = texts::picturesStay;
  showStepCard(ports_.store, ports_.alerts, std::move(toast));
}

std::vector<ReferencePlace> LibrarySavedReferences::places(QUuid reference) const {
  std::vector<ReferencePlace> places;
  const core::SavedReferenceRef record = savedReference(ports_.store, reference);
  if (!record) return places;
  if (record->projectID) places.push_back({std::nullopt, composerTexts::globalReferences()});
  for (const core::ProjectRef& project : ports_.store.projects())
    if (!project->archived && record->projectID != project->id) places.push_back({project->id, project->name});
  return places;
}

void LibrarySavedReferences::moveTo(QUuid reference, std::optional<QUuid> project) {
  try {
    moveReference(ports_.store, reference, project);
  } catch (...) {
    ports_.store.failOperation(std::current_exception());
  }
}

// ---- The editor

SavedReferenceDraft LibrarySavedReferences::newDraft(ReferenceScope scope, const std::vector<QUuid>& items) const {
  SavedReferenceDraft draft;
  draft.id = newUuid();
  if (scope == ReferenceScope::project) draft.projectID = openProject() ? openProject() : ports_.state.projectId();
  for (const QUuid& item : items)
    if (canAttach(ports_.store, item)) draft.assetIDs.push_back(item);
  return draft;
}

std::optional<SavedReferenceDraft> LibrarySavedReferences::draftOf(QUuid reference) const {
  const core::SavedReferenceRef record = savedReference(ports_.store, reference);
  if (!record) return std::nullopt;
  return SavedReferenceDraft{newUuid(),         record->id,       record->name,  record->kind,
                             record->projectID, record->assetIDs, record->notes, record->subject};
}

std::optional<ReferencePlace> LibrarySavedReferences::projectFor(const SavedReferenceDraft& draft) const {
  for (const auto& id : {draft.projectID, openProject(), ports_.state.projectId()})
    if (const core::ProjectRef project = id ? ports_.store.project(*id) : nullptr)
      return ReferencePlace{project->id, project->name};
  return std::nullopt;
}

QString LibrarySavedReferences::handleOf(const QString& name) const { return generation::handleOfLabel(name); }

ReferenceTile LibrarySavedReferences::tileOf(QUuid item) const {
  ReferenceTile tile;
  tile.id = item;
  const core::AssetRef asset = ports_.store.asset(item);
  if (asset) {
    tile.title = asset->filename();
    tile.filePath = ports_.store.fileOf(*asset);
    tile.thumbnailPath = ports_.store.thumbnailOf(*asset).value_or(QString());
  }
  if (!canAttach(ports_.store, item)) tile.problem = texts::originalMissing;
  return tile;
}

std::vector<ReferenceTile> LibrarySavedReferences::pictures(const QString& search) const {
  std::vector<ReferenceTile> tiles;
  for (const core::AssetRef& asset : ports_.findPictures(search, mostPictures)) tiles.push_back(tileOf(asset->id));
  return tiles;
}

std::optional<ReferenceProblem> LibrarySavedReferences::save(const SavedReferenceDraft& draft) {
  try {
    saveReference(ports_.store, draft);
    return std::nullopt;
  } catch (const std::exception& failure) {
    const QString text = describe(failure);
    return ReferenceProblem{fieldOf(text), text};
  }
}

std::vector<QUuid> LibrarySavedReferences::usableSelection() const {
  std::vector<QUuid> items;
  // In the order of the library, since a selection has none.
  const QSet<QUuid>& selection = ports_.window.selection();
  for (const QUuid& id : selection)
    if (canAttach(ports_.store, id)) items.push_back(id);
  std::sort(items.begin(), items.end(), [this](const QUuid& left, const QUuid& right) {
    return ports_.store.position(*ports_.store.asset(left)) < ports_.store.position(*ports_.store.asset(right));
  });
  return items;
}

void LibrarySavedReferences::saveSelection() {
  const std::vector<QUuid> items = usableSelection();
  if (items.empty()) return;
  Q_EMIT editorRequested(newDraft(openProject() ? ReferenceScope::project : ReferenceScope::global, items));
}

}  // namespace sorvan::shell
