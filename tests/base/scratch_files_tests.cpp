#include "base/scratch_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDateTime>
#include <QFile>

#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

namespace {
struct ScratchFiles : testing::Test {
  ScratchFiles() : before(qgetenv("XDG_CACHE_HOME")) { qputenv("XDG_CACHE_HOME", cache.path().toLocal8Bit()); }
  ~ScratchFiles() override { before.isEmpty() ? qunsetenv("XDG_CACHE_HOME") : qputenv("XDG_CACHE_HOME", before); }

  QByteArray before;
  TemporaryFolder cache;
};
}  // namespace

TEST_F(ScratchFiles, StandInAFolderThatOnlyTheirUserCanRead) {
  const QString path = scratchPath(QStringLiteral("sorvan-clip-"), QStringLiteral("mp4"));
  EXPECT_TRUE(path.startsWith(cache / QStringLiteral("sorvan-studio/tmp/sorvan-clip-")));
  EXPECT_TRUE(path.endsWith(QStringLiteral(".mp4")));
  EXPECT_NE(path, scratchPath(QStringLiteral("sorvan-clip-"), QStringLiteral("mp4")));
  struct stat facts {};
  ASSERT_EQ(stat(scratchFolder().toLocal8Bit().constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0700u);
}

TEST_F(ScratchFiles, AreSweptWhenTheyAreOursAndOlderThanADay) {
  const QString folder = QStringLiteral("sorvan-studio/tmp/");
  const Instant now = Instant::fromDateTime(QDateTime::currentDateTimeUtc());
  for (const char* name : {"sorvan-clip-old.mp4", "Pasted-old.png", "theirs-old.png", "sorvan-clip-new.mp4"}) {
    QFile file(cache.write(folder + QString::fromLatin1(name), "x"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    if (QByteArray(name).contains("old"))
      ASSERT_TRUE(file.setFileTime((now - 90000).toDateTime(), QFileDevice::FileModificationTime));
  }
  sweepScratchFiles(now);
  EXPECT_EQ(cache.files(),
            (QStringList{folder + QStringLiteral("sorvan-clip-new.mp4"), folder + QStringLiteral("theirs-old.png")}));
}

TEST_F(ScratchFiles, SweepingWithoutAFolderIsNothing) { EXPECT_NO_THROW(sweepScratchFiles(Instant{})); }

}  // namespace sorvan::test
