#include "views/state_stage.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QHoverEvent>
#include <QMimeData>
#include <QPaintEngine>
#include <QPainter>
#include <QUrl>

#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "shell/views/thumbnail_store.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRingRoom = 6;  // around the component, for rings that reach over its edge
constexpr int kLongest = 5'000;  // milliseconds

QWidget& target(QWidget& widget) {
  auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  return area ? *area->viewport() : widget;
}

void sendMouse(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons buttons) {
  QMouseEvent event(type, at, widget.mapToGlobal(at), button, buttons, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

// The next focus counts as the keyboard's, or no longer does.
void tellInput(QWidget& widget, bool keyboard) {
  if (keyboard) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Shift, Qt::ShiftModifier);
    QCoreApplication::sendEvent(&widget, &key);
  } else {
    QWidget nobody;
    sendMouse(nobody, QEvent::MouseButtonPress, {}, Qt::LeftButton, Qt::LeftButton);
  }
}

// Takes no keyboard and no place on the screen, and counts as visible all the same.
class Stage final : public Surface {
 public:
  explicit Stage(QWidget* component) : Surface(&Colors::surfaceChrome) {
    setAttribute(Qt::WA_DontShowOnScreen);
    component->setParent(this);
    component->move(kRingRoom, kRingRoom);
    // A window that stands on the stage is none: its ring would be beside what has the keyboard.
    for (FocusRing* ring : component->findChildren<FocusRing*>()) delete ring;
    new FocusRing(this);
  }
};

// What is disabled need not be read: so does an empty widget tell in its place on the picture.
void markDisabled(const QWidget& stage, StatePicture& picture) {
  for (const QWidget* part : stage.findChildren<QWidget*>()) {
    if (part->isEnabled() || !part->isVisible()) continue;
    auto* mark = new QWidget(&picture);
    mark->setGeometry(QRect(part->mapTo(&stage, QPoint()), part->size()));
    mark->setEnabled(false);
  }
}

void settle(const ThumbnailStore& thumbnails, QWidget& stage) {
  QPixmap unseen = stage.grab();  // asks for what is missing
  awaitThat([&thumbnails] { return thumbnails.pending() == 0; });
  for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
}

}  // namespace

StatePicture::StatePicture(QPixmap shown, QPicture texts) : shown_(std::move(shown)), texts_(std::move(texts)) {
  setFixedSize(shown_.deviceIndependentSize().toSize());
}

void StatePicture::keep(QWidget* whole) {
  whole->setParent(this);
  whole->hide();
}

// Strokes that are played again are not clipped as they were, so only a reader of texts gets them.
void StatePicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool read = painter.paintEngine()->type() == QPaintEngine::User;
  painter.drawPixmap(0, 0, shown_);
  if (read) painter.drawPicture(0, 0, texts_);
}

StatePicture* StateStage::take(QWidget* component, QSize size, const Bring& bring) const {
  Stage stage(component);
  component->resize(size.isEmpty() ? component->sizeHint() : size);
  const auto fit = [&] { stage.resize(component->size() + 2 * QSize(kRingRoom, kRingRoom)); };
  fit();
  stage.show();
  component->show();
  QApplication::setActiveWindow(&stage);
  settle(thumbnails_, stage);
  // A window gives the keyboard to what is first in it.
  if (QWidget* first = stage.focusWidget()) first->clearFocus();
  if (bring) bring(*component);
  settle(thumbnails_, stage);
  fit();
  QPicture texts;
  stage.render(&texts);
  const QPixmap shown = stage.grab();
  auto* taken = new StatePicture(shown, texts);
  markDisabled(stage, *taken);
  taken->keep(component);
  tellInput(stage, false);
  return taken;
}

QWidget* StateStage::states(const QString& component, const std::function<QWidget*()>& make, QSize size,
                            const std::vector<ComponentState>& states, int columns) const {
  auto* holder = new QWidget;
  auto* grid = new QGridLayout(holder);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(4);
  grid->setVerticalSpacing(6);
  int place = 0;
  for (const ComponentState& state : states) {
    StatePicture* picture = take(make(), size, state.bring);
    picture->component = component;
    picture->state = state.name;
    auto* words = new Label(state.name, Type::micro, &Colors::textSecondary);
    words->setIndent(kRingRoom);
    auto* cell = column({picture, words});
    cell->layout()->setSpacing(0);
    grid->addWidget(cell, place / columns, place % columns, Qt::AlignLeft | Qt::AlignTop);
    ++place;
  }
  grid->setColumnStretch(columns, 1);
  return holder;
}

void hover(QWidget& widget, QPointF at) {
  QWidget& under = target(widget);
  under.setAttribute(Qt::WA_UnderMouse);
  QEnterEvent enter(at, at, under.mapToGlobal(at));
  QCoreApplication::sendEvent(&under, &enter);
  QHoverEvent over(QEvent::HoverMove, at, under.mapToGlobal(at), QPointF(-1, -1));
  QCoreApplication::sendEvent(&under, &over);
  sendMouse(under, QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
}

void hoverMiddle(QWidget& widget) { hover(widget, QRectF(target(widget).rect()).center()); }

void drag(QWidget& widget, QPointF from, QPointF to) {
  QWidget& under = target(widget);
  sendMouse(under, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
  sendMouse(under, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
}

void dragFilesOver(QWidget& widget, QPointF at) {
  QWidget& under = target(widget);
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(u"/pictures/boat.png"_s)});
  QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&under, &enter);
  QDragMoveEvent move(at.toPoint(), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&under, &move);
}

void focusByKey(QWidget& widget) {
  tellInput(widget, true);
  widget.setFocus(Qt::TabFocusReason);
}

void press(QWidget& widget, Qt::Key key) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

void awaitThat(const std::function<bool()>& isSo) {
  QElapsedTimer timer;
  timer.start();
  while (!isSo() && timer.elapsed() < kLongest) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

}  // namespace sorvan::views
