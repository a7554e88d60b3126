#include <QAccessible>
#include <QHeaderView>

#include "shell/cost_texts.h"
#include "shell/views/controls.h"
#include "shell/views/cost_chart.h"
#include "shell/views/cost_report_page.h"
#include "shell/views/cost_table.h"
#include "shell/views/empty_note.h"
#include "shell/views/segmented_control.h"
#include "views/access_walk.h"
#include "views/text_contrast.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class CostReportPageTest : public WholeWindow {
 protected:
  void make(const QString& prompt, double usd) {
    core::GenerationCost cost;
    cost.perImageUSD = usd;
    cost.basis = u"listedPrice"_s;
    desk.provider->cost = cost;
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(std::chrono::seconds(1));
  }
  void open() {
    sidebar.choose(u"costs"_s);
    test::runUntil([this] { return !costs.isWorking(); });
    test::runPosted();
  }
  CostReportPage& page() { return *window->findChild<CostReportPage*>(); }
  CostTable& table() { return *page().table(); }
  CostChartView& chart() { return *page().chart(); }
};

TEST_F(CostReportPageTest, StandsInTheSidebarAndInTheMenu) {
  bool listed = false;
  for (const SidebarRow& row : sidebar.display().rows) listed = listed || row.title == u"Cost Report"_s;
  EXPECT_TRUE(listed);
  actions->trigger(ActionId::showCosts);
  EXPECT_EQ(window->library().page(), ModeKind::costs);
  EXPECT_FALSE(window->library().inspector().isVisible()) << "the report takes the whole width";
  actions->trigger(ActionId::showGallery);
  EXPECT_TRUE(window->library().inspector().isVisible());
}

TEST_F(CostReportPageTest, SaysWhenNothingWasSpent) {
  open();
  auto* note = shown<EmptyNote>();
  ASSERT_NE(note, nullptr);
  EXPECT_NE(named<QWidget>(*note, u"Nothing spent in this period"_s), nullptr);
  EXPECT_FALSE(named<Button>(*window, shell::texts::costExport)->isEnabled());
}

TEST_F(CostReportPageTest, ShowsTheChargesAndOpensTheItemOfOne) {
  make(u"a lighthouse"_s, 0.25);
  make(u"a harbour"_s, 0.5);
  open();
  ASSERT_EQ(table().model()->rowCount(), 2);
  EXPECT_EQ(table().model()->index(0, 1).data().toString(), u"a harbour"_s);
  table().setFocus(Qt::TabFocusReason);
  QTest::keyClick(&table(), Qt::Key_Down);
  EXPECT_EQ(table().currentIndex().row(), 1);
  QTest::keyClick(&table(), Qt::Key_Return);
  test::runPosted();
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
  test::runPosted();
  EXPECT_EQ(window->library().page(), ModeKind::costs);
}

TEST_F(CostReportPageTest, ArrowsWalkTheColumnsOfTheChartAndAssistiveTechnologyReadsThem) {
  make(u"a lighthouse"_s, 0.25);
  open();
  chart().setFocus(Qt::TabFocusReason);
  QTest::keyClick(&chart(), Qt::Key_Home);
  EXPECT_EQ(chart().shownColumn(), 0);
  QTest::keyClick(&chart(), Qt::Key_Right);
  EXPECT_EQ(chart().shownColumn(), 1);
  QAccessibleInterface* described = QAccessible::queryAccessibleInterface(&chart());
  EXPECT_EQ(described->role(), QAccessible::Chart);
  EXPECT_TRUE(described->text(QAccessible::Description).startsWith(u"Total $0.25"_s));
  ASSERT_EQ(described->childCount(), static_cast<int>(chart().chart().columns.size()));
  const int day = desk.clock->now().toDateTime().toLocalTime().date().day();
  EXPECT_TRUE(described->child(day - 1)->text(QAccessible::Name).endsWith(u"Images $0.25"_s));
  QTest::mouseMove(&chart(), chart().columnRect(day - 1).center());
  EXPECT_EQ(chart().columnAt(chart().columnRect(day - 1).center()), day - 1);
}

TEST_F(CostReportPageTest, TheChartStandsAsATableToo) {
  make(u"a lighthouse"_s, 0.25);
  open();
  auto* asTable = named<Button>(*window, shell::texts::costShowTable);
  ASSERT_NE(asTable, nullptr);
  QTest::mouseClick(asTable, Qt::LeftButton);
  auto* values = named<CostTable>(*window, shell::texts::costSpending);
  ASSERT_NE(values, nullptr);
  ASSERT_TRUE(values->isVisible());
  ASSERT_EQ(values->model()->rowCount(), 1);
  EXPECT_EQ(values->model()->headerData(1, Qt::Horizontal).toString(), u"Images"_s);
  EXPECT_EQ(values->model()->index(0, 2).data().toString(), u"$0.25"_s);
}

TEST_F(CostReportPageTest, APeriodActsAtOnce) {
  make(u"a lighthouse"_s, 0.25);
  open();
  Q_EMIT page().periods()->chosen(1);
  test::runUntil([this] { return !costs.isWorking(); });
  EXPECT_EQ(costs.pageState(), CostPageState::empty);
  auto* all = named<Button>(*window, shell::texts::costShowAll);
  ASSERT_NE(all, nullptr);
  ASSERT_TRUE(all->isVisible());
  QTest::mouseClick(all, Qt::LeftButton);
  test::runUntil([this] { return !costs.isWorking(); });
  EXPECT_EQ(page().periods()->current(), 3);
  EXPECT_EQ(table().model()->rowCount(), 1);
}

TEST_F(CostReportPageTest, IsThereForPeopleWithoutAMouseOrWithoutSight) {
  make(u"a lighthouse"_s, 0.25);
  open();
  EXPECT_EQ(test::namelessElements(*window).join(u'\n').toStdString(), "");
  for (const Appearance look : {Appearance::light, Appearance::dark}) {
    Theme::instance().setAppearance(look);
    QCoreApplication::processEvents();
    EXPECT_EQ(test::faintTexts(*window).toStdString(), "");
  }
  EXPECT_EQ(test::keyboardFaults(*window).join(u'\n').toStdString(), "");
}

TEST_F(CostReportPageTest, ASelectedRowCanBeRead) {
  make(u"a lighthouse"_s, 0.25);
  open();
  table().setFocus(Qt::TabFocusReason);
  table().selectRow(0);
  for (const Appearance look : {Appearance::light, Appearance::dark}) {
    Theme::instance().setAppearance(look);
    QCoreApplication::processEvents();
    EXPECT_EQ(test::faintTexts(table()).toStdString(), "");
  }
}

TEST_F(CostReportPageTest, ANarrowTableLeavesOutWhatHasNoRoom) {
  CostTable narrow(u"Charges"_s, chargeColumns());
  ChargeModel model(costs);
  narrow.setModel(&model);
  show(narrow, {480, 300});
  EXPECT_TRUE(narrow.isColumnHidden(2));
  EXPECT_TRUE(narrow.isColumnHidden(3));
  narrow.resize(900, 300);
  QCoreApplication::processEvents();
  EXPECT_FALSE(narrow.isColumnHidden(3));
}

}  // namespace
}  // namespace sorvan::views
