#include "catalogue/gateway_address.h"

#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

bool isThisMachine(const QString& host) { return host == u"localhost"_s || host == u"127.0.0.1"_s || host == u"::1"_s; }

/// A question mark or a hash sign with nothing behind it is one all the same.
bool namesOnlyAHost(const QUrl& url) {
  const bool isBare = url.path().isEmpty() || url.path() == u"/"_s;
  return isBare && !url.authority().contains(u'@') && !url.hasQuery() && !url.hasFragment();
}

}  // namespace

QUrl gatewayAddress(const QString& text) {
  const QUrl url(text.trimmed(), QUrl::StrictMode);
  const QString scheme = url.scheme();
  const bool isSafe = scheme == u"https"_s || (scheme == u"http"_s && isThisMachine(url.host().toLower()));
  if (!url.isValid() || url.host().isEmpty() || !isSafe || !namesOnlyAHost(url))
    throw SorvanError(texts::invalidGateway());
  return url;
}

QUrl defaultGateway() { return QUrl(u"https://"_s + QString::fromUtf16(service_hosts::gateway)); }

QUrl gatewayOf(const Settings& settings) {
  const QString set = settings.get<QString>(gatewaySetting(), QString());
  return set.trimmed().isEmpty() ? defaultGateway() : gatewayAddress(set);
}

QUrl gatewayURL(const QUrl& gateway, const QString& path) {
  QUrl url = gateway;
  url.setPath(u'/' + path, QUrl::StrictMode);
  return url;
}

}  // namespace sorvan::catalogue
