#include "core/media_inspection.h"

#include <QFileInfo>

#include "base/sorvan_error.h"
#include "core/media_texts.h"
#include "platform/clips.h"
#include "platform/pictures.h"
#include "platform/sounds.h"

namespace sorvan::core {
namespace {

struct ExtensionRow {
  const char* extension;
  MediaType type;
  const char* mimeType;
};

/// The system's database is never asked: it takes ".ts" for a clip on one machine and for a translation on another.
constexpr std::array extensionTable{
    ExtensionRow{"png", MediaType::image, "image/png"},        ExtensionRow{"jpg", MediaType::image, "image/jpeg"},
    ExtensionRow{"jpeg", MediaType::image, "image/jpeg"},      ExtensionRow{"heic", MediaType::image, "image/heic"},
    ExtensionRow{"webp", MediaType::image, "image/webp"},      ExtensionRow{"tif", MediaType::image, "image/tiff"},
    ExtensionRow{"tiff", MediaType::image, "image/tiff"},      ExtensionRow{"gif", MediaType::image, "image/gif"},
    ExtensionRow{"bmp", MediaType::image, "image/bmp"},        ExtensionRow{"avif", MediaType::image, "image/avif"},
    ExtensionRow{"mp4", MediaType::video, "video/mp4"},        ExtensionRow{"mov", MediaType::video, "video/quicktime"},
    ExtensionRow{"m4v", MediaType::video, "video/x-m4v"},      ExtensionRow{"webm", MediaType::video, "video/webm"},
    ExtensionRow{"mkv", MediaType::video, "video/x-matroska"}, ExtensionRow{"avi", MediaType::video, "video/x-msvideo"},
    ExtensionRow{"mpg", MediaType::video, "video/mpeg"},       ExtensionRow{"mpeg", MediaType::video, "video/mpeg"},
    ExtensionRow{"mp3", MediaType::audio, "audio/mpeg"},       ExtensionRow{"wav", MediaType::audio, "audio/wav"},
    ExtensionRow{"m4a", MediaType::audio, "audio/mp4"},        ExtensionRow{"aiff", MediaType::audio, "audio/aiff"},
    ExtensionRow{"aif", MediaType::audio, "audio/aiff"},       ExtensionRow{"aac", MediaType::audio, "audio/aac"},
    ExtensionRow{"flac", MediaType::audio, "audio/flac"},      ExtensionRow{"caf", MediaType::audio, "audio/x-caf"},
    ExtensionRow{"ogg", MediaType::audio, "audio/ogg"},        ExtensionRow{"opus", MediaType::audio, "audio/opus"},
};

const ExtensionRow* rowFor(const QString& extension) {
  const QString wanted = extension.toLower();
  const auto row = std::find_if(extensionTable.begin(), extensionTable.end(),
                                [&](const ExtensionRow& each) { return wanted == QLatin1StringView(each.extension); });
  return row == extensionTable.end() ? nullptr : &*row;
}

void measureClip(const QString& path, MediaMetadata& metadata) {
  const ClipFacts clip = probeClip(path);
  metadata.type = MediaType::video;
  metadata.width = clip.size.width();
  metadata.height = clip.size.height();
  metadata.duration = clip.duration;
}

bool measurePicture(const QString& path, MediaMetadata& metadata) {
  const auto picture = probePicture(path);
  if (!picture) return false;
  metadata.type = MediaType::image;
  metadata.width = picture->size.width();
  metadata.height = picture->size.height();
  return true;
}

void measureSound(const QString& path, MediaMetadata& metadata) {
  metadata.type = MediaType::audio;
  metadata.duration = probeSound(path).duration;
}

}  // namespace

std::optional<MediaType> mediaTypeForExtension(const QString& extension) {
  const ExtensionRow* row = rowFor(extension);
  return row != nullptr ? std::optional(row->type) : std::nullopt;
}

QString mimeTypeForExtension(const QString& extension) {
  const ExtensionRow* row = rowFor(extension);
  return row != nullptr ? QString::fromLatin1(row->mimeType) : QStringLiteral("application/octet-stream");
}

MediaMetadata inspectMedia(const QString& path) {
  // 1. A file, not a folder, a pipe or nothing at all.
  const QFileInfo file(path);
  if (!file.isFile()) throw SorvanError(texts::chooseMediaFile());
  MediaMetadata metadata{.fileSize = file.size(), .mimeType = mimeTypeForExtension(file.suffix())};
  // 2. The extension decides what is a clip; then the content what is a picture; then the extension what is a sound.
  const auto byExtension = mediaTypeForExtension(file.suffix());
  if (byExtension == MediaType::video)
    measureClip(path, metadata);
  else if (!measurePicture(path, metadata)) {
    if (byExtension != MediaType::audio) throw SorvanError(texts::unsupportedMedia(file.fileName()));
    measureSound(path, metadata);
  }
  return metadata;
}

}  // namespace sorvan::core
