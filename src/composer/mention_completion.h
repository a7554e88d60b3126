// The names that are offered while a mention is typed: pure functions.
#pragma once

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

#include "composer/room.h"
#include "core/request_values.h"

namespace sorvan::composer {

/// A mention under the cursor as far as it is typed. Positions count UTF-16 units, as text fields do.
struct TypedMention {
  qsizetype start = 0;  ///< of the @
  qsizetype end = 0;    ///< the cursor
  QString name;         ///< what stands between; may be empty
  bool operator==(const TypedMention&) const = default;
};

/// What stands before the cursor, if it is a mention in the making: an @ at the start or after something that is no
/// part of a name, and only a name since.
std::optional<TypedMention> typedMention(const QString& text, qsizetype cursor);

/// A saved reference as it can be attached now.
struct SavedReferenceSuggestion {
  QUuid id;
  QString handle;
  QString kind;
  int count = 0;                     ///< pictures that are there
  std::optional<QString> project;    ///< name; none for a global one
  std::optional<QString> thumbnail;  ///< absolute path of its first picture's thumbnail

  /// "@RoseBottle · Product · 2 images".
  QString title() const;
  bool operator==(const SavedReferenceSuggestion&) const = default;
};

struct MentionRow {
  QString handle;
  QString title;
  std::optional<QUuid> saved;  ///< to be attached first; none for what is attached already
  bool operator==(const MentionRow&) const = default;
};
struct MentionSection {
  QString heading;  ///< empty for what is attached
  std::vector<MentionRow> rows;
  bool operator==(const MentionSection&) const = default;
};
struct MentionList {
  std::vector<MentionSection> sections;  ///< none of them empty
  QString hint;                          ///< what to say when there is nothing to offer at all
  bool operator==(const MentionList&) const = default;
};

/// What to offer for a name that begins like `typed`. `attached` has one binding for each reference in the order of
/// upload; groups stand before their pictures.
MentionList mentionList(const std::vector<ReferenceBinding>& attached,
                        const std::vector<SavedReferenceSuggestion>& saved, const QString& typed);

struct CompletedText {
  QString text;
  qsizetype cursor = 0;  ///< behind the name
  bool operator==(const CompletedText&) const = default;
};
/// The text with the typed range replaced by a mention of the handle.
CompletedText completed(const QString& text, const TypedMention& mention, const QString& handle);

}  // namespace sorvan::composer
