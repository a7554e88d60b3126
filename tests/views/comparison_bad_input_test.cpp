// What the sheet, the tree and the large view make of files that are gone, cut or huge, of very long texts, and of
// nothing at all.
#include <QImage>

#include "shell/sheet_texts.h"
#include "shell/views/empty_note.h"
#include "shell/views/quick_look.h"
#include "shell/views/viewer_desk.h"
#include "support/temporary_folder.h"
#include "views/comparison_desk.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

constexpr int longText = 10'000;

class BrokenMediaTest : public Dressed {
 protected:
  QString picture(const QString& name, QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = folder / name;
    EXPECT_TRUE(image.save(path));
    return path;
  }
  QString cut(const QString& name) {
    const QString path = picture(name, {400, 300});
    QFile file(path);
    EXPECT_TRUE(file.resize(60));
    return path;
  }
  static PlaceDisplay place(const QString& id, const QString& path) {
    PlaceDisplay display;
    display.id = id;
    display.asset = base::newUuid();
    display.fileName = id;
    display.modelName = id;
    display.aspectRatio = 4.0 / 3;
    display.thumbnailPath = path;
    display.filePath = path;
    return display;
  }
  static bool isRed(const QImage& image, QPoint at) {
    const QColor color = image.pixelColor(at);
    return color.red() > 200 && color.green() < 60 && color.blue() < 60;
  }
  // Whether something other than the ground is drawn there: an icon, words.
  static bool isWritten(const QImage& image, const QRect& area) {
    QSet<QRgb> colors;
    for (int y = area.top(); y < area.bottom(); y += 2)
      for (int x = area.left(); x < area.right(); x += 2) colors.insert(image.pixel(x, y));
    return colors.size() > 8;
  }

  test::TemporaryFolder folder;
  ThumbnailStore thumbnails;
};

TEST_F(BrokenMediaTest, PlacesWithoutAReadablePictureSaySoAndTheOthersShowTheirs) {
  QImage huge(14'000, 9'000, QImage::Format_Mono);
  huge.fill(1);
  ASSERT_TRUE(huge.save(folder / u"huge.png"_s));
  SheetPlaces places(thumbnails);
  places.show({place(u"gone"_s, folder / u"gone.png"_s), place(u"cut"_s, cut(u"cut.png"_s)),
               place(u"huge"_s, folder / u"huge.png"_s), place(u"good"_s, picture(u"good.png"_s, {400, 300}))},
              {900, 700});
  show(places, {900, 760});
  const auto centre = [&](int index) {
    PlacePicture& shown = places.at(index)->picture();
    return shown.mapTo(&places, shown.rect().center());
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return isRed(places.grab().toImage(), centre(3)); }, 20'000));
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        const QImage image = places.grab().toImage();
        return isWritten(image, QRect(centre(0) - QPoint(80, 30), QSize(160, 70))) &&
               isWritten(image, QRect(centre(1) - QPoint(80, 30), QSize(160, 70))) &&
               isWritten(image, QRect(centre(2) - QPoint(80, 30), QSize(160, 70)));
      },
      30'000))
      << "one that is too large to be read is told of like one that is cut";
  EXPECT_LE(thumbnails.kibibytes(), ThumbnailStore::mostKibibytes);
}

TEST_F(BrokenMediaTest, RowsOfTheTreeWithoutAThumbnailStandInTheirPlaces) {
  std::vector<LineageRowDisplay> rows(3);
  for (LineageRowDisplay& row : rows) row.id = base::newUuid();
  rows[0].thumbnailPath = folder / u"gone.png"_s;
  rows[1].thumbnailPath = cut(u"cut.png"_s);
  rows[2].thumbnailPath = picture(u"good.png"_s, {400, 300});
  for (size_t index = 1; index < rows.size(); ++index) rows[index].depth = int(index), rows[index].parentRow = int(index) - 1;
  LineageTree tree(thumbnails);
  tree.show(rows);
  show(tree, {700, 400});
  const auto thumb = [&](int index) { return tree.cellRect(index).topLeft() + QPoint(30, 25); };
  ASSERT_TRUE(QTest::qWaitFor([&] { return isRed(tree.viewport()->grab().toImage(), thumb(2)); }, 20'000));
  for (const int index : {0, 1}) {
    const auto standsIn = [&] {
      const QImage image = tree.viewport()->grab().toImage();
      return !isRed(image, thumb(index)) && isWritten(image, QRect(thumb(index) - QPoint(12, 12), QSize(34, 28)));
    };
    EXPECT_TRUE(QTest::qWaitFor(standsIn, 20'000)) << index;
  }
}

TEST_F(BrokenMediaTest, TheTreeShortensNamesOfTenThousandCharactersAndTellsThemWhole) {
  std::vector<LineageRowDisplay> rows(1);
  rows[0].id = base::newUuid();
  rows[0].name = QString(longText, u'x');
  rows[0].label = QString(longText, u'y');
  rows[0].openedFrom = true;
  rows[0].accessibleName = rows[0].name;
  LineageTree tree(thumbnails);
  tree.show(rows);
  show(tree, {700, 200});
  EXPECT_EQ(tree.viewport()->grab().size(), tree.viewport()->size());
  EXPECT_LE(tree.cellRect(0).right(), tree.viewport()->width());
  EXPECT_EQ(tree.rowName(0).size(), longText);
}

class ComparisonBadInputTest : public ComparisonDesk {};

TEST_F(ComparisonBadInputTest, APromptOfTenThousandCharactersLeavesTheSheetItsRoom) {
  const QUuid first = made(u"boat "_s.repeated(longText / 5));
  const QUuid second = made(u"boat "_s.repeated(longText / 5));
  desk.state.setLocation(allMediaLocation);
  test::runPosted();
  openSheet({first, second});
  ASSERT_EQ(places().count(), 2);
  EXPECT_EQ(window->size(), QSize(1440, 900));
  EXPECT_GT(places().visibleRegion().boundingRect().height(), 500) << "the head keeps to a few lines";
  desk.comparison.sheet().rename(QString(longText, u't'));
  test::runPosted();
  EXPECT_EQ(window->size(), QSize(1440, 900));
  desk.state.setMode({ModeKind::contactSheets});
  test::runPosted();
  EXPECT_EQ(window->size(), QSize(1440, 900));
  key(Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
}

TEST_F(ComparisonBadInputTest, ItemsWhoseFilesAreGoneStandOnTheSheetInTheTreeAndInTheLargeView) {
  const std::vector<QUuid> ids = several(2);
  for (const QUuid& id : ids) {
    const core::AssetRef asset = desk.store.asset(id);
    ASSERT_TRUE(QFile::remove(desk.store.fileOf(*asset)));
    if (const auto thumbnail = desk.store.thumbnailOf(*asset)) QFile::remove(*thumbnail);
  }
  openSheet(ids);
  ASSERT_EQ(places().count(), 2);
  key(Qt::Key_Space);
  ASSERT_TRUE(window->viewer().quickLook().isOpen());
  window->grab();
  key(Qt::Key_Escape);
  key(Qt::Key_Return);
  ASSERT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window->library().asset().canvas().problem().isEmpty(); }, 10'000));
  desk.state.openLineage(ids[0]);
  test::runPosted();
  EXPECT_EQ(the<LineageView>()->tree().rowCount(), 1);
}

TEST_F(ComparisonBadInputTest, ASheetThatLosesAllItsItemsSaysWhatToDoAndTakesEveryKey) {
  openSheet(several(2));
  while (places().count() > 0) {
    desk.comparison.sheet().remove(places().at(0)->place().asset);
    test::runPosted();
  }
  auto* note = sheet().findChild<EmptyNote*>();
  ASSERT_NE(note, nullptr);
  EXPECT_TRUE(note->isVisible());
  for (const Qt::Key pressed : {Qt::Key_1, Qt::Key_Right, Qt::Key_Space, Qt::Key_Return, Qt::Key_Delete, Qt::Key_C, Qt::Key_F})
    key(pressed);
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
  EXPECT_FALSE(sheet().canCompare());
}

TEST_F(ComparisonBadInputTest, ASheetOfOneTakesEveryKeyAndComparesNothing) {
  openSheet(several(2));
  desk.comparison.sheet().remove(places().at(1)->place().asset);
  test::runPosted();
  ASSERT_EQ(places().count(), 1);
  for (const Qt::Key pressed : {Qt::Key_2, Qt::Key_Right, Qt::Key_Down, Qt::Key_End, Qt::Key_C}) key(pressed);
  EXPECT_EQ(places().current(), 0);
  EXPECT_FALSE(sheet().isComparing());
  key(Qt::Key_Space);
  EXPECT_EQ(window->viewer().quickLook().panes().size(), 1u);
  key(Qt::Key_Right);
  EXPECT_EQ(window->viewer().quickLook().panes().size(), 1u);
}

}  // namespace
}  // namespace sorvan::views
