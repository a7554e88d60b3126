#include "platform/media_output.h"

#include <QFile>

#include "base/sorvan_error.h"

namespace sorvan::platform {
namespace {

constexpr int64_t bitsPerSecondAndChannel = 128'000;
constexpr int pictureClock = 90'000;  // ticks a second, which every usual frame rate divides

}  // namespace

MediaFile::MediaFile(const QString& path, const char* container, QString failure)
    : path_(path), address_(mediaAddress(path)), failure_(std::move(failure)) {
  quietFfmpeg();
  AVFormatContext* context = nullptr;
  must(avformat_alloc_output_context2(&context, nullptr, container, address_.constData()));
  output_.reset(must(context));
}

MediaFile::~MediaFile() {
  output_.reset();
  if (!finished_) QFile::remove(path_);  // not durable: a temporary file
}

void MediaFile::must(int result) const {
  if (result < 0) throw SorvanError(failure_);
}

AVStream* MediaFile::addStream(const AVCodecContext& encoder) {
  AVStream* stream = must(avformat_new_stream(output_.get(), nullptr));
  must(avcodec_parameters_from_context(stream->codecpar, &encoder));
  stream->time_base = encoder.time_base;
  return stream;
}

AVStream* MediaFile::addStream(const AVStream& copied) {
  AVStream* stream = must(avformat_new_stream(output_.get(), nullptr));
  must(avcodec_parameters_copy(stream->codecpar, copied.codecpar));
  stream->codecpar->codec_tag = 0;
  stream->time_base = copied.time_base;
  return stream;
}

void MediaFile::begin() {
  must(avio_open(&output_->pb, address_.constData(), AVIO_FLAG_WRITE));
  must(avformat_write_header(output_.get(), nullptr));
}

void MediaFile::write(AVPacket& packet, const AVStream& stream, AVRational timeBase) {
  av_packet_rescale_ts(&packet, timeBase, stream.time_base);
  packet.stream_index = stream.index;
  packet.pos = -1;
  must(av_interleaved_write_frame(output_.get(), &packet));
}

void MediaFile::finish() {
  must(av_write_trailer(output_.get()));
  must(avio_closep(&output_->pb));
  finished_ = true;
}

SoundTrackWriter::SoundTrackWriter(MediaFile& file, int samplesPerSecond, int channels)
    : file_(file), channels_(channels) {
  const AVCodec* codec = file.must(avcodec_find_encoder(AV_CODEC_ID_AAC));
  encoder_.reset(file.must(avcodec_alloc_context3(codec)));
  encoder_->sample_rate = samplesPerSecond;
  encoder_->sample_fmt = AV_SAMPLE_FMT_FLTP;
  encoder_->bit_rate = bitsPerSecondAndChannel * channels_;
  encoder_->time_base = {1, samplesPerSecond};
  encoder_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  av_channel_layout_default(&encoder_->ch_layout, channels_);
  file.must(avcodec_open2(encoder_.get(), codec, nullptr));
  stream_ = file.addStream(*encoder_);
}

void SoundTrackWriter::write(std::span<const float> interleaved) {
  const size_t whole = size_t(encoder_->frame_size) * size_t(channels_);
  waiting_.insert(waiting_.end(), interleaved.begin(), interleaved.end());
  size_t sent = 0;
  for (; waiting_.size() - sent >= whole; sent += whole) encode(std::span(waiting_).subspan(sent, whole));
  waiting_.erase(waiting_.begin(), waiting_.begin() + ptrdiff_t(sent));
}

void SoundTrackWriter::end() {
  if (!waiting_.empty()) encode(waiting_);
  file_.must(avcodec_send_frame(encoder_.get(), nullptr));
  drain();
}

void SoundTrackWriter::encode(std::span<const float> samples) {
  const MediaFrame frame = makeFrame();
  frame->nb_samples = int(samples.size()) / channels_;
  frame->format = AV_SAMPLE_FMT_FLTP;
  frame->sample_rate = encoder_->sample_rate;
  frame->pts = std::exchange(written_, written_ + frame->nb_samples);
  file_.must(av_channel_layout_copy(&frame->ch_layout, &encoder_->ch_layout));
  file_.must(av_frame_get_buffer(frame.get(), 0));
  for (int channel = 0; channel < channels_; ++channel) {
    auto* plane = reinterpret_cast<float*>(frame->extended_data[channel]);
    for (int index = 0; index < frame->nb_samples; ++index) plane[index] = samples[size_t(index * channels_ + channel)];
  }
  file_.must(avcodec_send_frame(encoder_.get(), frame.get()));
  drain();
}

void SoundTrackWriter::drain() {
  const MediaPacket packet = makePacket();
  for (;;) {
    const int received = avcodec_receive_packet(encoder_.get(), packet.get());
    if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return;
    file_.must(received);
    file_.write(*packet, *stream_, encoder_->time_base);
  }
}

PictureTrackWriter::PictureTrackWriter(MediaFile& file, const PictureTrackFormat& format)
    : file_(file), format_(format) {
  const AVCodec* codec = file.must(avcodec_find_encoder_by_name("libx264"));
  encoder_.reset(file.must(avcodec_alloc_context3(codec)));
  encoder_->width = format.size.width();
  encoder_->height = format.size.height();
  encoder_->pix_fmt = AV_PIX_FMT_YUV420P;
  encoder_->time_base = {1, pictureClock};
  encoder_->framerate = av_d2q(format.framesPerSecond, 100'000);
  encoder_->color_primaries = AVCOL_PRI_BT709;
  encoder_->color_trc = AVCOL_TRC_BT709;
  encoder_->colorspace = AVCOL_SPC_BT709;
  encoder_->color_range = AVCOL_RANGE_MPEG;
  encoder_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  encoder_->thread_count = 0;  // as many as there are cores
  av_opt_set(encoder_->priv_data, "preset", format.preset, 0);
  av_opt_set_double(encoder_->priv_data, "crf", format.quantiser, 0);
  file.must(avcodec_open2(encoder_.get(), codec, nullptr));
  stream_ = file.addStream(*encoder_);
  stream_->avg_frame_rate = encoder_->framerate;
}

MediaFrame PictureTrackWriter::converted(const QImage& image) {
  const QImage pixels = image.format() == QImage::Format_RGB32 ? image : image.convertToFormat(QImage::Format_RGB32);
  scaler_.reset(file_.must(sws_getCachedContext(scaler_.release(), pixels.width(), pixels.height(), AV_PIX_FMT_BGRA,
                                                encoder_->width, encoder_->height, AV_PIX_FMT_YUV420P,
                                                SWS_BICUBIC | SWS_ACCURATE_RND, nullptr, nullptr, nullptr)));
  const int* matrix = sws_getCoefficients(SWS_CS_ITU709);
  sws_setColorspaceDetails(scaler_.get(), matrix, 1, matrix, 0, 0, 1 << 16, 1 << 16);
  MediaFrame frame = makeFrame();
  frame->format = AV_PIX_FMT_YUV420P;
  frame->width = encoder_->width;
  frame->height = encoder_->height;
  frame->colorspace = encoder_->colorspace;
  frame->color_range = encoder_->color_range;
  file_.must(av_frame_get_buffer(frame.get(), 0));
  const uint8_t* planes[4] = {pixels.constBits(), nullptr, nullptr, nullptr};
  const int strides[4] = {int(pixels.bytesPerLine()), 0, 0, 0};
  file_.must(sws_scale(scaler_.get(), planes, strides, 0, pixels.height(), frame->data, frame->linesize));
  return frame;
}

void PictureTrackWriter::write(const QImage& image, double seconds) {
  const int64_t time = std::llround(seconds * pictureClock);
  if (last_ && time <= *last_) return;
  last_ = time;
  const MediaFrame frame = converted(image);
  frame->pts = time;
  file_.must(avcodec_send_frame(encoder_.get(), frame.get()));
  drain();
}

void PictureTrackWriter::end() {
  file_.must(avcodec_send_frame(encoder_.get(), nullptr));
  drain();
}

void PictureTrackWriter::drain() {
  const MediaPacket packet = makePacket();
  for (;;) {
    const int received = avcodec_receive_packet(encoder_.get(), packet.get());
    if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return;
    file_.must(received);
    // The last picture would have no length without this: players would drop it.
    packet->duration = std::llround(pictureClock / format_.framesPerSecond);
    file_.write(*packet, *stream_, encoder_->time_base);
  }
}

}  // namespace sorvan::platform
