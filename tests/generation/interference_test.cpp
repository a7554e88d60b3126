// What others do while a job runs: edits that fail, saves, cancels, folders that vanish.
#include <QCoreApplication>
#include <QDir>
#include <QMetaObject>

#include <gtest/gtest.h>

#include "base/file_layer.h"
#include "base/ids.h"
#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;

/// Lets the main thread do something at the moment when the pool makes the second output's file.
class AtTheSecondFile : public FileLayer {
 public:
  explicit AtTheSecondFile(std::function<void()> act) : m_act(std::move(act)) {}
  int createFile(const QByteArray& path, mode_t mode) override {
    if (path.contains("/generated/") && ++m_files == 2)
      QMetaObject::invokeMethod(qApp, m_act, Qt::BlockingQueuedConnection);
    return FileLayer::createFile(path, mode);
  }

 private:
  std::function<void()> m_act;
  std::atomic<int> m_files = 0;
};

/// A job with two outputs, and what happens while the second one lands.
JobRef landTwoWhile(Studio& studio, const std::function<void(const QUuid& job)>& act) {
  studio.provider->script.outputs = {Script::pictureOutput(pictureBytes(Qt::red)),
                                     Script::pictureOutput(pictureBytes(Qt::blue))};
  QUuid id;
  bool acted = false;
  AtTheSecondFile layer([&] {
    acted = true;
    act(id);
  });
  const FileLayerOverride override(layer);
  id = studio.enqueue(promptRequest());
  studio.settle();
  EXPECT_TRUE(acted);
  return studio.job(id);
}

TEST(Interference, AnEditThatFailsAndRollsBackTakesNothingFromAJobThatLands) {
  Studio studio;
  const ProjectRef project = studio.addProject(QStringLiteral("Film"));
  const JobRef job = landTwoWhile(studio, [&](const QUuid&) {
    studio.sql(QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON Project BEGIN SELECT RAISE(ABORT, 'full'); END"));
    studio.store->context().edit(project).name = QStringLiteral("Other");
    try {
      studio.store->save(LibraryTables::none);
      ADD_FAILURE() << "the save went through";
    } catch (const SorvanError&) {
      studio.store->failOperation(std::current_exception());
    }
  });
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.store->outputs(job->id).size(), 2U);
  EXPECT_EQ(project->name, QStringLiteral("Film"));
}

TEST(Interference, ASaveOfAnotherOperationWritesNoHalfOfAJob) {
  Studio studio;
  std::size_t seen = 99;
  const JobRef job = landTwoWhile(studio, [&](const QUuid&) {
    studio.addProject(QStringLiteral("Film"));
    RecordContext disk(studio.store->files().database());
    seen = disk.fetch<Asset>().size() + disk.fetch<Generation>().size();
  });
  EXPECT_EQ(seen, 0U);
  EXPECT_EQ(studio.store->outputs(job->id).size(), 2U);
}

TEST(Interference, ACancelWhileLandingLeavesNoFileAndKeepsTheResult) {
  Studio studio;
  const JobRef job = landTwoWhile(studio, [&](const QUuid& id) { cancel(*studio.queue, id); });
  EXPECT_EQ(job->status, QStringLiteral("cancelled"));
  EXPECT_TRUE(studio.mediaFiles().isEmpty()) << studio.mediaFiles().join(u' ').toStdString();
  EXPECT_TRUE(studio.store->assets().empty());
  EXPECT_EQ(job->detail, QStringLiteral("Result retained locally · Save Result or Save Raw Result"));
  retry(*studio.queue, job->id);
  studio.settle();
  EXPECT_EQ(studio.store->outputs(job->id).size(), 2U);
  EXPECT_EQ(studio.provider->calls.size(), 1U);
}

TEST(Interference, AProjectDeletedWhileLandingLeavesTheItemsToTheInbox) {
  Studio studio;
  const ProjectRef project = studio.addProject(QStringLiteral("Film"));
  studio.provider->onEvent = [&](const QString& event) {
    if (event != QStringLiteral("download")) return;
    studio.store->context().remove(project);
    studio.store->save(LibraryTables::projects);
  };
  const JobRef job = studio.finished(promptRequest(), project->id);
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_FALSE(job->projectID);
  EXPECT_FALSE(studio.store->outputs(job->id).at(0)->projectID);
}

TEST(Interference, TwoJobsOfOnePromptNeverShareAFile) {
  Studio studio;
  std::vector<GenerationRequest> requests(2, promptRequest());
  enqueueRequests(*studio.queue, requests, {});
  studio.settle();
  EXPECT_EQ(studio.mediaFiles().filter(QStringLiteral("/generated/")),
            (QStringList{QStringLiteral("Inbox/generated/a-red-kite-Flux-001.png"),
                         QStringLiteral("Inbox/generated/a-red-kite-Flux-002.png")}));
}

TEST(MissingFolders, AWorkspaceThatVanishesIsNotBuiltAnewAndNothingPaidIsLost) {
  Studio studio;
  const QString elsewhere = studio.root() + QStringLiteral("-unplugged");
  studio.provider->onEvent = [&](const QString& event) {
    if (event == QStringLiteral("download")) QDir().rename(studio.root(), elsewhere);
  };
  const QUuid id = studio.enqueue(promptRequest());
  studio.settle();
  studio.provider->onEvent = {};
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("failed"));
  EXPECT_EQ(studio.job(id)->errorMessage, QStringLiteral("The workspace folder isn’t available."));
  EXPECT_FALSE(QDir(studio.root()).exists());
  ASSERT_TRUE(QDir().rename(elsewhere, studio.root()));
  retry(*studio.queue, id);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(studio.provider->posts, 1);
}

TEST(MissingFolders, NothingIsSubmittedFromAWorkspaceThatVanished) {
  Studio studio;
  const QString elsewhere = studio.root() + QStringLiteral("-unplugged");
  const QUuid id = studio.enqueue(promptRequest());
  ASSERT_TRUE(QDir().rename(studio.root(), elsewhere));
  studio.settle();
  EXPECT_EQ(studio.provider->posts, 0);
  EXPECT_FALSE(QDir(studio.root()).exists());
  EXPECT_EQ(studio.job(id)->errorMessage, QStringLiteral("The workspace folder isn’t available."));
  ASSERT_TRUE(QDir().rename(elsewhere, studio.root()));
}

/// Refuses every write, as a read-only folder does.
class ReadOnlyLayer : public FileLayer {
 public:
  int createFile(const QByteArray&, mode_t) override { return -EROFS; }
  int makeFolder(const QByteArray&, mode_t) override { return -EROFS; }
  int rename(const QByteArray&, const QByteArray&) override { return -EROFS; }
  int renameNoReplace(const QByteArray&, const QByteArray&) override { return -EROFS; }
};

TEST(MissingFolders, AReadOnlyFolderStopsTheJobBeforeAnythingIsSent) {
  Studio studio;
  const QUuid id = studio.enqueue(promptRequest());
  ReadOnlyLayer readOnly;
  const FileLayerOverride override(readOnly);
  studio.settle();
  EXPECT_EQ(studio.job(id)->status, QStringLiteral("failed"));
  EXPECT_FALSE(studio.job(id)->errorMessage->isEmpty());
  EXPECT_EQ(studio.provider->posts, 0);
}

TEST(LongNames, OfReferencesAndPromptsFitTheFileSystem) {
  Studio studio;
  studio.provider->models[0].needsPrompt = false;
  studio.provider->models[0].supportsReferences = true;
  const QString longest = QStringLiteral("क").repeated(83) + QStringLiteral("xx.png");
  ASSERT_EQ(longest.toUtf8().size(), 255);
  GenerationRequest request = promptRequest(QString());
  request.referenceIDs = {studio.addAsset(MediaType::image, longest, pictureBytes())->id};
  const JobRef job = studio.finished(request);
  ASSERT_EQ(job->status, QStringLiteral("complete")) << job->errorMessage.value_or(QString()).toStdString();
  EXPECT_LE(studio.store->outputs(job->id).at(0)->filename().toUtf8().size(), 255);
}

}  // namespace
}  // namespace sorvan::generation
