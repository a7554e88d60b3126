#include "torture/driver_commands.h"

#include <QFileInfo>

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

void enqueue(HeadlessStudio& studio, const QJsonObject& command) {
  core::GenerationRequest request;
  request.model = textOf(command, "model");
  request.prompt = textOf(command, "prompt");
  request.count = command.value(QLatin1String("count")).toInt(1);
  if (command.contains(QLatin1String("size"))) request.size = textOf(command, "size");
  if (command.contains(QLatin1String("seed"))) request.seed = command.value(QLatin1String("seed")).toInteger();
  for (const QJsonValue& number : command.value(QLatin1String("references")).toArray())
    request.referenceIDs.push_back(studio.store->assets()[static_cast<std::size_t>(number.toInt())]->id);
  generation::enqueueRequests(*studio.queue, {request}, std::nullopt);
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
  store.context().insert(std::move(asset));
  store.save(core::LibraryTables::all);
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

void rate(HeadlessStudio& studio, const QJsonObject& command) {
  if (studio.store->assets().empty()) return;
  core::setRating(*studio.store, *studio.store->assets().begin(), command.value(QLatin1String("stars")).toInt());
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
  else if (name == QStringLiteral("run")) co_await runUntilIdle(studio);
  else throw base::SorvanError(QStringLiteral("The driver knows no command “%1”.").arg(name));
}

}  // namespace sorvan::torture
