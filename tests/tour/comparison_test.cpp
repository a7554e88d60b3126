// Contact sheets as a person uses them: several models at once, results that drop into their places, pictures that are
// compared closely, and the family of one of them.
#include <gtest/gtest.h>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const Wanted anyPicture{u"A-lighthouse"_qs, u"list item"_qs, true};

void makePicture(Tourist& person, int number) {
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  person.click(generate);
  person.waitForCount(anyPicture, number, 40);
}

// Both pictures of the gallery, closely and over each other.
void compareClosely(Tourist& person) {
  person.click(anyPicture);
  person.key(u"ctrl+a"_qs);
  person.key(u"c"_qs);
  person.waitFor({u"Side by Side"_qs, {}});
  person.key(u"plus"_qs);
  person.key(u"plus"_qs);
  person.key(u"plus"_qs);
  person.key(u"shift+Right"_qs);
  person.picture(u"compare-in-step"_qs);
  person.click({u"Divider"_qs, {}});
  pictureInBothLooks(person, u"compare-divider"_qs);
  person.click({u"Difference"_qs, {}});
  person.waitFor({u"Amplify"_qs, {}});
  person.picture(u"compare-difference"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Side by Side"_qs, {}});
}

// Space opens the quick look over the view and closes it again.
void lookAndReturn(Tourist& person, const QString& picture) {
  const Wanted close{u"Close Quick Look"_qs, u"push button"_qs};
  person.key(u"space"_qs);
  person.waitFor(close);
  person.picture(picture);
  person.key(u"space"_qs);
  person.waitUntilGone(close);
}

TEST(Tour, ComparesPicturesOnAContactSheetAndLooksAtTheirFamily) {
  Tourist person(QSize(1440, 900), u"comparison-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);
  makePicture(person, 1);
  makePicture(person, 2);
  compareClosely(person);

  alsoChooseModel(person, u"FLUX.1 Schnell"_qs);
  person.sandbox().setManualPace(true);
  writePrompt(person, u"A harbour in fog"_qs);
  person.key(u"ctrl+Return"_qs);
  person.waitFor({u"Add Media"_qs, u"push button"_qs});
  person.waitFor({u"Cancel"_qs, u"push button"_qs});
  person.picture(u"sheet-running"_qs);
  person.sandbox().setManualPace(false);
  person.waitUntilGone({u"Cancel"_qs, u"push button"_qs}, 60);
  person.picture(u"sheet-done"_qs);
  person.key(u"1"_qs);
  lookAndReturn(person, u"sheet-look"_qs);
  person.key(u"2"_qs);
  person.key(u"alt+4"_qs);
  person.key(u"p"_qs);
  pictureInBothLooks(person, u"sheet-marked"_qs);
  person.key(u"l"_qs);
  person.waitFor({u"Generation History"_qs, u"tree"_qs});
  person.picture(u"lineage"_qs);
  lookAndReturn(person, u"lineage-look"_qs);
  person.waitFor({u"Generation History"_qs, u"tree"_qs});
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Generation History"_qs, u"tree"_qs});
  person.key(u"Escape"_qs);
  person.key(u"ctrl+2"_qs);
  person.waitFor({u"A harbour in fog"_qs, {}, true});
  person.picture(u"sheets"_qs);

  // The two pictures of the gallery are still selected; one is carried over the tab to the card of the sheet, and takes
  // the other along.
  person.waitFor({u"A harbour in fog, 2 items"_qs, {}, true});
  person.key(u"ctrl+1"_qs);
  const QPoint picture = person.waitFor(anyPicture).place.center();
  const QPoint tab = person.waitFor({u"Contact Sheets"_qs, u"check box"_qs}).place.center();
  person.carryOver(picture, tab, {u"A harbour in fog, "_qs, u"list item"_qs, true});
  person.waitFor({u"A harbour in fog, 4 items"_qs, {}, true});
  person.picture(u"dropped"_qs);
  person.close();
}

}  // namespace
}  // namespace tour
