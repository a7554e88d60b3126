// Asks for a folder, or for picture files, with the desktop's own chooser, and with the toolkit's where there is none.
#pragma once

#include <QDBusConnection>
#include <QPointer>

#include "shell/folder_chooser.h"
#include "shell/views/room.h"

class QFileDialog;
class QWidget;

namespace sorvan::views {

class PortalFolderQuestion;

// One question at a time: a second one while the first is open is answered with nothing.
class DesktopFolderChooser final : public FolderChooser {
 public:
  // `window` outlives the chooser.
  explicit DesktopFolderChooser(QWidget* window) : DesktopFolderChooser(window, QDBusConnection::sessionBus()) {}
  DesktopFolderChooser(QWidget* window, QDBusConnection bus) : window_(window), bus_(std::move(bus)) {}
  ~DesktopFolderChooser() override;

  void chooseFolder(const FolderQuestion& question, std::function<void(std::optional<QString>)> chosen) override;
  void choosePictures(const FolderQuestion& question, std::function<void(QStringList)> chosen) override;

 private:
  void ask(const FolderQuestion& question, bool pictures, std::function<void(QStringList)> chosen);
  void openDialog(const FolderQuestion& question, bool pictures, std::function<void(QStringList)> chosen);

  QWidget* window_;
  QDBusConnection bus_;
  QPointer<PortalFolderQuestion> asked_;
  QPointer<QFileDialog> dialog_;
};

}  // namespace sorvan::views
