// A component in each of its states on a sheet: put into the state as a person would put it there, by the pointer, a
// press or the keyboard.
#pragma once

#include <QImage>
#include <QWidget>

#include <functional>
#include <vector>

namespace sorvan::views {

struct Component {
  QString name;
  std::function<QWidget*()> make;
  // What is hovered, pressed, disabled or holds the keyboard; empty: the whole.
  std::function<QWidget*(QWidget& whole)> part = {};
};

struct State {
  QString name;
  // Puts a component there that is laid out but not shown; may be empty.
  std::function<void(QWidget& whole, QWidget& part)> enter = {};
  // Only one widget holds the keyboard at a time, so this state is shown as a picture that was taken while it did.
  bool keyboard = false;
};

State normalState();
State hoverState();
State pressedState();
State focusState();
State disabledState();
// The same at a point of a painted component, for instance on one of its rows.
State hoverState(const QString& name, QPoint at);
State pressedState(const QString& name, QPoint at);
// Normal, hover, pressed, focus, disabled.
std::vector<State> buttonStates();

// One component in one state on the ground of the sheet, with room for the ring of the keyboard around it.
class Sample final : public QWidget {
  Q_OBJECT

 public:
  Sample(const Component& component, const State& state);

  const QString& component() const { return component_; }
  const QString& state() const { return state_; }
  // The class of what was put into the state, without its namespaces.
  const QString& kind() const { return kind_; }

 private:
  QString component_;
  QString state_;
  QString kind_;
};

// The pointer on this point of it, and a press there that lasts.
void hoverAt(QWidget& part, QPoint at);
void pressAt(QWidget& part, QPoint at);

// Rows are components, columns are states.
QWidget* stateGrid(const std::vector<Component>& rows, const std::vector<State>& columns);
// For what is wide, or has states of its own: each state with its name above it, so many in a row.
QWidget* stateFlow(const Component& component, const std::vector<State>& states, int perRow);

// The class of an object as it was made, without its namespaces.
QString className(const QObject& object);

// The pairs of states of one component that cannot be told apart on this sheet, one a line. The sheet need not be shown.
QString statesThatLookTheSame(const QWidget& sheet);

}  // namespace sorvan::views
