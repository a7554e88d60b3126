// What can go wrong between the studio and the service, over the real network code.
#include "catalogue/provider_http.h"
#include "roundtrip/provider_bench.h"
#include "support/run_task.h"

namespace sorvan::test {
namespace {

using namespace Qt::StringLiterals;
using catalogue::ProviderRefusal;
using generation::RemoteJobFailed;
using generation::SubmissionUnknown;

const QString downloadFailed =
    u"The completed result could not be downloaded. Retry reconnects to the saved provider request."_s;

class RoundTripFault : public RoundTrip {
 protected:
  generation::ProviderCall picture() { return callFor(u"fal-ai/flux/schnell"_s, u"a lighthouse"_s); }

  /// The call that Retry makes: it attaches to the stored handle.
  std::vector<generation::GeneratedOutput> retry() {
    auto call = picture();
    call.resume = run->handle;
    return generate(call);
  }

  void expectLandsByRetryWithoutASecondPurchase() {
    ASSERT_TRUE(run->handle);
    sandbox.clearFaults();
    EXPECT_EQ(retry().size(), 1u);
    EXPECT_EQ(sandbox.ledger().size(), 1);
    EXPECT_EQ(sandbox.postsTo(u"fal-ai/flux/schnell"_s), 1);
  }
};

TEST_F(RoundTripFault, AWrongKeyIsNamedAndBuysNothing) {
  auto call = picture();
  call.key = u"11111111-1111-4111-8111-111111111111:00000000000000000000000000000000"_s;
  EXPECT_TRUE(failureOf<ProviderRefusal>(call).startsWith(u"fal.ai refused your key for this request (401: "_s));
  EXPECT_FALSE(run->marked);
  EXPECT_TRUE(sandbox.ledger().isEmpty());
}

TEST_F(RoundTripFault, ALockedAccountIsNamedAndBuysNothing) {
  sandbox.addFault(u"submit"_s, u"locked"_s);
  EXPECT_TRUE(failureOf<ProviderRefusal>(picture()).startsWith(u"fal.ai refused your key for this request (403: "_s));
  EXPECT_FALSE(run->marked);
  EXPECT_TRUE(sandbox.ledger().isEmpty());
}

TEST_F(RoundTripFault, ADroppedSubmitReplyIsOnePostAndOnePurchaseAndUnknown) {
  for (const auto& kind : {u"drop"_s, u"cut-status-line"_s, u"server-error"_s, u"bad-gateway"_s, u"garbage"_s,
                           u"empty"_s, u"no-handle"_s}) {
    run = std::make_shared<LiveRun>();
    sandbox.setRun(kind);
    sandbox.addFault(u"submit"_s, kind);
    const auto call = callFor(u"fal-ai/flux/schnell"_s, u"a lighthouse, "_s + kind);
    EXPECT_FALSE(failureOf<SubmissionUnknown>(call).isEmpty()) << kind.toStdString();
    EXPECT_TRUE(run->marked) << kind.toStdString();
    EXPECT_FALSE(run->handle) << kind.toStdString();
    EXPECT_EQ(sandbox.ledgerOfRun(kind).size(), 1) << kind.toStdString();
    sandbox.clearFaults();
  }
  EXPECT_EQ(sandbox.mostPostsOfOneAttempt(), 1);
}

TEST_F(RoundTripFault, ARedirectedSubmitFollowsNowhere) {
  sandbox.addFault(u"submit"_s, u"redirect"_s);
  EXPECT_EQ(failureOf<SubmissionUnknown>(picture()), u"Provider error 307: Temporary Redirect"_s);
  EXPECT_EQ(sandbox.posts(), 1);
}

TEST_F(RoundTripFault, AServiceThatIsDownBuysNothing) {
  for (const auto& kind : {u"refuse"_s, u"break-tls"_s, u"untrusted"_s}) {
    sandbox.addFault(u"submit"_s, kind, {{u"host"_s, u"queue.fal.run"_s}});
    EXPECT_FALSE(failureOf<platform::HttpError>(picture()).isEmpty()) << kind.toStdString();
    EXPECT_FALSE(run->marked) << kind.toStdString();
    sandbox.clearFaults();
  }
  EXPECT_TRUE(sandbox.ledger().isEmpty());
}

TEST_F(RoundTripFault, ForeignAddressesInTheAnswerNeverGetTheKey) {
  sandbox.addFault(u"submit"_s, u"elsewhere"_s);
  EXPECT_EQ(generate(picture()).size(), 1u);
  EXPECT_EQ(run->handle->statusURL.host(), u"queue.fal.run"_s);
}

TEST_F(RoundTripFault, AStateThatFallsBackIsWaitedOut) {
  sandbox.addFault(u"status"_s, u"backwards"_s);
  EXPECT_EQ(generate(picture()).size(), 1u);
}

TEST_F(RoundTripFault, AnUnknownStateKeepsTheHandle) {
  sandbox.addFault(u"status"_s, u"unknown-state"_s);
  EXPECT_TRUE(failureOf<base::SorvanError>(picture()).startsWith(u"Unexpected fal.ai job state: "_s));
  expectLandsByRetryWithoutASecondPurchase();
}

TEST_F(RoundTripFault, AFailedJobIsToldApart) {
  sandbox.addFault(u"status"_s, u"job-error"_s);
  EXPECT_FALSE(failureOf<RemoteJobFailed>(picture()).isEmpty());
}

TEST_F(RoundTripFault, ARefusedResultIsToldApart) {
  sandbox.addFault(u"result"_s, u"invalid"_s);
  EXPECT_TRUE(failureOf<RemoteJobFailed>(picture()).startsWith(u"Provider error 422: prompt: The content"_s));
}

TEST_F(RoundTripFault, AStatusThatFailsForAWhileIsWaitedOut) {
  sandbox.addFault(u"status"_s, u"bad-gateway"_s, {{u"times"_s, 3}});
  EXPECT_EQ(generate(picture()).size(), 1u);
}

TEST_F(RoundTripFault, AResultThatCannotBeReadKeepsTheHandle) {
  sandbox.addFault(u"result"_s, u"garbage"_s);
  EXPECT_EQ(failureOf<base::SorvanError>(picture()), u"Invalid provider response."_s);
  expectLandsByRetryWithoutASecondPurchase();
}

TEST_F(RoundTripFault, ADownloadCutShortOfItsAnnouncedLengthKeepsTheHandle) {
  sandbox.addFault(u"download"_s, u"cut-with-length"_s);
  EXPECT_EQ(failureOf<base::SorvanError>(picture()), downloadFailed);
  EXPECT_TRUE(run->folder.files().isEmpty());
  expectLandsByRetryWithoutASecondPurchase();
}

TEST_F(RoundTripFault, ADownloadCutShortWithoutAnAnnouncedLengthKeepsTheHandle) {
  sandbox.addFault(u"download"_s, u"cut-without-length"_s);
  EXPECT_EQ(failureOf<base::SorvanError>(picture()), downloadFailed);
  EXPECT_TRUE(run->folder.files().isEmpty());
  expectLandsByRetryWithoutASecondPurchase();
}

TEST_F(RoundTripFault, ADownloadOfAnotherKindKeepsTheHandle) {
  sandbox.addFault(u"download"_s, u"wrong-media"_s);
  EXPECT_EQ(failureOf<base::SorvanError>(picture()), downloadFailed);
  expectLandsByRetryWithoutASecondPurchase();
}

TEST_F(RoundTripFault, AResultThatIsGoneKeepsTheHandle) {
  sandbox.addFault(u"download"_s, u"gone"_s);
  EXPECT_EQ(failureOf<base::SorvanError>(picture()), downloadFailed);
  expectLandsByRetryWithoutASecondPurchase();
}

TEST_F(RoundTripFault, ASlowDownloadArrivesWhole) {
  sandbox.addFault(u"download"_s, u"slow"_s, {{u"bytesPerSecond"_s, 2000000}});
  EXPECT_EQ(generate(picture()).size(), 1u);
}

TEST_F(RoundTripFault, AJobIsCancelledAtTheService) {
  sandbox.setManualPace(true);
  generation::ProviderCall call = picture();
  std::stop_source stop;
  catalogue::FalProvider provider({transport, catalog, std::make_shared<base::SystemClock>(), nullptr});
  const auto task = provider.generateImage(call, stop.get_token());
  runUntil([&] { return run->handle.has_value(); });
  runTask(provider.cancelJob(*run->handle, sandbox.key(), {}));
  stop.request_stop();
  runUntil([&] { return task.isReady(); });
  EXPECT_EQ(sandbox.callCount(u"cancel"_s), 1);
}

}  // namespace
}  // namespace sorvan::test
