#include "shell/wording.h"

#include "shell/texts.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace sorvan::shell {

namespace {

QString twoDigits(qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); }

}  // namespace

QString clockText(double seconds) {
  const qint64 whole = std::max<qint64>(0, static_cast<qint64>(std::floor(seconds)));
  const qint64 hours = whole / 3600;
  const qint64 minutes = whole / 60 % 60;
  const QString tail = twoDigits(whole % 60);
  if (hours > 0) return QStringLiteral("%1:%2:%3").arg(QString::number(hours), twoDigits(minutes), tail);
  return QStringLiteral("%1:%2").arg(QString::number(minutes), tail);
}

QString dayText(Instant moment, Instant now) {
  const QDateTime local = moment.toDateTime().toLocalTime();
  const qint64 days = local.date().daysTo(now.toDateTime().toLocalTime().date());
  if (days == 0) return local.toString(QStringLiteral("HH:mm"));
  if (days == 1) return texts::yesterday;
  return QLocale().toString(local.date(), QLocale::ShortFormat);
}

QString dayTitle(Instant moment, Instant now) {
  const QDate day = moment.toDateTime().toLocalTime().date();
  const qint64 days = day.daysTo(now.toDateTime().toLocalTime().date());
  if (days == 0) return texts::today;
  return days == 1 ? texts::yesterday : QLocale().toString(day, QLocale::LongFormat);
}

QString dayAndTimeText(Instant moment, Instant now) {
  const QDateTime local = moment.toDateTime().toLocalTime();
  const qint64 days = local.date().daysTo(now.toDateTime().toLocalTime().date());
  const QString day = days == 0   ? texts::today
                      : days == 1 ? texts::yesterday
                                  : QLocale().toString(local.date(), QLocale::ShortFormat);
  return QStringLiteral("%1 %2").arg(day, local.toString(QStringLiteral("HH:mm")));
}

QString fileSizeText(qint64 bytes) {
  return QLocale().formattedDataSize(bytes, bytes < 1'000'000 ? 0 : 1, QLocale::DataSizeSIFormat);
}

QString statusText(AssetStatus status) {
  switch (status) {
    case AssetStatus::draft:
      return texts::statusDraft;
    case AssetStatus::shortlist:
      return texts::statusShortlist;
    case AssetStatus::approved:
      return texts::statusApproved;
    case AssetStatus::final:
      return texts::statusFinal;
    case AssetStatus::rejected:
      return texts::statusRejected;
  }
  return {};
}

QString kindText(MediaType type) {
  switch (type) {
    case MediaType::image:
      return texts::kindImage;
    case MediaType::video:
      return texts::kindVideo;
    case MediaType::audio:
      return texts::kindAudio;
  }
  return {};
}

QString countText(qsizetype count) { return QLocale(QLocale::English).toString(static_cast<qlonglong>(count)); }

}  // namespace sorvan::shell
