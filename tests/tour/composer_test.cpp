// The composer as a person uses it: two models compared, commands to the library, a recipe used again, a prompt that
// survives the end of the program.
#include <gtest/gtest.h>

#include <QFile>
#include <QTest>

#include "tour/steps.h"

namespace tour {
namespace {

const Wanted compare{u"Generate & Compare"_qs, u"push button"_qs};
// On the sheet of a comparison, which opens by itself.
const Wanted addMedia{u"Add Media"_qs, u"push button"_qs};
const Wanted run{u"Run"_qs, u"push button"_qs};
const Wanted pictureItem{u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true};
const Wanted templeItem{u"An-old-temple-in-the-rain"_qs, u"list item"_qs, true};
const Wanted command{u"Command"_qs, {}};

void addSecondModel(Tourist& person, const QString& name) {
  alsoChooseModel(person, name);
  person.waitFor(compare);
}

void tell(Tourist& person, const QString& text, const QString& understood) {
  person.key(u"ctrl+k"_qs);
  person.waitFor(command);
  person.type(text);
  person.waitFor({understood, {}});
  person.waitFor(run);
}

QByteArray bytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(ComposerTour, ComparesTwoModelsAndTellsTheLibraryWhatToDo) {
  Tourist person(QSize(1440, 900), u"composer-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);

  // Two models from one prompt.
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  addSecondModel(person, u"FLUX.1 Schnell"_qs);
  EXPECT_GT(person.picture(u"compare"_qs), 10);
  person.click(compare);
  person.waitFor(addMedia);
  person.key(u"ctrl+1"_qs);
  person.waitForCount(pictureItem, 2, 60);
  EXPECT_EQ(person.sandbox().ledger().size(), 2);
  writePrompt(person, u"An old temple in the rain"_qs);
  person.key(u"ctrl+Return"_qs);
  person.waitFor(addMedia);
  person.key(u"ctrl+1"_qs);
  person.waitForCount(templeItem, 2, 60);

  // Commands that create, search, move and filter.
  tell(person, u"create a project called Campaign"_qs, u"Create project"_qs);
  person.picture(u"command"_qs);
  person.key(u"Return"_qs);
  person.waitFor({u"Campaign"_qs, u"check box"_qs, true});
  tell(person, u"find temple images"_qs, u"Find media"_qs);
  person.key(u"Return"_qs);
  person.waitUntilGone(pictureItem);
  person.waitForCount(templeItem, 2, 20);
  person.picture(u"found"_qs);
  person.click(templeItem);
  tell(person, u"move selected images to Campaign"_qs, u"Move selected media"_qs);
  person.key(u"Return"_qs);
  person.waitForCount(templeItem, 1, 20);
  tell(person, u"show flux images"_qs, u"Filter library"_qs);
  person.key(u"Return"_qs);
  person.waitFor(pictureItem);
  EXPECT_EQ(person.sandbox().ledger().size(), 4) << "no command buys anything";
  person.close();
}

TEST(ComposerTour, WhatWasTypedIsThereAfterTheProgramWasKilled) {
  Tourist person(QSize(1440, 900), u"draft-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);
  writePrompt(person, u"A thought that must not be lost"_qs);
  const QString file = person.desktop().home() + u"/Pictures/Northlight/.sorvan/composer.json"_qs;
  ASSERT_TRUE(QTest::qWaitFor([&] { return bytesOf(file).contains("A thought that must not be lost"); }, 10'000));
  person.killProgram();
  person.open(prompt);
  EXPECT_EQ(person.waitFor(prompt).text, u"A thought that must not be lost"_qs);
  person.picture(u"back"_qs);
  person.close();
}

}  // namespace
}  // namespace tour
