#include "support_sandbox/sandbox_process.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QFile>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <stdexcept>

namespace sorvan::test {

namespace {

constexpr int limitMilliseconds = 30'000;

[[noreturn]] void fail(const QString& what) { throw std::runtime_error(what.toStdString()); }

QByteArray asJson(const QJsonValue& value) {
  if (value.isObject()) return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
  if (value.isArray()) return QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
  return {};
}

QByteArray callQuery(const QString& call, int count) {
  return "?call=" + call.toLatin1() + "&count=" + QByteArray::number(count);
}

}  // namespace

SandboxProcess::SandboxProcess() : SandboxProcess(Options()) {}

SandboxProcess::SandboxProcess(Options options) : options_(std::move(options)) {
  if (!folder_.isValid()) fail(QStringLiteral("No folder for the sandbox."));
  if (options_.stateFolder.isEmpty()) options_.stateFolder = folder_.filePath(QStringLiteral("state"));
  start();
}

SandboxProcess::~SandboxProcess() { end(); }

void SandboxProcess::start() {
  process_ = std::make_unique<QProcess>();
  process_->setProcessChannelMode(QProcess::SeparateChannels);
  process_->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_->start(QStringLiteral(SORVAN_SANDBOX),
                  QStringList{QStringLiteral("--write"), configurationPath(), QStringLiteral("--state"), stateFolder(),
                              QStringLiteral("--delay"), QString::number(options_.delayMilliseconds)} +
                      options_.more);
  while (!process_->canReadLine())
    if (!process_->waitForReadyRead(limitMilliseconds))
      fail(QStringLiteral("The sandbox did not start: %1").arg(QString::fromUtf8(process_->readAllStandardError())));
  if (process_->readLine().trimmed() != "ready") fail(QStringLiteral("The sandbox said something else than ready."));
  QFile file(configurationPath());
  if (!file.open(QIODevice::ReadOnly)) fail(QStringLiteral("The sandbox left no configuration."));
  configuration_ = QJsonDocument::fromJson(file.readAll()).object();
}

void SandboxProcess::end() {
  if (!process_) return;
  process_->terminate();
  if (!process_->waitForFinished(limitMilliseconds)) {
    process_->kill();
    process_->waitForFinished(limitMilliseconds);
  }
  process_.reset();
}

void SandboxProcess::restart() {
  end();
  start();
}

void SandboxProcess::killAndRestart() {
  process_->kill();
  process_->waitForFinished(limitMilliseconds);
  start();
}

QString SandboxProcess::configurationPath() const { return folder_.filePath(QStringLiteral("sandbox.json")); }
QString SandboxProcess::key() const { return configuration_.value(QStringLiteral("key")).toString(); }
QString SandboxProcess::stateFolder() const { return options_.stateFolder; }
QString SandboxProcess::authorityPath() const { return configuration_.value(QStringLiteral("authority")).toString(); }

QString SandboxProcess::proxyHost() const {
  return configuration_.value(QStringLiteral("proxy")).toString().section(QLatin1Char(':'), 0, 0);
}
quint16 SandboxProcess::proxyPort() const {
  return configuration_.value(QStringLiteral("proxy")).toString().section(QLatin1Char(':'), 1).toUShort();
}

SandboxProcess::Answer SandboxProcess::control(const QByteArray& method, const QByteArray& path,
                                               const QJsonValue& body) const {
  const QStringList address = configuration_.value(QStringLiteral("control")).toString().split(QLatin1Char(':'));
  QTcpSocket socket;
  socket.setProxy(QNetworkProxy::NoProxy);
  socket.connectToHost(address.first(), address.last().toUShort());
  if (!socket.waitForConnected(limitMilliseconds)) fail(QStringLiteral("The sandbox cannot be reached."));
  const QByteArray bytes = asJson(body);
  socket.write(method + ' ' + path + " HTTP/1.1\r\nConnection: close\r\nContent-Length: " +
               QByteArray::number(bytes.size()) + "\r\n\r\n" + bytes);
  QByteArray reply;
  while (socket.state() == QAbstractSocket::ConnectedState || socket.bytesAvailable() > 0) {
    if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(limitMilliseconds) &&
        socket.state() == QAbstractSocket::ConnectedState)
      fail(QStringLiteral("The sandbox did not answer %1.").arg(QString::fromLatin1(path)));
    reply += socket.readAll();
  }
  const qsizetype headEnd = reply.indexOf("\r\n\r\n");
  if (headEnd < 0) fail(QStringLiteral("The sandbox broke off its answer to %1.").arg(QString::fromLatin1(path)));
  return {reply.split(' ').value(1).toInt(), reply.mid(headEnd + 4)};
}

QJsonObject SandboxProcess::controlled(const QByteArray& method, const QByteArray& path, const QJsonValue& body) const {
  const Answer answer = control(method, path, body);
  const QJsonObject object = QJsonDocument::fromJson(answer.body).object();
  if (answer.status != 200) fail(object.value(QStringLiteral("error")).toString());
  return object;
}

void SandboxProcess::addFault(const QString& call, const QString& kind, const QJsonObject& more) {
  QJsonObject fault = more;
  fault.insert(QStringLiteral("call"), call);
  fault.insert(QStringLiteral("kind"), kind);
  controlled("POST", "/faults", fault);
}

void SandboxProcess::clearFaults() { controlled("DELETE", "/faults"); }

int SandboxProcess::release(const QString& call) {
  return controlled("POST", "/release", QJsonObject{{QStringLiteral("call"), call}})
      .value(QStringLiteral("released"))
      .toInt();
}

void SandboxProcess::setManualPace(bool manual) {
  controlled("POST", "/pace", QJsonObject{{QStringLiteral("manual"), manual}});
}

void SandboxProcess::step() { controlled("POST", "/step"); }

void SandboxProcess::setRun(const QString& run) {
  controlled("POST", "/run", QJsonObject{{QStringLiteral("run"), run}});
}

void SandboxProcess::waitForCalls(const QString& call, int count) {
  controlled("GET", "/wait" + callQuery(call, count));
}

void SandboxProcess::waitForHeld(const QString& call, int count) {
  controlled("GET", "/wait" + callQuery(call, count) + "&held=1");
}

void SandboxProcess::waitUntilNoneHeld(const QString& call) { waitForHeld(call, 0); }

QList<QJsonObject> SandboxProcess::ledger() const {
  QList<QJsonObject> purchases;
  for (const QByteArray& line : control("GET", "/ledger").body.split('\n'))
    if (!line.isEmpty()) purchases.append(QJsonDocument::fromJson(line).object());
  return purchases;
}

QList<QJsonObject> SandboxProcess::ledgerOfRun(const QString& run) const {
  QList<QJsonObject> purchases;
  for (const QJsonObject& purchase : ledger())
    if (purchase.value(QStringLiteral("run")).toString() == run) purchases.append(purchase);
  return purchases;
}

QString SandboxProcess::token() const { return configuration_.value(QStringLiteral("token")).toString(); }

QJsonObject SandboxProcess::gateway() const { return controlled("GET", "/gateway"); }

void SandboxProcess::steerGateway(const QJsonObject& command) { controlled("POST", "/gateway", command); }

QString SandboxProcess::mailedLink(const QString& email) const {
  QFile mail(stateFolder() + QStringLiteral("/mail.txt"));
  QString link;
  if (!mail.open(QIODevice::ReadOnly)) return link;
  for (const QByteArray& line : mail.readAll().split('\n'))
    if (line.startsWith(email.toUtf8() + ' ')) link = QString::fromUtf8(line).section(QLatin1Char(' '), 1);
  return link;
}

QJsonObject SandboxProcess::state() const { return controlled("GET", "/state"); }

int SandboxProcess::posts() const {
  return state().value(QStringLiteral("posts")).toObject().value(QStringLiteral("total")).toInt();
}

int SandboxProcess::postsTo(const QString& endpoint) const {
  const QJsonObject posts = state().value(QStringLiteral("posts")).toObject();
  const QJsonObject endpoints = posts.value(QStringLiteral("endpoints")).toObject();
  return endpoints.value(endpoint).toObject().value(QStringLiteral("total")).toInt();
}

int SandboxProcess::mostPostsOfOneAttempt() const {
  int most = 0;
  const QJsonObject posts = state().value(QStringLiteral("posts")).toObject();
  for (const QJsonValue& endpoint : posts.value(QStringLiteral("endpoints")).toObject())
    for (const QJsonValue& attempt : endpoint.toObject().value(QStringLiteral("attempts")).toObject())
      most = qMax(most, attempt.toInt());
  return most;
}

QList<QJsonObject> SandboxProcess::calls() const {
  QList<QJsonObject> all;
  for (const QJsonValue& call : QJsonDocument::fromJson(control("GET", "/calls").body).array())
    all.append(call.toObject());
  return all;
}

int SandboxProcess::callCount(const QString& call) const {
  return state().value(QStringLiteral("calls")).toObject().value(call).toInt();
}

}  // namespace sorvan::test
