#include "shell/views/library_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStackedWidget>

#include "shell/locations.h"
#include "shell/views/fields.h"
#include "shell/views/mark_layer.h"
#include "shell/views/texts.h"
#include "shell/views/wall_texts.h"
#include "shell/views/viewer_tools.h"

namespace sorvan::views {

namespace {
constexpr int kRailBelow = 1180;   // narrower windows show the sidebar as a rail of icons
constexpr int kFloatBelow = 1100;  // narrower windows let the inspector float over the content
constexpr int kRail = 52;

// The controls of a zone that the keyboard visits, in the order in which they were made.
std::vector<QWidget*> stopsIn(QWidget* zone) {
  std::vector<QWidget*> stops;
  QList<QWidget*> candidates = zone->findChildren<QWidget*>();
  candidates.prepend(zone);
  for (QWidget* candidate : candidates) {
    const bool takesTab = (candidate->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
    if (takesTab && candidate->isVisible() && candidate->isEnabled() && !candidate->focusProxy())
      stops.push_back(candidate);
  }
  return stops;
}
}  // namespace

LibraryView::LibraryView(Parts parts, QWidget* parent)
    : QWidget(parent),
      sidebar_(new SidebarView(thumbnails_, this)),
      toolbar_(new ToolbarView(this)),
      filters_(parts.filters ? new FilterRow(*parts.filters, this) : nullptr),
      banner_(new BannerBar(this)),
      stack_(new QStackedWidget(this)),
      wall_(new MediaWall(parts.wall, thumbnails_)),
      history_(new HistoryView(parts.history, thumbnails_)),
      asset_(new AssetView(parts.sequence ? *parts.sequence : parts.wall, thumbnails_)),
      inspector_(new InspectorView(thumbnails_, this)),
      dock_(new ComposerDock(parts.composer, thumbnails_, this)),
      toaster_(new Toaster(parts.alerts, this)),
      sidebarEdge_(new PaneHandle(texts::sidebarWidth(), PaneHandle::Panel::left, this)),
      inspectorEdge_(new PaneHandle(texts::inspectorWidth(), PaneHandle::Panel::right, this)) {
  stack_->setAccessibleName(texts::contentZone());
  PageTraits gallery;
  gallery.hasDock = true;
  addPage(ModeKind::gallery, wall_, gallery);
  addPage(ModeKind::searchResults, wall_, gallery);
  PageTraits history;
  history.keyboard = &history_->list();
  history.tools = &history_->search();
  addPage(ModeKind::activity, history_, history);
  PageTraits asset;
  asset.show = [this](const WorkspaceMode& mode) {
    if (!mode.subject.isNull()) asset_->show(mode.subject);
  };
  asset.tools = viewerTools_ = new ViewerTools(asset_->canvas());
  addPage(ModeKind::asset, asset_, asset);
  setPaneWidths(0, 0);
  bindHandles();
  if (parts.marking) setMarking(*parts.marking);
  connect(dock_, &ComposerDock::heightChanged, this, &LibraryView::placeDock);
  connect(&parts.composer, &ComposerPresenter::focusRequested, this, &LibraryView::summonDock);
  connect(dock_, &ComposerDock::left, this, [this] {
    dockSummoned_ = false;
    arrange();
    keyboardOf(page_)->setFocus(Qt::OtherFocusReason);
  });
}

void LibraryView::setMarking(MarkingPresenter& marking) {
  asset_->setMarking(marking);
  markPanel_ = new MarkPanel(marking, this);
  MarkLayer* layer = asset_->marks();
  connect(&marking, &MarkingPresenter::markingChanged, this, [this, &marking] { refreshMarking(marking); });
  connect(&marking, &MarkingPresenter::noteRequested, markPanel_, &MarkPanel::focusNote);
  connect(layer, &MarkLayer::noteRequested, markPanel_, &MarkPanel::focusNote);
  connect(markPanel_, &MarkPanel::noteLeft, layer, [layer] { layer->setFocus(Qt::OtherFocusReason); });
  refreshMarking(marking);
}

void LibraryView::refreshMarking(const MarkingPresenter& marking) {
  const bool wasMarking = std::exchange(marking_, marking.isMarking());
  const QWidget* focused = QApplication::focusWidget();
  const bool inMarks = focused && (markPanel_->isAncestorOf(focused) || asset_->isAncestorOf(focused));
  markPanel_->setVisible(marking_);
  if (marking_) dockSummoned_ = false;
  arrange();
  if (marking_ || (wasMarking && inMarks)) asset_->setFocus(Qt::OtherFocusReason);
}

void LibraryView::addPage(ModeKind kind, QWidget* widget, PageTraits traits) {
  if (stack_->indexOf(widget) < 0) stack_->addWidget(widget);
  if (traits.tools) toolbar_->addTools(traits.tools);
  registered_.insert_or_assign(kind, Page{widget, std::move(traits)});
}

std::set<ModeKind> LibraryView::pageKinds() const {
  std::set<ModeKind> kinds;
  for (const auto& [kind, page] : registered_) kinds.insert(kind);
  return kinds;
}

QWidget* LibraryView::keyboardOf(ModeKind page) const {
  const Page& found = registered_.at(page);
  return found.traits.keyboard ? found.traits.keyboard : found.widget;
}

bool LibraryView::hasInspector() const { return inspectorShown_ && registered_.at(page_).traits.hasInspector; }

bool LibraryView::hasDock() const { return registered_.at(page_).traits.hasDock || dockSummoned_; }

std::optional<PageTitle> LibraryView::pageTitle() const {
  const PageTraits& traits = registered_.at(page_).traits;
  return traits.title ? std::optional(traits.title()) : std::nullopt;
}

std::optional<LookedAt> LibraryView::looked() const {
  const PageTraits& traits = registered_.at(page_).traits;
  return traits.look ? std::optional(traits.look()) : std::nullopt;
}

void LibraryView::showMode(const WorkspaceMode& mode) {
  const ModeKind wanted = registered_.contains(mode.kind) ? mode.kind : ModeKind::gallery;
  const Page& page = registered_.at(wanted);
  if (page.traits.show) page.traits.show(mode);
  if (page_ == wanted && stack_->currentWidget() == page.widget) return;
  page_ = wanted;
  stack_->setCurrentWidget(page.widget);
  toolbar_->setTools(page.traits.tools);
  toolbar_->setSizeSliderShown(showsGallery(wanted));
  toolbar_->setGalleryToolsShown(showsGallery(wanted));
  toolbar_->setInspectorOffered(page.traits.hasInspector);
  dockSummoned_ = false;
  arrange();
  const bool elsewhere = dock_->isAncestorOf(QApplication::focusWidget()) || toolbar_->isWalkedThrough();
  if (!elsewhere) keyboardOf(wanted)->setFocus(Qt::OtherFocusReason);
}

// What a page does not use itself leads back.
void LibraryView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier && isSubView(page_)) {
    Q_EMIT backRequested();
    return;
  }
  QWidget::keyPressEvent(event);
}

void LibraryView::focusContent() { keyboardOf(page_)->setFocus(Qt::OtherFocusReason); }

void LibraryView::summonDock() {
  dockSummoned_ = !registered_.at(page_).traits.hasDock;
  arrange();
  dock_->focusPrompt();
}

void LibraryView::setSidebarShown(bool shown) {
  sidebarShown_ = shown;
  arrange();
}

void LibraryView::setInspectorShown(bool shown) {
  inspectorShown_ = shown;
  toolbar_->setInspectorShown(shown);
  arrange();
}

void LibraryView::setPaneWidths(int sidebar, int inspector) {
  const Metrics& m = metrics();
  sidebarWidth_ = std::clamp(sidebar > 0 ? sidebar : m.sidebarDefault, m.sidebarMin, m.sidebarMax);
  inspectorWidth_ = std::clamp(inspector > 0 ? inspector : m.inspectorDefault, m.inspectorMin, m.inspectorMax);
  sidebarEdge_->setPaneWidth({sidebarWidth_, m.sidebarMin, m.sidebarMax});
  inspectorEdge_->setPaneWidth({inspectorWidth_, m.inspectorMin, m.inspectorMax});
  arrange();
}

void LibraryView::bindHandles() {
  connect(sidebarEdge_, &PaneHandle::dragged, this, [this](int pixels) {
    if (grabbedWidth_ == 0) grabbedWidth_ = sidebarWidth_;
    setPaneWidths(std::max(1, grabbedWidth_ + pixels), inspectorWidth_);
  });
  connect(inspectorEdge_, &PaneHandle::dragged, this, [this](int pixels) {
    if (grabbedWidth_ == 0) grabbedWidth_ = inspectorWidth_;
    setPaneWidths(sidebarWidth_, std::max(1, grabbedWidth_ - pixels));
  });
  const auto letGo = [this] {
    grabbedWidth_ = 0;
    Q_EMIT paneWidthsChanged();
  };
  connect(sidebarEdge_, &PaneHandle::released, this, letGo);
  connect(inspectorEdge_, &PaneHandle::released, this, letGo);
  connect(sidebarEdge_, &PaneHandle::resetRequested, this, [this, letGo] {
    setPaneWidths(0, inspectorWidth_);
    letGo();
  });
  connect(inspectorEdge_, &PaneHandle::resetRequested, this, [this, letGo] {
    setPaneWidths(sidebarWidth_, 0);
    letGo();
  });
}

void LibraryView::placeHandles(int left, int top, bool rail) {
  const int half = PaneHandle::width / 2;
  sidebarEdge_->setVisible(sidebarShown_ && !rail);
  sidebarEdge_->setGeometry(left - half - 1, 0, PaneHandle::width, height());
  inspectorEdge_->setVisible(hasInspector() || marking_);
  inspectorEdge_->setGeometry(inspector_->x() - half, top, PaneHandle::width, height() - top);
  sidebarEdge_->raise();
  inspectorEdge_->raise();
}

void LibraryView::setFiltersShown(bool shown) {
  filtersShown_ = shown;
  toolbar_->setFiltersShown(shown);
  arrange();
}

void LibraryView::setSelectionBar(QWidget* bar) {
  selectionBar_ = bar;
  bar->setParent(this);
  arrange();
}

void LibraryView::setSelecting(bool several) {
  if (selecting_ == several) return;
  selecting_ = several;
  arrange();
}

// A screen that is narrower than the window was crowds nothing out: what is away comes back with the window.
void LibraryView::resizeEvent(QResizeEvent*) {
  if (immersed_) return arrange();
  const bool roomy = width() >= kFloatBelow;
  if (wasRoomy_ && !roomy) Q_EMIT inspectorCrowded();
  wasRoomy_ = roomy;
  arrange();
}

void LibraryView::setImmersed(bool immersed) {
  if (immersed_ == immersed) return;
  immersed_ = immersed;
  if (immersed) bannerWaits_ = !banner_->isHidden();
  toolbar_->setVisible(!immersed);
  if (bannerWaits_) banner_->setVisible(!immersed);
  asset_->setImmersed(immersed);
  arrange();
}

void LibraryView::arrangeImmersed() {
  for (QWidget* away : std::initializer_list<QWidget*>{sidebar_, inspector_, markPanel_, filters_, selectionBar_, dock_,
                                                       sidebarEdge_, inspectorEdge_})
    if (away) away->hide();
  stack_->setGeometry(rect());
  toaster_->setCorner(rect().bottomRight() - QPoint(ComposerDock::margin, ComposerDock::margin));
}

void LibraryView::arrange() {
  if (immersed_) return arrangeImmersed();
  const bool rail = width() < kRailBelow;
  const bool floats = width() < kFloatBelow;
  sidebar_->setVisible(sidebarShown_);
  sidebar_->setNarrow(rail);
  const int left = sidebarShown_ ? (rail ? kRail : sidebarWidth_) : 0;
  sidebar_->setGeometry(0, 0, left, height());
  toolbar_->setGeometry(left, 0, width() - left, metrics().toolbar);
  int top = metrics().toolbar;
  if (!banner_->isHidden()) {
    const int height = std::max(40, banner_->heightForWidth(width() - left));
    banner_->setGeometry(left, top, width() - left, height);
    top += height;
  }
  inspector_->setVisible(hasInspector() && !marking_);
  const int pane = inspectorWidth_;
  inspector_->setGeometry(width() - pane, top, pane, height() - top);
  if (markPanel_) markPanel_->setGeometry(inspector_->geometry());
  // Marks are drawn on all of the picture, so their panel never covers it.
  const int right = marking_ || (hasInspector() && !floats) ? width() - pane : width();
  if (filters_) {
    const bool shown = filtersShown_ && showsGallery(page_);
    const QRect row(left, top, right - left, metrics().filterRow);
    const bool selection = shown && selecting_ && selectionBar_;
    filters_->setVisible(shown && !selection);
    filters_->setGeometry(row);
    if (selectionBar_) selectionBar_->setVisible(selection), selectionBar_->setGeometry(row);
    if (shown) top += metrics().filterRow;
  }
  stack_->setGeometry(left, top, right - left, height() - top);
  if (floats) inspector_->raise();
  placeHandles(left, top, rail);
  placeDock();
}

void LibraryView::placeDock() {
  const bool docked = hasDock();
  dock_->setVisible(docked);
  QRect content = stack_->geometry();
  if ((hasInspector() || marking_) && content.right() > inspector_->x()) content.setRight(inspector_->x() - 1);
  const int outer = ComposerDock::margin;
  const int width = std::min(content.width(), metrics().composerMaxWidth + 2 * outer);
  const int height = dock_->heightForWidth(width);
  dock_->setGeometry(content.center().x() - width / 2 + 1, content.bottom() - height + 1, width, height);
  wall_->setBottomInset(docked ? height : 0);
  const int foot = docked ? height - outer + metrics().toastGap : outer;
  toaster_->setCorner(QPoint(content.right() - outer, content.bottom() - foot));
}

std::vector<QWidget*> LibraryView::zones() {
  if (immersed_) return {stack_->currentWidget(), toaster_};
  QWidget* pane = marking_ ? static_cast<QWidget*>(markPanel_) : inspector_;
  std::vector<QWidget*> all{sidebar_, toolbar_, banner_, stack_->currentWidget(), pane, dock_, toaster_};
  if (filters_) all.insert(all.begin() + 2, filters_);
  if (selectionBar_) all.insert(all.begin() + 2, selectionBar_);
  all.insert(all.end(), outerZones_.begin(), outerZones_.end());
  return all;
}

void LibraryView::cycleZones(int direction) {
  const std::vector<QWidget*> all = zones();
  const QWidget* now = QApplication::focusWidget();
  const int count = static_cast<int>(all.size());
  int at = 0;
  for (int index = 0; index < count; ++index) {
    if (now && (all[static_cast<size_t>(index)] == now || all[static_cast<size_t>(index)]->isAncestorOf(now)))
      at = index;
  }
  for (int step = 1; step <= count; ++step) {
    const std::vector<QWidget*> stops =
        stopsIn(all[static_cast<size_t>(((at + direction * step) % count + count) % count)]);
    if (!stops.empty()) return stops.front()->setFocus(Qt::TabFocusReason);
  }
}

// The zones, with the edge of each panel after or before it.
std::vector<QWidget*> LibraryView::tabOrder() {
  std::vector<QWidget*> order;
  for (QWidget* zone : zones()) {
    if (zone == inspector_ || zone == markPanel_) order.push_back(inspectorEdge_);
    order.push_back(zone);
    if (zone == sidebar_) order.push_back(sidebarEdge_);
  }
  return order;
}

bool LibraryView::focusNextPrevChild(bool next) {
  std::vector<QWidget*> order;
  for (QWidget* part : tabOrder()) {
    for (QWidget* stop : stopsIn(part)) order.push_back(stop);
  }
  const auto at = std::find(order.begin(), order.end(), QApplication::focusWidget());
  if (order.empty() || at == order.end()) return QWidget::focusNextPrevChild(next);
  const auto count = static_cast<std::ptrdiff_t>(order.size());
  const auto to = (at - order.begin() + (next ? 1 : count - 1)) % count;
  order[static_cast<size_t>(to)]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

}  // namespace sorvan::views
