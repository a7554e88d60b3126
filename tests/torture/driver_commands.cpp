#include "torture/driver_commands.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QImage>
#include <QJsonDocument>

#include "base/checksum.h"
#include "base/durable_file.h"
#include "base/ids.h"
#include "base/sorvan_error.h"
#include "core/media_inspection.h"
#include "core/small_edits.h"
#include "core/history.h"
#include "exchange/import_one.h"
#include "exchange/trash.h"
#include "generation/cancel_and_retry.h"
#include "generation/enqueue.h"
#include "torture/driver_projects.h"
#include "torture/driver_sheets.h"

namespace sorvan::torture {
namespace {

using core::AssetRef;
using core::JobRef;

QString textOf(const QJsonObject& command, const char* key) { return command.value(QLatin1String(key)).toString(); }

// Says at once what was promised: whatever happens to this process from here on, it must be there afterwards.
void acknowledge(const QString& did, const QUuid& id, QJsonObject more = {}) {
  const QByteArray path = qgetenv("SORVAN_DRIVER_ACKS");
  if (path.isEmpty()) return;
  more.insert(QStringLiteral("did"), did);
  more.insert(QStringLiteral("id"), base::uuidText(id));
  const QByteArray line = QJsonDocument(more).toJson(QJsonDocument::Compact) + '\n';
  const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (file < 0 || ::write(file, line.constData(), static_cast<std::size_t>(line.size())) != line.size())
    throw base::SorvanError(QStringLiteral("The acknowledgement could not be written."));
  ::close(file);
}

std::vector<core::MarkupBox> boxesOf(const QJsonArray& numbers) {
  std::vector<core::MarkupBox> boxes;
  for (const QJsonValue& box : numbers)
    boxes.push_back({box[0].toDouble(), box[1].toDouble(), box[2].toDouble(), box[3].toDouble(), QString()});
  return boxes;
}

void enqueue(HeadlessStudio& studio, const QJsonObject& command) {
  core::GenerationRequest request;
  request.model = textOf(command, "model");
  request.prompt = textOf(command, "prompt");
  request.count = command.value(QLatin1String("count")).toInt(1);
  if (command.contains(QLatin1String("size"))) request.size = textOf(command, "size");
  if (command.contains(QLatin1String("seed"))) request.seed = command.value(QLatin1String("seed")).toInteger();
  for (const QJsonValue& number : command.value(QLatin1String("references")).toArray())
    request.referenceIDs.push_back(studio.store->assets()[static_cast<std::size_t>(number.toInt())]->id);
  if (command.contains(QLatin1String("marks"))) request.markup = boxesOf(command.value(QLatin1String("marks")).toArray());
  for (const QUuid& id : generation::enqueueRequests(*studio.queue, {request}, std::nullopt))
    acknowledge(QStringLiteral("enqueue"), id, {{QStringLiteral("prompt"), request.prompt}});
}

void place(HeadlessStudio& studio, const QJsonObject& command) {
  core::LibraryStore& store = *studio.store;
  const QString source = textOf(command, "file");
  const QFileInfo information(source);
  const core::ReservedPath path =
      store.files().uniquePath(QStringLiteral("Inbox/references"), information.completeBaseName(), information.suffix());
  base::copyDurably(source, path.absolute(), base::DurableMode::Media, base::Replacing::NoReplace);
  const core::MediaMetadata metadata = core::inspectMedia(path.absolute());
  core::Asset asset(std::nullopt, metadata.type, path.relative(), information.fileName(), metadata, store.now());
  asset.importedAt = store.now();
  asset.checksum = base::sha256OfFile(path.absolute(), {});
  const QUuid id = asset.id;
  const QString checksum = *asset.checksum;
  store.context().insert(std::move(asset));
  store.save(core::LibraryTables::all);
  acknowledge(QStringLiteral("place"), id, {{QStringLiteral("checksum"), checksum}});
}

// As the composer does it: what came in is one step to undo, and a failure is what the user is told.
base::Task<> importAsReference(HeadlessStudio& studio, QJsonObject command) {
  core::LibraryStore& store = *studio.store;
  const QString file = textOf(command, "file");
  std::optional<QString> failed;
  try {
    QImage painted(48, 32, QImage::Format_RGB32);
    painted.fill(QColor(static_cast<int>(command.value(QLatin1String("shade")).toInt()), 90, 40));
    const exchange::ImportedReference came =
        file.isEmpty() ? co_await exchange::importPastedReference(&store, {}, painted, std::nullopt, {})
                       : co_await exchange::importReference(&store, {}, file, std::nullopt, {});
    if (came.isNew) core::rememberAddedAssets(store, {came.item}, QStringLiteral("Import Media"));
    acknowledge(QStringLiteral("place"), came.item->id, {{QStringLiteral("checksum"), *came.item->checksum}});
  } catch (const base::SorvanError& failure) {
    failed = failure.message();
  }
  if (failed) store.setError(failed);
}

std::vector<JobRef> endedBadly(const core::LibraryStore& store) {
  std::vector<JobRef> jobs;
  for (const JobRef& job : store.jobs())
    if (job->status == QStringLiteral("failed") || job->status == QStringLiteral("cancelled")) jobs.push_back(job);
  return jobs;
}

void retryAll(HeadlessStudio& studio) {
  for (const JobRef& job : endedBadly(*studio.store)) generation::retry(*studio.queue, job->id);
}

void submitAgain(HeadlessStudio& studio) {
  for (const JobRef& job : endedBadly(*studio.store))
    if (generation::submissionIsUnknown(*studio.store, job->id)) generation::submitAgain(*studio.queue, job->id);
}

void cancelNewest(HeadlessStudio& studio) {
  const std::vector<JobRef> active = studio.store->activeJobs();
  if (!active.empty()) generation::cancel(*studio.queue, active.front()->id);
}

base::Task<> runUntilIdle(HeadlessStudio& studio) {
  const base::SystemClock clock;
  while (studio.queue->runningCount() > 0 || !studio.store->activeJobs().empty())
    co_await clock.sleep(std::chrono::milliseconds(5), {});
}

base::Task<> runUntilHandle(HeadlessStudio& studio) {
  const base::SystemClock clock;
  const auto isKnown = [](const core::GenerationJob& job) { return job.remoteHandleData || job.providerRequestID; };
  while (!studio.store->activeJobs().empty() && !isKnown(*studio.store->activeJobs().front()))
    co_await clock.sleep(std::chrono::milliseconds(5), {});
}

void rate(HeadlessStudio& studio, const QJsonObject& command) {
  if (studio.store->assets().empty()) return;
  const AssetRef newest = *studio.store->assets().begin();
  const int stars = command.value(QLatin1String("stars")).toInt();
  core::setRating(*studio.store, newest, stars);
  if (!studio.store->hasUnsavedMetadata() && !studio.store->error())
    acknowledge(QStringLiteral("rate"), newest->id, {{QStringLiteral("stars"), stars}});
}

// Trash is no deletion: what was moved there, or taken out, must be so afterwards.
void acknowledgeTrash(const AssetRef& asset, const QJsonObject& command) {
  if (!command.value(QLatin1String("quietly")).toBool())
    acknowledge(QStringLiteral("trash"), asset->id, {{QStringLiteral("trashed"), asset->isTrashed()}});
}

void trashNewest(HeadlessStudio& studio, const QJsonObject& command) {
  core::LibraryStore& store = *studio.store;
  if (store.assets().empty()) return;
  const AssetRef newest = *store.assets().begin();
  if (exchange::trash(store, {newest})) acknowledgeTrash(newest, command);
}

void restoreAll(HeadlessStudio& studio, const QJsonObject& command) {
  core::LibraryStore& store = *studio.store;
  std::vector<AssetRef> trashed;
  for (const AssetRef& asset : store.assets())
    if (asset->isTrashed()) trashed.push_back(asset);
  if (!exchange::restore(store, trashed, exchange::Rejoin::everywhere)) return;
  for (const AssetRef& asset : trashed) acknowledgeTrash(asset, command);
}

void handleSheet(HeadlessStudio& studio, const QJsonObject& command) {
  const QJsonObject promise = changeSheet(studio, command);
  if (!promise.isEmpty() && !command.value(QLatin1String("quietly")).toBool())
    acknowledge(QStringLiteral("sheet"), base::uuidFromText(textOf(promise, "id")), promise);
}

void handleProject(HeadlessStudio& studio, const QJsonObject& command) {
  const QJsonObject promise = changeProject(studio, command);
  if (!promise.isEmpty())
    acknowledge(QStringLiteral("project"), base::uuidFromText(textOf(promise, "id")), promise);
}

void saveRaw(HeadlessStudio& studio) {
  for (const JobRef& job : endedBadly(*studio.store)) generation::saveRawResult(*studio.queue, job->id);
}

void acknowledgeDraft(const core::LibraryStore& store) {
  if (const auto draft = store.keptComposer())
    acknowledge(QStringLiteral("draft"), {}, {{QStringLiteral("text"), draft->text}});
}

void acknowledgePrompt(const core::PromptEntry& entry) {
  acknowledge(QStringLiteral("prompt"), entry.id, {{QStringLiteral("text"), entry.text}});
}

// A prompt that could not be written stays in memory, as the window tells the user.
void keepPrompt(HeadlessStudio& studio, const QJsonObject& command) {
  core::LibraryStore& store = *studio.store;
  try {
    acknowledgePrompt(store.prompts().save(std::nullopt, textOf(command, "text"), store.now()));
  } catch (const base::SorvanError& failure) {
    store.setError(failure.message());
  }
}

core::ComposerDraft draftOf(int number) {
  core::ComposerDraft draft;
  draft.text = QString::number(number);
  draft.request = core::encodeRequest(core::GenerationRequest());
  return draft;
}

void keepDraft(HeadlessStudio& studio, const QJsonObject& command) {
  studio.store->keepComposer(draftOf(command.value(QLatin1String("number")).toInt()));
  if (!studio.store->hasUnsavedDraft()) acknowledgeDraft(*studio.store);
}

// Somebody types: drafts follow one another without waiting for the disk. What came to rest was promised, and the flush
// that overtakes the rest is the last word.
base::Task<> typeDrafts(HeadlessStudio& studio, QJsonObject command) {
  core::LibraryStore& store = *studio.store;
  const int first = command.value(QLatin1String("number")).toInt();
  for (int number = first; number < first + 3; ++number) store.keepComposerSoon(draftOf(number));
  co_await store.composer().whenWritten();
  if (!store.hasUnsavedDraft()) acknowledgeDraft(store);
  store.keepComposerSoon(draftOf(first + 3));
  store.keepComposerSoon(draftOf(first + 4));
  store.keepComposer(draftOf(first + 5));
  if (!store.hasUnsavedDraft()) acknowledgeDraft(store);
  co_await store.composer().whenWritten();
}

void keepReview(HeadlessStudio& studio) {
  core::LibraryStore& store = *studio.store;
  if (store.assets().empty()) return;
  const QUuid id = (*store.assets().begin())->id;
  core::SavedAnalysis review;
  review.date = store.now();
  review.critique.verdict = QStringLiteral("The horizon is not level.");
  store.analyses().keep(review, id);
  if (!store.analyses().isPending()) acknowledge(QStringLiteral("review"), id);
}

// Whatever is told to be saved by now was promised.
void retrySave(HeadlessStudio& studio) {
  core::LibraryStore& store = *studio.store;
  store.retryMetadataSave();
  if (store.hasUnsavedMetadata()) return;
  for (const core::PromptEntry& entry : store.prompts().entries()) acknowledgePrompt(entry);
  acknowledgeDraft(store);
  for (auto review = store.analyses().entries().keyBegin(); review != store.analyses().entries().keyEnd(); ++review)
    acknowledge(QStringLiteral("review"), *review);
}

void changeGateway(HeadlessStudio& studio, const QJsonObject& command) {
  studio.gateway.pays = command.value(QLatin1String("pays")).toBool(studio.gateway.pays);
  studio.gateway.away = command.value(QLatin1String("away")).toBool(studio.gateway.away);
}

base::Task<> untilSettled(HeadlessStudio& studio) {
  const base::SystemClock clock;
  while (studio.queue->isSettling()) co_await clock.sleep(std::chrono::milliseconds(5), {});
  co_await runUntilIdle(studio);
}

}  // namespace

base::Task<> untilMaintained(HeadlessStudio& studio) {
  const base::SystemClock clock;
  while (studio.maintenance->running() > 0 || studio.imports->running() > 0) co_await clock.sleep(std::chrono::milliseconds(5), {});
}

base::Task<> carryOut(HeadlessStudio& studio, QJsonObject command) {
  const QString name = textOf(command, "do");
  if (name == QStringLiteral("enqueue")) enqueue(studio, command);
  else if (name == QStringLiteral("place")) place(studio, command);
  else if (name == QStringLiteral("import")) co_await importAsReference(studio, command);
  else if (name == QStringLiteral("retry")) retryAll(studio);
  else if (name == QStringLiteral("submit-again")) submitAgain(studio);
  else if (name == QStringLiteral("cancel")) cancelNewest(studio);
  else if (name == QStringLiteral("rate")) rate(studio, command);
  else if (name == QStringLiteral("save-raw")) saveRaw(studio);
  else if (name == QStringLiteral("trash")) trashNewest(studio, command);
  else if (name == QStringLiteral("restore")) restoreAll(studio, command);
  else if (name == QStringLiteral("sheet")) handleSheet(studio, command);
  else if (name == QStringLiteral("project")) handleProject(studio, command);
  else if (name == QStringLiteral("prompt")) keepPrompt(studio, command);
  else if (name == QStringLiteral("draft")) keepDraft(studio, command);
  else if (name == QStringLiteral("type")) co_await typeDrafts(studio, command);
  else if (name == QStringLiteral("review")) keepReview(studio);
  else if (name == QStringLiteral("retry-save")) retrySave(studio);
  else if (name == QStringLiteral("gateway")) changeGateway(studio, command);
  else if (name == QStringLiteral("settled")) co_await untilSettled(studio);
  else if (name == QStringLiteral("handle")) co_await runUntilHandle(studio);
  else if (name == QStringLiteral("run")) co_await runUntilIdle(studio);
  else throw base::SorvanError(QStringLiteral("The driver knows no command “%1”.").arg(name));
}

}  // namespace sorvan::torture
