#include "platform_service.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

#include "catalogue.h"
#include "endpoints.h"
#include "hosts.h"

namespace sandbox {

namespace {

constexpr int largestPage = 100;
constexpr int largestPageWithDocuments = 20;
constexpr int largestPageOfPrices = 20;
constexpr int mostIds = 50;

HttpAnswer platformError(int status, const QString& type, const QString& message) {
  const QJsonObject error{{QStringLiteral("type"), type},
                          {QStringLiteral("message"), message},
                          {QStringLiteral("docs_url"), QStringLiteral("https://docs.fal.ai/errors#%1").arg(type)},
                          {QStringLiteral("request_id"), QUuid::createUuid().toString(QUuid::WithoutBraces)}};
  return jsonAnswer(status, {{QStringLiteral("error"), error}});
}

HttpAnswer invalidParameters() {
  return platformError(400, QStringLiteral("validation_error"), QStringLiteral("Invalid request parameters"));
}

QString queryValue(const HttpRequest& request, const char16_t* key) {
  return request.query.queryItemValue(QString::fromUtf16(key), QUrl::FullyDecoded);
}

QStringList queryValues(const HttpRequest& request, const QString& key) {
  QStringList values;
  for (const QString& value : request.query.allQueryItemValues(key, QUrl::FullyDecoded))
    values += value.split(QLatin1Char(','), Qt::SkipEmptyParts);
  return values;
}

QStringList idsOf(const HttpRequest& request) { return queryValues(request, QStringLiteral("endpoint_id")); }

QString text(const std::string& text) { return QString::fromStdString(text); }

// Every model has a day of its own, the same at every start.
QString dateOf(const Entry& entry) {
  const auto day = std::hash<std::string>()(entry.id) % 300;
  return QDateTime({2025, 11, 1}, {9, 30}, Qt::UTC).addDays(qint64(day)).toString(Qt::ISODate);
}

QString licenceOf(Standing standing) {
  if (standing == Standing::Research) return QStringLiteral("research");
  return standing == Standing::Private ? QStringLiteral("private") : QStringLiteral("commercial");
}

QJsonArray tagsOf(const Entry& entry) {
  QJsonArray tags;
  for (const std::string& tag : entry.tags) tags.append(text(tag));
  return tags;
}

QJsonObject groupOf(const Entry& entry) {
  return {{QStringLiteral("key"), text(entry.id).section(QLatin1Char('/'), 0, 1).section(QLatin1Char('/'), -1)},
          {QStringLiteral("label"), text(entry.category)}};
}

QJsonObject metadataOf(const Entry& entry) {
  const bool isOld = entry.standing == Standing::Deprecated;
  const bool trains = entry.category == "training";
  return {{QStringLiteral("display_name"), text(entry.name)},
          {QStringLiteral("category"), text(entry.category)},
          {QStringLiteral("description"), text(entry.about)},
          {QStringLiteral("status"), isOld ? QStringLiteral("deprecated") : QStringLiteral("active")},
          {QStringLiteral("tags"), tagsOf(entry)},
          {QStringLiteral("updated_at"), dateOf(entry)},
          {QStringLiteral("is_favorited"), false},
          {QStringLiteral("thumbnail_url"), QString()},
          {QStringLiteral("model_url"), QStringLiteral("https://%1/%2").arg(hosts::synchronous, text(entry.id))},
          {QStringLiteral("license_type"), licenceOf(entry.standing)},
          {QStringLiteral("date"), dateOf(entry)},
          {QStringLiteral("group"), groupOf(entry)},
          {QStringLiteral("highlighted"), !entry.tags.empty()},
          {QStringLiteral("kind"), trains ? QStringLiteral("training") : QStringLiteral("inference")},
          {QStringLiteral("pinned"), false}};
}

QJsonObject documentIn(const Entry& entry) {
  const json::object* document = entry.standing == Standing::Undocumented ? nullptr : publishedDocument(text(entry.id));
  if (document) return QJsonDocument::fromJson(QByteArray::fromStdString(json::serialize(*document))).object();
  return {{QStringLiteral("error"),
           QJsonObject{{QStringLiteral("code"), QStringLiteral("expansion_failed")},
                       {QStringLiteral("message"), QStringLiteral("Failed to fetch OpenAPI schema")}}}};
}

QJsonObject describe(const Entry& entry, bool withDocument) {
  QJsonObject row{{QStringLiteral("endpoint_id"), text(entry.id)}, {QStringLiteral("metadata"), metadataOf(entry)}};
  if (withDocument) row.insert(QStringLiteral("openapi"), documentIn(entry));
  return row;
}

struct Question {
  QStringList ids;
  QString category;
  QString status;
  QStringList words;
  bool withDocuments = false;
};

Question questionOf(const HttpRequest& request) {
  return {idsOf(request), queryValue(request, u"category"), queryValue(request, u"status"),
          queryValue(request, u"q").split(QLatin1Char(' '), Qt::SkipEmptyParts),
          queryValues(request, QStringLiteral("expand")).contains(QStringLiteral("openapi-3.0"))};
}

bool standsInList(const Entry& entry, const Question& question) {
  if (entry.standing == Standing::Unlisted) return false;
  if (question.status.isEmpty()) return true;
  const bool isOld = entry.standing == Standing::Deprecated;
  return isOld == (question.status == QStringLiteral("deprecated"));
}

// Every word stands somewhere in name, id, description, category or tags.
bool holdsWords(const Entry& entry, const QStringList& words) {
  std::string all = entry.name + '\n' + entry.id + '\n' + entry.about + '\n' + entry.category;
  for (const std::string& tag : entry.tags) all += '\n' + tag;
  const QString place = text(all);
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return place.contains(word, Qt::CaseInsensitive); });
}

bool isWanted(const Entry& entry, const Question& question) {
  return standsInList(entry, question) && (question.ids.isEmpty() || question.ids.contains(text(entry.id))) &&
         (question.category.isEmpty() || question.category == text(entry.category)) &&
         holdsWords(entry, question.words);
}

struct Page {
  qsizetype from = 0;
  qsizetype to = 0;
  QJsonValue next;
};

// The page that the cursor names, counted from 1: the cursor is the base64 of its number. Nothing when it names none.
std::optional<int> pageNumber(const HttpRequest& request) {
  const QString cursor = queryValue(request, u"cursor");
  if (cursor.isEmpty()) return 1;
  const int number = QByteArray::fromBase64(cursor.toLatin1()).toInt();
  return number >= 1 ? std::optional(number) : std::nullopt;
}

// Nothing when the request asks for a page in no form that there is.
std::optional<Page> pageOf(const HttpRequest& request, qsizetype count, int largest) {
  const QString limitText = queryValue(request, u"limit");
  bool reads = true;
  const int asked = limitText.isEmpty() ? largest : limitText.toInt(&reads);
  const auto number = pageNumber(request);
  if (!reads || asked < 1 || !number) return std::nullopt;
  const int limit = qMin(asked, largest);
  Page page;
  page.from = qMin(count, qsizetype(*number - 1) * limit);
  page.to = qMin(count, page.from + limit);
  if (page.to < count) page.next = QString::fromLatin1(QByteArray::number(*number + 1).toBase64());
  return page;
}

HttpAnswer pageAnswer(const QString& name, const QJsonArray& rows, const QJsonValue& next) {
  const bool more = next.isString();
  return jsonAnswer(200, {{name, rows},
                          {QStringLiteral("next_cursor"), more ? next : QJsonValue(QJsonValue::Null)},
                          {QStringLiteral("has_more"), more}});
}

QJsonObject priceRow(const QString& id, const Price& price) {
  return {{QStringLiteral("endpoint_id"), id},
          {QStringLiteral("unit_price"), price.amount},
          {QStringLiteral("unit"), price.unit},
          {QStringLiteral("currency"), price.currency}};
}

}  // namespace

HttpAnswer PlatformService::models(const HttpRequest& request) const {
  if (keys_.shown(request) == ShownKey::Wrong) return *keys_.platformRefusal(request);
  const Question question = questionOf(request);
  if (question.ids.size() > mostIds) return invalidParameters();
  std::vector<const Entry*> found;
  for (const Entry& entry : catalogue())
    if (isWanted(entry, question)) found.push_back(&entry);
  const auto page =
      pageOf(request, qsizetype(found.size()), question.withDocuments ? largestPageWithDocuments : largestPage);
  if (!page) return invalidParameters();
  QJsonArray rows;
  for (qsizetype i = page->from; i < page->to; ++i)
    rows.append(describe(*found[std::size_t(i)], question.withDocuments));
  return pageAnswer(QStringLiteral("models"), rows, page->next);
}

HttpAnswer PlatformService::pricing(const HttpRequest& request) const {
  if (const auto refusal = keys_.platformRefusal(request)) return *refusal;
  const QStringList ids = idsOf(request);
  if (ids.isEmpty() || ids.size() > mostIds) return invalidParameters();
  QStringList unknown;
  for (const QString& id : ids)
    if (!priceOf(id)) unknown.append(id);
  if (!unknown.isEmpty())
    return platformError(404, QStringLiteral("not_found"),
                         QStringLiteral("Endpoint not found: %1").arg(unknown.join(QStringLiteral(", "))));
  const auto page = pageOf(request, ids.size(), largestPageOfPrices);
  if (!page) return invalidParameters();
  QJsonArray prices;
  for (qsizetype i = page->from; i < page->to; ++i) prices.append(priceRow(ids[i], *priceOf(ids[i])));
  return pageAnswer(QStringLiteral("prices"), prices, page->next);
}

HttpAnswer PlatformService::document(const HttpRequest& request) const {
  const QString id = queryValue(request, u"endpoint_id");
  const Entry* entry = entryOf(id);
  const json::object* document = entry && entry->standing != Standing::Undocumented ? publishedDocument(id) : nullptr;
  if (!document) return detailAnswer(404, QStringLiteral("Endpoint '%1' not found").arg(id));
  return textAnswer(200, "application/json", QByteArray::fromStdString(json::serialize(*document)));
}

}  // namespace sandbox
