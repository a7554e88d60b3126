// Requests and answers as values.
#pragma once
#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUrlQuery>
#include <optional>

namespace sandbox {

struct HttpHeader {
  QByteArray name;
  QByteArray value;
};

struct HttpRequest {
  QByteArray method;
  QString host;  // of the tunnel, so that a forged Host header changes nothing
  QString path;  // percent-decoded
  QUrlQuery query;
  QList<HttpHeader> headers;
  QByteArray body;

  // The value of the first header of that name in any case, or empty.
  QByteArray header(QByteArrayView name) const;
  qint64 contentLength() const;  // 0 when absent, -1 when unreadable
};

struct HttpAnswer {
  int status = 200;
  QList<HttpHeader> headers;
  QByteArray body;
};

// The head of a request without its body: request line and header lines, without the empty line at the end. Nothing
// when it is not HTTP/1.x.
std::optional<HttpRequest> parseHead(const QByteArray& head, const QString& host);

QByteArray reasonOf(int status);
QByteArray compactJson(const QJsonObject& object);

HttpAnswer jsonAnswer(int status, const QJsonObject& object);
HttpAnswer textAnswer(int status, const QByteArray& contentType, const QByteArray& body);
// The flat refusal that the queue and storage hosts give: {"detail": text}.
HttpAnswer detailAnswer(int status, const QString& detail);

// Status line and headers, with Content-Length where it is asked for, and the empty line.
enum class Length { Announced, Unsaid };
QByteArray headBytes(const HttpAnswer& answer, Length length, bool keepAlive);

}  // namespace sandbox
