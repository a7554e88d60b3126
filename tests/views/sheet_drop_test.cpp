#include <QDropEvent>
#include <QMimeData>

#include "shell/contact_sheets.h"
#include "shell/item_transfer.h"
#include "shell/locations.h"
#include "shell/views/segmented_control.h"
#include "shell/views/sheet_cards.h"
#include "views/comparison_desk.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class SheetDropTest : public ComparisonDesk {
 protected:
  // What the wall sends along with these items, or another program with their files alone.
  std::unique_ptr<QMimeData> items(const std::vector<QUuid>& ids) {
    std::vector<TransferItem> sent;
    for (const QUuid& id : ids) sent.push_back({id, desk.store.fileOf(*desk.store.asset(id)), true});
    return transferOf(sent);
  }
  std::unique_ptr<QMimeData> files(const QStringList& paths) {
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
    data->setUrls(urls);
    return data;
  }
  // Whether the sheet took the drag; then it was dropped there.
  bool drop(const QMimeData& data) {
    const QPoint middle = sheet().rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&sheet(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent dropped(middle, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&sheet(), &dropped);
    EXPECT_EQ(dropped.dropAction(), Qt::CopyAction);
    test::runPosted();
    return true;
  }
  QString lastToast() { return desk.alerts.toasts().empty() ? QString() : desk.alerts.toasts().back().text; }
};

TEST_F(SheetDropTest, ItemsAreAddedInTheirOrderAndUndoTakesThemBack) {
  const std::vector<QUuid> ids = several(4);
  openSheet({ids[0], ids[1]});
  const std::vector<QUuid> before = desk.comparison.sheet().ids();
  EXPECT_TRUE(drop(*items({ids[3], ids[2], ids[0]})));
  std::vector<QUuid> after = before;
  after.insert(after.end(), {ids[3], ids[2]});
  EXPECT_EQ(desk.comparison.sheet().ids(), after);
  EXPECT_EQ(places().count(), 4);
  actions->trigger(ActionId::undo);
  test::runPosted();
  EXPECT_EQ(desk.comparison.sheet().ids(), before);
}

TEST_F(SheetDropTest, AFileOfAnotherProgramThatIsAnItemIsAddedAndStaysWhereItIs) {
  const std::vector<QUuid> ids = several(3);
  openSheet({ids[0], ids[1]});
  const QString file = desk.store.fileOf(*desk.store.asset(ids[2]));
  EXPECT_TRUE(drop(*files({file})));
  EXPECT_EQ(desk.comparison.sheet().ids().back(), ids[2]);
  EXPECT_TRUE(QFile::exists(file));
}

TEST_F(SheetDropTest, AFileThatIsNoItemIsToldThatImportComesLater) {
  const std::vector<QUuid> ids = several(2);
  openSheet(ids);
  QFile other(desk.folder / u"other.png"_s);
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.close();
  EXPECT_TRUE(drop(*files({other.fileName()})));
  EXPECT_EQ(places().count(), 2);
  EXPECT_EQ(lastToast(), u"Files cannot be imported yet"_s);
  EXPECT_TRUE(other.exists());
}

TEST_F(SheetDropTest, WhileItsComparisonRunsTheSheetSaysWhenMediaCanBeAdded) {
  const std::vector<QUuid> ids = several(1);
  desk.provider->gate.emplace();
  desk.state.openContactSheet(ComparisonBatch{desk.compare(2)});
  test::runPosted();
  EXPECT_TRUE(drop(*items(ids)));
  EXPECT_EQ(places().count(), 2);
  EXPECT_EQ(lastToast(), u"Add media after the comparison finishes"_s);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_TRUE(drop(*items(ids)));
  EXPECT_EQ(places().count(), 3);
}

TEST_F(SheetDropTest, WhatIsThereAlreadyIsSaidAndNothingChanges) {
  const std::vector<QUuid> ids = several(2);
  openSheet(ids);
  EXPECT_TRUE(drop(*items({ids[1]})));
  EXPECT_EQ(places().count(), 2);
  EXPECT_EQ(lastToast(), u"This item is on the contact sheet already"_s);
}

TEST_F(SheetDropTest, ACardOfTheListTakesItemsToo) {
  const std::vector<QUuid> ids = several(4);
  openSheet({ids[0], ids[1]});
  desk.state.setMode({ModeKind::contactSheets});
  test::runPosted();
  auto* cards = the<SheetCards>();
  ASSERT_EQ(cards->rowCount(), 1);
  const auto data = items({ids[2], ids[3], ids[0]});
  const QPoint card = cards->cellRect(0).center();
  const auto dropAt = [&](QPoint point) {
    // What is dragged comes in beside the cards, as from the tab above them.
    QDragEnterEvent enter(QPoint(3, 2), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(cards->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent move(point, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(cards->viewport(), &move);
    if (!move.isAccepted()) {
      QDragLeaveEvent left;
      QCoreApplication::sendEvent(cards->viewport(), &left);
      return false;
    }
    QDropEvent dropped(point, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(cards->viewport(), &dropped);
    test::runPosted();
    return true;
  };
  EXPECT_FALSE(dropAt(cards->viewport()->rect().bottomRight() - QPoint(4, 4))) << "beside the cards";
  EXPECT_TRUE(dropAt(card));
  EXPECT_EQ(lastToast(), u"2 items added to the contact sheet"_s);
  EXPECT_EQ(sheetAssetIDs(desk.store, *desk.comparison.sheets().recordOf(cards->rowId(0))).size(), 4u);
  EXPECT_TRUE(dropAt(card));
  EXPECT_EQ(lastToast(), u"These items are on the contact sheet already"_s);
}

TEST_F(SheetDropTest, ItemsThatRestOverATabOpenIt) {
  const std::vector<QUuid> ids = several(2);
  desk.state.setLocation(inboxLocation);
  test::runPosted();
  auto* tabs = window->library().toolbar().findChild<SegmentedControl*>();
  ASSERT_NE(tabs, nullptr);
  auto* sheets = named<QAbstractButton>(*tabs, u"Contact Sheets"_s);
  ASSERT_NE(sheets, nullptr);
  const auto data = items(ids);
  QDragEnterEvent enter(sheets->geometry().center(), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(tabs, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDragMoveEvent move(sheets->geometry().center(), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(tabs, &move);
  EXPECT_FALSE(move.isAccepted()) << "nothing is dropped on a tab";
  EXPECT_TRUE(QTest::qWaitFor([this] { return window->library().page() == ModeKind::contactSheets; }, 5'000));
}

TEST_F(SheetDropTest, WordsAreNotTaken) {
  openSheet(several(2));
  QMimeData words;
  words.setText(u"a boat"_s);
  EXPECT_FALSE(drop(words));
}

}  // namespace
}  // namespace sorvan::views
