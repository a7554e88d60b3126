#include "tour/steps.h"

#include <QDir>
#include <QDirIterator>

namespace tour {

QStringList mediaIn(const QString& folder, const QStringList& patterns) {
  QStringList found;
  QDirIterator walk(folder, patterns, QDir::Files, QDirIterator::Subdirectories);
  while (walk.hasNext()) {
    const QString file = walk.next();
    if (!file.contains(u"/thumbnails/"_qs)) found << file;
  }
  found.sort();
  return found;
}

void chooseWorkspace(Tourist& person, const QString& folder) {
  QDir().mkpath(folder);
  person.click(chooseFolder);
  person.waitFor({u"Open Workspace"_qs, u"push button"_qs});
  person.key(u"ctrl+a"_qs);
  person.type(folder);
  person.key(u"Return"_qs);
  person.waitFor(prompt);
}

void writePrompt(Tourist& person, const QString& text) {
  person.key(u"ctrl+l"_qs);
  person.key(u"ctrl+a"_qs);
  person.type(text);
}

void alsoChooseModel(Tourist& person, const QString& name) {
  person.key(u"ctrl+m"_qs);
  const QRect row = person.waitFor({name, u"check box"_qs, true}).place;
  const QPoint box(row.left() + 20, row.center().y());
  person.drag(box, box);
  person.key(u"Escape"_qs);
}

}  // namespace tour
