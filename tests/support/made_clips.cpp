#include "support/made_clips.h"

#include <QFile>
#include <QtEndian>
#include <numbers>
#include <stdexcept>

#include "platform/media_output.h"
#include "platform/sound_file.h"

namespace sorvan::test {
namespace {

using namespace sorvan::platform;

constexpr int soundRate = 48'000;

void must(int result) {
  if (result < 0) throw std::runtime_error("the test's clip could not be made");
}

float tone(int index, int rate) { return float(0.5 * std::sin(2 * std::numbers::pi * 440 * index / rate)); }

/// One track of the clip being made.
struct Track {
  MediaCodec encoder;
  AVStream* stream = nullptr;
};

void writePackets(const MediaOutput& output, Track& track, const AVFrame* frame) {
  must(avcodec_send_frame(track.encoder.get(), frame));
  const MediaPacket packet = makePacket();
  while (avcodec_receive_packet(track.encoder.get(), packet.get()) >= 0) {
    packet->duration = packet->duration > 0 ? packet->duration : 1;
    av_packet_rescale_ts(packet.get(), track.encoder->time_base, track.stream->time_base);
    packet->stream_index = track.stream->index;
    must(av_interleaved_write_frame(output.get(), packet.get()));
  }
}

Track addTrack(const MediaOutput& output, MediaCodec encoder, const AVCodec* codec, AVDictionary* options) {
  encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  must(avcodec_open2(encoder.get(), codec, &options));
  av_dict_free(&options);
  AVStream* stream = avformat_new_stream(output.get(), nullptr);
  must(avcodec_parameters_from_context(stream->codecpar, encoder.get()));
  stream->time_base = encoder->time_base;
  return {std::move(encoder), stream};
}

Track addPicture(const MediaOutput& output, const ClipRecipe& recipe) {
  const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
  MediaCodec encoder(avcodec_alloc_context3(codec));
  encoder->width = recipe.size.width();
  encoder->height = recipe.size.height();
  encoder->pix_fmt = AV_PIX_FMT_YUV420P;
  encoder->time_base = {1, recipe.framesPerSecond};
  encoder->framerate = {recipe.framesPerSecond, 1};
  encoder->thread_count = 1;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "preset", "veryfast", 0);
  av_dict_set(&options, "crf", "10", 0);
  Track track = addTrack(output, std::move(encoder), codec, options);
  track.stream->avg_frame_rate = {recipe.framesPerSecond, 1};
  if (recipe.quarterTurns != 0) {
    auto* matrix = reinterpret_cast<int32_t*>(
        av_stream_new_side_data(track.stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(int32_t)));
    av_display_rotation_set(matrix, 90.0 * recipe.quarterTurns);
  }
  return track;
}

Track addSound(const MediaOutput& output) {
  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
  MediaCodec encoder(avcodec_alloc_context3(codec));
  encoder->sample_rate = soundRate;
  encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
  encoder->bit_rate = 96'000;
  encoder->time_base = {1, soundRate};
  av_channel_layout_default(&encoder->ch_layout, 1);
  return addTrack(output, std::move(encoder), codec, nullptr);
}

void fill(AVFrame& frame, int grey) {
  const int luma = 16 + grey * 219 / 255;
  for (int row = 0; row < frame.height; ++row) {
    uint8_t* line = frame.data[0] + ptrdiff_t(row) * frame.linesize[0];
    std::fill_n(line, frame.width, uint8_t(luma));
    if (row < frame.height / 2) std::fill_n(line, frame.width / 2, uint8_t(235));
  }
  for (const int plane : {1, 2})
    for (int row = 0; row < frame.height / 2; ++row)
      std::fill_n(frame.data[plane] + ptrdiff_t(row) * frame.linesize[plane], frame.width / 2, uint8_t(128));
}

void writePictures(const MediaOutput& output, Track& track, const ClipRecipe& recipe) {
  for (int index = 0; index < recipe.frames; ++index) {
    const MediaFrame frame = makeFrame();
    frame->format = AV_PIX_FMT_YUV420P;
    frame->width = recipe.size.width();
    frame->height = recipe.size.height();
    frame->pts = index;
    must(av_frame_get_buffer(frame.get(), 0));
    fill(*frame, greyOfFrame(index));
    writePackets(output, track, frame.get());
  }
  writePackets(output, track, nullptr);
}

void writeTone(const MediaOutput& output, Track& track, double seconds) {
  const int total = int(seconds * soundRate);
  for (int start = 0; start < total; start += track.encoder->frame_size) {
    const MediaFrame frame = makeFrame();
    frame->nb_samples = std::min(track.encoder->frame_size, total - start);
    frame->format = AV_SAMPLE_FMT_FLTP;
    frame->sample_rate = soundRate;
    frame->pts = start;
    av_channel_layout_default(&frame->ch_layout, 1);
    must(av_frame_get_buffer(frame.get(), 0));
    auto* samples = reinterpret_cast<float*>(frame->data[0]);
    for (int index = 0; index < frame->nb_samples; ++index) samples[index] = tone(start + index, soundRate);
    writePackets(output, track, frame.get());
  }
  writePackets(output, track, nullptr);
}

template <class Number>
QByteArray littleEndian(Number number) {
  QByteArray bytes(sizeof(Number), '\0');
  qToLittleEndian(number, bytes.data());
  return bytes;
}

}  // namespace

int greyOfFrame(int index) { return 20 + index * 7 % 180; }

void makeClip(const QString& path, const ClipRecipe& recipe) {
  av_log_set_level(AV_LOG_QUIET);
  AVFormatContext* context = nullptr;
  must(avformat_alloc_output_context2(&context, nullptr, "mp4", mediaAddress(path).constData()));
  const MediaOutput output(context);
  Track picture = addPicture(output, recipe);
  Track sound = recipe.sound ? addSound(output) : Track{};
  must(avio_open(&output->pb, mediaAddress(path).constData(), AVIO_FLAG_WRITE));
  must(avformat_write_header(output.get(), nullptr));
  writePictures(output, picture, recipe);
  if (recipe.sound) writeTone(output, sound, double(recipe.frames) / recipe.framesPerSecond);
  must(av_write_trailer(output.get()));
}

void makeWav(const QString& path, int samplesPerSecond, int samples, const std::function<double(int index)>& value) {
  QByteArray data;
  for (int index = 0; index < samples; ++index) data += littleEndian(qint16(std::lround(value(index) * 32'767)));
  QByteArray wav = "RIFF" + littleEndian(quint32(36 + data.size())) + "WAVEfmt " + littleEndian(quint32(16)) +
                   littleEndian(quint16(1)) + littleEndian(quint16(1)) + littleEndian(quint32(samplesPerSecond)) +
                   littleEndian(quint32(samplesPerSecond * 2)) + littleEndian(quint16(2)) + littleEndian(quint16(16)) +
                   "data" + littleEndian(quint32(data.size())) + data;
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(wav) != wav.size())
    throw std::runtime_error("the test's sound could not be made");
}

void makeAac(const QString& path, double seconds) {
  MediaFile file(path, "adts", QStringLiteral("the test's sound could not be made"));
  SoundTrackWriter track(file, soundRate, 1);
  file.begin();
  std::vector<float> samples;
  for (int index = 0; index < int(seconds * soundRate); ++index)
    samples.push_back(index < soundRate ? 0 : tone(index, soundRate));  // the quiet start misleads a guess by bit rate
  track.write(samples);
  track.end();
  file.finish();
}

void makeM4a(const QString& path, double seconds, int channels) {
  SoundFileWriter writer(path, soundRate, channels);
  std::vector<float> samples;
  for (int index = 0; index < int(seconds * soundRate); ++index)
    samples.insert(samples.end(), size_t(channels), tone(index, soundRate));
  writer.write(samples);
  writer.finish();
}

}  // namespace sorvan::test
