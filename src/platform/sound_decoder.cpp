#include "platform/sound_decoder.h"

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/media_texts.h"

namespace sorvan::platform {

SoundDecoder::SoundDecoder(const QString& path, std::stop_token stop)
    : input_(openMedia(path)), stop_(std::move(stop)) {
  stream_ = input_ ? firstStream(input_, AVMEDIA_TYPE_AUDIO) : nullptr;
  if (stream_ != nullptr) decoder_ = openDecoder(*stream_, DecodingThreads::one);
  if (!decoder_) throw SorvanError(texts::soundUnreadable());
  for (unsigned index = 0; index < input_->nb_streams; ++index)
    if (input_->streams[index] != stream_) input_->streams[index]->discard = AVDISCARD_ALL;
}

const AVFrame* SoundDecoder::next() {
  for (;;) {
    throwIfStopped(stop_);
    const int received = avcodec_receive_frame(decoder_.get(), frame_.get());
    if (received == 0 && frame_->nb_samples > 0) return frame_.get();
    if (received == AVERROR_EOF || (received < 0 && ended_)) return nullptr;
    if (received == AVERROR(EAGAIN)) feed();
    if (received < 0 && received != AVERROR(EAGAIN)) {
      stumbled_ = true;
      feed();
    }
  }
}

void SoundDecoder::feed() {
  while (av_read_frame(input_.get(), packet_.get()) >= 0) {
    const bool ours = packet_->stream_index == stream_->index;
    if (ours && avcodec_send_packet(decoder_.get(), packet_.get()) < 0) stumbled_ = true;
    av_packet_unref(packet_.get());
    if (ours) return;
  }
  ended_ = true;
  avcodec_send_packet(decoder_.get(), nullptr);
}

void SoundDecoder::seek(double seconds) {
  constexpr double swing = 0.5;  // seconds that a decoder may need before its output is right
  const auto target = int64_t((std::max(0.0, seconds - swing) + startOf(input_)) / av_q2d(stream_->time_base));
  if (av_seek_frame(input_.get(), stream_->index, target, AVSEEK_FLAG_BACKWARD) >= 0)
    avcodec_flush_buffers(decoder_.get());
}

double SoundDecoder::secondsOf(const AVFrame& frame) const {
  const int64_t time = frame.best_effort_timestamp;
  return time == AV_NOPTS_VALUE ? 0 : double(time) * av_q2d(stream_->time_base) - startOf(input_);
}

}  // namespace sorvan::platform
