// The main window by keyboard alone, and the projects with the history of jobs.
#include <gtest/gtest.h>

#include <QDir>

#include "tour/steps.h"

namespace tour {
namespace {

const Wanted boat{u"A-paper-boat-on-a-still"_qs, u"list item"_qs, true};

bool hasFocus(Tourist& person, const Wanted& wanted) {
  const std::optional<Control> control = person.accessibility().find(wanted);
  return control && control->focused;
}

// Presses the key until the control has the keyboard. A control that cannot be reached fails the test.
void pressUntil(Tourist& person, const QString& chord, const Wanted& wanted, int most) {
  for (int press = 0; press < most; ++press) {
    if (hasFocus(person, wanted)) return;
    person.key(chord);
    // The tree is read a few times: the focus is told a little after the key.
    for (int look = 0; look < 5 && !hasFocus(person, wanted); ++look) {
    }
  }
  FAIL() << "the keyboard does not reach " << wanted.name.toStdString();
}

void makeProject(Tourist& person, const QString& name) {
  person.key(u"ctrl+shift+n"_qs);
  person.waitFor({u"Project name"_qs, {}});
  person.type(name);
  person.key(u"Return"_qs);
  person.waitFor({name, {}});
}

TEST(Tour, WalksTheWindowByKeyboardAlone) {
  Tourist person(QSize(1440, 900), u"keyboard-"_qs);
  person.open(chooseFolder);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  QDir().mkpath(workspace);
  pressUntil(person, u"Tab"_qs, chooseFolder, 4);
  person.key(u"space"_qs);
  person.waitFor({u"Open Workspace"_qs, u"push button"_qs});
  person.key(u"ctrl+a"_qs);
  person.type(workspace);
  person.key(u"Return"_qs);
  person.waitFor(prompt);
  // 1. A picture is made without the pointer.
  person.key(u"ctrl+l"_qs);
  person.type(u"A paper boat on a still pond"_qs);
  person.key(u"Return"_qs);
  person.waitForCount(boat, 1, 40);
  // 2. Every zone is reached by F6, and a menu by Alt.
  pressUntil(person, u"F6"_qs, {u"Workspace Northlight"_qs, {}, true}, 8);
  pressUntil(person, u"F6"_qs, prompt, 8);
  person.key(u"alt+v"_qs);
  person.waitFor({u"History"_qs, u"menu item"_qs});
  person.picture(u"menu"_qs);
  person.key(u"Escape"_qs);
  // 3. A project is made, and its place shown.
  makeProject(person, u"Harbour"_qs);
  person.key(u"ctrl+1"_qs);
  // 4. History and back.
  person.key(u"ctrl+h"_qs);
  person.waitFor({u"Search History"_qs, {}});
  person.key(u"Down"_qs);
  person.picture(u"history"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Search History"_qs, {}});
  person.close();
}

}  // namespace
}  // namespace tour
