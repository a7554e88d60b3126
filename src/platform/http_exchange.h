// One exchange that runs: its reply, its limits and where its body goes.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include "platform/http.h"

namespace sorvan::platform {

enum class ExchangeEnd { Finished, IdleTooLong, TotalTooLong, TooLarge, Stopped, SinkFailed };

// Thread: the reply's. Owns the reply, which dies with `deleteLater`: the network library does not survive the death of
// a reply within one of its own signals.
class HttpExchange final : public QObject {
  Q_OBJECT

 public:
  using Sink = std::function<void(const QByteArray& piece)>;
  struct Limits {
    std::chrono::milliseconds idle;
    std::chrono::milliseconds total;  // zero is none
    qint64 bytes;
  };

  // The body's pieces go to the sink, but those of an answer outside 200 to 299 are kept. Without a sink all are. What
  // the sink throws ends the exchange. The session, which owns the reply too, is held until the exchange is gone.
  HttpExchange(std::shared_ptr<QNetworkAccessManager> session, QNetworkReply* reply, Limits limits, Sink sink);
  ~HttpExchange() override;

  // Finished when the exchange has ended, one way or another.
  const Completion& ended() const { return completion; }
  // Ends it early, unless it has ended.
  void stop(ExchangeEnd reason = ExchangeEnd::Stopped);

  ExchangeEnd end() const { return reason; }
  // Whether a status line arrived.
  bool hasStatus() const;
  // Whether the whole answer arrived, of whatever status.
  bool isComplete() const;
  // The answer as far as it came; takes the body out.
  HttpReply takeReply();
  // Why there is no usable answer.
  HttpError failure() const;
  std::exception_ptr sinkFailure() const { return thrownBySink; }

 private:
  void takePiece();
  void keep(const QByteArray& piece);
  void onFinished();
  void onHeaders();
  void touched();
  int status() const;
  bool succeeds() const;
  qint64 announcedBytes() const;
  bool endedByTransport() const;

  std::shared_ptr<QNetworkAccessManager> session;
  QNetworkReply* reply;
  Limits limits;
  Sink sink;
  Completion completion;
  QTimer idle;
  QTimer total;
  QByteArray body;
  qint64 received = 0;
  ExchangeEnd reason = ExchangeEnd::Finished;
  bool over = false;
  std::exception_ptr thrownBySink;
};

}  // namespace sorvan::platform
