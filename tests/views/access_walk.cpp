#include "views/access_walk.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>

#include <set>

#include "shell/views/painted_list.h"

namespace sorvan::test {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostStops = 120;
constexpr int kMostZones = 10;
constexpr int kRingRoom = 6;
// A caret of one pixel touches as many as a line is high; anything less is no sign that can be seen.
constexpr int kLeastChange = 12;

const std::set<QAccessible::Role> kInteractive{
    QAccessible::Button,      QAccessible::CheckBox,   QAccessible::RadioButton, QAccessible::EditableText,
    QAccessible::ComboBox,    QAccessible::Slider,     QAccessible::SpinBox,     QAccessible::List,
    QAccessible::ListItem,    QAccessible::PageTab,    QAccessible::PageTabList, QAccessible::Link,
    QAccessible::MenuItem,    QAccessible::ButtonMenu, QAccessible::TreeItem,    QAccessible::Tree,
    QAccessible::Dial,        QAccessible::Cell,       QAccessible::Table,       QAccessible::ButtonDropDown};

QString placeOf(const QObject* object) {
  QStringList path;
  for (const QObject* at = object; at && path.size() < 4; at = at->parent())
    path.prepend(QString::fromLatin1(at->metaObject()->className()).section(u':', -1));
  return path.join(u" › "_s);
}

QString nameOf(const QWidget* widget) {
  QAccessibleInterface* element = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
  const QString name = element ? element->text(QAccessible::Name) : QString();
  return u"“%1” (%2)"_s.arg(name, placeOf(widget));
}

void collectNameless(QAccessibleInterface* element, QStringList& faults, int depth) {
  if (!element || !element->isValid() || depth > 40) return;
  const QAccessible::State state = element->state();
  if (state.invisible) return;
  const QAccessible::Role role = element->role();
  const bool interactive = kInteractive.contains(role) || state.focusable;
  const QString place = element->object() ? placeOf(element->object()) : placeOf(element->parent()->object());
  if (interactive && element->text(QAccessible::Name).trimmed().isEmpty()) faults += u"without a name: "_s + place;
  // What scrolls may hold the keyboard for that alone.
  const bool scrolls = qobject_cast<QAbstractScrollArea*>(element->object());
  if (state.focusable && (role == QAccessible::NoRole || (role == QAccessible::Client && !scrolls)))
    faults += u"without a role: "_s + place;
  for (int child = 0; child < element->childCount(); ++child)
    collectNameless(element->child(child), faults, depth + 1);
}

bool isControl(const QWidget* widget) {
  if (qobject_cast<const QScrollBar*>(widget) || qobject_cast<const QMenuBar*>(widget)) return false;
  for (const QWidget* above = widget; above; above = above->parentWidget())
    if (qobject_cast<const QMenuBar*>(above)) return false;
  return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
         qobject_cast<const QAbstractSlider*>(widget) || qobject_cast<const QComboBox*>(widget) ||
         (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus || dynamic_cast<const views::PaintedList*>(widget);
}

std::vector<QPointer<QWidget>> controlsOf(QWidget& part) {
  std::vector<QPointer<QWidget>> controls;
  for (QWidget* widget : part.findChildren<QWidget*>())
    if (widget->isVisible() && widget->isEnabled() && widget->window() == part.window() && !widget->focusProxy() &&
        isControl(widget))
      controls.emplace_back(widget);
  return controls;
}

void press(QWidget& part, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QWidget* focused = QApplication::focusWidget();
  QTest::keyClick(focused ? focused : &part, key, modifiers);
  QCoreApplication::processEvents();
}

class Walk {
 public:
  explicit Walk(QWidget& part) : part_(part) {}

  // Tab through each zone that F6 leads to.
  void go() {
    note();
    tabThrough();
    for (int zone = 0; part_.isWindow() && zone < kMostZones; ++zone) {
      press(part_, Qt::Key_F6);
      note();
      tabThrough();
    }
  }

  // From every neighbour that was reached, along the arrows.
  bool tryArrows(const QPointer<QWidget>& wanted) {
    const std::set<QWidget*> known = reached_;
    for (QWidget* start : known) {
      if (!wanted || (start->parentWidget() != wanted->parentWidget() && !start->isAncestorOf(wanted))) continue;
      for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up}) {
        start->setFocus(Qt::TabFocusReason);
        for (int step = 0; step < kMostStops; ++step) {
          QWidget* before = QApplication::focusWidget();
          press(part_, key);
          note();
          if (!wanted || QApplication::focusWidget() == wanted) return true;
          if (QApplication::focusWidget() == before) break;
        }
      }
    }
    return false;
  }

  bool hasReached(QWidget* widget) const { return reached_.contains(widget); }

 private:
  void note() {
    if (QWidget* focused = QApplication::focusWidget()) reached_.insert(focused);
  }
  void tabThrough() {
    std::set<QWidget*> here;
    for (int step = 0; step < kMostStops; ++step) {
      QWidget* focused = QApplication::focusWidget();
      if (focused && !here.insert(focused).second) return;
      // A field in which tabs are written is left by Ctrl+Tab.
      press(part_, Qt::Key_Tab);
      note();
    }
  }

  QWidget& part_;
  std::set<QWidget*> reached_;
};

QImage lookAround(QWidget& window, const QWidget& control) {
  const QRect area(control.mapTo(&window, QPoint()), control.size());
  return window
      .grab(area.adjusted(-kRingRoom, -kRingRoom, kRingRoom, kRingRoom) & window.rect())
      .toImage()
      .convertToFormat(QImage::Format_RGB32);
}

int difference(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return one.width() * one.height();
  int pixels = 0;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x) pixels += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
  return pixels;
}

bool showsFocus(QWidget& part, QWidget& control) {
  QWidget& window = *part.window();
  control.setFocus(Qt::TabFocusReason);
  press(part, Qt::Key_Shift);
  if (!control.hasFocus()) return true;  // reached by its arrows only, as a part of what holds the keyboard
  const QImage with = lookAround(window, control);
  control.clearFocus();
  QCoreApplication::processEvents();
  return difference(with, lookAround(window, control)) >= kLeastChange;
}

}  // namespace

QStringList namelessElements(QWidget& part) {
  QStringList faults;
  collectNameless(QAccessible::queryAccessibleInterface(&part), faults, 0);
  faults.removeDuplicates();
  return faults;
}

QStringList keyboardFaults(QWidget& part) {
  QStringList faults;
  QApplication::setActiveWindow(part.window());
  QApplication::setCursorFlashTime(0);  // the caret of a text field shows its focus: it must not happen to be away
  const std::vector<QPointer<QWidget>> controls = controlsOf(part);
  Walk walk(part);
  walk.go();
  for (const QPointer<QWidget>& control : controls) {
    if (!control || !control->isVisible()) continue;
    if (!walk.hasReached(control) && !walk.tryArrows(control))
      faults += u"not reached by keys: "_s + nameOf(control);
  }
  for (const QPointer<QWidget>& control : controls)
    if (control && control->isVisible() && walk.hasReached(control) && !showsFocus(part, *control))
      faults += u"shows no focus: "_s + nameOf(control);
  return faults;
}

}  // namespace sorvan::test
