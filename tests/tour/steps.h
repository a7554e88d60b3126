// What a person does on more than one tour.
#pragma once

#include <QString>
#include <QStringList>

#include "tour/tourist.h"

namespace tour {

inline const Wanted chooseFolder{u"Choose Another Folder…"_qs, u"push button"_qs};
inline const Wanted prompt{u"Prompt"_qs, {}};
inline const Wanted generate{u"Generate"_qs, u"push button"_qs};

// Paths of the library's own media below a workspace, thumbnails left out, in the order of their names.
QStringList mediaIn(const QString& folder, const QStringList& patterns);

// Types the folder's path into the chooser and accepts it.
void chooseWorkspace(Tourist& person, const QString& folder);

void writePrompt(Tourist& person, const QString& text);

// Ticks a model beside the ones that are chosen, by the box at the start of its row.
void alsoChooseModel(Tourist& person, const QString& name);

// Opens the model picker on its catalogue, at the category that belongs to a tab.
void openBrowser(Tourist& person, const QString& tab);

// Finds a model by words, or takes it from what is recommended, adds it and chooses it alone. The browser is open.
void addAndChoose(Tourist& person, const QString& words, const QString& name);

void closePicker(Tourist& person);

}  // namespace tour
