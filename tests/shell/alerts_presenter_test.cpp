#include "shell/alerts_presenter.h"

#include <gtest/gtest.h>

namespace sorvan::shell {
namespace {

Alert question(const QString& title) {
  return {0,
          AlertTone::warning,
          title,
          {},
          {{QStringLiteral("Stay"), AlertButtonRole::primary, true},
           {QStringLiteral("Go"), AlertButtonRole::plain, false}}};
}

TEST(AlertsPresenter, ShowsOneAlertAtATimeAndTheRestInOrder) {
  AlertsPresenter alerts;
  alerts.ask(question(QStringLiteral("First")), {});
  alerts.ask(question(QStringLiteral("Second")), {});
  ASSERT_TRUE(alerts.current());
  EXPECT_EQ(alerts.current()->title, QStringLiteral("First"));
  alerts.answer(alerts.current()->id, 0);
  ASSERT_TRUE(alerts.current());
  EXPECT_EQ(alerts.current()->title, QStringLiteral("Second"));
  alerts.answer(alerts.current()->id, 0);
  EXPECT_FALSE(alerts.current());
}

TEST(AlertsPresenter, RunsAnAnswerOnceWithItsButton) {
  AlertsPresenter alerts;
  std::vector<int> answers;
  const quint64 id = alerts.ask(question(QStringLiteral("Go?")), [&](int button) { answers.push_back(button); });
  alerts.answer(id, 1);
  alerts.answer(id, 0);
  EXPECT_EQ(answers, std::vector<int>{1});
}

TEST(AlertsPresenter, IgnoresAnAnswerToAButtonThatIsNotThere) {
  AlertsPresenter alerts;
  int answers = 0;
  const quint64 id = alerts.ask(question(QStringLiteral("Go?")), [&](int) { ++answers; });
  alerts.answer(id, 2);
  alerts.answer(id, -1);
  EXPECT_EQ(answers, 0);
  EXPECT_TRUE(alerts.current());
}

TEST(AlertsPresenter, NeverAnswersAWithdrawnAlert) {
  AlertsPresenter alerts;
  int answers = 0;
  const quint64 id = alerts.ask(question(QStringLiteral("Go?")), [&](int) { ++answers; });
  alerts.withdraw(id);
  alerts.answer(id, 0);
  EXPECT_EQ(answers, 0);
  EXPECT_FALSE(alerts.current());
}

TEST(AlertsPresenter, AnAnswerMayAskTheNextQuestion) {
  AlertsPresenter alerts;
  const quint64 id =
      alerts.ask(question(QStringLiteral("First")), [&](int) { alerts.ask(question(QStringLiteral("Next")), {}); });
  alerts.answer(id, 0);
  ASSERT_TRUE(alerts.current());
  EXPECT_EQ(alerts.current()->title, QStringLiteral("Next"));
}

TEST(AlertsPresenter, KeepsAtMostThreeCardsAndNeverDropsOneThatStays) {
  AlertsPresenter alerts;
  alerts.showToast({0, AlertTone::warning, QStringLiteral("stays"), {}, {}, true});
  for (int index = 0; index < 4; ++index)
    alerts.showToast({0, AlertTone::success, QString::number(index), {}, {}, false});
  ASSERT_EQ(alerts.toasts().size(), 3u);
  EXPECT_EQ(alerts.toasts().front().text, QStringLiteral("stays"));
  EXPECT_EQ(alerts.toasts().back().text, QStringLiteral("3"));
}

TEST(AlertsPresenter, WhatIsReadBestGoesFirstAndIsToldOf) {
  AlertsPresenter alerts;
  alerts.showToast({0, AlertTone::warning, QStringLiteral("left out"), {}, {}, false});
  const quint64 good = alerts.showToast({0, AlertTone::success, QStringLiteral("copied"), {}, {}, false});
  std::vector<quint64> gone;
  QObject::connect(&alerts, &AlertsPresenter::toastDismissed, &alerts, [&](quint64 id) { gone.push_back(id); });
  for (int index = 0; index < 2; ++index)
    alerts.showToast({0, AlertTone::success, QString::number(index), {}, QStringLiteral("Show"), false});
  EXPECT_EQ(gone, std::vector<quint64>{good});
  EXPECT_EQ(alerts.toasts().front().text, QStringLiteral("left out"));
}

TEST(AlertsPresenter, GoodNewsLeavesByItselfAndWhatWarnsOrOffersSomethingWaits) {
  const auto leaves = [](AlertTone tone, const QString& action, bool stays, bool inSpite) {
    return Toast{0, tone, QStringLiteral("Words"), {}, action, stays, inSpite}.leavesByItself();
  };
  const QString none;
  const QString show = QStringLiteral("Show");
  EXPECT_TRUE(leaves(AlertTone::success, none, false, false));
  EXPECT_TRUE(leaves(AlertTone::information, none, false, false));
  EXPECT_FALSE(leaves(AlertTone::success, show, false, false));
  EXPECT_TRUE(leaves(AlertTone::success, show, false, true));
  EXPECT_FALSE(leaves(AlertTone::warning, none, false, false));
  EXPECT_FALSE(leaves(AlertTone::error, none, false, true));
  EXPECT_FALSE(leaves(AlertTone::success, none, true, true));
}

TEST(AlertsPresenter, ACardsButtonActsOnceAndClosesIt) {
  AlertsPresenter alerts;
  int acted = 0;
  const quint64 id = alerts.showToast(
      {0, AlertTone::success, QStringLiteral("Saved"), {}, QStringLiteral("Show"), false}, [&] { ++acted; });
  alerts.performToastAction(id);
  alerts.performToastAction(id);
  EXPECT_EQ(acted, 1);
  EXPECT_TRUE(alerts.toasts().empty());
}

}  // namespace
}  // namespace sorvan::shell
