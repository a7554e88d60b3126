#include "account/usage_stats.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <boost/describe.hpp>

#include "base/ids.h"
#include "base/json.h"
#include "base/sorvan_error.h"
#include "catalogue/gateway_address.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::hours betweenReports{24};
constexpr std::chrono::seconds reportTimeout{20};
constexpr qsizetype longestFeature = 80;
constexpr qsizetype mostFeatures = 500;

struct UsageState {
  QMap<QString, qint64> counts;
  std::optional<QByteArray> report;
  std::optional<qint64> taken;
};
BOOST_DESCRIBE_STRUCT(UsageState, (), (counts, report, taken))

QString stateSetting() { return u"usageState"_s; }
QString olderSetting() { return u"usageCounts"_s; }
QString sharingSetting() { return u"usageSharing"_s; }
QString installSetting() { return u"usageInstall"_s; }

/// The id of this installation, made once; it says nothing else.
QString installID(Settings& settings) {
  QString id = settings.get<QString>(installSetting(), QString());
  if (uuidFromText(id).isNull()) {
    id = uuidText(newUuid());
    settings.set(installSetting(), id);
  }
  return id;
}

}  // namespace

UsageStats::UsageStats(Services with, QObject* parent) : QObject(parent), services(std::move(with)) {
  allowed = services.settings->get<bool>(sharingSetting(), false);
  if (const auto state = services.settings->get<UsageState>(stateSetting())) {
    counted = state->counts;
    pending = state->report.value_or(QByteArray());
    taken = state->taken.value_or(0);
  } else {
    counted = services.settings->get<QMap<QString, qint64>>(olderSetting(), {});
  }
}

void UsageStats::keep() {
  UsageState state;
  state.counts = counted;
  if (!pending.isEmpty()) state.report = pending;
  state.taken = taken;
  try {
    services.settings->set(stateSetting(), state);
    if (services.settings->contains(olderSetting())) services.settings->remove(olderSetting());
  } catch (const SorvanError&) {
    // Counting disturbs nobody's work.
  }
  Q_EMIT changed();
}

void UsageStats::setEnabled(bool sharing) {
  if (sharing == allowed) return;
  allowed = sharing;
  if (!allowed) {
    ++rounds;
    pending.clear();
    keep();
  }
  try {
    services.settings->set(sharingSetting(), allowed);
  } catch (const SorvanError&) {
    // Held to for this run.
  }
  if (allowed && begun) startRounds();
  Q_EMIT changed();
}

void UsageStats::note(const QString& feature, int count) {
  if (!allowed || count <= 0 || feature.isEmpty() || feature.size() > longestFeature) return;
  if (!counted.contains(feature) && counted.size() >= mostFeatures) return;
  counted[feature] += count;
  keep();
}

void UsageStats::begin() {
  if (begun) return;
  begun = true;
  if (allowed) startRounds();
}

void UsageStats::startRounds() {
  const int round = ++rounds;
  tasks.spawnLater([this, round] { return run(round, tasks.token()); });
}

Task<> UsageStats::run(int round, std::stop_token stop) {
  Occasion occasion = Occasion::launch;
  while (round == rounds) {
    co_await report(occasion, stop);
    occasion = Occasion::timer;
    co_await services.clock->sleep(betweenReports, stop);
  }
}

QByteArray UsageStats::newReport(Occasion occasion) {
  return jsonText(contents(installID(*services.settings), occasion));
}

QByteArray UsageStats::nextReport() const {
  const QJsonObject next = pending.isEmpty()
                               ? contents(services.settings->get<QString>(installSetting(), QString()), Occasion::timer)
                               : QJsonDocument::fromJson(pending).object();
  return QJsonDocument(next).toJson(QJsonDocument::Indented);
}

QJsonObject UsageStats::contents(const QString& install, Occasion occasion) const {
  QJsonObject events;
  for (auto count = counted.begin(); count != counted.end(); ++count) events.insert(count.key(), count.value());
  return {{u"install"_s, install},
          {u"version"_s, services.version},
          {u"build"_s, services.build},
          {u"launch"_s, occasion == Occasion::launch},
          {u"events"_s, events},
          {u"report"_s, taken + 1}};
}

/// The counts move into the report before it leaves, so that nothing counts twice and nothing is lost.
Task<> UsageStats::report(Occasion occasion, std::stop_token stop) {
  if (!allowed || inFlight) co_return;
  inFlight = true;
  const auto end = qScopeGuard([this] { inFlight = false; });
  try {
    if (pending.isEmpty()) {
      if (occasion == Occasion::timer && counted.isEmpty()) co_return;
      pending = newReport(occasion);
      counted.clear();
      keep();
    }
    const QByteArray body = pending;
    const bool isTaken = co_await sent(body, stop);
    if (!isTaken || pending != body) co_return;
    pending.clear();
    ++taken;
    keep();
  } catch (const SorvanError&) {
    // It goes again the next time, as it is.
  }
}

Task<bool> UsageStats::sent(QByteArray body, std::stop_token stop) {
  const QUrl gateway = gatewayOf(*services.settings);
  if (gateway.scheme() != u"https"_s) co_return false;
  HttpRequest request;
  request.url = gatewayURL(gateway, u"v1/t/app"_s);
  request.verb = "POST";
  request.headers = {{"Content-Type", "application/json"}};
  request.body = std::move(body);
  request.idleTimeout = reportTimeout;
  const HttpReply reply = co_await services.transport->send(std::move(request), stop);
  co_return reply.succeeded();
}

}  // namespace sorvan::account
