#include "media_writer.h"

#include <cmath>
#include <stdexcept>

namespace sandbox {

namespace {

AVFormatContext* newFormat(const char* name, MemoryFile& file) {
  AVFormatContext* format = nullptr;
  require(avformat_alloc_output_context2(&format, nullptr, name, nullptr), "A file format cannot be had");
  format->pb = file.io();
  format->flags |= AVFMT_FLAG_BITEXACT | AVFMT_FLAG_CUSTOM_IO;
  return format;
}

void appendLittleEndian(QByteArray& bytes, quint32 value, int count) {
  for (int i = 0; i < count; ++i) bytes.append(char(value >> (8 * i) & 0xff));
}

QByteArray encodeWav(const Sound& sound) {
  const quint32 dataBytes = quint32(sound.samples.size() * 2);
  QByteArray bytes = "RIFF";
  appendLittleEndian(bytes, 36 + dataBytes, 4);
  bytes += "WAVEfmt ";
  appendLittleEndian(bytes, 16, 4);
  appendLittleEndian(bytes, 1, 2);  // plain samples
  appendLittleEndian(bytes, quint32(sound.channels), 2);
  appendLittleEndian(bytes, quint32(sound.rate), 4);
  appendLittleEndian(bytes, quint32(sound.rate * sound.channels * 2), 4);
  appendLittleEndian(bytes, quint32(sound.channels * 2), 2);
  appendLittleEndian(bytes, 16, 2);
  bytes += "data";
  appendLittleEndian(bytes, dataBytes, 4);
  for (const float sample : sound.samples)
    appendLittleEndian(bytes, quint32(std::lround(std::clamp(sample, -1.0F, 1.0F) * 32767)), 2);
  return bytes;
}

QByteArray encodeMp3(const Sound& sound) {
  constexpr int bitsASecond = 128'000;
  MemoryFile file(MemoryFile::For::Writing, {});
  std::unique_ptr<AVFormatContext, decltype(&avformat_free_context)> format(newFormat("mp3", file),
                                                                            avformat_free_context);
  Track track(format.get(), newSoundEncoder("libmp3lame", format.get(), sound, bitsASecond), nullptr);
  require(avformat_write_header(format.get(), nullptr), "A sound cannot be begun");
  const qsizetype step = track.codec()->frame_size;
  for (qsizetype at = 0; at < sound.frames(); at += step)
    track.encode(soundFrame(sound, at, std::min(step, sound.frames() - at)).get());
  track.encode(nullptr);
  require(av_write_trailer(format.get()), "A sound cannot be ended");
  avio_flush(file.io());
  return file.bytes();
}

Frame emptyPicture(const AVCodecContext& codec) {
  Frame frame(av_frame_alloc());
  frame->format = codec.pix_fmt;
  frame->width = codec.width;
  frame->height = codec.height;
  require(av_frame_get_buffer(frame.get(), 0), "No memory for a picture");
  return frame;
}

}  // namespace

QByteArray encodeSound(const Sound& sound, const QByteArray& format) {
  return format == "wav" ? encodeWav(sound) : encodeMp3(sound);
}

ClipWriter::ClipWriter(QSize size, int picturesASecond, std::optional<Sound> sound)
    : file_(MemoryFile::For::Writing, {}),
      format_(newFormat("mp4", file_)),
      sound_(std::move(sound)),
      picturesASecond_(picturesASecond) {
  openPictures(size, picturesASecond);
  if (sound_) openSound();
  require(avformat_write_header(format_, nullptr), "A clip cannot be begun");
}

ClipWriter::~ClipWriter() { avformat_free_context(format_); }

void ClipWriter::openPictures(QSize size, int picturesASecond) {
  Codec codec = newEncoder("libx264", format_);
  codec->width = size.width();
  codec->height = size.height();
  codec->pix_fmt = AV_PIX_FMT_YUV420P;
  codec->time_base = {1, picturesASecond};
  codec->framerate = {picturesASecond, 1};
  codec->gop_size = picturesASecond;
  codec->colorspace = AVCOL_SPC_BT709;
  codec->color_primaries = AVCOL_PRI_BT709;
  codec->color_trc = AVCOL_TRC_BT709;
  codec->color_range = AVCOL_RANGE_MPEG;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "preset", "ultrafast", 0);
  av_dict_set(&options, "crf", "21", 0);
  pictures_ = std::make_unique<Track>(format_, std::move(codec), options);
}

void ClipWriter::openSound() {
  constexpr int bitsASecond = 128'000;
  soundTrack_ = std::make_unique<Track>(format_, newSoundEncoder("aac", format_, *sound_, bitsASecond), nullptr);
}

void ClipWriter::add(const QImage& picture) {
  const AVCodecContext& codec = *pictures_->codec();
  const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
  if (!scaler_ || scaledFrom_ != pixels.size()) {
    scaler_.reset(sws_getContext(pixels.width(), pixels.height(), AV_PIX_FMT_BGRA, codec.width, codec.height,
                                 AV_PIX_FMT_YUV420P, SWS_BICUBIC | SWS_BITEXACT, nullptr, nullptr, nullptr));
    if (!scaler_) throw std::runtime_error("A picture of this size cannot be scaled.");
    sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(SWS_CS_DEFAULT), 1, sws_getCoefficients(SWS_CS_ITU709),
                             0, 0, 1 << 16, 1 << 16);
    scaledFrom_ = pixels.size();
  }
  last_ = emptyPicture(codec);
  const std::uint8_t* source[] = {pixels.constBits()};
  const int stride[] = {int(pixels.bytesPerLine())};
  sws_scale(scaler_.get(), source, stride, 0, pixels.height(), last_->data, last_->linesize);
  encodeLast();
}

void ClipWriter::addAgain() {
  if (!last_) throw std::runtime_error("A clip has no picture to repeat.");
  encodeLast();
}

void ClipWriter::encodeLast() {
  last_->pts = pictureCount_++;
  pictures_->encode(last_.get());
  writeSoundUntil(double(pictureCount_) / picturesASecond_);
}

void ClipWriter::writeSoundUntil(double seconds) {
  if (!soundTrack_) return;
  const qsizetype step = soundTrack_->codec()->frame_size;
  while (soundAt_ < sound_->frames() && double(soundAt_) / sound_->rate < seconds) {
    const qsizetype count = std::min(step, sound_->frames() - soundAt_);
    soundTrack_->encode(soundFrame(*sound_, soundAt_, count).get());
    soundAt_ += count;
  }
}

QByteArray ClipWriter::finish() {
  if (sound_) writeSoundUntil(sound_->seconds() + 1);
  pictures_->encode(nullptr);
  if (soundTrack_) soundTrack_->encode(nullptr);
  require(av_write_trailer(format_), "A clip cannot be ended");
  avio_flush(file_.io());
  return file_.bytes();
}

}  // namespace sandbox
