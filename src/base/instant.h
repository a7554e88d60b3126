// The date type of every record and file.
#pragma once

#include <chrono>
#include <compare>
#include <optional>

#include <QDateTime>
#include <QString>

namespace sorvan::base {

// A moment: seconds since 2001-01-01T00:00:00Z. A plain double, so that what is written is exactly what is read.
struct Instant {
  double seconds = 0;

  friend auto operator<=>(const Instant&, const Instant&) = default;
  friend Instant operator+(Instant moment, double secondsLater) { return {moment.seconds + secondsLater}; }
  friend Instant operator-(Instant moment, double secondsEarlier) { return {moment.seconds - secondsEarlier}; }
  // The seconds from the second moment to the first.
  friend double operator-(Instant later, Instant earlier) { return later.seconds - earlier.seconds; }

  // UTC, to the millisecond.
  QDateTime toDateTime() const;
  // An invalid date gives the origin.
  static Instant fromDateTime(const QDateTime& dateTime);
  static Instant fromUnixSeconds(double secondsSince1970);
  double unixSeconds() const;
};

// "2026-02-03T04:05:06Z", whole seconds, rounded down.
QString isoText(Instant moment);
// Reads ISO-8601 with or without a fraction; a text without an offset is UTC. Empty when it is no date.
std::optional<Instant> instantFromIso(const QString& text);

}  // namespace sorvan::base
