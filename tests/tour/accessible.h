// What a screen reader sees of the program: controls found by role and name, with their place on the screen.
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

struct _AtspiAccessible;
using AtspiAccessible = struct _AtspiAccessible;

namespace tour {

struct Control {
  QString role;  // the role's name as the accessibility service tells it, e.g. "push button"
  QString name;
  QString text;  // what a text field holds, else empty
  QRect place;   // in screen pixels
  bool showing = false;
  bool enabled = false;
  bool focused = false;
  bool focusable = false;
  int actions = 0;  // how many things it offers to do
};

// A test on a control, by exact name or by what its name begins with; an empty role matches any.
struct Wanted {
  QString name;
  QString role;
  bool prefix = false;
};

class Accessibility {
 public:
  Accessibility();
  ~Accessibility();
  // Every control of the program that is showing now, in tree order.
  std::vector<Control> controls() const;
  std::optional<Control> find(const Wanted& wanted) const;
  int count(const Wanted& wanted) const;

  // Does what the control offers first, as assistive technology would: press, open, toggle. False when there is no such
  // control or it offers nothing.
  bool act(const Wanted& wanted) const;
  // Writes into a text field in place of what it holds. False when there is no such field.
  bool write(const Wanted& wanted, const QString& text) const;

 private:
  bool visit(const Wanted& wanted, const std::function<bool(AtspiAccessible*)>& deed) const;
};

// The tree as text, for the message of a failed search.
QString describe(const std::vector<Control>& controls);

}  // namespace tour
