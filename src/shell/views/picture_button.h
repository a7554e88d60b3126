// A small picture that is pressed, and the empty place beside it.
#pragma once

#include <QAbstractButton>

#include "shell/references_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ThumbnailStore;

// 48 pixels square. Delete removes it, Control with an arrow moves it.
class PictureButton final : public QAbstractButton {
  Q_OBJECT

 public:
  PictureButton(ThumbnailStore& thumbnails, const ReferenceTile& tile, const QString& place, QWidget* parent = nullptr);

 Q_SIGNALS:
  void moved(int step);
  void removed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  ThumbnailStore& thumbnails_;
  ReferenceTile tile_;
};

class AddPictureButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit AddPictureButton(const QString& name, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace sorvan::views
