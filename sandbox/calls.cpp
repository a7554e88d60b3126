#include "calls.h"

#include <QRegularExpression>
#include <array>

#include "hosts.h"

namespace sandbox {

namespace {

struct NamedCall {
  CallKind kind;
  const char16_t* name;
};
constexpr std::array namedCalls{NamedCall{CallKind::Submit, u"submit"},
                                NamedCall{CallKind::Status, u"status"},
                                NamedCall{CallKind::Result, u"result"},
                                NamedCall{CallKind::Cancel, u"cancel"},
                                NamedCall{CallKind::UploadStart, u"upload-start"},
                                NamedCall{CallKind::Upload, u"upload"},
                                NamedCall{CallKind::Download, u"download"},
                                NamedCall{CallKind::Models, u"models"},
                                NamedCall{CallKind::Pricing, u"pricing"},
                                NamedCall{CallKind::Document, u"document"},
                                NamedCall{CallKind::Purchase, u"purchase"},
                                NamedCall{CallKind::LookUp, u"look-up"},
                                NamedCall{CallKind::Operation, u"operation"},
                                NamedCall{CallKind::CancelOperation, u"cancel-operation"},
                                NamedCall{CallKind::GatewayUpload, u"gateway-upload"},
                                NamedCall{CallKind::Prices, u"prices"},
                                NamedCall{CallKind::Interpret, u"interpret"},
                                NamedCall{CallKind::Account, u"account"},
                                NamedCall{CallKind::CheckoutPage, u"checkout-page"},
                                NamedCall{CallKind::Other, u"other"}};

Call identifyQueueCall(const HttpRequest& request) {
  static const QRegularExpression follow(
      QStringLiteral("^/(?<endpoint>.+)/requests/(?<id>[^/]+)(?:/(?<what>status|cancel|response))?/?$"));
  const auto match = follow.match(request.path);
  if (!match.hasMatch()) {
    if (request.method == "POST") return {CallKind::Submit, request.path.mid(1), {}};
    return {};
  }
  const QString what = match.captured(QStringLiteral("what"));
  CallKind kind = CallKind::Result;
  if (what == QStringLiteral("status")) kind = CallKind::Status;
  if (what == QStringLiteral("cancel")) kind = CallKind::Cancel;
  if ((kind == CallKind::Cancel) != (request.method == "PUT")) return {};
  return {kind, match.captured(QStringLiteral("endpoint")), match.captured(QStringLiteral("id"))};
}

Call identifyPlatformCall(const HttpRequest& request) {
  if (request.path == QStringLiteral("/v1/models")) return {CallKind::Models, {}, {}};
  if (request.path == QStringLiteral("/v1/models/pricing")) return {CallKind::Pricing, {}, {}};
  return {};
}

Call identifyGatewayCall(const HttpRequest& request) {
  const QString kind = request.path.section(QLatin1Char('/'), 2, 2);
  const QString id = request.path.section(QLatin1Char('/'), 3, 3);
  const bool isPost = request.method == "POST";
  if (kind == QStringLiteral("images") && isPost) return {CallKind::Purchase, QStringLiteral("gateway"), {}};
  if (kind == QStringLiteral("requests")) return {CallKind::LookUp, {}, id};
  if (kind == QStringLiteral("operations")) return {isPost ? CallKind::CancelOperation : CallKind::Operation, {}, id};
  if (kind == QStringLiteral("uploads")) return {CallKind::GatewayUpload, {}, {}};
  if (kind == QStringLiteral("prices")) return {CallKind::Prices, {}, {}};
  if (kind == QStringLiteral("interpret") && isPost) return {CallKind::Interpret, QStringLiteral("interpret"), {}};
  return {CallKind::Account, {}, {}};
}

}  // namespace

Call identify(const HttpRequest& request) {
  if (request.host == hosts::gateway) return identifyGatewayCall(request);
  if (request.host == hosts::checkout) return {CallKind::CheckoutPage, {}, {}};
  if (request.host == hosts::queue) return identifyQueueCall(request);
  if (request.host == hosts::platform) return identifyPlatformCall(request);
  if (request.host == hosts::documents && request.path == QStringLiteral("/api/openapi/queue/openapi.json"))
    return {CallKind::Document, {}, {}};
  if (request.host == hosts::storage && request.path == QStringLiteral("/storage/upload/initiate"))
    return {CallKind::UploadStart, {}, {}};
  if (hosts::servesMedia(request.host) && request.method == "PUT") return {CallKind::Upload, {}, {}};
  if (hosts::servesMedia(request.host) && request.method == "GET") return {CallKind::Download, {}, {}};
  return {};
}

QString nameOf(CallKind kind) {
  for (const NamedCall& named : namedCalls)
    if (named.kind == kind) return QString::fromUtf16(named.name);
  return {};
}

std::optional<CallKind> callNamed(const QString& name) {
  for (const NamedCall& named : namedCalls)
    if (name == QString::fromUtf16(named.name)) return named.kind;
  return std::nullopt;
}

QStringList hostsOf(CallKind kind) {
  switch (kind) {
    case CallKind::Submit:
    case CallKind::Status:
    case CallKind::Result:
    case CallKind::Cancel:
      return {hosts::queue};
    case CallKind::UploadStart:
      return {hosts::storage};
    case CallKind::Upload:
      return {hosts::uploads};
    case CallKind::Download:
      return {hosts::media, hosts::uploads, hosts::oldMedia, hosts::elsewhere};
    case CallKind::Models:
    case CallKind::Pricing:
      return {hosts::platform};
    case CallKind::Document:
      return {hosts::documents};
    case CallKind::Purchase:
    case CallKind::LookUp:
    case CallKind::Operation:
    case CallKind::CancelOperation:
    case CallKind::GatewayUpload:
    case CallKind::Prices:
    case CallKind::Interpret:
    case CallKind::Account:
      return {hosts::gateway};
    case CallKind::CheckoutPage:
      return {hosts::checkout};
    case CallKind::Other:
      return {};
  }
  return {};
}

}  // namespace sandbox
