// A value decoded on first use from bytes that a record holds.
#pragma once

#include <QByteArray>
#include <memory>

#include "core/room.h"

namespace sorvan::core {

/// Remembers what some bytes decoded to, and decodes again when other bytes are asked for. Main thread.
///
/// The bytes are kept as an implicitly shared copy, so the same buffer means the same content: comparing addresses is
/// enough, and nothing is decoded twice when a record is read again and again.
template <class Value>
class DecodedField {
 public:
  /// The value of `bytes`; null when `decode` gives null. `decode` takes the bytes and gives a shared pointer.
  template <class Decode>
  std::shared_ptr<const Value> read(const QByteArray& bytes, Decode&& decode) const {
    if (kept_ && kept_->bytes.constData() == bytes.constData() && kept_->bytes.size() == bytes.size())
      return kept_->value;
    auto fresh = std::make_shared<Kept>();
    fresh->bytes = bytes;
    fresh->value = decode(bytes);
    kept_ = fresh;
    return kept_->value;
  }

 private:
  struct Kept {
    QByteArray bytes;
    std::shared_ptr<const Value> value;
  };
  mutable std::shared_ptr<const Kept> kept_;
};

}  // namespace sorvan::core
