// Every component in every state on its sheets: what a developer looks at, and what the tests of contrast and of states
// read.
#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

namespace sorvan::views {

// In the look that is on now; sized to hold everything. `pictures` is a folder with the sample pictures.
std::unique_ptr<QWidget> buttonsSheet();
std::unique_ptr<QWidget> choicesSheet();
std::unique_ptr<QWidget> looksSheet();
std::unique_ptr<QWidget> fieldsSheet(const QString& pictures);
std::unique_ptr<QWidget> menusSheet();
std::unique_ptr<QWidget> pickersSheet();
std::unique_ptr<QWidget> feedbackSheet();
std::unique_ptr<QWidget> stripSheet();
std::unique_ptr<QWidget> sidebarSheet(const QString& pictures);
std::unique_ptr<QWidget> viewerSheet(const QString& pictures);
std::unique_ptr<QWidget> foundationsSheet();
std::unique_ptr<QWidget> jobTableSheet();
std::unique_ptr<QWidget> referencesSheet(const QString& pictures);

struct ComponentSheet {
  const char* name;  // CamelCase, for the names of tests
  std::function<std::unique_ptr<QWidget>()> make;
  int texts;  // at least so many are painted on it
};
// The name alone: tests are called by it.
inline void PrintTo(const ComponentSheet& sheet, std::ostream* out) { *out << sheet.name; }
// Every sheet there is, those of items too. A new one is added here or to `itemSheets` and nowhere else.
std::vector<ComponentSheet> componentSheets();

}  // namespace sorvan::views
