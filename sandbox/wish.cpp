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
      {QStringLiteral("square_hd"), {1024, 1024}},    {QStringLiteral("square"), {512, 512}},
      {QStringLiteral("portrait_4_3"), {768, 1024}},  {QStringLiteral("portrait_16_9"), {576, 1024}},
      {QStringLiteral("landscape_4_3"), {1024, 768}}, {QStringLiteral("landscape_16_9"), {1024, 576}}};
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

// The longer side for "1K", "2K" and so on.
int pictureSideOf(const QJsonObject& input) {
  const QString resolution = textAt(input, QStringLiteral("resolution")).toUpper();
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
  const QJsonValue format = input.value(QStringLiteral("output_format"));
  const QString name = format.isObject() ? textAt(format.toObject(), QStringLiteral("codec")) : format.toString();
  return name.startsWith(QStringLiteral("wav")) || name.startsWith(QStringLiteral("pcm")) ? "wav" : "mp3";
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

double unitsOf(const QJsonObject& input, Product product) {
  switch (product) {
    case Product::Picture:
    case Product::PictureEdit:
      return countOf(input);
    case Product::Upscale:
    case Product::CutOut:
      return 1;
    default:
      return secondsOf(input, product);
  }
}

}  // namespace sandbox
