// A running job that is cancelled, areas that are marked with the mouse, and a marked edit whose answer has another
// shape.
#include <gtest/gtest.h>

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const QStringList pngs{u"*.png"_qs};
const Wanted pictureItem{u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true};
const Wanted saveRawResult{u"Save Raw Result"_qs, u"push button"_qs};

QString openNorthlight(Tourist& person) {
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  chooseWorkspace(person, workspace);
  return workspace;
}

// Makes a picture, shows it large and turns to marking. Answers where the picture lies on the screen.
QRectF startMarking(Tourist& person, const QString& workspace) {
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  person.click(generate);
  person.waitForCount(pictureItem, 1, 30);
  person.doubleClick(pictureItem);
  person.waitFor({u"Filmstrip"_qs, {}});
  person.key(u"m"_qs);
  const QRect canvas = person.waitFor({u"Marked areas"_qs, u"list"_qs}).place;
  const QSizeF room = canvas.adjusted(24, 24, -24, -24).size();
  const QSizeF size = QSizeF(QImage(mediaIn(workspace, pngs).first()).size()).scaled(room, Qt::KeepAspectRatio);
  QRectF place(QPointF(), size);
  place.moveCenter(QRectF(canvas).center());
  return place;
}

// Draws a box over that part of the picture, in fractions, and writes its note.
void mark(Tourist& person, const QRectF& picture, const QRectF& part, const QString& note) {
  const auto at = [&](QPointF point) {
    return QPointF(picture.x() + point.x() * picture.width(), picture.y() + point.y() * picture.height()).toPoint();
  };
  const int number = person.accessibility().count({u"Note of box"_qs, {}, true}) + 1;
  person.drag(at(part.topLeft()), at(part.bottomRight()));
  person.waitFor({u"Note of box %1"_qs.arg(number), {}});
  person.type(note);
  person.waitFor({u"Box %1, %2"_qs.arg(QString::number(number), note), u"list item"_qs});
  person.key(u"Return"_qs);
}

// Pixels of two pictures that differ: inside the parts and anywhere else.
struct Differences {
  int inside = 0;
  int outside = 0;
};

Differences differences(const QString& before, const QString& after, const QList<QRectF>& parts) {
  const QImage one = QImage(before).convertToFormat(QImage::Format_ARGB32);
  const QImage two = QImage(after).convertToFormat(QImage::Format_ARGB32);
  Differences found;
  if (one.size() != two.size()) return {0, one.width() * one.height()};
  // The mouse draws on the screen's pixels, so that a box may begin a few pixels of the picture beside its part.
  const double slackX = 3.0 / one.width();
  const double slackY = 3.0 / one.height();
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x) {
      if (one.pixel(x, y) == two.pixel(x, y)) continue;
      const QPointF point((x + 0.5) / one.width(), (y + 0.5) / one.height());
      const bool marked = std::any_of(parts.begin(), parts.end(), [&](const QRectF& part) {
        return part.adjusted(-slackX, -slackY, slackX, slackY).contains(point);
      });
      ++(marked ? found.inside : found.outside);
    }
  return found;
}

TEST(Tour, CancelsARunningJob) {
  Tourist person(QSize(1440, 900), u"cancelled-"_qs);
  openNorthlight(person);
  person.sandbox().setManualPace(true);
  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  person.click(generate);
  person.sandbox().waitForCalls(u"status"_qs, 1);
  person.click({u"Generating"_qs, u"list item"_qs, true});
  person.click({u"Cancel"_qs, u"push button"_qs});
  person.waitFor({u"Cancelled"_qs, u"list item"_qs, true});
  person.sandbox().waitForCalls(u"cancel"_qs, 1);
  person.waitFor({u"Cancellation requested from provider"_qs, {}});
  person.waitFor({u"Retry"_qs, u"push button"_qs});
  pictureInBothLooks(person, u"job"_qs);
  EXPECT_EQ(person.sandbox().ledger().size(), 1);
  person.close();
}

TEST(Tour, MarksTwoAreasWithTheMouseAndOnlyTheyChange) {
  Tourist person(QSize(1440, 900), u"marks-"_qs);
  const QString workspace = openNorthlight(person);
  const QRectF picture = startMarking(person, workspace);
  const QList<QRectF> parts{{0.30, 0.30, 0.15, 0.35}, {0.55, 0.25, 0.12, 0.30}};
  mark(person, picture, parts[0], u"a red door"_qs);
  mark(person, picture, parts[1], u"a lamp that is lit"_qs);
  EXPECT_GT(person.picture(u"drawing"_qs), 100);
  person.key(u"Return"_qs);
  person.waitFor({u"2 marks"_qs, u"push button"_qs});
  person.picture(u"composer"_qs);
  const QString original = mediaIn(workspace, pngs).first();
  person.click(generate);
  person.waitForFiles(workspace, pngs, 2, 30);
  QStringList files = mediaIn(workspace, pngs);
  files.removeOne(original);
  person.waitFor({u"a-red-door"_qs, u"list item"_qs, true});
  const Differences found = differences(original, files.first(), parts);
  EXPECT_EQ(found.outside, 0);
  EXPECT_GT(found.inside, 1000);
  person.click({u"a-red-door"_qs, u"list item"_qs, true});
  person.picture(u"landed"_qs);
  EXPECT_EQ(person.sandbox().ledger().size(), 2);
  person.close();
}

// The service answers the edit with the address of the whole picture, whose shape is not that of the piece.
void answerInAnotherShape(Tourist& person) {
  QString address;
  for (const QJsonObject& call : person.sandbox().calls())
    if (call.value(u"call"_qs).toString() == u"download"_qs)
      address = u"https://"_qs + call.value(u"host"_qs).toString() + call.value(u"path"_qs).toString();
  ASSERT_FALSE(address.isEmpty());
  const QJsonObject image{{u"url"_qs, address}, {u"content_type"_qs, u"image/png"_qs}};
  const QByteArray body = QJsonDocument(QJsonObject{{u"images"_qs, QJsonArray{image}}}).toJson();
  person.sandbox().addFault(u"result"_qs, u"answer"_qs, {{u"body"_qs, QString::fromUtf8(body)}});
}

TEST(Tour, SavesTheRawResultOfAMarkedEditThatCannotBeConfined) {
  Tourist person(QSize(1440, 900), u"raw-"_qs);
  const QString workspace = openNorthlight(person);
  const QRectF picture = startMarking(person, workspace);
  mark(person, picture, {0.35, 0.30, 0.20, 0.35}, u"a red door"_qs);
  person.key(u"Return"_qs);
  person.waitFor({u"1 mark"_qs, u"push button"_qs});
  answerInAnotherShape(person);
  person.click(generate);
  person.click({u"Failed"_qs, u"list item"_qs, true});
  person.waitFor({u"Save Result"_qs, u"push button"_qs});
  person.waitFor({u"Copy Details"_qs, u"push button"_qs});
  person.waitFor(saveRawResult);
  EXPECT_GT(person.picture(u"failed"_qs), 100);
  EXPECT_EQ(mediaIn(workspace, pngs).size(), 1);
  person.click(saveRawResult);
  person.waitForFiles(workspace, pngs, 2, 30);
  person.waitFor({u"a-red-door"_qs, u"list item"_qs, true});
  person.picture(u"landed"_qs);
  EXPECT_EQ(person.sandbox().ledger().size(), 2);
  person.close();
}

}  // namespace
}  // namespace tour
