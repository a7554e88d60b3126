// The field for prompts under texts that nobody writes by hand.
#include "shell/views/prompt_edit.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QDropEvent>
#include <QGlyphRun>
#include <QMimeData>
#include <QRawFont>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextLayout>

#include "shell/composer_presenter.h"
#include "support/run_task.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class PromptEditTest : public Dressed {
 protected:
  PromptEditTest() {
    show(window, {1000, 700});
    prompt.setGeometry(100, 500, 600, 100);
    prompt.show();
    prompt.setFocus();
  }
  void paste(const QString& text) {
    auto* data = new QMimeData;
    data->setText(text);
    QApplication::clipboard()->setMimeData(data);
    prompt.paste();
  }
  QPoint placeOf(int position) const {
    const QRect caret = prompt.rectOf(position);
    return {caret.left(), caret.center().y()};
  }
  // A drop at that character; what its program is told to do with its text then. Shift proposes to move it.
  Qt::DropAction drop(const QMimeData& data, int position, Qt::KeyboardModifiers modifiers = Qt::ShiftModifier) {
    const Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction;
    const QPoint place = placeOf(position);
    QDragEnterEvent enter(place, offered, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(prompt.viewport(), &enter);
    QDragMoveEvent move(place, offered, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(prompt.viewport(), &move);
    shown = move.dropAction();
    QDropEvent event(place, offered, &data, Qt::LeftButton, modifiers);
    EXPECT_EQ(event.proposedAction(), modifiers == Qt::ShiftModifier ? Qt::MoveAction : Qt::CopyAction);
    QApplication::sendEvent(prompt.viewport(), &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
  }
  Qt::DropAction drop(const QString& text, int position) {
    QMimeData data;
    data.setText(text);
    return drop(data, position);
  }
  // The prompt's own drag of its selection: what it takes along is made as for a copy.
  Qt::DropAction dragSelection(int position, Qt::KeyboardModifiers modifiers) {
    prompt.copy();
    return drop(*QApplication::clipboard()->mimeData(), position, modifiers);
  }
  void select(int from, int to) {
    QTextCursor cursor(prompt.document());
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    prompt.setTextCursor(cursor);
  }

  Qt::DropAction shown = Qt::IgnoreAction;  // what the last drag was told before its drop
  QWidget window;
  PromptEdit prompt{u"Prompt"_s, &window};
};

TEST_F(PromptEditTest, AMegabyteWithoutABlankIsNotPastedAndWhatWasThereStays) {
  paste(u"a red boat"_s);
  QSignalSpy refused(&prompt, &PromptEdit::pasteRefused);
  QSignalSpy edited(&prompt, &PromptEdit::edited);
  paste(QString(1 << 20, u'x'));
  EXPECT_EQ(prompt.toPlainText(), u"a red boat"_s);
  ASSERT_EQ(refused.count(), 1);
  EXPECT_EQ(refused.front().front().value<qsizetype>(), (1 << 20) + 10);
  EXPECT_EQ(edited.count(), 0);
  EXPECT_EQ(QApplication::clipboard()->text().size(), 1 << 20) << "it is still there to be taken elsewhere";
}

TEST_F(PromptEditTest, TheLongestTextIsPastedAndOneMoreCharacterIsNot) {
  QSignalSpy refused(&prompt, &PromptEdit::pasteRefused);
  paste(u"a fox, "_s.repeated(longestPastedPrompt / 7 + 1).left(longestPastedPrompt));
  EXPECT_EQ(prompt.toPlainText().size(), longestPastedPrompt);
  EXPECT_EQ(refused.count(), 0);
  paste(u"x"_s);
  EXPECT_EQ(prompt.toPlainText().size(), longestPastedPrompt);
  EXPECT_EQ(refused.count(), 1);
}

TEST_F(PromptEditTest, APasteThatMakesATooLongTextShorterIsTaken) {
  prompt.setDraft(u"a fox, "_s.repeated(longestPastedPrompt));
  prompt.selectAll();
  paste(u"short"_s);
  EXPECT_EQ(prompt.toPlainText(), u"short"_s);
}

TEST_F(PromptEditTest, AScriptThatTheInterfaceHasNoFontForNamesTheOneThatDrawsIt) {
  const QString before = prompt.font().families().join(u',');
  prompt.setDraft(u"東京の朝, 서울"_s);
  test::runPosted();
  for (const QGlyphRun& run : prompt.document()->firstBlock().layout()->glyphRuns())
    EXPECT_TRUE(prompt.font().families().contains(run.rawFont().familyName())) << run.rawFont().familyName().toStdString();
  EXPECT_TRUE(prompt.font().families().join(u',').startsWith(before)) << "the interface's own come first";
  const QFont named = prompt.font();
  prompt.setDraft(u"東京の夜"_s);
  EXPECT_EQ(prompt.font(), named);
}

// Looked for between words, its line ends cost a minute.
TEST_F(PromptEditTest, AMegabyteWithoutABlankThatWasKeptIsBrokenAnywhere) {
  QList<QTextOption::WrapMode> laidOut;
  QObject::connect(prompt.document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, &window,
                   [&] { laidOut << prompt.wordWrapMode(); });
  prompt.setDraft(QString(1 << 20, u'x'));
  test::runPosted();
  EXPECT_EQ(prompt.toPlainText().size(), 1 << 20);
  EXPECT_FALSE(laidOut.isEmpty());
  EXPECT_EQ(laidOut.count(QTextOption::WrapAnywhere), laidOut.size()) << "it was never laid out between words";
  EXPECT_GT(prompt.document()->firstBlock().layout()->lineCount(), 1000);
  prompt.setDraft(u"a red boat"_s);
  EXPECT_EQ(prompt.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

TEST_F(PromptEditTest, ATextThatIsDroppedIsCopiedWhateverItsProgramProposes) {
  prompt.setDraft(u"a boat"_s);
  EXPECT_EQ(drop(u"red "_s, 2), Qt::CopyAction);
  EXPECT_EQ(shown, Qt::CopyAction);
  EXPECT_EQ(prompt.toPlainText(), u"a red boat"_s);
}

TEST_F(PromptEditTest, ADropThatIsTooLongIsRefusedAndItsProgramKeepsItsText) {
  const QString full = u"a fox, "_s.repeated(longestPastedPrompt / 7);
  prompt.setDraft(full);
  QSignalSpy refused(&prompt, &PromptEdit::pasteRefused);
  QSignalSpy edited(&prompt, &PromptEdit::edited);
  EXPECT_EQ(drop(QString(1000, u'x'), 4), Qt::IgnoreAction);
  EXPECT_EQ(prompt.toPlainText(), full);
  ASSERT_EQ(refused.count(), 1);
  EXPECT_EQ(refused.front().front().value<qsizetype>(), full.size() + 1000);
  EXPECT_EQ(edited.count(), 0);
  EXPECT_EQ(drop(u"y"_s, 0), Qt::CopyAction) << "what fits is taken afterwards";
  EXPECT_EQ(prompt.toPlainText(), u'y' + full);
}

TEST_F(PromptEditTest, TextOfATooLongPromptIsMovedInItByADragWithoutLosingACharacter) {
  const QString boats = u"a red boat "_s.repeated(4000);
  prompt.setDraft(u"harbour "_s + boats);
  QSignalSpy refused(&prompt, &PromptEdit::pasteRefused);
  select(0, 8);
  EXPECT_EQ(dragSelection(8 + 11, Qt::ShiftModifier), Qt::MoveAction);
  EXPECT_EQ(prompt.toPlainText(), u"a red boat harbour "_s + boats.mid(11));
  EXPECT_EQ(refused.count(), 0);
  prompt.undo();
  EXPECT_EQ(prompt.toPlainText(), u"harbour "_s + boats);
}

TEST_F(PromptEditTest, TextThatIsDroppedOnItselfStays) {
  prompt.setDraft(u"a red boat"_s);
  select(2, 6);
  EXPECT_EQ(dragSelection(4, Qt::ShiftModifier), Qt::MoveAction);
  EXPECT_EQ(prompt.toPlainText(), u"a red boat"_s);
  EXPECT_EQ(prompt.textCursor().selectedText(), u"red "_s);
}

TEST_F(PromptEditTest, ACopyWithinATooLongPromptIsRefused) {
  const QString boats = u"a red boat "_s.repeated(4000);
  prompt.setDraft(boats);
  QSignalSpy refused(&prompt, &PromptEdit::pasteRefused);
  select(0, 11);
  EXPECT_EQ(dragSelection(22, Qt::ControlModifier), Qt::IgnoreAction);
  EXPECT_EQ(prompt.toPlainText(), boats);
  EXPECT_EQ(refused.count(), 1);
}

TEST_F(PromptEditTest, APictureThatIsDroppedIsHandedOnAsACopy) {
  QSignalSpy pasted(&prompt, &PromptEdit::mediaPasted);
  QImage picture(8, 8, QImage::Format_RGB32);
  picture.fill(Qt::red);
  QMimeData data;
  data.setImageData(picture);
  EXPECT_EQ(drop(data, 0), Qt::CopyAction);
  EXPECT_EQ(pasted.count(), 1);
  EXPECT_EQ(prompt.toPlainText(), QString());
}

}  // namespace
}  // namespace sorvan::views
