#include "shell/views/dropped_media.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "core/media_inspection.h"
#include "shell/item_transfer.h"

namespace sorvan::views {

namespace {
// More than a wall shows at once is no reference any more.
constexpr qsizetype mostItems = 4096;

bool mayBePicture(const QString& path) {
  const auto type = core::mediaTypeForExtension(QFileInfo(path).suffix());
  return !type || *type == core::MediaType::image;
}
}  // namespace

QStringList localFiles(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls().mid(0, mostItems))
    if (url.isLocalFile()) files << url.toLocalFile();
  return files;
}

bool holdsMedia(const QMimeData& data) {
  if (data.hasFormat(itemsFormat) || data.hasImage()) return true;
  const QStringList files = localFiles(data);
  return std::any_of(files.begin(), files.end(), mayBePicture);
}

bool pastesMedia(const QMimeData& data) {
  const bool wordsOnly = data.hasFormat(QStringLiteral("text/plain")) && localFiles(data).isEmpty() &&
                         !data.hasFormat(itemsFormat);
  return holdsMedia(data) && !wordsOnly;
}

bool attachMedia(const QMimeData& data, ReferencesPresenter& references) {
  if (const auto items = itemsFromInside(data); !items.empty()) return references.attachItems(items);
  if (const QStringList files = localFiles(data); !files.isEmpty()) {
    references.importFiles(files);
    return true;
  }
  const QImage picture = data.hasImage() ? qvariant_cast<QImage>(data.imageData()) : QImage();
  if (picture.isNull()) return false;
  references.importPicture(picture);
  return true;
}

}  // namespace sorvan::views
