#include "shell/sidebar_presenter.h"

#include "base/ids.h"
#include "core/library_store.h"
#include "shell/locations.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <QDir>
#include <QHash>

namespace sorvan::shell {

namespace {

const QString historyKey = QStringLiteral("history");

// How many items each location holds, in one pass.
struct Counts {
  qsizetype all = 0;
  qsizetype favorites = 0;
  qsizetype inbox = 0;
  qsizetype trash = 0;
  QHash<QUuid, qsizetype> projects;
};

Counts countItems(const core::LibraryStore& store) {
  Counts counts;
  for (const core::AssetRow& row : store.assetRows()) {
    if (row.trashed) {
      ++counts.trash;
      continue;
    }
    ++counts.all;
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
  connect(&store_, &core::LibraryStore::revisionChanged, this, &SidebarPresenter::scheduleChanged);
  connect(&store_, &core::LibraryStore::workspaceChanged, this, &SidebarPresenter::scheduleChanged);
  connect(&state_, &WorkspaceState::locationChanged, this, &SidebarPresenter::changed);
  connect(&state_, &WorkspaceState::modeChanged, this, &SidebarPresenter::changed);
}

void SidebarPresenter::scheduleChanged() {
  if (changeScheduled_) return;
  changeScheduled_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        changeScheduled_ = false;
        Q_EMIT changed();
      },
      Qt::QueuedConnection);
}

SidebarDisplay SidebarPresenter::display() const {
  SidebarDisplay display;
  display.projectsTitle = texts::projects;
  display.everywhereTitle = texts::everywhere;
  const auto root = store_.workspaceRoot();
  if (!root) return display;
  display.workspaceName = QDir(*root).dirName();
  display.workspacePath = shortened(*root);

  const Counts counts = countItems(store_);
  auto add = [&](SidebarSection section, const QString& key, const QString& title, const QString& icon,
                 qsizetype count) {
    const bool current = state_.mode().kind != ModeKind::activity && state_.location() == key;
    display.rows.push_back({key, section, title, icon, countText(count), {}, current});
  };
  add(SidebarSection::library, allMediaLocation, texts::allMedia, QStringLiteral("images"), counts.all);
  add(SidebarSection::library, favoritesLocation, texts::favorites, QStringLiteral("heart"), counts.favorites);
  add(SidebarSection::library, inboxLocation, texts::inbox, QStringLiteral("inbox"), counts.inbox);
  for (const core::ProjectRef& project : store_.projects()) {
    if (project->archived) continue;
    add(SidebarSection::projects, uuidText(project->id), project->name, QStringLiteral("folder"),
        counts.projects.value(project->id));
    display.rows.back().thumbnailPath = coverOf(store_, *project);
  }
  const auto active = static_cast<int>(store_.activeJobs().size());
  display.rows.push_back({historyKey,
                          SidebarSection::everywhere,
                          texts::history,
                          QStringLiteral("history"),
                          active > 0 ? texts::activeCount(active) : QString(),
                          {},
                          state_.mode().kind == ModeKind::activity});
  add(SidebarSection::everywhere, trashLocation, texts::trash, QStringLiteral("trash-2"), counts.trash);
  return display;
}

void SidebarPresenter::choose(const QString& key) {
  if (key == historyKey) {
    state_.setMode({ModeKind::activity});
  } else {
    state_.setLocation(key);
  }
}

}  // namespace sorvan::shell
