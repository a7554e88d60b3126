#include "composer/reference_names.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include "generation/mentions.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

bool contains(const std::vector<QUuid>& ids, const QUuid& id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

auto bindingOf(std::vector<ReferenceBinding>& bindings, const QUuid& asset) {
  return std::find_if(bindings.begin(), bindings.end(),
                      [&](const ReferenceBinding& binding) { return binding.assetID == asset; });
}

/// "Reference{n}" with the smallest n that is free; the name is taken then.
QString takeFreeName(QSet<QString>& taken) {
  for (int number = 1;; ++number) {
    const QString name = u"Reference%1"_s.arg(number);
    if (taken.contains(nameKey(name))) continue;
    taken.insert(nameKey(name));
    return name;
  }
}

bool isAutomatic(const ReferenceBinding& binding) {
  static const QRegularExpression pattern(u"\\AReference[0-9]+\\z"_s);
  return pattern.match(binding.label).hasMatch();
}

}  // namespace

std::vector<ReferenceBinding> synchronizedNames(std::vector<ReferenceBinding> bindings,
                                                const std::vector<QUuid>& references, const QString& draft) {
  if (draft.trimmed().isEmpty())
    std::erase_if(bindings, [&](const ReferenceBinding& binding) { return !contains(references, binding.assetID); });
  QSet<QString> taken;
  for (const ReferenceBinding& binding : bindings) taken.insert(nameKey(handleOf(binding)));
  for (const QUuid& id : references)
    if (bindingOf(bindings, id) == bindings.end())
      bindings.push_back({id, takeFreeName(taken), std::nullopt, std::nullopt, std::nullopt});
  return bindings;
}

NamedReferences namesForNewPrompt(std::vector<ReferenceBinding> ordered, const QString& draft) {
  // 1. The user's names stay.
  QSet<QString> taken;
  for (const ReferenceBinding& binding : ordered)
    if (!isAutomatic(binding)) taken.insert(nameKey(handleOf(binding)));
  // 2. The others are numbered anew.
  QHash<QString, QString> renames;
  for (ReferenceBinding& binding : ordered) {
    if (!isAutomatic(binding)) continue;
    const QString before = handleOf(binding);
    binding.label = takeFreeName(taken);
    if (handleOf(binding) != before) renames.insert(before, u'@' + handleOf(binding));
  }
  // 3. All mentions at once, so that two names can change places.
  return {std::move(ordered), ReferenceMentions::replace(draft, renames)};
}

NamedReferences renamedReference(const NamedReferences& names, const QUuid& asset, const QString& label,
                                 const std::optional<QString>& role) {
  NamedReferences changed = names;
  const auto binding = bindingOf(changed.bindings, asset);
  if (binding == changed.bindings.end()) return names;
  const QString before = handleOf(*binding);
  binding->label = label.trimmed();
  binding->role = role && *role != genericKind && !role->isEmpty() ? role : std::nullopt;
  ReferenceMentions::resolve(QString(), changed.bindings);
  if (handleOf(*binding) != before)
    changed.draft = ReferenceMentions::replace(names.draft, before, u'@' + handleOf(*binding));
  return changed;
}

bool marksAreStray(const std::optional<QUuid>& markedAsset, const std::vector<QUuid>& references) {
  return !markedAsset || references.empty() || references.front() != *markedAsset;
}

}  // namespace sorvan::composer
