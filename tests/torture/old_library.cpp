#include "torture/old_library.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>
#include <stdexcept>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* pictureId = "0000000A-0000-4000-8000-00000000000A";
constexpr const char* pictureFile = "Inbox/references/own picture.png";

using Connection = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

Connection opened(const QString& file) {
  sqlite3* database = nullptr;
  const int answer = sqlite3_open(QFile::encodeName(file).constData(), &database);
  Connection connection(database, sqlite3_close);
  if (answer != SQLITE_OK) throw std::runtime_error("a database cannot be opened");
  return connection;
}

// The first value that a statement gives; empty when it gives none or cannot be carried out.
QString answerOf(sqlite3* database, const char* question) {
  QString answer;
  sqlite3_exec(
      database, question,
      [](void* text, int, char** values, char**) {
        *static_cast<QString*>(text) = QString::fromUtf8(values[0]);
        return 0;
      },
      &answer, nullptr);
  return answer;
}

void carryOut(sqlite3* database, const QByteArray& statements) {
  char* problem = nullptr;
  if (sqlite3_exec(database, statements.constData(), nullptr, nullptr, &problem) == SQLITE_OK) return;
  const std::string text = problem ? problem : "a statement failed";
  sqlite3_free(problem);
  throw std::runtime_error("the old library cannot be made: " + text);
}

QByteArray scriptOf(int version) {
  QFile script(QStringLiteral(SORVAN_TEST_DATA) + u"/schemas/schema-%1.sql"_s.arg(version));
  if (!script.open(QFile::ReadOnly)) throw std::runtime_error("the script of an old library is missing");
  return script.readAll();
}

// The rows that name files go, but for one whose file is there.
QByteArray rowsOf(qint64 bytes) {
  return QByteArray("DELETE FROM Asset; DELETE FROM Generation; DELETE FROM GenerationJob; DELETE FROM AssetRelationship;"
                    "DELETE FROM ReferenceAsset;"
                    "INSERT INTO Asset (id, mediaType, localFilePath, originalFilename, createdAt, width, height, fileSize,"
                    " mimeType, rating) VALUES ('") +
         pictureId + "', 'image', '" + pictureFile + "', 'own picture.png', 600000000.0, 96, 64, " +
         QByteArray::number(bytes) + ", 'image/png', " + QByteArray::number(ratingInOldLibrary) + ");";
}

QByteArray bytesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::ReadOnly)) throw std::runtime_error("a picture cannot be read");
  return file.readAll();
}

void put(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
    throw std::runtime_error("no room for an old library");
}

}  // namespace

QList<QJsonObject> layOldLibrary(const QString& workspace, int version, const QString& picture) {
  QDir().mkpath(workspace + u"/.sorvan"_s);
  QDir().mkpath(workspace + u"/Inbox/references"_s);
  const QByteArray bytes = bytesOf(picture);
  put(workspace + u'/' + QString::fromLatin1(pictureFile), bytes);
  const Connection database = opened(workspace + u"/.sorvan/library.store"_s);
  carryOut(database.get(), scriptOf(version));
  carryOut(database.get(), rowsOf(bytes.size()));
  put(workspace + u"/.sorvan/schema-version"_s, QByteArray::number(version));
  const QString id = QString::fromLatin1(pictureId);
  const QByteArray sum = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
  return {{{u"did"_s, u"place"_s}, {u"id"_s, id}, {u"checksum"_s, QString::fromLatin1(sum)}},
          {{u"did"_s, u"rate"_s}, {u"id"_s, id}, {u"stars"_s, ratingInOldLibrary}}};
}

OldDatabase lookAtOldDatabase(const QString& file) {
  const QTemporaryDir folder;
  const QString copy = folder.filePath(u"copy"_s);
  OldDatabase seen;
  if (!QFile::copy(file, copy)) return seen;
  const Connection database = opened(copy);
  seen.version = answerOf(database.get(), "PRAGMA user_version").toInt();
  seen.sound = answerOf(database.get(), "PRAGMA integrity_check") == u"ok"_s;
  const QByteArray question = QByteArray("SELECT rating FROM Asset WHERE id='") + pictureId + "'";
  seen.holdsPicture = answerOf(database.get(), question.constData()).toInt() == ratingInOldLibrary;
  return seen;
}

}  // namespace sorvan::torture
