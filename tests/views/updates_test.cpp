#include <QPlainTextEdit>

#include "shell/updates_texts.h"
#include "shell/views/controls.h"
#include "shell/views/update_pill.h"
#include "shell/views/usage_page.h"
#include "views/access_walk.h"
#include "views/text_contrast.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class UpdatesViews : public WholeWindow {
 protected:
  void release() { notice.consider({u"2.1"_s, 9, u"https://sorvan.example/get"_s, std::nullopt}); }
};

TEST_F(UpdatesViews, ANewerBuildStandsInTheStripUntilLater) {
  auto* pill = window->findChild<UpdatePill*>();
  ASSERT_NE(pill, nullptr);
  EXPECT_FALSE(pill->isVisible());
  release();
  test::runPosted();
  ASSERT_TRUE(pill->isVisible());
  EXPECT_EQ(pill->accessibleName(), u"Sorvan 2.1 is available"_s);
  EXPECT_EQ(test::namelessElements(*window).join(u'\n').toStdString(), "");
  EXPECT_EQ(test::keyboardFaults(*window).join(u'\n').toStdString(), "");
  QTest::mouseClick(named<Button>(*pill, u"Later"_s), Qt::LeftButton);
  EXPECT_FALSE(pill->isVisible());
  release();
  EXPECT_FALSE(pill->isVisible());
}

TEST_F(UpdatesViews, UsageIsSharedOnlyAfterTheSwitchIsTurnedOn) {
  UsagePage usagePage(updates);
  show(usagePage, {600, 640});
  auto* report = usagePage.findChild<QPlainTextEdit*>();
  EXPECT_FALSE(report->isVisible());
  auto* sharing = named<Switch>(usagePage, shell::texts::usageShare);
  ASSERT_NE(sharing, nullptr);
  EXPECT_FALSE(sharing->isChecked());
  QTest::mouseClick(sharing, Qt::LeftButton);
  EXPECT_TRUE(usage.enabled());
  EXPECT_TRUE(report->isVisible());
  EXPECT_TRUE(report->toPlainText().contains(u"\"events\""_s));
  for (const Appearance look : {Appearance::light, Appearance::dark}) {
    Theme::instance().setAppearance(look);
    QCoreApplication::processEvents();
    EXPECT_EQ(test::faintTexts(usagePage).toStdString(), "");
  }
  EXPECT_EQ(test::namelessElements(usagePage).join(u'\n').toStdString(), "");
  QTest::mouseClick(sharing, Qt::LeftButton);
  EXPECT_FALSE(usage.enabled());
  EXPECT_FALSE(report->isVisible());
}

}  // namespace
}  // namespace sorvan::views
