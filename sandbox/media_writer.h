// Writes clips and sounds. The same pictures and samples always give the same bytes.
#pragma once
#include <QByteArray>
#include <QImage>
#include <optional>

#include "coder.h"
#include "sound.h"
#include "track.h"

namespace sandbox {

// "mp3" (128 kbit/s) or "wav" (16 bits).
QByteArray encodeSound(const Sound& sound, const QByteArray& format);

// An MP4 of H.264 and AAC, picture by picture.
class ClipWriter {
 public:
  // `size` is even; pictures of any size are scaled to it. `sound` is the whole sound, or nothing for a silent clip.
  ClipWriter(QSize size, int picturesASecond, std::optional<Sound> sound);
  ~ClipWriter();
  void add(const QImage& picture);
  // The last picture once more, which costs little.
  void addAgain();
  // Ends the file and returns it; nothing may be added afterwards.
  QByteArray finish();

 private:
  void openPictures(QSize size, int picturesASecond);
  void openSound();
  void encodeLast();
  void writeSoundUntil(double seconds);

  MemoryFile file_;
  AVFormatContext* format_ = nullptr;
  std::unique_ptr<Track> pictures_;
  std::unique_ptr<Track> soundTrack_;
  std::optional<Sound> sound_;
  qsizetype soundAt_ = 0;
  Frame last_;
  std::int64_t pictureCount_ = 0;
  int picturesASecond_;
  Scaler scaler_;
  QSize scaledFrom_;
};

}  // namespace sandbox
