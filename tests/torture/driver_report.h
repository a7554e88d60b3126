// What the driver tells of the library when it has done what it was told.
#pragma once

#include <QJsonObject>

#include "torture/headless_studio.h"

namespace sorvan::torture {

// {"jobs":[…], "items":[…], "prompts":[text], "reviews":[item's id], "draft":text, "charges":n, "sheets":n, "savedReferences":n,
// "error":text or null, "unsaved":bool}
QJsonObject reportOf(const HeadlessStudio& studio);

// What an opening found, before anything else was done: {"retained":[{"prompt":text, "priced":bool, "noted":bool}],
// "spendingReads":bool}. A retained result is one that was paid for and has not landed.
QJsonObject reportOfOpening(const HeadlessStudio& studio);

}  // namespace sorvan::torture
