// HEIC and AVIF pictures, which Qt does not read.
#pragma once

#include <QByteArray>
#include <QImage>

#include "platform/room.h"

namespace sorvan::platform {

struct HeifFacts {
  QSize size;  ///< upright; empty when the file has no picture that can be read
  bool hasAlpha = false;
};

HeifFacts probeHeif(const QByteArray& bytes);
/// The primary picture, upright: RGB888 or RGBA8888, with its profile. Null when it does not decode.
QImage decodeHeif(const QByteArray& bytes);

}  // namespace sorvan::platform
