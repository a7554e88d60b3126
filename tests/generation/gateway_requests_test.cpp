// Requests that a gateway may know: what is noted of them, and what no longer stands in their way.
#include <gtest/gtest.h>

#include "base/ids.h"
#include "core/small_edits.h"
#include "generation/cancel_and_retry.h"
#include "generation/credits_studio.h"
#include "generation/marked_areas_run.h"
#include "generation/result_recovery.h"

namespace sorvan::generation {
namespace {

using namespace test;

class GatewayRequests : public CreditsStudio, public testing::Test {
 protected:
  /// A request with a reference, whose run breaks off once the gateway has taken it.
  QUuid brokenOff() {
    provider->script.holdPoll = false;
    provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("gone quiet")));
    provider->models[0].supportsReferences = true;
    picture = addAsset(MediaType::image, QStringLiteral("cat.png"), pictureBytes(Qt::red, "PNG", {900, 600}))->id;
    GenerationRequest request = promptRequest(QStringLiteral("a hat"));
    request.referenceIDs = {picture};
    if (isMarked) {
      MarkupBox box;
      box.x = box.y = 0.4;
      box.width = box.height = 0.1;
      request.markup = {box};
    }
    return finished(request)->id;
  }
  void goOn(const QUuid& id) {
    provider->script.failsAfterHandle = nullptr;
    retry(*queue, id, RetryChoice::decide, RetryConfirmation::none);
    settle();
  }
  void throwAway(const QUuid& asset) {
    store->context().edit(store->asset(asset)).deletedAt = store->now();
    store->save(LibraryTables::none);
  }
  GatewayTrace traceOf(const QUuid& id) const {
    return ResultRecovery::gatewayTrace(store->files(), id).value_or(GatewayTrace());
  }

  QUuid picture;
  bool isMarked = false;
};

TEST_F(GatewayRequests, NoteBeforeTheyLeaveThroughWhomTheyGo) {
  provider->onEvent = [this](const QString& event) {
    if (event != QStringLiteral("post")) return;
    const QUuid id = store->activeJobs().front()->id;
    EXPECT_EQ(traceOf(id).account, QStringLiteral("ada@example.org"));
  };
  const QUuid id = brokenOff();
  EXPECT_EQ(job(id)->status, jobStatus::failed);
  EXPECT_EQ(traceOf(id).requestID, uuidText(*job(id)->request()->creditRequestID));
  goOn(id);
  EXPECT_EQ(job(id)->status, jobStatus::complete);
  EXPECT_FALSE(hasRecoveryFolder(id));
  EXPECT_EQ(provider->posts, 1);
}

TEST_F(GatewayRequests, GoOnWhenTheirReferenceWentToTrashMeanwhile) {
  const QUuid id = brokenOff();
  throwAway(picture);
  goOn(id);
  EXPECT_EQ(job(id)->status, jobStatus::complete) << job(id)->errorMessage.value_or(QString()).toStdString();
  EXPECT_EQ(provider->calls.back().knownRequestID, QStringLiteral("operation-1"));
  EXPECT_EQ(provider->posts, 1);
}

TEST_F(GatewayRequests, LandInTheInboxWhenTheirProjectIsGone) {
  const QUuid id = brokenOff();
  store->context().edit(store->job(id)).projectID = newUuid();
  store->save(LibraryTables::none);
  goOn(id);
  EXPECT_EQ(job(id)->status, jobStatus::complete) << job(id)->errorMessage.value_or(QString()).toStdString();
  EXPECT_FALSE(job(id)->projectID);
}

TEST_F(GatewayRequests, KeepTheNoteOfThePieceThatWasSentWhenTheModelHasOtherSizesSince) {
  ModelFact fact;
  fact.name = QStringLiteral("Flux");
  fact.sizes = {QStringLiteral("1024x1024")};
  facts->facts.insert(promptRequest().model, fact);
  isMarked = true;
  const QUuid id = brokenOff();
  const auto sent = ResultRecovery::loadPatch(store->files(), id);
  ASSERT_TRUE(sent);
  fact.sizes = {QStringLiteral("1536x1024")};
  facts->facts.insert(promptRequest().model, fact);
  goOn(id);
  EXPECT_EQ(provider->posts, 1);
  // The run failed for the shape or landed; either way what was sent is what was looked for.
  const auto kept = ResultRecovery::loadPatch(store->files(), id);
  EXPECT_TRUE(!kept || kept == sent);
}

TEST(GatewayTrace, IsFoundAgainAndNeverTakenForAbsentWhenItDoesNotRead) {
  const sorvan::test::TemporaryFolder folder;
  const WorkspaceFiles files(folder.path());
  const QUuid job = newUuid();
  EXPECT_FALSE(ResultRecovery::gatewayTrace(files, job));
  EXPECT_FALSE(ResultRecovery::hasGatewayTrace(files, job));
  const GatewayTrace trace{QStringLiteral("https://gateway.example"), QStringLiteral("ada@example.org"),
                           QStringLiteral("KEY")};
  ResultRecovery::writeGatewayTrace(trace, files, job);
  EXPECT_EQ(ResultRecovery::gatewayTrace(files, job), trace);
  EXPECT_FALSE(ResultRecovery::hasSubmissionMarker(files, job));
  folder.write(QStringLiteral(".sorvan/recovery/%1/gateway.json").arg(uuidText(job)), "damaged");
  EXPECT_THROW(ResultRecovery::gatewayTrace(files, job), SorvanError);
  EXPECT_TRUE(ResultRecovery::hasGatewayTrace(files, job));
  ResultRecovery::removeGatewayTrace(files, job);
  EXPECT_FALSE(ResultRecovery::gatewayTrace(files, job));
}

}  // namespace
}  // namespace sorvan::generation
