// What is neither picture nor clip nor sound.
#pragma once
#include "maker.h"

namespace sandbox {

// A glTF file of one empty scene.
Made makeSolid(const WorkOrder& order);
// An answer in words.
Made sayWords(const WorkOrder& order);

}  // namespace sandbox
