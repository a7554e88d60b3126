// The field for prompts under texts that nobody writes by hand.
#include "shell/views/prompt_edit.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QMimeData>
#include <QGlyphRun>
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

  QWidget window;
  PromptEdit prompt{u"Prompt"_s, &window};
};

TEST_F(PromptEditTest, AMegabyteWithoutABlankIsNotPastedAndWhatWasThereStays) {
  paste(u"a red boat"_s);
  QSignalSpy refused(&prompt, &PromptEdit::pasteRefused);
  QSignalSpy edited(&prompt, &PromptEdit::edited);
  QElapsedTimer timer;
  timer.start();
  paste(QString(1 << 20, u'x'));
  EXPECT_LT(timer.elapsed(), 2'000);
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
TEST_F(PromptEditTest, AMegabyteWithoutABlankThatWasKeptIsShownWithoutDelay) {
  QElapsedTimer timer;
  timer.start();
  prompt.setDraft(QString(1 << 20, u'x'));
  test::runPosted();
  EXPECT_LT(timer.elapsed(), 15'000);
  EXPECT_EQ(prompt.toPlainText().size(), 1 << 20);
  EXPECT_EQ(prompt.wordWrapMode(), QTextOption::WrapAnywhere);
  prompt.setDraft(u"a red boat"_s);
  EXPECT_EQ(prompt.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

}  // namespace
}  // namespace sorvan::views
