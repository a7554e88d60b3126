// Where the mentions of a prompt stand, for painting them: pure functions.
#pragma once

#include <QSet>
#include <QString>

#include <vector>

#include "composer/room.h"
#include "core/request_values.h"

namespace sorvan::composer {

/// One mention with its @. Positions count UTF-16 units, as text fields do.
struct MentionMark {
  int start = 0;
  int length = 0;
  bool attached = false;  ///< whether the name stands for something that goes along with the prompt
  bool operator==(const MentionMark&) const = default;
};

/// The keys of all names that the prompt may mention: of pictures and of groups.
QSet<QString> mentionableNames(const std::vector<ReferenceBinding>& attached);

/// The mentions in their order, by the same pattern that the submission goes by.
std::vector<MentionMark> mentionMarks(const QString& text, const QSet<QString>& names);

}  // namespace sorvan::composer
