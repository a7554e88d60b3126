// What assistive technology sees of the marks: a list with an entry for each box.
#pragma once

#include "shell/views/room.h"

namespace sorvan::views {

class MarkLayer;

// Called at the end of the layer's constructor.
void describeMarkLayer(MarkLayer& layer);

}  // namespace sorvan::views
