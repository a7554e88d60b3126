#include "shell/prompt_names.h"

#include "generation/mentions.h"

#include <QRegularExpression>

#include <set>

namespace sorvan::shell {

std::vector<PromptName> namesIn(const QString& prompt, const std::vector<core::ReferenceBinding>& bindings) {
  std::set<QString> attached;
  for (const core::ReferenceBinding& binding : bindings)
    attached.insert(generation::nameKey(generation::handleOf(binding)));
  std::vector<PromptName> names;
  for (auto found = generation::ReferenceMentions::pattern().globalMatch(prompt); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    if (attached.contains(generation::nameKey(match.captured(1))))
      names.push_back({static_cast<int>(match.capturedStart(0)), static_cast<int>(match.capturedLength(0))});
  }
  return names;
}

}  // namespace sorvan::shell
