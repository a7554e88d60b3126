// FFmpeg's objects with owners, and the one way to open a media file. For the sources of this room only: no other room
// sees FFmpeg's headers.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <optional>

#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

struct FfmpegRelease {
  void operator()(AVFormatContext* input) const { avformat_close_input(&input); }
  void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
  void operator()(SwrContext* resampler) const { swr_free(&resampler); }
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
using MediaInput = std::unique_ptr<AVFormatContext, FfmpegRelease>;
using MediaCodec = std::unique_ptr<AVCodecContext, FfmpegRelease>;
using MediaPacket = std::unique_ptr<AVPacket, FfmpegRelease>;
using MediaFrame = std::unique_ptr<AVFrame, FfmpegRelease>;
using Resampler = std::unique_ptr<SwrContext, FfmpegRelease>;
using PixelScaler = std::unique_ptr<SwsContext, FfmpegRelease>;

/// A file that is being written; the file is closed with its owner.
struct MediaOutputRelease {
  void operator()(AVFormatContext* output) const {
    avio_closep(&output->pb);
    avformat_free_context(output);
  }
};
using MediaOutput = std::unique_ptr<AVFormatContext, MediaOutputRelease>;

/// Stops FFmpeg from writing to the error output: its failures come back as results.
void quietFfmpeg();

MediaPacket makePacket();
MediaFrame makeFrame();

/// Opens a local file and finds its streams. Containers that name other files are not in the list, so that a file can
/// never make this process read another one or the network. Null when it is no media.
MediaInput openMedia(const QString& path);
/// "file:" and the path in the file system's own bytes: FFmpeg would take a colon in a bare path for a protocol.
QByteArray mediaAddress(const QString& path);

/// The first stream of the kind that is no cover picture. Null when there is none.
AVStream* firstStream(const MediaInput& input, AVMediaType kind);

enum class DecodingThreads { one, all };
/// A decoder for the stream. Null when there is none for its codec.
MediaCodec openDecoder(const AVStream& stream, DecodingThreads threads);

/// The moment, in seconds of the container's clock, that counts as the media's zero.
double startOf(const MediaInput& input);
/// Seconds; empty when the container does not tell.
std::optional<double> durationOf(const MediaInput& input);

}  // namespace sorvan::platform
