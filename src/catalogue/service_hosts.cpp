#include "catalogue/service_hosts.h"

#include <QStringList>

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int httpsPort = 443;

/// Lower case, and without the point that an absolute name may end with.
QString plainHost(const QUrl& url) {
  QString host = url.host().toLower();
  if (host.endsWith(u'.')) host.chop(1);
  return host;
}

bool isDomainOrBelow(const QString& host, const QString& domain) {
  return host == domain || host.endsWith(u'.' + domain);
}

/// No user, also no empty one, and the usual port.
bool hasPlainAuthority(const QUrl& url) {
  return !url.authority().contains(u'@') && url.port(httpsPort) == httpsPort;
}

QUrl addressAt(const char16_t* host, const QString& path) {
  QUrl url;
  url.setScheme(u"https"_s);
  url.setHost(QString::fromUtf16(host));
  url.setPath(path);
  return url;
}

using QueryItems = QList<std::pair<QString, QString>>;

/// Each value is encoded whole: what a user types may hold any sign, and "+" means a blank to some servers.
QUrl withQuery(QUrl url, const QueryItems& items) {
  QByteArray query;
  for (const auto& [name, value] : items) {
    if (!query.isEmpty()) query += '&';
    query += name.toUtf8() + '=' + QUrl::toPercentEncoding(value);
  }
  url.setQuery(QString::fromLatin1(query));
  return url;
}

QString application(const QString& endpoint) {
  const QStringList parts = endpoint.split(u'/', Qt::SkipEmptyParts);
  const bool isPrefixed =
      !parts.isEmpty() && (parts.constFirst() == u"workflows"_s || parts.constFirst() == u"comfy"_s);
  return parts.mid(0, isPrefixed ? 3 : 2).join(u'/');
}

QUrl jobAddress(const QString& endpoint, const QString& requestID, const QString& tail) {
  return addressAt(service_hosts::queue, u'/' + application(endpoint) + u"/requests/"_s + requestID + tail);
}

}  // namespace

bool mayReceiveKey(const QUrl& url) {
  if (!isPlainHttps(url) || !hasPlainAuthority(url)) return false;
  const QString host = plainHost(url);
  for (const char16_t* allowed : {service_hosts::queue, service_hosts::storage, service_hosts::platform}) {
    if (QStringView(allowed) == host) return true;
  }
  return false;
}

bool isHostOfFal(const QUrl& url) {
  const QString host = plainHost(url);
  return isDomainOrBelow(host, u"fal.ai"_s) || isDomainOrBelow(host, u"fal.run"_s);
}

bool isPlainHttps(const QUrl& url) { return url.isValid() && url.scheme() == u"https"_s && !url.host().isEmpty(); }

bool isMediaAddress(const QUrl& url) {
  return isPlainHttps(url) && hasPlainAuthority(url) &&
         isDomainOrBelow(plainHost(url), QString::fromUtf16(service_hosts::media));
}

bool isCheckoutAddress(const QUrl& url) {
  return isPlainHttps(url) && hasPlainAuthority(url) && QStringView(service_hosts::checkout) == plainHost(url);
}

QUrl httpsAddress(const QString& text) {
  const QUrl url(text, QUrl::StrictMode);
  return isPlainHttps(url) ? url : QUrl();
}

QUrl submitAddress(const QString& endpoint) { return addressAt(service_hosts::queue, u'/' + endpoint); }
QUrl resultAddress(const QString& endpoint, const QString& requestID) {
  return jobAddress(endpoint, requestID, QString());
}
QUrl statusAddress(const QString& endpoint, const QString& requestID) {
  return jobAddress(endpoint, requestID, u"/status"_s);
}
QUrl cancelAddress(const QString& endpoint, const QString& requestID) {
  return jobAddress(endpoint, requestID, u"/cancel"_s);
}

QUrl uploadAddress() {
  QUrl url = addressAt(service_hosts::storage, u"/storage/upload/initiate"_s);
  url.setQuery(u"storage_type=fal-cdn-v3"_s);
  return url;
}

QUrl documentAddress(const QString& endpoint) {
  return withQuery(addressAt(service_hosts::documents, u"/api/openapi/queue/openapi.json"_s),
                   {{u"endpoint_id"_s, endpoint}});
}

QUrl catalogAddress(const QString& category, const QString& words, int limit, const std::optional<QString>& page) {
  QueryItems items{{u"limit"_s, QString::number(limit)}, {u"status"_s, u"active"_s}, {u"category"_s, category}};
  if (!words.isEmpty()) items.append({u"q"_s, words});
  if (page) items.append({u"cursor"_s, *page});
  return withQuery(addressAt(service_hosts::platform, u"/v1/models"_s), items);
}

QUrl pricesAddress(const QStringList& endpoints, const std::optional<QString>& page) {
  QueryItems items;
  for (const QString& endpoint : endpoints) items.append({u"endpoint_id"_s, endpoint});
  if (page) items.append({u"cursor"_s, *page});
  return withQuery(pricingAddress(), items);
}

QUrl pricingAddress() { return addressAt(service_hosts::platform, u"/v1/models/pricing"_s); }

}  // namespace sorvan::catalogue
