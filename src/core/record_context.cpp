#include "core/record_context.h"

#include <QThread>
#include <future>

#include "base/planted_bug.h"
#include "core/record_table.h"
#include "core/texts.h"

namespace sorvan::core {

RowReader::RowReader(Database& database, const QByteArray& sql) : database_(database) {
  const int result = sqlite3_prepare_v2(database.handle(), sql.constData(), -1, &statement_, nullptr);
  if (result != SQLITE_OK) fail(result);
}

RowReader::~RowReader() { sqlite3_finalize(statement_); }

bool RowReader::step() {
  const int result = sqlite3_step(statement_);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) fail(result);
  return false;
}

void RowReader::fail(int result) const {
  const QString reason = QString::fromUtf8(sqlite3_errmsg(database_.handle()));
  throw DatabaseError(result, QStringLiteral("library.store could not be read: %1").arg(reason));
}

namespace {
/// From so many rows on a second thread is worth its connection.
constexpr qint64 manyRows = 4'000;
}  // namespace

struct RecordContext::Tables {
  explicit Tables(const QString& databaseFile)
      : file(databaseFile), database(databaseFile, DatabaseOpening::ReadWrite) {}

  /// Of all tables this one has the most in it. Whoever reads the items of a large library reads it next, so it is read
  /// meanwhile, by a thread with a connection of its own. Until it is awaited the table belongs to that thread.
  void readGenerationsAhead(qint64 version) {
    RecordTable<Generation>& table = std::get<RecordTable<Generation>>(all);
    if (ahead.valid() || table.wasRead() || database.number("SELECT max(rowid) FROM Generation") < manyRows) return;
    ahead = std::async(std::launch::async, [this, &table, version] {
      Database own(file, DatabaseOpening::ReadOnly);
      table.readAs(own, version);
    });
  }
  void awaitGenerations() {
    if (!ahead.valid()) return;
    try {
      ahead.get();
    } catch (const std::exception&) {
      // The table counts as not read, so the fetch that follows reads it here and tells what is wrong.
    }
  }

  QString file;
  Database database;
  std::tuple<RecordTable<Project>, RecordTable<Asset>, RecordTable<Generation>, RecordTable<AssetRelationship>,
             RecordTable<ReferenceAsset>, RecordTable<GenerationJob>, RecordTable<ContactSheet>,
             RecordTable<SavedReference>, RecordTable<ClipSequence>>
      all;

  std::future<void> ahead;

  template <class R>
  RecordTable<R>& of() {
    if constexpr (std::is_same_v<R, Generation>) awaitGenerations();
    return std::get<RecordTable<R>>(all);
  }
  template <class Visit>
  void forEach(Visit visit) {
    awaitGenerations();
    std::apply([&](auto&... table) { (visit(table), ...); }, all);
  }
};

namespace {

template <class R>
void prepareTable(Database& database, RecordTable<R>&) {
  RecordSql<R>::prepare(database);
}

void assertMainThread() {
  invariant(!QCoreApplication::instance() || QThread::currentThread() == QCoreApplication::instance()->thread(),
            "records belong to the main thread");
}

}  // namespace

RecordContext::RecordContext(const QString& databaseFile) : tables_(std::make_unique<Tables>(databaseFile)) {
  if (tables_->database.userVersion() > schemaVersion) throw SorvanError(texts::newerVersion());
  Transaction transaction(tables_->database);
  tables_->forEach([this](auto& table) { prepareTable(tables_->database, table); });
  if (tables_->database.userVersion() != schemaVersion) tables_->database.setUserVersion(schemaVersion);
  transaction.commit();
}

RecordContext::~RecordContext() = default;

template <class R>
Ref<R> RecordContext::insert(R record) {
  assertMainThread();
  return tables_->of<R>().insert(std::move(record));
}

template <class R>
R& RecordContext::edit(const Ref<R>& record) {
  assertMainThread();
  return tables_->of<R>().edit(record);
}

template <class R>
void RecordContext::remove(const Ref<R>& record) {
  assertMainThread();
  tables_->of<R>().remove(record);
}

template <class R>
Ref<R> RecordContext::find(const QUuid& id) const {
  return tables_->of<R>().find(id);
}

template <class R>
std::vector<Ref<R>> RecordContext::fetch() {
  assertMainThread();
  // Counts what other connections have committed, and nothing of our own.
  const qint64 version = tables_->database.number("PRAGMA data_version");
  if constexpr (std::is_same_v<R, Asset>) tables_->readGenerationsAhead(version);
  return tables_->of<R>().fetch(tables_->database, version);
}

template <class R>
std::vector<Ref<R>> RecordContext::edited() const {
  return tables_->of<R>().edited();
}

bool RecordContext::hasChanges() const {
  bool changes = false;
  tables_->forEach([&](auto& table) { changes = changes || table.hasChanges(); });
  return changes;
}

void RecordContext::save() {
  assertMainThread();
  if (!hasChanges()) return;
  if (planted("submit-before-save")) {
    static int skipped = 0;
    if (skipped++ < 2) return;
  }
  // 1. Everything in one transaction, so that a crash leaves all of it or nothing.
  Transaction transaction(tables_->database);
  tables_->forEach([this](auto& table) { table.write(tables_->database); });
  transaction.commit();
  // 2. Only what is on disk stops being a change.
  tables_->forEach([](auto& table) { table.settle(); });
}

void RecordContext::rollback() {
  assertMainThread();
  tables_->forEach([](auto& table) { table.rollback(); });
}

#define SORVAN_INSTANTIATE(R)                                 \
  template Ref<R> RecordContext::insert<R>(R);                \
  template R& RecordContext::edit<R>(const Ref<R>&);          \
  template void RecordContext::remove<R>(const Ref<R>&);      \
  template Ref<R> RecordContext::find<R>(const QUuid&) const; \
  template std::vector<Ref<R>> RecordContext::fetch<R>();     \
  template std::vector<Ref<R>> RecordContext::edited<R>() const;

SORVAN_INSTANTIATE(Project)
SORVAN_INSTANTIATE(Asset)
SORVAN_INSTANTIATE(Generation)
SORVAN_INSTANTIATE(AssetRelationship)
SORVAN_INSTANTIATE(ReferenceAsset)
SORVAN_INSTANTIATE(GenerationJob)
SORVAN_INSTANTIATE(ContactSheet)
SORVAN_INSTANTIATE(SavedReference)
SORVAN_INSTANTIATE(ClipSequence)
#undef SORVAN_INSTANTIATE

}  // namespace sorvan::core
