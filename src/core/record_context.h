// The unit of work over the library database: what was changed, and one transaction that writes it.
#pragma once

#include <QUuid>
#include <memory>
#include <vector>

#include "core/records.h"

namespace sorvan::core {

/// The number of the present form of the library database: its `user_version`, and the text of the marker beside it.
inline constexpr int schemaVersion = 7;

/// One open library database and every record that was read from it.
///
/// There is one shared object for each (table, id): fetching again brings the same object up to date. A change goes
/// through `insert`, `edit` and `remove` and reaches the file only with `save`, all changes in one transaction. There
/// is never a pause (`co_await`) between the first change and its save. Main thread only; records may outlive the
/// context.
class RecordContext {
 public:
  /// Opens or makes the database file at the absolute path, in write-ahead mode with full syncing, and adds tables and
  /// columns that are missing. Throws SorvanError; then nothing is open, though a new file may have been made.
  explicit RecordContext(const QString& databaseFile);
  ~RecordContext();
  RecordContext(const RecordContext&) = delete;
  RecordContext& operator=(const RecordContext&) = delete;

  /// Takes in a new record; it is written by the next save. A second record of one id makes that save fail.
  template <class R>
  Ref<R> insert(R record);

  /// The record for changing. Notes the values it has now, so that a rollback can put them back in place.
  template <class R>
  R& edit(const Ref<R>& record);

  /// Flags the record as removed; its row goes with the next save. The object stays readable.
  template <class R>
  void remove(const Ref<R>& record);

  /// The record of an id, or null. Knows what was fetched or inserted.
  template <class R>
  Ref<R> find(const QUuid& id) const;

  /// All records of a table in the order of their insertion. Records with unsaved changes keep them. Throws
  /// SorvanError.
  template <class R>
  std::vector<Ref<R>> fetch();

  /// The records of a table that were edited and not saved, inserted ones left out.
  template <class R>
  std::vector<Ref<R>> edited() const;

  bool hasChanges() const;

  /// Writes all changes in one transaction. Throws SorvanError with nothing written and every change still pending.
  void save();

  /// Undoes every change since the last save: edited records get their noted values back in place, inserted ones are
  /// flagged as removed, removed ones come back.
  void rollback();

 private:
  struct Tables;
  std::unique_ptr<Tables> tables_;
};

}  // namespace sorvan::core
