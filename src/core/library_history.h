// The steps that Undo and Redo walk over. They live in memory, for one open workspace.
#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QUuid>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "core/library_record.h"

namespace sorvan::core {

/// One record before and after an edit. Where both stand they hold only the fields that differ, so that what something
/// else wrote meanwhile, such as a thumbnail's path, stays. No `before`: the record was made; no `after`: removed.
struct Patch {
  std::optional<LibraryRecord> before;
  std::optional<LibraryRecord> after;
};

/// Which project something belongs to, by its own id.
using ProjectsByID = QHash<QUuid, std::optional<QUuid>>;

struct LibraryEdit {
  QString name;  ///< the words of the menu, such as "Move Items"
  std::vector<Patch> patches;
  ProjectsByID watchedBefore;  ///< watched folders whose project changed
  ProjectsByID watchedAfter;
  ProjectsByID chargesBefore;  ///< extra charges whose project changed
  ProjectsByID chargesAfter;
  qsizetype compared = 0;  ///< how many records were captured to find the patches

  qint64 bytes() const;
};

enum class HistoryDirection { undo, redo };

/// At most 100 steps and 16 MB. Main thread.
class LibraryHistory final : public QObject {
  Q_OBJECT
 public:
  using Edits = std::deque<std::shared_ptr<const LibraryEdit>>;
  static constexpr std::size_t maximumEdits = 100;
  static constexpr qint64 maximumBytes = 16'777'216;

  const Edits& undo() const { return undo_; }  ///< oldest first
  const Edits& redo() const { return redo_; }
  /// The step that would be taken next, or null.
  std::shared_ptr<const LibraryEdit> next(HistoryDirection direction) const;
  /// How many edits are running inside one another. Only the outermost is remembered.
  int depth() const { return depth_; }

  /// Adds a step and drops what could be redone, then the oldest steps over the limits. An edit without patches is no
  /// step. One that is larger than the limit leaves nothing.
  void remember(LibraryEdit edit);
  /// Moves the last step of its stack to the other one.
  void take(HistoryDirection direction);
  void clear();

  /// Counts an edit for as long as it lives.
  class Nesting {
   public:
    explicit Nesting(LibraryHistory& history) : history_(history) { ++history_.depth_; }
    ~Nesting() { --history_.depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    LibraryHistory& history_;
  };

 Q_SIGNALS:
  void changed();

 private:
  Edits undo_;
  Edits redo_;
  qint64 undoBytes_ = 0;
  int depth_ = 0;
};

}  // namespace sorvan::core
