// The one way to a SQLite file.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "base/sorvan_error.h"
#include "platform/room.h"

struct sqlite3;
struct sqlite3_stmt;
namespace SQLite {
class Database;
}

namespace sorvan::platform {

// A failure of the database; `code` is SQLite's extended result code.
class DatabaseError final : public SorvanError {
 public:
  DatabaseError(int code, const QString& message) : SorvanError(message), resultCode(code) {}
  int code() const noexcept { return resultCode; }

 private:
  int resultCode;
};

enum class DatabaseOpening {
  // Made when absent; WAL and synchronous FULL are set and read back.
  ReadWrite,
  // Must exist; nothing is written, not even the journal mode.
  ReadOnly,
};

// One value of a row, borrowed: valid until the statement's next step.
class Row {
 public:
  explicit Row(sqlite3_stmt* prepared) : statement(prepared) {}
  bool isNull(int column) const;
  bool flag(int column) const { return integer(column) != 0; }
  qint64 integer(int column) const;
  double real(int column) const;
  QString text(int column) const;
  QByteArray blob(int column) const;
  // Empty when the column holds NULL.
  std::optional<QString> optionalText(int column) const;
  std::optional<double> optionalReal(int column) const;
  std::optional<qint64> optionalInteger(int column) const;
  int columnCount() const;

 private:
  sqlite3_stmt* statement;
};

// A prepared statement, handed out by `Database::statement` reset and without bindings. Parameters count from 1,
// columns from 0. Text and blobs are copied when they are bound. Every call throws DatabaseError.
class Statement {
 public:
  Statement(SQLite::Database& database, const char* sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  Statement& bind(int parameter, qint64 value);
  Statement& bind(int parameter, int value) { return bind(parameter, static_cast<qint64>(value)); }
  Statement& bind(int parameter, bool value) { return bind(parameter, static_cast<qint64>(value)); }
  Statement& bind(int parameter, double value);
  Statement& bind(int parameter, const QString& value);  // a null QString is the empty text, not NULL
  Statement& bind(int parameter, const QByteArray& value);
  Statement& bindNull(int parameter);
  template <class T>
  Statement& bind(int parameter, const std::optional<T>& value) {
    return value ? bind(parameter, *value) : bindNull(parameter);
  }

  // True when there is a row; false at the end, and the statement is reset then.
  bool step();
  // Steps to the end, and resets. The number of rows changed by an insert, update or delete.
  int run();
  // For each row; the statement is reset afterwards, also when `visit` throws.
  void forEach(const std::function<void(const Row&)>& visit);
  Row row() const { return Row(prepared); }
  void reset();

 private:
  void check(int result) const;

  sqlite3* connection = nullptr;
  sqlite3_stmt* prepared = nullptr;
};

// Undoes the transaction that a crash cut off in a database without a write-ahead log: until somebody who may write has
// done so, nobody can read it. Waits at most `patience` for other connections. Throws DatabaseError. Does nothing when there
// is none, and changes nothing else.
void undoCutOffTransaction(const QString& file, std::chrono::milliseconds patience);

// Thread: one at a time. Every call throws DatabaseError, whose message is "{file} could not be {verb}: {reason}".
// Nothing else in the process may open or close the same file: that would drop SQLite's locks.
class Database {
 public:
  Database(const QString& path, DatabaseOpening opening);
  // Closes; the write-ahead log is checkpointed into the file when this is its last connection.
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  const QString& path() const { return filePath; }
  // How long a call waits for a lock that another connection holds, ten seconds unless it is set; then it throws
  // DatabaseError with SQLITE_BUSY.
  void setPatience(std::chrono::milliseconds longest);
  // Runs one or more statements without results.
  void execute(const QString& sql);
  // Prepared once for each text and kept. One user at a time for each text.
  Statement& statement(const char* sql);
  // The first column of the first row, as a number; zero without a row.
  qint64 number(const char* sql);
  QString text(const char* sql);

  int userVersion();
  void setUserVersion(int version);
  // Empty when `PRAGMA integrity_check` says ok; else its complaints.
  QStringList integrityProblems();
  // `PRAGMA quick_check`, likewise.
  QStringList quickProblems();
  QStringList tables();
  QStringList columns(const QString& table);
  bool hasTable(const QString& name);

  // An online copy into a file that must not exist; on the disk when it returns. Throws DatabaseError with SQLITE_BUSY
  // when no page could be read for as long as the patience lasts. Long: call it on a connection of its own on the pool.
  void backUpTo(const QString& target);

  // For what has no wrapper here.
  sqlite3* handle() const;

 private:
  friend class Transaction;
  void requireDurability();
  void run(const char* sql);
  QStringList firstColumn(const char* sql);

  QString filePath;
  // Another connection of ours, a backup for one, may hold the file for a moment.
  std::chrono::milliseconds patience{10'000};
  std::unique_ptr<SQLite::Database> database;
  std::unordered_map<std::string, std::unique_ptr<Statement>> statements;
};

// BEGIN IMMEDIATE until `commit`; rolled back at the end of the scope without it. After a commit that threw nothing was
// written.
class Transaction {
 public:
  explicit Transaction(Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  // The rows are on the disk when it returns.
  void commit();

 private:
  Database& database;
  bool open = true;
};

}  // namespace sorvan::platform
