// The panel over the Reference button: pictures and saved references to attach.
#pragma once

#include <QTimer>

#include "shell/references_presenter.h"
#include "shell/views/popover.h"
#include "shell/views/tile_grid.h"

namespace sorvan::views {

class Button;
class EmptyNote;
class Label;
class Paragraph;
class SegmentedControl;
class TextField;
class ThumbnailStore;

// Squares of pictures with what they are called; those that are attached wear a tick.
class AttachGrid final : public TileGrid {
  Q_OBJECT

 public:
  explicit AttachGrid(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  void show(const std::vector<ReferenceTile>& tiles);
  const ReferenceTile* tile(QUuid id) const;

 protected:
  void paintTile(QPainter& painter, int index, const QRect& area, const Look& look) override;

 private:
  ThumbnailStore& thumbnails_;
  std::vector<ReferenceTile> shown_;
};

class AttachPanelView final : public Popover {
  Q_OBJECT

 public:
  // Both outlive the panel. `mostHeight` is the room above the composer.
  AttachPanelView(ReferencesPresenter& references, ThumbnailStore& thumbnails, int mostHeight);

 Q_SIGNALS:
  void filesRequested();

 private:
  void build(int mostHeight);
  void refresh();
  void paste();

  ReferencesPresenter& references_;
  ReferenceSource source_;
  Label* count_;
  SegmentedControl* sources_;
  TextField* search_;
  AttachGrid* grid_;
  Paragraph* empty_;
  Button* files_;
  Button* paste_;
  Button* stop_;
  Button* save_;
  QTimer typing_;
};

}  // namespace sorvan::views
