#include "core/library_store.h"

#include <QThread>

#include "base/invariant.h"
#include "base/settings.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

void setOptional(std::optional<QString>& field, std::optional<QString> text, const std::function<void()>& notify) {
  if (field == text) return;
  field = std::move(text);
  notify();
}

}  // namespace

void WatchedProjects::setProject(const QUuid&, const std::optional<QUuid>&) {}

// ---- Lifetime and the open workspace

LibraryStore::LibraryStore(Services services, QObject* parent) : QObject(parent), services_(std::move(services)) {
  invariant(services_.settings && services_.clock, "the store is given settings and a clock");
  invariant(QThread::currentThread() == thread(), "the store lives on the main thread");
  wireSidecars();
}

LibraryStore::~LibraryStore() = default;

void LibraryStore::wireSidecars() {
  const auto inPlace = [this] { requireWorkspaceInPlace(); };
  for (Ledger* ledger :
       {static_cast<Ledger*>(&prompts_), static_cast<Ledger*>(&extraCharges_), static_cast<Ledger*>(&analyses_)}) {
    ledger->onError = [this](const QString& message) { setError(message); };
    ledger->requireWorkspace = inPlace;
    connect(ledger, &Ledger::changed, this, &LibraryStore::metadataChanged);
  }
  composer_.requireWorkspace = inPlace;
  connect(&composer_, &ComposerSidecar::issueChanged, this, [this](const std::optional<QString>& before) {
    if (composer_.issue())
      setError(composer_.issue());
    else if (error_ == before)
      setError(std::nullopt);
    Q_EMIT metadataChanged();
  });
}

void LibraryStore::loadSidecars() {
  const std::optional<QString> root = workspaceRoot();
  prompts_.load(root);
  extraCharges_.load(root);
  analyses_.load(root);
  composer_.open(root);
}

std::optional<QString> LibraryStore::workspaceRoot() const {
  return open_ ? std::optional(open_->files.root()) : std::nullopt;
}

const WorkspaceFiles& LibraryStore::files() const {
  if (!open_) throw SorvanError(texts::workspaceUnavailable());
  return open_->files;
}

RecordContext& LibraryStore::context() const {
  if (!open_) throw SorvanError(texts::workspaceUnavailable());
  return *open_->context;
}

void LibraryStore::requireWorkspaceInPlace() const {
  if (!open_) throw SorvanError(texts::workspaceUnavailable());
  if (!open_->lease.isInPlace()) throw SorvanError(texts::workspaceFolderGone());
}

void LibraryStore::requireRoomForResult() const {
  requireWorkspaceInPlace();
  // A file system that does not tell how full it is stops nobody: the write itself will say.
  if (freeBytes(open_->files.root()).value_or(leastFreeBytesForSubmission) < leastFreeBytesForSubmission)
    throw SorvanError(texts::noRoomForResult());
}

void LibraryStore::install(OpenedWorkspace workspace) {
  // 1. Read everything before anything is replaced.
  LibraryArrays fresh;
  fresh.fetch(*workspace.context, LibraryTables::all);
  // 2. What depends on the previous workspace ends.
  if (open_)
    for (const auto& end : beforeClose) end(*this);
  // 3. The previous lease goes after the new one was taken.
  open_ = std::make_unique<OpenedWorkspace>(std::move(workspace));
  ++opening_;
  unsavedJobs_.clear();
  history_.clear();
  arrays_ = std::move(fresh);
  index_ = LibraryIndex();
  index_.rebuild(arrays_, LibraryTables::all);
  rebuildRows();
  Q_EMIT workspaceChanged();
  changed();
}

void LibraryStore::close() {
  if (!open_) return;
  for (const auto& end : beforeClose) end(*this);
  pendingMarks_.reset();
  open_.reset();
  ++opening_;
  unsavedJobs_.clear();
  history_.clear();
  arrays_ = LibraryArrays();
  index_ = LibraryIndex();
  loadSidecars();
  Q_EMIT workspaceChanged();
  changed();
}

// ---- Lookups

ProjectRef LibraryStore::project(const QUuid& id) const { return open_ ? open_->context->find<Project>(id) : nullptr; }
AssetRef LibraryStore::asset(const QUuid& id) const { return open_ ? open_->context->find<Asset>(id) : nullptr; }
JobRef LibraryStore::job(const QUuid& id) const { return open_ ? open_->context->find<GenerationJob>(id) : nullptr; }
GenerationRef LibraryStore::generationOf(const QUuid& asset) const { return index_.generationOf(asset); }

const std::vector<GenerationRef>& LibraryStore::generationsOf(const QUuid& job) const {
  return index_.generationsOf(job);
}
const std::vector<RelationshipRef>& LibraryStore::parentEdges(const QUuid& child) const {
  return index_.parentEdges(child);
}
const std::vector<RelationshipRef>& LibraryStore::childEdges(const QUuid& parent) const {
  return index_.childEdges(parent);
}
const std::vector<ReferenceRef>& LibraryStore::referencesOf(const QUuid& generation) const {
  return index_.referencesOf(generation);
}

std::vector<AssetRef> LibraryStore::outputs(const QUuid& job) const {
  std::vector<AssetRef> items;
  for (const GenerationRef& generation : generationsOf(job))
    if (AssetRef item = asset(generation->assetID)) items.push_back(std::move(item));
  return items;
}

std::vector<JobRef> LibraryStore::comparisonJobs(const QUuid& comparison) const {
  std::vector<JobRef> jobs = index_.comparison(comparison);
  const auto place = [](const JobRef& job) {
    const auto request = job->request();
    return request ? request->comparisonOrder.value_or(0) : 0;
  };
  std::ranges::stable_sort(jobs, {}, place);
  return jobs;
}

QString LibraryStore::fileOf(const Asset& asset) const { return files().absolute(asset.localFilePath); }

std::optional<QString> LibraryStore::thumbnailOf(const Asset& asset) const {
  return asset.thumbnailFilePath ? std::optional(files().absolute(*asset.thumbnailFilePath)) : std::nullopt;
}

std::optional<std::size_t> LibraryStore::position(const Asset& asset) const { return arrays_.positionOf(asset); }

std::vector<JobRef> LibraryStore::activeJobs() const {
  std::vector<JobRef> active;
  for (const JobRef& job : jobs())
    if (job->isActive() && !salvaging.contains(job->id)) active.push_back(job);
  return active;
}

const QSet<QString>& LibraryStore::knownChecksums() const { return index_.checksums(arrays_); }

// ---- Saving

void LibraryStore::refuseDuringBackup() const {
  if (backingUp_) throw SorvanError(texts::backingUp());
}

void LibraryStore::save(LibraryTables reloading) {
  // 1. No write reaches the file during a backup.
  refuseDuringBackup();
  // 2. Which items will need a fresh row.
  std::vector<AssetRef> edited = context().edited<Asset>();
  for (const GenerationRef& generation : context().edited<Generation>())
    if (AssetRef item = asset(generation->assetID)) edited.push_back(std::move(item));
  // 3. On failure the changes stay pending, and the caller decides.
  context().save();
  if (!unsavedJobs_.isEmpty()) {
    unsavedJobs_.clear();
    Q_EMIT metadataChanged();
  }
  // 4. A reload of items or generations makes all rows again.
  if (!reloading.has(LibraryTables::assets | LibraryTables::generations)) {
    // 5. Otherwise only those that changed.
    for (const AssetRef& item : edited) refreshRow(item);
    tellTouched(edited, {});
  }
  // 6. One step of the revision either way.
  if (reloading.isEmpty())
    changed();
  else
    reload(reloading);
}

void LibraryStore::reload(LibraryTables tables) {
  if (!open_) return;
  arrays_.fetch(*open_->context, tables);
  index_.rebuild(arrays_, tables);
  const LibraryTables ofRows = LibraryTables::assets | LibraryTables::generations;
  if (tables.has(ofRows)) rebuildRows();
  if (tables.has(ofRows | LibraryTables::projects)) Q_EMIT itemsReread();
  changed();
}

void LibraryStore::rebuildRows() {
  std::vector<AssetRow> oldestFirst;
  oldestFirst.reserve(arrays_.assets.size());
  for (std::size_t index = arrays_.assets.size(); index-- > 0;) {
    const AssetRef& asset = arrays_.assets[index];
    oldestFirst.push_back(makeAssetRow(*asset, generationOf(asset->id).get()));
  }
  arrays_.assetRows = NewestFirst(std::move(oldestFirst));
}

void LibraryStore::refreshRow(const AssetRef& asset) {
  index_.forgetChecksums();
  if (const auto place = position(*asset))
    arrays_.assetRows[*place] = makeAssetRow(*asset, generationOf(asset->id).get());
}

void LibraryStore::insertAsset(const AssetRef& asset) {
  const std::size_t place = arrays_.insertionPosition(asset->createdAt);
  arrays_.assets.insert(place, asset);
  arrays_.assetRows.insert(place, makeAssetRow(*asset, generationOf(asset->id).get()));
}

void LibraryStore::registerRecords(const NewRecords& records) {
  for (const GenerationRef& generation : records.generations) {
    arrays_.generations.push_back(generation);
    index_.add(generation);
  }
  if (!records.assets.empty()) index_.forgetChecksums();
  for (const AssetRef& asset : records.assets) insertAsset(asset);
  for (const RelationshipRef& edge : records.relationships) {
    arrays_.relationships.push_back(edge);
    index_.add(edge);
  }
  for (const ReferenceRef& reference : records.references) {
    arrays_.references.push_back(reference);
    index_.add(reference);
  }
  tellTouched(records.assets, records.generations);
  changed();
}

void LibraryStore::tellTouched(const std::vector<AssetRef>& assets, const std::vector<GenerationRef>& generations) {
  std::vector<QUuid> items;
  for (const AssetRef& asset : assets) items.push_back(asset->id);
  for (const GenerationRef& generation : generations) items.push_back(generation->assetID);
  if (!items.empty()) Q_EMIT itemsTouched(items);
}

void LibraryStore::rollBack() {
  if (!open_) return;
  open_->context->rollback();
  reapplyUnsavedJobs();
}

void LibraryStore::reapplyUnsavedJobs() {
  for (const GenerationJob& kept : unsavedJobs_)
    if (const JobRef known = job(kept.id)) copyFields(kept, open_->context->edit(known));
}

void LibraryStore::failOperation(const std::exception_ptr& failure) {
  rollBack();
  setError(describe(failure));
  try {
    reload(LibraryTables::all);
  } catch (const SorvanError&) {
    // The rollback has already put every record back; a file that cannot be read now is told by the first failure.
    changed();
  }
}

void LibraryStore::keepUnsaved(const JobRef& job) {
  unsavedJobs_.insert(job->id, *job);
  Q_EMIT metadataChanged();
}

void LibraryStore::noteChange() { changed(); }

void LibraryStore::changed() {
  invariant(QThread::currentThread() == thread(), "the store is changed on the main thread");
  ++revision_;
  Q_EMIT revisionChanged();
}

// ---- Sidecars

void LibraryStore::record(const ExtraCharge& charge) {
  extraCharges_.add({charge});
  changed();
}

bool LibraryStore::hasUnsavedMetadata() const {
  return extraCharges_.isPending() || analyses_.isPending() || prompts_.isPending() || composer_.hasUnsavedDraft() ||
         !unsavedJobs_.isEmpty();
}

bool LibraryStore::canRetryMetadataSave() const {
  if (backingUp_) return false;
  return extraCharges_.canRetrySave() || analyses_.canRetrySave() || prompts_.canRetrySave() ||
         composer_.hasUnsavedDraft() || !unsavedJobs_.isEmpty();
}

void LibraryStore::retryMetadataSave() {
  if (backingUp_) return;
  // 1. The records, since a job's fields may tell where paid work stands.
  if (open_ && !unsavedJobs_.isEmpty()) {
    try {
      save(LibraryTables::none);
    } catch (const std::exception& failure) {
      setError(describe(failure));
    }
  }
  // 2. The sidecars; each reports its own failure.
  for (Ledger* ledger :
       {static_cast<Ledger*>(&extraCharges_), static_cast<Ledger*>(&analyses_), static_cast<Ledger*>(&prompts_)})
    if (ledger->canRetrySave()) ledger->persist();
  if (composer_.pending()) composer_.keep(ComposerDraft(*composer_.pending()));
}

// ---- What the interface shows

void LibraryStore::setError(std::optional<QString> text) {
  setOptional(error_, std::move(text), [this] { Q_EMIT errorChanged(); });
}

void LibraryStore::setNotice(std::optional<QString> text) {
  setOptional(notice_, std::move(text), [this] { Q_EMIT noticeChanged(); });
}

void LibraryStore::setPendingMarks(std::optional<PendingMarks> marks) {
  if (pendingMarks_ == marks) return;
  pendingMarks_ = std::move(marks);
  Q_EMIT pendingMarksChanged();
}

// ---- Long operations

void LibraryStore::setBackingUp(bool backingUp) {
  if (backingUp_ == backingUp) return;
  backingUp_ = backingUp;
  extraCharges_.setPaused(backingUp);
  analyses_.setPaused(backingUp);
  prompts_.setPaused(backingUp);
  composer_.setPaused(backingUp);
  Q_EMIT activityChanged();
}

void LibraryStore::setImporting(bool importing) {
  if (std::exchange(importing_, importing) != importing) Q_EMIT activityChanged();
}

void LibraryStore::setExporting(bool exporting) {
  if (std::exchange(exporting_, exporting) != exporting) Q_EMIT activityChanged();
}

LocalOperation LibraryStore::beginLocalOperation() {
  ++localOperations_;
  Q_EMIT activityChanged();
  return LocalOperation(this);
}

void LibraryStore::endLocalOperation() {
  --localOperations_;
  Q_EMIT activityChanged();
}

bool LibraryStore::isBusy() const {
  const auto says = [](const std::function<bool()>& check) { return check(); };
  return localOperations_ > 0 || importing_ || exporting_ || backingUp_ || !activeJobs().empty() ||
         std::ranges::any_of(busyChecks, says);
}

LocalOperation& LocalOperation::operator=(LocalOperation&& other) noexcept {
  std::swap(store_, other.store_);
  return *this;
}

LocalOperation::~LocalOperation() {
  if (store_) store_->endLocalOperation();
}

}  // namespace sorvan::core
