#include "platform/ffmpeg.h"

#include <mutex>
#include <new>

#include <QFile>

namespace sorvan::platform {
namespace {

constexpr const char* containers = "mov,mp4,m4a,matroska,webm,avi,mpeg,mpegvideo,mp3,wav,w64,aiff,aac,flac,caf,ogg";

constexpr int64_t maximumFramePixels = 16'384LL * 16'384;

struct Options {
  AVDictionary* entries = nullptr;
  Options() = default;
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  ~Options() { av_dict_free(&entries); }
};

template <class T>
T* orOutOfMemory(T* object) {
  if (object == nullptr) throw std::bad_alloc();
  return object;
}

}  // namespace

void quietFfmpeg() {
  static std::once_flag once;
  std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

MediaPacket makePacket() { return MediaPacket(orOutOfMemory(av_packet_alloc())); }
MediaFrame makeFrame() { return MediaFrame(orOutOfMemory(av_frame_alloc())); }

QByteArray mediaAddress(const QString& path) { return QByteArrayLiteral("file:") + QFile::encodeName(path); }

MediaInput openMedia(const QString& path) {
  quietFfmpeg();
  Options options;
  av_dict_set(&options.entries, "format_whitelist", containers, 0);
  av_dict_set(&options.entries, "protocol_whitelist", "file", 0);
  AVFormatContext* context = nullptr;
  if (avformat_open_input(&context, mediaAddress(path).constData(), nullptr, &options.entries) < 0) return nullptr;
  MediaInput input(context);
  if (avformat_find_stream_info(input.get(), nullptr) < 0) return nullptr;
  return input;
}

AVStream* firstStream(const MediaInput& input, AVMediaType kind) {
  for (unsigned index = 0; index < input->nb_streams; ++index) {
    AVStream* stream = input->streams[index];
    if (stream->codecpar->codec_type == kind && (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) return stream;
  }
  return nullptr;
}

MediaCodec openDecoder(const AVStream& stream, DecodingThreads threads) {
  const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
  if (codec == nullptr) return nullptr;
  MediaCodec decoder(orOutOfMemory(avcodec_alloc_context3(codec)));
  if (avcodec_parameters_to_context(decoder.get(), stream.codecpar) < 0) return nullptr;
  decoder->max_pixels = maximumFramePixels;
  decoder->pkt_timebase = stream.time_base;
  decoder->thread_count = threads == DecodingThreads::one ? 1 : 0;
  if (avcodec_open2(decoder.get(), codec, nullptr) < 0) return nullptr;
  return decoder;
}

double startOf(const MediaInput& input) {
  return input->start_time == AV_NOPTS_VALUE ? 0 : double(input->start_time) / AV_TIME_BASE;
}

std::optional<double> durationOf(const MediaInput& input) {
  if (input->duration == AV_NOPTS_VALUE || input->duration < 0) return std::nullopt;
  return double(input->duration) / AV_TIME_BASE;
}

}  // namespace sorvan::platform
