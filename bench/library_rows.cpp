// Opening a large workspace, and changing one thing in it.
#include <sqlite3.h>

#include "base/clock.h"
#include "base/ids.h"
#include "base/settings.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "core/library_store.h"
#include "core/small_edits.h"
#include "core/workspace_opening.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;

constexpr int manyItems = 100'000;
constexpr int fewItems = 1'000;
constexpr unsigned seed = 7;
/// One save waits for the disk, whose answers scatter: a run is the mean of a few.
constexpr int changesInARun = 8;

QString manyFolder(const QDir& data) { return data.filePath(QStringLiteral("many")); }
QString fewFolder(const QDir& data) { return data.filePath(QStringLiteral("few")); }

std::unique_ptr<LibraryStore> newStore() {
  return std::make_unique<LibraryStore>(
      LibraryStore::Services{std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}});
}

std::shared_ptr<LibraryStore> openStore(const QString& folder) {
  std::shared_ptr<LibraryStore> store = newStore();
  openWorkspace(*store, folder, Remember::no);
  return store;
}

// ---- The least that opening could take: stepping every row and copying each column into a plain struct.

struct PlainAsset {
  std::string id, projectID, mediaType, localFilePath, thumbnailFilePath, originalFilename;
  double createdAt = 0, importedAt = 0;
  int width = 0, height = 0;
  double duration = 0;
  long long fileSize = 0;
  std::string mimeType;
  bool favorite = false;
  int rating = 0;
  std::string notes;
  double deletedAt = 0;
  std::string status, sourceType, checksum;
};

struct PlainGeneration {
  std::string id, assetID, jobID, provider, model, prompt, negativePrompt, parameters, recipe, copiedFrom;
  long long seed = 0;
  double estimatedCost = 0, createdAt = 0, duration = 0;
  std::string status, providerRequestID;
};

struct PlainJob {
  std::string id, projectID, request;
  double createdAt = 0, finishedAt = 0;
  std::string status, errorMessage, providerRequestID, handle, detail;
  bool saveOriginal = false;
};

struct PlainEdge {
  std::string id, parent, child, type;
};

class PlainReader {
 public:
  explicit PlainReader(const QString& file) {
    if (sqlite3_open_v2(QFile::encodeName(file), &database_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
      throw std::runtime_error("the library could not be opened");
  }
  ~PlainReader() { sqlite3_close(database_); }
  PlainReader(const PlainReader&) = delete;
  PlainReader& operator=(const PlainReader&) = delete;

  template <class Plain, class Make>
  std::vector<Plain> all(const char* sql, Make make) {
    std::vector<Plain> rows;
    sqlite3_prepare_v2(database_, sql, -1, &row_, nullptr);
    while (sqlite3_step(row_) == SQLITE_ROW) rows.push_back(make());
    sqlite3_finalize(row_);
    return rows;
  }
  std::string text(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row_, column));
    return {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_column_bytes(row_, column))};
  }
  double real(int column) const { return sqlite3_column_double(row_, column); }
  long long whole(int column) const { return sqlite3_column_int64(row_, column); }
  int small(int column) const { return sqlite3_column_int(row_, column); }
  bool flag(int column) const { return sqlite3_column_int(row_, column) != 0; }

 private:
  sqlite3* database_ = nullptr;
  sqlite3_stmt* row_ = nullptr;
};

void readPlainly(const QString& folder) {
  PlainReader in(WorkspaceFiles(folder).database());
  const auto assets = in.all<PlainAsset>("SELECT * FROM Asset ORDER BY rowid", [&] {
    return PlainAsset{in.text(0),   in.text(1),  in.text(2),  in.text(3),  in.text(4),   in.text(5),  in.real(6),
                      in.real(7),   in.small(8), in.small(9), in.real(10), in.whole(11), in.text(12), in.flag(13),
                      in.small(14), in.text(15), in.real(16), in.text(17), in.text(18),  in.text(19)};
  });
  const auto generations = in.all<PlainGeneration>("SELECT * FROM Generation ORDER BY rowid", [&] {
    return PlainGeneration{in.text(0),  in.text(1),  in.text(2),  in.text(3), in.text(4),   in.text(5),
                           in.text(6),  in.text(7),  in.text(8),  in.text(9), in.whole(10), in.real(11),
                           in.real(12), in.real(13), in.text(14), in.text(15)};
  });
  const auto jobs = in.all<PlainJob>("SELECT * FROM GenerationJob ORDER BY rowid", [&] {
    return PlainJob{in.text(0), in.text(1), in.text(2), in.real(3), in.real(4), in.text(5),
                    in.text(6), in.text(7), in.text(8), in.text(9), in.flag(10)};
  });
  const auto edges = in.all<PlainEdge>("SELECT * FROM AssetRelationship ORDER BY rowid", [&] {
    return PlainEdge{in.text(0), in.text(1), in.text(2), in.text(3)};
  });
  if (assets.size() != manyItems || generations.size() != manyItems || jobs.empty() || edges.empty())
    throw std::runtime_error("the library is not the one that was made");
}

// ---- open-100k

void makeMany(const QDir& data) { makeLibrary(manyFolder(data), libraryOf(manyItems), seed); }

Contestants opening(const QDir& data) {
  const QString folder = manyFolder(data);
  return {.ours =
              [=] {
                const std::unique_ptr<LibraryStore> store = newStore();
                const double seconds = timed([&] { openWorkspace(*store, folder, Remember::no); });
                if (store->assetRows().size() != manyItems) throw std::runtime_error("not all items were opened");
                return std::optional(seconds);
              },
          .peer = {},
          .limit = [=] { return std::optional(timed([&] { readPlainly(folder); })); }};
}

// ---- save-one and register-one: ours with many items, the limit with few

void makeBoth(const QDir& data) {
  makeMany(data);
  makeLibrary(fewFolder(data), libraryOf(fewItems), seed);
}

/// Changes the rating of items from everywhere in the library, each to another value than it has.
std::optional<double> saveRatings(LibraryStore& store, int& round) {
  ++round;
  const double seconds = timed([&] {
    for (int change = 0; change < changesInARun; ++change) {
      const std::size_t place = static_cast<std::size_t>(change) * store.assets().size() / changesInARun;
      const AssetRef asset = store.assets()[place];
      setRating(store, asset, asset->rating.value_or(0) % 5 + 1);
    }
  });
  if (store.error()) throw std::runtime_error(store.error()->toStdString());
  return seconds / changesInARun;
}

std::optional<double> registerItems(LibraryStore& store, int& round) {
  const std::size_t before = store.assets().size();
  const double seconds = timed([&] {
    for (int change = 0; change < changesInARun; ++change) {
      const QString path = QStringLiteral("Inbox/generated/new-%1.png").arg(++round);
      const AssetRef asset = store.context().insert(Asset({}, MediaType::image, path, path, {}, store.now()));
      Generation made;
      made.id = newUuid();
      made.assetID = asset->id;
      made.jobID = newUuid();
      const GenerationRef generation = store.context().insert(std::move(made));
      store.save(LibraryTables::none);
      store.registerRecords({{asset}, {generation}, {}, {}});
    }
  });
  if (store.assets().size() != before + changesInARun) throw std::runtime_error("not all items were registered");
  return seconds / changesInARun;
}

template <class Change>
Contestants changing(const QDir& data, Change change) {
  const auto many = openStore(manyFolder(data));
  const auto few = openStore(fewFolder(data));
  const auto round = std::make_shared<int>(0);
  return {.ours = [=] { return change(*many, *round); }, .peer = {}, .limit = [=] { return change(*few, *round); }};
}

const RegisterRow openRow{{.name = QStringLiteral("open-100k"), .make = makeMany, .measure = opening}};
const RegisterRow saveRow{{.name = QStringLiteral("save-one"), .make = makeBoth, .measure = [](const QDir& data) {
                             return changing(data, saveRatings);
                           }}};
const RegisterRow registerRow{{.name = QStringLiteral("register-one"),
                               .make = makeBoth,
                               .measure = [](const QDir& data) { return changing(data, registerItems); }}};

}  // namespace
}  // namespace sorvan::bench
