// SHA-256 in lower-case hexadecimal: the checksum of every file and body.
#pragma once

#include <stop_token>

#include <QByteArray>
#include <QString>

namespace sorvan::base {

QString sha256Hex(const QByteArray& bytes);
// Reads the file in pieces of 1 MiB. Throws FileError, or Cancelled between two pieces. Long: call it on the pool.
QString sha256OfFile(const QString& path, const std::stop_token& stop);

}  // namespace sorvan::base
