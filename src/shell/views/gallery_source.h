// The gallery's presenter as the source of a wall.
#pragma once

#include "shell/views/wall_source.h"

namespace sorvan::views {

// The presenter outlives it.
class GallerySource final : public WallSource {
 public:
  explicit GallerySource(GalleryPresenter& gallery, QObject* parent = nullptr);

  int count() const override;
  QUuid idAt(int index) const override;
  double aspectRatioAt(int index) const override;
  bool isJobAt(int index) const override;
  GalleryCell cellAt(int index) const override;
  int indexOf(QUuid id) const override;
  const std::vector<WallSection>& sections() const override;
  QString emptyTitle() const override;
  QString emptyText() const override;
  QString emptyAction() const override;

 private:
  GalleryPresenter& gallery_;
};

}  // namespace sorvan::views
