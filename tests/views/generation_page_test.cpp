#include "shell/views/generation_page.h"

#include "shell/views/controls.h"
#include "shell/views/inspector_view.h"
#include "shell/views/quick_look.h"
#include "shell/views/results_source.h"
#include "shell/views/viewer_desk.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class GenerationPageTest : public WholeWindow {
 protected:
  QUuid failed() {
    desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
    type(u"a boat"_s);
    desk.settle();
    desk.provider->failure = nullptr;
    test::runPosted();
    return desk.newestJob()->id;
  }
  GenerationView& page() { return *window->findChild<GenerationView*>(); }
  Button* pageButton(const QString& name) {
    for (Button* button : page().request().findChildren<Button*>())
      if (button->isVisible() && button->text() == name) return button;
    return nullptr;
  }
};

TEST_F(GenerationPageTest, EnterOnTheCellOfAJobOpensItAndEscapeLeadsBack) {
  const QUuid job = failed();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).topLeft() + QPoint(24, 24));
  QTest::keyClick(&wall(), Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::generation);
  EXPECT_EQ(desk.state.mode().subject, job);
  EXPECT_TRUE(windowPresenter.accessibleName().startsWith(u"Generation, "_s));
  EXPECT_EQ(QApplication::focusWidget(), &page().wall());
  QTest::keyClick(&page().wall(), Qt::Key_Escape);  // puts the selection away
  QTest::keyClick(&page().wall(), Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
  EXPECT_TRUE(desk.state.selection().contains(job));
}

TEST_F(GenerationPageTest, ADoubleClickInTheHistoryOpensTheJob) {
  const QUuid job = failed();
  actions->trigger(ActionId::showHistory);
  test::runPosted();
  HistoryList& list = window->library().history().list();
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.cellRect(0).topLeft() + QPoint(120, 20));
  EXPECT_EQ(window->library().page(), ModeKind::generation);
  EXPECT_EQ(desk.state.mode().subject, job);
  desk.state.goBack();
  EXPECT_EQ(window->library().page(), ModeKind::activity);
}

TEST_F(GenerationPageTest, TheJobIsTheWallUntilItHasResults) {
  const QUuid job = failed();
  desk.state.openGeneration(job, 0);
  test::runPosted();
  ASSERT_EQ(page().wall().rowCount(), 1);
  EXPECT_EQ(page().wall().rowId(0), job);
  EXPECT_TRUE(page().wall().rowName(0).contains(u"Planted."_s));
  ASSERT_NE(pageButton(u"Retry"_s), nullptr);
  QTest::mouseClick(pageButton(u"Retry"_s), Qt::LeftButton);
  test::runPosted();
  desk.settle();
  ASSERT_EQ(page().wall().rowCount(), 1);
  EXPECT_EQ(page().wall().rowId(0), desk.store.assets().front()->id);
  EXPECT_EQ(pageButton(u"Retry"_s), nullptr);
}

TEST_F(GenerationPageTest, ItsButtonsActOnItsJobWhateverIsSelected) {
  const QUuid job = failed();
  desk.state.openGeneration(job, 0);
  desk.state.select({});
  test::runPosted();
  QTest::mouseClick(pageButton(u"Copy Details"_s), Qt::LeftButton);
  EXPECT_TRUE(desk.copied.contains(u"Planted."_s));
  QTest::mouseClick(pageButton(u"Reuse Prompt"_s), Qt::LeftButton);
  EXPECT_EQ(desk.composer.draft(), u"a boat"_s);
}

TEST_F(GenerationPageTest, AResultOpensLargeAndBackReturnsToTheGeneration) {
  type(u"a boat"_s);
  desk.settle();
  const QUuid item = desk.store.assets().front()->id;
  desk.state.openGeneration(desk.newestJob()->id, 0);
  test::runPosted();
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{item}) << "the output that was asked for is selected";
  QTest::keyClick(&page().wall(), Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_EQ(desk.state.assetSequence(), std::vector<QUuid>{item});
  desk.state.goBack();
  EXPECT_EQ(window->library().page(), ModeKind::generation);
}

TEST_F(GenerationPageTest, SpaceLooksAtAResult) {
  type(u"a boat"_s);
  desk.settle();
  desk.state.openGeneration(desk.newestJob()->id, 0);
  test::runPosted();
  QTest::keyClick(&page().wall(), Qt::Key_Space);
  QuickLook& look = window->viewer().quickLook();
  ASSERT_TRUE(look.isOpen());
  EXPECT_EQ(look.current(), desk.store.assets().front()->id);
  look.close();
  EXPECT_EQ(window->library().page(), ModeKind::generation);
}

TEST_F(GenerationPageTest, TheInspectorOfAJobAndTheMenuLeadToItsPage) {
  const QUuid job = failed();
  desk.state.select({job});
  EXPECT_TRUE(actions->isEnabled(ActionId::openItem));
  actions->trigger(ActionId::openItem);
  EXPECT_EQ(window->library().page(), ModeKind::generation);
  desk.state.goBack();
  test::runPosted();
  auto* open = named<Button>(window->library().inspector(), u"Open Generation"_s);
  ASSERT_NE(open, nullptr);
  QTest::mouseClick(open, Qt::LeftButton);
  EXPECT_EQ(window->library().page(), ModeKind::generation);
}

TEST_F(GenerationPageTest, ResultsThatWentToTrashLeaveAWordInTheirPlace) {
  type(u"a boat"_s);
  desk.settle();
  desk.state.openGeneration(desk.newestJob()->id, 0);
  test::runPosted();
  actions->trigger(ActionId::moveToTrash);
  test::runPosted();
  desk.settle();
  EXPECT_EQ(page().wall().rowCount(), 0);
  EXPECT_EQ(page().source().emptyTitle(), u"No results here"_s);
  EXPECT_EQ(window->library().page(), ModeKind::generation);
}

}  // namespace
}  // namespace sorvan::views
