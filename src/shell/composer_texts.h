#pragma once

#include "shell/room.h"

#include <QString>

// What the composer says of recipes, commands and unfinished prompts.
namespace sorvan::shell::texts {

inline const QString useSeed = QStringLiteral("Use Seed");
inline const QString copyPrompt = QStringLiteral("Copy Prompt");
inline const QString promptCopied = QStringLiteral("Prompt copied.");
inline QString seedTaken(const QString& seed) { return QStringLiteral("Seed %1 taken over.").arg(seed); }
inline QString reusedModelGone(const QString& model) {
  return QStringLiteral(
             "%1 is not among your models any more. Its prompt and references are here: choose another model, or add "
             "it again from the model picker.")
      .arg(model);
}
inline const QString composerCleared = QStringLiteral("Composer cleared");
inline const QString composerReplaced = QStringLiteral("Your earlier prompt was replaced");
inline const QString laterPromptReplaced = QStringLiteral("Your later prompt was replaced");

}  // namespace sorvan::shell::texts
