#include <gtest/gtest.h>

#include <QDir>
#include <QSignalSpy>

#include "core/workspace_opening.h"
#include "desk.h"
#include "shell/quit_rule.h"
#include "shell/sidebar_presenter.h"
#include "shell/store_messages.h"
#include "shell/welcome_presenter.h"
#include "shell/window_presenter.h"

namespace sorvan::shell {
namespace {

struct WindowTest : testing::Test {
  test::Desk desk;
  WindowPresenter window{desk.store, desk.state, desk.alerts, QStringLiteral("Sorvan Studio")};
  QSignalSpy agreed{&window, &WindowPresenter::quitAgreed};
};

TEST_F(WindowTest, QuitsAtOnceWithNothingInFlight) {
  EXPECT_TRUE(window.requestQuit());
  EXPECT_EQ(agreed.count(), 1);
  EXPECT_FALSE(desk.alerts.current());
}

TEST_F(WindowTest, AsksBeforeQuittingWhileAJobRuns) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  EXPECT_FALSE(window.requestQuit());
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->title, QStringLiteral("Work is still in progress"));
  EXPECT_EQ(desk.alerts.current()->text,
            QStringLiteral("Quitting stops files that are being imported, exported or downloaded. AI generations may "
                           "continue online and still cost credits or money. You can find saved generation requests in "
                           "History."));
  ASSERT_EQ(desk.alerts.current()->buttons.size(), 2u);
  EXPECT_EQ(desk.alerts.current()->buttons[0].title, QStringLiteral("Keep Working"));
  EXPECT_EQ(desk.alerts.current()->buttons[1].title, QStringLiteral("Quit"));
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_EQ(agreed.count(), 0);
  EXPECT_FALSE(window.requestQuit());
  desk.alerts.answer(desk.alerts.current()->id, 1);
  EXPECT_EQ(agreed.count(), 1);
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(WindowTest, InTrashItSaysThatFilesAreKeptAndElsewhereNothing) {
  // A workspace that was named at the start is not warned of, wherever it lies.
  const QString named = desk.folder / QStringLiteral("Named");
  core::LibraryStore store(core::LibraryStore::Services{desk.settings, desk.clock, named, QString()});
  core::openWorkspace(store, named, core::Remember::no);
  WorkspaceState state;
  const WindowPresenter presenter(store, state, desk.alerts, QStringLiteral("Sorvan Studio"));
  EXPECT_TRUE(presenter.banner().text.isEmpty());
  state.setLocation(trashLocation);
  EXPECT_EQ(presenter.banner().text,
            QStringLiteral("Files and provenance are retained. Restore them from Trash at any time."));
  EXPECT_FALSE(presenter.banner().isWarning);
  state.setMode({ModeKind::activity});
  EXPECT_TRUE(presenter.banner().text.isEmpty());
}

TEST_F(WindowTest, AsksOnceHoweverOftenTheWindowIsClosed) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  window.requestQuit();
  window.requestQuit();
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_FALSE(desk.alerts.current());
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(WindowTest, ASalvageAloneIsNoReasonToAsk) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  desk.store.salvaging.insert(desk.newestJob()->id);
  EXPECT_FALSE(quitQuestion(desk.store));
  desk.store.salvaging.clear();
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(WindowTest, AsksWhileSomethingIsExportedOrImported) {
  desk.store.setExporting(true);
  EXPECT_TRUE(quitQuestion(desk.store));
  desk.store.setExporting(false);
  desk.store.setImporting(true);
  EXPECT_TRUE(quitQuestion(desk.store));
  desk.store.setImporting(false);
  EXPECT_FALSE(quitQuestion(desk.store));
}

TEST_F(WindowTest, AnUnsavedChangeShowsBothParagraphs) {
  const QString root = *desk.store.workspaceRoot();
  ASSERT_TRUE(QDir().rename(root, root + QStringLiteral("-away")));
  desk.composer.editDraft(QStringLiteral("half a thought"));
  desk.composer.keepNow();
  ASSERT_TRUE(quitQuestion(desk.store));
  EXPECT_TRUE(quitQuestion(desk.store)
                  ->startsWith(QStringLiteral(
                      "Some changes haven’t been saved. Choose Keep Working, then open Workspace Health and choose Try "
                      "Saving Again before quitting.\n\nQuitting stops files")));
  EXPECT_EQ(window.banner().actionTitle, QStringLiteral("Open Workspace Health"));
  QSignalSpy health(&window, &WindowPresenter::healthRequested);
  window.performBannerAction();
  EXPECT_EQ(health.count(), 1);
  ASSERT_TRUE(QDir().rename(root + QStringLiteral("-away"), root));
  desk.store.retryMetadataSave();
  EXPECT_FALSE(quitQuestion(desk.store));
  EXPECT_EQ(window.banner().actionTitle, QString());
}

TEST_F(WindowTest, WarnsOfAWorkspaceInAFolderThatTheSystemClears) {
  ASSERT_TRUE(core::workspaceIsTemporary(desk.store));
  EXPECT_FALSE(window.banner().text.isEmpty());
  desk.store.close();
  EXPECT_TRUE(window.banner().text.isEmpty());
}

TEST_F(WindowTest, AnotherWorkspaceOpensInTheGalleryOfEverything) {
  desk.state.setLocation(inboxLocation);
  desk.state.setMode({ModeKind::activity});
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  EXPECT_EQ(desk.state.location(), allMediaLocation);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
}

TEST_F(WindowTest, NamesTheModeAndThePlaceForAssistiveTechnology) {
  EXPECT_EQ(window.title(), QStringLiteral("Sorvan Studio"));
  EXPECT_EQ(window.accessibleName(), QStringLiteral("Gallery, All Media"));
  desk.state.setMode({ModeKind::activity});
  EXPECT_TRUE(window.accessibleName().startsWith(QStringLiteral("History")));
}

struct MessagesTest : testing::Test {
  test::Desk desk;
  StoreMessages messages{desk.store, desk.alerts, desk.state};
};

TEST_F(MessagesTest, AnErrorIsAnAlertThatClearsItWhenDismissed) {
  desk.store.setError(QStringLiteral("It broke."));
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->text, QStringLiteral("It broke."));
  ASSERT_EQ(desk.alerts.current()->buttons.size(), 1u);
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_FALSE(desk.store.error());
  EXPECT_FALSE(desk.alerts.current());
}

TEST_F(MessagesTest, ANewErrorWaitsBehindTheOneThatStands) {
  desk.store.setError(QStringLiteral("First."));
  desk.store.setError(QStringLiteral("Second."));
  desk.store.setError(QStringLiteral("First."));
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->text, QStringLiteral("First."));
  desk.alerts.answer(desk.alerts.current()->id, 0);
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->text, QStringLiteral("Second."));
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_FALSE(desk.alerts.current());
  EXPECT_FALSE(desk.store.error());
}

TEST_F(MessagesTest, AnErrorThatTheStoreTakesBackLeavesTheScreen) {
  desk.store.setError(QStringLiteral("First."));
  desk.store.setError(std::nullopt);
  EXPECT_FALSE(desk.alerts.current());
}

TEST_F(MessagesTest, ANoticeIsACardThatStaysUntilItIsClosed) {
  desk.store.setNotice(QStringLiteral("Done quietly."));
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_TRUE(desk.alerts.toasts().front().stays);
  desk.alerts.dismissToast(desk.alerts.toasts().front().id);
  EXPECT_FALSE(desk.store.notice());
}

TEST_F(MessagesTest, ANoticeIsClosedByOKToo) {
  desk.store.setNotice(QStringLiteral("Done quietly."));
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts().front().actionTitle, QStringLiteral("OK"));
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_TRUE(desk.alerts.toasts().empty());
  EXPECT_FALSE(desk.store.notice());
  EXPECT_EQ(desk.state.location(), allMediaLocation);
}

TEST_F(MessagesTest, ANoticeAboutTrashLeadsThere) {
  desk.store.setNotice(QStringLiteral("The result is in Trash: restore it from there if you want it."));
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts().front().actionTitle, QStringLiteral("Show Trash"));
  desk.alerts.performToastAction(desk.alerts.toasts().front().id);
  EXPECT_EQ(desk.state.location(), trashLocation);
  EXPECT_FALSE(desk.store.notice());
}

TEST_F(MessagesTest, AFailedSaveOffersToTryAgain) {
  const QString root = *desk.store.workspaceRoot();
  ASSERT_TRUE(QDir().rename(root, root + QStringLiteral("-away")));
  desk.composer.editDraft(QStringLiteral("half a thought"));
  desk.composer.keepNow();
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_EQ(desk.alerts.current()->buttons.front().title, QStringLiteral("Try Saving Again"));
  // Still away: it fails again and is shown again.
  desk.alerts.answer(desk.alerts.current()->id, 0);
  ASSERT_TRUE(desk.alerts.current());
  ASSERT_TRUE(QDir().rename(root + QStringLiteral("-away"), root));
  desk.alerts.answer(desk.alerts.current()->id, 0);
  EXPECT_FALSE(desk.alerts.current());
  EXPECT_FALSE(desk.store.hasUnsavedMetadata());
}

// Answers with a folder that was written down.
struct ScriptedChooser final : FolderChooser {
  void chooseFolder(const FolderQuestion& question, std::function<void(std::optional<QString>)> chosen) override {
    asked.push_back(question);
    if (answers) chosen(answer);
  }
  std::vector<FolderQuestion> asked;
  std::optional<QString> answer;
  bool answers = true;
};

struct WelcomeTest : testing::Test {
  test::Desk desk;
  WelcomePresenter welcome{desk.store, desk.folder / QStringLiteral("Pictures/Sorvan")};
  ScriptedChooser chooser;
};

TEST_F(WelcomeTest, SaysWhatThePageSays) {
  const WelcomeDisplay display = welcome.display();
  EXPECT_EQ(display.line, QStringLiteral("A local workspace for your AI-generated images and videos."));
  EXPECT_EQ(display.defaultButton, QStringLiteral("Use Pictures/Sorvan"));
  EXPECT_EQ(display.defaultHelp, QStringLiteral("Creates a Sorvan folder in Pictures, or opens the one already there"));
  EXPECT_EQ(display.chooseButton, QStringLiteral("Choose Another Folder…"));
  EXPECT_EQ(
      display.note,
      QStringLiteral(
          "Your library stays in this folder. Generating and AI analysis send the selected prompt and references to "
          "the model provider.\nOrganising existing files needs no account or API key."));
}

TEST_F(WelcomeTest, TheDefaultButtonOpensTheDefaultFolder) {
  desk.store.close();
  ASSERT_TRUE(welcome.isShown());
  welcome.useDefaultWorkspace();
  EXPECT_FALSE(welcome.isShown());
  EXPECT_EQ(QDir(*desk.store.workspaceRoot()), QDir(desk.folder / QStringLiteral("Pictures/Sorvan")));
}

TEST_F(WelcomeTest, AsksForAFolderWithTheFixedWords) {
  welcome.setFolderChooser(&chooser);
  welcome.chooseWorkspace();
  ASSERT_EQ(chooser.asked.size(), 1u);
  EXPECT_EQ(chooser.asked.front().acceptLabel, QStringLiteral("Open Workspace"));
  EXPECT_EQ(chooser.asked.front().message, QStringLiteral("Choose a folder for your media and its Sorvan library."));
}

TEST_F(WelcomeTest, AsksOnceWhileTheQuestionIsOpen) {
  welcome.setFolderChooser(&chooser);
  chooser.answers = false;
  welcome.chooseWorkspace();
  welcome.chooseWorkspace();
  EXPECT_EQ(chooser.asked.size(), 1u);
}

TEST_F(WelcomeTest, RefusesAFolderThatTheSystemClears) {
  const QString root = *desk.store.workspaceRoot();
  welcome.setFolderChooser(&chooser);
  chooser.answer = QStringLiteral("/tmp/sorvan-never-made");
  welcome.chooseWorkspace();
  ASSERT_TRUE(desk.store.error());
  EXPECT_TRUE(desk.store.error()->contains(QStringLiteral("a library kept there would be lost")));
  EXPECT_EQ(*desk.store.workspaceRoot(), root);
}

TEST_F(WelcomeTest, AFailedRestoreShowsThePageWithTheErrorOnTop) {
  desk.store.close();
  desk.settings->set(QStringLiteral("workspaceBookmark"),
                     desk.folder.write(QStringLiteral("a-file"), QByteArrayLiteral("x")).toUtf8());
  const StoreMessages messages(desk.store, desk.alerts, desk.state);
  core::restoreLastWorkspace(desk.store);
  EXPECT_TRUE(welcome.isShown());
  ASSERT_TRUE(desk.alerts.current());
  EXPECT_TRUE(desk.alerts.current()->text.startsWith(QStringLiteral("Could not open your workspace: ")));
}

TEST_F(WelcomeTest, StaysAwayWhileTheLastLibraryIsOpened) {
  const QString last = *desk.store.workspaceRoot();
  desk.store.close();
  ASSERT_TRUE(welcome.isShown());
  QSignalSpy changed(&welcome, &WelcomePresenter::shownChanged);
  welcome.setOpening(true);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_FALSE(welcome.isShown());
  EXPECT_TRUE(welcome.isOpening());
  core::openWorkspace(desk.store, last, core::Remember::no);
  EXPECT_FALSE(welcome.isOpening()) << "what is open is shown";
  desk.store.close();
  EXPECT_TRUE(welcome.isOpening());
  welcome.setOpening(false);
  EXPECT_TRUE(welcome.isShown()) << "a library that could not be opened leaves the first page";
}

TEST_F(WelcomeTest, GivingUpChangesNothing) {
  const QString root = *desk.store.workspaceRoot();
  welcome.setFolderChooser(&chooser);
  welcome.chooseWorkspace();
  EXPECT_FALSE(desk.store.error());
  EXPECT_EQ(*desk.store.workspaceRoot(), root);
}

TEST(Sidebar, CountsPlacesAndMarksWhereTheWindowIs) {
  test::Desk desk;
  SidebarPresenter sidebar(desk.store, desk.state);
  desk.generate(QStringLiteral("one"));
  desk.settle();
  desk.state.setLocation(inboxLocation);
  const SidebarDisplay display = sidebar.display();
  EXPECT_EQ(display.workspaceName, QStringLiteral("Workspace"));
  ASSERT_EQ(display.rows.size(), 9u);
  EXPECT_EQ(display.rows[0].title, QStringLiteral("All Media"));
  EXPECT_EQ(display.rows[0].countText, QStringLiteral("1"));
  EXPECT_FALSE(display.rows[0].current);
  EXPECT_EQ(display.rows[1].title, QStringLiteral("Recent"));
  EXPECT_EQ(display.rows[1].countText, QStringLiteral("1"));
  EXPECT_EQ(display.rows[3].title, QStringLiteral("Inbox"));
  EXPECT_TRUE(display.rows[3].current);
  EXPECT_EQ(display.rows[5].title, QStringLiteral("History"));
  sidebar.choose(display.rows[5].key);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::activity);
  EXPECT_TRUE(sidebar.display().rows[5].current);
  EXPECT_FALSE(sidebar.display().rows[3].current);
  sidebar.choose(display.rows[0].key);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::gallery);
}

}  // namespace
}  // namespace sorvan::shell
