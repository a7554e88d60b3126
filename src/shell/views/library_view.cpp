#include "shell/views/library_view.h"

#include <QApplication>
#include <QStackedWidget>

#include "shell/views/texts.h"

namespace sorvan::views {

namespace {
constexpr int kRailBelow = 1180;      // narrower windows show the sidebar as a rail of icons
constexpr int kFloatBelow = 1100;     // narrower windows let the inspector float over the content
constexpr int kRail = 52;
}  // namespace

LibraryView::LibraryView(Parts parts, QWidget* parent)
    : QWidget(parent), sidebar_(new SidebarView(thumbnails_, this)), toolbar_(new ToolbarView(this)), banner_(new BannerBar(this)),
      stack_(new QStackedWidget(this)), wall_(new MediaWall(parts.wall, thumbnails_)),
      history_(new HistoryView(parts.history, thumbnails_)), asset_(new AssetView(parts.wall, thumbnails_)),
      inspector_(new InspectorView(thumbnails_, this)), dock_(new ComposerDock(parts.composer, this)),
      toaster_(new Toaster(parts.alerts, this)) {
  stack_->setAccessibleName(texts::contentZone());
  for (QWidget* page : std::initializer_list<QWidget*>{wall_, history_, asset_}) stack_->addWidget(page);
  connect(dock_, &ComposerDock::heightChanged, this, &LibraryView::placeDock);
  connect(&parts.composer, &ComposerPresenter::focusRequested, this, &LibraryView::summonDock);
  connect(dock_, &ComposerDock::left, this, [this] {
    dockSummoned_ = false;
    arrange();
    contentOf(page_)->setFocus(Qt::OtherFocusReason);
  });
}

QWidget* LibraryView::contentOf(ContentPage page) {
  if (page == ContentPage::history) return &history_->list();
  return page == ContentPage::asset ? static_cast<QWidget*>(asset_) : wall_;
}

void LibraryView::setPage(ContentPage page) {
  if (page_ == page && stack_->currentIndex() == static_cast<int>(page)) return;
  page_ = page;
  stack_->setCurrentIndex(static_cast<int>(page));
  toolbar_->setSizeSliderShown(page == ContentPage::gallery);
  dockSummoned_ = false;
  arrange();
  if (!dock_->isAncestorOf(QApplication::focusWidget())) contentOf(page)->setFocus(Qt::OtherFocusReason);
}

void LibraryView::summonDock() {
  dockSummoned_ = page_ != ContentPage::gallery;
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

void LibraryView::resizeEvent(QResizeEvent*) {
  const bool roomy = width() >= kFloatBelow;
  if (wasRoomy_ && !roomy) Q_EMIT inspectorCrowded();
  wasRoomy_ = roomy;
  arrange();
}

void LibraryView::arrange() {
  const bool rail = width() < kRailBelow;
  const bool floats = width() < kFloatBelow;
  sidebar_->setVisible(sidebarShown_);
  sidebar_->setNarrow(rail);
  const int left = sidebarShown_ ? (rail ? kRail : metrics().sidebarDefault) : 0;
  sidebar_->setGeometry(0, 0, left, height());
  toolbar_->setGeometry(left, 0, width() - left, metrics().toolbar);
  int top = metrics().toolbar;
  if (!banner_->isHidden()) {
    const int height = std::max(40, banner_->heightForWidth(width() - left));
    banner_->setGeometry(left, top, width() - left, height);
    top += height;
  }
  inspector_->setVisible(inspectorShown_);
  const int pane = metrics().inspectorDefault;
  inspector_->setGeometry(width() - pane, top, pane, height() - top);
  const int right = inspectorShown_ && !floats ? width() - pane : width();
  stack_->setGeometry(left, top, right - left, height() - top);
  if (floats) inspector_->raise();
  placeDock();
}

void LibraryView::placeDock() {
  const bool docked = page_ == ContentPage::gallery || dockSummoned_;
  dock_->setVisible(docked);
  QRect content = stack_->geometry();
  if (inspectorShown_ && content.right() > inspector_->x()) content.setRight(inspector_->x() - 1);
  const int outer = ComposerDock::margin;
  const int width = std::min(content.width(), metrics().composerMaxWidth + 2 * outer);
  const int height = dock_->heightForWidth(width);
  dock_->setGeometry(content.center().x() - width / 2 + 1, content.bottom() - height + 1, width, height);
  wall_->setBottomInset(docked ? height : 0);
  const int foot = docked ? height - outer + metrics().toastGap : outer;
  toaster_->setCorner(QPoint(content.right() - outer, content.bottom() - foot));
}

void LibraryView::cycleZones(int direction) {
  const std::vector<QWidget*> zones{sidebar_, toolbar_, contentOf(page_), inspector_, dock_, toaster_};
  const QWidget* now = QApplication::focusWidget();
  int at = 2;
  for (size_t index = 0; index < zones.size(); ++index) {
    if (now && (zones[index] == now || zones[index]->isAncestorOf(now))) at = static_cast<int>(index);
  }
  const int count = static_cast<int>(zones.size());
  for (int step = 1; step <= count; ++step) {
    QWidget* zone = zones[static_cast<size_t>((at + direction * step + count * step) % count)];
    if (!zone->isVisible()) continue;
    if (zone == dock_) return dock_->focusPrompt();
    QWidget* stop = zone;
    while (stop && (stop->focusPolicy() & Qt::TabFocus) == 0) {
      stop = stop->nextInFocusChain();
      if (stop && stop != zone && !zone->isAncestorOf(stop)) stop = nullptr;
    }
    if (stop && stop->isVisible()) return stop->setFocus(Qt::TabFocusReason);
  }
}

}  // namespace sorvan::views
