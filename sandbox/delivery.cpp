#include "delivery.h"

#include <QTimer>

namespace sandbox {

namespace {

constexpr int trickleMilliseconds = 50;

// The part of the body that a cut or stalled answer shows.
qsizetype halfOf(const HttpAnswer& answer) { return answer.body.size() / 2; }

// Writes the body in small pieces. Lives as a child of the connection, and ends with it.
void trickle(HttpConnection& connection, const QByteArray& body, int bytesPerSecond) {
  auto* timer = new QTimer(&connection);
  const qsizetype piece = qMax(1, bytesPerSecond * trickleMilliseconds / 1000);
  QObject::connect(timer, &QTimer::timeout, &connection,
                   [timer, &connection, body, piece, at = qsizetype(0)]() mutable {
                     connection.write(body.mid(at, piece));
                     at += piece;
                     if (at < body.size()) return;
                     timer->stop();
                     timer->deleteLater();
                     connection.finish(true);
                   });
  timer->start(trickleMilliseconds);
}

}  // namespace

void deliver(HttpConnection& connection, const HttpAnswer& answer, Shape shape, int bytesPerSecond) {
  const bool keepAlive = connection.wantsKeepAlive();
  switch (shape) {
    case Shape::Plain:
      connection.write(headBytes(answer, Length::Announced, keepAlive) + answer.body);
      return connection.finish(true);
    case Shape::CutStatusLine:
      connection.write("HTTP/1.");
      return connection.finish(false);
    case Shape::CutWithLength:
      connection.write(headBytes(answer, Length::Announced, false) + answer.body.left(halfOf(answer)));
      return connection.finish(false);
    case Shape::CutWithoutLength:
      connection.write(headBytes(answer, Length::Unsaid, false) + answer.body.left(halfOf(answer)));
      return connection.finish(false);
    case Shape::Slow:
      connection.write(headBytes(answer, Length::Announced, keepAlive));
      return trickle(connection, answer.body, bytesPerSecond);
    case Shape::Stall:
      return connection.write(headBytes(answer, Length::Announced, keepAlive) + answer.body.left(halfOf(answer)));
    case Shape::Twice: {
      const QByteArray once = headBytes(answer, Length::Announced, keepAlive) + answer.body;
      connection.write(once + once);
      return connection.finish(true);
    }
  }
}

void finishStalled(HttpConnection& connection, const HttpAnswer& answer) {
  connection.write(answer.body.mid(halfOf(answer)));
  connection.finish(true);
}

}  // namespace sandbox
