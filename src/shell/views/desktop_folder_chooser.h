// Asks for a folder, for picture files or for a file to write, with the desktop's own chooser, and with the toolkit's where there is none.
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
  void chooseFileToWrite(const FolderQuestion& question, const QString& name,
                         std::function<void(std::optional<QString>)> chosen) override;

 private:
  // What is asked for; a folder unless it says otherwise.
  struct Wanted {
    bool pictures = false;
    QString fileName = {};  // of a file to write
  };
  void ask(const FolderQuestion& question, const Wanted& wanted, std::function<void(QStringList)> chosen);
  void openDialog(const FolderQuestion& question, const Wanted& wanted, std::function<void(QStringList)> chosen);

  QWidget* window_;
  QDBusConnection bus_;
  QPointer<PortalFolderQuestion> asked_;
  QPointer<QFileDialog> dialog_;
};

}  // namespace sorvan::views
