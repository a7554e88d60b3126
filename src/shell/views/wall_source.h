// What a wall of media asks of whoever knows the media.
#pragma once

#include "shell/gallery_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// Cells by number, in the order of the wall. Lives on the main thread and outlives the walls that show it.
class WallSource : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  virtual int count() const = 0;
  virtual QUuid idAt(int index) const = 0;
  virtual double aspectRatioAt(int index) const = 0;
  virtual bool isJobAt(int index) const = 0;
  virtual GalleryCell cellAt(int index) const = 0;
  virtual int indexOf(QUuid id) const = 0;
  virtual QString emptyTitle() const = 0;
  virtual QString emptyText() const = 0;

 Q_SIGNALS:
  void layoutChanged();
  void contentChanged();
};

}  // namespace sorvan::views
