// The items through which the large view steps, as the source of a wall.
#pragma once

#include "shell/views/wall_source.h"

namespace sorvan::shell {
class WorkspaceState;
}

namespace sorvan::views {

// Both presenters outlive it.
class SequenceSource final : public WallSource {
  Q_OBJECT

 public:
  SequenceSource(const WorkspaceState& state, const GalleryPresenter& gallery, QObject* parent = nullptr);

  int count() const override;
  QUuid idAt(int index) const override;
  double aspectRatioAt(int index) const override;
  bool isJobAt(int index) const override;
  GalleryCell cellAt(int index) const override;
  // -1 also for an item that is gone or went to Trash.
  int indexOf(QUuid id) const override;
  QString emptyTitle() const override { return {}; }
  QString emptyText() const override { return {}; }

 private:
  void chooseOrder();

  const WorkspaceState& state_;
  const GalleryPresenter& gallery_;
  bool followsGallery_ = false;  // the open item stands in no order of its own: it was opened to be marked
};

}  // namespace sorvan::views
