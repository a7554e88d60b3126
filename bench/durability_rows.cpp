// What honesty costs: an opening that marks cut-off jobs, and a save that is on the disk when it returns.
#include <sqlite3.h>

#include "base/clock.h"
#include "base/settings.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"
#include "platform/sqlite.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;

constexpr int interruptedJobs = 1'000;
constexpr int items = 10'000;
constexpr unsigned seed = 11;
/// One commit waits for the disk, whose answers scatter: a run is the mean of a few.
constexpr int commitsInARun = 16;

QString libraryFolder(const QDir& data) { return data.filePath(QStringLiteral("library")); }

std::unique_ptr<LibraryStore> newStore() {
  return std::make_unique<LibraryStore>(
      LibraryStore::Services{std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}});
}

// ---- open-interrupted: the same library, whose jobs were cut off or have finished

void makeJobs(const QDir& data) { makeLibrary(libraryFolder(data), {items, interruptedJobs, items / 2}, seed); }

/// Puts all jobs into one state, closes the library and measures how long it takes to open.
std::optional<double> openWith(const QString& folder, const QString& status) {
  {
    platform::Database database(WorkspaceFiles(folder).database(), platform::DatabaseOpening::ReadWrite);
    database.execute(QStringLiteral("UPDATE GenerationJob SET status='%1', detail='', errorMessage=NULL").arg(status));
  }
  const std::unique_ptr<LibraryStore> store = newStore();
  const double seconds = timed([&] { openWorkspace(*store, folder, Remember::no); });
  const QString expected = status == jobStatus::generating ? jobStatus::failed : status;
  if (store->error() || store->jobs().size() != interruptedJobs || store->jobs()[0]->status != expected)
    throw std::runtime_error("the jobs are not in the state that opening leaves them in");
  return seconds;
}

Contestants openingInterrupted(const QDir& data) {
  const QString folder = libraryFolder(data);
  return {.ours = [=] { return openWith(folder, jobStatus::generating); },
          .peer = {},
          .limit = [=] { return openWith(folder, jobStatus::complete); }};
}

// ---- durable-commit: a saved rating, against the bare statement in a transaction with full syncing

void makeItems(const QDir& data) { makeLibrary(libraryFolder(data), libraryOf(interruptedJobs), seed); }

std::optional<double> saveRatings(LibraryStore& store, int& round) {
  ++round;
  const double seconds = timed([&] {
    for (int commit = 0; commit < commitsInARun; ++commit) {
      store.context().edit(store.assets()[static_cast<std::size_t>(commit)]).rating = round % 5 + 1;
      store.save(LibraryTables::none);
    }
  });
  return seconds / commitsInARun;
}

/// A connection as bare as it can be while its commits are durable.
class BareConnection {
 public:
  explicit BareConnection(const QString& file) {
    if (sqlite3_open(QFile::encodeName(file), &database_) != SQLITE_OK) fail();
    run("PRAGMA journal_mode=WAL");
    run("PRAGMA synchronous=FULL");
    run("CREATE TABLE item (id INTEGER PRIMARY KEY, rating INTEGER)");
    for (int item = 0; item < commitsInARun; ++item) run("INSERT INTO item (rating) VALUES (0)");
    const char* const sql = "UPDATE item SET rating = ?1 WHERE id = ?2";
    if (sqlite3_prepare_v2(database_, sql, -1, &update_, nullptr) != SQLITE_OK) fail();
  }
  ~BareConnection() {
    sqlite3_finalize(update_);
    sqlite3_close(database_);
  }
  BareConnection(const BareConnection&) = delete;
  BareConnection& operator=(const BareConnection&) = delete;

  void commit(int item, int rating) {
    sqlite3_bind_int(update_, 1, rating);
    sqlite3_bind_int(update_, 2, item);
    if (sqlite3_step(update_) != SQLITE_DONE) fail();
    sqlite3_reset(update_);
  }

 private:
  void run(const char* sql) {
    if (sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail();
  }
  [[noreturn]] void fail() const { throw std::runtime_error(sqlite3_errmsg(database_)); }

  sqlite3* database_ = nullptr;
  sqlite3_stmt* update_ = nullptr;
};

Contestants committing(const QDir& data) {
  std::shared_ptr<LibraryStore> store = newStore();
  openWorkspace(*store, libraryFolder(data), Remember::no);
  const auto bare = std::make_shared<BareConnection>(data.filePath(QStringLiteral("bare.store")));
  const auto round = std::make_shared<int>(0);
  return {.ours = [=] { return saveRatings(*store, *round); },
          .peer = {},
          .limit =
              [=] {
                ++*round;
                const double seconds = timed([&] {
                  for (int item = 1; item <= commitsInARun; ++item) bare->commit(item, *round % 5 + 1);
                });
                return std::optional(seconds / commitsInARun);
              }};
}

const RegisterRow openingRow{
    {.name = QStringLiteral("open-interrupted"), .make = makeJobs, .measure = openingInterrupted}};
const RegisterRow commitRow{{.name = QStringLiteral("durable-commit"), .make = makeItems, .measure = committing}};

}  // namespace
}  // namespace sorvan::bench
