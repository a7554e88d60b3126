// All that the studio makes of one file, as a line of JSON for people and programs that check it.
#pragma once

#include <QByteArray>
#include <QString>

#include "core/room.h"

namespace sorvan::core {

struct InspectionLine {
  QByteArray json;  ///< one object with its keys in a fixed order, and a line break
  bool failed = false;
};

/// {"file","type","width","height","duration","fileSize","mimeType","seeThrough","checksum"}, where the duration is
/// null when there is none, or {"file","error"}. Blocks; never throws.
InspectionLine inspectionLine(const QString& path);

}  // namespace sorvan::core
