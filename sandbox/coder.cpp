#include "coder.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace sandbox {

int require(int code, const char* what) {
  if (code >= 0) return code;
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(code, text, sizeof text);
  throw std::runtime_error(std::string(what) + ": " + text);
}

MemoryFile::MemoryFile(For purpose, QByteArray bytes) : bytes_(std::move(bytes)) {
  constexpr int bufferBytes = 64 * 1024;
  auto* buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
  const bool writes = purpose == For::Writing;
  io_ = avio_alloc_context(buffer, bufferBytes, writes ? 1 : 0, this, writes ? nullptr : read, writes ? write : nullptr,
                           seek);
  if (!io_) throw std::runtime_error("No memory for a media file.");
}

MemoryFile::~MemoryFile() {
  av_freep(&io_->buffer);
  avio_context_free(&io_);
}

int MemoryFile::read(void* self, std::uint8_t* buffer, int size) {
  auto& file = *static_cast<MemoryFile*>(self);
  const std::int64_t left = file.bytes_.size() - file.at_;
  if (left <= 0) return AVERROR_EOF;
  const int taken = int(std::min<std::int64_t>(left, size));
  std::memcpy(buffer, file.bytes_.constData() + file.at_, std::size_t(taken));
  file.at_ += taken;
  return taken;
}

int MemoryFile::write(void* self, std::uint8_t* buffer, int size) {
  auto& file = *static_cast<MemoryFile*>(self);
  if (file.at_ + size > file.bytes_.size()) file.bytes_.resize(file.at_ + size);
  std::memcpy(file.bytes_.data() + file.at_, buffer, std::size_t(size));
  file.at_ += size;
  return size;
}

std::int64_t MemoryFile::seek(void* self, std::int64_t offset, int whence) {
  auto& file = *static_cast<MemoryFile*>(self);
  if (whence & AVSEEK_SIZE) return file.bytes_.size();
  if ((whence & 3) == SEEK_SET) file.at_ = offset;
  if ((whence & 3) == SEEK_CUR) file.at_ += offset;
  if ((whence & 3) == SEEK_END) file.at_ = file.bytes_.size() + offset;
  return file.at_;
}

}  // namespace sandbox
