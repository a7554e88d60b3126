#include "shell/alerts_presenter.h"

#include "shell/texts.h"

#include <algorithm>

namespace sorvan::shell {

namespace {
// More cards than this would hide the wall.
constexpr std::size_t mostToasts = 3;
}  // namespace

AlertsPresenter::AlertsPresenter(QObject* parent) : QObject(parent) {}

quint64 AlertsPresenter::ask(Alert alert, Answer answered) {
  alert.id = nextId_++;
  const quint64 id = alert.id;
  waiting_.push_back({std::move(alert), std::move(answered)});
  if (waiting_.size() == 1) advance();
  return id;
}

void AlertsPresenter::showError(const QString& text) {
  ask({0, AlertTone::error, texts::errorTitle, text, {{texts::ok, AlertButtonRole::primary, true}}}, {});
}

void AlertsPresenter::showInformation(const QString& title, const QString& text) {
  ask({0, AlertTone::information, title, text, {{texts::ok, AlertButtonRole::primary, true}}}, {});
}

void AlertsPresenter::withdraw(quint64 id) {
  const auto found =
      std::find_if(waiting_.begin(), waiting_.end(), [id](const Waiting& w) { return w.alert.id == id; });
  if (found == waiting_.end()) return;
  waiting_.erase(found);
  advance();
}

void AlertsPresenter::answer(quint64 id, int button) {
  if (!current_ || current_->id != id || button < 0 || button >= static_cast<int>(current_->buttons.size())) return;
  const Answer answered = std::move(waiting_.front().answered);
  waiting_.pop_front();
  advance();
  if (answered) answered(button);
}

void AlertsPresenter::advance() {
  const quint64 shown = current_ ? current_->id : 0;
  const quint64 next = waiting_.empty() ? 0 : waiting_.front().alert.id;
  if (shown == next) return;
  current_ = waiting_.empty() ? std::nullopt : std::optional(waiting_.front().alert);
  Q_EMIT currentChanged();
}

quint64 AlertsPresenter::showToast(Toast toast, std::function<void()> action) {
  toast.id = nextId_++;
  const quint64 id = toast.id;
  if (action) toastActions_.emplace_back(id, std::move(action));
  toasts_.push_back(std::move(toast));
  if (const quint64 leaving = toasts_.size() > mostToasts ? firstToLeave() : 0; leaving != 0)
    dismissToast(leaving);
  else
    Q_EMIT toastsChanged();
  return id;
}

// The oldest of those that leave by themselves, else of those that need not stay; 0 when all must.
quint64 AlertsPresenter::firstToLeave() const {
  const auto first = [this](auto leaves) {
    const auto found = std::find_if(toasts_.begin(), toasts_.end() - 1, leaves);
    return found == toasts_.end() - 1 ? quint64{0} : found->id;
  };
  const quint64 leaving = first([](const Toast& toast) { return toast.leavesByItself(); });
  return leaving != 0 ? leaving : first([](const Toast& toast) { return !toast.stays; });
}

void AlertsPresenter::performToastAction(quint64 id) {
  const auto found =
      std::find_if(toastActions_.begin(), toastActions_.end(), [id](const auto& pair) { return pair.first == id; });
  if (found == toastActions_.end()) return;
  const auto action = found->second;
  dismissToast(id);
  action();
}

void AlertsPresenter::dismissToast(quint64 id) {
  std::erase_if(toastActions_, [id](const auto& pair) { return pair.first == id; });
  if (std::erase_if(toasts_, [id](const Toast& toast) { return toast.id == id; }) == 0) return;
  Q_EMIT toastDismissed(id);
  Q_EMIT toastsChanged();
}

}  // namespace sorvan::shell
