#include "shell/gallery_presenter.h"

#include "account/charges.h"
#include "base/ids.h"
#include "base/settings.h"
#include "catalogue/audio_models.h"
#include "core/library_store.h"
#include "shell/job_displays.h"
#include "shell/locations.h"
#include "shell/texts.h"
#include "shell/viewer_texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

// Cells to either side of the last one that was looked for.
constexpr int nearCells = 16;

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
  if (!cell.soundText.isEmpty() && cell.soundText != texts::soundKind) parts << cell.soundText;
  if (!cell.modelName.isEmpty()) parts << cell.modelName;
  if (!cell.statusText.isEmpty()) parts << cell.statusText;
  if (cell.rating > 0) parts << texts::stars(cell.rating);
  if (cell.favorite) parts << texts::favourite;
  if (cell.inTrash) parts << texts::inTrash;
  if (!cell.workText.isEmpty()) parts << cell.workText;
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

// What kind of sound it is, as far as its model tells.
void fillSound(GalleryCell& cell, const core::GenerationRef& made) {
  cell.soundText = texts::soundKind;
  cell.soundIcon = QStringLiteral("audio-lines");
  const auto kind = made ? catalogue::audioKindOf(made->model) : std::nullopt;
  if (!kind) return;
  switch (*kind) {
    case catalogue::AudioKind::voice:
      cell.soundText = texts::voiceKind;
      cell.soundIcon = QStringLiteral("mic");
      return;
    case catalogue::AudioKind::music:
      cell.soundText = texts::musicKind;
      cell.soundIcon = QStringLiteral("music");
      return;
    case catalogue::AudioKind::effect:
      cell.soundText = texts::effectKind;
      cell.soundIcon = QStringLiteral("audio-waveform");
      return;
  }
}

}  // namespace

GalleryPresenter::GalleryPresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& jobs, QObject* parent)
    : QObject(parent), store_(store), state_(state), jobs_(jobs), index_(store, [&jobs](const QString& model) {
        return jobs.modelName(model);
      }) {
  connect(&store_, &core::LibraryStore::revisionChanged, &refreshSoon_, &OncePerTurn::request);
  connect(&store_, &core::LibraryStore::workspaceChanged, this, [this] {
    readDismissed();
    readSort();
    refreshSoon_.request();
  });
  connect(&index_, &GalleryIndex::searchGrew, &refreshSoon_, &OncePerTurn::request);
  connect(&state_, &WorkspaceState::filterChanged, this, &GalleryPresenter::refresh);
  connect(&state_, &WorkspaceState::locationChanged, this, &GalleryPresenter::refresh);
  connect(&jobs_, &JobDisplays::ticked, this, &GalleryPresenter::contentChanged);
  readDismissed();
  readSort();
  refresh();
}

GalleryPresenter::~GalleryPresenter() = default;

void GalleryPresenter::refresh() {
  refreshSoon_.withdraw();
  readLocation();
  work_ = jobs_.workOnItems();
  std::vector<Entry> collected;
  collected.reserve(entries_.size() + 8);
  collectJobs(collected);
  jobCount_ = static_cast<int>(collected.size());
  collectItems(collected);
  std::vector<WallSection> sections = collectSections(collected);
  const bool sameLayout = collected == entries_ && sections == sections_;
  if (!sameLayout) places_.clear();
  entries_ = std::move(collected);
  sections_ = std::move(sections);
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
           : location == recentLocation  ? Place::recent
           : location == inboxLocation   ? Place::inbox
           : location == trashLocation   ? Place::trash
           : project_.isNull()           ? Place::everything
                                         : Place::project;
}

bool GalleryPresenter::isHere(const core::GenerationJob& job) const {
  // What is at work or needs somebody stays where it was started, whatever a filter asks of the items.
  if (state_.filter().narrows() && !job.isActive() && job.status != core::jobStatus::failed) return false;
  if (place_ == Place::recent && !job.isActive() && job.createdAt < recentCutoff(store_.now())) return false;
  return place_ != Place::favorites && place_ != Place::trash && isInProject(job.projectID);
}

bool GalleryPresenter::isInProject(const std::optional<QUuid>& project) const {
  if (place_ == Place::inbox) return !project;
  return place_ == Place::everything || place_ == Place::recent || project == project_;
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

bool GalleryPresenter::jobsBelongToToday(const std::vector<Entry>& entries) {
  return std::all_of(entries.begin(), entries.begin() + jobCount_, [this](const Entry& entry) {
    const core::JobRef job = store_.job(entry.id);
    return job && days_.of(job->createdAt, store_.now()).title == texts::today;
  });
}

// The jobs lead the wall, so they stand under “Today” when that is when they were made, else under a head of their own.
std::vector<WallSection> GalleryPresenter::collectSections(const std::vector<Entry>& entries) {
  const GallerySort sort = state_.filter().sort;
  if (sort != GallerySort::newest && sort != GallerySort::oldest) return {};
  std::vector<WallSection> sections =
      daySections(days_, store_.assetRows(), index_.matching(state_.filter()), jobCount_, store_.now());
  if (jobCount_ == 0) return sections;
  const bool today = jobsBelongToToday(entries);
  if (today && !sections.empty() && sections.front().title == texts::today)
    sections.front().first = 0;
  else
    sections.insert(sections.begin(), {0, today ? texts::today : texts::generations, {}});
  return sections;
}

int GalleryPresenter::count() const { return static_cast<int>(entries_.size()); }
QUuid GalleryPresenter::idAt(int index) const { return entries_[static_cast<std::size_t>(index)].id; }
double GalleryPresenter::aspectRatioAt(int index) const {
  return entries_.at(static_cast<std::size_t>(index)).aspectRatio;
}
bool GalleryPresenter::isJobAt(int index) const { return entries_.at(static_cast<std::size_t>(index)).isJob; }
int GalleryPresenter::jobCount() const { return jobCount_; }

// Who asks for one cell asks for its neighbours next, so they are looked at first. Who asks for many, such as for all
// that is selected, needs a place for each at once.
int GalleryPresenter::indexOf(QUuid id) const {
  const int last = count() - 1;
  if (last < 0) return -1;
  const int from = std::clamp(lastFound_, 0, last);
  for (int index = std::max(0, from - nearCells); index <= std::min(last, from + nearCells); ++index)
    if (idAt(index) == id) return lastFound_ = index;
  if (places_.isEmpty()) {
    places_.reserve(count());
    for (int index = 0; index <= last; ++index) places_.insert(idAt(index), index);
  }
  const int found = places_.value(id, -1);
  if (found >= 0) lastFound_ = found;
  return found;
}

GalleryCell GalleryPresenter::cellAt(int index) const {
  const Entry& entry = entries_.at(static_cast<std::size_t>(index));
  return entry.isJob ? jobCell(entry) : itemCell(entry);
}

GalleryCell GalleryPresenter::jobCell(const Entry& entry) const {
  GalleryCell cell;
  cell.id = entry.id;
  cell.kind = CellKind::job;
  cell.aspectRatio = entry.aspectRatio;
  cell.job = jobs_.display(entry.id);
  cell.accessibleName = jobName(cell.job);
  return cell;
}

GalleryCell GalleryPresenter::cellOf(QUuid item) const {
  if (const core::JobRef job = store_.job(item))
    return jobCell({item, static_cast<float>(jobs_.aspectRatio(*job)), true});
  const core::AssetRef asset = store_.asset(item);
  const bool measured = asset && asset->width > 0 && asset->height > 0;
  return itemCell({item, measured ? static_cast<float>(asset->width) / static_cast<float>(asset->height) : 1.6F});
}

bool GalleryPresenter::canShow(QUuid item) const {
  const core::AssetRef asset = store_.asset(item);
  return asset && (!asset->isTrashed() || place_ == Place::trash);
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
  cell.inTrash = asset->isTrashed();
  cell.rating = asset->rating.value_or(0);
  cell.workText = work_.value(entry.id);
  if (const core::GenerationRef generation = store_.generationOf(asset->id)) {
    const account::Charge charge = account::chargeOf(*generation, asset);
    cell.modelName = jobs_.modelName(generation->model);
    if (charge.cost) cell.costText = charge.costDisplay(jobs_.spend());
    if (cell.kind == CellKind::audio && !generation->prompt.isEmpty()) cell.title = generation->prompt;
  }
  if (cell.kind == CellKind::audio) fillSound(cell, store_.generationOf(asset->id));
  cell.accessibleName = itemName(cell, asset->type());
  return cell;
}

QString GalleryPresenter::title() const {
  return state_.mode().kind == ModeKind::searchResults ? titleOf(ModeKind::searchResults)
                                                       : locationTitle(store_, state_.location());
}

QString GalleryPresenter::countText() const {
  const int items = count() - jobCount_;
  return texts::itemCount(shell::countText(items), items);
}

QString GalleryPresenter::emptyTitle() const {
  if (state_.filter().narrows()) return texts::noMatchTitle;
  return state_.location() == trashLocation ? texts::emptyTrashTitle : texts::emptyGalleryTitle;
}

QString GalleryPresenter::emptyText() const {
  if (state_.filter().narrows()) return texts::noMatchText;
  if (state_.location() == trashLocation) return texts::emptyTrashText;
  return state_.location() == favoritesLocation ? texts::emptyFavoritesText : texts::emptyGalleryText;
}

QString GalleryPresenter::emptyAction() const { return state_.filter().narrows() ? texts::clearFilters : QString(); }

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

// Results that nothing narrows any more are the gallery.
void GalleryPresenter::clearFilters() {
  state_.clearFilters();
  if (state_.mode().kind == ModeKind::searchResults) state_.setMode({ModeKind::gallery});
}

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
  if (filter.days >= 1 || filter.location == QStringLiteral("recent")) index_.forgetTimes();
  // The day that is called today may be another one.
  refreshSoon_.request();
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
