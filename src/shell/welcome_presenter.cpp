#include "shell/welcome_presenter.h"

#include "core/library_store.h"
#include "core/recent_workspaces.h"
#include "core/workspace_opening.h"
#include "shell/texts.h"

#include <QDir>
#include <QHash>
#include <QPointer>

namespace sorvan::shell {

namespace {

// The last two parts of the path: “Pictures/Sorvan”.
QString shortName(const QString& folder) {
  const QStringList parts = folder.split(QLatin1Char('/'), Qt::SkipEmptyParts);
  return parts.mid(std::max<qsizetype>(0, parts.size() - 2)).join(QLatin1Char('/'));
}

}  // namespace

WelcomePresenter::WelcomePresenter(core::LibraryStore& store, QString defaultWorkspace, QObject* parent)
    : QObject(parent), store_(store), defaultWorkspace_(std::move(defaultWorkspace)) {
  connect(&store_, &core::LibraryStore::workspaceChanged, this, &WelcomePresenter::shownChanged);
}

bool WelcomePresenter::isShown() const { return !store_.hasWorkspace() && !opening_; }

bool WelcomePresenter::isOpening() const { return !store_.hasWorkspace() && opening_; }

void WelcomePresenter::setOpening(bool opening) {
  if (std::exchange(opening_, opening) != opening) Q_EMIT shownChanged();
}

WelcomeDisplay WelcomePresenter::display() const {
  return {texts::applicationName,    texts::welcomeLine,         texts::useFolder(shortName(defaultWorkspace_)),
          texts::welcomeDefaultHelp, texts::chooseAnotherFolder, texts::welcomeNote};
}

void WelcomePresenter::useDefaultWorkspace() {
  try {
    core::openWorkspace(store_, defaultWorkspace_, core::Remember::yes);
  } catch (const std::exception& failure) {
    store_.setError(describe(failure));
  }
}

void WelcomePresenter::chooseWorkspace() {
  if (!chooser_ || asking_) return;
  asking_ = true;
  const FolderQuestion question{texts::openWorkspaceButton, texts::openWorkspaceMessage, core::chooserFolder(store_)};
  chooser_->chooseFolder(question, [self = QPointer(this)](const std::optional<QString>& folder) {
    if (!self) return;
    self->asking_ = false;
    if (folder) self->openFolder(*folder);
  });
}

std::vector<RecentDisplay> WelcomePresenter::recents() const {
  std::vector<RecentDisplay> listed;
  QHash<QString, int> names;
  for (const core::RecentWorkspace& recent : core::otherRecentWorkspaces(store_)) {
    listed.push_back({QDir(recent.path).dirName(), recent.path, core::isAvailable(recent)});
    ++names[listed.back().title];
  }
  for (RecentDisplay& recent : listed)
    if (names.value(recent.title) > 1) recent.title = texts::nameAndPath(recent.title, recent.path);
  return listed;
}

void WelcomePresenter::openRecent(const QString& path) {
  for (const core::RecentWorkspace& recent : core::otherRecentWorkspaces(store_))
    if (recent.path == path) return core::openRecent(store_, recent);
}

void WelcomePresenter::clearRecents() { core::clearRecentWorkspaces(store_); }

void WelcomePresenter::openFolder(const QString& path) { core::chooseWorkspace(store_, path); }

}  // namespace sorvan::shell
