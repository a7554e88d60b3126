#include "catalogue/credits_provider.h"

#include "base/ids.h"
#include "base/planted_bug.h"
#include "base/task.h"
#include "catalogue/credits_media.h"
#include "catalogue/fal_download.h"
#include "catalogue/reference_media.h"
#include "catalogue/request_for_model.h"
#include "catalogue/service_hosts.h"
#include "catalogue/submission_body.h"
#include "catalogue/texts.h"
#include "generation/generation_request.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr int secondsForClips = 1800;
constexpr int secondsForOthers = 600;
constexpr std::chrono::seconds uploadTimeout{180};

/// One run's values, by which its steps speak to each other.
struct Purchase {
  CreditsServices services;
  ProviderCall call;
  CreditsClient client;
  QString requestID;  ///< of the request, not of the gateway's operation
};
using SharedPurchase = std::shared_ptr<const Purchase>;

void noteChange(const CreditsServices& services) {
  if (services.creditsChanged) services.creditsChanged();
}

Task<> tell(std::shared_ptr<ProviderRun> run, QString message, std::optional<QString> operation = std::nullopt) {
  ProviderUpdate update;
  update.message = message;
  update.requestID = std::move(operation);
  co_await run->update(std::move(update));
}

SharedPurchase purchaseOf(CreditsServices services, ProviderCall call) {
  const QString token = call.key.value_or(QString());
  if (token.isEmpty()) throw SorvanError(texts::signInNeeded());
  const CreditsClient client = services.client(token);
  if (!call.request.creditRequestID) throw SorvanError(texts::requestIDMissing());
  const QString requestID = uuidText(*call.request.creditRequestID);
  return std::make_shared<const Purchase>(Purchase{std::move(services), std::move(call), client, requestID});
}

/// The way that a submission goes out now.
Task<GatewayTrace> presentTrace(SharedPurchase purchase, std::stop_token stop) {
  GatewayTrace trace;
  trace.gateway = purchase->client.gateway().toString();
  trace.requestID = purchase->requestID;
  const auto known = purchase->services.account();
  if (known) {
    trace.account = *known;
  } else {
    trace.account = co_await accountName(purchase->client, stop);
  }
  co_return trace;
}

/// A gateway that never saw the request is only an answer when it is the one that the request would have gone to.
void requireSameAccount(const Purchase& purchase, const std::optional<GatewayTrace>& earlier,
                        const GatewayTrace& present) {
  const bool wasSentElsewhere = earlier && earlier->requestID == present.requestID && *earlier != present;
  const bool wasAccepted = !purchase.call.knownRequestID.value_or(QString()).isEmpty();
  if (wasSentElsewhere || wasAccepted) throw SorvanError(texts::otherAccount());
}

/// Step 9. One reference at the gateway.
Task<QString> uploaded(SharedPurchase purchase, QString file, std::stop_token stop) {
  const auto prepare = [file, stop] { return preparedReference(file, stop); };
  PreparedMedia media = co_await onPool(prepare, stop);
  GatewayCall call;
  call.path = u"v1/uploads"_s;
  call.body = std::move(media.bytes);
  call.contentType = media.contentType.toUtf8();
  call.timeout = uploadTimeout;
  const QByteArray reply = co_await purchase->client.send(std::move(call), stop);
  const QString address = parseJson(reply).toObject().value(u"url"_s).toString();
  if (httpsAddress(address).isEmpty()) throw SorvanError(texts::gatewayRefused());
  co_return address;
}

Task<QStringList> uploadedReferences(SharedPurchase purchase, std::stop_token stop) {
  QStringList addresses;
  const auto& references = purchase->call.references;
  const auto count = static_cast<qsizetype>(references.size());
  for (qsizetype index = 0; index < count; ++index) {
    throwIfStopped(stop);
    co_await tell(purchase->call.run, texts::uploading(index + 1, count));
    addresses << co_await uploaded(purchase, references[static_cast<std::size_t>(index)].file, stop);
  }
  co_return addresses;
}

/// Step 11. The one POST, announced on the disk before it leaves.
Task<CreditsOperation> boughtOnce(SharedPurchase purchase, CreditsClient::Submission submission, GatewayTrace trace,
                                  std::stop_token) {
  const std::shared_ptr<ProviderRun> run = purchase->call.run;
  const bool isFirst = !run->sentThrough();
  co_await run->aboutToSubmitThrough(std::move(trace));
  CreditsClient::Submission again = submission;
  std::exception_ptr refused;
  try {
    co_return co_await purchase->client.submit(std::move(submission), run->submissionStop());
  } catch (const SubmissionUnknown&) {
    if (!planted("credits-unknown-new-key")) throw;
  } catch (...) {
    // The client throws anything else only when nothing was accepted.
    refused = std::current_exception();
  }
  if (!refused) {
    // Only the planted bug comes here.
    again.requestID = uuidText(newUuid());
    co_return co_await purchase->client.submit(std::move(again), {});
  }
  if (isFirst) co_await run->notSubmittedThrough();
  std::rethrow_exception(refused);
}

/// Steps 5 to 11: everything that can be refused is refused before anything is sent or paid for.
Task<CreditsOperation> bought(SharedPurchase purchase, GatewayTrace trace, std::stop_token stop) {
  const CreditsServices& services = purchase->services;
  const ProviderCall& call = purchase->call;
  // 5. The model, and whether it takes the request.
  const auto model = services.catalog->model(call.request.model);
  if (!model) throw SorvanError(texts::modelNotListed());
  validate(call.request, services.catalog->options());
  // 6. The options that the price depends on; only the copy that is sent has them.
  const bool perSecond = services.isPricedPerSecond && services.isPricedPerSecond(model->id);
  const GenerationRequest request = withPricedOptions(call.request, *model, perSecond);
  // 7. and 8. The references, and a body with stand-ins for them.
  if (call.references.size() != request.referenceIDs.size()) throw SorvanError(texts::unreadableReference());
  submissionBody(*model, request, pendingAddresses(request));
  // 9. The uploads.
  const QStringList addresses = co_await uploadedReferences(purchase, stop);
  throwIfStopped(stop);
  // 10. and 11. The true body, sent once.
  CreditsClient::Submission submission;
  submission.model = model->id;
  submission.input = submissionBody(*model, request, addresses);
  submission.requestID = planted("credits-new-key") ? uuidText(newUuid()) : purchase->requestID;
  submission.feature = featureOf(*services.catalog, call.request);
  co_return co_await boughtOnce(purchase, std::move(submission), std::move(trace), stop);
}

/// Steps 3 to 12: the operation of this request, an earlier one before a new one. A question that fails ends the run.
Task<CreditsOperation> operationOfRequest(SharedPurchase purchase, std::stop_token stop) {
  std::optional<CreditsOperation> found = co_await purchase->client.existing(purchase->requestID, stop);
  throwIfStopped(stop);
  if (!found || found->isFailed()) {
    const std::optional<GatewayTrace> earlier = purchase->call.run->sentThrough();
    GatewayTrace present = co_await presentTrace(purchase, stop);
    if (!found) requireSameAccount(*purchase, earlier, present);
    found = co_await bought(purchase, std::move(present), stop);
  }
  // What the gateway has taken is stored also when the job was cancelled meanwhile.
  co_await tell(purchase->call.run, texts::queuedWithCredits(), found->id);
  noteChange(purchase->services);
  co_return *found;
}

/// Step 13.
Task<CreditsOperation> completed(SharedPurchase purchase, CreditsOperation operation, std::stop_token stop) {
  const auto model = purchase->services.catalog->find(purchase->call.request.model);
  const bool makesClip = model && model->output == MediaType::video;
  try {
    CreditsOperation ended = co_await purchase->client.wait(std::move(operation),
                                                            makesClip ? secondsForClips : secondsForOthers, stop);
    noteChange(purchase->services);
    co_return ended;
  } catch (const RemoteJobFailed&) {
    // The hold was released.
    noteChange(purchase->services);
    throw;
  }
}

/// Step 15.
std::vector<CreditsImage> imagesOf(const CreditsOperation& operation) {
  if (operation.result && operation.result->images && !operation.result->images->empty())
    return *operation.result->images;
  throw SorvanError(operation.failure.value_or(texts::gatewayNoOutputs()));
}

/// Step 16. The share of one output.
GenerationCost costOf(const CreditsOperation& operation, std::size_t images, Instant now) {
  const double credits = static_cast<double>(operation.charged) / static_cast<double>(microcreditsOfCredit);
  GenerationCost cost;
  cost.credits = credits / static_cast<double>(images);
  cost.perImageUSD = *cost.credits * dollarsOfCredit;
  cost.basis = u"sorvanCredits"_s;
  cost.note = texts::paidWith(creditsDisplay(operation.charged));
  cost.pricingDate = isoText(now).left(10);
  cost.source = rawValue(ProviderID::credits);
  return cost;
}

/// Step 18. One output; where it lies is tested before the question leaves, and again at each redirect.
Task<GeneratedOutput> downloaded(SharedPurchase purchase, CreditsImage image, MediaType made, int index,
                                 std::stop_token stop) {
  if (!isMediaAddress(image.url)) throw SorvanError(texts::unexpectedMediaHost());
  DownloadRules rules;
  rules.failed = texts::paidDownloadFailed();
  rules.mayFollow = isMediaAddress;
  rules.tellsEveryFailure = true;
  rules.extension = [url = image.url, made](QByteArrayView start) { return fileExtension(url, start, made); };
  OutputAddress address;
  address.url = image.url;
  address.label = image.label;
  const QString path = purchase->call.run->partFile(index);
  co_return co_await downloadOutput(purchase->services.transport, std::move(address), path, std::move(rules), stop);
}

/// Steps 15 to 19: nothing here buys.
Task<std::vector<GeneratedOutput>> collected(SharedPurchase purchase, CreditsOperation operation,
                                             std::stop_token stop) {
  const std::vector<CreditsImage> images = imagesOf(operation);
  const GenerationCost cost = costOf(operation, images.size(), purchase->services.clock->now());
  // 17. From here on the request is known to be paid for.
  ProviderUpdate paid;
  paid.message = texts::paidDownloading();
  paid.charge = cost;
  co_await purchase->call.run->update(std::move(paid));
  const auto model = purchase->services.catalog->find(purchase->call.request.model);
  const MediaType made = model ? model->output : MediaType::image;
  std::vector<GeneratedOutput> outputs;
  for (std::size_t index = 0; index < images.size(); ++index) {
    throwIfStopped(stop);
    GeneratedOutput output = co_await downloaded(purchase, images[index], made, static_cast<int>(index), stop);
    output.seed = operation.result->seed;
    output.cost = cost;
    outputs.push_back(std::move(output));
  }
  co_return outputs;
}

Task<std::vector<GeneratedOutput>> generated(CreditsServices services, ProviderCall call, std::stop_token stop) {
  const SharedPurchase purchase = purchaseOf(std::move(services), std::move(call));
  CreditsOperation operation = co_await operationOfRequest(purchase, stop);
  operation = co_await completed(purchase, std::move(operation), stop);
  co_return co_await collected(purchase, std::move(operation), stop);
}

}  // namespace

Task<QString> accountName(CreditsClient client, std::stop_token stop) {
  const auto me = co_await client.get<QJsonObject>(u"v1/me"_s, stop);
  co_return me.value(u"email"_s).toString().toLower();
}

std::vector<ModelOption> CreditsImageProvider::listModels() const { return services.catalog->options(); }

Task<std::vector<GeneratedOutput>> CreditsImageProvider::generateImage(ProviderCall call, std::stop_token stop) {
  return generated(services, std::move(call), std::move(stop));
}

Task<> CreditsImageProvider::cancelJob(RemoteHandle, QString, std::stop_token) {
  throw SorvanError(texts::noHandleToCancel());
  co_return;
}

}  // namespace sorvan::catalogue
