// The tabs of the model picker.
#include "shell/composer_controls.h"

#include "catalogue/audio_models.h"
#include "catalogue/listings.h"
#include "generation/generation_request.h"
#include "shell/texts.h"
#include "shell/wording.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

enum Tab { imageTab, editTab, videoTab, animateTab };

QString soundKindText(AudioKind kind) {
  switch (kind) {
    case AudioKind::voice:
      return texts::kindVoice;
    case AudioKind::music:
      return texts::kindMusic;
    case AudioKind::effect:
      break;
  }
  return texts::kindEffect;
}

// The service's own category where it is one of the four; else what the model needs decides.
Tab tabOf(const SelectableModel& model) {
  const QString& category = model.record.category;
  const bool fromImage = model.comparison.model.requiresReference;
  const bool isClip = model.record.output == MediaType::video;
  if (category == QStringLiteral("text-to-image") && !isClip && !fromImage) return imageTab;
  if (category == QStringLiteral("image-to-image") && !isClip) return editTab;
  if (category == QStringLiteral("text-to-video") && isClip && !fromImage) return videoTab;
  if (category == QStringLiteral("image-to-video") && isClip) return animateTab;
  if (isClip) return fromImage ? animateTab : videoTab;
  return fromImage ? editTab : imageTab;
}

QString listedBadge(const QString& model) {
  for (const auto& [category, listings] : recommendedModels())
    for (const FalListing& listing : listings)
      if (listing.id == model) return listing.badge;
  return {};
}

bool isBuiltIn(const QString& id) {
  const auto& models = builtInModels();
  return std::any_of(models.begin(), models.end(), [&](const FalModel& model) { return model.id == id; });
}

bool offersSound(const FalModel& model) {
  return model.output == MediaType::video &&
         (model.setting(QStringLiteral("generate_audio")) || model.setting(QStringLiteral("audio")));
}

std::vector<ModelAbility> abilitiesOf(const SelectableModel& model) {
  const ModelOption& option = model.comparison.model;
  std::vector<ModelAbility> abilities;
  if (option.supportsReferences) {
    const QString words = texts::takesReferences(option.maxReferences);
    abilities.push_back({QStringLiteral("image-plus"),
                         option.maxReferences > 1 ? QString::number(option.maxReferences) : QString(),
                         option.requiresReference ? texts::needsImage + QStringLiteral(" · ") + words : words});
  }
  if (option.supportsEndFrame) abilities.push_back({QStringLiteral("arrow-right-to-line"), {}, texts::takesEndFrame});
  if (offersSound(model.record)) abilities.push_back({QStringLiteral("volume-2"), {}, texts::makesSound});
  return abilities;
}

// An end frame travels in a field of its own and takes no place among the references.
qsizetype startingReferences(const GenerationRequest& request) {
  return static_cast<qsizetype>(request.referenceIDs.size()) - static_cast<qsizetype>(endFrameIDs(request).size());
}

QString unsuitableFor(const SelectableModel& model, qsizetype references) {
  const ModelOption& option = model.comparison.model;
  if (references == 0) return {};
  if (!option.supportsReferences) return texts::takesTextOnly;
  return option.maxReferences > 0 && references > option.maxReferences ? texts::takesReferences(option.maxReferences)
                                                                       : QString();
}

std::vector<ModelSection> emptySections() {
  std::vector<ModelSection> tabs{{texts::imageTab, true, {}, texts::noImageModels, {}, imageTab},
                                 {texts::editTab, true, {}, texts::noEditors, texts::noEditorsText, editTab},
                                 {texts::videoTab, true, {}, texts::noVideoModels, texts::noVideoModelsText, videoTab},
                                 {texts::animateTab, true, {}, texts::noAnimators, texts::noAnimatorsText, animateTab}};
  return tabs;
}

class SectionMaker {
 public:
  SectionMaker(const ComposerState& state, const std::function<PriceText(const QString&)>& priceOf)
      : state_(state), priceOf_(priceOf), references_(startingReferences(state.request())) {}

  ModelChoice choiceOf(const SelectableModel& model) const {
    ModelChoice choice;
    choice.key = model.key;
    choice.id = model.record.id;
    choice.name = model.record.name;
    choice.kindText = kindText(model.record.output);
    choice.summary = model.record.summary;
    choice.badge = listedBadge(model.record.id);
    choice.chosen = state_.selectedModels().contains(model.key);
    choice.abilities = abilitiesOf(model);
    const PriceText price = priceOf_(model.record.id);
    choice.price = price.amount;
    choice.priceDate = price.date;
    choice.unsuitable = unsuitableFor(model, references_);
    choice.removable = !isBuiltIn(model.record.id);
    return choice;
  }

  ModelChoice soundOf(const SelectableModel& model, AudioKind kind) const {
    ModelChoice choice = choiceOf(model);
    choice.kindText = soundKindText(kind);
    choice.abilities.clear();
    choice.unsuitable.clear();
    return choice;
  }

 private:
  const ComposerState& state_;
  const std::function<PriceText(const QString&)>& priceOf_;
  qsizetype references_;
};

std::vector<ModelSection> visualSections(const ComposerState& state, const SectionMaker& maker) {
  std::vector<ModelSection> sections = emptySections();
  for (const SelectableModel& model : state.allModels())
    if (!makesSound(model)) sections[tabOf(model)].models.push_back(maker.choiceOf(model));
  return sections;
}

std::vector<ModelSection> soundSections(const ComposerState& state, const SectionMaker& maker) {
  std::vector<ModelSection> sections{
      {texts::voiceTab, false, {}}, {texts::musicTab, false, {}}, {texts::effectTab, false, {}}};
  for (const SelectableModel& model : state.allModels()) {
    if (!makesSound(model)) continue;
    const AudioKind kind = audioKindOf(model.record.id).value_or(AudioKind::effect);
    const std::size_t place = kind == AudioKind::voice ? 0 : kind == AudioKind::music ? 1 : 2;
    sections[place].models.push_back(maker.soundOf(model, kind));
  }
  return sections;
}

}  // namespace

std::vector<ModelSection> makeModelSections(const ComposerState& state,
                                            const std::function<PriceText(const QString&)>& priceOf) {
  const SectionMaker maker(state, priceOf);
  return composesSound(state) ? soundSections(state, maker) : visualSections(state, maker);
}

}  // namespace sorvan::shell
