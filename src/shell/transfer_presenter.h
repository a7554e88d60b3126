#pragma once

#include "shell/item_transfer.h"

#include <QObject>

#include <functional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
class GalleryPresenter;
class WorkspaceState;

// What leaves the library for other programs by drag or clipboard, and what they bring. Files are only ever offered for
// copying; nothing here moves or removes one, whatever the other side asks for. Main thread.
class TransferPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter. `toClipboard` takes over the data.
  struct Ports {
    core::LibraryStore& store;
    WorkspaceState& state;
    GalleryPresenter& gallery;
    AlertsPresenter& alerts;
    std::function<void(std::unique_ptr<QMimeData>)> toClipboard;
  };
  explicit TransferPresenter(Ports ports, QObject* parent = nullptr);

  bool hasItems() const;  // an item is selected, whether or not its file is there
  // The selected items that the gallery shows, in its order, those whose files are gone left out; null when none is
  // left.
  std::unique_ptr<QMimeData> selectedItems() const;
  // Says what happened in a card.
  void copySelected();
  // Says that importing is not possible yet and that nothing was touched.
  void refuseFiles(qsizetype count);

 private:
  std::vector<TransferItem> items() const;

  Ports on_;
};

}  // namespace sorvan::shell
