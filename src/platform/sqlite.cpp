#include "platform/sqlite.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include "base/durable_file.h"
#include "base/planted_bug.h"
#include "platform/texts.h"

namespace sorvan::platform {

static DatabaseError failure(const QString& path, const QString& verb, int code, const QString& reason) {
  return DatabaseError(code, texts::databaseFailed(QFileInfo(path).fileName(), verb, reason));
}

static DatabaseError failure(const QString& path, const QString& verb, const SQLite::Exception& problem) {
  return failure(path, verb, problem.getExtendedErrorCode(), QString::fromUtf8(problem.what()));
}

void undoCutOffTransaction(const QString& file, std::chrono::milliseconds patience) {
  if (!QFileInfo::exists(file + QStringLiteral("-journal"))) return;
  try {
    SQLite::Database database(QFile::encodeName(file).toStdString(), SQLite::OPEN_READWRITE,
                              static_cast<int>(patience.count()));
    // The first read of whoever may write plays the journal back.
    Statement(database, "SELECT count(*) FROM sqlite_master").step();
  } catch (const SQLite::Exception& problem) {
    throw failure(file, QStringLiteral("opened"), problem);
  }
}

Database::Database(const QString& file, DatabaseOpening opening) : filePath(file) {
  // One thread at a time uses a connection, so it takes no lock of its own for each column that is read.
  const int access =
      opening == DatabaseOpening::ReadOnly ? SQLite::OPEN_READONLY : SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE;
  const int flags = access | SQLite::OPEN_NOMUTEX;
  try {
    database = std::make_unique<SQLite::Database>(QFile::encodeName(file).toStdString(), flags,
                                                  static_cast<int>(patience.count()));
  } catch (const SQLite::Exception& problem) {
    throw failure(filePath, QStringLiteral("opened"), problem);
  }
  sqlite3_extended_result_codes(database->getHandle(), 1);
  // A schema from elsewhere must not call functions with effects.
  execute(QStringLiteral("PRAGMA trusted_schema=OFF"));
  if (opening == DatabaseOpening::ReadWrite) requireDurability();
}

Database::~Database() { statements.clear(); }

// In WAL mode anything below FULL loses committed rows at a power cut, so what was asked for is read back.
void Database::requireDurability() {
  const QString journal = text("PRAGMA journal_mode=WAL");
  if (planted("synchronous-normal")) return execute(QStringLiteral("PRAGMA synchronous=NORMAL"));
  execute(QStringLiteral("PRAGMA synchronous=FULL"));
  const qint64 synchronous = number("PRAGMA synchronous");
  constexpr qint64 full = 2;
  if (journal.compare(QStringLiteral("wal"), Qt::CaseInsensitive) == 0 && synchronous == full) return;
  throw failure(filePath, QStringLiteral("opened"), SQLITE_ERROR, texts::databaseNotDurable());
}

void Database::setPatience(std::chrono::milliseconds longest) {
  patience = longest;
  sqlite3_busy_timeout(handle(), static_cast<int>(longest.count()));
}

sqlite3* Database::handle() const { return database->getHandle(); }

void Database::run(const char* sql) {
  const int result = sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr);
  if (result != SQLITE_OK)
    throw failure(filePath, QStringLiteral("saved"), result, QString::fromUtf8(sqlite3_errmsg(handle())));
}

void Database::execute(const QString& sql) { run(sql.toUtf8().constData()); }

Statement& Database::statement(const char* sql) {
  std::unique_ptr<Statement>& kept = statements[sql];
  if (!kept) kept = std::make_unique<Statement>(*database, sql);
  kept->reset();
  return *kept;
}

qint64 Database::number(const char* sql) {
  Statement query(*database, sql);
  return query.step() ? query.row().integer(0) : 0;
}

QString Database::text(const char* sql) {
  Statement query(*database, sql);
  return query.step() ? query.row().text(0) : QString();
}

QStringList Database::firstColumn(const char* sql) {
  QStringList found;
  Statement(*database, sql).forEach([&](const Row& row) { found.append(row.text(0)); });
  return found;
}

int Database::userVersion() { return static_cast<int>(number("PRAGMA user_version")); }

void Database::setUserVersion(int version) { execute(QStringLiteral("PRAGMA user_version=%1").arg(version)); }

static QStringList complaints(QStringList answer) {
  return answer == QStringList{QStringLiteral("ok")} ? QStringList() : answer;
}

QStringList Database::integrityProblems() { return complaints(firstColumn("PRAGMA integrity_check")); }

QStringList Database::quickProblems() { return complaints(firstColumn("PRAGMA quick_check")); }

QStringList Database::tables() {
  return firstColumn("SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite_%' ORDER BY name");
}

QStringList Database::columns(const QString& table) {
  Statement query(*database, "SELECT name FROM pragma_table_info(?1) ORDER BY cid");
  QStringList found;
  query.bind(1, table).forEach([&](const Row& row) { found.append(row.text(0)); });
  return found;
}

bool Database::hasTable(const QString& name) {
  Statement query(*database, "SELECT 1 FROM sqlite_master WHERE type='table' AND name=?1");
  return query.bind(1, name).step();
}

// Copies while others may write; SQLite starts the copy again by itself when they do.
static void copyPages(SQLite::Database& from, const QString& target, std::chrono::milliseconds patience) {
  SQLite::Database to(QFile::encodeName(target).toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE,
                      static_cast<int>(patience.count()));
  sqlite3_exec(to.getHandle(), "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
  SQLite::Backup backup(to, from);
  constexpr int pagesAtOnce = 4096;
  QElapsedTimer waiting;
  waiting.start();
  for (;;) {
    const int result = backup.executeStep(pagesAtOnce);
    if (result == SQLITE_DONE) return;
    if (result == SQLITE_OK) {
      waiting.restart();
      continue;
    }
    if (waiting.hasExpired(patience.count()))
      throw failure(target, QStringLiteral("written"), result, QString::fromUtf8(sqlite3_errstr(result)));
    sqlite3_sleep(20);
  }
}

// Best effort: what failed before is the failure to tell.
static void removeHalfCopy(const QString& target) {
  FileLayer::current().remove(QFile::encodeName(target));
  FileLayer::current().remove(QFile::encodeName(target + QStringLiteral("-journal")));
}

void Database::backUpTo(const QString& target) {
  if (QFileInfo::exists(target))
    throw failure(target, QStringLiteral("written"), SQLITE_CANTOPEN, systemReason(EEXIST));
  try {
    copyPages(*database, target, patience);
    syncFile(target);
    syncFolder(QFileInfo(target).path());
  } catch (const SQLite::Exception& problem) {
    removeHalfCopy(target);
    throw failure(target, QStringLiteral("written"), problem);
  } catch (...) {
    removeHalfCopy(target);
    throw;
  }
}

Transaction::Transaction(Database& target) : database(target) { database.run("BEGIN IMMEDIATE"); }

Transaction::~Transaction() {
  // After some failures, a full disk for one, SQLite has rolled back already.
  if (open && sqlite3_get_autocommit(database.handle()) == 0)
    sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
  database.run("COMMIT");
  open = false;
}

}  // namespace sorvan::platform
