// Asks for a folder with the desktop's dialog.
#pragma once

#include <QPointer>

#include "shell/folder_chooser.h"
#include "shell/views/room.h"

class QFileDialog;
class QWidget;

namespace sorvan::views {

// One question at a time: a second one while the dialog is open is answered with nothing.
class DesktopFolderChooser final : public FolderChooser {
 public:
  // `window` outlives the chooser.
  explicit DesktopFolderChooser(QWidget* window) : window_(window) {}

  void chooseFolder(const FolderQuestion& question, std::function<void(std::optional<QString>)> chosen) override;

 private:
  QWidget* window_;
  QPointer<QFileDialog> dialog_;
};

}  // namespace sorvan::views
