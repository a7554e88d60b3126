// The program is killed where money is at stake, started again, and Retry is pressed: each time at most one purchase,
// and the item, or a job that says why not.
#include <gtest/gtest.h>

#include <QImage>

#include "durability/driven.h"

namespace durability {
namespace {

const QJsonArray makePicture{enqueuePicture(), command(u"run"_qs)};
const QJsonArray retry{command(u"retry"_qs), command(u"run"_qs)};

void expectItemLanded(Driven& driven, const Ended& after) {
  ASSERT_FALSE(after.killed);
  EXPECT_EQ(after.exitCode, 0);
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);
  EXPECT_LE(driven.sandbox().mostPostsOfOneAttempt(), 1);
  ASSERT_EQ(after.items(), 1);
  EXPECT_TRUE(after.item()[u"exists"_qs].toBool());
  EXPECT_EQ(after.item()[u"checksum"_qs], after.item()[u"actualChecksum"_qs]);
  EXPECT_FALSE(QImage(driven.workspace() + u'/' + after.item()[u"path"_qs].toString()).isNull());
  EXPECT_EQ(after.job()[u"status"_qs].toString(), u"complete"_qs);
  EXPECT_EQ(after.job()[u"outputs"_qs].toInt(), 1);
  EXPECT_FALSE(after.job()[u"recoveryFolder"_qs].toBool());
  EXPECT_EQ(after.report[u"charges"_qs].toInt(), 0);
}

// The job knows that its request may have been accepted, Retry buys nothing, and only the explicit word does.
void expectUnknownThenSubmitAgain(Driven& driven, qsizetype purchasesBefore) {
  const Ended refused = driven.run(retry);
  ASSERT_FALSE(refused.killed);
  EXPECT_EQ(driven.sandbox().ledger().size(), purchasesBefore);
  EXPECT_EQ(driven.sandbox().postsTo(u"fal-ai/flux/schnell"_qs), 1);
  EXPECT_EQ(refused.job()[u"status"_qs].toString(), u"failed"_qs);
  EXPECT_EQ(refused.job()[u"detail"_qs].toString(), u"Interrupted"_qs);
  EXPECT_TRUE(refused.job()[u"unknown"_qs].toBool());
  EXPECT_TRUE(refused.job()[u"error"_qs].toString().startsWith(u"The answer to this request was lost."_qs));
  EXPECT_EQ(refused.items(), 0);

  const Ended again = driven.run({command(u"submit-again"_qs), command(u"run"_qs)});
  EXPECT_EQ(again.items(), 1);
  EXPECT_EQ(again.job()[u"status"_qs].toString(), u"complete"_qs);
  EXPECT_EQ(driven.sandbox().ledger().size(), purchasesBefore + 1);
}

TEST(Killed, NothingWasKilledAndThePictureLands) {
  Driven driven;
  expectItemLanded(driven, driven.run(makePicture));
}

TEST(Killed, DuringAnUploadNothingIsBoughtAndRetrySubmits) {
  Driven driven;
  driven.run(makePicture);
  driven.sandbox().addFault(u"upload"_qs, u"hold"_qs, {{u"at"_qs, u"before"_qs}});
  const QJsonObject edit{{u"do"_qs, u"enqueue"_qs},
                         {u"model"_qs, u"fal-ai/nano-banana-2/edit"_qs},
                         {u"prompt"_qs, u"make it dusk"_qs},
                         {u"references"_qs, QJsonArray{0}}};
  driven.start({edit, command(u"run"_qs)});
  driven.sandbox().waitForHeld(u"upload"_qs);
  driven.kill();
  EXPECT_TRUE(driven.end().killed);
  driven.sandbox().release();
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);

  const Ended after = driven.run(retry);
  EXPECT_EQ(after.items(), 2);
  EXPECT_EQ(after.job(0)[u"status"_qs].toString(), u"complete"_qs);
  EXPECT_EQ(driven.sandbox().ledger().size(), 2);
}

TEST(Killed, WithThePostHeldTheJobSaysThatItMayHaveBeenAccepted) {
  Driven driven;
  driven.sandbox().addFault(u"submit"_qs, u"hold"_qs, {{u"at"_qs, u"before"_qs}});
  driven.start(makePicture);
  driven.sandbox().waitForHeld(u"submit"_qs);
  driven.kill();
  EXPECT_TRUE(driven.end().killed);
  driven.sandbox().release();
  driven.sandbox().waitForCalls(u"submit"_qs, 1);
  expectUnknownThenSubmitAgain(driven, driven.sandbox().ledger().size());
}

TEST(Killed, WithTheAnswerSentButNoHandleSavedTheJobSaysThatItMayHaveBeenAccepted) {
  Driven driven;
  driven.sandbox().addFault(u"submit"_qs, u"hold"_qs, {{u"at"_qs, u"after"_qs}});
  driven.start(makePicture, u"before fsync library.store-wal"_qs, false);
  driven.sandbox().waitForHeld(u"submit"_qs);
  driven.arm();
  driven.sandbox().release();
  EXPECT_TRUE(driven.end().killed);
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);
  // The row may or may not have reached the log before the kill: either the handle is there and Retry attaches, or it
  // is not and the marker stands. Nothing is bought either way.
  const Ended after = driven.run(retry);
  EXPECT_EQ(driven.sandbox().ledger().size(), 1);
  EXPECT_EQ(driven.sandbox().postsTo(u"fal-ai/flux/schnell"_qs), 1);
  if (after.job()[u"hasHandle"_qs].toBool()) expectItemLanded(driven, after);
  else expectUnknownThenSubmitAgain(driven, 1);
}

TEST(Killed, BeforeTheHandleIsWrittenTheJobSaysThatItMayHaveBeenAccepted) {
  Driven driven;
  driven.sandbox().addFault(u"submit"_qs, u"hold"_qs, {{u"at"_qs, u"after"_qs}});
  driven.start(makePicture, u"before write library.store-wal"_qs, false);
  driven.sandbox().waitForHeld(u"submit"_qs);
  driven.arm();
  driven.sandbox().release();
  EXPECT_TRUE(driven.end().killed);
  expectUnknownThenSubmitAgain(driven, 1);
}

TEST(Killed, WhilePollingRetryAttachesToTheRemoteJob) {
  Driven driven;
  driven.sandbox().setManualPace(true);
  driven.start(makePicture);
  driven.sandbox().waitForCalls(u"status"_qs, 2);
  driven.kill();
  EXPECT_TRUE(driven.end().killed);
  driven.sandbox().setManualPace(false);
  expectItemLanded(driven, driven.run(retry));
}

TEST(Killed, DuringASlowDownloadRetryDownloadsAgain) {
  Driven driven;
  driven.sandbox().addFault(u"download"_qs, u"stall"_qs);
  driven.start(makePicture);
  driven.sandbox().waitForHeld(u"download"_qs);
  driven.kill();
  EXPECT_TRUE(driven.end().killed);
  driven.sandbox().release();
  expectItemLanded(driven, driven.run(retry));
}

TEST(Killed, AfterTheMediaBeforeTheManifestRetryDownloadsAgain) {
  Driven driven;
  EXPECT_TRUE(driven.run(makePicture, u"before rename results.json"_qs).killed);
  expectItemLanded(driven, driven.run(retry));
}

TEST(Killed, AfterTheManifestBeforeTheSaveRetryLandsTheRetainedResultWithoutTheNetwork) {
  Driven driven;
  EXPECT_TRUE(driven.run(makePicture, u"after rename results.json"_qs).killed);
  const int calls = driven.sandbox().callCount(u"status"_qs) + driven.sandbox().callCount(u"result"_qs) +
                    driven.sandbox().callCount(u"download"_qs);
  expectItemLanded(driven, driven.run(retry));
  EXPECT_EQ(driven.sandbox().callCount(u"status"_qs) + driven.sandbox().callCount(u"result"_qs) +
                driven.sandbox().callCount(u"download"_qs),
            calls);
}

TEST(Killed, WhileAFileIsWrittenTheNextOpeningTakesItsTemporaryFileAway) {
  Driven driven;
  EXPECT_TRUE(driven.run(makePicture, u"before rename Inbox/generated/"_qs).killed);
  EXPECT_EQ(driven.filesBelow(u"Inbox/generated"_qs).filter(u".sorvan-temporary"_qs).size(), 1);
  expectItemLanded(driven, driven.run(retry));
  EXPECT_EQ(driven.filesBelow(u"Inbox"_qs).filter(u".sorvan-temporary"_qs), QStringList());
}

TEST(Killed, AfterTheFileBeforeTheSaveRetryLandsTheRetainedResult) {
  Driven driven;
  EXPECT_TRUE(driven.run(makePicture, u"after rename Inbox/thumbnails/"_qs).killed);
  expectItemLanded(driven, driven.run(retry));
}

TEST(Killed, AfterTheSaveBeforeTheCleanUpTheNextOpeningCleansUp) {
  Driven driven;
  EXPECT_TRUE(driven.run(makePicture, u"before unlink results.json"_qs).killed);
  expectItemLanded(driven, driven.run({}));
}

}  // namespace
}  // namespace durability
