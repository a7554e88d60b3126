// The words of the wall's menus, of the bar over a selection and of the edges of the panels.
#pragma once

#include <QString>

#include "shell/views/room.h"

namespace sorvan::views::texts {

inline QString ratingMenu() { return QStringLiteral("Rating"); }
inline QString statusMenu() { return QStringLiteral("Status"); }
inline QString moveToProjectMenu() { return QStringLiteral("Move to Project"); }
inline QString orderMenu() { return QStringLiteral("Order"); }
inline QString moreFilters() { return QStringLiteral("More Filters"); }
inline QString wallMenu() { return QStringLiteral("Gallery"); }
inline QString cancelGenerations(qsizetype count) {
  return count == 1 ? QStringLiteral("Cancel Generation") : QStringLiteral("Cancel %1 Generations").arg(count);
}
inline QString removeFromGallery() { return QStringLiteral("Remove from Gallery"); }

inline QString sidebarWidth() { return QStringLiteral("Sidebar Width"); }
inline QString inspectorWidth() { return QStringLiteral("Inspector Width"); }
inline QString panelEdgeKeys() {
  return QStringLiteral("The left and right arrows move the edge, Enter puts it back.");
}

inline QString selectionZone() { return QStringLiteral("Selection"); }
inline QString selectedCount(qsizetype count) { return QStringLiteral("%1 selected").arg(count); }
inline QString selected() { return QStringLiteral("selected"); }
inline QString clearSelection() { return QStringLiteral("Clear Selection"); }

}  // namespace sorvan::views::texts
