// A store on a workspace of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "base/durable_file.h"
#include "base/ids.h"
#include "base/settings.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"
#include "platform/sqlite.h"
#include "support/fake_clock.h"
#include "support/temporary_folder.h"

namespace sorvan::test {

using namespace sorvan::base;
using namespace sorvan::core;

inline std::string text(const QString& value) { return value.toStdString(); }

/// The message of the SorvanError that a call throws; empty when it throws none.
template <class Call>
std::string messageOf(Call&& call) {
  try {
    call();
  } catch (const SorvanError& failure) {
    return text(failure.message());
  }
  return {};
}

struct LibraryFixture : testing::Test {
  TemporaryFolder folder;
  std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::unique_ptr<LibraryStore> held = makeStore();
  LibraryStore& store = *held;

  std::unique_ptr<LibraryStore> makeStore(std::optional<QString> forced = {}) {
    return std::make_unique<LibraryStore>(LibraryStore::Services{settings, clock, std::move(forced), QString()});
  }

  QString root() const { return folder / QStringLiteral("work"); }
  WorkspaceFiles files() const { return WorkspaceFiles(QFileInfo(root()).canonicalFilePath()); }
  void open() { openWorkspace(store, root(), Remember::no); }
  /// Closes the store's workspace and opens it again, as a new start of the program does.
  void reopen() {
    store.close();
    open();
  }

  QByteArray sidecar(const QString& name) const { return folder.read(QStringLiteral("work/.sorvan/") + name); }
  void writeSidecar(const QString& name, const QByteArray& bytes) const {
    folder.write(QStringLiteral("work/.sorvan/") + name, bytes);
  }
  bool hasSidecar(const QString& name) const { return QFileInfo::exists(root() + QStringLiteral("/.sorvan/") + name); }

  MediaMetadata picture() const { return {MediaType::image, 640, 480, {}, 1000, QStringLiteral("image/png")}; }

  Asset newAsset(const QString& path, double ageSeconds = 0) const {
    return Asset({}, MediaType::image, path, QStringLiteral("came.png"), picture(), clock->now() - ageSeconds);
  }
  /// An item with a file of its own, saved and registered.
  AssetRef addAsset(const QString& name, double ageSeconds = 0) {
    const QString path = QStringLiteral("Inbox/generated/") + name;
    folder.write(QStringLiteral("work/") + path, name.toUtf8());
    const AssetRef asset = store.context().insert(newAsset(path, ageSeconds));
    store.save(LibraryTables::none);
    store.registerRecords({{asset}, {}, {}, {}});
    return asset;
  }
  JobRef addJob(const GenerationRequest& request, const QString& status = jobStatus::queued) {
    GenerationJob job({}, request, clock->now());
    job.status = status;
    const JobRef ref = store.context().insert(std::move(job));
    store.save(LibraryTables::jobs);
    return ref;
  }

  /// Makes every later write of one kind on one table fail, as a full disk would.
  void failWrites(const char* operation, const char* table) const {
    platform::Database database(files().database(), platform::DatabaseOpening::ReadWrite);
    database.execute(QStringLiteral("CREATE TRIGGER failing_%1_%2 BEFORE %1 ON %2 "
                                    "BEGIN SELECT RAISE(ABORT, 'disk is full'); END")
                         .arg(QLatin1StringView(operation), QLatin1StringView(table)));
  }
  void allowWrites(const char* operation, const char* table) const {
    platform::Database database(files().database(), platform::DatabaseOpening::ReadWrite);
    database.execute(
        QStringLiteral("DROP TRIGGER failing_%1_%2").arg(QLatin1StringView(operation), QLatin1StringView(table)));
  }
};

}  // namespace sorvan::test
