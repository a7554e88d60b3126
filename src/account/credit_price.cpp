#include "account/credit_price.h"

#include <charconv>
#include <cmath>

#include <QJsonDocument>

#include "account/account_texts.h"
#include "base/json.h"
#include "base/numbers.h"
#include "base/text.h"
#include "catalogue/credits_media.h"
#include "catalogue/video_length.h"
#include "core/image_format.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

namespace {

/// More than any price or account comes to; what is above is no price.
constexpr double mostCredits = 1e9;
constexpr double megapixel = 1.0 / (1 << 20);

// ---- The wire

struct ListedOptions {
  QString field;
  std::map<QString, double> rates;
};
BOOST_DESCRIBE_STRUCT(ListedOptions, (), (field, rates))

struct ListedExtra {
  QString field;
  double rate = 0;
  std::optional<bool> on_by_default;
};
BOOST_DESCRIBE_STRUCT(ListedExtra, (), (field, rate, on_by_default))

struct ListedRate {
  double rate = 0;
};
BOOST_DESCRIBE_STRUCT(ListedRate, (), (rate))

struct Listed {
  double credits = 0;
  std::optional<QString> per;
  std::optional<double> rate;
  std::optional<ListedOptions> options;
  std::optional<bool> up_to;
  std::optional<double> large;
  std::optional<QString> large_when;
  std::optional<std::vector<ListedExtra>> extras;
  std::optional<ListedRate> per_image;
};
BOOST_DESCRIBE_STRUCT(Listed, (), (credits, per, rate, options, up_to, large, large_when, extras, per_image))

bool isAmount(double credits) { return std::isfinite(credits) && credits >= 0 && credits <= mostCredits; }

bool isPrice(const Listed& listed) {
  if (!isAmount(listed.credits) || !isAmount(listed.rate.value_or(0)) || !isAmount(listed.large.value_or(0)))
    return false;
  if (listed.per_image && !isAmount(listed.per_image->rate)) return false;
  if (listed.options)
    for (const auto& [value, rate] : listed.options->rates)
      if (!isAmount(rate)) return false;
  if (listed.extras)
    for (const ListedExtra& extra : *listed.extras)
      if (!isAmount(extra.rate)) return false;
  return true;
}

CreditPrice priceOf(const Listed& listed) {
  CreditPrice price;
  price.credits = static_cast<std::int64_t>(roundedUp(listed.credits));
  price.per = listed.per.value_or(u"image"_s);
  price.rate = listed.rate.value_or(listed.credits);
  if (listed.options) {
    price.field = listed.options->field;
    for (const auto& [value, rate] : listed.options->rates) price.rates[value.toLower()] = rate;
  }
  price.upTo = listed.up_to.value_or(false);
  price.largeFactor = listed.large;
  price.largeWhen = listed.large_when;
  if (listed.extras)
    for (const ListedExtra& extra : *listed.extras)
      price.extras.push_back({extra.field, extra.rate, extra.on_by_default.value_or(false)});
  if (listed.per_image) price.perImage = listed.per_image->rate;
  return price;
}

// ---- Amounts

std::int64_t wholeCredits(double credits) {
  return roundedInteger(std::max(1.0, roundedUp(std::min(credits, 1e15))));
}

int countOf(const GenerationRequest& request) { return std::max(1, request.count); }

QString optionOf(const GenerationRequest& request, const FalModel& model, const QString& field) {
  const TextByKey options = request.options.value_or(TextByKey());
  if (options.contains(field)) return options.value(field);
  const Setting* setting = model.setting(field);
  return setting ? setting->defaultValue.value_or(QString()) : QString();
}

/// The number that all of a text is.
std::optional<double> numberOf(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  double number = 0;
  const auto read = std::from_chars(bytes.constData(), bytes.constData() + bytes.size(), number);
  const bool isAll = read.ec == std::errc() && read.ptr == bytes.constData() + bytes.size();
  return isAll && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

double roundedUpTo(double value, int step) {
  return roundedUp(value / static_cast<double>(step)) * static_cast<double>(step);
}

struct Sides {
  double width = 0;
  double height = 0;
};
std::optional<Sides> sidesOf(const QString& size) {
  const QStringList parts = size.split(u'x');
  if (parts.size() != 2) return std::nullopt;
  const auto width = numberOf(parts[0]);
  const auto height = numberOf(parts[1]);
  return width && height ? std::optional(Sides{*width, *height}) : std::nullopt;
}

double inputPictures(const CreditPrice& price, const GenerationRequest& request) {
  return price.perImage.value_or(0) * static_cast<double>(request.referenceIDs.size());
}

// ---- One rule for each unit

std::optional<std::int64_t> byCharacter(const CreditPrice& price, const GenerationRequest& request,
                                        const FalModel& model) {
  double units = static_cast<double>(chars(request.prompt));
  const int step = model.billedEvery.value_or(0);
  if (step >= 1) units = roundedUpTo(units, step);
  return units > 0 ? std::optional(wholeCredits(units * price.rate)) : std::nullopt;
}

std::optional<std::int64_t> byByte(const CreditPrice& price, const GenerationRequest& request) {
  const double units = static_cast<double>(request.prompt.toUtf8().size());
  return units > 0 ? std::optional(wholeCredits(units * price.rate)) : std::nullopt;
}

std::optional<double> secondsOfSound(const GenerationRequest& request, const FalModel& model) {
  for (const QString& field : {u"duration"_s, u"duration_seconds"_s, u"seconds_total"_s}) {
    const auto seconds = numberOf(optionOf(request, model, field));
    if (seconds && *seconds > 0) return seconds;
  }
  const auto milliseconds = numberOf(optionOf(request, model, u"music_length_ms"_s));
  if (milliseconds && *milliseconds > 0) return *milliseconds / 1000;
  return std::nullopt;
}

double samplesOf(const FalModel& model) {
  const QJsonObject defaults = QJsonDocument::fromJson(model.defaultsJSON.value_or(QString()).toUtf8()).object();
  const QJsonValue samples = defaults.value(u"num_samples"_s);
  const double number = samples.toDouble(1);
  return samples.isDouble() && number == std::floor(number) ? std::max(1.0, number) : 1.0;
}

std::optional<std::int64_t> bySecondOfSound(const CreditPrice& price, const GenerationRequest& request,
                                            const FalModel& model) {
  auto seconds = secondsOfSound(request, model);
  if (!seconds) return std::nullopt;
  constexpr int minute = 60;
  if (model.billedPerMinute.value_or(false)) seconds = roundedUpTo(*seconds, minute);
  if (model.billedEvery.value_or(0) >= 1) seconds = roundedUpTo(*seconds, *model.billedEvery);
  return wholeCredits(samplesOf(model) * *seconds * price.rate);
}

std::optional<std::int64_t> bySecondOfClip(const CreditPrice& price, const GenerationRequest& request,
                                           const FalModel& model) {
  const auto seconds = video_length::leadingNumber(pricedLength(request, model));
  if (!seconds || *seconds <= 0) return std::nullopt;
  const double rate = rateFor(price, request, model) + adjustmentFor(price, request, model);
  return wholeCredits(inputPictures(price, request) + *seconds * rate);
}

std::int64_t byMegapixel(const CreditPrice& price, const GenerationRequest& request) {
  const auto sides = sidesOf(request.size);
  const double size = sides ? std::max(1.0, roundedUp(sides->width * sides->height * megapixel)) : 1.0;
  return wholeCredits(size * price.rate + inputPictures(price, request)) * countOf(request);
}

std::int64_t byOutput(const CreditPrice& price, const GenerationRequest& request, const FalModel& model) {
  if (!price.field && price.extras.empty()) return std::max<std::int64_t>(price.credits, 1) * countOf(request);
  double credits = rateFor(price, request, model);
  if (isLarge(price, request.size)) credits *= *price.largeFactor;
  credits += adjustmentFor(price, request, model) + inputPictures(price, request);
  return wholeCredits(credits) * countOf(request);
}

}  // namespace

std::optional<CreditPrice> priceFrom(const QJsonValue& value) {
  try {
    const auto listed = fromJson<Listed>(value);
    return isPrice(listed) ? std::optional(priceOf(listed)) : std::nullopt;
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

std::optional<std::int64_t> estimatedCredits(const CreditPrice& price, const GenerationRequest& request,
                                             const FalModel& model) {
  if (price.per == u"character"_s) return byCharacter(price, request, model);
  if (price.per == u"byte"_s) return byByte(price, request);
  if (price.per == u"second"_s) {
    const bool isSound = model.output == MediaType::audio;
    return isSound ? bySecondOfSound(price, request, model) : bySecondOfClip(price, request, model);
  }
  return price.per == u"megapixel"_s ? byMegapixel(price, request) : byOutput(price, request, model);
}

double rateFor(const CreditPrice& price, const GenerationRequest& request, const FalModel& model) {
  if (!price.field) return price.rate;
  const auto found = price.rates.find(optionOf(request, model, *price.field).toLower());
  return found == price.rates.end() ? price.rate : found->second;
}

double adjustmentFor(const CreditPrice& price, const GenerationRequest& request, const FalModel& model) {
  double sum = 0;
  for (const PriceExtra& extra : price.extras) {
    QString text = optionOf(request, model, extra.field);
    if (text.isEmpty()) text = extra.onByDefault ? u"true"_s : u"false"_s;
    const bool isOn = text.toLower() == u"true"_s;
    if (isOn != extra.onByDefault) sum += isOn ? extra.rate : -extra.rate;
  }
  return sum;
}

bool isLarge(const CreditPrice& price, const QString& size) {
  constexpr double largeMegapixels = 1.1;
  if (!price.largeFactor) return false;
  const bool bySquare = price.largeWhen == u"not_square"_s;
  const auto sides = sidesOf(size);
  if (!sides) return bySquare;
  return bySquare ? sides->width != sides->height : sides->width * sides->height * megapixel > largeMegapixels;
}

QString priceLabel(const CreditPrice& price) {
  std::int64_t lowest = price.credits;
  if (!price.rates.empty()) {
    double least = price.rates.begin()->second;
    for (const auto& [value, rate] : price.rates) least = std::min(least, rate);
    lowest = wholeCredits(least);
  }
  const std::int64_t amount = std::min(price.credits, lowest);
  QString text = texts::creditCount(amount);
  if (price.upTo) {
    text = texts::upTo(text);
  } else if (price.field && lowest < price.credits) {
    text = texts::from(text);
  }
  return price.per == u"second"_s ? texts::perSecond(text) : text;
}

}  // namespace sorvan::account
