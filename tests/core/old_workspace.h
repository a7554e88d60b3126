// Workspaces as earlier versions left them, made from the frozen scripts.
#pragma once

#include "library_fixture.h"

namespace sorvan::test {

inline QString schemaScript(int version) {
  QFile file(QStringLiteral(SORVAN_TEST_DATA "/schemas/schema-%1.sql").arg(version));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("the script of the schema is missing");
  return QString::fromUtf8(file.readAll());
}

struct OldWorkspaceFixture : LibraryFixture {
  /// A workspace of an earlier version, closed, with its marker.
  void makeOld(int version) { makeOld(version, QByteArray::number(version)); }
  void makeOld(int version, const QByteArray& marker) {
    WorkspaceFiles(root()).prepare();
    runScript(schemaScript(version));
    writeSidecar(QStringLiteral("schema-version"), marker);
  }
  void runScript(const QString& sql) const {
    platform::Database database(WorkspaceFiles(root()).database(), platform::DatabaseOpening::ReadWrite);
    database.execute(sql);
  }

  int versionOf(const QString& database) const {
    return platform::Database(database, platform::DatabaseOpening::ReadOnly).userVersion();
  }
  int version() const { return versionOf(files().database()); }

  /// The folders under `.sorvan/backups`.
  QStringList snapshotFolders() const {
    return QDir(files().backupsFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
  }
  QString snapshot(int index = 0) const {
    return files().backupsFolder() + u'/' + snapshotFolders().value(index) + QStringLiteral("/library.store");
  }

  std::string opening() {
    return messageOf([this] { open(); });
  }
};

}  // namespace sorvan::test
