#include "generation/media_kind.h"

#include <QFile>

namespace sorvan::generation {
namespace {

bool begins(QByteArrayView bytes, QByteArrayView with) { return bytes.startsWith(with); }

QByteArrayView part(QByteArrayView bytes, qsizetype from, qsizetype length) {
  return bytes.size() >= from + length ? bytes.sliced(from, length) : QByteArrayView();
}

/// Of either byte order, with addresses of four or of eight bytes.
bool isTiff(QByteArrayView start) {
  return begins(start, QByteArrayView("II*\0", 4)) || begins(start, QByteArrayView("MM\0*", 4)) ||
         begins(start, QByteArrayView("II+\0", 4)) || begins(start, QByteArrayView("MM\0+", 4));
}

/// Files of boxes tell by their brand what they hold.
QString extensionOfBrand(QByteArrayView brand) {
  if (brand == "avif" || brand == "avis") return QStringLiteral("avif");
  if (brand.startsWith("hei") || brand.startsWith("hev") || brand == "mif1" || brand == "msf1")
    return QStringLiteral("heic");
  if (brand == "qt  ") return QStringLiteral("mov");
  if (brand == "M4A " || brand == "M4B ") return QStringLiteral("m4a");
  if (brand == "M4V ") return QStringLiteral("m4v");
  return QStringLiteral("mp4");
}

std::optional<QString> extensionOfChunks(QByteArrayView start) {
  const QByteArrayView kind = part(start, 8, 4);
  if (begins(start, "RIFF")) {
    if (kind == "WEBP") return QStringLiteral("webp");
    if (kind == "WAVE") return QStringLiteral("wav");
  }
  if (begins(start, "FORM") && (kind == "AIFF" || kind == "AIFC")) return QStringLiteral("aiff");
  return std::nullopt;
}

/// Sound frames without a container: a tag, or the sync bits of MPEG audio.
std::optional<QString> extensionOfFrames(QByteArrayView start) {
  if (begins(start, "ID3")) return QStringLiteral("mp3");
  if (start.size() < 2 || static_cast<unsigned char>(start[0]) != 0xFF) return std::nullopt;
  const unsigned second = static_cast<unsigned char>(start[1]);
  if ((second & 0xF6U) == 0xF0U) return QStringLiteral("aac");
  const bool validVersion = (second & 0x18U) != 0x08U;
  const bool validLayer = (second & 0x06U) != 0;
  if ((second & 0xE0U) == 0xE0U && validVersion && validLayer) return QStringLiteral("mp3");
  return std::nullopt;
}

/// Extensions that name the same kind of bytes.
QString kindOf(const QString& extension) {
  const QString ext = extension.toLower();
  if (ext == u"jpeg") return QStringLiteral("jpg");
  if (ext == u"tiff") return QStringLiteral("tif");
  if (ext == u"aif") return QStringLiteral("aiff");
  if (ext == u"m4v" || ext == u"mov") return QStringLiteral("mp4");
  if (ext == u"m4a") return QStringLiteral("mp4");
  if (ext == u"oga" || ext == u"opus") return QStringLiteral("ogg");
  if (ext == u"mkv") return QStringLiteral("webm");
  if (ext == u"heif") return QStringLiteral("heic");
  return ext;
}

}  // namespace

std::optional<QString> extensionOfBytes(QByteArrayView start) {
  if (begins(start, "\x89PNG\r\n\x1a\n")) return QStringLiteral("png");
  if (begins(start, "\xff\xd8\xff")) return QStringLiteral("jpg");
  if (begins(start, "GIF87a") || begins(start, "GIF89a")) return QStringLiteral("gif");
  if (isTiff(start)) return QStringLiteral("tif");
  if (const auto chunks = extensionOfChunks(start)) return chunks;
  if (part(start, 4, 4) == "ftyp") return extensionOfBrand(part(start, 8, 4));
  if (begins(start, "\x1a\x45\xdf\xa3")) return QStringLiteral("webm");
  if (begins(start, "fLaC")) return QStringLiteral("flac");
  if (begins(start, "OggS")) return QStringLiteral("ogg");
  return extensionOfFrames(start);
}

std::optional<QString> extensionOfFile(const QString& file) {
  QFile source(file);
  if (!source.open(QIODevice::ReadOnly)) return std::nullopt;
  return extensionOfBytes(source.read(mediaKindBytes));
}

bool isPlainPicture(const QString& extension) {
  const QString ext = extension.toLower();
  return ext == u"png" || ext == u"jpg" || ext == u"jpeg" || ext == u"webp";
}

bool isClip(const QString& extension) {
  const QString ext = extension.toLower();
  return ext == u"mp4" || ext == u"mov" || ext == u"m4v";
}

QString fittingExtension(const QString& announced, const std::optional<QString>& found) {
  if (!found || (!announced.isEmpty() && kindOf(announced) == kindOf(*found))) return announced.toLower();
  return *found;
}

}  // namespace sorvan::generation
