#include "media_reader.h"

#include <cmath>
#include <stdexcept>

#include "coder.h"

namespace sandbox {

namespace {

// An opened file with the decoder of one of its streams.
class Input {
 public:
  explicit Input(const QByteArray& bytes) : file_(MemoryFile::For::Reading, bytes), format_(avformat_alloc_context()) {
    format_->pb = file_.io();
    format_->flags |= AVFMT_FLAG_CUSTOM_IO;
    require(avformat_open_input(&format_, nullptr, nullptr, nullptr), "This file is no media");
    require(avformat_find_stream_info(format_, nullptr), "This file tells nothing of its streams");
  }
  ~Input() { avformat_close_input(&format_); }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  // False when there is no such stream.
  bool open(AVMediaType type) {
    const AVCodec* decoder = nullptr;
    const int index = av_find_best_stream(format_, type, -1, -1, &decoder, 0);
    if (index < 0 || !decoder) return false;
    stream_ = format_->streams[index];
    codec_.reset(avcodec_alloc_context3(decoder));
    require(avcodec_parameters_to_context(codec_.get(), stream_->codecpar), "A stream is not understood");
    require(avcodec_open2(codec_.get(), decoder, nullptr), "A decoder cannot be opened");
    return true;
  }

  void forEachFrame(const std::function<void(const AVFrame&)>& take) {
    const Packet packet(av_packet_alloc());
    while (av_read_frame(format_, packet.get()) >= 0) {
      if (packet->stream_index == stream_->index) decode(packet.get(), take);
      av_packet_unref(packet.get());
    }
    decode(nullptr, take);
  }

  const AVFormatContext& format() const { return *format_; }
  const AVStream& stream() const { return *stream_; }
  const AVCodecContext& codec() const { return *codec_; }

 private:
  void decode(const AVPacket* packet, const std::function<void(const AVFrame&)>& take) {
    if (avcodec_send_packet(codec_.get(), packet) < 0) return;
    const Frame frame(av_frame_alloc());
    while (avcodec_receive_frame(codec_.get(), frame.get()) >= 0) take(*frame);
  }

  MemoryFile file_;
  AVFormatContext* format_;
  AVStream* stream_ = nullptr;
  Codec codec_;
};

Resampler newResampler(const AVCodecContext& codec, const Sound& target) {
  AVChannelLayout layout;
  av_channel_layout_default(&layout, target.channels);
  AVChannelLayout source = codec.ch_layout;  // borrowed: this version of the library wants it writable
  SwrContext* resampler = nullptr;
  require(swr_alloc_set_opts2(&resampler, &layout, AV_SAMPLE_FMT_FLT, target.rate, &source, codec.sample_fmt,
                              codec.sample_rate, 0, nullptr),
          "A sound cannot be converted");
  Resampler owned(resampler);
  require(swr_init(owned.get()), "A sound cannot be converted");
  return owned;
}

void appendConverted(SwrContext* resampler, const AVFrame* frame, Sound& sound) {
  const int room = swr_get_out_samples(resampler, frame ? frame->nb_samples : 0);
  if (room <= 0) return;
  const std::size_t before = sound.samples.size();
  sound.samples.resize(before + std::size_t(room * sound.channels));
  auto* out = reinterpret_cast<std::uint8_t*>(sound.samples.data() + before);
  const auto** in = frame ? const_cast<const std::uint8_t**>(frame->extended_data) : nullptr;
  const int made =
      require(swr_convert(resampler, &out, room, in, frame ? frame->nb_samples : 0), "A sound cannot be converted");
  sound.samples.resize(before + std::size_t(made * sound.channels));
}

}  // namespace

std::optional<Sound> readSound(const QByteArray& media) {
  Input input(media);
  if (!input.open(AVMEDIA_TYPE_AUDIO)) return std::nullopt;
  Sound sound{44100, 2, {}};
  const Resampler resampler = newResampler(input.codec(), sound);
  input.forEachFrame([&](const AVFrame& frame) { appendConverted(resampler.get(), &frame, sound); });
  appendConverted(resampler.get(), nullptr, sound);
  return sound;
}

ClipFacts factsOfClip(const QByteArray& clip) {
  Input input(clip);
  if (!input.open(AVMEDIA_TYPE_VIDEO)) throw std::runtime_error("This file is no clip");
  const AVRational rate = av_guess_frame_rate(nullptr, const_cast<AVStream*>(&input.stream()), nullptr);
  ClipFacts facts;
  facts.seconds = double(input.format().duration) / AV_TIME_BASE;
  facts.size = QSize(input.codec().width, input.codec().height);
  if (rate.num > 0) facts.picturesASecond = qBound(1, int(std::lround(av_q2d(rate))), 60);
  return facts;
}

void forEachPicture(const QByteArray& clip, const std::function<void(const QImage&)>& take) {
  Input input(clip);
  if (!input.open(AVMEDIA_TYPE_VIDEO)) throw std::runtime_error("This file is no clip");
  Scaler scaler;
  input.forEachFrame([&](const AVFrame& frame) {
    QImage picture(frame.width, frame.height, QImage::Format_RGB32);
    scaler.reset(sws_getCachedContext(scaler.release(), frame.width, frame.height, AVPixelFormat(frame.format),
                                      frame.width, frame.height, AV_PIX_FMT_BGRA, SWS_BILINEAR | SWS_BITEXACT, nullptr,
                                      nullptr, nullptr));
    std::uint8_t* target[] = {picture.bits()};
    const int stride[] = {int(picture.bytesPerLine())};
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, target, stride);
    take(picture);
  });
}

}  // namespace sandbox
