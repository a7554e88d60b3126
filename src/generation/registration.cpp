#include "generation/registration.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

#include "base/ids.h"
#include "base/json.h"
#include "base/planted_bug.h"
#include "generation/generation_request.h"
#include "generation/output_work.h"
#include "generation/registration_words.h"
#include "generation/result_recovery.h"
#include "generation/sound_outputs.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

/// Everything that the one save needs, as values.
struct Landing {
  std::vector<LandedOutput> outputs;
  QStringList leftOut;  ///< names of silent parts
  bool silentThroughout = false;
};

void throwUnlessWanted(const JobQueue& queue, const QUuid& job, const std::stop_token& stop) {
  throwIfStopped(stop);
  const JobRef record = queue.store().job(job);
  if (!record || record->status == jobStatus::cancelled) throw Cancelled();
}

Asset assetOf(const RunFacts& run, const LandedOutput& landed, std::optional<QUuid> project, Instant now) {
  const QString name = landed.path.mid(landed.path.lastIndexOf(u'/') + 1);
  Asset asset(project, landed.metadata.type, landed.path, name, landed.metadata, now);
  asset.id = landed.asset;
  asset.sourceTypeRaw = rawValue(AssetSourceType::generated);
  asset.checksum = landed.checksum;
  asset.thumbnailFilePath = landed.thumbnail;
  if (run.toTrash) asset.deletedAt = now;
  if (run.saveOriginal && hasMarks(run.request)) asset.notes = texts::rawResultNote();
  return asset;
}

Generation generationOf(const JobQueue& queue, const RunFacts& run, const GenerationJob& job,
                        const LandedOutput& landed, Instant now) {
  Generation generation(landed.asset, job, run.request, landed.elapsedSeconds, landed.output.seed, now);
  generation.parametersJSON = parametersJSON(run.request, *queue.ports().models);
  generation.recipeData = job.requestData;
  if (landed.output.cost) recordCost(generation, *landed.output.cost);
  return generation;
}

/// 12. Which references the output descends from, and how.
void insertLineage(RecordContext& context, const RunFacts& run, const LandedOutput& landed, const QUuid& generation,
                   NewRecords& records) {
  int position = 0;
  for (const QUuid& reference : run.request.referenceIDs) {
    records.references.push_back(context.insert(ReferenceAsset(generation, reference, position++)));
    const RelationshipType type = relationshipFor(run.request, reference);
    records.relationships.push_back(context.insert(AssetRelationship(reference, landed.asset, type)));
  }
}

NewRecords insertRecords(const JobQueue& queue, const RunFacts& run, const GenerationJob& job, const Landing& landing,
                         std::optional<QUuid> project) {
  RecordContext& context = queue.store().context();
  const Instant now = queue.store().now();
  NewRecords records;
  for (const LandedOutput& landed : landing.outputs) {
    // 7. and 10. The item.
    records.assets.push_back(context.insert(assetOf(run, landed, project, now)));
    // 11. How it was made.
    records.generations.push_back(context.insert(generationOf(queue, run, job, landed, now)));
    insertLineage(context, run, landed, records.generations.back()->id, records);
  }
  return records;
}

void touchProject(LibraryStore& store, const QUuid& id, const NewRecords& records) {
  Project& project = store.context().edit(store.project(id));
  project.updatedAt = store.now();
  if (project.coverAssetID) return;
  const auto picture = std::find_if(records.assets.begin(), records.assets.end(),
                                    [](const AssetRef& asset) { return asset->type() == MediaType::image; });
  if (picture != records.assets.end()) project.coverAssetID = (*picture)->id;
}

void completeJob(LibraryStore& store, const JobRef& record, const Landing& landing, std::optional<QUuid> project) {
  GenerationJob& job = store.context().edit(record);
  SavedSummary summary;
  summary.count = static_cast<int>(landing.outputs.size());
  summary.firstType = landing.outputs.front().metadata.type;
  summary.leftOut = landing.leftOut;
  summary.silentThroughout = landing.silentThroughout;
  job.projectID = project;
  job.status = jobStatus::complete;
  job.errorMessage.reset();
  job.finishedAt = store.now();
  job.detail = savedDetail(summary);
}

/// The same outputs under ids of their own.
[[maybe_unused]] Landing again(Landing landing) {
  for (LandedOutput& output : landing.outputs) output.asset = newUuid();
  return landing;
}

/// The one block without a pause: records, project, job, save, registration.
NewRecords commit(JobQueue& queue, const RunFacts& run, const Landing& landing) {
  LibraryStore& store = queue.store();
  store.requireWorkspaceInPlace();
  const JobRef job = store.job(run.job);
  NewRecords records;
  try {
    // A project that went meanwhile leaves its items to the Inbox.
    const bool hasProject = job->projectID && store.project(*job->projectID);
    const std::optional<QUuid> project = hasProject ? job->projectID : std::nullopt;
    records = insertRecords(queue, run, *job, landing, project);
    if (planted("register-twice")) insertRecords(queue, run, *job, again(landing), project);
    // 1. The project.
    if (project && !run.toTrash) touchProject(store, *project, records);
    // 2. The job.
    completeJob(store, job, landing, project);
    // 4. All of it at once.
    store.save(LibraryTables::none);
  } catch (...) {
    store.rollBack();
    throw;
  }
  // 5. Known to everyone.
  store.registerRecords(records);
  return records;
}

Task<> layUnderClip(JobQueue* queue, LayUnderWork work, QString clip, std::stop_token stop) {
  LibraryStore& store = queue->store();
  const LocalOperation operation = store.beginLocalOperation();
  QString notice;
  try {
    const QString file = co_await queue->ports().layUnder(work, stop);
    notice = texts::layUnderDone(clip, file);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception& failure) {
    notice = texts::layUnderFailed(clip, describe(failure));
  }
  store.setNotice(notice);
}

/// 7. A sound that was made for a clip is laid under it, once everything is safe.
void startLayUnder(JobQueue& queue, const RunFacts& run, const NewRecords& records) {
  if (run.toTrash || !run.request.layUnder || !queue.ports().layUnder || records.assets.empty()) return;
  const AssetRef clip = queue.store().asset(*run.request.layUnder);
  LayUnderWork work;
  work.sound = records.assets.front()->id;
  work.clip = *run.request.layUnder;
  work.keepOwnSound = run.request.keepOwnSound.value_or(false);
  queue.spawn(layUnderClip(&queue, work, clip ? clip->filename() : QString(), queue.stopToken()));
}

/// 3. Tells which parts the sound did not have.
void tellLeftOut(LibraryStore& store, const RunFacts& run, const Landing& landing) {
  if (landing.leftOut.isEmpty() || run.request.referenceIDs.empty()) return;
  if (const AssetRef source = store.asset(run.request.referenceIDs.front()))
    store.setNotice(leftOutNotice(run.modelLabel, source->filename(), landing.leftOut));
}

/// Chooses what is saved: silent parts beside others that sound are left out.
std::vector<GeneratedOutput> chosen(const RunFacts& run, const std::vector<PreparedOutput>& prepared,
                                    Landing& landing) {
  std::vector<std::optional<double>> peaks;
  for (const PreparedOutput& output : prepared) peaks.push_back(output.peak);
  const SilenceVerdict verdict = judgeSilence(peaks);
  landing.silentThroughout = verdict.throughout;
  std::vector<GeneratedOutput> outputs;
  for (std::size_t i = 0; i < prepared.size(); ++i) {
    if (verdict.leftOut[i])
      landing.leftOut << partName(prepared[i].output.label, run.request.prompt, run.modelLabel);
    else
      outputs.push_back(prepared[i].output);
  }
  return outputs;
}

Task<Landing> landAll(JobQueue& queue, std::shared_ptr<const RunFacts> run, std::vector<GeneratedOutput> outputs,
                      std::shared_ptr<RunTrace> trace, std::shared_ptr<WrittenFiles> written, std::stop_token stop) {
  Landing landing;
  std::vector<PreparedOutput> prepared;
  for (const GeneratedOutput& output : outputs) {
    const int index = static_cast<int>(prepared.size());
    prepared.push_back(co_await prepareOutput(queue, run, output, index, trace, stop));
    throwUnlessWanted(queue, run->job, stop);
  }
  const std::vector<GeneratedOutput> kept = chosen(*run, prepared, landing);
  for (const GeneratedOutput& output : kept) {
    landing.outputs.push_back(co_await landOutput(queue, run, output, written, stop));
    throwUnlessWanted(queue, run->job, stop);
  }
  co_return landing;
}

}  // namespace

void recordCost(Generation& generation, const std::optional<GenerationCost>& cost) {
  const QJsonDocument document = QJsonDocument::fromJson(generation.parametersJSON);
  if (!document.isObject()) return;
  QJsonObject object = document.object();
  object.remove(QStringLiteral("cost"));
  if (cost) object.insert(QStringLiteral("cost"), toJson(*cost));
  generation.parametersJSON = QJsonDocument(object).toJson(QJsonDocument::Indented);
  generation.estimatedCost = cost ? std::optional(cost->perImageUSD) : std::nullopt;
}

Task<> registerOutputs(JobQueue& queue, std::shared_ptr<const RunFacts> run, std::vector<GeneratedOutput> outputs,
                       std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  LibraryStore& store = queue.store();
  const auto written = std::make_shared<WrittenFiles>();
  NewRecords records;
  try {
    // The outputs one by one, as values and files only.
    const Landing landing = co_await landAll(queue, run, outputs, trace, written, stop);
    throwUnlessWanted(queue, run->job, stop);
    records = commit(queue, *run, landing);
    tellLeftOut(store, *run, landing);
  } catch (...) {
    // Nothing was saved: no file stays. The retained result and the charge note tell Retry the rest.
    written->removeAll();
    throw;
  }
  // 6. What told of an unfinished job goes, in this order.
  store.extraCharges().remove({run->job});
  ResultRecovery::remove(run->files, run->job);
  // 7. What follows from the finished item.
  startLayUnder(queue, *run, records);
}

}  // namespace sorvan::generation
