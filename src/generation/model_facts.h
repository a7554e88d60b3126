// What the generation room needs to know of the model catalogue, answered by the catalogue.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

#include "core/records.h"
#include "generation/room.h"

namespace sorvan::generation {

/// Facts of one model that is in the catalogue.
struct ModelFact {
  QString name;
  MediaType output = MediaType::image;
  bool videoInput = false;        ///< takes a clip as its reference
  bool audioInput = false;        ///< takes a sound as its reference
  bool extendsSound = false;      ///< its result carries on the sound or clip that it was given
  bool makesSoundOfClip = false;  ///< answers with a clip of which only the sound track is wanted
  bool cutsOut = false;           ///< takes the background away
  bool makesMusic = false;        ///< with `makesSoundOfClip`: music rather than effects
  bool needsSeed = false;         ///< refuses a request without a seed
  QStringList sizes;              ///< the size keys it can edit at, for cutting a piece around marks
};

/// The catalogue as this room sees it. Main thread; answers at once.
class ModelFacts {
 public:
  virtual ~ModelFacts() = default;
  /// Facts of a model, or nothing when it is not in the catalogue.
  virtual std::optional<ModelFact> find(const QString& model) const = 0;
  /// A name for any model id, known or not.
  virtual QString displayName(const QString& model) const = 0;
};

}  // namespace sorvan::generation
