// Taking the sound out of a clip.
#include <QFile>

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/ffmpeg.h"
#include "platform/media_texts.h"
#include "platform/sound_file.h"
#include "platform/sounds.h"

namespace sorvan::platform {
namespace {

void must(int result) {
  if (result < 0) throw SorvanError(texts::soundNotWritten());
}

/// Removes the file unless the writing came to its end.
struct UnfinishedFile {
  QString path;
  bool finished = false;
  ~UnfinishedFile() {
    if (!finished) QFile::remove(path);  // not durable: a temporary file
  }
};

void copyPackets(const MediaInput& input, const AVStream& from, const MediaOutput& output, const AVStream& to,
                 const std::stop_token& stop) {
  const MediaPacket packet = makePacket();
  while (av_read_frame(input.get(), packet.get()) >= 0) {
    throwIfStopped(stop);
    if (packet->stream_index == from.index) {
      av_packet_rescale_ts(packet.get(), from.time_base, to.time_base);
      packet->stream_index = to.index;
      packet->pos = -1;
      must(av_interleaved_write_frame(output.get(), packet.get()));
    }
    av_packet_unref(packet.get());
  }
}

void copyTrack(const MediaInput& input, const AVStream& from, const QString& destination, const std::stop_token& stop) {
  UnfinishedFile file{destination};
  const QByteArray address = mediaAddress(destination);
  AVFormatContext* context = nullptr;
  must(avformat_alloc_output_context2(&context, nullptr, "ipod", address.constData()));
  const MediaOutput output(context);
  AVStream* to = avformat_new_stream(output.get(), nullptr);
  must(to == nullptr ? AVERROR(ENOMEM) : avcodec_parameters_copy(to->codecpar, from.codecpar));
  to->codecpar->codec_tag = 0;
  to->time_base = from.time_base;
  must(avio_open(&output->pb, address.constData(), AVIO_FLAG_WRITE));
  must(avformat_write_header(output.get(), nullptr));
  copyPackets(input, from, output, *to, stop);
  must(av_write_trailer(output.get()));
  must(avio_closep(&output->pb));
  file.finished = true;
}

void encodeTrack(const QString& clip, const AVStream& from, const QString& destination, const std::stop_token& stop) {
  const int channels = from.codecpar->ch_layout.nb_channels == 1 ? 1 : 2;
  const int rate = from.codecpar->sample_rate == 44'100 ? 44'100 : 48'000;
  SoundFileWriter writer(destination, rate, channels);
  readSound(
      clip, {.samplesPerSecond = rate, .channels = channels},
      [&](std::span<const float> samples) { writer.write(samples); }, stop);
  writer.finish();
}

}  // namespace

void writeSoundTrack(const QString& clip, const QString& destination, const std::stop_token& stop) {
  const MediaInput input = openMedia(clip);
  if (!input) throw SorvanError(texts::clipUnreadable());
  const AVStream* sound = firstStream(input, AVMEDIA_TYPE_AUDIO);
  if (sound == nullptr) throw SorvanError(texts::clipWithoutSound());
  if (sound->codecpar->codec_id == AV_CODEC_ID_AAC)
    copyTrack(input, *sound, destination, stop);
  else
    encodeTrack(clip, *sound, destination, stop);
}

}  // namespace sorvan::platform
