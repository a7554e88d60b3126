#include "catalogue/fal_provider.h"

#include <QJsonDocument>

#include "base/task.h"
#include "catalogue/fal_download.h"
#include "catalogue/fal_queue.h"
#include "catalogue/fal_upload.h"
#include "catalogue/outputs.h"
#include "catalogue/submission_body.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"
#include "generation/generation_request.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRounds = 600;
constexpr std::chrono::seconds roundWait{2};

Task<> tell(std::shared_ptr<ProviderRun> run, QString message) {
  ProviderUpdate update;
  update.message = message;
  co_await run->update(std::move(update));
}

Task<QStringList> uploadedReferences(FalServices services, FalModel model, ProviderCall call, QString key,
                                     std::stop_token stop) {
  QStringList addresses;
  const auto count = static_cast<qsizetype>(call.references.size());
  for (qsizetype index = 0; index < count; ++index) {
    throwIfStopped(stop);
    co_await tell(call.run, texts::uploading(index + 1, count));
    ReferenceUpload upload;
    upload.file = call.references[static_cast<std::size_t>(index)].file;
    upload.key = key;
    upload.pictureLimit = model.inputByteLimit;
    addresses << co_await uploadReference(services.transport, std::move(upload), stop);
  }
  co_return addresses;
}

/// Steps 3 to 9 of a new request: everything that can be refused is refused before anything is sent or paid for.
Task<RemoteHandle> submitted(FalServices services, ProviderCall call, QString key, std::stop_token stop) {
  const auto model = services.catalog->model(call.request.model);
  if (!model) throw SorvanError(texts::modelGone());
  if (call.references.size() != call.request.referenceIDs.size()) throw SorvanError(texts::unreadableReference());
  submissionBody(*model, call.request, pendingAddresses(call.request));

  const QStringList addresses = co_await uploadedReferences(services, *model, call, key, stop);
  throwIfStopped(stop);
  Submission submission;
  submission.endpoint = model->id;
  submission.body = submissionBody(*model, call.request, addresses);
  submission.key = key;
  co_return co_await submitOnce(services.transport, std::move(submission), call.run);
}

/// Stores the handle before anything else happens to the job. The answer is stored also when the job was cancelled.
Task<> reportHandle(std::shared_ptr<ProviderRun> run, RemoteHandle handle) {
  ProviderUpdate update;
  update.message = texts::waiting();
  update.handle = handle;
  update.requestID = handle.requestID;
  co_await run->update(std::move(update));
}

Task<> waitUntilCompleted(FalServices services, ProviderCall call, RemoteHandle handle, QString key,
                          std::stop_token stop) {
  int rounds = 0;
  while (true) {
    throwIfStopped(stop);
    const PolledState polled = co_await fetchJobStatePatiently(services.transport, services.clock, handle, key, stop);
    if (polled.state == JobState::completed) co_return;
    co_await tell(call.run, polled.state == JobState::queued ? texts::queued() : texts::generating());
    co_await services.clock->sleep(roundWait, stop);
    rounds += 1 + polled.waits;
    if (rounds >= mostRounds) throw SorvanError(texts::tooLong());
  }
}

/// A price that cannot be had is no price: the result is worth more.
Task<std::optional<ListedPrice>> priceOf(FalServices services, GenerationRequest request, QString key,
                                         std::stop_token stop) {
  if (!services.prices) co_return std::nullopt;
  try {
    co_return co_await services.prices->listedPrice(std::move(request), std::move(key), stop);
  } catch (const std::exception&) {
    co_return std::nullopt;
  }
}

GenerationCost costFrom(const ListedPrice& price, std::size_t outputs, Instant now) {
  GenerationCost cost;
  cost.perImageUSD = price.total / static_cast<double>(std::max<std::size_t>(outputs, 1));
  cost.basis = u"falUnitPrice"_s;
  cost.note = texts::listedPriceNote(QString::number(price.unitPrice, 'g', 10), price.unit);
  cost.pricingDate = isoText(now).left(10);
  cost.source = pricingAddress().toString();
  return cost;
}

/// What the service says it billed, kept beside the estimate.
std::optional<QString> usageJSON(const QString& billedUnits) {
  if (billedUnits.isEmpty()) return std::nullopt;
  const QJsonObject usage{{u"billable_units"_s, billedUnits.toDouble()}};
  return QString::fromUtf8(QJsonDocument(usage).toJson(QJsonDocument::Compact));
}

Task<std::optional<GenerationCost>> reportedCharge(FalServices services, ProviderCall call, QString key,
                                                   std::size_t outputs, QString billedUnits, std::stop_token stop) {
  const auto price = co_await priceOf(services, call.request, key, stop);
  if (!price) co_return std::nullopt;
  ProviderUpdate update;
  update.message = texts::downloading();
  update.charge = costFrom(*price, outputs, services.clock->now());
  update.charge->responseUsageJSON = usageJSON(billedUnits);
  const GenerationCost cost = *update.charge;
  co_await call.run->update(std::move(update));
  co_return cost;
}

std::optional<qint64> seedOf(const QJsonObject& result) {
  constexpr double beyond = 9.2e18;
  const QJsonValue seed = result.value(u"seed"_s);
  const double number = seed.toDouble();
  if (!seed.isDouble() || number != std::floor(number) || std::abs(number) > beyond) return std::nullopt;
  return seed.toInteger();
}

NamedParts partsOf(const FalServices& services, const GenerationRequest& request) {
  const auto model = services.catalog->find(request.model);
  const bool splits = model && model->audioInput.value_or(false);
  return splits ? NamedParts::yes : NamedParts::no;
}

/// Steps 10 to 14: everything that follows once the remote job exists. Never submits.
Task<std::vector<GeneratedOutput>> collected(FalServices services, ProviderCall call, RemoteHandle handle, QString key,
                                             std::stop_token stop) {
  co_await waitUntilCompleted(services, call, handle, key, stop);
  const JobResult result = co_await fetchResult(services.transport, handle, key, stop);
  const std::vector<OutputAddress> addresses = outputAddresses(result.body, partsOf(services, call.request));
  const auto cost = co_await reportedCharge(services, call, key, addresses.size(), result.billedUnits, stop);
  std::vector<GeneratedOutput> outputs;
  for (std::size_t index = 0; index < addresses.size(); ++index) {
    throwIfStopped(stop);
    const QString path = call.run->partFile(static_cast<int>(index));
    GeneratedOutput output = co_await downloadOutput(services.transport, addresses[index], path, stop);
    output.seed = seedOf(result.body);
    output.cost = cost;
    outputs.push_back(std::move(output));
  }
  co_return outputs;
}

Task<std::vector<GeneratedOutput>> generated(FalServices services, ProviderCall call, std::stop_token stop) {
  const QString key = call.key.value_or(QString());
  if (key.isEmpty()) throw SorvanError(texts::keyMissing());
  // A job that exists is only attached to: what validation would refuse was paid for already.
  if (!call.resume) validate(call.request, services.catalog->options());
  RemoteHandle handle;
  if (call.resume) {
    handle = *call.resume;
  } else {
    handle = co_await submitted(services, call, key, stop);
  }
  co_await reportHandle(call.run, handle);
  co_return co_await collected(services, std::move(call), std::move(handle), key, stop);
}

}  // namespace

std::vector<ModelOption> FalProvider::listModels() const { return services.catalog->options(); }

Task<std::vector<GeneratedOutput>> FalProvider::generateImage(ProviderCall call, std::stop_token stop) {
  return generated(services, std::move(call), stop);
}

Task<> FalProvider::cancelJob(RemoteHandle handle, QString key, std::stop_token stop) {
  return cancelRemoteJob(services.transport, std::move(handle), std::move(key), stop);
}

}  // namespace sorvan::catalogue
