#include "shell/views/sidebar_view.h"

#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>

#include "shell/item_transfer.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "views/dressed.h"
#include "views/samples.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class SidebarViewTest : public Dressed {
 protected:
  SidebarViewTest() {
    SidebarDisplay display = sampleSidebar();
    display.addTitle = u"New Project…"_s;
    for (SidebarRow& row : display.rows)
      if (row.section == SidebarSection::projects) row.kind = SidebarRowKind::project, row.takesItems = true;
    sidebar.show(display);
    Dressed::show(sidebar, {232, 700});
  }
  SidebarRowButton* row(const QString& name) { return named<SidebarRowButton>(sidebar, name); }
  TextField* field() { return sidebar.findChild<TextField*>(); }

  ThumbnailStore thumbnails;
  SidebarView sidebar{thumbnails};
};

TEST_F(SidebarViewTest, AProjectIsRenamedInItsRowByKeys) {
  QSignalSpy renamed(&sidebar, &SidebarView::renamed);
  row(u"Harbour Film"_s)->setFocus();
  QTest::keyClick(row(u"Harbour Film"_s), Qt::Key_F2);
  ASSERT_NE(field(), nullptr);
  EXPECT_EQ(field()->selectedText(), u"Harbour Film"_s);
  QTest::keyClicks(field(), u"Sea"_s);
  QTest::keyClick(field(), Qt::Key_Return);
  ASSERT_EQ(renamed.count(), 1);
  EXPECT_EQ(renamed[0][0].toString(), u"p2"_s);
  EXPECT_EQ(renamed[0][1].toString(), u"Sea"_s);
  EXPECT_EQ(QApplication::focusWidget(), row(u"Harbour Film"_s));
}

TEST_F(SidebarViewTest, EscapeLeavesTheOldName) {
  QSignalSpy renamed(&sidebar, &SidebarView::renamed);
  QTest::mouseDClick(row(u"Harbour Film"_s), Qt::LeftButton);
  ASSERT_NE(field(), nullptr);
  QTest::keyClicks(field(), u"Sea"_s);
  QTest::keyClick(field(), Qt::Key_Escape);
  EXPECT_EQ(renamed.count(), 0);
}

TEST_F(SidebarViewTest, APlaceThatIsNoProjectCannotBeRenamed) {
  QTest::keyClick(row(u"Inbox"_s), Qt::Key_F2);
  EXPECT_EQ(field(), nullptr);
}

TEST_F(SidebarViewTest, TheNarrowListLetsTheWindowAskForTheName) {
  QSignalSpy asked(&sidebar, &SidebarView::renameAsked);
  sidebar.setNarrow(true);
  QTest::keyClick(row(u"Harbour Film"_s), Qt::Key_F2);
  EXPECT_EQ(asked.count(), 1);
  EXPECT_EQ(field(), nullptr);
}

TEST_F(SidebarViewTest, ARowThatGoesLeavesTheKeyboardToThePlaceThatIsOpen) {
  row(u"Harbour Film"_s)->setFocus();
  SidebarDisplay display = sampleSidebar();
  std::erase_if(display.rows, [](const SidebarRow& each) { return each.title == u"Harbour Film"_s; });
  for (SidebarRow& each : display.rows) each.current = each.title == u"Inbox"_s;
  sidebar.show(display);
  const auto* focused = qobject_cast<SidebarRowButton*>(QApplication::focusWidget());
  ASSERT_TRUE(focused);
  EXPECT_EQ(focused->row().title, u"Inbox"_s);
}

TEST_F(SidebarViewTest, TheHeadingOfTheProjectsAddsOne) {
  QSignalSpy pressed(&sidebar, &SidebarView::newProjectPressed);
  QTest::mouseClick(named<IconButton>(sidebar, u"New Project…"_s), Qt::LeftButton);
  EXPECT_EQ(pressed.count(), 1);
}

TEST_F(SidebarViewTest, ItemsAreDroppedOnAProjectAsACopyWhateverWasAskedFor) {
  QSignalSpy dropped(&sidebar, &SidebarView::dropped);
  const std::vector<QUuid> items{QUuid::createUuid(), QUuid::createUuid()};
  const auto held = transferOf({{items[0], u"/tmp/a.png"_s, true}, {items[1], u"/tmp/b.png"_s, true}});
  QMimeData& data = *held;
  SidebarRowButton* target = row(u"Harbour Film"_s);
  QDragEnterEvent enter({5, 5}, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &enter);
  ASSERT_TRUE(enter.isAccepted());
  QDropEvent drop({5, 5}, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &drop);
  EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
  ASSERT_EQ(dropped.count(), 1);
  EXPECT_EQ(dropped[0][0].value<std::vector<QUuid>>(), items);
  EXPECT_EQ(dropped[0][1].toString(), u"p2"_s);
}

TEST_F(SidebarViewTest, WhatIsNoItemOfTheLibraryIsNotTaken) {
  QMimeData data;
  data.setUrls({QUrl(u"file:///tmp/a.png"_s)});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(row(u"Harbour Film"_s), &enter);
  EXPECT_FALSE(enter.isAccepted());
}

}  // namespace
}  // namespace sorvan::views
