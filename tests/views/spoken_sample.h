// A sound of four seconds in a file, for the widgets that play and draw one.
#pragma once

#include <QString>

namespace sorvan::views {

// The path of a WAV file that is there until the program ends; made at the first call. Main thread.
QString spokenSample();
// The path of a picture of its wave, likewise.
QString spokenWave();

}  // namespace sorvan::views
