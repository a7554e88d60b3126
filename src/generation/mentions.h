// Names of attached pictures in a prompt, and what the model reads instead of them.
#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <vector>

#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// What a mention of the binding must match: its label without all that is no letter, mark, digit or "_"; a mark counts
/// only after the first character. Compared without regard to case.
QString handleOf(const ReferenceBinding& binding);
/// The same for a bare label.
QString handleOfLabel(const QString& label);

/// What all spellings of one name have in common; two names are one when these are equal.
QString nameKey(const QString& name);

/// The pure rules of mentions: what they are, and how they become words that point at a picture by its position.
class ReferenceMentions {
 public:
  /// The pattern of a mention; group 1 is the name. An @ after a letter, a digit, "_" or another @ starts none.
  static const QRegularExpression& pattern();

  /// How a model is told to use a picture of this role; empty for roles without words of their own.
  static QString guidance(const QString& role);

  /// The text for the provider: every mention replaced in one pass over the prompt, and a legend of the references
  /// appended. Throws SorvanError for names that are unfit or taken twice and for mentions of nothing attached.
  static QString resolve(const QString& prompt, const std::vector<ReferenceBinding>& references);

  /// The mentions of `original` that `rewrite` lost, once each, spelled and ordered as in `original`.
  static QStringList dropped(const QString& original, const QString& rewrite);

  /// `text` with every mention of `handle`, the @ included, replaced.
  static QString replace(const QString& text, const QString& handle, const QString& with);
  /// The same for several handles at once, by handle: what is put in for one is never read as another.
  static QString replace(const QString& text, const QHash<QString, QString>& withByHandle);
};

}  // namespace sorvan::generation
