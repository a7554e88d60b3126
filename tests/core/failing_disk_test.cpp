// What the system itself refuses, and not an injected layer: writes past a limit, and folders of somebody else.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "core/small_edits.h"
#include "library_fixture.h"

namespace sorvan::core {
namespace {

using test::messageOf;
using test::text;

/// While it lives no file of this process grows past a size: every write beyond fails, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(qint64 bytes) : handler_(::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{static_cast<rlim_t>(bytes), before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    ::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

/// While it lives the process acts as a user who owns nothing here.
class UnprivilegedUser {
 public:
  UnprivilegedUser() : before_(::geteuid()) {
    constexpr uid_t nobody = 65534;
    if (before_ == 0 && ::seteuid(nobody) != 0) ADD_FAILURE() << "the user could not be changed";
  }
  ~UnprivilegedUser() {
    if (before_ == 0 && ::seteuid(before_) != 0) ADD_FAILURE() << "the user could not be changed back";
  }
  UnprivilegedUser(const UnprivilegedUser&) = delete;
  UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

 private:
  uid_t before_;
};

struct FailingDisk : test::LibraryFixture {
  QString database() const { return files().database(); }
  qint64 logSize() const { return QFileInfo(database() + QStringLiteral("-wal")).size(); }
};

TEST_F(FailingDisk, ASaveThatFailsAtAnyPlaceOfTheFileWritesAllOrNothingAndCanBeTriedAgain) {
  open();
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  int failures = 0;
  constexpr int limits = 40;
  constexpr int bytesBetweenLimits = 700;
  for (int step = 0; step < limits; ++step) {
    SCOPED_TRACE(step);
    const std::size_t before = store.assets().size();
    const QString notes = QStringLiteral("step %1").arg(step);
    bool saved = true;
    {
      const FileSizeLimit full(logSize() + step * bytesBetweenLimits);
      store.context().edit(fox).notes = notes;
      store.context().insert(newAsset(QStringLiteral("Inbox/generated/new-%1.png").arg(step)));
      saved = messageOf([&] { store.save(LibraryTables::none); }).empty();
    }
    if (!saved) {
      ++failures;
      RecordContext reader(database());
      EXPECT_EQ(reader.fetch<Asset>().size(), before);
      EXPECT_NE(reader.fetch<Asset>().front()->notes, notes);
      store.save(LibraryTables::none);
    }
    RecordContext reader(database());
    EXPECT_EQ(reader.fetch<Asset>().size(), before + 1);
    EXPECT_EQ(reader.fetch<Asset>().front()->notes, notes);
    store.reload(LibraryTables::all);
  }
  EXPECT_GT(failures, 0);
  EXPECT_LT(failures, limits);
}

TEST_F(FailingDisk, ASmallEditOnAFullDiskIsTakenBackAndShown) {
  open();
  const AssetRef fox = addAsset(QStringLiteral("fox-001.png"));
  {
    const FileSizeLimit full(logSize());
    toggleFavorite(store, fox);
  }
  EXPECT_FALSE(fox->favorite);
  EXPECT_TRUE(store.error().has_value());
  toggleFavorite(store, fox);
  EXPECT_TRUE(fox->favorite);
}

TEST_F(FailingDisk, AWorkspaceCannotBeMadeInAFolderOfSomebodyElse) {
  ASSERT_EQ(::chmod(QFile::encodeName(folder.path()), 0555), 0);
  {
    const UnprivilegedUser user;
    EXPECT_NE(messageOf([&] { openWorkspace(store, root(), Remember::yes); }).find("Permission denied"),
              std::string::npos);
  }
  ASSERT_EQ(::chmod(QFile::encodeName(folder.path()), 0755), 0);
  EXPECT_FALSE(store.hasWorkspace());
  EXPECT_FALSE(settings->contains(QStringLiteral("workspaceBookmark")));
}

TEST_F(FailingDisk, AWorkspaceThatMayOnlyBeReadIsNotOpenedAndNotChanged) {
  open();
  addAsset(QStringLiteral("fox-001.png"));
  store.close();
  const QStringList before = folder.files();
  ASSERT_EQ(::chmod(QFile::encodeName(folder.path()), 0755), 0);
  ASSERT_EQ(::chmod(QFile::encodeName(root() + QStringLiteral("/.sorvan")), 0555), 0);
  {
    const UnprivilegedUser user;
    EXPECT_NE(messageOf([&] { openWorkspace(store, root(), Remember::no); }), "");
  }
  ASSERT_EQ(::chmod(QFile::encodeName(root() + QStringLiteral("/.sorvan")), 0755), 0);
  EXPECT_EQ(folder.files(), before);
  open();
  EXPECT_EQ(store.assets().size(), 1u);
}

TEST_F(FailingDisk, AChargeNoteOnAFullDiskStaysInMemoryAndIsWrittenWhenThereIsRoom) {
  open();
  ExtraCharge note;
  note.id = newUuid();
  {
    const FileSizeLimit full(0);
    store.record(note);
  }
  EXPECT_TRUE(store.extraCharges().contains(note.id));
  EXPECT_TRUE(store.hasUnsavedMetadata());
  store.retryMetadataSave();
  EXPECT_FALSE(store.hasUnsavedMetadata());
  reopen();
  EXPECT_TRUE(store.extraCharges().contains(note.id));
}

}  // namespace
}  // namespace sorvan::core
