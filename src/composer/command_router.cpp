#include "composer/command_router.h"

#include "base/ids.h"
#include "base/sorvan_error.h"
#include "composer/command_texts.h"
#include "core/small_edits.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

constexpr int daysOfWeek = 7;
constexpr std::size_t fewestCompared = 2;
constexpr std::size_t mostCompared = 8;

void require(bool holds, const QString& message) {
  if (!holds) throw SorvanError(message);
}

Instant instantOf(const QDateTime& time) {
  return Instant::fromUnixSeconds(static_cast<double>(time.toMSecsSinceEpoch()) / 1000);
}

/// The calendar week of the day that was a week ago.
ClosedRange<Instant> lastWeek(const QDateTime& now, Qt::DayOfWeek firstDay) {
  const QDate day = now.date().addDays(-daysOfWeek);
  require(day.isValid(), texts::noLastWeek());
  const QDate first = day.addDays(-((day.dayOfWeek() - firstDay + daysOfWeek) % daysOfWeek));
  const QDateTime start = first.startOfDay(now.timeZone());
  const QDateTime end = first.addDays(daysOfWeek).startOfDay(now.timeZone());
  require(start.isValid() && end.isValid(), texts::noLastWeek());
  return {instantOf(start), instantOf(end)};
}

}  // namespace

LibraryFilter libraryFilter(const CompoundAssetFilter& compound) {
  LibraryFilter filter;
  filter.search = compound.query.value_or(QString());
  filter.model = compound.model.value_or(u"all"_s);
  if (compound.media) filter.type = rawValue(*compound.media);
  if (compound.status) filter.status = rawValue(*compound.status);
  filter.orientation = compound.orientation.value_or(u"all"_s);
  filter.favoritesOnly = compound.favorites.value_or(false);
  filter.days = compound.days.value_or(0);
  return filter;
}

LibraryFilter libraryFilter(const AssetFilterIntent& intent, const QDateTime& now, Qt::DayOfWeek firstDay) {
  LibraryFilter filter;
  if (const auto* model = std::get_if<ModelFilter>(&intent)) filter.model = model->model;
  if (const auto* media = std::get_if<MediaType>(&intent)) filter.type = rawValue(*media);
  if (const auto* status = std::get_if<AssetStatus>(&intent)) filter.status = rawValue(*status);
  if (std::holds_alternative<FavoritesFilter>(intent)) filter.favoritesOnly = true;
  if (std::holds_alternative<GeneratedLastWeek>(intent)) filter.generatedInterval = lastWeek(now, firstDay);
  return filter;
}

/// Carries one intent out. Each answers the note to show, and throws what is in the way.
struct SorvanCommandRouter::Execution {
  LibraryStore& store;
  ComposerState& state;
  LibraryDesk& desk;
  std::vector<AssetRef> selected;

  QString operator()(const SearchAssets& intent) {
    LibraryFilter filter;
    filter.search = intent.query;
    desk.showResults(filter);
    return texts::searching(intent.query);
  }
  QString operator()(const FilterAssets& intent) {
    desk.showResults(libraryFilter(intent.filter, desk.localNow(), desk.firstDayOfWeek()));
    return texts::filterApplied();
  }
  QString operator()(const CompoundAssetFilter& intent) {
    desk.showResults(libraryFilter(intent));
    return texts::filtersApplied();
  }
  QString operator()(const MoveAssets& intent) {
    require(!selected.empty(), texts::selectToMove());
    const ProjectRef project = projectNamed(intent.project);
    edit([&] { move(store, selected, project->id); });
    openProject(project->id);
    return texts::movedTo(project->name);
  }
  QString operator()(const FavoriteAssets& intent) {
    require(!selected.empty(), texts::selectToFavorite());
    edit([&] { setFavorite(store, selected, intent.favorite); });
    return intent.favorite ? texts::addedToFavorites() : texts::removedFromFavorites();
  }
  QString operator()(const SetAssetStatus& intent) {
    require(!selected.empty(), texts::selectToSetStatus());
    edit([&] { setStatus(store, selected, intent.status); });
    return texts::markedAs(capitalized(intent.status));
  }
  QString operator()(const CreateProject& intent) {
    openProject(desk.createProject(intent.name));
    return texts::created(intent.name);
  }
  QString operator()(const CompareAssets&) {
    require(selected.size() >= fewestCompared && selected.size() <= mostCompared, texts::selectToCompare());
    desk.openContactSheet(desk.createContactSheet(selected, state.projectId()));
    return texts::comparing(static_cast<int>(selected.size()));
  }
  QString operator()(const ShowLineage&) {
    require(selected.size() == 1, texts::selectOneForLineage());
    desk.openLineage(selected.front()->id);
    return texts::showingHistory();
  }
  QString operator()(const ShowGallery&) {
    desk.showGallery(std::nullopt);
    return texts::backToGallery();
  }
  QString operator()(const Unsupported& intent) { throw SorvanError(intent.message); }
  QString operator()(const Unknown& intent) { throw SorvanError(intent.message); }
  QString operator()(const GenerationInstruction& intent) {
    const Submission submission = makeSubmission(store, state, intent, selected);
    const std::optional<QUuid> comparison = desk.enqueue(submission);
    desk.showGallery(submission.project ? uuidText(*submission.project) : u"inbox"_s);
    if (comparison) desk.openComparison(*comparison);
    return submission.note;
  }

  ProjectRef projectNamed(const QString& name) const {
    // Case aside, and nothing else: “Resume” and “Résumé” are two projects.
    const QString wanted = name.toCaseFolded();
    std::vector<ProjectRef> found;
    for (const ProjectRef& project : store.projects())
      if (project->name.toCaseFolded() == wanted) found.push_back(project);
    require(!found.empty(), texts::noProjectNamed(name));
    require(found.size() == 1, texts::severalProjects());
    return found.front();
  }
  void openProject(const QUuid& project) {
    desk.showGallery(uuidText(project));
    state.setProject(project);
  }
  /// An edit of the library tells its failure as the store's error, not by throwing.
  template <class Edit>
  void edit(Edit change) {
    store.setError(std::nullopt);
    change();
    if (store.error()) throw SorvanError(*store.error());
  }
};

SorvanCommandRouter::SorvanCommandRouter(LibraryStore& store, ComposerState& state, LibraryDesk& desk)
    : store_(store), state_(state), desk_(desk) {}

std::vector<AssetRef> SorvanCommandRouter::selected() const {
  std::vector<AssetRef> assets;
  for (const QUuid& id : desk_.selection())
    if (const AssetRef asset = store_.asset(id); asset && !asset->isTrashed()) assets.push_back(asset);
  return assets;
}

bool SorvanCommandRouter::route(const SorvanIntent& intent) {
  try {
    Execution execution{store_, state_, desk_, selected()};
    const QString note = std::visit(execution, intent);
    // What belonged to the prompt goes with it; a command leaves the request alone.
    if (std::holds_alternative<GenerationInstruction>(intent)) {
      state_.finishPrompt();
    } else {
      state_.setText({});
      state_.setExpanded(false);
    }
    state_.report(note, false);
    return true;
  } catch (const std::exception& failure) {
    state_.report(describe(failure), true);
    return false;
  }
}

}  // namespace sorvan::composer
