#include "shell/views/segmented_control.h"

#include <QButtonGroup>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPainter>

#include "shell/item_transfer.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/touch.h"

namespace sorvan::views {

namespace {

constexpr std::chrono::milliseconds kRest{500};  // of a drag, before a segment opens

class SegmentButton final : public QAbstractButton {
 public:
  SegmentButton(const Segment& segment, ControlSize size, QWidget* parent)
      : QAbstractButton(parent), iconName_(segment.iconName), small_(size == ControlSize::compact) {
    setText(segment.text);
    setAccessibleName(segment.accessibleName.isEmpty() ? segment.text : segment.accessibleName);
    if (segment.text.isEmpty()) setToolTip(segment.accessibleName);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
  }

  QSize sizeHint() const override {
    const int padding = text().isEmpty() ? 8 : (small_ ? 8 : 11);
    int width = 2 * padding + textWidth(text(), font());
    if (!iconName_.isEmpty()) width += iconSide() + (text().isEmpty() ? 0 : 6);
    return {width, small_ ? 20 : 24};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    const bool dark = Theme::instance().isDark();
    QPainter painter(this);
    if (isChecked())
      paintPanel(painter, rect(), 5, dark ? c.controlFillHover : c.controlFill, dark ? QColor() : c.lineSubtle);
    paintTouch(painter, rect(), 5, *this);
    QColor ink = isChecked() || underMouse() ? c.textPrimary : c.textSecondary;
    if (!isEnabled()) ink = c.textDisabled;
    const int words = textWidth(text(), font());
    const int icon = iconName_.isEmpty() ? 0 : iconSide() + (text().isEmpty() ? 0 : 6);
    int x = (width() - words - icon) / 2;
    if (icon > 0) paintIcon(painter, iconName_, QRectF(x, 0, iconSide(), height()), iconSide(), {ink});
    paintText(painter, QRect(x + icon, 0, words + 1, height()), {text(), font(), ink});
  }

 private:
  QFont font() const { return fontFor(small_ ? Type::small : Type::body, Weight::medium); }
  int iconSide() const { return metrics().iconSmall; }

  QString iconName_;
  bool small_;
};

}  // namespace

SegmentedControl::SegmentedControl(const QString& name, const std::vector<Segment>& segments, ControlSize size,
                                   QWidget* parent)
    : QWidget(parent), group_(new QButtonGroup(this)) {
  setAccessibleName(name);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(3, 3, 3, 3);
  layout->setSpacing(1);
  group_->setExclusive(true);
  for (const Segment& segment : segments) {
    auto* button = new SegmentButton(segment, size, this);
    group_->addButton(button, group_->buttons().size());
    layout->addWidget(button);
  }
  if (!segments.empty()) group_->button(0)->setChecked(true);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  rest_.setSingleShot(true);
  connect(&rest_, &QTimer::timeout, this, [this] {
    if (QAbstractButton* button = group_->button(restsOn_)) button->setChecked(true);
  });
  connect(group_, &QButtonGroup::idToggled, this, [this](int index, bool on) {
    if (on) Q_EMIT chosen(index);
  });
}

void SegmentedControl::restOn(int index) {
  if (index == restsOn_) return;
  restsOn_ = index;
  if (index < 0 || index == current()) return rest_.stop();
  rest_.start(kRest);
}

void SegmentedControl::dragEnterEvent(QDragEnterEvent* event) {
  event->setAccepted(event->mimeData()->hasFormat(itemsFormat));
}

// Nothing is dropped here.
void SegmentedControl::dragMoveEvent(QDragMoveEvent* event) {
  auto* button = qobject_cast<QAbstractButton*>(childAt(event->position().toPoint()));
  restOn(button ? group_->id(button) : -1);
  event->ignore();
}

void SegmentedControl::dragLeaveEvent(QDragLeaveEvent*) { restOn(-1); }

int SegmentedControl::current() const { return group_->checkedId(); }

void SegmentedControl::setCurrent(int index) {
  const QSignalBlocker quiet(group_);
  if (QAbstractButton* button = group_->button(index)) button->setChecked(true);
  update();
}

void SegmentedControl::setStretched(bool stretched) {
  setSizePolicy(stretched ? QSizePolicy::Expanding : QSizePolicy::Maximum, QSizePolicy::Fixed);
  for (QAbstractButton* button : group_->buttons())
    button->setSizePolicy(stretched ? QSizePolicy::Expanding : QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void SegmentedControl::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool dark = Theme::instance().isDark();
  paintPanel(painter, rect(), 7, dark ? c.surfaceInset : c.controlFillPressed, c.lineDefault);
}

}  // namespace sorvan::views
