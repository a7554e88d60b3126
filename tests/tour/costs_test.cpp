// What work has cost, as a person looks it up: the report after two generations, other periods and projects, and the
// file for a spreadsheet.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLocale>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const Wanted anyPicture{u"A-lighthouse"_qs, u"list item"_qs, true};
const Wanted chart{u"Spending"_qs, u"chart"_qs};
const Wanted charges{u"Charges"_qs, u"table"_qs};

// The column of today, as assistive technology reads it.
Wanted today() {
  return {QLocale::c().toString(QDate::currentDate(), u"d MMMM"_qs) + u", Images "_qs, {}, true};
}

void makePicture(Tourist& person, const QString& text, int number) {
  writePrompt(person, text);
  person.click(generate);
  person.waitForCount(anyPicture, number, 40);
}

QByteArray exported(Tourist& person, const QString& file) {
  person.click({u"Export CSV…"_qs, u"push button"_qs});
  person.waitFor({u"Save"_qs, u"push button"_qs});
  person.key(u"ctrl+a"_qs);
  person.type(file);
  person.key(u"Return"_qs);
  person.waitFor({u"Exported 2 rows"_qs, {}});
  QFile written(file);
  EXPECT_TRUE(written.open(QIODevice::ReadOnly));
  return written.readAll();
}

TEST(Tour, ReadsWhatItCostAndTakesItToASpreadsheet) {
  Tourist person(QSize(1440, 900), u"costs-"_qs);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + u"/Pictures/Northlight"_qs);
  person.click({u"Cost Report"_qs, {}});
  person.waitFor({u"Nothing spent in this period"_qs, {}});
  person.picture(u"nothing"_qs);
  person.key(u"ctrl+1"_qs);
  makePicture(person, u"A lighthouse, in evening light"_qs, 1);
  makePicture(person, u"A lighthouse in fog"_qs, 2);

  // 1. This month, with both.
  person.click({u"Cost Report"_qs, {}});
  person.waitFor(charges);
  person.waitFor({u"Outputs, 2, 2 images"_qs, {}});
  person.waitFor(chart);
  const QPoint column = person.waitFor(today()).place.center();
  person.clickAt(column);
  pictureInBothLooks(person, u"report"_qs);
  person.click({u"Show as Table"_qs, u"push button"_qs});
  person.waitFor({u"Spending"_qs, u"table"_qs});
  person.click({u"Show as Chart"_qs, u"push button"_qs});

  // 2. Another period, and another project.
  person.click({u"Last month"_qs, {}});
  person.waitFor({u"Nothing spent in this period"_qs, {}});
  person.click({u"Show All Time"_qs, u"push button"_qs});
  person.waitFor(charges);
  person.click({u"Projects, All Projects"_qs, u"push button"_qs});
  person.key(u"Down"_qs);
  person.key(u"Down"_qs);
  person.key(u"Return"_qs);
  person.waitFor({u"Projects, Inbox"_qs, u"push button"_qs});
  person.waitFor({u"Outputs, 2, 2 images"_qs, {}});
  person.picture(u"inbox"_qs);

  // 3. The file.
  const QByteArray file = exported(person, person.desktop().home() + u"/spent.csv"_qs);
  const QList<QByteArray> lines = file.split('\n');
  ASSERT_EQ(lines.size(), 3) << file.toStdString();
  EXPECT_EQ(lines[0], "Date,Project,File,Type,Provider,Model,Estimated cost (USD),Basis,Prompt");
  EXPECT_TRUE(lines[1].endsWith(",A lighthouse in fog")) << lines[1].toStdString();
  EXPECT_TRUE(lines[2].endsWith(",\"A lighthouse, in evening light\"")) << lines[2].toStdString();
  for (const QByteArray& line : lines.mid(1)) EXPECT_TRUE(line.contains(",Inbox,A-lighthouse")) << line.toStdString();
  person.picture(u"exported"_qs);

  // 4. From a row to its picture and back.
  person.click(charges);
  person.key(u"Home"_qs);
  person.key(u"Return"_qs);
  person.waitUntilGone(charges);
  person.key(u"Escape"_qs);
  person.waitFor(charges);
  person.close();
}

}  // namespace
}  // namespace tour
