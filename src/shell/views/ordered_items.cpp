#include "shell/views/ordered_items.h"

namespace sorvan::views {

OrderedItems::OrderedItems(const GalleryPresenter& gallery, QObject* parent) : WallSource(parent), gallery_(gallery) {}

void OrderedItems::set(const std::vector<QUuid>& items) {
  items_.clear();
  for (const QUuid& item : items)
    if (!gallery_.cellOf(item).filePath.isEmpty()) items_.push_back(item);
  Q_EMIT layoutChanged();
}

int OrderedItems::indexOf(QUuid id) const {
  const auto found = std::find(items_.begin(), items_.end(), id);
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

}  // namespace sorvan::views
