// What reading and writing media share: FFmpeg's objects with owners, and files in memory.
#pragma once
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <QByteArray>
#include <memory>

namespace sandbox {

// Throws std::runtime_error with FFmpeg's own words when the code is an error. Returns the code.
int require(int code, const char* what);

struct FreeFrame {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct FreePacket {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FreeCodec {
  void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
};
struct FreeScaler {
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
struct FreeResampler {
  void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};
using Frame = std::unique_ptr<AVFrame, FreeFrame>;
using Packet = std::unique_ptr<AVPacket, FreePacket>;
using Codec = std::unique_ptr<AVCodecContext, FreeCodec>;
using Scaler = std::unique_ptr<SwsContext, FreeScaler>;
using Resampler = std::unique_ptr<SwrContext, FreeResampler>;

// A file that FFmpeg reads from, or writes to, in memory. Outlives the format context that uses it.
class MemoryFile {
 public:
  enum class For { Reading, Writing };
  MemoryFile(For purpose, QByteArray bytes);
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  AVIOContext* io() const { return io_; }
  const QByteArray& bytes() const { return bytes_; }

 private:
  static int read(void* self, std::uint8_t* buffer, int size);
  static int write(void* self, std::uint8_t* buffer, int size);
  static std::int64_t seek(void* self, std::int64_t offset, int whence);

  QByteArray bytes_;
  std::int64_t at_ = 0;
  AVIOContext* io_ = nullptr;
};

}  // namespace sandbox
