#include "shell/sidebar_presenter.h"

#include "base/ids.h"
#include "core/library_store.h"
#include "core/projects.h"
#include "shell/gallery_filter.h"
#include "shell/locations.h"
#include "shell/project_texts.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <QDir>
#include <QHash>

#include <algorithm>

namespace sorvan::shell {

namespace {

const QString historyKey = QStringLiteral("history");
const QString globalReferencesKey = QStringLiteral("global-references");
const QString costsKey = QStringLiteral("costs");
const QString healthKey = QStringLiteral("health");
const QString archivedKey = QStringLiteral("archived");

// How many items each location holds, in one pass.
struct Counts {
  qsizetype all = 0;
  qsizetype recent = 0;
  qsizetype favorites = 0;
  qsizetype inbox = 0;
  qsizetype trash = 0;
  QHash<QUuid, qsizetype> projects;
};

Counts countItems(const core::LibraryStore& store) {
  Counts counts;
  const Instant cutoff = recentCutoff(store.now());
  for (const core::AssetRow& row : store.assetRows()) {
    if (row.trashed) {
      ++counts.trash;
      continue;
    }
    ++counts.all;
    if (row.recentDate >= cutoff) ++counts.recent;
    if (row.favorite) ++counts.favorites;
    if (row.projectID) {
      ++counts.projects[*row.projectID];
    } else {
      ++counts.inbox;
    }
  }
  return counts;
}

QString shortened(const QString& path) {
  const QString home = QDir::homePath();
  const bool inside = path == home || path.startsWith(home + QLatin1Char('/'));
  return inside ? QLatin1Char('~') + path.mid(home.size()) : path;
}

QString coverOf(const core::LibraryStore& store, const core::Project& project) {
  const core::AssetRef cover = project.coverAssetID ? store.asset(*project.coverAssetID) : nullptr;
  return cover ? store.thumbnailOf(*cover).value_or(QString()) : QString();
}

}  // namespace

SidebarPresenter::SidebarPresenter(core::LibraryStore& store, WorkspaceState& state, QObject* parent)
    : QObject(parent), store_(store), state_(state) {
  connect(&store_, &core::LibraryStore::revisionChanged, &changeSoon_, &OncePerTurn::request);
  connect(&store_, &core::LibraryStore::workspaceChanged, &changeSoon_, &OncePerTurn::request);
  connect(&store_, &core::LibraryStore::metadataChanged, &changeSoon_, &OncePerTurn::request);
  connect(&store_, &core::LibraryStore::revisionChanged, this, &SidebarPresenter::leaveLostLocation);
  connect(&state_, &WorkspaceState::availableChanged, this, &SidebarPresenter::changed);
  connect(&state_, &WorkspaceState::locationChanged, this, &SidebarPresenter::changed);
  connect(&state_, &WorkspaceState::modeChanged, this, &SidebarPresenter::changed);
}

// The project of the location may be gone after an undo.
void SidebarPresenter::leaveLostLocation() {
  const QUuid project = uuidFromText(state_.location());
  if (!project.isNull() && !store_.project(project)) state_.setLocation(allMediaLocation);
}

bool SidebarPresenter::isCurrent(const QString& location) const {
  const ModeKind mode = state_.mode().kind;
  const bool elsewhere = mode == ModeKind::activity || mode == ModeKind::savedReferences || mode == ModeKind::costs ||
                         mode == ModeKind::searchResults;
  return !elsewhere && state_.location() == location;
}

SidebarDisplay SidebarPresenter::display() const {
  SidebarDisplay display;
  display.projectsTitle = texts::projects;
  display.everywhereTitle = texts::everywhere;
  const auto root = store_.workspaceRoot();
  if (!root) return display;
  display.workspaceName = QDir(*root).dirName();
  display.workspacePath = shortened(*root);
  display.addTitle = texts::newProject;

  const Counts counts = countItems(store_);
  const auto add = [&](const QString& key, const QString& title, const QString& icon, qsizetype count) -> SidebarRow& {
    display.rows.push_back({key, SidebarSection::library, title, icon, countText(count), {}, isCurrent(key)});
    return display.rows.back();
  };
  add(allMediaLocation, texts::allMedia, QStringLiteral("images"), counts.all);
  add(recentLocation, texts::recent, QStringLiteral("clock"), counts.recent);
  add(favoritesLocation, texts::favorites, QStringLiteral("heart"), counts.favorites).takesItems = true;
  add(inboxLocation, texts::inbox, QStringLiteral("inbox"), counts.inbox).takesItems = true;
  addProjects(display, counts.projects);
  addEverywhere(display);
  addFoot(display, counts.trash);
  return display;
}

void SidebarPresenter::addProjects(SidebarDisplay& display, const QHash<QUuid, qsizetype>& counts) const {
  const auto add = [&](const core::ProjectRef& project) {
    const QString key = uuidText(project->id);
    display.rows.push_back({key, SidebarSection::projects, project->name, QStringLiteral("folder"),
                            countText(counts.value(project->id)), coverOf(store_, *project), isCurrent(key),
                            project->archived ? SidebarRowKind::archivedProject : SidebarRowKind::project, true});
  };
  qsizetype archived = 0;
  for (const core::ProjectRef& project : store_.projects()) project->archived ? void(++archived) : add(project);
  if (archived == 0) return;
  const core::ProjectRef here = store_.project(uuidFromText(state_.location()));
  const bool open = archivedShown_ || (here && here->archived);
  display.rows.push_back({archivedKey,
                          SidebarSection::projects,
                          texts::archivedProjects,
                          open ? QStringLiteral("chevron-down") : QStringLiteral("chevron-right"),
                          countText(archived),
                          {},
                          false});
  if (!open) return;
  for (const core::ProjectRef& project : store_.projects())
    if (project->archived) add(project);
}

void SidebarPresenter::addEverywhere(SidebarDisplay& display) const {
  const auto add = [&](ModeKind mode, const QString& key, const QString& icon, const QString& count) {
    if (!state_.isAvailable(mode)) return;
    display.rows.push_back(
        {key, SidebarSection::everywhere, titleOf(mode), icon, count, {}, state_.mode().kind == mode});
  };
  const auto isGlobal = [](const core::SavedReferenceRef& reference) { return !reference->projectID; };
  const auto references = std::ranges::count_if(store_.savedReferences(), isGlobal);
  const auto active = static_cast<int>(store_.activeJobs().size());
  add(ModeKind::savedReferences, globalReferencesKey, QStringLiteral("at-sign"), countText(references));
  add(ModeKind::activity, historyKey, QStringLiteral("history"), active > 0 ? texts::activeCount(active) : QString());
  add(ModeKind::costs, costsKey, QStringLiteral("receipt-text"), {});
}

void SidebarPresenter::addFoot(SidebarDisplay& display, qsizetype inTrash) const {
  display.rows.push_back({trashLocation,
                          SidebarSection::foot,
                          texts::trash,
                          QStringLiteral("trash-2"),
                          countText(inTrash),
                          {},
                          isCurrent(trashLocation),
                          SidebarRowKind::plain,
                          true});
  // One area to review: what is saved beside the library.
  const bool unsaved = store_.canRetryMetadataSave();
  display.rows.push_back({healthKey,
                          SidebarSection::foot,
                          texts::workspaceHealthRow,
                          QStringLiteral("shield-check"),
                          unsaved ? countText(1) : QString(),
                          {},
                          false,
                          SidebarRowKind::plain,
                          false,
                          unsaved});
}

void SidebarPresenter::choose(const QString& key) {
  if (key == historyKey) return state_.setMode({ModeKind::activity});
  if (key == globalReferencesKey) return state_.setMode({ModeKind::savedReferences});
  if (key == costsKey) return state_.setMode({ModeKind::costs});
  if (key == healthKey) return Q_EMIT healthRequested();
  if (key == archivedKey) {
    archivedShown_ = !archivedShown_;
    return Q_EMIT changed();
  }
  state_.setLocation(key);
}

void SidebarPresenter::createProject(const QString& name) {
  try {
    const core::ProjectRef project = core::createProject(store_, name);
    state_.setLocation(uuidText(project->id));
  } catch (...) {
    store_.failOperation(std::current_exception());
  }
}

void SidebarPresenter::renameProject(const QString& key, const QString& name) {
  if (const core::ProjectRef project = store_.project(uuidFromText(key))) core::renameProject(store_, project, name);
}

void SidebarPresenter::setArchived(const QString& key, bool archived) {
  const core::ProjectRef project = store_.project(uuidFromText(key));
  if (!project) return;
  core::setArchived(store_, project, archived);
  if (project->archived && state_.location() == key) state_.setLocation(allMediaLocation);
}

}  // namespace sorvan::shell
