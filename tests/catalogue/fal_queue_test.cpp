#include "catalogue/fal_queue.h"

#include <gtest/gtest.h>

#include "catalogue/recorded_run.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::RecordedRun;
using test::runTask;
using test::ScriptedTransport;

const QByteArray acceptance =
    R"({"status":"IN_QUEUE","request_id":"R-1","response_url":"https://queue.fal.run/acme/model/requests/R-1",
        "status_url":"https://queue.fal.run/acme/model/requests/R-1/status",
        "cancel_url":"https://queue.fal.run/acme/model/requests/R-1/cancel"})";

class FalQueue : public testing::Test {
 protected:
  RemoteHandle submit() {
    const Submission submission{u"acme/model/deep"_s, {{u"prompt"_s, u"x"_s}}, u"secret"_s};
    return runTask(submitOnce(transport, submission, run));
  }

  static RemoteHandle stored() {
    return {u"R-1"_s, QUrl(u"https://queue.fal.run/acme/model/requests/R-1/status"_s),
            QUrl(u"https://queue.fal.run/acme/model/requests/R-1"_s),
            QUrl(u"https://queue.fal.run/acme/model/requests/R-1/cancel"_s)};
  }

  template <class Failure>
  QString failureOfSubmit() {
    try {
      submit();
    } catch (const Failure& failure) {
      return failure.message();
    }
    return {};
  }

  std::shared_ptr<ScriptedTransport> transport = std::make_shared<ScriptedTransport>();
  std::shared_ptr<RecordedRun> run = std::make_shared<RecordedRun>();
};

TEST_F(FalQueue, AnnouncesAndSendsOnePostWithTheKey) {
  transport->on("POST", u"queue.fal.run/acme/model/deep"_s).answers(200, acceptance);
  const RemoteHandle handle = submit();
  EXPECT_EQ(handle, stored());
  EXPECT_EQ(run->events, QStringList{u"about to submit"_s});
  ASSERT_EQ(transport->recorded.size(), 1u);
  const HttpRequest& sent = transport->recorded[0].request;
  EXPECT_EQ(sent.body, R"({"prompt":"x"})");
  EXPECT_EQ(sent.headers,
            (std::vector<HttpHeader>{{"Authorization", "Key secret"}, {"Content-Type", "application/json"}}));
}

TEST_F(FalQueue, SaysThatARefusedRequestWasNotSubmitted) {
  for (const int status : {400, 401, 402, 403, 404, 405, 413, 415, 422, 429}) {
    transport->on("POST", u"queue.fal.run"_s).answers(status, R"({"detail":"No."})");
    run->events.clear();
    EXPECT_FALSE(failureOfSubmit<ProviderRefusal>().isEmpty()) << status;
    EXPECT_EQ(run->events, (QStringList{u"about to submit"_s, u"not submitted"_s})) << status;
  }
}

TEST_F(FalQueue, NamesTheWayOutWhenTheKeyIsRefused) {
  transport->on("POST", u"queue.fal.run"_s).answers(401, R"({"detail":"No user found for Key ID and Secret"})");
  EXPECT_TRUE(failureOfSubmit<ProviderRefusal>().startsWith(
      u"fal.ai refused your key for this request (401: No user found for Key ID and Secret)."_s));
}

TEST_F(FalQueue, LeavesTheMarkerWhenTheAnswerIsUnknown) {
  for (const int status : {302, 408, 409, 425, 499, 500, 502, 503, 504}) {
    transport->on("POST", u"queue.fal.run"_s).answers(status, "<html>");
    run->events.clear();
    EXPECT_FALSE(failureOfSubmit<SubmissionUnknown>().isEmpty()) << status;
    EXPECT_EQ(run->events, QStringList{u"about to submit"_s}) << status;
  }
}

TEST_F(FalQueue, LeavesTheMarkerWhenTheAnswerIsDropped) {
  transport->on("POST", u"queue.fal.run"_s).ends(PostFate::Unknown, u"Connection closed"_s);
  EXPECT_EQ(failureOfSubmit<SubmissionUnknown>(), u"Connection closed"_s);
  EXPECT_EQ(run->events, QStringList{u"about to submit"_s});
  EXPECT_EQ(transport->posts(), 1);
}

TEST_F(FalQueue, TakesTheMarkerAwayWhenNothingLeft) {
  transport->on("POST", u"queue.fal.run"_s).ends(PostFate::NotSent, u"Host not found"_s);
  EXPECT_EQ(failureOfSubmit<HttpError>(), u"Host not found"_s);
  EXPECT_EQ(run->count(u"not submitted"_s), 1);
}

TEST_F(FalQueue, SendsNothingWhenTheJobWasCancelledBefore) {
  run->cancelledBeforeSubmission = true;
  EXPECT_THROW(submit(), Cancelled);
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(FalQueue, TakesTheMarkerAwayWhenItIsStoppedBeforeAnythingLeft) {
  run->submission.request_stop();
  EXPECT_THROW(submit(), Cancelled);
  EXPECT_EQ(run->events, (QStringList{u"about to submit"_s, u"not submitted"_s}));
  EXPECT_EQ(transport->posts(), 0);
}

TEST_F(FalQueue, CountsAnUnreadableAcceptanceAsUnknown) {
  for (const QByteArray& body : {QByteArray("garbage"), QByteArray("[]"), QByteArray("{}"), QByteArray(),
                                 QByteArray(R"({"request_id":7})"), QByteArray(R"({"request_id":"../../x"})")}) {
    transport->on("POST", u"queue.fal.run"_s).answers(200, body);
    run->events.clear();
    EXPECT_FALSE(failureOfSubmit<SubmissionUnknown>().isEmpty()) << body.toStdString();
    EXPECT_EQ(run->count(u"not submitted"_s), 0);
  }
}

TEST_F(FalQueue, BuildsTheAddressesThatAreMissingOrForeign) {
  EXPECT_EQ(handleFrom(R"({"request_id":"R-1"})", u"acme/model/deep"_s), stored());
  EXPECT_EQ(handleFrom(R"({"request_id":"R-1","status_url":"https://evil.example/s","response_url":7,
                           "cancel_url":"http://queue.fal.run/c"})",
                       u"acme/model/deep"_s),
            stored());
  const RemoteHandle kept =
      handleFrom(R"({"request_id":"R-1","status_url":"https://queue.fal.run/acme/model/deep/requests/R-1/status/"})",
                 u"acme/model/deep"_s);
  EXPECT_EQ(kept.statusURL, QUrl(u"https://queue.fal.run/acme/model/deep/requests/R-1/status/"_s));
  EXPECT_EQ(kept.resultURL, stored().resultURL);
}

TEST_F(FalQueue, AHandleIsTheSameAfterARestartWhateverItsAddressesEndIn) {
  const RemoteHandle handle = handleFrom(
      R"({"request_id":"R-1","status_url":"https://QUEUE.fal.run##","cancel_url":"https://queue.fal.run/a%2Fb?q=%20#f"})",
      u"acme/model/deep"_s);
  EXPECT_EQ(decodeHandle(encodeHandle(handle)), handle);
  EXPECT_EQ(handle.cancelURL, QUrl(u"https://queue.fal.run/a%2Fb?q=%20"_s));
}

TEST_F(FalQueue, ReadsTheStates) {
  auto& route = transport->on("GET", u"/status"_s);
  route.answers(202, R"({"status":"IN_QUEUE"})").answers(202, R"({"status":"IN_PROGRESS"})");
  route.answers(200, R"({"status":"COMPLETED"})");
  EXPECT_EQ(runTask(fetchJobState(transport, stored(), u"k"_s, {})), JobState::queued);
  EXPECT_EQ(runTask(fetchJobState(transport, stored(), u"k"_s, {})), JobState::running);
  EXPECT_EQ(runTask(fetchJobState(transport, stored(), u"k"_s, {})), JobState::completed);
}

TEST_F(FalQueue, RefusesAnUnknownState) {
  const auto told = [&](const QByteArray& body) {
    transport->on("GET", u"/status"_s).answers(200, body);
    try {
      runTask(fetchJobState(transport, stored(), u"k"_s, {}));
    } catch (const SorvanError& error) {
      return error.message();
    }
    return QString();
  };
  EXPECT_EQ(told(R"({"status":"PAUSED"})"), u"Unexpected fal.ai job state: PAUSED"_s);
  EXPECT_EQ(told("{}"), u"Unexpected fal.ai job state: UNKNOWN"_s);
  EXPECT_EQ(told("<html>"), u"Invalid provider response."_s);
}

TEST_F(FalQueue, TakesAnErrorInTheStatusAsTheJobsEnd) {
  transport->on("GET", u"/status"_s)
      .answers(200, R"({"status":"COMPLETED","error":"Request timed out","error_type":"request_timeout"})")
      .answers(200, R"({"status":"COMPLETED","error":"Something else"})");
  for (const auto billing : {RemoteJobFailed::Billing::nothing, RemoteJobFailed::Billing::perhaps}) {
    try {
      runTask(fetchJobState(transport, stored(), u"k"_s, {}));
      FAIL() << "nothing was thrown";
    } catch (const RemoteJobFailed& failed) {
      EXPECT_EQ(failed.billing(), billing) << failed.what();
    }
  }
}

TEST_F(FalQueue, SendsNoKeyToAForeignAddressOfAStoredHandle) {
  RemoteHandle foreign = stored();
  foreign.statusURL = QUrl(u"https://queue.fal.run.evil.example/status"_s);
  foreign.resultURL = foreign.statusURL;
  foreign.cancelURL = foreign.statusURL;
  const auto told = [](const std::function<void()>& work) {
    try {
      work();
    } catch (const SorvanError& error) {
      return error.message();
    }
    return QString();
  };
  EXPECT_EQ(told([&] { runTask(fetchJobState(transport, foreign, u"k"_s, {})); }), u"Unexpected provider job URL."_s);
  EXPECT_EQ(told([&] { runTask(fetchResult(transport, foreign, u"k"_s, {})); }), u"Unexpected provider job URL."_s);
  EXPECT_EQ(told([&] { runTask(cancelRemoteJob(transport, foreign, u"k"_s, {})); }), u"Unexpected provider job URL."_s);
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(FalQueue, RidesOutFiveFailuresInARowWithGrowingWaits) {
  const auto clock = std::make_shared<test::FakeClock>();
  clock->passSleeps();
  auto& route = transport->on("GET", u"/status"_s);
  route.fails(HttpProblem::Interrupted).answers(502, "<html>").answers(429, "{}").answers(408, "{}");
  route.fails(HttpProblem::TimedOut).answers(200, R"({"status":"COMPLETED"})");
  const PolledState polled = runTask(fetchJobStatePatiently(transport, clock, stored(), u"k"_s, {}));
  EXPECT_EQ(polled.state, JobState::completed);
  EXPECT_EQ(polled.waits, 5);
  using std::chrono::seconds;
  EXPECT_EQ(clock->slept(),
            (std::vector<std::chrono::milliseconds>{seconds(2), seconds(4), seconds(8), seconds(16), seconds(32)}));
}

TEST_F(FalQueue, GivesUpAtTheSixthFailureInARow) {
  const auto clock = std::make_shared<test::FakeClock>();
  clock->passSleeps();
  auto& route = transport->on("GET", u"/status"_s).fails(HttpProblem::Interrupted, u"Network is down"_s).repeating();
  try {
    runTask(fetchJobStatePatiently(transport, clock, stored(), u"k"_s, {}));
    FAIL() << "nothing was thrown";
  } catch (const HttpError& error) {
    EXPECT_EQ(error.message(), u"Network is down"_s);
  }
  EXPECT_EQ(route.calls(), 6);
}

TEST_F(FalQueue, DoesNotWaitOutARefusalThatWillStay) {
  const auto clock = std::make_shared<test::FakeClock>();
  transport->on("GET", u"/status"_s).answers(500, "{}").answers(401, R"({"detail":"no"})");
  EXPECT_THROW(runTask(fetchJobStatePatiently(transport, clock, stored(), u"k"_s, {})), ProviderRefusal);
  EXPECT_THROW(runTask(fetchJobStatePatiently(transport, clock, stored(), u"k"_s, {})), ProviderRefusal);
  EXPECT_TRUE(clock->slept().empty());
}

TEST_F(FalQueue, TellsARefusedResultFromOneThatCannotBeHadNow) {
  struct Case {
    int status;
    QByteArray body;
    std::optional<RemoteJobFailed::Billing> ends;
  };
  const auto nothing = RemoteJobFailed::Billing::nothing;
  const auto perhaps = RemoteJobFailed::Billing::perhaps;
  const std::vector<Case> cases{
      {422, R"({"detail":[{"loc":["body","prompt"],"msg":"Flagged","type":"content_policy_violation"}]})", perhaps},
      {400, R"({"detail":"bad request"})", perhaps},
      {400, R"({"detail":"Request is still in progress"})", std::nullopt},
      {499, R"({"detail":"gone","error_type":"client_cancelled"})", nothing},
      {504, R"({"detail":"Request timed out","error_type":"request_timeout"})", nothing},
      {500, R"({"detail":[{"loc":["body"],"msg":"Internal","type":"internal_server_error"}]})", nothing},
      {500, R"({"detail":"Internal"})", std::nullopt},
      {502, "<html>nginx</html>", std::nullopt},
      {401, "{}", std::nullopt},
      {403, "{}", std::nullopt},
      {404, "{}", std::nullopt},
      {408, "{}", std::nullopt},
      {429, "{}", std::nullopt}};
  for (const Case& each : cases) {
    transport->on("GET", u"requests/R-1"_s).answers(each.status, each.body);
    try {
      runTask(fetchResult(transport, stored(), u"k"_s, {}));
      FAIL() << each.status;
    } catch (const RemoteJobFailed& failed) {
      EXPECT_EQ(each.ends, failed.billing()) << each.status << each.body.toStdString();
    } catch (const ProviderRefusal& refusal) {
      EXPECT_FALSE(each.ends.has_value()) << each.status << each.body.toStdString();
    }
  }
}

TEST_F(FalQueue, BillsNothingWhenTheAnswerSaysZeroUnits) {
  transport->on("GET", u"requests/R-1"_s).answers(422, R"({"detail":"no"})", {{"x-fal-billable-units", "0"}});
  try {
    runTask(fetchResult(transport, stored(), u"k"_s, {}));
    FAIL() << "nothing was thrown";
  } catch (const RemoteJobFailed& failed) {
    EXPECT_EQ(failed.billing(), RemoteJobFailed::Billing::nothing);
    EXPECT_EQ(failed.message(), u"Provider error 422: no"_s);
  }
}

TEST_F(FalQueue, CancelsWithAPutAndTellsAJobThatHadFinished) {
  transport->on("PUT", u"/cancel"_s)
      .answers(202, R"({"status":"CANCELLATION_REQUESTED"})")
      .answers(400, R"({"status":"ALREADY_COMPLETED"})")
      .answers(404, R"({"status":"NOT_FOUND"})");
  EXPECT_NO_THROW(runTask(cancelRemoteJob(transport, stored(), u"k"_s, {})));
  EXPECT_THROW(runTask(cancelRemoteJob(transport, stored(), u"k"_s, {})), RemoteJobAlreadyComplete);
  EXPECT_THROW(runTask(cancelRemoteJob(transport, stored(), u"k"_s, {})), ProviderRefusal);
}

}  // namespace
}  // namespace sorvan::catalogue
