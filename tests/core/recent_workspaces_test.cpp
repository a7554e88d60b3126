#include "core/recent_workspaces.h"

#include <QJsonArray>
#include <QJsonObject>

#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::text;

struct RecentWorkspacesTest : test::LibraryFixture {
  void openNamed(const QString& name) { openWorkspace(store, folder / name, Remember::yes); }
  QString path(const QString& name) const { return QFileInfo(folder / name).canonicalFilePath(); }
  QStringList names(const std::vector<RecentWorkspace>& recents) const {
    QStringList found;
    for (const RecentWorkspace& recent : recents) found += QFileInfo(recent.path).fileName();
    return found;
  }
  QStringList all() const { return names(recentWorkspaces(store)); }
  std::string error() const { return text(store.error().value_or(QString())); }
};

const QString a = QStringLiteral("a"), b = QStringLiteral("b");

TEST_F(RecentWorkspacesTest, AreNoneAtFirst) {
  EXPECT_TRUE(recentWorkspaces(store).empty());
  EXPECT_TRUE(otherRecentWorkspaces(store).empty());
}

TEST_F(RecentWorkspacesTest, HoldEachRememberedFolderOnceTheLatestFirst) {
  openNamed(a);
  openNamed(b);
  openNamed(a);
  EXPECT_EQ(all(), (QStringList{a, b}));
  EXPECT_EQ(recentWorkspaces(store)[0].bookmark, path(a).toUtf8());
}

TEST_F(RecentWorkspacesTest, OpeningTheOpenFolderByAnotherSpellingListsItOnce) {
  openNamed(a);
  openWorkspace(store, folder / QStringLiteral("a/Inbox/.."), Remember::yes);
  EXPECT_EQ(all(), QStringList{a});
}

TEST_F(RecentWorkspacesTest, LeaveOutWhatIsOpenedWithoutBeingRemembered) {
  openWorkspace(store, folder / a, Remember::no);
  EXPECT_TRUE(all().isEmpty());
}

TEST_F(RecentWorkspacesTest, NeverGrowPastEight) {
  for (int number = 0; number < 12; ++number) noteRecent(store, folder / QString::number(number));
  const QStringList expected{QStringLiteral("11"), QStringLiteral("10"), QStringLiteral("9"), QStringLiteral("8"),
                             QStringLiteral("7"),  QStringLiteral("6"),  QStringLiteral("5"), QStringLiteral("4")};
  EXPECT_EQ(all(), expected);
}

TEST_F(RecentWorkspacesTest, TheOthersLeaveOutTheOpenOne) {
  openNamed(a);
  openNamed(b);
  EXPECT_EQ(names(otherRecentWorkspaces(store)), QStringList{a});
  store.close();
  EXPECT_EQ(names(otherRecentWorkspaces(store)), (QStringList{b, a}));
}

TEST_F(RecentWorkspacesTest, AFolderThatCannotBeOpenedIsNotListed) {
  writeSidecar(QStringLiteral("schema-version"), "8");
  EXPECT_THROW(openWorkspace(store, root(), Remember::yes), SorvanError);
  EXPECT_TRUE(all().isEmpty());
}

TEST_F(RecentWorkspacesTest, OneIsOpenedAndMovesToTheFront) {
  openNamed(a);
  openNamed(b);
  openRecent(store, otherRecentWorkspaces(store)[0]);
  EXPECT_EQ(store.workspaceRoot(), path(a));
  EXPECT_EQ(all(), (QStringList{a, b}));
  EXPECT_EQ(error(), "");
}

TEST_F(RecentWorkspacesTest, OneWhoseDriveIsAwayStaysListedAndNothingIsMadeInItsPlace) {
  openNamed(a);
  openNamed(b);
  const RecentWorkspace away = otherRecentWorkspaces(store)[0];
  EXPECT_TRUE(isAvailable(away));
  ASSERT_TRUE(QDir(away.path).removeRecursively());
  for (const bool mountPoint : {false, true}) {
    if (mountPoint) ASSERT_TRUE(QDir().mkdir(away.path));
    EXPECT_FALSE(isAvailable(away));
    openRecent(store, away);
    EXPECT_EQ(error(), "The workspace folder isn’t available.");
    EXPECT_EQ(store.workspaceRoot(), path(b)) << "the open one stays open";
    EXPECT_EQ(names(otherRecentWorkspaces(store)), QStringList{a});
    store.setError({});
  }
  EXPECT_TRUE(QDir(away.path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(RecentWorkspacesTest, OneIsNotOpenedDuringAnImport) {
  openNamed(a);
  openNamed(b);
  store.setImporting(true);
  openRecent(store, otherRecentWorkspaces(store)[0]);
  EXPECT_EQ(error(), "Wait for exports, imports and generation jobs to finish before switching workspaces.");
  EXPECT_EQ(store.workspaceRoot(), path(b));
}

TEST_F(RecentWorkspacesTest, AreClearedAtOnce) {
  openNamed(a);
  openNamed(b);
  clearRecentWorkspaces(store);
  EXPECT_TRUE(recentWorkspaces(store).empty());
  EXPECT_EQ(store.workspaceRoot(), path(b));
}

TEST_F(RecentWorkspacesTest, EntriesThatCannotBeReadCostNoOthers) {
  openNamed(a);
  QJsonArray entries = settings->get<QJsonArray>(QStringLiteral("recentWorkspaces")).value_or(QJsonArray());
  ASSERT_EQ(entries.size(), 1);
  const QJsonValue good = entries[0];
  entries = {
      QStringLiteral("text"),
      QJsonObject(),
      good,
      7,
      good,
      QJsonObject{{QStringLiteral("path"), QStringLiteral("relative")}, {QStringLiteral("bookmark"), QString()}}};
  settings->set(QStringLiteral("recentWorkspaces"), entries);
  EXPECT_EQ(all(), QStringList{a});
  settings->set(QStringLiteral("recentWorkspaces"), QStringLiteral("no list"));
  EXPECT_TRUE(all().isEmpty());
  noteRecent(store, folder / b);
  EXPECT_EQ(all(), QStringList{b});
}

TEST_F(RecentWorkspacesTest, AFailureToWriteThemIsToldAndTheWorkspaceIsOpenAllTheSame) {
  auto onDisk = std::make_shared<Settings>(folder / QStringLiteral("settings.json"));
  settings = onDisk;
  const auto other = makeStore();
  openWorkspace(*other, folder / a, Remember::no);
  {
    test::FailingLayer full(1);
    const FileLayerOverride override(full);
    openWorkspace(*other, folder / a, Remember::yes);
  }
  EXPECT_TRUE(other->hasWorkspace());
  EXPECT_NE(text(other->error().value_or(QString())).find("settings.json could not be written"), std::string::npos);
}

}  // namespace
}  // namespace sorvan::core
