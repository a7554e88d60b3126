// Real disks that refuse, met by a real process without privileges.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "base/durable_file.h"
#include "base/file_reading.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

static constexpr uid_t nobody = 65534;

// What the child found, as its exit code.
enum Found { AsItShouldBe = 0, NothingRefused = 1, OldFileLost = 2, SomethingLeft = 3, WrongReason = 4, Crashed = 5 };

// Runs `work` in a child process that has given up root.
static int inUnprivilegedChild(const std::function<Found()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) _exit(Crashed);
    try {
      _exit(work());
    } catch (...) {
      _exit(Crashed);
    }
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : Crashed;
}

static bool put(const char* path, const std::string& text) {
  const int file = open(path, O_WRONLY | O_CLOEXEC);
  const bool done = file >= 0 && write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  if (file >= 0) close(file);
  return done;
}

// A file system of 64 KiB over the folder, seen by this process alone.
static bool mountTinyDisk(const QString& folder) {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  prctl(PR_SET_DUMPABLE, 1);
  if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  return put("/proc/self/setgroups", "deny") && put("/proc/self/uid_map", "0 " + user + " 1") &&
         put("/proc/self/gid_map", "0 " + group + " 1") &&
         mount("none", folder.toLocal8Bit().constData(), "tmpfs", 0, "size=64k") == 0;
}

// Where namespaces are not allowed: the kernel refuses to let a file grow beyond 64 KiB, in the middle of a write.
static void limitFileSize() {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{64 << 10, 64 << 10};
  setrlimit(RLIMIT_FSIZE, &limit);
}

static Found replaceOnAFullDisk(const QString& folder) {
  if (!mountTinyDisk(folder)) limitFileSize();
  const QString path = folder + QStringLiteral("/ledger.json");
  writeDurably(path, "old", DurableMode::Sidecar);
  try {
    writeDurably(path, QByteArray(500'000, 'n'), DurableMode::Sidecar);
    return NothingRefused;
  } catch (const FileError& failure) {
    if (failure.number() != ENOSPC && failure.number() != EFBIG) return WrongReason;
  }
  if (readFile(path) != "old") return OldFileLost;
  const auto left = QDir(folder).entryList(QDir::Files | QDir::Hidden);
  return left == QStringList{QStringLiteral("ledger.json")} ? AsItShouldBe : SomethingLeft;
}

TEST(UnprivilegedUser, OnAFullDiskKeepsTheOldFileAndNoTemporary) {
  const TemporaryFolder folder;
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0777), 0);
  EXPECT_EQ(inUnprivilegedChild([&] { return replaceOnAFullDisk(folder.path()); }), AsItShouldBe);
}

static Found replaceInAReadOnlyFolder(const QString& folder) {
  try {
    writeDurably(folder + QStringLiteral("/ledger.json"), "new", DurableMode::Sidecar);
    return NothingRefused;
  } catch (const FileError& failure) {
    return failure.message() == QStringLiteral("ledger.json could not be written: Permission denied") ? AsItShouldBe
                                                                                                      : WrongReason;
  }
}

TEST(UnprivilegedUser, InAReadOnlyFolderIsToldAndNothingChanges) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("ledger.json"), "old");
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0555), 0);
  EXPECT_EQ(inUnprivilegedChild([&] { return replaceInAReadOnlyFolder(folder.path()); }), AsItShouldBe);
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
  EXPECT_EQ(folder.files(), QStringList{QStringLiteral("ledger.json")});
  EXPECT_EQ(folder.read(QStringLiteral("ledger.json")), "old");
}

}  // namespace sorvan::test
