#include "platform/http_client.h"

#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QSslConfiguration>

#include "base/durable_writer.h"
#include "platform/http_exchange.h"
#include "platform/one_shot_upload.h"
#include "platform/texts.h"

namespace sorvan::platform {

// The session of everything but the one POST, which outlives the client for as long as an exchange runs in it.
struct SharedSession {
  std::shared_ptr<QNetworkAccessManager> current;

  // A session that let an exchange run out of time is not used again: the library keeps a connection that broke while it
  // was made, and lets every later request wait for it.
  void leaveIfHung(const std::shared_ptr<QNetworkAccessManager>& used, const HttpExchange& exchange) {
    const bool hung = exchange.end() == ExchangeEnd::IdleTooLong || exchange.end() == ExchangeEnd::TotalTooLong;
    if (hung && current == used) current.reset();
  }
};

// How much of a download waits in memory for the disk.
static constexpr qint64 readBufferBytes = 1 << 20;
static constexpr int maximumRedirects = 5;

namespace {

// The configured proxy for everything, or the system's for all but this machine itself.
class ProxyChoice final : public QNetworkProxyFactory {
 public:
  explicit ProxyChoice(std::optional<QNetworkProxy> always) : configured(std::move(always)) {}

  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    if (configured) return {*configured};
    const QString host = query.peerHostName();
    if (host == QStringLiteral("localhost") || QHostAddress(host).isLoopback()) return {QNetworkProxy::NoProxy};
    return systemProxyForQuery(query);
  }

 private:
  std::optional<QNetworkProxy> configured;
};

// Keeps no cookie.
class NoCookies final : public QNetworkCookieJar {
 public:
  QList<QNetworkCookie> cookiesForUrl(const QUrl&) const override { return {}; }
  bool setCookiesFromUrl(const QList<QNetworkCookie>&, const QUrl&) override { return false; }
};

QSslConfiguration trusting(const ServiceConfiguration& service) {
  QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
  QList<QSslCertificate> authorities = QSslCertificate::fromData(service.authority, QSsl::Pem);
  if (service.trustsSystem) authorities += QSslConfiguration::systemCaCertificates();
  configuration.setCaCertificates(authorities);
  return configuration;
}

bool hasHeader(const HttpRequest& request, const QByteArray& name) {
  return std::any_of(request.headers.begin(), request.headers.end(),
                     [&](const HttpHeader& header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });
}

bool carriesSecret(const HttpRequest& request) {
  return hasHeader(request, "Authorization") || hasHeader(request, "Cookie") || hasHeader(request, "Idempotency-Key");
}

// A line break in a header, from a key that was pasted with one, would begin another header.
bool isWellFormed(const HttpRequest& request) {
  const auto breaks = [](const QByteArray& text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
  };
  const bool web = request.url.scheme() == QStringLiteral("https") || request.url.scheme() == QStringLiteral("http");
  return web && request.url.isValid() && !request.url.host().isEmpty() && request.url.userInfo().isEmpty() &&
         std::none_of(request.headers.begin(), request.headers.end(),
                      [&](const HttpHeader& header) { return breaks(header.first) || breaks(header.second); });
}

HttpError malformed() { return {HttpProblem::Other, texts::requestCannotBeSent()}; }

HttpExchange::Limits limitsOf(const HttpRequest& request) {
  return {request.idleTimeout, request.totalLimit, request.maximumBytes};
}

// Objects of the network library die from the event loop.
template <class T>
std::shared_ptr<T> ownedLater(T* object) {
  return std::shared_ptr<T>(object, [](T* dying) { dying->deleteLater(); });
}

using SharedExchange = std::shared_ptr<HttpExchange>;

// Resumes when the exchange has ended; a stop that is requested ends it unless `shield` says no.
Task<> awaitEnd(SharedExchange exchange, std::function<bool()> shielded, std::stop_token stop) {
  HttpExchange* running = exchange.get();
  std::stop_callback onStop(stop, [running, shielded] {
    QMetaObject::invokeMethod(
        running,
        [running, shielded] {
          if (!shielded || !shielded()) running->stop();
        },
        Qt::QueuedConnection);
  });
  co_await exchange->ended();
}

QNetworkReply* begin(QNetworkAccessManager& session, const QNetworkRequest& prepared, const HttpRequest& request) {
  if (request.verb == "GET" && request.body.isEmpty()) return session.get(prepared);
  if (request.verb == "HEAD") return session.head(prepared);
  return session.sendCustomRequest(prepared, request.verb, request.body);
}

}  // namespace

HttpClient::HttpClient(std::optional<ServiceConfiguration> configuration)
    : service(std::move(configuration)), shared(std::make_shared<SharedSession>()) {
  if (service) tls = std::make_unique<QSslConfiguration>(trusting(*service));
}

HttpClient::~HttpClient() = default;

std::shared_ptr<QNetworkAccessManager> HttpClient::liveSession() {
  if (!shared->current) shared->current = newSession();
  return shared->current;
}

std::shared_ptr<QNetworkAccessManager> HttpClient::newSession() const {
  auto made = ownedLater(new QNetworkAccessManager);
  std::optional<QNetworkProxy> proxy;
  if (service) proxy = QNetworkProxy(QNetworkProxy::HttpProxy, service->proxyHost, service->proxyPort);
  made->setProxyFactory(new ProxyChoice(proxy));
  made->setCookieJar(new NoCookies);
  made->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
  return made;
}

QNetworkRequest HttpClient::prepared(const HttpRequest& request) const {
  QNetworkRequest result(request.url);
  result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  result.setAttribute(QNetworkRequest::HttpPipeliningAllowedAttribute, false);
  result.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  result.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
  result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  // Without a type of its own the library would guess one and warn.
  if (!request.body.isEmpty() && !hasHeader(request, "Content-Type"))
    result.setRawHeader("Content-Type", "application/octet-stream");
  for (const auto& [name, value] : request.headers) result.setRawHeader(name, value);
  if (tls) result.setSslConfiguration(*tls);
  return result;
}

Task<HttpReply> HttpClient::send(HttpRequest request, std::stop_token stop) {
  throwIfStopped(stop);
  if (!isWellFormed(request)) throw malformed();
  // The exchange holds the session, so that the client may be destroyed before it has ended.
  const auto session = liveSession();
  const auto sessions = shared;
  QNetworkReply* reply = begin(*session, prepared(request), request);
  const auto exchange = ownedLater(new HttpExchange(session, reply, limitsOf(request), {}));
  co_await awaitEnd(exchange, {}, stop);
  sessions->leaveIfHung(session, *exchange);
  throwIfStopped(stop);
  if (!exchange->isComplete()) throw exchange->failure();
  co_return exchange->takeReply();
}

// What is known of the request once its exchange has ended.
static PostOutcome outcomeOf(HttpExchange& exchange, bool bodyLeft) {
  PostOutcome outcome;
  if (exchange.isComplete()) {
    outcome.reply = exchange.takeReply();
    outcome.fate = fateOfStatus(outcome.reply->status);
    return outcome;
  }
  outcome.problem = exchange.failure().message();
  outcome.fate = bodyLeft || exchange.hasStatus() ? PostFate::Unknown : PostFate::NotSent;
  return outcome;
}

Task<PostOutcome> HttpClient::postOnce(HttpRequest request, std::stop_token stop) {
  throwIfStopped(stop);
  if (!isWellFormed(request)) co_return PostOutcome{PostFate::NotSent, std::nullopt, malformed().message()};
  // 1. A connection of its own: a kept one may have been closed by the server meanwhile, and then nobody knows whether
  //    the request arrived.
  const auto single = newSession();
  // 2. A body that cannot be sent twice, its length told beforehand. One byte at least, so that "was it read" tells
  //    whether anything left.
  if (request.body.isEmpty()) request.body = " ";
  auto* upload = new OneShotUpload(request.body);
  QNetworkRequest once = prepared(request);
  once.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
  once.setHeader(QNetworkRequest::ContentLengthHeader, request.body.size());
  // 3. The one POST. The reply owns its body, which it must not outlive.
  QNetworkReply* reply = single->post(once, upload);
  upload->setParent(reply);
  const auto exchange = ownedLater(new HttpExchange(single, reply, limitsOf(request), {}));
  // 4. To its end; once the body was read only its own limits end it earlier.
  co_await awaitEnd(
      exchange, [upload] { return upload->wasRead(); }, stop);
  if (exchange->end() == ExchangeEnd::Stopped) throw Cancelled();
  co_return outcomeOf(*exchange, upload->wasRead());
}

static bool isRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

// Where the answer sends a download, if it may go there.
static std::optional<QUrl> redirectTarget(const HttpRequest& request, const HttpReply& reply, bool plainHttpAllowed) {
  const QByteArray location = reply.header("Location");
  if (!isRedirect(reply.status) || location.isEmpty() || carriesSecret(request)) return std::nullopt;
  const QUrl target = reply.url.resolved(QUrl::fromEncoded(location));
  const bool secure =
      target.scheme() == QStringLiteral("https") || (plainHttpAllowed && target.scheme() == QStringLiteral("http"));
  if (!target.isValid() || !secure || target.host().isEmpty()) return std::nullopt;
  if (request.mayFollow && !request.mayFollow(target)) return std::nullopt;
  return target;
}

// One hop. The file is in place only after an answer of 200 to 299 that came whole.
static Task<HttpReply> downloadHop(std::shared_ptr<SharedSession> sessions,
                                   std::shared_ptr<QNetworkAccessManager> session, QNetworkRequest prepared,
                                   HttpRequest request, QString toPath, std::stop_token stop) {
  // 1. Bytes as they are, so that the announced length can be held against them; no limit in all.
  prepared.setRawHeader("Accept-Encoding", "identity");
  request.totalLimit = std::chrono::milliseconds(0);
  // 2. A temporary file beside its place, before anything is asked: a folder that cannot be written is told at once.
  const auto writer = std::make_shared<std::unique_ptr<DurableWriter>>();
  *writer = std::make_unique<DurableWriter>(toPath, DurableMode::Media);
  QNetworkReply* reply = session->get(prepared);
  reply->setReadBufferSize(readBufferBytes);
  const auto exchange = ownedLater(new HttpExchange(session, reply, limitsOf(request),
                                                    [writer](const QByteArray& piece) { (*writer)->append(piece); }));
  // 3. The body, piece by piece.
  co_await awaitEnd(exchange, {}, stop);
  sessions->leaveIfHung(session, *exchange);
  throwIfStopped(stop);
  if (exchange->end() == ExchangeEnd::SinkFailed) std::rethrow_exception(exchange->sinkFailure());
  if (!exchange->isComplete()) throw exchange->failure();
  // 4. Onto the disk, which takes its time: on the pool.
  HttpReply answer = exchange->takeReply();
  if (!answer.succeeded()) co_return answer;
  co_await onPool([writer] { (*writer)->commit(Replacing::Replace); });
  co_return answer;
}

Task<HttpReply> HttpClient::download(HttpRequest request, QString toPath, std::stop_token stop) {
  throwIfStopped(stop);
  const auto sessions = shared;
  const auto session = liveSession();
  const bool plainHttp = plainHttpAllowed;
  const auto configured = std::make_shared<QNetworkRequest>(prepared(request));
  for (int hop = 0;; ++hop) {
    if (!isWellFormed(request)) throw malformed();
    if (request.url.scheme() != QStringLiteral("https") && !plainHttp)
      throw HttpError(HttpProblem::Insecure, texts::insecureAddress());
    configured->setUrl(request.url);
    HttpReply reply = co_await downloadHop(sessions, session, *configured, request, toPath, stop);
    throwIfStopped(stop);
    const auto target = redirectTarget(request, reply, plainHttp);
    if (!target || hop == maximumRedirects) co_return reply;
    request.url = *target;
  }
}

}  // namespace sorvan::platform
