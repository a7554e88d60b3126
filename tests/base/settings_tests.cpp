#include "base/settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/file_lock.h"
#include "support/failing_file_layer.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

static const QString file = QStringLiteral("sorvan-studio/settings.json");

TEST(Settings, KeepValuesOfEachTypeAcrossProcesses) {
  const TemporaryFolder folder;
  {
    Settings settings(folder / file);
    settings.set(QStringLiteral("appearance"), QStringLiteral("dark"));
    settings.set(QStringLiteral("count"), 3);
    settings.set(QStringLiteral("watchedFolders:/home/me//work"), std::vector<QString>{QStringLiteral("/a/b")});
  }
  const Settings again(folder / file);
  EXPECT_EQ(again.get<QString>(QStringLiteral("appearance")), QStringLiteral("dark"));
  EXPECT_EQ(again.get<int>(QStringLiteral("count")), 3);
  EXPECT_EQ(again.get<std::vector<QString>>(QStringLiteral("watchedFolders:/home/me//work")),
            std::vector<QString>{QStringLiteral("/a/b")});
  EXPECT_EQ(again.keys().size(), 3);
}

TEST(Settings, AreReadableOnlyByTheirUser) {
  const TemporaryFolder folder;
  Settings(folder / file).set(QStringLiteral("k"), 1);
  struct stat facts {};
  ASSERT_EQ(stat((folder / file).toLocal8Bit().constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0600u);
}

TEST(Settings, AnAbsentKeyOrOneOfAnotherTypeIsEmpty) {
  Settings settings;
  settings.set(QStringLiteral("k"), QStringLiteral("text"));
  EXPECT_EQ(settings.get<int>(QStringLiteral("k")), std::nullopt);
  EXPECT_EQ(settings.get<QString>(QStringLiteral("other")), std::nullopt);
  EXPECT_EQ(settings.get(QStringLiteral("other"), 9), 9);
}

TEST(Settings, TellEachChangeOnce) {
  Settings settings;
  QStringList told;
  QObject::connect(&settings, &Settings::changed, [&](const QString& key) { told.append(key); });
  settings.set(QStringLiteral("a"), 1);
  settings.set(QStringLiteral("a"), 1);
  settings.set(QStringLiteral("a"), 2);
  settings.remove(QStringLiteral("a"));
  settings.remove(QStringLiteral("a"));
  EXPECT_EQ(told, (QStringList{QStringLiteral("a"), QStringLiteral("a"), QStringLiteral("a")}));
  EXPECT_FALSE(settings.contains(QStringLiteral("a")));
}

TEST(Settings, TwoProcessesDoNotLoseEachOthersKeys) {
  const TemporaryFolder folder;
  Settings(folder / file).set(QStringLiteral("shared"), 0);
  Settings one(folder / file);
  Settings other(folder / file);
  QStringList told;
  QObject::connect(&other, &Settings::changed, [&](const QString& key) { told.append(key); });
  one.set(QStringLiteral("one"), 1);
  one.remove(QStringLiteral("shared"));
  other.set(QStringLiteral("other"), 2);
  EXPECT_EQ(other.get<int>(QStringLiteral("one")), 1);
  EXPECT_FALSE(other.contains(QStringLiteral("shared")));
  EXPECT_EQ(told, (QStringList{QStringLiteral("other"), QStringLiteral("one"), QStringLiteral("shared")}));
  const Settings third(folder / file);
  EXPECT_EQ(third.keys(), (QStringList{QStringLiteral("one"), QStringLiteral("other")}));
}

TEST(Settings, AnUnreadableFileIsKeptAsideAndNeverOverwritten) {
  const TemporaryFolder folder;
  folder.write(file, "{ this is no JSON");
  Settings settings(folder / file);
  EXPECT_FALSE(settings.problem().isEmpty());
  // Reading alone touches nothing.
  EXPECT_EQ(folder.files(), QStringList{file});
  settings.set(QStringLiteral("k"), 1);
  const QStringList kept = folder.files().filter(QStringLiteral("settings.json.unreadable-"));
  ASSERT_EQ(kept.size(), 1);
  EXPECT_EQ(folder.read(kept.first()), "{ this is no JSON");
  EXPECT_EQ(Settings(folder / file).get<int>(QStringLiteral("k")), 1);
}

TEST(Settings, AFileThatCannotBeReadAtAllStopsTheWriting) {
  const TemporaryFolder folder;
  Settings(folder / file).set(QStringLiteral("before"), 1);
  const QByteArray bytes = folder.read(file);
  FailingFileLayer layer(1, EIO, Failing::ThisAndAllAfter);
  const FileLayerOverride override(layer);
  Settings settings(folder / file);
  EXPECT_EQ(settings.problem(), QStringLiteral("settings.json could not be read: Input/output error"));
  EXPECT_THROW(settings.set(QStringLiteral("k"), 1), FileError);
  EXPECT_EQ(folder.read(file), bytes);
}

TEST(Settings, AWriteThatFailsKeepsTheValueForTheNextOne) {
  const TemporaryFolder folder;
  Settings settings(folder / file);
  settings.set(QStringLiteral("a"), 1);
  {
    FailingFileLayer layer(5, ENOSPC, Failing::ThisAndAllAfter);
    const FileLayerOverride override(layer);
    EXPECT_THROW(settings.set(QStringLiteral("b"), 2), FileError);
  }
  EXPECT_EQ(settings.get<int>(QStringLiteral("b")), 2);
  EXPECT_FALSE(Settings(folder / file).contains(QStringLiteral("b")));
  settings.set(QStringLiteral("c"), 3);
  EXPECT_EQ(Settings(folder / file).get<int>(QStringLiteral("b")), 2);
}

TEST(FileLock, IsHeldByOneAtATime) {
  const TemporaryFolder folder;
  const QString path = folder / QStringLiteral("lock");
  {
    const FileLock first(path, std::chrono::milliseconds(0));
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(FileLock(path, std::chrono::milliseconds(0)).isHeld());
  }
  EXPECT_TRUE(FileLock(path, std::chrono::milliseconds(0)).isHeld());
  EXPECT_EQ(failureOf([&] { FileLock(folder / QStringLiteral("no/lock"), std::chrono::milliseconds(0)); }),
            QStringLiteral("lock could not be opened: No such file or directory"));
}

}  // namespace sorvan::test
