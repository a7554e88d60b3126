// Every entry that a person can see leads somewhere.
#include <QAction>
#include <QDialog>
#include <QScreen>
#include <QSignalSpy>

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

}  // namespace
}  // namespace sorvan::views
