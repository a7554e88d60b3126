#include "shell/sidebar_presenter.h"

#include "base/ids.h"
#include "core/history.h"
#include "core/projects.h"
#include "shell/desk.h"
#include "shell/locations.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace sorvan::shell {
namespace {

struct SidebarTest : testing::Test {
  test::Desk desk;
  SidebarPresenter sidebar{desk.store, desk.state};

  QStringList titles(SidebarSection section) const {
    QStringList titles;
    for (const SidebarRow& row : sidebar.display().rows)
      if (row.section == section) titles << row.title;
    return titles;
  }
  SidebarRow rowOf(const QString& title) const {
    for (const SidebarRow& row : sidebar.display().rows)
      if (row.title == title) return row;
    return {};
  }
  QUuid item() {
    desk.generate(QStringLiteral("a boat"));
    desk.settle();
    return desk.store.assets().front()->id;
  }
  void undo() { core::applyHistory(desk.store, core::HistoryDirection::undo); }
};

TEST_F(SidebarTest, ANewProjectOpensAndUndoLeavesItAgain) {
  sidebar.createProject(QStringLiteral("Harbour Film"));
  EXPECT_EQ(titles(SidebarSection::projects), QStringList{QStringLiteral("Harbour Film")});
  EXPECT_TRUE(rowOf(QStringLiteral("Harbour Film")).current);
  EXPECT_EQ(locationTitle(desk.store, desk.state.location()), QStringLiteral("Harbour Film"));
  undo();
  EXPECT_TRUE(titles(SidebarSection::projects).isEmpty());
  EXPECT_EQ(desk.state.location(), allMediaLocation);
}

TEST_F(SidebarTest, AProjectThatCannotBeMadeIsToldAndOpensNothing) {
  sidebar.createProject(QStringLiteral(" "));
  EXPECT_EQ(desk.store.error(), QStringLiteral("Enter a name first."));
  EXPECT_EQ(desk.state.location(), allMediaLocation);
}

TEST_F(SidebarTest, AnArchivedProjectStandsBehindARowThatOpens) {
  sidebar.createProject(QStringLiteral("Harbour"));
  sidebar.createProject(QStringLiteral("Lake"));
  const QString key = rowOf(QStringLiteral("Lake")).key;
  sidebar.setArchived(key, true);
  EXPECT_EQ(desk.state.location(), allMediaLocation);
  EXPECT_EQ(titles(SidebarSection::projects), (QStringList{QStringLiteral("Harbour"), QStringLiteral("Archived")}));
  sidebar.choose(rowOf(QStringLiteral("Archived")).key);
  EXPECT_EQ(titles(SidebarSection::projects),
            (QStringList{QStringLiteral("Harbour"), QStringLiteral("Archived"), QStringLiteral("Lake")}));
  EXPECT_EQ(rowOf(QStringLiteral("Lake")).kind, SidebarRowKind::archivedProject);
  sidebar.choose(key);
  EXPECT_EQ(desk.state.location(), key);
  sidebar.setArchived(key, false);
  EXPECT_EQ(titles(SidebarSection::projects), (QStringList{QStringLiteral("Harbour"), QStringLiteral("Lake")}));
}

TEST_F(SidebarTest, ItemsDroppedOnAProjectMoveThereAndBackByUndo) {
  const QUuid boat = item();
  sidebar.createProject(QStringLiteral("Harbour"));
  const QString key = rowOf(QStringLiteral("Harbour")).key;
  desk.curation.drop({boat, base::newUuid()}, key);
  EXPECT_EQ(desk.store.asset(boat)->projectID, base::uuidFromText(key));
  EXPECT_EQ(rowOf(QStringLiteral("Harbour")).countText, QStringLiteral("1"));
  EXPECT_EQ(rowOf(QStringLiteral("Inbox")).countText, QString::number(0));
  undo();
  EXPECT_EQ(desk.store.asset(boat)->projectID, std::nullopt);
}

TEST_F(SidebarTest, ItemsDroppedOnFavoritesAreMarkedAndOnTrashGoThere) {
  const QUuid boat = item();
  desk.curation.drop({boat}, favoritesLocation);
  EXPECT_TRUE(desk.store.asset(boat)->favorite);
  desk.curation.drop({boat}, trashLocation);
  EXPECT_TRUE(desk.store.asset(boat)->isTrashed());
  desk.curation.drop({boat}, inboxLocation);
  EXPECT_TRUE(desk.store.asset(boat)->isTrashed());
}

TEST_F(SidebarTest, WorkspaceHealthIsARowAtTheFootThatAsksForItsSheet) {
  QSignalSpy asked(&sidebar, &SidebarPresenter::healthRequested);
  EXPECT_EQ(titles(SidebarSection::foot), (QStringList{QStringLiteral("Trash"), QStringLiteral("Workspace Health")}));
  sidebar.choose(rowOf(QStringLiteral("Workspace Health")).key);
  EXPECT_EQ(asked.count(), 1);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
}

TEST_F(SidebarTest, AViewThatTheWindowDoesNotHaveHasNoRow) {
  desk.state.setAvailable({ModeKind::gallery, ModeKind::activity});
  EXPECT_EQ(titles(SidebarSection::everywhere), QStringList{QStringLiteral("History")});
}

TEST_F(SidebarTest, TheLocationSaysWhichViewsItHas) {
  sidebar.createProject(QStringLiteral("Harbour"));
  EXPECT_EQ(modesAt(desk.store, desk.state.location()).size(), 4u);
  EXPECT_EQ(modesAt(desk.store, recentLocation), std::vector{ModeKind::gallery});
  EXPECT_EQ(modesAt(desk.store, inboxLocation).size(), 3u);
}

}  // namespace
}  // namespace sorvan::shell
