#include "generation/enqueue.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSet>

#include "base/ids.h"
#include "base/text.h"
#include "generation/generation_request.h"
#include "generation/markup.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

/// Every service that takes a seed takes one of this size.
constexpr int largestFreshSeed = 1000000000;

std::vector<ModelOption> modelsOf(const JobQueue& queue, ProviderID provider) {
  const auto backEnd = queue.ports().providerResolver(provider);
  return backEnd->listModels();
}

/// The user's present choice of payment wins over what the composer stored.
void followPayer(const JobQueue& queue, GenerationRequest& request) {
  if (request.provider == ProviderID::fal && queue.ports().billing().payWith == PayWith::credits)
    request.provider = ProviderID::credits;
}

void writeMarksIn(GenerationRequest& request) {
  if (hasNotedMarks(request)) request.prompt = Markup::prompt(request.prompt, *request.markup);
}

/// A model that needs a seed gets a fresh one, stored with the job: sending the job again asks for the same picture.
void giveSeed(const JobQueue& queue, GenerationRequest& request) {
  if (request.seed) return;
  const auto fact = queue.ports().models->find(request.model);
  if (fact && fact->needsSeed) request.seed = QRandomGenerator::global()->bounded(1, largestFreshSeed);
}

MediaType expectedReference(const JobQueue& queue, const GenerationRequest& request) {
  const auto fact = queue.ports().models->find(request.model);
  if (fact && fact->videoInput) return MediaType::video;
  if (fact && fact->audioInput) return MediaType::audio;
  return MediaType::image;
}

QString referenceGone(MediaType expected) {
  if (expected == MediaType::video) return texts::clipGone();
  if (expected == MediaType::audio) return texts::soundGone();
  return texts::referenceImageGone();
}

void noteUsage(const JobQueue& queue, const GenerationRequest& request) {
  const GenerationPorts& ports = queue.ports();
  if (ports.noteUsage && ports.feature) ports.noteUsage(QStringLiteral("job.") + ports.feature(request), 1);
}

ContactSheet comparisonSheet(const GenerationRequest& first, std::optional<QUuid> project,
                             const std::optional<QString>& title, Instant now) {
  return ContactSheet(project, title ? *title : contactSheetTitle(first.prompt), first.comparisonID, {}, now);
}

/// Inserts the jobs and the sheet and saves them as one; a failure leaves nothing behind.
std::vector<QUuid> persistJobs(LibraryStore& store, const std::vector<GenerationRequest>& requests,
                               std::optional<QUuid> project, const std::optional<QString>& sheetTitle) {
  std::vector<QUuid> ids;
  try {
    for (const GenerationRequest& request : requests)
      ids.push_back(store.context().insert(GenerationJob(project, request, store.now()))->id);
    if (requests.front().comparisonID)
      store.context().insert(comparisonSheet(requests.front(), project, sheetTitle, store.now()));
    store.save(LibraryTables::jobs | LibraryTables::contactSheets);
  } catch (...) {
    store.rollBack();
    throw;
  }
  return ids;
}

}  // namespace

void checkPayment(const JobQueue& queue, const GenerationRequest& request) {
  // 1. A key or token pays.
  const auto key = queue.ports().keyReader(request.provider);
  if (key && !key->isEmpty()) return;
  // 2. Credits need an account.
  if (request.provider == ProviderID::credits)
    throw SorvanError(texts::signInToPay(queue.ports().billing().ownKeyAllowed));
  // 3. Everything else needs a key.
  throw SorvanError(texts::addKeyToPay());
}

void validateForEnqueue(const JobQueue& queue, const GenerationRequest& request) {
  // 1. The request itself and its payment.
  validate(request, modelsOf(queue, request.provider));
  checkPayment(queue, request);
  // 2. The kind that its references must have.
  const MediaType expected = expectedReference(queue, request);
  // 3. Each of them is there, out of Trash, and of that kind.
  for (const QUuid& id : request.referenceIDs) {
    const AssetRef asset = queue.store().asset(id);
    if (!asset || asset->isTrashed() || asset->type() != expected) throw SorvanError(referenceGone(expected));
  }
}

void checkReady(const JobQueue& queue, const GenerationRequest& request, ReferenceCheck references) {
  GenerationRequest copy = request;
  followPayer(queue, copy);
  writeMarksIn(copy);
  if (references == ReferenceCheck::include) return validateForEnqueue(queue, copy);
  validate(copy, modelsOf(queue, copy.provider));
  checkPayment(queue, copy);
}

std::vector<QUuid> enqueueRequests(JobQueue& queue, std::vector<GenerationRequest> requests,
                                   std::optional<QUuid> project, std::optional<QString> sheetTitle) {
  if (requests.empty()) return {};
  LibraryStore& store = queue.store();
  // 1. Not during a backup.
  store.refuseDuringBackup();
  // 2. The workspace and the project are there.
  if (!store.hasWorkspace() || (project && !store.project(*project)))
    throw SorvanError(texts::workspaceOrProjectUnavailable());
  // 3. The payer, and 4. the notes of marks and the seed.
  for (GenerationRequest& request : requests) {
    followPayer(queue, request);
    writeMarksIn(request);
    giveSeed(queue, request);
  }
  // 5. Everything is valid before anything is written.
  for (const GenerationRequest& request : requests) validateForEnqueue(queue, request);
  // 6. Usage.
  for (const GenerationRequest& request : requests) noteUsage(queue, request);
  // 7. The key that makes the gateway charge at most once: made here, stored in the job's own row.
  for (GenerationRequest& request : requests)
    if (request.provider == ProviderID::credits) request.creditRequestID = newUuid();
  // 8. The comparison's sheet, and 9. one save of all.
  const std::vector<QUuid> ids = persistJobs(store, requests, project, sheetTitle);
  // 10. Start what may start.
  for (const QUuid& id : ids) queue.allowStart(id);
  queue.pump();
  return ids;
}

QUuid enqueueComparison(JobQueue& queue, const GenerationRequest& request, const std::vector<ComparisonModel>& models,
                        std::optional<QUuid> project) {
  // 1. At least two, all different.
  QSet<QString> distinct;
  for (const ComparisonModel& model : models) distinct.insert(rawValue(model.provider) + u':' + model.model.id);
  if (models.size() < 2 || distinct.size() != static_cast<qsizetype>(models.size()))
    throw SorvanError(texts::chooseTwoModels());
  if (request.count < 1 || request.count > 4) throw SorvanError(texts::chooseCount());
  // 2. A sheet has eight places.
  if (static_cast<int>(models.size()) * request.count > 8) throw SorvanError(texts::contactSheetFull());
  // 3. The comparison's id.
  const QUuid comparison = newUuid();
  // 4. One request for each model.
  std::vector<GenerationRequest> requests;
  for (const ComparisonModel& model : models) {
    GenerationRequest copy = queue.ports().forModel(request, model);
    copy.provider = model.provider;
    copy.comparisonID = comparison;
    copy.comparisonOrder = static_cast<int>(requests.size());
    copy.quality = QStringLiteral("default");
    requests.push_back(copy);
  }
  // 5. The ordinary road.
  enqueueRequests(queue, std::move(requests), project);
  return comparison;
}

QString contactSheetTitle(const QString& prompt) {
  static const QRegularExpression space(QStringLiteral("\\s+"), QRegularExpression::UseUnicodePropertiesOption);
  const QString title = firstChars(prompt.split(space, Qt::SkipEmptyParts).join(u' '), 80);
  return title.isEmpty() ? texts::untitledComparison() : title;
}

}  // namespace sorvan::generation
