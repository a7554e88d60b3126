#pragma once

#include "core/request_values.h"
#include "shell/room.h"

#include <QString>

#include <vector>

namespace sorvan::shell {

// Part of a prompt, in UTF-16 units.
struct PromptName {
  int start = 0;
  int length = 0;
  bool operator==(const PromptName&) const = default;
};

// The mentions that stand for a picture of the request, in their order; others are words like any.
std::vector<PromptName> namesIn(const QString& prompt, const std::vector<core::ReferenceBinding>& bindings);

}  // namespace sorvan::shell
