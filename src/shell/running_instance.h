#pragma once

#include "shell/room.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QLocalServer;
class QLocalSocket;

namespace sorvan::base {
class FileLock;
}

namespace sorvan::shell {

// One running program for each folder of user data. The lock dies with the process, so a crash leaves nothing in the
// way; the socket beside it carries the wish of a second start. Main thread.
class RunningInstance : public QObject {
  Q_OBJECT

 public:
  // `folder` is absolute and exists; the lock file and the socket are made in it.
  explicit RunningInstance(const QString& folder, QObject* parent = nullptr);
  ~RunningInstance() override;

  // Becomes the running one and listens. False when another process is it already.
  bool become();
  // Asks the running one to come to the front and, when there is one, hands it a link. False when it did not answer in
  // time. Called before the event loop starts.
  bool callRunningOne(const QString& link);

 Q_SIGNALS:
  // A second start asks; `link` is the address it was given, or empty.
  void called(const QString& link);

 private:
  QString socketPath() const;
  void receive(QLocalSocket* socket);

  QString folder_;
  std::unique_ptr<FileLock> lock_;
  std::unique_ptr<QLocalServer> server_;
};

}  // namespace sorvan::shell
