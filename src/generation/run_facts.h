// What one run knows of its job, as values: nothing of it changes when the library does.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

#include "base/instant.h"
#include "core/workspace_files.h"
#include "generation/model_facts.h"
#include "generation/provider.h"

namespace sorvan::generation {

struct RunFacts {
  QUuid job;
  GenerationRequest request = {};
  WorkspaceFiles files;
  QString mediaFolder = {};  ///< "Inbox" or the project's folder, relative to the workspace
  bool saveOriginal = false;
  std::optional<RemoteHandle> handle = {};
  QString modelLabel = {};
  std::optional<ModelFact> fact = {};
  std::optional<QByteArray> patch = {};  ///< the note of the piece that was cut around marks
  Instant started = {};
};

/// What a run leaves behind for its end: filled in as it goes.
struct RunTrace {
  bool wasInterrupted = false;  ///< the job came in as "Interrupted"
  QStringList temporaryFiles;   ///< absolute paths, removed on every way out
};

/// Whether the result is to be kept to the marked areas.
inline bool confinesToMarks(const RunFacts& run) {
  const bool hasMarks = run.request.markup && !run.request.markup->empty();
  return hasMarks && !run.saveOriginal && run.request.confineToMarks.value_or(true);
}

}  // namespace sorvan::generation
