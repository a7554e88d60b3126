// Clips: painted, set in motion from a picture, changed, enlarged.
#pragma once
#include "maker.h"

namespace sandbox {

// A clip of the asked length at 24 pictures a second. With input pictures it moves over them, from the first
// to the last (and ends in the end picture, where one is given), else it is a painted scene. It sounds unless
// "generate_audio" or "audio" is false.
Made makeClip(const WorkOrder& order, const MediaShelf& shelf);
// The input clip in other colours, of the same length and with its sound.
Made editClip(const WorkOrder& order, const MediaShelf& shelf);
// The input clip, larger by "upscale_factor" (2 where none is given), with its sound.
Made upscaleClip(const WorkOrder& order, const MediaShelf& shelf);

}  // namespace sandbox
