#include "shell/composer_controls.h"

#include "catalogue/audio_models.h"
#include "catalogue/video_length.h"
#include "composer/composer_rules.h"
#include "composer/notice_texts.h"
#include "composer/notices.h"
#include "composer/shape_control.h"
#include "core/image_format.h"
#include "shell/composer_texts.h"
#include "shell/texts.h"
#include "shell/wording.h"

#include <algorithm>
#include <array>

namespace sorvan::shell {

namespace {

const QString millisecondsField = QStringLiteral("music_length_ms");

using Models = std::vector<SelectableModel>;

bool isSound(const Models& chosen) { return !chosen.empty() && makesSound(chosen.front()); }

QString placeholderOf(const ComposerState& state, const Models& chosen) {
  if (state.mode() == ComposerMode::command) return texts::commandPlaceholder;
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

void fillRatio(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  const ShapeControl control = shapeControl(state.request(), chosen);
  const QString& size = state.request().size;
  const bool isPicked = !followsImage(state.request(), chosen) || state.request().shapeChosen.value_or(false);
  display.ratioShown = !chosen.empty() && !isSound(chosen);
  display.ratioFixed = control.isFixed;
  display.ratioLabel = control.text;
  display.ratioTooltip = control.tooltip;
  for (const core::ImageFormat& format : core::ImageFormat::all())
    display.ratios.push_back({format.size, format.ratio, format.name, format.width, format.height,
                              control.sizes.contains(format.size), isPicked && format.size == size});
  display.ratioRefused = display.ratioShown && !control.isFixed && isPicked && !control.sizes.contains(size);
}

void fillCount(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  display.count = state.request().count;
  display.countMaximum = mostOutputs(chosen);
  bool clips = !chosen.empty();
  for (const SelectableModel& model : chosen)
    clips = clips && model.record.output == core::MediaType::video;
  display.countShown = !chosen.empty() && !isSound(chosen);
  display.countLabel = clips ? texts::clipCount(display.count) : texts::imageCount(display.count);
  display.countSuffix = chosen.size() > 1 ? texts::perModel : QString();
  display.countTooltip = composer::texts::countTooltip(display.count, chosen.size() > 1);
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

void fillChoices(std::vector<LengthChoice>& choices, const QStringList& values, const QString& current) {
  for (const QString& value : values) choices.push_back({value, video_length::label(value), value == current});
}

void describeVideoLength(ComposerDisplay& display, bool several) {
  display.lengthShown = true;
  display.lengthTitle = composer::texts::videoLength();
  display.lengthFoot = composer::texts::lengthFoot();
  display.lengthTooltip = composer::texts::lengthTooltip(several);
}

void fillVideoLength(ComposerDisplay& display, const ComposerState& state, const SelectableModel& model) {
  const auto plan = video_length::plan(state.request(), {model.record}, video_length::Lengths::all);
  if (plan.empty()) return;
  describeVideoLength(display, false);
  display.lengthLabel = settingText(plan.front().value, *model.record.setting(QStringLiteral("duration")));
  fillChoices(display.lengths, plan.front().values, plan.front().value);
}

// One row for all of them where they have lengths in common, and one for each.
void fillVideoLengths(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  const LengthPanel panel = lengthPanel(state.request(), chosen);
  if (panel.rows.empty()) return;
  describeVideoLength(display, true);
  QStringList lengths;
  for (const video_length::Choice& row : panel.rows) {
    LengthRow shown{row.id, row.name, {}};
    fillChoices(shown.lengths, row.values, row.value);
    display.lengthRows.push_back(std::move(shown));
    lengths << video_length::label(row.value);
  }
  lengths.removeDuplicates();
  const bool alike = lengths.size() == 1;
  display.lengthLabel = alike ? lengths.front() : texts::lengthWord;
  if (!alike) display.lengthValue = lengths.join(QStringLiteral(", "));
  display.sharedLength = panel.sharedValue;
  if (panel.shared.isEmpty() && panel.rows.size() > 1) display.lengthNote = composer::texts::noLengthInCommon();
  if (panel.rows.size() > 1) fillChoices(display.lengths, panel.shared, alike ? panel.rows.front().value : QString());
}

const QString durationField = QStringLiteral("duration");

// A setting that counts only beside another one, or that has nothing to choose from, is left to the model.
bool isOffered(const Setting& setting) {
  if (setting.field == durationField || setting.onlyWith) return false;
  return setting.kind == Setting::Kind::toggle || setting.values.size() > 1;
}

SettingChoices choicesOf(const Setting& setting, const QString& chosen) {
  SettingChoices choices{setting.field, setting.label, {}};
  const QString current = chosen.isEmpty() ? setting.defaultValue.value_or(QString()) : chosen;
  const auto add = [&](const QString& value, const QString& label) {
    choices.values.push_back({value, label, value == current});
  };
  if (!setting.defaultValue) add({}, settingText({}, setting));
  if (setting.kind == Setting::Kind::toggle) {
    add(QStringLiteral("true"), texts::settingOn);
    add(QStringLiteral("false"), texts::settingOff);
  }
  for (const QString& value : setting.values) add(value, settingText(value, setting));
  return choices;
}

void fillSettings(ComposerDisplay& display, const ComposerState& state, const Models& chosen) {
  if (isSound(chosen)) return;
  std::vector<FalModel> records;
  for (const SelectableModel& model : chosen) records.push_back(model.record);
  const TextByKey options = state.request().options.value_or(TextByKey());
  for (const Setting& setting : sharedSettings(records))
    if (isOffered(setting)) display.settings.push_back(choicesOf(setting, options.value(setting.field)));
  display.settingsOffered = !chosen.empty();
  display.settingsShown = display.settingsOffered && state.isAdvanced();
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
  display.placeholder = placeholderOf(state, chosen);
  display.modelLabel = modelLabel(chosen);
  display.audio = isSound(chosen);
  fillRatio(display, state, chosen);
  fillCount(display, state, chosen);
  if (isSound(chosen)) {
    fillSoundLength(display, state, chosen.front().record);
  } else {
    chosen.size() == 1 ? fillVideoLength(display, state, chosen.front()) : fillVideoLengths(display, state, chosen);
  }
  fillSettings(display, state, chosen);
  display.seedShown = std::any_of(chosen.begin(), chosen.end(), [](const auto& model) { return model.record.hasSeed; });
  display.seedText = state.seedText();
  display.seedTooltip = composer::texts::seedTooltip();
  display.seedDetail = composer::texts::seedDetail();
  return display;
}

}  // namespace sorvan::shell
