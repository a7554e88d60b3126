#include "base/checksum.h"
#include "base/durable_file.h"
#include "base/ids.h"
#include "core/media_inspection.h"
#include "core/thumbnails.h"
#include "generation/media_kind.h"
#include "generation/output_work.h"
#include "generation/registration_words.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

/// What the pool needs to put one file into the workspace; absolute paths.
struct LandingWork {
  QString source;
  QString destination;
  QString thumbnail;
  QString recoveryFolder;
  std::stop_token stop;
};

struct LandedFile {
  MediaMetadata metadata;
  std::optional<QString> checksum;
  bool hasThumbnail = false;
};

MediaMetadata inspected(const LandingWork& work) {
  try {
    return inspectMedia(work.destination);
  } catch (const SorvanError&) {
    if (extensionOfFile(work.source)) throw;
    const QString ext = work.destination.mid(work.destination.lastIndexOf(u'.') + 1);
    throw SorvanError(texts::notMedia(ext, work.recoveryFolder));
  }
}

std::optional<QString> checksumOf(const LandingWork& work) {
  try {
    return sha256OfFile(work.destination, work.stop);
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

bool thumbnailDrawn(const LandingWork& work, MediaType type) {
  try {
    drawThumbnail(work.destination, type, work.thumbnail);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

/// Runs on the pool.
LandedFile landFile(const LandingWork& work) {
  LandedFile landed;
  // 4. The file, complete on disk; never over another.
  copyDurably(work.source, work.destination, DurableMode::Media, Replacing::NoReplace, work.stop);
  // 6. What it is.
  landed.metadata = inspected(work);
  throwIfStopped(work.stop);
  // 8. Its checksum; a failure leaves it open.
  landed.checksum = checksumOf(work);
  // 9. Its thumbnail; a failure leaves it undrawn.
  landed.hasThumbnail = thumbnailDrawn(work, landed.metadata.type);
  return landed;
}

StemFacts stemFacts(const LibraryStore& store, const RunFacts& run, const GeneratedOutput& output) {
  StemFacts facts;
  facts.modelLabel = run.modelLabel;
  facts.prompt = run.request.prompt;
  facts.modelTakesSound = run.fact && run.fact->audioInput;
  facts.extendsSound = run.fact && run.fact->extendsSound;
  facts.outputLabel = output.label;
  if (run.request.referenceIDs.empty()) return facts;
  if (const AssetRef reference = store.asset(run.request.referenceIDs.front()))
    facts.firstReferenceFile = reference->filename();
  return facts;
}

}  // namespace

void WrittenFiles::removeAll() {
  for (const QString& path : std::as_const(paths)) {
    try {
      removeDurably(path);
    } catch (const SorvanError&) {
      // A file that stays behind belongs to nobody and is shown as such; the result itself is retained.
    }
  }
  paths.clear();
}

Task<LandedOutput> landOutput(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output,
                              std::shared_ptr<WrittenFiles> written, std::stop_token stop) {
  LibraryStore& store = queue.store();
  throwIfStopped(stop);
  store.requireWorkspaceInPlace();
  // 3. The name, promised to this output until its file exists.
  const QString folder = run->mediaFolder + QStringLiteral("/generated");
  const QString thumbnails = run->mediaFolder + QStringLiteral("/thumbnails");
  ensureFolderDurably(run->files.absolute(folder));
  ensureFolderDurably(run->files.absolute(thumbnails));
  const ReservedPath path = run->files.uniquePath(folder, outputStem(stemFacts(store, *run, output)), output.ext);
  LandedOutput landed;
  landed.output = output;
  landed.asset = newUuid();
  landed.path = path.relative();
  const QString thumbnail = thumbnails + u'/' + uuidText(landed.asset) + QStringLiteral(".jpg");
  // 4. to 9. The file and what is told of it.
  const LandingWork work{output.file, path.absolute(), run->files.absolute(thumbnail),
                         run->files.recoveryFolder(run->job), stop};
  written->paths << work.destination << work.thumbnail;
  const LandedFile file = co_await onPool([work] { return landFile(work); });
  landed.metadata = file.metadata;
  landed.checksum = file.checksum;
  if (file.hasThumbnail) landed.thumbnail = thumbnail;
  landed.elapsedSeconds = store.now() - run->started;
  co_return landed;
}

}  // namespace sorvan::generation
