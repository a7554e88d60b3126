// Reading a whole small file, where unreadable is never taken for absent.
#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

#include "base/sorvan_error.h"

namespace sorvan::base {

inline constexpr qint64 maximumSidecarBytes = 256LL << 20;

// Empty only when there is no such file. Every other failure throws FileError; EFBIG when it is larger than allowed.
std::optional<QByteArray> readIfPresent(const QString& path, qint64 maximumBytes = maximumSidecarBytes);
// Throws FileError, also when the file is absent.
QByteArray readFile(const QString& path, qint64 maximumBytes = maximumSidecarBytes);

}  // namespace sorvan::base
