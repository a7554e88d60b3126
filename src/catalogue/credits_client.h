// A small typed client of the gateway. What can spend money carries an idempotency key and is sent at most once a call.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>
#include <stop_token>

#include "base/clock.h"
#include "base/json.h"
#include "base/sorvan_error.h"
#include "catalogue/credits_operation.h"
#include "catalogue/room.h"
#include "platform/http.h"

namespace sorvan::catalogue {

/// A reply outside 200 to 299. Its message is the gateway's own sentence where it gave one.
class GatewayRefusal final : public SorvanError {
 public:
  GatewayRefusal(int status, const QString& message) : SorvanError(message), number(status) {}
  int status() const noexcept { return number; }

 private:
  int number;
};

/// The final sentence for a reply that the client cannot use.
QString gatewayRefusalMessage(const QByteArray& body);

/// What an answer that is not clear may mean for a call that carries a key.
enum class Stakes {
  money,  ///< only the refusals that are certain count as refusals
  once    ///< it costs nothing, so any refusal of 400 to 499 is one
};

/// What goes with a call beside its path.
struct GatewayCall {
  QString path = {};  ///< such as "v1/me", encoded
  /// Absent: a GET. Otherwise the body of a POST.
  std::optional<QByteArray> body = {};
  QByteArray contentType = "application/json";
  /// Given: the call can spend money or may take effect only once. At most one POST leaves the machine.
  std::optional<QString> idempotencyKey = {};
  Stakes stakes = Stakes::money;
  std::optional<QString> feature = {};  ///< which feature of the studio asks
  std::chrono::milliseconds timeout = std::chrono::seconds(30);
};

/// An immutable value, copied freely. Thread: the main one. Redirects are never followed, so the token reaches no other
/// host.
///
/// Every call throws GatewayRefusal, HttpError, JsonError for a reply that does not read, or Cancelled. One with an
/// idempotency key throws SubmissionUnknown when it may have been accepted, HttpError only when it was certainly not; a
/// stop does not cut it once it began to leave.
class CreditsClient {
 public:
  struct Access {
    std::shared_ptr<HttpTransport> transport = {};
    std::shared_ptr<const Clock> clock = {};
    QUrl gateway = {};  ///< as `gatewayAddress` accepts it
    QString token = {};
  };
  explicit CreditsClient(Access to) : access(std::move(to)) {}

  const QUrl& gateway() const { return access.gateway; }
  bool hasToken() const { return !access.token.isEmpty(); }

  /// The body of a reply of 200 to 299.
  Task<QByteArray> send(GatewayCall call, std::stop_token stop) const;

  template <class T>
  Task<T> get(QString path, std::stop_token stop) const {
    GatewayCall call;
    call.path = std::move(path);
    const QByteArray body = co_await send(std::move(call), stop);
    co_return decodeJson<T>(body);
  }
  template <class T>
  Task<T> post(QString path, QJsonObject body, std::optional<QString> idempotencyKey, std::stop_token stop,
               Stakes stakes = Stakes::money) const {
    GatewayCall call;
    call.path = std::move(path);
    call.body = jsonText(body);
    const bool keyed = idempotencyKey.has_value();
    call.idempotencyKey = std::move(idempotencyKey);
    call.stakes = stakes;
    const QByteArray reply = co_await send(std::move(call), stop);
    co_return decodedReply<T>(reply, keyed);
  }

  struct Submission {
    QString model;
    QJsonObject input;
    QString requestID;  ///< the idempotency key, and the key of `existing`
    QString feature;    ///< empty for none
  };
  /// Buys. See above for what it throws.
  Task<CreditsOperation> submit(Submission submission, std::stop_token stop) const;

  /// Asks once a second, at most `seconds` times, until the operation has ended, and answers it complete. Throws
  /// RemoteJobFailed when it failed, SorvanError when nobody can say or when it takes longer.
  Task<CreditsOperation> wait(CreditsOperation operation, int seconds, std::stop_token stop) const;

  /// The operation that a request began; nothing when the gateway has never seen it, which no other answer means.
  Task<std::optional<CreditsOperation>> existing(QString requestID, std::stop_token stop) const;

  Task<CreditsOperation> operation(QString id, std::stop_token stop) const;

  /// Asks the gateway to stop an operation. Answers nothing when it said nothing about where the operation stands.
  Task<std::optional<CreditsOperation>> cancel(QString operation, std::stop_token stop) const;

 private:
  template <class T>
  static T decodedReply(const QByteArray& reply, bool keyed) {
    try {
      return decodeJson<T>(reply);
    } catch (const JsonError& unreadable) {
      if (keyed) throwUnknown(unreadable.message());
      throw;
    }
  }
  [[noreturn]] static void throwUnknown(const QString& message);
  HttpRequest request(const GatewayCall& call) const;

  Access access;
};

}  // namespace sorvan::catalogue
