#include "shell/views/mark_layer.h"

#include <QPainter>

#include "shell/views/asset_view.h"
#include "shell/views/mark_layer_accessible.h"
#include "shell/views/marks_painting.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {

namespace {
constexpr double kHandle = 7;
constexpr double kLabelGap = 4;
constexpr double kReadoutGap = 26;
}  // namespace

MarkLayer::MarkLayer(MarkingPresenter& marking, PictureCanvas& canvas)
    : QWidget(&canvas), marking_(marking), canvas_(canvas) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAccessibleName(texts::markedAreas());
  setAccessibleDescription(texts::markHint());
  setCursor(Qt::CrossCursor);
  connect(&marking_, &MarkingPresenter::changed, this, qOverload<>(&QWidget::update));
  connect(&canvas_, &PictureCanvas::viewChanged, this, &MarkLayer::followPicture);
  hide();
  describeMarkLayer(*this);
}

void MarkLayer::followPicture() {
  setGeometry(canvas_.rect());
  picture_ = canvas_.picturePlace();
  update();
}

QRectF MarkLayer::toLayer(const QRectF& fractions) const {
  return {picture_.x() + fractions.x() * picture_.width(), picture_.y() + fractions.y() * picture_.height(),
          fractions.width() * picture_.width(), fractions.height() * picture_.height()};
}

QPointF MarkLayer::toPicture(QPointF point) const {
  if (picture_.isEmpty()) return {};
  return {(point.x() - picture_.x()) / picture_.width(), (point.y() - picture_.y()) / picture_.height()};
}

QRectF MarkLayer::placeOf(int index) const { return toLayer(marking_.marks().areaOf(index)); }

void MarkLayer::paintEvent(QPaintEvent*) {
  if (!marking_.isMarking() || picture_.isEmpty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const MarksEditor& marks = marking_.marks();
  const bool hidesOne = grip_.kind == Grip::Kind::move || grip_.kind == Grip::Kind::resize;
  for (int index = 0; index < marks.count(); ++index) {
    if (hidesOne && index == grip_.index) continue;
    const QRectF area = placeOf(index);
    if (!area.adjusted(-4, -4, 4, 4).intersects(QRectF(rect()))) continue;
    paintMarkBox(painter, area);
    paintMarkNumber(painter, area, index + 1);
  }
  paintNotes(painter);
  if (!hidesOne && marks.selected() >= 0) paintHandles(painter, placeOf(marks.selected()));
  if (grip_.kind != Grip::Kind::none && grip_.kind != Grip::Kind::pan) paintDrag(painter);
}

void MarkLayer::paintNotes(QPainter& painter) const {
  const MarksEditor& marks = marking_.marks();
  const QFont font = fontFor(Type::small, Weight::semibold);
  for (int index = 0; index < marks.count(); ++index) {
    const QString note = marks.boxes()[static_cast<size_t>(index)].note.simplified();
    const QRectF area = placeOf(index);
    if (note.isEmpty() || !area.intersects(QRectF(rect()))) continue;
    paintMarkLabel(painter, area.bottomLeft() + QPointF(0, kLabelGap), note, font, QRectF(rect()));
  }
}

void MarkLayer::paintHandles(QPainter& painter, const QRectF& area) const {
  painter.save();
  painter.setPen(QPen(colors().mark, 1));
  painter.setBrush(Qt::white);
  for (const double x : {area.left(), area.center().x(), area.right()})
    for (const double y : {area.top(), area.center().y(), area.bottom()}) {
      if (x == area.center().x() && y == area.center().y()) continue;
      painter.drawRect(QRectF(std::round(x) - kHandle / 2, std::round(y) - kHandle / 2, kHandle, kHandle));
    }
  painter.restore();
}

void MarkLayer::paintDrag(QPainter& painter) const {
  const QRectF area = draggedArea();
  if (area.isEmpty()) return;
  const QRectF place = toLayer(area);
  QColor wash = colors().mark;
  wash.setAlphaF(0.10F);
  painter.fillRect(place, wash);
  paintMarkBox(painter, place, true);
  const int number = grip_.kind == Grip::Kind::draw ? marking_.marks().count() + 1 : grip_.index + 1;
  paintMarkNumber(painter, place, number);
  const QSize picture = marking_.marks().picture();
  const QString size = texts::pixelSize(qRound(area.width() * picture.width()), qRound(area.height() * picture.height()));
  paintMarkLabel(painter, place.topLeft() - QPointF(0, kReadoutGap), size, fontFor(Type::mono), QRectF(rect()));
}

}  // namespace sorvan::views
