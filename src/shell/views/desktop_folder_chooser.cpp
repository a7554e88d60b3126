#include "shell/views/desktop_folder_chooser.h"

#include <QFileDialog>

#include "shell/views/portal_folder_question.h"

namespace sorvan::views {

DesktopFolderChooser::~DesktopFolderChooser() { delete asked_; }

void DesktopFolderChooser::chooseFolder(const FolderQuestion& question,
                                        std::function<void(std::optional<QString>)> chosen) {
  if (asked_ || dialog_) return chosen(std::nullopt);
  asked_ = new PortalFolderQuestion(bus_, question);
  const auto end = [this] { std::exchange(asked_, nullptr)->deleteLater(); };
  QObject::connect(asked_, &PortalFolderQuestion::answered, window_,
                   [end, chosen](const std::optional<QString>& folder) {
                     end();
                     chosen(folder);
                   });
  QObject::connect(asked_, &PortalFolderQuestion::unavailable, window_, [this, end, question, chosen] {
    end();
    openDialog(question, chosen);
  });
  asked_->ask(portalNameOf(*window_));
}

void DesktopFolderChooser::openDialog(const FolderQuestion& question,
                                      std::function<void(std::optional<QString>)> chosen) {
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
