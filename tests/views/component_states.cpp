#include "views/component_states.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEnterEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <cxxabi.h>

#include <map>

#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRingRoom = 5;

QWidget& whereEventsGo(QWidget& widget) {
  auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  return area ? *area->viewport() : widget;
}

void send(QWidget& target, QEvent::Type type, QPoint at, Qt::MouseButton button) {
  const Qt::MouseButtons held = button == Qt::NoButton ? Qt::MouseButtons() : Qt::MouseButtons(button);
  QMouseEvent event(type, at, target.mapToGlobal(at), button, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &event);
}

}  // namespace

void hoverAt(QWidget& part, QPoint at) {
  QWidget& target = whereEventsGo(part);
  part.setAttribute(Qt::WA_UnderMouse);
  target.setAttribute(Qt::WA_UnderMouse);
  QEnterEvent enter(at, at, target.mapToGlobal(at));
  QCoreApplication::sendEvent(&target, &enter);
  for (const QEvent::Type type : {QEvent::HoverEnter, QEvent::HoverMove}) {
    QHoverEvent over(type, at, target.mapToGlobal(at), QPointF(-1, -1));
    QCoreApplication::sendEvent(&target, &over);
  }
  send(target, QEvent::MouseMove, at, Qt::NoButton);
}

void pressAt(QWidget& part, QPoint at) {
  hoverAt(part, at);
  send(whereEventsGo(part), QEvent::MouseButtonPress, at, Qt::LeftButton);
}

namespace {

// Holds one component on the sheet's ground.
class Ground final : public Surface {
 public:
  explicit Ground(QWidget* inner) : Surface(&Colors::surfaceChrome) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(kRingRoom, kRingRoom, kRingRoom, kRingRoom);
    box->addWidget(inner);
    QSize size = box->sizeHint();
    if (box->hasHeightForWidth()) size.setHeight(box->heightForWidth(size.width()));
    setFixedSize(size);
    grab();  // lays out what is inside before it is put into its state
  }
};

// The component with the keyboard in it, as its window would show it: reached by a key, with the window's ring.
QPixmap withKeyboard(Ground& ground, QWidget& part, const std::function<void()>& enter) {
  ground.setAttribute(Qt::WA_DontShowOnScreen);
  new FocusRing(&ground);
  ground.show();
  QApplication::setActiveWindow(&ground);
  QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
  QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier);
  QObject nobody;  // the ring sees every key of the program; this one shall move nothing
  QCoreApplication::sendEvent(&nobody, &tab);
  part.setFocus(Qt::TabFocusReason);
  if (enter) enter();
  QCoreApplication::sendEvent(&nobody, &release);
  QCoreApplication::sendPostedEvents();
  const QPixmap picture = ground.grab();
  // Whatever is shown next is not worked with by keys.
  QMouseEvent pressed(QEvent::MouseButtonPress, QPointF(), QPointF(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&nobody, &pressed);
  return picture;
}

QLabel* pictureOf(const QPixmap& picture) {
  auto* label = new QLabel;
  label->setPixmap(picture);
  label->setFixedSize(picture.size() / picture.devicePixelRatio());
  return label;
}

}  // namespace

State normalState() { return {u"Normal"_s}; }

State hoverState() {
  return {u"Hover"_s, [](QWidget&, QWidget& part) { hoverAt(part, part.rect().center()); }};
}

State pressedState() {
  return {u"Pressed"_s, [](QWidget&, QWidget& part) { pressAt(part, part.rect().center()); }};
}

State focusState() { return {u"Focus"_s, {}, true}; }

State disabledState() {
  return {u"Disabled"_s, [](QWidget&, QWidget& part) { part.setEnabled(false); }};
}

State hoverState(const QString& name, QPoint at) {
  return {name, [at](QWidget&, QWidget& part) { hoverAt(part, at); }};
}

State pressedState(const QString& name, QPoint at) {
  return {name, [at](QWidget&, QWidget& part) { pressAt(part, at); }};
}

std::vector<State> buttonStates() {
  return {normalState(), hoverState(), pressedState(), focusState(), disabledState()};
}

Sample::Sample(const Component& component, const State& state) : component_(component.name), state_(state.name) {
  QWidget* whole = component.make();
  auto ground = std::make_unique<Ground>(whole);
  QWidget* part = component.part ? component.part(*whole) : whole;
  kind_ = className(*part);
  const auto enter = [&] {
    if (state.enter) state.enter(*whole, *part);
  };
  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  if (state.keyboard) {
    box->addWidget(pictureOf(withKeyboard(*ground, *part, enter)));
  } else {
    enter();
    box->addWidget(ground.release());
  }
}

QWidget* stateGrid(const std::vector<Component>& rows, const std::vector<State>& columns) {
  auto* holder = new QWidget;
  auto* grid = new QGridLayout(holder);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(14);
  grid->setVerticalSpacing(0);
  int column = 1;
  for (const State& state : columns) grid->addWidget(indented(caption(state.name), kRingRoom), 0, column++);
  grid->setColumnStretch(column, 1);
  int row = 1;
  for (const Component& component : rows) {
    grid->addWidget(new Label(component.name, Type::small, &Colors::textSecondary), row, 0);
    column = 1;
    for (const State& state : columns) grid->addWidget(new Sample(component, state), row, column++, Qt::AlignLeft);
    ++row;
  }
  return holder;
}

QWidget* stateFlow(const Component& component, const std::vector<State>& states, int perRow) {
  auto* holder = new QWidget;
  auto* grid = new QGridLayout(holder);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(8);
  grid->setColumnStretch(perRow, 1);
  int place = 0;
  for (const State& state : states) {
    auto* box = new QVBoxLayout;
    box->setSpacing(1);
    box->addWidget(indented(caption(state.name), kRingRoom));
    box->addWidget(new Sample(component, state), 0, Qt::AlignLeft);
    box->addStretch(1);
    grid->addLayout(box, place / perRow, place % perRow, Qt::AlignTop | Qt::AlignLeft);
    ++place;
  }
  return holder;
}

QString className(const QObject& object) {
  int status = 0;
  char* text = abi::__cxa_demangle(typeid(object).name(), nullptr, nullptr, &status);
  const QString name = QString::fromUtf8(text);
  std::free(text);
  return name.section(u"::"_s, -1);
}

QString statesThatLookTheSame(const QWidget& sheet) {
  std::map<QString, std::vector<std::pair<QString, QImage>>> pictures;
  for (Sample* sample : sheet.findChildren<Sample*>())
    pictures[sample->component()].emplace_back(sample->state(), sample->grab().toImage());
  QString same;
  for (const auto& [component, states] : pictures)
    for (size_t first = 0; first < states.size(); ++first)
      for (size_t second = first + 1; second < states.size(); ++second)
        if (states[first].second == states[second].second)
          same += u"%1: “%2” looks like “%3”\n"_s.arg(component, states[second].first, states[first].first);
  return same;
}

}  // namespace sorvan::views
