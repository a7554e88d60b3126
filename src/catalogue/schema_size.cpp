#include "catalogue/schema_size.h"

#include <cmath>
#include <numeric>

#include "catalogue/texts.h"
#include "core/image_format.h"

namespace sorvan::catalogue {

namespace {

constexpr int largestSide = 1 << 20;
/// How far the shape may be off, from rounding to the steps of the service.
constexpr double shapeTolerance = 0.05;

int wholeWithin(double number) { return static_cast<int>(std::clamp(number, 1.0, double(largestSide))); }

void narrow(SideBounds& sides, const SchemaField& side) {
  if (const auto least = side.lowest()) sides.least = std::max(sides.least, wholeWithin(std::ceil(*least)));
  if (const auto most = side.highest()) sides.most = std::min(sides.most, wholeWithin(std::floor(*most)));
  const auto step = side.step();
  if (step && *step == std::floor(*step) && *step <= largestSide) {
    sides.step = wholeWithin(std::lcm(static_cast<qint64>(sides.step), static_cast<qint64>(*step)));
  }
}

bool fits(int side, const SideBounds& sides) {
  return side >= sides.least && side <= sides.most && side % sides.step == 0;
}

bool fits(QSize size, const SideBounds& sides) { return fits(size.width(), sides) && fits(size.height(), sides); }

/// The multiple of the step nearest to the length, inside the bounds.
int nearestSide(double length, const SideBounds& sides) {
  const int lowest = (sides.least + sides.step - 1) / sides.step;
  const int highest = sides.most / sides.step;
  const int steps = static_cast<int>(std::lround(length / sides.step));
  return (highest < lowest ? 0 : std::clamp(steps, lowest, highest)) * sides.step;
}

}  // namespace

std::optional<SideBounds> sideBoundsOf(const SchemaField& field) {
  SideBounds sides{1, largestSide, 1};
  for (const std::string_view name : {"width", "height"}) {
    if (const auto side = field.side(name)) narrow(sides, *side);
  }
  const auto formats = ImageFormat::all();
  const bool takesAll = std::all_of(formats.begin(), formats.end(), [&](const ImageFormat& format) {
    return fits(QSize(format.width, format.height), sides);
  });
  if (takesAll) return std::nullopt;
  return sides;
}

QSize fittedSize(QSize asked, const SideBounds& sides) {
  if (asked.isEmpty()) throw SorvanError(texts::unsupportedSize());
  if (fits(asked, sides)) return asked;
  const double shorter = std::min(asked.width(), asked.height());
  const double longer = std::max(asked.width(), asked.height());
  const double factor = std::min(std::max(1.0, sides.least / shorter), sides.most / longer);
  const QSize fitted(nearestSide(asked.width() * factor, sides), nearestSide(asked.height() * factor, sides));
  const double shape = double(asked.width()) / asked.height();
  const bool isOff =
      fitted.isEmpty() || std::abs(double(fitted.width()) / fitted.height() / shape - 1) > shapeTolerance;
  if (isOff) throw SorvanError(texts::unsupportedSize());
  return fitted;
}

}  // namespace sorvan::catalogue
