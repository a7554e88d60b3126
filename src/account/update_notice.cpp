#include "account/update_notice.h"

#include "base/json.h"
#include "base/sorvan_error.h"
#include "catalogue/gateway_address.h"
#include "catalogue/service_hosts.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

QString dismissedSetting() { return u"updateDismissedBuild"_s; }
constexpr std::chrono::seconds checkTimeout{20};
constexpr qint64 largestAnswer = 1 << 20;  // bytes
constexpr qsizetype longestVersion = 40;

}  // namespace

QUrl AppRelease::download() const { return httpsAddress(url); }

UpdateNotice::UpdateNotice(Services with, QObject* parent) : QObject(parent), services(std::move(with)) {}

void UpdateNotice::check() {
  if (!canCheck()) return;
  tasks.spawnLater([this] { return ask(Asking::quietly, tasks.token()); });
}

void UpdateNotice::checkAgain() {
  if (!canCheck()) return;
  tasks.spawnLater([this] { return ask(Asking::forTheUser, tasks.token()); });
}

Task<> UpdateNotice::ask(Asking asking, std::stop_token stop) {
  answered = false;
  try {
    const QUrl gateway = gatewayOf(*services.settings);
    if (gateway.scheme() != u"https"_s) co_return;
    HttpRequest request;
    request.url = gatewayURL(gateway, u"v1/app"_s);
    request.idleTimeout = checkTimeout;
    request.maximumBytes = largestAnswer;
    const HttpReply reply = co_await services.transport->send(std::move(request), stop);
    if (!reply.succeeded()) co_return;
    const AppRelease release = decodeJson<AppRelease>(reply.body);
    answered = true;
    take(release, asking);
  } catch (const SorvanError&) {
    // The next start asks again.
  }
}

void UpdateNotice::consider(const AppRelease& release) { take(release, Asking::quietly); }

void UpdateNotice::take(const AppRelease& release, Asking asking) {
  const qint64 putOff = asking == Asking::quietly ? services.settings->get<qint64>(dismissedSetting(), 0) : 0;
  const bool isNews = release.build > services.current && release.build > putOff;
  const bool isPlain = !release.version.isEmpty() && release.version.size() <= longestVersion;
  if (!isNews || !isPlain || release.download().isEmpty()) return;
  found = release;
  Q_EMIT changed();
}

void UpdateNotice::dismiss() {
  if (!found) return;
  try {
    services.settings->set(dismissedSetting(), found->build);
  } catch (const SorvanError&) {
    // It comes back at the next start.
  }
  found.reset();
  Q_EMIT changed();
}

}  // namespace sorvan::account
