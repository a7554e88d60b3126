#include "shell/views/wall_menus.h"

#include <QMenu>

#include "core/library_store.h"
#include "shell/actions_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/filter_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/jobs_presenter.h"
#include "shell/views/menus.h"
#include "shell/views/texts.h"
#include "shell/views/wall_texts.h"
#include "shell/workspace_state.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QString plain(QString text) { return text.replace(u'&', u"&&"_s); }

void addIfEnabled(QMenu& menu, QAction* action) {
  if (action && action->isEnabled()) menu.addAction(action);
}

}  // namespace

WallMenus::WallMenus(const Menus& menus, Presenters presenters, QWidget* window)
    : QObject(window), menus_(menus), on_(presenters), window_(window) {}

void WallMenus::open(QPoint globalPosition) {
  QMenu* menu = make();
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (menu->isEmpty()) return menu->deleteLater();
  menu->popup(globalPosition);
}

QMenu* WallMenus::make() const {
  auto* menu = new QMenu(window_);
  menu->setAccessibleName(texts::wallMenu());
  if (on_.state->selection().isEmpty())
    fillForGround(*menu);
  else
    fillForSelection(*menu);
  return menu;
}

// What the item menu offers, with the places to move to at hand, then what leaves the library and what removes.
void WallMenus::fillForSelection(QMenu& menu) const {
  menus_.fillMenu(menu, MenuId::item, Menus::Rows::offeredNow);
  addDestinations(menu);
  addJobEntries(menu);
  menu.addSeparator();
  if (on_.curation->hasLiveItems() || on_.curation->hasTrashedItems())
    addIfEnabled(menu, menus_.action(ActionId::copy));
  menu.addSeparator();
  QAction* trash = menus_.action(ActionId::moveToTrash);
  trash->setProperty("tone", u"danger"_s);
  addIfEnabled(menu, trash);
}

// Takes the place of the row that would open a list of its own.
void WallMenus::addDestinations(QMenu& menu) const {
  QAction* row = menus_.action(ActionId::moveToProject);
  if (!menu.actions().contains(row)) return;
  const std::vector<Destination> places = on_.curation->destinations();
  if (!places.empty()) {
    auto* submenu = new QMenu(texts::moveToProjectMenu(), &menu);
    menu.insertMenu(row, submenu);
    for (const Destination& place : places)
      connect(submenu->addAction(plain(place.name)), &QAction::triggered, on_.curation,
              [this, project = place.project] { on_.curation->moveTo(project); });
  }
  menu.removeAction(row);
}

void WallMenus::addJobEntries(QMenu& menu) const {
  std::vector<QUuid> active;
  std::vector<QUuid> ended;
  for (int index = 0; index < on_.gallery->jobCount(); ++index) {
    const QUuid id = on_.gallery->idAt(index);
    if (!on_.state->selection().contains(id)) continue;
    (on_.jobs->job(id).action == JobAction::cancel ? active : ended).push_back(id);
  }
  if (active.empty() && ended.empty()) return;
  menu.addSeparator();
  if (!active.empty())
    connect(menu.addAction(texts::cancelGenerations(static_cast<qsizetype>(active.size()))), &QAction::triggered,
            on_.jobs, [this, active] {
              for (const QUuid& id : active) on_.jobs->cancel(id);
            });
  if (!ended.empty())
    connect(menu.addAction(texts::removeFromGallery()), &QAction::triggered, on_.gallery, [this, ended] {
      for (const QUuid& id : ended) on_.gallery->dismissJob(id);
    });
}

void WallMenus::fillForGround(QMenu& menu) const {
  addIfEnabled(menu, menus_.action(ActionId::selectAll));
  if (on_.filters->narrows())
    connect(menu.addAction(texts::clearFilters()), &QAction::triggered, on_.filters, &FilterPresenter::clear);
  menu.addSeparator();
  QMenu* order = menu.addMenu(texts::orderMenu());
  const std::vector<QString> sorts = on_.filters->sorts();
  for (int index = 0; index < static_cast<int>(sorts.size()); ++index) {
    QAction* choice = order->addAction(sorts[static_cast<size_t>(index)]);
    choice->setCheckable(true);
    choice->setChecked(index == on_.filters->sort());
    connect(choice, &QAction::triggered, on_.filters, [this, index] { on_.filters->setSort(index); });
  }
  addIfEnabled(menu, menus_.action(ActionId::toggleFilters));
  menu.addSeparator();
  addIfEnabled(menu, menus_.action(ActionId::largerThumbnails));
  addIfEnabled(menu, menus_.action(ActionId::smallerThumbnails));
}

}  // namespace sorvan::views
