// Marked edits as jobs: what is sent, and where the answer lands.
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "base/json.h"
#include "generation/marked_areas_run.h"
#include "generation/studio.h"
#include "platform/pictures.h"
#include "platform/temporary_files.h"
#include "support/made_pictures.h"

namespace sorvan::generation {
namespace {

using namespace test;

const QString shapeDiffers = QStringLiteral(
    "Flux returned a picture of a different shape from the one it was given, so its change could not be kept to the "
    "marked areas. The raw result is retained. Choose Save Raw Result to recover it without another generation "
    "charge.");
const QString square = QStringLiteral("1024x1024");
constexpr QSize originalSize(900, 600);

/// A request to edit the marked part of a red picture, answered in blue.
struct MarkedStudio {
  MarkedStudio() {
    studio.provider->models[0].supportsReferences = true;
    studio.provider->script.outputs = {Script::pictureOutput(pictureBytes(Qt::blue, "PNG", {512, 512}))};
    studio.provider->onEvent = [this](const QString& event) {
      if (event == QStringLiteral("post")) look(studio.provider->calls.back());
    };
    request = promptRequest(QStringLiteral("a hat"));
    request.referenceIDs = {
        studio.addAsset(MediaType::image, QStringLiteral("cat.png"), pictureBytes(Qt::red, "PNG", originalSize))->id};
    MarkupBox box;
    box.x = box.y = 0.4;
    box.width = box.height = 0.1;
    request.markup = {box};
    editAt({square});
  }
  void editAt(const QStringList& sizes) {
    ModelFact fact;
    fact.name = QStringLiteral("Flux");
    fact.sizes = sizes;
    studio.facts->facts.insert(request.model, fact);
  }
  void look(const ProviderCall& call) {
    if (!call.references.empty() && QFile::exists(call.references[0].file))
      sent = decodeUpright(call.references[0].file);
  }
  const ProviderCall& call() const { return studio.provider->calls.at(0); }
  QImage landed(const QUuid& job) const {
    const AssetRef asset = studio.store->outputs(job).at(0);
    return decodeUpright(studio.store->fileOf(*asset));
  }

  Studio studio;
  GenerationRequest request;
  QImage sent;
};

TEST(MarkedEdits, SendThePieceAndLandTheWholePictureWithTheChangeInIt) {
  MarkedStudio marked;
  const JobRef job = marked.studio.finished(marked.request);
  ASSERT_EQ(job->status, QStringLiteral("complete")) << job->errorMessage.value_or(QString()).toStdString();
  EXPECT_EQ(marked.sent.size(), QSize(512, 512));
  const QString piece = marked.call().references.at(0).file;
  EXPECT_TRUE(piece.endsWith(QStringLiteral("/sorvan-piece-%1.png").arg(uuidText(job->id)))) << piece.toStdString();
  EXPECT_FALSE(marked.call().request.markup);
  EXPECT_EQ(marked.call().request.size, square);
  const QImage picture = marked.landed(job->id);
  EXPECT_EQ(picture.size(), originalSize);
  EXPECT_EQ(picture.pixelColor(400, 270), QColor(Qt::blue));
  EXPECT_EQ(picture.pixelColor(340, 270), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(10, 10), QColor(Qt::red));
  const AssetRef asset = marked.studio.store->outputs(job->id).at(0);
  EXPECT_TRUE(asset->localFilePath.endsWith(QStringLiteral(".png")));
  const auto recipe = marked.studio.store->generationOf(asset->id)->recipe();
  EXPECT_EQ(recipe->markup, marked.request.markup);
  EXPECT_EQ(recipe->size, marked.request.size);
  EXPECT_FALSE(marked.studio.hasRecoveryFolder(job->id));
}

TEST(MarkedEdits, LeaveNoTemporaryPicture) {
  MarkedStudio marked;
  const JobRef job = marked.studio.finished(marked.request);
  const QStringList left =
      QDir(temporaryFolder()).entryList({QStringLiteral("sorvan-*%1*").arg(uuidText(job->id))}, QDir::Files);
  EXPECT_TRUE(left.isEmpty()) << left.join(u' ').toStdString();
}

TEST(MarkedEdits, OfAModelWithoutSizesSendThePictureWithBoxesOnIt) {
  MarkedStudio marked;
  marked.editAt({});
  marked.studio.provider->script.outputs = {Script::pictureOutput(pictureBytes(Qt::blue, "PNG", {1500, 1000}))};
  const JobRef job = marked.studio.finished(marked.request);
  ASSERT_EQ(job->status, QStringLiteral("complete")) << job->errorMessage.value_or(QString()).toStdString();
  EXPECT_EQ(marked.sent.size(), originalSize);
  EXPECT_NE(marked.sent.pixelColor(400, 240), QColor(Qt::red));
  EXPECT_EQ(marked.call().request.markup, marked.request.markup);
  EXPECT_TRUE(marked.call().references.at(0).file.contains(QStringLiteral("/sorvan-markup-")));
  const QImage picture = marked.landed(job->id);
  EXPECT_EQ(picture.size(), originalSize);
  EXPECT_EQ(picture.pixelColor(400, 270), QColor(Qt::blue));
  EXPECT_EQ(picture.pixelColor(10, 10), QColor(Qt::red));
}

TEST(MarkedEdits, OfADifferentShapeStayRetainedAndLandRawWhenAsked) {
  MarkedStudio marked;
  const QByteArray raw = pictureBytes(Qt::blue, "PNG", {900, 600});
  marked.studio.provider->script.outputs = {Script::pictureOutput(raw)};
  const JobRef job = marked.studio.finished(marked.request);
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->errorMessage, shapeDiffers);
  EXPECT_EQ(job->detail, QStringLiteral("Result retained locally · Save Result or Save Raw Result"));
  EXPECT_TRUE(marked.studio.mediaFiles().filter(QStringLiteral("/generated/")).isEmpty());
  saveRawResult(*marked.studio.queue, job->id);
  marked.studio.settle();
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_TRUE(job->saveOriginal);
  const AssetRef asset = marked.studio.store->outputs(job->id).at(0);
  EXPECT_EQ(asset->notes,
            QStringLiteral("Recovered original provider output. Marked-area confinement was not applied."));
  EXPECT_EQ(marked.studio.folder.read(QStringLiteral("workspace/") + asset->localFilePath), raw);
  EXPECT_EQ(marked.studio.provider->posts, 1);
}

TEST(MarkedEdits, AnsweredInAnotherKindOfPictureNeverReplaceTheWhole) {
  MarkedStudio marked;
  marked.studio.provider->script.outputs = {Script::pictureOutput("GIF89a-and-so-on", QStringLiteral("png"))};
  const JobRef job = marked.studio.finished(marked.request);
  EXPECT_EQ(job->errorMessage, shapeDiffers);
}

TEST(MarkedEdits, ThatKeepTheWholeResultAreNotConfined) {
  MarkedStudio marked;
  marked.request.confineToMarks = false;
  const JobRef job = marked.studio.finished(marked.request);
  EXPECT_EQ(job->status, QStringLiteral("complete"));
  EXPECT_EQ(marked.sent.size(), originalSize);
  EXPECT_EQ(marked.landed(job->id).pixelColor(5, 5), QColor(Qt::blue));
}

/// A disk that takes nothing into the library.
void failLandings(const Studio& studio) {
  studio.sql(QStringLiteral("CREATE TRIGGER full BEFORE INSERT ON Asset BEGIN SELECT RAISE(ABORT, 'full'); END"));
}

TEST(MarkedEdits, AfterARestartLandWhereTheyWereCutFromWhateverTheModelOffersNow) {
  MarkedStudio marked;
  failLandings(marked.studio);
  const QUuid id = marked.studio.finished(marked.request)->id;
  EXPECT_EQ(marked.studio.job(id)->status, QStringLiteral("failed"));
  marked.studio.sql(QStringLiteral("DROP TRIGGER full"));
  marked.editAt({});
  marked.studio.restart();
  retry(*marked.studio.queue, id);
  marked.studio.settle();
  ASSERT_EQ(marked.studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(marked.landed(id).pixelColor(400, 270), QColor(Qt::blue));
  EXPECT_EQ(marked.landed(id).pixelColor(10, 10), QColor(Qt::red));
  EXPECT_EQ(marked.studio.provider->posts, 1);
}

TEST(MarkedEdits, WhoseNoteIsLostAreCutAgainAsTheyWere) {
  MarkedStudio marked;
  failLandings(marked.studio);
  const QUuid id = marked.studio.finished(marked.request)->id;
  marked.studio.sql(QStringLiteral("DROP TRIGGER full"));
  marked.studio.folder.write(QStringLiteral("workspace/.sorvan/recovery/%1/patch.json").arg(uuidText(id)), "{");
  marked.studio.restart();
  retry(*marked.studio.queue, id);
  marked.studio.settle();
  ASSERT_EQ(marked.studio.job(id)->status, QStringLiteral("complete"));
  EXPECT_EQ(marked.landed(id).pixelColor(400, 270), QColor(Qt::blue));
  EXPECT_EQ(marked.landed(id).pixelColor(10, 10), QColor(Qt::red));
}

TEST(MarkedEdits, OfAPictureThatCannotBeReadFailBeforeAnythingIsPaid) {
  MarkedStudio marked;
  marked.studio.folder.write(QStringLiteral("workspace/Inbox/imported/cat.png"), "no picture");
  const JobRef job = marked.studio.finished(marked.request);
  EXPECT_EQ(job->status, QStringLiteral("failed"));
  EXPECT_EQ(job->errorMessage, QStringLiteral("Cannot read the image to mark up."));
  EXPECT_EQ(marked.studio.provider->posts, 0);
}

TEST(MarkedEdits, WhoseOriginalIsUnreadableAfterwardsKeepTheirResult) {
  MarkedStudio marked;
  marked.studio.provider->onEvent = [&](const QString& event) {
    if (event == QStringLiteral("post"))
      marked.studio.folder.write(QStringLiteral("workspace/Inbox/imported/cat.png"), "no picture");
  };
  const JobRef job = marked.studio.finished(marked.request);
  EXPECT_EQ(job->errorMessage, shapeDiffers);
  EXPECT_TRUE(marked.studio.hasRecoveryFolder(job->id));
}

}  // namespace
}  // namespace sorvan::generation
