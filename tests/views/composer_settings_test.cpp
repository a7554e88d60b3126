// The settings strip by itself: what becomes of values that are few or many, and of a width that is small.
#include "shell/views/composer_settings.h"

#include <QMenu>

#include "shell/views/choice_buttons.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/segmented_control.h"
#include "support/run_task.h"
#include "views/dressed.h"
#include "views/samples.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

// Notes which setting was chosen.
class NotingComposer final : public ComposerPresenter {
 public:
  ComposerDisplay display() const override { return sample.shown; }
  std::vector<ModelSection> modelSections() const override { return {}; }
  MessageLine message() const override { return {}; }
  QString draft() const override { return {}; }
  void editDraft(const QString&) override {}
  void chooseOnlyModel(const QString&) override {}
  void setModelChosen(const QString&, bool) override {}
  void chooseSize(const QString& size) override { chosen << size; }
  void chooseCount(int count) override { chosen << QString::number(count); }
  void chooseLength(const QString&) override {}
  void chooseSetting(const QString& field, const QString& value) override { chosen << field + u'=' + value; }
  void editSeed(const QString& text) override { chosen << u"seed "_s + text; }
  void rollSeed() override {}
  void setExpanded(bool) override {}
  void focus() override {}
  void startAudio() override {}
  void startImages() override {}
  void submit() override {}
  void clear() override {}
  void reusePrompt(QUuid) override {}
  void useAsReference(QUuid) override {}
  void detachReference(QUuid) override {}
  void removeMarks() override {}
  void openMarks(QUuid) override {}

  SampleComposer sample;
  QStringList chosen;
};

class ComposerSettingsTest : public Dressed {
 protected:
  ComposerSettingsTest() {
    display().settingsOffered = display().settingsShown = true;
    display().settings = {sampleSetting(u"resolution"_s, u"Resolution"_s, {u"0.5K"_s, u"1K"_s, u"2K"_s}),
                          sampleSetting(u"style"_s, u"Style"_s, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s})};
    show(window, {1000, 500});
    strip.setGeometry(0, 0, 900, 300);
    strip.show();
    strip.refresh(display());
    test::runPosted();
  }
  ComposerDisplay& display() { return composer.sample.shown; }

  NotingComposer composer;
  QWidget window;
  ComposerSettings strip{composer, &window};
};

TEST_F(ComposerSettingsTest, FewValuesStandSideBySideAndManyAreAMenu) {
  EXPECT_TRUE(named<SegmentedControl>(strip, u"Resolution"_s));
  EXPECT_FALSE(named<SegmentedControl>(strip, u"Style"_s));
  auto* style = named<Chip>(strip, u"Style"_s);
  ASSERT_TRUE(style);
  EXPECT_EQ(style->accessibleDescription(), u"b"_s);
  QTest::keyClick(style, Qt::Key_Space);
  auto* menu = style->findChild<QMenu*>();
  ASSERT_TRUE(menu);
  ASSERT_EQ(menu->actions().size(), 6);
  EXPECT_TRUE(menu->actions()[1]->isChecked());
  menu->actions()[4]->trigger();
  EXPECT_EQ(composer.chosen, QStringList{u"style=e"_s});
  menu->close();
}

TEST_F(ComposerSettingsTest, AChoiceIsToldByMouseAndByKey) {
  auto* resolution = named<SegmentedControl>(strip, u"Resolution"_s);
  QTest::mouseClick(named<QAbstractButton>(*resolution, u"2K"_s), Qt::LeftButton);
  QTest::keyClick(named<RatioButton>(strip, u"3:2, Photo"_s), Qt::Key_Return);
  QTest::keyClicks(named<TextField>(strip, u"Seed"_s), u"7"_s);
  EXPECT_EQ(composer.chosen, (QStringList{u"resolution=2K"_s, u"32"_s, u"seed 7"_s}));
}

TEST_F(ComposerSettingsTest, TheKeyboardStaysWhereItIsWhileOnlyValuesChange) {
  auto* seed = named<TextField>(strip, u"Seed"_s);
  seed->setFocus();
  display().seedText = u"42"_s;
  display().count = 3;
  strip.refresh(display());
  EXPECT_EQ(named<TextField>(strip, u"Seed"_s), seed);
  EXPECT_TRUE(seed->hasFocus());
  EXPECT_EQ(seed->text(), u"42"_s);
}

TEST_F(ComposerSettingsTest, WhatDoesNotFitGoesOnInAnotherRowAndNothingOverlaps) {
  EXPECT_GT(strip.heightForWidth(420), strip.heightForWidth(900));
  strip.resize(420, strip.heightForWidth(420));
  std::vector<QRect> places;
  for (const QWidget* child : strip.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
    if (child->isVisible()) places.push_back(child->geometry());
  ASSERT_EQ(places.size(), 5u);
  for (std::size_t one = 0; one < places.size(); ++one) {
    EXPECT_TRUE(strip.rect().contains(places[one])) << one;
    for (std::size_t other = one + 1; other < places.size(); ++other)
      EXPECT_FALSE(places[one].intersects(places[other])) << one << " and " << other;
  }
}

TEST_F(ComposerSettingsTest, ASettingThatTheModelsNoLongerShareGoes) {
  display().settings.pop_back();
  strip.refresh(display());
  const auto* style = named<Chip>(strip, u"Style"_s);
  EXPECT_FALSE(style && style->isVisible());
}

}  // namespace
}  // namespace sorvan::views
