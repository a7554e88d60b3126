#include "shell/item_transfer.h"

#include "base/ids.h"
#include "base/sorvan_error.h"
#include "platform/pictures.h"

#include <QImage>

namespace sorvan::shell {

namespace {

const QString pictureFormat = QStringLiteral("application/x-qt-image");
const QString fileManagerFormat = QStringLiteral("x-special/gnome-copied-files");
const QString cutFormat = QStringLiteral("application/x-kde-cutselection");
// Larger pictures go as files only: whoever asks for the picture waits for it.
constexpr qint64 mostPixels = 100'000'000;

QImage pictureAt(const QString& path) {
  try {
    const auto facts = probePicture(path);
    const bool small = facts && static_cast<qint64>(facts->size.width()) * facts->size.height() <= mostPixels;
    return small ? decodeUpright(path) : QImage();
  } catch (const SorvanError&) {
    return {};
  }
}

// A picture beside its file.
class PictureTransfer final : public QMimeData {
 public:
  explicit PictureTransfer(QString path) : path_(std::move(path)) {}

  QStringList formats() const override { return QMimeData::formats() << pictureFormat; }
  bool hasFormat(const QString& format) const override {
    return format == pictureFormat || QMimeData::hasFormat(format);
  }

 protected:
  QVariant retrieveData(const QString& format, QMetaType type) const override {
    if (format != pictureFormat) return QMimeData::retrieveData(format, type);
    if (picture_.isNull()) picture_ = pictureAt(path_);
    return picture_.isNull() ? QVariant() : QVariant(picture_);
  }

 private:
  QString path_;
  mutable QImage picture_;
};

}  // namespace

std::unique_ptr<QMimeData> transferOf(const std::vector<TransferItem>& items) {
  const bool onePicture = items.size() == 1 && items.front().isPicture;
  std::unique_ptr<QMimeData> data =
      onePicture ? std::make_unique<PictureTransfer>(items.front().path) : std::make_unique<QMimeData>();
  QList<QUrl> files;
  QByteArray ids;
  QByteArray copied("copy");
  for (const TransferItem& item : items) {
    files.append(QUrl::fromLocalFile(item.path));
    ids += uuidText(item.id).toLatin1() + '\n';
    copied += '\n' + files.back().toEncoded();
  }
  data->setUrls(files);
  data->setData(fileManagerFormat, copied);
  data->setData(cutFormat, QByteArray("0"));
  data->setData(itemsFormat, ids);
  return data;
}

QList<QUrl> filesFromOutside(const QMimeData& data) {
  if (data.hasFormat(itemsFormat)) return {};
  QList<QUrl> files = data.urls();
  files.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
  return files;
}

std::vector<QUuid> itemsFromInside(const QMimeData& data) {
  std::vector<QUuid> items;
  for (const QByteArray& line : data.data(itemsFormat).split('\n')) {
    const QUuid id = uuidFromText(QString::fromLatin1(line));
    if (!id.isNull()) items.push_back(id);
  }
  return items;
}

}  // namespace sorvan::shell
