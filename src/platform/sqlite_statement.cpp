#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <QFileInfo>

#include "platform/sqlite.h"
#include "platform/texts.h"

namespace sorvan::platform {

static DatabaseError statementFailure(sqlite3* connection, int code, bool reading) {
  const char* file = sqlite3_db_filename(connection, nullptr);
  const QString name = QFileInfo(QString::fromUtf8(file == nullptr ? "" : file)).fileName();
  const QString verb = reading ? QStringLiteral("read") : QStringLiteral("saved");
  return DatabaseError(code, texts::databaseFailed(name.isEmpty() ? QStringLiteral("The database") : name, verb,
                                                   QString::fromUtf8(sqlite3_errmsg(connection))));
}

Statement::Statement(SQLite::Database& database, const char* sql) : connection(database.getHandle()) {
  const int result = sqlite3_prepare_v3(connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  if (result != SQLITE_OK) throw statementFailure(connection, result, true);
}

Statement::~Statement() { sqlite3_finalize(prepared); }

void Statement::check(int result) const {
  if (result == SQLITE_OK) return;
  throw statementFailure(connection, result, sqlite3_stmt_readonly(prepared) != 0);
}

Statement& Statement::bind(int parameter, qint64 value) {
  check(sqlite3_bind_int64(prepared, parameter, value));
  return *this;
}

Statement& Statement::bind(int parameter, double value) {
  check(sqlite3_bind_double(prepared, parameter, value));
  return *this;
}

Statement& Statement::bind(int parameter, const QString& value) {
  const QByteArray utf8 = value.toUtf8();
  // A null pointer would bind NULL.
  const char* bytes = utf8.isEmpty() ? "" : utf8.constData();
  check(sqlite3_bind_text64(prepared, parameter, bytes, static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT,
                            SQLITE_UTF8));
  return *this;
}

Statement& Statement::bind(int parameter, const QByteArray& value) {
  const char* bytes = value.isEmpty() ? "" : value.constData();
  check(sqlite3_bind_blob64(prepared, parameter, bytes, static_cast<sqlite3_uint64>(value.size()), SQLITE_TRANSIENT));
  return *this;
}

Statement& Statement::bindNull(int parameter) {
  check(sqlite3_bind_null(prepared, parameter));
  return *this;
}

bool Statement::step() {
  const int result = sqlite3_step(prepared);
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) {
    sqlite3_reset(prepared);
    return false;
  }
  // The sentence is taken before the reset, which forgets it.
  const DatabaseError failure = statementFailure(connection, result, sqlite3_stmt_readonly(prepared) != 0);
  sqlite3_reset(prepared);
  throw failure;
}

int Statement::run() {
  while (step()) {
  }
  return sqlite3_changes(connection);
}

void Statement::forEach(const std::function<void(const Row&)>& visit) {
  try {
    while (step()) visit(row());
  } catch (...) {
    sqlite3_reset(prepared);
    throw;
  }
}

void Statement::reset() {
  sqlite3_reset(prepared);
  sqlite3_clear_bindings(prepared);
}

bool Row::isNull(int column) const { return sqlite3_column_type(statement, column) == SQLITE_NULL; }

qint64 Row::integer(int column) const { return sqlite3_column_int64(statement, column); }

double Row::real(int column) const { return sqlite3_column_double(statement, column); }

QString Row::text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return QString::fromUtf8(bytes, sqlite3_column_bytes(statement, column));
}

QByteArray Row::blob(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
  return QByteArray(bytes, sqlite3_column_bytes(statement, column));
}

std::optional<QString> Row::optionalText(int column) const {
  return isNull(column) ? std::nullopt : std::optional(text(column));
}

std::optional<double> Row::optionalReal(int column) const {
  return isNull(column) ? std::nullopt : std::optional(real(column));
}

std::optional<qint64> Row::optionalInteger(int column) const {
  return isNull(column) ? std::nullopt : std::optional(integer(column));
}

int Row::columnCount() const { return sqlite3_column_count(statement); }

}  // namespace sorvan::platform
