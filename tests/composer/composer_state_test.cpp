#include "composer/composer_state.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/ids.h"
#include "composer/composer_models.h"
#include "support/fake_clock.h"
#include "support/run_task.h"

namespace sorvan::composer {
namespace {

using namespace std::chrono_literals;
using test::selectable;

FalModel record(const QString& id, int maxCount = 4, const QStringList& ratios = {}) {
  FalModel model;
  model.id = id;
  model.name = id;
  model.output = MediaType::image;
  model.maxCount = maxCount;
  if (!ratios.isEmpty()) model.sizing = SizeByAspect{QStringLiteral("aspect_ratio"), ratios};
  return model;
}

FalModel clip(const QString& id, const QStringList& lengths) {
  FalModel model = record(id, 1);
  model.output = MediaType::video;
  Setting setting;
  setting.field = QStringLiteral("duration");
  setting.values = lengths;
  setting.defaultValue = lengths.front();
  model.settings = {setting};
  return model;
}

const QString nano = QStringLiteral("fal-ai/nano-banana-2");
QString key(const char* id) { return QStringLiteral("fal.ai:") + QString::fromLatin1(id); }
bool everything(const QUuid&) { return true; }
bool nothing(const QUuid&) { return false; }

struct ComposerStateTest : testing::Test {
  std::shared_ptr<sorvan::test::FakeClock> clock = std::make_shared<sorvan::test::FakeClock>();
  ComposerState state{selectable({record(nano), record(QStringLiteral("one"), 1),
                                  record(QStringLiteral("square"), 4, {QStringLiteral("1:1")}),
                                  clip(QStringLiteral("clip"), {QStringLiteral("5"), QStringLiteral("10")}),
                                  clip(QStringLiteral("other-clip"), {QStringLiteral("5"), QStringLiteral("8")})}),
                      clock};

  void pass(std::chrono::milliseconds time) {
    sorvan::test::runPosted();
    clock->advance(time);
    sorvan::test::runPosted();
  }
};

TEST_F(ComposerStateTest, StartsWithItsModelShapeAndCount) {
  EXPECT_EQ(state.request().model, nano);
  EXPECT_EQ(state.request().size, QStringLiteral("1536x864"));
  EXPECT_EQ(state.request().count, 1);
  EXPECT_TRUE(state.isUntouched());
}

TEST_F(ComposerStateTest, TellsOfTypingOnlyWhenTheDraftBecomesEmptyOrStopsBeingSo) {
  QSignalSpy changed(&state, &ComposerState::changed);
  state.updateLiveDraft(QStringLiteral("a"));
  state.updateLiveDraft(QStringLiteral("ab"));
  state.updateLiveDraft(QStringLiteral("a"));
  EXPECT_EQ(changed.count(), 1);
  state.updateLiveDraft(QString());
  EXPECT_EQ(changed.count(), 2);
}

TEST_F(ComposerStateTest, ANoteLeavesAfterFiveSeconds) {
  state.report(QStringLiteral("Queued"), false);
  pass(4900ms);
  EXPECT_EQ(state.message(), QStringLiteral("Queued"));
  pass(200ms);
  EXPECT_EQ(state.message(), QString());
}

TEST_F(ComposerStateTest, NothingThatWaitsOutlivesTheEndOfTheProgram) {
  state.report(QStringLiteral("Queued"), false);
  EXPECT_EQ(clock->sleepers(), 1);
  sorvan::test::runTask(state.drain());
  EXPECT_EQ(clock->sleepers(), 0);
  EXPECT_EQ(state.message(), QStringLiteral("Queued"));
}

TEST_F(ComposerStateTest, AnErrorStaysUntilItIsReplaced) {
  state.report(QStringLiteral("Wrong"), true);
  pass(60s);
  EXPECT_EQ(state.message(), QStringLiteral("Wrong"));
  EXPECT_TRUE(state.messageIsError());
}

TEST_F(ComposerStateTest, AnOlderNotesTimerNeverWipesANewerNote) {
  state.report(QStringLiteral("First"), false);
  pass(3s);
  state.report(QStringLiteral("Second"), false);
  pass(3s);
  EXPECT_EQ(state.message(), QStringLiteral("Second"));
  pass(3s);
  EXPECT_EQ(state.message(), QString());
}

TEST_F(ComposerStateTest, TheSameNoteAgainStaysForItsOwnFiveSeconds) {
  state.report(QStringLiteral("Queued"), false);
  pass(3s);
  state.report(QStringLiteral("Queued"), false);
  pass(3s);
  EXPECT_EQ(state.message(), QStringLiteral("Queued"));
}

TEST_F(ComposerStateTest, AModelThatMakesOneLowersTheCountAndItStaysLow) {
  state.setCount(4);
  state.selectModel(key("one"), true);
  EXPECT_EQ(state.request().count, 1);
  state.selectModel(key("one"), false);
  EXPECT_EQ(state.request().count, 1);
}

TEST_F(ComposerStateTest, AShapeThatAModelRefusesMovesToTheFirstThatAllTake) {
  state.chooseOnly(key("square"));
  EXPECT_EQ(state.request().size, QStringLiteral("1024x1024"));
}

TEST_F(ComposerStateTest, TheFirstChosenModelInCatalogueOrderIsTheRequests) {
  state.selectModel(key("square"), true);
  EXPECT_EQ(state.request().model, nano);
  state.selectModel(QStringLiteral("fal.ai:") + nano, false);
  EXPECT_EQ(state.request().model, QStringLiteral("square"));
}

TEST_F(ComposerStateTest, KeepsALengthPerModelOnlyWhereTheModelOffersIt) {
  state.chooseOnly(key("clip"));
  state.selectModel(key("other-clip"), true);
  state.setLengths(
      {{QStringLiteral("clip"), QStringLiteral("10")}, {QStringLiteral("other-clip"), QStringLiteral("10")}});
  ASSERT_TRUE(state.request().lengthByModel);
  EXPECT_EQ(state.request().lengthByModel->size(), 1);
  EXPECT_EQ(state.request().lengthByModel->value(QStringLiteral("clip")), QStringLiteral("10"));
  state.chooseOnly(key("clip"));
  EXPECT_FALSE(state.request().lengthByModel);
}

TEST_F(ComposerStateTest, AnotherSettingLeavesTheLengthOfEachModelAlone) {
  state.chooseOnly(key("clip"));
  state.selectModel(key("other-clip"), true);
  state.setLengths({{QStringLiteral("clip"), QStringLiteral("10")}});
  state.setOption(QStringLiteral("resolution"), QStringLiteral("2K"));
  EXPECT_TRUE(state.request().lengthByModel);
  state.setOption(QStringLiteral("duration"), QStringLiteral("5"));
  EXPECT_FALSE(state.request().lengthByModel);
}

TEST_F(ComposerStateTest, ASnapshotComesBackWhole) {
  state.chooseOnly(key("clip"));
  state.setOption(QStringLiteral("duration"), QStringLiteral("10"));
  state.setSeedText(QStringLiteral("42"));
  state.updateLiveDraft(QStringLiteral("a boat"));
  const ComposerDraft kept = state.saved();
  state.reset();
  ASSERT_TRUE(state.isUntouched());
  state.restore(kept, everything, everything);
  EXPECT_EQ(state.draft(), QStringLiteral("a boat"));
  EXPECT_EQ(state.seedText(), QStringLiteral("42"));
  EXPECT_EQ(state.request().model, QStringLiteral("clip"));
  EXPECT_EQ(state.request().options->value(QStringLiteral("duration")), QStringLiteral("10"));
  EXPECT_TRUE(state.isExpanded());
}

TEST_F(ComposerStateTest, ASnapshotWithoutAReadableRequestChangesNothing) {
  state.updateLiveDraft(QStringLiteral("mine"));
  ComposerDraft kept;
  kept.text = QStringLiteral("theirs");
  kept.request = QByteArrayLiteral("{");
  state.restore(kept, everything, everything);
  EXPECT_EQ(state.draft(), QStringLiteral("mine"));
}

TEST_F(ComposerStateTest, ARequestThatCannotBeWrittenLeavesTheLastOneInTheSnapshot) {
  state.setSeedText(QStringLiteral("42"));
  const QByteArray before = state.saved().request;
  ASSERT_FALSE(before.isEmpty());
  const QUuid picture = newUuid();
  state.attachFirst(picture);
  state.setMarkup({{std::nan(""), 0, 1, 1, QString()}}, picture);
  state.updateLiveDraft(QStringLiteral("words that matter"));
  const ComposerDraft kept = state.saved();
  EXPECT_EQ(kept.request, before);
  EXPECT_EQ(kept.text, QStringLiteral("words that matter"));
}

TEST_F(ComposerStateTest, ASnapshotWhoseModelsAreGoneComesBackWithTheDefault) {
  ComposerDraft kept = state.saved();
  kept.selectedModels = {QStringLiteral("fal.ai:gone")};
  state.restore(kept, everything, everything);
  EXPECT_EQ(state.selectedModels(), QSet<QString>{ComposerState::defaultModel});
  EXPECT_EQ(state.request().model, nano);
}

TEST_F(ComposerStateTest, ASnapshotLosesReferencesAndProjectsThatAreGone) {
  GenerationRequest request;
  const QUuid asset = newUuid();
  request.referenceIDs = {asset};
  request.referenceBindings = std::vector{ReferenceBinding{asset, QStringLiteral("Tin"), {}, {}, {}}};
  ComposerDraft kept = state.saved();
  kept.request = encodeRequest(request);
  kept.projectID = newUuid();
  state.restore(kept, nothing, nothing);
  EXPECT_TRUE(state.request().referenceIDs.empty());
  EXPECT_FALSE(state.request().referenceBindings);
  EXPECT_FALSE(state.projectId());
}

TEST_F(ComposerStateTest, ASnapshotWithoutTextComesBackWithoutImprovements) {
  ComposerDraft kept = state.saved();
  kept.improvements = {PromptImprovement{QStringLiteral("old"), {}, {}}};
  state.restore(kept, everything, everything);
  EXPECT_TRUE(state.improvements().empty());
}

TEST_F(ComposerStateTest, ClearingTheFieldDropsImprovementsForGood) {
  ComposerDraft kept = state.saved();
  kept.text = QStringLiteral("new");
  kept.improvements = {PromptImprovement{QStringLiteral("old"), {}, {}}};
  state.restore(kept, everything, everything);
  ASSERT_EQ(state.improvements().size(), 1u);
  state.updateLiveDraft(QString());
  state.updateLiveDraft(QStringLiteral("new"));
  EXPECT_TRUE(state.improvements().empty());
}

TEST_F(ComposerStateTest, FinishingAPromptKeepsModelsShapeAndCount) {
  state.chooseOnly(key("square"));
  state.setCount(3);
  state.updateLiveDraft(QStringLiteral("a boat"));
  state.setExpanded(true);
  state.finishPrompt();
  EXPECT_EQ(state.draft(), QString());
  EXPECT_FALSE(state.isExpanded());
  EXPECT_EQ(state.request().count, 3);
  EXPECT_EQ(state.selectedModels(), QSet<QString>{key("square")});
}

// ---- References and marks

struct AttachedTest : ComposerStateTest {
  AttachedTest() {
    std::vector<FalModel> records{record(nano), record(QStringLiteral("edit")), record(QStringLiteral("cut"))};
    records[1].imageInput = catalogue::ListInput{QStringLiteral("image_urls"), true};
    records[2].imageInput = catalogue::ListInput{QStringLiteral("image_urls"), true};
    records[2].hasPrompt = false;
    state.setModels(selectable(records));
  }
  std::vector<QUuid> attach(int count) {
    std::vector<QUuid> ids;
    for (int number = 0; number < count; ++number) {
      ids.push_back(newUuid());
      state.attachFirst(ids.back());
    }
    return ids;
  }
  const core::GenerationRequest& request() const { return state.request(); }
  const std::vector<core::MarkupBox> boxes{{0.1, 0.1, 0.2, 0.2, QStringLiteral(" a gull ")},
                                           {0.5, 0.5, 0.2, 0.2, QStringLiteral("  ")},
                                           {0.7, 0.7, 0.2, 0.2, QStringLiteral("a sail.")}};
};

TEST_F(AttachedTest, TheLastPictureThatWasAttachedStandsFirstAndNoneTwice) {
  const auto ids = attach(3);
  state.attachFirst(ids[0]);
  EXPECT_EQ(request().referenceIDs, (std::vector<QUuid>{ids[0], ids[2], ids[1]}));
}

TEST_F(AttachedTest, ANinthPictureIsRefusedAndChangesNothing) {
  const auto ids = attach(8);
  const auto before = request();
  EXPECT_THROW(state.attachFirst(newUuid()), SorvanError);
  EXPECT_EQ(request(), before);
  state.attachFirst(ids[0]);
  EXPECT_EQ(request().referenceIDs.front(), ids[0]);
}

TEST_F(AttachedTest, EachPictureHasANameOfItsOwnAndKeepsItWhileWordsMayMentionIt) {
  const auto ids = attach(2);
  state.setText(QStringLiteral("like @Reference1"));
  state.detachReference(ids[0]);
  state.attachFirst(newUuid());
  ASSERT_TRUE(request().referenceBindings);
  EXPECT_EQ(request().referenceBindings->back().label, QStringLiteral("Reference3"));
  state.setText({});
  state.attachFirst(ids[0]);
  state.detachReference(request().referenceIDs[1]);
  EXPECT_EQ(request().referenceBindings->size(), 2u);
}

TEST_F(AttachedTest, MarksFillAnEmptyPromptWithTheirNotesAndOnlyAnEmptyOne) {
  const auto ids = attach(1);
  state.setMarkup(boxes, ids[0]);
  EXPECT_EQ(state.draft(), QStringLiteral("a gull. a sail."));
  EXPECT_EQ(request().markup, boxes);
  EXPECT_EQ(state.markupAssetId(), ids[0]);
  state.setText(QStringLiteral("typed"));
  state.setMarkup(boxes, ids[0]);
  EXPECT_EQ(state.draft(), QStringLiteral("typed"));
  state.setMarkup({}, ids[0]);
  EXPECT_FALSE(request().markup);
  EXPECT_FALSE(state.markupAssetId());
}

TEST_F(AttachedTest, MarksGoWithTheirPictureOrWhenAnotherStandsFirst) {
  const auto ids = attach(1);
  state.setMarkup(boxes, ids[0]);
  state.setConfinesToMarks(false);
  state.attachFirst(newUuid());
  EXPECT_FALSE(request().markup);
  EXPECT_FALSE(request().confineToMarks);
  state.attachFirst(ids[0]);
  state.setMarkup(boxes, ids[0]);
  state.detachReference(ids[0]);
  EXPECT_FALSE(request().markup);
  EXPECT_FALSE(state.isUntouched());
}

TEST_F(AttachedTest, MarksWhosePictureIsGoneAreNotRestored) {
  const auto ids = attach(2);
  state.setMarkup(boxes, ids[1]);
  const core::ComposerDraft kept = state.saved();
  state.reset();
  state.restore(
      kept, [&](const QUuid& id) { return id != ids[1]; }, everything);
  EXPECT_EQ(request().referenceIDs, std::vector<QUuid>{ids[0]});
  EXPECT_FALSE(request().markup);
  state.restore(kept, everything, everything);
  EXPECT_EQ(request().markup, boxes);
}

TEST_F(AttachedTest, AModelThatTakesPicturesIsChosenWhereNoneIs) {
  EXPECT_TRUE(state.useModel(MediaType::image));
  EXPECT_EQ(state.selectedModels(), QSet<QString>{key("edit")});
  state.selectModel(key("cut"), true);
  EXPECT_TRUE(state.useModel(MediaType::image));
  EXPECT_EQ(state.selectedModels(), QSet<QString>{key("edit")});
  EXPECT_FALSE(state.useModel(MediaType::video));
  EXPECT_EQ(state.selectedModels(), QSet<QString>{key("edit")});
}

TEST_F(AttachedTest, ASubmittedPromptTakesItsPicturesAndMarksAlong) {
  const auto ids = attach(1);
  state.setMarkup(boxes, ids[0]);
  state.setConfinesToMarks(false);
  state.finishPrompt();
  EXPECT_TRUE(request().referenceIDs.empty());
  EXPECT_FALSE(request().referenceBindings);
  EXPECT_FALSE(request().markup);
  EXPECT_FALSE(request().confineToMarks);
}

// ---- Names of attached pictures

QStringList namesIn(const ComposerState& composer) {
  QStringList names;
  for (const ReferenceBinding& binding : composer.request().referenceBindings.value_or(std::vector<ReferenceBinding>()))
    names << binding.label;
  return names;
}

TEST_F(ComposerStateTest, ARenamedPictureIsCalledSoInTheDraft) {
  const QUuid fox = newUuid();
  state.attachFirst(fox);
  state.setText(QStringLiteral("by @reference1"));
  state.renameReference(fox, QStringLiteral("Red Fox"), QStringLiteral("Character"));
  EXPECT_EQ(state.draft(), QStringLiteral("by @RedFox"));
  EXPECT_EQ(state.request().referenceBindings->front().role, QStringLiteral("Character"));
  EXPECT_THROW(state.renameReference(fox, QStringLiteral("7"), {}), SorvanError);
  EXPECT_EQ(namesIn(state), QStringList{QStringLiteral("Red Fox")});
}

TEST_F(ComposerStateTest, AFreshPromptNumbersItsAutomaticNamesAnew) {
  const QUuid fox = newUuid();
  state.setReferences({fox}, {{fox, QStringLiteral("Reference4"), {}, {}, {}}});
  state.setText(QStringLiteral("@Reference4"));
  state.resetReferenceNamesForNewPrompt();
  EXPECT_EQ(namesIn(state), QStringList{QStringLiteral("Reference1")});
  EXPECT_EQ(state.draft(), QStringLiteral("@Reference1"));
}

TEST_F(ComposerStateTest, ReplacingThePicturesDropsMarksOfAnother) {
  const QUuid fox = newUuid();
  const QUuid hare = newUuid();
  state.attachFirst(fox);
  state.setMarkup({{0, 0, 0.5, 0.5, QString()}}, fox);
  state.setReferences({fox, hare}, *state.request().referenceBindings);
  EXPECT_TRUE(state.request().markup);
  state.setReferences({hare}, {});
  EXPECT_FALSE(state.request().markup);
}

}  // namespace
}  // namespace sorvan::composer
