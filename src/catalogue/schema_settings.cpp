#include "catalogue/schema_settings.h"

#include <array>

#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostSteps = 100;

struct Named {
  const char16_t* field;
  QString (*label)();
};

constexpr std::array choices{Named{u"duration", texts::durationLabel}, Named{u"resolution", texts::resolutionLabel},
                             Named{u"quality", texts::qualityLabel}};
constexpr std::array scales{Named{u"upscale_factor", texts::upscaleLabel}, Named{u"scale", texts::upscaleLabel}};
constexpr std::array toggles{Named{u"generate_audio", texts::soundLabel}, Named{u"audio", texts::soundLabel},
                             Named{u"draft", texts::draftLabel}};

template <std::size_t count>
bool names(const std::array<Named, count>& table, const QString& field) {
  return std::any_of(table.begin(), table.end(), [&](const Named& each) { return QStringView(each.field) == field; });
}

Setting settingNamed(const SchemaField& field, const QString& label, Setting::Kind kind) {
  Setting setting;
  setting.field = field.name();
  setting.label = label;
  setting.kind = kind;
  return setting;
}

/// Two values or more are a choice.
std::optional<Setting> choiceOf(const SchemaField& field, const QString& label) {
  const auto plain = field.texts();
  const std::vector<ListedValue> values = field.textsAndNumbers();
  if (values.size() < 2) return std::nullopt;
  Setting setting = settingNamed(field, label, Setting::Kind::choice);
  QStringList numbers;
  for (const ListedValue& value : values) {
    setting.values << value.text;
    if (value.isNumber) numbers << value.text;
  }
  if (!plain && !numbers.isEmpty()) setting.numbers = numbers;
  return setting;
}

/// The multiples that lie in the range, when the service takes only some of its whole numbers.
std::optional<Setting> stepsOf(const SchemaField& field, const QString& label, const ClosedRange<qint64>& range) {
  Setting setting = settingNamed(field, label, Setting::Kind::choice);
  if (range.upper - range.lower > mostSteps * mostSteps) return std::nullopt;
  for (qint64 value = range.lower; value <= range.upper; ++value) {
    if (field.isMultiple(static_cast<double>(value))) setting.values << QString::number(value);
  }
  if (setting.values.size() < 2 || setting.values.size() > mostSteps) return std::nullopt;
  setting.numbers = setting.values;
  return setting;
}

std::optional<Setting> rangeOf(const SchemaField& field, const QString& label) {
  const auto range = field.wholeRange();
  if (!range) return std::nullopt;
  if (!field.isMultiple(1)) return stepsOf(field, label, *range);
  Setting setting = settingNamed(field, label, Setting::Kind::number);
  setting.values = {QString::number(range->lower), QString::number(range->upper)};
  setting.accepts = range;
  return setting;
}

std::optional<Setting> choiceOrRange(const SchemaInput& input, const Named& named) {
  const SchemaField* field = input.field(QString::fromUtf16(named.field));
  if (!field) return std::nullopt;
  auto setting = choiceOf(*field, named.label());
  if (!setting) setting = rangeOf(*field, named.label());
  if (setting) setting->defaultValue = field->defaultText();
  return setting;
}

bool fitsScale(const SchemaField& field, int factor) {
  const auto lower = field.lowest();
  const auto upper = field.highest();
  return lower && upper && *lower <= factor && factor <= *upper && field.takes(json::value(factor));
}

std::optional<Setting> scaleOf(const SchemaInput& input, const Named& named) {
  const SchemaField* field = input.field(QString::fromUtf16(named.field));
  if (!field || !field->accepts(ValueType::number)) return std::nullopt;
  Setting setting = settingNamed(*field, named.label(), Setting::Kind::choice);
  for (const int factor : {2, 3, 4}) {
    if (fitsScale(*field, factor)) setting.values << QString::number(factor);
  }
  if (setting.values.isEmpty()) return std::nullopt;
  setting.numbers = setting.values;
  const auto usual = field->defaultText();
  if (usual && setting.values.contains(*usual)) setting.defaultValue = usual;
  return setting;
}

std::optional<Setting> toggleOf(const SchemaInput& input, const Named& named) {
  const SchemaField* field = input.field(QString::fromUtf16(named.field));
  if (!field || !field->declares(ValueType::boolean)) return std::nullopt;
  // One that takes a single state is nothing to switch.
  if (!field->takes(json::value(true)) || !field->takes(json::value(false))) return std::nullopt;
  Setting setting = settingNamed(*field, named.label(), Setting::Kind::toggle);
  const auto usual = field->defaultText();
  if (usual == u"true"_s || usual == u"false"_s) setting.defaultValue = usual;
  return setting;
}

void addTo(std::vector<Setting>& settings, std::optional<Setting> setting) {
  if (setting) settings.push_back(std::move(*setting));
}

}  // namespace

std::vector<Setting> settingsFrom(const SchemaInput& input) {
  std::vector<Setting> settings;
  for (const Named& named : choices) addTo(settings, choiceOrRange(input, named));
  for (const Named& named : scales) {
    auto scale = scaleOf(input, named);
    if (!scale) continue;
    settings.push_back(std::move(*scale));
    break;
  }
  for (const Named& named : toggles) addTo(settings, toggleOf(input, named));
  return settings;
}

bool isKnownSetting(const SchemaField& field) {
  if (names(choices, field.name())) return true;
  if (names(scales, field.name())) return field.accepts(ValueType::number);
  return names(toggles, field.name()) && field.declares(ValueType::boolean);
}

}  // namespace sorvan::catalogue
