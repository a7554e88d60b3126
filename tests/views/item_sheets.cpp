#include "views/item_sheets.h"

namespace sorvan::views {

const std::vector<ItemSheet>& itemSheets() {
  static const std::vector<ItemSheet> all{{"Cells", cellsSheet},
                                          {"Wall", wallSheet},
                                          {"JobCells", jobCellsSheet},
                                          {"History", historySheet},
                                          {"EndedHistory", endedHistorySheet},
                                          {"Transport", transportSheet},
                                          {"Looking", lookingSheet},
                                          {"Cards", cardsSheet},
                                          {"SheetCards", sheetCardsSheet},
                                          {"ReferenceParts", referenceStatesSheet},
                                          {"Places", placesSheet},
                                          {"WorkPlaces", workPlacesSheet},
                                          {"Lineage", lineageSheet},
                                          {"CostParts", costPartsSheet},
                                          {"Inspector", inspectorSheet},
                                          {"ModelRows", modelRowsSheet},
                                          {"Account", accountSheet}};
  return all;
}

}  // namespace sorvan::views
