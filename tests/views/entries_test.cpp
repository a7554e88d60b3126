// Every entry that a person can see leads somewhere.
#include <QAccessible>
#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QScreen>
#include <QSignalSpy>

#include "shell/views/controls.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class EntriesTest : public WholeWindow {
 protected:
  // What leaves the window, or asks the desktop for a folder, is tested where that is.
  static bool isLeftOut(ActionId id) { return id == ActionId::quit || id == ActionId::openAnotherWorkspace; }

  void makeItem(const QString& words) {
    type(words);
    desk.settle();
    test::runPosted();
  }
  void closeWhatOpened() {
    for (QDialog* dialog : window->findChildren<QDialog*>())
      if (dialog->isVisible()) dialog->close();
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    while (desk.alerts.current()) desk.alerts.answer(desk.alerts.current()->id, 0);
    // The field is called “Command” while commands are typed.
    if (desk.composer.display().command) desk.composer.setCommandMode(false);
    test::runPosted();
  }
  // Asks for everything that is offered while `prepare` holds, and counts what was.
  int performAll(const std::function<void()>& prepare) {
    int performed = 0;
    for (const ActionRow& row : actionTable()) {
      prepare();
      if (isLeftOut(row.id) || !actions->isEnabled(row.id)) continue;
      actions->trigger(row.id);
      ++performed;
      closeWhatOpened();
    }
    return performed;
  }
};

TEST_F(EntriesTest, NoRowOfAMenuIsWithoutWhatItLeadsTo) {
  QSignalSpy unhandled(window.get(), &MainWindow::actionUnhandled);
  makeItem(u"a boat"_s);
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
  makeItem(u"a storm"_s);
  desk.provider->failure = nullptr;
  const QUuid job = desk.newestJob()->id;
  int performed = performAll([this] {
    desk.state.setLocation(allMediaLocation);
    desk.state.select({desk.store.assets().front()->id});
  });
  performed += performAll([this, job] {
    desk.state.setMode({ModeKind::activity});
    desk.state.select({job});
  });
  performed += performAll([this] {
    desk.state.setMode({ModeKind::gallery});
    window->library().dock().focusPrompt();
  });
  EXPECT_GT(performed, 60);
  for (const QList<QVariant>& call : unhandled) ADD_FAILURE() << qPrintable(actionRow(call[0].value<ActionId>()).title);
}

TEST_F(EntriesTest, EveryRowOfTheSidebarLeadsToAPage) {
  sidebar.createProject(u"Harbour"_s);
  for (const SidebarRow& row : sidebar.display().rows) {
    desk.state.setLocation(inboxLocation);
    QSignalSpy health(&sidebar, &SidebarPresenter::healthRequested);
    sidebar.choose(row.key);
    const bool here = desk.state.location() == row.key || desk.state.mode().kind != ModeKind::gallery;
    EXPECT_TRUE(here || health.count() == 1) << qPrintable(row.title);
    EXPECT_EQ(window->library().page(), desk.state.mode().kind) << qPrintable(row.title);
    closeWhatOpened();
  }
}

TEST_F(EntriesTest, EveryTabLeadsToAPageOfItsOwn) {
  sidebar.createProject(u"Harbour"_s);
  for (const ModeKind tab : windowPresenter.modesHere()) {
    desk.state.setMode({tab});
    EXPECT_EQ(window->library().page(), tab) << qPrintable(titleOf(tab));
  }
}

TEST_F(EntriesTest, AModeWithoutAPageIsInNoMenu) {
  desk.state.setAvailable({ModeKind::gallery, ModeKind::activity, ModeKind::asset});
  for (const QAction* action : window->findChildren<QAction*>()) {
    if (action->text() != u"Contact Sheets"_s && action->text() != u"References"_s) continue;
    EXPECT_FALSE(action->isVisible()) << qPrintable(action->text());
    EXPECT_FALSE(action->isEnabled()) << qPrintable(action->text());
  }
}

TEST_F(EntriesTest, TheWindowReturnsToItsPlaceWithItsPanels) {
  window->library().setPaneWidths(290, 400);
  window->resize(1300, 800);
  window->hide();
  window = std::make_unique<MainWindow>(presenters());
  const auto place = windowPresenter.rememberedPlace();
  ASSERT_TRUE(place);
  EXPECT_EQ(QSize(place->width, place->height), QSize(1300, 800));
  // As large as the screen of the test lets it be.
  const QSize room = window->screen()->availableSize() - QSize(0, 28);
  EXPECT_EQ(window->size(), QSize(1300, 800).boundedTo(room).expandedTo(window->minimumSize()));
  EXPECT_EQ(window->library().sidebarWidth(), 290);
  EXPECT_EQ(window->library().inspectorWidth(), 400);
}

TEST_F(EntriesTest, APanelIsMadeWiderByItsEdgeWithinItsBounds) {
  LibraryView& library = window->library();
  QSignalSpy changed(&library, &LibraryView::paneWidthsChanged);
  const auto edges = library.findChildren<PaneHandle*>();
  ASSERT_EQ(edges.size(), 2);
  const int before = library.sidebarWidth();
  QTest::mousePress(edges[0], Qt::LeftButton);
  QTest::mouseMove(edges[0], edges[0]->rect().center() + QPoint(30, 0));
  QTest::mouseRelease(edges[0], Qt::LeftButton);
  EXPECT_GT(library.sidebarWidth(), before);
  EXPECT_EQ(changed.count(), 1);
  library.setPaneWidths(5000, 1);
  EXPECT_EQ(library.sidebarWidth(), 320);
  EXPECT_EQ(library.inspectorWidth(), 280);
}

TEST_F(EntriesTest, TheEdgeOfAPanelIsMovedByKeysToldAndRemembered) {
  LibraryView& library = window->library();
  QSignalSpy changed(&library, &LibraryView::paneWidthsChanged);
  auto* sidebarEdge = named<PaneHandle>(library, u"Sidebar Width"_s);
  auto* inspectorEdge = named<PaneHandle>(library, u"Inspector Width"_s);
  ASSERT_TRUE(sidebarEdge && inspectorEdge);
  const int sidebarBefore = library.sidebarWidth();
  const int inspectorBefore = library.inspectorWidth();
  QTest::keyClick(sidebarEdge, Qt::Key_Right);
  QTest::keyClick(inspectorEdge, Qt::Key_Left);
  EXPECT_EQ(library.sidebarWidth(), sidebarBefore + 16);
  EXPECT_EQ(library.inspectorWidth(), inspectorBefore + 16);
  EXPECT_EQ(changed.count(), 2);
  QAccessibleInterface* told = QAccessible::queryAccessibleInterface(inspectorEdge);
  EXPECT_EQ(told->role(), QAccessible::Slider);
  ASSERT_NE(told->valueInterface(), nullptr);
  EXPECT_EQ(told->valueInterface()->currentValue().toInt(), inspectorBefore + 16);
  told->valueInterface()->setCurrentValue(5000);
  EXPECT_EQ(library.inspectorWidth(), 440);
  QTest::keyClick(sidebarEdge, Qt::Key_Home);
  EXPECT_EQ(library.sidebarWidth(), 184);
  EXPECT_EQ(windowPresenter.rememberedPlace()->sidebarWidth, 184);
  EXPECT_EQ(windowPresenter.rememberedPlace()->inspectorWidth, 440);
  QTest::keyClick(sidebarEdge, Qt::Key_Return);
  EXPECT_EQ(library.sidebarWidth(), sidebarBefore);
}

TEST_F(EntriesTest, ResultsOfASearchStandInTheWallUnderTheirOwnTitle) {
  makeItem(u"a boat"_s);
  makeItem(u"a tower"_s);
  desk.state.setLocation(inboxLocation);
  desk.composer.setCommandMode(true);
  desk.composer.editDraft(u"find tower images"_s);
  desk.composer.submit();
  test::runPosted();
  LibraryView& library = window->library();
  EXPECT_EQ(library.page(), ModeKind::searchResults);
  EXPECT_TRUE(wall().isVisible());
  EXPECT_TRUE(library.dock().isVisible());
  EXPECT_EQ(wall().rowCount(), 1);
  EXPECT_EQ(windowPresenter.accessibleName(), u"Search Results, All Media"_s);
  EXPECT_EQ(desk.gallery.title(), u"Search Results"_s);
  desk.state.select({wall().rowId(0)});
  EXPECT_TRUE(actions->isEnabled(ActionId::quickLook));
  actions->trigger(ActionId::rateFour);
  EXPECT_EQ(desk.store.asset(wall().rowId(0))->rating, 4);
  desk.gallery.clearFilters();
  EXPECT_EQ(library.page(), ModeKind::gallery);
  EXPECT_EQ(wall().rowCount(), 2);
}

// Tiles and buttons of the inspector, for each kind of thing that can be selected.
TEST_F(EntriesTest, EveryButtonOfTheInspectorLeadsSomewhere) {
  makeItem(u"a boat"_s);
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
  makeItem(u"a storm"_s);
  const QUuid item = desk.store.assets().front()->id;
  const QUuid job = desk.newestJob()->id;
  QSignalSpy unhandled(window.get(), &MainWindow::actionUnhandled);
  int asked = 0;
  for (const QUuid& subject : {item, job}) {
    desk.state.setLocation(allMediaLocation);
    desk.state.select({subject});
    const InspectorDisplay shown = desk.inspector.display();
    std::vector<InspectorButton> buttons = shown.buttons;
    for (const InspectorSection& section : shown.sections)
      buttons.insert(buttons.end(), section.headActions.begin(), section.headActions.end());
    for (const InspectorButton& button : buttons) {
      desk.state.setLocation(allMediaLocation);
      desk.state.select({subject});
      EXPECT_TRUE(actions->isEnabled(button.action)) << qPrintable(button.title);
      if (desk.store.job(subject) && button.action == ActionId::retryJob) continue;  // it would be another job then
      actions->trigger(button.action);
      ++asked;
      closeWhatOpened();
    }
  }
  EXPECT_GT(asked, 8);
  for (const QList<QVariant>& call : unhandled) ADD_FAILURE() << qPrintable(actionRow(call[0].value<ActionId>()).title);
}

TEST_F(EntriesTest, TheTileWithTheRestOpensTheMenuOfTheSelection) {
  makeItem(u"a boat"_s);
  desk.state.select({desk.store.assets().front()->id});
  test::runPosted();
  auto* more = named<TileButton>(window->library().inspector(), u"More"_s);
  ASSERT_NE(more, nullptr);
  QTest::mouseClick(more, Qt::LeftButton);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_GT(menu->actions().size(), 5);
  menu->close();
}

// Each page of the window in front, with what it shows selected: no row, key or button asks for what nobody does.
TEST_F(EntriesTest, NoActionIsOfferedOnAnyPageWithoutWhatItLeadsTo) {
  makeItem(u"a boat"_s);
  const QUuid item = desk.store.assets().front()->id;
  const QUuid job = desk.newestJob()->id;
  QSignalSpy unhandled(window.get(), &MainWindow::actionUnhandled);
  for (const ModeKind kind : window->library().pageKinds()) {
    SCOPED_TRACE(titleOf(kind).toStdString());
    const int performed = performAll([&] {
      WorkspaceMode mode{kind, kind == ModeKind::generation ? job : item};
      if (kind == ModeKind::contactSheet) mode.sheet = PassingSelection{{item}};
      desk.state.setMode(mode);
      if (desk.store.asset(item)->isTrashed()) actions->trigger(ActionId::undo);
      desk.state.select({kind == ModeKind::activity ? job : item});
    });
    EXPECT_GT(performed, 15);
  }
  for (const QList<QVariant>& call : unhandled) ADD_FAILURE() << qPrintable(actionRow(call[0].value<ActionId>()).title);
}

}  // namespace
}  // namespace sorvan::views
