// The window in both its looks: the desktop says that a person now prefers light, and the program follows.
#pragma once

#include "tour/tourist.h"

namespace tour {

// Keeps a picture of the screen in the dark and, with “-light” after its name, in the light, and leaves the program dark.
// Fails the test when the program does not follow the desktop. Answers how many colours the dark one has on a coarse grid.
int pictureInBothLooks(Tourist& person, const QString& name);

}  // namespace tour
