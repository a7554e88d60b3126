#include "shell/views/main_window.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QShortcut>
#include <QSignalSpy>
#include <QTextEdit>

#include "account/provider_settings.h"
#include "base/sorvan_error.h"
#include "core/small_edits.h"
#include "core/workspace_opening.h"
#include "platform/key_store.h"
#include "shell/actions_presenter.h"
#include "shell/desk.h"
#include "shell/settings_presenter.h"
#include "shell/sidebar_presenter.h"
#include "shell/views/alert_dialog.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/filter_row.h"
#include "shell/views/asset_view.h"
#include "shell/views/health_dialog.h"
#include "shell/views/picture_canvas.h"
#include "shell/views/quick_look.h"
#include "shell/views/sidebar_view.h"
#include "shell/views/toolbar_view.h"
#include "shell/views/viewer_desk.h"
#include "shell/views/labels.h"
#include "shell/views/library_view.h"
#include "shell/views/mark_layer.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/selection_bar.h"
#include "shell/views/settings_dialog.h"
#include "shell/views/shortcuts_dialog.h"
#include "shell/views/text_dialog.h"
#include "shell/views/wall_menus.h"
#include "shell/views/welcome_view.h"
#include "shell/welcome_presenter.h"
#include "shell/window_presenter.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class MainWindowTest : public WholeWindow {};

TEST_F(MainWindowTest, ATypedPromptBecomesACellAndThenAnItem) {
  desk.provider->gate.emplace();
  type(u"a boat"_s);
  ASSERT_EQ(wall().rowCount(), 1);
  EXPECT_TRUE(desk.gallery.isJobAt(0));
  EXPECT_TRUE(wall().rowName(0).contains(u"a boat"_s));
  desk.provider->gate->finish();
  desk.settle();
  ASSERT_EQ(wall().rowCount(), 1);
  EXPECT_FALSE(desk.gallery.isJobAt(0));
  EXPECT_TRUE(wall().rowName(0).endsWith(u".png"_s) || wall().rowName(0).contains(u".png"_s));
  EXPECT_TRUE(prompt()->toPlainText().isEmpty());
}

TEST_F(MainWindowTest, WhileTheLastLibraryIsOpenedNeitherTheFirstPageNorALibraryIsShown) {
  const QString last = *desk.store.workspaceRoot();
  welcome.setOpening(true);
  desk.store.close();
  EXPECT_EQ(shown<WelcomeView>(), nullptr);
  EXPECT_EQ(shown<LibraryView>(), nullptr);
  core::openWorkspace(desk.store, last, core::Remember::no);
  EXPECT_EQ(shown<WelcomeView>(), nullptr);
  EXPECT_EQ(shown<LibraryView>(), &window->library());
  EXPECT_NE(QApplication::focusWidget(), nullptr) << "the keyboard is in the library";
  welcome.setOpening(false);
  EXPECT_EQ(shown<LibraryView>(), &window->library());
}

TEST_F(MainWindowTest, ASelectedItemIsInspectedOpenedLargeAndLeftWithEscape) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  EXPECT_EQ(desk.state.inspectedId(), wall().rowId(0));
  QTest::keyClick(&wall(), Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_EQ(QApplication::focusWidget(), &window->library().asset());
  QTest::keyClick(&window->library().asset(), Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
  EXPECT_EQ(wall().selection().size(), 1);
}

TEST_F(MainWindowTest, AFailedJobIsRetriedFromItsCell) {
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
  type(u"a boat"_s);
  desk.settle();
  ASSERT_EQ(wall().rowCount(), 1);
  desk.provider->failure = nullptr;
  const QStringList offered = wall().rowActions(0);
  ASSERT_TRUE(offered.contains(u"Retry"_s));
  wall().performRowAction(0, u"Retry"_s);
  test::runPosted();
  desk.settle();
  ASSERT_EQ(wall().rowCount(), 1);
  EXPECT_FALSE(desk.gallery.isJobAt(0));
}

TEST_F(MainWindowTest, LettersRateInTheGalleryAndAreTextInThePrompt) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_4);
  test::runPosted();
  EXPECT_EQ(desk.store.assets().front()->rating, 4);
  window->library().dock().focusPrompt();
  QTest::keyClicks(prompt(), u"5"_s);
  test::runPosted();
  EXPECT_EQ(desk.store.assets().front()->rating, 4);
  EXPECT_EQ(prompt()->toPlainText(), u"5"_s);
}

TEST_F(MainWindowTest, KeysOfMarksAndTrashWorkInTheGalleryAndAreTextInThePrompt) {
  type(u"a boat"_s);
  desk.settle();
  const core::AssetRef item = desk.store.assets().front();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_P);
  EXPECT_EQ(item->status(), core::AssetStatus::shortlist);
  QTest::keyClick(&wall(), Qt::Key_D);
  EXPECT_EQ(item->status(), core::AssetStatus::rejected);
  window->library().dock().focusPrompt();
  QTest::keyClicks(prompt(), u"pd"_s);
  QTest::keyClick(prompt(), Qt::Key_Delete);
  EXPECT_EQ(prompt()->toPlainText(), u"pd"_s);
  EXPECT_EQ(item->status(), core::AssetStatus::rejected);
  EXPECT_FALSE(item->isTrashed());
  wall().setFocus();
  QTest::keyClick(&wall(), Qt::Key_Delete);
  test::runPosted();
  EXPECT_TRUE(item->isTrashed());
  EXPECT_EQ(wall().rowCount(), 0);
  QTest::keyClick(&wall(), Qt::Key_Z, Qt::ControlModifier);
  test::runPosted();
  EXPECT_FALSE(item->isTrashed());
  EXPECT_EQ(wall().rowCount(), 1);
}

TEST_F(MainWindowTest, TheUndoMenuItemCarriesTheNameOfTheEdit) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_3);
  test::runPosted();
  QStringList texts;
  for (const QAction* action : window->actions()) texts << action->text();
  EXPECT_TRUE(texts.contains(u"Undo Change Rating"_s));
  EXPECT_TRUE(texts.contains(u"Redo"_s));
}

TEST_F(MainWindowTest, TypingInTheSearchFieldNarrowsTheWallAndEscapeClearsIt) {
  type(u"a boat"_s);
  desk.settle();
  type(u"a fox"_s);
  desk.settle();
  ASSERT_EQ(wall().rowCount(), 2);
  actions->trigger(ActionId::searchMedia);
  auto* field = named<TextField>(*window, u"Search media"_s);
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(QApplication::focusWidget(), field);
  QTest::keyClicks(field, u"FOX"_s);
  QTest::keyClick(field, Qt::Key_Return);
  test::runPosted();
  EXPECT_EQ(wall().rowCount(), 1);
  EXPECT_EQ(QApplication::focusWidget(), &wall());
  actions->trigger(ActionId::searchMedia);
  QTest::keyClick(field, Qt::Key_Escape);
  test::runPosted();
  EXPECT_EQ(wall().rowCount(), 2);
  EXPECT_TRUE(field->text().isEmpty());
}

TEST_F(MainWindowTest, TheFilterRowIsShownOverTheGalleryAndPutAwayByItsKey) {
  auto* row = window->findChild<FilterRow*>();
  ASSERT_NE(row, nullptr);
  EXPECT_TRUE(row->isVisible());
  const int top = wall().mapTo(window.get(), QPoint()).y();
  actions->trigger(ActionId::toggleFilters);
  EXPECT_FALSE(row->isVisible());
  EXPECT_LT(wall().mapTo(window.get(), QPoint()).y(), top);
  actions->trigger(ActionId::toggleFilters);
  actions->trigger(ActionId::showHistory);
  EXPECT_FALSE(row->isVisible());
}

TEST_F(MainWindowTest, AnItemIsRenamedInADialog) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  actions->trigger(ActionId::renameItem);
  auto* dialog = window->findChild<TextDialog*>();
  ASSERT_NE(dialog, nullptr);
  auto* field = dialog->findChild<TextField*>();
  EXPECT_FALSE(field->text().isEmpty());
  field->setText(u"Blue Boat"_s);
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(desk.store.assets().front()->filename(), u"Blue-Boat-001.png"_s);
}

TEST_F(MainWindowTest, CtrlEnterConfirmsASheetOfSeveralLines) {
  type(u"a boat"_s);
  desk.settle();
  desk.state.select({desk.store.assets().front()->id});
  actions->trigger(ActionId::editNotes);
  auto* dialog = shown<TextDialog>();
  ASSERT_NE(dialog, nullptr);
  auto* lines = dialog->findChild<QTextEdit*>();
  QTest::keyClicks(lines, u"one"_s);
  QTest::keyClick(lines, Qt::Key_Return);
  QTest::keyClicks(lines, u"two"_s);
  auto* confirms = dialog->findChild<QShortcut*>();
  ASSERT_NE(confirms, nullptr);
  EXPECT_EQ(confirms->key(), QKeySequence(Qt::CTRL | Qt::Key_Return));
  Q_EMIT confirms->activated();
  EXPECT_EQ(desk.store.assets().front()->notes, u"one\ntwo"_s);
  EXPECT_EQ(shown<TextDialog>(), nullptr);
}

TEST_F(MainWindowTest, HistoryNamesTheLibraryBesideItsTitle) {
  actions->trigger(ActionId::showHistory);
  const QString name = QDir(*desk.store.workspaceRoot()).dirName();
  auto* count = named<Label>(window->library().toolbar(), name);
  ASSERT_NE(count, nullptr);
  EXPECT_TRUE(count->isVisible());
}

TEST_F(MainWindowTest, TheMenusComeFromTheTableAndShowOnlyWhatIsInIt) {
  auto* bar = window->findChild<QMenuBar*>();
  ASSERT_NE(bar, nullptr);
  QStringList titles;
  for (QAction* menu : bar->actions()) {
    if (menu->isVisible()) titles.append(menu->text().remove(u'&'));
  }
  EXPECT_EQ(titles, (QStringList{u"File"_s, u"Edit"_s, u"View"_s, u"Item"_s, u"Generate"_s, u"Help"_s}));
  EXPECT_FALSE(window->windowTitle().isEmpty());
}

TEST_F(MainWindowTest, TheFileMenuListsTheWorkspacesThatWereOpenLately) {
  QMenu* recents = nullptr;
  for (QMenu* menu : window->findChildren<QMenu*>())
    if (menu->title() == u"Open Recent"_s) recents = menu;
  ASSERT_NE(recents, nullptr);
  Q_EMIT recents->aboutToShow();
  ASSERT_EQ(recents->actions().size(), 1);
  EXPECT_EQ(recents->actions()[0]->text(), u"No other workspaces yet"_s);
  EXPECT_FALSE(recents->actions()[0]->isEnabled());
  const QString first = *desk.store.workspaceRoot();
  core::openWorkspace(desk.store, first, core::Remember::yes);
  core::openWorkspace(desk.store, desk.folder / u"Foxes & Storms"_s, core::Remember::yes);
  core::openWorkspace(desk.store, first, core::Remember::yes);
  Q_EMIT recents->aboutToShow();
  ASSERT_EQ(recents->actions().size(), 3);
  EXPECT_EQ(recents->actions()[0]->text(), u"Foxes && Storms"_s);
  recents->actions()[0]->trigger();
  EXPECT_TRUE(desk.store.workspaceRoot()->endsWith(u"Foxes & Storms"_s));
  Q_EMIT recents->aboutToShow();
  recents->actions().back()->trigger();
  Q_EMIT recents->aboutToShow();
  EXPECT_EQ(recents->actions().size(), 1);
}

TEST_F(MainWindowTest, WorkspaceHealthOpensOverTheWindowAndSaysWhatItFound) {
  actions->trigger(ActionId::workspaceHealth);
  auto* sheet = shown<HealthDialog>();
  ASSERT_NE(sheet, nullptr);
  test::runUntil([this] { return !health.display().checking; });
  QStringList words;
  for (const Paragraph* paragraph : sheet->findChildren<Paragraph*>()) words += paragraph->paragraph();
  EXPECT_TRUE(words.contains(u"No repairs needed"_s));
  EXPECT_NE(named<Badge>(*sheet, u"No issues"_s), nullptr);
  QTest::keyClick(sheet, Qt::Key_Escape);
  EXPECT_EQ(shown<HealthDialog>(), nullptr);
}

TEST_F(MainWindowTest, HistoryOpensByItsActionAndBackReturnsToTheGallery) {
  type(u"a boat"_s);
  desk.settle();
  actions->trigger(ActionId::showHistory);
  EXPECT_EQ(window->library().page(), ModeKind::activity);
  EXPECT_EQ(window->library().history().list().rowCount(), 1);
  actions->trigger(ActionId::goBack);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
}

TEST_F(MainWindowTest, ShiftF10OpensTheMenuOfTheSelectionWhereAKeyboardHasNoMenuKey) {
  type(u"a lighthouse"_s);
  desk.settle();
  desk.state.select({desk.store.assets().front()->id});
  wall().setFocus();
  QTest::keyClick(&wall(), Qt::Key_F10, Qt::ShiftModifier);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(qobject_cast<QMenu*>(menu), nullptr);
  QStringList rows;
  for (const QAction* action : menu->actions()) rows << action->text().section(u'\t', 0, 0);
  EXPECT_TRUE(rows.contains(u"Quick Look"_s));
  menu->close();
}

TEST_F(MainWindowTest, TheListOfKeysScrollsByKeyboardAndFitsTheWindow) {
  actions->trigger(ActionId::keyboardShortcuts);
  auto* list = shown<ShortcutsDialog>();
  ASSERT_NE(list, nullptr);
  EXPECT_LE(list->height(), window->height());
  EXPECT_NE(named<QWidget>(*list, u"History, Ctrl+H"_s), nullptr);
  auto* area = list->findChild<QScrollArea*>();
  ASSERT_NE(area, nullptr);
  EXPECT_EQ(list->focusWidget(), area);
  QTest::keyClick(area, Qt::Key_Escape);
  EXPECT_EQ(shown<ShortcutsDialog>(), nullptr);
}

TEST_F(MainWindowTest, TheMousesBackButtonLeavesAnItemWhereverThePointerIs) {
  type(u"a lighthouse"_s);
  desk.settle();
  const QUuid item = desk.store.assets().front()->id;
  const auto pressBack = [this](QWidget& over) {
    QTest::mousePress(window->windowHandle(), Qt::BackButton, {}, over.mapTo(window.get(), over.rect().center()));
    test::runPosted();
  };
  for (QWidget* over : std::initializer_list<QWidget*>{&window->library().asset().canvas(), &window->library().sidebar(),
                                                       &window->library().toolbar()}) {
    desk.state.openAsset(item, {item});
    ASSERT_EQ(window->library().page(), ModeKind::asset);
    pressBack(*over);
    EXPECT_EQ(window->library().page(), ModeKind::gallery);
  }
  pressBack(wall());
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
}

TEST_F(MainWindowTest, TheMousesBackButtonClosesAQuickLookFirst) {
  type(u"a lighthouse"_s);
  desk.settle();
  const QUuid item = desk.store.assets().front()->id;
  desk.state.select({item});
  actions->trigger(ActionId::quickLook);
  ASSERT_TRUE(window->viewer().quickLook().isOpen());
  QTest::mousePress(window->windowHandle(), Qt::BackButton, {}, window->rect().center());
  EXPECT_FALSE(window->viewer().quickLook().isOpen());
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{item});
}

TEST_F(MainWindowTest, ClosingWithWorkInFlightAsksAndKeepWorkingKeepsTheWindow) {
  desk.provider->gate.emplace();
  type(u"a boat"_s);
  window->close();
  test::runPosted();
  EXPECT_TRUE(window->isVisible());
  auto* alert = shown<AlertDialog>();
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(alert->windowTitle(), u"Work is still in progress"_s);
  QTest::keyClick(alert, Qt::Key_Escape);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(shown<AlertDialog>(), nullptr);
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(MainWindowTest, QuitInTheQuestionClosesTheWindow) {
  desk.provider->gate.emplace();
  type(u"a boat"_s);
  QSignalSpy agreed(&windowPresenter, &WindowPresenter::quitAgreed);
  window->close();
  ASSERT_NE(shown<AlertDialog>(), nullptr);
  QTest::mouseClick(named<Button>(*shown<AlertDialog>(), u"Quit"_s), Qt::LeftButton);
  EXPECT_EQ(agreed.count(), 1);
  EXPECT_FALSE(window->isVisible());
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(MainWindowTest, TheSettingsSaveAKeyAndNeverShowIt) {
  actions->trigger(ActionId::openSettings);
  auto* dialog = shown<SettingsDialog>();
  ASSERT_NE(dialog, nullptr);
  dialog->showPage(SettingsPage::key);
  auto* field = named<TextField>(*dialog, settings.keyPage().title);
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->echoMode(), QLineEdit::Password);
  EXPECT_FALSE(named<Button>(*dialog, u"Save"_s)->isEnabled());
  QTest::keyClicks(field, u"secret-key"_s);
  QTest::mouseClick(named<Button>(*dialog, u"Save"_s), Qt::LeftButton);
  EXPECT_TRUE(field->text().isEmpty());
  test::runUntil([this] { return settings.keyPage().saved; });
  test::runPosted();
  EXPECT_TRUE(named<Button>(*dialog, u"Remove Key"_s)->isVisible());
}

TEST_F(MainWindowTest, TheAppearanceIsChosenInTheSettings) {
  actions->trigger(ActionId::openSettings);
  auto* dialog = shown<SettingsDialog>();
  dialog->showPage(SettingsPage::appearance);
  QTest::mouseClick(named<QAbstractButton>(*dialog, u"Light"_s), Qt::LeftButton);
  EXPECT_EQ(settings.appearance(), Appearance::light);
}

TEST_F(MainWindowTest, ANarrowWindowPutsTheInspectorAwayAndItsButtonBringsItBack) {
  window->resize(1024, 680);
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->library().inspector().isVisible());
  QTest::mouseClick(named<IconButton>(*window, u"Inspector"_s), Qt::LeftButton);
  EXPECT_TRUE(window->library().inspector().isVisible());
}

TEST_F(MainWindowTest, EveryVisibleControlOfTheAccessibleTreeThatTakesTheKeyboardHasAName) {
  type(u"a boat"_s);
  desk.settle();
  std::vector<QAccessibleInterface*> open{QAccessible::queryAccessibleInterface(window.get())};
  int named = 0;
  while (!open.empty()) {
    QAccessibleInterface* one = open.back();
    open.pop_back();
    if (!one || one->state().invisible) continue;
    if (one->state().focusable && one->role() != QAccessible::ScrollBar) {
      EXPECT_FALSE(one->text(QAccessible::Name).isEmpty())
          << (one->object() ? one->object()->metaObject()->className() : "row");
      ++named;
    }
    for (int child = 0; child < one->childCount(); ++child) open.push_back(one->child(child));
  }
  EXPECT_GT(named, 15);
}

TEST_F(MainWindowTest, MMarksThePictureAndEnterTurnsToThePrompt) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_M);
  ASSERT_TRUE(desk.marking.isMarking());
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_TRUE(window->library().markPanel()->isVisible());
  EXPECT_FALSE(window->library().inspector().isVisible());
  QWidget* layer = window->library().asset().marks();
  EXPECT_EQ(QApplication::focusWidget(), layer);
  desk.marking.add(QRectF(0.2, 0.2, 0.4, 0.4));
  auto* note = named<TextField>(*window, u"Note of box 1"_s);
  ASSERT_EQ(QApplication::focusWidget(), note);
  // Letters that are keys over media are words here.
  QTest::keyClicks(note, u"mf1"_s);
  EXPECT_EQ(desk.marking.marks().boxes()[0].note, u"mf1"_s);
  EXPECT_TRUE(desk.marking.isMarking());
  QTest::keyClick(note, Qt::Key_Return);
  EXPECT_EQ(QApplication::focusWidget(), layer);
  QTest::keyClick(layer, Qt::Key_Return);
  EXPECT_FALSE(desk.marking.isMarking());
  EXPECT_EQ(QApplication::focusWidget(), prompt());
  EXPECT_EQ(prompt()->toPlainText(), u"mf1"_s);
  EXPECT_TRUE(window->library().inspector().isVisible());
  EXPECT_TRUE(named<Button>(*window, u"1 mark"_s));
}

TEST_F(MainWindowTest, EscapeLeavesTheMarksAndThenTheItem) {
  type(u"a boat"_s);
  desk.settle();
  desk.marking.begin(wall().rowId(0));
  QWidget* layer = window->library().asset().marks();
  QTest::keyClick(layer, Qt::Key_Escape);
  EXPECT_FALSE(desk.marking.isMarking());
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_EQ(QApplication::focusWidget(), &window->library().asset());
  QTest::keyClick(&window->library().asset(), Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
}

TEST_F(MainWindowTest, TheMarksOfTheComposerOpenAlsoFromAPlaceWithoutTheirPicture) {
  type(u"a boat"_s);
  desk.settle();
  const QUuid item = wall().rowId(0);
  desk.marking.begin(item);
  desk.marking.add(QRectF(0.2, 0.2, 0.4, 0.4));
  desk.marking.done();
  desk.state.setLocation(favoritesLocation);
  ASSERT_EQ(wall().rowCount(), 0);
  desk.composer.setExpanded(true);
  QTest::mouseClick(named<Button>(*window, u"1 mark"_s), Qt::LeftButton);
  test::runPosted();
  EXPECT_EQ(desk.marking.subject(), item);
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_EQ(desk.marking.marks().count(), 1);
}

// The titles of a menu, a dash for each separator, submenus in brackets.
QString rowsOf(const QMenu& menu) {
  QStringList rows;
  for (const QAction* row : menu.actions()) {
    if (row->isSeparator())
      rows << u"-"_s;
    else
      rows << (row->menu() ? u"["_s + row->text() + u"]"_s : row->text());
  }
  return rows.join(u" | "_s);
}

class WallMenusTest : public MainWindowTest {
 protected:
  QString menuFor(const QSet<QUuid>& selection) {
    desk.state.select(selection);
    const std::unique_ptr<QMenu> menu(window->findChild<WallMenus*>()->make());
    return rowsOf(*menu);
  }
  void makeTwo() {
    type(u"a boat"_s);
    desk.settle();
    type(u"a car"_s);
    desk.settle();
  }
};

TEST_F(WallMenusTest, OneItemsMenuOffersWhatCanBeDoneWithIt) {
  makeTwo();
  const QString rows = menuFor({wall().rowId(0)});
  EXPECT_TRUE(rows.startsWith(u"Open\tReturn | Quick Look | - | Favorite | [Rating] | [Status] | - | "_s)) << rows.toStdString();
  for (const char* row : {"Rename", "Copy", "Show in Files", "Move to Trash"})
    EXPECT_TRUE(rows.contains(QString::fromLatin1(row))) << rows.toStdString();
  EXPECT_FALSE(rows.contains(u"Restore"_s));
  EXPECT_FALSE(rows.contains(u"Move to Project"_s)) << "there is no other place to move to";
}

TEST_F(WallMenusTest, SeveralItemsMenuMovesThemToAProjectThatIsChosenInPlace) {
  makeTwo();
  const QString name = u"Harbour & Film"_s;
  core::Project project(name, desk.store.files().createProjectFolder(name), desk.store.now());
  const QUuid id = project.id;
  desk.store.context().insert(std::move(project));
  desk.store.save(core::LibraryTables::projects);
  desk.state.select({wall().rowId(0), wall().rowId(1)});
  const std::unique_ptr<QMenu> menu(window->findChild<WallMenus*>()->make());
  const QString rows = rowsOf(*menu);
  EXPECT_TRUE(rows.contains(u"[Move to Project]"_s)) << rows.toStdString();
  EXPECT_FALSE(rows.contains(u"Rename"_s));
  QMenu* places = nullptr;
  for (QAction* row : menu->actions())
    if (row->menu() && row->text() == u"Move to Project"_s) places = row->menu();
  ASSERT_NE(places, nullptr);
  ASSERT_EQ(rowsOf(*places), u"Harbour && Film"_s);
  places->actions().front()->trigger();
  for (const core::AssetRef& item : desk.store.assets()) EXPECT_EQ(item->projectID, id);
}

TEST_F(WallMenusTest, InTrashAnItemIsRestoredAndNothingElseIsDoneToIt) {
  makeTwo();
  const QUuid item = wall().rowId(0);
  desk.state.select({item});
  desk.curation.moveToTrash();
  desk.state.setLocation(trashLocation);
  const QString rows = menuFor({item});
  EXPECT_TRUE(rows.contains(u"Restore"_s)) << rows.toStdString();
  for (const char* row : {"Favorite", "Rating", "Move to Trash", "Rename"})
    EXPECT_FALSE(rows.contains(QString::fromLatin1(row))) << rows.toStdString();
}

TEST_F(WallMenusTest, AJobsMenuCancelsWhatRunsAndPutsAwayWhatEnded) {
  desk.provider->gate.emplace();
  type(u"a boat"_s);
  EXPECT_TRUE(menuFor({wall().rowId(0)}).contains(u"Cancel Generation"_s));
  desk.provider->gate->finish();
  desk.settle();
  desk.provider->gate.reset();
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
  type(u"a car"_s);
  desk.settle();
  ASSERT_TRUE(desk.gallery.isJobAt(0));
  desk.state.select({wall().rowId(0)});
  const std::unique_ptr<QMenu> menu(window->findChild<WallMenus*>()->make());
  const QString rows = rowsOf(*menu);
  EXPECT_TRUE(rows.contains(u"Retry"_s)) << rows.toStdString();
  EXPECT_TRUE(rows.contains(u"Copy Details"_s));
  EXPECT_FALSE(rows.contains(u"Cancel"_s));
  for (QAction* row : menu->actions())
    if (row->text() == u"Remove from Gallery"_s) row->trigger();
  EXPECT_EQ(desk.gallery.jobCount(), 0);
}

TEST_F(WallMenusTest, TheGroundOffersOrderAndFiltersAndClearsThem) {
  makeTwo();
  EXPECT_TRUE(menuFor({}).startsWith(u"Select All | - | [Order] | "_s)) << menuFor({}).toStdString();
  EXPECT_FALSE(menuFor({}).contains(u"Clear Filters"_s));
  desk.filters.setSearch(u"boat"_s);
  EXPECT_TRUE(menuFor({}).contains(u"Clear Filters"_s));
}

TEST_F(MainWindowTest, TwoSelectedItemsTurnTheFilterRowIntoTheSelectionBar) {
  type(u"a boat"_s);
  desk.settle();
  type(u"a car"_s);
  desk.settle();
  auto* bar = window->findChild<SelectionBar*>();
  auto* filters = window->findChild<FilterRow*>();
  ASSERT_NE(bar, nullptr);
  desk.state.select({wall().rowId(0)});
  EXPECT_FALSE(bar->isVisible());
  const QRect row = filters->geometry();
  desk.state.select({wall().rowId(0), wall().rowId(1)});
  EXPECT_TRUE(bar->isVisible());
  EXPECT_FALSE(filters->isVisible());
  EXPECT_EQ(bar->geometry(), row) << "the height never jumps";
  EXPECT_NE(named<QWidget>(*bar, u"2 selected"_s), nullptr);
  EXPECT_TRUE(named<QAbstractButton>(*bar, u"Compare"_s)->isVisible());
  named<QAbstractButton>(*bar, u"Favorite"_s)->click();
  for (const core::AssetRef& item : desk.store.assets()) EXPECT_TRUE(item->favorite);
  named<QAbstractButton>(*bar, u"Clear Selection"_s)->click();
  EXPECT_TRUE(desk.state.selection().isEmpty());
  EXPECT_TRUE(filters->isVisible());
}

TEST_F(MainWindowTest, TheSelectionBarInTrashOffersTheWayBackAlone) {
  type(u"a boat"_s);
  desk.settle();
  type(u"a car"_s);
  desk.settle();
  desk.state.select({wall().rowId(0), wall().rowId(1)});
  desk.curation.moveToTrash();
  desk.state.setLocation(trashLocation);
  desk.state.select({wall().rowId(0), wall().rowId(1)});
  auto* bar = window->findChild<SelectionBar*>();
  ASSERT_TRUE(bar->isVisible());
  EXPECT_FALSE(named<QAbstractButton>(*bar, u"Move to Trash"_s)->isVisible());
  EXPECT_FALSE(named<QAbstractButton>(*bar, u"Favorite"_s)->isVisible());
  named<QAbstractButton>(*bar, u"Restore"_s)->click();
  test::runPosted();
  for (const core::AssetRef& item : desk.store.assets()) EXPECT_FALSE(item->isTrashed());
}

TEST_F(MainWindowTest, AFilterThatHidesEverythingIsClearedFromTheEmptyWall) {
  type(u"a boat"_s);
  desk.settle();
  desk.filters.setSearch(u"nothing like it"_s);
  test::runPosted();
  ASSERT_EQ(wall().rowCount(), 0);
  auto* clear = named<QAbstractButton>(wall(), u"Clear Filters"_s);
  ASSERT_NE(clear, nullptr);
  ASSERT_TRUE(clear->isVisible());
  clear->click();
  test::runPosted();
  EXPECT_EQ(wall().rowCount(), 1);
}

TEST_F(MainWindowTest, CtrlCInTheGalleryCopiesItemsAndInAFieldItsText) {
  type(u"a boat"_s);
  desk.settle();
  QTest::mouseClick(wall().viewport(), Qt::LeftButton, {}, wall().cellRect(0).center());
  QTest::keyClick(&wall(), Qt::Key_C, Qt::ControlModifier);
  ASSERT_NE(desk.clipboard, nullptr);
  EXPECT_EQ(desk.clipboard->urls().size(), 1);
  desk.clipboard.reset();
  window->library().dock().focusPrompt();
  QTest::keyClicks(prompt(), u"words"_s);
  QTest::keyClick(prompt(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(prompt(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(desk.clipboard, nullptr);
}

}  // namespace
}  // namespace sorvan::views
