#include "shell/gallery_presenter.h"

#include "account/charges.h"
#include "base/ids.h"
#include "base/settings.h"
#include "core/library_store.h"
#include "shell/job_displays.h"
#include "shell/locations.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr float soundAspectRatio = 1.6F;
// A very wide or tall picture still needs a cell that can be seen and hit.
constexpr float narrowest = 0.3F;
constexpr float widest = 4.0F;

float aspectRatioOf(int width, int height, bool isSound) {
  if (isSound) return soundAspectRatio;
  if (width < 1 || height < 1) return 1.0F;
  return std::clamp(static_cast<float>(width) / static_cast<float>(height), narrowest, widest);
}

// Where a job stands among the jobs: what runs leads, then what waits, then what ended without its result.
int rank(JobState state) {
  if (state == JobState::running) return 0;
  return state == JobState::queued ? 1 : 2;
}

CellKind cellKind(core::MediaType type) {
  switch (type) {
    case core::MediaType::video:
      return CellKind::video;
    case core::MediaType::audio:
      return CellKind::audio;
    case core::MediaType::image:
      break;
  }
  return CellKind::image;
}

QString itemName(const GalleryCell& cell, core::MediaType type) {
  QStringList parts{cell.fileName, kindText(type)};
  if (!cell.modelName.isEmpty()) parts << cell.modelName;
  if (!cell.statusText.isEmpty()) parts << cell.statusText;
  if (cell.rating > 0) parts << texts::stars(cell.rating);
  if (cell.favorite) parts << texts::favourite;
  return parts.join(QStringLiteral(", "));
}

QString stateText(JobState state) {
  switch (state) {
    case JobState::queued:
      return texts::stateQueued;
    case JobState::running:
      return texts::stateRunning;
    case JobState::failed:
      return texts::stateFailed;
    case JobState::cancelled:
    case JobState::salvaging:
      return texts::stateCancelled;
    case JobState::complete:
      return texts::stateComplete;
  }
  return {};
}

QString jobName(const JobDisplay& job) {
  QStringList parts{stateText(job.state), job.prompt, job.modelName, job.message.isEmpty() ? job.detail : job.message};
  parts.removeAll(QString());
  return parts.join(QStringLiteral(", "));
}

}  // namespace

GalleryPresenter::GalleryPresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& jobs, QObject* parent)
    : QObject(parent), store_(store), state_(state), jobs_(jobs), index_(store, [&jobs](const QString& model) {
        return jobs.modelName(model);
      }) {
  connect(&store_, &core::LibraryStore::revisionChanged, this, &GalleryPresenter::scheduleRefresh);
  connect(&store_, &core::LibraryStore::workspaceChanged, this, [this] {
    readDismissed();
    readSort();
    scheduleRefresh();
  });
  connect(&index_, &GalleryIndex::searchGrew, this, &GalleryPresenter::scheduleRefresh);
  connect(&state_, &WorkspaceState::filterChanged, this, &GalleryPresenter::refresh);
  connect(&state_, &WorkspaceState::locationChanged, this, &GalleryPresenter::refresh);
  connect(&jobs_, &JobDisplays::ticked, this, &GalleryPresenter::contentChanged);
  readDismissed();
  readSort();
  refresh();
}

GalleryPresenter::~GalleryPresenter() = default;

// Several changes of one turn of the event loop cost one pass.
void GalleryPresenter::scheduleRefresh() {
  if (refreshScheduled_) return;
  refreshScheduled_ = true;
  QMetaObject::invokeMethod(this, &GalleryPresenter::refresh, Qt::QueuedConnection);
}

void GalleryPresenter::refresh() {
  refreshScheduled_ = false;
  readLocation();
  std::vector<Entry> collected;
  collected.reserve(entries_.size() + 8);
  collectJobs(collected);
  jobCount_ = static_cast<int>(collected.size());
  collectItems(collected);
  const bool sameLayout = collected == entries_;
  entries_ = std::move(collected);
  if (sameLayout) {
    Q_EMIT contentChanged();
  } else {
    Q_EMIT layoutChanged();
  }
}

void GalleryPresenter::readLocation() {
  const QString& location = state_.location();
  project_ = uuidFromText(location);
  place_ = location == favoritesLocation ? Place::favorites
           : location == inboxLocation   ? Place::inbox
           : location == trashLocation   ? Place::trash
           : project_.isNull()           ? Place::everything
                                         : Place::project;
}

bool GalleryPresenter::isHere(const core::GenerationJob& job) const {
  if (state_.filter().narrows()) return false;
  return place_ != Place::favorites && place_ != Place::trash && isInProject(job.projectID);
}

bool GalleryPresenter::isInProject(const std::optional<QUuid>& project) const {
  if (place_ == Place::inbox) return !project;
  return place_ == Place::everything || project == project_;
}

void GalleryPresenter::collectJobs(std::vector<Entry>& entries) {
  std::vector<const core::GenerationJob*> shown;
  for (const core::JobRef& job : store_.jobs()) {
    // What was set going again is news again, however it ends.
    if (job->isActive()) dismissed_.remove(job->id);
    if (job->status == core::jobStatus::complete || dismissed_.contains(job->id) || !isHere(*job)) continue;
    shown.push_back(job.get());
  }
  std::stable_sort(shown.begin(), shown.end(), [this](const auto* left, const auto* right) {
    return rank(jobs_.stateOf(*left)) < rank(jobs_.stateOf(*right));
  });
  for (const core::GenerationJob* job : shown)
    entries.push_back({job->id, static_cast<float>(jobs_.aspectRatio(*job)), true});
}

void GalleryPresenter::collectItems(std::vector<Entry>& entries) {
  const QString sound = rawValue(core::MediaType::audio);
  const Rows& rows = store_.assetRows();
  for (const std::uint32_t number : index_.matching(state_.filter())) {
    const core::AssetRow& row = rows[number];
    entries.push_back({row.id, aspectRatioOf(row.width, row.height, row.mediaType == sound), false});
  }
}

int GalleryPresenter::count() const { return static_cast<int>(entries_.size()); }
QUuid GalleryPresenter::idAt(int index) const { return entries_.at(static_cast<std::size_t>(index)).id; }
double GalleryPresenter::aspectRatioAt(int index) const {
  return entries_.at(static_cast<std::size_t>(index)).aspectRatio;
}
bool GalleryPresenter::isJobAt(int index) const { return entries_.at(static_cast<std::size_t>(index)).isJob; }
int GalleryPresenter::jobCount() const { return jobCount_; }

int GalleryPresenter::indexOf(QUuid id) const {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&id](const Entry& entry) { return entry.id == id; });
  return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

GalleryCell GalleryPresenter::cellAt(int index) const {
  const Entry& entry = entries_.at(static_cast<std::size_t>(index));
  if (!entry.isJob) return itemCell(entry);
  GalleryCell cell;
  cell.id = entry.id;
  cell.kind = CellKind::job;
  cell.aspectRatio = entry.aspectRatio;
  cell.job = jobs_.display(entry.id);
  cell.accessibleName = jobName(cell.job);
  return cell;
}

GalleryCell GalleryPresenter::itemCell(const Entry& entry) const {
  GalleryCell cell;
  cell.id = entry.id;
  cell.aspectRatio = entry.aspectRatio;
  const core::AssetRef asset = store_.asset(entry.id);
  if (!asset) return cell;
  cell.kind = cellKind(asset->type());
  cell.fileName = asset->filename();
  cell.title = cell.fileName;
  cell.thumbnailPath = store_.thumbnailOf(*asset).value_or(QString());
  cell.filePath = store_.fileOf(*asset);
  if (asset->duration && cell.kind != CellKind::image) cell.durationText = clockText(*asset->duration);
  if (asset->status() != core::AssetStatus::draft) cell.statusText = statusText(asset->status());
  cell.statusToken = rawValue(asset->status());
  cell.favorite = asset->favorite;
  cell.rating = asset->rating.value_or(0);
  if (const core::GenerationRef generation = store_.generationOf(asset->id)) {
    const account::Charge charge = account::chargeOf(*generation, asset);
    cell.modelName = jobs_.modelName(generation->model);
    if (charge.cost) cell.costText = charge.costDisplay(jobs_.spend());
    if (cell.kind == CellKind::audio && !generation->prompt.isEmpty()) cell.title = generation->prompt;
  }
  cell.accessibleName = itemName(cell, asset->type());
  return cell;
}

QString GalleryPresenter::title() const { return locationTitle(store_, state_.location()); }

QString GalleryPresenter::countText() const {
  const int items = count() - jobCount_;
  return texts::itemCount(shell::countText(items), items);
}

QString GalleryPresenter::emptyTitle() const {
  return state_.filter().narrows() ? texts::noMatchTitle : texts::emptyGalleryTitle;
}

QString GalleryPresenter::emptyText() const {
  if (state_.filter().narrows()) return texts::noMatchText;
  return state_.location() == favoritesLocation ? texts::emptyFavoritesText : texts::emptyGalleryText;
}

const GalleryFilter& GalleryPresenter::filter() const { return state_.filter(); }

void GalleryPresenter::setFilter(const GalleryFilter& filter) {
  if (filter.sort != state_.filter().sort) {
    try {
      keepSort(store_.settings(), store_.workspaceRoot(), filter.sort);
    } catch (const SorvanError&) {
      // The order holds for this window; it is asked for again after the next start.
    }
  }
  state_.setFilter(filter);
}

void GalleryPresenter::clearFilters() { state_.clearFilters(); }

void GalleryPresenter::readSort() {
  GalleryFilter filter = state_.filter();
  filter.sort = keptSort(store_.settings(), store_.workspaceRoot());
  state_.setFilter(filter);
}

std::vector<std::pair<QString, QString>> GalleryPresenter::models() {
  std::vector<std::pair<QString, QString>> named;
  for (const QString& model : index_.models()) named.emplace_back(model, jobs_.modelName(model));
  return named;
}

void GalleryPresenter::refreshDates() {
  const GalleryFilter& filter = state_.filter();
  if (filter.days < 1 && filter.location != QStringLiteral("recent")) return;
  index_.forgetTimes();
  scheduleRefresh();
}

void GalleryPresenter::dismissJob(QUuid id) {
  const core::JobRef job = store_.job(id);
  if (!job || job->isActive()) return;
  dismissed_.insert(id);
  keepDismissed();
  refresh();
}

// A workspace is known by its path.
QString GalleryPresenter::dismissedKey() const {
  return QStringLiteral("dismissedJobs|") + store_.workspaceRoot().value_or(QString());
}

void GalleryPresenter::readDismissed() {
  dismissed_.clear();
  if (!store_.hasWorkspace()) return;
  for (const QString& text : store_.settings().get(dismissedKey(), std::vector<QString>()))
    dismissed_.insert(uuidFromText(text));
}

void GalleryPresenter::keepDismissed() {
  std::vector<QString> texts;
  // Jobs that are gone need no memory.
  for (const core::JobRef& job : store_.jobs())
    if (dismissed_.contains(job->id)) texts.push_back(uuidText(job->id));
  try {
    store_.settings().set(dismissedKey(), texts);
  } catch (const SorvanError&) {
    // The cell is away until the program ends; it comes back then, which loses nothing.
  }
}

}  // namespace sorvan::shell
