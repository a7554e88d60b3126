// Reads the clips and sounds that jobs get as input. Damaged input throws std::runtime_error.
#pragma once
#include <QByteArray>
#include <QImage>
#include <functional>
#include <optional>

#include "sound.h"

namespace sandbox {

// The first sound stream, as 44,100 stereo frames a second; nothing when there is none.
std::optional<Sound> readSound(const QByteArray& media);

struct ClipFacts {
  double seconds = 0;
  QSize size;
  int picturesASecond = 24;
};
ClipFacts factsOfClip(const QByteArray& clip);
// Every picture of the first picture stream in order.
void forEachPicture(const QByteArray& clip, const std::function<void(const QImage&)>& take);

}  // namespace sandbox
