// Pictures of files, made off the main thread in the size in which they are shown.
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include "shell/views/room.h"

namespace sorvan::views {

// Where the picture of an item comes from. Either path may be empty.
struct PictureFiles {
  QString thumbnail;
  QString original;
  bool originalIsPicture = true;  // it stands in for a thumbnail that cannot be read
  bool grey = false;              // a fitted picture is shown without colour, as what lies in Trash
};

// Size and time of change of both files, to tell whether reading them again could end otherwise.
struct FileStamps {
  qint64 thumbnail = -1;
  qint64 original = -1;
  bool operator==(const FileStamps&) const = default;
};
FileStamps stampsOf(const PictureFiles& files);

struct DecodedPicture {
  QImage image;  // null when there is none; else in a format that is shown without another pass
  bool originalMissing = false;
  FileStamps stamps;  // of the files, when there is no picture
};

// A picture scaled to that long side, upright; smaller ones keep their size. Any thread, blocks.
DecodedPicture decodeLong(const PictureFiles& files, int longSide);

// The middle of the picture, scaled to fill `size`, its corners rounded by `radius` device pixels. A file that says
// that it holds more than a hundred megapixels, or a JPEG thumbnail that was cut short, is not read. Any thread, blocks.
DecodedPicture decodeFitted(const PictureFiles& files, QSize size, double radius);

}  // namespace sorvan::views
