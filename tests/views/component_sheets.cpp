#include "views/component_sheets.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

std::vector<ComponentSheet> componentSheets() {
  const QString pictures = u":/sorvan/samples"_s;
  return {{"Controls", [] { return controlsSheet(); }, 60},
          {"MediaCells", [pictures] { return mediaSheet(pictures); }, 40},
          {"Foundations", [] { return foundationsSheet(); }, 60},
          {"Players", [pictures] { return playersSheet(pictures); }, 40},
          {"References", [pictures] { return referencesSheet(pictures); }, 40}};
}

}  // namespace sorvan::views
