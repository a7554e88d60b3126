#pragma once

#include "shell/marks_editor.h"

#include <QObject>
#include <QUuid>

#include <map>
#include <optional>

namespace sorvan::core {
class LibraryStore;
}
namespace sorvan::composer {
class ComposerState;
}

namespace sorvan::shell {

class WorkspaceState;

// Drawing boxes on the picture that is shown large. `done` hands them over to the composer; leaving without it keeps
// them for this picture as long as the workspace is open. Main thread.
class MarkingPresenter : public QObject {
  Q_OBJECT

 public:
  // All three outlive the presenter.
  MarkingPresenter(core::LibraryStore& store, const composer::ComposerState& composing, WorkspaceState& window,
                   QObject* parent = nullptr);

  // Whether areas can be marked on this item: a picture that is in the library, not in Trash, and has a size.
  bool canMark(QUuid item) const;
  // Shows the item large and starts with the boxes it has: those that were left, else those in the composer.
  void begin(QUuid item);
  // Ends marking; the boxes stay with the picture.
  void leave();
  // Hands the boxes over and ends marking. When they cannot be taken, marking goes on.
  void done();

  bool isMarking() const { return !subject_.isNull(); }
  QUuid subject() const { return subject_; }
  // The boxes of the picture that is being marked; empty while none is.
  const MarksEditor& marks() const { return current().editor; }
  // Whether only the marked areas are to change.
  bool confines() const { return current().confines; }

  void select(int index);
  int add(const QRectF& area);
  // Adds a box in the middle, for hands without a pointer.
  void addInTheMiddle();
  void place(int index, const QRectF& area);
  void nudge(QPoint pixels);
  void stretch(QPoint pixels);
  void setNote(int index, const QString& note);
  void remove(int index);
  void clear();
  void undo();
  void redo();
  void setConfines(bool confines);

 Q_SIGNALS:
  // Marking began or ended, or went on with another picture.
  void markingChanged();
  // Boxes, notes, selection or the switch.
  void changed();
  // The note of this box is what is to be written next.
  void noteRequested(int index);

 private:
  struct Draft {
    MarksEditor editor{{}, {}};
    bool confines = true;
  };
  const Draft& current() const;
  MarksEditor* editor();
  Draft startingDraft(QUuid item) const;
  void end();

  core::LibraryStore& store_;
  const composer::ComposerState& composing_;
  WorkspaceState& window_;
  QUuid subject_;
  std::map<QUuid, Draft> drafts_;
};

}  // namespace sorvan::shell
