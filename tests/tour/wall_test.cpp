// The gallery's wall by mouse and by keyboard: a rubber band, arrows, marks by single keys, the bar over a selection, the
// context menu, and a picture dragged into another program.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const QStringList pngs{u"*.png"_qs};
const Wanted anyItem{u"A-harbour-at-dawn"_qs, u"list item"_qs, true};

std::vector<Control> itemsOf(const Tourist& person) {
  std::vector<Control> items;
  for (const Control& control : person.accessibility().controls())
    if (control.role == anyItem.role && control.name.startsWith(anyItem.name)) items.push_back(control);
  return items;
}

void makePictures(Tourist& person, int number) {
  for (int made = 1; made <= number; ++made) {
    writePrompt(person, u"A harbour at dawn"_qs);
    person.key(u"Return"_qs);
    person.waitForCount(anyItem, made, 40);
  }
}

void putInTrash(Tourist& person, const Wanted& item) {
  person.click(item);
  person.key(u"Delete"_qs);
  person.click({u"Trash"_qs, u"check box"_qs, true});
  person.waitFor({u"Files and provenance are retained"_qs, {}, true});
  EXPECT_TRUE(within(20, [&] { return person.accessibility().count(item) == 1; })) << "Trash holds it alone";
  pictureInBothLooks(person, u"trash"_qs);
}

// The other program, at the lower left of the screen, over the sidebar's foot.
class OtherProgram {
 public:
  explicit OtherProgram(Tourist& person) : report_(person.desktop().home() + u"/dropped"_qs) {
    QProcessEnvironment environment = person.desktop().environment();
    environment.insert(u"QT_QPA_PLATFORM"_qs, u"xcb"_qs);
    process_.setProcessEnvironment(environment);
    process_.start(QStringLiteral(SORVAN_RECEIVER), {report_, QString::number(place.x()), QString::number(place.y())});
    if (!process_.waitForStarted(10000)) throw std::runtime_error("the other program did not start");
  }
  ~OtherProgram() {
    process_.kill();
    process_.waitForFinished(5000);
  }
  static constexpr QPoint place{12, 560};
  static QPoint middle() { return place + QPoint(100, 60); }

  // What it says that it took; empty when nothing came.
  QStringList report(Tourist& person) const {
    person.waitForFiles(QFileInfo(report_).path(), {QFileInfo(report_).fileName()}, 1, 20);
    QStringList lines;
    // Its last line says that it is whole.
    (void)QTest::qWaitFor([&] {
      QFile file(report_);
      if (file.open(QIODevice::ReadOnly)) lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
      return lines.contains(u"done"_qs);
    }, 10'000);
    return lines;
  }

 private:
  QProcess process_;
  QString report_;
};

TEST(WallTour, SelectsMarksAndDragsByMouseAndKeyboard) {
  Tourist person(QSize(1440, 900), u"wall-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  chooseWorkspace(person, workspace);
  makePictures(person, 3);

  // A rubber band over all of them turns the filter row into the bar over the selection.
  const std::vector<Control> items = itemsOf(person);
  ASSERT_EQ(items.size(), 3u);
  const QRect last = items.back().place;
  person.drag(QPoint(last.right() - 20, last.bottom() + 30), items.front().place.topLeft() + QPoint(20, 20));
  person.waitFor({u"3 selected"_qs, {}});
  EXPECT_GT(pictureInBothLooks(person, u"selection"_qs), 100);
  person.key(u"Menu"_qs);
  // The keyboard is in the menu now; a picture shows it.
  person.key(u"Down"_qs);
  pictureInBothLooks(person, u"menu"_qs);
  person.key(u"Escape"_qs);
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"3 selected"_qs, {}});

  // Arrows go from cell to cell, and single keys mark the one that they stand on.
  person.key(u"Home"_qs);
  person.key(u"4"_qs);
  person.key(u"Right"_qs);
  person.key(u"p"_qs);
  person.key(u"Right"_qs);
  person.key(u"d"_qs);
  const auto marked = [](const QString& number, const QString& mark) {
    return Wanted{u"A-harbour-at-dawn-Nano-Banana-2-"_qs + number + u".png, Image, Nano Banana 2, "_qs + mark, {}};
  };
  person.waitFor(marked(u"003"_qs, u"4 stars"_qs));
  person.waitFor(marked(u"002"_qs, u"Shortlist"_qs));
  person.waitFor(marked(u"001"_qs, u"Rejected"_qs));
  person.picture(u"marked"_qs);

  // Another program gets a copy, though it asks for the file to be moved.
  const QStringList before = mediaIn(workspace, pngs);
  {
    const OtherProgram other(person);
    person.carry(itemsOf(person).front().place.center(), OtherProgram::middle());
    const QStringList report = other.report(person);
    EXPECT_TRUE(report.contains(u"offered copy"_qs)) << report.join(u'\n').toStdString();
    EXPECT_TRUE(report.contains(u"gnome copy"_qs));
    EXPECT_TRUE(report.contains(u"kde 0"_qs));
    EXPECT_FALSE(report.contains(u"picture 0"_qs)) << "the picture itself came too";
    const QStringList files = report.filter(QRegularExpression(u"^file "_qs));
    ASSERT_EQ(files.size(), 1);
    EXPECT_TRUE(before.contains(files.front().mid(5)) || QFile::exists(files.front().mid(5)));
  }
  EXPECT_EQ(mediaIn(workspace, pngs), before) << "no file left its place";
  putInTrash(person, anyItem);
  EXPECT_EQ(mediaIn(workspace, pngs), before) << "what is in Trash keeps its place too";
  person.close();
}

}  // namespace
}  // namespace tour
