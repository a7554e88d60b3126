// The gateway from outside: signing in, paying, buying work with credits, and books that are always in balance.
#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QUuid>

#include "sandbox/client.h"

namespace sorvan::test {
namespace {

const QString flux = QStringLiteral("fal-ai/flux/schnell");

class SandboxGateway : public testing::Test {
 protected:
  SandboxGateway() : token(sandbox.token()) {}
  ~SandboxGateway() override { EXPECT_TRUE(books().value(QStringLiteral("balanced")).toBool()); }

  static SandboxProcess::Options options(const QTemporaryDir& folder) {
    SandboxProcess::Options made;
    made.stateFolder = folder.path();
    return made;
  }
  WireAnswer ask(const QByteArray& method, const QString& path, const QJsonObject& body = {},
                 const QByteArray& key = {}) {
    Client client(sandbox);
    if (!token.isEmpty()) client.headers.append({"Authorization", "Bearer " + token.toLatin1()});
    if (!key.isEmpty()) client.headers.append({"Idempotency-Key", key});
    const QByteArray bytes = method == "GET" ? QByteArray() : QJsonDocument(body).toJson(QJsonDocument::Compact);
    return client.send(method, QUrl(QStringLiteral("https://gateway.sorvan.app") + path), bytes, Client::Key::None);
  }
  QJsonObject me() { return ask("GET", QStringLiteral("/v1/me")).json(); }
  qint64 credits(const char* which) {
    return me().value(QStringLiteral("credits")).toObject().value(QLatin1StringView(which)).toInteger() / 1'000'000;
  }
  QJsonObject books() { return sandbox.gateway().value(QStringLiteral("books")).toObject(); }
  WireAnswer buy(const QByteArray& key, const QString& prompt = QStringLiteral("a kite"), const QString& model = flux,
                 QJsonObject input = {}) {
    input.insert(QStringLiteral("prompt"), prompt);
    if (!input.contains(QStringLiteral("image_size")))
      input.insert(QStringLiteral("image_size"), QStringLiteral("square"));
    return ask("POST", QStringLiteral("/v1/images"),
               {{QStringLiteral("model"), model}, {QStringLiteral("input"), input}}, key);
  }
  QJsonObject operation(const QString& id) { return ask("GET", QStringLiteral("/v1/operations/") + id).json(); }
  QJsonObject ended(QJsonObject begun) {
    const QString id = begun.value(QStringLiteral("id")).toString();
    while (begun.value(QStringLiteral("state")) == QStringLiteral("queued") ||
           begun.value(QStringLiteral("state")) == QStringLiteral("running"))
      begun = operation(id);
    return begun;
  }
  static QString stateOf(const QJsonObject& operation) { return operation.value(QStringLiteral("state")).toString(); }
  static QString errorOf(const WireAnswer& answer) { return answer.json().value(QStringLiteral("error")).toString(); }
  void signInAs(const QString& email) {
    token.clear();
    ask("POST", QStringLiteral("/v1/auth/start"), {{QStringLiteral("email"), email}});
    const QString code = sandbox.mailedLink(email).section(QLatin1Char('='), 1);
    token = ask("POST", QStringLiteral("/v1/auth/exchange"),
                {{QStringLiteral("code"), code}, {QStringLiteral("device"), QStringLiteral("box")}}, "exchange")
                .json()
                .value(QStringLiteral("token"))
                .toString();
  }

  QTemporaryDir folder;
  SandboxProcess sandbox{options(folder)};
  QString token;
};

TEST_F(SandboxGateway, HasAnAccountWithCreditsAndTheRightToAnOwnKey) {
  EXPECT_EQ(credits("purchased"), 2000);
  EXPECT_EQ(me().value(QStringLiteral("features")), QJsonArray{QStringLiteral("byok")});
  EXPECT_TRUE(me().value(QStringLiteral("devices")).toArray().at(0)[QStringLiteral("current")].toBool());
}

TEST_F(SandboxGateway, SignsInByAMailedLinkThatWorksOnce) {
  signInAs(QStringLiteral("ada@example.org"));
  EXPECT_EQ(me().value(QStringLiteral("email")), QStringLiteral("ada@example.org"));
  EXPECT_EQ(credits("available"), 0);
  const QString code = sandbox.mailedLink(QStringLiteral("ada@example.org")).section(QLatin1Char('='), 1);
  const QJsonObject again{{QStringLiteral("code"), code}};
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/auth/exchange"), again, "another").status, 410);
  const WireAnswer kept = ask("POST", QStringLiteral("/v1/auth/exchange"), again, "exchange");
  EXPECT_EQ(kept.json().value(QStringLiteral("token")).toString(), token);
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/auth/exchange"), {{QStringLiteral("code"), QStringLiteral("x")}}).status, 404);
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/auth/start"), {{QStringLiteral("email"), QStringLiteral("nobody")}}).status, 422);
}

TEST_F(SandboxGateway, KnowsNobodyWithoutAToken) {
  token = QStringLiteral("forged");
  EXPECT_EQ(ask("GET", QStringLiteral("/v1/me")).status, 401);
  EXPECT_EQ(buy("key-1").status, 401);
  EXPECT_TRUE(sandbox.ledger().isEmpty());
}

TEST_F(SandboxGateway, BuysOnceUnderOneKeyWhateverTheBodySays) {
  const QJsonObject first = buy("key-1").json();
  EXPECT_EQ(buy("key-1").json().value(QStringLiteral("id")), first.value(QStringLiteral("id")));
  EXPECT_EQ(buy("key-1", QStringLiteral("another kite")).json().value(QStringLiteral("id")),
            first.value(QStringLiteral("id")));
  EXPECT_EQ(stateOf(ended(first)), QStringLiteral("complete"));
  EXPECT_EQ(buy("key-1").json().value(QStringLiteral("id")), first.value(QStringLiteral("id")));
  EXPECT_EQ(sandbox.ledger().size(), 1);
  EXPECT_EQ(ask("GET", QStringLiteral("/v1/requests/key-1")).json().value(QStringLiteral("id")),
            first.value(QStringLiteral("id")));
  EXPECT_EQ(ask("GET", QStringLiteral("/v1/requests/key-2")).status, 404);
  EXPECT_EQ(buy(QByteArray()).status, 400);
}

TEST_F(SandboxGateway, HoldsCreditsWhileItWorksAndChargesThemInTheEnd) {
  sandbox.setManualPace(true);
  const QJsonObject begun = buy("key-1").json();
  const qint64 reserved = begun.value(QStringLiteral("reserved")).toInteger();
  EXPECT_GE(reserved, 1'000'000);
  EXPECT_EQ(credits("reserved"), reserved / 1'000'000);
  EXPECT_EQ(credits("available"), 2000 - reserved / 1'000'000);
  EXPECT_EQ(books().value(QStringLiteral("open")).toInteger(), reserved);
  sandbox.setManualPace(false);
  const QJsonObject done = ended(begun);
  EXPECT_EQ(done.value(QStringLiteral("charged")).toInteger(), reserved);
  const QUrl url(done[QStringLiteral("result")][QStringLiteral("images")][0][QStringLiteral("url")].toString());
  EXPECT_EQ(url.host(), QStringLiteral("v3.fal.media"));
  EXPECT_TRUE(Client(sandbox).get(url, Client::Key::None).body.size() > 100);
  EXPECT_EQ(books().value(QStringLiteral("charged")).toInteger(), reserved);
  EXPECT_EQ(books().value(QStringLiteral("open")).toInteger(), 0);
}

TEST_F(SandboxGateway, TakesNothingForWorkThatFailsAndBeginsAnewUnderItsKey) {
  const QJsonObject bad = ended(buy("key-1", QStringLiteral("a kite"), flux,
                                    {{QStringLiteral("num_images"), QStringLiteral("many")}}).json());
  EXPECT_EQ(stateOf(bad), QStringLiteral("failed"));
  EXPECT_FALSE(bad.value(QStringLiteral("failure")).toString().isEmpty());
  EXPECT_EQ(credits("available"), 2000);
  const QJsonObject again = buy("key-1").json();
  EXPECT_NE(again.value(QStringLiteral("id")), bad.value(QStringLiteral("id")));
  EXPECT_EQ(stateOf(ended(again)), QStringLiteral("complete"));
  EXPECT_GT(books().value(QStringLiteral("returned")).toInteger(), 0);
}

TEST_F(SandboxGateway, GivesBackWhatIsCancelledBeforeItBegins) {
  sandbox.setManualPace(true);
  const QString waiting = buy("key-1").json().value(QStringLiteral("id")).toString();
  EXPECT_EQ(stateOf(ask("POST", QStringLiteral("/v1/operations/%1/cancel").arg(waiting)).json()),
            QStringLiteral("failed"));
  EXPECT_EQ(credits("available"), 2000);
  const QString running = buy("key-2").json().value(QStringLiteral("id")).toString();
  sandbox.step();
  EXPECT_EQ(stateOf(ask("POST", QStringLiteral("/v1/operations/%1/cancel").arg(running)).json()),
            QStringLiteral("running"));
  EXPECT_LT(credits("available"), 2000);
}

TEST_F(SandboxGateway, HoldsWhatNobodyKnowsForReview) {
  sandbox.setManualPace(true);
  const QJsonObject begun = buy("key-1").json();
  sandbox.steerGateway({{QStringLiteral("do"), QStringLiteral("make-uncertain")}});
  EXPECT_EQ(stateOf(operation(begun.value(QStringLiteral("id")).toString())), QStringLiteral("uncertain"));
  EXPECT_EQ(credits("review"), begun.value(QStringLiteral("reserved")).toInteger() / 1'000'000);
  EXPECT_EQ(buy("key-1").json().value(QStringLiteral("id")), begun.value(QStringLiteral("id")));
  sandbox.setManualPace(false);
  sandbox.steerGateway({{QStringLiteral("do"), QStringLiteral("resolve-uncertain")}});
  EXPECT_EQ(stateOf(ended(operation(begun.value(QStringLiteral("id")).toString()))), QStringLiteral("complete"));
}

TEST_F(SandboxGateway, SellsOnPagesThatArePaidOnceAndExpire) {
  signInAs(QStringLiteral("ada@example.org"));
  const QJsonObject pack{{QStringLiteral("pack_id"), QStringLiteral("p500")}};
  const QString url =
      ask("POST", QStringLiteral("/v1/checkout"), pack, "k:p500").json().value(QStringLiteral("checkout_url")).toString();
  EXPECT_TRUE(url.startsWith(QStringLiteral("https://checkout.sorvan.app/checkout/")));
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/checkout"), pack, "k:p500").json().value(QStringLiteral("checkout_url")), url);
  const QByteArray path = QUrl(url).path().toLatin1();
  EXPECT_TRUE(sandbox.page("GET", path).contains("action=\"" + path + "/pay\""));
  EXPECT_TRUE(Client(sandbox).get(QUrl(url), Client::Key::None).body.contains("Test mode"));
  for (int click = 0; click < 2; ++click) EXPECT_TRUE(sandbox.page("POST", path + "/pay").contains("Thank you"));
  EXPECT_EQ(credits("purchased"), 500);
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/checkout"), pack, "k:p500").status, 410);
  const QString next =
      ask("POST", QStringLiteral("/v1/checkout"), pack, "l:p500").json().value(QStringLiteral("checkout_url")).toString();
  sandbox.steerGateway({{QStringLiteral("do"), QStringLiteral("expire-checkouts")}});
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/checkout"), pack, "l:p500").status, 410);
  EXPECT_TRUE(sandbox.page("POST", QUrl(next).path().toLatin1() + "/pay").contains("expired"));
  EXPECT_EQ(credits("purchased"), 500);
}

TEST_F(SandboxGateway, SpendsPlanCreditsFirstAndHoldsANewAccountToItsLimit) {
  signInAs(QStringLiteral("ada@example.org"));
  const auto pay = [&](const char* path, const char* field, const char* id) {
    const QString url = ask("POST", QLatin1StringView(path), {{QLatin1StringView(field), QLatin1StringView(id)}}, id)
                            .json()
                            .value(QStringLiteral("checkout_url"))
                            .toString();
    sandbox.page("POST", QUrl(url).path().toLatin1() + "/pay");
  };
  pay("/v1/subscribe", "plan_id", "studio");
  pay("/v1/checkout", "pack_id", "p500");
  EXPECT_EQ(credits("included"), 1000);
  EXPECT_TRUE(me().contains(QStringLiteral("spend_limit")));
  ended(buy("key-1").json());
  EXPECT_LT(credits("included"), 1000);
  EXPECT_EQ(credits("purchased"), 500);
  sandbox.steerGateway({{QStringLiteral("do"), QStringLiteral("limit")}, {QStringLiteral("credits"), 1}});
  EXPECT_EQ(buy("key-2").status, 403);
}

TEST_F(SandboxGateway, RefusesWhatTheAccountCannotPayInWordsThatAreKnown) {
  signInAs(QStringLiteral("ada@example.org"));
  const WireAnswer refused = buy("key-1");
  EXPECT_EQ(refused.status, 402);
  EXPECT_TRUE(errorOf(refused).contains(QStringLiteral("insufficient sorvan credits"), Qt::CaseInsensitive));
  EXPECT_EQ(buy("key-2", QStringLiteral("a"), QStringLiteral("acme/any/text-to-image")).status, 422);
  EXPECT_TRUE(sandbox.ledger().isEmpty());
}

TEST_F(SandboxGateway, ListsPricesOfEveryKind) {
  const QJsonArray models{flux,
                          QStringLiteral("fal-ai/nano-banana-2"),
                          QStringLiteral("fal-ai/nano-banana-2/edit"),
                          QStringLiteral("bytedance/seedance-2.5/text-to-video"),
                          QStringLiteral("openai/gpt-image-2.5/flare/text-to-image"),
                          QStringLiteral("fal-ai/dia-tts"),
                          QStringLiteral("fal-ai/inworld-tts"),
                          QStringLiteral("fal-ai/seedvr/upscale/image"),
                          QStringLiteral("acme/any/text-to-image")};
  const QJsonObject listed = ask("POST", QStringLiteral("/v1/prices"), {{QStringLiteral("models"), models}})
                                 .json()
                                 .value(QStringLiteral("prices"))
                                 .toObject();
  EXPECT_EQ(listed.size(), models.size() - 1);
  const auto row = [&](int index) { return listed.value(models[index].toString()).toObject(); };
  EXPECT_TRUE(row(1).contains(QStringLiteral("options")));
  EXPECT_TRUE(row(2).contains(QStringLiteral("per_image")));
  EXPECT_EQ(row(3).value(QStringLiteral("per")), QStringLiteral("second"));
  EXPECT_EQ(row(3)[QStringLiteral("extras")][0][QStringLiteral("on_by_default")], true);
  EXPECT_TRUE(row(4).value(QStringLiteral("up_to")).toBool());
  EXPECT_EQ(row(5).value(QStringLiteral("per")), QStringLiteral("byte"));
  EXPECT_EQ(row(6).value(QStringLiteral("per")), QStringLiteral("character"));
  EXPECT_EQ(row(7).value(QStringLiteral("per")), QStringLiteral("megapixel"));
}

TEST_F(SandboxGateway, ChargesLessThanACeilingAndReturnsTheRest) {
  const QJsonObject sides{{QStringLiteral("width"), 512}, {QStringLiteral("height"), 512}};
  const QJsonObject wish{{QStringLiteral("quality"), QStringLiteral("high")}, {QStringLiteral("image_size"), sides}};
  const QString model = QStringLiteral("openai/gpt-image-2.5/flare/text-to-image");
  const QJsonObject done = ended(buy("key-1", QStringLiteral("a kite"), model, wish).json());
  ASSERT_EQ(stateOf(done), QStringLiteral("complete")) << QJsonDocument(done).toJson().toStdString();
  const QJsonObject now = books();
  EXPECT_EQ(now.value(QStringLiteral("charged")).toInteger(), done.value(QStringLiteral("charged")).toInteger());
  EXPECT_GT(now.value(QStringLiteral("returned")).toInteger(), 0);
}

TEST_F(SandboxGateway, InterpretsACommandOnceUnderItsKey) {
  const QJsonObject asked{{QStringLiteral("text"), QStringLiteral("find temples at dusk")}};
  const QJsonObject first = ask("POST", QStringLiteral("/v1/interpret"), asked, "key-i").json();
  EXPECT_EQ(stateOf(first), QStringLiteral("complete"));
  EXPECT_EQ(first[QStringLiteral("result")][QStringLiteral("action")][QStringLiteral("query")],
            QStringLiteral("temples at dusk"));
  EXPECT_EQ(first.value(QStringLiteral("charged")).toInteger(), 300'000);
  EXPECT_EQ(ask("POST", QStringLiteral("/v1/interpret"), asked, "key-i").json().value(QStringLiteral("id")),
            first.value(QStringLiteral("id")));
  EXPECT_EQ(books().value(QStringLiteral("charged")).toInteger(), 300'000);
}

TEST_F(SandboxGateway, EndsSignInsThatAreRevoked) {
  const QJsonObject begun = buy("key-1").json();
  sandbox.steerGateway({{QStringLiteral("do"), QStringLiteral("revoke")}});
  EXPECT_EQ(ask("GET", QStringLiteral("/v1/operations/") + begun.value(QStringLiteral("id")).toString()).status, 401);
  EXPECT_EQ(ask("GET", QStringLiteral("/v1/requests/key-1")).status, 401);
}

TEST_F(SandboxGateway, KeepsBooksAccountsAndOperationsOverAnAbruptEnd) {
  sandbox.setManualPace(true);
  const QJsonObject begun = buy("key-1").json();
  const QJsonObject before = books();
  sandbox.killAndRestart();
  EXPECT_EQ(books().value(QStringLiteral("reserved")), before.value(QStringLiteral("reserved")));
  EXPECT_EQ(stateOf(ended(operation(begun.value(QStringLiteral("id")).toString()))), QStringLiteral("complete"));
  EXPECT_EQ(buy("key-1").json().value(QStringLiteral("id")), begun.value(QStringLiteral("id")));
  EXPECT_EQ(sandbox.ledger().size(), 1);
}

TEST_F(SandboxGateway, CarriesOutALatePurchaseOnlyAfterTheNextLookUp) {
  sandbox.addFault(QStringLiteral("purchase"), QStringLiteral("late"));
  EXPECT_EQ(buy("key-1").status, 0);
  EXPECT_TRUE(sandbox.ledger().isEmpty());
  EXPECT_EQ(ask("GET", QStringLiteral("/v1/requests/key-1")).status, 404);
  EXPECT_EQ(sandbox.ledger().size(), 1);
  EXPECT_EQ(buy("key-1").status, 200);
  EXPECT_EQ(sandbox.ledger().size(), 1);
}

}  // namespace
}  // namespace sorvan::test
