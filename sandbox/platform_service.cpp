#include "platform_service.h"

#include <QJsonArray>

#include "endpoints.h"
#include "hosts.h"

namespace sandbox {

namespace {

constexpr int largestPage = 100;

HttpAnswer platformError(int status, const QString& type, const QString& message) {
  return jsonAnswer(status, {{QStringLiteral("error"),
                              QJsonObject{{QStringLiteral("type"), type}, {QStringLiteral("message"), message}}}});
}

QStringList idsOf(const HttpRequest& request) {
  QStringList ids;
  for (const QString& value : request.query.allQueryItemValues(QStringLiteral("endpoint_id"), QUrl::FullyDecoded))
    ids += value.split(QLatin1Char(','), Qt::SkipEmptyParts);
  return ids;
}

QJsonObject describe(const ListedEndpoint& endpoint) {
  const QString date = QStringLiteral("2026-01-26T21:43:00.843Z");
  return {
      {QStringLiteral("endpoint_id"), endpoint.id},
      {QStringLiteral("metadata"),
       QJsonObject{{QStringLiteral("display_name"), endpoint.name},
                   {QStringLiteral("category"), endpoint.category},
                   {QStringLiteral("description"), QStringLiteral("%1, simulated.").arg(endpoint.name)},
                   {QStringLiteral("status"), QStringLiteral("active")},
                   {QStringLiteral("tags"), QJsonArray()},
                   {QStringLiteral("updated_at"), date},
                   {QStringLiteral("is_favorited"), false},
                   {QStringLiteral("thumbnail_url"), QString()},
                   {QStringLiteral("model_url"), QStringLiteral("https://%1/%2").arg(hosts::synchronous, endpoint.id)},
                   {QStringLiteral("date"), date},
                   {QStringLiteral("highlighted"), false},
                   {QStringLiteral("pinned"), false},
                   {QStringLiteral("kind"), QStringLiteral("inference")}}}};
}

bool wanted(const ListedEndpoint& endpoint, const HttpRequest& request) {
  const QStringList ids = idsOf(request);
  const QString category = request.query.queryItemValue(QStringLiteral("category"));
  const QString words = request.query.queryItemValue(QStringLiteral("q"), QUrl::FullyDecoded);
  return (ids.isEmpty() || ids.contains(endpoint.id)) && (category.isEmpty() || category == endpoint.category) &&
         (words.isEmpty() || endpoint.name.contains(words, Qt::CaseInsensitive) ||
          endpoint.id.contains(words, Qt::CaseInsensitive));
}

// The page that the cursor names, counted from 1: the cursor is the base64 of its number.
int pageOf(const HttpRequest& request) {
  const QString cursor = request.query.queryItemValue(QStringLiteral("cursor"), QUrl::FullyDecoded);
  return cursor.isEmpty() ? 1 : qMax(1, QByteArray::fromBase64(cursor.toLatin1()).toInt());
}

}  // namespace

HttpAnswer PlatformService::models(const HttpRequest& request) const {
  if (keys_.shown(request) == ShownKey::Wrong) return *keys_.platformRefusal(request);
  QJsonArray all;
  for (const ListedEndpoint& endpoint : listedEndpoints())
    if (wanted(endpoint, request)) all.append(describe(endpoint));

  const int asked = request.query.queryItemValue(QStringLiteral("limit")).toInt();
  const int limit = asked > 0 ? qMin(asked, largestPage) : largestPage;
  const int page = pageOf(request);
  QJsonArray shown;
  for (qsizetype i = qsizetype(page - 1) * limit; i < qMin<qsizetype>(all.size(), qsizetype(page) * limit); ++i)
    shown.append(all[i]);
  const bool more = all.size() > qsizetype(page) * limit;
  const QJsonValue next =
      more ? QJsonValue(QString::fromLatin1(QByteArray::number(page + 1).toBase64())) : QJsonValue(QJsonValue::Null);
  return jsonAnswer(
      200,
      {{QStringLiteral("models"), shown}, {QStringLiteral("next_cursor"), next}, {QStringLiteral("has_more"), more}});
}

HttpAnswer PlatformService::pricing(const HttpRequest& request) const {
  if (const auto refusal = keys_.platformRefusal(request)) return *refusal;
  const QStringList ids = idsOf(request);
  if (ids.isEmpty() || ids.size() > 50)
    return platformError(400, QStringLiteral("validation_error"), QStringLiteral("Invalid request parameters"));
  QJsonArray prices;
  for (const QString& id : ids) {
    const auto product = productOf(id);
    if (!product) continue;
    const Price price = priceOf(*product);
    prices.append(QJsonObject{{QStringLiteral("endpoint_id"), id},
                              {QStringLiteral("unit_price"), price.dollars},
                              {QStringLiteral("unit"), price.unit},
                              {QStringLiteral("currency"), QStringLiteral("USD")}});
  }
  return jsonAnswer(200, {{QStringLiteral("prices"), prices},
                          {QStringLiteral("next_cursor"), QJsonValue::Null},
                          {QStringLiteral("has_more"), false}});
}

}  // namespace sandbox
