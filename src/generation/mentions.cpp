#include "generation/mentions.h"

#include <QHash>
#include <QSet>

#include "base/sorvan_error.h"
#include "base/text.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

constexpr int longestName = 48;

bool startsLikeAName(const QString& name) {
  static const QRegularExpression start(QStringLiteral("^[\\p{L}_]"), QRegularExpression::UseUnicodePropertiesOption);
  return start.match(name).hasMatch();
}

bool fitsAsName(const QString& name) { return startsLikeAName(name) && chars(name) <= longestName; }

/// Adds every handle and group to one set and throws when one is unfit or taken.
QSet<QString> checkedNames(const std::vector<ReferenceBinding>& references) {
  QSet<QString> names;
  for (const ReferenceBinding& reference : references) {
    const QString handle = handleOf(reference);
    if (!fitsAsName(handle) || names.contains(nameKey(handle))) throw SorvanError(texts::referenceNames());
    names.insert(nameKey(handle));
  }
  QSet<QString> groups;
  for (const ReferenceBinding& reference : references) {
    if (!reference.group || groups.contains(*reference.group)) continue;
    const QString& group = *reference.group;
    const bool isHandle = handleOfLabel(group) == group.normalized(QString::NormalizationForm_C);
    if (!fitsAsName(group) || !isHandle || names.contains(nameKey(group))) throw SorvanError(texts::groupNames());
    groups.insert(group);
    names.insert(nameKey(group));
  }
  return names;
}

void checkMentions(const QString& prompt, const QSet<QString>& names) {
  auto matches = ReferenceMentions::pattern().globalMatch(prompt);
  while (matches.hasNext()) {
    const QString name = matches.next().captured(1);
    if (!names.contains(nameKey(name))) throw SorvanError(texts::notAttached(name));
  }
}

bool hasText(const std::optional<QString>& text) { return text && !text->isEmpty(); }

QString memberWords(std::size_t index, const ReferenceBinding& reference) {
  return QStringLiteral("reference image %1 (%2)").arg(QString::number(index + 1), reference.label);
}

QString ownWords(std::size_t index, const ReferenceBinding& reference) {
  if (!hasText(reference.subject)) return memberWords(index, reference);
  return QStringLiteral("reference image %1 (%2: %3)")
      .arg(QString::number(index + 1), reference.label, *reference.subject);
}

QString groupWords(const QString& group, const std::vector<ReferenceBinding>& references) {
  QStringList members;
  QString subject;
  for (std::size_t i = 0; i < references.size(); ++i) {
    if (references[i].group != group) continue;
    if (members.isEmpty()) subject = references[i].subject.value_or(QString());
    members.append(memberWords(i, references[i]));
  }
  const QString about = subject.isEmpty() ? QString() : QStringLiteral(", ") + subject + u',';
  return QStringLiteral("reference group ") + group + about + QStringLiteral(" [") +
         members.join(QStringLiteral(", ")) + u']';
}

/// What each name is replaced by; a group stands before a handle of the same name.
QHash<QString, QString> wordsByName(const std::vector<ReferenceBinding>& references) {
  QHash<QString, QString> words;
  for (const ReferenceBinding& reference : references) {
    if (reference.group && !words.contains(nameKey(*reference.group)))
      words.insert(nameKey(*reference.group), groupWords(*reference.group, references));
  }
  for (std::size_t i = 0; i < references.size(); ++i) {
    const QString name = nameKey(handleOf(references[i]));
    if (!words.contains(name)) words.insert(name, ownWords(i, references[i]));
  }
  return words;
}

/// One pass over the text, so that words put in are never read as mentions again.
QString replaceMentions(const QString& text, const QHash<QString, QString>& words) {
  QString result;
  qsizetype end = 0;
  auto matches = ReferenceMentions::pattern().globalMatch(text);
  while (matches.hasNext()) {
    const QRegularExpressionMatch match = matches.next();
    const auto found = words.constFind(nameKey(match.captured(1)));
    if (found == words.constEnd()) continue;
    result += QStringView(text).sliced(end, match.capturedStart() - end);
    result += *found;
    end = match.capturedEnd();
  }
  result += QStringView(text).sliced(end);
  return result;
}

QString legend(const std::vector<ReferenceBinding>& references) {
  QStringList lines;
  for (std::size_t i = 0; i < references.size(); ++i) {
    const ReferenceBinding& reference = references[i];
    QString line = QStringLiteral("Image %1: %2").arg(QString::number(i + 1), reference.label);
    if (hasText(reference.subject)) line += QStringLiteral(", ") + *reference.subject;
    if (hasText(reference.role)) {
      line += QStringLiteral("; intended use: ") + *reference.role;
      const QString guidance = ReferenceMentions::guidance(*reference.role);
      if (!guidance.isEmpty()) line += QStringLiteral(" (") + guidance + u')';
    }
    lines.append(line);
  }
  return QStringLiteral("\n\nAttached reference images, in upload order:\n") + lines.join(u'\n');
}

}  // namespace

QString nameKey(const QString& name) { return name.normalized(QString::NormalizationForm_C).toLower(); }

QString handleOfLabel(const QString& label) {
  static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{M}\\p{N}_]"),
                                         QRegularExpression::UseUnicodePropertiesOption);
  static const QRegularExpression leadingMarks(QStringLiteral("^\\p{M}+"),
                                               QRegularExpression::UseUnicodePropertiesOption);
  QString handle = label.normalized(QString::NormalizationForm_C);
  // What is taken out may leave a mark at the start, or one behind a letter that it now belongs to.
  return handle.remove(others).remove(leadingMarks).normalized(QString::NormalizationForm_C);
}

QString handleOf(const ReferenceBinding& binding) { return handleOfLabel(binding.label); }

const QRegularExpression& ReferenceMentions::pattern() {
  static const QRegularExpression mention(
      QStringLiteral("(?<![\\p{L}\\p{M}\\p{N}_@])@([\\p{L}_][\\p{L}\\p{M}\\p{N}_]*)"),
      QRegularExpression::UseUnicodePropertiesOption);
  return mention;
}

QString ReferenceMentions::guidance(const QString& role) {
  static const QHash<QString, QString> table{
      {QStringLiteral("Character"), QStringLiteral("the same person: keep the face, build and identity")},
      {QStringLiteral("Product"),
       QStringLiteral("the same object: keep its shape, colours, label and lettering exactly")},
      {QStringLiteral("Brand"), QStringLiteral("the same logo or mark: reproduce its design and lettering exactly")},
      {QStringLiteral("Location"),
       QStringLiteral("the setting only: take the place, architecture and surfaces, not the people or objects in it")},
      {QStringLiteral("Style"),
       QStringLiteral("the look only: take the lighting, colour and rendering, not its subject or composition")}};
  return table.value(role);
}

QString ReferenceMentions::resolve(const QString& prompt, const std::vector<ReferenceBinding>& references) {
  // 1. and 2. The names of pictures, then of groups.
  const QSet<QString> names = checkedNames(references);
  // 3. The mentions.
  checkMentions(prompt, names);
  // 4. Without references the prompt stands as it is.
  if (references.empty()) return prompt;
  // 5. and 6. Groups and pictures become words that point at positions.
  const QString resolved = replaceMentions(prompt, wordsByName(references));
  // 7. The legend.
  return resolved + legend(references);
}

QStringList ReferenceMentions::dropped(const QString& original, const QString& rewrite) {
  QSet<QString> seen;
  auto kept = pattern().globalMatch(rewrite);
  while (kept.hasNext()) seen.insert(nameKey(kept.next().captured(1)));
  QStringList lost;
  auto matches = pattern().globalMatch(original);
  while (matches.hasNext()) {
    const QString name = matches.next().captured(1);
    if (seen.contains(nameKey(name))) continue;
    seen.insert(nameKey(name));
    lost.append(name);
  }
  return lost;
}

QString ReferenceMentions::replace(const QString& text, const QString& handle, const QString& with) {
  return replaceMentions(text, QHash<QString, QString>{{nameKey(handle), with}});
}

QString ReferenceMentions::replace(const QString& text, const QHash<QString, QString>& withByHandle) {
  QHash<QString, QString> words;
  for (auto entry = withByHandle.cbegin(); entry != withByHandle.cend(); ++entry)
    words.insert(nameKey(entry.key()), entry.value());
  return replaceMentions(text, words);
}

}  // namespace sorvan::generation
