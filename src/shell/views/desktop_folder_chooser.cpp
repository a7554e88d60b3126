#include "shell/views/desktop_folder_chooser.h"

#include <QFileDialog>
#include <QFileInfo>

#include "shell/views/portal_folder_question.h"

namespace sorvan::views {

namespace {
QString pictureFilter() {
  return QStringLiteral("Pictures (*.png *.jpg *.jpeg *.webp *.heic *.avif *.tif *.tiff *.gif *.bmp)");
}

std::function<void(QStringList)> firstOf(std::function<void(std::optional<QString>)> chosen) {
  return [chosen = std::move(chosen)](const QStringList& paths) {
    chosen(paths.isEmpty() ? std::nullopt : std::optional<QString>(paths.front()));
  };
}
}  // namespace

DesktopFolderChooser::~DesktopFolderChooser() { delete asked_; }

void DesktopFolderChooser::chooseFolder(const FolderQuestion& question,
                                        std::function<void(std::optional<QString>)> chosen) {
  ask(question, {}, firstOf(std::move(chosen)));
}

void DesktopFolderChooser::choosePictures(const FolderQuestion& question, std::function<void(QStringList)> chosen) {
  ask(question, {true, {}}, std::move(chosen));
}

void DesktopFolderChooser::chooseFileToWrite(const FolderQuestion& question, const QString& name,
                                             std::function<void(std::optional<QString>)> chosen) {
  ask(question, {false, name}, firstOf(std::move(chosen)));
}

void DesktopFolderChooser::ask(const FolderQuestion& question, const Wanted& wanted,
                               std::function<void(QStringList)> chosen) {
  if (asked_ || dialog_) return chosen({});
  asked_ = new PortalFolderQuestion(bus_, question);
  asked_->setAsksForPictures(wanted.pictures);
  asked_->setAsksForFile(wanted.fileName);
  const auto end = [this] { std::exchange(asked_, nullptr)->deleteLater(); };
  QObject::connect(asked_, &PortalFolderQuestion::answered, window_, [end, chosen](const QStringList& paths) {
    end();
    chosen(paths);
  });
  QObject::connect(asked_, &PortalFolderQuestion::unavailable, window_, [this, end, question, wanted, chosen] {
    end();
    openDialog(question, wanted, chosen);
  });
  asked_->ask(portalNameOf(*window_));
}

void DesktopFolderChooser::openDialog(const FolderQuestion& question, const Wanted& wanted,
                                      std::function<void(QStringList)> chosen) {
  dialog_ = new QFileDialog(window_, question.message.isEmpty() ? question.acceptLabel : question.message,
                            question.startFolder);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  const bool folder = !wanted.pictures && wanted.fileName.isEmpty();
  dialog_->setFileMode(folder ? QFileDialog::Directory : QFileDialog::ExistingFiles);
  dialog_->setOption(QFileDialog::ShowDirsOnly, folder);
  if (wanted.pictures) dialog_->setNameFilter(pictureFilter());
  if (!wanted.fileName.isEmpty()) {
    // It asks by itself before it answers with a file that exists.
    dialog_->setAcceptMode(QFileDialog::AcceptSave);
    dialog_->setFileMode(QFileDialog::AnyFile);
    dialog_->setDefaultSuffix(QFileInfo(wanted.fileName).suffix());
    dialog_->selectFile(wanted.fileName);
  }
  dialog_->setLabelText(QFileDialog::Accept, question.acceptLabel);
  QObject::connect(dialog_, &QFileDialog::finished, window_,
                   [dialog = dialog_, chosen = std::move(chosen)](int result) {
                     const QStringList paths = dialog ? dialog->selectedFiles() : QStringList();
                     chosen(result == QDialog::Accepted ? paths : QStringList());
                   });
  dialog_->open();
}

}  // namespace sorvan::views
