#include "core/library_history.h"

#include "base/invariant.h"

namespace sorvan::core {

qint64 LibraryEdit::bytes() const {
  qint64 sum = 0;
  for (const Patch& patch : patches)
    sum += (patch.before ? patch.before->bytes() : 0) + (patch.after ? patch.after->bytes() : 0);
  return sum;
}

std::shared_ptr<const LibraryEdit> LibraryHistory::next(HistoryDirection direction) const {
  const Edits& stack = direction == HistoryDirection::undo ? undo_ : redo_;
  return stack.empty() ? nullptr : stack.back();
}

void LibraryHistory::remember(LibraryEdit edit) {
  if (edit.patches.empty()) return;
  undoBytes_ += edit.bytes();
  undo_.push_back(std::make_shared<const LibraryEdit>(std::move(edit)));
  redo_.clear();
  while (!undo_.empty() && (undo_.size() > maximumEdits || undoBytes_ > maximumBytes)) {
    undoBytes_ -= undo_.front()->bytes();
    undo_.pop_front();
  }
  Q_EMIT changed();
}

void LibraryHistory::take(HistoryDirection direction) {
  const bool undoing = direction == HistoryDirection::undo;
  Edits& from = undoing ? undo_ : redo_;
  Edits& to = undoing ? redo_ : undo_;
  invariant(!from.empty(), "a step that is taken is there");
  undoBytes_ += undoing ? -from.back()->bytes() : from.back()->bytes();
  to.push_back(std::move(from.back()));
  from.pop_back();
  Q_EMIT changed();
}

void LibraryHistory::clear() {
  if (undo_.empty() && redo_.empty()) return;
  undo_.clear();
  redo_.clear();
  undoBytes_ = 0;
  Q_EMIT changed();
}

}  // namespace sorvan::core
