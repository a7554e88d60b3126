#include "generation/enqueue.h"

#include <gtest/gtest.h>

#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;

template <class Act>
QString refusalOf(Act act) {
  try {
    act();
  } catch (const SorvanError& error) {
    return error.message();
  }
  return QStringLiteral("accepted");
}

ComparisonModel comparing(const QString& id) { return ComparisonModel{ProviderID::fal, imageModel(id)}; }

TEST(Enqueueing, PersistsTheJobBeforeAnythingRuns) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  const GenerationJob row = studio.onDisk(id);
  EXPECT_EQ(row.status, QStringLiteral("queued"));
  EXPECT_EQ(row.detail, QStringLiteral("Waiting to start"));
  EXPECT_TRUE(studio.provider->calls.empty());
  EXPECT_EQ(studio.usage, QStringList{QStringLiteral("job.text-to-image=1")});
}

TEST(Enqueueing, ABatchWithOneBadRequestCreatesNoJob) {
  Studio studio;
  std::vector<GenerationRequest> batch(4, promptRequest());
  batch[3].size = QStringLiteral("1x1");
  EXPECT_EQ(refusalOf([&] { enqueueRequests(*studio.queue, batch, {}); }), QStringLiteral("Unsupported image size."));
  EXPECT_TRUE(studio.store->jobs().empty());
  EXPECT_TRUE(studio.usage.isEmpty());
}

TEST(Enqueueing, StoresAFreshSeedForAModelThatNeedsOne) {
  Studio studio;
  ModelFact fact;
  fact.needsSeed = true;
  studio.facts->facts.insert(promptRequest().model, fact);
  const GenerationJob row = studio.onDisk(studio.enqueue(promptRequest()));
  ASSERT_TRUE(row.request()->seed);
  EXPECT_GT(*row.request()->seed, 0);
  GenerationRequest chosen = promptRequest();
  chosen.seed = 7;
  EXPECT_EQ(studio.onDisk(studio.enqueue(chosen)).request()->seed, 7);
}

TEST(Enqueueing, NothingDoesNothing) {
  Studio studio;
  EXPECT_TRUE(enqueueRequests(*studio.queue, {}, {}).empty());
  EXPECT_TRUE(studio.store->jobs().empty());
}

TEST(Enqueueing, AFailedSaveLeavesNothingQueuedAndNothingCharged) {
  Studio studio;
  studio.sql(
      QStringLiteral("CREATE TRIGGER full BEFORE INSERT ON GenerationJob BEGIN SELECT RAISE(ABORT, 'full'); END"));
  EXPECT_NE(refusalOf([&] { studio.enqueue(promptRequest()); }), QStringLiteral("accepted"));
  studio.settle();
  EXPECT_TRUE(studio.store->jobs().empty());
  EXPECT_FALSE(studio.store->context().hasChanges());
  EXPECT_TRUE(studio.provider->calls.empty());
  studio.sql(QStringLiteral("DROP TRIGGER full"));
  EXPECT_EQ(studio.finished(promptRequest())->status, QStringLiteral("complete"));
}

TEST(Enqueueing, IsRefusedDuringABackup) {
  Studio studio;
  studio.store->setBackingUp(true);
  EXPECT_EQ(refusalOf([&] { studio.enqueue(promptRequest()); }),
            QStringLiteral(
                "Sorvan is backing up this workspace. Please wait until the backup finishes before making changes."));
  studio.store->setBackingUp(false);
}

TEST(Enqueueing, NeedsTheProjectItNames) {
  Studio studio;
  EXPECT_EQ(refusalOf([&] { studio.enqueue(promptRequest(), QUuid::createUuid()); }),
            QStringLiteral("Workspace or project unavailable."));
}

TEST(Enqueueing, FollowsTheChosenPayerAndMakesTheKeyOnce) {
  Studio studio;
  studio.billing.payWith = PayWith::credits;
  const QUuid id = studio.enqueue(promptRequest());
  const auto request = studio.onDisk(id).request();
  ASSERT_TRUE(request);
  EXPECT_EQ(request->provider, ProviderID::credits);
  EXPECT_TRUE(request->creditRequestID.has_value());
}

TEST(Enqueueing, WritesTheNotesOfMarksIntoThePromptBeforeChecking) {
  Studio studio;
  studio.provider->models[0].supportsReferences = true;
  const AssetRef picture = studio.addAsset(MediaType::image, QStringLiteral("cat.png"), pictureBytes());
  GenerationRequest request = promptRequest(QString());
  request.referenceIDs = {picture->id};
  request.markup = {markedBox(QStringLiteral("a red hat."))};
  EXPECT_EQ(refusalOf([&] { checkReady(*studio.queue, request, ReferenceCheck::include); }),
            QStringLiteral("accepted"));
  const QUuid id = studio.enqueue(request);
  EXPECT_EQ(studio.onDisk(id).request()->prompt, QStringLiteral("a red hat"));
}

TEST(Enqueueing, RefusesReferencesThatAreGoneTrashedOrOfAnotherKind) {
  Studio studio;
  studio.provider->models[0].supportsReferences = true;
  GenerationRequest request = promptRequest();
  request.referenceIDs = {QUuid::createUuid()};
  EXPECT_EQ(refusalOf([&] { studio.enqueue(request); }), QStringLiteral("A reference image is no longer available."));
  const AssetRef sound = studio.addAsset(MediaType::audio, QStringLiteral("tone.wav"), wavBytes(0.5));
  request.referenceIDs = {sound->id};
  EXPECT_EQ(refusalOf([&] { studio.enqueue(request); }), QStringLiteral("A reference image is no longer available."));
  ModelFact fact;
  fact.videoInput = true;
  studio.facts->facts.insert(request.model, fact);
  EXPECT_EQ(refusalOf([&] { studio.enqueue(request); }), QStringLiteral("The clip is no longer available."));
  fact.videoInput = false;
  fact.audioInput = true;
  studio.facts->facts.insert(request.model, fact);
  EXPECT_EQ(refusalOf([&] { checkReady(*studio.queue, request, ReferenceCheck::include); }),
            QStringLiteral("accepted"));
  studio.store->context().edit(sound).deletedAt = studio.store->now();
  studio.store->save(LibraryTables::none);
  EXPECT_EQ(refusalOf([&] { studio.enqueue(request); }), QStringLiteral("The sound is no longer available."));
  EXPECT_EQ(refusalOf([&] { checkReady(*studio.queue, request, ReferenceCheck::ignore); }), QStringLiteral("accepted"));
}

TEST(Payment, TellsTheWayOutForEachPayer) {
  Studio studio;
  studio.key.reset();
  GenerationRequest request = promptRequest();
  const auto refusal = [&] { return refusalOf([&] { checkPayment(*studio.queue, request); }); };
  EXPECT_EQ(refusal(),
            QStringLiteral("Add your fal.ai key under Settings → fal.ai Key, or switch Pay With to Sorvan Credits."));
  request.provider = ProviderID::credits;
  EXPECT_EQ(refusal(),
            QStringLiteral("Sign in under Settings → Account to pay with Sorvan Credits, or switch Pay With to "
                           "your own fal.ai key."));
  studio.billing.ownKeyAllowed = false;
  EXPECT_EQ(refusal(), QStringLiteral("Sign in under Settings → Account to pay with Sorvan Credits."));
  studio.key = QString();
  EXPECT_NE(refusal(), QStringLiteral("accepted"));
}

TEST(Payment, PassesTheKeyStoresOwnFailureOn) {
  Studio studio;
  studio.adjustPorts = [](GenerationPorts& ports) {
    ports.keyReader = [](ProviderID) -> std::optional<QString> {
      throw SorvanError(QStringLiteral("The ring is locked."));
    };
  };
  studio.restart();
  EXPECT_EQ(refusalOf([&] { studio.enqueue(promptRequest()); }), QStringLiteral("The ring is locked."));
}

TEST(Comparing, NeedsTwoDifferentModels) {
  Studio studio;
  const auto refusal = [&](const std::vector<ComparisonModel>& models) {
    return refusalOf([&] { enqueueComparison(*studio.queue, promptRequest(), models, {}); });
  };
  EXPECT_EQ(refusal({comparing(QStringLiteral("a"))}), QStringLiteral("Choose at least two different models."));
  EXPECT_EQ(refusal({comparing(QStringLiteral("a")), comparing(QStringLiteral("a"))}),
            QStringLiteral("Choose at least two different models."));
}

TEST(Comparing, FillsASheetOfEightAtMost) {
  Studio studio;
  studio.provider->models = {imageModel(QStringLiteral("a")), imageModel(QStringLiteral("b")),
                             imageModel(QStringLiteral("c"))};
  GenerationRequest request = promptRequest(QStringLiteral("  two\nwords "));
  const auto compare = [&](int count, int models) {
    request.count = count;
    std::vector<ComparisonModel> chosen;
    for (int i = 0; i < models; ++i)
      chosen.push_back(comparing(studio.provider->models[static_cast<std::size_t>(i)].id));
    return refusalOf([&] { enqueueComparison(*studio.queue, request, chosen, {}); });
  };
  EXPECT_EQ(compare(5, 2), QStringLiteral("Choose between 1 and 4 outputs."));
  EXPECT_EQ(compare(3, 3),
            QStringLiteral("A contact sheet can contain up to 8 outputs. Reduce the models or outputs per model."));
  EXPECT_TRUE(studio.store->jobs().empty());
  EXPECT_EQ(compare(4, 2), QStringLiteral("accepted"));
  ASSERT_EQ(studio.store->contactSheets().size(), 1U);
  const ContactSheetRef sheet = studio.store->contactSheets().front();
  EXPECT_EQ(sheet->title, QStringLiteral("two words"));
  const auto jobs = studio.store->comparisonJobs(*sheet->comparisonID);
  ASSERT_EQ(jobs.size(), 2U);
  EXPECT_EQ(jobs[0]->request()->model, QStringLiteral("a"));
  EXPECT_EQ(jobs[1]->request()->comparisonOrder, 1);
}

TEST(SheetTitles, AreWordsOfThePromptUpToEightyCharacters) {
  EXPECT_EQ(contactSheetTitle(QStringLiteral(" \n ")), QStringLiteral("Untitled comparison"));
  const QString family = QStringLiteral("👨‍👩‍👧‍👦");
  EXPECT_EQ(contactSheetTitle(family.repeated(100)), family.repeated(80));
}

}  // namespace
}  // namespace sorvan::generation
