// References as a person brings them: files from the desk, a character that is kept under its name and attached by it;
// two models are compared from one prompt that names both.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const Wanted referenceButton{u"Reference"_qs, u"push button"_qs};
const Wanted firstReference{u"@Reference1"_qs, {}};
const Wanted compare{u"Generate & Compare"_qs, u"push button"_qs};

QString paintedFile(Tourist& person, const QString& name, const QColor& colour) {
  QImage picture(320, 240, QImage::Format_RGB32);
  picture.fill(colour);
  const QString path = person.desktop().home() + u"/Pictures/"_qs + name;
  picture.save(path);
  return path;
}

// Answers the toolkit's own chooser, which opens without a portal.
void attachFile(Tourist& person, const QString& path) {
  person.click(referenceButton);
  person.click({u"Choose Files…"_qs, u"push button"_qs});
  person.waitFor({u"Attach"_qs, u"push button"_qs});
  person.type(path);
  person.key(u"Return"_qs);
  person.waitFor(firstReference);
}

void chooseTwoEditors(Tourist& person) {
  openBrowser(person, u"Edit"_qs);
  addAndChoose(person, {}, u"Nano Banana Pro Edit"_qs);
  closePicker(person);
  alsoChooseModel(person, u"Nano Banana 2 Edit"_qs);
}

void keepAsCharacter(Tourist& person) {
  person.click(referenceButton);
  person.picture(u"panel"_qs);
  person.click({u"Save Attached as Reference…"_qs, u"push button"_qs});
  person.waitFor({u"Save reference"_qs, {}});
  person.type(u"Maya"_qs);
  person.key(u"Tab"_qs);
  person.type(u"Char"_qs);
  person.key(u"Tab"_qs);
  person.type(u"a young woman in a red coat"_qs);
  person.picture(u"editor"_qs);
  person.click({u"Save"_qs, u"push button"_qs});
  person.waitUntilGone({u"Save reference"_qs, {}});
}

void lookAtThePage(Tourist& person) {
  person.click({u"Global References"_qs, {}, true});
  person.waitFor({u"@Maya"_qs, u"list item"_qs, true});
  pictureInBothLooks(person, u"page"_qs);
  person.click({u"All Media"_qs, {}, true});
}

TEST(ReferenceTour, ComparesTwoModelsFromASavedCharacterAndAFileByTheirNames) {
  Tourist person(QSize(1440, 900), u"references-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  chooseWorkspace(person, workspace);
  chooseTwoEditors(person);

  // 1. A file becomes a reference, and is kept as a character.
  person.click(prompt);
  attachFile(person, paintedFile(person, u"maya.png"_qs, QColor(200, 60, 40)));
  keepAsCharacter(person);
  person.click({u"Remove @Reference1"_qs, u"push button"_qs});
  lookAtThePage(person);

  // 2. It is attached by its name, beside another file.
  person.click(prompt);
  attachFile(person, paintedFile(person, u"quay.png"_qs, QColor(40, 90, 160)));
  person.click(prompt);
  person.type(u"@Ma"_qs);
  person.waitFor({u"@Maya"_qs, u"list item"_qs, true});
  person.picture(u"mention"_qs);
  person.key(u"Return"_qs);
  person.waitFor({u"Attached @Maya · 1 image."_qs, {}});
  person.type(u" walks along @Reference1"_qs);
  person.waitFor(compare);
  person.picture(u"composer"_qs);
  person.click({u"More Settings"_qs, u"check box"_qs});
  person.waitFor({u"Outputs"_qs, {}});
  person.picture(u"settings"_qs);
  EXPECT_TRUE(person.sandbox().ledger().isEmpty());

  // 3. Both models make one from the same words and pictures.
  person.click(compare);
  person.waitForFiles(workspace + u"/Inbox/generated"_qs, {u"*.png"_qs}, 2, 60);
  EXPECT_EQ(person.sandbox().ledger().size(), 2);
  person.picture(u"sheet"_qs);
  person.close();
}

}  // namespace
}  // namespace tour
