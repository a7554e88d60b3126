#pragma once

#include "shell/gallery_index.h"
#include "shell/job_display.h"
#include "shell/once_per_turn.h"
#include "shell/wall_sections.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <optional>
#include <vector>

namespace sorvan::core {
class LibraryStore;
struct GenerationJob;
}  // namespace sorvan::core

namespace sorvan::shell {

class WorkspaceState;
class JobDisplays;

enum class CellKind { image, video, audio, job };

// One cell of the wall as it is painted. For a job only `kind`, `id`, `aspectRatio` and `job` count.
struct GalleryCell {
  QUuid id;
  CellKind kind = CellKind::image;
  double aspectRatio = 1;  // width by height; sounds are 1.6
  QString fileName;
  QString title;          // what a sound shows over its waveform: the prompt, else the file name
  QString soundText;      // “Music”: what kind of sound it is
  QString soundIcon;
  QString thumbnailPath;  // absolute; may name a file that is missing
  QString filePath;       // absolute
  QString durationText;   // “0:08” for clips and sounds
  QString statusText;     // “Approved”; empty for “Draft”
  QString statusToken;    // draft, shortlist, approved, final, rejected: the colour's token
  QString modelName;
  QString costText;
  QString accessibleName;  // ‘{file name}, {kind}, {model}, {status}, {n} stars, favourite’ or the job's
  bool favorite = false;
  bool inTrash = false;
  int rating = 0;
  QString workText;  // what a running job does to the item: “Upscaling…”; empty for none
  JobDisplay job;
};

// The cells of the current location, jobs first: running, waiting, then failed and cancelled ones, then items in the
// chosen order. While a filter narrows the location, jobs that are at work or have failed stay, since work must not be
// lost from sight where it was started; cancelled ones step aside. Cells are made when asked for, so that a
// hundred thousand items cost one pass over small rows. Main thread.
class GalleryPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  GalleryPresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& jobs, QObject* parent = nullptr);
  ~GalleryPresenter() override;

  int count() const;
  QUuid idAt(int index) const;
  double aspectRatioAt(int index) const;
  bool isJobAt(int index) const;
  GalleryCell cellAt(int index) const;
  // An item or a job that need not be among the cells here.
  GalleryCell cellOf(QUuid item) const;
  // Whether the item is in the library and, outside Trash itself, not in Trash.
  bool canShow(QUuid item) const;
  // -1 when the id is not shown.
  int indexOf(QUuid id) const;
  int jobCount() const;
  // By day, while the newest or the oldest come first; else none.
  const std::vector<WallSection>& sections() const { return sections_; }

  QString title() const;      // “All Media”, “Favorites”, “Inbox” or the project's name
  QString countText() const;  // “312 items”
  QString emptyTitle() const;
  QString emptyText() const;
  QString emptyAction() const;  // “Clear Filters” while they hide everything, else empty

  const GalleryFilter& filter() const;
  // Everything but the location; a new sort is remembered for the workspace.
  void setFilter(const GalleryFilter& filter);
  void clearFilters();
  // The models that can be filtered by, ids and names, by name.
  std::vector<std::pair<QString, QString>> models();
  // The providers that can be filtered by.
  std::vector<QString> providers() { return index_.providers(); }
  // The window is in front again: a day may have gone by.
  void refreshDates();
  GalleryIndex& index() { return index_; }

  // The × of a failed or cancelled job's cell: leaves the wall for good, stays in History. A job that was dismissed and
  // is retried is shown again. Remembered for each workspace in the settings.
  void dismissJob(QUuid id);

 Q_SIGNALS:
  // Order, number or shapes of cells differ: lay out again, keeping the item under the viewport's centre.
  void layoutChanged();
  // Cells look different, their places stay: repaint what is visible.
  void contentChanged();

 private:
  struct Entry {
    QUuid id;
    float aspectRatio = 1;
    bool isJob = false;
    bool operator==(const Entry&) const = default;
  };

  void refresh();
  void readLocation();
  void readDismissed();
  void keepDismissed();
  QString dismissedKey() const;
  void collectJobs(std::vector<Entry>& entries);
  void collectItems(std::vector<Entry>& entries);
  void readSort();
  std::vector<WallSection> collectSections(const std::vector<Entry>& entries);
  bool jobsBelongToToday(const std::vector<Entry>& entries);
  bool isHere(const core::GenerationJob& job) const;
  bool isInProject(const std::optional<QUuid>& project) const;
  GalleryCell itemCell(const Entry& entry) const;
  GalleryCell jobCell(const Entry& entry) const;

  core::LibraryStore& store_;
  WorkspaceState& state_;
  JobDisplays& jobs_;
  GalleryIndex index_;
  std::vector<Entry> entries_;
  std::vector<WallSection> sections_;
  KnownDays days_;
  // The location, read once for each pass over the rows.
  enum class Place { everything, recent, favorites, inbox, trash, project } place_ = Place::everything;
  QUuid project_;
  QSet<QUuid> dismissed_;
  int jobCount_ = 0;
  QHash<QUuid, QString> work_;        // what running jobs do to items
  mutable int lastFound_ = 0;         // by indexOf
  mutable QHash<QUuid, int> places_;  // of all entries, once one was looked for that is far from the last
  OncePerTurn refreshSoon_{[this] { refresh(); }};
};

}  // namespace sorvan::shell
