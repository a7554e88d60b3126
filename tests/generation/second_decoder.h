// Reads pictures with a program that is not ours, so that what we write is not judged by what we read.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QSize>
#include <QStringList>

#include <stdexcept>

namespace sorvan::generation::test {

/// What ImageMagick writes for these arguments; throws when it is not installed or fails.
inline QByteArray converted(const QStringList& arguments) {
  QProcess process;
  process.start(QStringLiteral("convert"), arguments);
  if (!process.waitForFinished(60'000) || process.exitCode() != 0)
    throw std::runtime_error("convert: " + process.readAllStandardError().toStdString());
  return process.readAllStandardOutput();
}

/// The upright pixels of a file: red, green, blue and alpha of 16 bits each, rows from the top.
inline QByteArray secondDecoding(const QString& path) {
  return converted(
      {path, QStringLiteral("-auto-orient"), QStringLiteral("-depth"), QStringLiteral("16"), QStringLiteral("RGBA:-")});
}

/// The colour profile in a file, as it stands there.
inline QByteArray embeddedProfile(const QString& path) { return converted({path, QStringLiteral("icc:-")}); }

}  // namespace sorvan::generation::test
