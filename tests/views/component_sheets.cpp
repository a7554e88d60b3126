#include "views/component_sheets.h"

#include "views/item_sheets.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

std::vector<ComponentSheet> componentSheets() {
  const QString pictures = u":/sorvan/samples"_s;
  std::vector<ComponentSheet> all{{"Buttons", buttonsSheet, 60},
                                  {"Choices", choicesSheet, 60},
                                  {"Looks", looksSheet, 16},
                                  {"Fields", [pictures] { return fieldsSheet(pictures); }, 30},
                                  {"Menus", menusSheet, 40},
                                  {"Pickers", pickersSheet, 20},
                                  {"Feedback", feedbackSheet, 30},
                                  {"Strip", stripSheet, 40},
                                  {"Sidebar", [pictures] { return sidebarSheet(pictures); }, 30},
                                  {"Viewer", [pictures] { return viewerSheet(pictures); }, 9},
                                  {"Foundations", foundationsSheet, 60},
                                  {"JobTable", jobTableSheet, 25},
                                  {"References", [pictures] { return referencesSheet(pictures); }, 30}};
  for (const ItemSheet& sheet : itemSheets())
    all.push_back({sheet.name, [sheet, pictures] { return sheet.make(pictures); }, 14});
  return all;
}

}  // namespace sorvan::views
