// One table of the library database and the records that were read from it. Only the record context includes this.
#pragma once

#include <QHash>
#include <bitset>
#include <memory>
#include <vector>

#include "base/invariant.h"
#include "core/record_columns.h"
#include "core/records.h"

namespace sorvan::core {

/// The name of a record's table. Part of the format on disk.
template <class R>
constexpr const char* tableName = nullptr;
template <>
inline constexpr const char* tableName<Project> = "Project";
template <>
inline constexpr const char* tableName<Asset> = "Asset";
template <>
inline constexpr const char* tableName<Generation> = "Generation";
template <>
inline constexpr const char* tableName<AssetRelationship> = "AssetRelationship";
template <>
inline constexpr const char* tableName<ReferenceAsset> = "ReferenceAsset";
template <>
inline constexpr const char* tableName<GenerationJob> = "GenerationJob";
template <>
inline constexpr const char* tableName<ContactSheet> = "ContactSheet";
template <>
inline constexpr const char* tableName<SavedReference> = "SavedReference";
template <>
inline constexpr const char* tableName<ClipSequence> = "ClipSequence";

template <class R>
inline constexpr std::size_t columnCount =
    boost::mp11::mp_size<boost::describe::describe_members<R, boost::describe::mod_public>>::value;

/// The texts of SQL that follow from a record's description.
template <class R>
class RecordSql {
 public:
  static QStringList columns() {
    QStringList names;
    forEachField<R>([&](const char* name, auto) { names += QString::fromLatin1(name); });
    return names;
  }

  /// Makes the table or adds the columns that it lacks; old rows take the values of a new record.
  static void prepare(Database& database) {
    const QString table = QString::fromLatin1(tableName<R>);
    const QStringList present = database.hasTable(table) ? database.columns(table) : QStringList();
    QStringList definitions;
    const R initial;
    forEachField<R>([&](const char* field, auto member) {
      using Value = std::remove_cvref_t<decltype(initial.*member)>;
      const QString name = QString::fromLatin1(field);
      QString definition = name + u' ' + Column<Value>::definition(initial.*member);
      if (name == QStringLiteral("id")) definition = QStringLiteral("id TEXT NOT NULL UNIQUE");
      if (present.isEmpty())
        definitions += definition;
      else if (!present.contains(name))
        database.execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(table, definition));
    });
    if (present.isEmpty())
      database.execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(table, definitions.join(QStringLiteral(", "))));
  }

  static const QByteArray& select() {
    static const QByteArray sql = QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid").arg(list(), name()).toLatin1();
    return sql;
  }
  static const QByteArray& insertion() {
    static const QByteArray sql =
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
            .arg(name(), list(), QStringList(columns().size(), QStringLiteral("?")).join(QStringLiteral(", ")))
            .toLatin1();
    return sql;
  }
  /// Writes the columns that are named by their places, in their order. What is not written costs nothing: above all
  /// not the index over the ids.
  static const QByteArray& update(const std::bitset<columnCount<R>>& changed) {
    static QHash<quint64, QByteArray> made;
    QByteArray& sql = made[changed.to_ullong()];
    if (!sql.isEmpty()) return sql;
    QStringList set;
    const QStringList all = columns();
    for (std::size_t column = 0; column < changed.size(); ++column)
      if (changed[column]) set += all[static_cast<qsizetype>(column)] + QStringLiteral(" = ?");
    sql = QStringLiteral("UPDATE %1 SET %2 WHERE id = ?").arg(name(), set.join(QStringLiteral(", "))).toLatin1();
    return sql;
  }
  static const QByteArray& deletion() {
    static const QByteArray sql = QStringLiteral("DELETE FROM %1 WHERE id = ?").arg(name()).toLatin1();
    return sql;
  }

 private:
  static QString name() { return QString::fromLatin1(tableName<R>); }
  static QString list() { return columns().join(QStringLiteral(", ")); }
};

/// A SELECT that is stepped once from end to end.
class RowReader {
 public:
  RowReader(Database& database, const QByteArray& sql);
  ~RowReader();
  RowReader(const RowReader&) = delete;
  RowReader& operator=(const RowReader&) = delete;
  /// Whether there is a row; throws DatabaseError.
  bool step();
  sqlite3_stmt* row() const { return statement_; }

 private:
  [[noreturn]] void fail(int result) const;
  Database& database_;
  sqlite3_stmt* statement_ = nullptr;
};

template <class R>
class RecordTable {
 public:
  Ref<R> insert(R record) {
    auto shared = std::make_shared<R>(std::move(record));
    shared->removed_ = false;
    inserted_.push_back(shared);
    if (!known_.contains(shared->id)) known_.insert(shared->id, shared);
    return shared;
  }

  R& edit(const Ref<R>& record) {
    R& changeable = changeableRecord(record);
    if (!isInserted(record.get()) && !before_.contains(record->id)) before_.insert(record->id, changeable);
    return changeable;
  }

  void remove(const Ref<R>& record) {
    R& changeable = changeableRecord(record);
    if (changeable.removed_) return;
    changeable.removed_ = true;
    if (isInserted(record.get()))
      std::erase_if(inserted_, [&](const auto& one) { return one == record; });
    else
      removed_.push_back(known_.value(record->id));
    if (known_.value(record->id) == record) known_.remove(record->id);
  }

  Ref<R> find(const QUuid& id) const { return known_.value(id); }

  /// The rows as they are with the unsaved changes. `version` tells whether another connection has written since the
  /// last fetch: when none has, what is known is what is there, and the file is not read.
  std::vector<Ref<R>> fetch(Database& database, qint64 version) {
    if (fetchedVersion_ != version) {
      read(database);
      fetchedVersion_ = version;
    }
    std::vector<Ref<R>> records;
    records.reserve(rows_.size() + inserted_.size());
    for (const auto& record : rows_)
      if (!record->removed_) records.push_back(record);
    for (const auto& record : inserted_) records.push_back(record);
    return records;
  }

  bool wasRead() const { return fetchedVersion_.has_value(); }
  /// Reads the rows with another connection, for a fetch at that version. One thread at a time uses the table.
  void readAs(Database& database, qint64 version) {
    read(database);
    fetchedVersion_ = version;
  }

  std::vector<Ref<R>> edited() const {
    std::vector<Ref<R>> records;
    for (auto entry = before_.begin(); entry != before_.end(); ++entry)
      if (const auto record = known_.value(entry.key())) records.push_back(record);
    return records;
  }

  bool hasChanges() const { return !inserted_.empty() || !before_.isEmpty() || !removed_.empty(); }

  /// Inside the caller's transaction; the changes stay noted until `settle`.
  void write(Database& database) const {
    for (const auto& record : removed_) deleteRow(database, record->id);
    for (auto entry = before_.begin(); entry != before_.end(); ++entry)
      if (const auto record = known_.value(entry.key())) updateRow(database, *record, entry.value());
    for (const auto& record : inserted_) insertRow(database, *record);
  }

  /// The transaction is on disk: what was changed is now what is there.
  void settle() {
    if (!removed_.empty()) std::erase_if(rows_, [](const auto& record) { return record->removed_; });
    rows_.insert(rows_.end(), inserted_.begin(), inserted_.end());
    forgetChanges();
  }

  void rollback() {
    for (const auto& record : inserted_) {
      record->removed_ = true;
      if (known_.value(record->id) == record) known_.remove(record->id);
    }
    for (const auto& record : removed_) {
      record->removed_ = false;
      known_.insert(record->id, record);
    }
    for (auto entry = before_.begin(); entry != before_.end(); ++entry)
      if (const auto record = known_.value(entry.key())) copyFields(entry.value(), *record);
    forgetChanges();
  }

 private:
  /// Records are handed out as const so that every change passes through here.
  R& changeableRecord(const Ref<R>& record) {
    invariant(record != nullptr, "a record that is changed exists");
    invariant(record->removed_ || isInserted(record.get()) || known_.value(record->id) == record,
              "a record is changed through the context it belongs to");
    return const_cast<R&>(*record);
  }

  bool isInserted(const R* record) const {
    return std::ranges::any_of(inserted_, [&](const auto& one) { return one.get() == record; });
  }

  void forgetChanges() {
    inserted_.clear();
    before_.clear();
    removed_.clear();
  }

  /// Brings every object up to date with its row, in place; those with unsaved changes keep them.
  void read(Database& database) {
    std::vector<std::shared_ptr<R>> rows;
    rows.reserve(rows_.size());
    QHash<QUuid, std::shared_ptr<R>> leaving;
    for (const auto& record : removed_) leaving.insert(record->id, record);
    std::array<SharedTexts, columnCount<R>> shared;
    RowReader reader(database, RecordSql<R>::select());
    while (reader.step()) {
      QUuid id;
      Column<QUuid>::read(reader.row(), 0, id, shared[0]);
      const std::shared_ptr<R> object = leaving.contains(id) ? leaving.value(id) : objectFor(id);
      if (!leaving.contains(id) && !before_.contains(id)) readRow(reader.row(), *object, shared);
      rows.push_back(object);
    }
    rows_ = std::move(rows);
    if (static_cast<std::size_t>(known_.size()) + removed_.size() > rows_.size() + inserted_.size()) forgetLostRows();
  }

  const std::shared_ptr<R>& objectFor(const QUuid& id) {
    std::shared_ptr<R>& object = known_[id];
    if (!object) object = std::make_shared<R>();
    return object;
  }

  template <class Shared>
  static void readRow(sqlite3_stmt* row, R& record, Shared& shared) {
    int index = 0;
    forEachField<R>([&](const char*, auto member) {
      using Value = std::remove_cvref_t<decltype(record.*member)>;
      Column<Value>::read(row, index, record.*member, shared[static_cast<std::size_t>(index)]);
      ++index;
    });
  }

  static void bindAll(Statement& statement, const R& record) {
    int index = 1;
    forEachField<R>([&](const char*, auto member) {
      using Value = std::remove_cvref_t<decltype(record.*member)>;
      Column<Value>::bind(statement, index++, record.*member);
    });
  }

  static void insertRow(Database& database, const R& record) {
    Statement& statement = database.statement(RecordSql<R>::insertion().constData());
    bindAll(statement, record);
    statement.run();
  }

  /// Writes what differs from the values before; nothing when all agree.
  static void updateRow(Database& database, const R& record, const R& before) {
    std::bitset<columnCount<R>> changed;
    std::size_t column = 0;
    forEachField<R>([&](const char*, auto member) { changed[column++] = record.*member != before.*member; });
    if (changed.none()) return;
    Statement& statement = database.statement(RecordSql<R>::update(changed).constData());
    int parameter = 1;
    column = 0;
    forEachField<R>([&](const char*, auto member) {
      using Value = std::remove_cvref_t<decltype(record.*member)>;
      if (changed[column++]) Column<Value>::bind(statement, parameter++, record.*member);
    });
    Column<QUuid>::bind(statement, parameter, record.id);
    statement.run();
  }

  static void deleteRow(Database& database, const QUuid& id) {
    Statement& statement = database.statement(RecordSql<R>::deletion().constData());
    Column<QUuid>::bind(statement, 1, id);
    statement.run();
  }

  /// Forgets records whose rows somebody else has taken out of the file.
  void forgetLostRows() {
    QSet<QUuid> present;
    for (const auto& record : rows_) present.insert(record->id);
    for (const auto& record : inserted_) present.insert(record->id);
    known_.removeIf([&](auto entry) {
      if (present.contains(entry.key())) return false;
      entry.value()->removed_ = true;
      return true;
    });
  }

  QHash<QUuid, std::shared_ptr<R>> known_;
  std::vector<std::shared_ptr<R>> rows_;  ///< what the file holds, in the order of insertion
  std::optional<qint64> fetchedVersion_;  ///< the file's version when `rows_` was read
  QHash<QUuid, R> before_;                ///< values of edited records at the last save
  std::vector<std::shared_ptr<R>> inserted_;
  std::vector<std::shared_ptr<R>> removed_;
};

}  // namespace sorvan::core
