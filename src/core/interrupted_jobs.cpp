#include "core/interrupted_jobs.h"

#include "base/durable_file.h"
#include "base/ids.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

QDir recoveryFolders(const WorkspaceFiles& files) { return QDir(files.sidecar(QStringLiteral("recovery"))); }

/// The jobs that left something to recover: most did not, and one look at the names spares a look for each job.
QSet<QUuid> jobsWithRecoveryFolder(const WorkspaceFiles& files) {
  QSet<QUuid> jobs;
  for (const QString& name : recoveryFolders(files).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot))
    if (const QUuid job = uuidFromText(name); !job.isNull()) jobs.insert(job);
  return jobs;
}

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
  const QSet<QUuid> recoverable = jobsWithRecoveryFolder(store.files());
  for (const JobRef& job : store.jobs()) {
    if (!job->isActive()) continue;
    GenerationJob& changed = store.context().edit(job);
    changed.status = jobStatus::failed;
    changed.detail = texts::interrupted();
    const bool unknown = recoverable.contains(job->id) && submissionIsUnknown(store.files(), *job);
    changed.errorMessage = unknown ? texts::submissionAnswerLost() : texts::closedBeforeFinish();
    marked.push_back(job);
  }
  return marked;
}

void cleanUpAfterLandedJobs(LibraryStore& store) {
  std::vector<QUuid> settled;
  for (const ExtraCharge& charge : store.extraCharges().entries())
    if (hasLanded(store, charge.id)) settled.push_back(charge.id);
  if (!settled.empty()) store.extraCharges().remove(settled);

  const QDir recovery = recoveryFolders(store.files());
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
