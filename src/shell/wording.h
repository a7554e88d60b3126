#pragma once

#include "base/instant.h"
#include "core/enumerations.h"
#include "shell/room.h"

#include <QString>

namespace sorvan::shell {

// How values look as text. Pure functions; times are told in the local time zone.

// “0:08”, “1:02:03”. Fractions are cut off; negative counts as zero.
QString clockText(double seconds);
// “10:14” on the same day as `now`, “Yesterday” the day before, else the short date.
QString dayText(Instant moment, Instant now);
// “Today”, “Yesterday”, else the date in full: over what belongs to a day.
QString dayTitle(Instant moment, Instant now);
// “Today 09:41”, “Yesterday 09:41”, else short date and time.
QString dayAndTimeText(Instant moment, Instant now);
// “2.4 MB”
QString fileSizeText(qint64 bytes);
// “Draft”, “Shortlist”, “Approved”, “Final”, “Rejected”.
QString statusText(AssetStatus status);
// “Image”, “Video”, “Audio”.
QString kindText(MediaType type);
// “2,418”
QString countText(qsizetype count);

}  // namespace sorvan::shell
