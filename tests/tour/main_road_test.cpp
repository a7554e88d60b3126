// The main road as a person walks it: choose a folder, enter a key, make a picture, a clip and a sound, close, open
// again, find everything; and a kill in the middle, after which Retry lands the result.
#include <gtest/gtest.h>

#include "tour/steps.h"

namespace tour {
namespace {

qsizetype filesIn(const QString& folder, const QStringList& patterns) { return mediaIn(folder, patterns).size(); }

// The demo's own key is there already; a person who has one types another over it and saves.
void enterKey(Tourist& person) {
  person.key(u"ctrl+comma"_qs);
  person.click({u"fal.ai Key"_qs, {}});
  person.click({u"fal.ai Key"_qs, u"password text"_qs});
  person.type(person.sandbox().key());
  person.picture(u"settings-key"_qs);
  person.click({u"Save"_qs, u"push button"_qs});
  person.waitFor({u"fal.ai key saved in Keychain"_qs, {}});
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Save"_qs, u"push button"_qs});
}

void chooseLight(Tourist& person) {
  person.key(u"ctrl+comma"_qs);
  const QRect place = person.waitFor({u"Settings"_qs, u"dialog"_qs}).place;
  EXPECT_TRUE(person.screen().rect().contains(place)) << "Settings do not fit on a low screen";
  person.click({u"Appearance"_qs, {}});
  person.click({u"Light"_qs, {}});
  person.picture(u"settings-appearance"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Light"_qs, {}});
}

void chooseModel(Tourist& person, const QString& name) {
  person.key(u"ctrl+m"_qs);
  person.waitFor({u"Search models"_qs, {}});
  person.type(name);
  person.click({name, u"check box"_qs, true});
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Search models"_qs, {}});
}

// Draws a box on the selected picture and leaves, after which the box is still there.
void lookAtMarks(Tourist& person) {
  const Wanted marks{u"Marked areas"_qs, u"list"_qs};
  person.key(u"m"_qs);
  const QPoint middle = person.waitFor(marks).place.center();
  person.drag(middle - QPoint(80, 40), middle + QPoint(60, 50));
  person.waitFor({u"Note of box 1"_qs, {}});
  person.type(u"a small boat"_qs);
  person.waitFor({u"Box 1, a small boat"_qs, u"list item"_qs});
  person.picture(u"marking"_qs);
  person.key(u"Escape"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone(marks);
  person.key(u"m"_qs);
  person.waitFor({u"Box 1, a small boat"_qs, u"list item"_qs});
  person.key(u"Escape"_qs);
  person.waitUntilGone(marks);
}

const Wanted pictureItem{u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true};
const Wanted clipItem{u"Waves-roll-under-an-old-pier"_qs, u"list item"_qs, true};
const Wanted soundItem{u"Rain-on-a-tin-roof-at"_qs, u"list item"_qs, true};

TEST(Tour, GoesTheMainRoadInTheDarkAt1440By900) {
  Tourist person(QSize(1440, 900), u"dark-1440-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  EXPECT_GT(person.picture(u"welcome"_qs), 100);
  chooseWorkspace(person, workspace);
  EXPECT_GT(person.picture(u"empty"_qs), 10);
  enterKey(person);

  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  EXPECT_EQ(filesIn(workspace, {u"*.png"_qs}), 0);
  person.click(generate);
  person.waitFor({u"Generating"_qs, u"list item"_qs, true});
  person.picture(u"generating"_qs);
  person.waitForCount(pictureItem, 1, 30);
  EXPECT_EQ(filesIn(workspace, {u"*.png"_qs}), 1);
  person.click(pictureItem);
  EXPECT_GT(person.picture(u"generated"_qs), 100);

  chooseModel(person, u"Veo 3.1"_qs);
  writePrompt(person, u"Waves roll under an old pier in slow motion"_qs);
  person.picture(u"composer-clip"_qs);
  person.key(u"ctrl+Return"_qs);
  person.waitForCount(clipItem, 1, 60);
  EXPECT_EQ(filesIn(workspace, {u"*.mp4"_qs}), 1);

  person.key(u"ctrl+shift+a"_qs);
  writePrompt(person, u"Rain on a tin roof at night"_qs);
  person.picture(u"composer-sound"_qs);
  person.key(u"ctrl+Return"_qs);
  person.waitForCount(soundItem, 1, 60);
  EXPECT_EQ(filesIn(workspace, {u"*.mp3"_qs, u"*.wav"_qs}), 1);
  person.click(clipItem);
  EXPECT_GT(person.picture(u"gallery"_qs), 150);
  person.key(u"ctrl+h"_qs);
  person.waitFor({u"History"_qs, {}, true});
  person.picture(u"history"_qs);

  person.close();
  person.open(prompt);
  person.waitForCount(pictureItem, 1, 20);
  person.waitForCount(clipItem, 1, 5);
  person.waitForCount(soundItem, 1, 5);
  person.picture(u"reopened"_qs);
  EXPECT_EQ(person.sandbox().ledger().size(), 3);
  person.close();
}

TEST(Tour, GoesTheMainRoadInTheLightAt1024By680) {
  Tourist person(QSize(1024, 680), u"light-1024-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Field Notes"_qs;
  person.open(chooseFolder);
  person.picture(u"welcome"_qs);
  chooseWorkspace(person, workspace);
  chooseLight(person);
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  person.click(generate);
  person.waitForCount(pictureItem, 1, 30);
  person.click(pictureItem);
  EXPECT_GT(person.picture(u"gallery"_qs), 100);
  lookAtMarks(person);
  person.close();
  person.open(prompt);
  person.waitForCount(pictureItem, 1, 20);
  person.close();
}

TEST(Tour, KillsTheProgramWhileItWaitsAndRetryLandsTheResult) {
  Tourist person(QSize(1440, 900), u"killed-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);
  person.sandbox().setManualPace(true);
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  person.click(generate);
  person.sandbox().waitForCalls(u"status"_qs, 1);
  person.killProgram();
  person.sandbox().setManualPace(false);
  person.open(prompt);
  person.click({u"Failed"_qs, u"list item"_qs, true});
  person.picture(u"interrupted"_qs);
  person.click({u"Retry"_qs, u"push button"_qs});
  person.waitForCount(pictureItem, 1, 30);
  person.picture(u"landed"_qs);
  EXPECT_EQ(person.sandbox().ledger().size(), 1);
  person.close();
}

}  // namespace
}  // namespace tour
