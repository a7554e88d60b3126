#include "core/workspace_files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "base/sorvan_error.h"
#include "base/text.h"
#include "core/records.h"
#include "failing_layer.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

TEST(SafeName, KeepsLettersDigitsHyphensAndUnderscores) {
  EXPECT_EQ(WorkspaceFiles::safeName(QStringLiteral("a/b: c")), QStringLiteral("a-b-c"));
  EXPECT_EQ(WorkspaceFiles::safeName(QStringLiteral("under_score 9")), QStringLiteral("under_score-9"));
  EXPECT_EQ(WorkspaceFiles::safeName(QStringLiteral("-Nano Banana 2")), QStringLiteral("-Nano-Banana-2"));
}

TEST(SafeName, KeepsVowelSignsOfScriptsThatWriteThemAsMarks) {
  EXPECT_EQ(WorkspaceFiles::safeName(QStringLiteral("सीता और राम")), QStringLiteral("सीता-और-राम"));
}

TEST(SafeName, OfNothingUsableIsUntitled) {
  for (const auto& blank : {QString(), QStringLiteral("   "), QStringLiteral("!!!"), QStringLiteral("🦊🦊")})
    EXPECT_EQ(WorkspaceFiles::safeName(blank), QStringLiteral("Untitled"));
}

TEST(SafeName, OfALongTextHasEightyCharacters) {
  EXPECT_EQ(WorkspaceFiles::safeName(QString(200, u'x')), QString(80, u'x'));
}

TEST(SafeName, OfALongTextInAnyScriptLeavesRoomForCounterAndExtension) {
  const QString word = QStringLiteral("मुंबई");
  QString prompt;
  for (int index = 0; index < 60; ++index) prompt += word;
  const QString name = WorkspaceFiles::safeName(prompt);
  EXPECT_LE(name.toUtf8().size(), 200);
  EXPECT_TRUE(prompt.startsWith(name));
  EXPECT_EQ(firstChars(prompt, chars(name)), name) << "a character was cut in two";
}

TEST(SafeName, NeverLeavesItsFolderOrHidesTheFile) {
  for (const auto& hostile : {QStringLiteral("../../etc/passwd"), QStringLiteral(".hidden"), QStringLiteral("a\0b")}) {
    const QString name = WorkspaceFiles::safeName(hostile);
    EXPECT_FALSE(name.contains(u'/'));
    EXPECT_FALSE(name.startsWith(u'.'));
    EXPECT_FALSE(name.contains(QChar(u'\0')));
  }
}

TEST(MimeType, IsThatOfTheTableAndElseOfAnyBytes) {
  EXPECT_EQ(WorkspaceFiles::mimeType(QStringLiteral("PNG")), QStringLiteral("image/png"));
  EXPECT_EQ(WorkspaceFiles::mimeType(QStringLiteral("m4a")), QStringLiteral("audio/mp4"));
  EXPECT_EQ(WorkspaceFiles::mimeType(QStringLiteral("txt")), QStringLiteral("application/octet-stream"));
}

struct WorkspaceFilesTest : testing::Test {
  test::TemporaryFolder folder;
  WorkspaceFiles files{folder.path()};
  QString inbox = QStringLiteral("Inbox/generated");

  QString unique(const QString& stem, const QString& ext) const {
    return files.uniquePath(inbox, stem, ext).relative();
  }
};

TEST_F(WorkspaceFilesTest, UniquePathCountsFromOneAndLowersTheExtension) {
  EXPECT_EQ(unique(QStringLiteral("red fox"), QStringLiteral("PNG")),
            QStringLiteral("Inbox/generated/red-fox-001.png"));
}

TEST_F(WorkspaceFilesTest, UniquePathOfAStemThatWasWrittenTakesTheNextNumber) {
  folder.write(QStringLiteral("Inbox/generated/red-fox-001.png"), "x");
  EXPECT_EQ(unique(QStringLiteral("red fox"), QStringLiteral("png")),
            QStringLiteral("Inbox/generated/red-fox-002.png"));
}

TEST_F(WorkspaceFilesTest, UniquePathWithoutAnExtensionHasNoPoint) {
  EXPECT_EQ(unique(QStringLiteral("fox"), QString()), QStringLiteral("Inbox/generated/fox-001"));
}

TEST_F(WorkspaceFilesTest, AnExtensionThatIsNoneIsLeftOutSoThatAFileStaysInItsFolder) {
  for (const QString& ext :
       {QStringLiteral("/../../evil"), QStringLiteral("a/b"), QStringLiteral(".."), QStringLiteral("p\\g"),
        QStringLiteral("p g"), QStringLiteral("pn\ng"), QString(QStringLiteral("p") + QChar(u'\0')), QString(17, u'p'),
        QString(11, QChar(0x72D0))})
    EXPECT_EQ(unique(QStringLiteral("fox"), ext), QStringLiteral("Inbox/generated/fox-001")) << ext.toStdString();
}

TEST_F(WorkspaceFilesTest, TheLongestNameWithTheLongestExtensionFitsOnADisk) {
  const QString stem(80, QChar(0x72D0));
  const QString name = unique(stem, QString(16, u'p')).section(u'/', 2);
  EXPECT_TRUE(name.endsWith(QStringLiteral("-001.") + QString(16, u'p')));
  EXPECT_LE(name.toUtf8().size(), 255);
}

TEST_F(WorkspaceFilesTest, UniquePathGoesPastADanglingLink) {
  folder.write(QStringLiteral("Inbox/generated/other"), "x");
  ASSERT_EQ(::symlink("/nowhere/at/all", QFile::encodeName(folder / QStringLiteral("Inbox/generated/fox-001.png"))), 0);
  EXPECT_EQ(unique(QStringLiteral("fox"), QStringLiteral("png")), QStringLiteral("Inbox/generated/fox-002.png"));
}

TEST_F(WorkspaceFilesTest, TwoWritersThatHaveNotWrittenYetNeverGetOneName) {
  ReservedPath first = files.uniquePath(inbox, QStringLiteral("fox"), QStringLiteral("png"));
  const ReservedPath second = files.uniquePath(inbox, QStringLiteral("fox"), QStringLiteral("png"));
  EXPECT_NE(first.relative(), second.relative());
  EXPECT_EQ(second.absolute(), files.absolute(second.relative()));
  const ReservedPath copy = first;
  first.release();
  EXPECT_EQ(unique(QStringLiteral("fox"), QStringLiteral("png")), QStringLiteral("Inbox/generated/fox-003.png"));
}

TEST_F(WorkspaceFilesTest, ANameIsFreeAgainWhenItsWriterGaveUp) {
  files.uniquePath(inbox, QStringLiteral("fox"), QStringLiteral("png"));
  EXPECT_EQ(unique(QStringLiteral("fox"), QStringLiteral("png")), QStringLiteral("Inbox/generated/fox-001.png"));
}

TEST_F(WorkspaceFilesTest, ALongPromptInAnyScriptGivesANameThatCanBeWritten) {
  const QString path = unique(QString(300, QChar(u'界')), QStringLiteral("jpeg"));
  folder.write(path, "x");
  EXPECT_EQ(folder.read(path), "x");
}

TEST_F(WorkspaceFilesTest, PreparingTwiceMakesTheFoldersOnce) {
  files.prepare();
  files.prepareInbox();
  files.prepare();
  files.prepareInbox();
  for (const auto& name : {"generated", "imported", "references", "thumbnails"})
    EXPECT_TRUE(QFileInfo(files.absolute(QStringLiteral("Inbox/") + QLatin1StringView(name))).isDir());
  EXPECT_TRUE(QFileInfo(files.hiddenFolder()).isDir());
}

TEST_F(WorkspaceFilesTest, TwoProjectsOfOneNameNeverShareAFolder) {
  const QString first = files.createProjectFolder(QStringLiteral("Sea / Shore"));
  const QString second = files.createProjectFolder(QStringLiteral("Sea / Shore"));
  EXPECT_NE(first, second);
  EXPECT_TRUE(first.startsWith(QStringLiteral("Sea-Shore-")));
  EXPECT_EQ(first.size(), QStringLiteral("Sea-Shore-").size() + 8);
  EXPECT_TRUE(QFileInfo(files.absolute(first + QStringLiteral("/imported"))).isDir());
}

TEST_F(WorkspaceFilesTest, AFailureToMakeAFolderIsPassedUp) {
  test::FailingLayer full(1);
  const FileLayerOverride override(full);
  EXPECT_THROW(files.prepareInbox(), FileError);
  EXPECT_THROW(files.createProjectFolder(QStringLiteral("A")), FileError);
}

TEST_F(WorkspaceFilesTest, TheRecoveryFolderIsNamedByTheUpperCaseId) {
  const QUuid job(QStringLiteral("{0f8fad5b-d9cb-469f-a165-70867728950e}"));
  EXPECT_EQ(files.submissionMarker(job),
            folder / QStringLiteral(".sorvan/recovery/0F8FAD5B-D9CB-469F-A165-70867728950E/submitting"));
}

}  // namespace
}  // namespace sorvan::core
