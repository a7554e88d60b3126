// Prints, one JSON line for each published document, the model that the studio reads from it or why it refuses. Takes
// files, folders and catalogue pages. Ends with 0, or with 1 when a file could not be read.
#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

#include "catalogue/schema_lines.h"

namespace {

/// The file itself, or every file below the folder in the order of their names.
QStringList filesOf(const QString& path) {
  if (!QFileInfo(path).isDir()) return {path};
  QStringList files;
  QDirIterator each(path, {QStringLiteral("*.json")}, QDir::Files, QDirIterator::Subdirectories);
  while (each.hasNext()) files << each.next();
  files.sort();
  return files;
}

bool print(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    std::fprintf(stderr, "read-schema: %s: %s\n", QFile::encodeName(path).constData(),
                 file.errorString().toUtf8().constData());
    return false;
  }
  for (const QByteArray& line : sorvan::catalogue::schemaLines(path, file.readAll())) {
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc < 2) {
    std::fputs("usage: read-schema FILE|FOLDER...\n", stderr);
    return 2;
  }
  bool allRead = true;
  for (int index = 1; index < argc; ++index) {
    for (const QString& path : filesOf(QFile::decodeName(argv[index]))) allRead = print(path) && allRead;
  }
  return allRead ? 0 : 1;
}
