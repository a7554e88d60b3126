#include "generation/credit_operations.h"

#include "generation/texts.h"

namespace sorvan::generation {

QString detailOfCancelled(const QString& state) {
  if (creditsState::isFailed(state)) return texts::cancelledFree();
  return creditsState::isComplete(state) ? texts::cancelledCharged() : texts::cancelledHeld();
}

std::optional<QString> operationOf(const GenerationJob& job) {
  const auto request = job.request();
  if (!request || request->provider != ProviderID::credits) return std::nullopt;
  return job.providerRequestID && !job.providerRequestID->isEmpty() ? job.providerRequestID : std::nullopt;
}

Task<std::optional<QString>> askState(JobQueue* queue, QString operation, std::stop_token stop) {
  if (!queue->ports().creditState) co_return std::nullopt;
  try {
    const QString state = co_await queue->ports().creditState(operation, stop);
    co_return state.isEmpty() ? std::nullopt : std::optional(state);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception&) {
    // The gateway cannot be reached now; whoever asks tries again later.
    co_return std::nullopt;
  }
}

Task<std::optional<QString>> askToCancel(JobQueue* queue, QString operation, std::stop_token stop) {
  if (!queue->ports().cancelCredits) co_return std::nullopt;
  QString state;
  try {
    state = co_await queue->ports().cancelCredits(operation, stop);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception&) {
    co_return std::nullopt;
  }
  if (!state.isEmpty()) co_return state;
  // The gateway took it without a word on where the operation stands.
  const auto asked = co_await askState(queue, operation, stop);
  co_return asked.value_or(QString());
}

}  // namespace sorvan::generation
