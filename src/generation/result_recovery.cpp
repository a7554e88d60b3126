#include "generation/result_recovery.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <sys/stat.h>

#include "base/durable_file.h"
#include "base/file_reading.h"
#include "base/json.h"
#include "generation/texts.h"

namespace sorvan::generation {

namespace {

/// Unreadable is not absent: only "no such file" says that there is none.
bool mayStand(const QString& path) {
  struct stat entry {};
  return ::lstat(QFile::encodeName(path).constData(), &entry) == 0 || errno != ENOENT;
}

QString inFolder(const WorkspaceFiles& files, const QUuid& job, const QString& name) {
  return files.recoveryFolder(job) + u'/' + name;
}

QString manifestPath(const WorkspaceFiles& files, const QUuid& job) {
  return inFolder(files, job, QStringLiteral("results.json"));
}

QString previousPath(const WorkspaceFiles& files, const QUuid& job) {
  return manifestPath(files, job) + QStringLiteral(".previous");
}

bool isManifest(const QByteArray& json) {
  try {
    decodeManifest(json);
    return true;
  } catch (const SorvanError&) {
    return false;
  }
}

GeneratedOutput outputOf(const RecoveryItem& item, const WorkspaceFiles& files, const QUuid& job) {
  GeneratedOutput output;
  output.file = inFolder(files, job, item.file);
  const QFileInfo file(output.file);
  if (!file.isFile() || file.isSymLink()) throw SorvanError(texts::invalidManifest());
  output.ext = item.ext;
  output.seed = item.seed;
  output.cost = item.cost;
  output.label = item.label;
  return output;
}

/// The outputs of one manifest file; throws when it cannot be used.
std::vector<GeneratedOutput> outputsIn(const QString& manifest, const WorkspaceFiles& files, const QUuid& job) {
  std::vector<GeneratedOutput> outputs;
  for (const RecoveryItem& item : decodeManifest(readFile(manifest, maximumManifestBytes)))
    outputs.push_back(outputOf(item, files, job));
  return outputs;
}

/// Puts the bytes of one output in place, complete on disk.
RecoveryItem keepOutput(const GeneratedOutput& output, int index, const WorkspaceFiles& files, const QUuid& job) {
  RecoveryItem item;
  item.file = QStringLiteral("%1.media").arg(index);
  item.ext = output.ext;
  item.seed = output.seed;
  item.cost = output.cost;
  item.label = output.label;
  const QString path = inFolder(files, job, item.file);
  if (output.file.isEmpty()) {
    writeDurably(path, output.data, DurableMode::Media);
  } else if (output.file != path) {
    syncFile(output.file);
    renameDurably(output.file, path, Replacing::Replace);
  }
  return item;
}

/// A damaged manifest never replaces a good predecessor.
void keepPreviousManifest(const WorkspaceFiles& files, const QUuid& job) {
  const auto current = readIfPresent(manifestPath(files, job));
  if (current && isManifest(*current)) writeDurably(previousPath(files, job), *current, DurableMode::Sidecar);
}

/// A marker that could not be written for good stands for nothing: nothing is sent after it.
void takeBackMarker(const WorkspaceFiles& files, const QUuid& job) {
  try {
    removeDurably(files.submissionMarker(job));
  } catch (const SorvanError&) {
    // A marker that stays warns once too often, which costs nothing.
  }
}

QString tracePath(const WorkspaceFiles& files, const QUuid& job) {
  return inFolder(files, job, QStringLiteral("gateway.json"));
}

QString patchPath(const WorkspaceFiles& files, const QUuid& job) {
  return inFolder(files, job, QStringLiteral("patch.json"));
}

}  // namespace

QString ResultRecovery::folder(const WorkspaceFiles& files, const QUuid& job) { return files.recoveryFolder(job); }

bool ResultRecovery::exists(const WorkspaceFiles& files, const QUuid& job) {
  return mayStand(manifestPath(files, job));
}

std::optional<std::vector<GeneratedOutput>> ResultRecovery::load(const WorkspaceFiles& files, const QUuid& job) {
  if (!exists(files, job)) return std::nullopt;
  try {
    return outputsIn(manifestPath(files, job), files, job);
  } catch (const ForeignRecoveryPath&) {
    throw;
  } catch (const SorvanError&) {
    if (!mayStand(previousPath(files, job))) throw SorvanError(texts::invalidManifest());
  }
  try {
    return outputsIn(previousPath(files, job), files, job);
  } catch (const SorvanError&) {
    throw SorvanError(texts::invalidManifest());
  }
}

void ResultRecovery::save(const std::vector<GeneratedOutput>& outputs, const WorkspaceFiles& files, const QUuid& job) {
  // 1. The job's folder.
  ensureFolderDurably(folder(files, job));
  // 2. All media, each synced, before anything names them.
  std::vector<RecoveryItem> items;
  for (const GeneratedOutput& output : outputs)
    items.push_back(keepOutput(output, static_cast<int>(items.size()), files, job));
  // 3. The manifest's bytes.
  const QByteArray manifest = encodeManifest(items);
  // 4. The predecessor, when it is a good one.
  keepPreviousManifest(files, job);
  // 5. The manifest: from here on the result is retained.
  writeDurably(manifestPath(files, job), manifest, DurableMode::Sidecar);
}

QString ResultRecovery::partFile(const WorkspaceFiles& files, const QUuid& job, int index) {
  ensureFolderDurably(folder(files, job));
  return inFolder(files, job, QStringLiteral("%1.part").arg(index));
}

void ResultRecovery::remove(const WorkspaceFiles& files, const QUuid& job) {
  try {
    removeFolderDurably(folder(files, job));
  } catch (const SorvanError&) {
    // What it held is in the library; opening the workspace tries again.
  }
}

bool ResultRecovery::answerIsMissing(const WorkspaceFiles& files, const GenerationJob& job) {
  const bool hasHandle = job.remoteHandleData && decodeHandle(*job.remoteHandleData);
  return !hasHandle && !exists(files, job.id) && hasSubmissionMarker(files, job.id);
}

bool ResultRecovery::hasSubmissionMarker(const WorkspaceFiles& files, const QUuid& job) {
  return mayStand(files.submissionMarker(job));
}

void ResultRecovery::writeSubmissionMarker(const WorkspaceFiles& files, const QUuid& job) {
  ensureFolderDurably(folder(files, job));
  try {
    writeDurably(files.submissionMarker(job), QByteArray(), DurableMode::Sidecar);
  } catch (...) {
    takeBackMarker(files, job);
    throw;
  }
}

void ResultRecovery::removeSubmissionMarker(const WorkspaceFiles& files, const QUuid& job) {
  removeDurably(files.submissionMarker(job));
}

void ResultRecovery::restoreSubmissionMarker(const WorkspaceFiles& files, const QUuid& job) {
  try {
    writeSubmissionMarker(files, job);
  } catch (const SorvanError&) {
    // The job says "Interrupted" all the same, so that its payer and key are kept.
  }
}

std::optional<GatewayTrace> ResultRecovery::gatewayTrace(const WorkspaceFiles& files, const QUuid& job) {
  const auto bytes = readIfPresent(tracePath(files, job));
  if (!bytes) return std::nullopt;
  try {
    return decodeJson<GatewayTrace>(*bytes);
  } catch (const JsonError&) {
    throw SorvanError(texts::invalidManifest());
  }
}

bool ResultRecovery::hasGatewayTrace(const WorkspaceFiles& files, const QUuid& job) {
  return mayStand(tracePath(files, job));
}

void ResultRecovery::writeGatewayTrace(const GatewayTrace& trace, const WorkspaceFiles& files, const QUuid& job) {
  ensureFolderDurably(folder(files, job));
  try {
    writeDurably(tracePath(files, job), encodeJson(trace), DurableMode::Sidecar);
  } catch (...) {
    try {
      removeGatewayTrace(files, job);
    } catch (const SorvanError&) {
      // One that stays says where nothing was sent, which only asks that gateway again.
    }
    throw;
  }
}

void ResultRecovery::removeGatewayTrace(const WorkspaceFiles& files, const QUuid& job) {
  removeDurably(tracePath(files, job));
}

void ResultRecovery::savePatch(const QByteArray& patch, const WorkspaceFiles& files, const QUuid& job) {
  ensureFolderDurably(folder(files, job));
  writeDurably(patchPath(files, job), patch, DurableMode::Sidecar);
}

std::optional<QByteArray> ResultRecovery::loadPatch(const WorkspaceFiles& files, const QUuid& job) {
  try {
    return readIfPresent(patchPath(files, job));
  } catch (const SorvanError&) {
    return std::nullopt;
  }
}

}  // namespace sorvan::generation
