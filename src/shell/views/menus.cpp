#include "shell/views/menus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "shell/views/texts.h"
#include "shell/views/wall_texts.h"

namespace sorvan::views {

Menus::Menus(ActionsPresenter& actions, QWidget* window, const std::vector<QWidget*>& mediaViews, QObject* parent)
    : QObject(parent), presenter_(actions), window_(window) {
  for (const ActionRow& row : actionTable()) add(row, window, mediaViews);
  connect(&presenter_, &ActionsPresenter::changed, this, &Menus::refresh);
  refresh();
}

void Menus::add(const ActionRow& row, QWidget* window, const std::vector<QWidget*>& mediaViews) {
  auto* action = new QAction(row.title, this);
  action->setCheckable(row.checkable);
  action->setMenuRole(QAction::NoRole);
  action->setShortcut(QKeySequence(row.shortcut, QKeySequence::PortableText));
  connect(action, &QAction::triggered, this, [this, id = row.id] { presenter_.trigger(id); });
  if (row.scope == KeyScope::mediaView) {
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    for (QWidget* view : mediaViews) view->addAction(action);
  } else {
    action->setShortcutContext(Qt::WindowShortcut);
    window->addAction(action);
  }
  actions_.insert(static_cast<int>(row.id), action);
}

namespace {

// A menu shows a key also where the views take it themselves.
QString keysOfViews(const ActionRow& row) {
  const QString keys = row.shortcut.isEmpty() ? shell::shownKeys(row) : QString();
  return keys.isEmpty() ? QString() : u'\t' + keys;
}

}  // namespace

void Menus::refresh() {
  for (const ActionRow& row : actionTable()) {
    QAction* own = action(row.id);
    own->setVisible(presenter_.isOffered(row.id));
    own->setEnabled(presenter_.isEnabled(row.id));
    own->setText(presenter_.title(row.id).replace(u'&', QStringLiteral("&&")) + keysOfViews(row));
    if (row.checkable) own->setChecked(presenter_.isChecked(row.id));
  }
}

namespace {

// Choices of one thing, which would fill a menu: they stand in one of their own. Empty for all others.
QString submenuTitle(ActionId id) {
  if (id >= ActionId::rateNone && id <= ActionId::rateFive) return texts::ratingMenu();
  if (id >= ActionId::statusDraft && id <= ActionId::statusRejected) return texts::statusMenu();
  return {};
}

}  // namespace

// The menu that holds the row: `menu` itself, or one inside it that is made when its first row comes.
QMenu* Menus::submenuFor(QMenu& menu, const ActionRow& row) const {
  const QString title = submenuTitle(row.id);
  if (title.isEmpty()) return &menu;
  for (QAction* entry : menu.actions())
    if (entry->menu() && entry->menu()->title() == title) return entry->menu();
  return menu.addMenu(title);
}

void Menus::fillMenu(QMenu& menu, MenuId id, Rows rows) const {
  std::optional<int> group;
  for (const ActionRow& row : actionTable()) {
    const bool now = rows == Rows::offeredNow;
    if (row.menu != id || (now && (row.checkable || !presenter_.isEnabled(row.id)))) continue;
    if (group && *group != row.group) menu.addSeparator();
    group = row.group;
    submenuFor(menu, row)->addAction(action(row.id));
    if (row.id == ActionId::openAnotherWorkspace && recents_) menu.addMenu(recents_);
  }
}

void Menus::setRecents(WelcomePresenter& recents) {
  recents_ = new QMenu(texts::openRecent(), window_);
  // Drives come and go, so the list is made when it is looked at.
  connect(recents_, &QMenu::aboutToShow, this, [this, &recents] { listRecents(recents); });
}

void Menus::listRecents(WelcomePresenter& recents) {
  recents_->clear();
  for (const RecentDisplay& recent : recents.recents()) {
    QAction* entry = recents_->addAction(QString(recent.title).replace(u'&', QStringLiteral("&&")));
    entry->setEnabled(recent.available);
    connect(entry, &QAction::triggered, &recents, [&recents, path = recent.path] { recents.openRecent(path); });
  }
  if (recents_->isEmpty()) {
    recents_->addAction(texts::noOtherWorkspaces())->setEnabled(false);
    return;
  }
  recents_->addSeparator();
  connect(recents_->addAction(texts::clearMenu()), &QAction::triggered, &recents, &WelcomePresenter::clearRecents);
}

void Menus::fill(QMenuBar& bar) const {
  for (const MenuId id : {MenuId::file, MenuId::edit, MenuId::view, MenuId::item, MenuId::generate, MenuId::help}) {
    QMenu* menu = bar.addMenu(u'&' + menuTitle(id));
    menu->setAccessibleName(menuTitle(id));
    fillMenu(*menu, id, Rows::all);
    if (menu->isEmpty()) menu->menuAction()->setVisible(false);
    const bool ofLibrary = id == MenuId::edit || id == MenuId::item || id == MenuId::generate;
    if (!ofLibrary) continue;
    const auto follow = [this, menu] { menu->menuAction()->setEnabled(presenter_.isEnabled(ActionId::newProject)); };
    connect(&presenter_, &ActionsPresenter::changed, menu, follow);
    follow();
  }
}

}  // namespace sorvan::views
