#include "generation/job_runner.h"

#include <gtest/gtest.h>

#include "base/file_layer.h"
#include "base/ids.h"
#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;

const QString lostAnswer = QStringLiteral(
    "The answer to this request was lost. fal.ai may have accepted it and may charge for it. Check your fal.ai history "
    "before generating again.");

GenerationCost costOf(double usd) {
  GenerationCost cost;
  cost.perImageUSD = usd;
  cost.basis = QStringLiteral("falUnitPrice");
  cost.note = QStringLiteral("estimated");
  return cost;
}

TEST(Running, AJobGoesFromTheQueueToTheLibrary) {
  Studio studio;
  studio.provider->script.charge = costOf(0.04);
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(job->detail, QStringLiteral("Saved 1 image locally"));
  EXPECT_FALSE(job->errorMessage);
  EXPECT_TRUE(job->finishedAt);
  EXPECT_EQ(studio.store->outputs(job->id).size(), 1U);
  EXPECT_TRUE(studio.store->extraCharges().entries().empty());
  EXPECT_FALSE(studio.hasRecoveryFolder(job->id));
  EXPECT_FALSE(studio.store->context().hasChanges());
}

TEST(Running, EveryStateOfTheMoneyIsOnDiskBeforeTheProviderGoesOn) {
  Studio studio;
  studio.provider->script.charge = costOf(0.04);
  QUuid id;
  QStringList seen;
  studio.provider->onEvent = [&](const QString& event) {
    const GenerationJob row = studio.onDisk(id);
    QString state = event + QStringLiteral(": ") + row.status;
    if (studio.hasMarker(id)) state += QStringLiteral(", marker");
    if (row.remoteHandleData) state += QStringLiteral(", handle ") + *row.providerRequestID;
    ChargeLedger charges;
    charges.load(studio.root());
    if (charges.contains(id)) state += QStringLiteral(", charge");
    seen.append(state);
  };
  id = studio.enqueue(promptRequest());
  EXPECT_EQ(studio.onDisk(id).status, QStringLiteral("queued"));
  studio.settle();
  EXPECT_EQ(seen,
            (QStringList{QStringLiteral("post: generating, marker"), QStringLiteral("answered: generating, marker"),
                         QStringLiteral("poll: generating, handle remote-1"),
                         QStringLiteral("download: generating, handle remote-1, charge")}));
}

/// Notes, in order, what is put in place on disk.
class NotedRenames : public FileLayer {
 public:
  int rename(const QByteArray& from, const QByteArray& to) override {
    note(to);
    return FileLayer::rename(from, to);
  }
  int renameNoReplace(const QByteArray& from, const QByteArray& to) override {
    note(to);
    return FileLayer::renameNoReplace(from, to);
  }
  QStringList names;

 private:
  void note(const QByteArray& to) {
    const QString path = QString::fromUtf8(to);
    if (path.contains(QStringLiteral("/recovery/")) || path.contains(QStringLiteral("/generated/")))
      names.append(path.section(u'/', -1));
  }
};

TEST(Running, TheBytesAreRetainedWholeBeforeTheManifestAndTheManifestBeforeTheFile) {
  Studio studio;
  studio.provider->script.outputs = {Script::pictureOutput(), Script::pictureOutput(pictureBytes(Qt::blue))};
  NotedRenames noted;
  const FileLayerOverride override(noted);
  studio.finished(promptRequest());
  EXPECT_EQ(noted.names,
            (QStringList{QStringLiteral("submitting"), QStringLiteral("0.media"), QStringLiteral("1.media"),
                         QStringLiteral("results.json"), QStringLiteral("a-red-kite-Flux-001.png"),
                         QStringLiteral("a-red-kite-Flux-002.png")}));
}

TEST(Running, StreamedPartsBecomeTheRetainedMedia) {
  Studio studio;
  studio.provider->script.streamsToPartFiles = true;
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  const AssetRef asset = studio.store->outputs(job->id).at(0);
  EXPECT_EQ(studio.folder.read(QStringLiteral("workspace/") + asset->localFilePath), pictureBytes());
}

TEST(Running, AnUndecodableRequestFailsWithASentence) {
  Studio studio;
  GenerationJob row({}, promptRequest(), studio.store->now());
  row.requestData = "{\"model\":7}";
  const JobRef job = studio.store->context().insert(row);
  studio.store->save(LibraryTables::jobs);
  studio.queue->allowStart(job->id);
  studio.queue->pump();
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->errorMessage, QStringLiteral("The saved request or project is missing."));
}

TEST(Running, WithoutAWayToPayNothingIsSent) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  studio.key.reset();
  studio.settle();
  EXPECT_EQ(studio.job(id)->errorMessage,
            QStringLiteral("Add your fal.ai key under Settings → fal.ai Key, or switch Pay With to Sorvan Credits."));
  EXPECT_TRUE(studio.provider->calls.empty());
}

TEST(Running, AProjectThatIsGoneStopsANewSubmission) {
  Studio studio;
  const ProjectRef project = studio.addProject(QStringLiteral("Film"));
  const QUuid id = studio.enqueue(promptRequest(), project->id);
  studio.store->context().remove(project);
  studio.store->save(LibraryTables::projects);
  studio.settle();
  EXPECT_EQ(studio.job(id)->errorMessage, QStringLiteral("Destination project is unavailable."));
  EXPECT_TRUE(studio.provider->calls.empty());
}

TEST(Running, APaidJobWhoseProjectIsGoneLandsInTheInbox) {
  Studio studio;
  const ProjectRef project = studio.addProject(QStringLiteral("Film"));
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  const JobRef job = studio.finished(promptRequest(), project->id);
  ASSERT_EQ(job->status, QStringLiteral("failed"));
  studio.store->context().remove(project);
  studio.store->save(LibraryTables::projects);
  studio.provider->script.failsAfterHandle = nullptr;
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_FALSE(job->projectID);
  EXPECT_TRUE(studio.store->outputs(job->id).at(0)->localFilePath.startsWith(QStringLiteral("Inbox/generated/")));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Running, ATrashedReferenceStopsANewSubmissionAndNoPaidJob) {
  Studio studio;
  studio.provider->models[0].supportsReferences = true;
  const AssetRef picture = studio.addAsset(MediaType::image, QStringLiteral("cat.png"), pictureBytes());
  GenerationRequest request = promptRequest();
  request.referenceIDs = {picture->id};
  const auto trash = [&] {
    studio.store->context().edit(picture).deletedAt = studio.store->now();
    studio.store->save(LibraryTables::none);
  };
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  const JobRef paid = studio.finished(request);
  const QUuid fresh = studio.enqueue(request);
  trash();
  studio.settle();
  EXPECT_EQ(studio.job(fresh)->errorMessage, QStringLiteral("Reference image unavailable."));
  studio.provider->script.failsAfterHandle = nullptr;
  retry(*studio.queue, paid->id);
  studio.settle();
  EXPECT_EQ(paid->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Running, AStoredHandleIsAttachedToAndNeverSubmittedAgain) {
  Studio studio;
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->errorMessage, QStringLiteral("Too slow."));
  studio.provider->script.failsAfterHandle = nullptr;
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  ASSERT_EQ(studio.provider->calls.size(), 2U);
  EXPECT_EQ(studio.provider->calls[1].resume, ScriptedProvider::handleNamed(QStringLiteral("remote-1")));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Running, AHandleBlobThatDoesNotDecodeCountsAsNone) {
  Studio studio;
  GenerationJob row({}, promptRequest(), studio.store->now());
  row.remoteHandleData = QByteArray("garbage");
  const JobRef job = studio.store->context().insert(row);
  studio.store->save(LibraryTables::jobs);
  studio.queue->allowStart(job->id);
  studio.queue->pump();
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_FALSE(studio.provider->calls.at(0).resume);
}

TEST(Running, AHandleThatCannotBeSavedStopsTheJobBeforeItPolls) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  studio.provider->onEvent = [&](const QString& event) {
    if (event == QStringLiteral("answered"))
      studio.sql(QStringLiteral(
          "CREATE TRIGGER full BEFORE UPDATE ON GenerationJob BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
  };
  studio.settle();
  EXPECT_FALSE(studio.provider->events.contains(QStringLiteral("poll")));
  const JobRef job = studio.job(id);
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_TRUE(job->errorMessage->contains(QStringLiteral("disk full"))) << job->errorMessage->toStdString();
  EXPECT_EQ(studio.store->error(),
            QStringLiteral(
                "Sorvan couldn’t save this generation’s progress. Check that your workspace folder is available and "
                "your disk has free space. Keep Sorvan open, and avoid starting the same generation again "
                "because it may already have been paid for."));
  // Memory is ahead of the disk, survives a rollback of something else, and is written as soon as that works.
  EXPECT_TRUE(studio.store->hasUnsavedMetadata());
  studio.store->rollBack();
  EXPECT_TRUE(job->remoteHandleData.has_value());
  EXPECT_TRUE(studio.hasMarker(id));
  studio.sql(QStringLiteral("DROP TRIGGER full"));
  studio.store->retryMetadataSave();
  EXPECT_TRUE(studio.onDisk(id).remoteHandleData.has_value());
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(Running, ALedgerThatCannotBeReadLosesNoHandle) {
  Studio studio;
  studio.folder.write(QStringLiteral("workspace/.sorvan/charges.json"), "garbage");
  studio.restart();
  studio.provider->script.charge = costOf(0.04);
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.folder.read(QStringLiteral("workspace/.sorvan/charges.json")), QByteArray("garbage"));
}

TEST(LostAnswers, OfAnOwnKeyAreSaidAndNeverSubmittedAgainByRetry) {
  Studio studio;
  studio.provider->script.post = Script::Post::unknown;
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->detail, QStringLiteral("Interrupted"));
  EXPECT_EQ(job->errorMessage, lostAnswer);
  EXPECT_TRUE(submissionIsUnknown(*studio.store, job->id));
  for (int i = 0; i < 3; ++i) {
    retry(*studio.queue, job->id);
    studio.settle();
  }
  EXPECT_EQ(studio.store->error(), lostAnswer);
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(LostAnswers, AreRefusedByTheRunnerItself) {
  Studio studio;
  studio.provider->script.post = Script::Post::unknown;
  const JobRef job = studio.finished(promptRequest());
  studio.store->context().edit(job).status = jobStatus::queued;
  studio.store->save(LibraryTables::none);
  studio.queue->pump();
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 1);
  EXPECT_EQ(job->errorMessage, lostAnswer);
  EXPECT_EQ(job->detail, QStringLiteral("Interrupted"));
}

TEST(LostAnswers, StayKnownOverARestart) {
  Studio studio;
  studio.provider->script.post = Script::Post::unknown;
  const QUuid id = studio.finished(promptRequest())->id;
  studio.restart();
  EXPECT_TRUE(submissionIsUnknown(*studio.store, id));
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(LostAnswers, AreSentAnewOnlyByTheExplicitAct) {
  Studio studio;
  studio.provider->script.post = Script::Post::unknown;
  const JobRef job = studio.finished(promptRequest());
  studio.provider->script.post = Script::Post::accepted;
  submitAgain(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 2);
}

TEST(LostAnswers, KeepTheirWarningWhenSubmitAgainIsRefused) {
  Studio studio;
  studio.provider->script.post = Script::Post::unknown;
  const JobRef job = studio.finished(promptRequest());
  studio.key.reset();
  submitAgain(*studio.queue, job->id);
  EXPECT_TRUE(studio.hasMarker(job->id));
  studio.key = QStringLiteral("a key");
  studio.sql(
      QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON GenerationJob BEGIN SELECT RAISE(ABORT, 'full'); END"));
  submitAgain(*studio.queue, job->id);
  studio.settle();
  EXPECT_TRUE(studio.hasMarker(job->id));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(LostAnswers, UnderAKeyKeepThePayerAndTheKey) {
  Studio studio;
  studio.billing.payWith = PayWith::credits;
  studio.provider->script.post = Script::Post::key;
  studio.provider->script.holdPost = true;
  const QUuid id = studio.enqueue(promptRequest());
  studio.awaitEvent(QStringLiteral("post"));
  const QUuid key = *studio.job(id)->request()->creditRequestID;
  sorvan::test::runTask([](Studio* s) -> Task<> {
    const auto drained = s->queue->drain(std::chrono::seconds(1));
    sorvan::test::runPosted();
    s->clock->advance(std::chrono::seconds(2));
    co_await drained;
  }(&studio));
  studio.provider->script.holdPost = false;
  studio.restart();
  EXPECT_FALSE(studio.hasMarker(id));
  EXPECT_EQ(studio.job(id)->detail, QStringLiteral("Interrupted"));
  studio.billing.payWith = PayWith::ownKey;
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->calls.back().request.creditRequestID, key);
  EXPECT_EQ(studio.provider->calls.back().request.provider, ProviderID::credits);
}

TEST(RefusedSubmissions, LeaveNoMarkerAndAreSentAgainByRetry) {
  Studio studio;
  studio.provider->script.post = Script::Post::notSent;
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->errorMessage, QStringLiteral("Provider error 402: Payment Required"));
  EXPECT_FALSE(studio.hasMarker(job->id));
  studio.provider->script.post = Script::Post::accepted;
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
}

TEST(InterruptedJobs, StayInterruptedWhenTheyFailBeforeAHandleExists) {
  Studio studio;
  GenerationJob row({}, promptRequest(), studio.store->now());
  row.status = jobStatus::failed;
  row.detail = QStringLiteral("Interrupted");
  const JobRef job = studio.store->context().insert(row);
  studio.store->save(LibraryTables::jobs);
  studio.provider->script.post = Script::Post::notSent;
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->detail, QStringLiteral("Interrupted"));
}

TEST(PaidResults, ThatDoNotDownloadSayThatRetryBuysNothing) {
  Studio studio;
  studio.provider->script.charge = costOf(0.04);
  studio.provider->script.outputs.clear();
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->detail,
            QStringLiteral("Paid result · download needs recovery; Retry does not buy another generation"));
  ASSERT_EQ(studio.store->extraCharges().entries().size(), 1U);
  const ExtraCharge charge = studio.store->extraCharges().entries().front();
  EXPECT_EQ(charge.id, job->id);
  EXPECT_EQ(charge.usd, 0.04);
  EXPECT_EQ(charge.provider, QStringLiteral("fal.ai"));
  EXPECT_EQ(charge.mediaType, QStringLiteral("image"));
  EXPECT_EQ(charge.note, QStringLiteral("Retry downloads/saves this result without a new purchase."));
  studio.provider->script.outputs = {Script::pictureOutput()};
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_TRUE(studio.store->extraCharges().entries().empty());
  EXPECT_EQ(studio.provider->posts, 1);
}

/// Ends the program at the n-th time of an event, opens what is on disk and presses Retry.
struct AfterCrash {
  std::unique_ptr<Studio> studio;
  QUuid id;
};

AfterCrash crashAt(Studio& studio, const QString& event) {
  AfterCrash after;
  studio.provider->onEvent = [&](const QString& now) {
    if (now == event && !after.studio) after.studio = std::make_unique<Studio>(studio, Studio::AfterCrashOf::now);
  };
  after.id = studio.enqueue(promptRequest());
  studio.settle();
  studio.provider->onEvent = {};
  studio.provider->posts = 0;
  return after;
}

TEST(Crashes, WhileThePostIsOutEndInAJobThatSaysSoAndIsNotSentAgain) {
  Studio studio;
  const AfterCrash after = crashAt(studio, QStringLiteral("post"));
  ASSERT_TRUE(after.studio);
  EXPECT_EQ(after.studio->job(after.id)->detail, QStringLiteral("Interrupted"));
  EXPECT_EQ(after.studio->job(after.id)->errorMessage, lostAnswer);
  retry(*after.studio->queue, after.id);
  after.studio->settle();
  EXPECT_EQ(studio.provider->posts, 0);
}

TEST(Crashes, WhilePollingReconnect) {
  Studio studio;
  const AfterCrash after = crashAt(studio, QStringLiteral("poll"));
  ASSERT_TRUE(after.studio);
  retry(*after.studio->queue, after.id);
  after.studio->settle();
  EXPECT_EQ(after.studio->job(after.id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 0);
}

TEST(Crashes, WhileDownloadingReconnect) {
  Studio studio;
  studio.provider->script.charge = costOf(0.04);
  const AfterCrash after = crashAt(studio, QStringLiteral("download"));
  ASSERT_TRUE(after.studio);
  EXPECT_EQ(after.studio->store->extraCharges().entries().size(), 1U);
  retry(*after.studio->queue, after.id);
  after.studio->settle();
  EXPECT_EQ(after.studio->job(after.id)->status, QStringLiteral("complete"));
  EXPECT_TRUE(after.studio->store->extraCharges().entries().empty());
  EXPECT_EQ(studio.provider->posts, 0);
}

TEST(Crashes, AfterTheResultIsRetainedLandItWithoutTheProvider) {
  Studio studio;
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  const JobRef job = studio.finished(promptRequest());
  ResultRecovery::save({Script::pictureOutput()}, studio.store->files(), job->id);
  studio.provider->calls.clear();
  studio.key.reset();
  studio.restart();
  EXPECT_TRUE(hasRecoverableResult(*studio.store, job->id));
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(studio.job(job->id)->status, QStringLiteral("complete"));
  EXPECT_TRUE(studio.provider->calls.empty());
}

TEST(DamagedRecovery, WithAHandleIsDownloadedAgain) {
  Studio studio;
  studio.provider->script.failsAfterHandle = std::make_exception_ptr(SorvanError(QStringLiteral("Too slow.")));
  const JobRef job = studio.finished(promptRequest());
  ResultRecovery::save({Script::pictureOutput()}, studio.store->files(), job->id);
  studio.folder.write(
      QStringLiteral("workspace/.sorvan/recovery/") + uuidText(job->id) + QStringLiteral("/results.json"), "[");
  studio.provider->script.failsAfterHandle = nullptr;
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(DamagedRecovery, WithoutAHandleIsNeverSubmittedOver) {
  for (const QByteArray& manifest : {QByteArray("["), QByteArray("[]")}) {
    Studio studio;
    studio.provider->script.post = Script::Post::notSent;
    const JobRef job = studio.finished(promptRequest());
    studio.folder.write(
        QStringLiteral("workspace/.sorvan/recovery/") + uuidText(job->id) + QStringLiteral("/results.json"), manifest);
    studio.provider->posts = 0;
    retry(*studio.queue, job->id);
    studio.settle();
    EXPECT_EQ(job->errorMessage, QStringLiteral("Invalid recovery manifest."));
    EXPECT_EQ(studio.provider->posts, 0);
  }
}

TEST(DamagedRecovery, ThatCannotBeLookedAtLeadsToNoSubmission) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  studio.folder.write(QStringLiteral("workspace/.sorvan/recovery/") + uuidText(id), "no folder");
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("failed"));
  EXPECT_EQ(studio.provider->posts, 0);
}

TEST(WholeRoad, TakesAHundredThousandCharactersOfEmojiAndRightToLeftText) {
  Studio studio;
  QString prompt;
  while (prompt.size() < 100000) prompt += QStringLiteral("👩‍🎨צורה ");
  const JobRef job = studio.finished(promptRequest(prompt));
  ASSERT_EQ(job->status, QStringLiteral("complete")) << job->errorMessage.value_or(QString()).toStdString();
  const AssetRef asset = studio.store->outputs(job->id).at(0);
  EXPECT_LE(asset->filename().toUtf8().size(), 255);
  EXPECT_EQ(studio.store->generationOf(asset->id)->prompt, prompt);
}

}  // namespace
}  // namespace sorvan::generation
