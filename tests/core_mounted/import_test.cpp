// Imports of references on disks that are full, and of files that cannot be read.
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QImage>

#include <random>

#include "core/library_fixture.h"
#include "exchange/import_one.h"
#include "exchange/unfinished_imports.h"
#include "mounted_disk.h"
#include "support/made_pictures.h"
#include "support/run_task.h"

namespace sorvan::exchange {
namespace {

constexpr qint64 page = 4096;
constexpr qint64 plenty = 8 << 20;
constexpr int mostPages = 1000;

struct ImportOnADisk : test::LibraryFixture {
  UnfinishedImports unfinished{store};
  ImportPorts ports;

  ~ImportOnADisk() override { test::runTask(unfinished.drain()); }
  void settle() {
    test::runUntil([&] { return unfinished.running() == 0; });
  }
  /// A picture that no format makes small.
  QString noise() const {
    std::mt19937 random(5);
    QImage picture(96, 64, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) picture.setPixel(x, y, qRgb(int(random() % 256), int(random() % 256), 0));
    folder.write(QStringLiteral("outside/noise.png"), test::encoded(picture, "PNG"));
    return folder / QStringLiteral("outside/noise.png");
  }
  std::string bringing(const QString& file) {
    return test::messageOf([&] { test::runTask(importReference(&store, ports, file, std::nullopt, {})); });
  }
  QStringList copies() const {
    return QDir(files().absolute(QStringLiteral("Inbox/references"))).entryList(QDir::Files);
  }
};

TEST_F(ImportOnADisk, AReferenceComesInWhollyOrIsRefusedAndComesOnceThereIsRoom) {
  const QString picture = noise();
  int failures = 0;
  for (int pages = 0;; ++pages) {
    SCOPED_TRACE(pages);
    ASSERT_LT(pages, mostPages);
    const test::MountedDisk disk(plenty);
    const QString place = disk.path() + QStringLiteral("/work");
    openWorkspace(store, place, core::Remember::no);
    const core::WorkspaceFiles there(place);
    disk.leaveFree(pages * page);
    const bool came = bringing(picture).empty();
    ASSERT_EQ(store.assets().size(), came ? 1u : 0u);
    if (!came) {
      ++failures;
      // Nothing of it stays, with room and another opening.
      disk.leaveFree(plenty);
      store.close();
      openWorkspace(store, place, core::Remember::no);
      settle();
      EXPECT_EQ(QDir(there.absolute(QStringLiteral("Inbox/references"))).entryList(QDir::Files).size(),
                qsizetype(store.assets().size()));
      EXPECT_TRUE(importNotes(there).empty());
      ASSERT_EQ(bringing(picture), "");
    }
    ASSERT_EQ(store.assets().size(), 1u);
    EXPECT_TRUE(QFile::exists(store.fileOf(*store.assets()[0])));
    store.close();
    if (came) break;
  }
  EXPECT_GT(failures, 5) << "the disk was never full";
}

TEST_F(ImportOnADisk, AFileOnADriveThatWentIsRefusedAndNothingIsLeft) {
  openWorkspace(store, root(), core::Remember::no);
  test::MountedDisk drive(plenty);
  const QString source = drive.path() + QStringLiteral("/noise.png");
  ASSERT_TRUE(QFile::copy(noise(), source));
  drive.vanish();
  EXPECT_NE(bringing(source), "");
  EXPECT_EQ(store.assets().size(), 0u);
  EXPECT_TRUE(copies().isEmpty());
  EXPECT_TRUE(importNotes(files()).empty());
  drive.comeBack();
  EXPECT_EQ(bringing(source), "");
  EXPECT_EQ(store.assets().size(), 1u);
  store.close();
}

}  // namespace
}  // namespace sorvan::exchange
