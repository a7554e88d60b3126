#include "media_shelf.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <stdexcept>
#include <utility>

#include "hosts.h"

namespace sandbox {

MediaShelf::MediaShelf(QString folder) : folder_(std::move(folder)) { QDir().mkpath(folder_); }

QString MediaShelf::fileOf(const QString& path) const {
  const QByteArray name = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex();
  return folder_ + QLatin1Char('/') + QString::fromLatin1(name);
}

void MediaShelf::put(const QString& path, const QByteArray& bytes) const {
  const QString target = fileOf(path);
  QFile part(target + QStringLiteral(".part"));
  if (!part.open(QIODevice::WriteOnly | QIODevice::Truncate) || part.write(bytes) != bytes.size() || !part.flush())
    throw std::runtime_error("A media file cannot be written: " + part.errorString().toStdString());
  part.close();
  QFile::remove(target);
  if (!part.rename(target)) throw std::runtime_error("A media file cannot be put in its place.");
}

std::optional<ShelvedMedia> MediaShelf::get(const QString& path) const {
  QFile file(fileOf(path));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return ShelvedMedia{file.readAll(), contentTypeOf(QFileInfo(path).suffix())};
}

std::optional<QByteArray> MediaShelf::read(const QUrl& url) const {
  if (url.scheme() == QStringLiteral("data")) {
    const QByteArray text = url.toEncoded();
    const qsizetype comma = text.indexOf(',');
    if (comma < 0) return std::nullopt;
    const QByteArray data = QByteArray::fromPercentEncoding(text.mid(comma + 1));
    return text.left(comma).endsWith(";base64") ? QByteArray::fromBase64(data) : data;
  }
  if (url.scheme() != QStringLiteral("https") || !hosts::servesMedia(url.host())) return std::nullopt;
  const auto media = get(url.path());
  return media ? std::optional(media->bytes) : std::nullopt;
}

QByteArray contentTypeOf(const QString& extension) {
  static const std::vector<std::pair<const char16_t*, const char*>> known{
      {u"png", "image/png"},    {u"jpg", "image/jpeg"},      {u"jpeg", "image/jpeg"}, {u"webp", "image/webp"},
      {u"mp4", "video/mp4"},    {u"mov", "video/quicktime"}, {u"webm", "video/webm"}, {u"mp3", "audio/mpeg"},
      {u"wav", "audio/wav"},    {u"m4a", "audio/mp4"},       {u"flac", "audio/flac"}, {u"glb", "model/gltf-binary"},
      {u"svg", "image/svg+xml"}};
  for (const auto& [suffix, type] : known)
    if (extension.compare(QString::fromUtf16(suffix), Qt::CaseInsensitive) == 0) return type;
  return "application/octet-stream";
}

}  // namespace sandbox
