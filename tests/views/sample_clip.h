// A clip of four seconds with sound in a file, for the widgets that play one.
#pragma once

#include <QString>

namespace sorvan::views {

// The path of an MP4 file that is there until the program ends; made at the first call. Main thread.
QString sampleClip();

}  // namespace sorvan::views
