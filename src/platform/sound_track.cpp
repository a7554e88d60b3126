// Taking the sound out of a clip.
#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/media_output.h"
#include "platform/media_texts.h"
#include "platform/sound_file.h"
#include "platform/sounds.h"

namespace sorvan::platform {
namespace {

void copyTrack(const MediaInput& input, const AVStream& from, const QString& destination, const std::stop_token& stop) {
  MediaFile file(destination, "ipod", texts::soundNotWritten());
  const AVStream& to = *file.addStream(from);
  file.begin();
  const MediaPacket packet = makePacket();
  while (av_read_frame(input.get(), packet.get()) >= 0) {
    throwIfStopped(stop);
    if (packet->stream_index == from.index) file.write(*packet, to, from.time_base);
    av_packet_unref(packet.get());
  }
  file.finish();
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
