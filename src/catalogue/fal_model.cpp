#include "catalogue/fal_model.h"

#include <QRegularExpression>

#include "catalogue/named_ratios.h"
#include "core/image_format.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr double shapeTolerance = 0.04;

int maxReferencesOf(const FalModel& model) {
  if (std::holds_alternative<SingleInput>(model.imageInput)) return 1;
  if (!std::holds_alternative<ListInput>(model.imageInput)) return 0;
  return std::min(mostListInputs, model.maxInputs.value_or(mostListInputs));
}

bool requiresReference(const ImageInput& input) {
  if (const auto* single = std::get_if<SingleInput>(&input)) return single->required;
  const auto* list = std::get_if<ListInput>(&input);
  return list && list->required;
}

bool needsPrompt(const FalModel& model, bool needsReference) {
  if (!model.hasPrompt) return false;
  if (model.promptRequired.value_or(true)) return true;
  return !needsReference;
}

std::optional<QStringList> ratiosOf(const Sizing& sizing) {
  if (const auto* aspect = std::get_if<SizeByAspect>(&sizing)) {
    // Values of which the composer knows none are the service's own: nothing can be chosen, so nothing is refused.
    if (freeChoice(aspect->values) || !canChooseRatio(aspect->values)) return std::nullopt;
    return aspect->values;
  }
  const auto* named = std::get_if<SizeByName>(&sizing);
  if (!named || freeChoice(named->values)) return std::nullopt;
  const QStringList ratios = ratiosOfSizes(named->values);
  if (ratios.isEmpty()) return std::nullopt;
  return ratios;
}

std::optional<double> ratioOf(const QString& text) {
  const QStringList parts = text.split(u':');
  if (parts.size() != 2) return std::nullopt;
  bool wideReads = false;
  bool highReads = false;
  const double wide = parts[0].toDouble(&wideReads);
  const double high = parts[1].toDouble(&highReads);
  if (!wideReads || !highReads || high <= 0) return std::nullopt;
  return wide / high;
}

/// The setting as all of the models have it, or nothing.
std::optional<Setting> narrowed(Setting setting, const std::vector<FalModel>& models) {
  const bool hadValues = !setting.values.isEmpty();
  for (const FalModel& model : models) {
    const Setting* other = model.setting(setting.field);
    if (!other || other->kind != setting.kind) return std::nullopt;
    setting.values.removeIf([&](const QString& value) { return !other->values.contains(value); });
    if (other->defaultValue != setting.defaultValue) setting.defaultValue = std::nullopt;
  }
  if (hadValues && setting.values.isEmpty()) return std::nullopt;
  return setting;
}

}  // namespace

bool Setting::allows(const QString& value) const {
  static const QRegularExpression wholeNumber(u"\\A[+-]?[0-9]+\\z"_s);
  if (!accepts || !wholeNumber.match(value).hasMatch()) return false;
  bool reads = false;
  const qint64 number = value.toLongLong(&reads);
  return reads && accepts->contains(number);
}

bool Setting::isValid(const QString& value) const {
  if (kind == Kind::toggle) return value == u"true"_s || value == u"false"_s;
  return values.contains(value) || allows(value);
}

ModelOption FalModel::option() const {
  ModelOption option;
  option.id = id;
  option.name = name;
  option.maxCount = maxCount;
  option.mediaType = output;
  option.supportsReferences = !std::holds_alternative<NoInput>(imageInput);
  option.maxReferences = maxReferencesOf(*this);
  option.requiresReference = requiresReference(imageInput);
  option.needsPrompt = needsPrompt(*this, option.requiresReference);
  option.supportsEndFrame = endImageField.has_value();
  option.ratios = ratiosOf(sizing);
  return option;
}

bool FalModel::reshapes(int width, int height) const {
  const auto* aspect = std::get_if<SizeByAspect>(&sizing);
  if (output != MediaType::video || width < 1 || height < 1 || !aspect) return false;
  if (freeChoice(aspect->values)) return false;
  const double shape = static_cast<double>(width) / height;
  return std::none_of(aspect->values.cbegin(), aspect->values.cend(), [&](const QString& value) {
    const auto ratio = ratioOf(value);
    return ratio && std::abs(*ratio / shape - 1) < shapeTolerance;
  });
}

const Setting* FalModel::setting(const QString& field) const {
  if (!settings) return nullptr;
  for (const Setting& each : *settings) {
    if (each.field == field) return &each;
  }
  return nullptr;
}

QStringList FalModel::editableSizes() const {
  QStringList sizes;
  for (const ImageFormat& format : ImageFormat::all()) {
    bool usable = std::holds_alternative<SizeByDimensions>(sizing);
    if (const auto* named = std::get_if<SizeByName>(&sizing))
      usable = firstWithRatio(named->values, format.ratio).has_value();
    if (const auto* aspect = std::get_if<SizeByAspect>(&sizing)) {
      usable = freeChoice(aspect->values) || aspect->values.contains(format.ratio);
    }
    if (usable) sizes << QString(format.size);
  }
  return sizes;
}

std::vector<Setting> sharedSettings(const std::vector<FalModel>& models) {
  std::vector<Setting> shared;
  if (models.empty()) return shared;
  const std::vector<FalModel> others(models.begin() + 1, models.end());
  for (const Setting& setting : models.front().allSettings()) {
    if (auto kept = narrowed(setting, others)) shared.push_back(*kept);
  }
  return shared;
}

bool isFreeChoice(const QString& value) { return value == u"auto"_s || value == u"adaptive"_s; }

std::optional<QString> freeChoice(const QStringList& values) {
  const auto found = std::find_if(values.cbegin(), values.cend(), isFreeChoice);
  if (found == values.cend()) return std::nullopt;
  return *found;
}

}  // namespace sorvan::catalogue
