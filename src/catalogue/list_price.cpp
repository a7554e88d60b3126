#include "catalogue/list_price.h"

#include <array>

#include "base/numbers.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

constexpr double pixelsOfMegapixel = 1000000;

enum class Basis { megapixels, seconds, outputs, unknown };

/// Units of which a request does not tell how many it takes.
bool isUncountable(const QString& unit) {
  static const std::array words{u"minute"_s, u"input"_s, u"processed"_s, u"segment"_s, u"token"_s, u"character"_s};
  if (unit.isEmpty() || unit == u"units"_s || unit.front().isDigit()) return true;
  return std::any_of(words.begin(), words.end(), [&](const QString& word) { return unit.contains(word); });
}

Basis basisOf(const QString& unit) {
  static const std::array outputs{u"image"_s, u"video"_s, u"request"_s, u"generation"_s, u"call"_s, u"unit"_s};
  if (isUncountable(unit)) return Basis::unknown;
  if (unit.contains(u"megapixel"_s)) return Basis::megapixels;
  if (unit.contains(u"second"_s)) return Basis::seconds;
  const bool perOutput =
      std::any_of(outputs.begin(), outputs.end(), [&](const QString& word) { return unit.contains(word); });
  return perOutput ? Basis::outputs : Basis::unknown;
}

/// Whether the model makes a picture of exactly the size that is asked for.
bool makesExactSize(const FalModel& model, const QString& size) {
  const auto* named = std::get_if<SizeByName>(&model.sizing);
  return (std::holds_alternative<SizeByDimensions>(model.sizing) && !model.sides) ||
         (named && named->values.contains(size));
}

std::optional<double> megapixels(const QString& size) {
  const QStringList sides = size.split(u'x');
  if (sides.size() != 2) return std::nullopt;
  bool wideReads = false;
  bool highReads = false;
  const double wide = sides[0].toDouble(&wideReads);
  const double high = sides[1].toDouble(&highReads);
  if (!wideReads || !highReads) return std::nullopt;
  return std::max(1.0, roundedUp(wide * high / pixelsOfMegapixel));
}

bool isDigitOrPoint(QChar sign) { return (sign >= u'0' && sign <= u'9') || sign == u'.'; }

std::optional<double> leadingNumber(const QString& text) {
  const auto end = std::find_if_not(text.cbegin(), text.cend(), isDigitOrPoint);
  bool reads = false;
  const double number = text.left(std::distance(text.cbegin(), end)).toDouble(&reads);
  if (!reads) return std::nullopt;
  return number;
}

std::optional<double> seconds(const GenerationRequest& request, const FalModel& model) {
  const TextByKey options = request.options.value_or(TextByKey());
  if (options.contains(u"duration"_s)) return leadingNumber(options.value(u"duration"_s));
  const Setting* length = model.setting(u"duration"_s);
  return length ? leadingNumber(length->defaultValue.value_or(QString())) : std::nullopt;
}

std::optional<double> times(double price, std::optional<double> amount) {
  if (!amount) return std::nullopt;
  return price * *amount;
}

}  // namespace

std::optional<double> listEstimate(const ModelPrice& price, const GenerationRequest& request, const FalModel& model) {
  const double count = std::max(1, request.count);
  switch (basisOf(price.unit.trimmed().toLower())) {
    case Basis::megapixels:
      if (!makesExactSize(model, request.size)) return std::nullopt;
      return times(price.unitPrice * count, megapixels(request.size));
    // The length is of the whole request, so the number of outputs does not come in.
    case Basis::seconds:
      return times(price.unitPrice, seconds(request, model));
    case Basis::outputs:
      return price.unitPrice * count;
    case Basis::unknown:
      break;
  }
  return std::nullopt;
}

}  // namespace sorvan::catalogue
