// The body of a request that must leave at most once.
#pragma once

#include <QByteArray>
#include <QIODevice>

#include "platform/room.h"

namespace sorvan::platform {

// Hands its bytes out once. It is sequential and cannot be reset, so the network library, which would otherwise send a
// request again when the server closes the connection, has nothing to send again.
class OneShotUpload final : public QIODevice {
  Q_OBJECT

 public:
  explicit OneShotUpload(QByteArray bytes, QObject* parent = nullptr);

  // Whether any of it was taken: from then on the service may have it.
  bool wasRead() const { return taken; }

  bool isSequential() const override { return true; }
  bool reset() override { return false; }
  bool seek(qint64) override { return false; }
  bool atEnd() const override { return position >= body.size(); }
  qint64 size() const override { return body.size(); }
  qint64 bytesAvailable() const override { return body.size() - position; }

 protected:
  qint64 readData(char* target, qint64 maximum) override;
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  QByteArray body;
  qint64 position = 0;
  bool taken = false;
};

}  // namespace sorvan::platform
