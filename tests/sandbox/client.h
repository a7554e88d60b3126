// A client of the simulated service that shares no code with the studio: one TLS socket through the proxy a request,
// and the bytes as they came.
#pragma once
#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QSslSocket>
#include <QUrl>
#include <memory>

#include "support_sandbox/sandbox_process.h"

namespace sorvan::test {

struct Header {
  QByteArray name;
  QByteArray value;
};

// What came back on the wire until the connection closed or the announced body was complete.
struct WireAnswer {
  bool connected = false;  // the tunnel opened and TLS holds
  QByteArray raw;          // every byte
  int status = 0;          // 0 when there is no whole status line
  QByteArray head;
  QByteArray body;
  bool announcedLength = false;
  bool complete = false;  // a head, and as many bytes of body as were announced

  QJsonObject json() const;
  QByteArray header(const QByteArray& name) const;
};

class Client {
 public:
  enum class Key { Good, Wrong, Malformed, None };

  explicit Client(const SandboxProcess& sandbox) : sandbox_(sandbox) {}

  // Sent with every request, beside the key.
  QList<Header> headers;

  // Sends one request and reads its answer. `untilClosed` reads on after a complete answer until the other side closes.
  enum class ReadUntil { Complete, Closed };
  WireAnswer send(const QByteArray& method, const QUrl& url, const QByteArray& body = {}, Key key = Key::Good,
                  ReadUntil until = ReadUntil::Complete) const;
  // Only sends: for calls that are held.
  std::unique_ptr<QSslSocket> begin(const QByteArray& method, const QUrl& url, const QByteArray& body = {},
                                    Key key = Key::Good) const;
  WireAnswer finish(QSslSocket& socket, ReadUntil until = ReadUntil::Complete) const;

  WireAnswer get(const QUrl& url, Key key = Key::Good) const { return send("GET", url, {}, key); }
  WireAnswer getJson(const QJsonObject& from, const char16_t* field) const;
  WireAnswer submit(const QString& endpoint, const QJsonObject& input, Key key = Key::Good) const;
  // Submits, polls until the job is completed, and returns the answer of the result.
  WireAnswer run(const QString& endpoint, const QJsonObject& input) const;
  // Uploads bytes by the two calls of the storage host and returns the file's address.
  QString upload(const QByteArray& bytes, const QByteArray& contentType, const QString& name) const;
  // The media at the `url` of a file object.
  QByteArray download(const QJsonValue& file) const;

 private:
  const SandboxProcess& sandbox_;
};

QUrl queueUrl(const QString& path);
QJsonObject inputWith(const QString& prompt, int seed, const QJsonObject& more = {});

}  // namespace sorvan::test
