#include "core/thumbnails.h"

#include <QImage>

#include "base/durable_file.h"
#include "base/sorvan_error.h"
#include "core/media_texts.h"
#include "core/squares.h"
#include "core/waveform.h"
#include "platform/clips.h"
#include "platform/pictures.h"

namespace sorvan::core {
namespace {

constexpr double jpegQuality = 0.85;
constexpr int waveformHeight = 420;

QImage pictureThumbnail(const QString& source) {
  QImage picture;
  try {
    picture = decodeWithin(source, thumbnailEdge);
  } catch (const SorvanError&) {
    throw SorvanError(texts::thumbnailNotCreated());
  }
  if (!hasTransparency(picture)) return picture;
  const QImage squared = onSquares(picture);
  return squared.isNull() ? picture : squared;
}

QImage drawn(const QString& source, MediaType type) {
  switch (type) {
    case MediaType::image:
      return pictureThumbnail(source);
    case MediaType::video:
      return frameAt(source, 0, QSize(thumbnailEdge, thumbnailEdge));
    case MediaType::audio:
      return waveformPicture(source, {thumbnailEdge, waveformHeight});
  }
  throw SorvanError(texts::thumbnailNotCreated());
}

}  // namespace

QByteArray thumbnailJpeg(const QString& source, MediaType type) {
  const QImage picture = drawn(source, type);
  try {
    return encodeJpeg(picture, jpegQuality);
  } catch (const SorvanError&) {
    throw SorvanError(texts::thumbnailNotFinished());
  }
}

void drawThumbnail(const QString& source, MediaType type, const QString& destination) {
  const QByteArray jpeg = thumbnailJpeg(source, type);
  try {
    writeDurably(destination, jpeg, DurableMode::Media);
  } catch (const SorvanError&) {
    throw SorvanError(texts::thumbnailNotSaved());
  }
}

}  // namespace sorvan::core
