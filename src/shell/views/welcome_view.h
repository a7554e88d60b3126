// The first page: where the library shall live.
#pragma once

#include <QWidget>

#include "shell/views/room.h"
#include "shell/welcome_presenter.h"

namespace sorvan::views {

class Button;

class WelcomeView final : public QWidget {
  Q_OBJECT

 public:
  explicit WelcomeView(const WelcomeDisplay& display, QWidget* parent = nullptr);

 Q_SIGNALS:
  void defaultChosen();
  void anotherFolderChosen();
  void folderDropped(const QString& path);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* column_;
  QWidget* mosaic_;
  Button* useDefault_;
};

}  // namespace sorvan::views
