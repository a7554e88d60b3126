// Items in an order of their own, as the source of a wall.
#pragma once

#include "shell/views/wall_source.h"

namespace sorvan::views {

// The presenter outlives it.
class OrderedItems final : public WallSource {
 public:
  explicit OrderedItems(const GalleryPresenter& gallery, QObject* parent = nullptr);

  // Items that are not in the library are left out.
  void set(const std::vector<QUuid>& items);
  const std::vector<QUuid>& items() const { return items_; }

  int count() const override { return static_cast<int>(items_.size()); }
  QUuid idAt(int index) const override { return items_.at(static_cast<size_t>(index)); }
  double aspectRatioAt(int index) const override { return cellAt(index).aspectRatio; }
  bool isJobAt(int) const override { return false; }
  GalleryCell cellAt(int index) const override { return gallery_.cellOf(idAt(index)); }
  int indexOf(QUuid id) const override;
  QString emptyTitle() const override { return {}; }
  QString emptyText() const override { return {}; }

 private:
  const GalleryPresenter& gallery_;
  std::vector<QUuid> items_;
};

}  // namespace sorvan::views
