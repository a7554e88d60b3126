#include "service.h"

#include <QDir>
#include <stdexcept>

#include "authority.h"
#include "hosts.h"

namespace sandbox {

namespace {

QString folderOf(const Options& options, const QTemporaryDir& temporary) {
  const QString folder = options.stateFolder.isEmpty() ? temporary.path() : options.stateFolder;
  if (!QDir().mkpath(folder)) throw std::runtime_error("The state folder cannot be made.");
  return QDir(folder).absolutePath();
}

void writeWhole(const QString& path, const QByteArray& bytes) {
  QFile part(path + QStringLiteral(".part"));
  if (!part.open(QIODevice::WriteOnly | QIODevice::Truncate) || part.write(bytes) != bytes.size() || !part.flush())
    throw std::runtime_error("This file cannot be written: " + path.toStdString());
  part.close();
  if (::rename(QFile::encodeName(part.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
    throw std::runtime_error("This file cannot be put in its place: " + path.toStdString());
}

QString addressOf(const QTcpServer& server) { return QStringLiteral("127.0.0.1:%1").arg(server.serverPort()); }

}  // namespace

Service::Service(const Options& options)
    : state_(folderOf(options, temporary_)),
      keys_(keyToAccept(options)),
      ledger_(statePath("ledger.jsonl")),
      book_(statePath("posts.jsonl")),
      shelf_(statePath("media")),
      jobs_(statePath("jobs"), shelf_, {options.delayMilliseconds, options.longestSide}),
      queue_(keys_, ledger_, jobs_),
      storage_(keys_, shelf_),
      platform_(keys_),
      gateway_(state_, {ledger_, jobs_, shelf_}),
      desk_(book_, faults_, keys_,
            [this](const Call& call, const HttpRequest& request) { return answer(call, request); }) {
  if (!options.faultsFile.isEmpty()) {
    QFile script(options.faultsFile);
    if (!script.open(QIODevice::ReadOnly)) throw std::runtime_error("The file of faults cannot be read.");
    const QString problem = faults_.addAll(script.readAll());
    if (!problem.isEmpty()) throw std::runtime_error(problem.toStdString());
  }
  listen();
}

QString Service::statePath(const char* name) const { return state_ + QLatin1Char('/') + QLatin1StringView(name); }

// The key that was given, else the one that an earlier start left, else a new one.
QString Service::keyToAccept(const Options& options) const {
  const QString path = statePath("key.txt");
  QFile earlier(path);
  QString key = options.key;
  if (key.isEmpty() && earlier.open(QIODevice::ReadOnly)) key = QString::fromUtf8(earlier.readAll()).trimmed();
  if (key.isEmpty()) key = makeKey();
  writeWhole(path, key.toUtf8() + '\n');
  return key;
}

void Service::listen() {
  const Authority trusted = makeAuthority(hosts::all());
  const Authority untrusted = makeAuthority(hosts::all());
  writeWhole(statePath("authority.pem"), trusted.certificatePem);
  proxy_ = std::make_unique<TlsProxy>(
      trusted.serverSide, untrusted.serverSide, desk_, [this](const QString& host) { return desk_.admit(host); },
      nullptr);
  control_ = std::make_unique<Control>(Controls{desk_, book_, faults_, ledger_, jobs_, *proxy_, gateway_}, nullptr);
  if (!proxy_->listen(QHostAddress::LocalHost) || !control_->listen(QHostAddress::LocalHost))
    throw std::runtime_error("No port could be had: " + proxy_->errorString().toStdString());
}

void Service::writeConfiguration(const QString& path) const {
  writeWhole(path, compactJson({{QStringLiteral("proxy"), addressOf(*proxy_)},
                                {QStringLiteral("authority"), statePath("authority.pem")},
                                {QStringLiteral("key"), keys_.key()},
                                {QStringLiteral("token"), gateway_.readyToken()},
                                {QStringLiteral("control"), addressOf(*control_)}}) +
                       '\n');
}

HttpAnswer Service::answer(const Call& call, const HttpRequest& request) {
  switch (call.kind) {
    case CallKind::Submit:
    case CallKind::Status:
    case CallKind::Result:
    case CallKind::Cancel:
      return queue_.answer(call, request);
    case CallKind::UploadStart:
      return storage_.start(request);
    case CallKind::Upload:
      return storage_.put(request);
    case CallKind::Download:
      return storage_.download(request);
    case CallKind::Models:
      return platform_.models(request);
    case CallKind::Pricing:
      return platform_.pricing(request);
    case CallKind::Document:
      return platform_.document(request);
    case CallKind::Purchase:
    case CallKind::LookUp:
    case CallKind::Operation:
    case CallKind::CancelOperation:
    case CallKind::GatewayUpload:
    case CallKind::Prices:
    case CallKind::Interpret:
    case CallKind::Account:
    case CallKind::CheckoutPage:
      return gateway_.answer(call, request);
    case CallKind::Other:
      break;
  }
  return detailAnswer(404, QStringLiteral("Path %1 not found").arg(request.path));
}

}  // namespace sandbox
