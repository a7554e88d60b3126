#include "gateway_prices.h"

#include <cmath>

#include <QJsonArray>
#include <QJsonDocument>

#include "catalogue.h"
#include "endpoints.h"
#include "result_shape.h"
#include "wish.h"

namespace sandbox {

namespace {

constexpr double creditsPerDollar = 100;
constexpr qint64 credit = 1'000'000;

QJsonObject rates(std::initializer_list<std::pair<QString, QJsonValue>> each) { return QJsonObject(each); }

// Rows that a rule could not make: rates by an option, extras, large outputs, ceilings, input pictures, bytes.
std::optional<QJsonObject> specialPrice(const QString& model) {
  const auto is = [&](const char* id) { return model == QLatin1StringView(id); };
  if (is("fal-ai/nano-banana-2"))
    return QJsonObject{{QStringLiteral("credits"), 8},
                       {QStringLiteral("options"),
                        QJsonObject{{QStringLiteral("field"), QStringLiteral("resolution")},
                                    {QStringLiteral("rates"), rates({{QStringLiteral("0.5k"), 6},
                                                                     {QStringLiteral("1k"), 8},
                                                                     {QStringLiteral("2k"), 12},
                                                                     {QStringLiteral("4k"), 16}})}}}};
  if (is("fal-ai/nano-banana-2/edit"))
    return QJsonObject{{QStringLiteral("credits"), 8},
                       {QStringLiteral("extras"), QJsonArray()},
                       {QStringLiteral("options"), QJsonObject{{QStringLiteral("field"), QStringLiteral("resolution")},
                                                               {QStringLiteral("rates"), QJsonObject()}}},
                       {QStringLiteral("per_image"), QJsonObject{{QStringLiteral("rate"), 0.5}}}};
  if (model.startsWith(QStringLiteral("openai/gpt-image")))
    return QJsonObject{{QStringLiteral("credits"), 20},
                       {QStringLiteral("up_to"), true},
                       {QStringLiteral("large"), 1.5},
                       {QStringLiteral("large_when"), QStringLiteral("not_square")},
                       {QStringLiteral("options"),
                        QJsonObject{{QStringLiteral("field"), QStringLiteral("quality")},
                                    {QStringLiteral("rates"), rates({{QStringLiteral("low"), 2},
                                                                     {QStringLiteral("medium"), 6},
                                                                     {QStringLiteral("high"), 20}})}}}};
  if (model.startsWith(QStringLiteral("bytedance/seedance-2.5")))
    return QJsonObject{
        {QStringLiteral("credits"), 9},
        {QStringLiteral("per"), QStringLiteral("second")},
        {QStringLiteral("options"),
         QJsonObject{{QStringLiteral("field"), QStringLiteral("resolution")},
                     {QStringLiteral("rates"), rates({{QStringLiteral("480p"), 5},
                                                      {QStringLiteral("720p"), 9},
                                                      {QStringLiteral("1080p"), 20}})}}},
        {QStringLiteral("extras"), QJsonArray{QJsonObject{{QStringLiteral("field"), QStringLiteral("generate_audio")},
                                                          {QStringLiteral("rate"), 2},
                                                          {QStringLiteral("on_by_default"), true}}}}};
  if (is("fal-ai/dia-tts"))
    return QJsonObject{{QStringLiteral("credits"), 1},
                       {QStringLiteral("per"), QStringLiteral("byte")},
                       {QStringLiteral("rate"), 0.004}};
  return std::nullopt;
}

QString perOf(const QString& unit) {
  if (unit.contains(QStringLiteral("megapixel"))) return QStringLiteral("megapixel");
  if (unit.contains(QStringLiteral("second"))) return QStringLiteral("second");
  if (unit.contains(QStringLiteral("character"))) return QStringLiteral("character");
  return QStringLiteral("image");
}

QString textOf(const QJsonValue& value) {
  if (value.isBool()) return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
  return value.isDouble() ? QString::number(value.toDouble()) : value.toString();
}

double rateOf(const QJsonObject& row, const QJsonObject& input) {
  const double plain = row.value(QStringLiteral("rate")).toDouble(row.value(QStringLiteral("credits")).toDouble());
  const QJsonObject options = row.value(QStringLiteral("options")).toObject();
  const QString chosen = textOf(input.value(options.value(QStringLiteral("field")).toString())).toLower();
  return options.value(QStringLiteral("rates")).toObject().value(chosen).toDouble(plain);
}

double extrasOf(const QJsonObject& row, const QJsonObject& input) {
  double sum = 0;
  for (const QJsonValue& each : row.value(QStringLiteral("extras")).toArray()) {
    const bool usual = each[QStringLiteral("on_by_default")].toBool();
    const QJsonValue given = input.value(each[QStringLiteral("field")].toString());
    const bool on = given.isUndefined() ? usual : textOf(given).toLower() == QStringLiteral("true");
    if (on != usual) sum += on ? each[QStringLiteral("rate")].toDouble() : -each[QStringLiteral("rate")].toDouble();
  }
  return sum;
}

bool isLarge(const QJsonObject& row, QSize size) {
  if (!row.contains(QStringLiteral("large"))) return false;
  if (row.value(QStringLiteral("large_when")).toString() == QStringLiteral("not_square"))
    return size.width() != size.height();
  return double(size.width()) * size.height() / (1 << 20) > 1.1;
}

struct Asked {
  QJsonObject row;
  QJsonObject input;
  Product product;
};

double creditsFor(const Asked& asked) {
  const QString per = asked.row.value(QStringLiteral("per")).toString(QStringLiteral("image"));
  const double rate = rateOf(asked.row, asked.input);
  const double pictures = asked.row.value(QStringLiteral("per_image")).toObject().value(QStringLiteral("rate")).toDouble() *
                          double(pictureAddressesOf(asked.input).size());
  const QSize size = pictureSizeOf(asked.input, QSize(1024, 1024));
  if (per == QStringLiteral("character")) return double(wordsOf(asked.input).size()) * rate;
  if (per == QStringLiteral("byte")) return double(wordsOf(asked.input).toUtf8().size()) * rate;
  if (per == QStringLiteral("second"))
    return pictures + secondsOf(asked.input, asked.product) * (rate + extrasOf(asked.row, asked.input));
  if (per == QStringLiteral("megapixel"))
    return std::max(1.0, std::ceil(double(size.width()) * size.height() / (1 << 20) - 1e-9)) * rate + pictures;
  double credits = rate;
  if (isLarge(asked.row, size)) credits *= asked.row.value(QStringLiteral("large")).toDouble();
  return credits + extrasOf(asked.row, asked.input) + pictures;
}

bool countsOutputs(const QJsonObject& row) {
  const QString per = row.value(QStringLiteral("per")).toString(QStringLiteral("image"));
  return per == QStringLiteral("image") || per == QStringLiteral("megapixel");
}

}  // namespace

std::optional<QJsonObject> listedPrice(const QString& model) {
  const Entry* entry = entryOf(model);
  const bool isSold = entry && entry->standing == Standing::Usual && priceOf(model);
  if (!isSold) return std::nullopt;
  if (const auto special = specialPrice(model)) return special;
  const Price price = *priceOf(model);
  const QString per = perOf(price.unit);
  const double credits = price.amount * creditsPerDollar / (per == QStringLiteral("character") ? 1000 : 1);
  QJsonObject row{{QStringLiteral("credits"), credits}};
  if (per != QStringLiteral("image")) row.insert(QStringLiteral("per"), per);
  return row;
}

qint64 reserveFor(const QString& model, const QJsonObject& input) {
  const auto row = listedPrice(model);
  const auto product = productOf(model);
  if (!row || !product) return 0;
  const json::object* document = publishedDocument(model);
  const Asked asked{*row, document ? withDefaults(*document, input) : input, *product};
  const auto one = qint64(std::max(1.0, std::ceil(creditsFor(asked) - 1e-9)));
  return one * (countsOutputs(*row) ? countOf(asked.input) : 1) * credit;
}

qint64 chargeFor(const QString& model, qint64 reserved) {
  const auto row = listedPrice(model);
  const bool isCeiling = row && row->value(QStringLiteral("up_to")).toBool();
  return isCeiling ? std::max<qint64>(credit, reserved * 6 / 10) : reserved;
}

}  // namespace sandbox
