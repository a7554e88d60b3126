#include <QFileInfo>

#include "base/durable_file.h"
#include "core/media_inspection.h"
#include "generation/media_kind.h"
#include "generation/output_work.h"
#include "generation/result_recovery.h"
#include "generation/sound_outputs.h"
#include "generation/texts.h"
#include "platform/sounds.h"

namespace sorvan::generation {
namespace {

/// A path in the job's recovery folder for what is made from output `index`.
QString workFile(const RunFacts& run, RunTrace& trace, int index, const QString& ending) {
  const QString path = run.files.recoveryFolder(run.job) + QStringLiteral("/%1.%2").arg(QString::number(index), ending);
  trace.temporaryFiles.append(path);
  return path;
}

/// Absolute path of the first reference, when it is in the library.
std::optional<QString> firstReferenceFile(const LibraryStore& store, const RunFacts& run) {
  if (run.request.referenceIDs.empty()) return std::nullopt;
  const AssetRef asset = store.asset(run.request.referenceIDs.front());
  if (!asset) return std::nullopt;
  return store.fileOf(*asset);
}

/// Of the file's own name: a folder's may hold points too.
QString extensionOfName(const QString& path) { return QFileInfo(path).suffix().toLower(); }

Task<GeneratedOutput> spliced(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output, int index,
                              ExtensionStep step, std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  const auto original = firstReferenceFile(queue.store(), *run);
  if (!original) throw SorvanError(texts::extendedNotRead());
  if (!queue.ports().splice) throw SorvanError(texts::extendedNotJoined());
  SpliceWork work;
  work.original = *original;
  work.result = output.file;
  work.ext = extensionOfName(*original);
  work.addedSeconds = step.seconds;
  work.place = step.atStart ? SpliceWork::Place::before : SpliceWork::Place::after;
  work.destination = workFile(*run, *trace, index, QStringLiteral("spliced.") + work.ext);
  output.file = work.destination;
  output.ext = work.ext;
  co_await queue.ports().splice(work, stop);
  co_return output;
}

Task<GeneratedOutput> soundOnly(std::shared_ptr<const RunFacts> run, GeneratedOutput output, int index,
                                std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  const QString clip = output.file;
  const QString sound = workFile(*run, *trace, index, QStringLiteral("m4a"));
  co_await onPool([clip, sound, stop] { writeSoundTrack(clip, sound, stop); }, stop);
  output.file = sound;
  output.ext = QStringLiteral("m4a");
  co_return output;
}

Task<GeneratedOutput> confined(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output, int index,
                               std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  const auto original = firstReferenceFile(queue.store(), *run);
  if (!original) throw SorvanError(texts::referenceUnavailable());
  // What cannot be laid over the original never replaces it as a whole.
  if (!isPlainPicture(output.ext)) throw SorvanError(texts::shapeDiffers(run->modelLabel));
  ConfineWork work{run->request, *original, output.file, run->route, {}};
  if (run->fact) work.sizes = run->fact->sizes;
  const QString path = workFile(*run, *trace, index, QStringLiteral("confined.png"));
  const bool confined = co_await onPool(
      [work, path] {
        const auto png = confinedResult(work);
        if (png) writeDurably(path, *png, DurableMode::Media);
        return png.has_value();
      },
      stop);
  if (!confined) throw SorvanError(texts::shapeDiffers(run->modelLabel));
  output.file = path;
  output.ext = QStringLiteral("png");
  co_return output;
}

bool isPicture(const QString& ext) { return mediaTypeForExtension(ext) == MediaType::image; }

/// 2. At most one of the transformations; the first that applies.
Task<GeneratedOutput> transformed(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output,
                                  int index, std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  const auto step = run->fact && run->fact->extendsSound ? extensionStep(run->request) : std::nullopt;
  if (step) co_return co_await spliced(queue, run, output, index, *step, trace, stop);
  if (run->fact && run->fact->makesSoundOfClip && isClip(output.ext))
    co_return co_await soundOnly(run, output, index, trace, stop);
  if (confinesToMarks(*run) && isPicture(output.ext))
    co_return co_await confined(queue, run, output, index, trace, stop);
  co_return output;
}

bool isToolSound(const RunFacts& run, const GeneratedOutput& output) {
  return run.fact && run.fact->audioInput && mediaTypeForExtension(output.ext) == MediaType::audio;
}

}  // namespace

Task<PreparedOutput> prepareOutput(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output,
                                   int index, std::shared_ptr<RunTrace> trace, std::stop_token stop) {
  // 1. Still wanted?
  throwIfStopped(stop);
  PreparedOutput prepared;
  output.ext = fittingExtension(output.ext, extensionOfFile(output.file));
  // 2. The transformation.
  prepared.output = co_await transformed(queue, run, output, index, trace, stop);
  // 5. The level, before a silent part's file would be written.
  if (isToolSound(*run, prepared.output)) {
    const QString file = prepared.output.file;
    prepared.peak = co_await onPool([file, stop] { return peakDecibels(file, stop); }, stop);
  }
  co_return prepared;
}

}  // namespace sorvan::generation
