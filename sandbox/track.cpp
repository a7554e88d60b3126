#include "track.h"

#include <stdexcept>

namespace sandbox {

Track::Track(AVFormatContext* format, Codec codec, AVDictionary* options)
    : format_(format),
      stream_(avformat_new_stream(format, nullptr)),
      codec_(std::move(codec)),
      packet_(av_packet_alloc()) {
  const int opened = avcodec_open2(codec_.get(), nullptr, &options);
  av_dict_free(&options);
  require(opened, "An encoder cannot be opened");
  require(avcodec_parameters_from_context(stream_->codecpar, codec_.get()), "A stream cannot be described");
  stream_->time_base = codec_->time_base;
  stream_->avg_frame_rate = codec_->framerate;
}

void Track::encode(AVFrame* frame) {
  require(avcodec_send_frame(codec_.get(), frame), "A frame cannot be encoded");
  for (;;) {
    const int received = avcodec_receive_packet(codec_.get(), packet_.get());
    if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return;
    require(received, "A packet cannot be had");
    packet_->stream_index = stream_->index;
    av_packet_rescale_ts(packet_.get(), codec_->time_base, stream_->time_base);
    require(av_interleaved_write_frame(format_, packet_.get()), "A packet cannot be written");
  }
}

Codec newEncoder(const char* name, const AVFormatContext* format) {
  const AVCodec* encoder = avcodec_find_encoder_by_name(name);
  if (!encoder) throw std::runtime_error(std::string("There is no encoder ") + name);
  Codec codec(avcodec_alloc_context3(encoder));
  codec->flags |= AV_CODEC_FLAG_BITEXACT;
  if (format->oformat->flags & AVFMT_GLOBALHEADER) codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  codec->thread_count = 1;
  return codec;
}

Codec newSoundEncoder(const char* name, const AVFormatContext* format, const Sound& sound, int bitsASecond) {
  Codec codec = newEncoder(name, format);
  codec->sample_rate = sound.rate;
  codec->sample_fmt = AV_SAMPLE_FMT_FLTP;
  av_channel_layout_default(&codec->ch_layout, sound.channels);
  codec->bit_rate = bitsASecond;
  codec->time_base = {1, sound.rate};
  return codec;
}

Frame soundFrame(const Sound& sound, qsizetype at, qsizetype count) {
  Frame frame(av_frame_alloc());
  frame->format = AV_SAMPLE_FMT_FLTP;
  frame->sample_rate = sound.rate;
  frame->nb_samples = int(count);
  frame->pts = at;
  av_channel_layout_default(&frame->ch_layout, sound.channels);
  require(av_frame_get_buffer(frame.get(), 0), "No memory for samples");
  for (int channel = 0; channel < sound.channels; ++channel) {
    auto* plane = reinterpret_cast<float*>(frame->extended_data[channel]);
    for (qsizetype i = 0; i < count; ++i) plane[i] = sound.samples[std::size_t((at + i) * sound.channels + channel)];
  }
  return frame;
}

}  // namespace sandbox
