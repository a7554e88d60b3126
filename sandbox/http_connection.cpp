#include "http_connection.h"

namespace sandbox {

namespace {
constexpr qsizetype maximumHeadBytes = 64 * 1024;
constexpr qsizetype maximumBodyBytes = 512LL * 1024 * 1024;
constexpr qint64 readBufferBytes = 1024 * 1024;
}  // namespace

HttpConnection::HttpConnection(QTcpSocket* socket, QString host, HttpHandler& handler, QObject* parent)
    : QObject(parent), socket_(socket), host_(std::move(host)), handler_(handler) {
  socket_->setParent(this);
  socket_->setReadBufferSize(readBufferBytes);
  connect(socket_, &QTcpSocket::readyRead, this, &HttpConnection::read);
  connect(socket_, &QTcpSocket::disconnected, this, &HttpConnection::closed);
  QMetaObject::invokeMethod(this, &HttpConnection::read, Qt::QueuedConnection);
}

bool HttpConnection::wantsKeepAlive() const {
  return request_.header("Connection").compare("close", Qt::CaseInsensitive) != 0;
}

void HttpConnection::read() {
  if (phase_ == Phase::Head || phase_ == Phase::Body) pending_ += socket_->readAll();
  if (phase_ == Phase::Head) {
    readHead();
  } else if (phase_ == Phase::Body) {
    readBody();
  }
}

void HttpConnection::readHead() {
  const qsizetype end = pending_.indexOf("\r\n\r\n");
  if (end < 0) {
    if (pending_.size() > maximumHeadBytes) refuseGarbage();
    return;
  }
  const auto head = parseHead(pending_.left(end), host_);
  pending_.remove(0, end + 4);
  if (!head || head->contentLength() < 0 || head->contentLength() > maximumBodyBytes) return refuseGarbage();
  request_ = *head;
  phase_ = Phase::Stopped;
  if (handler_.headArrived(*this, request_) == HttpHandler::Verdict::ReadBody) resumeReading();
}

void HttpConnection::resumeReading() {
  if (phase_ != Phase::Stopped) return;
  phase_ = Phase::Body;
  if (!request_.header("Expect").isEmpty()) write("HTTP/1.1 100 Continue\r\n\r\n");
  QMetaObject::invokeMethod(this, &HttpConnection::read, Qt::QueuedConnection);
}

void HttpConnection::readBody() {
  if (request_.header("Transfer-Encoding").contains("chunked")) {
    if (!readChunks()) return;
  } else {
    const qint64 length = request_.contentLength();
    if (pending_.size() < length) return;
    request_.body = pending_.left(length);
    pending_.remove(0, length);
  }
  phase_ = Phase::Answering;
  handler_.requestArrived(*this, request_);
}

// Takes the whole chunked body out of the pending bytes, once it stands there.
bool HttpConnection::readChunks() {
  QByteArray body;
  qsizetype at = 0;
  for (;;) {
    const qsizetype lineEnd = pending_.indexOf("\r\n", at);
    if (lineEnd < 0) return false;
    bool readable = false;
    const qlonglong size = pending_.mid(at, lineEnd - at).split(';').first().trimmed().toLongLong(&readable, 16);
    if (!readable || size < 0 || body.size() + size > maximumBodyBytes) {
      refuseGarbage();
      return false;
    }
    if (pending_.size() < lineEnd + 2 + size + 2) return false;
    body += pending_.mid(lineEnd + 2, size);
    at = lineEnd + 2 + size + 2;
    if (size == 0) break;
  }
  pending_.remove(0, at);
  request_.body = body;
  return true;
}

void HttpConnection::refuseGarbage() {
  phase_ = Phase::Answering;
  const HttpAnswer answer = detailAnswer(400, QStringLiteral("Bad request"));
  write(headBytes(answer, Length::Announced, false) + answer.body);
  finish(false);
}

void HttpConnection::write(const QByteArray& bytes) {
  if (phase_ != Phase::Closed) socket_->write(bytes);
}

void HttpConnection::finish(bool keepAlive) {
  if (phase_ == Phase::Closed) return;
  if (keepAlive && wantsKeepAlive()) {
    phase_ = Phase::Head;
    request_ = {};
    QMetaObject::invokeMethod(this, &HttpConnection::read, Qt::QueuedConnection);
    return;
  }
  phase_ = Phase::Answering;
  socket_->disconnectFromHost();
}

void HttpConnection::drop() {
  if (phase_ != Phase::Closed) socket_->abort();
}

void HttpConnection::closed() {
  if (phase_ == Phase::Closed) return;
  phase_ = Phase::Closed;
  handler_.connectionLost(*this);
  deleteLater();
}

}  // namespace sandbox
