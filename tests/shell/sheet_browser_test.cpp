#include "shell/sheet_browser_presenter.h"

#include <gtest/gtest.h>

#include "desk.h"
#include "shell/contact_sheets.h"
#include "shell/sheet_texts.h"

namespace sorvan::shell {
namespace {

struct SheetBrowserTest : testing::Test {
  test::Desk desk;
  SheetBrowserPresenter browser{{desk.store, desk.state, desk.displays, desk.alerts}};

  QUuid made(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    return desk.store.generationsOf(desk.newestJob()->id).front()->assetID;
  }
  QUuid sheet(int items) {
    std::vector<QUuid> ids;
    for (int number = 0; number < items; ++number) ids.push_back(made(QStringLiteral("a boat")));
    const QUuid id = browser.create(ids);
    test::runPosted();
    return id;
  }
};

TEST_F(SheetBrowserTest, ACardShowsTitleItemsAndPictures) {
  EXPECT_EQ(browser.emptyTitle(), QStringLiteral("No contact sheets here yet"));
  const QUuid id = sheet(5);
  ASSERT_EQ(browser.count(), 1);
  const SheetCard card = browser.cardAt(0);
  EXPECT_EQ(card.id, id);
  EXPECT_EQ(card.title, QStringLiteral("a boat"));
  EXPECT_TRUE(card.factsText.startsWith(QStringLiteral("5 items"))) << card.factsText.toStdString();
  EXPECT_EQ(card.thumbnails.size(), 4u);
  EXPECT_EQ(browser.countText(), QStringLiteral("1 contact sheet"));
}

TEST_F(SheetBrowserTest, TooFewItemsMakeNoSheetAndSaySo) {
  EXPECT_TRUE(browser.create({made(QStringLiteral("alone"))}).isNull());
  ASSERT_TRUE(desk.alerts.current().has_value());
  EXPECT_EQ(desk.alerts.current()->text, QStringLiteral("Select 2–8 assets to compare."));
}

TEST_F(SheetBrowserTest, AQueryNarrowsTheListByTitleAndModel) {
  const QUuid id = sheet(2);
  browser.rename(id, QStringLiteral("Harbour"));
  test::runPosted();
  browser.setQuery(QStringLiteral("HARB"));
  EXPECT_EQ(browser.count(), 1);
  const core::GenerationRef any = desk.store.generations().front();
  browser.setQuery(desk.displays.modelName(any->model).toUpper());
  EXPECT_EQ(browser.count(), 1);
  browser.setQuery(QStringLiteral("mountain"));
  EXPECT_EQ(browser.count(), 0);
  EXPECT_EQ(browser.emptyTitle(), texts::noSheetMatches);
}

TEST_F(SheetBrowserTest, ASheetGoesToTrashAndComesBack) {
  const QUuid id = sheet(2);
  browser.moveToTrash(id);
  test::runPosted();
  EXPECT_EQ(browser.count(), 0);
  desk.state.setLocation(trashLocation);
  ASSERT_EQ(browser.count(), 1);
  EXPECT_EQ(browser.idAt(0), id);
  browser.restore(id);
  test::runPosted();
  EXPECT_EQ(browser.count(), 0);
  EXPECT_EQ(browser.emptyTitle(), QStringLiteral("No contact sheets in Trash"));
  desk.state.setLocation(allMediaLocation);
  EXPECT_EQ(browser.indexOf(id), 0);
}

}  // namespace
}  // namespace sorvan::shell
