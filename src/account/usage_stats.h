// Counts which features are used, with no content, and reports the counts once the user has allowed it.
#pragma once

#include <memory>

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QObject>
#include <QString>

#include "account/room.h"
#include "base/clock.h"
#include "base/settings.h"
#include "base/task_scope.h"
#include "platform/http.h"

namespace sorvan::account {

/// Thread: the main one. Await `drain` before it is destroyed. Everything fails in silence.
///
/// On disk: "usageSharing", the user's word; "usageInstall", an id made when first needed; "usageState", the counts and
/// a report that has left and not been taken yet, which is sent again byte for byte until it is.
class UsageStats : public QObject {
  Q_OBJECT

 public:
  struct Services {
    std::shared_ptr<HttpTransport> transport = {};
    std::shared_ptr<const Clock> clock = {};
    std::shared_ptr<Settings> settings = {};
    QString version = {};
    QString build = {};
  };
  explicit UsageStats(Services with, QObject* parent = nullptr);

  /// Off until the user allows it. Turning it off forgets a report that was not taken, and stops reporting.
  bool enabled() const { return allowed; }
  void setEnabled(bool sharing);

  /// Counts uses of a feature; nothing is counted while it is off.
  void note(const QString& feature, int count);

  /// Begins to report: now, as the report of a launch, and once a day from then on.
  void begin();

  const QMap<QString, qint64>& counts() const { return counted; }
  const QByteArray& pendingReport() const { return pending; }
  /// What goes to the gateway next, for people to read: the values of the report, one a line. Makes no id.
  QByteArray nextReport() const;
  Task<> whenIdle() { return tasks.whenIdle(); }
  Task<> drain() { return tasks.drain(); }

 Q_SIGNALS:
  /// The user's word, the counts or the report that is on its way.
  void changed();

 private:
  enum class Occasion { launch, timer };
  Task<> run(int round, std::stop_token stop);
  Task<> report(Occasion occasion, std::stop_token stop);
  Task<bool> sent(QByteArray body, std::stop_token stop);
  QByteArray newReport(Occasion occasion);
  QJsonObject contents(const QString& install, Occasion occasion) const;
  void startRounds();
  void keep();

  Services services;
  QMap<QString, qint64> counted;
  QByteArray pending;
  qint64 taken = 0;  ///< reports that the gateway has taken
  bool allowed = false;
  bool begun = false;
  bool inFlight = false;
  int rounds = 0;
  TaskScope tasks;
};

}  // namespace sorvan::account
