#include "shell/views/prompt_mentions.h"

#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextLayout>

#include "composer/attach_items.h"
#include "composer/saved_references.h"
#include "shell/desk.h"
#include "shell/views/composer_dock.h"
#include "shell/views/thumbnail_store.h"
#include "support/made_pictures.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class PromptMentionsTest : public Dressed {
 protected:
  PromptMentionsTest() {
    show(window, {1000, 700});
    prompt.setGeometry(100, 500, 600, 100);
    prompt.show();
    QObject::connect(&prompt, &PromptEdit::edited, &desk.composer,
                     [this](const QString& text) { desk.composer.editDraft(text); });
    QObject::connect(&desk.composer, &ComposerPresenter::draftReplaced, &prompt, &PromptEdit::setDraft);
    prompt.setFocus();
    test::runPosted();
  }
  core::AssetRef addPicture(const QString& name) {
    const QString path = u"Inbox/references/"_s + name;
    desk.folder.write(u"Workspace/"_s + path, test::encoded(test::cornerMarked({16, 16}), "PNG"));
    const core::MediaMetadata metadata{core::MediaType::image, 16, 16, {}, 100, u"image/png"_s};
    const core::AssetRef asset =
        desk.store.context().insert(core::Asset({}, core::MediaType::image, path, name, metadata, desk.store.now()));
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{asset}, {}, {}, {}});
    return asset;
  }
  void attach(const QString& label) {
    const core::AssetRef asset = addPicture(label + u".png"_s);
    desk.references.attachItems({asset->id});
    ASSERT_TRUE(desk.references.rename(asset->id, label));
  }
  void saveCharacter(const QString& name, int pictures) {
    SavedReferenceDraft draft;
    draft.name = name;
    draft.kind = u"Character"_s;
    draft.subject = u"a young woman"_s;
    for (int number = 0; number < pictures; ++number)
      draft.assetIDs.push_back(addPicture(name + QString::number(number) + u".png"_s)->id);
    composer::saveReference(desk.store, draft);
  }
  void type(const QString& text) {
    QTest::keyClicks(&prompt, text);
    test::runPosted();
  }
  // Sends a text as an input method commits it, which works for every script.
  void commit(const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&prompt, &event);
    test::runPosted();
  }
  void compose(const QString& preedit) {
    QInputMethodEvent event(preedit, {});
    QApplication::sendEvent(&prompt, &event);
    test::runPosted();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&prompt, key, modifiers);
    test::runPosted();
  }
  QStringList offered() {
    QStringList names;
    if (mentions.isOpen())
      for (const MentionChoice& choice : mentions.popup()->list().choices()) names << choice.handle;
    return names;
  }
  std::string text() const { return prompt.toPlainText().toStdString(); }

  test::Desk desk;
  QWidget window;
  ThumbnailStore thumbnails;
  PromptEdit prompt{u"Prompt"_s, &window};
  PromptMentions& mentions = *new PromptMentions(prompt, desk.references, thumbnails);
};

TEST_F(PromptMentionsTest, AnAtSignOpensTheListOnTheNextTurnAndTypingNarrowsIt) {
  attach(u"Tin"_s);
  attach(u"Look"_s);
  QTest::keyClicks(&prompt, u"the @"_s);
  EXPECT_FALSE(mentions.isOpen());
  test::runPosted();
  EXPECT_EQ(offered(), (QStringList{u"Tin"_s, u"Look"_s}));
  type(u"l"_s);
  EXPECT_EQ(offered(), (QStringList{u"Look"_s}));
  type(u"x"_s);
  EXPECT_FALSE(mentions.isOpen());
}

TEST_F(PromptMentionsTest, ArrowsWalkThroughTheListAndEnterTakesTheName) {
  attach(u"Tin"_s);
  attach(u"Look"_s);
  QSignalSpy submitted(&prompt, &PromptEdit::submitted);
  type(u"a @"_s);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(text(), "a @Look");
  EXPECT_EQ(prompt.textCursor().position(), 7);
  EXPECT_FALSE(mentions.isOpen());
  EXPECT_EQ(submitted.count(), 0);
  press(Qt::Key_Return);
  EXPECT_EQ(submitted.count(), 1);
}

TEST_F(PromptMentionsTest, TabTakesTheNameAndKeepsTheKeyboardInThePrompt) {
  attach(u"Tin"_s);
  type(u"@t"_s);
  press(Qt::Key_Tab);
  EXPECT_EQ(text(), "@Tin");
  EXPECT_TRUE(prompt.hasFocus());
}

TEST_F(PromptMentionsTest, EscapeClosesTheListForThisMentionOnly) {
  attach(u"Tin"_s);
  QSignalSpy escaped(&prompt, &PromptEdit::escapePressed);
  type(u"@"_s);
  press(Qt::Key_Escape);
  EXPECT_FALSE(mentions.isOpen());
  EXPECT_EQ(escaped.count(), 0);
  type(u"t"_s);
  EXPECT_FALSE(mentions.isOpen());
  type(u" @"_s);
  EXPECT_TRUE(mentions.isOpen());
}

TEST_F(PromptMentionsTest, APressOfTheMouseTakesTheName) {
  attach(u"Tin"_s);
  attach(u"Look"_s);
  type(u"@"_s);
  MentionList& list = mentions.popup()->list();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.cellRect(1).center());
  EXPECT_EQ(text(), "@Look");
}

TEST_F(PromptMentionsTest, NothingOpensWhileAnInputMethodComposes) {
  attach(u"Tin"_s);
  type(u"@"_s);
  ASSERT_TRUE(mentions.isOpen());
  compose(u"に"_s);
  EXPECT_FALSE(mentions.isOpen());
  EXPECT_EQ(text(), "@");
  compose(u"にほ"_s);
  EXPECT_FALSE(mentions.isOpen());
  EXPECT_EQ(prompt.textCursor().block().layout()->preeditAreaText().toStdString(), "にほ");
}

TEST_F(PromptMentionsTest, AnEnterThatEndsAComposingSubmitsNothing) {
  QSignalSpy submitted(&prompt, &PromptEdit::submitted);
  compose(u"に"_s);
  QTest::keyClick(&prompt, Qt::Key_Return);
  QInputMethodEvent event;
  event.setCommitString(u"二"_s);
  QApplication::sendEvent(&prompt, &event);
  QTest::keyClick(&prompt, Qt::Key_Return);
  EXPECT_EQ(submitted.count(), 0);
  EXPECT_EQ(text(), "二");
  test::runPosted();
  press(Qt::Key_Return);
  EXPECT_EQ(submitted.count(), 1);
}

TEST_F(PromptMentionsTest, AHeldDownEnterSubmitsOnce) {
  QSignalSpy submitted(&prompt, &PromptEdit::submitted);
  type(u"a"_s);
  press(Qt::Key_Return);
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
  QApplication::sendEvent(&prompt, &held);
  EXPECT_EQ(submitted.count(), 1);
}

TEST_F(PromptMentionsTest, NamesInScriptsWithoutCaseAreOffered) {
  attach(u"東京"_s);
  attach(u"सीता"_s);
  commit(u"नमस्ते @सी"_s);
  EXPECT_EQ(offered(), (QStringList{u"सीता"_s}));
  press(Qt::Key_Return);
  EXPECT_EQ(text(), "नमस्ते @सीता");
  ASSERT_EQ(prompt.marks().size(), 1u);
  EXPECT_TRUE(prompt.marks()[0].attached);
  commit(u" @東"_s);
  EXPECT_EQ(offered(), (QStringList{u"東京"_s}));
}

TEST_F(PromptMentionsTest, AnEmojiBeforeTheSignIsNoPartOfAName) {
  attach(u"Tin"_s);
  commit(u"😀@t"_s);
  ASSERT_EQ(offered(), (QStringList{u"Tin"_s}));
  press(Qt::Key_Return);
  EXPECT_EQ(text(), "😀@Tin");
  EXPECT_EQ(prompt.textCursor().position(), 6);
}

TEST_F(PromptMentionsTest, AnAddressOffersAndMarksNothing) {
  attach(u"Example"_s);
  type(u"write to me@exam"_s);
  EXPECT_FALSE(mentions.isOpen());
  type(u"ple.org"_s);
  EXPECT_TRUE(prompt.marks().empty());
}

TEST_F(PromptMentionsTest, AMentionOfFortyEightCharactersIsKnownAndOneOfFortyNineIsNot) {
  const QString longest(48, u'a');
  attach(longest);
  const core::AssetRef other = addPicture(u"other.png"_s);
  ASSERT_TRUE(desk.references.attachItems({other->id}));
  EXPECT_FALSE(desk.references.rename(other->id, QString(49, u'b')));
  EXPECT_TRUE(desk.composing.messageIsError());
  commit(u"@"_s + longest + u" and @"_s + longest + u"a "_s);
  ASSERT_EQ(prompt.marks().size(), 2u);
  EXPECT_TRUE(prompt.marks()[0].attached);
  EXPECT_FALSE(prompt.marks()[1].attached);
}

TEST_F(PromptMentionsTest, ASavedReferenceIsAttachedBeforeItsNameIsInserted) {
  saveCharacter(u"Maya"_s, 1);
  type(u"with @ma"_s);
  ASSERT_EQ(offered(), (QStringList{u"Maya"_s}));
  press(Qt::Key_Return);
  EXPECT_EQ(text(), "with @Maya");
  EXPECT_EQ(desk.composing.request().referenceIDs.size(), 1u);
  EXPECT_EQ(desk.composing.message().toStdString(), "Attached @Maya · 1 image.");
  ASSERT_EQ(prompt.marks().size(), 1u);
  EXPECT_TRUE(prompt.marks()[0].attached);
}

TEST_F(PromptMentionsTest, AnAttachmentThatFailsLeavesTheTextAsItWas) {
  saveCharacter(u"Maya"_s, 2);
  for (int number = 0; number < 7; ++number) attach(u"P%1"_s.arg(number));
  type(u"@ma"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(text(), "@ma");
  EXPECT_EQ(desk.composing.message().toStdString(), "Use up to 8 reference images per prompt.");
}

TEST_F(PromptMentionsTest, WithNothingToOfferTheListSaysHowToBegin) {
  type(u"@"_s);
  ASSERT_TRUE(mentions.isOpen());
  EXPECT_TRUE(offered().isEmpty());
  QSignalSpy submitted(&prompt, &PromptEdit::submitted);
  press(Qt::Key_Return);
  EXPECT_EQ(submitted.count(), 0);
  type(u"x"_s);
  press(Qt::Key_Escape);
  EXPECT_FALSE(mentions.isOpen());
}

TEST_F(PromptMentionsTest, ASelectionAndALostKeyboardCloseTheList) {
  attach(u"Tin"_s);
  type(u"a @"_s);
  press(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_FALSE(mentions.isOpen());
  press(Qt::Key_End);
  type(u" @"_s);
  ASSERT_TRUE(mentions.isOpen());
  prompt.clearFocus();
  EXPECT_FALSE(mentions.isOpen());
}

TEST_F(PromptMentionsTest, TheFieldsOwnUndoTakesAnInsertedNameBack) {
  attach(u"Tin"_s);
  type(u"a @t"_s);
  press(Qt::Key_Return);
  ASSERT_EQ(text(), "a @Tin");
  prompt.undo();
  EXPECT_EQ(text(), "a @t");
}

TEST_F(PromptMentionsTest, ARenamedReferenceIsRenamedInTheTextWithCursorAndUndoKept) {
  attach(u"Tin"_s);
  type(u"one @Tin two"_s);
  QTextCursor cursor = prompt.textCursor();
  cursor.setPosition(2);
  prompt.setTextCursor(cursor);
  ASSERT_TRUE(desk.references.rename(desk.composing.request().referenceIDs.front(), u"Can"_s));
  EXPECT_EQ(text(), "one @Can two");
  EXPECT_EQ(prompt.textCursor().position(), 2);
  prompt.undo();
  EXPECT_EQ(text(), "one @Tin two");
}

TEST_F(PromptMentionsTest, AnUnknownNameIsMarkedOnceItIsLeftAndToldInWords) {
  attach(u"Tin"_s);
  type(u"@Tim"_s);
  EXPECT_TRUE(prompt.marks().empty());
  type(u" "_s);
  ASSERT_EQ(prompt.marks().size(), 1u);
  EXPECT_FALSE(prompt.marks()[0].attached);
  EXPECT_EQ(prompt.accessibleDescription().toStdString(),
            "@Tim is not attached. Add that reference or remove its mention before generating.");
  ASSERT_TRUE(desk.references.rename(desk.composing.request().referenceIDs.front(), u"Tim"_s));
  EXPECT_TRUE(prompt.marks()[0].attached);
  EXPECT_TRUE(prompt.accessibleDescription().isEmpty());
}

TEST_F(PromptMentionsTest, MarksArePaintedBehindTheirWordsAndNowhereElse) {
  attach(u"Tin"_s);
  commit(u"@Tin is here, on a long line that wraps: @Tin"_s);
  const auto colourAt = [this](int position) {
    const QRect place = prompt.rectOf(position);
    return prompt.viewport()->grab().toImage().pixelColor(place.left() + 1, place.top() + 3);
  };
  EXPECT_NE(colourAt(1), colourAt(7));
  EXPECT_EQ(colourAt(1), colourAt(42));
}

TEST_F(PromptMentionsTest, APastedMegabyteWithManySignsIsTakenWithoutAList) {
  const QString text = u"a harbour @ dusk "_s.repeated(1 << 16);
  commit(text);
  EXPECT_EQ(prompt.toPlainText().size(), text.size());
  EXPECT_FALSE(mentions.isOpen());
  EXPECT_TRUE(prompt.marks().empty());
}

}  // namespace
}  // namespace sorvan::views
