#include "shell/views/sheet_places.h"

#include <QSignalSpy>

#include "base/ids.h"
#include "support/run_task.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class PlacesDragTest : public Dressed {
 protected:
  PlacesDragTest() { show(places, {900, 700}); }
  void fill(int count, bool movable) {
    std::vector<PlaceDisplay> shown;
    for (int number = 1; number <= count; ++number) {
      PlaceDisplay place;
      place.id = QString::number(number);
      place.number = number;
      place.asset = base::newUuid();
      place.movable = movable;
      shown.push_back(place);
    }
    places.show(shown, {900, 700});
    test::runPosted();
  }
  // Presses the first place and moves by so much, in steps as a hand does.
  void drag(QPoint by) {
    PlacePicture& picture = places.at(0)->picture();
    const QPoint from(60, 60);
    QTest::mousePress(&picture, Qt::LeftButton, Qt::NoModifier, from);
    for (int step = 1; step <= 4; ++step) {
      const QPoint at = from + by * step / 4;
      QMouseEvent move(QEvent::MouseMove, at, picture.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
      QCoreApplication::sendEvent(&picture, &move);
    }
  }
  void release(QPoint at) { QTest::mouseRelease(&places.at(0)->picture(), Qt::LeftButton, Qt::NoModifier, at); }

  ThumbnailStore thumbnails;
  SheetPlaces places{thumbnails};
  QSignalSpy out{&places, &SheetPlaces::draggedOut};
  QSignalSpy moved{&places, &SheetPlaces::moved};
};

TEST_F(PlacesDragTest, AnOutputOfAComparisonIsDraggedOutFromItsFirstMove) {
  fill(3, false);
  drag({40, 0});
  EXPECT_EQ(out.count(), 1) << "once, however far the pointer goes";
  release({100, 60});
  EXPECT_EQ(moved.count(), 0);
}

TEST_F(PlacesDragTest, AnItemThatWasAddedByHandIsDraggedOutWhereItLeavesTheSheet) {
  fill(3, true);
  drag({300, 0});
  EXPECT_EQ(out.count(), 0);
  release({360, 60});
  EXPECT_EQ(moved.count(), 1);
  drag({-200, 0});
  EXPECT_EQ(out.count(), 1);
  release({-140, 60});
  EXPECT_EQ(moved.count(), 1) << "the drag that left puts nothing in order";
}

TEST_F(PlacesDragTest, WorkIsNotDragged) {
  PlaceDisplay work;
  work.id = u"1"_s;
  work.job.id = base::newUuid();
  places.show({work}, {900, 700});
  test::runPosted();
  drag({40, 0});
  EXPECT_EQ(out.count(), 0);
}

}  // namespace
}  // namespace sorvan::views
