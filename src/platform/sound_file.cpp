#include "platform/sound_file.h"

#include "platform/media_output.h"
#include "platform/media_texts.h"

namespace sorvan::platform {

class SoundFileWriter::Encoding {
 public:
  Encoding(const QString& path, int samplesPerSecond, int channels)
      : file(path, "ipod", texts::soundNotWritten()), track(file, samplesPerSecond, channels) {
    file.begin();
  }

  MediaFile file;
  SoundTrackWriter track;
};

SoundFileWriter::SoundFileWriter(const QString& path, int samplesPerSecond, int channels)
    : encoding_(std::make_unique<Encoding>(path, samplesPerSecond, channels)) {}
SoundFileWriter::~SoundFileWriter() = default;
void SoundFileWriter::write(std::span<const float> samples) { encoding_->track.write(samples); }

void SoundFileWriter::finish() {
  encoding_->track.end();
  encoding_->file.finish();
}

}  // namespace sorvan::platform
