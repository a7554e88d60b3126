#include "catalogue/catalogue_client.h"

#include <QJsonArray>

#include "base/text.h"
#include "catalogue/provider_http.h"
#include "catalogue/schema_document.h"
#include "catalogue/schema_reader.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

QString versionKey() { return u"falReaderVersion"_s; }

/// A description may be any length; a row shows one line of it.
constexpr qsizetype longestSummary = 400;

HttpRequest publicRequest(const QUrl& url) {
  HttpRequest request;
  request.url = url;
  request.maximumBytes = SchemaDocument::largest;
  return request;
}

std::optional<CatalogRow> rowFrom(const QJsonValue& model) {
  const QJsonValue about = model[u"metadata"_s];
  const QJsonValue id = model[u"endpoint_id"_s];
  const QJsonValue name = about[u"display_name"_s];
  const QJsonValue category = about[u"category"_s];
  const QJsonValue summary = about[u"description"_s];
  for (const QJsonValue& each : {id, name, category, summary}) {
    if (!each.isString()) return std::nullopt;
  }
  if (id.toString().isEmpty()) return std::nullopt;
  CatalogRow row;
  row.listing = {id.toString(), name.toString(), category.toString(),
                 firstChars(summary.toString().simplified(), longestSummary), QString()};
  row.researchOnly = about[u"license_type"_s].toString() == u"research"_s;
  return row;
}

CatalogPage pageFrom(const QByteArray& body, const CatalogQuestion& question) {
  const QJsonObject object = jsonObject(body);
  if (!object.value(u"models"_s).isArray()) throw SorvanError(texts::invalidProviderResponse());
  CatalogPage page;
  for (const QJsonValue& model : object.value(u"models"_s).toArray()) {
    if (auto row = rowFrom(model)) page.rows.push_back(std::move(*row));
  }
  // A page that names itself as the next one would never end.
  const QString next = object.value(u"next_cursor"_s).toString();
  const bool isLast = object.value(u"has_more"_s) == QJsonValue(false);
  if (!next.isEmpty() && !isLast && next != question.page) page.next = next;
  return page;
}

bool isAdded(const FalCatalog& catalog, const QString& id) {
  const std::vector<FalModel> models = catalog.added();
  return std::any_of(models.begin(), models.end(), [&](const FalModel& each) { return each.id == id; });
}

FalListing listingOf(const FalModel& model) { return {model.id, model.name, model.category, model.summary, QString()}; }

/// Whether it was read. One that was taken out meanwhile stays out.
Task<bool> reread(CatalogClient client, std::shared_ptr<FalCatalog> catalog, FalModel model, std::stop_token stop) {
  try {
    const FalModel fresh = co_await client.load(listingOf(model), stop);
    if (isAdded(*catalog, model.id)) catalog->add(fresh);
    co_return true;
  } catch (const SorvanError&) {
    co_return false;
  }
}

}  // namespace

Task<CatalogPage> CatalogClient::search(CatalogQuestion question, std::stop_token stop) const {
  const auto kept = transport;
  const QUrl url = catalogAddress(question.category, question.words.trimmed(), question.limit, question.page);
  const HttpReply reply = co_await sendChecked(kept, publicRequest(url), stop);
  throwIfStopped(stop);
  co_return pageFrom(reply.body, question);
}

Task<FalModel> CatalogClient::load(FalListing listing, std::stop_token stop) const {
  const auto kept = transport;
  const HttpReply reply = co_await sendChecked(kept, publicRequest(documentAddress(listing.id)), stop);
  throwIfStopped(stop);
  co_return co_await onPool([listing, body = reply.body] { return modelFromSchema(listing, body); }, stop);
}

Task<> rereadIfStale(CatalogClient client, std::shared_ptr<FalCatalog> catalog, std::shared_ptr<Settings> settings,
                     std::stop_token stop) {
  if (settings->get<int>(versionKey(), 0) >= falReaderVersion) co_return;
  const std::vector<FalModel> models = catalog->added();
  if (models.empty()) co_return;
  bool all = true;
  for (const FalModel& model : models) {
    throwIfStopped(stop);
    if (!co_await reread(client, catalog, model, stop)) all = false;
  }
  if (all) settings->set(versionKey(), falReaderVersion);
}

}  // namespace sorvan::catalogue
