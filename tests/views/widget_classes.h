// The classes of the window's widgets as their sources declare them.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace sorvan::test {

struct WidgetClasses {
  QHash<QString, QString> bases;  // a class of ours and the first class that it derives from
  QSet<QString> ownInput;         // those that handle keys or presses themselves

  // Whether people work with it: it handles input itself, or one of the classes that it derives from does.
  bool isInteractive(const QString& name) const;
  QSet<QString> interactive() const;
};

// Reads the text of one source file.
void readClasses(const QString& source, WidgetClasses& into);
// Reads every header and source file of a folder.
WidgetClasses classesIn(const QString& folder);

}  // namespace sorvan::test
