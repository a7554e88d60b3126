// Every component in every state on its sheets: what a developer looks at, and what the tests of contrast and of states
// read.
#pragma once

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace sorvan::views {

// In the look that is on now; sized to hold everything. `pictures` is a folder with the sample pictures.
std::unique_ptr<QWidget> controlsSheet();
std::unique_ptr<QWidget> mediaSheet(const QString& pictures);
std::unique_ptr<QWidget> foundationsSheet();
std::unique_ptr<QWidget> playersSheet(const QString& pictures);
std::unique_ptr<QWidget> referencesSheet(const QString& pictures);

struct ComponentSheet {
  const char* name;  // CamelCase, for the names of tests
  std::function<std::unique_ptr<QWidget>()> make;
  int texts;  // at least so many are painted on it
};
// Every sheet there is. A new one is added here and nowhere else.
std::vector<ComponentSheet> componentSheets();

}  // namespace sorvan::views
