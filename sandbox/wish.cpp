#include "wish.h"

#include <QJsonArray>
#include <QMap>
#include <cmath>

namespace sandbox {

namespace {

constexpr int maximumSide = 4096;

QString textAt(const QJsonObject& input, const QString& field) { return input.value(field).toString().trimmed(); }

// A number, or a text such as "8s" or "8".
std::optional<double> numberAt(const QJsonObject& input, const QString& field) {
  const QJsonValue value = input.value(field);
  if (value.isDouble()) return value.toDouble();
  QString text = value.toString();
  if (text.endsWith(QLatin1Char('s'))) text.chop(1);
  bool readable = false;
  const double number = text.toDouble(&readable);
  return readable ? std::optional(number) : std::nullopt;
}

std::optional<QSize> sizeNamed(const QString& name) {
  static const QMap<QString, QSize> presets{
      {QStringLiteral("square_uhd"), {2048, 2048}},   {QStringLiteral("square_hd"), {1024, 1024}},
      {QStringLiteral("square"), {512, 512}},         {QStringLiteral("portrait_4_3"), {768, 1024}},
      {QStringLiteral("portrait_16_9"), {576, 1024}}, {QStringLiteral("landscape_4_3"), {1024, 768}},
      {QStringLiteral("landscape_16_9"), {1024, 576}}};
  const auto preset = presets.constFind(name);
  if (preset != presets.constEnd()) return *preset;
  const QStringList sides = name.split(QLatin1Char('x'));
  if (sides.size() != 2 || sides[0].toInt() <= 0 || sides[1].toInt() <= 0) return std::nullopt;
  return QSize(sides[0].toInt(), sides[1].toInt());
}

// Width to height, of texts such as "16:9".
std::optional<double> ratioOf(const QJsonObject& input) {
  for (const QString& field : {QStringLiteral("aspect_ratio"), QStringLiteral("ratio")}) {
    const QStringList sides = textAt(input, field).split(QLatin1Char(':'));
    if (sides.size() == 2 && sides[0].toDouble() > 0 && sides[1].toDouble() > 0)
      return sides[0].toDouble() / sides[1].toDouble();
  }
  return std::nullopt;
}

double ratioOf(QSize size) { return double(size.width()) / size.height(); }

// The side of a square for "1K", "2K", "auto_4K" and so on.
int pictureSideOf(const QJsonObject& input) {
  QString resolution = textAt(input, QStringLiteral("resolution")).toUpper();
  const QString size = textAt(input, QStringLiteral("image_size"));
  if (size.startsWith(QStringLiteral("auto_"))) resolution = size.mid(5).toUpper();
  if (!resolution.endsWith(QLatin1Char('K'))) return 1024;
  const double thousands = resolution.chopped(1).toDouble();
  return thousands > 0 ? qBound(256, int(thousands * 1024), maximumSide) : 1024;
}

QSize sizeOfArea(double ratio, int side) {
  const double area = double(side) * side;
  const int width = int(std::lround(std::sqrt(area * ratio)));
  const int height = int(std::lround(std::sqrt(area / ratio)));
  return QSize(width, height).boundedTo({maximumSide, maximumSide});
}

int shorterClipSideOf(const QJsonObject& input) {
  const QString resolution = textAt(input, QStringLiteral("resolution")).toLower();
  if (resolution == QStringLiteral("4k")) return 2160;
  const int lines = resolution.chopped(resolution.endsWith(QLatin1Char('p')) ? 1 : 0).toInt();
  return lines >= 120 && lines <= 2160 ? lines : 360;
}

int evenOf(double pixels) { return qMax(2, int(std::lround(pixels / 2)) * 2); }

}  // namespace

QString wordsOf(const QJsonObject& input) {
  for (const char16_t* field : {u"prompt", u"text", u"text_prompt", u"sound_effect_prompt", u"description", u"lyrics"})
    if (const QString text = textAt(input, QString::fromUtf16(field)); !text.isEmpty()) return text;
  QStringList lines;
  for (const QJsonValue& line : input.value(QStringLiteral("inputs")).toArray())
    lines.append(textAt(line.toObject(), QStringLiteral("text")));
  return lines.join(QLatin1Char(' '));
}

std::optional<qint64> seedOf(const QJsonObject& input) {
  const QJsonValue seed = input.value(QStringLiteral("seed"));
  return seed.isDouble() ? std::optional(seed.toInteger()) : std::nullopt;
}

int countOf(const QJsonObject& input) { return qBound(1, input.value(QStringLiteral("num_images")).toInt(1), 6); }

QByteArray pictureFormatOf(const QJsonObject& input, const QByteArray& usual) {
  const QByteArray format = textAt(input, QStringLiteral("output_format")).toLower().toLatin1();
  if (format == "jpg") return "jpeg";
  return format == "png" || format == "jpeg" || format == "webp" ? format : usual;
}

QByteArray soundFormatOf(const QJsonObject& input) {
  for (const char16_t* field : {u"output_format", u"audio_format", u"upload_audio_format", u"format"}) {
    const QJsonValue format = input.value(QString::fromUtf16(field));
    const QString name = format.isObject() ? textAt(format.toObject(), QStringLiteral("codec")) : format.toString();
    if (name.startsWith(QStringLiteral("wav")) || name.startsWith(QStringLiteral("pcm"))) return "wav";
    if (!name.isEmpty()) return "mp3";
  }
  return "mp3";
}

QSize pictureSizeOf(const QJsonObject& input, QSize shape) {
  const QJsonValue size = input.value(QStringLiteral("image_size"));
  if (size.isObject()) {
    const QJsonObject sides = size.toObject();
    return QSize(qBound(16, sides.value(QStringLiteral("width")).toInt(512), maximumSide),
                 qBound(16, sides.value(QStringLiteral("height")).toInt(512), maximumSide));
  }
  for (const QString& field : {QStringLiteral("image_size"), QStringLiteral("size")})
    if (const auto named = sizeNamed(textAt(input, field))) return named->boundedTo({maximumSide, maximumSide});
  return sizeOfArea(ratioOf(input).value_or(ratioOf(shape)), pictureSideOf(input));
}

QSize limited(QSize size, int longestSide) {
  const int side = qMax(size.width(), size.height());
  if (longestSide == 0 || side <= longestSide) return size;
  const double share = double(longestSide) / side;
  return {evenOf(size.width() * share), evenOf(size.height() * share)};
}

QSize clipSizeOf(const QJsonObject& input, QSize shape) {
  const double ratio = ratioOf(input).value_or(ratioOf(shape));
  const double shorter = shorterClipSideOf(input);
  return ratio >= 1 ? QSize(evenOf(shorter * ratio), evenOf(shorter)) : QSize(evenOf(shorter), evenOf(shorter / ratio));
}

double secondsOf(const QJsonObject& input, Product product) {
  constexpr double shortest = 0.5;
  constexpr double longest = 190;
  for (const char16_t* field : {u"duration", u"duration_seconds", u"seconds_total", u"seconds"})
    if (const auto seconds = numberAt(input, QString::fromUtf16(field))) return qBound(shortest, *seconds, longest);
  if (const auto milliseconds = numberAt(input, QStringLiteral("music_length_ms")))
    return qBound(shortest, *milliseconds / 1000, longest);
  switch (product) {
    case Product::Speech:
      return qBound(1.0, double(wordsOf(input).size()) / 14.0, longest);
    case Product::Music:
      return 12;
    case Product::Effect:
      return 4;
    default:
      return 5;
  }
}

QList<QUrl> addressesOf(const QJsonObject& input, const QStringList& fields) {
  QList<QUrl> addresses;
  for (const QString& field : fields) {
    const QJsonValue value = input.value(field);
    if (value.isString()) addresses.append(QUrl(value.toString()));
    for (const QJsonValue& each : value.toArray()) addresses.append(QUrl(each.toString()));
    if (!addresses.isEmpty()) break;
  }
  return addresses;
}

namespace {

bool isStartingPicture(const QString& field) {
  const bool isPicture = field.endsWith(QStringLiteral("image_url")) || field.endsWith(QStringLiteral("image_urls")) ||
                         field == QStringLiteral("first_frame_url");
  static const QStringList others{QStringLiteral("end_"), QStringLiteral("tail_"), QStringLiteral("last_"),
                                  QStringLiteral("mask_")};
  return isPicture &&
         std::none_of(others.begin(), others.end(), [&](const QString& start) { return field.startsWith(start); });
}

// "1080p" of a tool that enlarges to a height.
std::optional<double> targetLines(const QJsonObject& input) {
  if (textAt(input, QStringLiteral("upscale_mode")) != QStringLiteral("target")) return std::nullopt;
  const QString target = textAt(input, QStringLiteral("target_resolution"));
  bool reads = false;
  const double lines = target.chopped(target.isEmpty() ? 0 : 1).toDouble(&reads);
  return reads ? std::optional(lines) : std::nullopt;
}

}  // namespace

QList<QUrl> pictureAddressesOf(const QJsonObject& input) {
  const QList<QUrl> usual =
      addressesOf(input, {QStringLiteral("image_urls"), QStringLiteral("image_url"), QStringLiteral("start_image_url"),
                          QStringLiteral("first_frame_url"), QStringLiteral("reference_image_urls")});
  if (!usual.isEmpty()) return usual;
  QStringList fields = input.keys();
  fields.removeIf([](const QString& field) { return !isStartingPicture(field); });
  return addressesOf(input, fields);
}

std::optional<QSize> askedPictureSize(const QJsonObject& input, QSize shape) {
  const QJsonValue size = input.value(QStringLiteral("image_size"));
  const bool isNamed = sizeNamed(size.toString()) || sizeNamed(textAt(input, QStringLiteral("size")));
  const bool isSharp = textAt(input, QStringLiteral("resolution")).endsWith(QLatin1Char('K'), Qt::CaseInsensitive) ||
                       size.toString().startsWith(QStringLiteral("auto_"));
  if (!size.isObject() && !isNamed && !isSharp && !ratioOf(input)) return std::nullopt;
  return pictureSizeOf(input, shape);
}

int soundCountOf(const QJsonObject& input) { return qBound(1, input.value(QStringLiteral("num_samples")).toInt(1), 4); }

double upscaleOf(const QJsonObject& input, QSize size) {
  if (const auto lines = targetLines(input)) return qBound(1.0, *lines / qMin(size.width(), size.height()), 8.0);
  for (const char16_t* field : {u"upscale_factor", u"scale", u"factor"})
    if (const auto factor = numberAt(input, QString::fromUtf16(field))) return qBound(1.0, *factor, 8.0);
  return 2;
}

namespace {

bool makesPictures(Product product) {
  return product == Product::Picture || product == Product::PictureEdit || product == Product::Upscale ||
         product == Product::CutOut;
}

int outputsOf(const QJsonObject& input, Product product) {
  const bool isMany = product == Product::Picture || product == Product::PictureEdit;
  return isMany ? countOf(input) : 1;
}

// 5 of "5 seconds", 1000 of "1000 tokens", 1 million of "1m tokens"; 1 where no number stands first.
double sizeOfUnit(const QString& unit) {
  const QString number = unit.section(QLatin1Char(' '), 0, 0);
  if (number == QStringLiteral("1m")) return 1'000'000;
  bool reads = false;
  const double size = number.toDouble(&reads);
  return reads && size > 0 ? size : 1;
}

double megapixelsOf(const QJsonObject& input) {
  const QSize size = pictureSizeOf(input, {1, 1});
  return qMax(1.0, std::ceil(double(size.width()) * size.height() / 1'000'000));
}

}  // namespace

double unitsOf(const QJsonObject& input, Product product, const QString& unit) {
  const QString name = unit.trimmed().toLower();
  const double size = sizeOfUnit(name);
  const double outputs = outputsOf(input, product);
  if (name.contains(QStringLiteral("megapixel"))) return megapixelsOf(input) * outputs;
  if (name.contains(QStringLiteral("minute"))) return std::ceil(secondsOf(input, product) / 60);
  if (name.contains(QStringLiteral("second")))
    return makesPictures(product) ? 1
           : size > 1             ? std::ceil(secondsOf(input, product) / size)
                                  : secondsOf(input, product);
  if (name.contains(QStringLiteral("character"))) return double(wordsOf(input).size()) / size;
  if (name.contains(QStringLiteral("token"))) return (200 + double(wordsOf(input).size())) / size;
  // A unit of a dollar: only this number tells what the job has cost.
  if (name == QStringLiteral("units")) return 0.04 * outputs;
  return outputs;
}

}  // namespace sandbox
