#include "shell/views/media_wall.h"

#include <QAccessible>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>

#include "shell/item_transfer.h"
#include "shell/views/drop_frame.h"
#include "views/dressed.h"
#include "views/samples.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class MediaWallTest : public Dressed {
 protected:
  MediaWallTest() { QObject::connect(&wall, &MediaWall::selectionRequested, &wall, &MediaWall::setSelection); }
  void fill(int count) {
    std::vector<GalleryCell> cells;
    for (int index = 0; index < count; ++index)
      cells.push_back(pictureCell(u"picture %1"_s.arg(index), 1.0 + index % 3 * 0.4));
    source.set(std::move(cells));
    show(wall, {900, 600});
  }
  void showJobs() {
    source.set(sampleJobCells());
    show(wall, {1200, 600});
  }
  void click(int index, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(wall.viewport(), Qt::LeftButton, modifiers, wall.cellRect(index).center());
  }
  // The place of the first part of that kind inside the cell.
  QPoint partOf(int index, CellPart part) {
    const QRect area = wall.cellRect(index);
    for (int y = area.top(); y < area.bottom(); y += 4) {
      for (int x = area.left(); x < area.right(); x += 4) {
        if (partAt(area, source.cellAt(index), {x, y}) == part) return {x + 4, y + 4};
      }
    }
    return {-1, -1};
  }
  QSet<QUuid> ids(std::initializer_list<int> indices) {
    QSet<QUuid> result;
    for (const int index : indices) result.insert(source.idAt(index));
    return result;
  }

  SampleWall source;
  ThumbnailStore thumbnails;
  MediaWall wall{source, thumbnails};
};

TEST_F(MediaWallTest, AClickSelectsOneCell) {
  fill(20);
  click(3);
  EXPECT_EQ(wall.selection(), ids({3}));
  click(5);
  EXPECT_EQ(wall.selection(), ids({5}));
}

TEST_F(MediaWallTest, CtrlTogglesAndShiftExtends) {
  fill(20);
  click(2);
  click(4, Qt::ControlModifier);
  EXPECT_EQ(wall.selection(), ids({2, 4}));
  click(4, Qt::ControlModifier);
  EXPECT_EQ(wall.selection(), ids({2}));
  click(1);
  click(3, Qt::ShiftModifier);
  EXPECT_EQ(wall.selection(), ids({1, 2, 3}));
}

TEST_F(MediaWallTest, TheCircleAtTheCornerAddsWithoutAKey) {
  fill(20);
  click(2);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, wall.cellRect(4).topLeft() + QPoint(14, 14));
  EXPECT_EQ(wall.selection(), ids({2, 4}));
}

TEST_F(MediaWallTest, ArrowsMoveInReadingOrderAndByRow) {
  fill(40);
  wall.setFocus();
  QTest::keyClick(&wall, Qt::Key_Home);
  QTest::keyClick(&wall, Qt::Key_Right);
  EXPECT_EQ(wall.selection(), ids({1}));
  QTest::keyClick(&wall, Qt::Key_Down);
  const int below = source.indexOf(wall.currentRow());
  EXPECT_GT(wall.cellRect(below).top(), wall.cellRect(1).top());
  QTest::keyClick(&wall, Qt::Key_Up);
  EXPECT_EQ(wall.cellRect(source.indexOf(wall.currentRow())).top(), wall.cellRect(1).top());
}

TEST_F(MediaWallTest, ShiftWithArrowsExtendsFromWhereItBegan) {
  fill(20);
  click(2);
  QTest::keyClick(&wall, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&wall, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(wall.selection(), ids({2, 3, 4}));
}

TEST_F(MediaWallTest, EndScrollsToTheLastCell) {
  fill(400);
  wall.setFocus();
  QTest::keyClick(&wall, Qt::Key_Right);
  QTest::keyClick(&wall, Qt::Key_End);
  EXPECT_EQ(wall.currentRow(), source.idAt(399));
  EXPECT_TRUE(wall.viewport()->rect().contains(wall.cellRect(399)));
}

TEST_F(MediaWallTest, EnterAndADoubleClickOpenTheCell) {
  fill(20);
  QSignalSpy opened(&wall, &MediaWall::opened);
  click(4);
  QTest::keyClick(&wall, Qt::Key_Return);
  QTest::mouseDClick(wall.viewport(), Qt::LeftButton, {}, wall.cellRect(4).center());
  ASSERT_EQ(opened.count(), 2);
  for (const QList<QVariant>& call : opened) EXPECT_EQ(call.front().toUuid(), source.idAt(4));
}

TEST_F(MediaWallTest, SpaceAsksForAQuickLookAtWhatIsSelected) {
  fill(20);
  wall.setFocus();
  QSignalSpy looked(&wall, &MediaWall::quickLookRequested);
  QTest::keyClick(&wall, Qt::Key_Space);
  EXPECT_EQ(looked.count(), 1);
  EXPECT_EQ(wall.selection(), ids({0}));
}

TEST_F(MediaWallTest, TheCellUnderThePointerIsToldAndLeftWhenTheWallScrolls) {
  fill(400);
  QSignalSpy hovered(&wall, &MediaWall::cellHovered);
  QTest::mouseMove(wall.viewport(), wall.cellRect(2).center());
  ASSERT_TRUE(QTest::qWaitFor([&] { return hovered.count() > 0; }));
  EXPECT_EQ(hovered.back().at(0).toUuid(), source.idAt(2));
  EXPECT_EQ(hovered.back().at(1).toRect(), wall.cellRect(2));
  wall.verticalScrollBar()->setValue(500);
  EXPECT_TRUE(hovered.back().at(0).toUuid().isNull());
}

TEST_F(MediaWallTest, AnOverlayPaintsInPlaceOfItsCell) {
  struct Blue final : public CellOverlay {
    QUuid over;
    QUuid cell() const override { return over; }
    void paint(QPainter& painter, const QRect& area, const GalleryCell&, const CellLook&) override { painter.fillRect(area, Qt::blue); }
  } overlay;
  fill(20);
  overlay.over = source.idAt(3);
  wall.addOverlay(&overlay);
  const QImage shown = wall.viewport()->grab().toImage();
  EXPECT_EQ(shown.pixelColor(wall.cellRect(3).center()), QColor(Qt::blue));
  EXPECT_NE(shown.pixelColor(wall.cellRect(4).center()), QColor(Qt::blue));
  wall.removeOverlay(&overlay);
}

TEST_F(MediaWallTest, TheBadgeOfASoundAsksToPlayItAndSelectsNothing) {
  GalleryCell sound = pictureCell(u"guitar.wav"_s, 1.6);
  sound.kind = CellKind::audio;
  sound.durationText = u"0:32"_s;
  GalleryCell trashed = sound;
  trashed.id = QUuid::createUuid();
  trashed.inTrash = true;
  source.set({sound, trashed, pictureCell(u"still.png"_s, 1.5)});
  show(wall, {1200, 400});
  QSignalSpy asked(&wall, &MediaWall::playPressed);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, partOf(0, CellPart::play));
  ASSERT_EQ(asked.count(), 1);
  EXPECT_EQ(asked.front().at(0).toUuid(), sound.id);
  EXPECT_TRUE(wall.selection().isEmpty());
  EXPECT_EQ(partOf(1, CellPart::play), QPoint(-1, -1)) << "what is in Trash only stays and goes";
  EXPECT_EQ(partOf(2, CellPart::play), QPoint(-1, -1));
}

TEST_F(MediaWallTest, WorkOnAnItemIsPaintedOverItsStatus) {
  GalleryCell cell = pictureCell(u"still.png"_s, 1.5);
  const auto corner = [this] {
    const QRect area = wall.cellRect(0);
    return wall.viewport()->grab(QRect(area.left(), area.bottom() - 30, 120, 30)).toImage();
  };
  source.set({cell});
  show(wall, {900, 400});
  const QImage plain = corner();
  cell.workText = u"Upscaling…"_s;
  source.set({cell});
  QCoreApplication::processEvents();
  EXPECT_NE(corner(), plain);
}

TEST_F(MediaWallTest, EscapeClearsTheSelectionBeforeItLeaves) {
  fill(20);
  QSignalSpy escaped(&wall, &MediaWall::escapePressed);
  click(4);
  QTest::keyClick(&wall, Qt::Key_Escape);
  EXPECT_TRUE(wall.selection().isEmpty());
  EXPECT_EQ(escaped.count(), 0);
  QTest::keyClick(&wall, Qt::Key_Escape);
  EXPECT_EQ(escaped.count(), 1);
}

TEST_F(MediaWallTest, CtrlASelectsEverything) {
  fill(20);
  wall.setFocus();
  QTest::keyClick(&wall, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(wall.selection().size(), 20);
}

TEST_F(MediaWallTest, ADragOverTheGroundSelectsWhatItTouches) {
  fill(6);
  const QRect target = wall.cellRect(1);
  QTest::mousePress(wall.viewport(), Qt::LeftButton, {}, QPoint(target.center().x(), target.top() - 8));
  QTest::mouseMove(wall.viewport(), target.center());
  QTest::mouseRelease(wall.viewport(), Qt::LeftButton, {}, target.center());
  EXPECT_EQ(wall.selection(), ids({1}));
}

TEST_F(MediaWallTest, AHundredThousandCellsAreMadeOnlyWhereTheyAreSeen) {
  fill(100000);
  source.asked = 0;
  wall.viewport()->repaint();
  EXPECT_LT(source.asked, 120);
  wall.verticalScrollBar()->setValue(wall.verticalScrollBar()->maximum() / 2);
  source.asked = 0;
  wall.viewport()->repaint();
  EXPECT_LT(source.asked, 120);
  EXPECT_GT(wall.visibleRange().first, 40000);
}

TEST_F(MediaWallTest, AnItemInTheMiddleStaysWhenOthersArriveAtTheTop) {
  fill(400);
  wall.verticalScrollBar()->setValue(3000);
  const int middle = (wall.visibleRange().first + wall.visibleRange().second) / 2;
  const QUuid held = source.idAt(middle);
  const int before = wall.cellRect(middle).center().y();
  std::vector<GalleryCell> cells = source.cells();
  for (int extra = 0; extra < 30; ++extra) cells.insert(cells.begin(), pictureCell(u"new"_s, 1.5));
  source.set(cells);
  EXPECT_NEAR(wall.cellRect(source.indexOf(held)).center().y(), before, wall.height() / 2);
}

TEST_F(MediaWallTest, AWallAtItsTopStaysThereWhenItemsArrive) {
  fill(400);
  std::vector<GalleryCell> cells = source.cells();
  cells.insert(cells.begin(), pictureCell(u"new"_s, 1.5));
  source.set(cells);
  EXPECT_EQ(wall.verticalScrollBar()->value(), 0);
}

TEST_F(MediaWallTest, TheButtonOfAFailedJobAsksForItsAction) {
  showJobs();
  QSignalSpy asked(&wall, &MediaWall::jobActionRequested);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, partOf(3, CellPart::action));
  ASSERT_EQ(asked.count(), 1);
  EXPECT_EQ(asked.front().front().toUuid(), source.idAt(3));
  EXPECT_EQ(asked.front().at(1).value<JobAction>(), JobAction::retry);
  EXPECT_TRUE(wall.selection().isEmpty());
}

TEST_F(MediaWallTest, TheCrossCancelsWhatRunsAndPutsAwayWhatEnded) {
  showJobs();
  QSignalSpy asked(&wall, &MediaWall::jobActionRequested);
  QSignalSpy dismissed(&wall, &MediaWall::jobDismissed);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, partOf(0, CellPart::dismiss));
  ASSERT_EQ(asked.count(), 1);
  EXPECT_EQ(asked.front().at(1).value<JobAction>(), JobAction::cancel);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, partOf(4, CellPart::dismiss));
  ASSERT_EQ(dismissed.count(), 1);
  EXPECT_EQ(dismissed.front().front().toUuid(), source.idAt(4));
}

TEST_F(MediaWallTest, ScreenReadersSeeTheVisibleCellsWithNamesPlacesAndState) {
  fill(1000);
  click(2);
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&wall);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->role(), QAccessible::List);
  EXPECT_GT(list->childCount(), 8);
  EXPECT_LT(list->childCount(), 100);
  QAccessibleInterface* cell = list->child(2);
  EXPECT_EQ(cell->role(), QAccessible::ListItem);
  EXPECT_TRUE(cell->text(QAccessible::Name).startsWith(u"picture 2.png"_s));
  EXPECT_TRUE(cell->state().selected);
  EXPECT_FALSE(list->child(3)->state().selected);
  EXPECT_EQ(cell->rect().size(), wall.cellRect(2).size());
  EXPECT_EQ(list->indexOfChild(cell), 2);
  EXPECT_EQ(list->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
}

TEST(MediaWallAccessibility, IsAListAlsoWhenItWasWatchedWhileItWasMade) {
  // A screen reader at work asks for the widget as soon as its base class exists.
  struct Watched : public QObject {
    bool eventFilter(QObject* object, QEvent*) override {
      if (object->isWidgetType()) QAccessible::queryAccessibleInterface(object);
      return false;
    }
  } watcher;
  qApp->installEventFilter(&watcher);
  SampleWall source;
  ThumbnailStore thumbnails;
  QWidget parent;
  MediaWall wall(source, thumbnails, &parent);
  qApp->removeEventFilter(&watcher);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&wall)->role(), QAccessible::List);
}

TEST_F(MediaWallTest, AScreenReadersActionSelectsOpensAndRetries) {
  showJobs();
  QSignalSpy opened(&wall, &MediaWall::opened);
  QSignalSpy asked(&wall, &MediaWall::jobActionRequested);
  QAccessibleInterface* failed = QAccessible::queryAccessibleInterface(&wall)->child(3);
  ASSERT_NE(failed->actionInterface(), nullptr);
  failed->actionInterface()->doAction(selectRowAction);
  EXPECT_EQ(wall.selection(), ids({3}));
  failed->actionInterface()->doAction(openRowAction);
  EXPECT_EQ(opened.count(), 1);
  failed->actionInterface()->doAction(u"Retry"_s);
  EXPECT_EQ(asked.count(), 1);
}

TEST_F(MediaWallTest, ACellThatIsGoneIsNoLongerValidToAScreenReader) {
  fill(5);
  QAccessibleInterface* cell = QAccessible::queryAccessibleInterface(&wall)->child(4);
  ASSERT_TRUE(cell->isValid());
  source.set({pictureCell(u"other"_s, 1)});
  EXPECT_FALSE(cell->isValid());
  EXPECT_TRUE(cell->text(QAccessible::Name).isEmpty());
}

TEST_F(MediaWallTest, AClickOnOneOfSeveralSelectsItWhenTheButtonIsLetGo) {
  fill(20);
  click(2);
  click(4, Qt::ControlModifier);
  QTest::mousePress(wall.viewport(), Qt::LeftButton, {}, wall.cellRect(2).center());
  EXPECT_EQ(wall.selection(), ids({2, 4})) << "it may become a drag of both";
  QTest::mouseRelease(wall.viewport(), Qt::LeftButton, {}, wall.cellRect(2).center());
  EXPECT_EQ(wall.selection(), ids({2}));
}

TEST_F(MediaWallTest, MovingAwayWithTheButtonDownDragsTheSelectionOnce) {
  fill(20);
  click(2);
  click(4, Qt::ControlModifier);
  QSignalSpy dragged(&wall, &MediaWall::dragRequested);
  const QPoint from = wall.cellRect(4).center();
  QTest::mousePress(wall.viewport(), Qt::LeftButton, {}, from);
  QTest::mouseMove(wall.viewport(), from + QPoint(2, 1));
  EXPECT_EQ(dragged.count(), 0);
  QTest::mouseMove(wall.viewport(), from + QPoint(40, 10));
  QTest::mouseMove(wall.viewport(), from + QPoint(80, 10));
  EXPECT_EQ(dragged.count(), 1);
  QTest::mouseRelease(wall.viewport(), Qt::LeftButton, {}, from);
  EXPECT_EQ(wall.selection(), ids({2, 4}));
}

TEST_F(MediaWallTest, ADragOverTheGroundWithCtrlAddsToTheSelection) {
  fill(6);
  click(3);
  const QRect target = wall.cellRect(1);
  const QPoint ground(target.center().x(), target.top() - 8);
  QTest::mousePress(wall.viewport(), Qt::LeftButton, Qt::ControlModifier, ground);
  QTest::mouseMove(wall.viewport(), target.center());
  QTest::mouseRelease(wall.viewport(), Qt::LeftButton, Qt::ControlModifier, target.center());
  EXPECT_EQ(wall.selection(), ids({1, 3}));
}

TEST_F(MediaWallTest, ARubberBandThatLeavesTheWallScrollsItAlong) {
  fill(400);
  QTest::mousePress(wall.viewport(), Qt::LeftButton, {}, QPoint(4, 200));
  QTest::mouseMove(wall.viewport(), QPoint(500, wall.viewport()->height() + 50));
  ASSERT_TRUE(QTest::qWaitFor([&] { return wall.verticalScrollBar()->value() > 900; }));
  EXPECT_GT(wall.selection().size(), 20);
  QTest::mouseRelease(wall.viewport(), Qt::LeftButton, {}, QPoint(500, 300));
  const int stood = wall.verticalScrollBar()->value();
  QTest::mouseMove(wall.viewport(), QPoint(500, wall.viewport()->height() + 90));
  QCoreApplication::processEvents();
  EXPECT_EQ(wall.verticalScrollBar()->value(), stood);
}

TEST_F(MediaWallTest, SelectionAndArrowsStayWithTheirCellsWhileResultsArrive) {
  fill(60);
  click(5);
  const QUuid selected = source.idAt(5);
  const QUuid next = source.idAt(6);
  std::vector<GalleryCell> cells = source.cells();
  for (int extra = 0; extra < 7; ++extra) cells.insert(cells.begin(), pictureCell(u"new"_s, 1.5));
  source.set(cells);
  EXPECT_EQ(wall.selection(), QSet<QUuid>{selected});
  EXPECT_EQ(wall.currentRow(), selected);
  QTest::keyClick(&wall, Qt::Key_Right);
  EXPECT_EQ(wall.currentRow(), next);
}

TEST_F(MediaWallTest, WhenTheCurrentCellGoesTheArrowsGoOnFromItsPlace) {
  fill(60);
  click(5);
  const QUuid follower = source.idAt(6);
  std::vector<GalleryCell> cells = source.cells();
  cells.erase(cells.begin() + 5);
  source.set(cells);
  EXPECT_EQ(wall.currentRow(), follower);
}

TEST_F(MediaWallTest, PageKeysGoAScreenInTheSameColumnAndStopAtTheEnds) {
  fill(400);
  click(2);
  const int column = wall.cellRect(2).center().x();
  QTest::keyClick(&wall, Qt::Key_PageDown);
  const int index = source.indexOf(wall.currentRow());
  EXPECT_GT(index, 8);
  EXPECT_TRUE(wall.viewport()->rect().contains(wall.cellRect(index)));
  EXPECT_NEAR(wall.cellRect(index).center().x(), column, 200);
  QTest::keyClick(&wall, Qt::Key_PageUp);
  EXPECT_LT(source.indexOf(wall.currentRow()), 5);
  QTest::keyClick(&wall, Qt::Key_End);
  QTest::keyClick(&wall, Qt::Key_PageDown);
  EXPECT_TRUE(wall.viewport()->rect().intersects(wall.cellRect(399)));
}

TEST_F(MediaWallTest, TheHeartUnderThePointerMarksThatCellAlone) {
  fill(20);
  click(2);
  QSignalSpy marked(&wall, &MediaWall::favoriteToggled);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, partOf(4, CellPart::heart));
  ASSERT_EQ(marked.count(), 1);
  EXPECT_EQ(marked.front().front().toUuid(), source.idAt(4));
  EXPECT_EQ(wall.selection(), ids({2}));
}

TEST_F(MediaWallTest, TheDotsSelectTheirCellAndAskForItsMenu) {
  fill(20);
  QSignalSpy menu(&wall, &MediaWall::menuRequested);
  QTest::mouseClick(wall.viewport(), Qt::LeftButton, {}, partOf(4, CellPart::more));
  EXPECT_EQ(menu.count(), 1);
  EXPECT_EQ(wall.selection(), ids({4}));
}

TEST_F(MediaWallTest, ARightClickOnTheGroundAsksForTheWallsOwnMenu) {
  fill(3);
  click(1);
  QSignalSpy menu(&wall, &MediaWall::menuRequested);
  const QPoint ground(450, 590);
  QTest::mouseClick(wall.viewport(), Qt::RightButton, {}, ground);
  QContextMenuEvent event(QContextMenuEvent::Mouse, ground, wall.viewport()->mapToGlobal(ground));
  QCoreApplication::sendEvent(wall.viewport(), &event);
  EXPECT_TRUE(wall.selection().isEmpty());
  EXPECT_EQ(menu.count(), 1);
}

TEST_F(MediaWallTest, AnEmptyWallSaysWhyAndItsButtonIsReachable) {
  show(wall, {900, 600});
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&wall);
  ASSERT_EQ(list->childCount(), 1);
  EXPECT_EQ(list->child(0)->text(QAccessible::Name), u"Nothing here yet"_s);
  fill(3);
  EXPECT_EQ(list->childCount(), 3);
}

TEST_F(MediaWallTest, FilesOfOtherProgramsAreTakenAndItsOwnItemsAreNot) {
  fill(3);
  QSignalSpy dropped(&wall, &MediaWall::filesDropped);
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(u"/tmp/a.png"_s)});
  QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
  QCoreApplication::sendEvent(wall.viewport(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  EXPECT_EQ(enter.dropAction(), Qt::CopyAction) << "what is dropped is never moved away from where it was";
  const auto* frame = wall.findChild<DropFrame*>();
  EXPECT_TRUE(frame->isVisible());
  QDropEvent drop(QPoint(50, 50), Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
  QCoreApplication::sendEvent(wall.viewport(), &drop);
  ASSERT_EQ(dropped.count(), 1);
  EXPECT_FALSE(frame->isVisible());
  files.setData(itemsFormat, "x");
  QDragEnterEvent own(QPoint(50, 50), Qt::CopyAction, &files, Qt::LeftButton, {});
  QCoreApplication::sendEvent(wall.viewport(), &own);
  EXPECT_FALSE(own.isAccepted());
  EXPECT_FALSE(frame->isVisible());
}

TEST_F(MediaWallTest, TitlesOfTenThousandCharactersAreShortenedToTheirCells) {
  const auto painted = [this](const QString& title) {
    std::vector<GalleryCell> cells;
    for (int index = 0; index < 40; ++index) {
      GalleryCell cell = pictureCell(u"a sound"_s, 1.6);
      cell.kind = CellKind::audio;
      cell.title = cell.modelName = cell.statusText = cell.costText = title;
      cells.push_back(cell);
    }
    source.set(cells);
    show(wall, {900, 600});
    return wall.viewport()->grab().toImage();
  };
  const QImage endless = painted(QString(10000, u'W') + u" \U0001F3D4"_s);
  EXPECT_EQ(endless, painted(QString(200, u'W'))) << "both are cut to what their cells have room for";
  EXPECT_NE(endless, painted(u"W"_s));
}

TEST_F(MediaWallTest, AWallOfOneCellTakesEveryKey) {
  fill(1);
  wall.setFocus();
  for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End})
    QTest::keyClick(&wall, static_cast<Qt::Key>(key));
  EXPECT_EQ(wall.selection(), ids({0}));
}

}  // namespace
}  // namespace sorvan::views
