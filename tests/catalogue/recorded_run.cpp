#include "catalogue/recorded_run.h"

namespace sorvan::test {

base::Task<> RecordedRun::update(generation::ProviderUpdate update) {
  events << update.message;
  updates.push_back(update);
  const bool cancels = !cancelAt.isEmpty() && update.message == cancelAt;
  co_await base::yieldToLoop();
  if (cancels) throw base::Cancelled();
}

base::Task<> RecordedRun::aboutToSubmit() {
  events << QStringLiteral("about to submit");
  co_await base::yieldToLoop();
  if (cancelledBeforeSubmission) throw base::Cancelled();
}

base::Task<> RecordedRun::notSubmitted() {
  events << QStringLiteral("not submitted");
  co_await base::yieldToLoop();
}

base::Task<> RecordedRun::aboutToSubmitThrough(generation::GatewayTrace way) {
  events << QStringLiteral("about to submit");
  co_await base::yieldToLoop();
  if (cancelledBeforeSubmission) throw base::Cancelled();
  trace = std::move(way);
}

base::Task<> RecordedRun::notSubmittedThrough() {
  events << QStringLiteral("not submitted");
  trace.reset();
  co_await base::yieldToLoop();
}

QString RecordedRun::partFile(int index) { return folder / QStringLiteral("%1.part").arg(index); }

std::optional<core::RemoteHandle> RecordedRun::handle() const {
  for (const auto& update : updates) {
    if (update.handle) return update.handle;
  }
  return std::nullopt;
}

}  // namespace sorvan::test
