// The program as those meet it who cannot see it, or have no mouse.
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QUrl>

#include "tour/steps.h"

namespace tour {
namespace {

const QStringList interactiveRoles{u"push button"_qs, u"check box"_qs,  u"radio button"_qs, u"toggle button"_qs,
                                   u"text"_qs,        u"password text"_qs, u"entry"_qs,     u"list"_qs,
                                   u"list item"_qs,   u"slider"_qs,     u"combo box"_qs,    u"menu item"_qs,
                                   u"page tab"_qs,    u"link"_qs,       u"menu"_qs};

// Everything that can be used has a name, a place and, where it is a button, something that it does.
void expectTold(Tourist& person, const char* place, int atLeast) {
  SCOPED_TRACE(place);
  int interactive = 0;
  QStringList faults;
  for (const Control& control : person.accessibility().controls()) {
    const bool used = interactiveRoles.contains(control.role) || control.focusable;
    if (!used || !control.showing) continue;
    ++interactive;
    const QString who = control.role + u" “"_qs + control.name + u'”';
    if (control.name.trimmed().isEmpty()) faults += who + u" has no name"_qs;
    if (control.role == u"unknown"_qs || control.role == u"invalid"_qs) faults += who + u" has no role"_qs;
    if (control.role == u"push button"_qs && control.enabled && control.actions == 0)
      faults += who + u" cannot be pressed"_qs;
  }
  EXPECT_GE(interactive, atLeast);
  EXPECT_EQ(faults.join(u'\n').toStdString(), "");
}

const Wanted lighthouse{u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true};

TEST(Tour, TellsAssistiveTechnologyOfEveryControl) {
  Tourist person(QSize(1440, 900), u"told-"_qs);
  person.open(chooseFolder);
  expectTold(person, "welcome", 4);
  ASSERT_TRUE(person.accessibility().act({u"Use "_qs, u"push button"_qs, true}));
  person.waitFor(prompt);
  expectTold(person, "empty gallery", 15);
  ASSERT_TRUE(person.accessibility().write(prompt, u"A lighthouse on a cliff in evening light"_qs));
  ASSERT_TRUE(person.accessibility().act(generate));
  person.waitForCount(lighthouse, 1, 30);
  ASSERT_TRUE(person.accessibility().act(lighthouse));
  person.waitFor({u"Reuse"_qs, u"push button"_qs});
  expectTold(person, "gallery with its inspector", 20);
  person.key(u"ctrl+h"_qs);
  person.waitFor({u"History"_qs, {}, true});
  expectTold(person, "History", 10);
  person.key(u"ctrl+comma"_qs);
  person.waitFor({u"Sign Out"_qs, u"push button"_qs});
  expectTold(person, "settings", 5);
  person.key(u"Escape"_qs);
  person.close();
}

TEST(Tour, GoesTheMainRoadByKeyboardAlone) {
  Tourist person(QSize(1440, 900), u"keys-"_qs);
  person.open(chooseFolder);
  person.tabTo({u"Use "_qs, {}, true});
  person.key(u"Return"_qs);
  person.waitFor(prompt);
  person.tabTo(prompt);
  person.type(u"A lighthouse on a cliff in evening light"_qs);
  person.key(u"Return"_qs);
  person.waitForCount(lighthouse, 1, 30);
  person.key(u"ctrl+1"_qs);
  // The zones of the window in turn, until the wall has the keyboard.
  const auto onTheWall = [&] {
    for (const Control& control : person.accessibility().controls())
      if (control.focused && (control.role == u"list"_qs || control.role == u"list item"_qs) &&
          !control.name.contains(u"sidebar"_qs, Qt::CaseInsensitive))
        return true;
    return false;
  };
  for (int zone = 0; zone < 8 && !onTheWall(); ++zone) person.key(u"F6"_qs);
  ASSERT_TRUE(onTheWall()) << describe(person.accessibility().controls()).toStdString();
  person.key(u"Home"_qs);
  EXPECT_GT(person.picture(u"wall"_qs), 100);
  person.key(u"Return"_qs);
  person.waitFor({u"Asset Detail"_qs, u"frame"_qs, true});
  person.key(u"Escape"_qs);
  person.waitForCount(lighthouse, 1, 10);
  person.key(u"ctrl+h"_qs);
  person.waitFor({u"History"_qs, {}, true});
  person.key(u"alt+f"_qs);
  person.waitFor({u"Open Another Workspace…"_qs, u"menu item"_qs});
  person.key(u"Escape"_qs);
  person.key(u"Escape"_qs);
  person.close();
}

// As a launcher or a file manager hands over what was chosen.
QDBusMessage::MessageType openOverTheBus(Tourist& person, const QString& address) {
  const QString bus = person.desktop().environment().value(u"DBUS_SESSION_BUS_ADDRESS"_qs);
  QDBusMessage call = QDBusMessage::createMethodCall(u"studio.sorvan.Studio.Sandbox"_qs, u"/studio/sorvan/Studio/Sandbox"_qs,
                                                     u"org.freedesktop.Application"_qs, u"Open"_qs);
  call << QStringList{address} << QVariantMap();
  return QDBusConnection::connectToBus(bus, u"launcher"_qs).call(call).type();
}

TEST(Tour, AnswersTheDesktopAndASecondStart) {
  Tourist person(QSize(1440, 900), u"desktop-"_qs);
  person.open(chooseFolder);
  const QString first = person.desktop().home() + u"/Pictures/First"_qs;
  const QString second = person.desktop().home() + u"/Pictures/Second"_qs;
  chooseWorkspace(person, second);
  person.key(u"ctrl+o"_qs);
  person.waitFor({u"Open Workspace"_qs, u"push button"_qs});
  QDir().mkpath(first);
  person.key(u"ctrl+a"_qs);
  person.type(first);
  person.key(u"Return"_qs);
  const Wanted inFirst{u"Workspace First"_qs, {}};
  const Wanted inSecond{u"Workspace Second"_qs, {}};
  person.waitFor(inFirst);
  // 1. The window is known to the desktop by the id of its entry.
  EXPECT_NE(person.run(u"xdotool"_qs, {u"search"_qs, u"--class"_qs, u"^studio\\.sorvan\\.Studio$"_qs}), QString());
  // 2. The desktop opens a workspace over the bus.
  EXPECT_EQ(openOverTheBus(person, QUrl::fromLocalFile(second).toString()), QDBusMessage::ReplyMessage);
  person.waitFor(inSecond);
  // 3. A second start hands over what it was given, and ends.
  EXPECT_EQ(person.startAgain({first}), 0);
  person.waitFor(inFirst);
  EXPECT_EQ(person.startAgain({u"--action=history"_qs}), 0);
  person.waitFor({u"History"_qs, u"frame"_qs, true});
  person.close();
}

}  // namespace
}  // namespace tour
