#include "composer/mention_completion.h"

#include <QRegularExpression>
#include <QSet>

#include "composer/reference_names.h"
#include "composer/reference_texts.h"
#include "generation/mentions.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

/// More than any name is long; text further back cannot matter, however long the prompt is.
constexpr qsizetype furthestBack = 1024;

/// Where reading begins: never between the two halves of one character.
qsizetype readingStart(const QString& text, qsizetype cursor) {
  const qsizetype start = std::max<qsizetype>(cursor - furthestBack, 0);
  return start > 0 && text[start].isLowSurrogate() ? start + 1 : start;
}

QString titleOf(const QString& handle, const QString& kind, int images) {
  QStringList parts{u'@' + handle};
  if (!kind.isEmpty() && kind != genericKind) parts << kind;
  if (images > 0) parts << texts::images(images);
  return parts.join(u" · "_s);
}

struct Offer {
  QString typedKey;
  bool takes(const QString& handle) const { return nameKey(handle).startsWith(typedKey); }
};

MentionRow groupRow(const ReferenceBinding& first, const std::vector<ReferenceBinding>& attached) {
  const auto members =
      std::count_if(attached.begin(), attached.end(), [&](const auto& other) { return other.group == first.group; });
  return {*first.group, titleOf(*first.group, first.role.value_or(QString()), static_cast<int>(members)), {}};
}

MentionSection attachedSection(const std::vector<ReferenceBinding>& attached, const Offer& offer) {
  MentionSection section;
  QSet<QString> groups;
  for (const ReferenceBinding& binding : attached) {
    if (binding.group && !groups.contains(*binding.group)) {
      groups.insert(*binding.group);
      if (offer.takes(*binding.group)) section.rows.push_back(groupRow(binding, attached));
    }
    const QString handle = handleOf(binding);
    if (offer.takes(handle)) section.rows.push_back({handle, titleOf(handle, binding.role.value_or(QString()), 0), {}});
  }
  return section;
}

MentionSection savedSection(const std::vector<SavedReferenceSuggestion>& saved, bool ofProject, const Offer& offer) {
  MentionSection section{ofProject ? texts::projectHeading() : texts::globalHeading(), {}};
  for (const SavedReferenceSuggestion& suggestion : saved)
    if (suggestion.project.has_value() == ofProject && offer.takes(suggestion.handle))
      section.rows.push_back({suggestion.handle, suggestion.title(), suggestion.id});
  return section;
}

}  // namespace

std::optional<TypedMention> typedMention(const QString& text, qsizetype cursor) {
  if (cursor <= 0 || cursor > text.size()) return std::nullopt;
  const qsizetype start = readingStart(text, cursor);
  static const QRegularExpression pattern(u"(?<![\\p{L}\\p{M}\\p{N}_@])@((?:[\\p{L}_][\\p{L}\\p{M}\\p{N}_]*)?)\\z"_s,
                                          QRegularExpression::UseUnicodePropertiesOption);
  const auto match = pattern.match(text.sliced(start, cursor - start));
  // At the very start of what was read nothing tells what stands before.
  if (!match.hasMatch() || (start > 0 && match.capturedStart() == 0)) return std::nullopt;
  return TypedMention{start + match.capturedStart(), cursor, match.captured(1)};
}

QString SavedReferenceSuggestion::title() const { return titleOf(handle, kind, count); }

MentionList mentionList(const std::vector<ReferenceBinding>& attached,
                        const std::vector<SavedReferenceSuggestion>& saved, const QString& typed) {
  const Offer offer{nameKey(typed)};
  MentionList list;
  std::array sections{attachedSection(attached, offer), savedSection(saved, true, offer),
                      savedSection(saved, false, offer)};
  for (MentionSection& section : sections)
    if (!section.rows.empty()) list.sections.push_back(std::move(section));
  if (attached.empty() && saved.empty()) list.hint = texts::noReferences();
  return list;
}

CompletedText completed(const QString& text, const TypedMention& mention, const QString& handle) {
  const QString inserted = u'@' + handle;
  return {text.first(mention.start) + inserted + text.sliced(mention.end), mention.start + inserted.size()};
}

}  // namespace sorvan::composer
