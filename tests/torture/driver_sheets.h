// Contact sheets, as the driver handles them.
#pragma once

#include <QJsonObject>

#include "torture/headless_studio.h"

namespace sorvan::torture {

// Carries out one "sheet" command. What became of the sheet, with its "id" and what is promised of it; empty when it
// could not be saved, or when there is no sheet.
QJsonObject changeSheet(HeadlessStudio& studio, const QJsonObject& command);

// Every sheet with its title, its items and whether it is in Trash, the oldest first.
QJsonArray sheetReports(const core::LibraryStore& store);

}  // namespace sorvan::torture
