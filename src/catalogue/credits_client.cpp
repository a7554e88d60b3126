#include "catalogue/credits_client.h"

#include "catalogue/gateway_address.h"
#include "catalogue/texts.h"
#include "generation/provider.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int notFound = 404;
constexpr qint64 largestReply = 16LL << 20;  // bytes

/// An id of the gateway or of a request is one part of a path, whatever is in it.
QString pathPart(const QString& id) { return QString::fromLatin1(QUrl::toPercentEncoding(id)); }

QByteArray bodyOrRefusal(const HttpReply& reply) {
  if (!reply.succeeded()) throw GatewayRefusal(reply.status, gatewayRefusalMessage(reply.body));
  return reply.body;
}

/// What is told of a POST that ended without acceptance.
QString messageOf(const PostOutcome& outcome) {
  return outcome.reply ? gatewayRefusalMessage(outcome.reply->body) : outcome.problem;
}

bool isRefused(int status) { return status >= 400 && status < 500; }

QByteArray acceptedBody(const PostOutcome& outcome, Stakes stakes) {
  if (outcome.fate == PostFate::Answered && outcome.reply) return outcome.reply->body;
  if (stakes == Stakes::once && outcome.reply && isRefused(outcome.reply->status))
    throw GatewayRefusal(outcome.reply->status, messageOf(outcome));
  if (outcome.fate != PostFate::NotSent) throw SubmissionUnknown(messageOf(outcome));
  if (outcome.reply) throw GatewayRefusal(outcome.reply->status, messageOf(outcome));
  throw HttpError(HttpProblem::CannotConnect, messageOf(outcome));
}

}  // namespace

QString gatewayRefusalMessage(const QByteArray& body) {
  constexpr qsizetype longest = 4000;
  try {
    const QJsonValue error = parseJson(body, largestReply).toObject().value(u"error"_s);
    if (error.isString() && !error.toString().isEmpty()) return error.toString().left(longest);
  } catch (const JsonError&) {
    // Nothing that was written for users.
  }
  return texts::gatewayRefused();
}

void CreditsClient::throwUnknown(const QString& message) { throw SubmissionUnknown(message); }

HttpRequest CreditsClient::request(const GatewayCall& call) const {
  HttpRequest asked;
  asked.url = gatewayURL(access.gateway, call.path);
  asked.verb = call.body ? "POST" : "GET";
  if (hasToken()) asked.headers.emplace_back("Authorization", "Bearer " + access.token.toUtf8());
  if (call.body) asked.headers.emplace_back("Content-Type", call.contentType);
  if (call.idempotencyKey) asked.headers.emplace_back("Idempotency-Key", call.idempotencyKey->toUtf8());
  if (call.feature && !call.feature->isEmpty())
    asked.headers.emplace_back("X-Sorvan-Feature", call.feature->toUtf8());
  asked.body = call.body.value_or(QByteArray());
  asked.idleTimeout = call.timeout;
  asked.maximumBytes = largestReply;
  return asked;
}

Task<QByteArray> CreditsClient::send(GatewayCall call, std::stop_token stop) const {
  const Access to = access;
  HttpRequest asked = request(call);
  if (call.body && call.idempotencyKey) {
    const PostOutcome outcome = co_await to.transport->postOnce(std::move(asked), stop);
    co_return acceptedBody(outcome, call.stakes);
  }
  const HttpReply reply = co_await to.transport->send(std::move(asked), stop);
  co_return bodyOrRefusal(reply);
}

Task<CreditsOperation> CreditsClient::submit(Submission submission, std::stop_token stop) const {
  GatewayCall call;
  call.path = u"v1/images"_s;
  call.body = jsonText(QJsonObject{{u"model"_s, submission.model}, {u"input"_s, submission.input}});
  call.idempotencyKey = submission.requestID;
  call.feature = submission.feature;
  const QByteArray reply = co_await send(std::move(call), stop);
  co_return decodedReply<CreditsOperation>(reply, true);
}

Task<CreditsOperation> CreditsClient::wait(CreditsOperation begun, int seconds, std::stop_token stop) const {
  const CreditsClient self = *this;
  CreditsOperation current = std::move(begun);
  for (int asked = 0;; ++asked) {
    if (current.isComplete()) co_return current;
    const QString failure = current.failure.value_or(texts::requestFailed());
    if (current.isFailed()) throw RemoteJobFailed(failure, RemoteJobFailed::Billing::nothing);
    if (current.isUncertain()) throw SorvanError(failure);
    if (asked == seconds) throw SorvanError(texts::stillProcessing());
    throwIfStopped(stop);
    co_await self.access.clock->sleep(std::chrono::seconds(1), stop);
    current = co_await self.operation(current.id, stop);
  }
}

Task<std::optional<CreditsOperation>> CreditsClient::existing(QString requestID, std::stop_token stop) const {
  const Access to = access;
  GatewayCall call;
  call.path = u"v1/requests/"_s + pathPart(requestID);
  const HttpReply reply = co_await to.transport->send(request(call), stop);
  if (reply.status == notFound) co_return std::nullopt;
  co_return decodeJson<CreditsOperation>(bodyOrRefusal(reply));
}

Task<CreditsOperation> CreditsClient::operation(QString id, std::stop_token stop) const {
  return get<CreditsOperation>(u"v1/operations/"_s + pathPart(id), stop);
}

Task<std::optional<CreditsOperation>> CreditsClient::cancel(QString id, std::stop_token stop) const {
  GatewayCall call;
  call.path = u"v1/operations/"_s + pathPart(id) + u"/cancel"_s;
  call.body = QByteArray("{}");
  const QByteArray reply = co_await send(std::move(call), stop);
  if (reply.trimmed().isEmpty()) co_return std::nullopt;
  co_return decodeJson<CreditsOperation>(reply);
}

}  // namespace sorvan::catalogue
