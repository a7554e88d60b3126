#include "platform/sound_file.h"

#include <QFile>

#include "base/sorvan_error.h"
#include "platform/ffmpeg.h"
#include "platform/media_texts.h"

namespace sorvan::platform {
namespace {

constexpr int64_t bitsPerSecondAndChannel = 128'000;

void must(int result) {
  if (result < 0) throw SorvanError(texts::soundNotWritten());
}

template <class T>
T* must(T* object) {
  if (object == nullptr) throw SorvanError(texts::soundNotWritten());
  return object;
}

}  // namespace

class SoundFileWriter::Encoding {
 public:
  Encoding(const QString& path, int samplesPerSecond, int channels) : path_(path), channels_(channels) {
    AVFormatContext* output = nullptr;
    const QByteArray address = mediaAddress(path);
    avformat_alloc_output_context2(&output, nullptr, "ipod", address.constData());
    output_.reset(must(output));
    openEncoder(samplesPerSecond);
    stream_ = must(avformat_new_stream(output_.get(), nullptr));
    must(avcodec_parameters_from_context(stream_->codecpar, encoder_.get()));
    stream_->time_base = encoder_->time_base;
    must(avio_open(&output_->pb, address.constData(), AVIO_FLAG_WRITE));
    must(avformat_write_header(output_.get(), nullptr));
  }

  ~Encoding() {
    output_.reset();
    if (!finished_) QFile::remove(path_);  // not durable: a temporary file
  }
  Encoding(const Encoding&) = delete;
  Encoding& operator=(const Encoding&) = delete;

  void write(std::span<const float> samples) {
    const size_t whole = size_t(encoder_->frame_size) * size_t(channels_);
    waiting_.insert(waiting_.end(), samples.begin(), samples.end());
    size_t sent = 0;
    for (; waiting_.size() - sent >= whole; sent += whole) encode(std::span(waiting_).subspan(sent, whole));
    waiting_.erase(waiting_.begin(), waiting_.begin() + ptrdiff_t(sent));
  }

  void finish() {
    if (!waiting_.empty()) encode(waiting_);
    must(avcodec_send_frame(encoder_.get(), nullptr));
    drain();
    must(av_write_trailer(output_.get()));
    must(avio_closep(&output_->pb));
    finished_ = true;
  }

 private:
  void openEncoder(int samplesPerSecond) {
    const AVCodec* codec = must(avcodec_find_encoder(AV_CODEC_ID_AAC));
    encoder_.reset(must(avcodec_alloc_context3(codec)));
    encoder_->sample_rate = samplesPerSecond;
    encoder_->sample_fmt = AV_SAMPLE_FMT_FLTP;
    encoder_->bit_rate = bitsPerSecondAndChannel * channels_;
    encoder_->time_base = {1, samplesPerSecond};
    encoder_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    av_channel_layout_default(&encoder_->ch_layout, channels_);
    must(avcodec_open2(encoder_.get(), codec, nullptr));
  }

  void encode(std::span<const float> samples) {
    const MediaFrame frame = makeFrame();
    frame->nb_samples = int(samples.size()) / channels_;
    frame->format = AV_SAMPLE_FMT_FLTP;
    frame->sample_rate = encoder_->sample_rate;
    frame->pts = std::exchange(written_, written_ + frame->nb_samples);
    must(av_channel_layout_copy(&frame->ch_layout, &encoder_->ch_layout));
    must(av_frame_get_buffer(frame.get(), 0));
    for (int channel = 0; channel < channels_; ++channel) {
      auto* plane = reinterpret_cast<float*>(frame->extended_data[channel]);
      for (int index = 0; index < frame->nb_samples; ++index)
        plane[index] = samples[size_t(index * channels_ + channel)];
    }
    must(avcodec_send_frame(encoder_.get(), frame.get()));
    drain();
  }

  void drain() {
    const MediaPacket packet = makePacket();
    for (;;) {
      const int received = avcodec_receive_packet(encoder_.get(), packet.get());
      if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return;
      must(received);
      av_packet_rescale_ts(packet.get(), encoder_->time_base, stream_->time_base);
      packet->stream_index = stream_->index;
      must(av_interleaved_write_frame(output_.get(), packet.get()));
    }
  }

  QString path_;
  int channels_;
  MediaOutput output_;
  MediaCodec encoder_;
  AVStream* stream_ = nullptr;
  std::vector<float> waiting_;  ///< fewer than one frame of the encoder between two calls
  int64_t written_ = 0;
  bool finished_ = false;
};

SoundFileWriter::SoundFileWriter(const QString& path, int samplesPerSecond, int channels)
    : encoding_(std::make_unique<Encoding>(path, samplesPerSecond, channels)) {}
SoundFileWriter::~SoundFileWriter() = default;
void SoundFileWriter::write(std::span<const float> samples) { encoding_->write(samples); }
void SoundFileWriter::finish() { encoding_->finish(); }

}  // namespace sorvan::platform
