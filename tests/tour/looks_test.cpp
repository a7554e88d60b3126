// The desktop turns light and dark again while the program runs: what needs no media is looked at in both, from the first
// window over the pages of Settings to Workspace Health.
#include <gtest/gtest.h>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

// Opens a page of Settings by its row and waits for something that only it has.
void lookAtPage(Tourist& person, const QString& row, const Wanted& ofThePage, const QString& name) {
  person.click({row, u"check box"_qs});
  person.waitFor(ofThePage);
  pictureInBothLooks(person, name);
}

TEST(LooksTour, FollowsTheDesktopIntoTheLightAndBack) {
  Tourist person(QSize(1440, 900), u"looks-"_qs);
  person.open(chooseFolder);
  EXPECT_GT(pictureInBothLooks(person, u"welcome"_qs), 100);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);

  const Wanted signOut{u"Sign Out"_qs, u"push button"_qs};
  const Wanted checkForUpdates{u"Check for Updates"_qs, u"push button"_qs};
  person.key(u"ctrl+comma"_qs);
  lookAtPage(person, u"Account"_qs, signOut, u"account"_qs);
  lookAtPage(person, u"fal.ai Key"_qs, {u"Remove Key"_qs, u"push button"_qs}, u"key"_qs);
  lookAtPage(person, u"Appearance"_qs, {u"Light"_qs, {}}, u"appearance"_qs);
  lookAtPage(person, u"Usage and Updates"_qs, checkForUpdates, u"usage"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone(checkForUpdates);

  const Wanted sound{u"No repairs needed"_qs, {}, true};
  person.click({u"Workspace Health"_qs, u"check box"_qs, true});
  person.waitFor(sound);
  pictureInBothLooks(person, u"health"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone(sound);
  person.close();
}

}  // namespace
}  // namespace tour
