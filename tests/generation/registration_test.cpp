#include "generation/registration.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include "base/file_layer.h"
#include "generation/studio.h"
#include "support/made_clips.h"

namespace sorvan::generation {
namespace {

using namespace test;

QString contentOf(const Studio& studio, const AssetRef& asset) {
  return QString::fromLatin1(studio.folder.read(QStringLiteral("workspace/") + asset->localFilePath).toHex());
}

TEST(Registration, NamesTwoOutputsOfOnePromptInTheirOrder) {
  Studio studio;
  studio.provider->script.outputs = {Script::pictureOutput(pictureBytes(Qt::red)),
                                     Script::pictureOutput(pictureBytes(Qt::blue))};
  const JobRef job = studio.finished(promptRequest(QStringLiteral("a b c d e f g")));
  EXPECT_EQ(job->detail, QStringLiteral("Saved 2 images locally"));
  const auto assets = studio.store->outputs(job->id);
  ASSERT_EQ(assets.size(), 2U);
  EXPECT_EQ(assets[0]->localFilePath, QStringLiteral("Inbox/generated/a-b-c-d-e-f-Flux-001.png"));
  EXPECT_EQ(assets[1]->localFilePath, QStringLiteral("Inbox/generated/a-b-c-d-e-f-Flux-002.png"));
  EXPECT_EQ(contentOf(studio, assets[0]), QString::fromLatin1(pictureBytes(Qt::red).toHex()));
  EXPECT_EQ(contentOf(studio, assets[1]), QString::fromLatin1(pictureBytes(Qt::blue).toHex()));
}

TEST(Registration, TellsEverythingOfAnItem) {
  Studio studio;
  GeneratedOutput output = Script::pictureOutput();
  output.seed = 77;
  GenerationCost cost;
  cost.perImageUSD = 0.25;
  output.cost = cost;
  studio.provider->script.outputs = {output};
  const JobRef job = studio.finished(promptRequest());
  const AssetRef asset = studio.store->outputs(job->id).at(0);
  EXPECT_EQ(asset->sourceType(), AssetSourceType::generated);
  EXPECT_EQ(asset->originalFilename, asset->filename());
  EXPECT_EQ(asset->width, 48);
  EXPECT_EQ(asset->height, 32);
  EXPECT_EQ(asset->checksum->size(), 64);
  ASSERT_TRUE(asset->thumbnailFilePath);
  EXPECT_FALSE(studio.folder.read(QStringLiteral("workspace/") + *asset->thumbnailFilePath).isEmpty());
  const GenerationRef generation = studio.store->generationOf(asset->id);
  EXPECT_EQ(generation->seed, 77);
  EXPECT_EQ(generation->provider, QStringLiteral("fal.ai"));
  EXPECT_EQ(generation->providerRequestID, QStringLiteral("remote-1"));
  EXPECT_EQ(generation->estimatedCost, 0.25);
  EXPECT_EQ(generation->recipeData, job->requestData);
  EXPECT_EQ(generation->costRecord()->perImageUSD, 0.25);
  EXPECT_TRUE(QJsonDocument::fromJson(generation->parametersJSON).object().contains(u"billingSource"));
}

TEST(Registration, JoinsTheItemToItsReferences) {
  Studio studio;
  studio.provider->models[0].supportsReferences = true;
  const AssetRef first = studio.addAsset(MediaType::image, QStringLiteral("one.png"), pictureBytes());
  const AssetRef second = studio.addAsset(MediaType::image, QStringLiteral("two.png"), pictureBytes());
  GenerationRequest request = promptRequest();
  request.referenceIDs = {first->id, second->id};
  request.referenceBindings = {bindingOf(first->id, QStringLiteral("A"), QStringLiteral("Edit source"))};
  const JobRef job = studio.finished(request);
  const AssetRef asset = studio.store->outputs(job->id).at(0);
  const auto edges = studio.store->parentEdges(asset->id);
  ASSERT_EQ(edges.size(), 2U);
  EXPECT_EQ(edges[0]->parentAssetID, first->id);
  EXPECT_EQ(edges[0]->type(), RelationshipType::editedFrom);
  EXPECT_EQ(edges[1]->type(), RelationshipType::referenceFor);
  const auto references = studio.store->referencesOf(studio.store->generationOf(asset->id)->id);
  ASSERT_EQ(references.size(), 2U);
  EXPECT_EQ(references[1]->assetID, second->id);
  EXPECT_EQ(references[1]->position, 1);
  ASSERT_EQ(studio.provider->calls[0].references.size(), 2U);
  EXPECT_EQ(studio.provider->calls[0].references[1].file, studio.in(QStringLiteral("Inbox/imported/two.png")));
}

TEST(Registration, ThePromptlessResultIsNamedAfterItsReference) {
  Studio studio;
  studio.provider->models[0].needsPrompt = false;
  studio.provider->models[0].supportsReferences = true;
  GenerationRequest request = promptRequest(QString());
  request.referenceIDs = {studio.addAsset(MediaType::image, QStringLiteral("cat photo.png"), pictureBytes())->id};
  const JobRef job = studio.finished(request);
  EXPECT_EQ(studio.store->outputs(job->id).at(0)->filename(), QStringLiteral("cat-photo-Flux-001.png"));
}

TEST(Registration, TheFirstPictureOfAProjectBecomesItsCoverForGood) {
  Studio studio;
  const ProjectRef project = studio.addProject(QStringLiteral("Film"));
  studio.clock->advance(std::chrono::seconds(60));
  const JobRef first = studio.finished(promptRequest(), project->id);
  const QUuid cover = studio.store->outputs(first->id).at(0)->id;
  EXPECT_EQ(project->coverAssetID, cover);
  EXPECT_GT(project->updatedAt, project->createdAt);
  studio.finished(promptRequest(), project->id);
  EXPECT_EQ(project->coverAssetID, cover);
}

TEST(Registration, TheBytesDecideTheExtension) {
  Studio studio;
  studio.provider->script.outputs = {Script::pictureOutput(pictureBytes(Qt::red, "JPG"), QStringLiteral("png"))};
  const JobRef job = studio.finished(promptRequest());
  EXPECT_TRUE(studio.store->outputs(job->id).at(0)->filename().endsWith(QStringLiteral("-001.jpg")));
}

TEST(Registration, WhatIsNoMediaStaysRetainedAndTheJobSaysWhere) {
  Studio studio;
  studio.provider->script.outputs = {Script::pictureOutput("<svg xmlns='x'/>", QStringLiteral("svg"))};
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_TRUE(job->errorMessage->contains(QStringLiteral("(svg)"))) << job->errorMessage->toStdString();
  EXPECT_TRUE(job->errorMessage->contains(studio.store->files().recoveryFolder(job->id)));
  EXPECT_EQ(job->detail, QStringLiteral("Result retained locally · Save Result or Save Raw Result"));
  EXPECT_TRUE(studio.mediaFiles().isEmpty());
}

TEST(FailedLandings, LeaveNoNewFilesAndTheRecoveryFolder) {
  Studio studio;
  studio.provider->script.outputs = {Script::pictureOutput(), Script::pictureOutput()};
  studio.sql(QStringLiteral("CREATE TRIGGER full BEFORE INSERT ON Asset BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
  const JobRef job = studio.finished(promptRequest());
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->detail, QStringLiteral("Result retained locally · Save Result or Save Raw Result"));
  EXPECT_TRUE(studio.mediaFiles().isEmpty()) << studio.mediaFiles().join(u' ').toStdString();
  EXPECT_TRUE(studio.store->assets().empty());
  EXPECT_TRUE(studio.store->generations().empty());
  EXPECT_TRUE(hasRecoverableResult(*studio.store, job->id));
  studio.sql(QStringLiteral("DROP TRIGGER full"));
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.store->outputs(job->id).size(), 2U);
  EXPECT_EQ(studio.provider->posts, 1);
}

/// Fails each write into a folder of the media.
class FullMediaFolder : public FileLayer {
 public:
  int createFile(const QByteArray& path, mode_t mode) override {
    return path.contains("/generated/") ? -ENOSPC : FileLayer::createFile(path, mode);
  }
};

TEST(FailedLandings, OnAFullDiskKeepTheResultForLater) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  {
    FullMediaFolder full;
    const FileLayerOverride override(full);
    studio.settle();
  }
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("failed"));
  EXPECT_FALSE(studio.job(id)->errorMessage->isEmpty());
  EXPECT_TRUE(studio.mediaFiles().isEmpty());
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

/// Fails the n-th of the steps that create, write, sync or rename, wherever it falls.
class FailingStep : public FileLayer {
 public:
  explicit FailingStep(int step) : m_left(step) {}
  int createFile(const QByteArray& path, mode_t mode) override {
    return hit() ? -ENOSPC : FileLayer::createFile(path, mode);
  }
  qint64 write(int descriptor, const char* bytes, qint64 count) override {
    return hit() ? -ENOSPC : FileLayer::write(descriptor, bytes, count);
  }
  int sync(int descriptor) override { return hit() ? -EIO : FileLayer::sync(descriptor); }
  int rename(const QByteArray& from, const QByteArray& to) override {
    return hit() ? -ENOSPC : FileLayer::rename(from, to);
  }
  int renameNoReplace(const QByteArray& from, const QByteArray& to) override {
    return hit() ? -ENOSPC : FileLayer::renameNoReplace(from, to);
  }
  bool reached() const { return m_left < 0; }

 private:
  bool hit() { return m_left-- == 0; }
  std::atomic<int> m_left;
};

TEST(FullDisk, AtAnyStepOfARunEndsInTheItemOrInAJobThatRetryFinishesWithoutASecondPurchase) {
  bool reached = true;
  int trials = 0;
  for (int step = 0; reached; ++step, ++trials) {
    Studio studio;
    const QUuid id = studio.enqueue(promptRequest());
    {
      FailingStep failing(step);
      const FileLayerOverride override(failing);
      studio.settle();
      reached = failing.reached();
    }
    if (studio.job(id)->status != jobStatus::complete) {
      EXPECT_FALSE(studio.job(id)->errorMessage.value_or(QString()).isEmpty()) << "step " << step;
      retry(*studio.queue, id);
      studio.settle();
    }
    EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete")) << "step " << step;
    EXPECT_LE(studio.provider->posts, 1) << "step " << step;
    EXPECT_EQ(studio.store->outputs(id).size(), 1U) << "step " << step;
    EXPECT_EQ(studio.mediaFiles().filter(QStringLiteral("/generated/")).size(), 1) << "step " << step;
  }
  EXPECT_GT(trials, 20);
}

/// A tool that splits a sound into labelled parts of these levels.
struct SplittingStudio {
  explicit SplittingStudio(const std::vector<std::pair<QString, double>>& parts) {
    ModelFact fact;
    fact.name = QStringLiteral("Split");
    fact.output = MediaType::audio;
    fact.audioInput = true;
    studio.facts->facts.insert(promptRequest().model, fact);
    studio.provider->models[0].supportsReferences = true;
    studio.provider->models[0].needsPrompt = false;
    studio.provider->models[0].name = QStringLiteral("Split into Parts");
    studio.provider->script.outputs.clear();
    for (const auto& [label, level] : parts) {
      GeneratedOutput output = Script::pictureOutput(wavBytes(level), QStringLiteral("wav"));
      output.label = label;
      studio.provider->script.outputs.push_back(output);
    }
    request = promptRequest(QString());
    request.referenceIDs = {studio.addAsset(MediaType::audio, QStringLiteral("song.wav"), wavBytes(0.9))->id};
  }
  Studio studio;
  GenerationRequest request;
};

TEST(SplitSounds, LeaveOutSilentPartsAndSayWhich) {
  SplittingStudio split(
      {{QStringLiteral("vocals"), 0.5}, {QStringLiteral("drums"), 0}, {QStringLiteral("bass"), 0.0001}});
  const JobRef job = split.studio.finished(split.request);
  ASSERT_EQ(job->status, QStringLiteral("complete")) << job->errorMessage.value_or(QString()).toStdString();
  EXPECT_EQ(job->detail, QStringLiteral("Saved 1 sound locally; left out Drums, Bass"));
  EXPECT_EQ(split.studio.store->notice(),
            QStringLiteral("Split into Parts: “song.wav” has no drums and bass, so those parts were left out."));
  EXPECT_EQ(split.studio.store->outputs(job->id).at(0)->filename(), QStringLiteral("song-Vocals-001.wav"));
  EXPECT_EQ(split.studio.mediaFiles().filter(QStringLiteral("/generated/")).size(), 1);
}

TEST(SplitSounds, ThatAreAllSilentAllStay) {
  SplittingStudio split({{QStringLiteral("vocals"), 0}, {QStringLiteral("drums"), 0}});
  const JobRef job = split.studio.finished(split.request);
  EXPECT_EQ(job->detail, QStringLiteral("Saved 2 sounds locally, silent throughout"));
  EXPECT_FALSE(split.studio.store->notice());
}

TEST(SplitSounds, KeepTheirNamesOverACrash) {
  SplittingStudio split({{QStringLiteral("vocals"), 0.5}, {QStringLiteral("residual"), 0.5}});
  split.studio.sql(QStringLiteral("CREATE TRIGGER full BEFORE INSERT ON Asset BEGIN SELECT RAISE(ABORT, 'full'); END"));
  const QUuid id = split.studio.finished(split.request)->id;
  split.studio.sql(QStringLiteral("DROP TRIGGER full"));
  split.studio.restart();
  retry(*split.studio.queue, id);
  split.studio.settle();
  const auto assets = split.studio.store->outputs(id);
  ASSERT_EQ(assets.size(), 2U);
  EXPECT_EQ(assets[1]->filename(), QStringLiteral("song-Everything-Else-001.wav"));
}

TEST(ExtendedSounds, AreJoinedToTheirOriginalAndKeepItsStem) {
  SplittingStudio extend({{QStringLiteral("x"), 0.5}});
  extend.studio.facts->facts[promptRequest().model].extendsSound = true;
  extend.request.options = TextByKey{{QStringLiteral("extend_seconds_after"), QStringLiteral("5")}};
  QString message = extend.studio.finished(extend.request)->errorMessage.value_or(QString());
  EXPECT_EQ(message, QStringLiteral("The extended sound could not be joined."));
  SpliceWork seen;
  struct Splicer {
    static Task<> join(SpliceWork work, SpliceWork* note) {
      *note = work;
      QFile file(work.destination);
      if (file.open(QIODevice::WriteOnly)) file.write(wavBytes(0.25));
      co_return;
    }
  };
  extend.studio.adjustPorts = [&seen](GenerationPorts& ports) {
    ports.splice = [&seen](SpliceWork work, std::stop_token) { return Splicer::join(work, &seen); };
  };
  extend.studio.restart();
  const JobRef job = extend.studio.finished(extend.request);
  ASSERT_EQ(job->status, QStringLiteral("complete")) << job->errorMessage.value_or(QString()).toStdString();
  EXPECT_EQ(seen.addedSeconds, 5);
  EXPECT_EQ(seen.place, SpliceWork::Place::after);
  EXPECT_EQ(seen.original, extend.studio.in(QStringLiteral("Inbox/imported/song.wav")));
  const AssetRef asset = extend.studio.store->outputs(job->id).at(0);
  EXPECT_EQ(asset->filename(), QStringLiteral("song-Extended-001.wav"));
  EXPECT_EQ(contentOf(extend.studio, asset), QString::fromLatin1(wavBytes(0.25).toHex()));
  extend.studio.adjustPorts = {};
}

struct LayUnder {
  static Task<QString> done(LayUnderWork work, LayUnderWork* note) {
    *note = work;
    co_return QStringLiteral("film with sound.mp4");
  }
  static Task<QString> failed() {
    throw SorvanError(QStringLiteral("No sound track."));
    co_return QString();
  }
};

TEST(SoundsForAClip, AreLaidUnderItOnceEverythingIsSafe) {
  Studio studio;
  LayUnderWork seen;
  studio.adjustPorts = [&seen](GenerationPorts& ports) {
    ports.layUnder = [&seen](LayUnderWork work, std::stop_token) { return LayUnder::done(work, &seen); };
  };
  studio.restart();
  GenerationRequest request = promptRequest();
  request.layUnder = studio.addAsset(MediaType::video, QStringLiteral("film.mp4"), "clip")->id;
  request.keepOwnSound = true;
  const JobRef job = studio.finished(request);
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(seen.sound, studio.store->outputs(job->id).at(0)->id);
  EXPECT_TRUE(seen.keepOwnSound);
  EXPECT_EQ(studio.store->notice(), QStringLiteral("The sound for “film.mp4” is ready: film with sound.mp4"));
  studio.adjustPorts = {};
}

TEST(SoundsForAClip, ThatCannotBeLaidUnderItStayInTheGallery) {
  Studio studio;
  studio.adjustPorts = [](GenerationPorts& ports) {
    ports.layUnder = [](LayUnderWork, std::stop_token) { return LayUnder::failed(); };
  };
  studio.restart();
  GenerationRequest request = promptRequest();
  request.layUnder = studio.addAsset(MediaType::video, QStringLiteral("film.mp4"), "clip")->id;
  const JobRef job = studio.finished(request);
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.store->notice(),
            QStringLiteral("The sound for “film.mp4” is in the gallery, but it could not be laid under "
                           "the clip: No sound track."));
}

/// A model whose answer is a clip with sound.
struct ClipStudio {
  ClipStudio() {
    const QString clip = studio.folder / QStringLiteral("made.mp4");
    sorvan::test::ClipRecipe recipe;
    recipe.sound = true;
    sorvan::test::makeClip(clip, recipe);
    studio.provider->script.outputs = {
        Script::pictureOutput(studio.folder.read(QStringLiteral("made.mp4")), QStringLiteral("mp4"))};
    studio.provider->script.streamsToPartFiles = true;
  }
  Studio studio;
};

TEST(Clips, LandWithTheirLengthAndAThumbnail) {
  ClipStudio clips;
  const JobRef job = clips.studio.finished(promptRequest());
  ASSERT_EQ(job->detail, QStringLiteral("Saved 1 video locally"))
      << job->errorMessage.value_or(QString()).toStdString();
  const AssetRef asset = clips.studio.store->outputs(job->id).at(0);
  EXPECT_EQ(asset->type(), MediaType::video);
  EXPECT_EQ(asset->width, 64);
  EXPECT_NEAR(asset->duration.value_or(0), 1, 0.15);
  EXPECT_TRUE(asset->thumbnailFilePath);
}

TEST(Clips, MadeOnlyForTheirSoundLandAsTheSound) {
  ClipStudio clips;
  ModelFact fact;
  fact.makesSoundOfClip = true;
  clips.studio.facts->facts.insert(promptRequest().model, fact);
  const JobRef job = clips.studio.finished(promptRequest());
  ASSERT_EQ(job->detail, QStringLiteral("Saved 1 sound locally"))
      << job->errorMessage.value_or(QString()).toStdString();
  const AssetRef asset = clips.studio.store->outputs(job->id).at(0);
  EXPECT_TRUE(asset->filename().endsWith(QStringLiteral("-001.m4a")));
  EXPECT_NEAR(asset->duration.value_or(0), 1, 0.2);
  EXPECT_FALSE(clips.studio.hasRecoveryFolder(job->id));
}

TEST(RecordedCosts, StandAmongTheParametersAndGoAgain) {
  Generation generation;
  generation.parametersJSON = R"({"size":"1024x1024"})";
  GenerationCost cost;
  cost.perImageUSD = 0.08;
  cost.basis = QStringLiteral("falUnitPrice");
  cost.responseUsageJSON = QStringLiteral("{\"billable_units\":2}");
  recordCost(generation, cost);
  const QJsonObject kept = QJsonDocument::fromJson(generation.parametersJSON).object();
  EXPECT_EQ(kept.value(QStringLiteral("size")), QJsonValue(QStringLiteral("1024x1024")));
  EXPECT_EQ(fromJson<GenerationCost>(kept.value(QStringLiteral("cost"))), cost);
  EXPECT_EQ(generation.estimatedCost, 0.08);
  recordCost(generation, std::nullopt);
  EXPECT_FALSE(QJsonDocument::fromJson(generation.parametersJSON).object().contains(QStringLiteral("cost")));
  EXPECT_FALSE(generation.estimatedCost);
}

TEST(RecordedCosts, LeaveParametersAloneThatAreNoObject) {
  Generation generation;
  generation.parametersJSON = "[1]";
  recordCost(generation, GenerationCost());
  EXPECT_EQ(generation.parametersJSON, QByteArray("[1]"));
  EXPECT_FALSE(generation.estimatedCost);
}

}  // namespace
}  // namespace sorvan::generation
