#include "shell/store_messages.h"

#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/texts.h"
#include "shell/trash_texts.h"
#include "shell/workspace_state.h"

#include <utility>

namespace sorvan::shell {

StoreMessages::StoreMessages(core::LibraryStore& store, AlertsPresenter& alerts, WorkspaceState& state,
                             QObject* parent)
    : QObject(parent), store_(store), alerts_(alerts), state_(state) {
  connect(&store_, &core::LibraryStore::errorChanged, this, &StoreMessages::showError);
  connect(&store_, &core::LibraryStore::noticeChanged, this, &StoreMessages::showNotice);
  connect(&alerts_, &AlertsPresenter::toastDismissed, this, [this](quint64 id) {
    if (shownNotice_ != id) return;
    shownNotice_.reset();
    store_.setNotice(std::nullopt);
  });
  showError();
  showNotice();
}

void StoreMessages::showError() {
  const auto before = std::exchange(told_, store_.error());
  if (told_) return tell(*told_);
  // The store takes back what it said last.
  if (before && unread_.contains(*before)) alerts_.withdraw(unread_.take(*before));
}

void StoreMessages::tell(const QString& error) {
  if (unread_.contains(error)) return;
  Alert alert{0, AlertTone::error, texts::errorTitle, error, {}};
  if (store_.canRetryMetadataSave())
    alert.buttons.push_back({texts::trySavingAgain, AlertButtonRole::primary, false});
  alert.buttons.push_back({texts::ok, alert.buttons.empty() ? AlertButtonRole::primary : AlertButtonRole::plain, true});
  const int retryButton = alert.buttons.size() > 1 ? 0 : -1;
  unread_.insert(error, alerts_.ask(std::move(alert), [this, error, retryButton](int button) {
    answered(error, button == retryButton ? Answered::tryAgain : Answered::dismissed);
  }));
}

void StoreMessages::answered(const QString& text, Answered answer) {
  unread_.remove(text);
  if (store_.error() == text) store_.setError(std::nullopt);
  if (answer != Answered::tryAgain) return;
  store_.retryMetadataSave();
  // A save that fails for the same reason reports nothing new, and must not look like one that worked.
  if (store_.canRetryMetadataSave() && !store_.error()) store_.setError(text);
}

void StoreMessages::showNotice() {
  const auto outdated = std::exchange(shownNotice_, std::nullopt);
  if (store_.notice()) {
    const bool leadsToTrash = store_.notice()->contains(texts::trash);
    const QString action = leadsToTrash ? texts::showTrash : texts::ok;
    shownNotice_ = alerts_.showToast({0, AlertTone::information, *store_.notice(), {}, action, true},
                                     [this, leadsToTrash] {
                                       if (leadsToTrash) state_.setLocation(trashLocation);
                                     });
  }
  if (outdated) alerts_.dismissToast(*outdated);
}

}  // namespace sorvan::shell
