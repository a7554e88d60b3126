// The end of the desktop's session while a request that costs money is on its way.
#include <gtest/gtest.h>
#include <signal.h>

#include <QFile>

#include "tour/steps.h"

namespace tour {
namespace {

const Wanted boat{u"A-paper-boat-on-a-still"_qs, u"list item"_qs, true};

pid_t processOf(Tourist& person) {
  const QString answer = person.run(
      u"xdotool"_qs, {u"search"_qs, u"--onlyvisible"_qs, u"--name"_qs, u"Sorvan Studio"_qs, u"getwindowpid"_qs});
  return answer.trimmed().section(u'\n', 0, 0).toInt();
}

// Whether it has ended, collected by its parent or not.
bool hasEnded(pid_t process) {
  QFile state(u"/proc/%1/stat"_qs.arg(process));
  return !state.open(QIODevice::ReadOnly) || state.readAll().contains(") Z ");
}

TEST(Tour, ALogOutWaitsForTheAnswerToARequestThatCostsMoney) {
  Tourist person(QSize(1440, 900), u"log-out-"_qs);
  const Wanted useDefault{u"Use "_qs, u"push button"_qs, true};
  person.open(useDefault);
  person.click(useDefault);
  person.waitFor(prompt);
  // 1. The service has taken the request, and its answer is on its way.
  person.sandbox().addFault(u"submit"_qs, u"hold"_qs, {{u"at"_qs, u"after"_qs}, {u"times"_qs, 1}});
  writePrompt(person, u"A paper boat on a still pond"_qs);
  person.click(generate);
  person.sandbox().waitForHeld(u"submit"_qs);
  // 2. The session ends: the window goes at once, and the program stays for the answer.
  const pid_t program = processOf(person);
  ASSERT_GT(program, 0);
  ASSERT_EQ(::kill(program, SIGTERM), 0);
  person.waitUntilGone(prompt);
  EXPECT_FALSE(hasEnded(program));
  person.sandbox().release(u"submit"_qs);
  ASSERT_TRUE(within(20, [&] { return hasEnded(program); }));
  // 3. The next session finds the request where it was left, and fetches what was paid for.
  const Wanted failed{u"Failed"_qs, u"list item"_qs, true};
  person.open(failed);
  person.click(failed);
  person.click({u"Retry"_qs, u"push button"_qs});
  person.waitForCount(boat, 1, 40);
  EXPECT_EQ(person.sandbox().ledger().size(), 1);
  EXPECT_EQ(person.sandbox().callCount(u"submit"_qs), 1);
  person.close();
}

}  // namespace
}  // namespace tour
