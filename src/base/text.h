// Text as people count, search and sort it. Nothing here depends on the machine's locale.
#pragma once

#include <QString>
#include <QStringView>

namespace sorvan::base {

// The number of characters: extended grapheme clusters.
qsizetype chars(const QString& text);
// The first `count` characters; a cluster is never cut.
QString firstChars(const QString& text, qsizetype count);
// The longest beginning of whole characters that is at most `bytes` long as UTF-8.
QString firstCharsWithinBytes(const QString& text, qsizetype bytes);

// For searching: compatibility-decomposed, without marks, lower case. Fold when text is written, never at the query.
QString foldForSearch(const QString& text);

// Lower case by Unicode's rules, whatever the locale. The result may be longer ("İ"): never index across the two.
QString lowered(const QString& text);

// Trims white space and newlines from both ends.
inline QString trimmed(const QString& text) { return text.trimmed(); }
// Nothing but white space.
inline bool isBlank(const QString& text) { return text.trimmed().isEmpty(); }

// Natural order: case and diacritics aside, runs of digits by their value ("2.png" before "10.png"); what is equal then
// is ordered by code points. Negative, zero or positive.
int naturalCompare(const QString& first, const QString& second);
inline bool naturalLess(const QString& first, const QString& second) { return naturalCompare(first, second) < 0; }

}  // namespace sorvan::base
