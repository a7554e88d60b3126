#include "shell/updates_presenter.h"

#include "account/account_texts.h"
#include "account/update_notice.h"
#include "account/usage_stats.h"
#include "shell/alerts_presenter.h"
#include "shell/updates_texts.h"

namespace sorvan::shell {

UpdatesPresenter::UpdatesPresenter(Ports ports, QObject* parent) : QObject(parent), on_(std::move(ports)) {
  connect(&on_.usage, &account::UsageStats::changed, this, &UpdatesPresenter::changed);
  connect(&on_.updates, &account::UpdateNotice::changed, this, &UpdatesPresenter::changed);
}

QString UpdatesPresenter::outcome() const {
  if (const auto& release = on_.updates.available()) return account::texts::updateAvailable(release->version);
  if (!on_.updates.canCheck()) return texts::updatesDevelopment;
  return on_.updates.wasAnswered() ? texts::updatesNewest : texts::updatesUnanswered;
}

UpdatesDisplay UpdatesPresenter::updates() const {
  UpdatesDisplay display;
  display.version = texts::updatesVersion(on_.version);
  display.checking = checking_;
  display.canCheck = on_.updates.canCheck();
  if (checking_)
    display.state = texts::updatesChecking;
  else if (asked_ || !display.canCheck || on_.updates.available())
    display.state = outcome();
  if (const auto& release = on_.updates.available()) display.banner = account::texts::updateAvailable(release->version);
  return display;
}

UsageDisplay UpdatesPresenter::usage() const {
  UsageDisplay display;
  display.sharing = on_.usage.enabled();
  if (!display.sharing) {
    display.heading = texts::usageNothing;
    return display;
  }
  display.heading = on_.usage.pendingReport().isEmpty() ? texts::usageNextReport : texts::usageWaitingReport;
  display.report = QString::fromUtf8(on_.usage.nextReport());
  return display;
}

void UpdatesPresenter::setSharing(bool sharing) { on_.usage.setEnabled(sharing); }

void UpdatesPresenter::check() {
  if (!checking_) tasks_.spawn(ask(this, Telling::page, tasks_.token()));
}

void UpdatesPresenter::checkAndTell() {
  if (!checking_) tasks_.spawn(ask(this, Telling::alert, tasks_.token()));
}

Task<> UpdatesPresenter::ask(UpdatesPresenter* self, Telling telling, std::stop_token stop) {
  self->checking_ = true;
  self->on_.updates.checkAgain();
  Q_EMIT self->changed();
  co_await self->on_.updates.whenIdle();
  if (stop.stop_requested()) co_return;
  self->checking_ = false;
  self->asked_ = true;
  if (telling == Telling::alert) self->on_.alerts.showInformation(texts::updatesTitle, self->outcome());
  Q_EMIT self->changed();
}

void UpdatesPresenter::download() {
  if (const auto& release = on_.updates.available()) on_.openInBrowser(release->download());
}

void UpdatesPresenter::later() { on_.updates.dismiss(); }

}  // namespace sorvan::shell
