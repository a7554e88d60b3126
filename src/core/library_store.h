// The open workspace in memory: its records as arrays, the indexes over them, and the one way of saving.
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "core/composer_sidecar.h"
#include "core/ledgers.h"
#include "core/library_history.h"
#include "core/library_index.h"
#include "core/library_tables.h"
#include "core/pending_marks.h"
#include "core/record_context.h"
#include "core/workspace_files.h"
#include "core/workspace_lease.h"

namespace sorvan::base {
class Settings;
}

namespace sorvan::core {

/// Records that were inserted and saved and are now to be known.
struct NewRecords {
  std::vector<AssetRef> assets;
  std::vector<GenerationRef> generations;
  std::vector<RelationshipRef> relationships;
  std::vector<ReferenceRef> references;
};

/// A workspace whose database is open and whose lock is held, ready to become the open one.
struct OpenedWorkspace {
  WorkspaceFiles files;
  WorkspaceLease lease;
  std::unique_ptr<RecordContext> context;
};

/// Which project each watched folder belongs to. The room that watches folders fills it; without one there are none.
class WatchedProjects {
 public:
  virtual ~WatchedProjects() = default;
  virtual QHash<QUuid, std::optional<QUuid>> snapshot() const { return {}; }
  virtual void setProject(const QUuid& folder, const std::optional<QUuid>& project);
};

/// Says for as long as it lives that a long operation works on the open workspace, so that no other one is opened.
class LocalOperation;

/// The one central object of the application. Main thread only, and it asserts that. With no workspace open the arrays
/// are empty. Operations on the library are free functions that take the store; this class only holds, finds and saves.
class LibraryStore final : public QObject {
  Q_OBJECT
 public:
  struct Services {
    std::shared_ptr<Settings> settings;      ///< required
    std::shared_ptr<const Clock> clock;      ///< required
    std::optional<QString> forcedWorkspace;  ///< a folder that overrides the remembered one, without being remembered
    QString defaultWorkspace;                ///< absolute path that the chooser suggests
  };

  explicit LibraryStore(Services services, QObject* parent = nullptr);
  ~LibraryStore() override;

  Settings& settings() const { return *services_.settings; }
  Instant now() const { return services_.clock->now(); }
  const Services& services() const { return services_; }

  // ---- The open workspace

  bool hasWorkspace() const { return open_ != nullptr; }
  /// Absolute path of the open workspace's root.
  std::optional<QString> workspaceRoot() const;
  /// Throws SorvanError while no workspace is open.
  const WorkspaceFiles& files() const;
  /// Throws SorvanError while no workspace is open.
  RecordContext& context() const;
  /// Counts openings: a task that paused compares it to learn whether another workspace was opened meanwhile.
  std::uint64_t opening() const { return opening_; }
  /// Throws "The workspace folder isn’t available." unless the folder is still the one that was opened. Called before
  /// each landing, sidecar write and submission.
  void requireWorkspaceInPlace() const;
  /// Throws unless a result can be kept: also asks for 256 MB of free space. Called before each submission.
  void requireRoomForResult() const;

  // ---- Records, as of the last save, reload or registration

  const std::vector<ProjectRef>& projects() const { return arrays_.projects; }  ///< oldest first
  const NewestFirst<AssetRef>& assets() const { return arrays_.assets; }
  const std::vector<GenerationRef>& generations() const { return arrays_.generations; }  ///< in order of insertion
  const std::vector<RelationshipRef>& relationships() const {
    return arrays_.relationships;
  }                                                                                   ///< in order of insertion
  const std::vector<ReferenceRef>& references() const { return arrays_.references; }  ///< in order of insertion
  const NewestFirst<JobRef>& jobs() const { return arrays_.jobs; }
  const NewestFirst<SavedReferenceRef>& savedReferences() const { return arrays_.savedReferences; }  ///< by `updatedAt`
  const NewestFirst<ContactSheetRef>& contactSheets() const { return arrays_.contactSheets; }
  const NewestFirst<SequenceRef>& sequences() const { return arrays_.sequences; }  ///< by `updatedAt`
  /// One row for each asset, in the order of `assets`.
  const NewestFirst<AssetRow>& assetRows() const { return arrays_.assetRows; }

  // ---- Lookups; null or empty for unknown ids

  ProjectRef project(const QUuid& id) const;
  AssetRef asset(const QUuid& id) const;
  JobRef job(const QUuid& id) const;
  GenerationRef generationOf(const QUuid& asset) const;
  /// Generations of a job, copies left out, in the order of its outputs.
  const std::vector<GenerationRef>& generationsOf(const QUuid& job) const;
  /// The output items of a job in the same order; missing ones are left out.
  std::vector<AssetRef> outputs(const QUuid& job) const;
  /// The jobs of a comparison in the order of their requests.
  std::vector<JobRef> comparisonJobs(const QUuid& comparison) const;
  const std::vector<RelationshipRef>& parentEdges(const QUuid& child) const;
  const std::vector<RelationshipRef>& childEdges(const QUuid& parent) const;
  const std::vector<ReferenceRef>& referencesOf(const QUuid& generation) const;
  /// Absolute path of the item's file.
  QString fileOf(const Asset& asset) const;
  /// Absolute path of the item's thumbnail, when one was drawn.
  std::optional<QString> thumbnailOf(const Asset& asset) const;
  /// Where the item stands in `assets`, or nothing.
  std::optional<std::size_t> position(const Asset& asset) const;
  /// Jobs that wait or run, newest first; salvages, which are invisible work, left out.
  std::vector<JobRef> activeJobs() const;
  /// Checksums of all items, built when first asked for after a change.
  const QSet<QString>& knownChecksums() const;

  // ---- Saving

  /// Writes all changes in one transaction, then reads the named tables again; with none named it brings the rows of
  /// the edited items up to date. Throws SorvanError during a backup, before anything is touched, and for a failed
  /// write: then the changes stay pending, and the caller rolls back or keeps them (see `keepUnsaved`).
  void save(LibraryTables reloading);
  /// Reads tables again; without effect while no workspace is open. Throws SorvanError.
  void reload(LibraryTables tables);
  /// Adds records that were just inserted and saved to arrays and indexes, without reading the database.
  void registerRecords(const NewRecords& records);
  /// Undoes all unsaved changes in place, except the jobs' values that `keepUnsaved` keeps: those become pending again.
  void rollBack();
  /// What a user operation does when its save failed: rolls back, shows the failure as `error`, reads all tables again.
  void failOperation(const std::exception_ptr& failure);
  /// Keeps a job's present values over every rollback until a save has written them: memory is ahead of the disk on
  /// purpose, since they tell where paid work stands.
  void keepUnsaved(const JobRef& job);
  const QHash<QUuid, GenerationJob>& unsavedJobs() const { return unsavedJobs_; }
  /// Throws during a backup.
  void refuseDuringBackup() const;

  /// The one change signal's counter: moves by one for each save, reload and registration.
  std::uint64_t revision() const { return revision_; }
  /// Moves `revision` by one, for a change that no save stands for.
  void noteChange();

  // ---- Undo and redo

  /// Emptied whenever a workspace opens or closes.
  LibraryHistory& history() { return history_; }
  const LibraryHistory& history() const { return history_; }
  /// Never null.
  std::shared_ptr<WatchedProjects> watchedProjects = std::make_shared<WatchedProjects>();

  // ---- Sidecars

  PromptLibrary& prompts() { return prompts_; }
  const PromptLibrary& prompts() const { return prompts_; }
  ChargeLedger& extraCharges() { return extraCharges_; }
  const ChargeLedger& extraCharges() const { return extraCharges_; }
  AnalysisLedger& analyses() { return analyses_; }
  const AnalysisLedger& analyses() const { return analyses_; }
  ComposerSidecar& composer() { return composer_; }
  void keepComposer(const ComposerDraft& draft) { composer_.keep(draft); }
  /// The same without waiting for the disk: see ComposerSidecar.
  void keepComposerSoon(const ComposerDraft& draft) { composer_.keepSoon(draft); }
  std::optional<ComposerDraft> keptComposer() const { return composer_.kept(); }
  /// Whether the composer's draft in memory is not the one on disk.
  bool hasUnsavedDraft() const { return composer_.hasUnsavedDraft(); }
  /// Adds a charge to `extraCharges` and moves `revision`.
  void record(const ExtraCharge& charge);

  /// Whether something is in memory and not yet on disk: closing and switching ask first.
  bool hasUnsavedMetadata() const;
  /// Whether `retryMetadataSave` has something to write that it may write; never during a backup.
  bool canRetryMetadataSave() const;
  /// Tries all pending writes again: the database first, then the ledgers and the composer's draft. Nothing during a
  /// backup.
  void retryMetadataSave();

  // ---- What the interface shows

  const std::optional<QString>& error() const { return error_; }
  void setError(std::optional<QString> text);
  const std::optional<QString>& notice() const { return notice_; }
  void setNotice(std::optional<QString> text);

  /// Marks that were drawn and that no composer has taken over yet. They belong to the open workspace.
  const std::optional<PendingMarks>& pendingMarks() const { return pendingMarks_; }
  void setPendingMarks(std::optional<PendingMarks> marks);

  // ---- Long operations

  bool isBackingUp() const { return backingUp_; }
  /// Pauses the sidecars with it; ending the backup writes what is pending.
  void setBackingUp(bool backingUp);
  bool isImporting() const { return importing_; }
  void setImporting(bool importing);
  bool isExporting() const { return exporting_; }
  void setExporting(bool exporting);
  int localOperations() const { return localOperations_; }
  [[nodiscard]] LocalOperation beginLocalOperation();
  /// Whether a workspace switch has to wait: jobs, imports, exports, local operations and `busyChecks`.
  bool isBusy() const;

  /// Jobs that are fetched invisibly after a cancel; the queue keeps it.
  QSet<QUuid> salvaging;

  // ---- Steps of other rooms, in order

  /// Whether work is in flight that keeps the workspace open, such as running tasks or a settling pass.
  std::vector<std::function<bool()>> busyChecks;
  /// Fill old rows while a workspace opens, before cut-off jobs are marked; they change records and do not save.
  std::vector<std::function<void(LibraryStore&)>> openingBackfills;
  /// Start what follows from an open workspace, once its ledgers are loaded.
  std::vector<std::function<void(LibraryStore&)>> afterOpen;
  /// End what depends on the workspace that is about to be replaced.
  std::vector<std::function<void(LibraryStore&)>> beforeClose;

  /// Replaces the open workspace and reads everything but the sidecars. Called by the opening only. Throws when the
  /// records cannot be read; then the previous workspace is still open.
  void install(OpenedWorkspace workspace);
  /// Reads the ledgers and turns to the composer's draft of the open workspace. Called by the opening only.
  void loadSidecars();
  /// Runs `beforeClose`, drops the workspace and empties the arrays. Unsaved changes are lost: ask first.
  void close();

 Q_SIGNALS:
  void revisionChanged();
  /// These items came in, or a text or mark of theirs differs. Comes before `revisionChanged`.
  void itemsTouched(const std::vector<QUuid>& items);
  /// Any item may differ, or the name of its project. Comes before `revisionChanged`.
  void itemsReread();
  void workspaceChanged();
  void errorChanged();
  void noticeChanged();
  void pendingMarksChanged();
  /// A long operation, a local operation or a backup began or ended.
  void activityChanged();
  /// The ledgers or the unsaved state changed.
  void metadataChanged();

 private:
  friend class LocalOperation;

  void changed();
  void rebuildRows();
  void refreshRow(const AssetRef& asset);
  void tellTouched(const std::vector<AssetRef>& assets, const std::vector<GenerationRef>& generations);
  void insertAsset(const AssetRef& asset);
  void reapplyUnsavedJobs();
  void endLocalOperation();
  void wireSidecars();

  Services services_;
  std::unique_ptr<OpenedWorkspace> open_;
  std::uint64_t opening_ = 0;
  std::uint64_t revision_ = 0;
  LibraryArrays arrays_;
  LibraryIndex index_;
  QHash<QUuid, GenerationJob> unsavedJobs_;
  LibraryHistory history_;

  PromptLibrary prompts_;
  ChargeLedger extraCharges_;
  AnalysisLedger analyses_;
  ComposerSidecar composer_;

  std::optional<QString> error_;
  std::optional<QString> notice_;
  std::optional<PendingMarks> pendingMarks_;
  bool backingUp_ = false;
  bool importing_ = false;
  bool exporting_ = false;
  int localOperations_ = 0;
};

class LocalOperation {
 public:
  LocalOperation(LocalOperation&& other) noexcept : store_(std::exchange(other.store_, nullptr)) {}
  LocalOperation& operator=(LocalOperation&& other) noexcept;
  ~LocalOperation();

 private:
  friend class LibraryStore;
  explicit LocalOperation(LibraryStore* store) : store_(store) {}
  QPointer<LibraryStore> store_;
};

}  // namespace sorvan::core
