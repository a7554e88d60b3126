#include "sandbox/media_probe.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <QTemporaryFile>
#include <cmath>
#include <functional>
#include <memory>

namespace sorvan::test {

namespace {

// A file on the disk and one of its streams, opened for decoding.
class Opened {
 public:
  Opened(const QByteArray& bytes, AVMediaType type) {
    av_log_set_level(AV_LOG_FATAL);
    if (!file_.open() || file_.write(bytes) != bytes.size() || !file_.flush()) return;
    if (avformat_open_input(&format_, file_.fileName().toUtf8().constData(), nullptr, nullptr) < 0) return;
    if (avformat_find_stream_info(format_, nullptr) < 0) return;
    const AVCodec* decoder = nullptr;
    index_ = av_find_best_stream(format_, type, -1, -1, &decoder, 0);
    if (index_ < 0 || !decoder) return;
    codec_ = avcodec_alloc_context3(decoder);
    avcodec_parameters_to_context(codec_, format_->streams[index_]->codecpar);
    good_ = avcodec_open2(codec_, decoder, nullptr) >= 0;
  }
  ~Opened() {
    avcodec_free_context(&codec_);
    avformat_close_input(&format_);
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

  explicit operator bool() const { return good_; }
  double seconds() const { return double(format_->duration) / AV_TIME_BASE; }
  const AVCodecContext& codec() const { return *codec_; }
  QString codecName() const { return QString::fromLatin1(codec_->codec->name); }

  void eachFrame(const std::function<void(const AVFrame&)>& take) {
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    for (bool more = true; more;) {
      more = av_read_frame(format_, packet) >= 0;
      if (more && packet->stream_index != index_) {
        av_packet_unref(packet);
        continue;
      }
      avcodec_send_packet(codec_, more ? packet : nullptr);
      if (more) av_packet_unref(packet);
      while (avcodec_receive_frame(codec_, frame) >= 0) take(*frame);
    }
    av_frame_free(&frame);
    av_packet_free(&packet);
  }

 private:
  QTemporaryFile file_;
  AVFormatContext* format_ = nullptr;
  AVCodecContext* codec_ = nullptr;
  int index_ = -1;
  bool good_ = false;
};

// The sample of the first channel, whatever its format.
double sampleOf(const AVFrame& frame, int at) {
  const bool planar = av_sample_fmt_is_planar(AVSampleFormat(frame.format));
  const int place = planar ? at : at * frame.ch_layout.nb_channels;
  switch (frame.format) {
    case AV_SAMPLE_FMT_FLTP:
    case AV_SAMPLE_FMT_FLT:
      return double(reinterpret_cast<const float*>(frame.extended_data[0])[place]);
    case AV_SAMPLE_FMT_S16P:
    case AV_SAMPLE_FMT_S16:
      return reinterpret_cast<const qint16*>(frame.extended_data[0])[place] / 32768.0;
    default:
      return 0;
  }
}

QImage asImage(const AVFrame& frame) {
  QImage image(frame.width, frame.height, QImage::Format_RGB32);
  SwsContext* scaler = sws_getContext(frame.width, frame.height, AVPixelFormat(frame.format), frame.width, frame.height,
                                      AV_PIX_FMT_BGRA, SWS_BILINEAR, nullptr, nullptr, nullptr);
  uint8_t* target[] = {image.bits()};
  const int stride[] = {int(image.bytesPerLine())};
  sws_scale(scaler, frame.data, frame.linesize, 0, frame.height, target, stride);
  sws_freeContext(scaler);
  return image;
}

}  // namespace

std::optional<DecodedSound> decodeSound(const QByteArray& media) {
  Opened input(media, AVMEDIA_TYPE_AUDIO);
  if (!input) return std::nullopt;
  DecodedSound sound;
  sound.codec = input.codecName();
  double squares = 0;
  qint64 samples = 0;
  input.eachFrame([&](const AVFrame& frame) {
    sound.rate = frame.sample_rate;
    sound.channels = frame.ch_layout.nb_channels;
    for (int i = 0; i < frame.nb_samples; ++i) squares += std::pow(sampleOf(frame, i), 2);
    samples += frame.nb_samples;
  });
  if (samples == 0) return std::nullopt;
  sound.seconds = double(samples) / sound.rate;
  sound.loudness = std::sqrt(squares / double(samples));
  return sound;
}

std::optional<DecodedClip> decodeClip(const QByteArray& media) {
  Opened input(media, AVMEDIA_TYPE_VIDEO);
  if (!input) return std::nullopt;
  DecodedClip clip{input.codecName(), QSize(input.codec().width, input.codec().height), input.seconds(), {}};
  input.eachFrame([&](const AVFrame& frame) { clip.pictures.push_back(asImage(frame)); });
  if (clip.pictures.empty()) return std::nullopt;
  return clip;
}

double meanDifference(const QImage& a, const QImage& b) {
  double sum = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) sum += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
  return sum / (double(a.width()) * a.height());
}

}  // namespace sorvan::test
