// The system's wish that the program ends: log-out, shutdown, an interrupt from
// the terminal.
#pragma once

#include <QObject>
#include <memory>

class QSocketNotifier;

namespace sorvan::app {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the event loop. One object
/// a process. Main thread.
class Termination : public QObject {
  Q_OBJECT

 public:
  explicit Termination(QObject* parent = nullptr);
  ~Termination() override;

 Q_SIGNALS:
  void requested();

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace sorvan::app
