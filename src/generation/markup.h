// The words that marked areas add to a prompt.
#pragma once

#include <QString>

#include <vector>

#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

class Markup {
 public:
  /// The prompt with the notes of the areas written into it, each once. A final full stop is dropped.
  static QString prompt(const QString& prompt, const std::vector<MarkupBox>& boxes);

  /// What a model is told about the red numbered boxes drawn on the first image; empty without boxes.
  static QString instruction(const std::vector<MarkupBox>& boxes);
};

}  // namespace sorvan::generation
