// The dock over a real composer: what keys and buttons do to the queue and the library.
#include "shell/views/composer_dock.h"

#include <QInputMethodEvent>

#include "shell/desk.h"
#include "shell/two_clips.h"
#include "shell/views/choice_buttons.h"
#include "shell/views/composer_head.h"
#include "shell/views/composer_settings.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/prompt_history.h"
#include "shell/views/segmented_control.h"
#include "shell/views/thumbnail_store.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class ComposerDeskTest : public Dressed {
 protected:
  ComposerDeskTest() {
    show(window, {1000, 800});
    QObject::connect(&dock, &ComposerDock::heightChanged, &dock, [this] { fit(); });
    fit();
    dock.show();
    prompt = named<PromptEdit>(dock, u"Prompt"_s);
    dock.focusPrompt();
  }
  void fit() { dock.setGeometry(20, 300, 900, dock.heightForWidth(900)); }
  void type(const QString& text) {
    QTest::keyClicks(prompt, text);
    desk.clock->advance(200ms);
    test::runPosted();
  }
  std::size_t posts() {
    test::runPosted();
    return desk.store.jobs().size();
  }
  // All that the window system sends for one.
  static void doubleClick(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton);
    QTest::mouseDClick(widget, Qt::LeftButton);
    QTest::mouseRelease(widget, Qt::LeftButton);
  }
  Button* submit() { return named<Button>(dock, desk.composer.display().submitTitle); }

  test::Desk desk;
  QWidget window;
  ThumbnailStore thumbnails;
  ComposerDock dock{desk.composer, thumbnails, &window};
  PromptEdit* prompt = nullptr;
};

TEST_F(ComposerDeskTest, ADoubleClickOnGenerateSubmitsOnce) {
  desk.provider->gate.emplace();
  type(u"a red boat"_s);
  doubleClick(submit());
  EXPECT_EQ(posts(), 1u);
  doubleClick(submit());
  EXPECT_EQ(posts(), 1u) << "the field is empty by then";
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(ComposerDeskTest, EnterPressedTwiceSubmitsOnce) {
  desk.provider->gate.emplace();
  type(u"a red boat"_s);
  QTest::keyClick(prompt, Qt::Key_Return);
  QTest::keyClick(prompt, Qt::Key_Return);
  EXPECT_EQ(posts(), 1u);
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(ComposerDeskTest, TheCommandSwitchTurnsTheFieldToCommandsAndBack) {
  type(u"half a thought"_s);
  QTest::mouseClick(named<IconButton>(dock, u"Command Mode"_s), Qt::LeftButton);
  EXPECT_EQ(prompt->accessibleName(), u"Command"_s);
  EXPECT_EQ(prompt->toPlainText(), QString());
  type(u"find temple images"_s);
  EXPECT_EQ(prompt->accessibleDescription(), u"Find media"_s);
  QTest::keyClick(prompt, Qt::Key_Return);
  test::runPosted();
  EXPECT_EQ(desk.state.filter().search, u"temple"_s);
  EXPECT_EQ(posts(), 0u);
  EXPECT_EQ(prompt->toPlainText(), u"half a thought"_s);
}

TEST_F(ComposerDeskTest, EscapeLeavesTheCommandAndThePromptIsThere) {
  type(u"half a thought"_s);
  desk.composer.setCommandMode(true);
  type(u"find"_s);
  QTest::keyClick(prompt, Qt::Key_Escape);
  EXPECT_FALSE(desk.composer.display().command);
  EXPECT_EQ(prompt->toPlainText(), u"half a thought"_s);
}

TEST_F(ComposerDeskTest, PastPromptsAreChosenByKey) {
  desk.generate(u"a red boat"_s);
  desk.settle();
  dock.openPromptHistory();
  auto* history = window.findChild<PromptHistory*>();
  ASSERT_TRUE(history);
  QTest::keyClick(history, Qt::Key_Down);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(prompt->toPlainText(), u"a red boat"_s);
}

TEST_F(ComposerDeskTest, LeavingTheFieldHandsTheDraftToTheDisk) {
  type(u"half a thought"_s);
  prompt->clearFocus();
  test::runTask(desk.store.composer().whenWritten());
  ASSERT_TRUE(desk.store.keptComposer());
  EXPECT_EQ(desk.store.keptComposer()->text, u"half a thought"_s);
}

TEST_F(ComposerDeskTest, TheSettingsStripOpensBelowThePromptAndChooses) {
  const int before = dock.heightForWidth(900);
  QTest::mouseClick(named<IconButton>(dock, u"More Settings"_s), Qt::LeftButton);
  auto* strip = dock.findChild<ComposerSettings*>();
  ASSERT_TRUE(strip && strip->isVisible());
  EXPECT_GT(dock.heightForWidth(900), before + 60);
  EXPECT_GT(strip->y(), prompt->geometry().bottom());
  auto* resolution = named<SegmentedControl>(*strip, u"Resolution"_s);
  ASSERT_TRUE(resolution);
  EXPECT_EQ(resolution->current(), 1);
  QTest::mouseClick(named<QAbstractButton>(*resolution, u"4K"_s), Qt::LeftButton);
  EXPECT_EQ(desk.composing.request().options->value(u"resolution"_s), u"4K"_s);
  EXPECT_EQ(resolution->current(), 3);
  auto* square = named<RatioButton>(*strip, u"1:1, Square"_s);
  ASSERT_TRUE(square);
  QTest::mouseClick(square, Qt::LeftButton);
  EXPECT_TRUE(square->isChecked());
  EXPECT_EQ(desk.composing.request().size, u"1024x1024"_s);
  QTest::mouseClick(named<IconButton>(dock, u"More Settings"_s), Qt::LeftButton);
  EXPECT_FALSE(strip->isVisible());
}

TEST_F(ComposerDeskTest, TheSettingsStripFollowsTheChips) {
  desk.composer.setSettingsShown(true);
  auto* strip = dock.findChild<ComposerSettings*>();
  desk.composer.chooseCount(3);
  EXPECT_EQ(named<SegmentedControl>(*strip, u"Count"_s)->current(), 2);
  desk.composer.rollSeed();
  EXPECT_EQ(named<TextField>(*strip, u"Seed"_s)->text(), desk.composing.seedText());
  desk.composer.chooseOnlyModel(u"fal.ai:fal-ai/flux/schnell"_s);
  const auto* resolution = named<SegmentedControl>(*strip, u"Resolution"_s);
  EXPECT_FALSE(resolution && resolution->isVisible());
}

TEST_F(ComposerDeskTest, TheButtonsOfANoticeAreReachableByKeyAndDoWhatTheySay) {
  desk.composing.setModels(test::twoClips());
  desk.composer.chooseOnlyModel(u"fal.ai:one"_s);
  desk.composer.setModelChosen(u"fal.ai:two"_s, true);
  auto* choose = named<Button>(dock, u"Choose Lengths…"_s);
  ASSERT_TRUE(choose);
  QTest::keyClick(choose, Qt::Key_Space);
  bool opened = false;
  for (const Popover* popover : window.findChildren<Popover*>())
    opened = opened || popover->accessibleName() == u"Video Length"_s;
  EXPECT_TRUE(opened);
}

}  // namespace
}  // namespace sorvan::views
