// Projects, as the driver handles them.
#pragma once

#include <QJsonObject>

#include "torture/headless_studio.h"

namespace sorvan::torture {

// Carries out one "project" command. What became of the project, with its "id" and what is promised of it; empty when
// it could not be saved, or when there is none.
QJsonObject changeProject(HeadlessStudio& studio, const QJsonObject& command);

// Every project with its name, whether it is archived, and whether its folder stands on the disk, the oldest first.
QJsonArray projectReports(const core::LibraryStore& store);

}  // namespace sorvan::torture
