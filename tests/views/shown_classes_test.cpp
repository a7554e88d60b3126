#include <QMap>

#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/dressed.h"
#include "views/widget_classes.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using test::classesIn;
using test::readClasses;
using test::WidgetClasses;

const QString kViews = QStringLiteral(SORVAN_TEST_DATA "/../../src/shell/views");

// Whole pages and windows, which the window's own pictures show and whose parts stand on the sheets; and what can only
// be shown with a library behind it.
const QMap<QString, QString> kNotOnSheets{
    {u"LibraryView"_s, u"the whole of the window, shown by its own pictures"_s},
    {u"AssetView"_s, u"a page: its canvas, strip of pictures and player are on sheets"_s},
    {u"CompareView"_s, u"a page: its canvas is on a sheet"_s},
    {u"SheetView"_s, u"a page: its places are on a sheet"_s},
    {u"PlacesArea"_s, u"the page of a contact sheet around its places"_s},
    {u"MarkLayer"_s, u"needs a picture of a library: the tour and its own tests show it"_s}};

// Which classes are on the sheets, with those that they derive from.
class ShownClasses : public Dressed {
 protected:
  QSet<QString> shownClasses() const {
    QSet<QString> shown;
    for (const ComponentSheet& sheet : componentSheets()) addClasses(*sheet.make(), shown);
    return shown;
  }

  const WidgetClasses classes = classesIn(kViews);
  const QSet<QString> interactive = classes.interactive();

 private:
  void addClasses(const QWidget& sheet, QSet<QString>& shown) const {
    for (const QWidget* part : sheet.findChildren<QWidget*>()) addClass(className(*part), shown);
    for (const Sample* sample : sheet.findChildren<Sample*>()) addClass(sample->kind(), shown);
  }
  void addClass(QString name, QSet<QString>& shown) const {
    for (; !name.isEmpty(); name = classes.bases.value(name)) shown.insert(name);
  }
};

TEST_F(ShownClasses, WhatHandlesKeysOrPressesIsReadFromTheSources) {
  WidgetClasses read;
  readClasses(u"class Plain final : public QWidget {\n protected:\n  void paintEvent(QPaintEvent*) override;\n};\n"
              "class Keys : public QWidget {\n  void keyPressEvent(QKeyEvent* event) override;\n};\n"
              "class Child final : public Keys {\n};\nclass Push final : public QAbstractButton, public Other {\n};\n"_s,
              read);
  EXPECT_EQ(read.interactive(), (QSet<QString>{u"Keys"_s, u"Child"_s, u"Push"_s}));
}

TEST_F(ShownClasses, EveryWidgetThatOneWorksWithIsOnASheet) {
  ASSERT_GT(interactive.size(), 40);
  const QSet<QString> shown = shownClasses();
  QStringList missing;
  for (const QString& name : interactive)
    if (!shown.contains(name) && !kNotOnSheets.contains(name)) missing << name;
  missing.sort();
  EXPECT_EQ(missing.join(u' ').toStdString(), "");
}

TEST_F(ShownClasses, NothingIsExcusedThatIsGoneOrShownAfterAll) {
  const QSet<QString> shown = shownClasses();
  for (const QString& name : kNotOnSheets.keys()) {
    EXPECT_TRUE(interactive.contains(name)) << name.toStdString();
    EXPECT_FALSE(shown.contains(name)) << name.toStdString();
  }
}

}  // namespace
}  // namespace sorvan::views
