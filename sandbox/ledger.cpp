#include "ledger.h"

#include <unistd.h>

#include <QCryptographicHash>
#include <QDateTime>
#include <stdexcept>

#include "http_message.h"

namespace sandbox {

Ledger::Ledger(const QString& path) : file_(path) {
  if (!file_.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
    throw std::runtime_error("The ledger cannot be opened: " + file_.errorString().toStdString());
  count_ = text().count('\n');
}

void Ledger::add(const Purchase& purchase) {
  QJsonObject line{{QStringLiteral("at"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
                   {QStringLiteral("run"), run_},
                   {QStringLiteral("handle"), purchase.handle},
                   {QStringLiteral("endpoint"), purchase.endpoint},
                   {QStringLiteral("amount"), purchase.amount},
                   {QStringLiteral("sha256"),
                    QString::fromLatin1(QCryptographicHash::hash(purchase.body, QCryptographicHash::Sha256).toHex())}};
  if (!purchase.key.isEmpty()) line.insert(QStringLiteral("key"), purchase.key);
  const QByteArray bytes = compactJson(line) + '\n';
  if (file_.write(bytes) != bytes.size() || ::fsync(file_.handle()) != 0)
    throw std::runtime_error("A purchase cannot be written to the ledger: " + file_.errorString().toStdString());
  ++count_;
}

QByteArray Ledger::text() const {
  QFile reader(file_.fileName());
  return reader.open(QIODevice::ReadOnly) ? reader.readAll() : QByteArray();
}

}  // namespace sandbox
