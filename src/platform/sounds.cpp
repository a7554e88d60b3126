#include "platform/sounds.h"

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/media_texts.h"
#include "platform/sound_decoder.h"

namespace sorvan::platform {
namespace {

[[noreturn]] void refuse() { throw SorvanError(texts::soundUnreadable()); }

template <class Sample>
constexpr AVSampleFormat sampleFormat = std::is_same_v<Sample, float> ? AV_SAMPLE_FMT_FLT : AV_SAMPLE_FMT_S16;

AVChannelLayout layoutOf(int channels) {
  AVChannelLayout layout{};
  av_channel_layout_default(&layout, channels);
  return layout;
}

/// Turns decoded frames of one shape into samples of the wanted rate and channels.
template <class Sample>
class Converter {
 public:
  Converter(const AVFrame& like, const SoundRange& range) : channels_(range.channels) {
    AVChannelLayout in = like.ch_layout;
    if (in.order == AV_CHANNEL_ORDER_UNSPEC) in = layoutOf(in.nb_channels);
    AVChannelLayout out = layoutOf(range.channels);
    SwrContext* context = nullptr;
    swr_alloc_set_opts2(&context, &out, sampleFormat<Sample>, range.samplesPerSecond, &in, AVSampleFormat(like.format),
                        like.sample_rate, 0, nullptr);
    context_.reset(context);
    if (!context_) refuse();
    // Floats may hold values above 1, so mixing channels down would make them louder than the loudest: forbid it.
    av_opt_set_double(context_.get(), "rematrix_maxval", 1.0, 0);
    if (swr_init(context_.get()) < 0) refuse();
  }

  /// The samples that `count` more of the input make; null planes flush. Valid until the next call.
  std::span<const Sample> convert(const uint8_t** planes, int count) {
    const int room = swr_get_out_samples(context_.get(), count);
    if (room <= 0) return {};
    buffer_.resize(size_t(room) * size_t(channels_));
    auto* out = reinterpret_cast<uint8_t*>(buffer_.data());
    const int made = swr_convert(context_.get(), &out, room, planes, count);
    if (made < 0) refuse();
    return {buffer_.data(), size_t(made) * size_t(channels_)};
  }

 private:
  Resampler context_;
  int channels_;
  std::vector<Sample> buffer_;
};

/// The shape of frames; a track may change it on the way.
struct FrameShape {
  int format = 0;
  int rate = 0;
  int channels = 0;
  explicit FrameShape(const AVFrame& frame)
      : format(frame.format), rate(frame.sample_rate), channels(frame.ch_layout.nb_channels) {}
  bool operator==(const FrameShape&) const = default;
};

/// Where the samples of a frame begin when its first `skipped` are left out.
std::vector<const uint8_t*> planesFrom(const AVFrame& frame, int skipped) {
  const auto format = AVSampleFormat(frame.format);
  const bool planar = av_sample_fmt_is_planar(format) != 0;
  const int channels = frame.ch_layout.nb_channels;
  const int step = av_get_bytes_per_sample(format) * (planar ? 1 : channels);
  std::vector<const uint8_t*> planes;
  for (int plane = 0; plane < (planar ? channels : 1); ++plane)
    planes.push_back(frame.extended_data[plane] + ptrdiff_t(skipped) * step);
  return planes;
}

/// One reading of a range.
template <class Sample>
class RangeReading {
 public:
  using Take = std::function<void(std::span<const Sample>)>;

  RangeReading(const QString& path, const SoundRange& range, const Take& take, const std::stop_token& stop)
      : decoder_(path, stop), range_(range), take_(take), from_(std::max(0.0, range.fromSeconds)) {
    const double samples = std::max(0.0, range.lengthSeconds) * range.samplesPerSecond;
    left_ = samples < 1e15 ? std::llround(samples) : std::numeric_limits<int64_t>::max();
  }

  void run() {
    // 1. Near the place, unless it is the start: reading on from there is exact in every container.
    if (from_ > 1) decoder_.seek(from_);
    // 2. Everything from the place on, until enough samples are given.
    while (left_ > 0) {
      const AVFrame* frame = decoder_.next();
      if (frame == nullptr) break;
      add(*frame);
    }
    // 3. What the converter still holds back.
    flush();
    if (!given_ && decoder_.stumbled()) refuse();
  }

 private:
  void add(const AVFrame& frame) {
    if (frame.sample_rate <= 0) return;
    const int skipped = begun_ ? 0 : samplesBefore(frame);
    if (skipped >= frame.nb_samples) return;
    begun_ = true;
    if (shape_ != FrameShape(frame)) {
      flush();
      converter_.emplace(frame, range_);
      shape_ = FrameShape(frame);
    }
    auto planes = planesFrom(frame, skipped);
    give(converter_->convert(planes.data(), frame.nb_samples - skipped));
  }

  /// How many samples of the first frames lie before the range; silence is given where the track begins later.
  int samplesBefore(const AVFrame& frame) {
    constexpr double longestGap = 24 * 3600;
    constexpr double shortestGap = 0.01;  // less is the delay of an encoder, not silence
    const double lead = decoder_.secondsOf(frame) - from_;
    if (lead > shortestGap && lead < longestGap) giveSilence(std::llround(lead * range_.samplesPerSecond));
    return lead < 0 ? int(std::min<double>(std::round(-lead * frame.sample_rate), frame.nb_samples)) : 0;
  }

  void giveSilence(int64_t samples) {
    const std::vector<Sample> silence(size_t(4096) * size_t(range_.channels));
    for (; samples > 0 && left_ > 0; samples -= 4096)
      give(std::span(silence).first(size_t(std::min<int64_t>(samples, 4096)) * size_t(range_.channels)));
  }

  void flush() {
    if (converter_ && left_ > 0) give(converter_->convert(nullptr, 0));
    converter_.reset();
  }

  void give(std::span<const Sample> samples) {
    const auto channels = size_t(range_.channels);
    const auto count = size_t(std::min<int64_t>(left_, int64_t(samples.size() / channels)));
    if (count == 0) return;
    given_ = true;
    left_ -= int64_t(count);
    take_(samples.first(count * channels));
  }

  SoundDecoder decoder_;
  SoundRange range_;
  const Take& take_;
  double from_;
  int64_t left_;  ///< samples a channel that are still wanted
  bool begun_ = false;
  bool given_ = false;
  std::optional<FrameShape> shape_;
  std::optional<Converter<Sample>> converter_;
};

/// Counts a track's length from its packets, for files whose header only lets one guess.
std::optional<double> countedDuration(const MediaInput& input, const AVStream& stream) {
  const MediaPacket packet = makePacket();
  int64_t total = 0;
  while (av_read_frame(input.get(), packet.get()) >= 0) {
    if (packet->stream_index == stream.index && packet->duration > 0) total += packet->duration;
    av_packet_unref(packet.get());
  }
  return total > 0 ? std::optional(double(total) * av_q2d(stream.time_base)) : std::nullopt;
}

}  // namespace

SoundFacts probeSound(const QString& path) {
  const MediaInput input = openMedia(path);
  const AVStream* stream = input ? firstStream(input, AVMEDIA_TYPE_AUDIO) : nullptr;
  if (stream == nullptr) refuse();
  const AVCodecParameters& codec = *stream->codecpar;
  const bool guessed = input->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE || !durationOf(input);
  return {guessed ? countedDuration(input, *stream) : durationOf(input), codec.sample_rate,
          codec.ch_layout.nb_channels};
}

void readSound(const QString& path, const SoundRange& range, const std::function<void(std::span<const float>)>& take,
               const std::stop_token& stop) {
  RangeReading<float>(path, range, take, stop).run();
}

void readSound16(const QString& path, const SoundRange& range,
                 const std::function<void(std::span<const std::int16_t>)>& take, const std::stop_token& stop) {
  RangeReading<std::int16_t>(path, range, take, stop).run();
}

}  // namespace sorvan::platform
