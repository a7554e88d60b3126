#include "shell/views/model_picker.h"

#include <QAccessible>
#include <QScrollBar>

#include "shell/views/browser_page.h"
#include "shell/views/browser_row.h"
#include "shell/views/composer_dock.h"
#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
#include "shell/views/fields.h"
#include "shell/views/labels.h"
#include "shell/views/model_row.h"
#include "shell/views/row_list.h"
#include "shell/views/thumbnail_store.h"
#include "views/dressed.h"
#include "views/samples.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ModelPickerTest : public Dressed {
 protected:
  ModelPickerTest() {
    composer.models = &browser;
    show(window, {1000, 900});
    dock.setGeometry(20, 700, 900, dock.heightForWidth(900));
    dock.show();
    dock.openModelPicker();
    picker = window.findChild<ModelPicker*>();
    search = named<TextField>(window, u"Search models"_s);
  }
  QAbstractButton* button(const QString& name) { return named<QAbstractButton>(*picker, name); }
  void press(const QString& name) {
    QAbstractButton* found = button(name);
    ASSERT_NE(found, nullptr) << qPrintable(name);
    ASSERT_TRUE(found->isVisible()) << qPrintable(name);
    QTest::mouseClick(found, Qt::LeftButton);
  }
  ModelRow* model(const QString& key) {
    for (ModelRow* row : picker->findChildren<ModelRow*>())
      if (row->key() == key) return row;
    return nullptr;
  }
  BrowserRowView* row(const QString& id) {
    for (BrowserRowView* candidate : picker->findChildren<BrowserRowView*>())
      if (candidate->id() == id) return candidate;
    return nullptr;
  }
  // Rows that came are shown, then laid out, then scrolled. The platform takes the window's activity away meanwhile.
  void settle() {
    for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::setActiveWindow(&window);
  }
  void openBrowse() { press(u"Browse"_s); }

  SampleBrowser browser;
  SampleComposer composer;
  ThumbnailStore thumbnails;
  QWidget window;
  ComposerDock dock{composer, thumbnails, &window};
  ModelPicker* picker = nullptr;
  TextField* search = nullptr;
};

TEST_F(ModelPickerTest, OpensOnTheTabOfTheChosenModelAndAsksForPrices) {
  EXPECT_TRUE(model(u"nano"_s)->isVisible());
  EXPECT_FALSE(model(u"wan"_s)->isVisible());
  EXPECT_TRUE(composer.calls.contains(u"prices"_s));
  press(u"Video"_s);
  EXPECT_FALSE(model(u"nano"_s)->isVisible());
  EXPECT_TRUE(model(u"wan"_s)->isVisible());
}

TEST_F(ModelPickerTest, WordsFindModelsOfEveryTabUnderTheirHeadings) {
  QTest::keyClicks(search, u"kling"_s);
  EXPECT_TRUE(model(u"kling"_s)->isVisible());
  EXPECT_FALSE(model(u"nano"_s)->isVisible());
  Label* heading = nullptr;
  for (Label* candidate : picker->findChildren<Label*>())
    if (candidate->text() == u"Video"_s && candidate->isVisible()) heading = candidate;
  EXPECT_NE(heading, nullptr);
  search->clear();
  EXPECT_TRUE(model(u"nano"_s)->isVisible());
  EXPECT_FALSE(model(u"kling"_s)->isVisible());
}

TEST_F(ModelPickerTest, ARowSaysWhatTheModelCostsAndTakes) {
  press(u"Edit"_s);
  ModelRow* edit = model(u"edit"_s);
  EXPECT_EQ(edit->accessibleName(),
            u"Nano Banana 2 Edit, Google · fast edits with several references, $0.039 / image"_s);
  EXPECT_EQ(edit->accessibleDescription(), u"Takes up to 8 reference images. List price as of 21 Nov 2026"_s);
}

TEST_F(ModelPickerTest, AModelThatCannotTakeTheReferencesSaysWhyInTheSummarysPlace) {
  composer.sections[0].models[0].unsuitable = u"Takes text only"_s;
  Q_EMIT composer.changed();
  EXPECT_EQ(model(u"nano"_s)->accessibleName(), u"Nano Banana 2, Top rated, Takes text only, $0.039 / image"_s);
}

TEST_F(ModelPickerTest, AnEmptyTabLeadsToTheBrowsersCategory) {
  press(u"Animate"_s);
  auto* note = picker->findChild<EmptyNote*>();
  ASSERT_TRUE(note->isVisible());
  EXPECT_EQ(note->accessibleName(), u"No model for animating yet"_s);
  QTest::mouseClick(named<Button>(*note, u"Browse Models"_s), Qt::LeftButton);
  EXPECT_TRUE(browser.calls.contains(u"category 3"_s));
  EXPECT_TRUE(row(u"sunburst"_s)->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), search);
}

TEST_F(ModelPickerTest, SeveralModelsAreChosenTogetherAndCounted) {
  QTest::mouseClick(model(u"flux"_s), Qt::LeftButton, {}, QPoint(18, 24));
  EXPECT_TRUE(composer.calls.contains(u"add flux"_s));
  EXPECT_NE(named<Label>(*picker, u"2 chosen · one contact sheet holds up to 8 outputs"_s), nullptr);
}

TEST_F(ModelPickerTest, DeleteOnAnAddedModelRemovesIt) {
  press(u"Edit"_s);
  model(u"edit"_s)->setFocus();
  QTest::keyClick(model(u"edit"_s), Qt::Key_Delete);
  EXPECT_TRUE(browser.calls.contains(u"remove edit"_s));
  press(u"Image"_s);
  QTest::keyClick(model(u"nano"_s), Qt::Key_Delete);
  EXPECT_FALSE(browser.calls.contains(u"remove nano"_s));
}

TEST_F(ModelPickerTest, ARemovedModelLeavesTheListAndTheKeyboardStaysInIt) {
  composer.sections[1].models.push_back(composer.sections[1].models[0]);
  composer.sections[1].models[1].key = u"second"_s;
  Q_EMIT composer.changed();
  settle();
  press(u"Edit"_s);
  model(u"edit"_s)->setFocus();
  composer.sections[1].models.erase(composer.sections[1].models.begin());
  Q_EMIT composer.changed();
  settle();
  EXPECT_EQ(model(u"edit"_s), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), model(u"second"_s));
}

TEST_F(ModelPickerTest, BrowsingSendsEachWordToTheCatalogue) {
  openBrowse();
  EXPECT_TRUE(browser.calls.contains(u"appear"_s));
  QTest::keyClicks(search, u"fl"_s);
  EXPECT_TRUE(browser.calls.contains(u"words f"_s));
  EXPECT_TRUE(browser.calls.contains(u"words fl"_s));
}

TEST_F(ModelPickerTest, AddShowsItsProgressAndThenTheMark) {
  openBrowse();
  press(u"Add Nano Banana 2 Edit"_s);
  EXPECT_TRUE(browser.calls.contains(u"add edit"_s));
  browser.setRow(u"edit"_s, BrowserRowState::adding, u"Reading this model's settings…"_s);
  EXPECT_FALSE(button(u"Add Nano Banana 2 Edit"_s)->isVisible());
  EXPECT_EQ(row(u"edit"_s)->accessibleDescription(),
            u"Reading this model's settings…. List price as of 21 Nov 2026"_s);
  press(u"Stop Adding Nano Banana 2 Edit"_s);
  EXPECT_TRUE(browser.calls.contains(u"cancel edit"_s));
  browser.setRow(u"edit"_s, BrowserRowState::added, u"Added"_s);
  EXPECT_TRUE(row(u"edit"_s)->accessibleDescription().startsWith(u"Added"_s));
  press(u"Remove Nano Banana 2 Edit"_s);
  EXPECT_TRUE(browser.calls.contains(u"remove edit"_s));
}

TEST_F(ModelPickerTest, ARefusalStandsUnderItsRow) {
  openBrowse();
  const int before = row(u"mask"_s)->height();
  const QString sentence = u"Inpaint needs inputs Sorvan cannot supply yet: mask_url."_s;
  browser.setRow(u"mask"_s, BrowserRowState::offered, {}, sentence);
  settle();
  Paragraph* words = nullptr;
  for (Paragraph* candidate : row(u"mask"_s)->findChildren<Paragraph*>())
    if (candidate->paragraph() == sentence) words = candidate;
  ASSERT_NE(words, nullptr);
  EXPECT_TRUE(words->isVisible());
  EXPECT_GT(row(u"mask"_s)->height(), before + 10);
  EXPECT_GE(words->geometry().top(), before - 4);
  EXPECT_LE(words->geometry().bottom(), row(u"mask"_s)->height());
  EXPECT_EQ(row(u"mask"_s)->accessibleDescription(), sentence);
}

TEST_F(ModelPickerTest, AnAddedModelIsChosenFromTheBrowserToo) {
  openBrowse();
  browser.setRow(u"edit"_s, BrowserRowState::added, u"Added"_s);
  QTest::mouseClick(row(u"edit"_s), Qt::LeftButton, {}, QPoint(150, 20));
  EXPECT_TRUE(composer.calls.contains(u"only edit"_s));
  EXPECT_TRUE(row(u"edit"_s)->isChecked());
  QTest::mouseClick(row(u"edit"_s), Qt::LeftButton, {}, QPoint(18, 20));
  EXPECT_TRUE(composer.calls.contains(u"remove edit"_s));
  QTest::mouseClick(row(u"sunburst"_s), Qt::LeftButton, {}, QPoint(150, 20));
  EXPECT_FALSE(composer.calls.contains(u"only sunburst"_s));
}

TEST_F(ModelPickerTest, TheBrowserIsWalkedByKeyboardAlone) {
  openBrowse();
  search->setFocus();
  QTest::keyClick(search, Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), row(u"sunburst"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), row(u"edit"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(browser.calls.contains(u"add edit"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), button(u"Add Nano Banana 2 Edit"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
  EXPECT_EQ(QApplication::focusWidget(), row(u"mask"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
  EXPECT_EQ(QApplication::focusWidget(), search);
}

TEST_F(ModelPickerTest, TheButtonThatGoesLeavesTheKeyboardToItsRow) {
  openBrowse();
  button(u"Add Nano Banana 2 Edit"_s)->setFocus();
  browser.setRow(u"edit"_s, BrowserRowState::adding, u"Reading this model's settings…"_s);
  EXPECT_EQ(QApplication::focusWidget(), row(u"edit"_s));
}

TEST_F(ModelPickerTest, ScrollingToTheEndAsksForTheNextPageOnce) {
  openBrowse();
  browser.shown.state = BrowserState::results;
  browser.shown.allTitle.clear();
  for (int number = 0; number < 40; ++number)
    browser.shown.rows.push_back(sampleBrowserRow(u"m%1"_s.arg(number), u"Model %1"_s.arg(number), u"One more"_s));
  browser.shown.hasMore = true;
  Q_EMIT browser.changed();
  settle();
  EXPECT_FALSE(browser.calls.contains(u"more"_s));
  auto* bar = picker->findChild<BrowserPage*>()->list().verticalScrollBar();
  bar->setValue(bar->maximum());
  EXPECT_EQ(browser.calls.count(u"more"_s), 1);
  bar->setValue(bar->maximum() - 10);
  EXPECT_EQ(browser.calls.count(u"more"_s), 1);
}

TEST_F(ModelPickerTest, ANextPageKeepsThePlaceThatWasScrolledTo) {
  openBrowse();
  browser.shown.state = BrowserState::results;
  for (int number = 0; number < 40; ++number)
    browser.shown.rows.push_back(sampleBrowserRow(u"m%1"_s.arg(number), u"Model %1"_s.arg(number), u"One more"_s));
  Q_EMIT browser.changed();
  settle();
  auto* bar = picker->findChild<BrowserPage*>()->list().verticalScrollBar();
  bar->setValue(600);
  BrowserRowView* kept = row(u"m3"_s);
  browser.shown.rows.push_back(sampleBrowserRow(u"last"_s, u"Last"_s, u"The last one"_s));
  Q_EMIT browser.changed();
  settle();
  EXPECT_EQ(row(u"m3"_s), kept);
  EXPECT_EQ(bar->value(), 600);
  EXPECT_NE(row(u"last"_s), nullptr);
}

TEST_F(ModelPickerTest, ACatalogueThatCannotBeReadSaysSoAndIsAskedAgain) {
  openBrowse();
  browser.shown.state = BrowserState::failed;
  browser.shown.rows.clear();
  browser.shown.heading.clear();
  browser.shown.title = u"The catalog could not be read"_s;
  browser.shown.text = u"Connection refused"_s;
  Q_EMIT browser.changed();
  settle();
  EmptyNote* note = nullptr;
  for (EmptyNote* candidate : picker->findChildren<EmptyNote*>())
    if (candidate->isVisible()) note = candidate;
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->accessibleName(), u"The catalog could not be read"_s);
  QTest::mouseClick(named<Button>(*note, u"Try Again"_s), Qt::LeftButton);
  EXPECT_TRUE(browser.calls.contains(u"again"_s));
}

TEST_F(ModelPickerTest, TheWholeCatalogueIsOneButtonAway) {
  openBrowse();
  press(u"Show the Whole Catalog"_s);
  EXPECT_TRUE(browser.calls.contains(u"all"_s));
}

TEST_F(ModelPickerTest, TheComposerOfSoundsHasNoBrowser) {
  picker->dismiss();
  composer.startAudio();
  dock.openModelPicker();
  for (ModelPicker* candidate : window.findChildren<ModelPicker*>())
    if (candidate->isVisible()) picker = candidate;
  EXPECT_NE(button(u"Voice"_s), nullptr);
  EXPECT_EQ(button(u"Browse"_s), nullptr);
}

}  // namespace
}  // namespace sorvan::views
