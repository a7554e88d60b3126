// A message bus of the test's own: nothing on it can be started, and nothing of the user's session is on it.
#pragma once

#include <QDBusConnection>
#include <QProcess>

#include "support/temporary_folder.h"

namespace sorvan::test {

class PrivateBus {
 public:
  PrivateBus() {
    const QString configuration = folder_.write(QStringLiteral("bus.conf"), R"(<busconfig><type>session</type>
<listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth><policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)");
    daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + configuration,
                                                  QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    while (!address_.contains('\n') && daemon_.waitForReadyRead(10'000)) address_ += daemon_.readAllStandardOutput();
  }
  ~PrivateBus() {
    for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
    daemon_.terminate();
    daemon_.waitForFinished(5000);
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // A connection of its own, as another program would have.
  QDBusConnection connection(const QString& name) {
    names_ += name;
    return QDBusConnection::connectToBus(QString::fromUtf8(address_.trimmed()), name);
  }

 private:
  TemporaryFolder folder_;
  QProcess daemon_;
  QByteArray address_;
  QStringList names_;
};

}  // namespace sorvan::test
