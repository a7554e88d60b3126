#include "http_message.h"

#include <QJsonDocument>
#include <QUrl>

namespace sandbox {

QByteArray HttpRequest::header(QByteArrayView name) const {
  for (const HttpHeader& header : headers)
    if (header.name.compare(name, Qt::CaseInsensitive) == 0) return header.value;
  return {};
}

qint64 HttpRequest::contentLength() const {
  const QByteArray value = header("Content-Length");
  if (value.isEmpty()) return 0;
  bool readable = false;
  const qint64 length = value.toLongLong(&readable);
  return readable && length >= 0 ? length : -1;
}

namespace {

std::optional<QList<HttpHeader>> parseHeaderLines(const QList<QByteArray>& lines) {
  QList<HttpHeader> headers;
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const QByteArray line = lines[i].trimmed();
    if (line.isEmpty()) continue;
    const qsizetype colon = line.indexOf(':');
    if (colon <= 0) return std::nullopt;
    headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
  }
  return headers;
}

}  // namespace

std::optional<HttpRequest> parseHead(const QByteArray& head, const QString& host) {
  const QList<QByteArray> lines = head.split('\n');
  const QList<QByteArray> words = lines.first().trimmed().split(' ');
  if (words.size() != 3 || !words[2].startsWith("HTTP/1.")) return std::nullopt;
  const auto headers = parseHeaderLines(lines);
  if (!headers) return std::nullopt;
  HttpRequest request;
  request.method = words[0];
  request.host = host;
  request.headers = *headers;
  const QUrl target = QUrl::fromEncoded(words[1]);
  request.path = target.path(QUrl::FullyDecoded);
  request.query = QUrlQuery(target);
  return request;
}

QByteArray reasonOf(int status) {
  switch (status) {
    case 200:
      return "OK";
    case 201:
      return "Created";
    case 202:
      return "Accepted";
    case 301:
      return "Moved Permanently";
    case 302:
      return "Found";
    case 303:
      return "See Other";
    case 307:
      return "Temporary Redirect";
    case 308:
      return "Permanent Redirect";
    case 400:
      return "Bad Request";
    case 401:
      return "Unauthorized";
    case 402:
      return "Payment Required";
    case 403:
      return "Forbidden";
    case 404:
      return "Not Found";
    case 405:
      return "Method Not Allowed";
    case 408:
      return "Request Timeout";
    case 409:
      return "Conflict";
    case 410:
      return "Gone";
    case 422:
      return "Unprocessable Entity";
    case 429:
      return "Too Many Requests";
    case 500:
      return "Internal Server Error";
    case 502:
      return "Bad Gateway";
    case 503:
      return "Service Unavailable";
    case 504:
      return "Gateway Timeout";
    default:
      return "Status";
  }
}

QByteArray compactJson(const QJsonObject& object) { return QJsonDocument(object).toJson(QJsonDocument::Compact); }

HttpAnswer jsonAnswer(int status, const QJsonObject& object) {
  return textAnswer(status, "application/json", compactJson(object));
}

HttpAnswer textAnswer(int status, const QByteArray& contentType, const QByteArray& body) {
  return {status, {{"Content-Type", contentType}}, body};
}

HttpAnswer detailAnswer(int status, const QString& detail) {
  return jsonAnswer(status, {{QStringLiteral("detail"), detail}});
}

QByteArray headBytes(const HttpAnswer& answer, Length length, bool keepAlive) {
  QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + reasonOf(answer.status) + "\r\n";
  for (const HttpHeader& header : answer.headers) head += header.name + ": " + header.value + "\r\n";
  if (length == Length::Announced) head += "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n";
  head += keepAlive ? "Connection: keep-alive\r\n\r\n" : "Connection: close\r\n\r\n";
  return head;
}

}  // namespace sandbox
