#pragma once

#include "base/task_scope.h"
#include "shell/room.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

namespace sorvan::account {
class UpdateNotice;
class UsageStats;
}  // namespace sorvan::account

namespace sorvan::shell {

class AlertsPresenter;

struct UpdatesDisplay {
  QString version;  // “This is Sorvan 0.1.0”
  QString state;    // what the last check came to; empty before the first
  bool checking = false;
  bool canCheck = true;
  QString banner;  // “Sorvan 2.1 is available”; empty when there is nothing newer, or when it was put off
};

struct UsageDisplay {
  bool sharing = false;
  QString heading;  // over the report
  QString report;   // what is sent, as it is sent, one value a line; empty while nothing is sent
};

// The settings' page of usage counts and updates, and the news of a newer build in the window. Main thread. Await `drain`
// before what it stands on goes.
class UpdatesPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    account::UsageStats& usage;
    account::UpdateNotice& updates;
    AlertsPresenter& alerts;
    QString version;
    std::function<void(const QUrl& address)> openInBrowser;
  };
  explicit UpdatesPresenter(Ports ports, QObject* parent = nullptr);

  UpdatesDisplay updates() const;
  UsageDisplay usage() const;
  // Holds at once and is remembered. Off, a report that has not arrived is forgotten.
  void setSharing(bool sharing);
  // Asks for the newest version; the answer stands in `updates`.
  void check();
  // The same by the menu: the answer comes as an alert, unless it is a newer build, which the window tells by itself.
  void checkAndTell();
  // Opens the page of the newer build in the browser.
  void download();
  // The same build is not told of again.
  void later();

  Task<> drain() { return tasks_.drain(); }

 Q_SIGNALS:
  void changed();

 private:
  enum class Telling { page, alert };
  static Task<> ask(UpdatesPresenter* self, Telling telling, std::stop_token stop);
  QString outcome() const;

  Ports on_;
  bool checking_ = false;
  bool asked_ = false;
  base::TaskScope tasks_;
};

}  // namespace sorvan::shell
