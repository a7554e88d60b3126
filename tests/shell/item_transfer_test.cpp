#include "shell/item_transfer.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include "base/ids.h"
#include "support/temporary_folder.h"

namespace sorvan::shell {
namespace {

struct ItemTransferTest : testing::Test {
  test::TemporaryFolder folder;
  TransferItem item(const QString& name, bool isPicture = true) {
    const QString path = folder / name;
    QImage image(6, 4, QImage::Format_RGB32);
    image.fill(Qt::green);
    EXPECT_TRUE(image.save(path, "PNG"));
    return {newUuid(), path, isPicture};
  }
};

TEST_F(ItemTransferTest, FilesAreOfferedInPlaceInEveryFormatAsACopy) {
  const TransferItem one = item(QStringLiteral("a b.png"));
  const TransferItem two = item(QStringLiteral("ü.mp4"), false);
  const auto data = transferOf({one, two});
  EXPECT_EQ(data->urls(), (QList<QUrl>{QUrl::fromLocalFile(one.path), QUrl::fromLocalFile(two.path)}));
  const QByteArray first = QUrl::fromLocalFile(one.path).toEncoded();
  const QByteArray second = QUrl::fromLocalFile(two.path).toEncoded();
  EXPECT_EQ(data->data(QStringLiteral("x-special/gnome-copied-files")), "copy\n" + first + "\n" + second);
  EXPECT_EQ(data->data(QStringLiteral("application/x-kde-cutselection")), "0");
  EXPECT_EQ(data->data(QStringLiteral("text/uri-list")), first + "\r\n" + second + "\r\n");
  EXPECT_FALSE(data->hasImage());
}

TEST_F(ItemTransferTest, OnePictureIsOfferedItselfToo) {
  const auto data = transferOf({item(QStringLiteral("a.png"))});
  ASSERT_TRUE(data->hasImage());
  EXPECT_EQ(qvariant_cast<QImage>(data->imageData()).size(), QSize(6, 4));
}

TEST_F(ItemTransferTest, ASoundOrAPictureThatCannotBeReadIsAFileOnly) {
  EXPECT_FALSE(transferOf({item(QStringLiteral("a.wav"), false)})->hasImage());
  QFile broken(folder / QStringLiteral("broken.png"));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("no picture");
  broken.close();
  const auto data = transferOf({{newUuid(), broken.fileName(), true}});
  EXPECT_TRUE(qvariant_cast<QImage>(data->imageData()).isNull());
  EXPECT_EQ(data->urls().size(), 1);
}

TEST_F(ItemTransferTest, ItsOwnItemsAreKnownAgainAndAreNoFilesFromOutside) {
  const TransferItem one = item(QStringLiteral("a.png"));
  const TransferItem two = item(QStringLiteral("b.png"));
  const auto data = transferOf({one, two});
  EXPECT_EQ(itemsFromInside(*data), (std::vector<QUuid>{one.id, two.id}));
  EXPECT_TRUE(filesFromOutside(*data).isEmpty());
}

TEST_F(ItemTransferTest, OnlyLocalFilesOfOthersCount) {
  QMimeData data;
  data.setUrls({QUrl(QStringLiteral("https://example.org/a.png")), QUrl::fromLocalFile(QStringLiteral("/tmp/a.png"))});
  EXPECT_EQ(filesFromOutside(data), QList<QUrl>{QUrl::fromLocalFile(QStringLiteral("/tmp/a.png"))});
  EXPECT_TRUE(itemsFromInside(data).empty());
}

}  // namespace
}  // namespace sorvan::shell
