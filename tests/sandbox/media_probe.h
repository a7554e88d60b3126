// Decodes clips and sounds with FFmpeg and says what is in them.
#pragma once
#include <QByteArray>
#include <QImage>
#include <QString>
#include <optional>
#include <vector>

namespace sorvan::test {

struct DecodedSound {
  QString codec;
  double seconds = 0;   // of what was decoded
  double loudness = 0;  // root of the mean square, 0 to 1
  int rate = 0;
  int channels = 0;
};
struct DecodedClip {
  QString codec;
  QSize size;
  double seconds = 0;  // as the container says it
  std::vector<QImage> pictures;
};

// Nothing when there is no stream of the kind, or it does not decode.
std::optional<DecodedSound> decodeSound(const QByteArray& media);
std::optional<DecodedClip> decodeClip(const QByteArray& media);

// The mean difference of two pictures of one size, 0 to 255.
double meanDifference(const QImage& a, const QImage& b);

}  // namespace sorvan::test
