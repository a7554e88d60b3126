// A test of widgets: the application wears the theme, and widgets are shown off the screen.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "shell/views/theme.h"

namespace sorvan::views {

class Dressed : public testing::Test {
 protected:
  Dressed() {
    static const bool once = [] {
      Theme::instance().dress(*static_cast<QApplication*>(QCoreApplication::instance()));
      return true;
    }();
    Q_UNUSED(once);
    Theme::instance().setAppearance(Appearance::dark);
  }

  static void show(QWidget& widget, QSize size) {
    widget.resize(size);
    widget.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&widget));
    widget.activateWindow();
    QApplication::setActiveWindow(&widget);
    QCoreApplication::processEvents();
  }

  // The visible child of that kind with the accessible name; null when there is none.
  template <class Kind>
  static Kind* named(const QWidget& parent, const QString& name) {
    for (Kind* child : parent.findChildren<Kind*>()) {
      if (child->accessibleName() == name || textOf(child) == name) return child;
    }
    return nullptr;
  }

 private:
  static QString textOf(const QWidget* widget) { return widget->property("text").toString(); }
};

}  // namespace sorvan::views
