#include "shell/once_per_turn.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <memory>

namespace sorvan::shell {
namespace {

TEST(OncePerTurn, CallsOnceForManyRequestsAndNotBeforeTheLoopComesRound) {
  int calls = 0;
  OncePerTurn once([&] { ++calls; });
  once.request();
  once.request();
  EXPECT_EQ(calls, 0);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(calls, 1);
}

TEST(OncePerTurn, CallsAgainForWhatIsAskedAfterwards) {
  int calls = 0;
  OncePerTurn once([&] { ++calls; });
  once.request();
  QCoreApplication::sendPostedEvents();
  once.request();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(calls, 2);
}

TEST(OncePerTurn, CallsAgainWhenTheCallItselfAsks) {
  int calls = 0;
  OncePerTurn* asked = nullptr;
  OncePerTurn once([&] {
    if (++calls == 1) asked->request();
  });
  asked = &once;
  once.request();
  while (calls < 2) QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_EQ(calls, 2);
}

TEST(OncePerTurn, DoesNotCallForWhatWasWithdrawn) {
  int calls = 0;
  OncePerTurn once([&] { ++calls; });
  once.request();
  once.withdraw();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(calls, 0);
}

TEST(OncePerTurn, CallsOnceForWhatIsAskedAfterItWasWithdrawn) {
  int calls = 0;
  OncePerTurn once([&] { ++calls; });
  once.request();
  once.withdraw();
  once.request();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(calls, 1);
}

TEST(OncePerTurn, CallsNothingOnceItIsGone) {
  int calls = 0;
  auto once = std::make_unique<OncePerTurn>([&] { ++calls; });
  once->request();
  once.reset();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(calls, 0);
}

TEST(OncePerTurn, OutlivesACallThatEndsIt) {
  int calls = 0;
  std::unique_ptr<OncePerTurn> once;
  once = std::make_unique<OncePerTurn>([&] {
    once.reset();
    ++calls;
  });
  once->request();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace sorvan::shell
