#include "catalogue/video_length.h"

#include <QRegularExpression>

namespace sorvan::catalogue::video_length {

using namespace Qt::StringLiterals;

namespace {

constexpr double usualSeconds = 5;

bool isDigitOrPoint(QChar character) { return (character >= u'0' && character <= u'9') || character == u'.'; }

QString valueInForce(const GenerationRequest& request, const FalModel& model, const Setting& setting,
                     const QStringList& values, Lengths lengths) {
  const QString field = setting.field;
  const QString perModel = request.lengthByModel.value_or(TextByKey()).value(model.id);
  const QString common = request.options.value_or(TextByKey()).value(field);
  for (const QString& candidate : {perModel, common, setting.defaultValue.value_or(QString())}) {
    if (values.contains(candidate)) return candidate;
  }
  if (lengths == Lengths::fixedOnly) return closest(usualSeconds, values).value_or(values.constFirst());
  return values.constFirst();
}

}  // namespace

std::optional<double> leadingNumber(const QString& value) {
  qsizetype end = 0;
  while (end < value.size() && isDigitOrPoint(value[end])) ++end;
  bool reads = false;
  const double number = value.left(end).toDouble(&reads);
  if (!reads) return std::nullopt;
  return number;
}

bool isFixed(const QString& value) { return leadingNumber(value).has_value(); }

QStringList fixed(const QStringList& values) {
  QStringList kept;
  std::copy_if(values.cbegin(), values.cend(), std::back_inserter(kept), isFixed);
  return kept.isEmpty() ? values : kept;
}

std::optional<QString> closest(double seconds, const QStringList& values) {
  std::optional<QString> best;
  double smallest = 0;
  for (const QString& value : values) {
    const auto number = leadingNumber(value);
    if (!number) continue;
    const double distance = std::abs(*number - seconds);
    if (best && distance >= smallest) continue;
    best = value;
    smallest = distance;
  }
  return best;
}

QString label(const QString& value) {
  bool isNumber = false;
  value.toDouble(&isNumber);
  return isNumber ? value + u" s"_s : value;
}

QStringList shared(const std::vector<Choice>& choices) {
  if (choices.empty()) return {};
  QStringList kept;
  for (const QString& value : choices.front().values) {
    const bool everywhere = std::all_of(choices.begin(), choices.end(),
                                        [&](const Choice& choice) { return choice.values.contains(value); });
    if (everywhere) kept << value;
  }
  return kept;
}

std::optional<int> mentioned(const QString& prompt) {
  static const QRegularExpression pattern(
      u"\\b(\\d{1,3})\\s*-?\\s*(seconds?|secs?|s)\\b"_s,
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
  const auto match = pattern.match(prompt);
  if (!match.hasMatch()) return std::nullopt;
  int seconds = 0;
  for (const QChar digit : match.captured(1)) seconds = seconds * 10 + digit.digitValue();
  if (seconds <= 0) return std::nullopt;
  return seconds;
}

std::vector<Choice> plan(const GenerationRequest& request, const std::vector<FalModel>& models, Lengths lengths) {
  std::vector<Choice> choices;
  for (const FalModel& model : models) {
    const Setting* setting = model.setting(u"duration"_s);
    if (model.output != MediaType::video || !setting || setting->values.isEmpty()) continue;
    const QStringList values = lengths == Lengths::fixedOnly ? fixed(setting->values) : setting->values;
    choices.push_back({model.id, model.name, values, valueInForce(request, model, *setting, values, lengths)});
  }
  return choices;
}

}  // namespace sorvan::catalogue::video_length
