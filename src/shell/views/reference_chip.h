// One attached picture in the composer, and the button that attaches more.
#pragma once

#include <QAbstractButton>

#include "shell/composer_presenter.h"
#include "shell/views/controls.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ThumbnailStore;

// Height of everything in the strip, pixels.
inline constexpr int stripHeight = 44;

// The picture's name and part beside it. Pressing opens its menu; dragging takes it to another place.
class ReferenceChip final : public QAbstractButton {
  Q_OBJECT

 public:
  ReferenceChip(const AttachedReference& reference, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  QUuid id() const { return reference_.id; }
  QSize sizeHint() const override;

 Q_SIGNALS:
  void removed();
  void keyPressed(int key, Qt::KeyboardModifiers modifiers);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void drag();

  AttachedReference reference_;
  ThumbnailStore& thumbnails_;
  IconButton* cross_;
  QPoint pressedAt_;
};

// What a chip's drag holds: the UUID of its picture.
inline const QString referenceMimeType = QStringLiteral("application/x-sorvan-reference");

// “Reference  2 of 8 attached”.
class ReferenceButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit ReferenceButton(QWidget* parent = nullptr);
  // `inert` says why nothing can be attached; empty when it can.
  void setWords(const QString& count, const QString& inert);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString count_;
  bool inert_ = false;
};

}  // namespace sorvan::views
