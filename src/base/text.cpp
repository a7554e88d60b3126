#include "base/text.h"

#include <QTextBoundaryFinder>

namespace sorvan::base {

static bool isPlainAscii(const QString& text) {
  // A carriage return and a line feed are one cluster, the only one in ASCII.
  return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80 && unit != u'\r'; });
}

qsizetype chars(const QString& text) {
  if (isPlainAscii(text)) return text.size();
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  qsizetype count = 0;
  while (finder.toNextBoundary() > 0) ++count;
  return count;
}

QString firstChars(const QString& text, qsizetype count) {
  if (count <= 0) return {};
  // A cluster has at least one unit, so a text this short needs no counting.
  if (text.size() <= count) return text;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  qsizetype end = 0;
  for (qsizetype taken = 0; taken < count; ++taken) {
    const qsizetype next = finder.toNextBoundary();
    if (next <= 0) return text;
    end = next;
  }
  return text.first(end);
}

QString firstCharsWithinBytes(const QString& text, qsizetype bytes) {
  if (text.toUtf8().size() <= bytes) return text;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  qsizetype end = 0;
  qsizetype used = 0;
  for (qsizetype next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary()) {
    used += QStringView(text).sliced(end, next - end).toUtf8().size();
    if (used > bytes) break;
    end = next;
  }
  return text.first(end);
}

QString lowered(const QString& text) { return text.toLower(); }

QString foldForSearch(const QString& text) {
  // Folding before and after: decomposition can bring out capitals, and folding "İ" brings out a mark.
  const QString decomposed = text.toCaseFolded().normalized(QString::NormalizationForm_KD).toCaseFolded();
  QString folded;
  folded.reserve(decomposed.size());
  for (const QChar unit : decomposed) {
    if (unit.category() != QChar::Mark_NonSpacing) folded.append(unit);
  }
  return folded;
}

namespace {
// Walks a folded text, taking runs of digits as numbers.
struct NaturalCursor {
  QStringView text;
  qsizetype at = 0;

  bool ended() const { return at >= text.size(); }
  bool atDigit() const { return !ended() && text[at].unicode() >= u'0' && text[at].unicode() <= u'9'; }
  // The digits without leading zeros; their length and then their text is their order.
  QStringView takeNumber() {
    const qsizetype from = at;
    while (atDigit()) ++at;
    qsizetype first = from;
    while (first < at - 1 && text[first] == u'0') ++first;
    return text.sliced(first, at - first);
  }
};

int sign(qsizetype difference) { return difference < 0 ? -1 : difference > 0 ? 1 : 0; }

int compareNumbers(QStringView first, QStringView second) {
  if (first.size() != second.size()) return sign(first.size() - second.size());
  return sign(first.compare(second));
}

int compareFolded(QStringView first, QStringView second) {
  NaturalCursor one{first};
  NaturalCursor other{second};
  while (!one.ended() && !other.ended()) {
    if (one.atDigit() && other.atDigit()) {
      if (const int order = compareNumbers(one.takeNumber(), other.takeNumber())) return order;
      continue;
    }
    const int order = sign(int(one.text[one.at].unicode()) - int(other.text[other.at].unicode()));
    if (order != 0) return order;
    ++one.at;
    ++other.at;
  }
  return sign(int(!one.ended()) - int(!other.ended()));
}
}  // namespace

int naturalCompare(const QString& first, const QString& second) {
  if (const int order = compareFolded(foldForSearch(first), foldForSearch(second))) return order;
  const auto one = first.toUcs4();
  const auto other = second.toUcs4();
  return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end())   ? -1
         : std::lexicographical_compare(other.begin(), other.end(), one.begin(), one.end()) ? 1
                                                                                            : 0;
}

}  // namespace sorvan::base
