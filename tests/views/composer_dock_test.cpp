#include "shell/views/composer_dock.h"

#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>
#include <QSignalSpy>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/model_picker.h"
#include "shell/views/model_row.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/segmented_control.h"
#include "shell/views/thumbnail_store.h"
#include "support/run_task.h"
#include "views/dressed.h"
#include "views/samples.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ComposerDockTest : public Dressed {
 protected:
  ComposerDockTest() {
    show(window, {1000, 800});
    dock.setGeometry(20, 500, 900, dock.heightForWidth(900));
    QObject::connect(&dock, &ComposerDock::heightChanged, &dock,
                     [this] { dock.resize(900, dock.heightForWidth(900)); });
    dock.show();
    prompt = named<PromptEdit>(dock, u"Prompt"_s);
  }
  Chip* chip(const QString& name) { return named<Chip>(dock, name); }
  void press(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
  ModelRow* row(const QString& start) {
    for (ModelRow* candidate : window.findChildren<ModelRow*>()) {
      if (candidate->accessibleName().startsWith(start)) return candidate;
    }
    return nullptr;
  }
  void openPicker() { dock.openModelPicker(); }

  SampleComposer composer;
  QWidget window;
  ThumbnailStore thumbnails;
  ComposerDock dock{composer, thumbnails, &window};
  PromptEdit* prompt = nullptr;
};

TEST_F(ComposerDockTest, TheFocusOpensTheDockAndTypingEditsTheDraft) {
  window.setFocus();
  composer.setExpanded(false);
  const int before = dock.height();
  prompt->clearFocus();
  dock.focusPrompt();
  EXPECT_TRUE(composer.shown.expanded);
  EXPECT_GT(dock.height(), before);
  QTest::keyClicks(prompt, u"a boat"_s);
  EXPECT_EQ(composer.text, u"a boat"_s);
}

TEST_F(ComposerDockTest, WhoPaysIsChosenFromWhatEachWayMeans) {
  composer.setExpanded(true);
  composer.shown.payer = composer.shown.payWith.label = u"Pay with fal.ai Key"_s;
  composer.shown.payWith.offered = composer.shown.payWith.ownKeyPays = true;
  composer.shown.payWith.help = u"Payment method: your own fal.ai key (BYOK)."_s;
  composer.shown.payWith.credits = u"Sorvan Credits"_s;
  composer.shown.payWith.creditsBalance = u"1,240 credits"_s;
  composer.shown.payWith.key = u"My fal.ai Key (BYOK)"_s;
  composer.shown.payWith.account = u"Account and Credits…"_s;
  Q_EMIT composer.changed();
  auto* payer = named<QAbstractButton>(dock, u"Pay with fal.ai Key"_s);
  ASSERT_TRUE(payer && payer->isVisible());
  EXPECT_EQ(payer->accessibleDescription(), composer.shown.payWith.help);
  press(payer);
  auto* credits = named<QRadioButton>(window, u"Sorvan Credits"_s);
  ASSERT_NE(credits, nullptr);
  EXPECT_EQ(credits->text(), u"Sorvan Credits · 1,240 credits"_s);
  EXPECT_TRUE(named<QRadioButton>(window, u"My fal.ai Key (BYOK)"_s)->isChecked());
  credits->click();
  EXPECT_TRUE(composer.calls.contains(u"credits"_s));
}

TEST_F(ComposerDockTest, ASavedKeyThatDoesNotCountSaysWhyInThePlaceOfPayWith) {
  composer.setExpanded(true);
  composer.shown.payer = composer.shown.payWith.label = u"fal.ai Key Not Used"_s;
  composer.shown.payWith.keyProblem = u"This account pays with Sorvan Credits only."_s;
  composer.shown.payWith.account = u"Account and Credits…"_s;
  Q_EMIT composer.changed();
  press(named<QAbstractButton>(dock, u"fal.ai Key Not Used"_s));
  EXPECT_EQ(named<QRadioButton>(window, u"Sorvan Credits"_s), nullptr);
  EXPECT_NE(named<QLabel>(window, u"This account pays with Sorvan Credits only."_s), nullptr);
  press(named<Button>(window, u"Account and Credits…"_s));
  EXPECT_TRUE(composer.calls.contains(u"account"_s));
}

TEST_F(ComposerDockTest, EnterSubmitsAndShiftEnterBreaksTheLine) {
  dock.focusPrompt();
  QTest::keyClicks(prompt, u"a"_s);
  QTest::keyClick(prompt, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(prompt, u"b"_s);
  EXPECT_EQ(composer.text, u"a\nb"_s);
  EXPECT_FALSE(composer.calls.contains(u"submit"_s));
  QTest::keyClick(prompt, Qt::Key_Return);
  EXPECT_EQ(composer.calls.count(u"submit"_s), 1);
}

TEST_F(ComposerDockTest, TheGenerateButtonSubmitsOnceAPress) {
  dock.focusPrompt();
  press(named<Button>(dock, u"Generate"_s));
  EXPECT_EQ(composer.calls.count(u"submit"_s), 1);
}

TEST_F(ComposerDockTest, WhileTheComposerIsBusyGenerateCannotBePressed) {
  composer.shown.submitBusy = true;
  Q_EMIT composer.changed();
  press(named<Button>(dock, u"Generate"_s));
  EXPECT_FALSE(composer.calls.contains(u"submit"_s));
}

TEST_F(ComposerDockTest, ADraftThatCodeReplacedIsShownWithoutBeingToldBack) {
  composer.calls.clear();
  Q_EMIT composer.draftReplaced(u"taken over"_s);
  EXPECT_EQ(prompt->toPlainText(), u"taken over"_s);
  EXPECT_TRUE(composer.calls.isEmpty());
}

TEST_F(ComposerDockTest, PastedTextIsPlain) {
  dock.focusPrompt();
  auto* rich = new QMimeData;
  rich->setHtml(u"<b>bold</b>"_s);
  rich->setText(u"bold"_s);
  QApplication::clipboard()->setMimeData(rich);
  prompt->paste();
  EXPECT_EQ(composer.text, u"bold"_s);
  EXPECT_FALSE(prompt->toHtml().contains(u"font-weight:700"_s));
}

TEST_F(ComposerDockTest, EscapeFoldsTheDockAndLeaves) {
  dock.focusPrompt();
  QSignalSpy left(&dock, &ComposerDock::left);
  QTest::keyClick(prompt, Qt::Key_Escape);
  EXPECT_EQ(left.count(), 1);
  EXPECT_FALSE(composer.shown.expanded);
}

TEST_F(ComposerDockTest, ALongPromptGrowsTheEditorOnlyToItsBound) {
  dock.focusPrompt();
  Q_EMIT composer.draftReplaced(QString(6000, u'w').replace(80, 1, u" "_s));
  Q_EMIT composer.changed();
  EXPECT_LE(prompt->height(), metrics().composerEditorMax);
  EXPECT_GT(prompt->height(), metrics().composerEditorMin);
}

TEST_F(ComposerDockTest, AClickOnAModelChoosesItAlone) {
  openPicker();
  QTest::mouseClick(row(u"FLUX 3"_s), Qt::LeftButton, {}, QPoint(200, 20));
  EXPECT_TRUE(composer.calls.contains(u"only flux"_s));
  EXPECT_TRUE(row(u"FLUX 3"_s)->isChecked());
  EXPECT_FALSE(row(u"Nano Banana 2"_s)->isChecked());
}

TEST_F(ComposerDockTest, TheCheckboxOfAModelAddsIt) {
  openPicker();
  QTest::mouseClick(row(u"FLUX 3"_s), Qt::LeftButton, {}, QPoint(18, 24));
  EXPECT_TRUE(composer.calls.contains(u"add flux"_s));
  QTest::mouseClick(row(u"Wan 3.0"_s), Qt::LeftButton, Qt::ControlModifier, QPoint(200, 20));
  EXPECT_TRUE(composer.calls.contains(u"add wan"_s));
}

TEST_F(ComposerDockTest, ASoundModelStandsAlone) {
  composer.startAudio();
  openPicker();
  QTest::mouseClick(row(u"Speech 3 HD"_s), Qt::LeftButton, {}, QPoint(18, 24));
  EXPECT_TRUE(composer.calls.contains(u"only voice"_s));
}

TEST_F(ComposerDockTest, TypingInThePickerFiltersAndArrowsReachTheRows) {
  openPicker();
  auto* search = named<TextField>(window, u"Search models"_s);
  ASSERT_NE(search, nullptr);
  QTest::keyClicks(search, u"kling"_s);
  EXPECT_TRUE(row(u"Kling"_s)->isVisible());
  EXPECT_FALSE(row(u"FLUX 3"_s)->isVisible());
  QTest::keyClick(search, Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), row(u"Kling"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_TRUE(composer.calls.contains(u"add kling"_s));
}

TEST_F(ComposerDockTest, EscapeAndAClickElsewhereCloseThePicker) {
  openPicker();
  QPointer<ModelPicker> picker = window.findChild<ModelPicker*>();
  ASSERT_TRUE(picker);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(picker->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), chip(u"Model"_s));
  openPicker();
  for (ModelPicker* open : window.findChildren<ModelPicker*>()) {
    if (open->isVisible()) picker = open;
  }
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(980, 20));
  EXPECT_FALSE(picker->isVisible());
}

TEST_F(ComposerDockTest, TheChipOfAnOpenPopoverIsMarkedUntilItCloses) {
  auto* chip = named<Chip>(dock, u"Model"_s);
  const QImage before = chip->grab().toImage();
  dock.openModelPicker();
  EXPECT_NE(chip->grab().toImage(), before);
  window.findChild<ModelPicker*>()->dismiss();
  EXPECT_EQ(chip->grab().toImage(), before);
}

TEST_F(ComposerDockTest, RatioCountAndSeedAreChosenInTheirPopovers) {
  dock.focusPrompt();
  press(chip(u"Ratio"_s));
  QAbstractButton* square = named<QAbstractButton>(window, u"1:1, Square"_s);
  ASSERT_NE(square, nullptr);
  press(square);
  EXPECT_TRUE(composer.calls.contains(u"size square"_s));
  press(chip(u"Count"_s));
  press(named<QAbstractButton>(window, u"3"_s));
  EXPECT_TRUE(composer.calls.contains(u"count 3"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  press(chip(u"Seed"_s));
  auto* field = named<TextField>(window, u"Seed"_s);
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, u"42"_s);
  EXPECT_TRUE(composer.calls.contains(u"seed 42"_s));
}

TEST_F(ComposerDockTest, ALengthIsOfferedOnlyWhereThereIsOne) {
  dock.focusPrompt();
  EXPECT_FALSE(chip(u"Length"_s)->isVisible());
  composer.shown.lengthShown = true;
  Q_EMIT composer.changed();
  EXPECT_TRUE(chip(u"Length"_s)->isVisible());
  press(chip(u"Length"_s));
  press(named<QAbstractButton>(window, u"8 s"_s));
  EXPECT_TRUE(composer.calls.contains(u"length 8"_s));
}

TEST_F(ComposerDockTest, AudioIsChosenBySegmentAndShownByIt) {
  dock.focusPrompt();
  SegmentedControl* kind = nullptr;
  for (SegmentedControl* candidate : dock.findChildren<SegmentedControl*>()) {
    if (candidate->isVisible()) kind = candidate;
  }
  ASSERT_NE(kind, nullptr);
  press(named<QAbstractButton>(*kind, u"Audio"_s));
  EXPECT_TRUE(composer.calls.contains(u"audio"_s));
  EXPECT_EQ(kind->current(), 1);
  press(named<QAbstractButton>(*kind, u"Images and video"_s));
  EXPECT_TRUE(composer.calls.contains(u"images"_s));
  EXPECT_EQ(kind->current(), 0);
}

TEST_F(ComposerDockTest, TheFigureStandsBesideTheButtonThatSpendsIt) {
  dock.focusPrompt();
  auto* generate = named<Button>(dock, u"Generate"_s);
  EXPECT_EQ(named<ElidedLabel>(dock, u"≈ $0.078"_s), nullptr);
  composer.shown.estimate = u"≈ $0.078"_s;
  composer.shown.estimateTooltip = u"Paid by your own fal.ai key."_s;
  Q_EMIT composer.changed();
  auto* figure = named<ElidedLabel>(dock, u"≈ $0.078"_s);
  ASSERT_NE(figure, nullptr);
  EXPECT_TRUE(figure->isVisible());
  EXPECT_LE(figure->geometry().right(), generate->geometry().left());
  EXPECT_GE(figure->geometry().right(), generate->geometry().left() - 16);
  EXPECT_TRUE(generate->accessibleDescription().startsWith(u"≈ $0.078"_s));
  composer.shown.estimate.clear();
  Q_EMIT composer.changed();
  EXPECT_FALSE(figure->isVisible());
}

TEST_F(ComposerDockTest, NoticesStandAboveTheControlsAndErrorsStay) {
  dock.focusPrompt();
  composer.shown.notices = {ComposerNotice(u"References require models that accept images."_s)};
  Q_EMIT composer.changed();
  auto* notice = dock.findChild<NoticeBar*>();
  ASSERT_NE(notice, nullptr);
  EXPECT_TRUE(notice->isVisible());
  EXPECT_LT(notice->geometry().bottom(), chip(u"Model"_s)->geometry().top());
  composer.line = {u"The seed must be a non-negative whole number."_s, true};
  Q_EMIT composer.messageChanged();
  auto* message = named<ElidedLabel>(dock, composer.line.text);
  ASSERT_NE(message, nullptr);
  EXPECT_TRUE(message->isVisible());
}

TEST_F(ComposerDockTest, NoControlStandsOnAnotherAtTheNarrowestContent) {
  composer.shown.lengthShown = true;
  composer.shown.countSuffix = u"per model"_s;
  composer.shown.estimate = u"≈ $12.34"_s;
  dock.focusPrompt();
  Q_EMIT composer.changed();
  dock.resize(592, dock.heightForWidth(592));
  QCoreApplication::processEvents();
  std::vector<QWidget*> row;
  for (const char* name : {"Model", "Ratio", "Length", "Count", "Seed"}) row.push_back(chip(QLatin1StringView(name)));
  row.push_back(named<ElidedLabel>(dock, u"≈ $12.34"_s));
  row.push_back(named<Button>(dock, u"Generate"_s));
  for (size_t index = 0; index + 1 < row.size(); ++index)
    EXPECT_LE(row[index]->geometry().right(), row[index + 1]->geometry().left())
        << qPrintable(row[index]->accessibleName());
}

TEST_F(ComposerDockTest, AttachedPicturesAreChipsThatACrossTakesAway) {
  const AttachedReference one{QUuid::createUuid(), u"@Tin"_s, u"Product"_s, {}, {}, 0, {}};
  const int before = dock.heightForWidth(900);
  composer.shown.expanded = true;
  Q_EMIT composer.changed();
  const int open = dock.heightForWidth(900);
  composer.shown.references = {one};
  Q_EMIT composer.changed();
  EXPECT_GT(dock.heightForWidth(900), std::max(before, open));
  composer.calls.clear();
  press(named<IconButton>(dock, u"Remove @Tin"_s));
  test::runPosted();
  EXPECT_EQ(composer.calls, QStringList{u"detach "_s + one.id.toString()});
}

TEST_F(ComposerDockTest, MarksAreAChipThatOpensThemAndACrossThatRemovesThem) {
  const AttachedReference marked{QUuid::createUuid(), u"@Reference1"_s, u"Edit source"_s, {}, {}, 2, u"2 marks"_s};
  composer.shown.expanded = true;
  composer.shown.references = {marked};
  Q_EMIT composer.changed();
  composer.calls.clear();
  press(named<Button>(dock, u"2 marks"_s));
  press(named<IconButton>(dock, u"Remove Marks"_s));
  test::runPosted();
  EXPECT_EQ(composer.calls, (QStringList{u"open marks "_s + marked.id.toString(), u"remove marks"_s}));
}

TEST_F(ComposerDockTest, ManyReferencesWrapAndACollapsedDockHidesThem) {
  composer.shown.expanded = true;
  for (int number = 1; number <= 8; ++number)
    composer.shown.references.push_back(
        {QUuid::createUuid(), u"@Reference%1"_s.arg(number), u"No role"_s, {}, {}, 0, {}});
  Q_EMIT composer.changed();
  const QWidget* last = named<IconButton>(dock, u"Remove @Reference8"_s);
  const QWidget* first = named<IconButton>(dock, u"Remove @Reference1"_s);
  ASSERT_TRUE(first && last);
  EXPECT_GT(last->mapTo(&dock, QPoint()).y(), first->mapTo(&dock, QPoint()).y());
  EXPECT_LE(last->mapTo(&dock, QPoint(last->width(), 0)).x(), dock.width());
  composer.setExpanded(false);
  EXPECT_FALSE(first->isVisible());
}

}  // namespace
}  // namespace sorvan::views
