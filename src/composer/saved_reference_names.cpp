#include "composer/saved_reference_names.h"

#include <QSet>

#include "base/sorvan_error.h"
#include "base/text.h"
#include "composer/composer_rules.h"
#include "composer/reference_names.h"
#include "composer/reference_texts.h"
#include "generation/mentions.h"

namespace sorvan::composer {

namespace {

constexpr int longestName = 48;

void require(bool holds, const QString& message) {
  if (!holds) throw SorvanError(message);
}

std::optional<QString> textOrNothing(const QString& text) {
  return text.isEmpty() ? std::nullopt : std::optional(text);
}

}  // namespace

QStringList picturesNames(const QString& base, std::size_t count) {
  if (count == 1) return {base};
  QStringList names;
  for (std::size_t number = 1; number <= count; ++number) names << base + QString::number(number);
  return names;
}

std::vector<ReferenceBinding> bindingsOf(const QString& base, const QString& kind, const QString& subject,
                                         const std::vector<QUuid>& images) {
  const QStringList names = picturesNames(base, images.size());
  std::vector<ReferenceBinding> bindings;
  for (std::size_t index = 0; index < images.size(); ++index) {
    ReferenceBinding binding{images[index], names[static_cast<qsizetype>(index)], {}, {}, textOrNothing(subject)};
    if (kind != genericKind) binding.role = textOrNothing(kind);
    if (images.size() > 1) binding.group = base;
    bindings.push_back(std::move(binding));
  }
  return bindings;
}

QString freeBaseName(const QString& base, std::size_t count, const std::vector<ReferenceBinding>& present) {
  QSet<QString> taken;
  for (const ReferenceBinding& binding : present) {
    taken.insert(nameKey(handleOf(binding)));
    if (binding.group) taken.insert(nameKey(*binding.group));
  }
  const auto isFree = [&](const QString& candidate) {
    // The group itself is a name beside those of its pictures.
    const QStringList names = picturesNames(candidate, count) << candidate;
    return std::none_of(names.begin(), names.end(), [&](const QString& name) { return taken.contains(nameKey(name)); });
  };
  QString candidate = base;
  for (int number = 2; !isFree(candidate); ++number) candidate = base + u'_' + QString::number(number);
  return candidate;
}

std::vector<ReferenceBinding> attachedBindings(const SavedReference& reference, const std::vector<QUuid>& live,
                                               const std::vector<QUuid>& attached,
                                               const std::vector<ReferenceBinding>& present) {
  // 1. Something to attach.
  require(!live.empty(), texts::imagesMissing());
  // 2. Nothing of it attached yet.
  const bool anyAttached = std::any_of(live.begin(), live.end(), [&](const QUuid& id) {
    return std::find(attached.begin(), attached.end(), id) != attached.end();
  });
  require(!anyAttached, texts::groupAttached());
  // 3. Room for it.
  require(attached.size() + live.size() <= mostReferences, texts::eightImagesPerPrompt());
  // 4. A picture that was attached before, and is named in the draft, is called by the reference's name from now on.
  std::vector<ReferenceBinding> bindings = present;
  std::erase_if(bindings, [&](const ReferenceBinding& binding) {
    return std::find(live.begin(), live.end(), binding.assetID) != live.end();
  });
  // 5. A name that is free, and 6. short enough.
  const QString base = freeBaseName(handleOfLabel(reference.name), live.size(), bindings);
  require(chars(base) + 1 <= longestName, texts::shortenName());
  // 7. The names of its pictures.
  for (ReferenceBinding& binding : bindingsOf(base, reference.kind, reference.subject, live))
    bindings.push_back(std::move(binding));
  // 8. All names together.
  ReferenceMentions::resolve(QString(), bindings);
  return bindings;
}

}  // namespace sorvan::composer
