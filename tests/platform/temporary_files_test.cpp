#include "platform/temporary_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>

#include "support/temporary_folder.h"

namespace sorvan::platform {
namespace {

using sorvan::test::TemporaryFolder;

class TemporaryFiles : public testing::Test {
 protected:
  TemporaryFiles() { qputenv("XDG_CACHE_HOME", folder.path().toUtf8()); }
  ~TemporaryFiles() override {
    if (before.isNull())
      qunsetenv("XDG_CACHE_HOME");
    else
      qputenv("XDG_CACHE_HOME", before);
  }

  static void write(const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
  }

  const QByteArray before = qgetenv("XDG_CACHE_HOME");
  TemporaryFolder folder;
};

TEST_F(TemporaryFiles, LiveInAFolderThatNobodyElseReads) {
  struct stat facts {};
  ASSERT_EQ(stat(QFile::encodeName(temporaryFolder()).constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0700U);
  EXPECT_EQ(temporaryFolder(), folder / QStringLiteral("sorvan-studio/tmp"));
}

TEST_F(TemporaryFiles, CloseAFolderThatWasOpenToOthers) {
  ASSERT_EQ(chmod(QFile::encodeName(temporaryFolder()).constData(), 0755), 0);
  struct stat facts {};
  ASSERT_EQ(stat(QFile::encodeName(temporaryFolder()).constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0700U);
}

TEST_F(TemporaryFiles, GoWithTheirOwner) {
  QString path;
  {
    TemporaryFile file(QStringLiteral("clip"), QStringLiteral("mp4"));
    path = file.path();
    EXPECT_TRUE(QFileInfo(path).fileName().startsWith(QStringLiteral("sorvan-clip-")));
    EXPECT_TRUE(path.endsWith(QStringLiteral(".mp4")));
    write(path);
    const TemporaryFile moved = std::move(file);
    EXPECT_TRUE(QFile::exists(path));
  }
  EXPECT_FALSE(QFile::exists(path));
}

TEST_F(TemporaryFiles, LeftForADayAreSweptAndNothingElse) {
  const QString ours = temporaryFolder() + QStringLiteral("/sorvan-clip-1.mp4");
  const QString pasted = temporaryFolder() + QStringLiteral("/Pasted-1.png");
  const QString other = temporaryFolder() + QStringLiteral("/keep.txt");
  for (const QString& path : {ours, pasted, other}) write(path);
  const QDateTime now = QDateTime::currentDateTime();
  sweepTemporaryFiles(now.addSecs(23 * 3600));
  EXPECT_TRUE(QFile::exists(ours));
  sweepTemporaryFiles(now.addSecs(25 * 3600));
  EXPECT_FALSE(QFile::exists(ours));
  EXPECT_FALSE(QFile::exists(pasted));
  EXPECT_TRUE(QFile::exists(other));
}

}  // namespace
}  // namespace sorvan::platform
