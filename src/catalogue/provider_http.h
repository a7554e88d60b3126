// One exchange with a remote service, and how its refusals are told.
#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <memory>
#include <stop_token>

#include "base/sorvan_error.h"
#include "catalogue/room.h"
#include "platform/http.h"

namespace sorvan::catalogue {

/// A reply outside 200 to 299. Its message is the final sentence; the reply tells more to code.
class ProviderRefusal final : public SorvanError {
 public:
  explicit ProviderRefusal(HttpReply answer, const QUrl& asked);
  const HttpReply& reply() const noexcept { return answer; }
  int status() const noexcept { return answer.status; }

 private:
  HttpReply answer;
};

/// Why a service refused, in its own words or in those of the standard; at most some thousand characters.
QString refusalDetail(const HttpReply& reply);
/// The sentence for a refusal; one of a host of fal.ai with 401 or 403 names the key and the way out.
QString refusalMessage(const HttpReply& reply, const QUrl& asked);

/// Sends and answers a reply of 200 to 299. Throws ProviderRefusal for any other status, HttpError when there is no
/// reply, "Invalid server response." when it is no HTTP reply, Cancelled on stop.
Task<HttpReply> sendChecked(std::shared_ptr<HttpTransport> transport, HttpRequest request, std::stop_token stop);

/// The object of a JSON body; throws SorvanError "Invalid provider response." for anything else.
QJsonObject jsonObject(const QByteArray& body);

/// A request that carries the user's key. Throws SorvanError "Unexpected provider job URL." when the address is not one
/// that may receive it.
HttpRequest keyedRequest(const QByteArray& verb, const QUrl& url, const QString& key);
/// The same with a JSON body.
HttpRequest keyedJsonRequest(const QByteArray& verb, const QUrl& url, const QString& key, const QJsonObject& body);

}  // namespace sorvan::catalogue
