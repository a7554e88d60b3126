#include "shell/views/desktop_folder_chooser.h"

#include <QFileDialog>

#include "shell/views/portal_folder_question.h"

namespace sorvan::views {

namespace {
QString pictureFilter() {
  return QStringLiteral("Pictures (*.png *.jpg *.jpeg *.webp *.heic *.avif *.tif *.tiff *.gif *.bmp)");
}
}  // namespace

DesktopFolderChooser::~DesktopFolderChooser() { delete asked_; }

void DesktopFolderChooser::chooseFolder(const FolderQuestion& question,
                                        std::function<void(std::optional<QString>)> chosen) {
  ask(question, false, [chosen = std::move(chosen)](const QStringList& folders) {
    chosen(folders.isEmpty() ? std::nullopt : std::optional<QString>(folders.front()));
  });
}

void DesktopFolderChooser::choosePictures(const FolderQuestion& question, std::function<void(QStringList)> chosen) {
  ask(question, true, std::move(chosen));
}

void DesktopFolderChooser::ask(const FolderQuestion& question, bool pictures,
                               std::function<void(QStringList)> chosen) {
  if (asked_ || dialog_) return chosen({});
  asked_ = new PortalFolderQuestion(bus_, question);
  asked_->setAsksForPictures(pictures);
  const auto end = [this] { std::exchange(asked_, nullptr)->deleteLater(); };
  QObject::connect(asked_, &PortalFolderQuestion::answered, window_, [end, chosen](const QStringList& paths) {
    end();
    chosen(paths);
  });
  QObject::connect(asked_, &PortalFolderQuestion::unavailable, window_, [this, end, question, pictures, chosen] {
    end();
    openDialog(question, pictures, chosen);
  });
  asked_->ask(portalNameOf(*window_));
}

void DesktopFolderChooser::openDialog(const FolderQuestion& question, bool pictures,
                                      std::function<void(QStringList)> chosen) {
  dialog_ = new QFileDialog(window_, question.message.isEmpty() ? question.acceptLabel : question.message,
                            question.startFolder);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  dialog_->setFileMode(pictures ? QFileDialog::ExistingFiles : QFileDialog::Directory);
  dialog_->setOption(QFileDialog::ShowDirsOnly, !pictures);
  if (pictures) dialog_->setNameFilter(pictureFilter());
  dialog_->setLabelText(QFileDialog::Accept, question.acceptLabel);
  QObject::connect(dialog_, &QFileDialog::finished, window_,
                   [dialog = dialog_, chosen = std::move(chosen)](int result) {
                     const QStringList paths = dialog ? dialog->selectedFiles() : QStringList();
                     chosen(result == QDialog::Accepted ? paths : QStringList());
                   });
  dialog_->open();
}

}  // namespace sorvan::views
