#include "core/projects.h"

#include "core/history.h"
#include "core/small_edits.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

struct ProjectsTest : test::LibraryFixture {
  ProjectsTest() { open(); }
  void undo() { applyHistory(store, HistoryDirection::undo); }
  void redo() { applyHistory(store, HistoryDirection::redo); }
  bool hasFolder(const Project& project) const { return QFileInfo(store.files().absolute(project.rootFolder)).isDir(); }
};

TEST_F(ProjectsTest, AProjectHasItsFolderAndStandsAfterTheNextStart) {
  const ProjectRef project = createProject(store, QStringLiteral("  Harbour Film "));
  EXPECT_EQ(text(project->name), "Harbour Film");
  EXPECT_TRUE(hasFolder(*project));
  reopen();
  ASSERT_EQ(store.projects().size(), 1u);
  EXPECT_EQ(text(store.projects()[0]->name), "Harbour Film");
  EXPECT_FALSE(store.projects()[0]->archived);
}

TEST_F(ProjectsTest, TwoProjectsOfOneNameHaveFoldersOfTheirOwn) {
  const ProjectRef first = createProject(store, QStringLiteral("Sea"));
  const ProjectRef second = createProject(store, QStringLiteral("Sea"));
  EXPECT_NE(first->rootFolder, second->rootFolder);
}

TEST_F(ProjectsTest, UndoTakesTheRecordBackAndKeepsTheFolder) {
  const ProjectRef project = createProject(store, QStringLiteral("Sea"));
  const QUuid id = project->id;
  EXPECT_EQ(text(store.history().next(HistoryDirection::undo)->name), "Create Project");
  undo();
  EXPECT_TRUE(store.projects().empty());
  EXPECT_TRUE(hasFolder(*project));
  redo();
  ASSERT_TRUE(store.project(id));
  EXPECT_EQ(store.project(id)->rootFolder, project->rootFolder);
}

TEST_F(ProjectsTest, ABlankNameIsRefusedBeforeAnythingIsMade) {
  const QStringList before = QDir(root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  EXPECT_EQ(messageOf([&] { createProject(store, QStringLiteral("  \n")); }), "Enter a name first.");
  EXPECT_EQ(QDir(root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), before);
  EXPECT_TRUE(store.projects().empty());
}

TEST_F(ProjectsTest, AFailedSaveLeavesNoProjectAndNoStepToUndo) {
  failWrites("INSERT", "Project");
  EXPECT_NE(messageOf([&] { createProject(store, QStringLiteral("Sea")); }).find("disk is full"), std::string::npos);
  EXPECT_TRUE(store.projects().empty());
  EXPECT_EQ(store.history().next(HistoryDirection::undo), nullptr);
  reopen();
  EXPECT_TRUE(store.projects().empty());
}

TEST_F(ProjectsTest, ANewNameKeepsTheFolderAndTheItemsInIt) {
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  const ProjectRef project = createProject(store, QStringLiteral("Sea"));
  const QString folder = project->rootFolder;
  move(store, {fox}, project->id);
  renameProject(store, project, QStringLiteral("Ocean"));
  EXPECT_EQ(text(project->name), "Ocean");
  EXPECT_EQ(project->rootFolder, folder);
  EXPECT_TRUE(QFileInfo::exists(store.fileOf(*fox)));
  EXPECT_EQ(text(store.history().next(HistoryDirection::undo)->name), "Rename Project");
  undo();
  EXPECT_EQ(text(project->name), "Sea");
}

TEST_F(ProjectsTest, ABlankOrUnchangedNameIsNoStep) {
  const ProjectRef project = createProject(store, QStringLiteral("Sea"));
  renameProject(store, project, QStringLiteral("Sea "));
  EXPECT_EQ(store.history().undo().size(), 1u);
  renameProject(store, project, QStringLiteral(" "));
  EXPECT_EQ(text(project->name), "Sea");
  EXPECT_EQ(text(store.error().value_or(QString())), "Enter a name first.");
  EXPECT_EQ(store.history().undo().size(), 1u);
}

TEST_F(ProjectsTest, AnArchivedProjectKeepsItsItemsAndComesBackByUndo) {
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  const ProjectRef project = createProject(store, QStringLiteral("Sea"));
  move(store, {fox}, project->id);
  setArchived(store, project, true);
  EXPECT_TRUE(project->archived);
  EXPECT_EQ(fox->projectID, project->id);
  reopen();
  const ProjectRef read = store.projects()[0];
  EXPECT_TRUE(read->archived);
  setArchived(store, read, false);
  EXPECT_EQ(text(store.history().next(HistoryDirection::undo)->name), "Unarchive Project");
  undo();
  EXPECT_TRUE(store.projects()[0]->archived);
}

TEST_F(ProjectsTest, AFailedSaveLeavesTheProjectAsItWas) {
  const ProjectRef project = createProject(store, QStringLiteral("Sea"));
  failWrites("UPDATE", "Project");
  setArchived(store, project, true);
  EXPECT_FALSE(project->archived);
  EXPECT_NE(text(store.error().value_or(QString())).find("disk is full"), std::string::npos);
}

}  // namespace
}  // namespace sorvan::core
