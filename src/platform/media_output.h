// A media file being written, and the tracks in it. For the sources of this room only.
#pragma once

#include <span>
#include <vector>

#include <QImage>
#include <QString>

#include "platform/ffmpeg.h"

namespace sorvan::platform {

/// The file: tracks are added, then `begin`, packets, `finish`. Whatever fails throws SorvanError with the sentence
/// given. Without a successful `finish` the file is removed with the object.
class MediaFile {
 public:
  MediaFile(const QString& path, const char* container, QString failure);
  ~MediaFile();
  MediaFile(const MediaFile&) = delete;
  MediaFile& operator=(const MediaFile&) = delete;

  /// Throws for a negative result.
  void must(int result) const;
  template <class T>
  T* must(T* object) const {
    if (object == nullptr) must(AVERROR(ENOMEM));
    return object;
  }

  AVStream* addStream(const AVCodecContext& encoder);
  AVStream* addStream(const AVStream& copied);
  void begin();
  /// Takes the packet's content; its times are in `timeBase`.
  void write(AVPacket& packet, const AVStream& stream, AVRational timeBase);
  void finish();

 private:
  QString path_;
  QByteArray address_;
  QString failure_;
  MediaOutput output_;
  bool finished_ = false;
};

/// Samples in, AAC packets into the file.
class SoundTrackWriter {
 public:
  SoundTrackWriter(MediaFile& file, int samplesPerSecond, int channels);
  void write(std::span<const float> interleaved);
  void end();

 private:
  void encode(std::span<const float> samples);
  void drain();

  MediaFile& file_;
  int channels_;
  MediaCodec encoder_;
  AVStream* stream_ = nullptr;
  std::vector<float> waiting_;  ///< fewer than one frame of the encoder between two calls
  int64_t written_ = 0;
};

struct PictureTrackFormat {
  QSize size;  ///< even numbers
  double framesPerSecond = 24;
  int quantiser = 18;  ///< constant rate factor: lower is better and larger
  const char* preset = "fast";
};

/// Pictures in, H.264 packets into the file.
class PictureTrackWriter {
 public:
  PictureTrackWriter(MediaFile& file, const PictureTrackFormat& format);
  /// A picture that does not come later than the one before is left out.
  void write(const QImage& image, double seconds);
  void end();

 private:
  MediaFrame converted(const QImage& image);
  void drain();

  MediaFile& file_;
  PictureTrackFormat format_;
  MediaCodec encoder_;
  AVStream* stream_ = nullptr;
  PixelScaler scaler_;
  std::optional<int64_t> last_;
};

}  // namespace sorvan::platform
