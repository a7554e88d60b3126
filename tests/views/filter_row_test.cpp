#include "shell/views/filter_row.h"

#include <QMenu>

#include "shell/desk.h"
#include "shell/views/controls.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class FilterRowTest : public Dressed {
 protected:
  FilterRowTest() {
    show(ground, {1600, 200});
    row.show();
  }
  void widen(int width) {
    row.setGeometry(0, 0, width, row.height());
    test::runPosted();
  }
  IconButton& more() { return *named<IconButton>(row, u"More Filters"_s); }
  // The filters that have their chip in the row.
  QStringList inRow() {
    QStringList names;
    for (const Chip* chip : row.findChildren<Chip*>())
      if (chip->isVisible()) names << chip->accessibleName().section(u':', 0, 0);
    return names;
  }
  QMenu* openMenu() {
    QTest::mouseClick(&more(), Qt::LeftButton);
    return row.findChild<QMenu*>({}, Qt::FindDirectChildrenOnly);
  }
  QStringList inMenu() {
    QStringList titles;
    QMenu* menu = openMenu();
    for (const QAction* entry : menu->actions()) titles << entry->text();
    menu->close();
    test::runPosted();
    return titles;
  }

  test::Desk desk;
  QWidget ground;
  FilterRow row{desk.filters, &ground};
};

TEST_F(FilterRowTest, AWideRowShowsEveryFilterAndNoMenu) {
  widen(1500);
  EXPECT_FALSE(more().isVisible());
  EXPECT_EQ(inRow().size(), 6);
}

TEST_F(FilterRowTest, WhatFindsNoRoomInTheRowIsInItsMenu) {
  widen(480);
  ASSERT_TRUE(more().isVisible());
  EXPECT_LE(more().geometry().right(), row.width());
  const QStringList hidden = inMenu();
  EXPECT_TRUE(hidden.contains(u"Date"_s));
  EXPECT_EQ(hidden.size() + inRow().size(), 6) << "each filter is in one place";
}

TEST_F(FilterRowTest, AChoiceOfTheMenuNarrowsAndItsChipComesIntoTheRow) {
  widen(480);
  ASSERT_TRUE(inMenu().contains(u"Rating"_s));
  QMenu* menu = openMenu();
  for (const QAction* entry : menu->actions())
    if (entry->text() == u"Rating"_s) entry->menu()->actions().at(3)->trigger();
  menu->close();
  test::runPosted();
  EXPECT_EQ(desk.state.filter().minimumRating, 3);
  EXPECT_TRUE(inRow().contains(u"Rating"_s));
  EXPECT_FALSE(inMenu().contains(u"Rating"_s));
}

}  // namespace
}  // namespace sorvan::views
