#include "torture/evidence.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QUrl>

namespace sorvan::torture {
namespace {

using namespace Qt::StringLiterals;

QByteArray sha256(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

// What changes with every start: the database and its log, and the lock.
bool isAtWork(const QString& below) {
  static const QSet<QString> names{u".sorvan/library.store"_s, u".sorvan/library.store-wal"_s,
                                   u".sorvan/library.store-shm"_s, u".sorvan/workspace.lock"_s};
  return names.contains(below);
}

QByteArray decoded(const QJsonObject& job, const QString& field) {
  return QByteArray::fromBase64(job.value(field).toString().toLatin1());
}

// Every address in a result, however deep.
void gatherAddresses(const QJsonValue& value, QStringList& found) {
  if (value.isArray())
    for (const QJsonValue& each : value.toArray()) gatherAddresses(each, found);
  if (!value.isObject()) return;
  const QJsonObject object = value.toObject();
  if (object.contains(u"url"_s)) found.append(object.value(u"url"_s).toString());
  for (const QJsonValue& each : object) gatherAddresses(each, found);
}

// The service keeps what it made under the hash of its address.
QString checksumOfMade(const QString& state, const QString& address) {
  const QString file = state + u"/media/"_s + QString::fromLatin1(sha256(QUrl(address).path().toUtf8()));
  return QString::fromLatin1(sha256(contentOf(file)));
}

Purchase purchaseOf(const QString& state, const QString& handle) {
  Purchase purchase;
  purchase.handle = handle;
  const QJsonObject job = QJsonDocument::fromJson(contentOf(state + u"/jobs/"_s + handle + u".json"_s)).object();
  const QJsonObject body = QJsonDocument::fromJson(decoded(job, u"body"_s)).object();
  // What follows the first line is the studio's own, about the attached files.
  purchase.prompt = body.value(u"prompt"_s).toString(body.value(u"text"_s).toString()).section(u'\n', 0, 0);
  purchase.cancelled = job.value(u"cancelled"_s).toBool();
  QStringList addresses;
  gatherAddresses(QJsonDocument::fromJson(decoded(job, u"resultBody"_s)).object(), addresses);
  for (const QString& address : std::as_const(addresses)) purchase.checksums.append(checksumOfMade(state, address));
  return purchase;
}

}  // namespace

std::vector<Purchase> purchasesOf(const sorvan::test::SandboxProcess& sandbox, const QStringList& runs) {
  std::vector<Purchase> purchases;
  for (const QJsonObject& line : sandbox.ledger())
    if (runs.contains(line.value(u"run"_s).toString()))
      purchases.push_back(purchaseOf(sandbox.stateFolder(), line.value(u"handle"_s).toString()));
  return purchases;
}

Files filesBelow(const QString& folder) {
  Files files;
  QDirIterator walk(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
  while (walk.hasNext()) {
    const QString path = walk.next();
    const QString below = path.mid(folder.size() + 1);
    if (!isAtWork(below)) files.insert(below, sha256(contentOf(path)));
  }
  return files;
}

QList<QJsonObject> acknowledgedIn(const Grounds& grounds) {
  QList<QJsonObject> all;
  for (const QByteArray& line : contentOf(grounds.acknowledgements()).split('\n'))
    if (!line.isEmpty()) all.append(QJsonDocument::fromJson(line).object());
  return all;
}

}  // namespace sorvan::torture
