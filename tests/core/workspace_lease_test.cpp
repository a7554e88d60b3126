#include "core/workspace_lease.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "failing_layer.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;

/// Another process that holds the lock of a file until it is ended. It calls nothing but the system.
class OtherProcess {
 public:
  explicit OtherProcess(const QByteArray& file) {
    int ready[2];
    EXPECT_EQ(::pipe(ready), 0);
    child_ = ::fork();
    if (child_ == 0) {
      const int descriptor = ::open(file.constData(), O_RDWR | O_CREAT, 0600);
      const char state = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
      if (::write(ready[1], &state, 1) != 1) ::_exit(1);
      for (;;) ::pause();
    }
    char state = 0;
    EXPECT_EQ(::read(ready[0], &state, 1), 1);
    EXPECT_EQ(state, 'y');
    ::close(ready[0]);
    ::close(ready[1]);
  }
  ~OtherProcess() { end(); }
  void end() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(std::exchange(child_, 0), nullptr, 0);
  }

 private:
  pid_t child_ = 0;
};

struct WorkspaceLeaseTest : testing::Test {
  test::TemporaryFolder folder;
  WorkspaceFiles files{folder.path()};
  WorkspaceLeaseTest() { files.prepare(); }
  QByteArray lockFile() const { return QFile::encodeName(files.lockFile()); }
};

const char* const lockedElsewhere =
    "This workspace is open in another Sorvan process. Close it there before opening, copying or backing it up. "
    "Simultaneous access through cloud sync is not supported.";

TEST_F(WorkspaceLeaseTest, OfAFolderThatAnotherProcessHoldsIsRefusedUntilThatProcessEnds) {
  OtherProcess other(lockFile());
  EXPECT_EQ(messageOf([&] { WorkspaceLease{folder.path()}; }), lockedElsewhere);
  other.end();
  EXPECT_NO_THROW(WorkspaceLease{folder.path()});
}

TEST_F(WorkspaceLeaseTest, IsSharedWithinOneProcessAlsoThroughALink) {
  const test::TemporaryFolder elsewhere;
  const QString link = elsewhere / QStringLiteral("link");
  ASSERT_EQ(::symlink(QFile::encodeName(folder.path()), QFile::encodeName(link)), 0);
  const WorkspaceLease first(folder.path());
  EXPECT_NO_THROW(WorkspaceLease{link});
  EXPECT_NO_THROW(WorkspaceLease{folder.path()});
}

TEST_F(WorkspaceLeaseTest, LocksTheFolderUntilTheLastCopyIsGone) {
  auto first = std::make_unique<WorkspaceLease>(folder.path());
  auto second = std::make_unique<WorkspaceLease>(*first);
  const int descriptor = ::open(lockFile().constData(), O_RDWR | O_CLOEXEC);
  first.reset();
  EXPECT_NE(::flock(descriptor, LOCK_EX | LOCK_NB), 0);
  second.reset();
  EXPECT_EQ(::flock(descriptor, LOCK_EX | LOCK_NB), 0);
  ::close(descriptor);
}

TEST_F(WorkspaceLeaseTest, FollowsNoLinkAndSaysThatItCannotLock) {
  ASSERT_EQ(::symlink("/tmp/some-other-file", lockFile().constData()), 0);
  EXPECT_EQ(messageOf([&] { WorkspaceLease{folder.path()}; }),
            "Cannot lock this workspace. Check its folder permissions.");
}

TEST_F(WorkspaceLeaseTest, OnAFileSystemWithoutLocksCannotLockAndNeverBlamesAnotherProcess) {
  for (const int error : {ENOLCK, ENOSYS, EOPNOTSUPP, EINVAL, EIO}) {
    SCOPED_TRACE(error);
    test::LocklessLayer lockless(error);
    const base::FileLayerOverride override(lockless);
    EXPECT_EQ(messageOf([&] { WorkspaceLease{folder.path()}; }),
              "Cannot lock this workspace. Check its folder permissions.");
  }
  test::LocklessLayer taken(EWOULDBLOCK);
  {
    const base::FileLayerOverride override(taken);
    EXPECT_EQ(messageOf([&] { WorkspaceLease{folder.path()}; }), lockedElsewhere);
  }
  EXPECT_NO_THROW(WorkspaceLease{folder.path()}) << "a failure keeps nothing locked";
}

TEST_F(WorkspaceLeaseTest, OfAFolderWithoutAHiddenFolderCannotLock) {
  EXPECT_EQ(messageOf([&] { WorkspaceLease{folder / QStringLiteral("nothing")}; }),
            "Cannot lock this workspace. Check its folder permissions.");
}

TEST_F(WorkspaceLeaseTest, IsInheritedByNoChildProcess) {
  const WorkspaceLease lease(folder.path());
  int holding = 0;
  for (const QString& name : QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System)) {
    const int descriptor = name.toInt();
    char target[4096] = {};
    const auto link = QByteArray("/proc/self/fd/") + name.toLatin1();
    if (::readlink(link.constData(), target, sizeof target - 1) <= 0) continue;
    if (QFile::decodeName(target) != QFileInfo(files.lockFile()).canonicalFilePath()) continue;
    ++holding;
    EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
  }
  EXPECT_EQ(holding, 1);
}

TEST_F(WorkspaceLeaseTest, IsOutOfPlaceOnceItsFileIsGoneOrAnotherStandsThere) {
  const WorkspaceLease lease(folder.path());
  EXPECT_TRUE(lease.isInPlace());
  ASSERT_EQ(::unlink(lockFile().constData()), 0);
  EXPECT_FALSE(lease.isInPlace());
  folder.write(QStringLiteral(".sorvan/workspace.lock"), {});
  EXPECT_FALSE(lease.isInPlace());
}

TEST_F(WorkspaceLeaseTest, OfAnOpenFileThatWasTakenAwayIsNotSharedWithTheNextOne) {
  const WorkspaceLease lost(folder.path());
  ASSERT_EQ(::unlink(lockFile().constData()), 0);
  const WorkspaceLease fresh(folder.path());
  EXPECT_TRUE(fresh.isInPlace());
  EXPECT_FALSE(lost.isInPlace());
}

TEST(FreeBytes, AreToldForAFolderAndNotForNothing) {
  EXPECT_GT(freeBytes(QDir::tempPath()).value_or(0), 0u);
  EXPECT_EQ(freeBytes(QStringLiteral("/no/such/folder")), std::nullopt);
}

}  // namespace
}  // namespace sorvan::core
