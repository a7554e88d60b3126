// Every host of a remote service, and the rules of what may be sent where. Compiled in: no setting changes them.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace sorvan::catalogue {

namespace service_hosts {
inline constexpr char16_t queue[] = u"queue.fal.run";
inline constexpr char16_t storage[] = u"rest.fal.ai";
inline constexpr char16_t platform[] = u"api.fal.ai";
/// The public document of a model's settings; no key goes there.
inline constexpr char16_t documents[] = u"fal.ai";
/// Where finished media lie, on this host and on those below it.
inline constexpr char16_t media[] = u"fal.media";
/// The studio's own service, which holds the credits.
inline constexpr char16_t gateway[] = u"gateway.sorvan.app";
/// The payment provider's pages.
inline constexpr char16_t checkout[] = u"checkout.sorvan.app";
}  // namespace service_hosts

/// Whether the user's key may be sent to this address: https, one of the three hosts above that take it, no user name
/// or password in it, and no port but 443.
bool mayReceiveKey(const QUrl& url);

/// Whether the address belongs to fal.ai or fal.run or a subdomain of theirs: what decides how a refusal is told.
bool isHostOfFal(const QUrl& url);

/// Whether bytes without any secret may go to or come from this address: https with a host.
bool isPlainHttps(const QUrl& url);

/// Whether a result that credits paid for may be fetched from this address: https on the host of finished media.
bool isMediaAddress(const QUrl& url);

/// Whether a page to pay on lies at this address: https at the payment provider.
bool isCheckoutAddress(const QUrl& url);

/// The text as an https address, or an empty one.
QUrl httpsAddress(const QString& text);

/// Addresses of the queue. `endpoint` is a model id; of an endpoint's path a job's address keeps the first two parts,
/// or three for those that begin with "workflows" or "comfy".
QUrl submitAddress(const QString& endpoint);
QUrl resultAddress(const QString& endpoint, const QString& requestID);
QUrl statusAddress(const QString& endpoint, const QString& requestID);
QUrl cancelAddress(const QString& endpoint, const QString& requestID);
QUrl uploadAddress();
/// The document of a model's settings.
QUrl documentAddress(const QString& endpoint);
/// A page of the public catalogue; without words, everything of the category.
QUrl catalogAddress(const QString& category, const QString& words, int limit, const std::optional<QString>& page);
/// The list prices of these models.
QUrl pricesAddress(const QStringList& endpoints, const std::optional<QString>& page);
/// The address that a price's record names as its source.
QUrl pricingAddress();

}  // namespace sorvan::catalogue
