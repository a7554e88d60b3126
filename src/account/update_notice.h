// Asks whether a newer build exists, and says so once.
#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QString>
#include <QUrl>
#include <boost/describe.hpp>

#include "account/room.h"
#include "base/settings.h"
#include "base/task_scope.h"
#include "platform/http.h"

namespace sorvan::account {

struct AppRelease {
  QString version;
  qint64 build = 0;
  QString url;
  std::optional<QString> notes;

  /// Where it is downloaded: https, or empty.
  QUrl download() const;
  bool operator==(const AppRelease&) const = default;
};
BOOST_DESCRIBE_STRUCT(AppRelease, (), (version, build, url, notes))

/// Thread: the main one. Await `drain` before it is destroyed. What fails is not told. The build that was put off stands
/// under the settings key "updateDismissedBuild".
class UpdateNotice : public QObject {
  Q_OBJECT

 public:
  struct Services {
    std::shared_ptr<HttpTransport> transport = {};
    std::shared_ptr<Settings> settings = {};
    qint64 current = 0;  ///< this program's build; 0 for one in development, which is told nothing
  };
  explicit UpdateNotice(Services with, QObject* parent = nullptr);

  const std::optional<AppRelease>& available() const { return found; }
  /// False for a build in development, which has no place among the published ones.
  bool canCheck() const { return services.current > 0; }
  /// Asks the gateway.
  void check();
  /// Asks because the user wants to know: a build that was put off is told again. See `whenIdle`.
  void checkAgain();
  /// Whether the last question was answered.
  bool wasAnswered() const { return answered; }
  void consider(const AppRelease& release);
  /// Puts the build off; a newer one is told again.
  void dismiss();

  Task<> whenIdle() { return tasks.whenIdle(); }
  Task<> drain() { return tasks.drain(); }

 Q_SIGNALS:
  void changed();

 private:
  enum class Asking { quietly, forTheUser };
  Task<> ask(Asking asking, std::stop_token stop);
  void take(const AppRelease& release, Asking asking);

  Services services;
  std::optional<AppRelease> found;
  bool answered = false;
  TaskScope tasks;
};

}  // namespace sorvan::account
