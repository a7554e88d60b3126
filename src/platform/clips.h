// Clips as values: measuring and single frames. Plain functions that may run on any thread; they block, so they belong
// on the pool. A clip's display matrix and pixel shape are applied: sizes and frames are upright, as shown.
#pragma once

#include <optional>
#include <stop_token>

#include <QImage>
#include <QSize>
#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

struct ClipFacts {
  QSize size{0, 0};                ///< pixels as shown; 0 × 0 without a picture track
  std::optional<double> duration;  ///< seconds; empty when the file does not tell a finite one
  double framesPerSecond = 0;      ///< the picture track's nominal rate; 0 when unknown
  bool hasPicture = false;         ///< a cover picture does not count
  bool hasSound = false;
};

/// SorvanError "This clip could not be read." for what is no clip or sound.
ClipFacts probeClip(const QString& path);

/// The frame shown at `seconds`, the first frame before the clip's start and the last one after its end, scaled down to
/// fit inside `maximum` (never up). Format RGB32. SorvanError "This clip could not be read." when there is no frame;
/// Cancelled on stop.
QImage frameAt(const QString& path, double seconds, std::optional<QSize> maximum = {},
               const std::stop_token& stop = {});

/// The very last frame that decodes, at full size: what a clip that goes on from this one starts with. Failures as
/// `frameAt`.
QImage lastFrame(const QString& path, const std::stop_token& stop = {});

}  // namespace sorvan::platform
