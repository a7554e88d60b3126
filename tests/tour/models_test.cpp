// Models as a person finds them: look through the tabs, browse the catalogue, read why one does not fit, add an image
// editor and a model that animates, and generate with a reference on each.
#include <gtest/gtest.h>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const Wanted figure{u"≈ $"_qs, {}, true};
void attach(Tourist& person, const Wanted& item) {
  person.click(item);
  person.key(u"shift+r"_qs);
  person.waitFor({u"@Reference1"_qs, {}});
}

const Wanted pictureItem{u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true};
const Wanted editedItem{u"The-same-lighthouse-in-a-storm"_qs, u"list item"_qs, true};
const Wanted clipItem{u"Waves-break-on-the-cliff"_qs, u"list item"_qs, true};

TEST(ModelTour, AddsAnEditorAndAModelThatAnimatesAndGeneratesWithAReferenceOnEach) {
  Tourist person(QSize(1440, 900), u"models-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  chooseWorkspace(person, workspace);
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  person.waitFor(figure);
  person.click(generate);
  person.waitForCount(pictureItem, 1, 30);

  // The editor: from an empty tab over the recommendations to a search.
  openBrowser(person, u"Edit"_qs);
  EXPECT_GT(person.picture(u"browser"_qs), 100);
  addAndChoose(person, u"seedream 5 flash"_qs, u"Seedream 5 Flash Edit"_qs);
  person.picture(u"added"_qs);
  closePicker(person);
  attach(person, pictureItem);
  writePrompt(person, u"The same lighthouse in a storm"_qs);
  person.waitFor(figure);
  person.picture(u"estimate"_qs);
  person.click(generate);
  person.waitForCount(editedItem, 1, 60);
  EXPECT_EQ(mediaIn(workspace, {u"*.png"_qs}).size(), 2);

  // The model that animates, from the recommendations.
  openBrowser(person, u"Animate"_qs);
  addAndChoose(person, {}, u"MiniMax H3 Max"_qs);
  closePicker(person);
  attach(person, editedItem);
  writePrompt(person, u"Waves break on the cliff"_qs);
  person.click(generate);
  person.waitForCount(clipItem, 1, 60);
  EXPECT_EQ(mediaIn(workspace, {u"*.mp4"_qs}).size(), 1);
  person.click(clipItem);
  person.picture(u"animated"_qs);

  // Its family: the picture, the edit of it, and the clip that moves the edit.
  const Wanted family{u"Generation History"_qs, u"tree"_qs};
  person.key(u"l"_qs);
  person.waitFor(family);
  pictureInBothLooks(person, u"family"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone(family);

  // It plays large, stops at a key and goes on by single frames.
  person.doubleClick(clipItem);
  person.waitFor({u"Next Frame"_qs, u"push button"_qs});
  person.key(u"End"_qs);
  person.waitFor({u"Play"_qs, u"push button"_qs});
  person.key(u"comma"_qs);
  person.key(u"period"_qs);
  person.picture(u"clip"_qs);
  person.key(u"Escape"_qs);
  person.waitForCount(clipItem, 1, 20);
  EXPECT_EQ(person.sandbox().ledger().size(), 3);

  // Everything that was added is there after the next start, in its tab.
  person.close();
  person.open(prompt);
  person.key(u"ctrl+m"_qs);
  person.click({u"Edit"_qs, u"check box"_qs});
  person.waitFor({u"Seedream 5 Flash Edit, "_qs, u"check box"_qs, true});
  pictureInBothLooks(person, u"picker"_qs);
  closePicker(person);
  person.close();
}

}  // namespace
}  // namespace tour
