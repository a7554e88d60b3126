// The words of a finished job: file names of its outputs, its last detail and what is told about parts left out.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

#include "core/enumerations.h"
#include "generation/sound_outputs.h"

namespace sorvan::generation {

/// What the name of an output's file is made from.
struct StemFacts {
  QString modelLabel;
  QString prompt;                             ///< the request's
  std::optional<QString> firstReferenceFile;  ///< file name of the first reference, when it is in the library
  bool modelTakesSound = false;
  bool extendsSound = false;
  std::optional<QString> outputLabel;
};

/// The stem, before it is made safe for a file system.
QString outputStem(const StemFacts& facts);

/// How many outputs of which kind were saved, and what became of silent ones.
struct SavedSummary {
  int count = 0;
  MediaType firstType = MediaType::image;
  QStringList leftOut;  ///< names of silent parts
  bool silentThroughout = false;
};

/// Such as "Saved 3 sounds locally; left out Drums, Bass".
QString savedDetail(const SavedSummary& summary);

/// Tells which parts a sound did not have.
QString leftOutNotice(const QString& modelLabel, const QString& sourceFile, const QStringList& leftOut);

}  // namespace sorvan::generation
