// A service that is down, slow, redirects, answers garbage or drops its replies, met by the real library over TLS: one
// POST, one purchase at most, and a job that says what it knows.
#include <gtest/gtest.h>

#include "durability/driven.h"

namespace durability {
namespace {

const QJsonArray makePicture{enqueuePicture(), command(u"run"_qs)};
const QJsonArray retry{command(u"retry"_qs), command(u"run"_qs)};
const QString endpoint = u"fal-ai/flux/schnell"_qs;

struct Fault {
  const char* name;  // of the test
  const char* kind;  // of the sandbox's fault
};

void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.kind; }

std::string nameOf(const testing::TestParamInfo<Fault>& info) { return info.param.name; }

// Faults of a submit after which nobody here can know whether the service took it.
class ASubmitOfUnknownFate : public testing::TestWithParam<Fault> {};

TEST_P(ASubmitOfUnknownFate, IsPostedOnceAndRetryBuysNothing) {
  Driven driven;
  driven.sandbox().addFault(u"submit"_qs, QString::fromLatin1(GetParam().kind));
  const Ended first = driven.run(makePicture);
  EXPECT_EQ(first.job()[u"status"_qs].toString(), u"failed"_qs);
  EXPECT_TRUE(first.job()[u"unknown"_qs].toBool());
  EXPECT_FALSE(first.job()[u"error"_qs].toString().isEmpty());
  EXPECT_EQ(driven.sandbox().postsTo(endpoint), 1);
  const qsizetype purchases = driven.sandbox().ledger().size();
  EXPECT_LE(purchases, 1);

  const Ended second = driven.run(retry);
  EXPECT_EQ(driven.sandbox().postsTo(endpoint), 1);
  EXPECT_EQ(driven.sandbox().ledger().size(), purchases);
  EXPECT_TRUE(second.job()[u"unknown"_qs].toBool());
}

INSTANTIATE_TEST_SUITE_P(Service, ASubmitOfUnknownFate,
                         testing::Values(Fault{"WhenTheReplyIsDropped", "drop"},
                                         Fault{"WhenTheStatusLineIsCut", "cut-status-line"},
                                         Fault{"WhenTheConnectionClosesBeforeReading", "close-before-reading"},
                                         Fault{"WhenItAnswers500", "server-error"},
                                         Fault{"WhenItAnswers502WithHtml", "bad-gateway"},
                                         Fault{"WhenItAnswersGarbage", "garbage"},
                                         Fault{"WhenTheHandleIsMissing", "no-handle"},
                                         Fault{"WhenItRedirects", "redirect"},
                                         Fault{"WhenItAnswers409", "conflict"}),
                         nameOf);

// Faults of a submit after which it is certain that nothing was taken.
class ASubmitThatWasNotTaken : public testing::TestWithParam<Fault> {};

TEST_P(ASubmitThatWasNotTaken, IsSubmittedByRetry) {
  Driven driven;
  driven.sandbox().addFault(u"submit"_qs, QString::fromLatin1(GetParam().kind));
  const Ended first = driven.run(makePicture);
  EXPECT_EQ(first.job()[u"status"_qs].toString(), u"failed"_qs);
  EXPECT_FALSE(first.job()[u"unknown"_qs].toBool());
  EXPECT_FALSE(first.job()[u"error"_qs].toString().isEmpty());
  EXPECT_EQ(driven.sandbox().ledger().size(), 0);

  const Ended second = driven.run(retry);
  EXPECT_EQ(second.items(), 1);
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Service, ASubmitThatWasNotTaken,
                         testing::Values(Fault{"WhenItIsDown", "refuse"}, Fault{"WhenTlsBreaks", "break-tls"},
                                         Fault{"WhenItsCertificateIsNotTrusted", "untrusted"},
                                         Fault{"WhenTheKeyIsWrong401", "unauthorized"},
                                         Fault{"WhenTheAccountIsLocked403", "locked"},
                                         Fault{"WhenTheInputIsInvalid422", "invalid"},
                                         Fault{"WhenItIsRateLimited429", "rate-limited"}),
                         nameOf);

struct Place {
  const char* name;
  const char* call;
  const char* kind;
  int times = 1;
};

void PrintTo(const Place& place, std::ostream* out) { *out << place.call << ' ' << place.kind; }

// Whatever goes wrong after the handle was saved: the remote job is there, and Retry attaches to it.
class APaidJob : public testing::TestWithParam<Place> {};

TEST_P(APaidJob, LandsAtLastWithOnePurchase) {
  Driven driven;
  driven.sandbox().addFault(QString::fromLatin1(GetParam().call), QString::fromLatin1(GetParam().kind),
                            {{u"times"_qs, GetParam().times}, {u"bytesPerSecond"_qs, 200000}});
  Ended last = driven.run(makePicture);
  if (last.items() == 0) {
    EXPECT_EQ(last.job()[u"status"_qs].toString(), u"failed"_qs);
    EXPECT_FALSE(last.job()[u"error"_qs].toString().isEmpty());
    driven.sandbox().clearFaults();
    last = driven.run(retry);
  }
  EXPECT_EQ(last.items(), 1) << last.job()[u"error"_qs].toString().toStdString();
  EXPECT_EQ(last.item()[u"checksum"_qs], last.item()[u"actualChecksum"_qs]);
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);
  EXPECT_EQ(driven.sandbox().postsTo(endpoint), 1);
  EXPECT_FALSE(last.job()[u"recoveryFolder"_qs].toBool());
}

std::string placeName(const testing::TestParamInfo<Place>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(
    Service, APaidJob,
    testing::Values(Place{"WhoseStatusIsGarbage", "status", "garbage", 20},
                    Place{"WhoseStatusConnectionDrops", "status", "drop", 20},
                    Place{"WhoseStatusGoesBackwards", "status", "backwards"},
                    Place{"WhoseStatusIsUnknown", "status", "unknown-state"},
                    Place{"WhoseStatusRedirects", "status", "redirect", 20},
                    Place{"WhoseResultIsBadGateway", "result", "bad-gateway", 20},
                    Place{"WhoseResultIsGarbage", "result", "garbage", 20},
                    Place{"WhoseResultComesTwice", "result", "twice"},
                    Place{"WhoseDownloadIsCutShort", "download", "cut-with-length", 20},
                    Place{"WhoseDownloadIsCutWithoutLength", "download", "cut-without-length", 20},
                    Place{"WhoseDownloadIsNotTheMediaItClaims", "download", "wrong-media", 20},
                    Place{"WhoseDownloadDrops", "download", "drop", 20},
                    Place{"WhoseDownloadIsSlow", "download", "slow"},
                    Place{"WhoseDownloadIsForbidden", "download", "locked", 20}),
    placeName);

// The fifth piece that goes out opens the connection over which the job is followed. The network library keeps such a
// connection, broken as it is; nothing else may have to wait for it.
TEST(AConnectionThatBreaksWhileItIsMade, IsNotWaitedForAgain) {
  Driven driven;
  const Ended ended = driven.runOnBadLine({enqueuePicture(), command(u"run"_qs)}, u"at fail 5 send - EIO"_qs);
  EXPECT_EQ(ended.job()[u"status"_qs].toString(), u"complete"_qs) << ended.job()[u"error"_qs].toString().toStdString();
  EXPECT_EQ(ended.items(), 1);
}

TEST(APromptOf, AHundredThousandCharactersLandsUnderAShortName) {
  Driven driven;
  const Ended ended = driven.run({enqueuePicture(u"rain "_qs.repeated(20000)), command(u"run"_qs)});
  ASSERT_EQ(ended.items(), 1) << ended.report[u"refused"_qs].toString().toStdString();
  EXPECT_LT(ended.item()[u"path"_qs].toString().section(u'/', -1).toUtf8().size(), 255);
}

TEST(APromptOf, EmojiAndRightToLeftTextLandsUnderAReadableName) {
  Driven driven;
  const Ended ended = driven.run({enqueuePicture(u"👩‍🚀🌧️ قطة صغيرة على السطح مع 🐈"_qs), command(u"run"_qs)});
  ASSERT_EQ(ended.items(), 1) << ended.report[u"refused"_qs].toString().toStdString();
  EXPECT_TRUE(ended.item()[u"path"_qs].toString().contains(u"قطة"_qs));
}

}  // namespace
}  // namespace durability
