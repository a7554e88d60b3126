#include "shell/composer_controls.h"

#include "catalogue/audio_models.h"
#include "catalogue/video_length.h"
#include "core/image_format.h"
#include "shell/texts.h"
#include "shell/wording.h"

#include <algorithm>
#include <array>

namespace sorvan::shell {

namespace {

const QString millisecondsField = QStringLiteral("music_length_ms");

using Models = std::vector<SelectableModel>;

bool isSound(const Models& chosen) { return !chosen.empty() && makesSound(chosen.front()); }

QString placeholderOf(const Models& chosen) {
  if (!isSound(chosen)) return texts::imagePlaceholder;
  switch (audioKindOf(chosen.front().record.id).value_or(AudioKind::effect)) {
    case AudioKind::voice:
      return texts::voicePlaceholder;
    case AudioKind::music:
      return texts::musicPlaceholder;
    case AudioKind::effect:
      break;
  }
  return texts::effectPlaceholder;
}

QString modelLabelOf(const Models& chosen) {
  if (chosen.empty()) return texts::selectModel;
  return chosen.size() == 1 ? chosen.front().record.name : texts::modelCount(static_cast<qsizetype>(chosen.size()));
}

bool takesRatio(const SelectableModel& model, const QString& ratio) {
  const auto& ratios = model.comparison.model.ratios;
  return !ratios || ratios->contains(ratio);
}

bool allTakeRatio(const Models& chosen, const QString& ratio) {
  return std::all_of(chosen.begin(), chosen.end(), [&](const auto& model) { return takesRatio(model, ratio); });
}

void fillRatio(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  display.ratioShown = !chosen.empty() && !isSound(chosen);
  display.ratioFixed = std::all_of(chosen.begin(), chosen.end(), [](const auto& model) {
    return std::holds_alternative<NoSizing>(model.record.sizing);
  });
  const QString& size = state.request().size;
  for (const core::ImageFormat& format : core::ImageFormat::all())
    display.ratios.push_back({format.size, format.ratio, format.name, format.width, format.height,
                              allTakeRatio(chosen, format.ratio), format.size == size});
  const core::ImageFormat* format = core::ImageFormat::find(size);
  display.ratioLabel = display.ratioFixed ? texts::setByModel : format ? QString(format->ratio) : QString();
  display.ratioTooltip = display.ratioFixed ? texts::shapeFixedTooltip
                         : format           ? texts::ratioTooltip(format->name)
                                            : QString();
}

void fillCount(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  display.count = state.request().count;
  display.countMaximum = chosen.empty() ? 4 : chosen.front().comparison.model.maxCount;
  bool clips = !chosen.empty();
  for (const SelectableModel& model : chosen) {
    display.countMaximum = std::min(display.countMaximum, model.comparison.model.maxCount);
    clips = clips && model.record.output == core::MediaType::video;
  }
  display.countShown = !chosen.empty() && !isSound(chosen);
  display.countLabel = clips ? texts::clipCount(display.count) : texts::imageCount(display.count);
  display.countSuffix = chosen.size() > 1 ? texts::perModel : QString();
  display.countTooltip = texts::countTooltip(texts::imageCount(display.count), chosen.size() > 1);
}

void fillSoundLength(ComposerDisplay& display, const ComposerState& state, const FalModel& model) {
  const Setting* setting = lengthSetting(model);
  if (!setting || setting->values.isEmpty()) return;
  const TextByKey options = state.request().options.value_or(TextByKey());
  const QString current = options.value(setting->field, setting->defaultValue.value_or(QString()));
  display.lengthShown = true;
  display.lengthLabel = lengthLabel(setting->field, current);
  display.lengthTitle = texts::soundLength;
  display.lengthTooltip = texts::soundLengthTooltip;
  for (const QString& value : setting->values)
    display.lengths.push_back({value, lengthLabel(setting->field, value), value == current});
}

std::vector<FalModel> recordsOf(const Models& chosen) {
  std::vector<FalModel> records;
  for (const SelectableModel& model : chosen) records.push_back(model.record);
  return records;
}

void fillVideoLength(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  const auto all = chosen.size() > 1 ? video_length::Lengths::fixedOnly : video_length::Lengths::all;
  const auto plan = video_length::plan(state.request(), recordsOf(chosen), all);
  const QStringList offered = video_length::shared(plan);
  if (plan.empty() || offered.isEmpty()) return;
  const bool alike =
      std::all_of(plan.begin(), plan.end(), [&](const auto& c) { return c.value == plan.front().value; });
  display.lengthShown = true;
  display.lengthLabel = alike ? video_length::label(plan.front().value) : texts::differentLengths;
  display.lengthTitle = texts::videoLength;
  display.lengthFoot = texts::lengthFoot;
  display.lengthTooltip = chosen.size() > 1 ? texts::lengthsTooltip : texts::lengthTooltip;
  for (const QString& value : offered)
    display.lengths.push_back({value, video_length::label(value), alike && value == plan.front().value});
  if (plan.size() < 2) return;
  QStringList items;
  for (const auto& choice : plan) items << choice.name + QLatin1Char(' ') + video_length::label(choice.value);
  display.notices.push_back(alike ? texts::everyModelLength(display.lengthLabel)
                                  : texts::differingLengths(items.join(QStringLiteral(" · "))));
}

void fillRatioNotice(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  const core::ImageFormat* format = core::ImageFormat::find(state.request().size);
  if (format && !isSound(chosen) && !allTakeRatio(chosen, format->ratio))
    display.notices.push_back(texts::ratioNotice(format->name, format->ratio));
}

void fillReferenceNotice(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  const bool taken = std::all_of(chosen.begin(), chosen.end(),
                                 [](const auto& model) { return model.comparison.model.supportsReferences; });
  if (!state.request().referenceIDs.empty() && !taken) display.notices.push_back(texts::referencesUnusable);
}

}  // namespace

bool composesSound(const ComposerState& state) { return isSound(state.chosenModels()); }

bool makesSound(const SelectableModel& model) { return model.record.output == core::MediaType::audio; }

const Setting* lengthSetting(const FalModel& model) {
  static const std::array fields{QStringLiteral("duration"), QStringLiteral("duration_seconds"),
                                 QStringLiteral("seconds_total"), millisecondsField};
  for (const QString& field : fields)
    if (const Setting* setting = model.setting(field)) return setting;
  return nullptr;
}

QString lengthLabel(const QString& field, const QString& value) {
  bool isNumber = false;
  const double milliseconds = value.toDouble(&isNumber);
  if (field == millisecondsField && isNumber) return video_length::label(QString::number(milliseconds / 1000));
  return video_length::label(value);
}

ComposerDisplay makeComposerControls(const ComposerState& state) {
  const Models chosen = state.chosenModels();
  ComposerDisplay display;
  display.placeholder = placeholderOf(chosen);
  display.modelLabel = modelLabelOf(chosen);
  display.audio = isSound(chosen);
  fillRatio(display, state, chosen);
  fillCount(display, state, chosen);
  if (isSound(chosen)) {
    fillSoundLength(display, state, chosen.front().record);
  } else {
    fillVideoLength(display, state, chosen);
  }
  fillRatioNotice(display, state, chosen);
  fillReferenceNotice(display, state, chosen);
  display.seedShown = std::any_of(chosen.begin(), chosen.end(), [](const auto& model) { return model.record.hasSeed; });
  display.seedText = state.seedText();
  display.seedTooltip = texts::seedTooltip;
  display.seedDetail = texts::seedDetail;
  display.submitTitle = chosen.size() > 1 ? texts::generateAndCompare : texts::generate;
  return display;
}

}  // namespace sorvan::shell
