// Attaching, importing, naming and saving references, as the window asks for it.
#include <QDir>

#include "composer/saved_references.h"
#include "core/history.h"
#include "exchange/trash.h"
#include "generation/generation_request.h"
#include "shell/desk.h"
#include "shell/library_saved_references.h"
#include "support/made_pictures.h"

#include <gtest/gtest.h>

namespace sorvan::shell {
namespace {

using namespace Qt::StringLiterals;

QByteArray png(int width) { return test::encoded(test::cornerMarked({width, 16}), "PNG"); }

struct ReferencesTest : testing::Test {
  test::Desk desk;
  LibraryReferences& references = desk.references;
  LibrarySavedReferences saved{{desk.store, desk.composing, desk.state, desk.alerts, desk.references,
                                [this](const QString& search, std::size_t most) {
                                  return newestPictures(desk.store, desk.gallery.index(), search, most);
                                }}};

  QString file(const QString& name, const QByteArray& bytes) {
    desk.folder.write(u"outside/"_s + name, bytes);
    return desk.folder / (u"outside/"_s + name);
  }
  QStringList pictures(int count) {
    QStringList files;
    for (int number = 0; number < count; ++number)
      files << file(u"picture-%1.png"_s.arg(number), png(20 + number));
    return files;
  }
  void bring(const QStringList& files) {
    references.importFiles(files);
    test::runUntil([this] { return !references.isImporting(); });
  }
  const std::vector<QUuid>& attached() const { return desk.composing.request().referenceIDs; }
  QStringList names() const {
    QStringList all;
    for (const auto& reference : desk.composer.display().references) all << reference.name;
    return all;
  }
  std::string message() const { return desk.composing.message().toStdString(); }
  SavedReferenceDraft draftOf(const QString& name, const std::vector<QUuid>& items) {
    SavedReferenceDraft draft = saved.newDraft(ReferenceScope::global, items);
    draft.name = name;
    return draft;
  }
};

TEST_F(ReferencesTest, ChosenFilesAreImportedAndAttachedInTheirOrderAndOneUndoTakesThemBack) {
  bring(pictures(3));
  EXPECT_EQ(names(), (QStringList{u"@Reference1"_s, u"@Reference2"_s, u"@Reference3"_s}));
  EXPECT_EQ(desk.store.asset(attached()[1])->originalFilename.toStdString(), "picture-1.png");
  EXPECT_EQ(message(), "References attached · Files saved in Inbox. Type @ to use them in your prompt.");
  EXPECT_EQ(references.countText().toStdString(), "3 of 8 attached");
  EXPECT_FALSE(desk.store.isImporting());
  ASSERT_EQ(desk.store.history().undo().size(), 1u);
  core::applyHistory(desk.store, core::HistoryDirection::undo);
  for (const QUuid& id : attached()) EXPECT_TRUE(desk.store.asset(id)->isTrashed());
}

TEST_F(ReferencesTest, FilesThatAreNoPicturesArePassedOverInSilence) {
  bring({file(u"notes.txt"_s, "words"), file(u"song.mp3"_s, "no song")});
  EXPECT_TRUE(attached().empty());
  EXPECT_EQ(message(), "");
}

TEST_F(ReferencesTest, NineAreRefusedTogetherAndNothingIsAdded) {
  bring(pictures(6));
  bring({file(u"a.png"_s, png(60)), file(u"b.png"_s, png(61)), file(u"c.png"_s, png(62))});
  EXPECT_EQ(attached().size(), 6u);
  EXPECT_EQ(desk.store.assets().size(), 6u);
  EXPECT_EQ(message(), "Use up to 8 reference images. Remove an attachment before adding more.");
  EXPECT_TRUE(desk.composing.messageIsError());
}

TEST_F(ReferencesTest, ASecondImportWaitsForTheFirst) {
  references.importFiles(pictures(1));
  ASSERT_TRUE(references.isImporting());
  EXPECT_TRUE(desk.store.isImporting());
  references.importFiles({file(u"late.png"_s, png(70))});
  EXPECT_EQ(message(), "Wait for the current import to finish.");
  test::runUntil([this] { return !references.isImporting(); });
  EXPECT_EQ(attached().size(), 1u);
  EXPECT_FALSE(desk.store.isImporting());
}

TEST_F(ReferencesTest, NothingIsSubmittedWhilePicturesComeIn) {
  desk.composer.editDraft(u"a fox"_s);
  references.importFiles(pictures(1));
  EXPECT_TRUE(desk.composer.display().submitBusy);
  EXPECT_EQ(desk.composer.display().notices.back().text.toStdString(), "Importing reference images…");
  desk.composer.submit();
  test::runUntil([this] { return !references.isImporting(); });
  EXPECT_FALSE(desk.composer.display().submitBusy);
  EXPECT_TRUE(desk.store.jobs().empty());
}

TEST_F(ReferencesTest, AFileThatFailsIsNamedAndWhatCameBeforeItStays) {
  const QByteArray whole = png(64);
  bring({file(u"good.png"_s, whole), file(u"cut.png"_s, whole.chopped(30)), file(u"late.png"_s, png(65))});
  EXPECT_EQ(attached().size(), 1u);
  EXPECT_EQ(message(), "cut.png: This image could not be read.");
  EXPECT_FALSE(references.isImporting());
  EXPECT_FALSE(desk.store.isImporting());
  EXPECT_EQ(desk.store.history().undo().size(), 1u);
}

TEST_F(ReferencesTest, AnImportCanBeStopped) {
  references.importFiles(pictures(2));
  references.cancelImport();
  test::runUntil([this] { return !references.isImporting(); });
  EXPECT_LT(attached().size(), 2u);
  EXPECT_FALSE(desk.composing.messageIsError());
  EXPECT_FALSE(desk.store.isImporting());
}

TEST_F(ReferencesTest, APastedPictureIsAttachedOnceAndCopiedOnce) {
  const QImage picture = test::cornerMarked({33, 17});
  for (int time = 0; time < 2; ++time) {
    references.importPicture(picture);
    test::runUntil([this] { return !references.isImporting(); });
  }
  EXPECT_EQ(attached().size(), 1u);
  EXPECT_EQ(desk.store.assets().size(), 1u);
  EXPECT_EQ(desk.store.asset(attached().front())->sourceType(), core::AssetSourceType::clipboard);
}

TEST_F(ReferencesTest, WhatTheLibraryHoldsIsAttachedWithoutACopy) {
  bring(pictures(1));
  references.detach(attached().front());
  ASSERT_TRUE(attached().empty());
  bring(pictures(1));
  EXPECT_EQ(attached().size(), 1u);
  EXPECT_EQ(desk.store.assets().size(), 1u);
}

TEST_F(ReferencesTest, ThePanelShowsPicturesAndSearchesThem) {
  bring(pictures(2));
  AttachPanel panel = references.attachPanel(ReferenceSource::gallery, {});
  ASSERT_EQ(panel.tiles.size(), 2u);
  EXPECT_TRUE(panel.tiles[0].attached);
  references.toggleItem(panel.tiles[0].id);
  EXPECT_EQ(attached().size(), 1u);
  test::runUntil([this] { return desk.gallery.index().searchIsComplete(); });
  panel = references.attachPanel(ReferenceSource::gallery, u"picture-0"_s);
  EXPECT_EQ(panel.tiles.size(), 1u);
  panel = references.attachPanel(ReferenceSource::gallery, u"nothing like it"_s);
  EXPECT_TRUE(panel.tiles.empty());
  EXPECT_EQ(panel.emptyText.toStdString(), "No picture matches this search.");
}

TEST_F(ReferencesTest, ReferencesMoveAndTakePartsAndNames) {
  bring(pictures(3));
  const std::vector<QUuid> before = attached();
  references.move(before[2], 0);
  EXPECT_EQ(attached().front(), before[2]);
  references.setRole(before[0], u"Style"_s);
  EXPECT_EQ(references.roleOf(before[0]).toStdString(), "Style");
  EXPECT_TRUE(references.rename(before[0], u"Rose Bottle"_s));
  EXPECT_EQ(references.roleOf(before[0]).toStdString(), "Style");
  EXPECT_FALSE(references.rename(before[1], u"rose bottle"_s));
  EXPECT_EQ(message(), "Give each reference a unique name starting with a letter (up to 48 letters or numbers).");
  EXPECT_EQ(names(), (QStringList{u"@Reference3"_s, u"@RoseBottle"_s, u"@Reference2"_s}));
}

TEST_F(ReferencesTest, ATrashedReferenceIsRefusedWhenGenerateIsPressed) {
  bring(pictures(1));
  ASSERT_TRUE(exchange::trash(desk.store, {desk.store.asset(attached().front())}));
  desk.generate(u"a fox"_s);
  EXPECT_TRUE(desk.composing.messageIsError());
  EXPECT_TRUE(desk.store.jobs().empty());
}

TEST_F(ReferencesTest, OneThatIsSavedComesBackByItsNameWithKindAndSubject) {
  bring(pictures(2));
  SavedReferenceDraft draft = draftOf(u"Maya"_s, attached());
  draft.kind = u"Character"_s;
  draft.subject = u"a young woman"_s;
  ASSERT_FALSE(saved.save(draft));
  desk.composing.reset();
  const ReferencePage page = saved.page(ReferenceScope::global, u"All"_s, {});
  ASSERT_EQ(page.cards.size(), 1u);
  EXPECT_EQ(page.cards[0].line.toStdString(), "a young woman · 2 images");
  EXPECT_EQ(page.countText.toStdString(), "1 reference");
  saved.attach(page.cards[0].id);
  EXPECT_EQ(names(), (QStringList{u"@Maya1"_s, u"@Maya2"_s}));
  EXPECT_EQ(message(), "Attached @Maya · 2 images.");
}

TEST_F(ReferencesTest, WhatIsWrongIsToldAtItsField) {
  bring(pictures(1));
  const auto fieldOf = [&](SavedReferenceDraft draft) { return saved.save(draft).value().field; };
  EXPECT_EQ(fieldOf(draftOf(u"1"_s, attached())), ReferenceField::name);
  EXPECT_EQ(fieldOf(draftOf(u"Maya"_s, {})), ReferenceField::images);
  SavedReferenceDraft product = draftOf(u"Tin"_s, attached());
  product.kind = u"Product"_s;
  EXPECT_EQ(fieldOf(product), ReferenceField::subject);
  product.subject = QString(121, u'x');
  EXPECT_EQ(fieldOf(product), ReferenceField::subject);
  product.subject = QString(120, u'x');
  EXPECT_FALSE(saved.save(product));
  EXPECT_EQ(saved.save(draftOf(u" tin "_s, attached()))->text.toStdString(),
            "A reference with this name already exists in this scope.");
  SavedReferenceDraft away = draftOf(u"Far"_s, attached());
  away.projectID = QUuid::createUuid();
  EXPECT_EQ(fieldOf(away), ReferenceField::scope);
}

TEST_F(ReferencesTest, AReferenceWithAllPicturesInTrashStaysListedAndIsNotSuggested) {
  bring(pictures(1));
  ASSERT_FALSE(saved.save(draftOf(u"Look"_s, attached())));
  const core::AssetRef picture = desk.store.asset(attached().front());
  desk.composing.reset();
  ASSERT_TRUE(references.mentionOffer(u"@"_s, 1)->groups.size() == 1);
  ASSERT_TRUE(exchange::trash(desk.store, {picture}));
  const ReferencePage page = saved.page(ReferenceScope::global, {}, {});
  ASSERT_EQ(page.cards.size(), 1u);
  EXPECT_EQ(page.cards[0].problem.toStdString(),
            "This reference's images are missing or in Trash. Restore one, or edit the reference and choose others.");
  EXPECT_TRUE(references.mentionOffer(u"@"_s, 1)->groups.empty());
  saved.attach(page.cards[0].id);
  EXPECT_TRUE(desk.composing.messageIsError());
  ASSERT_TRUE(exchange::restore(desk.store, {picture}, exchange::Rejoin::everywhere));
  EXPECT_FALSE(references.mentionOffer(u"@"_s, 1)->groups.empty());
}

TEST_F(ReferencesTest, ADeletedReferenceCanBeTakenBackFromItsCard) {
  bring(pictures(1));
  ASSERT_FALSE(saved.save(draftOf(u"Look"_s, attached())));
  const QUuid id = saved.page(ReferenceScope::global, {}, {}).cards[0].id;
  saved.remove(id);
  EXPECT_TRUE(saved.page(ReferenceScope::global, {}, {}).cards.empty());
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_EQ(saved.page(ReferenceScope::global, {}, {}).cards.size(), 1u);
}

TEST_F(ReferencesTest, KeepingWhatIsAttachedOpensTheEditorWithIt) {
  bring(pictures(2));
  std::optional<SavedReferenceDraft> asked;
  QObject::connect(&saved, &SavedReferencesPresenter::editorRequested, &saved,
                   [&](const SavedReferenceDraft& draft) { asked = draft; });
  references.saveAttached();
  ASSERT_TRUE(asked);
  EXPECT_EQ(asked->assetIDs, attached());
  EXPECT_FALSE(asked->projectID);
}

}  // namespace
}  // namespace sorvan::shell
