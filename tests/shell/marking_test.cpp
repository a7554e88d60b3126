#include "shell/marking_presenter.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "core/image_format.h"
#include "core/workspace_opening.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using core::MarkupBox;

const QString editModel = QStringLiteral("fal-ai/nano-banana-2/edit");

struct MarkingTest : testing::Test {
  MarkingTest() {
    catalogue::FalModel model;
    model.id = editModel;
    model.name = QStringLiteral("Nano Banana 2 Edit");
    model.category = QStringLiteral("image-to-image");
    model.maxCount = 4;
    model.sizing = catalogue::SizeByAspect{QStringLiteral("aspect_ratio"), {QStringLiteral("auto")}};
    model.imageInput = catalogue::ListInput{QStringLiteral("image_urls"), true};
    desk.catalog->add(model);
    desk.composing.setModels(composer::pictureModels(*desk.catalog));
    item = makePicture();
  }
  QUuid makePicture() {
    desk.generate(QStringLiteral("a red boat"));
    desk.settle();
    return desk.store.assets().front()->id;
  }
  void draw(const QRectF& area, const QString& note) {
    const int index = desk.marking.add(area);
    desk.marking.setNote(index, note);
  }
  void drawTwo() {
    desk.marking.begin(item);
    draw(QRectF(0.25, 0.2, 0.25, 0.4), QStringLiteral("a green sail"));
    draw(QRectF(0.6, 0.2, 0.2, 0.4), QStringLiteral("a gull"));
  }
  AttachedReference first() const { return desk.composer.display().references.at(0); }
  const core::GenerationRequest& request() const { return desk.composing.request(); }

  test::Desk desk;
  QUuid item;
};

TEST_F(MarkingTest, BeginShowsThePictureLargeAndStartsWithoutBoxes) {
  QSignalSpy began(&desk.marking, &MarkingPresenter::markingChanged);
  desk.marking.begin(item);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::asset);
  EXPECT_EQ(desk.state.mode().subject, item);
  EXPECT_TRUE(desk.marking.isMarking());
  EXPECT_EQ(desk.marking.marks().picture(), QSize(48, 27));
  EXPECT_EQ(began.count(), 1);
}

TEST_F(MarkingTest, OnlyPicturesThatAreThereCanBeMarked) {
  EXPECT_TRUE(desk.marking.canMark(item));
  EXPECT_FALSE(desk.marking.canMark(QUuid::createUuid()));
  EXPECT_FALSE(desk.marking.canMark(desk.newestJob()->id));
  desk.store.context().edit(desk.store.asset(item)).deletedAt = desk.store.now();
  EXPECT_FALSE(desk.marking.canMark(item));
  desk.marking.begin(item);
  EXPECT_FALSE(desk.marking.isMarking());
}

TEST_F(MarkingTest, DoneHandsTheBoxesOverToTheComposer) {
  drawTwo();
  desk.marking.done();
  EXPECT_FALSE(desk.marking.isMarking());
  EXPECT_FALSE(desk.store.pendingMarks());
  ASSERT_TRUE(request().markup);
  EXPECT_EQ(request().markup->size(), 2u);
  EXPECT_EQ(request().referenceIDs, std::vector<QUuid>{item});
  EXPECT_EQ(request().model, editModel);
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("a green sail. a gull"));
  EXPECT_EQ(first().marks, 2);
  EXPECT_EQ(first().marksLabel, QStringLiteral("2 marks"));
  EXPECT_EQ(first().name, QStringLiteral("@Reference1"));
  EXPECT_EQ(first().role, QStringLiteral("Edit source"));
  EXPECT_TRUE(desk.composer.display().expanded);
}

TEST_F(MarkingTest, NotesNeverOverwriteAPromptThatWasTyped) {
  desk.composer.editDraft(QStringLiteral("at dusk"));
  drawTwo();
  desk.marking.done();
  EXPECT_EQ(desk.composer.draft(), QStringLiteral("at dusk"));
}

TEST_F(MarkingTest, LeavingKeepsTheBoxesForThePictureAndTellsTheComposerNothing) {
  drawTwo();
  desk.marking.leave();
  EXPECT_FALSE(request().markup);
  desk.state.setMode({});
  desk.marking.begin(item);
  EXPECT_EQ(desk.marking.marks().count(), 2);
  desk.marking.undo();
  EXPECT_EQ(desk.marking.marks().boxes()[1].note, QString());
}

TEST_F(MarkingTest, AnotherPictureOrViewEndsMarking) {
  const QUuid other = makePicture();
  drawTwo();
  desk.state.setMode({ModeKind::asset, other, 0});
  EXPECT_FALSE(desk.marking.isMarking());
  desk.marking.begin(other);
  EXPECT_EQ(desk.marking.marks().count(), 0);
  desk.state.setMode({ModeKind::activity});
  EXPECT_FALSE(desk.marking.isMarking());
}

TEST_F(MarkingTest, MarksInTheComposerAreTakenUpAgain) {
  drawTwo();
  desk.marking.setConfines(false);
  desk.marking.done();
  EXPECT_EQ(request().confineToMarks, std::optional(false));
  QSignalSpy asked(&desk.composer, &ComposerPresenter::marksRequested);
  desk.composer.openMarks(item);
  EXPECT_EQ(asked.count(), 1);
  desk.marking.begin(item);
  EXPECT_EQ(desk.marking.marks().boxes(), *request().markup);
  EXPECT_FALSE(desk.marking.confines());
}

TEST_F(MarkingTest, DoneWithoutBoxesTakesTheMarksAwayAndAttachesNothing) {
  desk.marking.begin(item);
  desk.marking.done();
  EXPECT_TRUE(request().referenceIDs.empty());
  drawTwo();
  desk.marking.done();
  desk.marking.begin(item);
  desk.marking.clear();
  desk.marking.done();
  EXPECT_FALSE(request().markup);
  EXPECT_EQ(first().marks, 0);
}

TEST_F(MarkingTest, WhenTheComposerIsFullMarkingGoesOnAndNothingIsLost) {
  std::vector<QUuid> others;
  for (int number = 0; number < 8; ++number) others.push_back(makePicture());
  for (const QUuid& other : others) desk.composer.useAsReference(other);
  drawTwo();
  desk.marking.done();
  EXPECT_TRUE(desk.marking.isMarking());
  EXPECT_EQ(desk.marking.marks().count(), 2);
  EXPECT_FALSE(desk.store.pendingMarks());
  EXPECT_TRUE(desk.composer.message().isError);
  EXPECT_EQ(desk.composer.message().text,
            QStringLiteral("Use up to 8 reference images. Remove an attachment before adding more."));
}

TEST_F(MarkingTest, MarksGoWhenTheirPictureIsDetachedOrNoLongerFirst) {
  const QUuid other = makePicture();
  drawTwo();
  desk.marking.done();
  desk.composer.useAsReference(other);
  EXPECT_FALSE(request().markup);
  drawTwo();
  desk.marking.done();
  EXPECT_TRUE(request().markup);
  EXPECT_EQ(request().referenceIDs.front(), item);
  desk.composer.detachReference(item);
  EXPECT_FALSE(request().markup);
  EXPECT_EQ(request().referenceIDs.size(), 1u);
}

TEST_F(MarkingTest, TheCrossOfTheMarksLeavesTheirPictureAttached) {
  drawTwo();
  desk.marking.done();
  desk.composer.removeMarks();
  EXPECT_FALSE(request().markup);
  EXPECT_EQ(desk.composer.display().references.size(), 1u);
  EXPECT_EQ(first().marks, 0);
}

TEST_F(MarkingTest, GenerateSendsAPieceWithoutMarksAndStoresTheRequestWithThem) {
  drawTwo();
  desk.marking.done();
  desk.composer.submit();
  test::runPosted();
  desk.settle();
  const auto stored = desk.newestJob()->request();
  ASSERT_TRUE(stored && stored->markup);
  EXPECT_EQ(stored->markup->size(), 2u);
  EXPECT_EQ(stored->prompt, QStringLiteral("a green sail. a gull"));
  EXPECT_FALSE(desk.provider->requests.back().markup);
  EXPECT_TRUE(desk.composer.display().references.empty());
  EXPECT_FALSE(request().markup);
}

TEST_F(MarkingTest, AnEditThatLandsIsAnEditOfThePicture) {
  drawTwo();
  // The scripted answer has the shape of the whole picture, which a request that keeps the whole result takes.
  desk.marking.setConfines(false);
  desk.marking.done();
  desk.composer.submit();
  test::runPosted();
  desk.settle();
  ASSERT_EQ(desk.newestJob()->status, core::jobStatus::complete);
  const auto edges = desk.store.parentEdges(desk.store.assets().front()->id);
  ASSERT_EQ(edges.size(), 1u);
  EXPECT_EQ(edges.front()->parentAssetID, item);
  EXPECT_EQ(edges.front()->type(), core::RelationshipType::editedFrom);
}

TEST_F(MarkingTest, ThePictureThatIsEditedSaysSoOnTheWallWhileTheJobRuns) {
  const QUuid other = makePicture();
  drawTwo();
  desk.marking.setConfines(false);
  desk.marking.done();
  desk.provider->gate.emplace();
  desk.composer.submit();
  test::runUntil([this] { return !desk.gallery.cellOf(item).workText.isEmpty(); });
  EXPECT_EQ(desk.gallery.cellOf(item).workText, QStringLiteral("Editing…"));
  EXPECT_TRUE(desk.gallery.cellOf(item).accessibleName.contains(QStringLiteral("Editing…")));
  EXPECT_EQ(desk.gallery.cellOf(other).workText, QString());
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.gallery.cellOf(item).workText, QString());
}

TEST_F(MarkingTest, AFailedMarkedJobShowsItsMarksAndWhatCanBeSaved) {
  drawTwo();
  desk.marking.done();
  // The scripted answer is as wide as the whole picture, while a square piece was sent.
  desk.composer.submit();
  test::runPosted();
  desk.settle();
  const core::JobRef job = desk.newestJob();
  ASSERT_EQ(job->status, core::jobStatus::failed) << job->detail.toStdString();
  desk.state.select({job->id});
  const InspectorDisplay shown = desk.inspector.display();
  EXPECT_EQ(shown.message,
            QStringLiteral("Nano Banana 2 Edit returned a picture of a different shape from the one it was given, so its "
                           "change could not be kept to the marked areas. The raw result is retained. Choose Save Raw "
                           "Result to recover it without another generation charge."));
  EXPECT_EQ(shown.detail, QStringLiteral("Result retained locally · Save Result or Save Raw Result"));
  QStringList titles;
  for (const InspectorButton& button : shown.buttons) titles << button.title;
  EXPECT_EQ(titles, (QStringList{QStringLiteral("Save Result"), QStringLiteral("Save Raw Result"),
                                 QStringLiteral("Reuse Prompt"), QStringLiteral("Copy Details"),
                                 QStringLiteral("Open Generation")}));
  EXPECT_EQ(shown.marks.countText, QStringLiteral("2 boxes"));
  ASSERT_EQ(shown.marks.areas.size(), 2u);
  EXPECT_EQ(shown.marks.picturePath, desk.store.fileOf(*desk.store.asset(item)));
}

TEST_F(MarkingTest, SaveRawResultLandsWhatWasPaidForWithoutAnotherCall) {
  drawTwo();
  desk.marking.done();
  desk.composer.submit();
  test::runPosted();
  desk.settle();
  const core::JobRef job = desk.newestJob();
  const std::size_t calls = desk.provider->requests.size();
  desk.jobs.saveResult(job->id);
  desk.settle();
  EXPECT_EQ(job->status, core::jobStatus::failed);
  desk.jobs.saveRawResult(job->id);
  desk.settle();
  EXPECT_EQ(job->status, core::jobStatus::complete);
  EXPECT_EQ(desk.provider->requests.size(), calls);
  EXPECT_EQ(desk.store.assets().front()->notes,
            QStringLiteral("Recovered original provider output. Marked-area confinement was not applied."));
}

TEST_F(MarkingTest, AnotherWorkspaceForgetsWhatWasDrawn) {
  drawTwo();
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Other"), core::Remember::no);
  test::runPosted();
  EXPECT_FALSE(desk.marking.isMarking());
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Workspace"), core::Remember::no);
  test::runPosted();
  desk.marking.begin(item);
  EXPECT_EQ(desk.marking.marks().count(), 0);
}

TEST_F(MarkingTest, ThePromptAndTheMarksSurviveARestart) {
  drawTwo();
  desk.marking.done();
  desk.composer.keepNow();
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Other"), core::Remember::no);
  test::runPosted();
  EXPECT_TRUE(desk.composer.display().references.empty());
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Workspace"), core::Remember::no);
  test::runPosted();
  EXPECT_EQ(first().marks, 2);
  EXPECT_EQ(request().markup->at(1).note, QStringLiteral("a gull"));
}

TEST_F(MarkingTest, UseAsReferencePutsThePictureFirstOnce) {
  const QUuid other = makePicture();
  desk.composer.useAsReference(item);
  desk.composer.useAsReference(other);
  desk.composer.useAsReference(item);
  EXPECT_EQ(request().referenceIDs, (std::vector<QUuid>{item, other}));
  EXPECT_EQ(first().role, QStringLiteral("No role"));
  EXPECT_EQ(request().model, editModel);
  EXPECT_TRUE(desk.composer.display().notices.empty());
}

TEST_F(MarkingTest, WithoutAModelThatTakesPicturesItIsSaid) {
  desk.catalog->remove(editModel);
  desk.composing.setModels(composer::pictureModels(*desk.catalog));
  desk.composer.useAsReference(item);
  EXPECT_EQ(desk.composer.message().text,
            QStringLiteral("No model for this is available. Add one from the model picker in the composer."));
  EXPECT_EQ(desk.composer.display().notices.back(),
            QStringLiteral("References require models that accept images. Deselect text-only models in the model "
                           "picker."));
}

TEST_F(MarkingTest, APictureThatTheWindowCannotShowIsNotMarked) {
  QObject::connect(&desk.state, &WorkspaceState::modeChanged, &desk.state, [this] { desk.state.setMode({}); });
  desk.marking.begin(item);
  EXPECT_FALSE(desk.marking.isMarking());
}

}  // namespace
}  // namespace sorvan::shell
