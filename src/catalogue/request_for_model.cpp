#include "catalogue/request_for_model.h"

#include "catalogue/audio_models.h"
#include "catalogue/listings.h"
#include "catalogue/video_length.h"
#include "generation/generation_request.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

bool isCameraAngle(const FalModel& model, const QString& field, const QString& value) {
  static const QStringList fields{u"horizontal_angle"_s, u"vertical_angle"_s, u"zoom"_s};
  bool reads = false;
  value.toDouble(&reads);
  return reads && model.camera.value_or(false) && fields.contains(field);
}

bool isTextOf(const FalModel& model, const QString& field) {
  const auto texts = model.texts.value_or(std::vector<TextInput>());
  return std::any_of(texts.begin(), texts.end(), [&](const TextInput& text) { return text.field == field; });
}

bool takes(const FalModel& model, const QString& field, const QString& value) {
  const Setting* setting = model.setting(field);
  if (setting) return setting->isValid(value);
  return isTextOf(model, field) || isCameraAngle(model, field, value);
}

TextByKey keptOptions(const FalModel& model, const GenerationRequest& request) {
  TextByKey kept;
  const TextByKey options = request.options.value_or(TextByKey());
  for (auto option = options.begin(); option != options.end(); ++option) {
    if (takes(model, option.key(), option.value())) kept.insert(option.key(), option.value());
  }
  return kept;
}

std::optional<QString> lengthFor(const FalModel& model, const GenerationRequest& request) {
  const TextByKey chosen = request.lengthByModel.value_or(TextByKey());
  if (chosen.contains(model.id)) return chosen.value(model.id);
  const auto plan = video_length::plan(request, {model}, video_length::Lengths::all);
  if (plan.empty()) return std::nullopt;
  return plan.front().value;
}

bool hasReferences(const GenerationRequest& request) { return !request.referenceIDs.empty(); }

bool editsAPicture(const GenerationRequest& request) {
  if (request.relationship == RelationshipType::editedFrom) return true;
  const auto bindings = request.referenceBindings.value_or(std::vector<ReferenceBinding>());
  return std::any_of(bindings.begin(), bindings.end(),
                     [](const ReferenceBinding& binding) { return binding.role == editSourceRole.toString(); });
}

std::optional<QString> featureOfTool(const QString& model, const GenerationRequest& request) {
  if (contains(cutOutTools(), model)) return u"cut-out"_s;
  const bool upscales = request.relationship == RelationshipType::upscaledFrom;
  if (upscales || contains(upscaleTools(), model)) return u"upscale"_s;
  if (contains(clipMusicModels(), model)) return u"clip-music"_s;
  if (contains(clipEffectModels(), model)) return u"clip-sound"_s;
  if (contains(extendModels(), model)) return u"sound-extend"_s;
  if (QStringView(sound_ids::pullOut) == model) return u"sound-pull-out"_s;
  if (QStringView(sound_ids::splitParts) == model) return u"sound-split"_s;
  if (QStringView(sound_ids::cleanUp) == model) return u"sound-clean"_s;
  return std::nullopt;
}

QString featureOfKind(AudioKind kind) { return kind == AudioKind::effect ? u"sound-effect"_s : audioKindName(kind); }

QString featureOfMedia(const FalCatalog& catalog, const GenerationRequest& request) {
  const auto model = catalog.find(request.model);
  if (model && model->output == MediaType::video) {
    return hasReferences(request) ? u"image-to-video"_s : u"text-to-video"_s;
  }
  if (editsAPicture(request) || (model && model->category == u"image-to-image"_s)) return u"image-to-image"_s;
  return hasReferences(request) ? u"image-with-references"_s : u"text-to-image"_s;
}

}  // namespace

GenerationRequest requestForModel(const FalCatalog& catalog, const GenerationRequest& request,
                                  const ComparisonModel& target) {
  GenerationRequest copy = request;
  copy.provider = target.provider;
  copy.model = target.model.id;
  copy.quality = u"default"_s;
  copy.lengthByModel = std::nullopt;
  const auto model = catalog.find(target.model.id);
  if (!model) return copy;
  TextByKey options = keptOptions(*model, request);
  if (const auto length = lengthFor(*model, request)) options.insert(u"duration"_s, *length);
  copy.options = options.isEmpty() ? std::nullopt : std::optional(options);
  return copy;
}

QString featureOf(const FalCatalog& catalog, const GenerationRequest& request, int comparedModels) {
  // A set of shots carries a comparison of its own, so shots are told first.
  if (request.storyShot) return u"storyboard"_s;
  if (request.shot) return u"shot-set"_s;
  if (request.comparisonID && comparedModels > 1) return u"compare"_s;
  if (const auto tool = featureOfTool(request.model, request)) return *tool;
  if (request.relationship == RelationshipType::variationOf) return u"variation"_s;
  if (const auto kind = audioKindOf(request.model)) return featureOfKind(*kind);
  return featureOfMedia(catalog, request);
}

}  // namespace sorvan::catalogue
