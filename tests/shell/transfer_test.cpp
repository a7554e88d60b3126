#include <gtest/gtest.h>

#include <QFile>

#include "desk.h"

namespace sorvan::shell {
namespace {

struct TransferTest : testing::Test {
  test::Desk desk;
  core::AssetRef make(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    return desk.store.assets().front();
  }
  QString lastToast() const { return desk.alerts.toasts().empty() ? QString() : desk.alerts.toasts().back().text; }
};

TEST_F(TransferTest, TheSelectedItemsGoInTheOrderOfTheWall) {
  const core::AssetRef first = make(QStringLiteral("one"));
  desk.clock->advance(std::chrono::seconds(1));
  const core::AssetRef second = make(QStringLiteral("two"));
  desk.state.select({first->id, second->id});
  const auto data = desk.transfer.selectedItems();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(itemsFromInside(*data), (std::vector<QUuid>{second->id, first->id}));
}

TEST_F(TransferTest, CopyPutsTheFilesOnTheClipboardAndSaysSo) {
  const core::AssetRef item = make(QStringLiteral("one"));
  desk.state.select({item->id});
  desk.transfer.copySelected();
  ASSERT_NE(desk.clipboard, nullptr);
  EXPECT_EQ(desk.clipboard->urls(), QList<QUrl>{QUrl::fromLocalFile(desk.store.fileOf(*item))});
  EXPECT_TRUE(desk.clipboard->hasImage());
  EXPECT_EQ(lastToast(), QStringLiteral("Copied"));
  EXPECT_TRUE(QFile::exists(desk.store.fileOf(*item)));
}

TEST_F(TransferTest, WhereAllFilesAreGoneNothingIsCopiedAndThatIsSaid) {
  const core::AssetRef item = make(QStringLiteral("one"));
  ASSERT_TRUE(QFile::remove(desk.store.fileOf(*item)));
  desk.state.select({item->id});
  EXPECT_EQ(desk.transfer.selectedItems(), nullptr);
  desk.transfer.copySelected();
  EXPECT_EQ(desk.clipboard, nullptr);
  EXPECT_EQ(lastToast(), QStringLiteral("Its original is missing, so there is nothing to copy."));
}

TEST_F(TransferTest, ADragOfFilesThatAreAllGoneSaysSo) {
  const core::AssetRef item = make(QStringLiteral("one"));
  ASSERT_TRUE(QFile::remove(desk.store.fileOf(*item)));
  desk.state.select({item->id});
  EXPECT_EQ(desk.transfer.itemsToDrag(), nullptr);
  EXPECT_EQ(lastToast(), QStringLiteral("Its original is missing, so there is nothing to drag."));
}

TEST_F(TransferTest, ADragTellsHowManyItemsItLeavesOut) {
  const core::AssetRef first = make(QStringLiteral("one"));
  const core::AssetRef second = make(QStringLiteral("two"));
  desk.state.select({first->id, second->id});
  ASSERT_NE(desk.transfer.itemsToDrag(), nullptr);
  EXPECT_TRUE(desk.alerts.toasts().empty());
  ASSERT_TRUE(QFile::remove(desk.store.fileOf(*first)));
  const auto data = desk.transfer.itemsToDrag();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(itemsFromInside(*data), std::vector<QUuid>{second->id});
  EXPECT_EQ(lastToast(), QStringLiteral("1 item is left out: its original is missing."));
  desk.transfer.copySelected();
  EXPECT_EQ(lastToast(), QStringLiteral("Copied"));
  EXPECT_EQ(desk.alerts.toasts().back().secondLine, QStringLiteral("1 item is left out: its original is missing."));
}

TEST_F(TransferTest, ItemsThatTheGalleryDoesNotShowAreCopiedToo) {
  const core::AssetRef item = make(QStringLiteral("one"));
  desk.state.setLocation(favoritesLocation);
  desk.state.select({item->id});
  desk.transfer.copySelected();
  ASSERT_NE(desk.clipboard, nullptr);
  EXPECT_EQ(itemsFromInside(*desk.clipboard), std::vector<QUuid>{item->id});
}

TEST_F(TransferTest, FilesOfTheLibraryAreKnownAsItsItemsAlsoThroughLinks) {
  const core::AssetRef item = make(QStringLiteral("one"));
  const QString link = desk.folder / QStringLiteral("link");
  ASSERT_TRUE(QFile::link(desk.store.files().root(), link));
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(link + u'/' + item->localFilePath),
                QUrl::fromLocalFile(desk.store.fileOf(*item)),
                QUrl::fromLocalFile(desk.folder / QStringLiteral("none.png")),
                QUrl(QStringLiteral("https://example.invalid/a.png"))});
  const BroughtItems brought = desk.transfer.brought(data);
  EXPECT_EQ(brought.items, std::vector<QUuid>{item->id});
  EXPECT_EQ(brought.otherFiles, 1);
}

TEST_F(TransferTest, AJobIsNoItem) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  desk.state.select({desk.newestJob()->id});
  EXPECT_FALSE(desk.transfer.hasItems());
  desk.transfer.copySelected();
  EXPECT_EQ(desk.clipboard, nullptr);
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(TransferTest, DroppedFilesAreToldThatImportComesLater) {
  desk.transfer.refuseFiles(3);
  ASSERT_FALSE(desk.alerts.toasts().empty());
  EXPECT_EQ(lastToast(), QStringLiteral("Files cannot be imported yet"));
  EXPECT_TRUE(desk.alerts.toasts().back().secondLine.contains(QStringLiteral("All 3 files were left")));
}

}  // namespace
}  // namespace sorvan::shell
