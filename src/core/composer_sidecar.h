// The file that keeps the composer's unfinished prompt.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

#include "core/ledger_values.h"

namespace sorvan::core {

/// Keeps the draft in `.sorvan/composer.json` and its previous version beside it. Main thread.
class ComposerSidecar : public QObject {
  Q_OBJECT
 public:
  /// Turns to the workspace at `root`, or to none. A draft that was not written yet is dropped: the caller has asked.
  void open(const std::optional<QString>& root);

  /// Writes the draft, or keeps it pending while a backup runs or no workspace is open. A failure becomes `issue`. A
  /// file that cannot be decoded is put aside as `composer.json.unreadable` before the first write.
  void keep(const ComposerDraft& draft);
  /// The stored draft; nothing when there is none that decodes. Reads only.
  std::optional<ComposerDraft> kept() const;

  const std::optional<ComposerDraft>& pending() const { return pending_; }
  /// Whether memory holds a draft that the file does not.
  bool hasUnsavedDraft() const;
  const std::optional<QString>& issue() const { return issue_; }

  void setPaused(bool paused);  ///< while paused drafts stay pending; resuming writes
  std::function<void()> requireWorkspace;

 Q_SIGNALS:
  /// The issue changed from `before` to `issue()`.
  void issueChanged(std::optional<QString> before);

 private:
  void write(const QByteArray& json);
  void putDamagedFileAside(const QString& path);
  void setIssue(std::optional<QString> issue);

  std::optional<QString> file_;
  std::optional<ComposerDraft> pending_;
  std::optional<QString> issue_;
  mutable std::optional<QByteArray> lastWritten_;  ///< bytes of the file as far as this object knows
  bool paused_ = false;
};

}  // namespace sorvan::core
