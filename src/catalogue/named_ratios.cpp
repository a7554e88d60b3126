#include "catalogue/named_ratios.h"

#include <QRegularExpression>

#include <numeric>

#include "catalogue/fal_model.h"
#include "core/image_format.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> composerRatio(const QString& ratio) {
  if (!ImageFormat::withRatio(ratio)) return std::nullopt;
  return ratio;
}

QString reduced(int wide, int high) {
  const int common = std::gcd(wide, high);
  return u"%1:%2"_s.arg(wide / common).arg(high / common);
}

std::optional<QString> ratioOfPixels(const QString& size) {
  static const QRegularExpression pixels(u"\\A([0-9]{1,6})\\s*[x*×:]\\s*([0-9]{1,6})\\z"_s);
  const auto match = pixels.match(size);
  const int wide = match.captured(1).toInt();
  const int high = match.captured(2).toInt();
  if (!match.hasMatch() || wide < 1 || high < 1) return std::nullopt;
  return composerRatio(reduced(wide, high));
}

std::optional<QString> ratioOfWords(const QString& size) {
  if (size == u"square"_s || size.startsWith(u"square_"_s)) return u"1:1"_s;
  static const QRegularExpression words(u"\\A(portrait|landscape)_([0-9]{1,3})_([0-9]{1,3})\\z"_s);
  const auto match = words.match(size);
  if (!match.hasMatch()) return std::nullopt;
  const auto [shorter, longer] = std::minmax({match.captured(2).toInt(), match.captured(3).toInt()});
  if (shorter < 1) return std::nullopt;
  const bool upright = match.captured(1) == u"portrait"_s;
  return composerRatio(upright ? reduced(shorter, longer) : reduced(longer, shorter));
}

}  // namespace

std::optional<QString> ratioOfSize(const QString& size) {
  if (const auto* format = ImageFormat::find(size)) return QString(format->ratio);
  if (const auto ratio = ratioOfPixels(size)) return ratio;
  return ratioOfWords(size);
}

std::optional<QString> firstWithRatio(const QStringList& sizes, const QString& ratio) {
  const auto found =
      std::find_if(sizes.cbegin(), sizes.cend(), [&](const QString& size) { return ratioOfSize(size) == ratio; });
  if (found == sizes.cend()) return std::nullopt;
  return *found;
}

QStringList ratiosOfSizes(const QStringList& sizes) {
  QStringList ratios;
  for (const QString& size : sizes) {
    if (const auto ratio = ratioOfSize(size)) ratios << *ratio;
  }
  ratios.removeDuplicates();
  return ratios;
}

bool canChooseRatio(const QStringList& values) {
  return std::any_of(values.cbegin(), values.cend(), [](const QString& value) {
    return isFreeChoice(value) || ImageFormat::withRatio(value) != nullptr;
  });
}

}  // namespace sorvan::catalogue
