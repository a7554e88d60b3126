// Projects and the history as a person uses them: a project is made, renamed, filled and put away; jobs are cancelled in
// the history, one by its button and the rest as a selection.
#include <gtest/gtest.h>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const Wanted harbour{u"A-harbour-at-dawn"_qs, u"list item"_qs, true};
const Wanted anyFog{u"Fog over "_qs, u"list item"_qs, true};
const Wanted allMedia{u"All Media"_qs, u"check box"_qs, true};

Wanted row(const QString& name) { return {name, u"check box"_qs}; }

void makeProject(Tourist& person, const QString& name) {
  person.key(u"ctrl+shift+n"_qs);
  person.waitFor({u"Create"_qs, u"push button"_qs});
  person.type(name);
  person.picture(u"new"_qs);
  person.key(u"Return"_qs);
  person.waitFor(row(name));
}

void renameProject(Tourist& person, const QString& from, const QString& to) {
  person.doubleClick(row(from));
  person.waitFor({u"Project name"_qs, {}});
  person.key(u"ctrl+a"_qs);
  person.type(to);
  person.key(u"Return"_qs);
  person.waitFor(row(to));
  person.waitUntilGone(row(from));
}

void carryInto(Tourist& person, const Wanted& item, const QString& project) {
  const QPoint from = person.waitFor(item).place.center();
  person.carry(from, person.waitFor(row(project)).place.center());
}

// By keyboard: the menu of the row that has it.
void putAway(Tourist& person, const QString& project) {
  person.click(row(project));
  person.key(u"Menu"_qs);
  // The keyboard is in the menu now: Rename…, then Archive.
  person.key(u"Down"_qs);
  person.picture(u"menu"_qs);
  person.key(u"Down"_qs);
  person.key(u"Return"_qs);
  person.waitFor({u"Archived"_qs, {}});
}

TEST(ProjectTour, MakesRenamesFillsAndPutsAwayAProject) {
  Tourist person(QSize(1440, 900), u"projects-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  chooseWorkspace(person, workspace);
  writePrompt(person, u"A harbour at dawn"_qs);
  person.key(u"Return"_qs);
  person.waitForCount(harbour, 1, 40);

  makeProject(person, u"Campaign"_qs);
  renameProject(person, u"Campaign"_qs, u"Autumn"_qs);
  person.click(allMedia);
  person.waitForCount(harbour, 1, 20);
  carryInto(person, harbour, u"Autumn"_qs);
  person.click(row(u"Autumn"_qs));
  person.waitForCount(harbour, 1, 20);
  pictureInBothLooks(person, u"filled"_qs);
  // The folder keeps its first name: items name their files by it.
  person.waitForFiles(workspace, {u"A-harbour-at-dawn*.png"_qs}, 1, 20);
  const QStringList files = mediaIn(workspace, {u"*.png"_qs});
  ASSERT_EQ(files.size(), 1);
  EXPECT_TRUE(files.front().contains(u"/Campaign-"_qs)) << files.front().toStdString();
  putAway(person, u"Autumn"_qs);
  person.picture(u"archived"_qs);
  person.close();
}

TEST(ProjectTour, CancelsJobsInTheHistoryOneByOneAndAsASelection) {
  Tourist person(QSize(1440, 900), u"history-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);
  person.sandbox().setManualPace(true);
  for (const QString& place : {u"the sea"_qs, u"the hills"_qs, u"the town"_qs}) {
    writePrompt(person, u"Fog over "_qs + place);
    person.key(u"Return"_qs);
  }
  person.key(u"ctrl+h"_qs);
  person.waitForCount(anyFog, 3, 20);
  person.picture(u"running"_qs);

  // One, by the button at the end of its row.
  const QRect place = person.waitFor(anyFog).place;
  const QPoint button(place.right() - 40, place.center().y());
  person.clickAt(button);
  person.click({u"Cancelled"_qs, u"check box"_qs, true});
  person.waitForCount(anyFog, 1, 20);
  person.picture(u"cancelled"_qs);

  // The others, together.
  person.click({u"In progress"_qs, u"check box"_qs, true});
  person.waitForCount(anyFog, 2, 20);
  person.click(anyFog);
  person.key(u"ctrl+a"_qs);
  pictureInBothLooks(person, u"selected"_qs);
  person.click({u"Cancel 2 Selected"_qs, u"push button"_qs});
  person.waitUntilGone(anyFog, 30);
  person.click({u"Cancelled"_qs, u"check box"_qs, true});
  person.waitForCount(anyFog, 3, 20);
  person.sandbox().setManualPace(false);
  person.close();
}

}  // namespace
}  // namespace tour
