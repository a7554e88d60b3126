// The ledgers beside the library database: saved prompts, extra charges and saved image reviews.
//
// They share a discipline. A file that cannot be read is never overwritten; a write never loses the last good version;
// a write that fails keeps its data in memory and says so; a backup can pause them all. Main thread.
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>
#include <functional>
#include <optional>
#include <vector>

#include "core/ledger_values.h"

namespace sorvan::core {

/// What a ledger is called: its file under `.sorvan` and its noun in messages.
struct LedgerName {
  QString file;
  QString noun;
  QString chooseWorkspaceFirst;  ///< the message while no workspace is open
};

/// The part that does not depend on what the entries are.
class Ledger : public QObject {
  Q_OBJECT
 public:
  ~Ledger() override;

  /// Reads the file of this workspace, or empties the ledger for none. Never throws: a file that is damaged is replaced
  /// in memory by its previous version, or the ledger becomes unreadable; both are reported.
  void load(const std::optional<QString>& workspaceRoot);

  /// Writes the entries. Failures are reported, and the entries stay in memory as pending.
  void persist();

  /// Whether Try Saving Again has something to do here.
  bool canRetrySave() const;
  /// Sets the standing problem and hands the message on.
  void report(const QString& message);

  const std::optional<QString>& issue() const { return issue_; }
  bool isPending() const { return pending_; }
  bool isUnreadable() const { return unreadable_; }
  bool isPaused() const { return paused_; }
  /// While paused nothing is written; resuming writes what is pending.
  void setPaused(bool paused);

  /// Gets each reported message. Set once by the store.
  std::function<void(const QString&)> onError;
  /// Called before each write; throws when the workspace's folder is not the one that was opened.
  std::function<void()> requireWorkspace;

 Q_SIGNALS:
  /// Entries, issue or state changed.
  void changed();

 protected:
  explicit Ledger(LedgerName name);
  /// As `persist`, but throws what it would report.
  void persistOrThrow();
  /// The message of a ledger that could not be read.
  QString unreadableMessage() const;

  virtual QByteArray encodeEntries() const = 0;
  /// Takes over the entries of a document; throws when it does not decode.
  virtual void decodeEntries(const QByteArray& json) = 0;
  virtual bool decodes(const QByteArray& json) const = 0;
  virtual void clearEntries() = 0;

 private:
  bool loadFrom(const QString& path);
  void writeFile();

  LedgerName name_;
  std::optional<QString> file_;
  std::optional<QString> issue_;
  bool paused_ = false;
  bool pending_ = false;
  bool unreadable_ = false;
  /// The main file was missing while its previous version stood: that version is put aside before the first write.
  bool orphanPrevious_ = false;
};

/// Saved prompts, newest first.
class PromptLibrary final : public Ledger {
  Q_OBJECT
 public:
  PromptLibrary();
  const std::vector<PromptEntry>& entries() const { return entries_; }

  /// Adds a prompt, or replaces the text of `entry` in place. A text that is already saved moves to the front. Throws
  /// SorvanError for a blank text, an unreadable file and a failed write; after a failed write the entry stays in
  /// memory.
  PromptEntry save(const std::optional<PromptEntry>& entry, const QString& text, Instant now);
  /// Removes the entry and writes; a failure is reported.
  void remove(const QUuid& entry);

 private:
  QByteArray encodeEntries() const override;
  void decodeEntries(const QByteArray& json) override;
  bool decodes(const QByteArray& json) const override;
  void clearEntries() override { entries_.clear(); }
  std::vector<PromptEntry> entries_;
};

/// The spending history beside what generations record.
class ChargeLedger final : public Ledger {
  Q_OBJECT
 public:
  ChargeLedger();
  const std::vector<ExtraCharge>& entries() const { return entries_; }
  bool contains(const QUuid& id) const;

  /// Adds the charges whose id is not there yet, so that a second report of one charge never doubles it; then writes.
  void add(const std::vector<ExtraCharge>& charges);
  void remove(const std::vector<QUuid>& ids);
  /// Takes a project off all charges that name it.
  void removeProject(const QUuid& project);
  /// Puts projects back, by charge id.
  void restoreProjects(const QHash<QUuid, std::optional<QUuid>>& projects);

 private:
  QByteArray encodeEntries() const override;
  void decodeEntries(const QByteArray& json) override;
  bool decodes(const QByteArray& json) const override;
  void clearEntries() override { entries_.clear(); }
  std::vector<ExtraCharge> entries_;
};

/// Saved image reviews, by asset.
class AnalysisLedger final : public Ledger {
  Q_OBJECT
 public:
  AnalysisLedger();
  const QHash<QUuid, SavedAnalysis>& entries() const { return entries_; }
  void keep(const SavedAnalysis& analysis, const QUuid& asset);

  /// Assets under review right now; in memory only.
  QSet<QUuid> running;

 private:
  QByteArray encodeEntries() const override;
  void decodeEntries(const QByteArray& json) override;
  bool decodes(const QByteArray& json) const override;
  void clearEntries() override;
  QHash<QUuid, SavedAnalysis> entries_;
};

}  // namespace sorvan::core
