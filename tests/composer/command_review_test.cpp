#include "composer/command_review.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "base/ids.h"
#include "base/json.h"
#include "composer/command_texts.h"
#include "core/library_fixture.h"
#include "support/run_task.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using namespace sorvan::core;

/// Answers when the test says so.
class ScriptedInterpreter final : public CommandInterpreter {
 public:
  Task<Interpretation> interpret(QString text, CommandContext, QUuid key, std::stop_token) override {
    sent.push_back(text);
    keys.push_back(key);
    const Completion mine = gate;
    co_await mine;
    if (refuses) throw InterpretationNotSent(failure);
    if (!failure.isEmpty()) throw SorvanError(failure);
    co_return answer;
  }
  Task<std::optional<Interpretation>> existing(QUuid key, std::stop_token) override {
    asked.push_back(key);
    if (!lookupFailure.isEmpty()) throw SorvanError(lookupFailure);
    co_return lookup;
  }

  QString payer() const override { return account; }

  QString account;
  Completion gate;
  Interpretation answer;
  QString failure;
  bool refuses = false;
  std::optional<Interpretation> lookup;
  QString lookupFailure;
  QStringList sent;
  std::vector<QUuid> keys;
  std::vector<QUuid> asked;
};

struct CommandReviewTest : sorvan::test::LibraryFixture {
  ScriptedInterpreter interpreter;
  InterpretationBooks books{store, interpreter};
  CommandReview::Situation situation{u"tidy my cats"_s, {}, {}, {}};
  QString message;
  bool isError = false;
  CommandReview review{{interpreter, books, [this] { return situation; },
                        [this](const QString& text, bool error) {
                          message = text;
                          isError = error;
                        },
                        [] { return newUuid(); }}};

  CommandReviewTest() {
    open();
    interpreter.answer = {RemoteAppAction{.action = u"search"_s, .query = u"cats"_s}, 300'000};
  }
  void begin() {
    review.interpret();
    sorvan::test::runPosted();
  }
  void finish() {
    interpreter.gate.finish();
    sorvan::test::runUntil([&] { return !review.isInterpreting(); });
  }
  const std::vector<ExtraCharge>& charges() { return store.extraCharges().entries(); }
};

TEST_F(CommandReviewTest, AnAnswerIsShownForReviewAndItsChargeIsRecorded) {
  begin();
  EXPECT_TRUE(review.isInterpreting());
  finish();
  EXPECT_TRUE(review.intent() == std::optional<SorvanIntent>(SearchAssets{u"cats"_s}));
  EXPECT_EQ(message, u"Interpreted · 0.3 credits. Review the action, then press Run or Generate."_s);
  EXPECT_FALSE(isError);
  ASSERT_EQ(charges().size(), 1U);
  EXPECT_EQ(charges()[0].id, interpreter.keys[0]);
  EXPECT_EQ(charges()[0].title, u"Interpret Command"_s);
  EXPECT_EQ(charges()[0].model, u"interpret"_s);
  EXPECT_EQ(charges()[0].provider, u"Sorvan Credits"_s);
  EXPECT_EQ(charges()[0].basis, u"sorvanCredits"_s);
  EXPECT_EQ(charges()[0].credits, 0.3);
  EXPECT_DOUBLE_EQ(*charges()[0].usd, 0.003);
  EXPECT_TRUE(books.isSettled());
}

TEST_F(CommandReviewTest, AnAnswerToATextThatWasEditedIsPaidForAndDropped) {
  begin();
  situation.draft += u"!"_s;
  review.draftEdited();
  finish();
  EXPECT_FALSE(review.intent());
  EXPECT_EQ(message, texts::contextChanged());
  EXPECT_TRUE(isError);
  EXPECT_EQ(charges().size(), 1U);
}

TEST_F(CommandReviewTest, AnAnswerToAnotherSelectionOrProjectIsDropped) {
  begin();
  review.selectionChanged();
  finish();
  EXPECT_EQ(message, texts::contextChanged());
  interpreter.gate = Completion();
  begin();
  situation.project = newUuid();
  finish();
  EXPECT_EQ(message, texts::contextChanged());
  EXPECT_FALSE(review.intent());
}

TEST_F(CommandReviewTest, AnAnswerThatAmountsToNothingIsToldAndPaidFor) {
  interpreter.answer.action.reset();
  begin();
  finish();
  EXPECT_EQ(message, texts::noAction());
  EXPECT_EQ(charges().size(), 1U);
}

TEST_F(CommandReviewTest, AGenerationIsNeverTakenFromAnInterpreter) {
  interpreter.answer.action = RemoteAppAction{.action = u"generate"_s, .prompt = u"a fox"_s};
  begin();
  finish();
  EXPECT_EQ(message, texts::describesGeneration());
  EXPECT_FALSE(review.intent());
}

TEST_F(CommandReviewTest, OnlyOneInterpretationRunsAtATime) {
  begin();
  begin();
  EXPECT_EQ(interpreter.sent, QStringList{u"tidy my cats"_s});
  finish();
}

TEST_F(CommandReviewTest, EditingTheTextDropsWhatWasUnderstoodAndASelectionKeepsIt) {
  begin();
  finish();
  review.selectionChanged();
  EXPECT_TRUE(review.intent());
  review.draftEdited();
  EXPECT_FALSE(review.intent());
  EXPECT_FALSE(review.action());
}

TEST_F(CommandReviewTest, ALostAnswerIsAccountedForBeforeTheNextInterpretation) {
  interpreter.failure = u"The answer was lost."_s;
  begin();
  finish();
  EXPECT_EQ(message, u"The answer was lost."_s);
  EXPECT_TRUE(charges().empty());
  EXPECT_FALSE(books.isSettled());

  interpreter.failure.clear();
  interpreter.lookup = Interpretation{{}, 2'000'000};
  interpreter.gate = Completion();
  begin();
  EXPECT_EQ(interpreter.asked, std::vector<QUuid>{interpreter.keys[0]});
  ASSERT_EQ(charges().size(), 1U);
  EXPECT_EQ(charges()[0].credits, 2.0);
  finish();
  EXPECT_EQ(charges().size(), 2U);
  EXPECT_TRUE(books.isSettled());
}

TEST_F(CommandReviewTest, ALostAnswerIsStillKnownAfterARestartAndIsChargedOnce) {
  interpreter.failure = u"lost"_s;
  begin();
  finish();
  InterpretationBooks later(store, interpreter);
  interpreter.lookupFailure = u"offline"_s;
  sorvan::test::runTask(later.settle({}));
  EXPECT_FALSE(later.isSettled());
  interpreter.lookupFailure.clear();
  interpreter.lookup = Interpretation{{}, 1'000'000};
  sorvan::test::runTask(later.settle({}));
  sorvan::test::runTask(later.settle({}));
  EXPECT_TRUE(later.isSettled());
  EXPECT_EQ(charges().size(), 1U);
}

TEST_F(CommandReviewTest, ARequestThatArrivesAfterItWasAskedForIsStillCharged) {
  interpreter.failure = u"lost"_s;
  begin();
  finish();
  const auto settleLater = [this] {
    InterpretationBooks later(store, interpreter);
    sorvan::test::runTask(later.settle({}));
    return later.isSettled();
  };
  EXPECT_FALSE(settleLater()) << "it may be on its way";
  clock->advance(std::chrono::hours(23));
  EXPECT_FALSE(settleLater());
  EXPECT_TRUE(charges().empty());
  interpreter.lookup = Interpretation{{}, 2'000'000};
  EXPECT_TRUE(settleLater());
  ASSERT_EQ(charges().size(), 1U);
  EXPECT_EQ(charges()[0].id, interpreter.keys[0]);
  EXPECT_EQ(charges()[0].credits, 2.0);
}

TEST_F(CommandReviewTest, ARequestThatHasNotArrivedWithinADayIsForgottenWithoutACharge) {
  books.aboutToSend(newUuid(), std::nullopt);
  clock->advance(std::chrono::hours(24));
  sorvan::test::runTask(books.settle({}));
  EXPECT_FALSE(books.isSettled());
  clock->advance(std::chrono::seconds(1));
  sorvan::test::runTask(books.settle({}));
  EXPECT_TRUE(books.isSettled());
  EXPECT_TRUE(charges().empty());
}

TEST_F(CommandReviewTest, ARequestIsAskedForWithTheAccountThatPaysForItAndNoOther) {
  interpreter.account = u"https://gateway.example ada@example.org"_s;
  books.aboutToSend(newUuid(), std::nullopt);
  interpreter.account = u"https://gateway.example bob@example.org"_s;
  clock->advance(std::chrono::hours(48));
  sorvan::test::runTask(books.settle({}));
  EXPECT_TRUE(interpreter.asked.empty());
  EXPECT_FALSE(books.isSettled());
  interpreter.account = u"https://gateway.example ada@example.org"_s;
  interpreter.lookup = Interpretation{{}, 1'000'000};
  sorvan::test::runTask(books.settle({}));
  EXPECT_TRUE(books.isSettled());
  EXPECT_EQ(charges().size(), 1U);
}

TEST_F(CommandReviewTest, ARequestThatFailedIsForgottenAtOnce) {
  books.aboutToSend(newUuid(), std::nullopt);
  interpreter.lookup = Interpretation();
  sorvan::test::runTask(books.settle({}));
  EXPECT_TRUE(books.isSettled());
  EXPECT_TRUE(charges().empty());
}

TEST_F(CommandReviewTest, ARequestThatWasRefusedIsForgottenAtOnce) {
  interpreter.refuses = true;
  interpreter.failure = u"Insufficient Sorvan Credits."_s;
  begin();
  finish();
  EXPECT_EQ(message, u"Insufficient Sorvan Credits."_s);
  EXPECT_TRUE(isError);
  EXPECT_TRUE(books.isSettled());
}

TEST_F(CommandReviewTest, ANoteOfAnEarlierFormIsAskedForOnce) {
  settings->set(u"pendingInterpretations"_s, QJsonArray{QJsonObject{{u"id"_s, uuidText(newUuid())}}});
  EXPECT_FALSE(books.isSettled());
  sorvan::test::runTask(books.settle({}));
  EXPECT_EQ(interpreter.asked.size(), 1U);
  EXPECT_TRUE(books.isSettled());
}

TEST_F(CommandReviewTest, TheRequestIsNotedBeforeItLeaves) {
  begin();
  EXPECT_EQ(interpreter.keys.size(), 1U);
  EXPECT_FALSE(books.isSettled());
  finish();
}

TEST(CreditsText, ShowsAtMostTwoDecimals) {
  EXPECT_EQ(creditsText(0), u"0"_s);
  EXPECT_EQ(creditsText(2'000'000), u"2"_s);
  EXPECT_EQ(creditsText(300'000), u"0.3"_s);
  EXPECT_EQ(creditsText(1'250'555'000), u"1,250.56"_s);
  EXPECT_EQ(creditsText(100'000'000), u"100"_s);
}

}  // namespace
}  // namespace sorvan::composer
