// The window's body while a workspace is open: sidebar, toolbar, content with the dock over it, inspector.
#pragma once

#include <QWidget>

#include "shell/alerts_presenter.h"
#include "shell/composer_presenter.h"
#include "shell/filter_presenter.h"
#include "shell/views/asset_view.h"
#include "shell/views/banner_bar.h"
#include "shell/views/composer_dock.h"
#include "shell/views/feedback.h"
#include "shell/views/filter_row.h"
#include "shell/views/history_view.h"
#include "shell/views/inspector_view.h"
#include "shell/views/mark_panel.h"
#include "shell/views/media_wall.h"
#include "shell/views/sidebar_view.h"
#include "shell/views/toolbar_view.h"

class QStackedWidget;

namespace sorvan::views {

enum class ContentPage { gallery, history, asset };

// Only the arrangement: what is shown comes from whoever owns the view. All parts passed in outlive it.
class LibraryView final : public QWidget {
  Q_OBJECT

 public:
  struct Parts {
    WallSource& wall;
    HistorySource& history;
    ComposerPresenter& composer;
    AlertsPresenter& alerts;
    MarkingPresenter* marking = nullptr;  // without one, nothing can be marked
    FilterPresenter* filters = nullptr;   // none: no filter row
  };
  explicit LibraryView(Parts parts, QWidget* parent = nullptr);

  SidebarView& sidebar() { return *sidebar_; }
  ToolbarView& toolbar() { return *toolbar_; }
  BannerBar& banner() { return *banner_; }
  MediaWall& wall() { return *wall_; }
  HistoryView& history() { return *history_; }
  AssetView& asset() { return *asset_; }
  InspectorView& inspector() { return *inspector_; }
  MarkPanel* markPanel() const { return markPanel_; }
  ComposerDock& dock() { return *dock_; }

  ContentPage page() const { return page_; }
  void setPage(ContentPage page);
  void setSidebarShown(bool shown);
  void setInspectorShown(bool shown);
  void setFiltersShown(bool shown);
  // Gives the keyboard to what the page shows.
  void focusContent();
  // Shows the dock over a page that does not have it, until it is left.
  void summonDock();
  // The next zone in the order sidebar, toolbar, content, inspector, composer, toasts.
  void cycleZones(int direction);

 Q_SIGNALS:
  // The window became too narrow for the inspector beside the content.
  void inspectorCrowded();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  // Tab visits the zones in their order, and inside a zone the controls in theirs.
  bool focusNextPrevChild(bool next) override;

 private:
  void setMarking(MarkingPresenter& marking);
  void refreshMarking(const MarkingPresenter& marking);
  void arrange();
  void placeDock();
  QWidget* contentOf(ContentPage page);
  std::vector<QWidget*> zones();

  ThumbnailStore thumbnails_;
  SidebarView* sidebar_;
  ToolbarView* toolbar_;
  FilterRow* filters_ = nullptr;
  BannerBar* banner_;
  QStackedWidget* stack_;
  MediaWall* wall_;
  HistoryView* history_;
  AssetView* asset_;
  InspectorView* inspector_;
  MarkPanel* markPanel_ = nullptr;
  ComposerDock* dock_;
  Toaster* toaster_;
  ContentPage page_ = ContentPage::gallery;
  bool sidebarShown_ = true;
  bool inspectorShown_ = true;
  bool marking_ = false;  // the marks' panel stands where the inspector stands otherwise
  bool filtersShown_ = true;
  bool dockSummoned_ = false;  // asked for on a page that does not show it by itself
  bool wasRoomy_ = true;
};

}  // namespace sorvan::views
