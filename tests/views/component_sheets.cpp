#include "views/component_sheets.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

std::vector<ComponentSheet> componentSheets() {
  const QString pictures = u":/sorvan/samples"_s;
  return {{"Buttons", buttonsSheet, 60},
          {"Choices", choicesSheet, 60},
          {"Looks", looksSheet, 16},
          {"Fields", [pictures] { return fieldsSheet(pictures); }, 30},
          {"Menus", menusSheet, 40},
          {"Pickers", pickersSheet, 20},
          {"Feedback", feedbackSheet, 30},
          {"Strip", stripSheet, 40},
          {"Sidebar", [pictures] { return sidebarSheet(pictures); }, 30},
          {"MediaCells", [pictures] { return mediaSheet(pictures); }, 40},
          {"Foundations", [] { return foundationsSheet(); }, 60},
          {"Players", [pictures] { return playersSheet(pictures); }, 40},
          {"References", [pictures] { return referencesSheet(pictures); }, 40}};
}

}  // namespace sorvan::views
