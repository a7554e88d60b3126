#include "base/durable_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/durable_writer.h"
#include "base/file_reading.h"
#include "support/failing_file_layer.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

static mode_t modeOf(const QString& path) {
  struct stat facts {};
  EXPECT_EQ(stat(path.toLocal8Bit().constData(), &facts), 0);
  return facts.st_mode & 0777;
}

// Runs the work with step 1, then step 2, … failing, until it gets through; `check` looks at the disk after each.
static int failEachStep(int number, const std::function<void()>& prepare, const std::function<void()>& work,
                        const std::function<void(int step, bool threw)>& check) {
  for (int step = 1;; ++step) {
    prepare();
    FailingFileLayer layer(step, number);
    bool threw = false;
    {
      const FileLayerOverride override(layer);
      try {
        work();
      } catch (const FileError&) {
        threw = true;
      }
    }
    if (!layer.hasFailed()) return step - 1;
    check(step, threw);
  }
}

TEST(DurableFile, WritesAllBytesAndLeavesNothingElse) {
  const TemporaryFolder folder;
  writeDurably(folder / QStringLiteral("a.json"), "new", DurableMode::Sidecar);
  EXPECT_EQ(folder.read(QStringLiteral("a.json")), "new");
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("a.json")});
}

TEST(DurableFile, SidecarsArePrivateAndMediaFollowTheUmask) {
  const TemporaryFolder folder;
  const mode_t before = umask(022);
  writeDurably(folder / QStringLiteral("a.json"), "x", DurableMode::Sidecar);
  writeDurably(folder / QStringLiteral("a.png"), "x", DurableMode::Media);
  umask(before);
  EXPECT_EQ(modeOf(folder / QStringLiteral("a.json")), 0600u);
  EXPECT_EQ(modeOf(folder / QStringLiteral("a.png")), 0644u);
}

TEST(DurableFile, AFullDiskAtEveryStepLeavesTheOldFileOrTheWholeNewOne) {
  for (const int number : {ENOSPC, EIO, EDQUOT, EROFS}) {
    const TemporaryFolder folder;
    const QString path = folder / QStringLiteral("ledger.json");
    const QByteArray fresh(3 << 20, 'n');
    const int steps = failEachStep(
        number, [&] { writeDurably(path, "old", DurableMode::Sidecar); },
        [&] { writeDurably(path, fresh, DurableMode::Sidecar); },
        [&](int step, bool threw) {
          EXPECT_TRUE(threw) << "step " << step;
          const QByteArray now = folder.read(QStringLiteral("ledger.json"));
          // Only the sync of the folder comes after the rename.
          EXPECT_TRUE(now == "old" || (step >= 5 && now == fresh)) << "step " << step << ", " << now.size() << " bytes";
          EXPECT_EQ(folder.files(), QStringList{QStringLiteral("ledger.json")}) << "step " << step;
        });
    // Create, write, sync, close, rename, open the folder, sync it, close it.
    EXPECT_EQ(steps, 8);
  }
}

TEST(DurableFile, AFailureAtAnyStepLeavesNoDescriptorOpen) {
  const auto open = [] {
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
  };
  const TemporaryFolder folder;
  folder.write(QStringLiteral("a"), "x");
  const auto before = open();
  const auto noCheck = [](int, bool) {};
  failEachStep(
      EIO, [] {}, [&] { writeDurably(folder / QStringLiteral("b"), "y", DurableMode::Media); }, noCheck);
  failEachStep(
      EIO, [] {},
      [&] {
        copyDurably(folder / QStringLiteral("a"), folder / QStringLiteral("c"), DurableMode::Media, Replacing::Replace);
      },
      noCheck);
  failEachStep(
      EIO, [] {}, [&] { readFile(folder / QStringLiteral("a")); }, noCheck);
  EXPECT_EQ(open(), before);
}

TEST(DurableFile, WithoutReplacementAFailureAtAnyStepLeavesNoFile) {
  const TemporaryFolder folder;
  const QString path = folder / QStringLiteral("a.png");
  failEachStep(
      ENOSPC, [&] { QFile::remove(path); },
      [&] { writeDurably(path, "media", DurableMode::Media, Replacing::NoReplace); },
      [&](int step, bool threw) {
        EXPECT_TRUE(threw) << "step " << step;
        EXPECT_EQ(folder.files(), QStringList()) << "step " << step;
      });
}

TEST(DurableFile, AFailureIsToldWithTheFileAndTheReasonOfTheSystem) {
  const TemporaryFolder folder;
  FailingFileLayer layer(2, ENOSPC);
  const FileLayerOverride override(layer);
  EXPECT_EQ(failureOf([&] { writeDurably(folder / QStringLiteral("charges.json"), "x", DurableMode::Sidecar); }),
            QStringLiteral("charges.json could not be written: No space left on device"));
}

TEST(DurableFile, AFailedSyncIsNeverTriedAgainOnTheSameFile) {
  const TemporaryFolder folder;
  FailingFileLayer layer(3, EIO);
  const FileLayerOverride override(layer);
  EXPECT_THROW(writeDurably(folder / QStringLiteral("a"), "x", DurableMode::Sidecar), FileError);
  // Create, write, the failing sync, close and the removal: no second sync.
  EXPECT_EQ(layer.steps(), 5);
}

TEST(DurableFile, ShortWritesAreContinued) {
  const TemporaryFolder folder;
  FailingFileLayer layer;
  layer.shortWrites = 7;
  const FileLayerOverride override(layer);
  const QByteArray bytes = QByteArray("0123456789").repeated(20);
  writeDurably(folder / QStringLiteral("a"), bytes, DurableMode::Sidecar);
  EXPECT_EQ(folder.read(QStringLiteral("a")), bytes);
}

TEST(DurableFile, NoReplaceRefusesAFileThatExistsAndKeepsIt) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("a"), "theirs");
  try {
    writeDurably(folder / QStringLiteral("a"), "ours", DurableMode::Media, Replacing::NoReplace);
    FAIL() << "it replaced the file";
  } catch (const FileError& failure) {
    EXPECT_EQ(failure.number(), EEXIST);
  }
  EXPECT_EQ(folder.read(QStringLiteral("a")), "theirs");
  EXPECT_EQ(folder.files().size(), 1);
}

TEST(DurableFile, AFileSystemWithoutTheNoReplaceFlagStillNeverReplaces) {
  struct OldFileSystem final : FileLayer {
    int renameNoReplace(const QByteArray&, const QByteArray&) override { return -EINVAL; }
  } layer;
  const TemporaryFolder folder;
  const FileLayerOverride override(layer);
  writeDurably(folder / QStringLiteral("a"), "first", DurableMode::Media, Replacing::NoReplace);
  EXPECT_THROW(writeDurably(folder / QStringLiteral("a"), "second", DurableMode::Media, Replacing::NoReplace),
               FileError);
  EXPECT_EQ(folder.read(QStringLiteral("a")), "first");
}

TEST(DurableFile, ANameOf255BytesIsWritten) {
  const TemporaryFolder folder;
  const QString name(255, u'n');
  writeDurably(folder / name, "x", DurableMode::Media);
  EXPECT_EQ(folder.files(), QStringList{name});
}

TEST(DurableFile, AReadOnlyFolderIsToldAndNothingChanges) {
  // Root may write anywhere, so the refusal comes from the layer.
  const TemporaryFolder folder;
  folder.write(QStringLiteral("a"), "old");
  FailingFileLayer layer(1, EACCES, Failing::ThisAndAllAfter);
  const FileLayerOverride override(layer);
  EXPECT_EQ(failureOf([&] { writeDurably(folder / QStringLiteral("a"), "new", DurableMode::Sidecar); }),
            QStringLiteral("a could not be written: Permission denied"));
  EXPECT_EQ(folder.read(QStringLiteral("a")), "old");
}

TEST(DurableFile, AWriterThatIsNotCommittedLeavesNothing) {
  const TemporaryFolder folder;
  {
    DurableWriter writer(folder / QStringLiteral("a"), DurableMode::Media);
    writer.append("half");
    ASSERT_EQ(folder.files().size(), 1);
    EXPECT_TRUE(isDurableTemporary(folder.files().first()));
  }
  EXPECT_EQ(folder.files(), QStringList());
}

TEST(DurableFile, OnlyItsOwnTemporaryNamesCountAsTemporary) {
  EXPECT_FALSE(isDurableTemporary(QStringLiteral("a.png")));
  EXPECT_FALSE(isDurableTemporary(QStringLiteral(".hidden.sorvan-temporary")));
  EXPECT_FALSE(isDurableTemporary(QStringLiteral(".sorvan-temporary")));
  EXPECT_FALSE(isDurableTemporary(QStringLiteral("..sorvan-temporary")));
  EXPECT_TRUE(isDurableTemporary(QStringLiteral(".0A1B2C3D-0000-4000-8000-0123456789AB.sorvan-temporary")));
}

TEST(DurableFile, MakesAllMissingFoldersAndAcceptsThoseThatExist) {
  const TemporaryFolder folder;
  const QString deep = folder / QStringLiteral("a/b/c");
  ensureFolderDurably(deep);
  ensureFolderDurably(deep);
  EXPECT_TRUE(QFileInfo(deep).isDir());
  folder.write(QStringLiteral("file"), "x");
  EXPECT_THROW(ensureFolderDurably(folder / QStringLiteral("file/below")), FileError);
}

TEST(DurableFile, AFolderThatCouldNotBeSyncedIsMadeAnewTheNextTime) {
  const TemporaryFolder folder;
  FailingFileLayer layer(3, EIO);  // Make, open the parent, sync it.
  {
    const FileLayerOverride override(layer);
    EXPECT_THROW(ensureFolderDurably(folder / QStringLiteral("a")), FileError);
  }
  EXPECT_FALSE(QFileInfo::exists(folder / QStringLiteral("a")));
}

TEST(DurableFile, AMoveThatCannotBeSyncedIsTakenBack) {
  const TemporaryFolder folder;
  ensureFolderDurably(folder / QStringLiteral("to"));
  failEachStep(
      EIO, [&] { folder.write(QStringLiteral("a"), "x"); },
      [&] { renameDurably(folder / QStringLiteral("a"), folder / QStringLiteral("to/a"), Replacing::NoReplace); },
      [&](int step, bool threw) {
        EXPECT_TRUE(threw) << "step " << step;
        EXPECT_EQ(folder.files(), QStringList{QStringLiteral("a")}) << "step " << step;
      });
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("to/a")});
}

TEST(DurableFile, AMoveAcrossFileSystemsCopiesAndThenRemoves) {
  struct OtherDevice final : FileLayer {
    int rename(const QByteArray& from, const QByteArray& to) override {
      return from.endsWith("source") ? -EXDEV : FileLayer::rename(from, to);
    }
    int renameNoReplace(const QByteArray& from, const QByteArray& to) override {
      return from.endsWith("source") ? -EXDEV : FileLayer::renameNoReplace(from, to);
    }
  } layer;
  const TemporaryFolder folder;
  folder.write(QStringLiteral("source"), "bytes");
  const FileLayerOverride override(layer);
  moveDurably(folder / QStringLiteral("source"), folder / QStringLiteral("target"), DurableMode::Media,
              Replacing::NoReplace);
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("target")});
  EXPECT_EQ(folder.read(QStringLiteral("target")), "bytes");
}

TEST(DurableFile, ACopyThatFailsAtAnyStepKeepsTheSourceAndTheOldTarget) {
  const TemporaryFolder folder;
  const QByteArray bytes(2'500'000, 'b');
  folder.write(QStringLiteral("a"), bytes);
  const int steps = failEachStep(
      ENOSPC, [&] { folder.write(QStringLiteral("b"), "old"); },
      [&] {
        copyDurably(folder / QStringLiteral("a"), folder / QStringLiteral("b"), DurableMode::Media, Replacing::Replace);
      },
      [&](int step, bool threw) {
        EXPECT_EQ(folder.read(QStringLiteral("a")), bytes);
        const QByteArray now = folder.read(QStringLiteral("b"));
        EXPECT_TRUE(now == "old" || now == bytes) << "step " << step;
        // Closing the source is the last step, and its failure loses nothing.
        EXPECT_TRUE(threw || now == bytes) << "step " << step;
        EXPECT_EQ(folder.files().size(), 2) << "step " << step;
      });
  EXPECT_GT(steps, 10);
}

TEST(DurableFile, ACopyIsAFileOfItsOwnAndNoLink) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("a"), "first");
  copyDurably(folder / QStringLiteral("a"), folder / QStringLiteral("b"), DurableMode::Sidecar, Replacing::Replace);
  folder.write(QStringLiteral("a"), "second");
  EXPECT_EQ(folder.read(QStringLiteral("b")), "first");
}

TEST(DurableFile, ACopyStopsWhenItIsCancelled) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("a"), "x");
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(copyDurably(folder / QStringLiteral("a"), folder / QStringLiteral("b"), DurableMode::Media,
                           Replacing::NoReplace, stop.get_token()),
               Cancelled);
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("a")});
}

TEST(DurableFile, AFolderOrAPipeIsNoFileToCopy) {
  const TemporaryFolder folder;
  ensureFolderDurably(folder / QStringLiteral("d"));
  ASSERT_EQ(mkfifo((folder / QStringLiteral("pipe")).toLocal8Bit().constData(), 0600), 0);
  for (const QString& source : {QStringLiteral("d"), QStringLiteral("pipe")})
    EXPECT_THROW(copyDurably(folder / source, folder / QStringLiteral("b"), DurableMode::Media, Replacing::Replace),
                 FileError);
}

TEST(DurableFile, RemovingWhatIsAbsentIsDone) {
  const TemporaryFolder folder;
  EXPECT_NO_THROW(removeDurably(folder / QStringLiteral("nothing")));
  EXPECT_NO_THROW(removeFolderDurably(folder / QStringLiteral("nothing")));
}

TEST(DurableFile, RemovingAFolderFollowsNoLink) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("outside/keep"), "x");
  folder.write(QStringLiteral("gone/deep/file"), "x");
  folder.write(QStringLiteral("gone/.hidden"), "x");
  ASSERT_TRUE(QFile::link(folder / QStringLiteral("outside"), folder / QStringLiteral("gone/link")));
  removeFolderDurably(folder / QStringLiteral("gone"));
  EXPECT_FALSE(QFileInfo::exists(folder / QStringLiteral("gone")));
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("outside/keep")});
}

TEST(FileReading, OnlyNoSuchFileIsAbsent) {
  const TemporaryFolder folder;
  EXPECT_EQ(readIfPresent(folder / QStringLiteral("nothing")), std::nullopt);
  ensureFolderDurably(folder / QStringLiteral("d"));
  EXPECT_THROW(readIfPresent(folder / QStringLiteral("d")), FileError);
  folder.write(QStringLiteral("a"), "x");
  for (const int number : {EACCES, EIO, ELOOP}) {
    FailingFileLayer layer(1, number);
    const FileLayerOverride override(layer);
    EXPECT_THROW(readIfPresent(folder / QStringLiteral("a")), FileError);
  }
  FailingFileLayer layer(2, EIO);
  const FileLayerOverride override(layer);
  EXPECT_THROW(readIfPresent(folder / QStringLiteral("a")), FileError);
}

TEST(FileReading, ReadsAnEmptyFileAndRefusesOneThatIsTooLarge) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("empty"), "");
  folder.write(QStringLiteral("large"), QByteArray(101, 'x'));
  EXPECT_EQ(readIfPresent(folder / QStringLiteral("empty")), QByteArray(""));
  EXPECT_EQ(readFile(folder / QStringLiteral("large"), 101).size(), 101);
  EXPECT_THROW(readFile(folder / QStringLiteral("large"), 100), FileError);
  EXPECT_THROW(readFile(folder / QStringLiteral("nothing")), FileError);
}

}  // namespace sorvan::test
