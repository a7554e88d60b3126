#include <gtest/gtest.h>

#include <QSignalSpy>

#include "composer/interpreter.h"
#include "core/small_edits.h"
#include "core/ledgers.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

const QString schnell = QStringLiteral("fal.ai:fal-ai/flux/schnell");

// Credits pay, at a price for each model.
class CreditsDesk final : public PaymentDesk {
 public:
  core::Billing billing() const override { return choice; }
  bool offersChoice() const override { return true; }
  void payWith(core::PayWith payer) override {
    choice.payWith = payer;
    Q_EMIT changed();
  }
  bool isSignedIn() const override { return signedIn; }
  std::optional<composer::AccountBalance> account() const override { return balance; }
  std::optional<std::int64_t> credits(const core::GenerationRequest& request,
                                      const catalogue::FalModel& model) const override {
    if (eachCharacter > 0) return eachCharacter * request.prompt.size();
    if (!prices.contains(model.id)) return std::nullopt;
    return prices[model.id] * request.count;
  }
  void buyCredits() override { ++bought; }

  core::Billing choice{core::PayWith::credits, true};
  bool signedIn = true;
  std::optional<composer::AccountBalance> balance = composer::AccountBalance{9'000'000'000, 0};
  QHash<QString, std::int64_t> prices;
  std::int64_t eachCharacter = 0;  // what every model costs then
  int bought = 0;
};

// Answers each command with one action, once the gate is open.
class ScriptedInterpreter final : public composer::CommandInterpreter {
 public:
  base::Task<composer::Interpretation> interpret(QString text, composer::CommandContext, QUuid,
                                                 std::stop_token) override {
    texts.push_back(text);
    if (gate) co_await *gate;
    co_return composer::Interpretation{action, 2'000'000};
  }
  base::Task<std::optional<composer::Interpretation>> existing(QUuid, std::stop_token) override { co_return std::nullopt; }

  std::optional<base::Completion> gate;
  composer::RemoteAppAction action;
  std::vector<QString> texts;
};

struct ComposerMoneyTest : testing::Test {
  test::Desk desk;
  CreditsDesk credits;
  ScriptedInterpreter interpreter;
  composer::InterpretationBooks books{desk.store, interpreter};
  GenerationComposer composer{{desk.store,
                               desk.queue,
                               desk.state,
                               desk.composing,
                               [](std::stop_token) -> base::Task<> { co_return; },
                               desk.prices,
                               desk.alerts,
                               [](const QString&) {},
                               desk.desk,
                               credits,
                               nullptr,
                               nullptr,
                               GenerationComposer::Interpreting{interpreter, books}}};

  void press(const QString& prompt) {
    composer.editDraft(prompt);
    composer.submit();
    test::runPosted();
  }
  std::size_t jobs() const { return desk.store.jobs().size(); }
  void price(std::int64_t each) { credits.prices[QStringLiteral("fal-ai/nano-banana-2")] = each; }
  QStringList notices() const {
    QStringList texts;
    for (const ComposerNotice& notice : composer.display().notices) texts << notice.text;
    return texts;
  }
};

TEST_F(ComposerMoneyTest, ThePriceOfAVoiceFollowsTyping) {
  composer.startAudio();
  credits.eachCharacter = 1;
  composer.editDraft(QStringLiteral("Hello"));
  desk.clock->advance(200ms);
  test::runPosted();
  EXPECT_EQ(composer.display().estimate, QStringLiteral("5 credits"));
  const QSignalSpy changed(&composer, &ComposerPresenter::changed);
  composer.editDraft(QStringLiteral("Hello you"));
  EXPECT_EQ(changed.count(), 0) << "the figure waits for a pause in typing";
  desk.clock->advance(200ms);
  test::runPosted();
  EXPECT_GT(changed.count(), 0);
  EXPECT_EQ(composer.display().estimate, QStringLiteral("9 credits"));
}

TEST_F(ComposerMoneyTest, TypingInsideAPromptForAPictureRedrawsNothing) {
  price(4);
  composer.editDraft(QStringLiteral("a fox"));
  desk.clock->advance(200ms);
  test::runPosted();
  const QSignalSpy changed(&composer, &ComposerPresenter::changed);
  composer.editDraft(QStringLiteral("a fox in snow"));
  desk.clock->advance(200ms);
  test::runPosted();
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(ComposerMoneyTest, FiveHundredCreditsAreSpentWithoutAQuestion) {
  price(500);
  press(QStringLiteral("a red boat"));
  EXPECT_FALSE(desk.alerts.current());
  EXPECT_EQ(jobs(), 1u);
  desk.settle();
}

TEST_F(ComposerMoneyTest, OneMoreCreditAsksAndNothingLeavesBeforeTheAnswer) {
  price(501);
  press(QStringLiteral("a red boat"));
  EXPECT_EQ(jobs(), 0u);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->title, QStringLiteral("Use 501 credits"));
  EXPECT_EQ(desk.alerts.current()->text,
            QStringLiteral("This request costs more than 500 credits. You have 9,000 credits. A generation that fails "
                           "costs nothing."));
  composer.submit();
  composer.submit();
  test::runPosted();
  EXPECT_EQ(jobs(), 0u) << "pressing on does not answer the question";
  desk.alerts.answer(desk.alerts.current()->id, 0);
  test::runPosted();
  EXPECT_EQ(jobs(), 0u);
  EXPECT_FALSE(desk.alerts.current()) << "asked once";
  EXPECT_EQ(composer.draft(), QStringLiteral("a red boat"));
  composer.submit();
  ASSERT_TRUE(desk.alerts.current());
  desk.alerts.answer(desk.alerts.current()->id, 1);
  test::runPosted();
  EXPECT_EQ(jobs(), 1u);
  desk.settle();
}

TEST_F(ComposerMoneyTest, TheWayOutHasTheFocusSoThatAHeldKeySpendsNothing) {
  price(501);
  press(QStringLiteral("a red boat"));
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->buttons.front().title, QStringLiteral("Cancel"));
  EXPECT_TRUE(desk.alerts.current()->buttons.front().isEscape);
}

TEST_F(ComposerMoneyTest, AnUnpricedModelSuppressesTheQuestion) {
  price(501);
  composer.setModelChosen(schnell, true);
  press(QStringLiteral("a red boat"));
  EXPECT_FALSE(desk.alerts.current());
  EXPECT_EQ(jobs(), 2u);
  desk.settle();
}

TEST_F(ComposerMoneyTest, TheOwnKeyIsNeverAskedAbout) {
  price(501);
  credits.payWith(core::PayWith::ownKey);
  press(QStringLiteral("a red boat"));
  EXPECT_FALSE(desk.alerts.current());
  EXPECT_EQ(jobs(), 1u);
  desk.settle();
}

TEST_F(ComposerMoneyTest, CreditsAreToldBesideTheButton) {
  price(12);
  composer.editDraft(QStringLiteral("a red boat"));
  EXPECT_EQ(composer.display().estimate, QStringLiteral("12 credits"));
  composer.chooseCount(2);
  EXPECT_EQ(composer.display().estimate, QStringLiteral("24 credits"));
  composer.setModelChosen(schnell, true);
  EXPECT_EQ(composer.display().estimate, QStringLiteral("24+ credits"));
  EXPECT_EQ(composer.display().estimateSpoken, QStringLiteral("24 or more credits"));
}

TEST_F(ComposerMoneyTest, WhatTheAccountLacksIsSaidWithTheWaysOut) {
  price(12);
  credits.balance = composer::AccountBalance{5'000'000, 0};
  composer.editDraft(QStringLiteral("a red boat"));
  const ComposerDisplay display = composer.display();
  ASSERT_EQ(display.notices.size(), 1u);
  EXPECT_EQ(display.notices[0].text, QStringLiteral("This needs 12 credits and you have 5."));
  EXPECT_EQ(display.notices[0].buttons,
            (std::vector<QString>{QStringLiteral("Buy Credits"), QStringLiteral("Pay with My fal.ai Key")}));
  composer.performNotice(display.notices[0].text, 0);
  EXPECT_EQ(credits.bought, 1);
  composer.performNotice(display.notices[0].text, 1);
  EXPECT_EQ(credits.choice.payWith, core::PayWith::ownKey);
  EXPECT_TRUE(composer.display().notices.empty());
}

TEST_F(ComposerMoneyTest, WithoutAnAccountThePaymentNoteSaysSo) {
  credits.signedIn = false;
  EXPECT_EQ(notices(), QStringList{QStringLiteral(
                           "Paying with Sorvan Credits needs an account. Sign in under Settings → Account, or switch "
                           "Pay With to your own fal.ai key.")});
}

// ---- A command on its way through the interpreter

TEST_F(ComposerMoneyTest, ACommandThatIsNotUnderstoodIsInterpretedReviewedAndThenRun) {
  composer.setInterprets(true);
  composer.setCommandMode(true);
  composer.editDraft(QStringLiteral("show me what I liked"));
  desk.clock->advance(200ms);
  test::runPosted();
  EXPECT_EQ(composer.display().submitTitle, QStringLiteral("Interpret"));
  EXPECT_EQ(notices(), QStringList{QStringLiteral("AI interpretation · Sorvan Credits · Text and project context sent "
                                                  "to DeepSeek; review before execution.")});
  interpreter.gate.emplace();
  interpreter.action.action = QStringLiteral("filter");
  interpreter.action.favorites = true;
  composer.submit();
  test::runPosted();
  EXPECT_EQ(composer.display().submitTitle, QStringLiteral("Interpreting…"));
  EXPECT_TRUE(composer.display().submitBusy);
  composer.submit();
  interpreter.gate->finish();
  test::runPosted();
  EXPECT_EQ(interpreter.texts.size(), 1u) << "a second press asks nothing again";
  EXPECT_FALSE(desk.state.filter().favoritesOnly) << "nothing is done before Run";
  EXPECT_TRUE(composer.display().review.startsWith(QStringLiteral("Review: ")));
  EXPECT_EQ(composer.display().submitTitle, QStringLiteral("Run"));
  ASSERT_EQ(desk.store.extraCharges().entries().size(), 1u);
  EXPECT_EQ(desk.store.extraCharges().entries().front().credits, 2.0);
  composer.submit();
  test::runPosted();
  EXPECT_TRUE(desk.state.filter().favoritesOnly);
  EXPECT_EQ(composer.display().review, QString());
}

TEST_F(ComposerMoneyTest, AReviewedActionIsNotRunForAnotherSelection) {
  desk.generate(QStringLiteral("a red boat"));
  desk.settle();
  const QUuid item = desk.store.assets().front()->id;
  desk.state.select({item});
  composer.setInterprets(true);
  composer.setCommandMode(true);
  interpreter.action.action = QStringLiteral("favorite");
  interpreter.action.enabled = true;
  press(QStringLiteral("I like this one"));
  ASSERT_FALSE(composer.display().review.isEmpty());
  desk.state.select({});
  composer.submit();
  test::runPosted();
  EXPECT_FALSE(desk.store.asset(item)->favorite);
  EXPECT_EQ(composer.message().text,
            QStringLiteral("The selection changed. Re-enter the instruction to review it for this selection."));
}

TEST_F(ComposerMoneyTest, AnEditDropsTheReview) {
  composer.setInterprets(true);
  composer.setCommandMode(true);
  interpreter.action.action = QStringLiteral("filter");
  interpreter.action.favorites = true;
  press(QStringLiteral("what I liked"));
  ASSERT_FALSE(composer.display().review.isEmpty());
  composer.editDraft(QStringLiteral("what I liked!"));
  EXPECT_EQ(composer.display().review, QString());
}

}  // namespace
}  // namespace sorvan::shell
