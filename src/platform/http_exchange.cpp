#include "platform/http_exchange.h"

#include "platform/texts.h"

namespace sorvan::platform {

// An error page or a refusal is small; nobody needs more of it.
static constexpr qint64 maximumRefusalBytes = 1 << 20;

HttpExchange::HttpExchange(std::shared_ptr<QNetworkAccessManager> held, QNetworkReply* running, Limits bounds,
                           Sink target)
    : session(std::move(held)), reply(running), limits(bounds), sink(std::move(target)) {
  connect(reply, &QNetworkReply::metaDataChanged, this, &HttpExchange::onHeaders);
  connect(reply, &QNetworkReply::readyRead, this, &HttpExchange::takePiece);
  connect(reply, &QNetworkReply::uploadProgress, this, &HttpExchange::touched);
  connect(reply, &QNetworkReply::finished, this, &HttpExchange::onFinished);
  connect(&idle, &QTimer::timeout, this, [this] { stop(ExchangeEnd::IdleTooLong); });
  connect(&total, &QTimer::timeout, this, [this] { stop(ExchangeEnd::TotalTooLong); });
  idle.setSingleShot(true);
  total.setSingleShot(true);
  idle.start(limits.idle);
  if (limits.total.count() > 0) total.start(limits.total);
}

HttpExchange::~HttpExchange() {
  disconnect(reply, nullptr, this, nullptr);
  reply->deleteLater();
}

void HttpExchange::touched() {
  if (!over) idle.start(limits.idle);
}

void HttpExchange::stop(ExchangeEnd why) {
  if (over) return;
  over = true;
  reason = why;
  idle.stop();
  total.stop();
  reply->abort();
  completion.finish();
}

void HttpExchange::onHeaders() {
  touched();
  if (succeeds() && announcedBytes() > limits.bytes) stop(ExchangeEnd::TooLarge);
}

void HttpExchange::takePiece() {
  touched();
  if (over) return;
  const QByteArray piece = reply->readAll();
  received += piece.size();
  if (succeeds() && received > limits.bytes) return stop(ExchangeEnd::TooLarge);
  try {
    keep(piece);
  } catch (...) {
    thrownBySink = std::current_exception();
    stop(ExchangeEnd::SinkFailed);
  }
}

void HttpExchange::keep(const QByteArray& piece) {
  if (!succeeds()) {
    body.append(piece.first(std::min(piece.size(), maximumRefusalBytes - body.size())));
  } else if (sink) {
    sink(piece);
  } else {
    body.append(piece);
  }
}

void HttpExchange::onFinished() {
  if (over) return;
  if (reply->bytesAvailable() > 0) takePiece();
  if (over) return;
  over = true;
  idle.stop();
  total.stop();
  completion.finish();
}

int HttpExchange::status() const { return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

bool HttpExchange::hasStatus() const { return status() > 0; }

bool HttpExchange::succeeds() const { return status() >= 200 && status() < 300; }

// -1 when nothing was announced, or when what was announced counts compressed bytes.
qint64 HttpExchange::announcedBytes() const {
  const QByteArray encoding = reply->rawHeader("Content-Encoding");
  if (!encoding.isEmpty() && encoding.compare("identity", Qt::CaseInsensitive) != 0) return -1;
  bool isNumber = false;
  const qint64 announced = reply->rawHeader("Content-Length").trimmed().toLongLong(&isNumber);
  return isNumber ? announced : -1;
}

// The library's error numbers below 200 are failures of the connection or the proxy; those above tell a status from 400
// on, except three that are failures of the transport again.
bool HttpExchange::endedByTransport() const {
  const auto error = reply->error();
  if (error == QNetworkReply::NoError) return false;
  // The library names this error for every 307 and 308 to a body that cannot be sent twice: the answer itself arrived.
  if (error == QNetworkReply::ContentReSendError && (status() == 307 || status() == 308)) return false;
  if (status() < 400 || error < QNetworkReply::ContentAccessDenied) return true;
  return error == QNetworkReply::ContentReSendError || error == QNetworkReply::ProtocolUnknownError ||
         error == QNetworkReply::ProtocolFailure;
}

bool HttpExchange::isComplete() const {
  if (reason != ExchangeEnd::Finished || !hasStatus() || endedByTransport()) return false;
  return !succeeds() || announcedBytes() <= received;
}

HttpReply HttpExchange::takeReply() {
  HttpReply answer;
  answer.status = status();
  answer.reason = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString().trimmed();
  if (answer.reason.isEmpty()) answer.reason = statusPhrase(answer.status);
  for (const auto& [name, value] : reply->rawHeaderPairs()) answer.headers.emplace_back(name, value);
  answer.body = std::exchange(body, {});
  answer.url = reply->url();
  return answer;
}

static HttpProblem problemOf(QNetworkReply::NetworkError error) {
  switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::SslHandshakeFailedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
      return HttpProblem::CannotConnect;
    case QNetworkReply::TimeoutError:
      return HttpProblem::TimedOut;
    default:
      return HttpProblem::Interrupted;
  }
}

HttpError HttpExchange::failure() const {
  if (reason == ExchangeEnd::TooLarge) return {HttpProblem::TooLarge, texts::answerTooLarge()};
  if (reason != ExchangeEnd::Finished) return {HttpProblem::TimedOut, texts::answerTimedOut()};
  if (reply->error() == QNetworkReply::NoError)
    return hasStatus() ? HttpError(HttpProblem::Truncated, texts::answerCutShort())
                       : HttpError(HttpProblem::Interrupted, texts::noAnswer());
  const QString text = reply->errorString().trimmed();
  const HttpProblem problem = hasStatus() ? HttpProblem::Truncated : problemOf(reply->error());
  return {problem, text.isEmpty() ? texts::noAnswer() : text};
}

}  // namespace sorvan::platform
