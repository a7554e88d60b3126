// What the driver tells of the library when it has done what it was told.
#pragma once

#include <QJsonObject>

#include "torture/headless_studio.h"

namespace sorvan::torture {

// {"jobs":[…], "items":[…], "charges":n, "error":text or null, "unsaved":bool}
QJsonObject reportOf(const HeadlessStudio& studio);

}  // namespace sorvan::torture
