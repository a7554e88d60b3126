#include "shell/views/mark_layer.h"

#include <QAccessible>
#include <QSignalSpy>

#include "shell/desk.h"
#include "shell/views/asset_view.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/mark_bar.h"
#include "shell/views/mark_panel.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

// A picture of 48 by 27 pixels, shown as large as its canvas lets it.
class MarkLayerTest : public Dressed {
 protected:
  MarkLayerTest() {
    desk.generate(u"a red boat"_s);
    desk.settle();
    item = desk.store.assets().front()->id;
    show(canvas, {600, 400});
    const QSignalSpy loaded(&thumbnails, &ThumbnailStore::loaded);
    canvas.setPicture(desk.store.fileOf(*desk.store.asset(item)), {}, u"a red boat"_s);
    desk.marking.begin(item);
    layer.show();
    layer.setFocus();
    test::runUntil([&] { return loaded.count() > 0 && !canvas.picturePlace().isEmpty(); });
  }

  // The middle of a pixel of the picture.
  QPoint at(double x, double y) const {
    const QRectF place = canvas.picturePlace();
    return QPointF(place.x() + x / 48 * place.width(), place.y() + y / 27 * place.height()).toPoint();
  }
  void drag(QPoint from, QPoint to) {
    QTest::mousePress(&layer, Qt::LeftButton, {}, from);
    QTest::mouseMove(&layer, (from + to) / 2);
    QTest::mouseMove(&layer, to);
    QTest::mouseRelease(&layer, Qt::LeftButton, {}, to);
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&layer, key, modifiers); }
  const MarksEditor& marks() const { return desk.marking.marks(); }
  // A box in pixels of the picture.
  QRect pixels(int index) const {
    const QRectF area = marks().areaOf(index);
    return QRectF(area.x() * 48, area.y() * 27, area.width() * 48, area.height() * 27).toRect();
  }

  test::Desk desk;
  QUuid item;
  ThumbnailStore thumbnails;
  PictureCanvas canvas{thumbnails};
  MarkLayer layer{desk.marking, canvas};
  QSignalSpy notes{&desk.marking, &MarkingPresenter::noteRequested};
};

TEST_F(MarkLayerTest, ADragDrawsABoxAndAsksForItsNote) {
  drag(at(10, 5), at(20, 15));
  ASSERT_EQ(marks().count(), 1);
  EXPECT_EQ(pixels(0), QRect(10, 5, 10, 10));
  EXPECT_EQ(notes.count(), 1);
  drag(at(40, 20), at(30, 10));
  EXPECT_EQ(pixels(1), QRect(30, 10, 10, 10));
  EXPECT_EQ(marks().selected(), 1);
}

TEST_F(MarkLayerTest, AClickDrawsNothingAndSelectsNothing) {
  drag(at(10, 5), at(20, 15));
  QTest::mouseClick(&layer, Qt::LeftButton, {}, at(40, 20));
  drag(at(40, 20), at(40, 20) + QPoint(3, 3));
  EXPECT_EQ(marks().count(), 1);
  EXPECT_EQ(marks().selected(), -1);
}

TEST_F(MarkLayerTest, ADragThatLeavesThePictureEndsAtItsEdge) {
  drag(at(40, 20), QPoint(599, 399));
  ASSERT_EQ(marks().count(), 1);
  EXPECT_EQ(pixels(0), QRect(40, 20, 8, 7));
  drag(QPoint(1, 1), QPoint(12, 12));
  EXPECT_EQ(marks().count(), 1);
}

TEST_F(MarkLayerTest, APressOnABoxSelectsItAndADragMovesIt) {
  drag(at(10, 5), at(20, 15));
  drag(at(30, 5), at(40, 15));
  drag(at(15, 10), at(17, 13));
  EXPECT_EQ(marks().selected(), 0);
  EXPECT_EQ(pixels(0), QRect(12, 8, 10, 10));
  EXPECT_EQ(marks().count(), 2);
  drag(at(15, 10), at(-80, -80));
  EXPECT_EQ(pixels(0), QRect(0, 0, 10, 10));
}

TEST_F(MarkLayerTest, HandlesResizeAlsoBeyondTheOtherEdge) {
  drag(at(10, 5), at(20, 15));
  drag(at(20, 15), at(25, 20));
  EXPECT_EQ(pixels(0), QRect(10, 5, 15, 15));
  drag(at(10, 12), at(12, 12));
  EXPECT_EQ(pixels(0), QRect(12, 5, 13, 15));
  drag(at(25, 12), at(2, 12));
  EXPECT_EQ(pixels(0), QRect(2, 5, 10, 15));
}

TEST_F(MarkLayerTest, KeysMoveResizeRemoveAndStepBack) {
  drag(at(10, 5), at(20, 15));
  layer.setFocus();
  key(Qt::Key_Right);
  key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(pixels(0), QRect(11, 15, 10, 10));
  key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(pixels(0), QRect(11, 15, 11, 10));
  key(Qt::Key_Delete);
  EXPECT_EQ(marks().count(), 0);
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(pixels(0), QRect(11, 15, 11, 10));
  key(Qt::Key_Z, Qt::ControlModifier);
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(pixels(0), QRect(10, 5, 10, 10));
  key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(pixels(0), QRect(11, 15, 10, 10));
}

TEST_F(MarkLayerTest, EscapeGivesADragUpAndThenLeavesWhileTheBoxesStay) {
  drag(at(10, 5), at(20, 15));
  QTest::mousePress(&layer, Qt::LeftButton, {}, at(30, 5));
  QTest::mouseMove(&layer, at(40, 15));
  key(Qt::Key_Escape);
  QTest::mouseRelease(&layer, Qt::LeftButton, {}, at(40, 15));
  EXPECT_EQ(marks().count(), 1);
  EXPECT_TRUE(desk.marking.isMarking());
  key(Qt::Key_Escape);
  EXPECT_FALSE(desk.marking.isMarking());
  desk.marking.begin(item);
  EXPECT_EQ(marks().count(), 1);
}

TEST_F(MarkLayerTest, EnterIsDone) {
  drag(at(10, 5), at(20, 15));
  key(Qt::Key_Return);
  EXPECT_FALSE(desk.marking.isMarking());
  EXPECT_EQ(desk.composing.request().markup->size(), 1u);
}

TEST_F(MarkLayerTest, TabVisitsTheBoxesOneAfterTheOther) {
  drag(at(10, 5), at(20, 15));
  drag(at(30, 5), at(40, 15));
  desk.marking.select(-1);
  layer.setFocus();
  key(Qt::Key_Tab);
  EXPECT_EQ(marks().selected(), 0);
  key(Qt::Key_Tab);
  EXPECT_EQ(marks().selected(), 1);
  key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(marks().selected(), 0);
}

TEST_F(MarkLayerTest, BoxesKeepTheirPlaceOnThePictureWhenItIsEnlarged) {
  drag(at(10, 5), at(20, 15));
  const double before = layer.placeOf(0).width();
  key(Qt::Key_Z);
  const QRectF place = canvas.picturePlace();
  EXPECT_NEAR(layer.placeOf(0).width(), place.width() * 10 / 48, 1e-6);
  EXPECT_NE(layer.placeOf(0).width(), before);
  EXPECT_EQ(pixels(0), QRect(10, 5, 10, 10));
}

TEST_F(MarkLayerTest, IsAListOfBoxesToAssistiveTechnology) {
  drag(at(12, 9), at(24, 18));
  desk.marking.setNote(0, u"a green sail"_s);
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&layer);
  ASSERT_TRUE(list);
  EXPECT_EQ(list->role(), QAccessible::List);
  ASSERT_EQ(list->childCount(), 1);
  EXPECT_EQ(list->child(0)->text(QAccessible::Name), u"Box 1, a green sail"_s);
  EXPECT_EQ(list->child(0)->text(QAccessible::Description),
            u"25 percent from the left, 33 from the top, 25 wide, 33 high"_s);
  EXPECT_TRUE(list->child(0)->state().selected);
  desk.marking.clear();
  EXPECT_EQ(list->childCount(), 0);
}

TEST_F(MarkLayerTest, IsRedWhereABoxIsAndLeavesTheRestAsItWas) {
  const QImage before = canvas.grab().toImage();
  drag(at(10, 5), at(20, 15));
  desk.marking.select(-1);
  const QImage after = canvas.grab().toImage();
  const QPoint edge(at(20, 10));
  const QColor red = after.pixelColor(edge);
  EXPECT_GT(red.red(), 150);
  EXPECT_LT(red.green(), 90);
  EXPECT_EQ(after.pixel(at(15, 12)), before.pixel(at(15, 12)));
  EXPECT_EQ(after.pixel(at(40, 20)), before.pixel(at(40, 20)));
}

class MarkPanelTest : public MarkLayerTest {
 protected:
  MarkPanelTest() { show(panel, {320, 700}); }
  TextField* note(int number) { return named<TextField>(panel, u"Note of box %1"_s.arg(number)); }

  MarkPanel panel{desk.marking};
};

TEST_F(MarkPanelTest, ARowForEachBoxTakesItsNote) {
  drag(at(10, 5), at(20, 15));
  drag(at(30, 5), at(40, 15));
  ASSERT_TRUE(note(2));
  QTest::keyClicks(note(2), u"a gull"_s);
  EXPECT_EQ(marks().boxes()[1].note, u"a gull"_s);
  EXPECT_EQ(marks().boxes()[0].note, QString());
  QSignalSpy left(&panel, &MarkPanel::noteLeft);
  QTest::keyClick(note(2), Qt::Key_Return);
  QTest::keyClick(note(1), Qt::Key_Escape);
  EXPECT_EQ(left.count(), 2);
  EXPECT_TRUE(desk.marking.isMarking());
}

TEST_F(MarkPanelTest, TheCrossRemovesItsBoxAndTheOthersMoveUp) {
  drag(at(10, 5), at(20, 15));
  desk.marking.setNote(0, u"first"_s);
  drag(at(30, 5), at(40, 15));
  desk.marking.setNote(1, u"second"_s);
  QTest::mouseClick(named<IconButton>(panel, u"Remove box 1"_s), Qt::LeftButton);
  test::runPosted();
  ASSERT_EQ(marks().count(), 1);
  EXPECT_EQ(note(1)->text(), u"second"_s);
}

TEST_F(MarkPanelTest, ABoxCanBeMadeWithoutAPointer) {
  QTest::mouseClick(named<Button>(panel, u"Add Box"_s), Qt::LeftButton);
  ASSERT_EQ(marks().count(), 1);
  EXPECT_TRUE(QRectF(0, 0, 1, 1).contains(marks().areaOf(0)));
  EXPECT_EQ(marks().selected(), 0);
}

TEST_F(MarkPanelTest, TheSwitchSaysWhatMayChange) {
  auto* confine = named<Switch>(panel, u"Change only the marked areas"_s);
  ASSERT_TRUE(confine && confine->isChecked());
  QTest::mouseClick(confine, Qt::LeftButton);
  EXPECT_FALSE(desk.marking.confines());
  drag(at(10, 5), at(20, 15));
  desk.marking.done();
  EXPECT_EQ(desk.composing.request().confineToMarks, std::optional(false));
}

TEST_F(MarkPanelTest, AThousandBoxesAreDrawnListedAndTakenBack) {
  for (int index = 0; index < 1000; ++index)
    desk.marking.add(QRectF((index % 48) / 48.0, (index / 48) / 27.0, 1 / 48.0, 1 / 27.0));
  EXPECT_EQ(marks().count(), 1000);
  ASSERT_TRUE(note(1000));
  EXPECT_FALSE(canvas.grab().toImage().isNull());
  desk.marking.clear();
  test::runPosted();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(note(1));
}

TEST_F(MarkLayerTest, TheBarClearsAndIsDone) {
  MarkBar bar(desk.marking);
  show(bar, {700, 40});
  drag(at(10, 5), at(20, 15));
  QTest::mouseClick(named<Button>(bar, u"Clear marks"_s), Qt::LeftButton);
  EXPECT_EQ(marks().count(), 0);
  EXPECT_FALSE(named<Button>(bar, u"Clear marks"_s)->isEnabled());
  drag(at(10, 5), at(20, 15));
  QTest::mouseClick(named<Button>(bar, u"Done"_s), Qt::LeftButton);
  EXPECT_FALSE(desk.marking.isMarking());
}

}  // namespace
}  // namespace sorvan::views
