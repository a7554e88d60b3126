#include "shell/views/alert_dialog.h"

#include <QEnterEvent>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class AlertDialogTest : public Dressed {
 protected:
  AlertDialogTest() { show(window, {800, 600}); }
  Alert question() const {
    return {0,
            AlertTone::warning,
            u"Work is still in progress"_s,
            u"Quitting stops files."_s,
            {{u"Keep Working"_s, AlertButtonRole::primary, true}, {u"Quit"_s, AlertButtonRole::plain, false}}};
  }
  AlertDialog* shown() {
    for (AlertDialog* dialog : window.findChildren<AlertDialog*>()) {
      if (dialog->isVisible()) return dialog;
    }
    return nullptr;
  }
  void ask() {
    alerts.ask(question(), [this](int button) { answers.push_back(button); });
  }

  AlertsPresenter alerts;
  QWidget window;
  AlertHost* host = new AlertHost(alerts, &window);
  std::vector<int> answers;
};

TEST_F(AlertDialogTest, AnAlertOpensWithoutHoldingUpTheProgram) {
  ask();
  ASSERT_NE(shown(), nullptr);
  EXPECT_EQ(shown()->accessibleName(), u"Work is still in progress"_s);
  EXPECT_TRUE(shown()->isModal());
  EXPECT_TRUE(answers.empty());
}

TEST_F(AlertDialogTest, TheFirstButtonAnswersEnterAndStandsAtTheRight) {
  ask();
  Button* keep = named<Button>(*shown(), u"Keep Working"_s);
  Button* quit = named<Button>(*shown(), u"Quit"_s);
  QCoreApplication::processEvents();
  EXPECT_GT(keep->x(), quit->x());
  QTest::keyClick(shown(), Qt::Key_Return);
  EXPECT_EQ(answers, std::vector<int>{0});
  EXPECT_EQ(shown(), nullptr);
}

TEST_F(AlertDialogTest, EscapeAnswersWithTheButtonThatIsMeant) {
  ask();
  QTest::keyClick(shown(), Qt::Key_Escape);
  EXPECT_EQ(answers, std::vector<int>{0});
}

TEST_F(AlertDialogTest, TheSecondButtonAnswersWithItsOwnNumberOnce) {
  ask();
  QTest::mouseClick(named<Button>(*shown(), u"Quit"_s), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_EQ(answers, std::vector<int>{1});
}

TEST_F(AlertDialogTest, AlertsComeOneAfterTheOther) {
  alerts.showError(u"First."_s);
  alerts.showError(u"Second."_s);
  ASSERT_EQ(window.findChildren<AlertDialog*>().size(), 1);
  const quint64 first = shown()->id();
  QTest::keyClick(shown(), Qt::Key_Return);
  ASSERT_NE(shown(), nullptr);
  EXPECT_NE(shown()->id(), first);
}

TEST_F(AlertDialogTest, AnErrorOfManyLinesScrollsInsideTheAlert) {
  alerts.showError(QString(u"A line of an error that goes on for a while. "_s).repeated(200));
  EXPECT_LT(shown()->sizeHint().height(), 420);
}

TEST_F(AlertDialogTest, AnAlertThatIsTakenBackClosesUnanswered) {
  const quint64 id = alerts.ask(question(), [this](int button) { answers.push_back(button); });
  alerts.withdraw(id);
  EXPECT_EQ(shown(), nullptr);
  EXPECT_TRUE(answers.empty());
}

TEST_F(AlertDialogTest, AToastShowsItsWordsAndItsActionAndCanBePutAway) {
  Toaster toaster(alerts, &window);
  toaster.setCorner({780, 580});
  bool performed = false;
  alerts.showToast({0, AlertTone::information, u"The result is in Trash."_s, {}, u"Show Trash"_s, true},
                   [&] { performed = true; });
  ASSERT_TRUE(toaster.isVisible());
  EXPECT_LE(toaster.geometry().bottom(), 602);
  QTest::mouseClick(named<Button>(toaster, u"Show Trash"_s), Qt::LeftButton);
  EXPECT_TRUE(performed);
  alerts.showToast({0, AlertTone::success, u"Saved 2 images locally"_s, {}, {}, true});
  QAbstractButton* close = nullptr;
  for (QAbstractButton* button : toaster.findChildren<QAbstractButton*>()) {
    if (button->isVisible() && button->accessibleName() == u"Dismiss"_s) close = button;
  }
  ASSERT_NE(close, nullptr);
  QTest::mouseClick(close, Qt::LeftButton);
  EXPECT_TRUE(alerts.toasts().empty());
}

TEST_F(AlertDialogTest, AToastDoesNotLeaveFromUnderThePointerOrTheKeyboard) {
  Toaster toaster(alerts, &window);
  alerts.showToast({0, AlertTone::success, u"Saved 2 images locally"_s, {}, {}, false});
  auto* card = toaster.findChild<ToastCard*>();
  ASSERT_NE(card, nullptr);
  const auto* leave = card->findChild<QTimer*>();
  ASSERT_NE(leave, nullptr);
  EXPECT_TRUE(leave->isActive());
  const auto send = [](QWidget* to, QEvent&& event) { QCoreApplication::sendEvent(to, &event); };
  QWidget* close = card->findChild<IconButton*>();
  send(close, QFocusEvent(QEvent::FocusIn, Qt::TabFocusReason));
  EXPECT_FALSE(leave->isActive());
  send(card, QEnterEvent({5, 5}, {5, 5}, {5, 5}));
  send(close, QFocusEvent(QEvent::FocusOut, Qt::TabFocusReason));
  EXPECT_FALSE(leave->isActive());
  send(card, QEvent(QEvent::Leave));
  EXPECT_TRUE(leave->isActive());
}

TEST_F(AlertDialogTest, AToastThatWarnsWaitsUntilItIsRead) {
  Toaster toaster(alerts, &window);
  alerts.showToast({0, AlertTone::warning, u"1 item is left out."_s, {}, {}, false});
  EXPECT_FALSE(toaster.findChild<ToastCard*>()->findChild<QTimer*>()->isActive());
}

}  // namespace
}  // namespace sorvan::views
