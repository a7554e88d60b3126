// The answer that a scripted fault puts in the place of the plain one.
#pragma once
#include "faults.h"

namespace sandbox {

HttpAnswer disguise(const Fault& fault, HttpAnswer plain);

}  // namespace sandbox
