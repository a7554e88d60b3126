#include "support/temporary_folder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

namespace sorvan::test {

TemporaryFolder::TemporaryFolder() {
  if (!folder.isValid()) throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
  // A test may have taken its own right to write.
  QDirIterator folders(folder.path(), QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (folders.hasNext())
    QFile::setPermissions(folders.next(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString TemporaryFolder::write(const QString& name, const QByteArray& bytes) const {
  const QString path = folder.filePath(name);
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) throw std::runtime_error("cannot write");
  return path;
}

QByteArray TemporaryFolder::read(const QString& name) const {
  QFile file(folder.filePath(name));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read");
  return file.readAll();
}

QStringList TemporaryFolder::files() const {
  QStringList found;
  QDirIterator all(folder.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
  while (all.hasNext()) found.append(QDir(folder.path()).relativeFilePath(all.next()));
  found.sort();
  return found;
}

}  // namespace sorvan::test
