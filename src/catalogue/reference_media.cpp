#include "catalogue/reference_media.h"

#include <QColorSpace>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QtEndian>

#include "base/sorvan_error.h"
#include "catalogue/outputs.h"
#include "catalogue/texts.h"
#include "platform/clips.h"
#include "platform/pictures.h"
#include "platform/sounds.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr double jpegQuality = 0.92;
constexpr int wavHeaderBytes = 44;
constexpr int bytesPerSample = 2;

QString extensionOf(const QString& file) { return QFileInfo(file).suffix().toLower(); }

QByteArray wholeFile(const QString& file, qint64 limit, const QString& unreadable, const QString& tooLarge) {
  QFile source(file);
  if (!source.open(QIODevice::ReadOnly)) throw SorvanError(unreadable);
  if (source.size() > limit) throw SorvanError(tooLarge);
  const QByteArray bytes = source.readAll();
  if (bytes.isEmpty() || source.error() != QFileDevice::NoError) throw SorvanError(unreadable);
  return bytes;
}

QImage readPicture(const QString& file) {
  try {
    return decodeWithin(file, longestEdgeToSend);
  } catch (const SorvanError&) {
    throw SorvanError(texts::unreadableReference());
  }
}

QByteArray encodedPng(const QImage& image) {
  try {
    return encodePng(image);
  } catch (const SorvanError&) {
    throw SorvanError(texts::referenceNotEncoded());
  }
}

QByteArray encodedJpeg(const QImage& image) {
  QImage opaque(image.size(), QImage::Format_RGB32);
  if (opaque.isNull()) throw SorvanError(texts::referenceNotEncoded());
  opaque.fill(Qt::white);
  opaque.setColorSpace(image.colorSpace());
  QPainter painter(&opaque);
  painter.drawImage(0, 0, image);
  painter.end();
  try {
    return encodeJpeg(opaque, jpegQuality);
  } catch (const SorvanError&) {
    throw SorvanError(texts::referenceNotEncoded());
  }
}

template <class T>
void append(QByteArray& bytes, T value) {
  const T little = qToLittleEndian(value);
  bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

/// The header of 16-bit samples.
QByteArray wavHeader(const SoundFacts& facts, qint64 sampleBytes) {
  const auto channels = static_cast<quint16>(facts.channels);
  const auto rate = static_cast<quint32>(facts.samplesPerSecond);
  QByteArray header("RIFF");
  append(header, static_cast<quint32>(wavHeaderBytes - 8 + sampleBytes));
  header.append("WAVEfmt ");
  append(header, quint32{16});
  append(header, quint16{1});
  append(header, channels);
  append(header, rate);
  append(header, static_cast<quint32>(rate * channels * bytesPerSample));
  append(header, static_cast<quint16>(channels * bytesPerSample));
  append(header, static_cast<quint16>(8 * bytesPerSample));
  header.append("data");
  append(header, static_cast<quint32>(sampleBytes));
  return header;
}

/// The samples in order, little-endian; throws as soon as they pass the limit.
QByteArray samplesOf(const QString& file, const SoundFacts& facts, qint64 limit, const std::stop_token& stop) {
  SoundRange range;
  range.samplesPerSecond = facts.samplesPerSecond;
  range.channels = facts.channels;
  QByteArray samples;
  const auto take = [&](std::span<const std::int16_t> piece) {
    if (samples.size() + static_cast<qint64>(piece.size_bytes()) > limit) throw SorvanError(texts::soundTooLong());
    for (const std::int16_t sample : piece) append(samples, sample);
  };
  readSound16(file, range, take, stop);
  return samples;
}

PreparedMedia asWav(const QString& file, qint64 limit, const std::stop_token& stop) {
  SoundFacts facts;
  try {
    facts = probeSound(file);
  } catch (const SorvanError&) {
    throw SorvanError(texts::soundNotSendable());
  }
  if (facts.channels < 1 || facts.samplesPerSecond < 1) throw SorvanError(texts::soundNotSendable());
  const QByteArray samples = samplesOf(file, facts, limit - wavHeaderBytes, stop);
  if (samples.isEmpty()) throw SorvanError(texts::soundNotSendable());
  return {wavHeader(facts, samples.size()) + samples, u"audio/wav"_s, u"wav"_s};
}

}  // namespace

ReferenceKind referenceKind(const QString& file) {
  static const QStringList sounds{u"mp3"_s, u"wav"_s, u"m4a"_s, u"aac"_s, u"aif"_s, u"aiff"_s, u"flac"_s, u"caf"_s};
  static const QStringList clips{u"mp4"_s, u"mov"_s, u"m4v"_s};
  if (sounds.contains(extensionOf(file))) return ReferenceKind::sound;
  return clips.contains(extensionOf(file)) ? ReferenceKind::clip : ReferenceKind::picture;
}

QByteArray pngOf(const QString& file) { return encodedPng(readPicture(file)); }

PreparedMedia compactPicture(const QString& file, qint64 limit) {
  const QImage image = readPicture(file);
  QByteArray png = encodedPng(image);
  if (png.size() <= limit) return {std::move(png), u"image/png"_s, u"png"_s};
  return {encodedJpeg(image), u"image/jpeg"_s, u"jpg"_s};
}

PreparedMedia preparedSound(const QString& file, qint64 limit, const std::stop_token& stop) {
  if (QFileInfo(file).size() > limit) return asWav(file, limit, stop);
  const QString ext = extensionOf(file);
  const QString type = contentTypeOfExtension(ext).value_or(u"application/octet-stream"_s);
  return {wholeFile(file, limit, texts::soundNotSendable(), texts::soundTooLong()), type, ext};
}

PreparedMedia preparedClip(const QString& file) {
  try {
    if (!probeClip(file).hasPicture) throw SorvanError(texts::clipNotSendable());
  } catch (const SorvanError&) {
    throw SorvanError(texts::clipNotSendable());
  }
  const QString ext = extensionOf(file);
  const QString type = contentTypeOfExtension(ext).value_or(u"video/mp4"_s);
  return {wholeFile(file, largestClipToSend, texts::clipNotSendable(), texts::clipTooLong()), type, ext};
}

PreparedMedia preparedReference(const QString& file, const std::stop_token& stop) {
  switch (referenceKind(file)) {
    case ReferenceKind::sound:
      return preparedSound(file, largestSoundToSend, stop);
    case ReferenceKind::clip:
      return preparedClip(file);
    case ReferenceKind::picture:
      break;
  }
  return compactPicture(file, largestPictureToSend);
}

void takeSoundTrack(const QString& clip, const QString& destination, const std::stop_token& stop) {
  writeSoundTrack(clip, destination, stop);
}

}  // namespace sorvan::catalogue
