// A folder of the test's own, removed with all it holds.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace sorvan::test {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  QString path() const { return folder.path(); }
  // The path of a name inside.
  QString operator/(const QString& name) const { return folder.filePath(name); }
  // Plain writes and reads for the test's own use; the parent folders are made.
  QString write(const QString& name, const QByteArray& bytes) const;
  QByteArray read(const QString& name) const;
  // Every file below it, hidden ones too, as sorted relative paths.
  QStringList files() const;

 private:
  QTemporaryDir folder;
};

}  // namespace sorvan::test
