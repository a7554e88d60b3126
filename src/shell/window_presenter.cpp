#include "shell/window_presenter.h"

#include "base/settings.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"
#include "shell/alerts_presenter.h"
#include "shell/locations.h"
#include "shell/quit_rule.h"
#include "shell/texts.h"
#include "shell/workspace_state.h"

namespace sorvan::shell {

namespace {
const QString windowPlaceKey = QStringLiteral("windowPlace");
}  // namespace

WindowPresenter::WindowPresenter(core::LibraryStore& store, WorkspaceState& state, AlertsPresenter& alerts,
                                 QString applicationTitle, QObject* parent)
    : QObject(parent), store_(store), state_(state), alerts_(alerts), applicationTitle_(std::move(applicationTitle)) {
  connect(&store_, &core::LibraryStore::workspaceChanged, this, [this] {
    state_.reset();
    Q_EMIT changed();
  });
  connect(&store_, &core::LibraryStore::metadataChanged, this, &WindowPresenter::changed);
  connect(&state_, &WorkspaceState::modeChanged, this, &WindowPresenter::changed);
  connect(&state_, &WorkspaceState::locationChanged, this, &WindowPresenter::changed);
}

QString WindowPresenter::title() const { return applicationTitle_; }

QString WindowPresenter::accessibleName() const {
  if (!store_.hasWorkspace()) return applicationTitle_;
  return QStringLiteral("%1, %2").arg(state_.mode().title(), locationTitle(store_, state_.location()));
}

Banner WindowPresenter::banner() const {
  if (!store_.hasWorkspace()) return {};
  if (store_.canRetryMetadataSave()) return {texts::unsavedBanner, texts::openWorkspaceHealth};
  if (core::workspaceIsTemporary(store_)) return {texts::temporaryWorkspaceBanner, {}};
  if (state_.mode().kind == ModeKind::gallery && state_.location() == trashLocation)
    return {texts::trashKeepsFiles, {}, false};
  return {};
}

void WindowPresenter::performBannerAction() {
  if (store_.canRetryMetadataSave()) Q_EMIT healthRequested();
}

std::vector<ModeKind> WindowPresenter::modesHere() const {
  std::vector<ModeKind> modes = modesAt(store_, state_.location());
  std::erase_if(modes, [this](ModeKind kind) { return !state_.isAvailable(kind); });
  return modes;
}

void WindowPresenter::setInFront(bool inFront) {
  if (inFront_ == inFront) return;
  inFront_ = inFront;
  Q_EMIT inFrontChanged();
}

void WindowPresenter::comeForward(const QString& token) { Q_EMIT raiseRequested(token); }

std::optional<WindowPlace> WindowPresenter::rememberedPlace() const {
  return store_.settings().get<WindowPlace>(windowPlaceKey);
}

void WindowPresenter::rememberPlace(const WindowPlace& place) {
  if (rememberedPlace() == place) return;
  try {
    store_.settings().set(windowPlaceKey, place);
  } catch (const SorvanError&) {
    // The window opens at its first place next time.
  }
}

bool WindowPresenter::requestQuit() {
  const std::optional<QString> question = quitQuestion(store_);
  if (!question) {
    Q_EMIT quitAgreed();
    return true;
  }
  if (asking_) return false;
  asking_ = true;
  Alert alert{0,
              AlertTone::warning,
              texts::quitTitle,
              *question,
              {{texts::keepWorking, AlertButtonRole::primary, true}, {texts::quit, AlertButtonRole::plain, false}}};
  alerts_.ask(std::move(alert), [this](int button) {
    asking_ = false;
    if (button == 1) Q_EMIT quitAgreed();
  });
  return false;
}

}  // namespace sorvan::shell
