#pragma once

#include "core/records.h"
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

// What a drop brings: items of this library, known by their ids or by their files, and how many files are none of them.
struct BroughtItems {
  std::vector<QUuid> items;
  qsizetype otherFiles = 0;
};

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
  // The selected items in the order of the gallery, others after them, those whose files are gone left out; null when
  // none is left.
  std::unique_ptr<QMimeData> selectedItems() const;
  // The same for a drag, which says in a card when files are gone.
  std::unique_ptr<QMimeData> itemsToDrag();
  // Says what happened in a card.
  void copySelected();
  // Items come in the order of the data, each once. Files outside the library are left where they are.
  BroughtItems brought(const QMimeData& data) const;
  // Says that importing is not possible yet and that nothing was touched.
  void refuseFiles(qsizetype count);

 private:
  struct Selected {
    std::vector<TransferItem> there;
    qsizetype missing = 0;
  };
  std::vector<core::AssetRef> inOrder() const;
  Selected items() const;

  Ports on_;
};

}  // namespace sorvan::shell
