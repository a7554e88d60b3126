#include "base/instant.h"

#include <cmath>

#include <QTimeZone>

namespace sorvan::base {

// 2001-01-01T00:00:00Z counted from 1970-01-01T00:00:00Z.
static constexpr double originUnixSeconds = 978307200.0;

Instant Instant::fromUnixSeconds(double secondsSince1970) { return {secondsSince1970 - originUnixSeconds}; }

double Instant::unixSeconds() const { return seconds + originUnixSeconds; }

QDateTime Instant::toDateTime() const {
  // Beyond this QDateTime has no year to show; a hostile number must not overflow the conversion.
  constexpr double limit = 1e14;
  const double bounded = std::isfinite(seconds) ? std::clamp(seconds, -limit, limit) : 0;
  const double milliseconds = std::round((bounded + originUnixSeconds) * 1000.0);
  return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(milliseconds), Qt::UTC);
}

Instant Instant::fromDateTime(const QDateTime& dateTime) {
  if (!dateTime.isValid()) return {};
  return fromUnixSeconds(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000.0);
}

QString isoText(Instant moment) {
  const Instant whole{std::floor(moment.seconds)};
  return whole.toDateTime().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
}

std::optional<Instant> instantFromIso(const QString& text) {
  QDateTime dateTime = QDateTime::fromString(text.trimmed(), Qt::ISODateWithMs);
  if (!dateTime.isValid()) return std::nullopt;
  if (dateTime.timeSpec() == Qt::LocalTime) dateTime.setTimeSpec(Qt::UTC);
  return Instant::fromDateTime(dateTime);
}

}  // namespace sorvan::base
