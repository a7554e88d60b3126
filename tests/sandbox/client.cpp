#include "sandbox/client.h"

#include <QJsonDocument>
#include <QNetworkProxy>
#include <QSslConfiguration>
#include <stdexcept>

namespace sorvan::test {

namespace {

constexpr int limitMilliseconds = 30'000;

QByteArray keyHeader(Client::Key key, const QString& good) {
  switch (key) {
    case Client::Key::Good:
      return "Authorization: Key " + good.toUtf8() + "\r\n";
    case Client::Key::Wrong:
      return "Authorization: Key 00000000-0000-4000-8000-000000000000:0123456789abcdef\r\n";
    case Client::Key::Malformed:
      return "Authorization: Bearer nonsense\r\n";
    case Client::Key::None:
      return {};
  }
  return {};
}

bool openTunnel(QSslSocket& socket, const QByteArray& host) {
  socket.write("CONNECT " + host + ":443 HTTP/1.1\r\nHost: " + host + ":443\r\n\r\n");
  QByteArray head;
  while (!head.endsWith("\r\n\r\n")) {
    if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(limitMilliseconds)) return false;
    head += socket.read(1);
  }
  return head.startsWith("HTTP/1.1 200 ");
}

void understand(WireAnswer& answer) {
  const qsizetype headEnd = answer.raw.indexOf("\r\n\r\n");
  if (headEnd < 0) return;
  answer.head = answer.raw.left(headEnd);
  answer.body = answer.raw.mid(headEnd + 4);
  answer.status = answer.head.split(' ').value(1).toInt();
  answer.announcedLength = !answer.header("Content-Length").isEmpty();
  answer.complete = answer.announcedLength && answer.body.size() >= answer.header("Content-Length").toLongLong();
}

}  // namespace

QJsonObject WireAnswer::json() const { return QJsonDocument::fromJson(body).object(); }

QByteArray WireAnswer::header(const QByteArray& name) const {
  for (const QByteArray& line : head.split('\n'))
    if (line.trimmed().toLower().startsWith(name.toLower() + ':')) return line.mid(name.size() + 1).trimmed();
  return {};
}

std::unique_ptr<QSslSocket> Client::begin(const QByteArray& method, const QUrl& url, const QByteArray& body,
                                          Key key) const {
  // 1. A tunnel by a CONNECT of our own: what is written then leaves at once, with no layer in between.
  auto socket = std::make_unique<QSslSocket>();
  socket->setProxy(QNetworkProxy::NoProxy);
  socket->connectToHost(sandbox_.proxyHost(), sandbox_.proxyPort());
  if (!socket->waitForConnected(limitMilliseconds) || !openTunnel(*socket, url.host().toLatin1())) return socket;

  // 2. TLS inside it, with the name and the authority checked.
  QSslConfiguration trust = socket->sslConfiguration();
  trust.setCaCertificates(QSslCertificate::fromPath(sandbox_.authorityPath()));
  socket->setSslConfiguration(trust);
  socket->setPeerVerifyName(url.host());
  socket->startClientEncryption();
  if (!socket->waitForEncrypted(limitMilliseconds)) return socket;

  // 3. The request.
  QByteArray more;
  for (const Header& header : headers) more += header.name + ": " + header.value + "\r\n";
  socket->write(method + ' ' + url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority) +
                " HTTP/1.1\r\nHost: " + url.host().toLatin1() + "\r\n" + keyHeader(key, sandbox_.key()) + more +
                "Content-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
                body);
  while (socket->bytesToWrite() + socket->encryptedBytesToWrite() > 0 &&
         socket->waitForBytesWritten(limitMilliseconds)) {
  }
  return socket;
}

WireAnswer Client::finish(QSslSocket& socket, ReadUntil until) const {
  WireAnswer answer;
  answer.connected = socket.isEncrypted();
  if (!answer.connected) return answer;
  for (;;) {
    answer.raw += socket.readAll();
    understand(answer);
    if (until == ReadUntil::Complete && answer.complete) return answer;
    if (socket.state() != QAbstractSocket::ConnectedState && socket.bytesAvailable() == 0) return answer;
    if (!socket.waitForReadyRead(limitMilliseconds) && socket.state() == QAbstractSocket::ConnectedState)
      throw std::runtime_error("The sandbox neither answers nor closes.");
  }
}

WireAnswer Client::send(const QByteArray& method, const QUrl& url, const QByteArray& body, Key key,
                        ReadUntil until) const {
  const auto socket = begin(method, url, body, key);
  return finish(*socket, until);
}

WireAnswer Client::getJson(const QJsonObject& from, const char16_t* field) const {
  return get(QUrl(from.value(QString::fromUtf16(field)).toString()));
}

WireAnswer Client::submit(const QString& endpoint, const QJsonObject& input, Key key) const {
  return send("POST", queueUrl(endpoint), QJsonDocument(input).toJson(QJsonDocument::Compact), key);
}

WireAnswer Client::run(const QString& endpoint, const QJsonObject& input) const {
  const QJsonObject handle = submit(endpoint, input).json();
  while (getJson(handle, u"status_url").json().value(QStringLiteral("status")) != QStringLiteral("COMPLETED")) {
  }
  return getJson(handle, u"response_url");
}

QString Client::upload(const QByteArray& bytes, const QByteArray& contentType, const QString& name) const {
  const QJsonObject wish{{QStringLiteral("content_type"), QString::fromLatin1(contentType)},
                         {QStringLiteral("file_name"), name}};
  const QUrl start(QStringLiteral("https://rest.fal.ai/storage/upload/initiate?storage_type=fal-cdn-v3"));
  const QJsonObject place = send("POST", start, QJsonDocument(wish).toJson()).json();
  send("PUT", QUrl(place.value(QStringLiteral("upload_url")).toString()), bytes, Key::None);
  return place.value(QStringLiteral("file_url")).toString();
}

QByteArray Client::download(const QJsonValue& file) const {
  const WireAnswer answer = get(QUrl(file.toObject().value(QStringLiteral("url")).toString()), Key::None);
  if (answer.status != 200 || !answer.complete) throw std::runtime_error("The media cannot be downloaded.");
  return answer.body;
}

QUrl queueUrl(const QString& path) { return QUrl(QStringLiteral("https://queue.fal.run/") + path); }

QJsonObject inputWith(const QString& prompt, int seed, const QJsonObject& more) {
  QJsonObject input = more;
  input.insert(QStringLiteral("prompt"), prompt);
  input.insert(QStringLiteral("seed"), seed);
  return input;
}

}  // namespace sorvan::test
