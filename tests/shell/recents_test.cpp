#include <gtest/gtest.h>

#include <QDir>

#include "core/workspace_opening.h"
#include "desk.h"
#include "shell/welcome_presenter.h"

namespace sorvan::shell {
namespace {

struct RecentsTest : testing::Test {
  test::Desk desk;
  WelcomePresenter welcome{desk.store, desk.folder / QStringLiteral("Default")};

  void openNamed(const QString& name) { core::openWorkspace(desk.store, desk.folder / name, core::Remember::yes); }
  QStringList titles() const {
    QStringList found;
    for (const RecentDisplay& recent : welcome.recents()) found += recent.title;
    return found;
  }
};

TEST_F(RecentsTest, ListTheOthersAndOpenTheOneThatWasChosen) {
  EXPECT_TRUE(welcome.recents().empty());
  openNamed(QStringLiteral("Foxes"));
  openNamed(QStringLiteral("Storms"));
  EXPECT_EQ(titles(), QStringList{QStringLiteral("Foxes")});
  const QString foxes = welcome.recents()[0].path;
  welcome.openRecent(foxes);
  EXPECT_EQ(desk.store.workspaceRoot(), foxes);
  EXPECT_EQ(titles(), QStringList{QStringLiteral("Storms")});
}

TEST_F(RecentsTest, TwoOfOneNameAreToldApartByTheirPaths) {
  openNamed(QStringLiteral("one/Foxes"));
  openNamed(QStringLiteral("two/Foxes"));
  openNamed(QStringLiteral("Storms"));
  ASSERT_EQ(titles().size(), 2);
  for (const RecentDisplay& recent : welcome.recents()) EXPECT_TRUE(recent.title.contains(recent.path));
}

TEST_F(RecentsTest, OneWhoseDriveIsAwayIsDimmedAndStays) {
  openNamed(QStringLiteral("Foxes"));
  openNamed(QStringLiteral("Storms"));
  const RecentDisplay there = welcome.recents()[0];
  EXPECT_TRUE(there.available);
  ASSERT_TRUE(QDir(there.path).removeRecursively());
  ASSERT_EQ(welcome.recents().size(), 1u);
  EXPECT_FALSE(welcome.recents()[0].available);
  welcome.openRecent(there.path);
  EXPECT_EQ(desk.store.error(), QStringLiteral("The workspace folder isn’t available."));
}

TEST_F(RecentsTest, AreCleared) {
  openNamed(QStringLiteral("Foxes"));
  openNamed(QStringLiteral("Storms"));
  welcome.clearRecents();
  EXPECT_TRUE(welcome.recents().empty());
}

TEST(Trash, ListsWhatWasPutAwayAndNothingElse) {
  test::Desk desk;
  desk.generate(QStringLiteral("one"));
  desk.settle();
  ASSERT_EQ(desk.store.assets().size(), 1u);
  EXPECT_EQ(desk.gallery.count(), 1);
  desk.state.setLocation(trashLocation);
  EXPECT_EQ(desk.gallery.count(), 0);
  desk.store.context().edit(desk.store.assets()[0]).deletedAt = desk.clock->now();
  desk.store.save(core::LibraryTables::none);
  desk.settle();
  EXPECT_EQ(desk.gallery.count(), 1);
  desk.state.setLocation(allMediaLocation);
  EXPECT_EQ(desk.gallery.count(), 0);
}

}  // namespace
}  // namespace sorvan::shell
