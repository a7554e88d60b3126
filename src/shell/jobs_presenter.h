#pragma once

#include "shell/job_display.h"
#include "shell/known_days.h"
#include "shell/once_per_turn.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <array>
#include <functional>
#include <vector>

namespace sorvan::core {
class LibraryStore;
struct GenerationJob;
}  // namespace sorvan::core
namespace sorvan::generation {
class JobQueue;
}

namespace sorvan::shell {

class AlertsPresenter;
class JobDisplays;
class WorkspaceState;

enum class JobSegment { all, inProgress, failed, cancelled, complete };

// A heading of the history with its rows [first, first + count).
struct JobGroup {
  QString title;  // “In progress”, “To look at”, “Today”, “Yesterday”, or a date
  int first = 0;
  int count = 0;
  bool operator==(const JobGroup&) const = default;
};

// All jobs of the workspace, and what can be done about one. Main thread.
class JobsPresenter : public QObject {
  Q_OBJECT

 public:
  // What the presenter uses; all of it outlives the presenter.
  struct Ports {
    core::LibraryStore& store;
    generation::JobQueue& queue;
    WorkspaceState& state;
    AlertsPresenter& alerts;
    JobDisplays& displays;
    std::function<void(const QString&)> copyText;
  };
  explicit JobsPresenter(Ports ports, QObject* parent = nullptr);
  ~JobsPresenter() override;

  JobSegment segment() const { return segment_; }
  void setSegment(JobSegment segment);
  static QString segmentTitle(JobSegment segment);
  // Shows the jobs whose prompt, model, place or outcome has this in it, case and marks aside; empty shows all.
  void setSearch(const QString& text);
  const QString& search() const { return search_; }
  int count() const;
  JobDisplay rowAt(int index) const;
  QUuid idAt(int index) const;
  int indexOf(QUuid id) const;
  const std::vector<JobGroup>& groups() const { return groups_; }
  QString emptyTitle() const;
  // Jobs at work: what the menu strip and the sidebar count.
  int activeCount() const;
  QString activeText() const;  // “2 generating”, or empty

  // The state as it is now; a job that is gone has a null id.
  JobDisplay job(QUuid id) const;

  void cancel(QUuid id);
  // Cancels those that wait or run. The waiting ones go first, so that none starts, and is paid for, in between.
  void cancelJobs(const QSet<QUuid>& ids);
  // How many of these wait or run.
  int activeAmong(const QSet<QUuid>& ids) const;
  // Asks, and cancels everything that waits or runs by then.
  void cancelAll();
  void retry(QUuid id);
  void saveResult(QUuid id);
  // Lands what the provider sent without confining it to the marked areas. Only while a result is retained.
  void saveRawResult(QUuid id);
  // Asks first, saying that it may be paid twice; only the person's yes submits.
  void submitAgain(QUuid id);
  void copyDetails(QUuid id);
  // The same of several, in the order of the list.
  void copyDetails(const QSet<QUuid>& ids);
  // Selects the outputs in the gallery.
  void show(QUuid id);
  // What the cell's or row's one button does.
  void perform(QUuid id, JobAction action);

 Q_SIGNALS:
  void layoutChanged();
  void contentChanged();
  void activeChanged();

 private:
  void refresh();
  // The jobs of one rank, which is the first of what they are grouped by.
  using Rank = std::vector<const core::GenerationJob*>;
  static constexpr std::size_t ranks = 3;
  void setRows(const std::array<Rank, ranks>& ranked);
  QString groupTitle(std::size_t rank, const core::GenerationJob& job);
  bool isFound(const core::GenerationJob& job);
  const QString& folded(const QString& text);
  bool isSeen(const core::GenerationJob& job) const;
  void announce(const QUuid& id);
  void withdrawSeen();

  Ports ports_;
  JobSegment segment_ = JobSegment::all;
  QString search_;
  QString foldedSearch_;
  QHash<QString, QString> folded_;  // what was searched through so far
  KnownDays days_;
  std::vector<QUuid> rows_;
  std::vector<JobGroup> groups_;
  int activeCount_ = 0;
  std::vector<std::pair<quint64, QUuid>> announced_;  // cards about results, with their jobs
  OncePerTurn refreshSoon_{[this] { refresh(); }};
};

}  // namespace sorvan::shell
