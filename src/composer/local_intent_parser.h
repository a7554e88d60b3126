// Reads the composer's text by fixed rules, on this machine alone.
#pragma once

#include <QRegularExpression>
#include <QString>

#include <vector>

#include "composer/intent.h"

namespace sorvan::composer {

/// Pure; any thread. Every text has a meaning, so nothing is ever thrown.
class LocalIntentParser {
 public:
  /// In `generation` mode the whole trimmed text is a prompt and no rule runs. In `command` mode the rules run, and a
  /// text that would be a prompt is answered with the advice to switch.
  static SorvanIntent parse(const QString& text, ComposerMode mode);

  /// The rules by themselves: the first that fits decides, and what fits none is a prompt.
  static SorvanIntent parse(const QString& text);

  /// Every pattern that the rules are made of, compiled.
  static std::vector<const QRegularExpression*> patterns();
};

}  // namespace sorvan::composer
