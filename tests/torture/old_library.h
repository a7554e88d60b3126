// Libraries as earlier versions of the program left them.
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace sorvan::torture {

// The rating of the one picture in such a library.
inline constexpr int ratingInOldLibrary = 4;

// Lays a closed library of this form into `workspace`, an empty folder: the rows of the frozen script that need no files,
// and one rated picture, a copy of `picture`. Answers what was promised to its user, as the driver acknowledges it.
// Throws std::runtime_error.
QList<QJsonObject> layOldLibrary(const QString& workspace, int version, const QString& picture);

// The form of a database file, and whether it is sound and holds the picture. Leaves the file alone: a copy is looked at.
struct OldDatabase {
  int version = 0;
  bool sound = false;
  bool holdsPicture = false;
};
OldDatabase lookAtOldDatabase(const QString& file);

}  // namespace sorvan::torture
