#include "core/interrupted_jobs.h"

#include "base/durable_file.h"
#include "base/ids.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

/// Whether the job's paid submission may have been accepted without anybody knowing under which handle.
bool submissionIsUnknown(const WorkspaceFiles& files, const GenerationJob& job) {
  if (!QFileInfo::exists(files.submissionMarker(job.id))) return false;
  const bool hasHandle = job.remoteHandleData && decodeHandle(*job.remoteHandleData);
  const bool hasResult = QFileInfo::exists(files.recoveryFolder(job.id) + QStringLiteral("/results.json"));
  return !hasHandle && !hasResult;
}

bool hasLanded(const LibraryStore& store, const QUuid& id) {
  const JobRef job = store.job(id);
  return job && job->status == jobStatus::complete && !store.generationsOf(id).empty();
}

}  // namespace

std::vector<JobRef> markInterruptedJobs(LibraryStore& store) {
  std::vector<JobRef> marked;
  for (const JobRef& job : store.jobs()) {
    if (!job->isActive()) continue;
    GenerationJob& changed = store.context().edit(job);
    changed.status = jobStatus::failed;
    changed.detail = texts::interrupted();
    changed.errorMessage =
        submissionIsUnknown(store.files(), *job) ? texts::submissionAnswerLost() : texts::closedBeforeFinish();
    marked.push_back(job);
  }
  return marked;
}

void cleanUpAfterLandedJobs(LibraryStore& store) {
  std::vector<QUuid> settled;
  for (const ExtraCharge& charge : store.extraCharges().entries())
    if (hasLanded(store, charge.id)) settled.push_back(charge.id);
  if (!settled.empty()) store.extraCharges().remove(settled);

  const QDir recovery(store.files().sidecar(QStringLiteral("recovery")));
  for (const QString& name : recovery.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QUuid job = uuidFromText(name);
    if (job.isNull() || !hasLanded(store, job)) continue;
    try {
      removeFolderDurably(recovery.filePath(name));
    } catch (const std::exception&) {
      // What it holds is in the library already.
    }
  }
}

void backfillRecipes(LibraryStore& store) {
  for (const GenerationRef& generation : store.generations()) {
    if (generation->recipeData) continue;
    const JobRef job = store.job(generation->jobID);
    if (job && job->request()) store.context().edit(generation).recipeData = job->requestData;
  }
}

}  // namespace sorvan::core
