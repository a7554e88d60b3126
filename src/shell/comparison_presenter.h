#pragma once

#include "shell/contact_sheet_workspace.h"
#include "shell/lineage_presenter.h"
#include "shell/sheet_browser_presenter.h"

namespace sorvan::shell {

class GalleryPresenter;

// Contact sheets, comparing and lineage of one window, and what leads there from the selected items. Main thread.
class ComparisonPresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  struct Ports {
    core::LibraryStore& store;
    WorkspaceState& state;
    GalleryPresenter& gallery;
    JobDisplays& displays;
    JobsPresenter& jobs;
    AlertsPresenter& alerts;
    PriceOf priceOf = {};
  };
  explicit ComparisonPresenter(Ports ports, QObject* parent = nullptr);

  SheetBrowserPresenter& sheets() { return sheets_; }
  ContactSheetWorkspace& sheet() { return sheet_; }
  LineagePresenter& lineage() { return lineage_; }

  // Two to eight items outside Trash are selected.
  bool canCompare() const;
  // Exactly one item is selected.
  bool canShowLineage() const;

  // Shows the selected items beside each other; pictures closely and in step.
  void compareSelected();
  // Makes a contact sheet of the selected items and opens it.
  void makeSheet();
  void showLineage();
  void openSheet(QUuid sheet);

 private:
  std::vector<QUuid> selectedItems() const;

  Ports on_;
  SheetBrowserPresenter sheets_;
  ContactSheetWorkspace sheet_;
  LineagePresenter lineage_;
};

}  // namespace sorvan::shell
