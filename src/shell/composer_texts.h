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
inline const QString noRole = QStringLiteral("No role");
inline const QString settingOn = QStringLiteral("On");
inline const QString settingOff = QStringLiteral("Off");
inline const QString lengthWord = QStringLiteral("Length");
inline const QString commandPlaceholder =
    QStringLiteral("Find, filter, move, mark or compare media, or create a project");
inline const QString emptyCommandTooltip = QStringLiteral("Enter a command first.");
inline const QString composerCleared = QStringLiteral("Composer cleared");
inline const QString composerReplaced = QStringLiteral("Your earlier prompt was replaced");
inline QString promptWouldBeTooLong(const QString& characters, const QString& most) {
  return QStringLiteral(
             "That text was not added: the prompt would have %1 characters, and it takes up to %2. It is still where you "
             "copied it.")
      .arg(characters, most);
}
inline const QString promptSaved = QStringLiteral("Prompt saved. Find it under Prompt History in the composer.");
inline const QString promptForgotten = QStringLiteral("Saved prompt removed");
inline const QString commandMode = QStringLiteral("Command Mode");
inline const QString promptHistory = QStringLiteral("Prompt History");
inline const QString laterPromptReplaced = QStringLiteral("Your later prompt was replaced");

}  // namespace sorvan::shell::texts
