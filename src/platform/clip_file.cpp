#include "platform/clip_file.h"

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/clip_frames.h"
#include "platform/clips.h"
#include "platform/media_output.h"
#include "platform/media_texts.h"
#include "platform/sounds.h"

namespace sorvan::platform {
namespace {

PictureTrackFormat pictureFormat(const ClipFormat& format) {
  const QSize even(std::max(2, format.size.width() & ~1), std::max(2, format.size.height() & ~1));
  const double rate = format.framesPerSecond > 0 ? format.framesPerSecond : 24;
  if (format.quality == ClipQuality::best) return {even, rate, 17, "fast"};
  return {even, rate, 22, "veryfast"};
}

/// The sound of a clip as it comes, for a writer of the same shape; a clip without one has none.
void copySound(const QString& clip, const ClipFormat& format, ClipFileWriter& writer, const std::stop_token& stop) {
  readSound(
      clip, {.samplesPerSecond = format.samplesPerSecond, .channels = format.soundChannels},
      [&](std::span<const float> samples) { writer.writeSound(samples); }, stop);
}

}  // namespace

class ClipFileWriter::Encoding {
 public:
  Encoding(const QString& path, const ClipFormat& format)
      : file(path, "mp4", texts::clipNotWritten()), picture(file, pictureFormat(format)) {
    if (format.soundChannels > 0) sound.emplace(file, format.samplesPerSecond, format.soundChannels);
    file.begin();
  }

  MediaFile file;
  PictureTrackWriter picture;
  std::optional<SoundTrackWriter> sound;
};

ClipFileWriter::ClipFileWriter(const QString& path, const ClipFormat& format)
    : encoding_(std::make_unique<Encoding>(path, format)) {}
ClipFileWriter::~ClipFileWriter() = default;

void ClipFileWriter::writeFrame(const QImage& image, double seconds) {
  if (image.isNull()) throw SorvanError(texts::clipNotWritten());
  encoding_->picture.write(image, seconds);
}

void ClipFileWriter::writeSound(std::span<const float> samples) {
  if (encoding_->sound) encoding_->sound->write(samples);
}

void ClipFileWriter::finish() {
  encoding_->picture.end();
  if (encoding_->sound) encoding_->sound->end();
  encoding_->file.finish();
}

void writeClipWithin(const QString& clip, QSize maximum, const QString& destination, const std::stop_token& stop) {
  // 1. The shape: the clip's own, fitted.
  const ClipFacts facts = probeClip(clip);
  if (!facts.hasPicture) throw SorvanError(texts::clipUnreadable());
  const bool fits = facts.size.width() <= maximum.width() && facts.size.height() <= maximum.height();
  const ClipFormat format{.size = fits ? facts.size : facts.size.scaled(maximum, Qt::KeepAspectRatio),
                          .framesPerSecond = facts.framesPerSecond,
                          .quality = ClipQuality::compact,
                          .soundChannels = facts.hasSound ? 2 : 0};
  ClipFrames frames(clip, maximum, stop);
  ClipFileWriter writer(destination, format);
  // 2. The sound first: it is small, and waits compressed for the pictures.
  if (facts.hasSound) copySound(clip, format, writer, stop);
  // 3. The pictures.
  while (const auto frame = frames.next()) {
    throwIfStopped(stop);
    writer.writeFrame(frame->image, std::max(0.0, frame->seconds));
  }
  writer.finish();
}

}  // namespace sorvan::platform
