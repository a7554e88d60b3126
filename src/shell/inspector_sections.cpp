#include "shell/inspector_sections.h"

#include "base/ids.h"
#include "core/image_format.h"
#include "core/library_store.h"
#include "generation/mentions.h"
#include "shell/composer_texts.h"
#include "shell/inspector_texts.h"
#include "shell/locations.h"
#include "shell/prompt_names.h"
#include "shell/recipes.h"
#include "shell/texts.h"
#include "shell/wording.h"

#include <QFileInfo>

#include <algorithm>
#include <map>

namespace sorvan::shell {

namespace {

void addRow(InspectorSection& section, const QString& label, const QString& value, bool monospaced = false) {
  if (!value.isEmpty()) section.rows.push_back({label, value, monospaced});
}

std::vector<InspectorSpan> mentionsIn(const QString& prompt, const std::vector<core::ReferenceBinding>& bindings) {
  std::vector<InspectorSpan> spans;
  for (const PromptName& name : namesIn(prompt, bindings)) spans.push_back({name.start, name.length});
  return spans;
}

InspectorLink linkTo(const core::LibraryStore& store, QUuid item, const QString& subtitle) {
  const core::AssetRef asset = store.asset(item);
  if (!asset) return {item, texts::deletedForGood, subtitle, {}, false};
  QString under = subtitle;
  if (asset->isTrashed()) under = under.isEmpty() ? texts::linkInTrash : under + QStringLiteral(" · ") + texts::linkInTrash;
  return {item, asset->filename(), under, store.thumbnailOf(*asset).value_or(QString()), true};
}

QString sourceText(core::AssetSourceType source) {
  switch (source) {
    case core::AssetSourceType::imported:
      return texts::imported;
    case core::AssetSourceType::clipboard:
      return texts::pasted;
    case core::AssetSourceType::generated:
      break;
  }
  return texts::generated;
}

// “safety_tolerance” as “Safety tolerance”.
QString settingTitle(QString name) {
  name.replace(u'_', u' ');
  return name.left(1).toUpper() + name.mid(1);
}

}  // namespace

std::vector<InspectorSection> promptSections(const core::LibraryStore& store, QUuid item) {
  const auto recipe = recipeOf(store, item);
  std::vector<InspectorSection> sections;
  if (!recipe || recipe->prompt.isEmpty()) return sections;
  InspectorSection prompt{texts::promptSection, recipe->prompt, {}};
  prompt.mentions = mentionsIn(recipe->prompt, recipe->referenceBindings.value_or(std::vector<core::ReferenceBinding>()));
  prompt.headActions = {{ActionId::reusePrompt, texts::reuse}, {ActionId::copyPrompt, texts::copyPrompt}};
  sections.push_back(std::move(prompt));
  for (const core::PromptImprovement& before : recipe->improvements.value_or(std::vector<core::PromptImprovement>())) {
    if (!before.from.isEmpty()) sections.push_back({texts::promptRewritten, before.from, {}});
  }
  return sections;
}

InspectorSection referencesSection(const core::LibraryStore& store, const core::Generation& generation) {
  const auto recipe = generation.recipe();
  if (recipe && recipe->referenceBindings) return referencesOf(store, *recipe);
  InspectorSection section{texts::referencesSection, {}, {}};
  std::vector<core::ReferenceRef> references = store.referencesOf(generation.id);
  std::sort(references.begin(), references.end(),
            [](const auto& one, const auto& other) { return one->position < other->position; });
  for (const core::ReferenceRef& reference : references) section.links.push_back(linkTo(store, reference->assetID, {}));
  return section;
}

InspectorSection referencesOf(const core::LibraryStore& store, const core::GenerationRequest& request) {
  InspectorSection section{texts::referencesSection, {}, {}};
  if (!request.referenceBindings) {
    for (const QUuid& item : request.referenceIDs) section.links.push_back(linkTo(store, item, {}));
    return section;
  }
  for (const core::ReferenceBinding& binding : *request.referenceBindings) {
    InspectorLink link = linkTo(store, binding.assetID, binding.role.value_or(QString()));
    if (!binding.label.isEmpty()) link.title = u'@' + generation::handleOf(binding);
    section.links.push_back(std::move(link));
  }
  return section;
}

InspectorSection settingsOf(const core::GenerationRequest& request, const QString& modelName) {
  InspectorSection section{texts::settingsSection, {}, {}};
  addRow(section, texts::modelLabel, modelName);
  const core::ImageFormat* format = core::ImageFormat::find(request.size);
  if (format) addRow(section, texts::ratioLabel, QStringLiteral("%1 %2").arg(format->ratio, format->name));
  if (request.quality != core::GenerationRequest().quality) addRow(section, texts::qualityLabel, request.quality);
  addRow(section, texts::imagesLabel, QString::number(request.count));
  if (request.seed) addRow(section, texts::seedLabel, QString::number(*request.seed), true);
  addRow(section, texts::shotLabel, request.shot.value_or(QString()));
  addRow(section, texts::varianceLabel, request.variance.value_or(QString()));
  if (request.options)
    for (const auto& [name, value] : request.options->asKeyValueRange()) addRow(section, settingTitle(name), value);
  addRow(section, texts::modelIdLabel, request.model, true);
  return section;
}

InspectorSection projectSectionOf(const core::LibraryStore& store, const core::Asset& asset) {
  InspectorSection section{texts::projectSection, {}, {{texts::savedToLabel, destinationName(store, asset.projectID)}}};
  section.headActions = {{ActionId::moveToProject, texts::moveToProjectButton}};
  return section;
}

InspectorSection parentsSection(const core::LibraryStore& store, QUuid item) {
  InspectorSection section{texts::lineageSection, {}, {}};
  for (const core::RelationshipRef& edge : store.parentEdges(item)) {
    const auto type = edge->type();
    section.links.push_back(linkTo(store, edge->parentAssetID, type ? core::label(*type) : QString()));
  }
  return section;
}

InspectorSection childrenSection(const core::LibraryStore& store, QUuid item) {
  InspectorSection section{texts::madeFromItSection, {}, {}};
  for (const core::RelationshipRef& edge : store.childEdges(item)) {
    const auto type = edge->type();
    section.links.push_back(linkTo(store, edge->childAssetID, type ? core::label(*type) : QString()));
  }
  return section;
}

InspectorSection fileSectionOf(const core::LibraryStore& store, const core::Asset& asset) {
  InspectorSection file{texts::fileSection, {}, {}};
  const Instant now = store.now();
  if (asset.isTrashed()) addRow(file, texts::savedToLabel, destinationName(store, asset.projectID));
  file.headActions = {{ActionId::showInFiles, texts::showInFiles}};
  addRow(file, texts::cameFromLabel, sourceText(asset.sourceType()));
  if (asset.originalFilename != asset.filename()) addRow(file, texts::nameLabel, asset.originalFilename);
  addRow(file, texts::typeLabel, asset.mimeType);
  addRow(file, texts::addedLabel, dayAndTimeText(asset.createdAt, now));
  if (asset.importedAt) addRow(file, texts::importedLabel, dayAndTimeText(*asset.importedAt, now));
  if (asset.deletedAt) addRow(file, texts::trashedLabel, dayAndTimeText(*asset.deletedAt, now));
  addRow(file, texts::pathLabel, asset.localFilePath, true);
  addRow(file, texts::checksumLabel, asset.checksum.value_or(QString()), true);
  addRow(file, texts::itemLabel, uuidText(asset.id), true);
  return file;
}

// What is written alike is alike; the reading of it is compared only where the writing differs.
CommonFacts commonFactsOf(const std::vector<core::AssetRef>& items) {
  CommonFacts common;
  const core::Asset& first = *items.front();
  for (const core::AssetRef& ref : items) {
    const core::Asset& item = *ref;
    common.live = common.live && !item.isTrashed();
    common.oneKind = common.oneKind && (item.mediaType == first.mediaType || item.type() == first.type());
    common.oneStatus = common.oneStatus && (item.statusRaw == first.statusRaw || item.status() == first.status());
    common.oneRating = common.oneRating && item.rating.value_or(0) == first.rating.value_or(0);
    common.oneProject = common.oneProject && item.projectID == first.projectID;
    common.favorites += item.favorite ? 1 : 0;
    common.bytes += item.fileSize;
  }
  return common;
}

InspectorSection commonSection(const core::LibraryStore& store, const std::vector<core::AssetRef>& items,
                               const CommonFacts& common) {
  InspectorSection section{texts::selectionSection, {}, {}};
  const core::Asset& first = *items.front();
  const auto add = [&section](const QString& label, bool same, const QString& text) {
    addRow(section, label, same ? text : texts::mixed);
  };
  const int stars = first.rating.value_or(0);
  add(texts::kindLabel, common.oneKind, kindText(first.type()));
  add(texts::statusLabel, common.oneStatus, statusText(first.status()));
  add(texts::ratingLabel, common.oneRating, stars > 0 ? texts::starsText(stars) : texts::noRating);
  addRow(section, texts::favoritesLabel, texts::shareOf(common.favorites, static_cast<qsizetype>(items.size())));
  add(texts::projectLabel, common.oneProject, destinationName(store, first.projectID));
  addRow(section, texts::sizeLabel, fileSizeText(common.bytes));
  return section;
}

}  // namespace sorvan::shell
