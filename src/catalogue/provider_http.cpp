#include "catalogue/provider_http.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "base/text.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostFieldErrors = 5;
constexpr qsizetype longestDetail = 2000;

/// The name of the refused field: the last text of its place that is not the body itself.
QString refusedField(const QJsonArray& place) {
  QString field;
  for (const QJsonValue& step : place) {
    if (step.isString() && step.toString() != u"body"_s) field = step.toString();
  }
  return field;
}

QStringList fieldErrorsOf(const QJsonArray& errors) {
  QStringList told;
  for (const QJsonValue& error : errors) {
    const QString message = error[u"msg"_s].toString().trimmed();
    if (message.isEmpty()) continue;
    if (told.size() == mostFieldErrors) break;
    const QString field = refusedField(error[u"loc"_s].toArray());
    told << (field.isEmpty() ? message : field + u": "_s + message);
  }
  return told;
}

bool endsASentence(const QString& text) { return QStringView(u".!?…").contains(text.back()); }

/// One error as the service words it; of several each is a sentence, so that they can be told apart.
QString fieldErrors(const QJsonArray& errors) {
  QStringList told = fieldErrorsOf(errors);
  if (told.size() < 2) return told.join(QString());
  for (QString& each : told) {
    if (!endsASentence(each)) each += u'.';
  }
  return told.join(u' ');
}

QString detailOf(const QJsonObject& body) {
  const QString message = body.value(u"error"_s)[u"message"_s].toString();
  if (!message.isEmpty()) return message;
  const QJsonValue detail = body.value(u"detail"_s);
  if (!detail.toString().isEmpty()) return detail.toString();
  const QString fields = fieldErrors(detail.toArray());
  return fields.isEmpty() ? body.value(u"error"_s).toString() : fields;
}

}  // namespace

ProviderRefusal::ProviderRefusal(HttpReply reply, const QUrl& asked)
    : SorvanError(refusalMessage(reply, asked)), answer(std::move(reply)) {}

QString refusalDetail(const HttpReply& reply) {
  const QString told = detailOf(QJsonDocument::fromJson(reply.body).object()).trimmed();
  return told.isEmpty() ? statusPhrase(reply.status) : firstChars(told, longestDetail);
}

QString refusalMessage(const HttpReply& reply, const QUrl& asked) {
  const bool refusesKey = (reply.status == 401 || reply.status == 403) && isHostOfFal(asked);
  if (refusesKey) return texts::keyRefused(reply.status, refusalDetail(reply));
  return texts::providerError(reply.status, refusalDetail(reply));
}

Task<HttpReply> sendChecked(std::shared_ptr<HttpTransport> transport, HttpRequest request, std::stop_token stop) {
  const QUrl asked = request.url;
  HttpReply reply = co_await transport->send(std::move(request), stop);
  if (reply.status < 100) throw SorvanError(texts::invalidServerResponse());
  if (!reply.succeeded()) throw ProviderRefusal(std::move(reply), asked);
  co_return reply;
}

QJsonObject jsonObject(const QByteArray& body) {
  const QJsonDocument document = QJsonDocument::fromJson(body);
  if (!document.isObject()) throw SorvanError(texts::invalidProviderResponse());
  return document.object();
}

HttpRequest keyedRequest(const QByteArray& verb, const QUrl& url, const QString& key) {
  if (!mayReceiveKey(url)) throw SorvanError(texts::unexpectedAddress());
  HttpRequest request;
  request.url = url;
  request.verb = verb;
  request.headers = {{"Authorization", "Key " + key.toUtf8()}};
  return request;
}

HttpRequest keyedJsonRequest(const QByteArray& verb, const QUrl& url, const QString& key, const QJsonObject& body) {
  HttpRequest request = keyedRequest(verb, url, key);
  request.headers.emplace_back("Content-Type", "application/json");
  request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
  return request;
}

}  // namespace sorvan::catalogue
