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
#include "shell/views/pane_handle.h"
#include "shell/views/sidebar_view.h"
#include "shell/views/toolbar_view.h"
#include "shell/workspace_mode.h"

#include <functional>
#include <map>
#include <set>

class QStackedWidget;

namespace sorvan::views {

class ViewerTools;

// What the toolbar says about a page.
struct PageTitle {
  QString title;
  QString countText;  // “312 items”; may be empty
};

// What Space looks at: items of a page, and the order in which its arrows step through them.
struct LookedAt {
  QSet<QUuid> items;
  std::vector<QUuid> order;
};

// How a page takes part in the window. All but the widget may be left out.
struct PageTraits {
  // The page comes to the front, or shows something else of its kind. Called with the window's mode each time that
  // changes; a page that shows that already keeps its scroll position and does nothing.
  std::function<void(const WorkspaceMode&)> show = {};
  // Asked when the page comes to the front and after `LibraryView::titleChanged`. None: the location's name.
  std::function<PageTitle()> title = {};
  // What takes the keyboard when the page comes to the front. None: the page.
  QWidget* keyboard = nullptr;
  // Controls that stand in the toolbar while the page is in front, at its right.
  QWidget* tools = nullptr;
  // What is looked at and opened from here. None: what the wall has selected.
  std::function<LookedAt()> look = {};
  // Whether the composer stands over the page without being asked for.
  bool hasDock = false;
  // Whether the page shows items that the inspector can tell of; another one takes the whole width.
  bool hasInspector = true;
};

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
    WallSource* sequence = nullptr;       // the order in which the large view steps; none: that of the wall
  };
  explicit LibraryView(Parts parts, QWidget* parent = nullptr);

  SidebarView& sidebar() { return *sidebar_; }
  ToolbarView& toolbar() { return *toolbar_; }
  BannerBar& banner() { return *banner_; }
  MediaWall& wall() { return *wall_; }
  HistoryView& history() { return *history_; }
  AssetView& asset() { return *asset_; }
  ViewerTools& viewerTools() { return *viewerTools_; }
  InspectorView& inspector() { return *inspector_; }
  // Stands in the filter row's place while it is shown there; owned by this view from now on.
  void setSelectionBar(QWidget* bar);
  void setSelecting(bool several);
  MarkPanel* markPanel() const { return markPanel_; }
  ComposerDock& dock() { return *dock_; }

  // Adds the page of a mode, which belongs to this view from now on, with its traits. Modes may share a page. A mode
  // that has no page is absent from the window: no tab, no row of the sidebar and no menu entry leads there.
  void addPage(ModeKind kind, QWidget* widget, PageTraits traits = {});
  // The modes that have a page.
  std::set<ModeKind> pageKinds() const;
  ThumbnailStore& thumbnails() { return thumbnails_; }

  ModeKind page() const { return page_; }
  // Brings the page of the mode to the front. A mode without a page shows the gallery.
  void showMode(const WorkspaceMode& mode);
  // The same for a page that keeps what it shows.
  void setPage(ModeKind page) { showMode({page}); }
  // What the page in front says of itself; nothing when it leaves that to the window.
  std::optional<PageTitle> pageTitle() const;
  // What the page in front would have looked at; nothing when that is the wall's.
  std::optional<LookedAt> looked() const;
  void setSidebarShown(bool shown);
  void setInspectorShown(bool shown);
  // Widths in logical pixels, kept within the bounds of the design; 0 is that of a new window.
  void setPaneWidths(int sidebar, int inspector);
  int sidebarWidth() const { return sidebarWidth_; }
  int inspectorWidth() const { return inspectorWidth_; }
  void setFiltersShown(bool shown);
  // The page in front has all of the view; no other zone is there.
  void setImmersed(bool immersed);
  // Gives the keyboard to what the page shows.
  void focusContent();
  // Shows the dock over a page that does not have it, until it is left.
  void summonDock();
  // The next zone in the order sidebar, toolbar, content, inspector, composer, toasts.
  void cycleZones(int direction);
  // A part of the window outside this view that the keyboard visits last. The window owns it.
  void addZone(QWidget* zone) { outerZones_.push_back(zone); }

 Q_SIGNALS:
  // A panel was made wider or narrower, and let go.
  void paneWidthsChanged();
  // The window became too narrow for the inspector beside the content.
  void inspectorCrowded();
  // A page asks for its title to be read again: `Q_EMIT library.titleChanged()`.
  void titleChanged();
  // Escape that nothing else took, or the back button of the mouse.
  void backRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  // Tab visits the zones in their order, and inside a zone the controls in theirs.
  bool focusNextPrevChild(bool next) override;

 private:
  void setMarking(MarkingPresenter& marking);
  void refreshMarking(const MarkingPresenter& marking);
  void arrange();
  void arrangeImmersed();
  void bindHandles();
  void placeHandles(int left, int top, bool rail);
  void placeDock();
  struct Page {
    QWidget* widget;
    PageTraits traits;
  };
  QWidget* keyboardOf(ModeKind page) const;
  bool hasDock() const;
  bool hasInspector() const;
  std::vector<QWidget*> zones();
  std::vector<QWidget*> tabOrder();
  std::vector<QWidget*> outerZones_;

  ThumbnailStore thumbnails_;
  SidebarView* sidebar_;
  ToolbarView* toolbar_;
  FilterRow* filters_ = nullptr;
  QWidget* selectionBar_ = nullptr;
  bool selecting_ = false;
  BannerBar* banner_;
  QStackedWidget* stack_;
  MediaWall* wall_;
  HistoryView* history_;
  AssetView* asset_;
  ViewerTools* viewerTools_ = nullptr;
  InspectorView* inspector_;
  MarkPanel* markPanel_ = nullptr;
  ComposerDock* dock_;
  Toaster* toaster_;
  std::map<ModeKind, Page> registered_;
  ModeKind page_ = ModeKind::gallery;
  PaneHandle* sidebarEdge_;
  PaneHandle* inspectorEdge_;
  int sidebarWidth_ = 0;
  int inspectorWidth_ = 0;
  int grabbedWidth_ = 0;
  bool sidebarShown_ = true;
  bool inspectorShown_ = true;
  bool marking_ = false;  // the marks' panel stands where the inspector stands otherwise
  bool filtersShown_ = true;
  bool dockSummoned_ = false;  // asked for on a page that does not show it by itself
  bool wasRoomy_ = true;
  bool immersed_ = false;
  bool bannerWaits_ = false;  // it was shown before
};

}  // namespace sorvan::views
