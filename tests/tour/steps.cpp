#include "tour/steps.h"

#include <QDir>
#include <QDirIterator>

namespace tour {
namespace {

const Wanted search{u"Search models"_qs, {}};

}  // namespace

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
  person.clickAt(box);
  person.key(u"Escape"_qs);
}

void openBrowser(Tourist& person, const QString& tab) {
  person.key(u"ctrl+m"_qs);
  person.waitFor(search);
  person.click({tab, u"check box"_qs});
  person.click({u"Browse Models"_qs, u"push button"_qs});
  person.waitFor({u"Show the Whole Catalog"_qs, u"push button"_qs});
}

void addAndChoose(Tourist& person, const QString& words, const QString& name) {
  person.type(words);
  // What is recommended may stand out of sight until the answer has taken its place.
  if (!words.isEmpty()) person.waitUntilGone({u"Recommended"_qs, {}});
  if (!words.isEmpty()) person.waitUntilGone({u"Searching…"_qs, {}});
  person.click({u"Add "_qs + name, u"push button"_qs});
  person.waitFor({u"Remove "_qs + name, u"push button"_qs}, 60);
  person.click({name + u", "_qs, u"check box"_qs, true});
}

void closePicker(Tourist& person) {
  person.key(u"Escape"_qs);
  person.waitUntilGone(search);
}

}  // namespace tour
