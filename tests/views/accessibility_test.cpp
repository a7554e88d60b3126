#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "core/workspace_opening.h"
#include "shell/actions_presenter.h"
#include "shell/views/controls.h"
#include "shell/views/model_picker.h"
#include "shell/views/popover.h"
#include "shell/views/segmented_control.h"
#include "shell/views/settings_dialog.h"
#include "views/access_walk.h"
#include "views/text_contrast.h"
#include "views/whole_window.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using test::keyboardFaults;
using test::namelessElements;

std::string lines(const QStringList& faults) { return faults.join(u'\n').toStdString(); }

class Accessibility : public WholeWindow {
 protected:
  // Names, keys, focus and contrast of what is in front now.
  void expectAccessible(QWidget& part) {
    test::runPosted();
    EXPECT_EQ(lines(namelessElements(part)), "");
    for (const Appearance look : {Appearance::light, Appearance::dark}) {
      Theme::instance().setAppearance(look);
      QCoreApplication::processEvents();
      EXPECT_EQ(test::faintTexts(part).toStdString(), "") << (look == Appearance::dark ? "dark" : "light");
    }
    EXPECT_EQ(lines(keyboardFaults(part)), "");
  }
  // The other lists of the model picker. The walk before may have closed it.
  void expectListsAccessible() {
    auto* picker = shown<ModelPicker>();
    auto* tabs = picker ? picker->findChild<SegmentedControl*>() : nullptr;
    const int lists = tabs ? static_cast<int>(tabs->findChildren<QAbstractButton*>().size()) : 0;
    for (int list = 0; list < lists; ++list) {
      if (shown<ModelPicker>() != picker) return;
      SCOPED_TRACE(list);
      tabs->findChildren<QAbstractButton*>().at(list)->click();
      expectAccessible(*picker);
    }
  }
  void makeItem(const QString& prompt) {
    type(prompt);
    desk.settle();
  }
  QDialog* openDialog() {
    for (QWidget* top : QApplication::topLevelWidgets())
      if (auto* dialog = qobject_cast<QDialog*>(top); dialog && dialog->isVisible()) return dialog;
    return shown<QDialog>();
  }
  // Where a page of this kind has something to show.
  WorkspaceMode modeOf(ModeKind kind, QUuid item) {
    WorkspaceMode mode{kind, item};
    if (kind == ModeKind::contactSheet) mode.sheet = PassingSelection{{item}};
    if (kind == ModeKind::generation) mode.subject = desk.newestJob()->id;
    return mode;
  }
  void saveReference(QUuid item) {
    SavedReferenceDraft draft = saved.newDraft(ReferenceScope::global, {item});
    draft.name = u"Boat"_s;
    EXPECT_FALSE(saved.save(draft).has_value());
  }
  static void closeMenus() {
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  }
  void close(QDialog* dialog) {
    dialog->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::setActiveWindow(window.get());
    test::runPosted();
  }
};

TEST_F(Accessibility, OfTheFirstPage) {
  desk.store.close();
  test::runPosted();
  ASSERT_TRUE(welcome.isShown());
  expectAccessible(*window);
}

TEST_F(Accessibility, EnterPressesTheButtonThatHasTheKeyboard) {
  desk.store.close();
  test::runPosted();
  auto* focused = qobject_cast<Button*>(QApplication::focusWidget());
  ASSERT_NE(focused, nullptr) << "the first page has the keyboard on its first button";
  QTest::keyClick(focused, Qt::Key_Return);
  EXPECT_EQ(desk.store.workspaceRoot(), desk.folder / u"Default"_s);
}

TEST_F(Accessibility, OfTheGalleryWithoutItems) { expectAccessible(*window); }

TEST_F(Accessibility, OfTheGalleryWithOneItem) {
  makeItem(u"a boat"_s);
  desk.state.select({wall().rowId(0)});
  expectAccessible(*window);
}

TEST_F(Accessibility, OfTheGalleryWithAFailedJob) {
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
  makeItem(u"a boat"_s);
  desk.state.select({wall().rowId(0)});
  expectAccessible(*window);
}

// Pages that other files add are visited too, as soon as they are there.
TEST_F(Accessibility, OfEveryPage) {
  makeItem(u"a boat"_s);
  const QUuid item = wall().rowId(0);
  const auto kinds = window->library().pageKinds();
  EXPECT_GE(kinds.size(), 9U);
  saveReference(item);
  sidebar.createProject(u"Harbour"_s);
  for (const ModeKind kind : kinds) {
    SCOPED_TRACE(titleOf(kind).toStdString());
    const bool ofProject = kind == ModeKind::projectReferences;
    desk.state.setLocation(ofProject ? uuidText(desk.store.projects().front()->id) : inboxLocation);
    desk.state.setMode(modeOf(kind, item));
    test::runPosted();
    ASSERT_EQ(window->library().page(), kind);
    expectAccessible(*window);
  }
}

TEST_F(Accessibility, OfAGenerationThatFailed) {
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(u"Planted."_s));
  makeItem(u"a boat"_s);
  desk.state.openGeneration(desk.newestJob()->id, 0);
  test::runPosted();
  ASSERT_EQ(window->library().page(), ModeKind::generation);
  expectAccessible(*window);
}

TEST_F(Accessibility, OfAContactSheetWithNothingIn) {
  desk.state.openContactSheet(PassingSelection{});
  test::runPosted();
  ASSERT_EQ(window->library().page(), ModeKind::contactSheet);
  expectAccessible(*window);
}

TEST_F(Accessibility, TheArrowsWalkAlongTheTabsOfALocation) {
  auto* gallery = named<QAbstractButton>(*window, titleOf(ModeKind::gallery));
  ASSERT_NE(gallery, nullptr);
  gallery->setFocus(Qt::TabFocusReason);
  for (const ModeKind tab : {ModeKind::contactSheets, ModeKind::gallery}) {
    QTest::keyClick(QApplication::focusWidget(), tab == ModeKind::gallery ? Qt::Key_Left : Qt::Key_Right);
    test::runPosted();
    EXPECT_EQ(window->library().page(), tab);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), titleOf(tab));
  }
}

TEST_F(Accessibility, OfEveryPageOfTheSettings) {
  actions->trigger(ActionId::openSettings);
  test::runPosted();
  auto* settingsWindow = window->findChild<SettingsDialog*>();
  ASSERT_NE(settingsWindow, nullptr);
  auto* pages = settingsWindow->findChild<QStackedWidget*>();
  EXPECT_GE(pages->count(), 2);
  for (int page = 0; page < pages->count(); ++page) {
    SCOPED_TRACE(page);
    pages->setCurrentIndex(page);
    test::runPosted();
    expectAccessible(*settingsWindow);
  }
  close(settingsWindow);
}

TEST_F(Accessibility, OfTheFilterRowAndTheSearch) {
  makeItem(u"a boat"_s);
  actions->trigger(ActionId::toggleFilters);
  actions->trigger(ActionId::searchMedia);
  test::runPosted();
  expectAccessible(*window);
}

TEST_F(Accessibility, OfEveryPopoverOfTheComposer) {
  window->library().dock().focusPrompt();
  QTest::keyClicks(prompt(), u"a boat"_s);
  test::runPosted();
  QStringList opened;
  for (Chip* chip : window->library().dock().findChildren<Chip*>()) {
    if (!chip->isVisible()) continue;
    chip->click();
    test::runPosted();
    auto* popover = shown<Popover>();
    closeMenus();
    if (!popover) continue;
    SCOPED_TRACE(popover->accessibleName().toStdString());
    opened += popover->accessibleName();
    expectAccessible(*popover);
    expectListsAccessible();
    if (auto* still = shown<Popover>()) still->dismiss();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  EXPECT_GE(opened.size(), 3) << opened.join(u", "_s).toStdString();
}

// Whatever an action opens over the window: dialogs that come later are visited too.
TEST_F(Accessibility, OfEveryDialogThatAnActionOpens) {
  makeItem(u"a boat"_s);
  desk.state.select({wall().rowId(0)});
  const std::set<ActionId> elsewhere{ActionId::openAnotherWorkspace, ActionId::quit, ActionId::fullScreen};
  QStringList opened;
  for (const ActionRow& action : actionTable()) {
    if (elsewhere.contains(action.id) || !actions->isEnabled(action.id)) continue;
    if (!action.title.endsWith(u'…') && action.menu != MenuId::help) continue;
    SCOPED_TRACE(action.title.toStdString());
    actions->trigger(action.id);
    test::runPosted();
    closeMenus();
    if (QDialog* dialog = openDialog()) {
      opened += action.title;
      expectAccessible(*dialog);
      if (QDialog* still = openDialog()) close(still);
    }
    if (auto* popover = shown<Popover>()) popover->dismiss();
  }
  EXPECT_GE(opened.size(), 3) << opened.join(u", "_s).toStdString();
}

TEST_F(Accessibility, OfAnAlert) {
  desk.alerts.ask({0, AlertTone::warning, u"Work is still in progress"_s, u"Quitting stops it."_s,
                   {{u"Keep Working"_s, AlertButtonRole::primary, true}, {u"Quit"_s, AlertButtonRole::destructive, false}}},
                  {});
  test::runPosted();
  QDialog* alert = openDialog();
  ASSERT_NE(alert, nullptr);
  expectAccessible(*alert);
}

TEST_F(Accessibility, OfAToastWithAButton) {
  desk.alerts.showToast({0, AlertTone::success, u"Saved 2 images locally"_s, u"The quay"_s, u"Show"_s, true});
  test::runPosted();
  expectAccessible(*window);
}

TEST_F(Accessibility, OfMarkingAPicture) {
  makeItem(u"a boat"_s);
  desk.state.select({wall().rowId(0)});
  actions->trigger(ActionId::markAreas);
  test::runPosted();
  ASSERT_TRUE(desk.marking.isMarking());
  expectAccessible(*window);
}

// What the walk itself can see.
class AccessWalk : public Dressed {
 protected:
  struct Bare : QAbstractButton {
    using QAbstractButton::QAbstractButton;
    void paintEvent(QPaintEvent*) override {}
  };
  QWidget window;
  QVBoxLayout layout{&window};
};

TEST_F(AccessWalk, FindsAButtonWithoutAName) {
  layout.addWidget(new QPushButton);
  show(window, {200, 80});
  EXPECT_TRUE(lines(namelessElements(window)).find("without a name") != std::string::npos);
}

TEST_F(AccessWalk, FindsAFocusableWithoutARole) {
  auto* plain = new QWidget;
  plain->setAccessibleName(u"Plain"_s);
  plain->setFocusPolicy(Qt::StrongFocus);
  layout.addWidget(plain);
  show(window, {200, 80});
  EXPECT_TRUE(lines(namelessElements(window)).find("without a role") != std::string::npos);
}

TEST_F(AccessWalk, FindsAButtonThatKeysPassBy) {
  layout.addWidget(new QPushButton(u"First"_s));
  auto* passed = new QPushButton(u"Passed by"_s);
  passed->setFocusPolicy(Qt::NoFocus);
  layout.addWidget(passed);
  show(window, {200, 80});
  EXPECT_TRUE(lines(keyboardFaults(window)).find("not reached by keys: “Passed by”") != std::string::npos);
}

TEST_F(AccessWalk, FindsAFocusThatCannotBeSeen) {
  auto* bare = new Bare;
  bare->setAccessibleName(u"Bare"_s);
  bare->setFocusPolicy(Qt::StrongFocus);
  bare->setFixedSize(80, 30);
  layout.addWidget(bare);
  layout.addWidget(new QLineEdit);
  show(window, {200, 120});
  EXPECT_TRUE(lines(keyboardFaults(window)).find("shows no focus: “Bare”") != std::string::npos);
}

}  // namespace
}  // namespace sorvan::views
