// Every component in every state on its sheets: what a developer looks at, and what the contrast test reads.
#pragma once

#include <QWidget>

#include <memory>

namespace sorvan::views {

// In the look that is on now; sized to hold everything. `pictures` is a folder with the sample pictures.
std::unique_ptr<QWidget> controlsSheet();
std::unique_ptr<QWidget> mediaSheet(const QString& pictures);
std::unique_ptr<QWidget> foundationsSheet();
std::unique_ptr<QWidget> playersSheet(const QString& pictures);
std::unique_ptr<QWidget> referencesSheet(const QString& pictures);

}  // namespace sorvan::views
