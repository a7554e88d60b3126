// A studio whose jobs are paid with credits, over a scripted gateway.
#pragma once

#include "base/ids.h"
#include "generation/scripted_gateway.h"
#include "generation/settle_cancelled.h"
#include "generation/studio.h"

namespace sorvan::generation::test {

inline const QString cancelledFree = QStringLiteral("Cancelled. No credits were charged.");
inline const QString cancelledCharged =
    QStringLiteral("Cancelled here, but the model had already finished the work, so it was charged.");
inline const QString cancelledHeld =
    QStringLiteral("Cancelled here. The model had already started; its credits are held until it stops or finishes.");
inline const QString cancelledLocally = QStringLiteral("Cancelled locally; remote processing may still be billed.");
inline const QString resultInTrash =
    QStringLiteral("Cancelled, but the model had already finished, so it was charged. The result is in Trash.");
inline const QString resultNotFetched = cancelledCharged + QStringLiteral(" Its result could not be fetched.");

class CreditsStudio : public Studio {
 public:
  CreditsStudio() {
    billing.payWith = PayWith::credits;
    provider->script.post = Script::Post::operation;
    provider->script.holdPoll = true;
    plugIn();
  }
  /// As the program would find everything if its process ended this very moment; gateway and service live on.
  CreditsStudio(const CreditsStudio& other, AfterCrashOf crash) : Studio(other, crash), gateway(other.gateway) {
    billing.payWith = PayWith::credits;
    plugIn();
  }

  std::shared_ptr<ScriptedGateway> gateway = std::make_shared<ScriptedGateway>();
  int balanceLooks = 0;

  /// Ends the program in order and starts it again.
  void startAgain() {
    restart();
    listen();
  }
  /// A job whose operation runs when it is cancelled here.
  QUuid cancelledWhileRunning(const QString& prompt = QStringLiteral("a red kite")) {
    const QUuid id = runningJob(prompt);
    cancel(*queue, id);
    return id;
  }
  QUuid runningJob(const QString& prompt = QStringLiteral("a red kite")) {
    const qsizetype polls = provider->events.count(QStringLiteral("poll"));
    const QUuid id = enqueue(promptRequest(prompt));
    awaitEvent(QStringLiteral("poll"), polls + 1);
    return id;
  }
  void awaitDetail(const QUuid& id, const QString& detail) {
    sorvan::test::runUntil([&] { return job(id)->detail == detail && !queue->isRunning(id); });
    sorvan::test::runPosted();
  }
  /// Lets the watch look once more.
  void look() {
    clock->advance(std::chrono::seconds(15));
    sorvan::test::runPosted();
  }
  /// A cancelled job as an earlier session left it, its operation known to the gateway.
  JobRef leftBehind(const QString& detail, const QString& operation = QStringLiteral("left"),
                    ProviderID payer = ProviderID::credits) {
    GenerationRequest request = promptRequest();
    request.provider = payer;
    request.creditRequestID = newUuid();
    GenerationJob row({}, request, store->now());
    row.status = jobStatus::cancelled;
    row.finishedAt = store->now();
    row.detail = detail;
    if (!operation.isEmpty()) row.providerRequestID = operation;
    provider->operations.insert(*request.creditRequestID, operation);
    provider->script.holdPoll = false;
    const JobRef job = store->context().insert(row);
    store->save(LibraryTables::jobs);
    return job;
  }
  void settlePass() { sorvan::test::runTask(settleCancelled(*queue)); }
  std::vector<AssetRef> outputsOf(const QUuid& id) const { return store->outputs(id); }
  bool isInTrash(const QUuid& id) const {
    const auto outputs = outputsOf(id);
    return outputs.size() == 1 && outputs.front()->isTrashed();
  }

 private:
  void plugIn() {
    adjustPorts = [gateway = gateway](GenerationPorts& ports) { gateway->plugInto(ports); };
    startAgain();
  }
  void listen() {
    QObject::connect(queue.get(), &JobQueue::creditsChanged, [this] { ++balanceLooks; });
  }
};

}  // namespace sorvan::generation::test
