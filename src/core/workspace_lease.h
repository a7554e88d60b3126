// One process per workspace.
#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

#include "core/room.h"

namespace sorvan::core {

/// Holds the lock of a workspace folder for as long as any copy of it lives. A second lease on the same folder in this
/// process shares the first one's lock. The lock dies with the process, so a crash leaves none behind. Any thread.
class WorkspaceLease {
 public:
  /// Locks `.sorvan/workspace.lock` under `root`, making the file when needed; `.sorvan` must exist. Throws SorvanError
  /// when the file cannot be opened or locked, or when another process holds it.
  explicit WorkspaceLease(const QString& root);

  /// Whether the lock file that is held is still the one at its path. False once the drive is gone or something else is
  /// mounted there: then nothing may be written, or a second tree grows under the empty mount point.
  bool isInPlace() const;

 private:
  class Handle;
  std::shared_ptr<const Handle> handle_;
};

/// Free bytes for an ordinary user on the file system that holds `folder`; nothing when it cannot be told.
std::optional<std::uint64_t> freeBytes(const QString& folder);

/// A new request is only submitted when its result can be kept.
inline constexpr std::uint64_t leastFreeBytesForSubmission = 256ULL * 1024 * 1024;

}  // namespace sorvan::core
