// What an HTTP exchange is, and the port through which every part of the studio speaks to the network.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QUrl>

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/room.h"

namespace sorvan::platform {

using HttpHeader = std::pair<QByteArray, QByteArray>;

struct HttpRequest {
  QUrl url;
  QByteArray verb = "GET";
  std::vector<HttpHeader> headers;
  QByteArray body;
  // The longest silence of the other side.
  std::chrono::milliseconds idleTimeout = std::chrono::seconds(60);
  // The longest the whole exchange may take; zero is no limit. Downloads ignore it: a long one was paid for.
  std::chrono::milliseconds totalLimit = std::chrono::seconds(1200);
  // The largest body that is accepted.
  qint64 maximumBytes = 64LL << 20;
  // Asked before a download follows a redirect to this address; without it any https address is followed.
  std::function<bool(const QUrl&)> mayFollow;
};

struct HttpReply {
  int status = 0;
  // The server's words after the number; HTTP's own when it gave none.
  QString reason;
  std::vector<HttpHeader> headers;
  // Empty for a download.
  QByteArray body;
  // Where the answer came from: the last address when redirects were followed.
  QUrl url;

  bool succeeded() const { return status >= 200 && status < 300; }
  // The first header of that name, in any case of letters; empty when absent.
  QByteArray header(const QByteArray& name) const;
};

// The words of the standard for a status: "Not Found". "Unknown" for a number that it does not name.
QString statusPhrase(int status);

enum class HttpProblem { CannotConnect, TimedOut, Interrupted, TooLarge, Truncated, Insecure, Other };

// An exchange that ended without a usable answer. Its message is the network library's own text, never empty.
class HttpError final : public SorvanError {
 public:
  HttpError(HttpProblem kind, const QString& message) : SorvanError(message), problemKind(kind) {}
  HttpProblem problem() const noexcept { return problemKind; }

 private:
  HttpProblem problemKind;
};

// What became of a request that may spend money.
enum class PostFate {
  // It never reached the service, or the service refused it: it may be sent again.
  NotSent,
  // The service took it and answered 2xx. Whether the answer can be read is for the caller to say.
  Answered,
  // It may have been taken and charged: it must not be sent again without the service's or the user's word.
  Unknown,
};

struct PostOutcome {
  PostFate fate = PostFate::Unknown;
  // What the service answered, if it answered at all. Of a 307 or 308 nothing but the fate is known: the network
  // library gives no answer that asks for the body again.
  std::optional<HttpReply> reply;
  // Why there is no reply; empty when there is one.
  QString problem;
};

// The fate that a definite answer tells: 2xx answered; 400, 401, 402, 403, 404, 405, 413, 415, 422 and 429 not sent;
// everything else, 3xx, 408, 409, 425, 499 and 5xx among it, unknown.
PostFate fateOfStatus(int status);

// Thread: the one with the event loop that made it. Every call throws Cancelled when a stop is requested, unless it
// says otherwise. No call follows a redirect except `download`: a 3xx is an answer like any other.
class HttpTransport {
 public:
  virtual ~HttpTransport() = default;

  // One exchange. The network library may send it again when a connection breaks, so it is never for what spends money.
  // Any status is a reply; HttpError when there is none, when it is too large or cut short.
  virtual Task<HttpReply> send(HttpRequest request, std::stop_token stop) = 0;

  // The one way to send what may spend money: at most one POST leaves the machine, whatever happens to the connection.
  // Never throws for what the network does: the outcome says it. A stop requested before anything was sent throws
  // Cancelled; once the body began to leave, the exchange goes on to its end or its time-out, and its outcome is
  // returned although a stop was requested: store what was paid for first, then test the token.
  virtual Task<PostOutcome> postOnce(HttpRequest request, std::stop_token stop) = 0;

  // Streams the body of a GET into a file, which is on the disk when this returns; a file that stands at the path is
  // replaced then, and only then. Only https addresses, redirects from https to https included, at most 5; a request
  // that carries Authorization, Cookie or Idempotency-Key is not redirected. A status outside 200 to 299, a redirect
  // that was not followed among them, is a reply and no file. HttpError when the body is cut short of the announced
  // length, is larger than `maximumBytes` or the connection breaks; FileError when the disk refuses. Nothing is left
  // behind then. A stop that comes after the last byte throws Cancelled and may leave the whole file. Which media the
  // bytes are is for the caller to test.
  virtual Task<HttpReply> download(HttpRequest request, QString toPath, std::stop_token stop) = 0;
};

}  // namespace sorvan::platform
