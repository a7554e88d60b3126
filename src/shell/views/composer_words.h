#pragma once

#include <QString>

#include "shell/views/room.h"

// What the dock's own controls say.
namespace sorvan::views::texts {

inline QString command() { return QStringLiteral("Command"); }
inline QString commandMode() { return QStringLiteral("Command Mode"); }
inline QString leaveCommandMode() { return QStringLiteral("Back to the Prompt"); }
inline QString interpretWithAI() { return QStringLiteral("Interpret with AI"); }
inline QString allModels() { return QStringLiteral("All models"); }
inline QString clearTooltip() {
  return QStringLiteral(
      "Clear the prompt and references and put the model and settings back to how the composer starts");
}
inline QString moreSettings() { return QStringLiteral("More Settings"); }
inline QString settingsStrip() { return QStringLiteral("Generation settings"); }
inline QString outputs() { return QStringLiteral("Outputs"); }
inline QString mostOutputs(int most) { return QStringLiteral("up to %1").arg(most); }
inline QString emptySeed() { return QStringLiteral("Leave empty for a new result each time"); }
inline QString noValue() { return QStringLiteral("Choose"); }
inline QString promptHistory() { return QStringLiteral("Prompt History"); }
inline QString promptHistoryTooltip() {
  return QStringLiteral("Prompt History: reuse a prompt you saved or used recently, or save the current one");
}
inline QString noPastPrompts() { return QStringLiteral("Prompts you save or use appear here."); }
inline QString saveCurrentPrompt() { return QStringLiteral("Save Current Prompt"); }
inline QString removeSavedPrompt() { return QStringLiteral("Remove Saved Prompt"); }
inline QString savedPrompt() { return QStringLiteral("Saved prompt"); }
inline QString recentPrompt() { return QStringLiteral("Recent prompt"); }

}  // namespace sorvan::views::texts
