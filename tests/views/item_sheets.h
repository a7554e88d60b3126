// The sheets of what shows items and jobs: cells, players, cards, pages and their parts, each in every state.
#pragma once

#include <QWidget>

#include <memory>
#include <ostream>
#include <vector>

namespace sorvan::views {

// In the look that is on now; `pictures` is a folder with the sample pictures.
using SheetMaker = std::unique_ptr<QWidget> (*)(const QString& pictures);

std::unique_ptr<QWidget> cellsSheet(const QString& pictures);
std::unique_ptr<QWidget> wallSheet(const QString& pictures);
std::unique_ptr<QWidget> jobCellsSheet(const QString& pictures);
std::unique_ptr<QWidget> historySheet(const QString& pictures);
std::unique_ptr<QWidget> endedHistorySheet(const QString& pictures);
std::unique_ptr<QWidget> transportSheet(const QString& pictures);
std::unique_ptr<QWidget> lookingSheet(const QString& pictures);
std::unique_ptr<QWidget> cardsSheet(const QString& pictures);
std::unique_ptr<QWidget> sheetCardsSheet(const QString& pictures);
std::unique_ptr<QWidget> referenceStatesSheet(const QString& pictures);
std::unique_ptr<QWidget> placesSheet(const QString& pictures);
std::unique_ptr<QWidget> workPlacesSheet(const QString& pictures);
std::unique_ptr<QWidget> lineageSheet(const QString& pictures);
std::unique_ptr<QWidget> costPartsSheet(const QString& pictures);
std::unique_ptr<QWidget> inspectorSheet(const QString& pictures);
std::unique_ptr<QWidget> modelRowsSheet(const QString& pictures);
std::unique_ptr<QWidget> accountSheet(const QString& pictures);

struct ItemSheet {
  const char* name;  // CamelCase, for the names of tests
  SheetMaker make;
};
// The name alone: tests are called by it.
inline void PrintTo(const ItemSheet& sheet, std::ostream* out) { *out << sheet.name; }
// All of them, in this order.
const std::vector<ItemSheet>& itemSheets();

}  // namespace sorvan::views
