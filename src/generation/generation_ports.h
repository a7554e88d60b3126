// What the generation room asks of rooms above it. The composition root fills it in; tests script it.
#pragma once

#include <QString>
#include <QStringList>

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

/// A picture that answers a request with marked areas.
struct ConfineWork {
  GenerationRequest request;
  QString original;                 ///< absolute path of the first reference
  QString result;                   ///< absolute path of the provider's picture
  std::optional<QByteArray> patch;  ///< what `prepareMarks` noted, when the run still knows it
};

/// The pictures and the request that a provider gets instead of the user's, when areas are marked.
struct PreparedMarks {
  QString file;               ///< absolute path of the picture that replaces the first reference
  GenerationRequest request;  ///< the copy that the provider gets
  std::optional<QByteArray>
      patch;  ///< JSON that is kept beside the retained result, so that it lands in the same place
};

/// A request whose areas are marked, and where the picture that is sent may be written.
struct MarksWork {
  GenerationRequest request;
  QString original;    ///< absolute path of the first reference
  QString pieceFile;   ///< absolute path for a piece cut around the marks
  QString markupFile;  ///< absolute path for a copy with the boxes drawn on it
};

/// A finished sound that is to be laid under a clip.
struct LayUnderWork {
  QUuid sound;
  QUuid clip;
  bool keepOwnSound = true;
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
  /// Prepares the picture that is sent when areas are marked; the run removes both files afterwards.
  std::function<Task<PreparedMarks>(MarksWork, std::stop_token)> prepareMarks;
  /// Lays a result over the original inside the marks; absent when the shapes differ. The answer is PNG data.
  std::function<Task<std::optional<QByteArray>>(ConfineWork, std::stop_token)> confine;
  /// Joins a continuation to its original.
  std::function<Task<>(SpliceWork, std::stop_token)> splice;
  /// Lays a sound under a clip and answers the new file's name; a failure only shows a notice. Optional.
  std::function<Task<QString>(LayUnderWork, std::stop_token)> layUnder;
  /// The program's version and build as a support report tells them; empty when unknown.
  QString version;
  QString build;
};

}  // namespace sorvan::generation
