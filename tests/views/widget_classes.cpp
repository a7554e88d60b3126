#include "views/widget_classes.h"

#include <QDir>
#include <QRegularExpression>

namespace sorvan::test {
using namespace Qt::Literals::StringLiterals;

namespace {

// The toolkit's classes that answer keys and presses. A bare scroll area is a frame and no control.
const QSet<QString> kToolkit{u"QAbstractButton"_s, u"QPushButton"_s,     u"QLineEdit"_s,
                             u"QTextEdit"_s,       u"QPlainTextEdit"_s,  u"QAbstractSlider"_s,
                             u"QSlider"_s,         u"QComboBox"_s,       u"QAbstractItemView"_s,
                             u"QTableView"_s,      u"QAbstractScrollArea"_s};

}  // namespace

bool WidgetClasses::isInteractive(const QString& name) const {
  if (kToolkit.contains(name) || ownInput.contains(name)) return true;
  return bases.contains(name) && isInteractive(bases[name]);
}

QSet<QString> WidgetClasses::interactive() const {
  QSet<QString> all;
  for (auto each = bases.begin(); each != bases.end(); ++each)
    if (isInteractive(each.key())) all.insert(each.key());
  return all;
}

void readClasses(const QString& source, WidgetClasses& into) {
  static const QRegularExpression head(u"^class (\\w+)(?: final)? : public (\\w+)[^;{]*\\{"_s,
                                       QRegularExpression::MultilineOption);
  static const QRegularExpression input(u"void (?:keyPressEvent|mousePressEvent|mouseReleaseEvent)\\("_s);
  for (auto match = head.globalMatch(source); match.hasNext();) {
    const QRegularExpressionMatch found = match.next();
    into.bases.insert(found.captured(1), found.captured(2));
    const qsizetype end = source.indexOf(u"\n};"_s, found.capturedEnd());
    if (source.mid(found.capturedEnd(), end - found.capturedEnd()).contains(input)) into.ownInput.insert(found.captured(1));
  }
}

WidgetClasses classesIn(const QString& folder) {
  WidgetClasses classes;
  const QDir dir(folder);
  for (const QString& name : dir.entryList({u"*.h"_s, u"*.cpp"_s}, QDir::Files)) {
    QFile file(dir.filePath(name));
    if (file.open(QIODevice::ReadOnly)) readClasses(QString::fromUtf8(file.readAll()), classes);
  }
  return classes;
}

}  // namespace sorvan::test
