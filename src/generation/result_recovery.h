// The provider's bytes of a job, kept in a folder of their own until they are in the library.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

#include "core/records.h"
#include "core/workspace_files.h"
#include "generation/provider.h"
#include "generation/recovery_manifest.h"

namespace sorvan::generation {

/// File operations on `.sorvan/recovery/<JOB-UUID>/`. No state; any thread, but one caller a job at a time.
///
/// The folder holds `0.media`, `1.media` … in order, the manifest `results.json`, its predecessor
/// `results.json.previous`, while bytes arrive `<n>.part`, optionally `patch.json`, for a request that went to a gateway
/// `gateway.json`, and while another submission's fate is open the empty file `submitting`. The manifest is written last and alone says that a result is retained.
class ResultRecovery {
 public:
  /// Absolute path of the job's folder, whether it exists or not.
  static QString folder(const WorkspaceFiles& files, const QUuid& job);

  /// Whether a manifest exists, or may exist: what cannot be looked at is not taken for absent.
  static bool exists(const WorkspaceFiles& files, const QUuid& job);

  /// The retained outputs, their bytes as files in the folder; nothing when no manifest exists. When the manifest
  /// cannot be read its predecessor is tried. Throws SorvanError("Invalid recovery manifest.") when neither can be
  /// read or a named file is missing, and ForeignRecoveryPath, with the same sentence, when an item names anything but
  /// a bare file name.
  static std::optional<std::vector<GeneratedOutput>> load(const WorkspaceFiles& files, const QUuid& job);

  /// Keeps the outputs durably: each file is complete on disk before the manifest names it. On success the folder holds
  /// all outputs; on failure it throws, and an earlier manifest with its files still stands when no output replaced
  /// them.
  static void save(const std::vector<GeneratedOutput>& outputs, const WorkspaceFiles& files, const QUuid& job);

  /// The path where bytes of output `index` may be streamed before `save`. The folder exists afterwards.
  static QString partFile(const WorkspaceFiles& files, const QUuid& job, int index);

  /// Removes the whole folder. Failures are ignored: what it held is in the library.
  static void remove(const WorkspaceFiles& files, const QUuid& job);

  /// Whether the job's submission left and nothing is known of it: a marker, no handle and no retained result. True
  /// also while the answer is still awaited.
  static bool answerIsMissing(const WorkspaceFiles& files, const GenerationJob& job);

  /// The marker of a submission that has left and not been answered; one that cannot be looked at counts as standing.
  static bool hasSubmissionMarker(const WorkspaceFiles& files, const QUuid& job);
  /// Throws FileError, and then leaves no marker where that can be helped.
  static void writeSubmissionMarker(const WorkspaceFiles& files, const QUuid& job);
  /// Removes the marker durably; succeeds when there is none.
  static void removeSubmissionMarker(const WorkspaceFiles& files, const QUuid& job);
  /// Puts a removed marker back as well as it can be done; never throws.
  static void restoreSubmissionMarker(const WorkspaceFiles& files, const QUuid& job);

  /// The way that a request with an idempotency key went out, `gateway.json`. Throws SorvanError when it stands and
  /// cannot be read.
  static std::optional<GatewayTrace> gatewayTrace(const WorkspaceFiles& files, const QUuid& job);
  /// One that cannot be looked at counts as standing.
  static bool hasGatewayTrace(const WorkspaceFiles& files, const QUuid& job);
  /// Throws FileError, and then leaves none where that can be helped.
  static void writeGatewayTrace(const GatewayTrace& trace, const WorkspaceFiles& files, const QUuid& job);
  static void removeGatewayTrace(const WorkspaceFiles& files, const QUuid& job);

  /// The note of the piece that was cut around marked areas, kept so that the result lands in the same place.
  static void savePatch(const QByteArray& patch, const WorkspaceFiles& files, const QUuid& job);
  static std::optional<QByteArray> loadPatch(const WorkspaceFiles& files, const QUuid& job);
};

}  // namespace sorvan::generation
