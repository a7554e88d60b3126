#include "torture/driver_commands.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFileInfo>
#include <QJsonDocument>

#include "base/checksum.h"
#include "base/durable_file.h"
#include "base/ids.h"
#include "base/sorvan_error.h"
#include "core/media_inspection.h"
#include "core/small_edits.h"
#include "generation/cancel_and_retry.h"
#include "generation/enqueue.h"

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

void enqueue(HeadlessStudio& studio, const QJsonObject& command) {
  core::GenerationRequest request;
  request.model = textOf(command, "model");
  request.prompt = textOf(command, "prompt");
  request.count = command.value(QLatin1String("count")).toInt(1);
  if (command.contains(QLatin1String("size"))) request.size = textOf(command, "size");
  if (command.contains(QLatin1String("seed"))) request.seed = command.value(QLatin1String("seed")).toInteger();
  for (const QJsonValue& number : command.value(QLatin1String("references")).toArray())
    request.referenceIDs.push_back(studio.store->assets()[static_cast<std::size_t>(number.toInt())]->id);
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
  while (!studio.store->activeJobs().empty() && !studio.store->activeJobs().front()->remoteHandleData)
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

}  // namespace

base::Task<> carryOut(HeadlessStudio& studio, QJsonObject command) {
  const QString name = textOf(command, "do");
  if (name == QStringLiteral("enqueue")) enqueue(studio, command);
  else if (name == QStringLiteral("place")) place(studio, command);
  else if (name == QStringLiteral("retry")) retryAll(studio);
  else if (name == QStringLiteral("submit-again")) submitAgain(studio);
  else if (name == QStringLiteral("cancel")) cancelNewest(studio);
  else if (name == QStringLiteral("rate")) rate(studio, command);
  else if (name == QStringLiteral("handle")) co_await runUntilHandle(studio);
  else if (name == QStringLiteral("run")) co_await runUntilIdle(studio);
  else throw base::SorvanError(QStringLiteral("The driver knows no command “%1”.").arg(name));
}

}  // namespace sorvan::torture
