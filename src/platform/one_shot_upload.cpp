#include "platform/one_shot_upload.h"

#include <cstring>

namespace sorvan::platform {

OneShotUpload::OneShotUpload(QByteArray bytes, QObject* parent) : QIODevice(parent), body(std::move(bytes)) {
  // Unbuffered: what the device has been asked for is what has left.
  open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 OneShotUpload::readData(char* target, qint64 maximum) {
  const qint64 left = body.size() - position;
  if (left == 0) return -1;
  const qint64 count = std::min(left, maximum);
  if (count > 0) taken = true;
  std::memcpy(target, body.constData() + position, static_cast<size_t>(count));
  position += count;
  return count;
}

}  // namespace sorvan::platform
