#include "shell/running_instance.h"

#include "base/file_lock.h"

#include <QCryptographicHash>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

namespace sorvan::shell {

namespace {

// The system's limit for the path of a socket, with room for its ending zero.
constexpr qsizetype longestSocketPath = 100;
constexpr int patienceMilliseconds = 3000;
// A link with a code; anything longer is no link of ours.
constexpr qint64 longestMessage = 8192;

}  // namespace

RunningInstance::RunningInstance(const QString& folder, QObject* parent) : QObject(parent), folder_(folder) {}
RunningInstance::~RunningInstance() = default;

QString RunningInstance::socketPath() const {
  const QString beside = folder_ + QStringLiteral("/instance.socket");
  if (QFile::encodeName(beside).size() <= longestSocketPath) return beside;
  const QByteArray mark = QCryptographicHash::hash(folder_.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
  const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return QStringLiteral("%1/sorvan-studio-%2.socket").arg(runtime, QString::fromLatin1(mark));
}

bool RunningInstance::become() {
  auto lock = std::make_unique<FileLock>(folder_ + QStringLiteral("/instance.lock"), std::chrono::milliseconds(0));
  if (!lock->isHeld()) return false;
  lock_ = std::move(lock);
  // Whoever holds the lock owns the socket: one that a crash left behind is no one's.
  QLocalServer::removeServer(socketPath());
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  connect(server_.get(), &QLocalServer::newConnection, this, [this] {
    while (QLocalSocket* socket = server_->nextPendingConnection()) receive(socket);
  });
  server_->listen(socketPath());
  return true;
}

void RunningInstance::receive(QLocalSocket* socket) {
  connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
  const auto read = [this, socket] {
    if (!socket->canReadLine()) {
      if (socket->bytesAvailable() > longestMessage) socket->abort();
      return;
    }
    const QString link = QString::fromUtf8(socket->readLine(longestMessage)).trimmed();
    socket->disconnectFromServer();
    Q_EMIT called(link);
  };
  connect(socket, &QLocalSocket::readyRead, this, read);
  read();
}

bool RunningInstance::callRunningOne(const QString& link) {
  QLocalSocket socket;
  socket.connectToServer(socketPath());
  if (!socket.waitForConnected(patienceMilliseconds)) return false;
  socket.write(link.toUtf8() + '\n');
  if (!socket.waitForBytesWritten(patienceMilliseconds)) return false;
  // The other side hangs up once it has read the line.
  return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(patienceMilliseconds);
}

}  // namespace sorvan::shell
