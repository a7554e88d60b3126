#include "shell/work_news.h"

#include "base/sorvan_error.h"
#include "shell/desk.h"
#include "shell/window_presenter.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace sorvan::shell {
namespace {

class NotedStand final : public NewsStand {
 public:
  void show(const DesktopNews& news) override { shown.push_back(news); }
  void withdraw() override { ++withdrawn; }
  std::vector<DesktopNews> shown;
  int withdrawn = 0;
};

struct WorkNewsTest : testing::Test {
  test::Desk desk;
  WindowPresenter window{desk.store, desk.state, desk.alerts, QStringLiteral("Sorvan Studio")};
  NotedStand stand;
  WorkNews news{{desk.store, desk.queue, desk.state, window, desk.jobs, desk.displays, stand}};

  void run(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
  }
};

TEST_F(WorkNewsTest, WhatEndsBeforeOnesEyesIsNoNews) {
  run(QStringLiteral("a boat"));
  EXPECT_TRUE(stand.shown.empty());
}

TEST_F(WorkNewsTest, AResultIsToldInTheBackgroundAndOpensInTheGallery) {
  window.setInFront(false);
  run(QStringLiteral("a boat"));
  ASSERT_EQ(stand.shown.size(), 1u);
  EXPECT_EQ(stand.shown[0].title, QStringLiteral("Saved 1 image locally"));
  EXPECT_EQ(stand.shown[0].text, QStringLiteral("a boat"));
  EXPECT_EQ(stand.shown[0].actionTitle, QStringLiteral("Show"));
  desk.state.setMode({ModeKind::activity});
  QSignalSpy raised(&window, &WindowPresenter::raiseRequested);
  Q_EMIT stand.activated(QStringLiteral("token-1"));
  ASSERT_EQ(raised.count(), 1);
  EXPECT_EQ(raised[0][0].toString(), QStringLiteral("token-1"));
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{desk.store.assets().front()->id});
}

TEST_F(WorkNewsTest, AFailureIsToldWithItsReasonAndOpensInTheHistory) {
  window.setInFront(false);
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
  run(QStringLiteral("a boat"));
  ASSERT_EQ(stand.shown.size(), 1u);
  EXPECT_EQ(stand.shown[0].title, QStringLiteral("Generation failed"));
  EXPECT_EQ(stand.shown[0].text, QStringLiteral("Planted."));
  Q_EMIT stand.activated({});
  EXPECT_EQ(desk.state.mode().kind, ModeKind::activity);
  EXPECT_EQ(desk.state.inspectedId(), desk.newestJob()->id);
}

TEST_F(WorkNewsTest, TheEndOfTheWholeQueueIsToldInOneCard) {
  window.setInFront(false);
  desk.provider->gate.emplace();
  for (const char* prompt : {"one", "two", "three"}) desk.generate(QString::fromLatin1(prompt));
  desk.provider->gate->finish();
  desk.settle();
  ASSERT_FALSE(stand.shown.empty());
  EXPECT_EQ(stand.shown.back().title, QStringLiteral("All generations have ended"));
  EXPECT_EQ(stand.shown.back().text, QStringLiteral("3 complete"));
  Q_EMIT stand.activated({});
  EXPECT_EQ(desk.state.mode().kind, ModeKind::activity);
  EXPECT_EQ(desk.state.selection().size(), 3);
}

TEST_F(WorkNewsTest, WhatThePersonHasCancelledIsNoNews) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("a boat"));
  window.setInFront(false);
  desk.jobs.cancel(desk.newestJob()->id);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_TRUE(stand.shown.empty());
}

TEST_F(WorkNewsTest, TheCardGoesWhenTheWindowComesToTheFront) {
  window.setInFront(false);
  run(QStringLiteral("a boat"));
  window.setInFront(true);
  EXPECT_EQ(stand.withdrawn, 1);
  Q_EMIT stand.activated({});
  EXPECT_TRUE(desk.state.selection().isEmpty());
}

}  // namespace
}  // namespace sorvan::shell
