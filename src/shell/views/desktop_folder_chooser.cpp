#include "shell/views/desktop_folder_chooser.h"

#include <QFileDialog>

namespace sorvan::views {

void DesktopFolderChooser::chooseFolder(const FolderQuestion& question,
                                        std::function<void(std::optional<QString>)> chosen) {
  if (dialog_) return chosen(std::nullopt);
  dialog_ = new QFileDialog(window_, question.message.isEmpty() ? question.acceptLabel : question.message,
                            question.startFolder);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  dialog_->setFileMode(QFileDialog::Directory);
  dialog_->setOption(QFileDialog::ShowDirsOnly);
  dialog_->setLabelText(QFileDialog::Accept, question.acceptLabel);
  QObject::connect(dialog_, &QFileDialog::finished, window_,
                   [dialog = dialog_, chosen = std::move(chosen)](int result) {
                     const QStringList folders = dialog ? dialog->selectedFiles() : QStringList();
                     const bool accepted = result == QDialog::Accepted && !folders.isEmpty();
                     chosen(accepted ? std::optional<QString>(folders.front()) : std::nullopt);
                   });
  dialog_->open();
}

}  // namespace sorvan::views
