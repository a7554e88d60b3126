#include "shell/views/toolbar_view.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QSlider>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "shell/views/segmented_control.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kLeft = 16;
constexpr int kLeftOfBack = 9;  // its arrow stands where a title begins
constexpr int kCountGap = 8;  // before the tabs, beside the space of the row
constexpr int kSearchWidth = 190;
constexpr std::chrono::milliseconds kTypingPause{120};
constexpr int kTabsAt = 3;  // after Back, the title and the count
constexpr int kSliderFrom = 1320;  // narrower windows hide the slider; keys still change the size

Segment segmentOf(ModeKind tab) {
  switch (tab) {
    case ModeKind::contactSheets:
      return {titleOf(tab), u"grid-2x2"_s, {}};
    case ModeKind::sequences:
      return {titleOf(tab), u"film"_s, {}};
    case ModeKind::projectReferences:
      return {titleOf(tab), u"at-sign"_s, {}};
    default:
      return {titleOf(tab), u"layout-grid"_s, {}};
  }
}
}  // namespace

ToolbarView::ToolbarView(QWidget* parent)
    : QWidget(parent),
      back_(new Button({}, ButtonVariant::quiet)),
      title_(new ElidedLabel(Type::title, &Colors::textPrimary, Qt::ElideMiddle)),
      count_(new Label({}, Type::small, &Colors::textTertiary)),
      previous_(new IconButton(u"chevron-left"_s, texts::previousItem(), u"Left"_s)),
      next_(new IconButton(u"chevron-right"_s, texts::nextItem(), u"Right"_s)),
      sort_(new Button({}, ButtonVariant::quiet)),
      search_(new TextField(texts::searchMedia(), texts::searchMedia())),
      filters_(new IconButton(u"list-filter"_s, texts::filters(), u"Ctrl+Shift+F"_s)),
      sizes_(new QWidget),
      slider_(new QSlider(Qt::Horizontal)),
      inspector_(new IconButton(u"panel-right"_s, texts::inspectorToggle(), u"F8"_s)) {
  setAccessibleName(texts::toolbarZone());
  setFixedHeight(metrics().toolbar);
  back_->setIconName(u"chevron-left"_s);
  back_->setSnug();
  inspector_->setCheckable(true);
  slider_->setRange(metrics().galleryRowHeightMin, metrics().galleryRowHeightMax);
  slider_->setFixedWidth(60);
  slider_->setAccessibleName(texts::thumbnailSize());
  slider_->setToolTip(texts::thumbnailSize());
  auto* sizes = new QHBoxLayout(sizes_);
  sizes->setContentsMargins(0, 0, 2, 0);
  sizes->setSpacing(6);
  sizes->addWidget(new IconView(u"image"_s, 12, &Colors::textTertiary));
  sizes->addWidget(slider_);
  sizes->addWidget(new IconView(u"image"_s, 16, &Colors::textTertiary));
  auto* row = new QHBoxLayout(this);
  row_ = row;
  row->setContentsMargins(kLeft, 0, 12, 1);
  row->setSpacing(8);
  row->addWidget(back_);
  row->addWidget(title_);
  row->addWidget(count_);
  count_->setContentsMargins(0, 0, kCountGap, 0);
  row->addStretch(1);
  row->addWidget(previous_);
  row->addWidget(next_);
  row->addWidget(sizes_);
  row->addWidget(sort_);
  row->addWidget(search_);
  row->addWidget(filters_);
  row->addWidget(inspector_);
  sort_->setIconName(u"arrow-down-wide-narrow"_s);
  search_->setIconName(u"search"_s);
  search_->setKeyHint(u"Ctrl F"_s);
  search_->setFixedWidth(kSearchWidth);
  filters_->setCheckable(true);
  typing_.setSingleShot(true);
  typing_.setInterval(kTypingPause);
  connect(&typing_, &QTimer::timeout, this, [this] { Q_EMIT searchChosen(search_->text()); });
  connect(search_, &TextField::textEdited, &typing_, qOverload<>(&QTimer::start));
  connect(search_, &TextField::returnPressed, this, [this] {
    typing_.stop();
    Q_EMIT searchChosen(search_->text());
    Q_EMIT searchLeft();
  });
  connect(search_, &TextField::escapePressed, this, [this] {
    typing_.stop();
    search_->clear();
    Q_EMIT searchChosen({});
    Q_EMIT searchLeft();
  });
  connect(sort_, &Button::clicked, this,
          [this] { Q_EMIT sortPressed(sort_->mapToGlobal(QPoint(0, sort_->height() + 4))); });
  connect(filters_, &IconButton::clicked, this, &ToolbarView::filtersToggled);
  connect(back_, &Button::clicked, this, &ToolbarView::backPressed);
  connect(slider_, &QSlider::valueChanged, this, &ToolbarView::rowHeightChosen);
  connect(inspector_, &IconButton::clicked, this, &ToolbarView::inspectorToggled);
  connect(previous_, &IconButton::clicked, this, [this] { Q_EMIT stepped(-1); });
  connect(next_, &IconButton::clicked, this, [this] { Q_EMIT stepped(+1); });
  setSort(texts::newest());
  setBack({});
  setSteps(false, false, false);
}

void ToolbarView::setTitle(const QString& title, const QString& countText) {
  title_->setText(title);
  count_->setText(countText);
}

void ToolbarView::setBack(const QString& title, const QString& keys) {
  back_->setText(title);
  back_->setAccessibleName(title.isEmpty() ? texts::back() : texts::backTo(title));
  back_->setToolTip(texts::back() + u"  "_s + (keys.isEmpty() ? u"Alt+Left"_s : keys));
  back_->setAccessibleDescription(keys);
  back_->setVisible(!title.isEmpty());
  row_->setContentsMargins(title.isEmpty() ? kLeft : kLeftOfBack, 0, 12, 1);
}

void ToolbarView::setTabs(const std::vector<ModeKind>& tabs, ModeKind current) {
  if (tabKinds_ == tabs) return placeTabs(current);
  tabKinds_ = tabs;
  delete std::exchange(tabs_, nullptr);
  if (tabs.size() < 2) return;
  std::vector<Segment> segments;
  for (const ModeKind tab : tabs) segments.push_back(segmentOf(tab));
  tabs_ = new SegmentedControl(texts::viewsOfLocation(), segments, ControlSize::regular, this);
  tabs_->setSpringLoaded();
  row_->insertWidget(kTabsAt, tabs_);
  // The tabs may be made anew by what a press on one of them leads to.
  connect(
      tabs_, &SegmentedControl::chosen, this,
      [this](int index) { Q_EMIT tabChosen(tabKinds_.at(static_cast<std::size_t>(index))); }, Qt::QueuedConnection);
  placeTabs(current);
}

bool ToolbarView::isWalkedThrough() const {
  const auto* tab = qobject_cast<const QAbstractButton*>(QApplication::focusWidget());
  return tabs_ && tab && tabs_->isAncestorOf(tab) && tab->isChecked() && FocusRing::keyboardInUse();
}

void ToolbarView::placeTabs(ModeKind current) {
  const auto at = std::find(tabKinds_.begin(), tabKinds_.end(), current);
  if (!tabs_ || at == tabKinds_.end()) return;
  tabs_->setCurrent(static_cast<int>(at - tabKinds_.begin()));
}

void ToolbarView::addTools(QWidget* tools) {
  row_->insertWidget(row_->indexOf(sizes_), tools);
  tools->hide();
  tools_.push_back(tools);
}

void ToolbarView::setTools(QWidget* tools) {
  for (QWidget* each : tools_) each->setVisible(each == tools);
}

void ToolbarView::setSteps(bool shown, bool previous, bool next) {
  previous_->setVisible(shown);
  next_->setVisible(shown);
  previous_->setEnabled(previous);
  next_->setEnabled(next);
}

void ToolbarView::setSizeSliderShown(bool shown) {
  sizesWanted_ = shown;
  placeSlider();
}

void ToolbarView::setGalleryToolsShown(bool shown) {
  sort_->setVisible(shown);
  search_->setVisible(shown);
  filters_->setVisible(shown);
}

void ToolbarView::setSearch(const QString& text) {
  if (search_->text() != text && !typing_.isActive()) search_->setText(text);
}

void ToolbarView::setSort(const QString& name) {
  sort_->setText(name);
  sort_->setAccessibleName(texts::sortedBy(name));
  sort_->setToolTip(texts::sortedBy(name));
}

void ToolbarView::setFiltersShown(bool shown) { filters_->setChecked(shown); }

void ToolbarView::focusSearch() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void ToolbarView::placeSlider() { sizes_->setVisible(sizesWanted_ && window()->width() >= kSliderFrom); }

void ToolbarView::setRowHeight(int pixels) {
  const QSignalBlocker quiet(slider_);
  slider_->setValue(pixels);
}

void ToolbarView::setInspectorShown(bool shown) { inspector_->setChecked(shown); }
void ToolbarView::setInspectorOffered(bool offered) { inspector_->setVisible(offered); }

void ToolbarView::resizeEvent(QResizeEvent*) { placeSlider(); }

void ToolbarView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(0, height() - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
