#include "shell/views/library_view.h"

#include <QSignalSpy>
#include <QSlider>

#include "shell/views/controls.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/labels.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/welcome_view.h"
#include "support/run_task.h"
#include "views/dressed.h"
#include "views/samples.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class LibraryViewTest : public Dressed {
 protected:
  LibraryViewTest() {
    wall.set(sampleCells(u":/sorvan/samples"_s));
    fillHistory(history);
    library.sidebar().show(sampleSidebar());
    library.inspector().show(sampleItemInspector(u":/sorvan/samples"_s));
    library.setInspectorShown(true);
  }
  SampleWall wall;
  SampleHistory history;
  SampleComposer composer;
  AlertsPresenter alerts;
  LibraryView library{{wall, history, composer, alerts}};
};

TEST_F(LibraryViewTest, EveryControlThatTakesTheKeyboardHasAName) {
  for (const ModeKind page : {ModeKind::gallery, ModeKind::activity, ModeKind::asset}) {
    show(library, {1440, 866});
    library.asset().show(wall.idAt(0));
    library.setPage(page);
    composer.setExpanded(true);
    for (QWidget* widget : library.findChildren<QWidget*>()) {
      if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0) continue;
      if (widget->inherits("QScrollBar") || widget->objectName().startsWith(u"qt_"_s)) continue;
      const auto* button = qobject_cast<QAbstractButton*>(widget);
      const bool named = !widget->accessibleName().isEmpty() || (button && !button->text().isEmpty());
      EXPECT_TRUE(named) << widget->metaObject()->className();
    }
  }
}

TEST_F(LibraryViewTest, AWideWindowHasThreeColumnsAndTheDockBetween) {
  show(library, {1440, 866});
  EXPECT_EQ(library.sidebar().width(), 232);
  EXPECT_EQ(library.inspector().width(), 320);
  EXPECT_GE(library.dock().x(), 232 - ComposerDock::margin);
  EXPECT_LE(library.dock().geometry().right(), library.inspector().x());
}

TEST_F(LibraryViewTest, ANarrowWindowHasARailAndNothingCoversTheDock) {
  QSignalSpy crowded(&library, &LibraryView::inspectorCrowded);
  show(library, {1440, 866});
  library.resize(1024, 646);
  EXPECT_EQ(crowded.count(), 1);
  EXPECT_EQ(library.sidebar().width(), 52);
  EXPECT_LE(library.dock().geometry().right(), library.inspector().x());
  library.setInspectorShown(false);
  EXPECT_FALSE(library.inspector().isVisible());
}

TEST_F(LibraryViewTest, WhatAWindowHasNoRoomForLeavesItAtItsWidth) {
  show(library, {1440, 866});
  const auto* slider = library.toolbar().findChild<QSlider*>();
  ASSERT_NE(slider, nullptr);
  const auto resized = [&](int width) {
    library.resize(width, 866);
    QCoreApplication::processEvents();
  };
  resized(1320);
  EXPECT_TRUE(slider->isVisible());
  resized(1319);
  EXPECT_FALSE(slider->isVisible());
  resized(1180);
  EXPECT_EQ(library.sidebar().width(), 232);
  resized(1179);
  EXPECT_EQ(library.sidebar().width(), 52);
  resized(1100);
  EXPECT_LE(library.wall().mapTo(&library, library.wall().rect().topRight()).x(), library.inspector().x());
  resized(1099);
  EXPECT_GT(library.wall().mapTo(&library, library.wall().rect().topRight()).x(), library.inspector().x());
}

TEST_F(LibraryViewTest, F6WalksTheZonesAndBack) {
  show(library, {1440, 866});
  library.wall().setFocus();
  library.cycleZones(+1);
  EXPECT_TRUE(library.inspector().isAncestorOf(QApplication::focusWidget()));
  library.cycleZones(+1);
  EXPECT_TRUE(library.dock().isAncestorOf(QApplication::focusWidget()));
  library.cycleZones(-1);
  library.cycleZones(-1);
  EXPECT_EQ(QApplication::focusWidget(), &library.wall());
}

TEST_F(LibraryViewTest, TabVisitsEveryControlOnceInTheOrderOfTheZones) {
  show(library, {1440, 866});
  composer.setExpanded(true);
  QCoreApplication::processEvents();
  library.wall().setFocus();
  std::vector<QWidget*> visited;
  for (int step = 0; step < 80; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (QApplication::focusWidget() == &library.wall()) break;
    visited.push_back(QApplication::focusWidget());
  }
  const auto place = [&](const QWidget& zone) {
    return std::find_if(visited.begin(), visited.end(), [&](QWidget* stop) { return zone.isAncestorOf(stop); }) -
           visited.begin();
  };
  EXPECT_LT(visited.size(), 60u);
  EXPECT_EQ(std::set<QWidget*>(visited.begin(), visited.end()).size(), visited.size());
  EXPECT_LT(place(library.inspector()), place(library.dock()));
  EXPECT_LT(place(library.dock()), place(library.sidebar()));
  EXPECT_LT(place(library.sidebar()), place(library.toolbar()));
}

TEST_F(LibraryViewTest, TheComposerComesWhenAskedForOverTheHistoryAndGoesWithEscape) {
  show(library, {1440, 866});
  library.setPage(ModeKind::activity);
  EXPECT_FALSE(library.dock().isVisible());
  composer.focus();
  EXPECT_TRUE(library.dock().isVisible());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(library.dock().isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &library.history().list());
}

TEST_F(LibraryViewTest, ASidebarRowIsChosenByPressAndByKey) {
  show(library, {1440, 866});
  QSignalSpy chosen(&library.sidebar(), &SidebarView::chosen);
  auto* favorites = named<SidebarRowButton>(library.sidebar(), u"Favorites"_s);
  QTest::mouseClick(favorites, Qt::LeftButton);
  favorites->setFocus();
  QTest::keyClick(favorites, Qt::Key_Down);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  ASSERT_EQ(chosen.count(), 2);
  EXPECT_EQ(chosen.at(0).front().toString(), u"favorites"_s);
  EXPECT_EQ(chosen.at(1).front().toString(), u"inbox"_s);
}

TEST_F(LibraryViewTest, TheSidebarKeepsItsRowsWhileOnlyCountsChange) {
  show(library, {1440, 866});
  auto* before = named<SidebarRowButton>(library.sidebar(), u"Inbox"_s);
  SidebarDisplay display = sampleSidebar();
  display.rows[2].countText = u"28"_s;
  library.sidebar().show(display);
  EXPECT_EQ(named<SidebarRowButton>(library.sidebar(), u"Inbox"_s), before);
  EXPECT_EQ(before->accessibleDescription(), u"28"_s);
}

TEST_F(LibraryViewTest, StarsAnswerKeysAndAPressOnTheLastOneClears) {
  show(library, {1440, 866});
  QSignalSpy chosen(&library.inspector(), &InspectorView::ratingChosen);
  auto* stars = named<StarRow>(library.inspector(), u"Rating"_s);
  stars->setFocus();
  QTest::keyClick(stars, Qt::Key_Left);
  QTest::keyClick(stars, Qt::Key_5);
  QTest::mouseClick(stars, Qt::LeftButton, {}, QPoint(3 * 18 + 8, 10));
  ASSERT_EQ(chosen.count(), 3);
  EXPECT_EQ(chosen.at(0).front().toInt(), 3);
  EXPECT_EQ(chosen.at(1).front().toInt(), 5);
  EXPECT_EQ(chosen.at(2).front().toInt(), 0);
}

TEST_F(LibraryViewTest, TheInspectorOfAFailedJobOffersItsWaysOut) {
  show(library, {1440, 866});
  library.inspector().show(sampleJobInspector());
  QSignalSpy asked(&library.inspector(), &InspectorView::actionRequested);
  for (const char* title : {"Save Result", "Save Raw Result", "Copy Details"}) {
    Button* button = nullptr;
    for (Button* candidate : library.inspector().findChildren<Button*>()) {
      if (candidate->text() == QLatin1StringView(title)) button = candidate;
    }
    ASSERT_NE(button, nullptr) << title;
    QTest::mouseClick(button, Qt::LeftButton);
  }
  ASSERT_EQ(asked.count(), 3);
  EXPECT_EQ(asked.at(1).front().value<ActionId>(), ActionId::saveRawResult);
}

TEST_F(LibraryViewTest, TheInspectorKeepsTheKeyboardWhileOnlyWordsChange) {
  show(library, {1440, 866});
  InspectorDisplay display = sampleJobInspector();
  library.inspector().show(display);
  Button* copy = nullptr;
  for (Button* candidate : library.inspector().findChildren<Button*>()) {
    if (candidate->text() == u"Copy Details"_s) copy = candidate;
  }
  QCoreApplication::processEvents();
  copy->setFocus();
  display.facts = u"Seedream V5 Pro Edit · Today 10:12 · 39 s"_s;
  library.inspector().show(display);
  EXPECT_EQ(QApplication::focusWidget(), copy);
}

TEST_F(LibraryViewTest, TheLargeViewStepsAndClosesByKeys) {
  show(library, {1440, 866});
  AssetView& asset = library.asset();
  asset.show(wall.idAt(1));
  library.setPage(ModeKind::asset);
  QSignalSpy stepped(&asset, &AssetView::stepRequested);
  QSignalSpy closed(&asset, &AssetView::closeRequested);
  QTest::keyClick(&asset, Qt::Key_Right);
  QTest::keyClick(&asset, Qt::Key_Left);
  QTest::keyClick(&asset, Qt::Key_Escape);
  ASSERT_EQ(stepped.count(), 2);
  EXPECT_EQ(stepped.at(0).front().toInt(), 1);
  EXPECT_EQ(closed.count(), 1);
  EXPECT_EQ(asset.neighbour(-1), wall.idAt(0));
}

TEST_F(LibraryViewTest, TheLargeViewStepsOverJobs) {
  std::vector<GalleryCell> cells = wall.cells();
  cells.insert(cells.begin() + 1, sampleJobCells().front());
  wall.set(cells);
  library.asset().show(wall.idAt(0));
  EXPECT_EQ(library.asset().neighbour(+1), wall.idAt(2));
  EXPECT_TRUE(library.asset().neighbour(-1).isNull());
  const auto items = static_cast<int>(cells.size()) - 1;
  library.asset().show(wall.idAt(2));
  const auto places = library.asset().findChildren<ElidedLabel*>();
  EXPECT_TRUE(std::ranges::any_of(
      places, [&](const ElidedLabel* label) { return label->text() == u"2 of %1"_s.arg(items); }));
}

TEST_F(LibraryViewTest, AHistoryRowIsSelectedByKeyAndItsButtonActs) {
  show(library, {1440, 866});
  library.setPage(ModeKind::activity);
  HistoryList& list = library.history().list();
  QObject::connect(&list, &HistoryList::selectionRequested, &list, &HistoryList::setSelection);
  QSignalSpy asked(&list, &HistoryList::actionRequested);
  QTest::keyClick(&list, Qt::Key_Home);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.currentRow(), history.idAt(1));
  const QRect row = list.cellRect(2);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(row.right() - 40, row.center().y()));
  ASSERT_EQ(asked.count(), 1);
  EXPECT_EQ(asked.front().at(1).value<JobAction>(), JobAction::saveResult);
}

TEST_F(LibraryViewTest, SeveralJobsAreSelectedByKeysAndByPresses) {
  show(library, {1440, 866});
  library.setPage(ModeKind::activity);
  HistoryList& list = library.history().list();
  QSignalSpy asked(&list, &HistoryList::selectionRequested);
  const auto last = [&asked] { return asked.back()[0].value<QSet<QUuid>>(); };
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.cellRect(0).center());
  QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(last(), (QSet<QUuid>{history.idAt(0), history.idAt(1)}));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, list.cellRect(3).center());
  EXPECT_EQ(last().size(), 3);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, list.cellRect(0).center());
  EXPECT_EQ(last(), (QSet<QUuid>{history.idAt(1), history.idAt(3)}));
  QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(last().size(), history.count());
}

TEST_F(LibraryViewTest, TheHistoryOffersToCancelWhatIsAtWork) {
  show(library, {1440, 866});
  library.setPage(ModeKind::activity);
  QSignalSpy selected(&library.history(), &HistoryView::cancelSelectedPressed);
  QSignalSpy all(&library.history(), &HistoryView::cancelAllPressed);
  EXPECT_FALSE(named<Button>(library, u"Cancel All"_s)->isVisible());
  library.history().setActive(3, 2);
  QTest::mouseClick(named<Button>(library, u"Cancel 2 Selected"_s), Qt::LeftButton);
  QTest::mouseClick(named<Button>(library, u"Cancel All"_s), Qt::LeftButton);
  EXPECT_EQ(selected.count(), 1);
  EXPECT_EQ(all.count(), 1);
}

TEST_F(LibraryViewTest, NoKeyCancelsAJob) {
  show(library, {1440, 866});
  library.setPage(ModeKind::activity);
  HistoryList& list = library.history().list();
  QSignalSpy asked(&list, &HistoryList::actionRequested);
  list.setSelected(history.idAt(0));
  for (const int key : {Qt::Key_Return, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Escape, Qt::Key_Space})
    QTest::keyClick(&list, static_cast<Qt::Key>(key));
  EXPECT_EQ(asked.count(), 0);
}

TEST_F(LibraryViewTest, WelcomeOffersBothFoldersAndTheFirstHasTheKeyboard) {
  WelcomeView welcome(
      {u"Sorvan Studio"_s, u"A line."_s, u"Use Pictures/Sorvan"_s, u"Help"_s, u"Choose Another Folder…"_s, u"Note"_s});
  show(welcome, {1440, 866});
  QSignalSpy used(&welcome, &WelcomeView::defaultChosen);
  QSignalSpy other(&welcome, &WelcomeView::anotherFolderChosen);
  EXPECT_EQ(QApplication::focusWidget(), named<Button>(welcome, u"Use Pictures/Sorvan"_s));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  QTest::mouseClick(named<Button>(welcome, u"Choose Another Folder…"_s), Qt::LeftButton);
  EXPECT_EQ(used.count(), 1);
  EXPECT_EQ(other.count(), 1);
}

TEST_F(LibraryViewTest, AJobThatWasMarkedShowsItsAreasOnThePicture) {
  show(library, {1440, 866});
  InspectorDisplay display = sampleJobInspector();
  library.inspector().show(display);
  EXPECT_FALSE(library.inspector().findChild<MarkedPicture*>());
  display.marks = {u"Marked areas"_s, u"2 boxes"_s, wall.cellAt(0).filePath, {{0.1, 0.1, 0.3, 0.3}, {0.5, 0.5, 0.4, 0.4}}};
  library.inspector().show(display);
  test::runPosted();
  auto* picture = library.inspector().findChild<MarkedPicture*>();
  ASSERT_TRUE(picture && picture->isVisible());
  EXPECT_EQ(picture->accessibleName(), u"Marked areas"_s);
  EXPECT_EQ(picture->accessibleDescription(), u"2 boxes"_s);
  const auto redPixels = [picture] {
    const QImage seen = picture->grab().toImage();
    int red = 0;
    for (int y = 0; y < seen.height(); ++y)
      for (int x = 0; x < seen.width(); ++x) red += seen.pixelColor(x, y).rgb() == colors().mark.rgb() ? 1 : 0;
    return red;
  };
  test::runUntil([&] { return redPixels() > 0; });
  EXPECT_GT(redPixels(), 2 * 20 * 18 / 2);
}

TEST_F(LibraryViewTest, WhatCanBeDoneWithAnItemAreTiles) {
  show(library, {1440, 866});
  InspectorDisplay display = sampleItemInspector(u":/sorvan/samples"_s);
  display.buttons = {{ActionId::useAsReference, u"Use as Reference"_s, false},
                     {ActionId::markAreas, u"Mark Areas"_s, false}};
  library.inspector().show(display);
  test::runPosted();
  QSignalSpy asked(&library.inspector(), &InspectorView::actionRequested);
  QTest::mouseClick(named<TileButton>(library.inspector(), u"Mark Areas"_s), Qt::LeftButton);
  ASSERT_EQ(asked.count(), 1);
  EXPECT_EQ(asked.front().front().value<ActionId>(), ActionId::markAreas);
}

}  // namespace
}  // namespace sorvan::views
