#include "composer/saved_references.h"

#include <gtest/gtest.h>

#include "composer/composer_models.h"
#include "composer/reference_texts.h"
#include "core/history.h"
#include "core/library_fixture.h"
#include "generation/generation_request.h"
#include "generation/texts.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using namespace sorvan::core;
using composer::test::imageModel;
using composer::test::selectable;
using composer::test::startingModelId;
using sorvan::test::failureOf;

struct SavedReferencesTest : sorvan::test::LibraryFixture {
  ComposerState state{selectable({imageModel(startingModelId)}), clock};
  std::vector<AssetRef> pictures;

  SavedReferencesTest() {
    open();
    for (int number = 0; number < 9; ++number) pictures.push_back(addAsset(u"picture%1-001.png"_s.arg(number)));
  }
  ProjectRef addProject(const QString& name) {
    const ProjectRef project =
        store.context().insert(Project(name, store.files().createProjectFolder(name), clock->now()));
    store.save(LibraryTables::projects);
    return project;
  }
  SavedReferenceDraft draft(const QString& name, int images = 1) {
    SavedReferenceDraft made;
    made.name = name;
    for (int number = 0; number < images; ++number) made.assetIDs.push_back(pictures[size_t(number)]->id);
    return made;
  }
  SavedReferenceRef saved(const SavedReferenceDraft& made) { return savedReference(store, saveReference(store, made)); }
  QString refusal(const SavedReferenceDraft& made) {
    return failureOf([&] { saveReference(store, made); });
  }
  void trash(const AssetRef& asset, bool away = true) {
    store.context().edit(asset).deletedAt = away ? std::optional(clock->now()) : std::nullopt;
    store.save(LibraryTables::none);
  }
  QString attachRefusal(const SavedReferenceRef& reference) {
    return failureOf([&] { attachReference(store, *reference, state); });
  }
  QStringList labels() const {
    QStringList result;
    for (const ReferenceBinding& binding : state.request().referenceBindings.value_or(std::vector<ReferenceBinding>()))
      result << binding.label;
    return result;
  }
  QStringList suggested() const {
    QStringList result;
    for (const SavedReferenceSuggestion& suggestion : referenceSuggestions(store, state)) result << suggestion.title();
    return result;
  }
};

// ---- Saving

TEST_F(SavedReferencesTest, ASavedReferenceIsThereAfterReopening) {
  SavedReferenceDraft made = draft(u"  Rose Bottle "_s, 2);
  made.kind = u"Product"_s;
  made.subject = u" a rose bottle "_s;
  made.notes = u"keep"_s;
  const QUuid id = saveReference(store, made);
  reopen();
  const SavedReferenceRef read = savedReference(store, id);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->name, u"Rose Bottle"_s);
  EXPECT_EQ(read->kind, u"Product"_s);
  EXPECT_EQ(read->subject, u"a rose bottle"_s);
  EXPECT_EQ(read->notes, u"keep"_s);
  EXPECT_EQ(read->assetIDs, made.assetIDs);
  EXPECT_EQ(read->createdAt, read->updatedAt);
}

TEST_F(SavedReferencesTest, EditingChangesTheRecordAndItsDate) {
  const SavedReferenceRef before = saved(draft(u"Tin"_s));
  const Instant created = before->createdAt;
  clock->advance(std::chrono::seconds(60));
  SavedReferenceDraft changed = draft(u"tin"_s, 2);
  changed.referenceID = before->id;
  EXPECT_EQ(saveReference(store, changed), before->id);
  EXPECT_EQ(store.savedReferences().size(), 1U);
  EXPECT_EQ(before->name, u"tin"_s);
  EXPECT_EQ(before->assetIDs.size(), 2U);
  EXPECT_EQ(before->createdAt, created);
  EXPECT_EQ(before->updatedAt, created + 60);
}

TEST_F(SavedReferencesTest, TheNameMustGiveAHandle) {
  for (const QString& name : {u"!!"_s, u"7up"_s, QString(49, u'a')})
    EXPECT_EQ(refusal(draft(name)), generation::texts::referenceNames()) << name.toStdString();
  EXPECT_EQ(refusal(draft(QString(48, u'a'))), u"(nothing was thrown)"_s);
  EXPECT_EQ(refusal(draft(QString(48, u'b'), 2)), generation::texts::referenceNames());
}

TEST_F(SavedReferencesTest, TheSubjectIsShortAndThereForWhatNeedsIt) {
  SavedReferenceDraft made = draft(u"Tin"_s);
  made.subject = QString(121, u'x');
  EXPECT_EQ(refusal(made), texts::subjectTooLong());
  for (const QString& kind : {u"Character"_s, u"Product"_s, u"Brand"_s, u"Location"_s}) {
    made.kind = kind;
    made.subject = u"  "_s;
    EXPECT_EQ(refusal(made), texts::subjectMissing()) << kind.toStdString();
  }
  made.kind = u"Style"_s;
  EXPECT_EQ(refusal(made), u"(nothing was thrown)"_s);
  SavedReferenceDraft other = draft(u"Other"_s);
  other.subject = u" "_s + QString(120, u'x') + u" "_s;
  EXPECT_EQ(refusal(other), u"(nothing was thrown)"_s);
}

TEST_F(SavedReferencesTest, OneToEightPicturesThatAreThere) {
  EXPECT_EQ(refusal(draft(u"Tin"_s, 0)), texts::chooseImages());
  EXPECT_EQ(refusal(draft(u"Tin"_s, 9)), texts::chooseImages());
  EXPECT_EQ(refusal(draft(u"Eight"_s, 8)), u"(nothing was thrown)"_s);
  trash(pictures[0]);
  EXPECT_EQ(refusal(draft(u"Tin"_s, 2)), texts::imagesUnavailable());
  trash(pictures[0], false);
  SavedReferenceDraft unknown = draft(u"Tin"_s);
  unknown.assetIDs.push_back(newUuid());
  EXPECT_EQ(refusal(unknown), texts::imagesUnavailable());
  QFile::remove(store.fileOf(*pictures[1]));
  EXPECT_EQ(refusal(draft(u"Tin"_s, 2)), texts::imagesUnavailable());
}

TEST_F(SavedReferencesTest, APictureThatWasChosenTwiceIsKeptOnce) {
  SavedReferenceDraft made = draft(u"Tin"_s, 2);
  made.assetIDs.push_back(pictures[0]->id);
  EXPECT_EQ(saved(made)->assetIDs, (std::vector<QUuid>{pictures[0]->id, pictures[1]->id}));
}

TEST_F(SavedReferencesTest, ANameIsFreeOnceInEachScope) {
  const QUuid sea = addProject(u"Sea"_s)->id;
  const QUuid land = addProject(u"Land"_s)->id;
  saveReference(store, draft(u"Tin"_s));
  EXPECT_EQ(refusal(draft(u" tIN "_s)), texts::nameTaken());
  SavedReferenceDraft inProject = draft(u"Tin"_s);
  inProject.projectID = sea;
  saveReference(store, inProject);
  EXPECT_EQ(refusal(inProject), texts::nameTaken());
  inProject.projectID = land;
  EXPECT_EQ(refusal(inProject), u"(nothing was thrown)"_s);
  inProject.projectID = newUuid();
  EXPECT_EQ(refusal(inProject), texts::projectUnavailable());
}

TEST_F(SavedReferencesTest, WhatIsGoneCannotBeEdited) {
  SavedReferenceDraft made = draft(u"Tin"_s);
  made.referenceID = newUuid();
  EXPECT_EQ(refusal(made), texts::referenceUnavailable());
  store.close();
  EXPECT_EQ(refusal(draft(u"Tin"_s)), texts::chooseWorkspace());
}

TEST_F(SavedReferencesTest, TheFirstThingThatIsWrongIsTold) {
  SavedReferenceDraft made = draft(u"!!"_s, 9);
  made.kind = u"Product"_s;
  made.projectID = newUuid();
  made.referenceID = newUuid();
  EXPECT_EQ(refusal(made), generation::texts::referenceNames());
  made.name = u"Tin"_s;
  EXPECT_EQ(refusal(made), texts::subjectMissing());
  made.subject = u"a tin"_s;
  EXPECT_EQ(refusal(made), texts::chooseImages());
  made.assetIDs = {newUuid()};
  EXPECT_EQ(refusal(made), texts::imagesUnavailable());
  made.assetIDs = {pictures[0]->id};
  EXPECT_EQ(refusal(made), texts::projectUnavailable());
}

TEST_F(SavedReferencesTest, ASaveThatFailsLeavesEverythingAsItWas) {
  const SavedReferenceRef tin = saved(draft(u"Tin"_s));
  failWrites("INSERT", "SavedReference");
  failWrites("UPDATE", "SavedReference");
  EXPECT_TRUE(refusal(draft(u"Other"_s)).contains(u"disk is full"_s));
  SavedReferenceDraft changed = draft(u"Changed"_s);
  changed.referenceID = tin->id;
  EXPECT_TRUE(refusal(changed).contains(u"disk is full"_s));
  EXPECT_EQ(tin->name, u"Tin"_s);
  EXPECT_EQ(store.savedReferences().size(), 1U);
  EXPECT_FALSE(store.context().hasChanges());
}

TEST_F(SavedReferencesTest, AReferenceMovesWhereItsNameIsFree) {
  const QUuid sea = addProject(u"Sea"_s)->id;
  const SavedReferenceRef tin = saved(draft(u"Tin"_s));
  SavedReferenceDraft other = draft(u"tin"_s);
  other.projectID = sea;
  saveReference(store, other);
  EXPECT_EQ(failureOf([&] { moveReference(store, tin->id, sea); }), texts::nameTaken());
  EXPECT_EQ(failureOf([&] { moveReference(store, tin->id, newUuid()); }), texts::projectUnavailable());
  EXPECT_EQ(failureOf([&] { moveReference(store, newUuid(), sea); }), texts::referenceUnavailable());
  const QUuid land = addProject(u"Land"_s)->id;
  moveReference(store, tin->id, land);
  EXPECT_EQ(tin->projectID, land);
}

TEST_F(SavedReferencesTest, ADeletedReferenceIsGoneAndItsPicturesStay) {
  const SavedReferenceRef tin = saved(draft(u"Tin"_s));
  deleteReference(store, tin->id);
  EXPECT_TRUE(store.savedReferences().empty());
  EXPECT_TRUE(tin->isRemoved());
  EXPECT_FALSE(pictures[0]->isTrashed());
  EXPECT_EQ(failureOf([&] { deleteReference(store, tin->id); }), texts::referenceUnavailable());
}

TEST_F(SavedReferencesTest, SavingMovingAndDeletingCanBeTakenBack) {
  const QUuid sea = addProject(u"Sea"_s)->id;
  const QUuid tin = saveReference(store, draft(u"Tin"_s));
  moveReference(store, tin, sea);
  deleteReference(store, tin);
  applyHistory(store, HistoryDirection::undo);
  ASSERT_TRUE(savedReference(store, tin)) << sorvan::test::text(store.error().value_or(QString()));
  EXPECT_EQ(savedReference(store, tin)->projectID, sea);
  applyHistory(store, HistoryDirection::undo);
  EXPECT_EQ(savedReference(store, tin)->projectID, std::nullopt);
  applyHistory(store, HistoryDirection::undo);
  EXPECT_TRUE(store.savedReferences().empty());
  applyHistory(store, HistoryDirection::redo);
  EXPECT_TRUE(savedReference(store, tin));
}

// ---- Suggesting

TEST_F(SavedReferencesTest, TheProjectsOwnAreSuggestedFirstThenByName) {
  const QUuid sea = addProject(u"Sea"_s)->id;
  const auto save = [&](const QString& name, const std::optional<QUuid>& project) {
    SavedReferenceDraft made = draft(name);
    made.projectID = project;
    saveReference(store, made);
  };
  save(u"beta"_s, {});
  save(u"Alpha"_s, {});
  save(u"Zeta"_s, sea);
  save(u"Elsewhere"_s, addProject(u"Land"_s)->id);
  EXPECT_EQ(suggested(), (QStringList{u"@Alpha · 1 image"_s, u"@beta · 1 image"_s}));
  state.setProject(sea);
  EXPECT_EQ(suggested(), (QStringList{u"@Zeta · 1 image"_s, u"@Alpha · 1 image"_s, u"@beta · 1 image"_s}));
  EXPECT_EQ(referenceSuggestions(store, state)[0].project, u"Sea"_s);
  EXPECT_EQ(savedReferencesIn(store, sea).size(), 3U);
}

TEST_F(SavedReferencesTest, OneWhosePicturesAreAllInTrashIsNotSuggestedUntilOneIsBack) {
  saveReference(store, draft(u"Tin"_s, 2));
  trash(pictures[0]);
  EXPECT_EQ(suggested(), QStringList{u"@Tin · 1 image"_s});
  trash(pictures[1]);
  EXPECT_EQ(suggested(), QStringList());
  trash(pictures[0], false);
  EXPECT_EQ(suggested(), QStringList{u"@Tin · 1 image"_s});
}

TEST_F(SavedReferencesTest, OneThatIsAllAttachedIsNotSuggested) {
  attachReference(store, *saved(draft(u"Tin"_s, 2)), state);
  EXPECT_EQ(suggested(), QStringList());
}

// ---- Attaching

TEST_F(SavedReferencesTest, OnePictureIsAttachedUnderTheName) {
  SavedReferenceDraft made = draft(u"Rose Bottle"_s);
  made.kind = u"Product"_s;
  made.subject = u"a rose bottle"_s;
  attachReference(store, *saved(made), state);
  const std::vector<ReferenceBinding> expected{
      {pictures[0]->id, u"RoseBottle"_s, u"Product"_s, std::nullopt, u"a rose bottle"_s}};
  EXPECT_EQ(state.request().referenceBindings, expected);
  EXPECT_EQ(state.request().referenceIDs, made.assetIDs);
  EXPECT_TRUE(state.isExpanded());
  EXPECT_EQ(state.message(), u"Attached @RoseBottle · 1 image."_s);
}

TEST_F(SavedReferencesTest, SeveralPicturesAreAGroup) {
  attachReference(store, *saved(draft(u"Maya"_s, 3)), state);
  EXPECT_EQ(labels(), (QStringList{u"Maya1"_s, u"Maya2"_s, u"Maya3"_s}));
  EXPECT_EQ(state.request().referenceBindings->front().group, u"Maya"_s);
  EXPECT_EQ(state.request().referenceBindings->front().role, std::nullopt);
  EXPECT_EQ(state.message(), u"Attached @Maya · 3 images."_s);
  GenerationRequest request = state.request();
  request.prompt = u"portrait of @maya"_s;
  EXPECT_TRUE(submittedPrompt(request).startsWith(u"portrait of reference group Maya [reference image 1 (Maya1), "_s));
}

TEST_F(SavedReferencesTest, ATakenNameIsNumberedAsAWhole) {
  state.setReferences({pictures[8]->id}, {{pictures[8]->id, u"tin"_s, {}, {}, {}}});
  const SavedReferenceRef tin = saved(draft(u"Tin"_s));
  attachReference(store, *tin, state);
  EXPECT_EQ(labels(), (QStringList{u"tin"_s, u"Tin_2"_s}));
}

TEST_F(SavedReferencesTest, AGroupNeedsItsOwnNameToo) {
  state.setReferences({pictures[8]->id}, {{pictures[8]->id, u"Maya"_s, {}, {}, {}}});
  attachReference(store, *saved(draft(u"Maya"_s, 2)), state);
  EXPECT_EQ(labels(), (QStringList{u"Maya"_s, u"Maya_21"_s, u"Maya_22"_s}));
  EXPECT_EQ(state.request().referenceBindings->back().group, u"Maya_2"_s);
}

TEST_F(SavedReferencesTest, WhatIsInTheWayOfAttachingIsTold) {
  const SavedReferenceRef tin = saved(draft(u"Tin"_s, 2));
  trash(pictures[0]);
  trash(pictures[1]);
  EXPECT_EQ(attachRefusal(tin), texts::imagesMissing());
  trash(pictures[0], false);
  trash(pictures[1], false);
  state.setReferences({pictures[1]->id}, {});
  EXPECT_EQ(attachRefusal(tin), texts::groupAttached());
  std::vector<QUuid> seven;
  for (std::size_t index = 2; index < 9; ++index) seven.push_back(pictures[index]->id);
  state.setReferences(seven, {});
  EXPECT_EQ(attachRefusal(tin), texts::eightImagesPerPrompt());
  EXPECT_EQ(state.request().referenceIDs, seven);
  state.setReferences({}, {});
  EXPECT_EQ(attachRefusal(saved(draft(QString(48, u'a')))), texts::shortenName());
  EXPECT_EQ(attachRefusal(saved(draft(QString(47, u'b')))), u"(nothing was thrown)"_s);
}

TEST_F(SavedReferencesTest, TheNameOfAPictureThatWasTakenAwayIsInUse) {
  state.setText(u"with @Tin"_s);
  state.setReferences({}, {{pictures[8]->id, u"Tin"_s, {}, {}, {}}});
  attachReference(store, *saved(draft(u"Tin"_s)), state);
  EXPECT_EQ(labels(), (QStringList{u"Tin"_s, u"Tin_2"_s}));
  // The picture itself comes back under the saved name.
  state.setReferences({}, {{pictures[0]->id, u"Old"_s, {}, {}, {}}});
  attachReference(store, *savedReferencesIn(store, {}).front(), state);
  EXPECT_EQ(labels(), QStringList{u"Tin"_s});
}

TEST_F(SavedReferencesTest, AMentionOfASavedReferenceAttachesItOrSaysWhyNot) {
  const SavedReferenceRef tin = saved(draft(u"Tin"_s));
  EXPECT_EQ(attachMentioned(store, tin->id, state), u"Tin"_s);
  EXPECT_EQ(attachMentioned(store, tin->id, state), std::nullopt);
  EXPECT_EQ(state.message(), texts::groupAttached());
  EXPECT_TRUE(state.messageIsError());
  EXPECT_EQ(attachMentioned(store, newUuid(), state), std::nullopt);
}

TEST_F(SavedReferencesTest, APictureTrashedAfterAttachingIsNotAttachedAgain) {
  const SavedReferenceRef maya = saved(draft(u"Maya"_s, 3));
  trash(pictures[1]);
  attachReference(store, *maya, state);
  EXPECT_EQ(state.request().referenceIDs, (std::vector<QUuid>{pictures[0]->id, pictures[2]->id}));
  EXPECT_EQ(labels(), (QStringList{u"Maya1"_s, u"Maya2"_s}));
}

// ---- Before items go to Trash

TEST_F(SavedReferencesTest, TheUserIsWarnedOfReferencesAndSheetsThatLoseTheirPictures) {
  EXPECT_EQ(trashWarning(store, {pictures[0]->id}), std::nullopt);
  saveReference(store, draft(u"Tin"_s));
  saveReference(store, draft(u"Maya"_s, 2));
  EXPECT_EQ(trashWarning(store, {pictures[0]->id}),
            u"This item is used by Maya, Tin. One reference will have no images left and cannot be attached."_s);
  store.context().insert(ContactSheet({}, u"Sheet"_s, {}, {pictures[0]->id, pictures[1]->id}, clock->now()));
  store.save(LibraryTables::contactSheets);
  EXPECT_EQ(trashWarning(store, {pictures[0]->id, pictures[1]->id}),
            u"These items are used by Maya, Tin. 2 references will have no images left and cannot be attached. One "
            "contact sheet will have fewer than two items left and will be hidden."_s);
  for (int number = 0; number < 3; ++number) saveReference(store, draft(u"More%1"_s.arg(number), 2));
  EXPECT_TRUE(trashWarning(store, {pictures[1]->id})->contains(u" and 1 more."_s));
}

}  // namespace
}  // namespace sorvan::composer
