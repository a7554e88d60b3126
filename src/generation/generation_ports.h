// What the generation room asks of rooms above it. The composition root fills it in; tests script it.
#pragma once

#include <QString>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "core/billing.h"
#include "generation/generation_request.h"
#include "generation/model_facts.h"
#include "generation/provider.h"

namespace sorvan::generation {

/// A sound or clip that was given to a model and the longer answer it gave.
struct SpliceWork {
  QString original;  ///< absolute path
  QString result;    ///< absolute path
  QString ext;       ///< extension of the file to write: the original's
  double addedSeconds = 0;
  enum class Place { after, before } place = Place::after;
  QString destination;  ///< absolute path of the file to write
};

/// A finished sound that is to be laid under a clip.
struct LayUnderWork {
  QUuid sound;
  QUuid clip;
  bool keepOwnSound = true;
};

/// An operation of the gateway, found by the id of the request that started it.
struct CreditsOperationState {
  QString id;
  QString state;  ///< "queued", "running", "complete", "failed", or a word of a newer gateway
};

/// Functions of rooms above. An empty one that is needed ends the work with a sentence; one marked optional is skipped.
struct GenerationPorts {
  /// The back end of a provider; never null.
  std::function<std::shared_ptr<GenerationProvider>(ProviderID)> providerResolver;
  /// The key or token that pays for a provider's requests; throws what is to be shown. Immediate.
  std::function<std::optional<QString>(ProviderID)> keyReader;
  /// How the user pays at present.
  std::function<Billing()> billing;
  std::shared_ptr<const ModelFacts> models;
  /// A request rewritten for another model.
  std::function<GenerationRequest(const GenerationRequest&, const ComparisonModel&)> forModel;
  /// The short word of a request for counting; optional.
  std::function<QString(const GenerationRequest&)> feature;
  /// Counts a use under a key; optional.
  std::function<void(const QString& key, int count)> noteUsage;
  /// Joins a continuation to its original.
  std::function<Task<>(SpliceWork, std::stop_token)> splice;
  /// Lays a sound under a clip and answers the new file's name; a failure only shows a notice. Optional.
  std::function<Task<QString>(LayUnderWork, std::stop_token)> layUnder;
  /// Asks the gateway to stop an operation and answers its state then; an empty text when the gateway told none. Throws
  /// what went wrong. Optional.
  std::function<Task<QString>(QString operation, std::stop_token)> cancelCredits;
  /// The present state of an operation; throws what went wrong. Optional.
  std::function<Task<QString>(QString operation, std::stop_token)> creditState;
  /// The operation of a request by its `creditRequestID`; nothing when the gateway never saw it. Throws what went
  /// wrong. Optional.
  std::function<Task<std::optional<CreditsOperationState>>(QUuid request, std::stop_token)> existingCredits;
  /// Between two looks at an operation that was cancelled here.
  double cancelWatchSeconds = 15;
  /// The program's version and build as a support report tells them; empty when unknown.
  QString version;
  QString build;
};

}  // namespace sorvan::generation
