// What the fuzz targets share: promises that hold in every build, and input taken apart.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>

#include "base/sorvan_error.h"

namespace sorvan::fuzz {

/// Aborts, and so tells the fuzzer, when a promise does not hold.
inline void require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "BROKEN: %s\n", promise);
  std::abort();
}

/// What `read` gives; nothing when it refuses with a SorvanError, the only failure that a reader may have.
template <class Read>
auto readOrRefused(Read read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const base::SorvanError& refusal) {
    require(!refusal.message().isEmpty(), "a refusal says why");
    return std::nullopt;
  }
}

/// One input of the fuzzer, taken apart from its start.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : bytes_(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)) {}

  /// The next byte; zero at the end.
  std::uint8_t byte() {
    if (bytes_.isEmpty()) return 0;
    const auto first = static_cast<std::uint8_t>(bytes_.front());
    bytes_.remove(0, 1);
    return first;
  }
  const QByteArray& rest() const { return bytes_; }
  QString text() const { return QString::fromUtf8(bytes_); }
  /// The lines of the rest; at least one.
  QStringList lines() const { return text().split(u'\n'); }

 private:
  QByteArray bytes_;
};

}  // namespace sorvan::fuzz
