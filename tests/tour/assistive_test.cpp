// The program as those meet it who cannot see it, or have no mouse.
#include <gtest/gtest.h>

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
  person.waitFor({u"Reuse Prompt"_qs, u"push button"_qs});
  expectTold(person, "gallery with its inspector", 20);
  person.key(u"ctrl+h"_qs);
  person.waitFor({u"History"_qs, {}, true});
  expectTold(person, "History", 10);
  person.key(u"ctrl+comma"_qs);
  person.waitFor({u"Save"_qs, u"push button"_qs});
  expectTold(person, "settings", 5);
  person.key(u"Escape"_qs);
  person.close();
}

}  // namespace
}  // namespace tour
