// The file that keeps the composer's unfinished prompt.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "base/task_scope.h"
#include "core/ledger_values.h"

namespace sorvan::core {

/// Keeps the draft in `.sorvan/composer.json` and its previous version beside it. Main thread.
class ComposerSidecar : public QObject {
  Q_OBJECT
 public:
  ComposerSidecar();
  ~ComposerSidecar() override;

  /// Turns to the workspace at `root`, or to none. Nothing is written into the one before after this returns. A draft
  /// that was not written yet is dropped: the caller has asked.
  void open(const std::optional<QString>& root);

  /// Writes the draft and returns when it is on disk, or keeps it pending while a backup runs or no workspace is open.
  /// A failure becomes `issue`. A file that no composer could take over is put aside as `composer.json.unreadable`
  /// before the first write. What is being written meanwhile is waited for, so that the newest draft is the last.
  void keep(const ComposerDraft& draft);
  /// The same on the pool: nothing here waits for the disk. Of drafts that come while one is being written only the
  /// newest follows. A draft that could not be written is pending, and `issue` says why.
  void keepSoon(const ComposerDraft& draft);
  /// Whether a draft is on its way to the disk.
  bool isWriting() const { return writing_; }
  /// Resumes when nothing is on its way.
  Task<> whenWritten();

  /// The stored draft; nothing when there is none that decodes. Reads only.
  std::optional<ComposerDraft> kept() const;

  const std::optional<ComposerDraft>& pending() const { return pending_; }
  /// Whether memory holds a draft that the file does not and that could not be written.
  bool hasUnsavedDraft() const;
  const std::optional<QString>& issue() const { return issue_; }

  void setPaused(bool paused);  ///< while paused drafts stay pending; resuming writes
  std::function<void()> requireWorkspace;

 Q_SIGNALS:
  /// The issue changed from `before` to `issue()`.
  void issueChanged(std::optional<QString> before);

 private:
  struct Pen;
  void layDownPen();
  Task<> writeOnPool(ComposerDraft draft);
  void written(const std::shared_ptr<Pen>& pen, const QByteArray& json);
  void notWritten(const ComposerDraft& draft);
  void setIssue(std::optional<QString> issue);

  std::shared_ptr<Pen> pen_;  ///< of the open workspace; none without one
  std::optional<ComposerDraft> pending_;
  std::optional<ComposerDraft> next_;  ///< to be written when `writing_` is over
  std::optional<QString> issue_;
  mutable std::optional<QByteArray> lastWritten_;  ///< bytes of the file as far as this object knows
  bool paused_ = false;
  bool writing_ = false;
  TaskScope tasks_;
};

}  // namespace sorvan::core
