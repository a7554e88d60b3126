#include "shell/library_references.h"

#include "base/sorvan_error.h"
#include "base/text.h"
#include "composer/attach_items.h"
#include "composer/composer_rules.h"
#include "composer/mention_marks.h"
#include "composer/notice_texts.h"
#include "composer/reference_texts.h"
#include "composer/saved_references.h"
#include "core/history.h"
#include "core/library_store.h"
#include "core/media_inspection.h"
#include "exchange/texts.h"
#include "generation/generation_request.h"
#include "generation/mentions.h"
#include "platform/pictures.h"
#include "shell/gallery_index.h"
#include "shell/locations.h"
#include "shell/reference_view_texts.h"
#include "shell/workspace_state.h"

#include <QFileInfo>
#include <QPointer>

#include <algorithm>

namespace sorvan::shell {

namespace {

// As many as the panel shows without becoming a second gallery; a search finds the others.
constexpr std::size_t mostTiles = 60;

namespace composerTexts = composer::texts;

// By its extension, and by its first bytes where the extension says nothing.
bool isPictureFile(const QString& path) {
  const QFileInfo file(path);
  if (const auto type = core::mediaTypeForExtension(file.suffix())) return *type == core::MediaType::image;
  try {
    return file.isFile() && platform::probePicture(path).has_value();
  } catch (const SorvanError&) {
    return true;  // a picture that cannot be read: the import says so
  }
}

const core::ReferenceBinding* bindingOf(const std::vector<core::ReferenceBinding>& bindings, const QUuid& item) {
  for (const core::ReferenceBinding& binding : bindings)
    if (binding.assetID == item) return &binding;
  return nullptr;
}

// Runs a change of the references; what it throws becomes the message line's error.
template <class Change>
bool attempt(ComposerState& state, Change&& change) {
  try {
    change();
    return true;
  } catch (const std::exception& failure) {
    state.report(describe(failure), true);
    return false;
  }
}

}  // namespace

std::vector<core::AssetRef> newestPictures(const core::LibraryStore& store, GalleryIndex& index, const QString& search,
                                           std::size_t most) {
  GalleryFilter filter;
  filter.type = QStringLiteral("image");
  filter.search = search;
  std::vector<core::AssetRef> found;
  for (const std::uint32_t number : index.matching(filter)) {
    if (found.size() == most) break;
    if (core::AssetRef asset = store.asset(store.assetRows()[number].id)) found.push_back(std::move(asset));
  }
  return found;
}

// While it lives, neither a second import nor anything that an import must not meet begins.
struct LibraryReferences::ImportGuard {
  explicit ImportGuard(LibraryReferences& owner) : references(&owner), store(&owner.ports_.store) {
    owner.importing_ = true;
    store->setImporting(true);
    Q_EMIT owner.changed();
    Q_EMIT owner.importingChanged();
  }
  ~ImportGuard() {
    if (store) store->setImporting(false);
    if (!references) return;
    references->importing_ = false;
    Q_EMIT references->changed();
    Q_EMIT references->importingChanged();
  }
  ImportGuard(const ImportGuard&) = delete;
  ImportGuard& operator=(const ImportGuard&) = delete;
  QPointer<LibraryReferences> references;
  QPointer<core::LibraryStore> store;
};

LibraryReferences::LibraryReferences(Ports ports, QObject* parent)
    : ReferencesPresenter(parent), ports_(std::move(ports)) {
  connect(&ports_.state, &ComposerState::changed, this, &LibraryReferences::forgetSuggestions);
  connect(&ports_.store, &core::LibraryStore::revisionChanged, this, &LibraryReferences::forgetSuggestions);
}

LibraryReferences::~LibraryReferences() = default;

void LibraryReferences::forgetSuggestions() {
  suggestions_.reset();
  Q_EMIT changed();
}

Task<> LibraryReferences::drain() {
  cancelImport();
  co_await tasks_.drain();
}

// ---- The panel

QString LibraryReferences::countText() const {
  return composerTexts::attached(static_cast<qsizetype>(ports_.state.request().referenceIDs.size()));
}

QString LibraryReferences::inertText() const {
  const auto chosen = ports_.state.chosenModels();
  if (chosen.empty() || referencesSupported(chosen)) return {};
  return composerTexts::textOnly(chosen.size() > 1);
}

ReferenceSource LibraryReferences::firstSource() const { return ReferenceSource::gallery; }

AttachPanel LibraryReferences::attachPanel(ReferenceSource source, const QString& search) const {
  AttachPanel panel;
  panel.countText = countText();
  panel.sources = {composerTexts::workspaceGallery(), composerTexts::projectReferences(),
                   composerTexts::globalReferences()};
  panel.inertText = inertText();
  panel.canSaveAttached = !ports_.state.request().referenceIDs.empty();
  panel.importing = importing_;
  const std::optional<QUuid> project = ports_.state.projectId();
  if (source == ReferenceSource::gallery) {
    panel.tiles = pictureTiles(search);
    panel.emptyText = isBlank(search) ? texts::noPicturesYet : texts::noPictureMatches;
  } else if (source == ReferenceSource::project && !project) {
    panel.emptyText = texts::inboxHasNoReferences;
  } else {
    panel.tiles = savedTiles(source == ReferenceSource::project ? project : std::nullopt, search);
    panel.emptyText = isBlank(search) ? texts::noSavedReferences : texts::noReferenceMatches;
  }
  return panel;
}

std::vector<ReferenceTile> LibraryReferences::pictureTiles(const QString& search) const {
  std::vector<ReferenceTile> tiles;
  for (const core::AssetRef& asset : ports_.findPictures(search, mostTiles)) {
    ReferenceTile tile;
    tile.id = asset->id;
    tile.title = asset->filename();
    tile.filePath = ports_.store.fileOf(*asset);
    tile.thumbnailPath = ports_.store.thumbnailOf(*asset).value_or(QString());
    tile.attached = isAttached(asset->id);
    if (!QFileInfo(tile.filePath).isFile()) tile.problem = texts::originalMissing;
    tiles.push_back(std::move(tile));
  }
  return tiles;
}

std::vector<ReferenceTile> LibraryReferences::savedTiles(const std::optional<QUuid>& project,
                                                         const QString& search) const {
  std::vector<ReferenceTile> tiles;
  const QString wanted = foldForSearch(search.trimmed());
  for (const core::SavedReferenceRef& reference : ports_.store.savedReferences()) {
    if (reference->projectID != project) continue;
    const QString handle = generation::handleOfLabel(reference->name);
    if (!foldForSearch(reference->name + u' ' + handle + u' ' + reference->subject).contains(wanted)) continue;
    const auto images = liveImages(ports_.store, *reference);
    ReferenceTile tile;
    tile.id = reference->id;
    tile.isSaved = true;
    tile.title = u'@' + handle;
    tile.detail = texts::kindAndImages(reference->kind, static_cast<qsizetype>(images.size()));
    if (images.empty()) tile.problem = composerTexts::imagesMissing();
    if (!images.empty()) {
      tile.filePath = ports_.store.fileOf(*images.front());
      tile.thumbnailPath = ports_.store.thumbnailOf(*images.front()).value_or(QString());
      tile.attached = std::all_of(images.begin(), images.end(), [this](const auto& image) { return isAttached(image->id); });
    }
    tiles.push_back(std::move(tile));
  }
  return tiles;
}

bool LibraryReferences::isAttached(const QUuid& item) const {
  const auto& ids = ports_.state.request().referenceIDs;
  return std::find(ids.begin(), ids.end(), item) != ids.end();
}

// ---- Coming and going

void LibraryReferences::toggleItem(QUuid item) {
  if (isAttached(item)) return detach(item);
  attachItems({item});
}

bool LibraryReferences::attachItems(const std::vector<QUuid>& items) {
  const bool any = std::any_of(items.begin(), items.end(),
                               [this](const QUuid& item) { return canAttach(ports_.store, item); });
  if (!any) return false;
  attempt(ports_.state, [&] {
    composer::attachItems(ports_.store, items, ports_.state);
    ports_.state.setExpanded(true);
  });
  return true;
}

void LibraryReferences::attachSaved(QUuid reference) {
  attempt(ports_.state, [&] {
    const core::SavedReferenceRef record = savedReference(ports_.store, reference);
    if (!record) throw SorvanError(composerTexts::referenceUnavailable());
    attachReference(ports_.store, *record, ports_.state);
  });
}

void LibraryReferences::detach(QUuid item) { ports_.state.detachReference(item); }
void LibraryReferences::move(QUuid item, int place) { moveAttached(item, place, ports_.state); }

bool LibraryReferences::rename(QUuid item, const QString& label) {
  const QString role = roleOf(item);
  return attempt(ports_.state, [&] { ports_.state.renameReference(item, label, role); });
}

QStringList LibraryReferences::roles() const {
  QStringList roles = referenceKinds();
  roles.removeOne(composer::genericKind.toString());
  const auto chosen = ports_.state.chosenModels();
  if (std::any_of(chosen.begin(), chosen.end(),
                  [](const SelectableModel& model) { return model.comparison.model.supportsEndFrame; }))
    roles << generation::endFrameRole.toString();
  return roles << composer::genericKind.toString();
}

QString LibraryReferences::roleOf(QUuid item) const {
  const auto ordered = generation::orderedReferences(ports_.state.request());
  const core::ReferenceBinding* binding = bindingOf(ordered, item);
  return binding && binding->role ? *binding->role : composer::genericKind.toString();
}

void LibraryReferences::setRole(QUuid item, const QString& role) {
  const auto ordered = generation::orderedReferences(ports_.state.request());
  const core::ReferenceBinding* binding = bindingOf(ordered, item);
  if (!binding) return;
  attempt(ports_.state, [&] { ports_.state.renameReference(item, QString(binding->label), role); });
}

// ---- Import

std::optional<QString> LibraryReferences::refusal(std::size_t files) const {
  return attachRefusal(importing_ || ports_.store.isImporting(), ports_.state.request().referenceIDs.size(), files);
}

void LibraryReferences::importFiles(const QStringList& paths) {
  // 1. One import at a time.
  if (const auto refused = refusal(0)) return ports_.state.report(*refused, true);
  // 2. The pictures among the files.
  QStringList pictures;
  for (const QString& path : paths)
    if (isPictureFile(path)) pictures << path;
  if (pictures.isEmpty()) return;
  // 3. All of them, or none.
  if (const auto refused = refusal(static_cast<std::size_t>(pictures.size())))
    return ports_.state.report(*refused, true);
  // 4. and 5. One after the other.
  std::vector<Delivery> deliveries;
  const auto project = ports_.state.projectId();
  for (const QString& path : pictures) {
    const auto bring = [store = &ports_.store, imports = ports_.imports, path, project](std::stop_token stop) {
      return exchange::importReference(store, imports, path, project, stop);
    };
    deliveries.push_back({pictures.size() > 1 ? QFileInfo(path).fileName() : QString(), bring});
  }
  startImport(std::move(deliveries));
}

void LibraryReferences::importPicture(const QImage& picture) {
  if (const auto refused = refusal(1)) return ports_.state.report(*refused, true);
  const auto bring = [store = &ports_.store, imports = ports_.imports, picture,
                      project = ports_.state.projectId()](std::stop_token stop) {
    return exchange::importPastedReference(store, imports, picture, project, stop);
  };
  startImport({{QString(), bring}});
}

void LibraryReferences::startImport(std::vector<Delivery> deliveries) {
  stopImport_ = std::stop_source();
  ports_.state.setExpanded(true);
  tasks_.spawn(importAll(this, std::move(deliveries), stopImport_.get_token()));
}

void LibraryReferences::cancelImport() { stopImport_.request_stop(); }

Task<> LibraryReferences::importAll(LibraryReferences* self, std::vector<Delivery> deliveries, std::stop_token stop) {
  const ImportGuard guard(*self);
  const QString destination = destinationName(self->ports_.store, self->ports_.state.projectId());
  try {
    co_await bringAll(self, std::move(deliveries), stop);
    self->ports_.state.report(composerTexts::referencesImported(destination), false);
  } catch (const Cancelled&) {
    // The person knows; what came in before stays.
  } catch (const std::exception& failure) {
    self->ports_.state.report(describe(failure), true);
  }
}

// What came in before a failure stays, and is one step to undo.
Task<> LibraryReferences::bringAll(LibraryReferences* self, std::vector<Delivery> deliveries, std::stop_token stop) {
  std::vector<core::AssetRef> added;
  std::exception_ptr failure;
  for (const Delivery& delivery : deliveries) {
    try {
      const exchange::ImportedReference came = co_await delivery.bring(stop);
      if (came.isNew) added.push_back(came.item);
      composer::attachItems(self->ports_.store, {came.item->id}, self->ports_.state);
    } catch (const SorvanError& problem) {
      failure = std::make_exception_ptr(
          SorvanError(delivery.name.isEmpty() ? problem.message() : texts::about(delivery.name, problem.message())));
    } catch (...) {
      failure = std::current_exception();
    }
    if (failure) break;
  }
  if (!added.empty()) core::rememberAddedAssets(self->ports_.store, added, exchange::texts::importStep());
  if (failure) std::rethrow_exception(failure);
}

// ---- Mentions

const std::vector<SavedReferenceSuggestion>& LibraryReferences::suggestions() const {
  if (!suggestions_) suggestions_ = referenceSuggestions(ports_.store, ports_.state);
  return *suggestions_;
}

MentionChoice LibraryReferences::choiceOf(const MentionRow& row) const {
  MentionChoice choice;
  choice.handle = row.handle;
  choice.saved = row.saved;
  const QString lead = u'@' + row.handle + texts::separator;
  if (row.title.startsWith(lead)) choice.detail = row.title.mid(lead.size());
  QUuid item;
  for (const core::ReferenceBinding& binding : generation::orderedReferences(ports_.state.request()))
    if (item.isNull() && !row.saved && (generation::handleOf(binding) == row.handle || binding.group == row.handle))
      item = binding.assetID;
  if (row.saved)
    if (const core::SavedReferenceRef record = savedReference(ports_.store, *row.saved))
      if (const auto images = liveImages(ports_.store, *record); !images.empty()) item = images.front()->id;
  if (const core::AssetRef asset = ports_.store.asset(item)) {
    choice.filePath = ports_.store.fileOf(*asset);
    choice.thumbnailPath = ports_.store.thumbnailOf(*asset).value_or(QString());
  }
  return choice;
}

std::optional<MentionOffer> LibraryReferences::mentionOffer(const QString& text, qsizetype cursor) const {
  const auto typed = typedMention(text, cursor);
  if (!typed) return std::nullopt;
  const MentionList list =
      mentionList(generation::orderedReferences(ports_.state.request()), suggestions(), typed->name);
  if (list.sections.empty() && list.hint.isEmpty()) return std::nullopt;
  MentionOffer offer{*typed, {}, list.hint};
  for (const MentionSection& section : list.sections) {
    MentionGroup group{section.heading, {}};
    for (const MentionRow& row : section.rows) group.choices.push_back(choiceOf(row));
    offer.groups.push_back(std::move(group));
  }
  return offer;
}

std::optional<QString> LibraryReferences::takeMention(const MentionChoice& choice) {
  if (!choice.saved) return choice.handle;
  const auto label = attachMentioned(ports_.store, *choice.saved, ports_.state);
  return label ? std::optional(generation::handleOfLabel(*label)) : std::nullopt;
}

QSet<QString> LibraryReferences::mentionableNames() const {
  return composer::mentionableNames(generation::orderedReferences(ports_.state.request()));
}

// ---- Keeping

void LibraryReferences::saveAttached() {
  const auto& ids = ports_.state.request().referenceIDs;
  if (!ids.empty()) Q_EMIT saveRequested(ids);
}

void LibraryReferences::openSaved(bool ofProject) {
  ports_.window.setMode({ofProject ? ModeKind::projectReferences : ModeKind::savedReferences});
}

}  // namespace sorvan::shell
