#pragma once

#include "shell/room.h"

#include "base/clock.h"
#include "base/task_scope.h"
#include "core/ledger_values.h"

#include <QObject>

#include <optional>

namespace sorvan::core {
class LibraryStore;
}
namespace sorvan::composer {
class ComposerState;
}

namespace sorvan::shell {

// Keeps the unfinished prompt in the workspace while it is written, and brings it back when the workspace opens. A power
// cut costs at most the last half second of typing; nothing here waits for a disk while the user types. Main thread.
class DraftKeeper final : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the keeper.
  DraftKeeper(core::LibraryStore& store, composer::ComposerState& state, const Clock& clock, QObject* parent = nullptr);

  // Puts a kept draft into the composer; references and a destination that are gone are left out.
  void takeBack(const core::ComposerDraft& draft);
  // Whether a picture can be attached: it is there and not in Trash.
  bool isUsable(const QUuid& asset) const;

  // Hands the draft to the disk now, when it differs from what was kept last. Returns at once.
  void keepNow();
  // The same, and returns when it is on disk: for the moment before the workspace or the program is left.
  void flush();

 private:
  void restoreKept();
  void schedule();
  Task<> keepLater(std::stop_token stop);
  std::optional<core::ComposerDraft> unkept() const;

  core::LibraryStore& store_;
  composer::ComposerState& state_;
  const Clock& clock_;
  std::optional<core::ComposerDraft> kept_;  // what the file holds, or is about to hold
  bool scheduled_ = false;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
