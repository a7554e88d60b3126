// How one field of a record becomes a column, and is bound and read. Only the record table includes this.
#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QString>
#include <QUuid>
#include <array>
#include <optional>
#include <vector>

#include "base/ids.h"
#include "base/instant.h"
#include "base/json.h"
#include "core/room.h"
#include "platform/sqlite.h"

namespace sorvan::core {

/// The UUID in 36 characters of text, any case; a null UUID for anything else.
QUuid uuidFromUtf8(const char* text, int bytes);

/// Texts of one column that were read before, so that the few words which fill a column are held once and not once for
/// each row. A column whose texts rarely repeat stops being looked up.
class SharedTexts {
 public:
  QString read(const char* text, int bytes);

 private:
  static constexpr std::size_t slotCount = 64;
  static constexpr int longestShared = 48;
  struct Slot {
    QByteArray utf8;
    QString text;
  };
  std::array<Slot, slotCount> slots_;
  int hits_ = 0;
  int misses_ = 0;
};

template <class Value>
struct Column;

template <>
struct Column<QUuid> {
  static QString definition(const QUuid&) { return QStringLiteral("TEXT NOT NULL DEFAULT ''"); }
  static void bind(Statement& statement, int index, const QUuid& value) { statement.bind(index, uuidText(value)); }
  static void read(sqlite3_stmt* row, int index, QUuid& value, SharedTexts&) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
    value = uuidFromUtf8(text, sqlite3_column_bytes(row, index));
  }
};

template <>
struct Column<QString> {
  static QString definition(const QString& initial) {
    return QStringLiteral("TEXT NOT NULL DEFAULT '%1'").arg(initial);
  }
  static void bind(Statement& statement, int index, const QString& value) { statement.bind(index, value); }
  static void read(sqlite3_stmt* row, int index, QString& value, SharedTexts& shared) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
    value = shared.read(text, sqlite3_column_bytes(row, index));
  }
};

template <>
struct Column<QByteArray> {
  static QString definition(const QByteArray& initial) {
    return QStringLiteral("BLOB NOT NULL DEFAULT x'%1'").arg(QString::fromLatin1(initial.toHex()));
  }
  static void bind(Statement& statement, int index, const QByteArray& value) { statement.bind(index, value); }
  static void read(sqlite3_stmt* row, int index, QByteArray& value, SharedTexts&) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, index));
    value = QByteArray(bytes, sqlite3_column_bytes(row, index));
  }
};

template <>
struct Column<Instant> {
  static QString definition(Instant) { return QStringLiteral("REAL NOT NULL DEFAULT 0"); }
  static void bind(Statement& statement, int index, Instant value) { statement.bind(index, value.seconds); }
  static void read(sqlite3_stmt* row, int index, Instant& value, SharedTexts&) {
    value.seconds = sqlite3_column_double(row, index);
  }
};

template <>
struct Column<double> {
  static QString definition(double initial) {
    return QStringLiteral("REAL NOT NULL DEFAULT %1").arg(QString::number(initial));
  }
  static void bind(Statement& statement, int index, double value) { statement.bind(index, value); }
  static void read(sqlite3_stmt* row, int index, double& value, SharedTexts&) {
    value = sqlite3_column_double(row, index);
  }
};

/// Whole numbers and flags.
template <class Value>
struct IntegerColumn {
  static QString definition(Value initial) {
    return QStringLiteral("INTEGER NOT NULL DEFAULT %1").arg(static_cast<qint64>(initial));
  }
  static void bind(Statement& statement, int index, Value value) { statement.bind(index, static_cast<qint64>(value)); }
  static void read(sqlite3_stmt* row, int index, Value& value, SharedTexts&) {
    value = static_cast<Value>(sqlite3_column_int64(row, index));
  }
};
template <>
struct Column<int> : IntegerColumn<int> {};
template <>
struct Column<std::int64_t> : IntegerColumn<std::int64_t> {};
template <>
struct Column<bool> : IntegerColumn<bool> {};

/// Lists of ids are one text, a JSON array in their order.
template <>
struct Column<std::vector<QUuid>> {
  static QString definition(const std::vector<QUuid>&) { return QStringLiteral("TEXT NOT NULL DEFAULT '[]'"); }
  static void bind(Statement& statement, int index, const std::vector<QUuid>& value) {
    statement.bind(index, QString::fromLatin1(encodeJson(value)));
  }
  static void read(sqlite3_stmt* row, int index, std::vector<QUuid>& value, SharedTexts&);
};

template <class Value>
struct Column<std::optional<Value>> {
  static QString definition(const std::optional<Value>&) {
    return Column<Value>::definition(Value{}).section(u' ', 0, 0);
  }
  static void bind(Statement& statement, int index, const std::optional<Value>& value) {
    if (value)
      Column<Value>::bind(statement, index, *value);
    else
      statement.bindNull(index);
  }
  static void read(sqlite3_stmt* row, int index, std::optional<Value>& value, SharedTexts& shared) {
    if (sqlite3_column_type(row, index) == SQLITE_NULL) {
      value.reset();
      return;
    }
    Column<Value>::read(row, index, value.emplace(), shared);
  }
};

}  // namespace sorvan::core
