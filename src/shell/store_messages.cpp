#include "shell/store_messages.h"

#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/texts.h"

#include <utility>

namespace sorvan::shell {

StoreMessages::StoreMessages(core::LibraryStore& store, AlertsPresenter& alerts, QObject* parent)
    : QObject(parent), store_(store), alerts_(alerts) {
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
  const auto outdated = std::exchange(shownError_, std::nullopt);
  if (store_.error()) {
    const QString text = *store_.error();
    Alert alert{0, AlertTone::error, texts::errorTitle, text, {}};
    if (store_.canRetryMetadataSave())
      alert.buttons.push_back({texts::trySavingAgain, AlertButtonRole::primary, false});
    alert.buttons.push_back(
        {texts::ok, alert.buttons.empty() ? AlertButtonRole::primary : AlertButtonRole::plain, true});
    const int retryButton = alert.buttons.size() > 1 ? 0 : -1;
    shownError_ = alerts_.ask(std::move(alert), [this, text, retryButton](int button) {
      answered(text, button == retryButton ? Answered::tryAgain : Answered::dismissed);
    });
  }
  // The new one is queued first, so that the window never flashes empty between the two.
  if (outdated) alerts_.withdraw(*outdated);
}

void StoreMessages::answered(const QString& text, Answered answer) {
  shownError_.reset();
  if (store_.error() == text) store_.setError(std::nullopt);
  if (answer != Answered::tryAgain) return;
  store_.retryMetadataSave();
  // A save that fails for the same reason reports nothing new, and must not look like one that worked.
  if (store_.canRetryMetadataSave() && !store_.error()) store_.setError(text);
}

void StoreMessages::showNotice() {
  const auto outdated = std::exchange(shownNotice_, std::nullopt);
  if (store_.notice()) shownNotice_ = alerts_.showToast({0, AlertTone::information, *store_.notice(), {}, {}, true});
  if (outdated) alerts_.dismissToast(*outdated);
}

}  // namespace sorvan::shell
