#include <gtest/gtest.h>

#include <QFile>

#include "desk.h"
#include "shell/health_presenter.h"

namespace sorvan::shell {
namespace {

using test::Desk;

struct HealthTest : testing::Test {
  Desk desk;
  HealthPresenter health{desk.store};

  void checkToTheEnd() {
    health.check();
    finish();
  }
  void finish() {
    test::runUntil([this] { return !health.display().checking; });
  }
  QString sidecar(const QString& name) const { return desk.store.files().sidecar(name); }
  void damage(const QString& name) const {
    QFile file(sidecar(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("garbage");
  }
};

TEST_F(HealthTest, SaysWhileItLooksAndThenThatNothingIsWrong) {
  health.check();
  EXPECT_EQ(health.display().head, QStringLiteral("Checking this workspace…"));
  finish();
  const HealthDisplay display = health.display();
  EXPECT_EQ(display.head, QStringLiteral("No repairs needed"));
  EXPECT_EQ(display.state, QStringLiteral("No issues"));
  ASSERT_EQ(display.rows.size(), 4u);
  EXPECT_EQ(display.rows[0].title, QStringLiteral("Saved prompts"));
  EXPECT_EQ(display.rows[0].count, QStringLiteral("None saved"));
  EXPECT_TRUE(display.repair.isEmpty());
}

TEST_F(HealthTest, ADamagedFileIsSavedAgainFromMemory) {
  desk.store.prompts().save({}, QStringLiteral("a fox"), desk.clock->now());
  damage(QStringLiteral("prompts.json"));
  checkToTheEnd();
  EXPECT_EQ(health.display().head, QStringLiteral("1 area to review"));
  EXPECT_EQ(health.display().state, QStringLiteral("Needs attention"));
  EXPECT_EQ(health.display().rows[0].count, QStringLiteral("1 saved"));
  EXPECT_EQ(health.display().repair, QStringLiteral("Try Saving Again"));
  health.trySavingAgain();
  finish();
  EXPECT_EQ(health.display().feedback, QStringLiteral("Your pending changes have been saved."));
  EXPECT_FALSE(health.display().feedbackIsError);
  EXPECT_EQ(health.display().head, QStringLiteral("No repairs needed"));
}

TEST_F(HealthTest, ARepairThatFailsSaysSo) {
  desk.store.prompts().save({}, QStringLiteral("a fox"), desk.clock->now());
  damage(QStringLiteral("prompts.json"));
  checkToTheEnd();
  ASSERT_TRUE(QFile::remove(desk.store.files().lockFile()));
  health.trySavingAgain();
  finish();
  EXPECT_EQ(health.display().feedback,
            QStringLiteral("Some changes still couldn’t be saved. Check the details below before closing Sorvan."));
  EXPECT_TRUE(health.display().feedbackIsError);
}

TEST_F(HealthTest, TheAnswerOfAnEarlierCheckIsDropped) {
  desk.store.prompts().save({}, QStringLiteral("a fox"), desk.clock->now());
  health.check();
  damage(QStringLiteral("prompts.json"));
  checkToTheEnd();
  EXPECT_EQ(health.display().state, QStringLiteral("Needs attention"));
  test::runPosted();
  EXPECT_EQ(health.display().state, QStringLiteral("Needs attention"));
}

TEST_F(HealthTest, AWorkspaceThatIsClosedHasNoReport) {
  checkToTheEnd();
  desk.store.close();
  EXPECT_TRUE(health.display().state.isEmpty());
  health.check();
  EXPECT_FALSE(health.display().checking);
}

TEST_F(HealthTest, NothingIsOfferedDuringABackup) {
  desk.store.prompts().save({}, QStringLiteral("a fox"), desk.clock->now());
  damage(QStringLiteral("prompts.json"));
  checkToTheEnd();
  desk.store.setBackingUp(true);
  EXPECT_TRUE(health.display().repair.isEmpty());
  desk.store.setBackingUp(false);
}

}  // namespace
}  // namespace sorvan::shell
