// What happens to each output between its retained bytes and its records: values only, nothing in the library changes.
#pragma once

#include <QString>
#include <QStringList>
#include <QUuid>

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

#include "core/media_metadata.h"
#include "generation/job_queue.h"
#include "generation/run_facts.h"

namespace sorvan::generation {

/// One output after its bytes were worked on.
struct PreparedOutput {
  GeneratedOutput output;      ///< `file` is what is to be saved, `ext` the extension that fits its bytes
  std::optional<double> peak;  ///< decibels; measured for the sounds of a sound tool
};

/// One output whose file stands in the workspace.
struct LandedOutput {
  GeneratedOutput output;
  QUuid asset;
  QString path;                      ///< relative to the workspace
  std::optional<QString> thumbnail;  ///< relative to the workspace
  MediaMetadata metadata;
  std::optional<QString> checksum;
  double elapsedSeconds = 0;  ///< since the run started
};

/// Absolute paths of all files that a run wrote into the workspace, to be removed when it does not finish.
struct WrittenFiles {
  QStringList paths;
  void removeAll();
};

/// Joins, extracts or confines an output when the request asks for it, finds the extension that fits, and measures the
/// level of a sound tool's sound. Files made on the way stand in the job's recovery folder and in `temporaryFiles`.
/// Throws SorvanError or Cancelled.
Task<PreparedOutput> prepareOutput(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output,
                                   int index, std::shared_ptr<RunTrace> trace, std::stop_token stop);

/// Copies an output into the workspace under a name of its own, measures it and draws its thumbnail. Everything written
/// is on disk when it returns and stands in `written`, also when it throws.
Task<LandedOutput> landOutput(JobQueue& queue, std::shared_ptr<const RunFacts> run, GeneratedOutput output,
                              std::shared_ptr<WrittenFiles> written, std::stop_token stop);

}  // namespace sorvan::generation
