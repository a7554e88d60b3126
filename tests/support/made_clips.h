// Small clips and sounds that tests make.
#pragma once

#include <QSize>
#include <QString>
#include <functional>

namespace sorvan::test {

struct ClipRecipe {
  QSize size{64, 48};  ///< as stored, before the turn; even numbers
  int frames = 10;     ///< frame number i is plain grey of `greyOfFrame(i)`
  int framesPerSecond = 10;
  int quarterTurns = 0;  ///< clockwise, noted in the display matrix
  bool sound = false;    ///< a tone of 440 Hz in AAC, as long as the picture
};
/// The grey, 0 to 255, of a frame of a made clip.
int greyOfFrame(int index);
/// H.264 in MP4; a top left quarter of each frame is white, so that turns can be told.
void makeClip(const QString& path, const ClipRecipe& recipe);

/// 16-bit mono WAV of these samples.
void makeWav(const QString& path, int samplesPerSecond, int samples, const std::function<double(int index)>& value);
/// Bare AAC of a tone, without a header that tells its length.
void makeAac(const QString& path, double seconds);
/// AAC in M4A of a tone.
void makeM4a(const QString& path, double seconds, int channels = 2);

}  // namespace sorvan::test
