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
  // The headed parts of the wall, in its order; none: one wall without headings.
  virtual const std::vector<WallSection>& sections() const {
    static const std::vector<WallSection> none;
    return none;
  }
  virtual QString emptyTitle() const = 0;
  virtual QString emptyText() const = 0;
  // What the button of the empty wall says; none: no button.
  virtual QString emptyAction() const { return {}; }

 Q_SIGNALS:
  void layoutChanged();
  void contentChanged();
};

}  // namespace sorvan::views
