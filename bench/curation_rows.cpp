// Taking back a large edit, and one item to Trash in a small and in a large library.
#include "base/clock.h"
#include "base/ids.h"
#include "base/settings.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "core/history.h"
#include "core/library_store.h"
#include "core/small_edits.h"
#include "core/workspace_opening.h"
#include "exchange/trash.h"
#include "platform/sqlite.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;

constexpr int manyItems = 100'000;
constexpr int fewItems = 1'000;
constexpr int editedItems = 10'000;
constexpr unsigned seed = 7;
/// One save waits for the disk, whose answers scatter: a run is the mean of a few.
constexpr int changesInARun = 8;

QString manyFolder(const QDir& data) { return data.filePath(QStringLiteral("many")); }
QString otherFolder(const QDir& data) { return data.filePath(QStringLiteral("other")); }

std::shared_ptr<LibraryStore> openStore(const QString& folder) {
  auto store = std::make_shared<LibraryStore>(
      LibraryStore::Services{std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}});
  openWorkspace(*store, folder, Remember::no);
  return store;
}

// ---- undo-10k: the library's own step, against the bare statements in one transaction with full syncing

void makeTwoLarge(const QDir& data) {
  makeLibrary(manyFolder(data), libraryOf(manyItems), seed);
  makeLibrary(otherFolder(data), libraryOf(manyItems), seed);
}

/// Items from everywhere in the library.
std::vector<AssetRef> spreadItems(const LibraryStore& store) {
  std::vector<AssetRef> items;
  for (std::size_t place = 0; place < store.assets().size(); place += manyItems / editedItems)
    items.push_back(store.assets()[place]);
  return items;
}

double undoRating(LibraryStore& store, int stars) {
  const std::vector<AssetRef> items = spreadItems(store);
  const std::optional<int> before = items.front()->rating;
  setRating(store, items, before == stars ? stars - 1 : stars);
  const double seconds = timed([&] { applyHistory(store, HistoryDirection::undo); });
  if (store.error() || items.front()->rating != before) throw std::runtime_error("the rating was not taken back");
  return seconds;
}

double rateBarely(platform::Database& database, const std::vector<QString>& ids, int stars) {
  return timed([&] {
    platform::Transaction transaction(database);
    for (const QString& id : ids) {
      platform::Statement& statement = database.statement("UPDATE Asset SET rating = ? WHERE id = ?");
      statement.bind(1, static_cast<qint64>(stars));
      statement.bind(2, id);
      statement.run();
    }
    transaction.commit();
  });
}

Contestants undoing(const QDir& data) {
  const auto store = openStore(manyFolder(data));
  const auto database = std::make_shared<platform::Database>(WorkspaceFiles(otherFolder(data)).database(),
                                                             platform::DatabaseOpening::ReadWrite);
  const auto ids = std::make_shared<std::vector<QString>>();
  for (const AssetRef& asset : spreadItems(*store)) ids->push_back(uuidText(asset->id));
  const auto round = std::make_shared<int>(0);
  return {.ours = [=] { return std::optional(undoRating(*store, 1 + ++*round % 5)); },
          .peer = {},
          .limit = [=] { return std::optional(rateBarely(*database, *ids, 1 + *round % 5)); }};
}

// ---- trash-1: ours with many items, the limit with few

void makeLargeAndSmall(const QDir& data) {
  makeLibrary(manyFolder(data), libraryOf(manyItems), seed);
  makeLibrary(otherFolder(data), libraryOf(fewItems), seed);
}

double trashItems(LibraryStore& store, int& round) {
  ++round;
  double seconds = 0;
  for (int change = 0; change < changesInARun; ++change) {
    const std::size_t place =
        (static_cast<std::size_t>(change) * store.assets().size() / changesInARun + static_cast<std::size_t>(round)) %
        store.assets().size();
    const AssetRef asset = store.assets()[place];
    bool done = false;
    seconds += timed([&] { done = exchange::trash(store, {asset}); });
    if (!done || !asset->isTrashed()) throw std::runtime_error("the item is not in Trash");
  }
  return seconds / changesInARun;
}

Contestants trashing(const QDir& data) {
  const auto many = openStore(manyFolder(data));
  const auto few = openStore(otherFolder(data));
  const auto manyRound = std::make_shared<int>(0);
  const auto fewRound = std::make_shared<int>(0);
  return {.ours = [=] { return std::optional(trashItems(*many, *manyRound)); },
          .peer = {},
          .limit = [=] { return std::optional(trashItems(*few, *fewRound)); }};
}

const RegisterRow undoRow{{.name = QStringLiteral("undo-10k"), .make = makeTwoLarge, .measure = undoing}};
const RegisterRow trashRow{{.name = QStringLiteral("trash-1"), .make = makeLargeAndSmall, .measure = trashing}};

}  // namespace
}  // namespace sorvan::bench
