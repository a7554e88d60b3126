#include "composer/mention_marks.h"

#include "generation/mentions.h"

namespace sorvan::composer {

QSet<QString> mentionableNames(const std::vector<ReferenceBinding>& attached) {
  QSet<QString> names;
  for (const ReferenceBinding& binding : attached) {
    names.insert(nameKey(handleOf(binding)));
    if (binding.group) names.insert(nameKey(*binding.group));
  }
  return names;
}

std::vector<MentionMark> mentionMarks(const QString& text, const QSet<QString>& names) {
  std::vector<MentionMark> marks;
  // Most texts hold none, and looking for the sign alone is much faster than the pattern.
  if (!text.contains(u'@')) return marks;
  auto matches = ReferenceMentions::pattern().globalMatch(text);
  while (matches.hasNext()) {
    const QRegularExpressionMatch match = matches.next();
    marks.push_back({static_cast<int>(match.capturedStart()), static_cast<int>(match.capturedLength()),
                     names.contains(nameKey(match.captured(1)))});
  }
  return marks;
}

}  // namespace sorvan::composer
