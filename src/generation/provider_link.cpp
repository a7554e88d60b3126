#include "generation/provider_link.h"

#include "generation/job_runner.h"
#include "generation/result_recovery.h"

namespace sorvan::generation {
namespace {

class ProviderLink final : public ProviderRun {
 public:
  ProviderLink(JobQueue& queue, const QUuid& job, std::function<void()> beforeSending, std::stop_token stop)
      : m_queue(queue),
        m_job(job),
        m_files(queue.store().files()),
        m_beforeSending(std::move(beforeSending)),
        m_stop(std::move(stop)) {}

  Task<> update(ProviderUpdate update) override {
    applyUpdate(m_queue, m_job, update);
    throwIfStopped(m_stop);
    co_return;
  }

  Task<> aboutToSubmit() override {
    prepareToSend();
    ResultRecovery::writeSubmissionMarker(m_files, m_job);
    co_return;
  }

  Task<> notSubmitted() override {
    ResultRecovery::removeSubmissionMarker(m_files, m_job);
    co_return;
  }

  std::optional<GatewayTrace> sentThrough() const override { return ResultRecovery::gatewayTrace(m_files, m_job); }

  Task<> aboutToSubmitThrough(GatewayTrace trace) override {
    prepareToSend();
    ResultRecovery::writeGatewayTrace(trace, m_files, m_job);
    co_return;
  }

  Task<> notSubmittedThrough() override {
    ResultRecovery::removeGatewayTrace(m_files, m_job);
    co_return;
  }

  std::stop_token submissionStop() const override { return m_queue.submissionStop(); }

  QString partFile(int index) override {
    m_queue.store().requireWorkspaceInPlace();
    return ResultRecovery::partFile(m_files, m_job, index);
  }

 private:
  /// Nothing is sent for a job that was stopped, or whose result could not be kept.
  void prepareToSend() const {
    throwIfStopped(m_stop);
    const JobRef job = m_queue.store().job(m_job);
    if (!job || job->status != jobStatus::generating) throw Cancelled();
    m_queue.store().requireRoomForResult();
    m_beforeSending();
  }

  JobQueue& m_queue;
  QUuid m_job;
  WorkspaceFiles m_files;
  std::function<void()> m_beforeSending;
  std::stop_token m_stop;
};

}  // namespace

std::shared_ptr<ProviderRun> makeProviderLink(JobQueue& queue, const QUuid& job, std::function<void()> beforeSending,
                                              std::stop_token stop) {
  return std::make_shared<ProviderLink>(queue, job, std::move(beforeSending), std::move(stop));
}

}  // namespace sorvan::generation
