#include "app/credits_desk.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "app/interpreter_desk.h"
#include "core/library_fixture.h"
#include "generation/provider.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"
#include "support/text_printers.h"

namespace sorvan::app {
namespace {

using namespace Qt::StringLiterals;

struct CreditsDeskTest : test::LibraryFixture {
  CreditsDeskTest() { clock->passSleeps(); }
  ~CreditsDeskTest() override {
    test::runTask(credits.drain());
    test::runTask(interpreter.drain());
  }

  void answerAccount(const QString& email = u"Ada@example.org"_s) {
    const QJsonObject amounts{{u"included"_s, 0}, {u"purchased"_s, 0}, {u"reserved"_s, 0}, {u"available"_s, 0}};
    web->on("GET", u"v1/me"_s).answersJson(QJsonObject{{u"email"_s, email}, {u"credits"_s, amounts}}).repeating();
    web->on("GET", u"v1/credit-packs"_s).answersJson(QJsonObject{{u"packs"_s, QJsonArray()}}).repeating();
    web->on("GET", u"v1/app"_s).answers(404).repeating();
  }
  void signIn() {
    backend->entries[u"Sorvan Credits"_s] = u"token-1"_s;
    answerAccount();
    credits.start();
    settle();
  }
  void settle() {
    test::runTask(credits.account().whenIdle());
    test::runPosted();
  }
  // The account that is signed in is another one from here on, and the books are settled with it.
  void becomes(const QString& email) {
    answerAccount(email);
    credits.account().refresh();
    settle();
    interpreter.settle();
    test::runPosted();
  }
  GenerationPorts ports() {
    GenerationPorts plugged;
    plugged.providerResolver = [](ProviderID) -> std::shared_ptr<GenerationProvider> {
      return std::make_shared<RetiredProvider>();
    };
    plugged.keyReader = [this](ProviderID id) { return keys->key(id); };
    credits.plugInto(plugged);
    return plugged;
  }

  std::shared_ptr<test::ScriptedTransport> web = std::make_shared<test::ScriptedTransport>();
  std::shared_ptr<MemoryKeyBackend> backend = std::make_shared<MemoryKeyBackend>();
  std::shared_ptr<KeyCache> keys = std::make_shared<KeyCache>(std::make_shared<KeychainStore>(backend));
  std::shared_ptr<const FalCatalog> catalog = std::make_shared<FalCatalog>(settings);
  CreditsDesk credits{{web, clock, settings, keys, catalog}};
  InterpreterDesk interpreter{store, credits};
};

TEST_F(CreditsDeskTest, CreditsRunThroughTheGatewayAndOthersWhereTheyDidBefore) {
  const GenerationPorts plugged = ports();
  EXPECT_TRUE(std::dynamic_pointer_cast<CreditsImageProvider>(plugged.providerResolver(ProviderID::credits)));
  EXPECT_TRUE(std::dynamic_pointer_cast<RetiredProvider>(plugged.providerResolver(ProviderID::fal)));
  EXPECT_TRUE(plugged.creditState && plugged.cancelCredits && plugged.noteUsage);
}

TEST_F(CreditsDeskTest, ATokenThatTheKeyStoreRefusesPaysUntilTheProgramEnds) {
  backend->failingNumber = 7;
  answerAccount();
  web->on("POST", u"v1/auth/exchange"_s).answersJson(QJsonObject{{u"token"_s, u"token-1"_s}});
  credits.account().complete(u"sorvan://auth?code=1"_s);
  settle();
  EXPECT_EQ(ports().keyReader(ProviderID::credits), u"token-1"_s);
}

TEST_F(CreditsDeskTest, AnInterpretationWhoseAnswerWasLostIsAccountedForOnceSomebodyIsSignedIn) {
  open();
  InterpretationBooks& books = interpreter.interpreting().books;
  books.aboutToSend(newUuid(), std::nullopt);
  web->on("GET", u"v1/requests/"_s)
      .answersJson(QJsonObject{{u"id"_s, u"op-1"_s},
                               {u"kind"_s, u"interpret"_s},
                               {u"state"_s, u"complete"_s},
                               {u"reserved"_s, 0},
                               {u"charged"_s, 300'000}});
  interpreter.settle();
  test::runPosted();
  EXPECT_FALSE(books.isSettled()) << "nobody is signed in";
  EXPECT_TRUE(web->requests(u"v1/requests/"_s).empty());
  signIn();
  interpreter.settle();
  test::runPosted();
  EXPECT_TRUE(books.isSettled());
  ASSERT_EQ(store.extraCharges().entries().size(), 1U);
  EXPECT_EQ(store.extraCharges().entries()[0].credits, 0.3);
}

TEST_F(CreditsDeskTest, AnInterpretationOfOneAccountIsNotAskedForWithAnother) {
  open();
  signIn();
  InterpretationBooks& books = interpreter.interpreting().books;
  books.aboutToSend(newUuid(), std::nullopt);
  web->on("GET", u"v1/requests/"_s).answers(404).repeating();
  becomes(u"bob@example.org"_s);
  EXPECT_TRUE(web->requests(u"v1/requests/"_s).empty());
  becomes(u"ada@example.org"_s);
  EXPECT_EQ(web->requests(u"v1/requests/"_s).size(), 1U);
  EXPECT_FALSE(books.isSettled()) << "it may be on its way";
}

}  // namespace
}  // namespace sorvan::app
