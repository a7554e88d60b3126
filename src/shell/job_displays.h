#pragma once

#include <QHash>
#include <QObject>

#include "account/spend.h"
#include "base/instant.h"
#include "base/task_scope.h"
#include "core/records.h"
#include "shell/job_display.h"

namespace sorvan::core {
class LibraryStore;
}
namespace sorvan::generation {
class JobQueue;
}

namespace sorvan::shell {

// Turns job records into what is shown of them, and lets running clocks tick. Main thread.
class JobDisplays : public QObject {
  Q_OBJECT

 public:
  // Both outlive this object.
  JobDisplays(core::LibraryStore& store, generation::JobQueue& queue, QObject* parent = nullptr);
  ~JobDisplays() override;

  // Looks at the job's recovery folder too, so ask for what is visible only.
  JobDisplay display(const core::GenerationJob& job) const;
  // Of the job only its state and what can be read of it: prompt, model, destination and how it went. Looks at no file.
  JobDisplay words(const core::GenerationJob& job) const;
  // A null id when the job is gone.
  JobDisplay display(const QUuid& id) const;
  JobState stateOf(const core::GenerationJob& job) const;
  // The name of a model, known to the catalogue or not.
  QString modelName(const QString& model) const;
  // How amounts are told at present.
  account::Spend spend() const;
  // From its start, or its last one, to its end or to now.
  double secondsAtWork(const core::GenerationJob& job) const;
  // What running jobs do to items: “Upscaling…” for the item that is upscaled.
  QHash<QUuid, QString> workOnItems() const;
  // Width by height of the expected output.
  double aspectRatio(const core::GenerationJob& job) const;

 Q_SIGNALS:
  // A second has passed while a job was at work: elapsed times differ.
  void ticked();

 private:
  void startTicking();
  Task<> tick(std::stop_token stop);
  Instant startOf(const core::GenerationJob& job) const;
  void fillAction(JobDisplay& display, const core::GenerationJob& job) const;
  QString referenceThumbnail(const core::GenerationJob& job) const;
  void fillTimes(JobDisplay& display, const core::GenerationJob& job) const;
  void fillOutputs(JobDisplay& display, const core::GenerationJob& job) const;

  core::LibraryStore& store_;
  generation::JobQueue& queue_;
  QHash<QUuid, Instant> restarts_;
  bool ticking_ = false;
  TaskScope tasks_;
};

}  // namespace sorvan::shell
