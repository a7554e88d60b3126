#include "platform/picture_track.h"

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/media_texts.h"

namespace sorvan::platform {
namespace {

[[noreturn]] void refuse() { throw SorvanError(texts::clipUnreadable()); }

bool isWhole(const AVFrame& frame) { return frame.decode_error_flags == 0 && frame.width > 0 && frame.height > 0; }

/// Says which matrix and range the numbers of a frame are in; what the file leaves open follows the usual rule, that
/// small pictures are in the older matrix.
void setColours(SwsContext* scaler, const AVFrame& frame) {
  int matrix = frame.colorspace;
  if (matrix == AVCOL_SPC_UNSPECIFIED || matrix == AVCOL_SPC_RGB)
    matrix = frame.height >= 720 ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
  const int* table = sws_getCoefficients(matrix);
  const int full = frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
  sws_setColorspaceDetails(scaler, table, full, sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
}

QImage pixelsOf(const AVFrame& frame, QSize size, PixelScaler& scaler) {
  const int quality = size.width() < frame.width ? SWS_AREA : SWS_BICUBIC;
  scaler.reset(sws_getCachedContext(scaler.release(), frame.width, frame.height, AVPixelFormat(frame.format),
                                    size.width(), size.height(), AV_PIX_FMT_BGRA,
                                    quality | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT, nullptr, nullptr, nullptr));
  QImage image(size, QImage::Format_RGB32);
  if (!scaler || image.isNull()) refuse();
  setColours(scaler.get(), frame);
  uint8_t* planes[4] = {image.bits(), nullptr, nullptr, nullptr};
  const int strides[4] = {int(image.bytesPerLine()), 0, 0, 0};
  if (sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, planes, strides) != size.height()) refuse();
  return image;
}

}  // namespace

QTransform displayTurn(const AVStream& stream) {
  const auto* data =
      reinterpret_cast<const int32_t*>(av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr));
  if (data == nullptr) return {};
  const auto sign = [](int32_t value) { return value < 0 ? -1.0 : 1.0; };
  const bool quarter = std::abs(double(data[0])) < std::abs(double(data[1]));
  return quarter ? QTransform(0, sign(data[1]), sign(data[3]), 0, 0, 0)
                 : QTransform(sign(data[0]), 0, 0, sign(data[4]), 0, 0);
}

bool swapsSides(const QTransform& turn) { return turn.m12() != 0; }

QSize squaredSize(const AVStream& stream) {
  const AVRational shape =
      stream.sample_aspect_ratio.num > 0 ? stream.sample_aspect_ratio : stream.codecpar->sample_aspect_ratio;
  const QSize stored(stream.codecpar->width, stream.codecpar->height);
  if (shape.num <= 0 || shape.den <= 0 || shape.num == shape.den) return stored;
  return {int(std::min<double>(stored.width() * av_q2d(shape), 1 << 16)), stored.height()};
}

QImage uprightImage(const AVFrame& frame, const AVStream& stream, std::optional<QSize> maximum, PixelScaler& scaler) {
  const QTransform turn = displayTurn(stream);
  QSize size = squaredSize(stream);
  if (size.height() != frame.height || size.width() <= 0) size = {frame.width, frame.height};
  if (maximum) {
    const QSize limit = swapsSides(turn) ? maximum->transposed() : *maximum;
    if (size.width() > limit.width() || size.height() > limit.height())
      size = size.scaled(limit, Qt::KeepAspectRatio).expandedTo({1, 1});
  }
  const QImage image = pixelsOf(frame, size, scaler);
  return turn.isIdentity() ? image : image.transformed(turn).convertToFormat(QImage::Format_RGB32);
}

PictureTrack::PictureTrack(const QString& path, DecodingThreads threads, std::stop_token stop)
    : input_(openMedia(path)), stop_(std::move(stop)) {
  if (!input_) refuse();
  stream_ = firstStream(input_, AVMEDIA_TYPE_VIDEO);
  if (stream_ == nullptr) refuse();
  decoder_ = openDecoder(*stream_, threads);
  if (!decoder_) refuse();
  for (unsigned index = 0; index < input_->nb_streams; ++index)
    if (input_->streams[index] != stream_) input_->streams[index]->discard = AVDISCARD_ALL;
}

void PictureTrack::seek(double seconds) {
  const double clock = seconds + startOf(input_);
  const auto target = int64_t(clock / av_q2d(stream_->time_base));
  if (seconds <= 0 || av_seek_frame(input_.get(), stream_->index, target, AVSEEK_FLAG_BACKWARD) < 0) rewind();
  restart();
}

void PictureTrack::rewind() {
  av_seek_frame(input_.get(), stream_->index, std::numeric_limits<int32_t>::min(), AVSEEK_FLAG_BACKWARD);
  restart();
}

MediaFrame PictureTrack::next() {
  constexpr int patience = 4096;  // failures in a row
  MediaFrame frame = makeFrame();
  for (int failures = 0; failures < patience;) {
    throwIfStopped(stop_);
    const int received = avcodec_receive_frame(decoder_.get(), frame.get());
    if (received == 0 && isWhole(*frame)) return frame;
    if (received == AVERROR_EOF) return nullptr;
    if (received == AVERROR(EAGAIN)) feed();
    if (received != AVERROR(EAGAIN)) ++failures;
  }
  return nullptr;
}

double PictureTrack::secondsOf(const AVFrame& frame) const {
  const int64_t time = frame.best_effort_timestamp;
  return time == AV_NOPTS_VALUE ? 0 : double(time) * av_q2d(stream_->time_base) - startOf(input_);
}

void PictureTrack::restart() { avcodec_flush_buffers(decoder_.get()); }

void PictureTrack::feed() {
  while (av_read_frame(input_.get(), packet_.get()) >= 0) {
    const bool ours = packet_->stream_index == stream_->index;
    if (ours) avcodec_send_packet(decoder_.get(), packet_.get());
    av_packet_unref(packet_.get());
    if (ours) return;
  }
  avcodec_send_packet(decoder_.get(), nullptr);
}

}  // namespace sorvan::platform
