// A workspace in a temporary folder with a queue over a scripted provider: core and this room, nothing above them.
#pragma once

#include <memory>

#include "base/settings.h"
#include "core/workspace_opening.h"
#include "generation/cancel_and_retry.h"
#include "generation/enqueue.h"
#include "generation/job_queue.h"
#include "generation/request_builders.h"
#include "generation/result_recovery.h"
#include "generation/scripted_provider.h"
#include "support/run_task.h"
#include "support/temporary_folder.h"

namespace sorvan::generation::test {

class Studio {
 public:
  Studio();
  /// As another studio would find its workspace if its process ended this very moment; the service lives on.
  enum class AfterCrashOf { now };
  Studio(const Studio& other, AfterCrashOf);
  ~Studio();

  sorvan::test::TemporaryFolder folder;
  std::shared_ptr<sorvan::test::FakeClock> clock = std::make_shared<sorvan::test::FakeClock>();
  std::shared_ptr<FactsByID> facts = std::make_shared<FactsByID>();
  std::shared_ptr<ScriptedProvider> provider = std::make_shared<ScriptedProvider>(clock);
  std::optional<QString> key = QStringLiteral("a key");
  Billing billing;
  QStringList usage;
  std::unique_ptr<LibraryStore> store;
  std::unique_ptr<JobQueue> queue;
  std::function<void(GenerationPorts&)> adjustPorts;  ///< applied to the ports of the next `restart`

  QString root() const { return folder / QStringLiteral("workspace"); }
  QString in(const QString& relative) const { return root() + u'/' + relative; }

  /// Ends the program in order and starts it again on the same workspace.
  void restart();

  /// Runs the event loop until no job runs.
  void settle();
  /// Runs the event loop until the provider noted this event so many times.
  void awaitEvent(const QString& event, qsizetype times = 1);

  JobRef job(const QUuid& id) const { return store->job(id); }
  /// The job's row as it stands on disk, read through a database connection of its own.
  GenerationJob onDisk(const QUuid& id) const;
  QUuid enqueue(const GenerationRequest& request, std::optional<QUuid> project = {});
  /// Enqueues and runs until nothing runs.
  JobRef finished(const GenerationRequest& request, std::optional<QUuid> project = {});
  AssetRef addAsset(MediaType type, const QString& name, const QByteArray& bytes);
  ProjectRef addProject(const QString& name);
  /// Runs SQL on the database through another connection, such as a trigger that makes one kind of write fail.
  void sql(const QString& statement) const;
  bool hasRecoveryFolder(const QUuid& job) const;
  bool hasMarker(const QUuid& job) const;
  /// Every file of the workspace outside the hidden folder, relative, sorted.
  QStringList mediaFiles() const;

 private:
  void open();
  void shutDown();
  GenerationPorts portsOfTheTest();
};

}  // namespace sorvan::generation::test
