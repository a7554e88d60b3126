// Clips side by side: all of a sheet play at once, and one gets the screen for itself.
#include <gtest/gtest.h>

#include "tour/steps.h"

namespace tour {
namespace {

const Wanted clipItem{u"Waves-roll-under-an-old-pier"_qs, u"list item"_qs, true};
const Wanted playAll{u"Play All"_qs, u"push button"_qs};
const Wanted fullScreen{u"Full Screen"_qs, u"push button"_qs};

void makeClip(Tourist& person, int number) {
  writePrompt(person, u"Waves roll under an old pier in slow motion"_qs);
  person.key(u"ctrl+Return"_qs);
  person.waitForCount(clipItem, number, 60);
}

TEST(SheetClipsTour, PlaysEveryClipOfASheetAndGivesOneTheScreen) {
  Tourist person(QSize(1440, 900), u"clips-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);
  person.key(u"ctrl+m"_qs);
  person.waitFor({u"Search models"_qs, {}});
  person.type(u"Veo 3.1"_qs);
  person.click({u"Veo 3.1"_qs, u"check box"_qs, true});
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Search models"_qs, {}});
  makeClip(person, 1);
  makeClip(person, 2);

  person.click(clipItem);
  person.key(u"ctrl+a"_qs);
  person.key(u"c"_qs);
  person.click(playAll);
  person.waitFor({u"Pause"_qs, u"push button"_qs});
  person.picture(u"playing-first"_qs);
  person.picture(u"playing-later"_qs);
  person.click({u"Pause"_qs, u"push button"_qs});
  person.waitFor(playAll);

  person.doubleClick({u"1 of 2, "_qs, u"push button"_qs, true});
  person.waitFor(fullScreen);
  person.key(u"F11"_qs);
  person.waitFor({u"Leave Full Screen"_qs, u"push button"_qs});
  EXPECT_EQ(person.accessibility().count({u"All Media"_qs, {}, true}), 0) << "only the clip and its controls";
  person.picture(u"full-screen"_qs);
  person.key(u"Escape"_qs);
  person.waitFor(fullScreen);
  person.key(u"Escape"_qs);
  person.waitFor(playAll);
  person.close();
}

}  // namespace
}  // namespace tour
