// A workspace on a medium that only reads, and on a drive that is taken away.
#include <QDirIterator>
#include <QHash>

#include "base/checksum.h"
#include "core/recent_workspaces.h"
#include "core/small_edits.h"
#include "mounted_disk.h"
#include "old_workspace.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

const char* const folderGone = "The workspace folder isn’t available.";

struct WorkspaceOnADrive : test::LibraryFixture {
  test::MountedDisk disk;

  QString place() const { return disk.path() + QStringLiteral("/work"); }
  WorkspaceFiles onDisk() const { return WorkspaceFiles(place()); }
  std::string opening() {
    return messageOf([this] { openWorkspace(store, place(), Remember::yes); });
  }
  void makeWorkspace() {
    ASSERT_EQ(opening(), "");
    store.context().insert(newAsset(QStringLiteral("Inbox/generated/fox-001.png")));
    store.save(LibraryTables::all);
    store.close();
  }
  void makeOldWorkspace(int version) const {
    onDisk().prepare();
    platform::Database database(onDisk().database(), platform::DatabaseOpening::ReadWrite);
    database.execute(test::schemaScript(version));
  }
  /// Every file below the drive and what it holds.
  QHash<QString, QByteArray> contents() const {
    QHash<QString, QByteArray> found;
    QDirIterator all(disk.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (all.hasNext()) {
      QFile file(all.next());
      found.insert(file.fileName(), file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
    return found;
  }
  bool isEmptyPlace() const {
    return QDir(disk.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
};

TEST_F(WorkspaceOnADrive, ThatOnlyReadsIsNotOpenedAndNotChanged) {
  makeWorkspace();
  openWorkspace(store, root(), Remember::no);
  const auto before = contents();
  disk.setReadOnly(true);
  EXPECT_EQ(opening(), "Cannot lock this workspace. Check its folder permissions.");
  EXPECT_EQ(contents(), before);
  EXPECT_EQ(store.workspaceRoot(), files().root()) << "the previous one stays open";
  disk.setReadOnly(false);
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(store.assets().size(), 1u);
}

TEST_F(WorkspaceOnADrive, ThatOnlyReadsDoesNotBecomeAWorkspace) {
  disk.setReadOnly(true);
  EXPECT_NE(opening().find("Read-only file system"), std::string::npos);
  EXPECT_TRUE(recentWorkspaces(store).empty());
  EXPECT_TRUE(isEmptyPlace());
}

TEST_F(WorkspaceOnADrive, ThatOnlyReadsIsNotUpgraded) {
  makeOldWorkspace(3);
  const auto before = contents();
  disk.setReadOnly(true);
  EXPECT_EQ(opening(), "Cannot lock this workspace. Check its folder permissions.");
  EXPECT_EQ(contents(), before);
  disk.setReadOnly(false);
  EXPECT_EQ(opening(), "");
  EXPECT_EQ(store.assets().size(), 3u);
}

TEST_F(WorkspaceOnADrive, ThatVanishesWhileItIsOpenGetsNothingUnderItsMountPoint) {
  makeWorkspace();
  ASSERT_EQ(opening(), "");
  disk.vanish();
  EXPECT_EQ(messageOf([&] { store.requireWorkspaceInPlace(); }), folderGone);
  EXPECT_EQ(messageOf([&] { store.requireRoomForResult(); }), folderGone);
  ExtraCharge note;
  note.id = newUuid();
  store.record(note);
  store.keepComposer({});
  EXPECT_TRUE(isEmptyPlace());
  EXPECT_TRUE(store.hasUnsavedMetadata());

  disk.comeBack();
  EXPECT_NO_THROW(store.requireWorkspaceInPlace());
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
  EXPECT_TRUE(QFileInfo::exists(onDisk().sidecar(QStringLiteral("charges.json"))));
  EXPECT_TRUE(QFileInfo::exists(onDisk().sidecar(QStringLiteral("composer.json"))));
}

TEST_F(WorkspaceOnADrive, ThatIsAwayAtTheStartIsToldStaysListedAndOpensWhenItIsBack) {
  makeWorkspace();
  disk.vanish();
  const auto next = makeStore();
  restoreLastWorkspace(*next);
  EXPECT_FALSE(next->hasWorkspace());
  EXPECT_EQ(text(next->error().value_or(QString())), std::string("Could not open your workspace: ") + folderGone);
  ASSERT_EQ(recentWorkspaces(*next).size(), 1u);
  EXPECT_FALSE(isAvailable(recentWorkspaces(*next)[0]));
  openRecent(*next, recentWorkspaces(*next)[0]);
  EXPECT_EQ(text(next->error().value_or(QString())), folderGone);
  EXPECT_TRUE(isEmptyPlace());

  disk.comeBack();
  EXPECT_TRUE(isAvailable(recentWorkspaces(*next)[0]));
  openRecent(*next, recentWorkspaces(*next)[0]);
  EXPECT_EQ(next->assets().size(), 1u);
}

}  // namespace
}  // namespace sorvan::core
