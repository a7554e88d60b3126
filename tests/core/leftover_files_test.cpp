#include "core/leftover_files.h"

#include <unistd.h>

#include "base/file_steps.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

struct LeftoverFiles : test::LibraryFixture {
  QString temporary(const QString& place) const {
    return folder.write(place + u'/' + u'.' + uuidText(newUuid()) + steps::temporarySuffix, "half");
  }
  /// As a program that was killed leaves the library.
  void openAfterCut() {
    store.close();
    writeSidecar(QStringLiteral("library.store-wal"), {});
    open();
  }
  void addProject(const QString& rootFolder) {
    Project project;
    project.id = newUuid();
    project.name = QStringLiteral("Fox");
    project.rootFolder = rootFolder;
    store.context().insert(project);
    store.save(LibraryTables::projects);
  }
};

TEST_F(LeftoverFiles, OfWritersThatWereKilledGoAndNothingElseDoes) {
  open();
  addProject(QStringLiteral("Fox-1"));
  const QStringList left{
      temporary(QStringLiteral("work/.sorvan")), temporary(QStringLiteral("work/.sorvan/recovery/x")),
      temporary(QStringLiteral("work/Inbox/generated")), temporary(QStringLiteral("work/Fox-1/thumbnails"))};
  const QStringList kept{folder.write(QStringLiteral("work/Inbox/generated/.hidden"), "the user's"),
                         folder.write(QStringLiteral("work/Inbox/generated/fox-001.png"), "a fox"),
                         temporary(QStringLiteral("work/Elsewhere"))};
  openAfterCut();
  for (const QString& path : left) EXPECT_FALSE(QFileInfo::exists(path)) << test::text(path);
  for (const QString& path : kept) EXPECT_TRUE(QFileInfo::exists(path)) << test::text(path);
}

TEST_F(LeftoverFiles, AreNotLookedForAfterAnOrderlyEnd) {
  open();
  const QString path = temporary(QStringLiteral("work/Inbox/generated"));
  reopen();
  EXPECT_TRUE(QFileInfo::exists(path));
}

TEST_F(LeftoverFiles, OutsideTheWorkspaceAreNobodysBusinessWhateverARowOrALinkSays) {
  open();
  addProject(QStringLiteral("../other"));
  addProject(QStringLiteral("linked"));
  const QString named = temporary(QStringLiteral("other/generated"));
  const QString linked = temporary(QStringLiteral("third/generated"));
  ASSERT_EQ(::symlink(QFile::encodeName(folder / QStringLiteral("third")),
                      QFile::encodeName(root() + QStringLiteral("/linked"))),
            0);
  openAfterCut();
  EXPECT_TRUE(QFileInfo::exists(named));
  EXPECT_TRUE(QFileInfo::exists(linked));
}

}  // namespace
}  // namespace sorvan::core
