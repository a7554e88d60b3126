// What one run knows of its job, as values: nothing of it changes when the library does.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>
#include <vector>

#include "base/instant.h"
#include "core/workspace_files.h"
#include "generation/marked_areas_run.h"
#include "generation/model_facts.h"
#include "generation/provider.h"
#include "platform/temporary_files.h"

namespace sorvan::generation {

struct RunFacts {
  QUuid job;
  GenerationRequest request = {};
  WorkspaceFiles files;
  QString mediaFolder = {};  ///< "Inbox" or the project's folder, relative to the workspace
  bool saveOriginal = false;
  std::optional<RemoteHandle> handle = {};
  std::optional<QString> operation = {};  ///< the gateway's id of a request that credits pay for
  bool sentThroughGateway = false;        ///< a gateway may know the request, also without such an id
  QString modelLabel = {};
  std::optional<ModelFact> fact = {};
  std::optional<MarkedRoute> route = {};         ///< how the marked picture was sent
  std::optional<MarkedRoute> preparedRoute = {};  ///< how it would be sent now
  bool toTrash = false;                   ///< the user had cancelled it: its result is only kept, never shown as wanted
  Instant started = {};
};

/// What a run leaves behind for its end: filled in as it goes.
struct RunTrace {
  bool wasInterrupted = false;  ///< the job came in as "Interrupted"
  QStringList temporaryFiles;   ///< absolute paths, removed on every way out
  std::vector<TemporaryFile> sentPictures;
};

/// Whether a service may hold this request already, so that only a new submission needs what it is made from.
inline bool mayBeKnownRemotely(const RunFacts& run) { return run.handle || run.operation || run.sentThroughGateway; }

/// Whether the result is to be kept to the marked areas.
inline bool confinesToMarks(const RunFacts& run) {
  return hasMarks(run.request) && !run.saveOriginal && run.request.confineToMarks.value_or(true);
}

}  // namespace sorvan::generation
