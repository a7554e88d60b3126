#include "catalogue/credits_client.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include "catalogue/gateway_address.h"
#include "generation/provider.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;
using test::ScriptedTransport;

const QString refused = u"The Sorvan gateway could not complete this request."_s;

class CreditsClientTest : public testing::Test {
 protected:
  CreditsClientTest() { clock->passSleeps(); }

  CreditsClient client(const QString& token = u"token"_s) const {
    CreditsClient::Access access;
    access.transport = transport;
    access.clock = clock;
    access.gateway = QUrl(u"https://gateway.example/"_s);
    access.token = token;
    return CreditsClient(access);
  }

  static QByteArray operation(const QString& state, const QString& more = QString()) {
    return u"{\"id\":\"op-1\",\"kind\":\"image\",\"state\":\"%1\",\"reserved\":5000000,\"charged\":0%2}"_s.arg(state, more)
        .toUtf8();
  }

  CreditsOperation going() const {
    CreditsOperation begun;
    begun.id = u"op-1"_s;
    begun.state = u"running"_s;
    return begun;
  }

  CreditsClient::Submission picture() const {
    return {u"fal-ai/flux/schnell"_s, QJsonObject{{u"prompt"_s, u"a cat"_s}}, u"KEY-1"_s, u"text-to-image"_s};
  }

  template <class Failure = SorvanError, class Work>
  QString failure(Work work) {
    try {
      runTask(work());
    } catch (const Failure& failed) {
      return failed.message();
    }
    return u"accepted"_s;
  }

  QByteArray header(int call, const QByteArray& name) const {
    for (const auto& [key, value] : transport->recorded[static_cast<std::size_t>(call)].request.headers)
      if (key == name) return value;
    return QByteArray();
  }

  std::shared_ptr<ScriptedTransport> transport = std::make_shared<ScriptedTransport>();
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::stop_source stop;
};

TEST_F(CreditsClientTest, BuysWithExactlyOnePostThatCarriesKeyTokenAndFeature) {
  transport->on("POST", u"https://gateway.example/v1/images"_s).answers(200, operation(u"queued"_s));
  const CreditsOperation begun = runTask(client().submit(picture(), {}));
  EXPECT_EQ(begun.id, u"op-1"_s);
  EXPECT_EQ(begun.reserved, 5'000'000);
  ASSERT_EQ(transport->recorded.size(), 1u);
  EXPECT_EQ(transport->recorded[0].kind, test::ScriptedCall::PostOnce);
  EXPECT_EQ(header(0, "Authorization"), "Bearer token");
  EXPECT_EQ(header(0, "Idempotency-Key"), "KEY-1");
  EXPECT_EQ(header(0, "X-Sorvan-Feature"), "text-to-image");
  EXPECT_EQ(header(0, "Content-Type"), "application/json");
  EXPECT_EQ(transport->recorded[0].request.body, R"({"input":{"prompt":"a cat"},"model":"fal-ai/flux/schnell"})");
  EXPECT_EQ(transport->recorded[0].request.idleTimeout, std::chrono::seconds(30));
}

TEST_F(CreditsClientTest, SendsNoAuthorizationWithoutAToken) {
  transport->on("GET", u"v1/app"_s).answers(200, "{}");
  runTask(client(QString()).get<QJsonObject>(u"v1/app"_s, {}));
  EXPECT_EQ(header(0, "Authorization"), QByteArray());
}

TEST_F(CreditsClientTest, TellsAGatewaysOwnSentenceUnchanged) {
  transport->on("POST", u"v1/images"_s).answers(402, R"({"error":"You have insufficient Sorvan Credits."})");
  EXPECT_EQ(failure<GatewayRefusal>([&] { return client().submit(picture(), {}); }),
            u"You have insufficient Sorvan Credits."_s);
}

TEST_F(CreditsClientTest, TellsEveryOtherRefusalWithOneSentence) {
  for (const char* body : {"", "<html>down</html>", "[]", R"({"error":7})", R"({"error":""})", R"({"detail":"no"})"}) {
    transport->on("GET", u"v1/me"_s).answers(500, body);
    EXPECT_EQ(failure<GatewayRefusal>([&] { return client().get<QJsonObject>(u"v1/me"_s, {}); }), refused) << body;
  }
}

TEST_F(CreditsClientTest, FollowsNoRedirect) {
  transport->on("GET", u"v1/me"_s).answers(302, {}, {{"Location", "https://elsewhere.example/v1/me"}});
  EXPECT_EQ(failure<GatewayRefusal>([&] { return client().get<QJsonObject>(u"v1/me"_s, {}); }), refused);
  EXPECT_EQ(transport->recorded.size(), 1u);
}

TEST_F(CreditsClientTest, NeverTakesAnUnclearAnswerToAPurchaseForARefusal) {
  for (const int status : {302, 307, 408, 409, 425, 499, 500, 502, 503}) {
    transport->on("POST", u"v1/images"_s).answers(status, R"({"error":"down"})");
    EXPECT_EQ(failure<SubmissionUnknown>([&] { return client().submit(picture(), {}); }), u"down"_s) << status;
  }
  transport->on("POST", u"v1/images"_s).ends(PostFate::Unknown, u"reset"_s);
  EXPECT_EQ(failure<SubmissionUnknown>([&] { return client().submit(picture(), {}); }), u"reset"_s);
  for (const char* body : {"", "{", "[]", R"({"state":"queued"})", R"({"id":7,"state":"queued"})"}) {
    transport->on("POST", u"v1/images"_s).answers(200, body);
    EXPECT_NE(failure<SubmissionUnknown>([&] { return client().submit(picture(), {}); }), u"accepted"_s) << body;
  }
}

TEST_F(CreditsClientTest, SaysWhenAPurchaseCertainlyWasNotAccepted) {
  transport->on("POST", u"v1/images"_s).ends(PostFate::NotSent, u"no route"_s);
  EXPECT_EQ(failure<HttpError>([&] { return client().submit(picture(), {}); }), u"no route"_s);
  for (const int status : {400, 401, 402, 403, 404, 422, 429}) {
    transport->on("POST", u"v1/images"_s).answers(status);
    EXPECT_EQ(failure<GatewayRefusal>([&] { return client().submit(picture(), {}); }), refused) << status;
  }
}

TEST_F(CreditsClientTest, TakesAnyRefusalOfWhatCostsNothingForOne) {
  const auto once = [&] {
    return client().post<QJsonObject>(u"v1/checkout"_s, QJsonObject(), u"KEY"_s, {}, Stakes::once);
  };
  transport->on("POST", u"v1/checkout"_s).answers(410, R"({"error":"expired"})").answers(502).answers(302);
  EXPECT_EQ(failure<GatewayRefusal>(once), u"expired"_s);
  EXPECT_NE(failure<SubmissionUnknown>(once), u"accepted"_s);
  EXPECT_NE(failure<SubmissionUnknown>(once), u"accepted"_s);
  EXPECT_EQ(transport->posts(u"v1/checkout"_s), 3);
}

TEST_F(CreditsClientTest, TakesOnlyANotFoundForARequestThatWasNeverSeen) {
  transport->on("GET", u"v1/requests/KEY-1"_s).answers(404, R"({"error":"unknown"})");
  EXPECT_FALSE(runTask(client().existing(u"KEY-1"_s, {})));
  transport->on("GET", u"v1/requests/KEY-1"_s).answers(500, R"({"error":"down"})");
  EXPECT_EQ(failure([&] { return client().existing(u"KEY-1"_s, {}); }), u"down"_s);
  transport->on("GET", u"v1/requests/KEY-1"_s).fails(HttpProblem::CannotConnect, u"no route"_s);
  EXPECT_EQ(failure([&] { return client().existing(u"KEY-1"_s, {}); }), u"no route"_s);
  transport->on("GET", u"v1/requests/KEY-1"_s).answers(204);
  EXPECT_NE(failure([&] { return client().existing(u"KEY-1"_s, {}); }), u"accepted"_s);
  transport->on("GET", u"v1/requests/KEY-1"_s).answers(200, operation(u"failed"_s));
  EXPECT_TRUE(runTask(client().existing(u"KEY-1"_s, {}))->isFailed());
}

TEST_F(CreditsClientTest, LooksAtTheStateBeforeItSleepsAndAsksOnceASecond) {
  CreditsOperation done = going();
  done.state = u"complete"_s;
  EXPECT_EQ(runTask(client().wait(done, 600, {})), done);
  EXPECT_TRUE(transport->recorded.empty());
  EXPECT_TRUE(clock->slept().empty());

  transport->on("GET", u"v1/operations/op-1"_s)
      .answers(200, operation(u"queued"_s))
      .answers(200, operation(u"a state of tomorrow"_s))
      .answers(200, operation(u"complete"_s));
  EXPECT_TRUE(runTask(client().wait(going(), 600, {})).isComplete());
  EXPECT_EQ(clock->slept(), (std::vector<std::chrono::milliseconds>(3, std::chrono::seconds(1))));
}

TEST_F(CreditsClientTest, AsksAsOftenAsThereAreSecondsAndThenPromisesToReconnect) {
  transport->on("GET", u"v1/operations/op-1"_s).answers(200, operation(u"running"_s)).repeating();
  EXPECT_EQ(failure([&] { return client().wait(going(), 3, {}); }),
            u"This request is still processing. Retry reconnects using the same request ID."_s);
  EXPECT_EQ(transport->recorded.size(), 3u);
}

TEST_F(CreditsClientTest, TellsFailedFromUncertain) {
  CreditsOperation failed = going();
  failed.state = u"failed"_s;
  failed.failure = u"The model refused the prompt."_s;
  EXPECT_EQ(failure<RemoteJobFailed>([&] { return client().wait(failed, 5, {}); }), u"The model refused the prompt."_s);
  CreditsOperation uncertain = going();
  uncertain.state = u"uncertain"_s;
  bool isDead = false;
  try {
    runTask(client().wait(uncertain, 5, {}));
  } catch (const RemoteJobFailed&) {
    isDead = true;
  } catch (const SorvanError& told) {
    EXPECT_EQ(told.message(), u"Request failed."_s);
  }
  EXPECT_FALSE(isDead);
}

TEST_F(CreditsClientTest, PassesAFailureOfTheNetworkUpFromAWait) {
  transport->on("GET", u"v1/operations/op-1"_s).fails(HttpProblem::TimedOut, u"gone quiet"_s);
  EXPECT_EQ(failure<HttpError>([&] { return client().wait(going(), 5, {}); }), u"gone quiet"_s);
  EXPECT_EQ(transport->recorded.size(), 1u);
}

TEST_F(CreditsClientTest, StopsWaitingWhenItIsAskedTo) {
  stop.request_stop();
  EXPECT_THROW(runTask(client().wait(going(), 5, stop.get_token())), Cancelled);
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(CreditsClientTest, CancelsWithAndWithoutAWordOfTheGateway) {
  transport->on("POST", u"v1/operations/op-1/cancel"_s).answers(200, operation(u"failed"_s)).answers(204);
  EXPECT_TRUE(runTask(client().cancel(u"op-1"_s, {}))->isFailed());
  EXPECT_FALSE(runTask(client().cancel(u"op-1"_s, {})));
  EXPECT_EQ(transport->recorded[0].request.body, "{}");
}

TEST_F(CreditsClientTest, ReadsAResultWithWhatIsThere) {
  const auto read = decodeJson<CreditsOperation>(operation(
      u"complete"_s,
      u",\"result\":{\"images\":[{\"url\":\"https://fal.media/a.png\",\"label\":\"drums\"}],\"seed\":42,\"action\":{\"action\":\"generate\"}}"_s));
  ASSERT_TRUE(read.result && read.result->images);
  EXPECT_EQ(read.result->images->front().label, u"drums"_s);
  EXPECT_EQ(read.result->seed, 42);
  EXPECT_TRUE(read.result->action->isObject());
}

TEST(CreditsDisplayTest, GroupsAndKeepsAtMostTwoPlaces) {
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(creditsDisplay(1'000'000), u"1"_s);
  EXPECT_EQ(creditsDisplay(2'500'000), u"2.5"_s);
  EXPECT_EQ(creditsDisplay(1'234'560'000), u"1,234.56"_s);
  EXPECT_EQ(creditsDisplay(0), u"0"_s);
  EXPECT_EQ(creditsDisplay(-1), u"0"_s);
  EXPECT_EQ(creditsDisplay(10'000'000), u"10"_s);
  EXPECT_EQ(creditsCounted(1'000'000), u"1 credit"_s);
  EXPECT_EQ(creditsCounted(2'000'000'000), u"2,000 credits"_s);
}

}  // namespace
}  // namespace sorvan::catalogue
