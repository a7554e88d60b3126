#include "shell/views/compare_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QSlider>

#include <cmath>

#include "shell/sheet_texts.h"
#include "shell/views/controls.h"
#include "shell/views/focus_ring.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/labels.h"
#include "shell/views/segmented_control.h"
#include "shell/views/sheet_keys.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kGap = 8;
constexpr int kCaption = 42;
constexpr double kZoomStep = 1.25;
constexpr double kPanStep = 48;
constexpr double kDividerStep = 0.02;
constexpr int kGain = 8;
constexpr int kDividerRange = 1000;

// As many columns as show the pictures largest.
int columnsFor(int count, QSize room, QSizeF picture) {
  int best = 1;
  double largest = 0;
  for (int columns = 1; columns <= count; ++columns) {
    const int rows = (count + columns - 1) / columns;
    const QSizeF pane((room.width() - (columns - 1.0) * kGap) / columns,
                      (room.height() - (rows - 1.0) * kGap) / rows - kCaption);
    const double scale = StepView::fitScale(picture, pane);
    if (pane.height() > 0 && scale > largest) {
      largest = scale;
      best = columns;
    }
  }
  return best;
}

// “12.4”, but never “0” for pictures that differ somewhere.
QString percentText(double share) {
  const double percent = 100 * share;
  return QLocale().toString(percent, 'f', percent < 10 ? 2 : 0);
}

}  // namespace

CompareView::CompareView(ThumbnailStore& thumbnails, QWidget* parent) : QWidget(parent), thumbnails_(thumbnails) {
  setFocusPolicy(Qt::StrongFocus);
  setProperty(ownFocusProperty, true);
  pool_.setMaxThreadCount(1);
  head_ = buildHead();
  head_->setParent(this);
  connect(&large_, &LargePictures::arrived, this, [this] {
    refreshDifference();
    refreshHead();
  });
}

CompareView::~CompareView() {
  pool_.clear();
  pool_.waitForDone();
}

QWidget* CompareView::buildHead() {
  auto* head = new QWidget;
  layouts_ = new SegmentedControl(shell::texts::compareLayouts,
                                  {{shell::texts::sideBySide, {}, {}},
                                   {shell::texts::oneAtATime, {}, {}},
                                   {shell::texts::divider, {}, {}},
                                   {shell::texts::difference, {}, {}}},
                                  ControlSize::compact);
  dividerSlider_ = new QSlider(Qt::Horizontal);
  dividerSlider_->setAccessibleName(shell::texts::divider);
  dividerSlider_->setRange(0, kDividerRange);
  dividerSlider_->setSingleStep(qRound(kDividerStep * kDividerRange));
  dividerSlider_->setFixedWidth(140);
  amplify_ = new Button(shell::texts::amplify, ButtonVariant::secondary);
  amplify_->setControlSize(ControlSize::compact);
  amplify_->setCheckable(true);
  amplify_->setToolTip(shell::texts::amplifyHint);
  facts_ = new ElidedLabel(Type::small, &Colors::textSecondary, Qt::ElideRight);
  percent_ = new Label({}, Type::mono, &Colors::textSecondary);
  percent_->setMinimumWidth(52);
  percent_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* out = new IconButton(u"minus"_s, shell::texts::zoomOut, u"−"_s);
  auto* in = new IconButton(u"plus"_s, shell::texts::zoomIn, u"+"_s);
  fit_ = new Button(shell::texts::fitPictures, ButtonVariant::quiet);
  full_ = new Button(shell::texts::fullSize, ButtonVariant::quiet);
  auto* close = new IconButton(u"x"_s, shell::texts::closeCompare, u"Esc"_s);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(16, 0, 10, 0);
  row->setSpacing(8);
  row->addWidget(layouts_);
  row->addWidget(dividerSlider_);
  row->addWidget(amplify_);
  row->addWidget(facts_, 1);
  row->addWidget(out);
  row->addWidget(percent_);
  row->addWidget(in);
  for (Button* button : {fit_, full_}) {
    button->setControlSize(ControlSize::compact);
    row->addWidget(button);
  }
  row->addWidget(close);
  connect(layouts_, &SegmentedControl::chosen, this,
          [this](int index) { setCompareLayout(static_cast<CompareLayout>(index)); });
  connect(dividerSlider_, &QSlider::valueChanged, this,
          [this](int value) { setDivider(static_cast<double>(value) / kDividerRange); });
  connect(amplify_, &QAbstractButton::toggled, this, [this](bool on) {
    gain_ = on ? kGain : 1;
    refreshDifference();
  });
  connect(out, &QAbstractButton::clicked, this, [this] { zoomBy(1 / kZoomStep); });
  connect(in, &QAbstractButton::clicked, this, [this] { zoomBy(kZoomStep); });
  connect(fit_, &QAbstractButton::clicked, this, [this] { applyView({}); });
  connect(full_, &QAbstractButton::clicked, this, [this] {
    if (measure()) applyView(view_.atFullSize(measure()->pictureSize(), measure()->size(), devicePixelRatioF()));
  });
  connect(close, &QAbstractButton::clicked, this, &CompareView::closeRequested);
  return head;
}

CompareView::Pane CompareView::makePane(int index) {
  Pane pane;
  pane.frame = new QWidget(this);
  pane.canvas = new CompareCanvas({large_, thumbnails_});
  pane.title = new ElidedLabel(Type::body, &Colors::textPrimary, Qt::ElideRight);
  pane.title->setWeight(Weight::medium);
  pane.detail = new ElidedLabel(Type::small, &Colors::textTertiary, Qt::ElideMiddle);
  pane.stars = new StarRow;
  pane.heart = new HeartButton;
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  words->addWidget(pane.title);
  words->addWidget(pane.detail);
  auto* caption = new QHBoxLayout;
  caption->setContentsMargins(2, 4, 2, 0);
  caption->addLayout(words, 1);
  caption->addWidget(pane.stars);
  caption->addWidget(pane.heart);
  auto* column = new QVBoxLayout(pane.frame);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(pane.canvas, 1);
  column->addLayout(caption);
  const auto item = [this, index] { return isOverlaid() ? chosen() : pictures_.at(static_cast<size_t>(index)).id; };
  connect(pane.canvas, &QAbstractButton::pressed, this, [this, index] { choose(isOverlaid() ? chosen_ : index); });
  connect(pane.canvas, &QAbstractButton::clicked, this, [this] { fillPanes(); });
  connect(pane.canvas, &CompareCanvas::zoomRequested, this, [this, canvas = pane.canvas](QPointF point, double factor) {
    applyView(view_.zoomedAt(point, factor, canvas->pictureSize(), canvas->size()));
  });
  connect(pane.canvas, &CompareCanvas::panRequested, this, [this, canvas = pane.canvas](QPointF pixels) {
    applyView(view_.pannedBy(pixels, canvas->pictureSize(), canvas->size()));
  });
  connect(pane.canvas, &CompareCanvas::dividerMoved, this, &CompareView::setDivider);
  connect(pane.canvas, &CompareCanvas::fitToggled, this, &CompareView::toggleFit);
  connect(pane.stars, &StarRow::chosen, this, [this, item](int stars) { Q_EMIT ratingChosen(item(), stars); });
  connect(pane.heart, &QAbstractButton::clicked, this, [this, item] { Q_EMIT favoriteToggled(item()); });
  return pane;
}

void CompareView::show(const std::vector<ComparedPicture>& pictures) {
  const auto sameItems = [&] {
    return std::equal(pictures.begin(), pictures.end(), pictures_.begin(), pictures_.end(),
                      [](const ComparedPicture& left, const ComparedPicture& right) { return left.id == right.id; });
  };
  const bool same = sameItems();
  pictures_ = pictures;
  QStringList paths;
  for (const ComparedPicture& picture : pictures_) paths.append(picture.path);
  large_.want(paths);
  if (!same) {
    view_ = {};
    layout_ = CompareLayout::sideBySide;
    chosen_ = 0;
    over_ = 1;
    setDivider(0.5);
    difference_ = {};
    differenceOf_.clear();
    differing_.reset();
    while (panes_.size() < pictures_.size()) panes_.push_back(makePane(static_cast<int>(panes_.size())));
    while (panes_.size() > pictures_.size()) {
      panes_.back().frame->deleteLater();
      panes_.back().frame->hide();
      panes_.pop_back();
    }
  }
  setAccessibleName(shell::texts::compareCount(static_cast<qsizetype>(pictures_.size())));
  setAccessibleDescription(shell::texts::compareHint(static_cast<qsizetype>(pictures_.size())));
  fillPanes();
  arrange();
  if (!same && !pictures_.empty()) Q_EMIT chosenChanged(chosen());
}

// Which picture each pane shows, and what lies over it.
void CompareView::fillPanes() {
  for (size_t number = 0; number < panes_.size(); ++number) {
    const Pane& pane = panes_[number];
    const ComparedPicture& picture = pictures_[number];
    pane.canvas->setPicture(picture, static_cast<int>(number) + 1);
    pane.canvas->setSecond(layout_ == CompareLayout::divider && number == 0 ? std::optional(overFirst())
                                                                            : std::nullopt);
    pane.canvas->setDifference(
        layout_ == CompareLayout::difference && number == 0 ? std::optional(difference_) : std::nullopt,
        differenceText());
    pane.canvas->setDivider(divider_);
    pane.canvas->setView(view_);
    pane.canvas->setChecked(static_cast<int>(number) == chosen_);
    pane.canvas->setAlone(layout_ != CompareLayout::sideBySide);
    // What lies over the other is told of and marked by what is chosen.
    const ComparedPicture& told = isOverlaid() ? pictures_[static_cast<size_t>(chosen_)] : picture;
    pane.title->setText(told.title);
    pane.detail->setText(told.detail);
    pane.stars->setStars(told.rating);
    pane.heart->setChecked(told.favorite);
  }
  refreshHead();
}

// What stands in the difference's place until it is there, or because it cannot be.
QString CompareView::differenceText() const {
  const bool missing = large_.isMissing(pictures_[0].path) || large_.isMissing(overFirst().path);
  return missing ? shell::texts::unreadablePicture : shell::texts::computingDifference;
}

void CompareView::arrange() {
  const QRect room(kGap, metrics().filterRow, width() - 2 * kGap, height() - metrics().filterRow - kGap);
  head_->setGeometry(0, 0, width(), metrics().filterRow);
  const int count = static_cast<int>(panes_.size());
  const bool all = layout_ == CompareLayout::sideBySide;
  columns_ = all && measure() ? columnsFor(count, room.size(), measure()->pictureSize()) : 1;
  const int columns = columns_;
  const int rows = all ? (count + columns - 1) / std::max(1, columns) : 1;
  const int shown = isOverlaid() ? 0 : chosen_;
  for (int number = 0; number < count; ++number) {
    QWidget* frame = panes_[static_cast<size_t>(number)].frame;
    frame->setVisible(all || number == shown);
    const int column = all ? number % columns : 0;
    const int row = all ? number / columns : 0;
    const int width = (room.width() - (columns - 1) * kGap) / columns;
    const int height = (room.height() - (rows - 1) * kGap) / std::max(1, rows);
    frame->setGeometry(room.left() + column * (width + kGap), room.top() + row * (height + kGap), width, height);
    if (frame->layout()) frame->layout()->activate();
  }
  // The size that fits is another one now.
  refreshHead();
}

void CompareView::resizeEvent(QResizeEvent*) { arrange(); }

void CompareView::setCompareLayout(CompareLayout layout) {
  const bool needsTwo = layout == CompareLayout::divider || layout == CompareLayout::difference;
  if (needsTwo && pictures_.size() < fewestCompared) layout = CompareLayout::sideBySide;
  layout_ = layout;
  fillPanes();
  arrange();
  refreshDifference();
  // The keyboard stays with the picture, whose keys flip and move; who walks the choices by key keeps it there.
  if (!head_->isAncestorOf(focusWidget()) || !FocusRing::keyboardInUse()) focusPicture();
}

void CompareView::focusPicture() {
  if (measure()) panes_[static_cast<size_t>(isOverlaid() ? 0 : chosen_)].canvas->setFocus();
}

QUuid CompareView::chosen() const {
  return chosen_ < static_cast<int>(pictures_.size()) ? pictures_[static_cast<size_t>(chosen_)].id : QUuid();
}

void CompareView::choose(int index) {
  if (index < 0 || index >= static_cast<int>(pictures_.size())) return;
  const bool another = chosen_ != index;
  chosen_ = index;
  if (index > 0) over_ = index;
  fillPanes();
  arrange();
  refreshDifference();
  if (!isOverlaid()) panes_[static_cast<size_t>(index)].canvas->setFocus(Qt::ShortcutFocusReason);
  if (another) Q_EMIT chosenChanged(chosen());
}

std::vector<CompareCanvas*> CompareView::canvases() const {
  std::vector<CompareCanvas*> shown;
  for (const Pane& pane : panes_)
    if (!pane.frame->isHidden()) shown.push_back(pane.canvas);
  return shown;
}

CompareCanvas* CompareView::measure() const {
  if (panes_.empty()) return nullptr;
  return panes_[static_cast<size_t>(isOverlaid() ? 0 : chosen_)].canvas;
}

void CompareView::applyView(const StepView& view) {
  view_ = view;
  for (const Pane& pane : panes_) pane.canvas->setView(view_);
  refreshHead();
}

void CompareView::toggleFit() {
  const CompareCanvas* canvas = measure();
  if (!canvas) return;
  applyView(view_.isFitted() ? view_.atFullSize(canvas->pictureSize(), canvas->size(), devicePixelRatioF())
                             : StepView{});
}

void CompareView::zoomBy(double factor) {
  const CompareCanvas* canvas = measure();
  if (!canvas) return;
  applyView(view_.zoomedAt(QRectF(canvas->rect()).center(), factor, canvas->pictureSize(), canvas->size()));
}

void CompareView::setDivider(double share) {
  divider_ = std::clamp(share, 0.0, 1.0);
  if (!panes_.empty()) panes_.front().canvas->setDivider(divider_);
  const QSignalBlocker quiet(dividerSlider_);
  dividerSlider_->setValue(qRound(divider_ * kDividerRange));
}

void CompareView::refreshHead() {
  layouts_->setCurrent(static_cast<int>(layout_));
  dividerSlider_->setVisible(layout_ == CompareLayout::divider);
  amplify_->setVisible(layout_ == CompareLayout::difference);
  facts_->setText(isOverlaid() ? differenceFacts() : QString());
  if (const CompareCanvas* canvas = measure())
    percent_->setText(QStringLiteral("%1 %").arg(
        std::lround(view_.percent(canvas->pictureSize(), canvas->size(), devicePixelRatioF()))));
}

// Which two of several pictures are compared, and by how much they differ.
QString CompareView::differenceFacts() const {
  QStringList facts;
  if (pictures_.size() > fewestCompared) facts << shell::texts::comparedPair(1, over_ + 1);
  if (layout_ == CompareLayout::difference && differing_)
    facts << (*differing_ == 0 ? shell::texts::samePictures : shell::texts::differsBy(percentText(*differing_)));
  return facts.join(u" · "_s);
}

// Worked out on the pool, from the pictures as they were decoded.
void CompareView::refreshDifference() {
  if (layout_ != CompareLayout::difference || pictures_.size() < fewestCompared) return;
  const QString pair = pictures_[0].path + u'\n' + overFirst().path + u'\n';
  const QString wanted = pair + QString::number(gain_);
  if (wanted == differenceOf_) return fillPanes();
  if (!differenceOf_.startsWith(pair)) {
    difference_ = {};
    differing_.reset();
    differenceOf_.clear();
    ++asking_;
  }
  const QImage first = large_.picture(pictures_[0].path);
  const QImage second = large_.picture(overFirst().path);
  if (first.isNull() || second.isNull()) return fillPanes();
  differenceOf_ = wanted;
  fillPanes();
  pool_.clear();
  pool_.start([this, asking = ++asking_, first, second, gain = gain_] {
    const PictureDifference difference = views::differenceOf(first, second, gain);
    QMetaObject::invokeMethod(
        this, [this, asking, difference] { takeDifference(asking, difference); }, Qt::QueuedConnection);
  });
}

void CompareView::takeDifference(int asking, const PictureDifference& difference) {
  if (asking != asking_) return;
  difference_ = difference.picture;
  differing_ = difference.differing;
  fillPanes();
}

// Plain arrows choose; with Shift they move the pictures. While one lies over the other they move the divider.
bool CompareView::moves(QKeyEvent& event) {
  const int key = event.key();
  const QPointF way = key == Qt::Key_Left    ? QPointF(-1, 0)
                      : key == Qt::Key_Right ? QPointF(1, 0)
                      : key == Qt::Key_Up    ? QPointF(0, -1)
                      : key == Qt::Key_Down  ? QPointF(0, 1)
                                             : QPointF();
  const CompareCanvas* canvas = measure();
  if (way.isNull() || !canvas) return false;
  if (event.modifiers() == Qt::ShiftModifier) {
    applyView(view_.pannedBy(-kPanStep * way, canvas->pictureSize(), canvas->size()));
  } else if (layout_ == CompareLayout::divider && way.x() != 0) {
    setDivider(divider_ + kDividerStep * way.x());
  } else if (event.modifiers() == Qt::NoModifier && layout_ != CompareLayout::divider) {
    choose(chosen_ + static_cast<int>(way.x()) + columns_ * static_cast<int>(way.y()));
  }
  return true;
}

bool CompareView::zooms(int key) {
  if (key == Qt::Key_Z) return toggleFit(), true;
  if (key == Qt::Key_Plus || key == Qt::Key_Equal) return zoomBy(kZoomStep), true;
  if (key == Qt::Key_Minus) return zoomBy(1 / kZoomStep), true;
  return false;
}

void CompareView::keyPressEvent(QKeyEvent* event) {
  const int place = placeFor(*event);
  if (place >= 0) return choose(place);
  if (moves(*event) || (event->modifiers() == Qt::NoModifier && zooms(event->key()))) return;
  if (event->modifiers() == Qt::ShiftModifier && event->key() == Qt::Key_Plus) return zoomBy(kZoomStep);
  switch (event->key()) {
    case Qt::Key_Escape:
      Q_EMIT closeRequested();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT opened(chosen());
      return;
    case Qt::Key_C:
      if (event->modifiers() == Qt::NoModifier) return Q_EMIT closeRequested();
      break;
    case Qt::Key_Space:
      // Back and forth in the same place shows the smallest change.
      if (layout_ == CompareLayout::oneAtATime) choose((chosen_ + 1) % static_cast<int>(pictures_.size()));
      return;
    default:
      break;
  }
  if (const auto action = itemActionFor(*event)) {
    Q_EMIT actionRequested(*action);
    return;
  }
  QWidget::keyPressEvent(event);
}

void CompareView::focusInEvent(QFocusEvent*) {
  if (CompareCanvas* canvas = measure()) canvas->setFocus(Qt::TabFocusReason);
}

void CompareView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceCanvas);
  painter.fillRect(QRect(0, metrics().filterRow - 1, width(), 1), colors().lineSubtle);
}

}  // namespace sorvan::views
